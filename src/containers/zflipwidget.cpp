#include "zflipwidget.h"
#include "zflipwidget_p.h"

#include "zcreator.h"

#include <QtCore/qpropertyanimation.h>

#include <cmath>

void ZFlipWidgetPrivate::apply()
{
    for (int i = 0; i < layers.size(); ++i) {
        ZWidget *face = layers.at(i).widget;
        if (i > 1) {
            face->setVisible(false);
            continue;
        }
        face->setOriginPoint(face->rect().center());
        face->setYRotate(i == 0 ? angle : angle - 180);
        face->setVisible(i == 0 ? angle < 90 : angle >= 90);
    }
}

ZFlipWidget::ZFlipWidget(QGraphicsItem *parent)
    : ZLayerWidget(*new ZFlipWidgetPrivate, parent)
{
    Z_D(ZFlipWidget);
    d->animation = new QPropertyAnimation(this, "angle", this);
    connect(d->animation, &QAbstractAnimation::finished, this, &ZFlipWidget::turnFinished);
}

ZFlipWidget::~ZFlipWidget()
{
    Z_D(ZFlipWidget);
    d->animation->disconnect(this);
    d->animation->stop();
}

ZWidget *ZFlipWidget::front() const
{
    return widget(0);
}

ZWidget *ZFlipWidget::back() const
{
    return widget(1);
}

bool ZFlipWidget::isFlipped() const
{
    return d_func()->flipped;
}

void ZFlipWidget::setFlipped(bool on)
{
    Z_D(ZFlipWidget);
    if (d->flipped == on)
        return;
    d->flipped = on;
    const qreal target = on ? 180 : 0;
    d->animation->stop();
    if (d->animated && d->duration > 0 && isEnabled() && isVisible() && scene()) {
        // A turn reversed half-way takes only the time for the way back.
        const qreal way = std::abs(target - d->angle) / 180;
        d->animation->setStartValue(d->angle);
        d->animation->setEndValue(target);
        d->animation->setDuration(qMax(1, int(std::round(d->duration * way))));
        d->animation->setEasingCurve(d->easing);
        d->animation->start();
    } else {
        setAngle(target);
        Q_EMIT turnFinished();
    }
    Q_EMIT flippedChanged(on);
}

qreal ZFlipWidget::angle() const
{
    return d_func()->angle;
}

void ZFlipWidget::setAngle(qreal degrees)
{
    Z_D(ZFlipWidget);
    if (std::isnan(degrees))
        return;
    degrees = qBound<qreal>(0, degrees, 180);
    if (d->angle == degrees)
        return;
    d->angle = degrees;
    d->apply();
}

bool ZFlipWidget::animated() const
{
    return d_func()->animated;
}

void ZFlipWidget::setAnimated(bool on)
{
    Z_D(ZFlipWidget);
    if (d->animated == on)
        return;
    d->animated = on;
    if (!on)
        finishTurn();
}

int ZFlipWidget::duration() const
{
    return d_func()->duration;
}

void ZFlipWidget::setDuration(int ms)
{
    d_func()->duration = qMax(0, ms);
}

QEasingCurve::Type ZFlipWidget::easing() const
{
    return d_func()->easing;
}

void ZFlipWidget::setEasing(QEasingCurve::Type type)
{
    if (int(type) < 0 || int(type) >= int(QEasingCurve::Custom))
        return;
    d_func()->easing = type;
}

bool ZFlipWidget::isTurning() const
{
    return d_func()->animation->state() == QAbstractAnimation::Running;
}

void ZFlipWidget::flip()
{
    setFlipped(!isFlipped());
}

void ZFlipWidget::finishTurn()
{
    Z_D(ZFlipWidget);
    if (d->animation->state() == QAbstractAnimation::Stopped)
        return;
    d->animation->stop();
    setAngle(d->flipped ? 180 : 0);
    Q_EMIT turnFinished();
}

void ZFlipWidget::layerInserted(int index)
{
    ZLayerWidget::layerInserted(index);
    d_func()->apply();
}

void ZFlipWidget::layerRemoved(int index)
{
    ZLayerWidget::layerRemoved(index);
    d_func()->apply();
}

void ZFlipWidget::layoutLayers()
{
    ZLayerWidget::layoutLayers();
    d_func()->apply();
}

void ZFlipWidget::visibleEvent(bool visible)
{
    ZLayerWidget::visibleEvent(visible);
    if (!visible)
        finishTurn();
}

Z_REGISTER_WIDGET(ZFlipWidget);
