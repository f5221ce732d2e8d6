#include "zlistwidget.h"
#include "zlistwidget_p.h"

#include "zabstractlistmodel.h"
#include "zcreator.h"
#include "zlistitem.h"
#include "zlistitemcreator.h"
#include "zscrollbar.h"

#include <QtCore/qcoreevent.h>
#include <QtWidgets/qgraphicssceneevent.h>

#include <algorithm>
#include <climits>
#include <cmath>

Z_REGISTER_WIDGET(ZListWidget);

namespace {

constexpr int MaxItemHeight = 65536;
// Items kept in the creator's pool when a pass frees more than it needs.
constexpr int PooledItems = 3;

int boundHeight(int height)
{
    return qBound(1, height, MaxItemHeight);
}

// Documents give colours as text; the default items only take QColor.
QVariant backgroundFromDocument(const QVariant &value)
{
    if (value.typeId() == QMetaType::QString) {
        const QString text = value.toString();
        if (QColor::isValidColorName(text))
            return QColor::fromString(text);
    }
    return value;
}

} // namespace

ZListWidgetPrivate::ZListWidgetPrivate() = default;

ZListWidgetPrivate::~ZListWidgetPrivate() = default;

void ZListWidgetPrivate::init()
{
    Z_Q(ZListWidget);
    q->setFlag(QGraphicsItem::ItemClipsChildrenToShape, true);
    q->setAcceptedMouseButtons(Qt::LeftButton | Qt::RightButton);
    creator.reset(new ZListItemCreatorT<ZListItem>);
}

void ZListWidgetPrivate::scheduleLayout()
{
    layoutTimer.start(0, q_func());
}

void ZListWidgetPrivate::scheduleAreas()
{
    areaTimer.start(0, q_func());
}

bool ZListWidgetPrivate::selectionInRange() const
{
    return model && selected >= 0 && selected < model->count();
}

qint64 ZListWidgetPrivate::contentHeight() const
{
    if (!model)
        return 0;
    qint64 h = qint64(model->count()) * itemHeight;
    if (selectionInRange())
        h += selectedItemHeight - itemHeight;
    return h;
}

void ZListWidgetPrivate::resetAreas()
{
    Z_Q(ZListWidget);
    const QSizeF size = q->size();
    const qint64 content = contentHeight();
    if (content <= qint64(size.height())) {
        scrollValue = 0;
        visibleRect = QRectF(0, 0, size.width(), size.height());
        if (scrollBar) {
            // An empty range, so that the wheel cannot move a hidden bar.
            scrollBar->setRange(0, 0);
            scrollBar->hide();
        }
    } else {
        if (!scrollBar) {
            scrollBar = new ZScrollBar(Qt::Vertical, q);
            // Above the items, which are made later and would otherwise cover a wide bar.
            scrollBar->setZValue(1);
            QObject::connect(scrollBar.data(), SIGNAL(valueChanged(qreal)), q, SLOT(on_scroll_valueChanged(qreal)));
        }
        const qreal t = scrollBar->frameThickness();
        scrollBarRect = QRectF(size.width() - t, 0, t, size.height());
        // The reserve, not the bar's thickness: the two may differ on purpose.
        visibleRect = QRectF(0, 0, qMax<qreal>(0, size.width() - scrollBarReserve), size.height());
        scrollBar->setFixSize(scrollBarRect.size());
        scrollBar->setGeometry(scrollBarRect);
        const qint64 maxValue = qMin<qint64>(INT_MAX, content - qint64(visibleRect.height()) + hiddenBottom);
        if (scrollValue > maxValue)
            scrollValue = int(maxValue);
        else if (scrollValue < 1)
            scrollValue = 0;
        scrollBar->setRange(0, qreal(maxValue));
        scrollBar->setSingleStep(itemHeight);
        scrollBar->setPageStep(qMax<qreal>(0, visibleRect.height() - itemHeight));
        // Three rows per wheel notch.
        scrollBar->setDeltaFactor(3 * itemHeight);
        scrollBar->setValue(scrollValue);
        scrollBar->show();
    }
    doLayout();
}

int ZListWidgetPrivate::calcLayoutFirstItem(qint64 &y, int from, int to) const
{
    const qint64 top = qint64(visibleRect.top());
    const int extra = selectedItemHeight - itemHeight;
    while (to - from >= 30) {
        const int step = (to - from + 9) / 10;
        bool found = false;
        for (int k = 0; k < 10 && from < to; ++k) {
            const int end = std::min(from + step, to);
            qint64 h = qint64(end - from) * itemHeight;
            // Strictly inside: a selection at the step's first row is not counted here.
            if (selected > from && selected < end)
                h += extra;
            if (y + h > top) {
                to = end;
                found = true;
                break;
            }
            y += h;
            from = end;
        }
        if (!found)
            break;
    }
    for (int row = from; row < to; ++row) {
        const int h = rowHeight(row);
        if (y + h > top)
            return row;
        y += h;
    }
    return -1;
}

void ZListWidgetPrivate::placeItem(ZListItem *item, int row, qint64 &y)
{
    const int h = rowHeight(row);
    const QRectF rect(visibleRect.left(), qreal(y), visibleRect.width(), h);
    if (item->margins() != itemMargins)
        item->setMargins(itemMargins);
    if (item->fixSize() != rect.size())
        item->setFixSize(rect.size());
    if (item->geometry() != rect)
        item->setGeometry(rect);
    if (row == selected)
        item->setSelected(selectedBackground);
    else if (item->itemHovered() || item->isUnderMouse())
        item->setHovered(hoveredBackground);
    else
        item->setUnselected(unselectedBackground);
    if (!item->isVisible())
        item->show();
    y += h;
}

void ZListWidgetPrivate::releaseItems(QHash<int, QPointer<ZListItem>> &items)
{
    int released = 0;
    for (auto it = items.begin(); it != items.end(); ++it) {
        ZListItem *item = it.value();
        if (!item)
            continue;
        if (released < PooledItems && creator) {
            item->hide();
            creator->release(item);
            ++released;
        } else {
            delete item;
        }
    }
    items.clear();
}

void ZListWidgetPrivate::doLayout()
{
    Z_Q(ZListWidget);
    // This pass covers whatever was scheduled meanwhile (the area pass's own
    // scroll-bar updates included).
    layoutTimer.stop();
    const int n = model ? model->count() : 0;
    const bool rebind = rebindVisible;
    rebindVisible = false;
    if (n <= 0) {
        releaseItems(visibleItems);
        firstVisible = 0;
        return;
    }

    qint64 y = -qint64(scrollValue);
    int first = calcLayoutFirstItem(y, 0, n);
    if (first < 0) {
        // Scrolled past the end: show the last row at its place.
        first = n - 1;
        y -= rowHeight(first);
    }
    const qint64 bottom = qint64(visibleRect.bottom());
    int last = first;
    for (qint64 yy = y; last < n; ++last) {
        yy += rowHeight(last);
        if (yy >= bottom || last == n - 1)
            break;
    }

    QHash<int, QPointer<ZListItem>> old;
    old.swap(visibleItems);
    visibleItems.reserve(last - first + 1);
    firstVisible = first;

    // Keep pass: rows that stay visible keep their items and their data.
    qint64 yKeep = y;
    for (int row = first; row <= last && !old.isEmpty(); ++row) {
        const QPointer<ZListItem> item = old.take(row);
        if (item) {
            if (rebind)
                item->resetIndex(row);
            qint64 yy = yKeep;
            placeItem(item, row, yy);
            visibleItems.insert(row, item);
        }
        yKeep += rowHeight(row);
    }

    // Fill pass: the other rows get a leftover or a new item, rebound.
    for (int row = first; row <= last; ++row) {
        if (visibleItems.contains(row)) {
            y += rowHeight(row);
            continue;
        }
        ZListItem *item = nullptr;
        while (!item && !old.isEmpty()) {
            auto it = old.begin();
            item = it.value();
            old.erase(it);
        }
        if (!item && creator)
            item = creator->create(q);
        if (!item) {
            y += rowHeight(row);
            continue;
        }
        item->resetIndex(row);
        placeItem(item, row, y);
        visibleItems.insert(row, item);
    }

    releaseItems(old);
}

ZListItem *ZListWidgetPrivate::itemAt(const QPointF &pos) const
{
    for (auto it = visibleItems.cbegin(); it != visibleItems.cend(); ++it) {
        ZListItem *item = it.value();
        if (item && item->isVisible() && item->geometry().contains(pos))
            return item;
    }
    return nullptr;
}

ZListWidget::ZListWidget(QGraphicsItem *parent)
    : ZListWidget(*new ZListWidgetPrivate, parent)
{
}

ZListWidget::ZListWidget(ZListWidgetPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    d_func()->init();
}

ZListWidget::~ZListWidget()
{
    Z_D(ZListWidget);
    d->layoutTimer.stop();
    d->areaTimer.stop();
    // Delete the items while the view is whole: they read it from their hooks.
    d->visibleItems.clear();
    const QList<QGraphicsItem *> children = childItems();
    for (QGraphicsItem *child : children)
        if (auto *item = dynamic_cast<ZListItem *>(child))
            delete item;
    d->creator.reset();
}

ZAbstractListModel *ZListWidget::setModel(ZAbstractListModel *model)
{
    Z_D(ZListWidget);
    ZAbstractListModel *old = d->model;
    if (old) {
        disconnect(old, SIGNAL(itemsInserted(int,int)), this, SLOT(on_model_itemsInserted(int,int)));
        disconnect(old, SIGNAL(itemsRemoved(int,int)), this, SLOT(on_model_itemsRemoved(int,int)));
        disconnect(old, SIGNAL(itemsMoved(int,int,int)), this, SLOT(on_model_itemsMoved(int,int,int)));
        disconnect(old, SIGNAL(itemsChanged(int,int,QList<Qt::ItemDataRole>)), this,
                   SLOT(on_model_itemsChanged(int,int,QList<Qt::ItemDataRole>)));
        disconnect(old, SIGNAL(modelReset()), this, SLOT(on_model_modelReset()));
    }
    d->model = model;
    if (model) {
        connect(model, SIGNAL(itemsInserted(int,int)), this, SLOT(on_model_itemsInserted(int,int)));
        connect(model, SIGNAL(itemsRemoved(int,int)), this, SLOT(on_model_itemsRemoved(int,int)));
        connect(model, SIGNAL(itemsMoved(int,int,int)), this, SLOT(on_model_itemsMoved(int,int,int)));
        connect(model, SIGNAL(itemsChanged(int,int,QList<Qt::ItemDataRole>)), this,
                SLOT(on_model_itemsChanged(int,int,QList<Qt::ItemDataRole>)));
        connect(model, SIGNAL(modelReset()), this, SLOT(on_model_modelReset()));
    }
    return old;
}

ZAbstractListModel *ZListWidget::model() const
{
    return d_func()->model;
}

void ZListWidget::setItemCreator(ZListItemCreator *creator)
{
    Z_D(ZListWidget);
    if (!creator || creator == d->creator.get())
        return;
    d->creator.reset(creator);
}

ZListItemCreator *ZListWidget::itemCreator() const
{
    return d_func()->creator.get();
}

void ZListWidget::setItemHeight(int height, int selectedHeight)
{
    Z_D(ZListWidget);
    height = boundHeight(height);
    selectedHeight = boundHeight(selectedHeight);
    if (height == d->itemHeight && selectedHeight == d->selectedItemHeight)
        return;
    d->itemHeight = height;
    d->selectedItemHeight = selectedHeight;
    d->scheduleAreas();
}

void ZListWidget::setItemHeight(int height)
{
    setItemHeight(height, d_func()->selectedItemHeight);
}

int ZListWidget::itemHeight() const
{
    return d_func()->itemHeight;
}

void ZListWidget::setSelectedItemHeight(int height)
{
    setItemHeight(d_func()->itemHeight, height);
}

int ZListWidget::selectedItemHeight() const
{
    return d_func()->selectedItemHeight;
}

void ZListWidget::setItemMargins(const QMargins &margins)
{
    Z_D(ZListWidget);
    if (d->itemMargins == margins)
        return;
    d->itemMargins = margins;
    d->scheduleLayout();
}

QMargins ZListWidget::itemMargins() const
{
    return d_func()->itemMargins;
}

void ZListWidget::setItemBackgroundVariant(const QVariant &unselected, const QVariant &selected, const QVariant &hovered)
{
    Z_D(ZListWidget);
    if (d->unselectedBackground == unselected && d->selectedBackground == selected && d->hoveredBackground == hovered)
        return;
    d->unselectedBackground = unselected;
    d->selectedBackground = selected;
    d->hoveredBackground = hovered;
    d->scheduleLayout();
}

QVariant ZListWidget::itemUnselectBackgroundVariant() const
{
    return d_func()->unselectedBackground;
}

QVariant ZListWidget::itemSelectedBackgroundVariant() const
{
    return d_func()->selectedBackground;
}

QVariant ZListWidget::itemHoveredBackgroundVariant() const
{
    return d_func()->hoveredBackground;
}

void ZListWidget::setItemUnselectBackgroundVariant(const QVariant &background)
{
    Z_D(ZListWidget);
    setItemBackgroundVariant(backgroundFromDocument(background), d->selectedBackground, d->hoveredBackground);
}

void ZListWidget::setItemSelectedBackgroundVariant(const QVariant &background)
{
    Z_D(ZListWidget);
    setItemBackgroundVariant(d->unselectedBackground, backgroundFromDocument(background), d->hoveredBackground);
}

void ZListWidget::setItemHoveredBackgroundVariant(const QVariant &background)
{
    Z_D(ZListWidget);
    setItemBackgroundVariant(d->unselectedBackground, d->selectedBackground, backgroundFromDocument(background));
}

void ZListWidget::setItemCustomVariant(const QVariant &value)
{
    d_func()->customVariant = value;
}

QVariant ZListWidget::itemCustomVariant() const
{
    return d_func()->customVariant;
}

void ZListWidget::setContentHiddenArea(int top, int bottom)
{
    Z_D(ZListWidget);
    top = qMax(top, 0);
    bottom = qMax(bottom, 0);
    if (d->hiddenTop == top && d->hiddenBottom == bottom)
        return;
    d->hiddenTop = top;
    d->hiddenBottom = bottom;
    d->scheduleAreas();
}

int ZListWidget::contentHiddenTop() const
{
    return d_func()->hiddenTop;
}

int ZListWidget::contentHiddenBottom() const
{
    return d_func()->hiddenBottom;
}

void ZListWidget::setSelectIndex(int index)
{
    Z_D(ZListWidget);
    if (index < 0 || index >= count() || index == d->selected)
        return;
    d->selected = index;
    d->scheduleLayout();
    Q_EMIT indexChanged(index);
}

int ZListWidget::selectIndex() const
{
    return d_func()->selected;
}

void ZListWidget::clearSelected()
{
    Z_D(ZListWidget);
    d->selected = -1;
    d->scheduleLayout();
}

int ZListWidget::count() const
{
    Z_D(const ZListWidget);
    return d->model ? d->model->count() : 0;
}

int ZListWidget::itemsHeight() const
{
    return int(qMin<qint64>(INT_MAX, d_func()->contentHeight()));
}

QMap<Qt::ItemDataRole, QVariant> ZListWidget::itemData(int index) const
{
    Z_D(const ZListWidget);
    return d->model ? d->model->data(index) : QMap<Qt::ItemDataRole, QVariant>();
}

int ZListWidget::indexOfText(const QString &text) const
{
    const int n = count();
    for (int i = 0; i < n; ++i)
        if (itemData(i).value(Qt::DisplayRole).toString() == text)
            return i;
    return -1;
}

int ZListWidget::findOneIndexByText(const QString &text) const
{
    return indexOfText(text);
}

QList<int> ZListWidget::findAllIndexByText(const QString &text) const
{
    QList<int> rows;
    const int n = count();
    for (int i = 0; i < n; ++i)
        if (itemData(i).value(Qt::DisplayRole).toString() == text)
            rows.append(i);
    return rows;
}

bool ZListWidget::tryToSetAction(int index, int action, const QVariant &param, QVariant &result)
{
    ZListItem *item = visibleItem(index);
    return item ? item->setAction(action, param, result) : false;
}

QObject *ZListWidget::verticalScrollBar() const
{
    return d_func()->scrollBar.data();
}

ZListItem *ZListWidget::visibleItem(int index) const
{
    return d_func()->visibleItems.value(index);
}

int ZListWidget::visibleItemCount() const
{
    int n = 0;
    for (const auto &item : d_func()->visibleItems)
        n += item ? 1 : 0;
    return n;
}

int ZListWidget::firstVisibleIndex() const
{
    return d_func()->firstVisible;
}

QRectF ZListWidget::visibleRect() const
{
    return d_func()->visibleRect;
}

int ZListWidget::scrollValue() const
{
    return d_func()->scrollValue;
}

bool ZListWidget::event(QEvent *event)
{
    Z_D(ZListWidget);
    switch (event->type()) {
    case QEvent::Timer: {
        const int id = static_cast<QTimerEvent *>(event)->timerId();
        if (id == d->layoutTimer.timerId()) {
            d->layoutTimer.stop();
            d->doLayout();
            return true;
        }
        if (id == d->areaTimer.timerId()) {
            d->areaTimer.stop();
            d->resetAreas();
            return true;
        }
        break;
    }
    case QEvent::GraphicsSceneResize:
        d->scheduleAreas();
        break;
    case QEvent::GraphicsSceneMousePress: {
        auto *e = static_cast<QGraphicsSceneMouseEvent *>(event);
        ZListItem *hit = d->itemAt(e->pos());
        if (!hit) {
            Q_EMIT clicked(e->button());
        } else if (hit->index() == d->selected) {
            Q_EMIT itemClicked(hit->index(), e->button());
        } else {
            const int row = hit->index();
            if (ZListItem *old = d->visibleItems.value(d->selected))
                old->setUnselected(d->unselectedBackground);
            d->selected = row;
            hit->setSelected(d->selectedBackground);
            Q_EMIT indexChanged(row);
            Q_EMIT itemClicked(row, e->button());
            if (d->itemHeight != d->selectedItemHeight)
                d->scheduleLayout();
        }
        break;
    }
    case QEvent::GraphicsSceneMouseDoubleClick: {
        auto *e = static_cast<QGraphicsSceneMouseEvent *>(event);
        if (ZListItem *hit = d->itemAt(e->pos()))
            Q_EMIT itemDbClicked(hit->index(), e->button());
        break;
    }
    case QEvent::GraphicsSceneWheel:
        if (d->scrollBar) {
            d->scrollBar->handleMouseWheelEvent(static_cast<QGraphicsSceneWheelEvent *>(event));
            return true;
        }
        break;
    default:
        break;
    }
    return ZWidget::event(event);
}

void ZListWidget::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    // Take the press, so that it neither reaches the items below nor drags the window.
    event->accept();
}

void ZListWidget::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    event->accept();
}

void ZListWidget::on_model_itemsInserted(int index, int n)
{
    Q_UNUSED(index);
    Q_UNUSED(n);
    d_func()->scheduleAreas();
}

void ZListWidget::on_model_itemsRemoved(int index, int n)
{
    Q_UNUSED(index);
    Q_UNUSED(n);
    d_func()->scheduleAreas();
}

void ZListWidget::on_model_itemsMoved(int from, int to, int n)
{
    Q_UNUSED(from);
    Q_UNUSED(to);
    Q_UNUSED(n);
}

void ZListWidget::on_model_itemsChanged(int index, int n, QList<Qt::ItemDataRole> roles)
{
    Q_UNUSED(index);
    Q_UNUSED(n);
    Q_UNUSED(roles);
}

void ZListWidget::on_model_modelReset()
{
    Z_D(ZListWidget);
    d->selected = -1;
    d->firstVisible = 0;
    d->scheduleAreas();
}

void ZListWidget::on_scroll_valueChanged(qreal value)
{
    Z_D(ZListWidget);
    d->scrollValue = std::isfinite(value) ? int(qBound<qreal>(INT_MIN, value, INT_MAX)) : 0;
    d->scheduleLayout();
}
