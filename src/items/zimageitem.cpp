#include "zimageitem.h"
#include "zimageitem_p.h"

#include "zcreator.h"
#include "ztheme.h"

#include <QtGui/qpainter.h>
#include <QtWidgets/qgraphicseffect.h>
#include <QtWidgets/qgraphicssceneevent.h>

#include <cmath>

namespace {

enum class Placement { Centre, LeftMiddle, RightMiddle, BottomCentre, TopCentre, TopLeft, TopRight, BottomLeft, BottomRight };

// The first matching test wins; the order makes a lone top flag (and 0) centre the image.
Placement placementFor(Qt::Alignment alignment)
{
    const int a = int(alignment);
    const bool left = a & Qt::AlignLeft;
    const bool right = a & Qt::AlignRight;
    const bool hcentre = a & Qt::AlignHCenter;
    const bool top = a & Qt::AlignTop;
    const bool bottom = a & Qt::AlignBottom;
    const bool vcentre = a & Qt::AlignVCenter;

    if (hcentre && vcentre)
        return Placement::Centre;
    if (left && vcentre)
        return Placement::LeftMiddle;
    if (right && vcentre)
        return Placement::RightMiddle;
    if (bottom && hcentre)
        return Placement::BottomCentre;
    if (top && hcentre)
        return Placement::TopCentre;
    if (top && left)
        return Placement::TopLeft;
    if (top && right)
        return Placement::TopRight;
    if (bottom && left)
        return Placement::BottomLeft;
    if (bottom && right)
        return Placement::BottomRight;
    if (left)
        return Placement::TopLeft;
    if (right)
        return Placement::TopRight;
    if (bottom)
        return Placement::BottomLeft;
    if (hcentre)
        return Placement::TopCentre;
    if (vcentre)
        return Placement::LeftMiddle;
    return Placement::Centre;
}

// Offset of a length \a size placed at the start, middle or end of [0, \a room],
// keeping \a gap from the edge it is put against.
qreal place(int where, qreal size, int room, int gap)
{
    switch (where) {
    case 0:
        return gap;
    case 2:
        return room - gap - size;
    default:
        return std::round((room - size) / 2);
    }
}

} // namespace

QRect ZImageItemPrivate::marginRect() const
{
    return q_func()->rect().toRect().marginsRemoved(imageMargins);
}

QRectF ZImageItemPrivate::imageRect(const QRect &m) const
{
    const QSizeF logical = pixmap.deviceIndependentSize();
    if (pixmap.isNull() || logical.isEmpty())
        return QRectF();
    const int b = borderColor.isValid() ? borderPixel : 0;

    QSizeF size;
    if (autoAdjust) {
        const qreal f = qMin((m.width() - 2 * b) / logical.width(), (m.height() - 2 * b) / logical.height());
        // Whole pixels that still fit: a fraction would blur the edges.
        size = QSizeF(std::floor(logical.width() * f + 1e-6), std::floor(logical.height() * f + 1e-6));
    } else {
        size = QSizeF(std::round(logical.width() * scale), std::round(logical.height() * scale));
    }
    if (!(size.width() > 0 && size.height() > 0))
        return QRectF();

    // 0 start, 1 middle, 2 end of each axis.
    int h = 1;
    int v = 1;
    switch (placementFor(imageAlignment)) {
    case Placement::Centre: break;
    case Placement::LeftMiddle: h = 0; break;
    case Placement::RightMiddle: h = 2; break;
    case Placement::BottomCentre: v = 2; break;
    case Placement::TopCentre: v = 0; break;
    case Placement::TopLeft: h = 0; v = 0; break;
    case Placement::TopRight: h = 2; v = 0; break;
    case Placement::BottomLeft: h = 0; v = 2; break;
    case Placement::BottomRight: h = 2; v = 2; break;
    }
    return QRectF(QPointF(m.x() + place(h, size.width(), m.width(), b),
                          m.y() + place(v, size.height(), m.height(), b)),
                  size);
}

ZImageItem::ZImageItem(QGraphicsItem *parent)
    : ZImageItem(*new ZImageItemPrivate, parent)
{
}

ZImageItem::ZImageItem(ZImageItemPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    setAcceptedMouseButtons(Qt::NoButton);
}

ZImageItem::~ZImageItem() = default;

QString ZImageItem::imagePath() const
{
    return d_func()->imagePath;
}

void ZImageItem::setImagePath(const QString &path)
{
    Z_D(ZImageItem);
    if (d->imagePath == path)
        return;
    d->imagePath = path;
    d->pixmap = ZTheme::getPixmap(path, hasTheme(), true);
    update();
}

QPixmap ZImageItem::pixmap() const
{
    return d_func()->pixmap;
}

void ZImageItem::setPixmap(const QPixmap &pixmap)
{
    Z_D(ZImageItem);
    d->imagePath.clear();
    d->pixmap = pixmap;
    update();
}

QSize ZImageItem::pixmapSize() const
{
    return d_func()->pixmap.deviceIndependentSize().toSize();
}

qreal ZImageItem::scale() const
{
    return d_func()->scale;
}

void ZImageItem::setScale(qreal scale)
{
    Z_D(ZImageItem);
    if (!std::isfinite(scale) || d->scale == scale)
        return;
    d->scale = scale;
    update();
}

qreal ZImageItem::rotation() const
{
    return d_func()->rotation;
}

void ZImageItem::setRotation(qreal degrees)
{
    Z_D(ZImageItem);
    if (!std::isfinite(degrees) || d->rotation == degrees)
        return;
    d->rotation = degrees;
    update();
}

bool ZImageItem::autoAdjust() const
{
    return d_func()->autoAdjust;
}

void ZImageItem::setAutoAdjust(bool on)
{
    Z_D(ZImageItem);
    if (d->autoAdjust == on)
        return;
    d->autoAdjust = on;
    update();
}

QMargins ZImageItem::imageMargins() const
{
    return d_func()->imageMargins;
}

void ZImageItem::setImageMargins(const QMargins &margins)
{
    Z_D(ZImageItem);
    if (d->imageMargins == margins)
        return;
    d->imageMargins = margins;
    update();
}

Qt::Alignment ZImageItem::imageAlignment() const
{
    return d_func()->imageAlignment;
}

void ZImageItem::setImageAlignment(Qt::Alignment alignment)
{
    Z_D(ZImageItem);
    if (d->imageAlignment == alignment)
        return;
    d->imageAlignment = alignment;
    update();
}

QColor ZImageItem::borderColor() const
{
    return d_func()->borderColor;
}

void ZImageItem::setBorderColor(const QColor &color)
{
    Z_D(ZImageItem);
    if (d->borderColor == color)
        return;
    d->borderColor = color;
    update();
}

int ZImageItem::borderPixel() const
{
    return d_func()->borderPixel;
}

void ZImageItem::setBorderPixel(int pixel)
{
    Z_D(ZImageItem);
    if (d->borderPixel == pixel)
        return;
    d->borderPixel = pixel;
    update();
}

bool ZImageItem::handHover() const
{
    return d_func()->handHover;
}

void ZImageItem::setHandHover(bool on)
{
    Z_D(ZImageItem);
    if (d->handHover == on)
        return;
    d->handHover = on;
    setAcceptHoverEvents(on);
    if (on) {
        setCursor(Qt::PointingHandCursor);
    } else {
        unsetCursor();
        // A glow switched on by a hover that will now never see its leave.
        if (qobject_cast<QGraphicsDropShadowEffect *>(graphicsEffect()))
            setGraphicsEffect(nullptr);
    }
}

QColor ZImageItem::effectColor() const
{
    return d_func()->effectColor;
}

void ZImageItem::setEffectColor(const QColor &color)
{
    d_func()->effectColor = color;
}

bool ZImageItem::acceptClick() const
{
    return d_func()->acceptClick;
}

void ZImageItem::setAcceptClick(bool on)
{
    Z_D(ZImageItem);
    d->acceptClick = on;
    setAcceptedMouseButtons(on ? Qt::LeftButton : Qt::NoButton);
}

void ZImageItem::doThemeChange()
{
    Z_D(ZImageItem);
    // A pixmap given directly has no path to reload from and stays.
    if (!d->imagePath.isEmpty())
        d->pixmap = ZTheme::getPixmap(d->imagePath, hasTheme(), true);
    ZWidget::doThemeChange();
    update();
}

void ZImageItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    ZWidget::paint(painter, option, widget);
    Z_D(ZImageItem);
    const QRect m = d->marginRect();

    painter->save();
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->setClipRect(m, Qt::IntersectClip);
    if (d->rotation != 0) {
        const QPointF centre = rect().center();
        painter->translate(centre);
        painter->rotate(d->rotation);
        painter->translate(-centre);
    }

    const QRectF target = d->imageRect(m);
    if (!target.isEmpty())
        painter->drawPixmap(target, d->pixmap, QRectF(d->pixmap.rect()));

    if (d->borderColor.isValid() && d->borderPixel >= 1) {
        const int b = d->borderPixel;
        const QRect frame = m.adjusted(b, b, -b, -b);
        if (frame.width() > 0 && frame.height() > 0) {
            painter->setPen(QPen(d->borderColor, 1));
            painter->setBrush(Qt::NoBrush);
            // Pixel centres, so the outline covers exactly the frame's edge pixels.
            painter->drawRect(QRectF(frame).adjusted(0.5, 0.5, -0.5, -0.5));
        }
    }
    painter->restore();
}

void ZImageItem::hoverEnterEvent(QGraphicsSceneHoverEvent *event)
{
    Z_D(ZImageItem);
    if (d->handHover) {
        auto *glow = new QGraphicsDropShadowEffect;
        glow->setOffset(0, 0);
        glow->setBlurRadius(12.0);
        glow->setColor(d->effectColor);
        setGraphicsEffect(glow);
    }
    ZWidget::hoverEnterEvent(event);
    Q_EMIT enter();
}

void ZImageItem::hoverLeaveEvent(QGraphicsSceneHoverEvent *event)
{
    if (d_func()->handHover)
        setGraphicsEffect(nullptr);
    ZWidget::hoverLeaveEvent(event);
    Q_EMIT leave();
}

void ZImageItem::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    if (!d_func()->acceptClick) {
        event->ignore();
        return;
    }
    event->accept();
    Q_EMIT pressed(event->pos());
}

void ZImageItem::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    if (!d_func()->acceptClick) {
        event->ignore();
        return;
    }
    event->accept();
    // The release reports pressed(), as applications of the item expect.
    Q_EMIT pressed(event->pos());
    Q_EMIT clicked();
}

Z_REGISTER_WIDGET(ZImageItem);
