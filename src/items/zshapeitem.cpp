#include "zshapeitem.h"
#include "zshapeitem_p.h"

#include "zcreator.h"
#include "ztheme.h"

#include <QtGui/qpainter.h>

namespace {

bool isGradientStyle(Qt::BrushStyle style)
{
    return style == Qt::LinearGradientPattern || style == Qt::RadialGradientPattern
        || style == Qt::ConicalGradientPattern;
}

} // namespace

void ZShapeItemPrivate::changePen(const QPen &newPen)
{
    if (pen == newPen)
        return;
    pen = newPen;
    q_func()->update();
}

ZShapeItem::ZShapeItem(QGraphicsItem *parent)
    : ZShapeItem(*new ZShapeItemPrivate, parent)
{
}

ZShapeItem::ZShapeItem(ZShapeItemPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
}

ZShapeItem::~ZShapeItem() = default;

QPen ZShapeItem::pen() const
{
    return d_func()->pen;
}

QBrush ZShapeItem::brush() const
{
    return d_func()->brush;
}

Qt::PenStyle ZShapeItem::penStyle() const
{
    return d_func()->pen.style();
}

void ZShapeItem::setPenStyle(Qt::PenStyle style)
{
    Z_D(ZShapeItem);
    // Beyond the enumeration (and custom dashes without a pattern) there is nothing to draw.
    if (style < Qt::NoPen || style >= Qt::CustomDashLine)
        return;
    QPen p = d->pen;
    p.setStyle(style);
    d->changePen(p);
}

Qt::PenCapStyle ZShapeItem::penCapStyle() const
{
    return d_func()->pen.capStyle();
}

void ZShapeItem::setPenCapStyle(Qt::PenCapStyle style)
{
    Z_D(ZShapeItem);
    if (style != Qt::FlatCap && style != Qt::SquareCap && style != Qt::RoundCap)
        return;
    QPen p = d->pen;
    p.setCapStyle(style);
    d->changePen(p);
}

Qt::PenJoinStyle ZShapeItem::penJoinStyle() const
{
    return d_func()->pen.joinStyle();
}

void ZShapeItem::setPenJoinStyle(Qt::PenJoinStyle style)
{
    Z_D(ZShapeItem);
    if (style != Qt::MiterJoin && style != Qt::BevelJoin && style != Qt::RoundJoin && style != Qt::SvgMiterJoin)
        return;
    QPen p = d->pen;
    p.setJoinStyle(style);
    d->changePen(p);
}

QColor ZShapeItem::penColor() const
{
    return d_func()->pen.color();
}

void ZShapeItem::setPenColor(const QColor &color)
{
    Z_D(ZShapeItem);
    QPen p = d->pen;
    p.setColor(color);
    d->changePen(p);
}

int ZShapeItem::penWidth() const
{
    return d_func()->pen.width();
}

void ZShapeItem::setPenWidth(int width)
{
    Z_D(ZShapeItem);
    if (width < 0)
        return;
    QPen p = d->pen;
    p.setWidth(width);
    d->changePen(p);
}

QColor ZShapeItem::brushColor() const
{
    return d_func()->brush.color();
}

void ZShapeItem::setBrushColor(const QColor &color)
{
    Z_D(ZShapeItem);
    if (d->brush.color() == color)
        return;
    d->brush.setColor(color);
    update();
}

Qt::BrushStyle ZShapeItem::brushStyle() const
{
    return d_func()->brush.style();
}

void ZShapeItem::setBrushStyle(Qt::BrushStyle style)
{
    Z_D(ZShapeItem);
    if (style < Qt::NoBrush || style > Qt::DiagCrossPattern || d->brush.style() == style)
        return;
    d->brush = QBrush(d->brush.color(), style);
    update();
}

QString ZShapeItem::textureBrush() const
{
    return d_func()->texture;
}

void ZShapeItem::setTextureBrush(const QString &path)
{
    Z_D(ZShapeItem);
    const QPixmap pixmap = ZTheme::getPixmap(path, false, true);
    if (pixmap.isNull())
        return;
    d->texture = path;
    const QColor color = d->brush.color();
    d->brush = QBrush(pixmap);
    d->brush.setColor(color);
    update();
}

QtGradient ZShapeItem::gradientBrush() const
{
    return d_func()->gradient;
}

void ZShapeItem::setGradientBrush(const QtGradient &gradient)
{
    Z_D(ZShapeItem);
    if (!gradient.isValid())
        return;
    if (d->gradient == gradient && isGradientStyle(d->brush.style()))
        return;
    d->gradient = gradient;
    const QColor color = d->brush.color();
    d->brush = QBrush(gradient.gradient());
    d->brush.setColor(color);
    update();
}

QMargins ZShapeItem::shapeMargins() const
{
    return d_func()->shapeMargins;
}

void ZShapeItem::setShapeMargins(const QMargins &margins)
{
    Z_D(ZShapeItem);
    if (d->shapeMargins == margins)
        return;
    d->shapeMargins = margins;
    update();
}

bool ZShapeItem::smooth() const
{
    return d_func()->smooth;
}

void ZShapeItem::setSmooth(bool on)
{
    Z_D(ZShapeItem);
    if (d->smooth == on)
        return;
    d->smooth = on;
    update();
}

int ZShapeItem::roundPixel() const
{
    return d_func()->roundPixel;
}

void ZShapeItem::setRoundPixel(int pixels)
{
    Z_D(ZShapeItem);
    if (d->roundPixel == pixels)
        return;
    d->roundPixel = pixels;
    update();
}

ZShapeItem::Shape ZShapeItem::drawShape() const
{
    return d_func()->shape;
}

void ZShapeItem::setDrawShape(Shape shape)
{
    Z_D(ZShapeItem);
    if (d->shape == shape)
        return;
    d->shape = shape;
    update();
}

QSize ZShapeItem::fanAngle() const
{
    return d_func()->fan;
}

void ZShapeItem::setFanAngle(const QSize &fan)
{
    Z_D(ZShapeItem);
    if (d->fan == fan)
        return;
    d->fan = fan;
    update();
}

void ZShapeItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    ZWidget::paint(painter, option, widget);
    Z_D(ZShapeItem);

    QRectF r = rect().marginsRemoved(QMarginsF(d->shapeMargins));
    // Keeps the outline inside the item; without an outline there is nothing to keep in.
    if (d->pen.style() != Qt::NoPen) {
        const qreal w = d->pen.width();
        r.adjust(w, w, -w, -w);
    }
    if (!(r.width() > 0 && r.height() > 0))
        return;

    const QPen oldPen = painter->pen();
    const QBrush oldBrush = painter->brush();
    const bool oldSmooth = painter->testRenderHint(QPainter::Antialiasing);

    painter->setPen(d->pen);
    painter->setBrush(isGradientStyle(d->brush.style()) ? d->gradient.brush(rect()) : d->brush);
    painter->setRenderHint(QPainter::Antialiasing, d->smooth);

    switch (d->shape) {
    case RoundRect:
        painter->drawRoundedRect(r, d->roundPixel, d->roundPixel, Qt::AbsoluteSize);
        break;
    case Ellipse:
        painter->drawEllipse(r);
        break;
    case Pie:
        painter->drawPie(r, d->fan.width(), d->fan.height());
        break;
    case Chord:
        painter->drawChord(r, d->fan.width(), d->fan.height());
        break;
    default:
        painter->drawRect(r);
        break;
    }

    painter->setRenderHint(QPainter::Antialiasing, oldSmooth);
    painter->setPen(oldPen);
    painter->setBrush(oldBrush);
}

Z_REGISTER_WIDGET(ZShapeItem);
