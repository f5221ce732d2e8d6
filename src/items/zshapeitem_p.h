#ifndef ZSHAPEITEM_P_H
#define ZSHAPEITEM_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zshapeitem.h"
#include "zwidget_p.h"

class ZKIT_EXPORT ZShapeItemPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZShapeItem)
public:
    void changePen(const QPen &newPen);

    QPen pen;
    QBrush brush = QBrush(Qt::transparent, Qt::SolidPattern);
    QMargins shapeMargins;
    ZShapeItem::Shape shape = ZShapeItem::Rect;
    int roundPixel = 0;
    QSize fan = QSize(0, 360 * 16);
    bool smooth = false;
    QString texture;
    QtGradient gradient;
};

#endif // ZSHAPEITEM_P_H
