#ifndef ZUTILITY_H
#define ZUTILITY_H

#include "zglobal.h"

#include <QtCore/qrect.h>

class QColor;
class QPainter;
class QPixmap;

/*!
 * \brief Static helpers; for now the skin-drawing rules.
 *
 * Each draw function paints a skin image (or a colour frame) into a target
 * rectangle by one fixed rule; ZFrameItem uses them for its frame types, and
 * any QPainter can. The functions do not clip: pieces that a rule places
 * outside the target (the last tile, an image larger than the target) are
 * drawn, and the caller clips if it must.
 *
 * Everything is measured in logical pixels. A pixmap with a device pixel
 * ratio of 2 (an @2x skin file) is drawn at the size of its plain form: its
 * logical size is its pixel size divided by the ratio, and each source
 * rectangle a rule cuts out (a corner, a one-pixel edge) is scaled by the
 * ratio. Such images should have pixel sizes that are multiples of the ratio.
 *
 * Below, P is the pixmap with logical width pw and height ph,
 * T the target rectangle; "/" on integers truncates. Pieces whose target is
 * empty are not drawn. A null pixmap or painter draws nothing.
 */
class ZKIT_EXPORT ZUtility
{
public:
    // Natural size, placed in T.

    /*! P at T's top-left. */
    static void drawOneTopLeft(QPainter *painter, const QRectF &target, const QPixmap &pixmap);
    /*! P at (T.left + T.width - pw, T.top). */
    static void drawOneTopRight(QPainter *painter, const QRectF &target, const QPixmap &pixmap);
    /*! P at (T.left, T.top + T.height - ph). */
    static void drawOneBotLeft(QPainter *painter, const QRectF &target, const QPixmap &pixmap);
    /*! P at T's bottom-right. */
    static void drawOneBotRight(QPainter *painter, const QRectF &target, const QPixmap &pixmap);
    /*! P centred horizontally at T's top. */
    static void drawOneHCenter(QPainter *painter, const QRectF &target, const QPixmap &pixmap);
    /*! P centred vertically at T's left. */
    static void drawOneVCenter(QPainter *painter, const QRectF &target, const QPixmap &pixmap);
    /*! P centred in T. */
    static void drawOneHVCenter(QPainter *painter, const QRectF &target, const QPixmap &pixmap);

    // Tiles at natural size from T's top-left; the last one may reach past T.

    /*! int(T.width / pw + 1) copies side by side. */
    static void drawTileH(QPainter *painter, const QRectF &target, const QPixmap &pixmap);
    /*! int(T.height / ph + 1) copies one below the other. */
    static void drawTileV(QPainter *painter, const QRectF &target, const QPixmap &pixmap);
    /*! The grid of both counts. */
    static void drawTileHV(QPainter *painter, const QRectF &target, const QPixmap &pixmap);

    // Plain stretches. Around the draw the painter's SmoothPixmapTransform
    // hint is set to \a smooth, and afterwards to !smooth (not restored).

    /*! The whole of P into (T.left, T.top, T.width, ph). */
    static void drawStretchH(QPainter *painter, const QRectF &target, const QPixmap &pixmap, bool smooth = false);
    /*! The whole of P into (T.left, T.top, pw, T.height). */
    static void drawStretchV(QPainter *painter, const QRectF &target, const QPixmap &pixmap, bool smooth = false);
    /*! The whole of P into T. */
    static void drawStretchHV(QPainter *painter, const QRectF &target, const QPixmap &pixmap, bool smooth = false);

    /*!
     * P centred horizontally at T's top; the space to its left is filled by
     * P's first pixel column stretched, the space to its right by its last.
     */
    static void drawStretchHTwoSize(QPainter *painter, const QRectF &target, const QPixmap &pixmap);
    /*! The vertical form of drawStretchHTwoSize(): first and last pixel rows. */
    static void drawStretchVTwoSize(QPainter *painter, const QRectF &target, const QPixmap &pixmap);
    /*!
     * P cut at column pw / 2: the left half at T's left, the rest flush with
     * T's right edge, and the column at the cut stretched between them.
     */
    static void drawStretchHMiddle(QPainter *painter, const QRectF &target, const QPixmap &pixmap);
    /*! The vertical form of drawStretchHMiddle(). */
    static void drawStretchVMiddle(QPainter *painter, const QRectF &target, const QPixmap &pixmap);

    /*!
     * P cut through its centre (column pw / 2, row ph / 2) into four corners
     * kept at natural size in T's corners; the centre column and row are
     * stretched over the edges and the middle. T is rounded to integers.
     */
    static void drawGridFour(QPainter *painter, const QRectF &target, const QPixmap &pixmap);
    /*! drawGridFour() without the middle piece. */
    static void drawGridFrameFour(QPainter *painter, const QRectF &target, const QPixmap &pixmap);
    /*!
     * Nine-part border drawing, every part stretched: source margins are a
     * third of P's size, target margins a third of T's (rounded to
     * integers), so the corners grow with the target.
     */
    static void drawGridNine(QPainter *painter, const QRectF &target, const QPixmap &pixmap);

    // Colour frames: T rounded to integers and inset by \a pixel on every
    // side, outlined with a pen of \a color and width \a pixel. The painter's
    // brush is left as it is (a painter without one draws the outline only);
    // its state is restored afterwards. A negative width, an invalid colour
    // or an inset rectangle that is empty draws nothing.

    static void drawRectangle(QPainter *painter, const QRectF &target, const QColor &color, int pixel);
    /*! As drawRectangle() with corners of \a radius absolute pixels. */
    static void drawRoundRect(QPainter *painter, const QRectF &target, const QColor &color, int pixel,
                              int radius);

private:
    ZUtility() = delete;
};

#endif // ZUTILITY_H
