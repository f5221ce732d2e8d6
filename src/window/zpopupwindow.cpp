#include "zpopupwindow_p.h"
#include "zcreator.h"
#include "zresource.h"
#include "ztheme.h"
#include "zwidget.h"

#include <QBitmap>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace {

// Shrinks two margins in proportion so that together they fit \a total.
void fitPair(qreal a, qreal b, qreal total, qreal &outA, qreal &outB)
{
    a = std::max<qreal>(0, a);
    b = std::max<qreal>(0, b);
    total = std::max<qreal>(0, total);
    if (a + b > total && a + b > 0) {
        const qreal f = total / (a + b);
        a *= f;
        b *= f;
    }
    outA = a;
    outB = b;
}

QScreen *screenFor(const QWidget *w, const QPoint &pt)
{
    if (QScreen *s = QGuiApplication::screenAt(pt))
        return s;
    if (QScreen *s = w->screen())
        return s;
    return QGuiApplication::primaryScreen();
}

} // namespace

void zDrawNinePart(QPainter *painter, const QRect &target, const QPixmap &pixmap, const QMargins &margins)
{
    if (!painter || pixmap.isNull() || target.isEmpty())
        return;
    const qreal dpr = pixmap.devicePixelRatio();
    const QSizeF ps = pixmap.deviceIndependentSize();

    qreal sl, sr, st, sb;
    fitPair(margins.left(), margins.right(), ps.width(), sl, sr);
    fitPair(margins.top(), margins.bottom(), ps.height(), st, sb);
    qreal tl, tr, tt, tb;
    fitPair(sl, sr, target.width(), tl, tr);
    fitPair(st, sb, target.height(), tt, tb);

    // Whole device pixels on the source side, whole logical pixels on the
    // target side, so neighbouring pieces meet without seams.
    const int sx[4] = {0, qRound(sl * dpr), qRound((ps.width() - sr) * dpr), pixmap.width()};
    const int sy[4] = {0, qRound(st * dpr), qRound((ps.height() - sb) * dpr), pixmap.height()};
    const int x0 = target.left(), x3 = target.left() + target.width();
    const int y0 = target.top(), y3 = target.top() + target.height();
    const int tx[4] = {x0, x0 + qRound(tl), x3 - qRound(tr), x3};
    const int ty[4] = {y0, y0 + qRound(tt), y3 - qRound(tb), y3};

    for (int j = 0; j < 3; ++j) {
        for (int i = 0; i < 3; ++i) {
            const QRect src(sx[i], sy[j], sx[i + 1] - sx[i], sy[j + 1] - sy[j]);
            const QRect dst(tx[i], ty[j], tx[i + 1] - tx[i], ty[j + 1] - ty[j]);
            if (src.width() <= 0 || src.height() <= 0 || dst.width() <= 0 || dst.height() <= 0)
                continue;
            painter->drawPixmap(dst, pixmap, src);
        }
    }
}

QMargins zTransparentBand(const QImage &source)
{
    if (source.isNull() || !source.hasAlphaChannel())
        return {};
    const QImage img = source.convertToFormat(QImage::Format_ARGB32);
    const int w = img.width(), h = img.height();
    const auto rowClear = [&img, w](int y) {
        const auto *line = reinterpret_cast<const QRgb *>(img.constScanLine(y));
        return std::all_of(line, line + w, [](QRgb px) { return qAlpha(px) == 0; });
    };
    const auto columnClear = [&img, h](int x) {
        for (int y = 0; y < h; ++y) {
            if (qAlpha(reinterpret_cast<const QRgb *>(img.constScanLine(y))[x]) != 0)
                return false;
        }
        return true;
    };
    int top = 0, bottom = 0, left = 0, right = 0;
    while (top < h && rowClear(top))
        ++top;
    while (bottom < h && rowClear(h - 1 - bottom))
        ++bottom;
    while (left < w && columnClear(left))
        ++left;
    while (right < w && columnClear(w - 1 - right))
        ++right;
    const qreal dpr = std::max<qreal>(1, source.devicePixelRatio());
    const auto logical = [dpr](int v) { return int(std::floor(v / dpr)); };
    return QMargins(logical(left), logical(top), logical(right), logical(bottom));
}

void zSetViewTranslucent(QGraphicsView *view, bool on)
{
    if (!view)
        return;
    view->setAttribute(Qt::WA_TranslucentBackground, on);
    view->viewport()->setAutoFillBackground(!on);
    // The window's style sheet gives view and viewport a styled background
    // that would paint the palette's colour.
    view->setStyleSheet(on ? QStringLiteral("QGraphicsView { border-style: none; background: transparent }")
                           : QStringLiteral("QGraphicsView { border-style: none}"));
}

// --- private ---------------------------------------------------------------

ZPopupWindowPrivate::ZPopupWindowPrivate(ZPopupWindow *q)
    : ZWindowPrivate(q)
{
}

ZPopupWindowPrivate::~ZPopupWindowPrivate() = default;

void ZPopupWindowPrivate::applyWindowFlags(Qt::WindowFlags flags)
{
    Z_Q(ZPopupWindow);
    if (flags == q->windowFlags())
        return;
    // Changing the flags re-creates the window: it hides, and Qt resets
    // quit-on-close for some window types.
    const bool quit = q->testAttribute(Qt::WA_QuitOnClose);
    const bool visible = q->isVisible();
    q->setWindowFlags(flags);
    q->setAttribute(Qt::WA_QuitOnClose, quit);
    if (visible)
        q->show();
}

QPixmap ZPopupWindowPrivate::bodyLayer(const QSize &size, qreal dpr)
{
    const QSize pixels = (QSizeF(size) * dpr).toSize();
    if (!bodyCache.isNull() && bodyCache.size() == pixels)
        return bodyCache;
    bodyCache = QPixmap();
    const bool haveImage = !backgroundPixmap.isNull();
    if (size.isEmpty() || (!haveImage && !backgroundColor.isValid()))
        return bodyCache;

    QImage layer(pixels, QImage::Format_ARGB32_Premultiplied);
    layer.setDevicePixelRatio(dpr);
    layer.fill(Qt::transparent);
    QPainter p(&layer);
    const QRect whole(QPoint(0, 0), size);
    const QRect inner = hasFrame ? whole.marginsRemoved(frameMargins) : whole;
    if (hasFrame && !maskPixmap.isNull()) {
        zDrawNinePart(&p, whole, maskPixmap, maskMargins);
        p.setCompositionMode(QPainter::CompositionMode_SourceIn);
    }
    if (haveImage) {
        p.setRenderHint(QPainter::SmoothPixmapTransform);
        p.drawPixmap(inner, backgroundPixmap);
    } else {
        p.fillRect(hasFrame && !maskPixmap.isNull() ? whole : inner, backgroundColor);
    }
    p.end();
    bodyCache = QPixmap::fromImage(layer);
    return bodyCache;
}

void ZPopupWindowPrivate::invalidateLook()
{
    Z_Q(ZPopupWindow);
    bodyCache = QPixmap();
    q->viewport()->update();
}

void ZPopupWindowPrivate::updateShape()
{
    Z_Q(ZPopupWindow);
    const QSize size = q->size();
    if (translucent || !hasFrame || maskPixmap.isNull() || size.isEmpty()) {
        q->clearMask();
        return;
    }
    QImage shape(size, QImage::Format_ARGB32_Premultiplied);
    shape.fill(Qt::transparent);
    QPainter p(&shape);
    zDrawNinePart(&p, QRect(QPoint(0, 0), size), maskPixmap, maskMargins);
    p.end();
    q->setMask(QBitmap::fromImage(shape.createAlphaMask()));
}

void ZPopupWindowPrivate::updateNativeHints()
{
    Z_Q(ZPopupWindow);
    // On the native window only: on the widget the two hints would make Qt
    // drop the frameless hint and give the window a title bar.
    QWindow *handle = q->isWindow() ? q->windowHandle() : nullptr;
    if (!handle)
        return;
    Qt::WindowFlags needed;
    if (minimumButton)
        needed |= Qt::WindowMinimizeButtonHint;
    if (maximumButton)
        needed |= Qt::WindowMaximizeButtonHint;
    // Only ever added, never taken away.
    if ((handle->flags() & needed) != needed)
        handle->setFlags(handle->flags() | needed);
}

bool ZPopupWindowPrivate::maximizedNow() const
{
    return maximized || q_func()->isMaximized();
}

void ZPopupWindowPrivate::beginMove(const QPoint &globalPos)
{
    Z_Q(ZPopupWindow);
    QWindow *handle = q->windowHandle();
    if (handle && handle->startSystemMove())
        return;
    dragOffset = globalPos - q->frameGeometry().topLeft();
    dragging = true;
}

void ZPopupWindowPrivate::beginResize(Qt::Edges edges, const QPoint &globalPos)
{
    Z_Q(ZPopupWindow);
    QWindow *handle = q->windowHandle();
    if (handle && handle->startSystemResize(edges))
        return;
    resizeEdges = edges;
    resizeStartGeometry = q->geometry();
    resizeStartPos = globalPos;
}

void ZPopupWindowPrivate::setBorderCursor(Qt::Edges edges)
{
    Z_Q(ZPopupWindow);
    if (!edges) {
        if (borderCursor)
            q->viewport()->unsetCursor();
        borderCursor = false;
        return;
    }
    Qt::CursorShape shape = Qt::SizeAllCursor;
    if (edges == (Qt::TopEdge | Qt::LeftEdge) || edges == (Qt::BottomEdge | Qt::RightEdge))
        shape = Qt::SizeFDiagCursor;
    else if (edges == (Qt::TopEdge | Qt::RightEdge) || edges == (Qt::BottomEdge | Qt::LeftEdge))
        shape = Qt::SizeBDiagCursor;
    else if (edges & (Qt::LeftEdge | Qt::RightEdge))
        shape = Qt::SizeHorCursor;
    else
        shape = Qt::SizeVerCursor;
    q->viewport()->setCursor(shape);
    borderCursor = true;
}

// --- ZPopupWindow ------------------------------------------------------------

ZPopupWindow::ZPopupWindow(QWidget *parent)
    : ZWindow(*new ZPopupWindowPrivate(this), parent)
{
    init();
}

ZPopupWindow::ZPopupWindow(ZPopupWindowPrivate &dd, QWidget *parent)
    : ZWindow(dd, parent)
{
    init();
}

ZPopupWindow::~ZPopupWindow() = default;

void ZPopupWindow::init()
{
    Z_D(ZPopupWindow);
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::CustomizeWindowHint);
    setAttribute(Qt::WA_DeleteOnClose);
    zSetViewTranslucent(this, d->translucent);
    viewport()->setMouseTracking(true); // for the resize border's cursor
    d->frameImage = QStringLiteral(":/image/theme/frameimage.png");
    d->maskImage = QStringLiteral(":/image/theme/maskimage.png");
    d->backgroundColor = ZTheme::themeColor();
    resetFrame();
    setSceneMargins(d->frameMargins);
}

void ZPopupWindow::construct()
{
    resetFrame();
    ZWindow::construct();
}

void ZPopupWindow::resetFrame()
{
    Z_D(ZPopupWindow);
    d->framePixmap = d->frameImage.isEmpty() ? QPixmap() : ZResource::loadPixmap(d->frameImage);
    d->maskPixmap = d->maskImage.isEmpty() ? QPixmap() : ZResource::loadPixmap(d->maskImage);

    QMargins band;
    if (d->hasFrame) {
        if (!d->maskPixmap.isNull())
            band = zTransparentBand(d->maskPixmap.toImage());
        else if (!d->framePixmap.isNull())
            band = zTransparentBand(d->framePixmap.toImage());
        // The band has to lie in the unscaled corner pieces.
        band = QMargins(std::min(band.left(), d->maskMargins.left()), std::min(band.top(), d->maskMargins.top()),
                        std::min(band.right(), d->maskMargins.right()),
                        std::min(band.bottom(), d->maskMargins.bottom()));
    }
    d->frameMargins = band;
    d->updateShape();
    d->invalidateLook();
}

void ZPopupWindow::updateRequest()
{
    resetFrame();
}

// --- style ---------------------------------------------------------------

void ZPopupWindow::setWindowStyle(WindowStyles style)
{
    Z_D(ZPopupWindow);
    setResizable(style & Resizable);
    setMaximumButton(style & MaxButton);
    setMinimumButton(style & MinButton);

    const bool tool = (style & ToolWindow) || !(style & SystemMenu);
    Qt::WindowFlags flags = windowFlags() & ~(Qt::WindowType_Mask | Qt::WindowSystemMenuHint);
    flags |= tool ? Qt::Tool : Qt::Window;
    if (style & SystemMenu)
        flags |= Qt::WindowSystemMenuHint;
    d->applyWindowFlags(flags);
    setAttribute(Qt::WA_QuitOnClose, style.testFlag(AppWindow));
    setHasFrame(!(style & NoFrame));
    d->style = style;
}

ZPopupWindow::WindowStyles ZPopupWindow::windowStyle() const
{
    return d_func()->style;
}

bool ZPopupWindow::dragWindow() const
{
    return d_func()->dragWindow;
}

void ZPopupWindow::setDragWindow(bool on)
{
    Z_D(ZPopupWindow);
    d->dragWindow = on;
    if (!on)
        d->setBorderCursor({});
}

bool ZPopupWindow::quitAppOnClose() const
{
    return testAttribute(Qt::WA_QuitOnClose);
}

void ZPopupWindow::setQuitAppOnClose(bool on)
{
    setAttribute(Qt::WA_QuitOnClose, on);
    d_func()->style.setFlag(AppWindow, on);
}

bool ZPopupWindow::closeOnEscape() const
{
    return d_func()->closeOnEscape;
}

void ZPopupWindow::setCloseOnEscape(bool on)
{
    d_func()->closeOnEscape = on;
}

bool ZPopupWindow::closeOnF4() const
{
    return d_func()->closeOnF4;
}

void ZPopupWindow::setCloseOnF4(bool on)
{
    d_func()->closeOnF4 = on;
}

bool ZPopupWindow::toolWindow() const
{
    return windowType() == Qt::Tool;
}

void ZPopupWindow::setToolWindow(bool on)
{
    Z_D(ZPopupWindow);
    d->applyWindowFlags((windowFlags() & ~Qt::WindowType_Mask) | (on ? Qt::Tool : Qt::Window));
    d->style.setFlag(ToolWindow, on);
}

bool ZPopupWindow::systemMenu() const
{
    return windowFlags().testFlag(Qt::WindowSystemMenuHint);
}

void ZPopupWindow::setSystemMenu(bool on)
{
    Z_D(ZPopupWindow);
    Qt::WindowFlags flags = windowFlags() & ~(Qt::WindowType_Mask | Qt::WindowSystemMenuHint);
    flags |= on ? (Qt::Window | Qt::WindowSystemMenuHint) : Qt::Tool;
    d->applyWindowFlags(flags);
    d->style.setFlag(SystemMenu, on);
}

bool ZPopupWindow::maximumButton() const
{
    return d_func()->maximumButton;
}

void ZPopupWindow::setMaximumButton(bool on)
{
    Z_D(ZPopupWindow);
    d->maximumButton = on;
    d->style.setFlag(MaxButton, on);
    d->updateNativeHints();
}

bool ZPopupWindow::minimumButton() const
{
    return d_func()->minimumButton;
}

void ZPopupWindow::setMinimumButton(bool on)
{
    Z_D(ZPopupWindow);
    d->minimumButton = on;
    d->style.setFlag(MinButton, on);
    d->updateNativeHints();
}

bool ZPopupWindow::translucent() const
{
    return d_func()->translucent;
}

void ZPopupWindow::setTranslucent(bool on)
{
    Z_D(ZPopupWindow);
    if (d->translucent == on)
        return;
    d->translucent = on;
    zSetViewTranslucent(this, on);
    d->updateShape();
    d->invalidateLook();
}

bool ZPopupWindow::resizable() const
{
    return d_func()->resizable;
}

void ZPopupWindow::setResizable(bool on)
{
    Z_D(ZPopupWindow);
    d->resizable = on;
    d->style.setFlag(Resizable, on);
    if (!on)
        d->setBorderCursor({});
}

bool ZPopupWindow::hasFrame() const
{
    return d_func()->hasFrame;
}

void ZPopupWindow::setHasFrame(bool on)
{
    Z_D(ZPopupWindow);
    d->style.setFlag(NoFrame, !on);
    if (d->hasFrame == on)
        return;
    d->hasFrame = on;
    resetFrame();
}

// --- sizes ---------------------------------------------------------------

QSize ZPopupWindow::frameSize() const
{
    return size();
}

void ZPopupWindow::setFrameSize(const QSize &size)
{
    if (size.isValid())
        resize(size);
}

QSize ZPopupWindow::minimumSize() const
{
    return d_func()->minimumSize;
}

void ZPopupWindow::setMinimumSize(const QSize &size)
{
    Z_D(ZPopupWindow);
    d->minimumSize = size;
    QWidget::setMinimumSize(size.isValid() ? size : QSize(0, 0));
}

QSize ZPopupWindow::maximumSize() const
{
    return d_func()->maximumSize;
}

void ZPopupWindow::setMaximumSize(const QSize &size)
{
    Z_D(ZPopupWindow);
    d->maximumSize = size;
    QWidget::setMaximumSize(size.isValid() ? size.boundedTo(QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX))
                                           : QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
}

QSize ZPopupWindow::fixSize() const
{
    Z_D(const ZPopupWindow);
    return d->minimumSize.isValid() && d->minimumSize == d->maximumSize ? d->minimumSize : QSize();
}

void ZPopupWindow::setFixSize(const QSize &size)
{
    setMinimumSize(size);
    setMaximumSize(size);
}

// --- images --------------------------------------------------------------

QString ZPopupWindow::maskImage() const
{
    return d_func()->maskImage;
}

void ZPopupWindow::setMaskImage(const QString &path)
{
    Z_D(ZPopupWindow);
    if (d->maskImage == path)
        return;
    d->maskImage = path;
    resetFrame();
}

QString ZPopupWindow::frameImage() const
{
    return d_func()->frameImage;
}

void ZPopupWindow::setFrameImage(const QString &path)
{
    Z_D(ZPopupWindow);
    if (d->frameImage == path)
        return;
    d->frameImage = path;
    resetFrame();
}

QMargins ZPopupWindow::maskMargins() const
{
    return d_func()->maskMargins;
}

void ZPopupWindow::setMaskMargins(const QMargins &margins)
{
    Z_D(ZPopupWindow);
    const QMargins m(std::max(0, margins.left()), std::max(0, margins.top()), std::max(0, margins.right()),
                     std::max(0, margins.bottom()));
    if (d->maskMargins == m)
        return;
    d->maskMargins = m;
    resetFrame();
}

int ZPopupWindow::borderPixel() const
{
    return d_func()->borderPixel;
}

void ZPopupWindow::setBorderPixel(int pixels)
{
    d_func()->borderPixel = std::max(0, pixels);
}

QString ZPopupWindow::backgroundImage() const
{
    return d_func()->backgroundImage;
}

void ZPopupWindow::setBackgroundImage(const QString &path)
{
    Z_D(ZPopupWindow);
    if (d->backgroundImage == path)
        return;
    d->backgroundImage = path;
    d->backgroundPixmap = path.isEmpty() ? QPixmap() : ZResource::loadPixmap(path);
    d->invalidateLook();
}

QColor ZPopupWindow::backgroundColor() const
{
    return d_func()->backgroundColor;
}

void ZPopupWindow::setBackgroundColor(const QColor &color)
{
    Z_D(ZPopupWindow);
    if (d->backgroundColor == color)
        return;
    d->backgroundColor = color;
    d->invalidateLook();
}

QMargins ZPopupWindow::frameMargins() const
{
    return d_func()->frameMargins;
}

bool ZPopupWindow::isWindowMaximized() const
{
    return d_func()->maximized;
}

// --- pure geometry -------------------------------------------------------

ZPopupWindow::HitArea ZPopupWindow::frameHitTest(const QRect &windowRect, const QMargins &frameMargins,
                                                 int borderPixel, bool resizable, bool maximized,
                                                 const QPoint &pos)
{
    if (!resizable || maximized)
        return Client;
    const QRect r = windowRect.marginsRemoved(frameMargins);
    const int b = std::max(0, borderPixel);
    const int left = r.x(), top = r.y(), right = r.x() + r.width(), bottom = r.y() + r.height();
    const int w = r.width(), h = r.height();

    if (QRect(left, top, 2 * b, 2 * b).contains(pos))
        return TopLeftCorner;
    if (QRect(right - 2 * b, top, 2 * b, 2 * b).contains(pos))
        return TopRightCorner;
    if (QRect(left, bottom - 2 * b, 2 * b, 2 * b).contains(pos))
        return BottomLeftCorner;
    if (QRect(right - 2 * b, bottom - 2 * b, 2 * b, 2 * b).contains(pos))
        return BottomRightCorner;
    if (QRect(left + b, top, w - 2 * b, b).contains(pos))
        return TopEdge;
    if (QRect(left, top + b, b, h - 3 * b).contains(pos))
        return LeftEdge;
    if (QRect(right - b, top + b, b, h - 2 * b).contains(pos))
        return RightEdge;
    if (QRect(left + b, bottom - b, w - 2 * b, b).contains(pos))
        return BottomEdge;
    return Client;
}

Qt::Edges ZPopupWindow::edgesForHitArea(HitArea area)
{
    switch (area) {
    case LeftEdge: return Qt::LeftEdge;
    case RightEdge: return Qt::RightEdge;
    case TopEdge: return Qt::TopEdge;
    case BottomEdge: return Qt::BottomEdge;
    case TopLeftCorner: return Qt::TopEdge | Qt::LeftEdge;
    case TopRightCorner: return Qt::TopEdge | Qt::RightEdge;
    case BottomLeftCorner: return Qt::BottomEdge | Qt::LeftEdge;
    case BottomRightCorner: return Qt::BottomEdge | Qt::RightEdge;
    default: return {};
    }
}

QRect ZPopupWindow::maximizedGeometry(const QRect &workArea, const QMargins &frame, int borderPixel,
                                      const QSize &maximumSize)
{
    const int b = std::max(0, borderPixel);
    const QPoint pos(workArea.x() - b - frame.left(), workArea.y() - b - frame.top());
    QSize size(workArea.width() + 2 * b + frame.left() + frame.right(),
               workArea.height() + 2 * b + frame.top() + frame.bottom());
    if (maximumSize.width() > 0)
        size.setWidth(std::min(size.width(), maximumSize.width()));
    if (maximumSize.height() > 0)
        size.setHeight(std::min(size.height(), maximumSize.height()));
    return QRect(pos, size);
}

QSize ZPopupWindow::minimumTrackSize(const QMargins &frame, const QSize &minimumSize)
{
    QSize size((frame.left() + frame.right()) * 5, (frame.top() + frame.bottom()) * 3);
    if (minimumSize.width() > 0)
        size.setWidth(std::max(size.width(), minimumSize.width()));
    if (minimumSize.height() > 0)
        size.setHeight(std::max(size.height(), minimumSize.height()));
    return size;
}

QPoint ZPopupWindow::centeredPosition(const QSize &windowSize, const QMargins &frame, const QPoint &center,
                                      const QRect &area)
{
    const QSize visible(std::max(0, windowSize.width() - frame.left() - frame.right()),
                        std::max(0, windowSize.height() - frame.top() - frame.bottom()));
    const auto place = [](int c, int extent, int areaStart, int areaExtent) {
        int start = c - extent / 2;
        if (areaExtent <= 0)
            return start;
        if (extent >= areaExtent)
            return areaStart;
        return std::clamp(start, areaStart, areaStart + areaExtent - extent);
    };
    const int x = place(center.x(), visible.width(), area.x(), area.width());
    const int y = place(center.y(), visible.height(), area.y(), area.height());
    return QPoint(x - frame.left(), y - frame.top());
}

// --- placement -----------------------------------------------------------

void ZPopupWindow::moveCenter(ZWidget *center)
{
    QWidget *host = nullptr;
    if (center) {
        if (QGraphicsView *view = center->view())
            host = view->window();
    }
    QPoint pt;
    if (host && host != this) {
        pt = host->geometry().center();
    } else {
        QScreen *s = screen() ? screen() : QGuiApplication::primaryScreen();
        if (!s)
            return;
        pt = s->availableGeometry().center();
    }
    moveCenter(pt);
}

void ZPopupWindow::moveCenter(ZWidget *center, bool deferred)
{
    if (!deferred) {
        moveCenter(center);
        return;
    }
    QTimer::singleShot(0, this, [this, guard = QPointer<ZWidget>(center), hadCenter = center != nullptr] {
        if (hadCenter && !guard)
            return;
        moveCenter(guard.data());
    });
}

void ZPopupWindow::moveCenter(QPoint pt)
{
    Z_D(ZPopupWindow);
    QScreen *s = screenFor(this, pt);
    const QRect area = s ? s->availableGeometry() : QRect();
    move(centeredPosition(size(), d->frameMargins, pt, area));
}

void ZPopupWindow::showNormal()
{
    Z_D(ZPopupWindow);
    if (d->maximized) {
        d->maximized = false;
        setGeometry(d->normalGeometry);
    }
    ZWindow::showNormal();
}

void ZPopupWindow::showMaximized()
{
    Z_D(ZPopupWindow);
    QScreen *s = screen() ? screen() : QGuiApplication::primaryScreen();
    if (!d->maximized) {
        d->normalGeometry = geometry();
        d->maximized = true;
    }
    d->dragging = false;
    d->resizeEdges = {};
    d->setBorderCursor({});
    if (s)
        setGeometry(maximizedGeometry(s->availableGeometry(), d->frameMargins, d->borderPixel, d->maximumSize));
    if (isMinimized())
        setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
}

void ZPopupWindow::showMaximizeOrRestore()
{
    if (d_func()->maximized)
        showNormal();
    else
        showMaximized();
}

// --- events --------------------------------------------------------------

void ZPopupWindow::onEscPressed(Qt::KeyboardModifiers)
{
    if (d_func()->closeOnEscape)
        close();
}

void ZPopupWindow::onEnterPressed(Qt::KeyboardModifiers modifiers)
{
    emit enterPressed(modifiers);
}

void ZPopupWindow::onCloseClick()
{
    close();
}

void ZPopupWindow::themeChange(ZThemeChangeEvent *event)
{
    Z_D(ZPopupWindow);
    d->backgroundColor = ZTheme::themeColor();
    d->invalidateLook();
    ZWindow::themeChange(event);
}

void ZPopupWindow::keyPressEvent(QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    switch (event->key()) {
    case Qt::Key_Escape:
        event->accept();
        onEscPressed(modifiers);
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        onEnterPressed(modifiers);
        break;
    default:
        break;
    }
    ZWindow::keyPressEvent(event);
}

void ZPopupWindow::mousePressEvent(QMouseEvent *event)
{
    Z_D(ZPopupWindow);
    if (event->button() == Qt::LeftButton && d->dragWindow && !d->maximizedNow()) {
        const QPoint pos = viewport()->mapTo(this, event->position().toPoint());
        const QPoint global = event->globalPosition().toPoint();
        const Qt::Edges edges =
            edgesForHitArea(frameHitTest(rect(), d->frameMargins, d->borderPixel, d->resizable, false, pos));
        if (edges) {
            // The border is the frame's, not the scene's.
            d->beginResize(edges, global);
            event->accept();
            return;
        }
        const QPoint viewportPos = event->position().toPoint();
        if (ZWidget::resolveDragPolicy(itemAt(viewportPos), mapToScene(viewportPos)) == ZWidget::WindowMove) {
            d->beginMove(global);
            // The press still reaches the scene; it was used either way.
            ZWindow::mousePressEvent(event);
            event->accept();
            return;
        }
    }
    ZWindow::mousePressEvent(event);
}

void ZPopupWindow::mouseMoveEvent(QMouseEvent *event)
{
    Z_D(ZPopupWindow);
    const QPoint global = event->globalPosition().toPoint();
    if (event->buttons() & Qt::LeftButton) {
        if (d->dragging) {
            move(global - d->dragOffset);
            event->accept();
            return;
        }
        if (d->resizeEdges) {
            QRect g = d->resizeStartGeometry;
            const QPoint delta = global - d->resizeStartPos;
            const QSize track = minimumTrackSize(d->frameMargins, d->minimumSize);
            const int minW = std::max(track.width(), minimumWidth()), maxW = std::max(minW, maximumWidth());
            const int minH = std::max(track.height(), minimumHeight()), maxH = std::max(minH, maximumHeight());
            if (d->resizeEdges & Qt::LeftEdge) {
                const int w = std::clamp(g.width() - delta.x(), minW, maxW);
                g.setLeft(g.right() + 1 - w);
            } else if (d->resizeEdges & Qt::RightEdge) {
                g.setWidth(std::clamp(g.width() + delta.x(), minW, maxW));
            }
            if (d->resizeEdges & Qt::TopEdge) {
                const int h = std::clamp(g.height() - delta.y(), minH, maxH);
                g.setTop(g.bottom() + 1 - h);
            } else if (d->resizeEdges & Qt::BottomEdge) {
                g.setHeight(std::clamp(g.height() + delta.y(), minH, maxH));
            }
            setGeometry(g);
            event->accept();
            return;
        }
    } else if (d->dragWindow) {
        const QPoint pos = viewport()->mapTo(this, event->position().toPoint());
        ZWindow::mouseMoveEvent(event);
        d->setBorderCursor(edgesForHitArea(
            frameHitTest(rect(), d->frameMargins, d->borderPixel, d->resizable, d->maximizedNow(), pos)));
        return;
    }
    ZWindow::mouseMoveEvent(event);
}

void ZPopupWindow::mouseReleaseEvent(QMouseEvent *event)
{
    Z_D(ZPopupWindow);
    if (event->button() == Qt::LeftButton) {
        d->dragging = false;
        d->dragOffset = QPoint(-1, -1);
        d->resizeEdges = {};
    }
    ZWindow::mouseReleaseEvent(event);
}

void ZPopupWindow::showEvent(QShowEvent *event)
{
    ZWindow::showEvent(event);
    d_func()->updateNativeHints();
    updateRequest();
}

void ZPopupWindow::resizeEvent(QResizeEvent *event)
{
    Z_D(ZPopupWindow);
    d->bodyCache = QPixmap();
    d->updateShape();
    ZWindow::resizeEvent(event);
}

void ZPopupWindow::closeEvent(QCloseEvent *event)
{
    // Alt+F4 and the like arrive as spontaneous close events.
    if (event->spontaneous() && !d_func()->closeOnF4) {
        event->ignore();
        return;
    }
    ZWindow::closeEvent(event);
}

void ZPopupWindow::drawBackground(QPainter *painter, const QRectF &rect)
{
    Z_D(ZPopupWindow);
    ZWindow::drawBackground(painter, rect);
    const QPixmap body = d->bodyLayer(size(), devicePixelRatioF());
    if (!body.isNull())
        painter->drawPixmap(QPointF(0, 0), body);
}

void ZPopupWindow::drawForeground(QPainter *painter, const QRectF &rect)
{
    Z_D(ZPopupWindow);
    ZWindow::drawForeground(painter, rect);
    if (d->hasFrame && !d->framePixmap.isNull())
        zDrawNinePart(painter, QRect(QPoint(0, 0), size()), d->framePixmap, d->maskMargins);
}

Z_REGISTER_WINDOW(ZPopupWindow);
