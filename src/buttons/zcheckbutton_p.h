#ifndef ZCHECKBUTTON_P_H
#define ZCHECKBUTTON_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zabstractbutton_p.h"
#include "zcheckbutton.h"

#include <QtCore/qpointer.h>

class QGraphicsLinearLayout;

class ZKIT_EXPORT ZCheckButtonPrivate : public ZAbstractButtonPrivate
{
    Z_DECLARE_PUBLIC(ZCheckButton)
public:
    ZCheckButtonPrivate() : ZAbstractButtonPrivate(ZAbstractButton::ButtonToggle) {}

    void init();
    QGraphicsLinearLayout *rowLayout() const;
    // Fixes the box's width to that of its current image, when it has one.
    void fitBoxToImage();

    QPointer<ZFrameItem> frame;
    QPointer<ZLabel> label;
    QMargins textMargins;
    bool autoAdjust = false;
};

#endif // ZCHECKBUTTON_P_H
