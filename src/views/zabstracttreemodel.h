#ifndef ZABSTRACTTREEMODEL_H
#define ZABSTRACTTREEMODEL_H

#include "zglobal.h"

#include <QtCore/qlist.h>
#include <QtCore/qmap.h>
#include <QtCore/qnamespace.h>
#include <QtCore/qobject.h>
#include <QtCore/qvariant.h>

/*!
 * \brief The interface between a tree of nodes and the views showing it.
 *
 * Every node is named by a 64-bit id that stays the same while the node
 * lives; 0 is the invisible root. A node's data is the same role map as a
 * list row (Qt::DisplayRole text, Qt::DecorationRole icon, role 33 user value).
 */
class ZKIT_EXPORT ZAbstractTreeModel : public QObject
{
    Q_OBJECT

public:
    /*!
     * A visitor for enumTree(). visit() is called once per node, parents
     * before their children, with the node's depth (1 for children of the
     * root); returning false ends the walk.
     */
    class ZKIT_EXPORT ItemCall
    {
    public:
        virtual ~ItemCall();
        virtual bool visit(qint64 id, int depth) = 0;
    };

    explicit ZAbstractTreeModel(QObject *parent = nullptr);
    ~ZAbstractTreeModel() override;

    /*! The invisible root's id. */
    virtual qint64 nodeRoot() const = 0;
    /*! 0 for the root, 1 for its children and so on; -1 for an unknown id. */
    virtual int nodeDepth(qint64 id) const = 0;
    virtual int childCount(qint64 id) const = 0;
    /*! The number of all nodes in the tree. */
    virtual int count() const = 0;
    virtual QMap<Qt::ItemDataRole, QVariant> data(qint64 id) const = 0;
    /*! The parent's id: 0 for children of the root and for unknown ids. */
    virtual qint64 parent(qint64 id) = 0;
    virtual QList<qint64> childs(qint64 id) = 0;
    /*! Walks the nodes below \a id (not \a id itself), depth first in order. */
    virtual void enumTree(qint64 id, ItemCall *call) = 0;
    /*! The first child, 0 when there is none. */
    virtual qint64 firstChild(qint64 id) = 0;
    virtual bool hasNextSibling(qint64 id) = 0;
    virtual bool hasPreviousSibling(qint64 id) = 0;
    /*! The next sibling, 0 when there is none. */
    virtual qint64 nextSibling(qint64 id) = 0;
    /*! The previous sibling, 0 when there is none. */
    virtual qint64 previousSibling(qint64 id) = 0;
    /*! Replaces a node's data; false here. */
    virtual bool setData(qint64 id, const QMap<Qt::ItemDataRole, QVariant> &data);
    /*! Lets a view ask the model to perform an action; false here, \a result untouched. */
    virtual bool setAction(int action, const QVariant &param, QVariant &result);

    bool hasChildren(qint64 id) { return childCount(id) > 0; }
    bool isEmpty() const { return count() == 0; }

Q_SIGNALS:
    void itemsInserted(QList<qint64> ids);
    void itemsRemoved(QList<qint64> ids);
    void itemsChanged(QList<qint64> ids, QList<Qt::ItemDataRole> roles);
    void modelReset();

private:
    Q_DISABLE_COPY(ZAbstractTreeModel)
};

#endif // ZABSTRACTTREEMODEL_H
