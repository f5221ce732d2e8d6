#include "ztreeitem.h"
#include "ztreeitem_p.h"

#include "zabstracttreemodel.h"
#include "ztheme.h"
#include "ztreewidget.h"
#include "ztreewidget_p.h"

#include <QtGui/qpainter.h>
#include <QtWidgets/qgraphicslinearlayout.h>

ZTreeItem::ZTreeItem(ZListWidget *view)
    : ZTreeItem(*new ZTreeItemPrivate, view)
{
}

ZTreeItem::ZTreeItem(ZTreeItemPrivate &dd, ZListWidget *view)
    : ZListItem(dd, view)
{
}

ZTreeItem::~ZTreeItem() = default;

void ZTreeItem::itemReset()
{
    Z_D(ZTreeItem);
    ZTreeWidget *tree = treeView();
    ZTreeWidgetPrivate *td = tree ? tree->d_func() : nullptr;
    if (td)
        td->sync();
    // One walk down the rows gives everything; scrolling binds a row per step.
    const ZTreeNode *n = td ? td->rows.nodeAt(index()) : nullptr;
    d->node = n ? n->id : 0;
    d->depth = n ? n->depth : 0;
    d->indentation = td ? td->indentation : 0;
    d->expanded = n && n->expanded;
    if (n && n->loaded)
        d->hasChildren = !n->children.empty();
    else
        d->hasChildren = n && td->treeModel && td->treeModel->childCount(n->id) > 0;

    ZListItem::itemReset();
    // The indent goes first, before an icon the base may have just put at the front.
    auto *box = dynamic_cast<QGraphicsLinearLayout *>(layout());
    if (!d->indent) {
        d->indent = new ZWidget;
        insertItem(d->indent, 0);
    } else if (box && box->count() > 0 && box->itemAt(0) != d->indent.data()) {
        removeLayoutItem(d->indent);
        insertLayoutItem(d->indent, 0);
    }
    d->indent->setFixWidth(qreal(d->depth) * d->indentation);
    update();
}

qint64 ZTreeItem::node() const
{
    return d_func()->node;
}

int ZTreeItem::depth() const
{
    return d_func()->depth;
}

bool ZTreeItem::isExpanded() const
{
    return d_func()->expanded;
}

bool ZTreeItem::hasChildren() const
{
    return d_func()->hasChildren;
}

ZTreeWidget *ZTreeItem::treeView() const
{
    return qobject_cast<ZTreeWidget *>(listView());
}

QRectF ZTreeItem::branchRect() const
{
    Z_D(const ZTreeItem);
    if (d->depth <= 0)
        return QRectF();
    const qreal left = margins().left() + qreal(d->depth - 1) * d->indentation;
    return QRectF(left, 0, d->indentation, size().height());
}

void ZTreeItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    ZListItem::paint(painter, option, widget);
    Z_D(ZTreeItem);
    const ZTreeWidget *tree = treeView();
    const QRectF box = branchRect();
    if (!d->hasChildren || !tree || box.isEmpty())
        return;
    const QPixmap arrow = ZTheme::getPixmap(tree->branchImage(), false, true);
    if (arrow.isNull())
        return;
    QSizeF size = arrow.deviceIndependentSize();
    // Never larger than the box it stands in.
    size.scale(size.boundedTo(box.size()), Qt::KeepAspectRatio);
    painter->save();
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->translate(box.center());
    if (d->expanded)
        painter->rotate(90);
    painter->drawPixmap(QRectF(-size.width() / 2, -size.height() / 2, size.width(), size.height()), arrow,
                        QRectF(arrow.rect()));
    painter->restore();
}
