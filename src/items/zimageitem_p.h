#ifndef ZIMAGEITEM_P_H
#define ZIMAGEITEM_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zimageitem.h"
#include "zwidget_p.h"

class ZKIT_EXPORT ZImageItemPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZImageItem)
public:
    // The margin rectangle: the item's rectangle in whole pixels less the margins.
    QRect marginRect() const;
    // Where the image goes inside \a m, in logical pixels; empty when nothing is drawn.
    QRectF imageRect(const QRect &m) const;

    QPixmap pixmap;
    QString imagePath;
    qreal scale = 1.0;
    qreal rotation = 0.0;
    bool autoAdjust = false;
    bool handHover = false;
    bool acceptClick = false;
    QColor effectColor = QColor(255, 255, 255, 255);
    QColor borderColor;
    int borderPixel = 0;
    Qt::Alignment imageAlignment = Qt::AlignCenter;
    QMargins imageMargins;
};

#endif // ZIMAGEITEM_P_H
