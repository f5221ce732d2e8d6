#ifndef ZCOMMONTREEMODEL_H
#define ZCOMMONTREEMODEL_H

#include "zabstracttreemodel.h"

#include <memory>

class ZCommonTreeModelPrivate;

/*!
 * \brief A ready-made tree of role maps with insertion, removal, moves and batches.
 *
 * Ids are (milliseconds since the epoch << 16) plus a process-wide counter
 * that grows by one per id, so they grow with time and never repeat within a
 * process. Every insertion returns the new id, or 0 when the parent (or
 * sibling) is unknown, in which case nothing changes and nothing is emitted.
 *
 * Insertions report at once, or together at batchCommit(). removeNode()
 * reports the node and all its descendants, removeChilds() all descendants,
 * parents before children; removed ids also leave an open batch. Every
 * successful move emits modelReset(); a move that is not possible returns
 * false and emits nothing.
 *
 * The text forms of the insertions build the row map as ZCommonListModel
 * does, icon rule included: only an empty icon is stored.
 */
class ZKIT_EXPORT ZCommonTreeModel : public ZAbstractTreeModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count)

public:
    using RowData = QMap<Qt::ItemDataRole, QVariant>;

    explicit ZCommonTreeModel(QObject *parent = nullptr);
    ~ZCommonTreeModel() override;

    qint64 nodeRoot() const override;
    int nodeDepth(qint64 id) const override;
    int childCount(qint64 id) const override;
    int count() const override;
    RowData data(qint64 id) const override;
    qint64 parent(qint64 id) override;
    QList<qint64> childs(qint64 id) override;
    void enumTree(qint64 id, ItemCall *call) override;
    qint64 firstChild(qint64 id) override;
    bool hasNextSibling(qint64 id) override;
    bool hasPreviousSibling(qint64 id) override;
    qint64 nextSibling(qint64 id) override;
    qint64 previousSibling(qint64 id) override;
    /*! Replaces the node's data and emits itemsChanged() with the roles that differ. */
    bool setData(qint64 id, const RowData &data) override;
    bool contains(qint64 id) const;

    qint64 addChild(qint64 parent, const RowData &data);
    qint64 addChild(qint64 parent, const QString &text);
    qint64 addChild(qint64 parent, const QString &text, const QVariant &data);
    qint64 addChild(qint64 parent, const QString &text, const QString &icon, const QVariant &data);
    qint64 insertBefore(qint64 sibling, const RowData &data);
    qint64 insertBefore(qint64 sibling, const QString &text);
    qint64 insertBefore(qint64 sibling, const QString &text, const QVariant &data);
    qint64 insertBefore(qint64 sibling, const QString &text, const QString &icon, const QVariant &data);
    qint64 insertAfter(qint64 sibling, const RowData &data);
    qint64 insertAfter(qint64 sibling, const QString &text);
    qint64 insertAfter(qint64 sibling, const QString &text, const QVariant &data);
    qint64 insertAfter(qint64 sibling, const QString &text, const QString &icon, const QVariant &data);

    /*! Removes the node with its subtree; false for 0 and unknown ids. */
    bool removeNode(qint64 id);
    /*! Removes everything below \a id (the whole tree for 0); false when there was nothing. */
    bool removeChilds(qint64 id);
    /*! Empties the tree and emits modelReset(). */
    void removeAll();

    void batchInsert();
    QList<qint64> batchCommit();

    /*! To the first place among its siblings. */
    bool moveToFront(qint64 id);
    /*! To the last place among its siblings. */
    bool moveToBack(qint64 id);
    /*! One place later among its siblings. */
    bool moveToNext(qint64 id);
    /*! One place earlier among its siblings. */
    bool moveToLast(qint64 id);
    /*! Up one level: right after its parent, among the parent's siblings. */
    bool moveToParent(qint64 id);
    /*! Down one level: the last child of its previous sibling. */
    bool moveToChild(qint64 id);
    /*! The last child of \a newParent (0: the root); never into its own subtree. */
    bool moveToChild(qint64 id, qint64 newParent);

    /*! A fresh id, as every insertion takes one. */
    static qint64 createId();

private:
    std::unique_ptr<ZCommonTreeModelPrivate> d;
    Q_DISABLE_COPY(ZCommonTreeModel)
};

#endif // ZCOMMONTREEMODEL_H
