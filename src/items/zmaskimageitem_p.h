#ifndef ZMASKIMAGEITEM_P_H
#define ZMASKIMAGEITEM_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zmaskimageitem.h"
#include "zwidget_p.h"

#include <QtGui/qimage.h>
#include <QtGui/qregion.h>

class ZKIT_EXPORT ZMaskImageItemPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZMaskImageItem)
public:
    // The picture with the mask's alpha, made when first painted after a change.
    const QImage &composed();

    QPixmap pixmap;
    QPixmap maskPicture;
    QString imagePath;
    QRegion maskRegion;
    bool maskMouse = false;

    QString maskImagePath;
    QRect maskRect;
    QRect maskEllipse;
    QImage composedImage;
    bool composedValid = false;
};

#endif // ZMASKIMAGEITEM_P_H
