#include "zcolortable.h"
#include "zcreator.h"
#include "ztheme_p.h"
#include "zwidget_p.h"

#include <QGraphicsSceneMouseEvent>
#include <QPainter>

namespace {
constexpr qreal kStripWidth = 14;
constexpr qreal kGap = 6;
constexpr int kMaxImageSide = 512;
const QString kMarker = QStringLiteral(":/image/theme/colorselect.png");
} // namespace

class ZColorTablePrivate : public ZWidgetPrivate
{
public:
    double hue = 0, saturation = 100, lightness = 50;
    QColor color = QColor::fromRgb(ZThemeTint::hslToRgb(0, 100, 50) | 0xff000000u); // as set or picked
    QImage field, strip;
    double fieldSaturation = -1;               // input the field was built for
    double stripHue = -1, stripLightness = -1; // inputs the strip was built for
    enum Drag { None, Field, Strip } drag = None;

    QColor currentColor() const
    {
        return QColor::fromRgb(ZThemeTint::hslToRgb(hue, saturation, lightness) | 0xff000000u);
    }
    void updateImages(QSize fieldSize, QSize stripSize);
    bool pick(const QPointF &pos, ZColorTable *q);
};

namespace {
// Inputs computed along different paths may differ in the last bits.
bool changed(double a, double b)
{
    return std::abs(a - b) > 1e-9;
}
} // namespace

void ZColorTablePrivate::updateImages(QSize fieldSize, QSize stripSize)
{
    if (fieldSize.isEmpty() || stripSize.isEmpty())
        return;
    // The images are scaled when painted: a huge widget must not mean a
    // huge image (or minutes of work).
    fieldSize = fieldSize.boundedTo(QSize(kMaxImageSide, kMaxImageSide));
    stripSize = stripSize.boundedTo(QSize(kMaxImageSide, kMaxImageSide));
    if (field.size() != fieldSize || changed(fieldSaturation, saturation)) {
        field = QImage(fieldSize, QImage::Format_RGB32);
        for (int y = 0; y < fieldSize.height(); ++y) {
            const double l = 100.0 * (1.0 - (y + 0.5) / fieldSize.height());
            auto *line = reinterpret_cast<QRgb *>(field.scanLine(y));
            for (int x = 0; x < fieldSize.width(); ++x)
                line[x] = 0xff000000u | ZThemeTint::hslToRgb(360.0 * (x + 0.5) / fieldSize.width(), saturation, l);
        }
        fieldSaturation = saturation;
    }
    if (strip.size() != stripSize || changed(stripHue, hue) || changed(stripLightness, lightness)) {
        strip = QImage(stripSize, QImage::Format_RGB32);
        for (int y = 0; y < stripSize.height(); ++y) {
            const QRgb rgb = 0xff000000u
                | ZThemeTint::hslToRgb(hue, 100.0 * (1.0 - (y + 0.5) / stripSize.height()), lightness);
            auto *line = reinterpret_cast<QRgb *>(strip.scanLine(y));
            std::fill(line, line + stripSize.width(), rgb);
        }
        stripHue = hue;
        stripLightness = lightness;
    }
}

bool ZColorTablePrivate::pick(const QPointF &pos, ZColorTable *q)
{
    const QColor before = color;
    if (drag == Field) {
        const QRectF r = q->fieldRect();
        hue = std::clamp((pos.x() - r.left()) / r.width(), 0.0, 1.0) * 360.0;
        lightness = (1.0 - std::clamp((pos.y() - r.top()) / r.height(), 0.0, 1.0)) * 100.0;
        if (hue >= 360)
            hue = 359.99;
    } else if (drag == Strip) {
        const QRectF r = q->stripRect();
        saturation = (1.0 - std::clamp((pos.y() - r.top()) / r.height(), 0.0, 1.0)) * 100.0;
    } else {
        return false;
    }
    updateImages(q->fieldRect().size().toSize(), q->stripRect().size().toSize());
    q->update();
    color = currentColor();
    return color != before;
}

ZColorTable::ZColorTable(QGraphicsItem *parent)
    : ZWidget(*new ZColorTablePrivate, parent)
{
    setAcceptedMouseButtons(Qt::LeftButton);
    setDragPolicy(Nothing);
}

ZColorTable::~ZColorTable() = default;

QColor ZColorTable::color() const
{
    return d_func()->color;
}

void ZColorTable::setColor(const QColor &color)
{
    Z_D(ZColorTable);
    if (!color.isValid() || color == d->color)
        return;
    d->color = color;
    double h, s, l;
    ZThemeTint::rgbToHsl(color.rgb(), h, s, l);
    // Greys and the extremes carry no hue (or saturation): keep the last.
    if (s > 0 && l > 0 && l < 100)
        d->hue = h;
    if (l > 0 && l < 100)
        d->saturation = s;
    d->lightness = l;
    d->updateImages(fieldRect().size().toSize(), stripRect().size().toSize());
    update();
    emit colorChanged(color);
}

void ZColorTable::connectToTheme()
{
    connect(this, &ZColorTable::colorChanged, this, &ZColorTable::on_colorChanged, Qt::UniqueConnection);
}

void ZColorTable::on_colorChanged(const QColor &color)
{
    ZTheme::setThemeColor(color);
}

QImage ZColorTable::fieldImage() const
{
    return d_func()->field;
}

QImage ZColorTable::stripImage() const
{
    return d_func()->strip;
}

QRectF ZColorTable::fieldRect() const
{
    const QRectF r = rect();
    return QRectF(r.left(), r.top(), qMax<qreal>(0, r.width() - kStripWidth - kGap), r.height());
}

QRectF ZColorTable::stripRect() const
{
    const QRectF r = rect();
    return QRectF(qMax<qreal>(r.left(), r.right() - kStripWidth), r.top(), qMin(kStripWidth, r.width()), r.height());
}

void ZColorTable::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    ZWidget::resizeEvent(event);
    d_func()->updateImages(fieldRect().size().toSize(), stripRect().size().toSize());
}

void ZColorTable::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    Z_D(ZColorTable);
    ZWidget::paint(painter, option, widget);
    const QRectF field = fieldRect(), strip = stripRect();
    if (field.isEmpty())
        return;
    painter->drawImage(field, d->field);
    painter->drawImage(strip, d->strip);
    painter->setPen(QColor(0, 0, 0, 60));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(field.adjusted(0.5, 0.5, -0.5, -0.5));
    painter->drawRect(strip.adjusted(0.5, 0.5, -0.5, -0.5));

    const QPointF at(field.left() + field.width() * d->hue / 360.0,
                     field.top() + field.height() * (1.0 - d->lightness / 100.0));
    const QPixmap marker = ZTheme::getPixmap(kMarker, false, true);
    if (!marker.isNull()) {
        const QSizeF size = marker.deviceIndependentSize();
        painter->drawPixmap(QPointF(at.x() - size.width() / 2, at.y() - size.height() / 2), marker);
    } else {
        painter->setPen(QPen(Qt::white, 1.5));
        painter->drawEllipse(at, 4, 4);
    }
    const qreal sy = strip.top() + strip.height() * (1.0 - d->saturation / 100.0);
    painter->setPen(QPen(Qt::white, 2));
    painter->drawLine(QPointF(strip.left(), sy), QPointF(strip.right(), sy));
    painter->setPen(QPen(QColor(0, 0, 0, 120), 1));
    painter->drawRect(QRectF(strip.left() - 0.5, sy - 2, strip.width() + 1, 4));
}

void ZColorTable::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    Z_D(ZColorTable);
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    if (fieldRect().contains(event->pos()))
        d->drag = ZColorTablePrivate::Field;
    else if (stripRect().contains(event->pos()))
        d->drag = ZColorTablePrivate::Strip;
    else {
        d->drag = ZColorTablePrivate::None;
        event->ignore();
        return;
    }
    event->accept();
    if (d->pick(event->pos(), this))
        emit colorChanged(d->color);
}

void ZColorTable::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    Z_D(ZColorTable);
    if (d->pick(event->pos(), this))
        emit colorChanged(d->color);
}

void ZColorTable::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    Z_D(ZColorTable);
    if (d->pick(event->pos(), this))
        emit colorChanged(d->color);
    d->drag = ZColorTablePrivate::None;
}

Z_REGISTER_WIDGET(ZColorTable);
