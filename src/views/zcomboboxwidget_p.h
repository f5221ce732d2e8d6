#ifndef ZCOMBOBOXWIDGET_P_H
#define ZCOMBOBOXWIDGET_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zcomboboxwidget.h"
#include "zwidget_p.h"

#include <QtCore/qpointer.h>

class ZCommonListWidget;
class ZFrameItem;
class ZIcon;
class ZPopupListWindow;
class ZSpacer;

class ZKIT_EXPORT ZComboBoxWidgetPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZComboBoxWidget)
public:
    void init();
    void choose(int index);

    QPointer<ZFrameItem> frame;
    QPointer<ZSpacer> content;
    QPointer<ZFrameItem> button;
    QPointer<ZIcon> icon;
    QPointer<ZCommonListWidget> listView;
    QPointer<ZPopupListWindow> listWindow;
    QString buttonIconPath;
    int dropListMaxHeight = 80;
    int dropListMinWidth = 0;
    bool dropListShowUp = false;
    QMargins contentMargins;
    bool filtering = false;
};

#endif // ZCOMBOBOXWIDGET_P_H
