#ifndef ZTREEWIDGET_P_H
#define ZTREEWIDGET_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "ztreewidget.h"
#include "zabstractlistmodel.h"
#include "zlistwidget_p.h"

#include <QtCore/qhash.h>
#include <QtCore/qpointer.h>
#include <QtCore/qset.h>

#include <vector>

class ZAbstractTreeModel;

// A mirrored node. Only nodes whose parent is loaded are mirrored; a node's
// children are loaded when it is first expanded.
struct ZTreeNode
{
    qint64 id = 0;
    ZTreeNode *parent = nullptr;
    int indexInParent = 0;
    int depth = 0;
    // Rows of the node itself and of its shown descendants.
    int size = 1;
    bool expanded = false;
    bool loaded = false;
    // Removed from the model; dropped when its parent is reloaded.
    bool dead = false;
    std::vector<ZTreeNode *> children;
    // Fenwick tree over the children's sizes (1-based, so fenwick[0] is unused).
    std::vector<int> fenwick;
};

// The shown rows of a tree: maps rows to nodes and back in O(depth x log
// siblings) through per-node Fenwick trees, and keeps the sizes up to date
// incrementally on expand and collapse. Model changes mark parents dirty;
// sync() reloads each dirty parent once.
class ZTreeRows
{
public:
    ZTreeRows();
    ~ZTreeRows();

    void setModel(ZAbstractTreeModel *model);
    void clear();

    int count() const { return root.size - 1; }
    ZTreeNode *nodeAt(int row) const;
    // -1 when hidden under a collapsed ancestor.
    int rowOf(const ZTreeNode *node) const;
    ZTreeNode *find(qint64 id) const { return id == 0 ? const_cast<ZTreeNode *>(&root) : nodes.value(id); }
    // Mirrors \a id and its ancestors as far as needed; null for unknown ids.
    ZTreeNode *ensure(qint64 id);

    bool expand(ZTreeNode *node);
    bool collapse(ZTreeNode *node);
    void expandAll(ZTreeNode *top);
    void collapseAll();

    // Model notices.
    void inserted(const QList<qint64> &ids);
    void removed(const QList<qint64> &ids);
    void reset() { resetPending = true; forget(); }
    void forget() const
    {
        cachedRow = -1;
        cachedNode = nullptr;
    }
    bool needsSync() const { return resetPending || !dirty.isEmpty(); }
    void sync();

    ZTreeNode root;
    QHash<qint64, ZTreeNode *> nodes;
    QPointer<ZAbstractTreeModel> model;

private:
    ZTreeNode *findRow(int row) const;
    void load(ZTreeNode *node);
    void reload(ZTreeNode *node);
    void destroy(ZTreeNode *node);
    void buildFenwick(ZTreeNode *node);
    void fenwickAdd(ZTreeNode *node, int index, int delta);
    int fenwickPrefix(const ZTreeNode *node, int count) const;
    int childrenSize(const ZTreeNode *node) const { return fenwickPrefix(node, int(node->children.size())); }
    // Passes a change of \a node's size on to its ancestors.
    void sizeChanged(ZTreeNode *node, int delta);
    // Recomputes sizes bottom-up for \a order (parents before children) and
    // passes the change of the first node's size upwards: linear, where
    // expanding one by one would cost a walk to the top per node.
    void recompute(const std::vector<ZTreeNode *> &order);

    QSet<qint64> dirty;
    bool resetPending = false;
    // The last row looked up: a layout pass asks for each row twice (the
    // row's data, then the item's node). Any change of the rows drops it.
    mutable int cachedRow = -1;
    mutable ZTreeNode *cachedNode = nullptr;
};

// The list model the list widget sees: the shown rows of the tree.
class ZTreeRowModel : public ZAbstractListModel
{
public:
    explicit ZTreeRowModel(ZTreeWidgetPrivate *tree) : tree(tree) {}
    int count() const override;
    QMap<Qt::ItemDataRole, QVariant> data(int index) const override;

    ZTreeWidgetPrivate *tree;
};

class ZKIT_EXPORT ZTreeWidgetPrivate : public ZListWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZTreeWidget)
public:
    ZTreeWidgetPrivate();
    ~ZTreeWidgetPrivate() override;

    void initTree();
    // Applies gathered model changes, keeping the current node on its node.
    void sync();
    // After the rows changed: rebind the items in view and lay out anew.
    void rowsChanged();
    void selectRow(int row, bool scroll);
    void scrollToRow(int row);
    bool toggle(qint64 id);
    // The row whose branch arrow contains \a pos, -1 for none.
    int branchRowAt(const QPointF &pos) const;
    int pageRows() const;

    ZTreeRows rows;
    ZTreeRowModel rowModel;
    QPointer<ZAbstractTreeModel> treeModel;
    int indentation = 16;
    QString branchImage = QStringLiteral(":/image/theme/menuarrow.png");
    bool expandOnDoubleClick = true;
    // Guards against re-entry while changes are applied.
    bool syncing = false;
};

#endif // ZTREEWIDGET_P_H
