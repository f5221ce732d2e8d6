#ifndef ZSTACKEDWIDGET_P_H
#define ZSTACKEDWIDGET_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zlayerwidget_p.h"
#include "zstackedwidget.h"

#include <QtCore/qpointer.h>

class QPropertyAnimation;

class ZKIT_EXPORT ZStackedWidgetPrivate : public ZLayerWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZStackedWidget)
public:
    void setCurrent(int index, bool emitSignal);
    // Where the outgoing page stands while the incoming one is at \a pos.
    void followSlide(const QPointF &pos);

    int current = -1;
    int requested = -1;
    bool animated = true;
    int duration = ZStackedWidget::DefaultDuration;
    QEasingCurve::Type easing = QEasingCurve::OutCubic;
    Qt::Orientation orientation = Qt::Horizontal;

    QPropertyAnimation *slide = nullptr;
    QPointer<ZWidget> incoming;
    QPointer<ZWidget> outgoing;
    // The same pages as items, to recognise one leaving in its destructor.
    const QGraphicsItem *incomingItem = nullptr;
    const QGraphicsItem *outgoingItem = nullptr;
    // The incoming page's offset from the outgoing one: +width when it comes from the right.
    QPointF slideOffset;
};

#endif // ZSTACKEDWIDGET_P_H
