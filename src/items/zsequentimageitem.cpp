#include "zsequentimageitem.h"
#include "zsequentimageitem_p.h"
#include "zplayback_p.h"

#include "zcreator.h"
#include "ztheme.h"

#include <QtCore/qvariantanimation.h>
#include <QtGui/qpainter.h>

#include <cmath>

namespace {

// Bounds a strip or list can produce, so that a garbage count cannot eat memory.
constexpr int MaximumFrames = 4096;

// Where \a size goes inside \a bounds: centred at its own size, or fitted keeping its aspect ratio.
QRectF placeFrame(const QSizeF &size, const QRectF &bounds, bool fit)
{
    if (size.isEmpty())
        return QRectF();
    QSizeF s = size;
    if (fit)
        s = size.scaled(bounds.size(), Qt::KeepAspectRatio);
    return QRectF(QPointF(std::round(bounds.center().x() - s.width() / 2), std::round(bounds.center().y() - s.height() / 2)), s);
}

} // namespace

void ZSequentImageItemPrivate::load()
{
    Z_Q(ZSequentImageItem);
    frames.clear();
    if (imagePath.contains(QLatin1Char('|'))) {
        const QStringList parts = imagePath.split(QLatin1Char('|'), Qt::SkipEmptyParts);
        for (const QString &part : parts) {
            const QPixmap pixmap = ZTheme::getPixmap(part.trimmed(), q->hasTheme(), true);
            if (!pixmap.isNull() && frames.size() < MaximumFrames)
                frames.append(pixmap);
        }
    } else if (!imagePath.isEmpty()) {
        const QPixmap strip = ZTheme::getPixmap(imagePath, q->hasTheme(), true);
        const int w = strip.width();
        const int h = strip.height();
        if (w > 0 && h > 0) {
            int n = stripCount > 0 ? stripCount : qMax(1, w / h);
            n = qMin(qMin(n, w), MaximumFrames);
            const int frameWidth = w / n;
            for (int i = 0; i < n; ++i) {
                QPixmap frame = strip.copy(i * frameWidth, 0, frameWidth, h);
                frame.setDevicePixelRatio(strip.devicePixelRatio());
                frames.append(frame);
            }
        }
    }
}

void ZSequentImageItemPrivate::setFrame(int index)
{
    Z_Q(ZSequentImageItem);
    if (index == current)
        return;
    current = index;
    q->update();
    Q_EMIT q->frameChanged(current);
}

void ZSequentImageItemPrivate::configure()
{
    const int n = int(frames.size());
    animation->setStartValue(qreal(0));
    animation->setEndValue(qreal(qMax(n, 1)));
    animation->setDuration(qMax(1, int(std::round(qMax(n, 1) * 1000.0 / fps))));
    animation->setLoopCount(loopCount);
}

void ZSequentImageItemPrivate::sync()
{
    Z_Q(ZSequentImageItem);
    // Time of the current frame, rounded up so that it maps back to it.
    ZPlayback::sync(animation, wanted, !frames.isEmpty() && q->isVisible() && q->scene(), [this] {
        return int(std::ceil(qMax(0, current) * qreal(animation->duration()) / frames.size()));
    });
}

ZSequentImageItem::ZSequentImageItem(QGraphicsItem *parent)
    : ZWidget(*new ZSequentImageItemPrivate, parent)
{
    Z_D(ZSequentImageItem);
    setAcceptedMouseButtons(Qt::NoButton);
    d->animation = new QVariantAnimation(this);
    d->configure();
    connect(d->animation, &QVariantAnimation::valueChanged, this, [d](const QVariant &value) {
        if (d->frames.isEmpty())
            return;
        const int frame = int(std::floor(value.toReal()));
        d->setFrame(qBound(0, frame, int(d->frames.size()) - 1));
    });
    connect(d->animation, &QAbstractAnimation::finished, this, [this, d] {
        // Qt also reports a stop() of an endless play as finished: only the
        // end of the last loop counts here.
        const QVariantAnimation *a = d->animation;
        if (a->loopCount() < 0 || a->currentLoopTime() < a->duration())
            return;
        d->wanted = false;
        d->autoStarted = false;
        if (!d->frames.isEmpty())
            d->setFrame(int(d->frames.size()) - 1);
        Q_EMIT finished();
    });
}

ZSequentImageItem::~ZSequentImageItem()
{
    Z_D(ZSequentImageItem);
    d->animation->disconnect(this);
    d->animation->stop();
}

QString ZSequentImageItem::imagePath() const
{
    return d_func()->imagePath;
}

void ZSequentImageItem::setImagePath(const QString &path)
{
    Z_D(ZSequentImageItem);
    if (d->imagePath == path)
        return;
    d->imagePath = path;
    d->load();
    setFrames(d->frames);
    d->imagePath = path; // setFrames() forgets it
}

void ZSequentImageItem::setFrames(const QList<QPixmap> &frames)
{
    Z_D(ZSequentImageItem);
    QList<QPixmap> kept;
    for (const QPixmap &frame : frames) {
        if (!frame.isNull() && kept.size() < MaximumFrames)
            kept.append(frame);
    }
    d->imagePath.clear();
    d->animation->stop();
    d->frames = kept;
    d->configure();
    d->current = -2; // so that the next frame is reported even if it is -1 again
    d->setFrame(kept.isEmpty() ? -1 : 0);
    updateGeometry();
    if (d->autoStart && !kept.isEmpty() && !d->wanted) {
        d->wanted = true;
        d->autoStarted = true;
    }
    d->sync();
}

int ZSequentImageItem::stripCount() const
{
    return d_func()->stripCount;
}

void ZSequentImageItem::setStripCount(int count)
{
    Z_D(ZSequentImageItem);
    count = qMax(0, count);
    if (d->stripCount == count)
        return;
    d->stripCount = count;
    if (!d->imagePath.isEmpty() && !d->imagePath.contains(QLatin1Char('|'))) {
        const QString path = d->imagePath;
        d->imagePath.clear();
        setImagePath(path);
    }
}

qreal ZSequentImageItem::fps() const
{
    return d_func()->fps;
}

void ZSequentImageItem::setFps(qreal fps)
{
    Z_D(ZSequentImageItem);
    if (!std::isfinite(fps) || fps <= 0)
        return;
    fps = qMin<qreal>(fps, 1000);
    if (d->fps == fps)
        return;
    d->fps = fps;
    const bool active = d->animation->state() != QAbstractAnimation::Stopped;
    const bool paused = d->animation->state() == QAbstractAnimation::Paused;
    d->animation->stop();
    d->configure();
    if (active) {
        // Go on from the frame shown, at the new pace.
        const bool wanted = d->wanted;
        d->wanted = true;
        d->sync();
        if (paused)
            d->animation->pause();
        d->wanted = wanted;
    }
}

int ZSequentImageItem::loopCount() const
{
    return d_func()->loopCount;
}

void ZSequentImageItem::setLoopCount(int count)
{
    Z_D(ZSequentImageItem);
    if (count == 0 || count < -1)
        count = 1;
    if (d->loopCount == count)
        return;
    d->loopCount = count;
    d->animation->setLoopCount(count);
}

bool ZSequentImageItem::autoStart() const
{
    return d_func()->autoStart;
}

void ZSequentImageItem::setAutoStart(bool on)
{
    Z_D(ZSequentImageItem);
    if (d->autoStart == on)
        return;
    d->autoStart = on;
    // Documents may name the images first: undo a play only autoStart began.
    if (!on && d->autoStarted) {
        stop();
        if (!d->frames.isEmpty())
            d->setFrame(0);
    }
}

bool ZSequentImageItem::autoAdjust() const
{
    return d_func()->autoAdjust;
}

void ZSequentImageItem::setAutoAdjust(bool on)
{
    Z_D(ZSequentImageItem);
    if (d->autoAdjust == on)
        return;
    d->autoAdjust = on;
    update();
}

int ZSequentImageItem::frameCount() const
{
    return int(d_func()->frames.size());
}

int ZSequentImageItem::currentFrame() const
{
    return d_func()->current;
}

void ZSequentImageItem::setCurrentFrame(int index)
{
    Z_D(ZSequentImageItem);
    if (index < 0 || index >= d->frames.size())
        return;
    d->setFrame(index);
    if (d->animation->state() != QAbstractAnimation::Stopped) {
        const int loop = d->animation->currentLoop();
        const int time = int(std::ceil(index * qreal(d->animation->duration()) / d->frames.size()));
        d->animation->setCurrentTime(loop * d->animation->duration() + time);
    }
}

QPixmap ZSequentImageItem::currentPixmap() const
{
    Z_D(const ZSequentImageItem);
    return d->current >= 0 && d->current < d->frames.size() ? d->frames.at(d->current) : QPixmap();
}

bool ZSequentImageItem::isRunning() const
{
    return d_func()->animation->state() == QAbstractAnimation::Running;
}

void ZSequentImageItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    ZWidget::paint(painter, option, widget);
    const QPixmap pixmap = currentPixmap();
    const QRectF target = placeFrame(pixmap.deviceIndependentSize(), rect(), autoAdjust());
    if (target.isEmpty())
        return;
    painter->setRenderHint(QPainter::SmoothPixmapTransform, autoAdjust());
    painter->drawPixmap(target, pixmap, QRectF(pixmap.rect()));
}

void ZSequentImageItem::doThemeChange()
{
    ZWidget::doThemeChange();
    Z_D(ZSequentImageItem);
    if (d->imagePath.isEmpty())
        return;
    // Re-tinted frames, same place in the play.
    const int frame = d->current;
    d->load();
    d->current = -2;
    d->setFrame(d->frames.isEmpty() ? -1 : qBound(0, frame, int(d->frames.size()) - 1));
}

void ZSequentImageItem::start()
{
    Z_D(ZSequentImageItem);
    if (d->animation->state() == QAbstractAnimation::Stopped && d->current >= d->frames.size() - 1)
        d->setFrame(d->frames.isEmpty() ? -1 : 0);
    d->wanted = true;
    d->autoStarted = false;
    d->sync();
}

void ZSequentImageItem::stop()
{
    Z_D(ZSequentImageItem);
    d->wanted = false;
    d->autoStarted = false;
    d->animation->stop();
}

QVariant ZSequentImageItem::itemChange(GraphicsItemChange change, const QVariant &value)
{
    const QVariant result = ZWidget::itemChange(change, value);
    // Shown or hidden (also through a parent), or into or out of a scene.
    // The show event comes too early for this: the item is not visible yet.
    if (change == ItemSceneHasChanged || change == ItemVisibleHasChanged)
        d_func()->sync();
    return result;
}

QSizeF ZSequentImageItem::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    Z_D(const ZSequentImageItem);
    if (which == Qt::PreferredSize && !d->followsWidth() && !d->followsHeight() && !d->frames.isEmpty())
        return d->frames.first().deviceIndependentSize();
    return ZWidget::sizeHint(which, constraint);
}

Z_REGISTER_WIDGET(ZSequentImageItem);
