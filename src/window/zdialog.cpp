#include "zdialog_p.h"

#include "zcreator.h"
#include "ztitlebar_p.h"

ZDialog::ZDialog(QWidget *parent)
    : ZDialogBase(*new ZDialogPrivate(this), parent)
{
    init();
}

ZDialog::ZDialog(ZDialogPrivate &dd, QWidget *parent)
    : ZDialogBase(dd, parent)
{
    init();
}

ZDialog::~ZDialog() = default;

void ZDialog::init()
{
    Z_D(ZDialog);
    d->style |= CloseButton;
    d->titlebar = zInstallTitlebar(this);
}

ZTitlebar *ZDialog::titlebar() const
{
    return d_func()->titlebar;
}

void ZDialog::construct()
{
    ZDialogBase::construct();
    if (ZTitlebar *bar = titlebar())
        bar->updateTitelbar();
}

void ZDialog::showEvent(QShowEvent *event)
{
    ZDialogBase::showEvent(event);
    if (ZTitlebar *bar = titlebar())
        bar->updateTitelbar();
}

void ZDialog::resizeEvent(QResizeEvent *event)
{
    ZDialogBase::resizeEvent(event);
    // Maximising and restoring arrive as resizes.
    if (ZTitlebar *bar = titlebar())
        bar->updateTitelbar();
}

Z_REGISTER_WINDOW(ZDialog);
