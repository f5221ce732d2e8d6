#include "zframewindow_p.h"

#include "zcreator.h"
#include "ztitlebar_p.h"

ZFrameWindow::ZFrameWindow(QWidget *parent)
    : ZPopupWindow(*new ZFrameWindowPrivate(this), parent)
{
    init();
}

ZFrameWindow::ZFrameWindow(ZFrameWindowPrivate &dd, QWidget *parent)
    : ZPopupWindow(dd, parent)
{
    init();
}

ZFrameWindow::~ZFrameWindow() = default;

void ZFrameWindow::init()
{
    Z_D(ZFrameWindow);
    d->style |= CloseButton;
    d->titlebar = zInstallTitlebar(this);
}

ZTitlebar *ZFrameWindow::titlebar() const
{
    return d_func()->titlebar;
}

void ZFrameWindow::construct()
{
    ZPopupWindow::construct();
    if (ZTitlebar *bar = titlebar())
        bar->updateTitelbar();
}

void ZFrameWindow::showEvent(QShowEvent *event)
{
    ZPopupWindow::showEvent(event);
    if (ZTitlebar *bar = titlebar())
        bar->updateTitelbar();
}

void ZFrameWindow::resizeEvent(QResizeEvent *event)
{
    ZPopupWindow::resizeEvent(event);
    // Maximising and restoring arrive as resizes.
    if (ZTitlebar *bar = titlebar())
        bar->updateTitelbar();
}

Z_REGISTER_WINDOW(ZFrameWindow);
