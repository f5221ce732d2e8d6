#include "zutility.h"

#include <QtGui/qcolor.h>
#include <QtGui/qpainter.h>
#include <QtGui/qpixmap.h>
#include <QtWidgets/qdrawutil.h>

namespace {

// A skin image in logical pixels: sizes and cuts are made in these units,
// source rectangles are turned into the pixmap's own pixels when drawn.
struct Skin
{
    explicit Skin(const QPixmap &pixmap)
        : pixmap(pixmap)
        , ratio(pixmap.devicePixelRatio() > 0 ? pixmap.devicePixelRatio() : 1)
        , size(pixmap.width() / ratio, pixmap.height() / ratio)
        , pw(int(size.width()))
        , ph(int(size.height()))
    {
    }

    // The part \a source (logical) of the image stretched into \a target.
    // Empty pieces are skipped: QPainter would draw a negative target at
    // natural size instead of not at all.
    void draw(QPainter *painter, const QRectF &target, const QRectF &source) const
    {
        if (target.width() <= 0 || target.height() <= 0 || source.width() <= 0 || source.height() <= 0)
            return;
        painter->drawPixmap(target, pixmap,
                            QRectF(source.x() * ratio, source.y() * ratio, source.width() * ratio,
                                   source.height() * ratio));
    }

    // The whole image at natural size.
    void drawAt(QPainter *painter, const QPointF &pos) const { painter->drawPixmap(pos, pixmap); }

    const QPixmap &pixmap;
    const qreal ratio;
    const QSizeF size;
    const int pw;
    const int ph;
};

bool usable(const QPainter *painter, const QPixmap &pixmap)
{
    return painter && !pixmap.isNull();
}

void drawStretch(QPainter *painter, const QRectF &target, const QPixmap &pixmap, bool smooth)
{
    const Skin skin(pixmap);
    painter->setRenderHint(QPainter::SmoothPixmapTransform, smooth);
    skin.draw(painter, target, QRectF(QPointF(), skin.size));
    // Set to the opposite, not back to what it was: callers rely on this.
    painter->setRenderHint(QPainter::SmoothPixmapTransform, !smooth);
}

// One tile count of the tiling rules; the last copy may reach past the target.
int tileCount(qreal extent, qreal tile)
{
    // Bounded so that the conversion stays defined; no item is that large.
    const qreal n = qMin(extent / tile + 1.0, qreal(1 << 24));
    return n >= 1 ? int(n) : 0;
}

void drawTiles(QPainter *painter, const QRectF &target, const QPixmap &pixmap, bool across, bool down)
{
    const Skin skin(pixmap);
    const qreal w = skin.size.width(), h = skin.size.height();
    if (w <= 0 || h <= 0)
        return;
    const int columns = across ? tileCount(target.width(), w) : 1;
    const int rows = down ? tileCount(target.height(), h) : 1;
    if (columns == 0 || rows == 0)
        return;
    // One tiled fill equals the copies side by side, and a tiny image in a
    // large target does not cost one draw per copy.
    painter->drawTiledPixmap(QRectF(target.topLeft(), QSizeF(columns * w, rows * h)), pixmap);
}

void drawFourCut(QPainter *painter, const QRectF &target, const QPixmap &pixmap, bool centre)
{
    const Skin skin(pixmap);
    const QRect t = target.toRect();
    const int pw = skin.pw, ph = skin.ph;
    const int hw = pw / 2, hh = ph / 2;
    const int rw = pw - hw, rh = ph - hh;
    const int midW = t.width() - pw, midH = t.height() - ph;
    const int left = t.left(), top = t.top();
    const int middleX = left + hw, middleY = top + hh;
    const int rightX = t.right() + 1 - rw, bottomY = t.bottom() + 1 - rh;

    skin.draw(painter, QRectF(left, top, hw, hh), QRectF(0, 0, hw, hh));
    skin.draw(painter, QRectF(middleX, top, midW, hh), QRectF(hw, 0, 1, hh));
    skin.draw(painter, QRectF(rightX, top, rw, hh), QRectF(hw, 0, rw, hh));
    skin.draw(painter, QRectF(left, middleY, hw, midH), QRectF(0, hh, hw, 1));
    if (centre)
        skin.draw(painter, QRectF(middleX, middleY, midW, midH), QRectF(hw, hh, 1, 1));
    skin.draw(painter, QRectF(rightX, middleY, rw, midH), QRectF(hw, hh, rw, 1));
    skin.draw(painter, QRectF(left, bottomY, hw, rh), QRectF(0, hh, hw, rh));
    skin.draw(painter, QRectF(middleX, bottomY, midW, rh), QRectF(hw, hh, 1, rh));
    skin.draw(painter, QRectF(rightX, bottomY, rw, rh), QRectF(hw, hh, rw, rh));
}

void drawColorFrame(QPainter *painter, const QRectF &target, const QColor &color, int pixel, int radius)
{
    if (!painter || pixel < 0 || !color.isValid())
        return;
    const QRect r = target.toRect().adjusted(pixel, pixel, -pixel, -pixel);
    if (r.isEmpty())
        return;
    painter->save();
    painter->setPen(QPen(color, pixel));
    if (radius > 0)
        painter->drawRoundedRect(r, radius, radius, Qt::AbsoluteSize);
    else
        painter->drawRect(r);
    painter->restore();
}

} // namespace

void ZUtility::drawOneTopLeft(QPainter *painter, const QRectF &target, const QPixmap &pixmap)
{
    if (usable(painter, pixmap))
        Skin(pixmap).drawAt(painter, target.topLeft());
}

void ZUtility::drawOneTopRight(QPainter *painter, const QRectF &target, const QPixmap &pixmap)
{
    if (!usable(painter, pixmap))
        return;
    const Skin skin(pixmap);
    skin.drawAt(painter, QPointF(target.left() + target.width() - skin.size.width(), target.top()));
}

void ZUtility::drawOneBotLeft(QPainter *painter, const QRectF &target, const QPixmap &pixmap)
{
    if (!usable(painter, pixmap))
        return;
    const Skin skin(pixmap);
    skin.drawAt(painter, QPointF(target.left(), target.top() + target.height() - skin.size.height()));
}

void ZUtility::drawOneBotRight(QPainter *painter, const QRectF &target, const QPixmap &pixmap)
{
    if (!usable(painter, pixmap))
        return;
    const Skin skin(pixmap);
    skin.drawAt(painter, QPointF(target.left() + target.width() - skin.size.width(),
                                 target.top() + target.height() - skin.size.height()));
}

void ZUtility::drawOneHCenter(QPainter *painter, const QRectF &target, const QPixmap &pixmap)
{
    if (!usable(painter, pixmap))
        return;
    const Skin skin(pixmap);
    skin.drawAt(painter, QPointF(target.left() + (target.width() - skin.size.width()) * 0.5, target.top()));
}

void ZUtility::drawOneVCenter(QPainter *painter, const QRectF &target, const QPixmap &pixmap)
{
    if (!usable(painter, pixmap))
        return;
    const Skin skin(pixmap);
    skin.drawAt(painter, QPointF(target.left(), target.top() + (target.height() - skin.size.height()) * 0.5));
}

void ZUtility::drawOneHVCenter(QPainter *painter, const QRectF &target, const QPixmap &pixmap)
{
    if (!usable(painter, pixmap))
        return;
    const Skin skin(pixmap);
    skin.drawAt(painter, QPointF(target.left() + (target.width() - skin.size.width()) * 0.5,
                                 target.top() + (target.height() - skin.size.height()) * 0.5));
}

void ZUtility::drawTileH(QPainter *painter, const QRectF &target, const QPixmap &pixmap)
{
    if (usable(painter, pixmap))
        drawTiles(painter, target, pixmap, true, false);
}

void ZUtility::drawTileV(QPainter *painter, const QRectF &target, const QPixmap &pixmap)
{
    if (usable(painter, pixmap))
        drawTiles(painter, target, pixmap, false, true);
}

void ZUtility::drawTileHV(QPainter *painter, const QRectF &target, const QPixmap &pixmap)
{
    if (usable(painter, pixmap))
        drawTiles(painter, target, pixmap, true, true);
}

void ZUtility::drawStretchH(QPainter *painter, const QRectF &target, const QPixmap &pixmap, bool smooth)
{
    if (!usable(painter, pixmap))
        return;
    const qreal ph = Skin(pixmap).size.height();
    drawStretch(painter, QRectF(target.left(), target.top(), target.width(), ph), pixmap, smooth);
}

void ZUtility::drawStretchV(QPainter *painter, const QRectF &target, const QPixmap &pixmap, bool smooth)
{
    if (!usable(painter, pixmap))
        return;
    const qreal pw = Skin(pixmap).size.width();
    drawStretch(painter, QRectF(target.left(), target.top(), pw, target.height()), pixmap, smooth);
}

void ZUtility::drawStretchHV(QPainter *painter, const QRectF &target, const QPixmap &pixmap, bool smooth)
{
    if (usable(painter, pixmap))
        drawStretch(painter, target, pixmap, smooth);
}

void ZUtility::drawStretchHTwoSize(QPainter *painter, const QRectF &target, const QPixmap &pixmap)
{
    if (!usable(painter, pixmap))
        return;
    const Skin skin(pixmap);
    const qreal pw = skin.size.width(), ph = skin.size.height();
    const qreal x = target.left(), y = target.top();
    const qreal side = (target.width() - pw) * 0.5;
    skin.drawAt(painter, QPointF(x + side, y));
    skin.draw(painter, QRectF(x, y, side, ph), QRectF(0, 0, 1, ph));
    skin.draw(painter, QRectF(x + (target.width() + pw) * 0.5, y, side, ph), QRectF(pw - 1, 0, 1, ph));
}

void ZUtility::drawStretchVTwoSize(QPainter *painter, const QRectF &target, const QPixmap &pixmap)
{
    if (!usable(painter, pixmap))
        return;
    const Skin skin(pixmap);
    const qreal pw = skin.size.width(), ph = skin.size.height();
    const qreal x = target.left(), y = target.top();
    const qreal side = (target.height() - ph) * 0.5;
    skin.drawAt(painter, QPointF(x, y + side));
    skin.draw(painter, QRectF(x, y, pw, side), QRectF(0, 0, pw, 1));
    skin.draw(painter, QRectF(x, y + (target.height() + ph) * 0.5, pw, side), QRectF(0, ph - 1, pw, 1));
}

void ZUtility::drawStretchHMiddle(QPainter *painter, const QRectF &target, const QPixmap &pixmap)
{
    if (!usable(painter, pixmap))
        return;
    const Skin skin(pixmap);
    const int pw = skin.pw, ph = skin.ph;
    const int hw = pw / 2;
    const qreal x = target.left(), y = target.top();
    skin.draw(painter, QRectF(x, y, hw, ph), QRectF(0, 0, hw, ph));
    skin.draw(painter, QRectF(x + target.width() - (pw - hw), y, pw - hw, ph), QRectF(hw, 0, pw - hw, ph));
    skin.draw(painter, QRectF(x + hw, y, target.width() - pw, ph), QRectF(hw, 0, 1, ph));
}

void ZUtility::drawStretchVMiddle(QPainter *painter, const QRectF &target, const QPixmap &pixmap)
{
    if (!usable(painter, pixmap))
        return;
    const Skin skin(pixmap);
    const int pw = skin.pw, ph = skin.ph;
    const int hh = ph / 2;
    const qreal x = target.left(), y = target.top();
    skin.draw(painter, QRectF(x, y, pw, hh), QRectF(0, 0, pw, hh));
    skin.draw(painter, QRectF(x, y + target.height() - (ph - hh), pw, ph - hh), QRectF(0, hh, pw, ph - hh));
    skin.draw(painter, QRectF(x, y + hh, pw, target.height() - ph), QRectF(0, hh, pw, 1));
}

void ZUtility::drawGridFour(QPainter *painter, const QRectF &target, const QPixmap &pixmap)
{
    if (usable(painter, pixmap))
        drawFourCut(painter, target, pixmap, true);
}

void ZUtility::drawGridFrameFour(QPainter *painter, const QRectF &target, const QPixmap &pixmap)
{
    if (usable(painter, pixmap))
        drawFourCut(painter, target, pixmap, false);
}

void ZUtility::drawGridNine(QPainter *painter, const QRectF &target, const QPixmap &pixmap)
{
    if (!usable(painter, pixmap))
        return;
    const QRect t = target.toRect();
    if (t.isEmpty())
        return;
    const Skin skin(pixmap);
    // The routine takes source geometry in the pixmap's own pixels.
    const int mx = qRound(skin.pw / 3 * skin.ratio), my = qRound(skin.ph / 3 * skin.ratio);
    const QRect source(0, 0, qRound(skin.pw * skin.ratio), qRound(skin.ph * skin.ratio));
    const int tx = t.width() / 3, ty = t.height() / 3;
    qDrawBorderPixmap(painter, t, QMargins(tx, ty, tx, ty), pixmap, source, QMargins(mx, my, mx, my),
                      QTileRules(Qt::StretchTile), QDrawBorderPixmap::DrawingHints());
}

void ZUtility::drawRectangle(QPainter *painter, const QRectF &target, const QColor &color, int pixel)
{
    drawColorFrame(painter, target, color, pixel, 0);
}

void ZUtility::drawRoundRect(QPainter *painter, const QRectF &target, const QColor &color, int pixel,
                             int radius)
{
    drawColorFrame(painter, target, color, pixel, radius);
}
