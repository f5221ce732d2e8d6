#include "zloadingitem.h"
#include "zloadingitem_p.h"
#include "zplayback_p.h"

#include "zcreator.h"
#include "ztheme.h"

#include <QtCore/qvariantanimation.h>
#include <QtGui/qpainter.h>

#include <cmath>

const char *const ZLoadingItem::DefaultImagePath = ":/image/theme/anijuhua.png";

void ZLoadingItemPrivate::sync()
{
    Z_Q(ZLoadingItem);
    // Go on from the angle shown.
    ZPlayback::sync(animation, active, q->isVisible() && q->scene() && !pixmap.isNull(),
                    [this] { return int(std::round(rawAngle / 360 * animation->duration())); });
}

void ZLoadingItemPrivate::setRawAngle(qreal degrees)
{
    Z_Q(ZLoadingItem);
    rawAngle = std::fmod(degrees, 360);
    if (rawAngle < 0)
        rawAngle += 360;
    qreal shown = rawAngle;
    if (steps > 0) {
        const qreal step = 360.0 / steps;
        shown = std::floor(rawAngle / step + 1e-9) * step;
        if (shown >= 360)
            shown = 0;
    }
    if (shown == angle)
        return;
    angle = shown;
    q->update();
}

ZLoadingItem::ZLoadingItem(QGraphicsItem *parent)
    : ZWidget(*new ZLoadingItemPrivate, parent)
{
    Z_D(ZLoadingItem);
    setAcceptedMouseButtons(Qt::NoButton);
    d->animation = new QVariantAnimation(this);
    d->animation->setStartValue(qreal(0));
    d->animation->setEndValue(qreal(360));
    d->animation->setDuration(d->period);
    d->animation->setLoopCount(-1);
    connect(d->animation, &QVariantAnimation::valueChanged, this,
            [d](const QVariant &value) { d->setRawAngle(value.toReal()); });
    setImagePath(QString::fromLatin1(DefaultImagePath));
}

ZLoadingItem::~ZLoadingItem()
{
    Z_D(ZLoadingItem);
    d->animation->disconnect(this);
    d->animation->stop();
}

QString ZLoadingItem::imagePath() const
{
    return d_func()->imagePath;
}

void ZLoadingItem::setImagePath(const QString &path)
{
    Z_D(ZLoadingItem);
    if (d->imagePath == path)
        return;
    d->imagePath = path;
    d->pixmap = path.isEmpty() ? QPixmap() : ZTheme::getPixmap(path, hasTheme(), true);
    updateGeometry();
    update();
    d->sync();
}

int ZLoadingItem::period() const
{
    return d_func()->period;
}

void ZLoadingItem::setPeriod(int ms)
{
    Z_D(ZLoadingItem);
    ms = qBound(10, ms, 600000);
    if (d->period == ms)
        return;
    d->period = ms;
    const QAbstractAnimation::State state = d->animation->state();
    d->animation->stop();
    d->animation->setDuration(ms);
    if (state != QAbstractAnimation::Stopped) {
        d->sync();
        if (state == QAbstractAnimation::Paused && d->animation->state() == QAbstractAnimation::Running)
            d->animation->pause();
    }
}

int ZLoadingItem::steps() const
{
    return d_func()->steps;
}

void ZLoadingItem::setSteps(int steps)
{
    Z_D(ZLoadingItem);
    steps = qBound(0, steps, 360);
    if (d->steps == steps)
        return;
    d->steps = steps;
    d->setRawAngle(d->rawAngle);
}

bool ZLoadingItem::isActive() const
{
    return d_func()->active;
}

void ZLoadingItem::setActive(bool on)
{
    Z_D(ZLoadingItem);
    if (d->active == on)
        return;
    d->active = on;
    d->sync();
}

bool ZLoadingItem::isRunning() const
{
    return d_func()->animation->state() == QAbstractAnimation::Running;
}

qreal ZLoadingItem::angle() const
{
    return d_func()->angle;
}

void ZLoadingItem::start()
{
    setActive(true);
}

void ZLoadingItem::stop()
{
    setActive(false);
}

void ZLoadingItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    ZWidget::paint(painter, option, widget);
    Z_D(ZLoadingItem);
    if (d->pixmap.isNull())
        return;
    const QSizeF size = d->pixmap.deviceIndependentSize();
    const QPointF c = rect().center();
    painter->save();
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->translate(c);
    painter->rotate(d->angle);
    painter->drawPixmap(QRectF(QPointF(-size.width() / 2, -size.height() / 2), size), d->pixmap,
                        QRectF(d->pixmap.rect()));
    painter->restore();
}

void ZLoadingItem::doThemeChange()
{
    ZWidget::doThemeChange();
    Z_D(ZLoadingItem);
    if (!d->imagePath.isEmpty())
        d->pixmap = ZTheme::getPixmap(d->imagePath, hasTheme(), true);
    update();
}

QVariant ZLoadingItem::itemChange(GraphicsItemChange change, const QVariant &value)
{
    const QVariant result = ZWidget::itemChange(change, value);
    // Shown or hidden (also through a parent), or into or out of a scene.
    // The show event comes too early for this: the item is not visible yet.
    if (change == ItemSceneHasChanged || change == ItemVisibleHasChanged)
        d_func()->sync();
    return result;
}

QSizeF ZLoadingItem::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    Z_D(const ZLoadingItem);
    if (which == Qt::PreferredSize && !d->followsWidth() && !d->followsHeight() && !d->pixmap.isNull())
        return d->pixmap.deviceIndependentSize();
    return ZWidget::sizeHint(which, constraint);
}

Z_REGISTER_WIDGET(ZLoadingItem);
