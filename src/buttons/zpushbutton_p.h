#ifndef ZPUSHBUTTON_P_H
#define ZPUSHBUTTON_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zabstractbutton_p.h"
#include "zpushbutton.h"

#include <QtCore/qpointer.h>

class QGraphicsLinearLayout;

class ZKIT_EXPORT ZPushButtonPrivate : public ZAbstractButtonPrivate
{
    Z_DECLARE_PUBLIC(ZPushButton)
public:
    ZPushButtonPrivate() : ZAbstractButtonPrivate(ZAbstractButton::ButtonPush) {}

    void init();
    QGraphicsLinearLayout *rowLayout() const;
    bool verticalRow() const;
    // Fixes the icon's extent along the row to iconSize.
    void applyIconSize();
    // Give the parts that exist the alignment of what they show.
    void alignLabel();
    void alignIcon();
    // Whether the button is a member of a linear layout.
    bool inLinearLayout() const;

    // Guarded: documents and applications reach these through properties
    // and may delete them.
    QPointer<ZFrameItem> frame;
    QPointer<ZSpacer> content;
    QPointer<ZImageItem> icon;
    QPointer<ZLabel> label;
    Qt::Alignment textAlignment = Qt::AlignCenter;
    Qt::Alignment iconAlignment = Qt::AlignCenter;
    int iconSize = -1;
    QMargins iconMargins;
    QMargins textMargins;
    QPoint clickOffset = QPoint(1, 1);
};

#endif // ZPUSHBUTTON_P_H
