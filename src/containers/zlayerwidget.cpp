#include "zlayerwidget.h"
#include "zlayerwidget_p.h"

#include "zcreator.h"

#include <QtWidgets/qgraphicssceneevent.h>

int ZLayerWidgetPrivate::indexOfItem(const QGraphicsItem *item) const
{
    for (int i = 0; i < layers.size(); ++i) {
        if (layers.at(i).item == item)
            return i;
    }
    return -1;
}

ZLayerWidget::ZLayerWidget(QGraphicsItem *parent)
    : ZLayerWidget(*new ZLayerWidgetPrivate, parent)
{
}

ZLayerWidget::ZLayerWidget(ZLayerWidgetPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    dd.hintsFollowChildren = true;
}

ZLayerWidget::~ZLayerWidget() = default;

int ZLayerWidget::count() const
{
    return int(d_func()->layers.size());
}

ZWidget *ZLayerWidget::widget(int index) const
{
    Z_D(const ZLayerWidget);
    return index >= 0 && index < d->layers.size() ? d->layers.at(index).widget : nullptr;
}

int ZLayerWidget::indexOf(const ZWidget *widget) const
{
    return widget ? d_func()->indexOfItem(widget) : -1;
}

QRectF ZLayerWidget::layerRect() const
{
    const QMargins m = margins();
    const QRectF r = rect().adjusted(m.left(), m.top(), -m.right(), -m.bottom());
    return QRectF(r.topLeft(), r.size().expandedTo(QSizeF(0, 0)));
}

void ZLayerWidget::addItem(ZWidget *item)
{
    insertItem(item, -1);
}

void ZLayerWidget::insertItem(ZWidget *item, int index)
{
    Z_D(ZLayerWidget);
    if (!item || indexOf(item) >= 0)
        return;
    addChild(item);
    if (item->parentItem() != this) // refused: null, this widget or an ancestor
        return;
    if (index < 0 || index > d->layers.size())
        index = int(d->layers.size());
    if (index < d->layers.size())
        item->stackBefore(d->layers.at(index).widget);
    d->layers.insert(index, {item, item});
    item->setGeometry(layerRect());
    updateGeometry();
    layerInserted(index);
}

void ZLayerWidget::removeItem(ZWidget *item)
{
    if (indexOf(item) < 0)
        return;
    // Dropping the graphics parent reaches itemChange(), which forgets the layer.
    ZWidget::removeItem(item);
}

ZWidget::LayoutType ZLayerWidget::layoutType() const
{
    return None;
}

void ZLayerWidget::setLayoutType(LayoutType)
{
}

void ZLayerWidget::layerInserted(int)
{
}

void ZLayerWidget::layerRemoved(int)
{
}

void ZLayerWidget::layoutLayers()
{
    const QRectF r = layerRect();
    for (const auto &layer : std::as_const(d_func()->layers))
        layer.widget->setGeometry(r);
}

void ZLayerWidget::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    ZWidget::resizeEvent(event);
    layoutLayers();
}

void ZLayerWidget::changeEvent(QEvent *event)
{
    ZWidget::changeEvent(event);
    // New margins: the layers fill what lies inside them.
    if (event->type() == QEvent::ContentsRectChange)
        layoutLayers();
}

QVariant ZLayerWidget::itemChange(GraphicsItemChange change, const QVariant &value)
{
    if (change == ItemChildRemovedChange) {
        Z_D(ZLayerWidget);
        const int index = d->indexOfItem(value.value<QGraphicsItem *>());
        if (index >= 0) {
            d->leaving = d->layers.takeAt(index).item;
            updateGeometry();
            layerRemoved(index);
            d->leaving = nullptr;
        }
    }
    return ZWidget::itemChange(change, value);
}

QSizeF ZLayerWidget::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    Z_D(const ZLayerWidget);
    QSizeF hint = ZWidget::sizeHint(which, constraint);
    if (d->followsWidth() || d->followsHeight() || (which != Qt::MinimumSize && which != Qt::PreferredSize))
        return hint;
    QSizeF largest(0, 0);
    for (const auto &layer : d->layers)
        largest = largest.expandedTo(layer.widget->effectiveSizeHint(which));
    const QMargins m = margins();
    return largest + QSizeF(m.left() + m.right(), m.top() + m.bottom());
}

Z_REGISTER_WIDGET(ZLayerWidget);
