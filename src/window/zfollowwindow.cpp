#include "zfollowwindow_p.h"
#include "zpopupwindow_p.h"
#include "zcreator.h"
#include "zwidget.h"

#include <QCursor>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>

#include <algorithm>

namespace {

enum class Side { Top, Bottom, Left, Right };
enum class Align { Start, Center, End };

struct Rule
{
    Side side;
    Align align;
};

Rule ruleOf(ZFollowWindow::Direction d)
{
    switch (d) {
    case ZFollowWindow::TopLeft: return {Side::Top, Align::Start};
    case ZFollowWindow::TopCenter: return {Side::Top, Align::Center};
    case ZFollowWindow::TopRight: return {Side::Top, Align::End};
    case ZFollowWindow::BottomCenter: return {Side::Bottom, Align::Center};
    case ZFollowWindow::BottomRight: return {Side::Bottom, Align::End};
    case ZFollowWindow::LeftTop: return {Side::Left, Align::Start};
    case ZFollowWindow::LeftCenter: return {Side::Left, Align::Center};
    case ZFollowWindow::LeftBottom: return {Side::Left, Align::End};
    case ZFollowWindow::RightTop: return {Side::Right, Align::Start};
    case ZFollowWindow::RightCenter: return {Side::Right, Align::Center};
    case ZFollowWindow::RightBottom: return {Side::Right, Align::End};
    default: return {Side::Bottom, Align::Start}; // BottomLeft, UnderCursor
    }
}

ZFollowWindow::Direction directionOf(Rule r)
{
    static const ZFollowWindow::Direction table[4][3] = {
        {ZFollowWindow::TopLeft, ZFollowWindow::TopCenter, ZFollowWindow::TopRight},
        {ZFollowWindow::BottomLeft, ZFollowWindow::BottomCenter, ZFollowWindow::BottomRight},
        {ZFollowWindow::LeftTop, ZFollowWindow::LeftCenter, ZFollowWindow::LeftBottom},
        {ZFollowWindow::RightTop, ZFollowWindow::RightCenter, ZFollowWindow::RightBottom},
    };
    return table[int(r.side)][int(r.align)];
}

bool vertical(Side s)
{
    return s == Side::Top || s == Side::Bottom;
}

Side opposite(Side s)
{
    switch (s) {
    case Side::Top: return Side::Bottom;
    case Side::Bottom: return Side::Top;
    case Side::Left: return Side::Right;
    case Side::Right: break;
    }
    return Side::Left;
}

qreal aligned(Align a, qreal start, qreal end, qreal extent)
{
    switch (a) {
    case Align::Start: return start;
    case Align::Center: return (start + end) / 2 - extent / 2;
    case Align::End: break;
    }
    return end - extent;
}

QPointF place(Rule r, const QRectF &t, const QSizeF &s, const QPointF &offset)
{
    QPointF p;
    switch (r.side) {
    case Side::Top: p.setY(t.top() - s.height()); break;
    case Side::Bottom: p.setY(t.bottom()); break;
    case Side::Left: p.setX(t.left() - s.width()); break;
    case Side::Right: p.setX(t.right()); break;
    }
    if (vertical(r.side))
        p.setX(aligned(r.align, t.left(), t.right(), s.width()));
    else
        p.setY(aligned(r.align, t.top(), t.bottom(), s.height()));
    return p + offset;
}

// Whether a rectangle put on side \a s stays inside \a area on that side.
bool fitsOnSide(Side s, const QRectF &rect, const QRectF &area)
{
    switch (s) {
    case Side::Top: return rect.top() >= area.top();
    case Side::Bottom: return rect.bottom() <= area.bottom();
    case Side::Left: return rect.left() >= area.left();
    case Side::Right: break;
    }
    return rect.right() <= area.right();
}

qreal shiftInto(qreal start, qreal extent, qreal areaStart, qreal areaExtent)
{
    if (extent >= areaExtent)
        return areaStart;
    return std::clamp(start, areaStart, areaStart + areaExtent - extent);
}

} // namespace

// --- private ---------------------------------------------------------------

ZFollowWindowPrivate::ZFollowWindowPrivate(ZFollowWindow *q)
    : ZWindowPrivate(q)
{
}

ZFollowWindowPrivate::~ZFollowWindowPrivate() = default;

void ZFollowWindowPrivate::unhookTarget()
{
    Z_Q(ZFollowWindow);
    if (hookedViewport)
        hookedViewport->removeEventFilter(q);
    if (hookedWindow) {
        hookedWindow->removeEventFilter(q);
        QObject::disconnect(hookedWindow, nullptr, q, nullptr);
    }
    hookedViewport = nullptr;
    hookedWindow = nullptr;
}

void ZFollowWindowPrivate::hookTarget()
{
    Z_Q(ZFollowWindow);
    QWidget *viewport = target ? target->viewport() : nullptr;
    QWidget *window = viewport ? viewport->window() : nullptr;
    if (window == q)
        window = nullptr;
    if (viewport == hookedViewport && window == hookedWindow)
        return;
    unhookTarget();
    if (viewport) {
        viewport->installEventFilter(q);
        hookedViewport = viewport;
    }
    if (window) {
        window->installEventFilter(q);
        hookedWindow = window;
        if (auto *zw = qobject_cast<ZWindow *>(window))
            QObject::connect(zw, &ZWindow::posChanged, q, &ZFollowWindow::on_posChanged);
    }
}

void ZFollowWindowPrivate::requestHide(ZFollowWindow::HideFlag flag)
{
    Z_Q(ZFollowWindow);
    if (!q->isVisible())
        return;
    bool aborted = false;
    emit q->aboutToHide(flag, &aborted);
    if (!aborted)
        hideQueued();
}

void ZFollowWindowPrivate::hideQueued()
{
    Z_Q(ZFollowWindow);
    QMetaObject::invokeMethod(q, &QWidget::hide, Qt::QueuedConnection);
}

// --- ZFollowWindow -----------------------------------------------------------

ZFollowWindow::ZFollowWindow(QWidget *parent)
    : ZWindow(*new ZFollowWindowPrivate(this), parent)
{
    init();
}

ZFollowWindow::ZFollowWindow(ZFollowWindowPrivate &dd, QWidget *parent)
    : ZWindow(dd, parent)
{
    init();
}

ZFollowWindow::~ZFollowWindow()
{
    d_func()->unhookTarget();
}

void ZFollowWindow::init()
{
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint);
    viewport()->installEventFilter(this);
}

ZWidget *ZFollowWindow::target() const
{
    return d_func()->target;
}

void ZFollowWindow::setTarget(ZWidget *target)
{
    Z_D(ZFollowWindow);
    if (d->target == target)
        return;
    if (d->target)
        disconnect(d->target, nullptr, this, nullptr);
    d->target = target;
    if (target) {
        connect(target, &QGraphicsObject::visibleChanged, this, &ZFollowWindow::on_visibleChanged);
        connect(target, &ZWidget::scenePosition, this, &ZFollowWindow::on_scenePosition);
    }
    d->hookTarget();
}

ZFollowWindow::Direction ZFollowWindow::direction() const
{
    return d_func()->direction;
}

void ZFollowWindow::setDirection(Direction direction)
{
    Z_D(ZFollowWindow);
    if (direction < TopLeft || direction > Custom || d->direction == direction)
        return;
    d->direction = direction;
    directionChanged(direction);
}

ZFollowWindow::Direction ZFollowWindow::placedDirection() const
{
    return d_func()->placedDirection;
}

ZFollowWindow::HideFlags ZFollowWindow::hideFlags() const
{
    return d_func()->hideFlags;
}

void ZFollowWindow::setHideFlags(HideFlags flags)
{
    d_func()->hideFlags = flags;
}

QPointF ZFollowWindow::posOffset() const
{
    return d_func()->offset;
}

void ZFollowWindow::setPosOffset(const QPointF &offset)
{
    d_func()->offset = offset;
}

void ZFollowWindow::setPosOffset(int x, int y)
{
    setPosOffset(QPointF(x, y));
}

void ZFollowWindow::setWindowSize(const QSize &size)
{
    if (size.isValid())
        resize(size);
}

void ZFollowWindow::setWindowSize(int width, int height)
{
    setWindowSize(QSize(width, height));
}

bool ZFollowWindow::translucent() const
{
    return d_func()->translucent;
}

void ZFollowWindow::setTranslucent(bool on)
{
    Z_D(ZFollowWindow);
    if (d->translucent == on)
        return;
    d->translucent = on;
    zSetViewTranslucent(this, on);
    viewport()->update();
}

void ZFollowWindow::adjustGeometry()
{
    const QSize size = calcWindowPreferSize().toSize();
    if (!size.isEmpty())
        resize(size);
    resetGeometry();
}

void ZFollowWindow::resetGeometry()
{
    Z_D(ZFollowWindow);
    if (!d->target)
        return;
    bool handled = false;
    emit aboutToAdjust(this, &handled);
    if (handled || !d->target)
        return;

    QRectF target;
    if (d->direction == UnderCursor) {
        target = QRectF(QCursor::pos(), QSizeF(0, 0));
    } else {
        if (!d->target->view())
            return;
        target = d->target->rectToScreen();
    }
    QScreen *screen = QGuiApplication::screenAt(target.center().toPoint());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    const QRect area = screen ? screen->availableGeometry() : QRect();
    const QMargins band = placementMargins();
    const QSize visible(std::max(0, width() - band.left() - band.right()),
                        std::max(0, height() - band.top() - band.bottom()));
    Direction used = d->direction;
    const QPoint pos = placement(d->direction, target, visible, d->offset, area, &used);
    d->placedDirection = used;
    d->placedTarget = target;
    move(pos - QPoint(band.left(), band.top()));
}

QPoint ZFollowWindow::placement(Direction direction, const QRectF &target, const QSize &size,
                                const QPointF &offset, const QRect &workArea, Direction *used)
{
    if (direction == Custom) {
        if (used)
            *used = Custom;
        const QPointF p = target.topLeft() + offset;
        return QPoint(qRound(p.x()), qRound(p.y()));
    }
    Rule rule = ruleOf(direction);
    const QSizeF s(size);
    QPointF p = place(rule, target, s, offset);

    if (workArea.isValid()) {
        const QRectF area(workArea);
        if (!fitsOnSide(rule.side, QRectF(p, s), area)) {
            const Rule flipped{opposite(rule.side), rule.align};
            const QPointF mirrored = vertical(rule.side) ? QPointF(offset.x(), -offset.y())
                                                         : QPointF(-offset.x(), offset.y());
            const QPointF q = place(flipped, target, s, mirrored);
            if (fitsOnSide(flipped.side, QRectF(q, s), area)) {
                p = q;
                rule = flipped;
            }
        }
        if (vertical(rule.side))
            p.setX(shiftInto(p.x(), s.width(), area.left(), area.width()));
        else
            p.setY(shiftInto(p.y(), s.height(), area.top(), area.height()));
    }
    if (used)
        *used = directionOf(rule);
    return QPoint(qRound(p.x()), qRound(p.y()));
}

void ZFollowWindow::setVisible(bool visible)
{
    Z_D(ZFollowWindow);
    if (visible && !isVisible()) {
        d->hookTarget();
        emit aboutToShow();
        resetGeometry();
    }
    ZWindow::setVisible(visible);
}

QMargins ZFollowWindow::placementMargins() const
{
    return {};
}

void ZFollowWindow::directionChanged(Direction)
{
}

void ZFollowWindow::on_scenePosition(QPointF)
{
    if (isVisible())
        resetGeometry();
}

void ZFollowWindow::on_posChanged()
{
    if (isVisible())
        resetGeometry();
}

void ZFollowWindow::on_visibleChanged()
{
    Z_D(ZFollowWindow);
    if (d->target && !d->target->isVisible() && (d->hideFlags & HideAsTargetHidden))
        d->hideQueued();
}

bool ZFollowWindow::eventFilter(QObject *watched, QEvent *event)
{
    Z_D(ZFollowWindow);
    const QEvent::Type type = event->type();
    if (watched == viewport()) {
        if (type == QEvent::MouseButtonPress && (d->hideFlags & ClickAtMySelf))
            d->requestHide(ClickAtMySelf);
    } else if (watched == d->hookedViewport) {
        if (type == QEvent::MouseButtonPress) {
            const QPointF pos = static_cast<QMouseEvent *>(event)->position();
            const bool onTarget = d->target && d->target->isVisible() && d->target->rectToView().contains(pos);
            const HideFlag flag = onTarget ? ClickAtTarget : ClickAtOther;
            if (d->hideFlags & flag)
                d->requestHide(flag);
        }
    } else if (watched == d->hookedWindow) {
        HideFlag flag = NotDefine;
        if (type == QEvent::Move)
            flag = TargetWindowMoving;
        else if (type == QEvent::Resize)
            flag = TargetWindowResize;
        else if (type == QEvent::WindowDeactivate)
            flag = TargetWindowInactive;
        if (flag != NotDefine && (d->hideFlags & flag))
            d->requestHide(flag);
    }
    return ZWindow::eventFilter(watched, event);
}

bool ZFollowWindow::event(QEvent *event)
{
    Z_D(ZFollowWindow);
    // Any flag value from 128 up enables this one, not only the bit.
    if (event->type() == QEvent::WindowDeactivate && uint(d->hideFlags.toInt()) >= 128u)
        d->requestHide(MySelfWindowActiveToInactive);
    return ZWindow::event(event);
}

Z_REGISTER_WINDOW(ZFollowWindow);
