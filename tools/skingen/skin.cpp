#include "skin.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>

#include <algorithm>
#include <cmath>

/*
 * One flat look: neutral, unsaturated surfaces and borders, and a single
 * saturated accent for hover, pressed and selected states. The theme tints
 * images by replacing hue and saturation while keeping lightness, so states
 * stay apart by lightness, and pure white stays white under any tint.
 *
 * Coordinates are logical pixels; the painter is scaled for the @2x files, so
 * straight edges sit on pixel boundaries (fills) or pixel centres (1 px
 * strokes at .5) and stay crisp at both scales.
 */

namespace {

namespace Color {
const QColor accent(0x2F, 0x7F, 0xEA);
const QColor accentHover(0x4A, 0x91, 0xF0);
const QColor accentDown(0x1F, 0x66, 0xC7);
const QColor accentSoft(0x8F, 0xB7, 0xF2);     // hovered scroll thumb
const QColor accentTint(0xEE, 0xF5, 0xFE);     // hovered surface
const QColor accentTintDown(0xDC, 0xE9, 0xFC); // pressed surface
const QColor surface(0xFF, 0xFF, 0xFF);
const QColor track(0xF4, 0xF5, 0xF7);
const QColor trackLine(0xE6, 0xE9, 0xED);
const QColor groove(0xD5, 0xDA, 0xE1);
const QColor border(0xC4, 0xCA, 0xD2);
const QColor borderStrong(0xA3, 0xAB, 0xB7);
const QColor borderShade(0xB2, 0xB9, 0xC3);
const QColor borderLight(0xDD, 0xE1, 0xE6);
const QColor separator(0xE1, 0xE4, 0xE8);
const QColor disabledFill(0xF2, 0xF3, 0xF5);
const QColor disabledMark(0xC5, 0xCA, 0xD2);
const QColor thumb(0xC4, 0xCA, 0xD2);
const QColor hoverFill(0xE2, 0xE6, 0xEB);
const QColor glyph(0x4A, 0x52, 0x60);
const QColor glyphStrong(0x2B, 0x31, 0x3A);
const QColor glyphSoft(0x8A, 0x93, 0xA0);
const QColor glyphDisabled(0xB4, 0xBA, 0xC3);
const QColor danger(0xE5, 0x48, 0x4D);
const QColor dangerDown(0xC2, 0x32, 0x37);
const QColor warning(0xF5, 0xA6, 0x23);
const QColor warningGlyph(0x4A, 0x33, 0x00);
const QColor shadow(0x0F, 0x17, 0x2A);
} // namespace Color

QColor alpha(QColor c, qreal a)
{
    c.setAlphaF(float(a));
    return c;
}

QPainterPath roundedPath(const QRectF &r, qreal radius)
{
    QPainterPath path;
    if (radius <= 0)
        path.addRect(r);
    else
        path.addRoundedRect(r, radius, radius);
    return path;
}

// A rectangle with its own radius per corner (top-left, top-right,
// bottom-right, bottom-left), for tabs and the combo box button.
QPainterPath cornerPath(const QRectF &r, qreal tl, qreal tr, qreal br, qreal bl)
{
    QPainterPath p;
    p.moveTo(r.left() + tl, r.top());
    p.lineTo(r.right() - tr, r.top());
    if (tr > 0)
        p.arcTo(QRectF(r.right() - 2 * tr, r.top(), 2 * tr, 2 * tr), 90, -90);
    p.lineTo(r.right(), r.bottom() - br);
    if (br > 0)
        p.arcTo(QRectF(r.right() - 2 * br, r.bottom() - 2 * br, 2 * br, 2 * br), 0, -90);
    p.lineTo(r.left() + bl, r.bottom());
    if (bl > 0)
        p.arcTo(QRectF(r.left(), r.bottom() - 2 * bl, 2 * bl, 2 * bl), 270, -90);
    p.lineTo(r.left(), r.top() + tl);
    if (tl > 0)
        p.arcTo(QRectF(r.left(), r.top(), 2 * tl, 2 * tl), 180, -90);
    p.closeSubpath();
    return p;
}

// A filled panel with a one-pixel border drawn as a ring, so the border keeps
// exactly one pixel on straight edges and translucent fills do not darken it.
void panel(QPainter &p, const QRectF &r, qreal radius, const QColor &fill, const QColor &line)
{
    const QPainterPath outer = roundedPath(r, radius);
    const QPainterPath inner = roundedPath(r.adjusted(1, 1, -1, -1), std::max<qreal>(0, radius - 1));
    if (fill.alpha() == 255 && line.alpha() == 255) {
        p.fillPath(outer, line);
        p.fillPath(inner, fill);
        return;
    }
    if (fill.alpha() > 0)
        p.fillPath(inner, fill);
    if (line.alpha() > 0)
        p.fillPath(outer.subtracted(inner), line);
}

QPen roundPen(const QColor &c, qreal width)
{
    return QPen(c, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

// --- glyphs ---------------------------------------------------------------

void drawCheckMark(QPainter &p, const QRectF &box, const QColor &c, qreal width)
{
    const auto at = [&box](qreal x, qreal y) {
        return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
    };
    QPainterPath path;
    path.moveTo(at(0.20, 0.53));
    path.lineTo(at(0.42, 0.74));
    path.lineTo(at(0.80, 0.30));
    p.strokePath(path, roundPen(c, width));
}

void drawChevron(QPainter &p, const QPointF &apex, qreal half, qreal depth, Qt::ArrowType dir,
                 const QColor &c, qreal width)
{
    QPainterPath path;
    switch (dir) {
    case Qt::DownArrow:
        path.moveTo(apex.x() - half, apex.y() - depth);
        path.lineTo(apex);
        path.lineTo(apex.x() + half, apex.y() - depth);
        break;
    case Qt::RightArrow:
        path.moveTo(apex.x() - depth, apex.y() - half);
        path.lineTo(apex);
        path.lineTo(apex.x() - depth, apex.y() + half);
        break;
    default:
        return;
    }
    p.strokePath(path, roundPen(c, width));
}

// A small solid triangle pointing in `dir`, centred on `c`.
void drawTriangle(QPainter &p, const QPointF &c, qreal half, qreal depth, Qt::ArrowType dir,
                  const QColor &color)
{
    QPolygonF tri;
    const qreal d = depth / 2;
    switch (dir) {
    case Qt::UpArrow:
        tri << QPointF(c.x(), c.y() - d) << QPointF(c.x() + half, c.y() + d) << QPointF(c.x() - half, c.y() + d);
        break;
    case Qt::DownArrow:
        tri << QPointF(c.x(), c.y() + d) << QPointF(c.x() - half, c.y() - d) << QPointF(c.x() + half, c.y() - d);
        break;
    case Qt::LeftArrow:
        tri << QPointF(c.x() - d, c.y()) << QPointF(c.x() + d, c.y() - half) << QPointF(c.x() + d, c.y() + half);
        break;
    case Qt::RightArrow:
        tri << QPointF(c.x() + d, c.y()) << QPointF(c.x() - d, c.y() + half) << QPointF(c.x() - d, c.y() - half);
        break;
    default:
        return;
    }
    QPainterPath path;
    path.addPolygon(tri);
    path.closeSubpath();
    // A thin stroke of the same colour softens the tips.
    p.setPen(QPen(color, 0.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(color);
    p.drawPath(path);
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::NoBrush);
}

// Symbols drawn inside a square of side `s` whose top-left is `o`; all
// measures are fractions of `s` so the small and the large icons share them.
void drawInfoSymbol(QPainter &p, const QPointF &o, qreal s, const QColor &c)
{
    p.setPen(Qt::NoPen);
    p.setBrush(c);
    const qreal stem = s * 0.095;
    p.drawEllipse(QPointF(o.x() + s * 0.5, o.y() + s * 0.29), stem * 0.68, stem * 0.68);
    p.drawRoundedRect(QRectF(o.x() + s * 0.5 - stem / 2, o.y() + s * 0.42, stem, s * 0.33), stem / 2, stem / 2);
    p.setBrush(Qt::NoBrush);
}

void drawExclamation(QPainter &p, const QPointF &o, qreal s, const QColor &c, qreal top = 0.25,
                     qreal bottom = 0.60, qreal dot = 0.735)
{
    const qreal stem = s * 0.095;
    p.setPen(roundPen(c, stem));
    p.drawLine(QPointF(o.x() + s * 0.5, o.y() + s * top), QPointF(o.x() + s * 0.5, o.y() + s * bottom));
    p.setPen(Qt::NoPen);
    p.setBrush(c);
    p.drawEllipse(QPointF(o.x() + s * 0.5, o.y() + s * dot), stem * 0.68, stem * 0.68);
    p.setBrush(Qt::NoBrush);
}

void drawQuestion(QPainter &p, const QPointF &o, qreal s, const QColor &c)
{
    const qreal stem = s * 0.095;
    const qreal r = s * 0.125;
    const QPointF centre(o.x() + s * 0.5, o.y() + s * 0.385);
    QPainterPath path;
    path.arcMoveTo(QRectF(centre.x() - r, centre.y() - r, 2 * r, 2 * r), 165);
    path.arcTo(QRectF(centre.x() - r, centre.y() - r, 2 * r, 2 * r), 165, -235);
    path.quadTo(QPointF(o.x() + s * 0.5, o.y() + s * 0.53), QPointF(o.x() + s * 0.5, o.y() + s * 0.60));
    p.strokePath(path, roundPen(c, stem));
    p.setPen(Qt::NoPen);
    p.setBrush(c);
    p.drawEllipse(QPointF(o.x() + s * 0.5, o.y() + s * 0.735), stem * 0.68, stem * 0.68);
    p.setBrush(Qt::NoBrush);
}

void drawCross(QPainter &p, const QPointF &centre, qreal half, const QColor &c, qreal width)
{
    p.setPen(roundPen(c, width));
    p.drawLine(centre + QPointF(-half, -half), centre + QPointF(half, half));
    p.drawLine(centre + QPointF(half, -half), centre + QPointF(-half, half));
    p.setPen(Qt::NoPen);
}

QPainterPath warningTriangle(const QPointF &o, qreal s)
{
    QPainterPath path;
    path.moveTo(o.x() + s * 0.5, o.y() + s * 0.10);
    path.lineTo(o.x() + s * 0.94, o.y() + s * 0.86);
    path.lineTo(o.x() + s * 0.06, o.y() + s * 0.86);
    path.closeSubpath();
    return path;
}

void fillRoundedTriangle(QPainter &p, const QPainterPath &tri, const QColor &c, qreal rounding)
{
    p.setPen(QPen(c, rounding, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(c);
    p.drawPath(tri);
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::NoBrush);
}

// --- families -------------------------------------------------------------

enum State { Normal, Hover, Down, Disable };

struct BoxLook {
    QColor fill, line, mark;
};

BoxLook checkLook(State s, bool checked)
{
    if (!checked) {
        switch (s) {
        case Normal: return {Color::surface, Color::borderStrong, {}};
        case Hover: return {Color::accentTint, Color::accent, {}};
        case Down: return {Color::accentTintDown, Color::accentDown, {}};
        case Disable: return {Color::disabledFill, Color::borderLight, {}};
        }
    }
    switch (s) {
    case Normal: return {Color::accent, Color::accent, Color::surface};
    case Hover: return {Color::accentHover, Color::accentHover, Color::surface};
    case Down: return {Color::accentDown, Color::accentDown, Color::surface};
    case Disable: return {Color::disabledMark, Color::disabledMark, Color::surface};
    }
    return {};
}

void paintCheckBox(QPainter &p, State s, bool checked)
{
    const BoxLook look = checkLook(s, checked);
    const QRectF box(1, 1, 14, 14);
    if (s == Hover) // a soft halo in the spare pixel around the box
        p.fillPath(roundedPath(box.adjusted(-1, -1, 1, 1), 4), alpha(Color::accent, 0.16));
    panel(p, box, 3, look.fill, look.line);
    if (checked)
        drawCheckMark(p, box, look.mark, 1.7);
}

void paintRadioBox(QPainter &p, State s, bool checked)
{
    const BoxLook look = checkLook(s, checked);
    const QRectF box(1, 1, 14, 14);
    if (s == Hover)
        p.fillPath(roundedPath(box.adjusted(-1, -1, 1, 1), 8), alpha(Color::accent, 0.16));
    panel(p, box, 7, look.fill, look.line);
    if (checked) {
        p.setPen(Qt::NoPen);
        p.setBrush(look.mark);
        p.drawEllipse(QPointF(8, 8), 2.75, 2.75);
        p.setBrush(Qt::NoBrush);
    }
}

void paintPushButton(QPainter &p, const QSizeF &sz, State s)
{
    const QRectF r(QPointF(0, 0), sz);
    QColor fill, line, shade;
    switch (s) {
    case Normal: fill = Color::surface; line = Color::border; shade = Color::borderShade; break;
    case Hover: fill = Color::accentTint; line = Color::accent; shade = Color::accent; break;
    case Down: fill = Color::accentTintDown; line = Color::accentDown; shade = Color::accentDown; break;
    case Disable: fill = Color::disabledFill; line = Color::borderLight; shade = Color::borderLight; break;
    }
    // The bottom row of the border is a shade darker: a hint of depth that
    // survives stretching, since it lies in the bottom corner pieces.
    p.fillPath(roundedPath(r, 3), shade);
    p.fillPath(roundedPath(r.adjusted(0, 0, 0, -1), 3), line);
    p.fillPath(roundedPath(r.adjusted(1, 1, -1, -1), 2), fill);
}

void paintFrame(QPainter &p, const QSizeF &sz, qreal radius, const QColor &fill, const QColor &line)
{
    panel(p, QRectF(QPointF(0, 0), sz), radius, fill, line);
}

void paintTitleButton(QPainter &p, const QSizeF &sz, const QString &kind, State s)
{
    const bool close = kind == QLatin1String("close");
    QColor bg, fg = Color::glyph;
    if (s == Hover) {
        bg = close ? Color::danger : alpha(Color::accent, 0.16);
        fg = close ? Color::surface : Color::glyphStrong;
    } else if (s == Down) {
        bg = close ? Color::dangerDown : alpha(Color::accent, 0.30);
        fg = close ? Color::surface : Color::glyphStrong;
    }
    if (bg.isValid())
        p.fillPath(roundedPath(QRectF(QPointF(0, 0), sz).adjusted(1, 1, -1, -1), 3), bg);

    // Glyphs sit in an 8 px square around the centre, strokes on pixel centres.
    const qreal cx = std::floor(sz.width() / 2), cy = std::floor(sz.height() / 2);
    const qreal l = cx - 4, t = cy - 4;
    QPen pen(fg, 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
    if (kind == QLatin1String("min")) {
        p.fillRect(QRectF(l, cy, 8, 1), fg);
    } else if (kind == QLatin1String("max")) {
        p.setPen(pen);
        p.drawRect(QRectF(l + 0.5, t + 0.5, 7, 7));
    } else if (kind == QLatin1String("restore")) {
        p.setPen(pen);
        p.drawRect(QRectF(l + 0.5, t + 2.5, 6, 6));
        QPainterPath back;
        back.moveTo(l + 2.5, t + 2);
        back.lineTo(l + 2.5, t + 0.5);
        back.lineTo(l + 8.5, t + 0.5);
        back.lineTo(l + 8.5, t + 6.5);
        back.lineTo(l + 7, t + 6.5);
        p.setBrush(Qt::NoBrush);
        p.drawPath(back);
    } else if (close) {
        drawCross(p, QPointF(cx, cy), 3.75, fg, 1.25);
    }
    p.setPen(Qt::NoPen);
}

// Scroll bar parts are drawn for the vertical bar; the horizontal ones are
// the same drawings transposed, so both bars match pixel for pixel.
void transpose(QPainter &p)
{
    p.setTransform(QTransform(0, 1, 1, 0, 0, 0), true);
}

void paintScrollBkg(QPainter &p, const QSizeF &sz)
{
    p.fillRect(QRectF(QPointF(0, 0), sz), Color::track);
    p.fillRect(QRectF(0, 0, 1, sz.height()), Color::trackLine);
}

void paintScrollButton(QPainter &p, State s, Qt::ArrowType dir)
{
    QColor fg = Color::glyphSoft;
    if (s == Hover) {
        p.fillPath(roundedPath(QRectF(2, 2, 10, 10), 2), Color::hoverFill);
        fg = Color::glyph;
    } else if (s == Down) {
        p.fillPath(roundedPath(QRectF(2, 2, 10, 10), 2), Color::accentTintDown);
        fg = Color::accent;
    }
    drawTriangle(p, QPointF(7, 7), 3, 3.5, dir, fg);
}

void paintScrollThumb(QPainter &p, const QSizeF &sz, State s)
{
    const QColor c = s == Hover ? Color::accentSoft : s == Down ? Color::accent : Color::thumb;
    p.fillPath(roundedPath(QRectF(3, 1, 8, sz.height() - 2), 4), c);
}

void paintThumbGrip(QPainter &p, const QSizeF &sz)
{
    for (int y = 0; y < int(sz.height()); y += 2)
        p.fillRect(QRectF(0, y, sz.width(), 1), alpha(Color::surface, 0.9));
}

void paintSliderThumb(QPainter &p, State s)
{
    const QRectF box(1, 1, 14, 14);
    p.fillPath(roundedPath(box.adjusted(-1, -0.5, 1, 1), 8), alpha(Color::shadow, 0.06));
    switch (s) {
    case Normal:
        panel(p, box, 7, Color::surface, Color::borderStrong);
        break;
    case Hover:
        p.fillPath(roundedPath(box, 7), Color::accent);
        p.fillPath(roundedPath(box.adjusted(2, 2, -2, -2), 5), Color::surface);
        break;
    case Down:
    case Disable:
        p.fillPath(roundedPath(box, 7), Color::accentDown);
        p.fillPath(roundedPath(box.adjusted(4, 4, -4, -4), 3), Color::surface);
        break;
    }
}

void paintTab(QPainter &p, const QSizeF &sz, const QString &state)
{
    const qreal w = sz.width(), h = sz.height();
    if (state == QLatin1String("select")) {
        p.fillPath(cornerPath(QRectF(0, 0, w, h), 3, 3, 0, 0), Color::surface);
        p.fillRect(QRectF(0, h - 2, w, 2), Color::accent);
    } else if (state == QLatin1String("hover")) {
        p.fillPath(cornerPath(QRectF(0, 0, w, h), 3, 3, 0, 0), Color::accentTint);
        p.fillRect(QRectF(0, h - 1, w, 1), Color::border);
    } else if (state == QLatin1String("unselect")) {
        p.fillRect(QRectF(0, h - 1, w, 1), Color::border);
    } else {
        p.fillRect(QRectF(0, h - 1, w, 1), Color::separator);
    }
}

void paintComboButton(QPainter &p, const QSizeF &sz, State s)
{
    const qreal w = sz.width(), h = sz.height();
    if (s == Hover || s == Down) {
        const QColor c = s == Hover ? Color::accentTint : Color::accentTintDown;
        // Inside the frame's border: clear of its top, right and bottom rows.
        p.fillPath(cornerPath(QRectF(1, 1, w - 2, h - 2), 0, 3, 3, 0), c);
    }
    p.fillRect(QRectF(0, 5, 1, h - 10), Color::borderLight);
}

void paintSpinner(QPainter &p, const QSizeF &sz)
{
    const QPointF c(sz.width() / 2, sz.height() / 2);
    const int spokes = 12;
    for (int i = 0; i < spokes; ++i) {
        // Clockwise from twelve o'clock, fading behind the leading spoke.
        const qreal a = qreal(i) / (spokes - 1);
        p.save();
        p.translate(c);
        p.rotate(360.0 * i / spokes);
        p.setPen(roundPen(alpha(Color::accent, 0.12 + 0.88 * a), 2.6));
        p.drawLine(QPointF(0, -sz.height() * 0.21), QPointF(0, -sz.height() * 0.39));
        p.restore();
    }
}

void paintColorSelect(QPainter &p, const QSizeF &sz)
{
    const QPointF c(sz.width() / 2, sz.height() / 2);
    // A white ring edged in dark, visible on any colour it marks.
    p.setPen(QPen(alpha(Color::shadow, 0.65), 3.2));
    p.drawEllipse(c, 3.9, 3.9);
    p.setPen(QPen(Color::surface, 1.6));
    p.drawEllipse(c, 3.9, 3.9);
    p.setPen(Qt::NoPen);
}

void paintTitleIcon(QPainter &p, const QSizeF &sz)
{
    const QRectF r = QRectF(QPointF(0, 0), sz).adjusted(1, 1, -1, -1);
    QLinearGradient g(r.topLeft(), r.bottomLeft());
    g.setColorAt(0, Color::accentHover);
    g.setColorAt(1, Color::accentDown);
    p.fillPath(roundedPath(r, 3.5), g);
    QPainterPath z;
    z.moveTo(5, 5);
    z.lineTo(11, 5);
    z.lineTo(5, 11);
    z.lineTo(11, 11);
    p.strokePath(z, QPen(Color::surface, 1.7, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
}

// --- per-pixel images -----------------------------------------------------

// Signed distance from a point to a rounded rectangle (negative inside).
qreal roundedRectDistance(const QPointF &pt, const QRectF &r, qreal radius)
{
    const qreal qx = std::abs(pt.x() - r.center().x()) - (r.width() / 2 - radius);
    const qreal qy = std::abs(pt.y() - r.center().y()) - (r.height() / 2 - radius);
    const qreal ox = std::max<qreal>(qx, 0), oy = std::max<qreal>(qy, 0);
    return std::sqrt(ox * ox + oy * oy) + std::min<qreal>(std::max(qx, qy), 0) - radius;
}

constexpr int WindowRadius = 6;
// The corner pieces must hold the band, the rounded corner and the shadow's
// one-pixel drop, or the stretched edges would smear the corner.
static_assert(WindowShadowBand + WindowRadius + 1 <= WindowNinePartMargin, "corner does not fit the margins");

QRectF windowOutline(const QSizeF &sz)
{
    return QRectF(WindowShadowBand, WindowShadowBand, sz.width() - 2 * WindowShadowBand,
                  sz.height() - 2 * WindowShadowBand);
}

/*
 * Pop-up window frame: a soft shadow in the transparent band outside the
 * window, a one-pixel translucent border on its rounded outline, and nothing
 * inside (the window paints its own background there).
 *
 * Both window images are cut in nine parts with margins of
 * WindowNinePartMargin (16) on every side, 32 in the @2x files: the corner
 * pieces hold the shadow band (WindowShadowBand = 9) plus the rounded corner
 * (radius 6), and every row and column between the margins is the same, so
 * the edges stretch without seams. The band outside the opaque part of the
 * mask (9 on every side) is the window's frame margin.
 */
void windowFramePixels(QImage &img, qreal scale)
{
    const QSizeF sz = QSizeF(img.size()) / scale;
    const QRectF outline = windowOutline(sz);
    const QRectF shadowRect = outline.translated(0, 1); // light from slightly above
    const qreal sigma = WindowShadowBand / 2.7;
    const QColor line = alpha(Color::shadow, 0.30);
    for (int y = 0; y < img.height(); ++y) {
        auto *row = reinterpret_cast<QRgb *>(img.scanLine(y));
        for (int x = 0; x < img.width(); ++x) {
            const QPointF pt((x + 0.5) / scale, (y + 0.5) / scale);
            const qreal d = roundedRectDistance(pt, outline, WindowRadius);
            // Coverage of the window and of its inner edge, one device pixel wide.
            const qreal inside = std::clamp(0.5 - d * scale, 0.0, 1.0);
            const qreal inner = std::clamp(0.5 - (d + 1) * scale, 0.0, 1.0);
            const qreal ds = std::max<qreal>(0, roundedRectDistance(pt, shadowRect, WindowRadius));
            const qreal shadowA = 0.24 * std::exp(-(ds * ds) / (2 * sigma * sigma)) * (1 - inside);
            const qreal lineA = line.alphaF() * (inside - inner);
            const qreal a = lineA + shadowA * (1 - lineA);
            if (a <= 0) {
                row[x] = 0;
                continue;
            }
            const auto mix = [&](int lc, int sc) {
                return qRound((lc * lineA + sc * shadowA * (1 - lineA)) / a);
            };
            row[x] = qRgba(mix(line.red(), Color::shadow.red()), mix(line.green(), Color::shadow.green()),
                           mix(line.blue(), Color::shadow.blue()), qRound(a * 255));
        }
    }
}

// The window mask: one bit per pixel (alpha 0 or 255), opaque inside the same
// rounded outline as the frame, so a bitmap made from it matches exactly.
void windowMaskPixels(QImage &img, qreal scale)
{
    const QSizeF sz = QSizeF(img.size()) / scale;
    const QRectF outline = windowOutline(sz);
    for (int y = 0; y < img.height(); ++y) {
        auto *row = reinterpret_cast<QRgb *>(img.scanLine(y));
        for (int x = 0; x < img.width(); ++x) {
            const QPointF pt((x + 0.5) / scale, (y + 0.5) / scale);
            row[x] = roundedRectDistance(pt, outline, WindowRadius) <= 0 ? qRgba(0, 0, 0, 255) : 0;
        }
    }
}

// --- the list -------------------------------------------------------------

QString stateName(State s, bool pressdown)
{
    switch (s) {
    case Normal: return QStringLiteral("normal");
    case Hover: return QStringLiteral("hover");
    case Down: return pressdown ? QStringLiteral("pressdown") : QStringLiteral("down");
    case Disable: return QStringLiteral("disable");
    }
    return {};
}

SkinImage painted(const QString &name, QSize size, std::function<void(QPainter &, const QSizeF &)> paint)
{
    SkinImage img;
    img.name = name;
    img.size = size;
    img.paint = std::move(paint);
    return img;
}

} // namespace

QList<SkinImage> skinImages()
{
    QList<SkinImage> list;
    const auto add = [&list](const QString &name, QSize size,
                             std::function<void(QPainter &, const QSizeF &)> paint) {
        list.append(painted(name, size, std::move(paint)));
    };
    const State states4[] = {Normal, Hover, Down, Disable};
    const State states3[] = {Normal, Hover, Down};

    // Pop-up window.
    {
        SkinImage frame;
        frame.name = QStringLiteral("frameimage.png");
        // Margins on both sides plus a plain middle to stretch.
        const int side = 2 * WindowNinePartMargin + 8;
        frame.size = QSize(side, side);
        frame.pixels = windowFramePixels;
        list.append(frame);
        SkinImage mask = frame;
        mask.name = QStringLiteral("maskimage.png");
        mask.pixels = windowMaskPixels;
        list.append(mask);
    }

    // Title bar.
    add(QStringLiteral("titleicon.png"), QSize(16, 16), paintTitleIcon);
    for (const char *kind : {"min", "max", "restore", "close"}) {
        for (State s : states3) {
            const QString k = QLatin1String(kind);
            add(QStringLiteral("frame%1_%2.png").arg(k, stateName(s, false)), QSize(24, 18),
                [k, s](QPainter &p, const QSizeF &sz) { paintTitleButton(p, sz, k, s); });
        }
    }

    // Push button.
    for (State s : states4)
        add(QStringLiteral("pushbutton_%1.png").arg(stateName(s, true)), QSize(11, 11),
            [s](QPainter &p, const QSizeF &sz) { paintPushButton(p, sz, s); });

    // Check and radio boxes.
    for (bool radio : {false, true}) {
        for (bool checked : {false, true}) {
            for (State s : states4) {
                const QString name = QStringLiteral("%1_%2_%3.png")
                                         .arg(radio ? QStringLiteral("radiobox") : QStringLiteral("checkbox"),
                                              checked ? QStringLiteral("selected") : QStringLiteral("default"),
                                              stateName(s, true));
                add(name, QSize(16, 16), [s, checked, radio](QPainter &p, const QSizeF &) {
                    if (radio)
                        paintRadioBox(p, s, checked);
                    else
                        paintCheckBox(p, s, checked);
                });
            }
        }
    }

    // Frames.
    add(QStringLiteral("roundframe_normal.png"), QSize(13, 13),
        [](QPainter &p, const QSizeF &sz) { paintFrame(p, sz, 4, Color::surface, Color::border); });
    add(QStringLiteral("roundframe_hover.png"), QSize(13, 13),
        [](QPainter &p, const QSizeF &sz) { paintFrame(p, sz, 4, Color::surface, Color::accent); });
    add(QStringLiteral("roundframe_down.png"), QSize(13, 13),
        [](QPainter &p, const QSizeF &sz) { paintFrame(p, sz, 4, Color::accentTint, Color::accentDown); });
    // Flat translucent: a veil of white, no border.
    add(QStringLiteral("roundframe2_normal.png"), QSize(13, 13), [](QPainter &p, const QSizeF &sz) {
        p.fillPath(roundedPath(QRectF(QPointF(0, 0), sz), 4), alpha(Color::surface, 0.55));
    });
    add(QStringLiteral("roundframe2_hover.png"), QSize(13, 13), [](QPainter &p, const QSizeF &sz) {
        p.fillPath(roundedPath(QRectF(QPointF(0, 0), sz), 4), alpha(Color::accent, 0.16));
    });
    // Raised translucent: light top edge, darker bottom edge.
    const auto raised = [](QPainter &p, const QSizeF &sz, const QColor &line, const QColor &shade) {
        const QRectF r(QPointF(0, 0), sz);
        p.fillPath(roundedPath(r, 4), shade);
        p.fillPath(roundedPath(r.adjusted(0, 0, 0, -1), 4), line);
        const QPainterPath inner = roundedPath(r.adjusted(1, 1, -1, -1), 3);
        p.setCompositionMode(QPainter::CompositionMode_Source);
        p.fillPath(inner, alpha(Color::surface, 0.62));
        p.setCompositionMode(QPainter::CompositionMode_SourceOver);
        p.fillPath(inner.subtracted(inner.translated(0, 1)), alpha(Color::surface, 0.9));
    };
    add(QStringLiteral("roundframe3_normal.png"), QSize(13, 13), [raised](QPainter &p, const QSizeF &sz) {
        raised(p, sz, alpha(Color::shadow, 0.16), alpha(Color::shadow, 0.28));
    });
    add(QStringLiteral("roundframe3_hover.png"), QSize(13, 13),
        [raised](QPainter &p, const QSizeF &sz) { raised(p, sz, Color::accent, Color::accentDown); });
    // Sunken translucent: a shade inside, darker along the top edge.
    const auto sunken = [](QPainter &p, const QSizeF &sz, const QColor &line) {
        const QRectF r(QPointF(0, 0), sz);
        const QPainterPath inner = roundedPath(r.adjusted(1, 1, -1, -1), 3);
        p.fillPath(roundedPath(r, 4).subtracted(inner), line);
        p.fillPath(inner, alpha(Color::shadow, 0.05));
        p.fillPath(inner.subtracted(inner.translated(0, 1)), alpha(Color::shadow, 0.10));
    };
    add(QStringLiteral("roundframe4_normal.png"), QSize(13, 13),
        [sunken](QPainter &p, const QSizeF &sz) { sunken(p, sz, alpha(Color::shadow, 0.22)); });
    add(QStringLiteral("roundframe4_hover.png"), QSize(13, 13),
        [sunken](QPainter &p, const QSizeF &sz) { sunken(p, sz, alpha(Color::accent, 0.85)); });
    // Transparent: only a faint outline until hovered.
    add(QStringLiteral("roundframe5_normal.png"), QSize(13, 13),
        [](QPainter &p, const QSizeF &sz) { paintFrame(p, sz, 4, Qt::transparent, alpha(Color::shadow, 0.14)); });
    add(QStringLiteral("roundframe5_hover.png"), QSize(13, 13), [](QPainter &p, const QSizeF &sz) {
        paintFrame(p, sz, 4, alpha(Color::accent, 0.10), alpha(Color::accent, 0.70));
    });
    add(QStringLiteral("rectframe_normal.png"), QSize(9, 9),
        [](QPainter &p, const QSizeF &sz) { paintFrame(p, sz, 0, Color::surface, Color::border); });
    add(QStringLiteral("rectframe_hover.png"), QSize(9, 9),
        [](QPainter &p, const QSizeF &sz) { paintFrame(p, sz, 0, Color::surface, Color::accent); });
    add(QStringLiteral("rectframe_down.png"), QSize(9, 9),
        [](QPainter &p, const QSizeF &sz) { paintFrame(p, sz, 0, Color::accentTint, Color::accentDown); });
    add(QStringLiteral("frameborder_normal.png"), QSize(9, 9),
        [](QPainter &p, const QSizeF &sz) { paintFrame(p, sz, 0, Qt::transparent, Color::border); });
    add(QStringLiteral("frameborder_hover.png"), QSize(9, 9),
        [](QPainter &p, const QSizeF &sz) { paintFrame(p, sz, 0, Qt::transparent, Color::accent); });

    // Tabs.
    for (const char *state : {"unselect", "hover", "select", "disable"}) {
        const QString st = QLatin1String(state);
        add(QStringLiteral("tabframe_%1.png").arg(st), QSize(13, 13),
            [st](QPainter &p, const QSizeF &sz) { paintTab(p, sz, st); });
    }

    // Line edit and list.
    add(QStringLiteral("lineedit.png"), QSize(11, 11),
        [](QPainter &p, const QSizeF &sz) { paintFrame(p, sz, 3, Color::surface, Color::border); });
    add(QStringLiteral("lineeditframe.png"), QSize(11, 11), [](QPainter &p, const QSizeF &sz) {
        // The focused look: accent border with a faint inner ring.
        paintFrame(p, sz, 3, Color::surface, Color::accent);
        const QRectF in = QRectF(QPointF(0, 0), sz).adjusted(1, 1, -1, -1);
        p.fillPath(roundedPath(in, 2).subtracted(roundedPath(in.adjusted(1, 1, -1, -1), 1)),
                   alpha(Color::accent, 0.22));
    });
    add(QStringLiteral("listbox_bk.png"), QSize(11, 11),
        [](QPainter &p, const QSizeF &sz) { paintFrame(p, sz, 3, Color::surface, Color::borderLight); });

    // Combo box.
    for (State s : states3)
        add(QStringLiteral("comboboxbutton_%1.png").arg(stateName(s, false)), QSize(20, 21),
            [s](QPainter &p, const QSizeF &sz) { paintComboButton(p, sz, s); });
    add(QStringLiteral("comboboxbutton_icon.png"), QSize(9, 6), [](QPainter &p, const QSizeF &) {
        drawChevron(p, QPointF(4.5, 4.5), 3, 3, Qt::DownArrow, Color::glyph, 1.4);
    });

    // Menu.
    add(QStringLiteral("menuhover.png"), QSize(11, 11), [](QPainter &p, const QSizeF &sz) {
        p.fillPath(roundedPath(QRectF(QPointF(0, 0), sz), 3), Color::accentTintDown);
    });
    add(QStringLiteral("menusperator.png"), QSize(9, 7), [](QPainter &p, const QSizeF &sz) {
        p.fillRect(QRectF(0, 3, sz.width(), 1), Color::separator);
    });
    add(QStringLiteral("menucheck.png"), QSize(12, 12), [](QPainter &p, const QSizeF &sz) {
        drawCheckMark(p, QRectF(QPointF(0, 0), sz), Color::accent, 1.6);
    });
    add(QStringLiteral("menucheckdisable.png"), QSize(12, 12), [](QPainter &p, const QSizeF &sz) {
        drawCheckMark(p, QRectF(QPointF(0, 0), sz), Color::glyphDisabled, 1.6);
    });
    add(QStringLiteral("menuarrow.png"), QSize(8, 9), [](QPainter &p, const QSizeF &) {
        drawChevron(p, QPointF(5.5, 4.5), 3, 3, Qt::RightArrow, Color::glyph, 1.4);
    });

    // Scroll bars: vertical parts 14 wide, horizontal parts 14 high.
    for (bool vertical : {true, false}) {
        const QString pre = vertical ? QStringLiteral("vscrollbar_") : QStringLiteral("hscrollbar_");
        const auto oriented = [vertical](QSize s) { return vertical ? s : s.transposed(); };
        const auto flip = [vertical](QPainter &p, QSizeF sz) {
            if (!vertical) {
                transpose(p);
                sz.transpose();
            }
            return sz;
        };
        add(pre + QStringLiteral("bkg.png"), QSize(14, 14),
            [flip](QPainter &p, const QSizeF &sz) { paintScrollBkg(p, flip(p, sz)); });
        for (bool lineAdd : {false, true}) {
            const QString part = lineAdd ? QStringLiteral("lineadd") : QStringLiteral("linesub");
            for (State s : states3) {
                add(pre + QStringLiteral("%1_%2.png").arg(part, stateName(s, false)), QSize(14, 14),
                    [flip, s, lineAdd](QPainter &p, const QSizeF &sz) {
                        flip(p, sz);
                        paintScrollButton(p, s, lineAdd ? Qt::DownArrow : Qt::UpArrow);
                    });
            }
        }
        for (State s : states3)
            add(pre + QStringLiteral("thumb_%1.png").arg(stateName(s, false)), oriented(QSize(14, 15)),
                [flip, s](QPainter &p, const QSizeF &sz) { paintScrollThumb(p, flip(p, sz), s); });
        add(pre + QStringLiteral("thumbico.png"), oriented(QSize(4, 5)),
            [flip](QPainter &p, const QSizeF &sz) { paintThumbGrip(p, flip(p, sz)); });
    }

    // Slider: grooves are as thick as the images; the select image is round
    // at both ends so it serves either orientation.
    add(QStringLiteral("hslider_bkg.png"), QSize(9, 5), [](QPainter &p, const QSizeF &sz) {
        p.fillPath(roundedPath(QRectF(QPointF(0, 0), sz), 2.5), Color::groove);
    });
    add(QStringLiteral("vslider_bkg.png"), QSize(5, 9), [](QPainter &p, const QSizeF &sz) {
        p.fillPath(roundedPath(QRectF(QPointF(0, 0), sz), 2.5), Color::groove);
    });
    add(QStringLiteral("slider_select.png"), QSize(5, 5), [](QPainter &p, const QSizeF &sz) {
        p.fillPath(roundedPath(QRectF(QPointF(0, 0), sz), 2.5), Color::accent);
    });
    for (const char *pre : {"hsliderthumb_", "vsliderthumb_"}) {
        for (State s : states3)
            add(QLatin1String(pre) + stateName(s, false) + QLatin1String(".png"), QSize(16, 16),
                [s](QPainter &p, const QSizeF &) { paintSliderThumb(p, s); });
    }

    // Message box icons (the layout gives them a 45 x 45 cell).
    const qreal big = 40;
    add(QStringLiteral("messagebox_infomation.png"), QSize(40, 40), [big](QPainter &p, const QSizeF &) {
        p.fillPath(roundedPath(QRectF(2, 2, big - 4, big - 4), big / 2 - 2), Color::accent);
        drawInfoSymbol(p, QPointF(0, 0), big, Color::surface);
    });
    add(QStringLiteral("messagebox_question.png"), QSize(40, 40), [big](QPainter &p, const QSizeF &) {
        p.fillPath(roundedPath(QRectF(2, 2, big - 4, big - 4), big / 2 - 2), Color::accent);
        drawQuestion(p, QPointF(0, 0), big, Color::surface);
    });
    add(QStringLiteral("messagebox_warning.png"), QSize(40, 40), [big](QPainter &p, const QSizeF &) {
        fillRoundedTriangle(p, warningTriangle(QPointF(0, 0), big), Color::warning, 4);
        drawExclamation(p, QPointF(0, 0), big, Color::warningGlyph, 0.38, 0.62, 0.75);
    });
    add(QStringLiteral("messagbox_error.png"), QSize(40, 40), [big](QPainter &p, const QSizeF &) {
        p.fillPath(roundedPath(QRectF(2, 2, big - 4, big - 4), big / 2 - 2), Color::danger);
        drawCross(p, QPointF(big / 2, big / 2), big * 0.15, Color::surface, big * 0.095);
    });
    // Small notices (16 x 16), the same symbols.
    add(QStringLiteral("icon_message_notice.png"), QSize(16, 16), [](QPainter &p, const QSizeF &) {
        p.fillPath(roundedPath(QRectF(1, 1, 14, 14), 7), Color::accent);
        drawInfoSymbol(p, QPointF(0, 0), 16, Color::surface);
    });
    add(QStringLiteral("icon_message_warning.png"), QSize(16, 16), [](QPainter &p, const QSizeF &) {
        fillRoundedTriangle(p, warningTriangle(QPointF(0, 0), 16), Color::warning, 1.6);
        drawExclamation(p, QPointF(0, 0), 16, Color::warningGlyph, 0.40, 0.60, 0.76);
    });
    add(QStringLiteral("icon_message_wrong.png"), QSize(16, 16), [](QPainter &p, const QSizeF &) {
        p.fillPath(roundedPath(QRectF(1, 1, 14, 14), 7), Color::danger);
        drawCross(p, QPointF(8, 8), 2.6, Color::surface, 1.6);
    });

    // Odds and ends.
    add(QStringLiteral("anijuhua.png"), QSize(32, 32), paintSpinner);
    add(QStringLiteral("colorselect.png"), QSize(11, 11), paintColorSelect);

    return list;
}

QImage renderSkinImage(const SkinImage &image, int scale)
{
    QImage img(image.size * scale, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    if (image.pixels) {
        img = img.convertToFormat(QImage::Format_ARGB32);
        image.pixels(img, scale);
        return img;
    }
    {
        QPainter p(&img);
        p.setRenderHint(QPainter::Antialiasing);
        p.setPen(Qt::NoPen);
        p.scale(scale, scale);
        image.paint(p, QSizeF(image.size));
    }
    return img.convertToFormat(QImage::Format_ARGB32);
}
