#include "qgraphicsflowlayout.h"

#include <QtCore/qlist.h>
#include <QtWidgets/qapplication.h>
#include <QtWidgets/qgraphicswidget.h>
#include <QtWidgets/qwidget.h>

#include <algorithm>

class QGraphicsFlowLayoutPrivate
{
public:
    QList<QGraphicsLayoutItem *> items;
    qreal spacing[2] = {-1, -1}; // horizontal, vertical
    // Style lookups resolved once per layout pass; NaN means "not resolved".
    mutable qreal styleSpacing[2] = {qQNaN(), qQNaN()};
};

namespace {

// Index into the spacing arrays.
int slot(bool vertical) { return vertical ? 1 : 0; }

} // namespace

QGraphicsFlowLayout::QGraphicsFlowLayout(QGraphicsLayoutItem *parent)
    : QGraphicsLayout(parent)
    , d_zptr(new QGraphicsFlowLayoutPrivate)
{
    // Box layouts ask a height-for-width item for its height at the width
    // they give it, so that the lines wrap inside them.
    QSizePolicy policy = sizePolicy();
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QGraphicsFlowLayout::~QGraphicsFlowLayout()
{
    Z_D(QGraphicsFlowLayout);
    // Detach first so that an item's own destructor does not come back here.
    const QList<QGraphicsLayoutItem *> items = std::exchange(d->items, {});
    for (QGraphicsLayoutItem *item : items) {
        item->setParentLayoutItem(nullptr);
        if (item->ownedByLayout())
            delete item;
    }
}

void QGraphicsFlowLayout::addItem(QGraphicsLayoutItem *item)
{
    insertItem(-1, item);
}

void QGraphicsFlowLayout::insertItem(int index, QGraphicsLayoutItem *item)
{
    if (!item || item == this)
        return;
    // Takes the item out of any layout it is in (this one included) and makes
    // it a graphics child of our widget.
    addChildLayoutItem(item);
    Z_D(QGraphicsFlowLayout);
    if (index < 0 || index > d->items.size())
        index = int(d->items.size());
    d->items.insert(index, item);
    invalidate();
}

void QGraphicsFlowLayout::removeItem(QGraphicsLayoutItem *item)
{
    const int index = indexOf(item);
    if (index >= 0)
        removeAt(index);
}

int QGraphicsFlowLayout::indexOf(const QGraphicsLayoutItem *item) const
{
    return int(d_func()->items.indexOf(item));
}

int QGraphicsFlowLayout::count() const
{
    return int(d_func()->items.size());
}

QGraphicsLayoutItem *QGraphicsFlowLayout::itemAt(int index) const
{
    return d_func()->items.value(index);
}

void QGraphicsFlowLayout::removeAt(int index)
{
    Z_D(QGraphicsFlowLayout);
    if (index < 0 || index >= d->items.size())
        return;
    // Also reached from the destructor of the item: touch nothing virtual.
    QGraphicsLayoutItem *item = d->items.takeAt(index);
    item->setParentLayoutItem(nullptr);
    invalidate();
}

void QGraphicsFlowLayout::setSpacing(bool vertical, qreal spacing)
{
    Z_D(QGraphicsFlowLayout);
    if (d->spacing[slot(vertical)] == spacing)
        return;
    d->spacing[slot(vertical)] = spacing;
    invalidate();
}

qreal QGraphicsFlowLayout::spacing(bool vertical) const
{
    const qreal value = d_func()->spacing[slot(vertical)];
    if (value >= 0)
        return value;
    return smartSpacing(vertical ? QStyle::PM_LayoutVerticalSpacing : QStyle::PM_LayoutHorizontalSpacing);
}

void QGraphicsFlowLayout::setContentsMargins(const QMargins &margins)
{
    QGraphicsLayout::setContentsMargins(margins.left(), margins.top(), margins.right(), margins.bottom());
}

qreal QGraphicsFlowLayout::smartSpacing(QStyle::PixelMetric metric) const
{
    Z_D(const QGraphicsFlowLayout);
    qreal &cached = d->styleSpacing[slot(metric == QStyle::PM_LayoutVerticalSpacing)];
    if (!qIsNaN(cached))
        return cached;

    QStyle *style = nullptr;
    QGraphicsLayoutItem *owner = parentLayoutItem();
    while (owner && owner->isLayout())
        owner = owner->parentLayoutItem();
    if (owner && owner->graphicsItem() && owner->graphicsItem()->isWidget())
        style = static_cast<QGraphicsWidget *>(owner->graphicsItem())->style();
    else if (qobject_cast<QApplication *>(QCoreApplication::instance()))
        style = QApplication::style();

    cached = style ? qMax(0, style->pixelMetric(metric)) : 0;
    return cached;
}

qreal QGraphicsFlowLayout::heightForWidth(qreal width) const
{
    return doLayout(QRectF(0, 0, width, 0), false);
}

void QGraphicsFlowLayout::setGeometry(const QRectF &rect)
{
    QGraphicsLayout::setGeometry(rect);
    doLayout(geometry(), true);
}

void QGraphicsFlowLayout::invalidate()
{
    Z_D(QGraphicsFlowLayout);
    d->styleSpacing[0] = d->styleSpacing[1] = qQNaN();
    QGraphicsLayout::invalidate();
}

void QGraphicsFlowLayout::widgetEvent(QEvent *event)
{
    // The default spacing comes from the widget's style.
    if (event->type() == QEvent::StyleChange)
        invalidate();
    QGraphicsLayout::widgetEvent(event);
}

qreal QGraphicsFlowLayout::doLayout(const QRectF &rect, bool apply) const
{
    Z_D(const QGraphicsFlowLayout);
    qreal left, top, right, bottom;
    getContentsMargins(&left, &top, &right, &bottom);
    const QRectF area = rect.adjusted(left, top, -right, -bottom);
    const qreal hSpace = spacing(false);
    const qreal vSpace = spacing(true);

    qreal x = area.x();
    qreal y = area.y();
    qreal lineHeight = 0;
    for (QGraphicsLayoutItem *item : d->items) {
        const QSizeF size = item->geometry().size();
        qreal nextX = qRound(x + size.width() + hSpace);
        // Only a line that already holds something wraps, so an item wider
        // than the area still gets a line of its own.
        if (nextX - hSpace > area.right() && lineHeight > 0) {
            x = area.x();
            y += lineHeight + vSpace;
            nextX = qRound(x + size.width() + hSpace);
            lineHeight = 0;
        }
        if (apply)
            item->setGeometry(QRectF(QPointF(x, y), size));
        x = nextX;
        lineHeight = qMax(lineHeight, size.height());
    }
    return y + lineHeight - rect.y() + bottom;
}

QSizeF QGraphicsFlowLayout::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    Z_D(const QGraphicsFlowLayout);
    qreal left, top, right, bottom;
    getContentsMargins(&left, &top, &right, &bottom);

    switch (which) {
    case Qt::MinimumSize:
    case Qt::PreferredSize: {
        // The width of one line holding everything, with the same rounding
        // as doLayout() so that this width really fits on one line.
        const qreal hSpace = spacing(false);
        qreal x = left;
        qreal lineRight = left;
        qreal widest = 0;
        for (const QGraphicsLayoutItem *item : d->items) {
            const qreal w = item->geometry().width();
            const qreal nextX = qRound(x + w + hSpace);
            lineRight = nextX - hSpace;
            x = nextX;
            widest = qMax(widest, w);
        }
        const qreal lineWidth = lineRight + right;
        qreal width;
        if (which == Qt::MinimumSize)
            width = left + widest + right;
        else
            width = constraint.width() >= 0 ? constraint.width() : lineWidth;
        qreal height;
        if (which == Qt::PreferredSize && constraint.height() >= 0)
            height = constraint.height();
        else
            height = heightForWidth(constraint.width() >= 0 ? constraint.width() : lineWidth);
        return QSizeF(width, height);
    }
    case Qt::MaximumSize:
        return QSizeF(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    default:
        break;
    }
    return QSizeF(-1, -1);
}
