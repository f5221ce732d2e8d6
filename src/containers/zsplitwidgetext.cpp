#include "zsplitwidgetext.h"
#include "zsplitwidgetext_p.h"

#include "zcreator.h"

#include <QtGui/qpainter.h>
#include <QtGui/qpolygon.h>

void ZSplitWidgetExtPrivate::paintHandle(QPainter *painter, const QRectF &rect, int index) const
{
    ZSplitWidgetPrivate::paintHandle(painter, rect, index);
    if (index < 0 || index + 1 >= panes.size() || rect.isEmpty() || !handleColor.isValid())
        return;
    const int pane = side == ZSplitWidgetExt::Before ? index : index + 1;
    // The arrow points where the boundary will go on a click: towards the
    // folding pane while it is open, away from it while it is folded.
    const bool towardsBefore = (side == ZSplitWidgetExt::Before) != panes.at(pane).collapsed;
    const qreal s = 3;
    const QPointF c = rect.center();
    QPolygonF arrow;
    if (orientation == Qt::Horizontal) {
        const qreal dx = towardsBefore ? -s : s;
        arrow << QPointF(c.x() + dx, c.y()) << QPointF(c.x() - dx, c.y() - 2 * s) << QPointF(c.x() - dx, c.y() + 2 * s);
    } else {
        const qreal dy = towardsBefore ? -s : s;
        arrow << QPointF(c.x(), c.y() + dy) << QPointF(c.x() - 2 * s, c.y() - dy) << QPointF(c.x() + 2 * s, c.y() - dy);
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(handleColor.darker(160));
    painter->drawPolygon(arrow);
    painter->restore();
}

ZSplitWidgetExt::ZSplitWidgetExt(QGraphicsItem *parent)
    : ZSplitWidget(*new ZSplitWidgetExtPrivate, parent)
{
    // Wide enough to hit and to show the arrow.
    setHandleWidth(8);
}

ZSplitWidgetExt::~ZSplitWidgetExt() = default;

ZSplitWidgetExt::CollapseSide ZSplitWidgetExt::collapseSide() const
{
    return d_func()->side;
}

void ZSplitWidgetExt::setCollapseSide(CollapseSide side)
{
    Z_D(ZSplitWidgetExt);
    if ((side != Before && side != After) || d->side == side)
        return;
    d->side = side;
    for (ZWidget *h : std::as_const(d->handles))
        h->update();
}

bool ZSplitWidgetExt::isCollapsed(int pane) const
{
    Z_D(const ZSplitWidgetExt);
    return pane >= 0 && pane < d->panes.size() && d->panes.at(pane).collapsed;
}

bool ZSplitWidgetExt::setCollapsed(int pane, bool collapsed)
{
    Z_D(ZSplitWidgetExt);
    if (pane < 0 || pane >= d->panes.size())
        return false;
    if (d->panes.at(pane).collapsed == collapsed)
        return true;
    // Ratios become the lengths on screen. A folded pane keeps its length as
    // its ratio (ratioAt() answers 0 meanwhile); on its return the others
    // give up that much, so it comes back at the size it had.
    if (d->lengths.size() != d->panes.size())
        d->layout();
    const qreal room = d->room();
    const qreal back = collapsed ? 0 : qMin(d->ratios.value(pane, 0), room);
    const qreal open = room - back;
    for (int i = 0; i < d->panes.size(); ++i) {
        if (d->ratios.size() <= i)
            d->ratios.append(1);
        if (!d->panes.at(i).collapsed)
            d->ratios[i] = room > 0 ? d->lengths.at(i) * open / room : 0;
    }
    if (!collapsed)
        d->ratios[pane] = back;
    d->panes[pane].collapsed = collapsed;
    updateGeometry();
    d->layout();
    for (ZWidget *h : std::as_const(d->handles))
        h->update();
    Q_EMIT collapsedChanged(pane, collapsed);
    return true;
}

void ZSplitWidgetExt::handleClicked(int index)
{
    Z_D(ZSplitWidgetExt);
    const int pane = d->side == Before ? index : index + 1;
    setCollapsed(pane, !isCollapsed(pane));
}

Z_REGISTER_WIDGET(ZSplitWidgetExt);
