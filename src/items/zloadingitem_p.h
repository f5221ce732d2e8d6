#ifndef ZLOADINGITEM_P_H
#define ZLOADINGITEM_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zloadingitem.h"
#include "zwidget_p.h"

#include <QtGui/qpixmap.h>

class QVariantAnimation;

class ZKIT_EXPORT ZLoadingItemPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZLoadingItem)
public:
    void sync();
    void setRawAngle(qreal degrees);

    QString imagePath;
    QPixmap pixmap;
    int period = 1000;
    int steps = 12;
    bool active = true;
    qreal rawAngle = 0;
    qreal angle = 0;
    QVariantAnimation *animation = nullptr;
};

#endif // ZLOADINGITEM_P_H
