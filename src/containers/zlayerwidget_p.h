#ifndef ZLAYERWIDGET_P_H
#define ZLAYERWIDGET_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zlayerwidget.h"
#include "zwidget_p.h"

#include <QtCore/qlist.h>

class ZKIT_EXPORT ZLayerWidgetPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZLayerWidget)
public:
    struct Layer
    {
        ZWidget *widget;
        // Kept apart: a layer leaving in its destructor is only known by its item.
        const QGraphicsItem *item;
    };

    int indexOfItem(const QGraphicsItem *item) const;

    QList<Layer> layers;
    // The layer being removed, while layerRemoved() runs.
    const QGraphicsItem *leaving = nullptr;
};

#endif // ZLAYERWIDGET_P_H
