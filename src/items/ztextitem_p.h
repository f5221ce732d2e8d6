#ifndef ZTEXTITEM_P_H
#define ZTEXTITEM_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "ztextitem.h"
#include "zwidget_p.h"

class ZKIT_EXPORT ZTextItemPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZTextItem)
public:
    void init();

    QGraphicsTextItem *text = nullptr;
    bool idealSizeAsMinimum = false;
    QString filePath;
};

#endif // ZTEXTITEM_P_H
