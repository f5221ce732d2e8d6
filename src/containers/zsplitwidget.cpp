#include "zsplitwidget.h"
#include "zsplitwidget_p.h"

#include "zcreator.h"

#include <QtGui/qpainter.h>
#include <QtWidgets/qgraphicssceneevent.h>

#include <cmath>

namespace {

// Moves shorter than this (in scene units) still count as a click.
constexpr qreal ClickSlop = 3;

bool validRatio(qreal r)
{
    return std::isfinite(r) && r >= 0;
}

} // namespace

// ---------------------------------------------------------------------------
// ZSplitHandle

ZSplitHandle::ZSplitHandle(ZSplitWidgetPrivate *split, QGraphicsItem *parent)
    : ZWidget(parent)
    , split(split)
{
    setAcceptedMouseButtons(Qt::LeftButton);
    setDragPolicy(Nothing);
    setZValue(1); // above panes that overhang
}

void ZSplitHandle::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    split->paintHandle(painter, rect(), split->indexOfHandle(this));
}

void ZSplitHandle::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const QPointF local = mapFromScene(event->scenePos());
    grab = split->along(QSizeF(local.x(), local.y()));
    pressScenePos = event->scenePos();
    dragging = false;
    event->accept();
}

void ZSplitHandle::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    if (!dragging && (event->scenePos() - pressScenePos).manhattanLength() < ClickSlop)
        return;
    dragging = true;
    // From the scene position: the handle itself moves under the mouse.
    const QPointF p = parentItem()->mapFromScene(event->scenePos());
    split->handleDragged(this, split->along(QSizeF(p.x(), p.y())) - grab);
}

void ZSplitHandle::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    event->accept();
    if (!dragging && event->button() == Qt::LeftButton)
        split->handleClicked(this);
    dragging = false;
}

// ---------------------------------------------------------------------------
// ZSplitWidgetPrivate

QList<qreal> ZSplitWidgetPrivate::distribute(qreal room, const QList<qreal> &ratios, const QList<qreal> &minimums)
{
    const int n = int(ratios.size());
    QList<qreal> sizes(n, 0);
    if (n == 0 || !(room > 0))
        return sizes;
    qreal minimumSum = 0;
    for (qreal m : minimums)
        minimumSum += m;
    // A pane cannot be made smaller than its minimum: when they do not all
    // fit, the last ones run past the end (and are clipped).
    if (minimumSum >= room)
        return minimums;
    // Share by ratio; whoever falls below the minimum is held there and the
    // rest is shared again. Each round holds at least one more pane.
    QList<bool> held(n, false);
    for (int round = 0; round <= n; ++round) {
        qreal free = room;
        qreal weight = 0;
        int open = 0;
        for (int i = 0; i < n; ++i) {
            if (held.at(i)) {
                free -= minimums.at(i);
            } else {
                weight += ratios.at(i);
                ++open;
            }
        }
        bool again = false;
        for (int i = 0; i < n; ++i) {
            if (held.at(i)) {
                sizes[i] = minimums.at(i);
                continue;
            }
            sizes[i] = weight > 0 ? free * ratios.at(i) / weight : free / open;
            if (sizes.at(i) < minimums.at(i)) {
                held[i] = true;
                again = true;
            }
        }
        if (!again)
            break;
    }
    return sizes;
}

int ZSplitWidgetPrivate::indexOfItem(const QGraphicsItem *item) const
{
    for (int i = 0; i < panes.size(); ++i) {
        if (panes.at(i).item == item)
            return i;
    }
    return -1;
}

int ZSplitWidgetPrivate::indexOfHandle(const ZSplitHandle *handle) const
{
    return int(handles.indexOf(const_cast<ZSplitHandle *>(handle)));
}

qreal ZSplitWidgetPrivate::ratioAt(int index) const
{
    if (panes.at(index).collapsed)
        return 0;
    const qreal r = ratios.value(index, 1);
    return validRatio(r) ? r : 1;
}

qreal ZSplitWidgetPrivate::minimumAt(int index) const
{
    if (panes.at(index).collapsed)
        return 0;
    const qreal m = along(panes.at(index).widget->effectiveSizeHint(Qt::MinimumSize));
    return std::isfinite(m) && m > 0 ? m : 0;
}

QRectF ZSplitWidgetPrivate::area() const
{
    const QMargins m = q_func()->margins();
    const QRectF r = q_func()->rect().adjusted(m.left(), m.top(), -m.right(), -m.bottom());
    return QRectF(r.topLeft(), r.size().expandedTo(QSizeF(0, 0)));
}

qreal ZSplitWidgetPrivate::room() const
{
    const qreal handlesLength = panes.isEmpty() ? 0 : qreal(panes.size() - 1) * handleWidth;
    return qMax<qreal>(0, along(area().size()) - handlesLength);
}

void ZSplitWidgetPrivate::layout()
{
    Z_Q(ZSplitWidget);
    const int n = int(panes.size());
    while (handles.size() < n - 1)
        handles.append(new ZSplitHandle(this, q));
    QList<qreal> shares;
    QList<qreal> minimums;
    for (int i = 0; i < n; ++i) {
        shares.append(ratioAt(i));
        minimums.append(minimumAt(i));
    }
    lengths = distribute(room(), shares, minimums);

    const QRectF r = area();
    const bool horizontal = orientation == Qt::Horizontal;
    const qreal start = horizontal ? r.left() : r.top();
    auto place = [&](ZWidget *w, qreal from, qreal to) {
        w->setGeometry(horizontal ? QRectF(from, r.top(), to - from, r.height())
                                  : QRectF(r.left(), from, r.width(), to - from));
    };
    // Boundaries on whole pixels, so that panes and handles do not blur.
    qreal exact = start;
    qreal edge = start;
    for (int i = 0; i < n; ++i) {
        exact += lengths.at(i);
        const qreal end = std::round(exact);
        ZWidget *pane = panes.at(i).widget;
        pane->setVisible(!panes.at(i).collapsed);
        place(pane, edge, qMax(edge, end));
        edge = qMax(edge, end);
        if (i < n - 1) {
            ZSplitHandle *h = handles.at(i);
            h->setCursor(horizontal ? Qt::SplitHCursor : Qt::SplitVCursor);
            h->setVisible(true);
            place(h, edge, edge + handleWidth);
            edge += handleWidth;
            exact += handleWidth;
        }
    }
    for (int i = qMax(0, n - 1); i < handles.size(); ++i)
        handles.at(i)->setVisible(false);
}

void ZSplitWidgetPrivate::handleDragged(ZSplitHandle *handle, qreal pos)
{
    q_func()->moveHandle(indexOfHandle(handle), pos);
}

void ZSplitWidgetPrivate::handleClicked(ZSplitHandle *handle)
{
    const int index = indexOfHandle(handle);
    if (index >= 0 && index < panes.size() - 1)
        q_func()->handleClicked(index);
}

void ZSplitWidgetPrivate::paintHandle(QPainter *painter, const QRectF &rect, int) const
{
    if (!handleColor.isValid() || rect.isEmpty())
        return;
    const QPointF c = rect.center();
    const QRectF line = orientation == Qt::Horizontal ? QRectF(std::floor(c.x()), rect.top(), 1, rect.height())
                                                      : QRectF(rect.left(), std::floor(c.y()), rect.width(), 1);
    painter->fillRect(line, handleColor);
}

// ---------------------------------------------------------------------------
// ZSplitWidget

ZSplitWidget::ZSplitWidget(QGraphicsItem *parent)
    : ZSplitWidget(*new ZSplitWidgetPrivate, parent)
{
}

ZSplitWidget::ZSplitWidget(ZSplitWidgetPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    setFlag(ItemClipsChildrenToShape, true);
}

ZSplitWidget::~ZSplitWidget() = default;

Qt::Orientation ZSplitWidget::orientation() const
{
    return d_func()->orientation;
}

void ZSplitWidget::setOrientation(Qt::Orientation orientation)
{
    Z_D(ZSplitWidget);
    if ((orientation != Qt::Horizontal && orientation != Qt::Vertical) || d->orientation == orientation)
        return;
    d->orientation = orientation;
    updateGeometry();
    d->layout();
}

int ZSplitWidget::handleWidth() const
{
    return d_func()->handleWidth;
}

void ZSplitWidget::setHandleWidth(int width)
{
    Z_D(ZSplitWidget);
    width = qBound(0, width, 1000);
    if (d->handleWidth == width)
        return;
    d->handleWidth = width;
    updateGeometry();
    d->layout();
}

QColor ZSplitWidget::handleColor() const
{
    return d_func()->handleColor;
}

void ZSplitWidget::setHandleColor(const QColor &color)
{
    Z_D(ZSplitWidget);
    if (d->handleColor == color)
        return;
    d->handleColor = color;
    for (ZSplitHandle *h : std::as_const(d->handles))
        h->update();
}

QString ZSplitWidget::ratiosText() const
{
    QStringList parts;
    for (qreal r : ratios())
        parts.append(QString::number(r));
    return parts.join(QLatin1Char('|'));
}

void ZSplitWidget::setRatiosText(const QString &text)
{
    QList<qreal> values;
    const QStringList parts = text.split(QLatin1Char('|'));
    for (const QString &part : parts) {
        bool ok = false;
        const qreal r = part.trimmed().toDouble(&ok);
        values.append(ok && validRatio(r) ? r : 1);
    }
    if (text.trimmed().isEmpty())
        values.clear();
    setRatios(values);
}

QList<qreal> ZSplitWidget::ratios() const
{
    Z_D(const ZSplitWidget);
    QList<qreal> values;
    for (int i = 0; i < d->panes.size(); ++i) {
        const qreal r = d->ratios.value(i, 1);
        values.append(validRatio(r) ? r : 1);
    }
    return values;
}

void ZSplitWidget::setRatios(const QList<qreal> &ratios)
{
    Z_D(ZSplitWidget);
    d->ratios.clear();
    for (qreal r : ratios)
        d->ratios.append(validRatio(r) ? r : 1);
    d->layout();
}

int ZSplitWidget::count() const
{
    return int(d_func()->panes.size());
}

ZWidget *ZSplitWidget::widget(int index) const
{
    Z_D(const ZSplitWidget);
    return index >= 0 && index < d->panes.size() ? d->panes.at(index).widget : nullptr;
}

int ZSplitWidget::indexOf(const ZWidget *widget) const
{
    return widget ? d_func()->indexOfItem(widget) : -1;
}

ZWidget *ZSplitWidget::handle(int index) const
{
    Z_D(const ZSplitWidget);
    return index >= 0 && index < d->panes.size() - 1 && index < d->handles.size() ? d->handles.at(index) : nullptr;
}

QList<qreal> ZSplitWidget::sizes() const
{
    Z_D(const ZSplitWidget);
    QList<qreal> values;
    for (const auto &pane : d->panes)
        values.append(d->along(pane.widget->size()));
    return values;
}

bool ZSplitWidget::moveHandle(int index, qreal pos)
{
    Z_D(ZSplitWidget);
    if (index < 0 || index >= d->panes.size() - 1 || !std::isfinite(pos))
        return false;
    if (d->lengths.size() != d->panes.size())
        d->layout();
    // A collapsed neighbour is brought back by a click, not by a drag.
    if (d->panes.at(index).collapsed || d->panes.at(index + 1).collapsed)
        return true;
    const QRectF r = d->area();
    qreal paneStart = d->orientation == Qt::Horizontal ? r.left() : r.top();
    for (int i = 0; i < index; ++i)
        paneStart += d->lengths.at(i) + d->handleWidth;
    const qreal pair = d->lengths.at(index) + d->lengths.at(index + 1);
    const qreal low = qMin(d->minimumAt(index), pair);
    const qreal high = qMax(low, pair - d->minimumAt(index + 1));
    const qreal first = qBound(low, pos - paneStart, high);
    d->lengths[index] = first;
    d->lengths[index + 1] = pair - first;
    // The sizes now are the ratios to keep; a folded pane keeps its own.
    for (int i = 0; i < d->panes.size(); ++i) {
        if (d->ratios.size() <= i)
            d->ratios.append(1);
        if (!d->panes.at(i).collapsed)
            d->ratios[i] = d->lengths.at(i);
    }
    d->layout();
    Q_EMIT handleMoved(index, paneStart + first);
    return true;
}

void ZSplitWidget::updatePanes()
{
    d_func()->layout();
}

void ZSplitWidget::addItem(ZWidget *item)
{
    insertItem(item, -1);
}

void ZSplitWidget::insertItem(ZWidget *item, int index)
{
    Z_D(ZSplitWidget);
    if (!item || indexOf(item) >= 0 || dynamic_cast<ZSplitHandle *>(item))
        return;
    addChild(item);
    if (item->parentItem() != this)
        return;
    const int n = int(d->panes.size());
    if (index < 0 || index > n)
        index = n;
    // A pane put between others takes an average share; one appended takes
    // the ratio waiting for it, if any.
    if (index < n || d->ratios.size() <= index) {
        qreal sum = 0;
        for (int i = 0; i < n; ++i)
            sum += d->ratioAt(i);
        const qreal share = n > 0 && sum > 0 ? sum / n : 1;
        if (index <= d->ratios.size())
            d->ratios.insert(index, share);
    }
    d->panes.insert(index, {item, item, false});
    updateGeometry();
    d->layout();
}

void ZSplitWidget::removeItem(ZWidget *item)
{
    if (indexOf(item) < 0)
        return;
    ZWidget::removeItem(item); // itemChange() forgets the pane
}

ZWidget::LayoutType ZSplitWidget::layoutType() const
{
    return None;
}

void ZSplitWidget::setLayoutType(LayoutType)
{
}

void ZSplitWidget::handleClicked(int)
{
}

void ZSplitWidget::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    ZWidget::resizeEvent(event);
    d_func()->layout();
}

QVariant ZSplitWidget::itemChange(GraphicsItemChange change, const QVariant &value)
{
    if (change == ItemChildRemovedChange) {
        Z_D(ZSplitWidget);
        const auto *item = value.value<QGraphicsItem *>();
        const int index = d->indexOfItem(item);
        if (index >= 0) {
            d->panes.removeAt(index);
            if (index < d->ratios.size())
                d->ratios.removeAt(index);
            updateGeometry();
            d->layout();
        }
        for (int i = 0; i < d->handles.size(); ++i) {
            if (d->handles.at(i) == item)
                d->handles.removeAt(i--);
        }
    }
    return ZWidget::itemChange(change, value);
}

QSizeF ZSplitWidget::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    Z_D(const ZSplitWidget);
    const QSizeF hint = ZWidget::sizeHint(which, constraint);
    if (d->followsWidth() || d->followsHeight() || (which != Qt::MinimumSize && which != Qt::PreferredSize))
        return hint;
    qreal length = d->panes.isEmpty() ? 0 : qreal(d->panes.size() - 1) * d->handleWidth;
    qreal depth = 0;
    for (int i = 0; i < d->panes.size(); ++i) {
        const QSizeF s = d->panes.at(i).collapsed ? QSizeF(0, 0) : d->panes.at(i).widget->effectiveSizeHint(which);
        length += d->along(s);
        depth = qMax(depth, d->orientation == Qt::Horizontal ? s.height() : s.width());
    }
    const QMargins m = margins();
    return d->orientation == Qt::Horizontal ? QSizeF(length + m.left() + m.right(), depth + m.top() + m.bottom())
                                            : QSizeF(depth + m.left() + m.right(), length + m.top() + m.bottom());
}

Z_REGISTER_WIDGET(ZSplitWidget);
