#ifndef ZFLIPWIDGET_P_H
#define ZFLIPWIDGET_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zflipwidget.h"
#include "zlayerwidget_p.h"

class QPropertyAnimation;

class ZKIT_EXPORT ZFlipWidgetPrivate : public ZLayerWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZFlipWidget)
public:
    // Turns and shows the faces for the current angle.
    void apply();

    bool flipped = false;
    qreal angle = 0;
    bool animated = true;
    int duration = ZFlipWidget::DefaultDuration;
    QEasingCurve::Type easing = QEasingCurve::InOutQuad;
    QPropertyAnimation *animation = nullptr;
};

#endif // ZFLIPWIDGET_P_H
