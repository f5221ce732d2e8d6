#include "zanimationitem.h"
#include "zanimationitem_p.h"

#include "zcreator.h"
#include "zresource.h"

#include <QtGui/qmovie.h>
#include <QtGui/qpainter.h>

#include <cmath>

void ZAnimationItemPrivate::sync()
{
    Z_Q(ZAnimationItem);
    const bool run = playing && valid && q->isVisible() && q->scene();
    switch (movie->state()) {
    case QMovie::Running:
        if (!playing)
            movie->stop();
        else if (!run)
            movie->setPaused(true);
        break;
    case QMovie::Paused:
        if (run)
            movie->setPaused(false);
        else if (!playing)
            movie->stop();
        break;
    case QMovie::NotRunning:
        if (run) {
            // start() rewinds; go on from the frame shown instead.
            const int frame = movie->currentFrameNumber();
            movie->start();
            if (frame > 0)
                movie->jumpToFrame(frame);
        }
        break;
    }
}

ZAnimationItem::ZAnimationItem(QGraphicsItem *parent)
    : ZWidget(*new ZAnimationItemPrivate, parent)
{
    Z_D(ZAnimationItem);
    setAcceptedMouseButtons(Qt::NoButton);
    d->movie = new QMovie(this);
    connect(d->movie, &QMovie::frameChanged, this, [this](int frame) {
        update();
        Q_EMIT frameChanged(frame);
    });
    connect(d->movie, &QMovie::finished, this, [this, d] {
        d->playing = false;
        d->autoStarted = false;
        Q_EMIT finished();
    });
}

ZAnimationItem::~ZAnimationItem()
{
    Z_D(ZAnimationItem);
    d->movie->disconnect(this);
    d->movie->stop();
}

QString ZAnimationItem::imagePath() const
{
    return d_func()->imagePath;
}

void ZAnimationItem::setImagePath(const QString &path)
{
    Z_D(ZAnimationItem);
    if (d->imagePath == path)
        return;
    d->imagePath = path;
    d->movie->stop();
    d->movie->setFileName(path.isEmpty() ? QString() : ZResource::absoluteFileName(path));
    // Keeps the frames read, so that jumps backwards need no rewind
    // (a GIF can only be read forwards).
    d->movie->setCacheMode(QMovie::CacheAll);
    // A file is good when its first frame reads, not just its header; that
    // frame shows before anything plays.
    d->valid = !path.isEmpty() && d->movie->isValid() && d->movie->jumpToFrame(0)
        && !d->movie->currentPixmap().isNull();
    updateGeometry();
    update();
    if (d->autoStart && d->valid && !d->playing) {
        d->playing = true;
        d->autoStarted = true;
    }
    d->sync();
}

bool ZAnimationItem::isValid() const
{
    return d_func()->valid;
}

bool ZAnimationItem::isPlaying() const
{
    return d_func()->playing;
}

void ZAnimationItem::setPlaying(bool on)
{
    Z_D(ZAnimationItem);
    d->autoStarted = false;
    if (d->playing == on)
        return;
    d->playing = on;
    d->sync();
}

bool ZAnimationItem::autoStart() const
{
    return d_func()->autoStart;
}

void ZAnimationItem::setAutoStart(bool on)
{
    Z_D(ZAnimationItem);
    if (d->autoStart == on)
        return;
    d->autoStart = on;
    // Documents may name the file first: undo a play only autoStart began.
    if (!on && d->autoStarted) {
        setPlaying(false);
        if (d->valid)
            d->movie->jumpToFrame(0);
    }
}

bool ZAnimationItem::autoAdjust() const
{
    return d_func()->autoAdjust;
}

void ZAnimationItem::setAutoAdjust(bool on)
{
    Z_D(ZAnimationItem);
    if (d->autoAdjust == on)
        return;
    d->autoAdjust = on;
    update();
}

int ZAnimationItem::speed() const
{
    return d_func()->movie->speed();
}

void ZAnimationItem::setSpeed(int percent)
{
    d_func()->movie->setSpeed(qBound(1, percent, 10000));
}

int ZAnimationItem::currentFrame() const
{
    Z_D(const ZAnimationItem);
    return d->valid ? d->movie->currentFrameNumber() : -1;
}

void ZAnimationItem::setCurrentFrame(int index)
{
    Z_D(ZAnimationItem);
    if (d->valid && index >= 0)
        d->movie->jumpToFrame(index);
}

int ZAnimationItem::frameCount() const
{
    Z_D(const ZAnimationItem);
    return d->valid ? qMax(0, d->movie->frameCount()) : 0;
}

bool ZAnimationItem::isRunning() const
{
    return d_func()->movie->state() == QMovie::Running;
}

QMovie *ZAnimationItem::movie() const
{
    return d_func()->movie;
}

void ZAnimationItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    ZWidget::paint(painter, option, widget);
    Z_D(ZAnimationItem);
    if (!d->valid)
        return;
    const QPixmap frame = d->movie->currentPixmap();
    QSizeF size = frame.deviceIndependentSize();
    if (frame.isNull() || size.isEmpty())
        return;
    if (d->autoAdjust)
        size = size.scaled(rect().size(), Qt::KeepAspectRatio);
    const QPointF c = rect().center();
    const QRectF target(QPointF(std::round(c.x() - size.width() / 2), std::round(c.y() - size.height() / 2)), size);
    painter->setRenderHint(QPainter::SmoothPixmapTransform, d->autoAdjust);
    painter->drawPixmap(target, frame, QRectF(frame.rect()));
}

void ZAnimationItem::start()
{
    setPlaying(true);
}

void ZAnimationItem::stop()
{
    setPlaying(false);
}

QVariant ZAnimationItem::itemChange(GraphicsItemChange change, const QVariant &value)
{
    const QVariant result = ZWidget::itemChange(change, value);
    // Shown or hidden (also through a parent), or into or out of a scene.
    // The show event comes too early for this: the item is not visible yet.
    if (change == ItemSceneHasChanged || change == ItemVisibleHasChanged)
        d_func()->sync();
    return result;
}

QSizeF ZAnimationItem::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    Z_D(const ZAnimationItem);
    if (which == Qt::PreferredSize && !d->followsWidth() && !d->followsHeight() && d->valid) {
        const QSize size = d->movie->currentPixmap().deviceIndependentSize().toSize();
        if (!size.isEmpty())
            return size;
    }
    return ZWidget::sizeHint(which, constraint);
}

Z_REGISTER_WIDGET(ZAnimationItem);
