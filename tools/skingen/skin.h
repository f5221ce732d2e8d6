#ifndef SKINGEN_SKIN_H
#define SKINGEN_SKIN_H

#include <QImage>
#include <QList>
#include <QSize>
#include <QString>

#include <functional>

class QPainter;

struct SkinImage {
    QString name; // file name under :/image/theme/
    QSize size;   // logical size; the @2x file is twice this
    // Paints into a painter already scaled to logical coordinates.
    std::function<void(QPainter &, const QSizeF &)> paint;
    // Computes pixels directly (used where a painter's coverage is not exact
    // enough: the shadow falloff and the one-bit window mask).
    std::function<void(QImage &, qreal scale)> pixels;
};

// Every image of the default skin, grouped by control.
QList<SkinImage> skinImages();

// Renders one image at the given device scale (1 or 2) as ARGB32.
QImage renderSkinImage(const SkinImage &image, int scale);

// Nine-part margins of the pop-up window's frame and mask images, and the
// width of their transparent shadow band, in logical pixels.
constexpr int WindowNinePartMargin = 16;
constexpr int WindowShadowBand = 9;

#endif // SKINGEN_SKIN_H
