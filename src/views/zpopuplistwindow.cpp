#include "zpopuplistwindow.h"

#include "zcommonlistwidget.h"
#include "zcreator.h"
#include "zfollowwindow_p.h"

#include <QtCore/qpointer.h>

Z_REGISTER_WINDOW(ZPopupListWindow);

class ZPopupListWindowPrivate : public ZFollowWindowPrivate
{
    Z_DECLARE_PUBLIC(ZPopupListWindow)
public:
    explicit ZPopupListWindowPrivate(ZPopupListWindow *q) : ZFollowWindowPrivate(q) {}

    QPointer<ZCommonListWidget> list;
};

ZPopupListWindow::ZPopupListWindow(QWidget *parent)
    : ZFollowWindow(*new ZPopupListWindowPrivate(this), parent)
{
    Z_D(ZPopupListWindow);
    ZWidget *root = rootWidget();
    root->setMargins(QMargins(1, 1, 1, 1));
    root->setBackgroundColor(QColor(160, 160, 160));
    d->list = new ZCommonListWidget;
    d->list->setObjectName(QStringLiteral("listView"));
    d->list->setBackgroundColor(QColor(255, 255, 255));
    root->addItem(d->list);
}

ZPopupListWindow::~ZPopupListWindow() = default;

ZCommonListWidget *ZPopupListWindow::listWidget() const
{
    return d_func()->list;
}

QObject *ZPopupListWindow::listView() const
{
    return d_func()->list.data();
}

QColor ZPopupListWindow::borderColor() const
{
    return const_cast<ZPopupListWindow *>(this)->rootWidget()->backgroundColor();
}

void ZPopupListWindow::setBorderColor(const QColor &color)
{
    if (borderColor() != color)
        rootWidget()->setBackgroundColor(color);
}
