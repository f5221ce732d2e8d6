#ifndef ZTREEWIDGET_H
#define ZTREEWIDGET_H

#include "zlistwidget.h"

class ZAbstractTreeModel;
class ZTreeItem;
class ZTreeWidgetPrivate;

/*!
 * \brief A virtualised tree over a ZAbstractTreeModel.
 *
 * The tree shows its nodes as the rows of a ZListWidget: every shown node
 * (a child of the root, or a child of an expanded shown node) is one row, in
 * depth-first order, and only the rows in view have an item widget
 * (ZTreeItem by default). Finding the node of a row, and the row of a node,
 * costs a few steps per level of depth, whatever the size of the tree, so
 * scrolling stays fluid at millions of nodes.
 *
 * A node is expanded by a click on its branch arrow, a double click on its
 * row, the Right key or expand(); collapsing works alike (Left key). Up,
 * Down, Home, End, Page Up and Page Down move the current node, Left on a
 * collapsed node moves to its parent, Right on an expanded one to its first
 * child.
 *
 * The current node follows its node, not its row: it stays on the node when
 * rows above it come or go. It moves to the collapsed node when one of its
 * ancestors collapses, and is cleared (currentNodeChanged(0)) when its node
 * is removed. Expanded states survive a model reset for the nodes that still
 * exist.
 *
 * Model changes are gathered and applied once per turn of the event loop, as
 * the list widget does with its passes.
 */
class ZKIT_EXPORT ZTreeWidget : public ZListWidget
{
    Q_OBJECT
    Q_PROPERTY(int indentation READ indentation WRITE setIndentation)
    Q_PROPERTY(QString branchImage READ branchImage WRITE setBranchImage)
    Q_PROPERTY(bool expandOnDoubleClick READ expandOnDoubleClick WRITE setExpandOnDoubleClick)
    Q_PROPERTY(qint64 currentNode READ currentNode WRITE setCurrentNode NOTIFY currentNodeChanged)
    Q_PROPERTY(int rowCount READ rowCount)

public:
    Q_INVOKABLE explicit ZTreeWidget(QGraphicsItem *parent = nullptr);
    ~ZTreeWidget() override;

    /*!
     * Installs \a model (not owned), returns the previous one; everything
     * starts collapsed. It hides the list's setModel(): the list's model is
     * the tree's row adapter and must stay so.
     */
    ZAbstractTreeModel *setModel(ZAbstractTreeModel *model);
    ZAbstractTreeModel *treeModel() const;

    /*! Width of one level of depth, in scene units (0 .. 256); the branch arrow sits in the last level. */
    int indentation() const;
    void setIndentation(int indentation);
    /*! The arrow image, pointing right; it is turned down for expanded nodes. */
    QString branchImage() const;
    void setBranchImage(const QString &path);
    bool expandOnDoubleClick() const;
    void setExpandOnDoubleClick(bool on);

    /*! Expands \a id (its ancestors stay as they are); false for unknown ids, expanded nodes and nodes without children. */
    bool expand(qint64 id);
    /*! Collapses \a id; false when it is not expanded. */
    bool collapse(qint64 id);
    bool setExpanded(qint64 id, bool expanded);
    bool isExpanded(qint64 id) const;
    /*! Expands every node below \a id (the whole tree for 0), in time linear in their number. */
    void expandAll(qint64 id = 0);
    /*! Collapses every node (expanded states below are forgotten). */
    void collapseAll();

    /*! The number of shown nodes. */
    int rowCount() const;
    /*! The node shown at \a row, 0 when there is none. */
    qint64 nodeAtRow(int row) const;
    /*! The row of \a id, -1 when the node is unknown or hidden under a collapsed ancestor. */
    int rowOfNode(qint64 id) const;
    /*! The depth of \a id as the tree shows it (1 for children of the root); 0 for unknown nodes. */
    int nodeDepth(qint64 id) const;

    qint64 currentNode() const;
    /*! Makes \a id current, expanding its ancestors and scrolling it into view; 0 clears. */
    void setCurrentNode(qint64 id);
    /*! Scrolls so that \a id's row is in view, expanding its ancestors. */
    void scrollToNode(qint64 id);
    /*! The item showing \a id, null when the node is not in view. */
    ZTreeItem *nodeItem(qint64 id) const;
    /*! The node whose branch arrow lies at \a pos (widget coordinates), 0 when none. */
    qint64 branchAt(const QPointF &pos) const;

Q_SIGNALS:
    void currentNodeChanged(qint64 id);
    void nodeClicked(qint64 id, Qt::MouseButton button);
    void nodeDbClicked(qint64 id, Qt::MouseButton button);
    void nodeExpanded(qint64 id);
    void nodeCollapsed(qint64 id);

protected:
    ZTreeWidget(ZTreeWidgetPrivate &dd, QGraphicsItem *parent);

    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private Q_SLOTS:
    void on_model_itemsInserted(QList<qint64> ids);
    void on_model_itemsRemoved(QList<qint64> ids);
    void on_model_itemsChanged(QList<qint64> ids, QList<Qt::ItemDataRole> roles);
    void on_model_modelReset();

private:
    Z_DECLARE_PRIVATE(ZTreeWidget)
    Q_DISABLE_COPY(ZTreeWidget)
    // Items read their node straight from the rows while they bind.
    friend class ZTreeItem;
};

#endif // ZTREEWIDGET_H
