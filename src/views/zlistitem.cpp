#include "zlistitem.h"
#include "zlistitem_p.h"

#include "zimageitem.h"
#include "zlabel.h"
#include "zlistwidget.h"

ZListItem::ZListItem(ZListWidget *view)
    : ZListItem(*new ZListItemPrivate, view)
{
}

ZListItem::ZListItem(ZListItemPrivate &dd, ZListWidget *view)
    : ZWidget(dd, view)
{
    Z_D(ZListItem);
    d->view = view;
    setAcceptHoverEvents(true);
}

ZListItem::~ZListItem() = default;

void ZListItem::itemReset()
{
    Z_D(ZListItem);
    if (!layout()) {
        setLayoutType(HBox);
        setSpacing(3);
    }
    if (!d->label) {
        d->label = new ZLabel;
        addItem(d->label);
    }
    const QString icon = itemIcon();
    if (!icon.isEmpty()) {
        if (!d->icon) {
            d->icon = new ZImageItem;
            insertItem(d->icon, 0);
        }
        d->icon->setImagePath(icon);
        d->icon->setFixWidth(d->icon->pixmapSize().width());
    }
    d->label->setText(itemText());
}

void ZListItem::setSelected(const QVariant &background)
{
    if (background.typeId() == QMetaType::QColor)
        setBackgroundColor(background.value<QColor>());
}

void ZListItem::setUnselected(const QVariant &background)
{
    if (background.typeId() == QMetaType::QColor)
        setBackgroundColor(background.value<QColor>());
}

void ZListItem::setHovered(const QVariant &background)
{
    if (background.typeId() == QMetaType::QColor)
        setBackgroundColor(background.value<QColor>());
}

bool ZListItem::setAction(int action, const QVariant &param, QVariant &result)
{
    Q_UNUSED(action);
    Q_UNUSED(param);
    Q_UNUSED(result);
    return false;
}

void ZListItem::resetIndex(int row)
{
    Z_D(ZListItem);
    d->row = row;
    d->data = d->view ? d->view->itemData(row) : QMap<Qt::ItemDataRole, QVariant>();
    itemReset();
}

int ZListItem::index() const
{
    return d_func()->row;
}

ZListWidget *ZListItem::listView() const
{
    return d_func()->view;
}

QString ZListItem::itemText() const
{
    return d_func()->data.value(Qt::DisplayRole).toString();
}

QString ZListItem::itemIcon() const
{
    return d_func()->data.value(Qt::DecorationRole).toString();
}

QVariant ZListItem::itemData(Qt::ItemDataRole role) const
{
    return d_func()->data.value(role);
}

QMap<Qt::ItemDataRole, QVariant> ZListItem::itemDataMap() const
{
    return d_func()->data;
}

QVariant ZListItem::customVariant() const
{
    const ZListWidget *view = d_func()->view;
    return view ? view->itemCustomVariant() : QVariant();
}

bool ZListItem::itemSelected() const
{
    Z_D(const ZListItem);
    return d->view && d->row >= 0 && d->row == d->view->selectIndex();
}

QObject *ZListItem::textLabel() const
{
    return d_func()->label.data();
}

QObject *ZListItem::iconItem() const
{
    return d_func()->icon.data();
}

bool ZListItem::itemHovered() const
{
    return d_func()->hovered;
}

void ZListItem::hoverEnterEvent(QGraphicsSceneHoverEvent *event)
{
    ZWidget::hoverEnterEvent(event);
    d_func()->hovered = true;
    if (!itemSelected() && listView())
        setHovered(listView()->itemHoveredBackgroundVariant());
}

QVariant ZListItem::itemChange(GraphicsItemChange change, const QVariant &value)
{
    // A pooled item comes back elsewhere: it must not bring its hover along.
    if (change == ItemVisibleHasChanged && !value.toBool())
        d_func()->hovered = false;
    return ZWidget::itemChange(change, value);
}

void ZListItem::hoverLeaveEvent(QGraphicsSceneHoverEvent *event)
{
    ZWidget::hoverLeaveEvent(event);
    d_func()->hovered = false;
    if (!itemSelected() && listView())
        setUnselected(listView()->itemUnselectBackgroundVariant());
}
