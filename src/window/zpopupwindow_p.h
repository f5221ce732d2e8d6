#ifndef ZPOPUPWINDOW_P_H
#define ZPOPUPWINDOW_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zpopupwindow.h"
#include "zwindow_p.h"

#include <QPixmap>

class QPainter;

/*!
 * Nine-part drawing: the corners of \a pixmap (cut by \a margins, in logical
 * pixels) keep their size, edges stretch along, the middle both ways. Margins
 * that do not fit the pixmap or the target are shrunk in proportion. A null
 * pixmap or an empty target draws nothing.
 */
ZKIT_EXPORT void zDrawNinePart(QPainter *painter, const QRect &target, const QPixmap &pixmap,
                               const QMargins &margins);

/*!
 * The fully transparent band of \a image on each side: the number of pixel
 * rows or columns, counted from that edge, whose alpha is 0 throughout, in
 * logical pixels (divided by the device pixel ratio, rounded down). An image
 * without an alpha channel, or a null one, has none.
 */
ZKIT_EXPORT QMargins zTransparentBand(const QImage &image);

/*!
 * Makes a view's window translucent (or opaque again): the window attribute,
 * and a view and viewport that paint no background of their own.
 */
ZKIT_EXPORT void zSetViewTranslucent(QGraphicsView *view, bool on);

class ZKIT_EXPORT ZPopupWindowPrivate : public ZWindowPrivate
{
    Z_DECLARE_PUBLIC(ZPopupWindow)
public:
    explicit ZPopupWindowPrivate(ZPopupWindow *q);
    ~ZPopupWindowPrivate() override;

    // Changes the window flags, keeping quit-on-close and visibility.
    void applyWindowFlags(Qt::WindowFlags flags);
    // The background cut to the mask, at the window's size.
    QPixmap bodyLayer(const QSize &size, qreal dpr);
    void invalidateLook();
    void updateShape();
    // Adds the minimise and maximise hints to the native window.
    void updateNativeHints();
    bool maximizedNow() const;
    // Follow-the-mouse fallbacks where the window system does not move or
    // resize the window for us.
    void beginMove(const QPoint &globalPos);
    void beginResize(Qt::Edges edges, const QPoint &globalPos);
    void setBorderCursor(Qt::Edges edges);

    QPixmap framePixmap;
    QString frameImage;
    QPixmap maskPixmap;
    QString maskImage;
    QMargins frameMargins;
    QMargins maskMargins{16, 16, 16, 16};
    bool hasFrame = true;
    QPixmap backgroundPixmap;
    QString backgroundImage;
    QColor backgroundColor;
    QPixmap bodyCache;

    bool resizable = false;
    QSize minimumSize;
    QSize maximumSize;
    QPoint dragOffset{-1, -1};
    bool dragging = false;
    Qt::Edges resizeEdges;
    QRect resizeStartGeometry;
    QPoint resizeStartPos;
    bool borderCursor = false;
    int borderPixel = 3;
    bool dragWindow = true;
    bool minimumButton = false;
    bool maximumButton = false;
    bool closeOnEscape = true;
    bool closeOnF4 = true;
    bool translucent = true;
    ZPopupWindow::WindowStyles style; // as set, kept up to date by the single setters

    bool maximized = false;
    QRect normalGeometry;
};

#endif // ZPOPUPWINDOW_P_H
