#include "zmaskimageitem.h"
#include "zmaskimageitem_p.h"

#include "zcreator.h"
#include "ztheme.h"

#include <QtCore/qdatetime.h>
#include <QtCore/qrandom.h>
#include <QtGui/qbitmap.h>
#include <QtGui/qpainter.h>
#include <QtWidgets/qgraphicssceneevent.h>

const QImage &ZMaskImageItemPrivate::composed()
{
    if (composedValid)
        return composedImage;
    composedValid = true;
    composedImage = QImage();
    if (pixmap.isNull() || maskPicture.isNull())
        return composedImage;
    // The mask decides the resolution: a dense mask keeps its detail.
    composedImage = pixmap.toImage()
                        .scaled(maskPicture.size(), Qt::IgnoreAspectRatio, Qt::FastTransformation)
                        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    composedImage.setDevicePixelRatio(1);
    QPainter p(&composedImage);
    p.setCompositionMode(QPainter::CompositionMode_DestinationAtop);
    p.drawPixmap(composedImage.rect(), maskPicture);
    return composedImage;
}

ZMaskImageItem::ZMaskImageItem(QGraphicsItem *parent)
    : ZMaskImageItem(*new ZMaskImageItemPrivate, parent)
{
}

ZMaskImageItem::ZMaskImageItem(ZMaskImageItemPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    setAcceptedMouseButtons(Qt::NoButton);
}

ZMaskImageItem::~ZMaskImageItem() = default;

QString ZMaskImageItem::imagePath() const
{
    return d_func()->imagePath;
}

void ZMaskImageItem::setImagePath(const QString &path)
{
    Z_D(ZMaskImageItem);
    if (d->imagePath == path)
        return;
    d->imagePath = path;
    d->pixmap = ZTheme::getPixmap(path, false, true);
    d->composedValid = false;
    update();
}

QPixmap ZMaskImageItem::pixmap() const
{
    return d_func()->pixmap;
}

void ZMaskImageItem::setPixmap(const QPixmap &pixmap)
{
    Z_D(ZMaskImageItem);
    d->pixmap = pixmap;
    d->composedValid = false;
    update();
}

QString ZMaskImageItem::maskImage() const
{
    return d_func()->maskImagePath;
}

void ZMaskImageItem::setMaskImage(const QString &path)
{
    Z_D(ZMaskImageItem);
    d->maskImagePath = path;
    d->maskPicture = ZTheme::getPixmap(path, false, true);
    d->composedValid = false;

    const QSize logical = d->maskPicture.deviceIndependentSize().toSize();
    if (d->maskPicture.isNull() || logical.isEmpty()) {
        d->maskRegion = QRegion();
    } else if (!d->maskPicture.hasAlphaChannel()) {
        d->maskRegion = QRegion(QRect(QPoint(), logical));
    } else {
        // The region is in item coordinates, so a dense mask is measured at its logical size.
        QImage alpha = d->maskPicture.toImage();
        if (alpha.size() != logical)
            alpha = alpha.scaled(logical, Qt::IgnoreAspectRatio, Qt::FastTransformation);
        d->maskRegion = QRegion(QBitmap::fromImage(alpha.createAlphaMask()));
    }
    update();
}

QRect ZMaskImageItem::maskRect() const
{
    return d_func()->maskRect;
}

void ZMaskImageItem::setMaskRect(const QRect &rect)
{
    Z_D(ZMaskImageItem);
    d->maskRect = rect;
    d->maskRegion = QRegion(rect);
    update();
}

QRect ZMaskImageItem::maskEllipse() const
{
    return d_func()->maskEllipse;
}

void ZMaskImageItem::setMaskEllipse(const QRect &rect)
{
    Z_D(ZMaskImageItem);
    d->maskEllipse = rect;
    d->maskRegion = QRegion(rect, QRegion::Ellipse);
    update();
}

QRegion ZMaskImageItem::maskRegion() const
{
    return d_func()->maskRegion;
}

bool ZMaskImageItem::maskMouse() const
{
    return d_func()->maskMouse;
}

void ZMaskImageItem::setMaskMouse(bool on)
{
    Z_D(ZMaskImageItem);
    d->maskMouse = on;
    setAcceptHoverEvents(on);
    setAcceptedMouseButtons(on ? Qt::LeftButton | Qt::RightButton : Qt::NoButton);
}

bool ZMaskImageItem::getBatchRandomPoint(QList<QPoint> &points, int count, QGraphicsItem *mapTo)
{
    Z_D(ZMaskImageItem);
    QRandomGenerator random{quint32(QDateTime::currentMSecsSinceEpoch())};
    points.clear();
    count = qMax(count, 0);

    if (!d->maskRegion.isEmpty()) {
        const QRect bounds = d->maskRegion.boundingRect();
        if (bounds.isEmpty())
            return false;
        // Samples start at 0, not at the region's corner; a region with no
        // point there would never yield one.
        const QRect space(0, 0, bounds.width(), bounds.height());
        if (d->maskRegion.intersected(space).isEmpty())
            return false;
        points.reserve(count);
        while (points.size() < count) {
            const QPoint p(int(random.generate() % quint32(bounds.width())),
                           int(random.generate() % quint32(bounds.height())));
            if (d->maskRegion.contains(p))
                points.append(p);
        }
    } else {
        const QRect r = rect().toRect();
        if (r.isEmpty())
            return false;
        points.reserve(count);
        for (int i = 0; i < count; ++i) {
            points.append(QPoint(int(random.generate() % quint32(r.width())),
                                 int(random.generate() % quint32(r.height()))));
        }
    }

    if (mapTo) {
        for (QPoint &p : points)
            p = mapToItem(mapTo, QPointF(p)).toPoint();
    }
    return true;
}

void ZMaskImageItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    ZWidget::paint(painter, option, widget);
    Z_D(ZMaskImageItem);
    if (d->pixmap.isNull())
        return;
    const QRect target(0, 0, int(size().width()), int(size().height()));
    painter->save();
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (d->maskRegion.isEmpty()) {
        painter->drawPixmap(target, d->pixmap);
    } else {
        const QImage &image = d->composed();
        if (!image.isNull())
            painter->drawImage(target, image);
    }
    painter->restore();
}

bool ZMaskImageItem::filterMessage(const QPointF &pos) const
{
    Z_D(const ZMaskImageItem);
    return d->maskMouse && d->maskRegion.contains(pos.toPoint());
}

void ZMaskImageItem::dispatch(QEvent *event, const QPointF &pos)
{
    const bool inside = filterMessage(pos);
    event->setAccepted(inside);
    if (inside)
        Q_EMIT mouseEvent(event);
}

void ZMaskImageItem::hoverEnterEvent(QGraphicsSceneHoverEvent *event)
{
    dispatch(event, event->pos());
}

void ZMaskImageItem::hoverMoveEvent(QGraphicsSceneHoverEvent *event)
{
    dispatch(event, event->pos());
}

void ZMaskImageItem::hoverLeaveEvent(QGraphicsSceneHoverEvent *event)
{
    dispatch(event, event->pos());
}

void ZMaskImageItem::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    dispatch(event, event->pos());
}

void ZMaskImageItem::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    dispatch(event, event->pos());
}

void ZMaskImageItem::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    dispatch(event, event->pos());
}

Z_REGISTER_WIDGET(ZMaskImageItem);
