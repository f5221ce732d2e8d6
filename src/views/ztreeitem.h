#ifndef ZTREEITEM_H
#define ZTREEITEM_H

#include "zlistitem.h"

class ZTreeItemPrivate;
class ZTreeWidget;

/*!
 * \brief One shown node of a ZTreeWidget.
 *
 * The default look of a list item, indented by the node's depth, with the
 * tree's branch arrow in front of nodes that have children: pointing right
 * when collapsed, down when expanded.
 */
class ZKIT_EXPORT ZTreeItem : public ZListItem
{
    Q_OBJECT
    Q_PROPERTY(qint64 node READ node)
    Q_PROPERTY(int depth READ depth)
    Q_PROPERTY(bool expanded READ isExpanded)
    Q_PROPERTY(bool hasChildren READ hasChildren)

public:
    explicit ZTreeItem(ZListWidget *view);
    ~ZTreeItem() override;

    void itemReset() override;

    qint64 node() const;
    int depth() const;
    bool isExpanded() const;
    bool hasChildren() const;
    ZTreeWidget *treeView() const;
    /*! Where the branch arrow is drawn and clicked, in item coordinates. */
    QRectF branchRect() const;

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

protected:
    ZTreeItem(ZTreeItemPrivate &dd, ZListWidget *view);

private:
    Z_DECLARE_PRIVATE(ZTreeItem)
    Q_DISABLE_COPY(ZTreeItem)
};

#endif // ZTREEITEM_H
