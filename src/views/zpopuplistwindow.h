#ifndef ZPOPUPLISTWINDOW_H
#define ZPOPUPLISTWINDOW_H

#include "zfollowwindow.h"

class ZCommonListWidget;
class ZPopupListWindowPrivate;

/*!
 * \brief A follow window holding a ZCommonListWidget: the drop list of the combo boxes.
 *
 * The list fills the window inside a one-pixel border.
 */
class ZKIT_EXPORT ZPopupListWindow : public ZFollowWindow
{
    Q_OBJECT
    Q_PROPERTY(QObject *listView READ listView)
    Q_PROPERTY(QColor borderColor READ borderColor WRITE setBorderColor)

public:
    Q_INVOKABLE explicit ZPopupListWindow(QWidget *parent = nullptr);
    ~ZPopupListWindow() override;

    ZCommonListWidget *listWidget() const;
    QObject *listView() const;

    QColor borderColor() const;
    void setBorderColor(const QColor &color);

private:
    Z_DECLARE_PRIVATE(ZPopupListWindow)
    Q_DISABLE_COPY(ZPopupListWindow)
};

#endif // ZPOPUPLISTWINDOW_H
