#include "zbubbletip_p.h"
#include "zcreator.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

// One box-blur pass along rows (\a horizontal) or columns of a premultiplied
// image; three passes come close to a Gaussian of the same reach.
void boxBlurPass(QImage &img, int radius, bool horizontal)
{
    const int w = img.width(), h = img.height();
    const int lines = horizontal ? h : w;
    const int length = horizontal ? w : h;
    const int window = 2 * radius + 1;
    std::vector<QRgb> buffer(length);
    for (int line = 0; line < lines; ++line) {
        const auto pixel = [&](int i) -> QRgb & {
            return horizontal ? reinterpret_cast<QRgb *>(img.scanLine(line))[i]
                              : reinterpret_cast<QRgb *>(img.scanLine(i))[line];
        };
        for (int i = 0; i < length; ++i)
            buffer[i] = pixel(i);
        int sum[4] = {0, 0, 0, 0};
        const auto add = [&](int i, int sign) {
            if (i < 0 || i >= length)
                return;
            const QRgb p = buffer[i];
            sum[0] += sign * qAlpha(p);
            sum[1] += sign * qRed(p);
            sum[2] += sign * qGreen(p);
            sum[3] += sign * qBlue(p);
        };
        for (int i = -radius; i <= radius; ++i)
            add(i, 1);
        for (int i = 0; i < length; ++i) {
            pixel(i) = qRgba(sum[1] / window, sum[2] / window, sum[3] / window, sum[0] / window);
            add(i - radius, -1);
            add(i + radius + 1, 1);
        }
    }
}

QImage blurred(QImage img, qreal blur)
{
    const int radius = int(std::ceil(blur / 3));
    if (radius <= 0)
        return img;
    for (int pass = 0; pass < 3; ++pass) {
        boxBlurPass(img, radius, true);
        boxBlurPass(img, radius, false);
    }
    return img;
}

} // namespace

// --- private ---------------------------------------------------------------

ZBubbleTipPrivate::ZBubbleTipPrivate(ZBubbleTip *q)
    : ZFollowWindowPrivate(q)
{
}

ZBubbleTipPrivate::~ZBubbleTipPrivate() = default;

QMargins ZBubbleTipPrivate::band() const
{
    if (!shadow)
        return QMargins(1, 1, 1, 1);
    const int blur = int(std::ceil(shadowBlur));
    const auto side = [blur](qreal towards) { return 1 + blur + int(std::ceil(std::max<qreal>(0, towards))); };
    return QMargins(side(-shadowOffset.x()), side(-shadowOffset.y()), side(shadowOffset.x()),
                    side(shadowOffset.y()));
}

void ZBubbleTipPrivate::setArrowEdge(Qt::Edges edge)
{
    if (arrowEdge == edge)
        return;
    arrowEdge = edge;
    updateChrome();
}

void ZBubbleTipPrivate::updateChrome()
{
    Z_Q(ZBubbleTip);
    QMargins m = band() + QMargins(1, 1, 1, 1); // and the outline
    if (arrowEdge & Qt::TopEdge)
        m.setTop(m.top() + ArrowHeight);
    else if (arrowEdge & Qt::BottomEdge)
        m.setBottom(m.bottom() + ArrowHeight);
    else if (arrowEdge & Qt::LeftEdge)
        m.setLeft(m.left() + ArrowHeight);
    else if (arrowEdge & Qt::RightEdge)
        m.setRight(m.right() + ArrowHeight);
    if (q->sceneMargins() != m)
        q->setSceneMargins(m);
    invalidate();
}

void ZBubbleTipPrivate::invalidate()
{
    Z_Q(ZBubbleTip);
    shadowCache = QImage();
    q->viewport()->update();
}

// --- ZBubbleTip --------------------------------------------------------------

ZBubbleTip::ZBubbleTip(QWidget *parent)
    : ZFollowWindow(*new ZBubbleTipPrivate(this), parent)
{
    init();
}

ZBubbleTip::ZBubbleTip(ZBubbleTipPrivate &dd, QWidget *parent)
    : ZFollowWindow(dd, parent)
{
    init();
}

ZBubbleTip::~ZBubbleTip() = default;

void ZBubbleTip::init()
{
    Z_D(ZBubbleTip);
    setWindowFlags(Qt::ToolTip | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setTranslucent(true);
    setDirection(BottomCenter);
    setHideFlags(HideFlags(ClickAtTarget | ClickAtMySelf | ClickAtOther | TargetWindowInactive
                           | TargetWindowResize | TargetWindowMoving | HideAsTargetHidden));
    d->updateChrome();
}

bool ZBubbleTip::shadow() const
{
    return d_func()->shadow;
}

void ZBubbleTip::setShadow(bool on)
{
    Z_D(ZBubbleTip);
    if (d->shadow == on)
        return;
    d->shadow = on;
    d->updateChrome();
}

qreal ZBubbleTip::shadowBlur() const
{
    return d_func()->shadowBlur;
}

void ZBubbleTip::setShadowBlur(qreal radius)
{
    Z_D(ZBubbleTip);
    radius = std::isfinite(radius) ? std::clamp<qreal>(radius, 0, 64) : 0;
    if (qFuzzyCompare(d->shadowBlur + 1, radius + 1))
        return;
    d->shadowBlur = radius;
    d->updateChrome();
}

QPointF ZBubbleTip::shadowOffset() const
{
    return d_func()->shadowOffset;
}

void ZBubbleTip::setShadowOffset(const QPointF &offset)
{
    Z_D(ZBubbleTip);
    const auto limit = [](qreal v) { return std::isfinite(v) ? std::clamp<qreal>(v, -64, 64) : 0; };
    const QPointF o(limit(offset.x()), limit(offset.y()));
    if (d->shadowOffset == o)
        return;
    d->shadowOffset = o;
    d->updateChrome();
}

QColor ZBubbleTip::backgroundColor() const
{
    return d_func()->backgroundColor;
}

void ZBubbleTip::setBackgroundColor(const QColor &color)
{
    Z_D(ZBubbleTip);
    if (d->backgroundColor == color)
        return;
    d->backgroundColor = color;
    d->invalidate();
}

QColor ZBubbleTip::brushColor() const
{
    return d_func()->brushColor;
}

void ZBubbleTip::setBrushColor(const QColor &color)
{
    Z_D(ZBubbleTip);
    if (d->brushColor == color)
        return;
    d->brushColor = color;
    d->invalidate();
}

QColor ZBubbleTip::penColor() const
{
    return d_func()->penColor;
}

void ZBubbleTip::setPenColor(const QColor &color)
{
    Z_D(ZBubbleTip);
    if (d->penColor == color)
        return;
    d->penColor = color;
    d->invalidate();
}

Qt::Edges ZBubbleTip::arrowEdge() const
{
    return d_func()->arrowEdge;
}

Qt::Edges ZBubbleTip::arrowEdgeFor(Direction placed)
{
    switch (placed) {
    case TopLeft:
    case TopCenter:
    case TopRight:
        return Qt::BottomEdge;
    case BottomLeft:
    case BottomCenter:
    case BottomRight:
    case UnderCursor:
        return Qt::TopEdge;
    case LeftTop:
    case LeftCenter:
    case LeftBottom:
        return Qt::RightEdge;
    case RightTop:
    case RightCenter:
    case RightBottom:
        return Qt::LeftEdge;
    default:
        return {};
    }
}

QPainterPath ZBubbleTip::bubblePath() const
{
    Z_D(const ZBubbleTip);
    using D = ZBubbleTipPrivate;
    // Half-pixel inset so the one-pixel outline falls on whole pixels.
    QRectF body = QRectF(rect()).marginsRemoved(QMarginsF(d->band())).adjusted(0.5, 0.5, -0.5, -0.5);
    if (d->arrowEdge & Qt::TopEdge)
        body.setTop(body.top() + D::ArrowHeight);
    else if (d->arrowEdge & Qt::BottomEdge)
        body.setBottom(body.bottom() - D::ArrowHeight);
    else if (d->arrowEdge & Qt::LeftEdge)
        body.setLeft(body.left() + D::ArrowHeight);
    else if (d->arrowEdge & Qt::RightEdge)
        body.setRight(body.right() - D::ArrowHeight);
    QPainterPath path;
    if (body.width() <= 0 || body.height() <= 0)
        return path;
    const qreal radius = std::min<qreal>({qreal(D::Radius), body.width() / 2, body.height() / 2});
    path.addRoundedRect(body, radius, radius);
    if (!d->arrowEdge)
        return path;

    const bool alongX = d->arrowEdge & (Qt::TopEdge | Qt::BottomEdge);
    const qreal start = alongX ? body.left() : body.top();
    const qreal end = alongX ? body.right() : body.bottom();
    const qreal half = std::min<qreal>(D::ArrowWidth / 2.0, (end - start) / 2 - radius);
    if (half <= 0)
        return path;
    qreal c = d->arrowCenter >= 0 ? d->arrowCenter : (start + end) / 2;
    c = std::clamp(c, start + radius + half, end - radius - half);

    QPolygonF arrow;
    if (d->arrowEdge & Qt::TopEdge)
        arrow << QPointF(c - half, body.top() + 1) << QPointF(c, body.top() - D::ArrowHeight)
              << QPointF(c + half, body.top() + 1);
    else if (d->arrowEdge & Qt::BottomEdge)
        arrow << QPointF(c - half, body.bottom() - 1) << QPointF(c, body.bottom() + D::ArrowHeight)
              << QPointF(c + half, body.bottom() - 1);
    else if (d->arrowEdge & Qt::LeftEdge)
        arrow << QPointF(body.left() + 1, c - half) << QPointF(body.left() - D::ArrowHeight, c)
              << QPointF(body.left() + 1, c + half);
    else
        arrow << QPointF(body.right() - 1, c - half) << QPointF(body.right() + D::ArrowHeight, c)
              << QPointF(body.right() - 1, c + half);
    QPainterPath tri;
    tri.addPolygon(arrow);
    tri.closeSubpath();
    return path.united(tri).simplified();
}

void ZBubbleTip::resetGeometry()
{
    Z_D(ZBubbleTip);
    ZFollowWindow::resetGeometry();
    if (!target())
        return;
    const Qt::Edges edge = arrowEdgeFor(placedDirection());
    // Where the target's centre lies along the arrow edge, in window coordinates.
    const QPointF c = d->placedTarget.center() - QPointF(pos());
    d->arrowCenter = (edge & (Qt::TopEdge | Qt::BottomEdge)) ? c.x() : c.y();
    if (d->arrowEdge != edge)
        d->setArrowEdge(edge);
    else
        d->invalidate();
}

QMargins ZBubbleTip::placementMargins() const
{
    return d_func()->band();
}

void ZBubbleTip::directionChanged(Direction direction)
{
    // Before placement the arrow faces the side asked for; flipping keeps the
    // axis, so the content's room is right from here on.
    Z_D(ZBubbleTip);
    d->arrowCenter = -1;
    d->setArrowEdge(arrowEdgeFor(direction));
}

void ZBubbleTip::resizeEvent(QResizeEvent *event)
{
    d_func()->shadowCache = QImage();
    ZFollowWindow::resizeEvent(event);
}

void ZBubbleTip::drawBackground(QPainter *painter, const QRectF &rect)
{
    Z_D(ZBubbleTip);
    ZFollowWindow::drawBackground(painter, rect);
    painter->save();
    if (d->backgroundColor.alpha() > 0)
        painter->fillRect(QRect(QPoint(0, 0), size()), d->backgroundColor);
    const QPainterPath path = bubblePath();
    if (d->shadow && !path.isEmpty()) {
        if (d->shadowCache.isNull() || d->shadowCache.size() != size()) {
            QImage img(size(), QImage::Format_ARGB32_Premultiplied);
            img.fill(Qt::transparent);
            QPainter p(&img);
            p.setRenderHint(QPainter::Antialiasing);
            p.translate(d->shadowOffset);
            p.fillPath(path, QColor(0, 0, 0, 70));
            p.end();
            d->shadowCache = blurred(img, d->shadowBlur);
        }
        painter->drawImage(QPointF(0, 0), d->shadowCache);
    }
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(d->penColor.isValid() ? QPen(d->penColor, 1) : QPen(Qt::NoPen));
    painter->setBrush(d->brushColor.isValid() ? QBrush(d->brushColor) : QBrush(Qt::NoBrush));
    painter->drawPath(path);
    painter->restore();
}

Z_REGISTER_WINDOW(ZBubbleTip);
