#include "zstackedwidget.h"
#include "zstackedwidget_p.h"

#include "zcreator.h"

#include <QtCore/qmetaobject.h>
#include <QtCore/qpropertyanimation.h>

void ZStackedWidgetPrivate::setCurrent(int index, bool emitSignal)
{
    Z_Q(ZStackedWidget);
    current = index;
    for (int i = 0; i < layers.size(); ++i)
        layers.at(i).widget->setVisible(i == current);
    if (emitSignal)
        Q_EMIT q->currentChanged(current);
}

void ZStackedWidgetPrivate::followSlide(const QPointF &pos)
{
    if (outgoing)
        outgoing->setPos(pos - slideOffset);
}

ZStackedWidget::ZStackedWidget(QGraphicsItem *parent)
    : ZLayerWidget(*new ZStackedWidgetPrivate, parent)
{
    Z_D(ZStackedWidget);
    // Pages sliding in and out must not show beyond the widget.
    setFlag(ItemClipsChildrenToShape, true);
    d->slide = new QPropertyAnimation(this);
    d->slide->setPropertyName("pos");
    connect(d->slide, &QVariantAnimation::valueChanged, this,
            [d](const QVariant &value) { d->followSlide(value.toPointF()); });
    connect(d->slide, &QAbstractAnimation::finished, this, &ZStackedWidget::finishSlide);
}

ZStackedWidget::~ZStackedWidget()
{
    // The pages go after this object; a running slide must not touch them.
    Z_D(ZStackedWidget);
    d->slide->disconnect(this);
    d->slide->stop();
}

int ZStackedWidget::currentIndex() const
{
    return d_func()->current;
}

void ZStackedWidget::setCurrentIndex(int index)
{
    Z_D(ZStackedWidget);
    if (index >= count()) {
        d->requested = index;
        return;
    }
    d->requested = -1;
    if (index < 0 || index == d->current)
        return;
    finishSlide();
    const int previous = d->current;
    ZWidget *from = widget(previous);
    ZWidget *to = widget(index);
    const QRectF r = layerRect();
    const bool slide = d->animated && d->duration > 0 && isEnabled() && isVisible() && scene() && from && !r.isEmpty();
    d->setCurrent(index, false);
    if (slide) {
        const qreal sign = index > previous ? 1 : -1;
        d->slideOffset = d->orientation == Qt::Horizontal ? QPointF(sign * r.width(), 0)
                                                          : QPointF(0, sign * r.height());
        d->incoming = to;
        d->outgoing = from;
        d->incomingItem = to;
        d->outgoingItem = from;
        from->setVisible(true);
        d->slide->setTargetObject(to);
        d->slide->setStartValue(r.topLeft() + d->slideOffset);
        d->slide->setEndValue(r.topLeft());
        d->slide->setDuration(d->duration);
        d->slide->setEasingCurve(d->easing);
        to->setPos(r.topLeft() + d->slideOffset);
        d->followSlide(to->pos());
        d->slide->start();
    }
    Q_EMIT currentChanged(index);
}

void ZStackedWidget::construct()
{
    Z_D(ZStackedWidget);
    ZLayerWidget::construct();
    if (d->requested >= 0) {
        const bool animated = d->animated;
        d->animated = false;
        setCurrentIndex(d->requested);
        d->animated = animated;
    }
}

ZWidget *ZStackedWidget::currentWidget() const
{
    return widget(d_func()->current);
}

void ZStackedWidget::setCurrentWidget(ZWidget *page)
{
    setCurrentIndex(indexOf(page));
}

bool ZStackedWidget::animated() const
{
    return d_func()->animated;
}

void ZStackedWidget::setAnimated(bool on)
{
    Z_D(ZStackedWidget);
    if (d->animated == on)
        return;
    d->animated = on;
    if (!on)
        finishSlide();
}

int ZStackedWidget::duration() const
{
    return d_func()->duration;
}

void ZStackedWidget::setDuration(int ms)
{
    d_func()->duration = qMax(0, ms);
}

QEasingCurve::Type ZStackedWidget::easing() const
{
    return d_func()->easing;
}

void ZStackedWidget::setEasing(QEasingCurve::Type type)
{
    // Custom is no curve of its own, and other numbers are none at all.
    if (int(type) < 0 || int(type) >= int(QEasingCurve::Custom))
        return;
    d_func()->easing = type;
}

Qt::Orientation ZStackedWidget::slideOrientation() const
{
    return d_func()->orientation;
}

void ZStackedWidget::setSlideOrientation(Qt::Orientation orientation)
{
    if (orientation != Qt::Horizontal && orientation != Qt::Vertical)
        return;
    d_func()->orientation = orientation;
}

bool ZStackedWidget::isSliding() const
{
    return d_func()->slide->state() == QAbstractAnimation::Running;
}

void ZStackedWidget::finishSlide()
{
    Z_D(ZStackedWidget);
    if (!d->incomingItem && !d->outgoingItem)
        return;
    d->slide->stop();
    d->slide->setTargetObject(nullptr);
    const QRectF r = layerRect();
    if (d->outgoing) {
        d->outgoing->setGeometry(r);
        d->outgoing->setVisible(d->outgoing == currentWidget());
    }
    if (d->incoming)
        d->incoming->setGeometry(r);
    d->incoming = nullptr;
    d->outgoing = nullptr;
    d->incomingItem = nullptr;
    d->outgoingItem = nullptr;
    Q_EMIT slideFinished();
}

void ZStackedWidget::layerInserted(int index)
{
    Z_D(ZStackedWidget);
    if (d->current < 0) {
        d->setCurrent(index, true);
        return;
    }
    widget(index)->setVisible(false);
    if (index <= d->current) {
        ++d->current;
        Q_EMIT currentChanged(d->current);
    }
}

void ZStackedWidget::layerRemoved(int index)
{
    Z_D(ZStackedWidget);
    // A page in its destructor must not be touched by the end of the slide.
    if (d->leaving && d->leaving == d->incomingItem)
        d->incoming = nullptr;
    if (d->leaving && d->leaving == d->outgoingItem)
        d->outgoing = nullptr;
    finishSlide();
    if (index > d->current)
        return;
    if (index < d->current) {
        --d->current;
        Q_EMIT currentChanged(d->current);
        return;
    }
    // The shown page went: show the one that took its place, or the new last one.
    d->setCurrent(qMin(index, count() - 1), true);
}

void ZStackedWidget::layoutLayers()
{
    finishSlide();
    ZLayerWidget::layoutLayers();
}

void ZStackedWidget::visibleEvent(bool visible)
{
    ZLayerWidget::visibleEvent(visible);
    if (!visible)
        finishSlide();
}

Z_REGISTER_WIDGET(ZStackedWidget);
