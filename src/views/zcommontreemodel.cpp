#include "zcommontreemodel.h"
#include "zabstractlistmodel.h"

#include <QtCore/qdatetime.h>
#include <QtCore/qhash.h>
#include <QtCore/qset.h>

#include <algorithm>
#include <vector>

namespace {

struct Node
{
    qint64 id = 0;
    QMap<Qt::ItemDataRole, QVariant> data;
    Node *parent = nullptr;
    QList<Node *> children;
};

quint32 idCounter = 0;

QMap<Qt::ItemDataRole, QVariant> rowFor(const QString &text, const QVariant &value)
{
    QMap<Qt::ItemDataRole, QVariant> row;
    row.insert(Qt::DisplayRole, text);
    if (value.isValid())
        row.insert(ZAbstractListModel::UserValueRole, value);
    return row;
}

QMap<Qt::ItemDataRole, QVariant> rowFor(const QString &text, const QString &icon, const QVariant &value)
{
    QMap<Qt::ItemDataRole, QVariant> row = rowFor(text, value);
    // The list model's icon rule: only an empty icon is stored.
    if (icon.isEmpty())
        row.insert(Qt::DecorationRole, QString(""));
    return row;
}

} // namespace

class ZCommonTreeModelPrivate
{
public:
    ~ZCommonTreeModelPrivate() { qDeleteAll(nodes); }

    Node *node(qint64 id) const { return id ? nodes.value(id) : nullptr; }
    // The child list holding \a n (the root list for top-level nodes).
    QList<Node *> &siblings(Node *n) { return n->parent ? n->parent->children : roots; }
    const QList<Node *> *childList(qint64 id) const
    {
        if (id == 0)
            return &roots;
        const Node *n = node(id);
        return n ? &n->children : nullptr;
    }
    // Ids below the nodes of \a top in pre-order, with their depth below \a top
    // (1 for the nodes of \a top); iterative, so deep chains cannot overflow the stack.
    QList<qint64> descendants(const QList<Node *> &top, QList<int> *depths = nullptr) const
    {
        QList<qint64> ids;
        std::vector<std::pair<const QList<Node *> *, qsizetype>> stack;
        stack.emplace_back(&top, 0);
        while (!stack.empty()) {
            auto &frame = stack.back();
            if (frame.second >= frame.first->size()) {
                stack.pop_back();
                continue;
            }
            const Node *n = frame.first->at(frame.second++);
            ids.append(n->id);
            if (depths)
                depths->append(int(stack.size()));
            if (!n->children.isEmpty())
                stack.emplace_back(&n->children, 0);
        }
        return ids;
    }
    void forget(const QList<qint64> &ids)
    {
        const QSet<qint64> gone(ids.cbegin(), ids.cend());
        for (qint64 id : ids)
            delete nodes.take(id);
        if (batch && !batchIds.isEmpty())
            batchIds.removeIf([&gone](qint64 id) { return gone.contains(id); });
    }
    bool isInSubtree(const Node *n, const Node *top) const
    {
        for (; n; n = n->parent)
            if (n == top)
                return true;
        return false;
    }

    QList<Node *> roots;
    QHash<qint64, Node *> nodes;
    QList<qint64> batchIds;
    bool batch = false;
};

ZCommonTreeModel::ZCommonTreeModel(QObject *parent)
    : ZAbstractTreeModel(parent)
    , d(new ZCommonTreeModelPrivate)
{
}

ZCommonTreeModel::~ZCommonTreeModel() = default;

qint64 ZCommonTreeModel::createId()
{
    const qint64 id = (QDateTime::currentMSecsSinceEpoch() << 16) + qint64(qint32(idCounter));
    ++idCounter;
    return id;
}

qint64 ZCommonTreeModel::nodeRoot() const
{
    return 0;
}

int ZCommonTreeModel::nodeDepth(qint64 id) const
{
    if (id == 0)
        return 0;
    const Node *n = d->node(id);
    if (!n)
        return -1;
    int depth = 0;
    for (; n; n = n->parent)
        ++depth;
    return depth;
}

int ZCommonTreeModel::childCount(qint64 id) const
{
    const QList<Node *> *list = d->childList(id);
    return list ? int(list->size()) : 0;
}

int ZCommonTreeModel::count() const
{
    return int(d->nodes.size());
}

QMap<Qt::ItemDataRole, QVariant> ZCommonTreeModel::data(qint64 id) const
{
    const Node *n = d->node(id);
    return n ? n->data : RowData();
}

bool ZCommonTreeModel::contains(qint64 id) const
{
    return d->node(id) != nullptr;
}

qint64 ZCommonTreeModel::parent(qint64 id)
{
    const Node *n = d->node(id);
    return n && n->parent ? n->parent->id : 0;
}

QList<qint64> ZCommonTreeModel::childs(qint64 id)
{
    QList<qint64> ids;
    if (const QList<Node *> *list = d->childList(id)) {
        ids.reserve(list->size());
        for (const Node *n : *list)
            ids.append(n->id);
    }
    return ids;
}

void ZCommonTreeModel::enumTree(qint64 id, ItemCall *call)
{
    const QList<Node *> *top = d->childList(id);
    if (!call || !top)
        return;
    const int base = nodeDepth(id);
    // Snapshot first: the visitor may change the tree.
    QList<int> depths;
    const QList<qint64> ids = d->descendants(*top, &depths);
    for (qsizetype i = 0; i < ids.size(); ++i) {
        if (!d->node(ids.at(i)))
            continue;
        if (!call->visit(ids.at(i), base + depths.at(i)))
            return;
    }
}

qint64 ZCommonTreeModel::firstChild(qint64 id)
{
    const QList<Node *> *list = d->childList(id);
    return list && !list->isEmpty() ? list->first()->id : 0;
}

bool ZCommonTreeModel::hasNextSibling(qint64 id)
{
    return nextSibling(id) != 0;
}

bool ZCommonTreeModel::hasPreviousSibling(qint64 id)
{
    return previousSibling(id) != 0;
}

qint64 ZCommonTreeModel::nextSibling(qint64 id)
{
    Node *n = d->node(id);
    if (!n)
        return 0;
    const QList<Node *> &list = d->siblings(n);
    const qsizetype i = list.indexOf(n);
    return i + 1 < list.size() ? list.at(i + 1)->id : 0;
}

qint64 ZCommonTreeModel::previousSibling(qint64 id)
{
    Node *n = d->node(id);
    if (!n)
        return 0;
    const QList<Node *> &list = d->siblings(n);
    const qsizetype i = list.indexOf(n);
    return i > 0 ? list.at(i - 1)->id : 0;
}

bool ZCommonTreeModel::setData(qint64 id, const RowData &data)
{
    Node *n = d->node(id);
    if (!n)
        return false;
    QList<Qt::ItemDataRole> roles;
    for (auto it = n->data.cbegin(); it != n->data.cend(); ++it)
        if (!data.contains(it.key()) || data.value(it.key()) != it.value())
            roles.append(it.key());
    for (auto it = data.cbegin(); it != data.cend(); ++it)
        if (!n->data.contains(it.key()))
            roles.append(it.key());
    if (roles.isEmpty())
        return true;
    std::sort(roles.begin(), roles.end());
    n->data = data;
    Q_EMIT itemsChanged(QList<qint64>{id}, roles);
    return true;
}

namespace {
// Where a new node goes: into \a list at \a pos under \a parent.
struct Place
{
    Node *parent = nullptr;
    QList<Node *> *list = nullptr;
    qsizetype pos = 0;
};
} // namespace

// Inserts one node; outside a batch it is reported at once.
static qint64 insertAt(ZCommonTreeModel *q, ZCommonTreeModelPrivate *d, const Place &place,
                       const QMap<Qt::ItemDataRole, QVariant> &data)
{
    auto *n = new Node;
    n->id = ZCommonTreeModel::createId();
    n->data = data;
    n->parent = place.parent;
    place.list->insert(place.pos, n);
    d->nodes.insert(n->id, n);
    const qint64 id = n->id;
    if (d->batch)
        d->batchIds.append(id);
    else
        Q_EMIT q->itemsInserted(QList<qint64>{id});
    return id;
}

// Inserts one node beside \a sibling: \a offset 0 before it, 1 after it; 0 for an unknown sibling.
static qint64 insertBeside(ZCommonTreeModel *q, ZCommonTreeModelPrivate *d, qint64 sibling, int offset,
                           const QMap<Qt::ItemDataRole, QVariant> &data)
{
    Node *s = d->node(sibling);
    if (!s)
        return 0;
    QList<Node *> *list = &d->siblings(s);
    return insertAt(q, d, Place{s->parent, list, list->indexOf(s) + offset}, data);
}

qint64 ZCommonTreeModel::addChild(qint64 parent, const RowData &data)
{
    Place place;
    if (parent != 0) {
        place.parent = d->node(parent);
        if (!place.parent)
            return 0;
        place.list = &place.parent->children;
    } else {
        place.list = &d->roots;
    }
    place.pos = place.list->size();
    return insertAt(this, d.get(), place, data);
}

qint64 ZCommonTreeModel::addChild(qint64 parent, const QString &text)
{
    return addChild(parent, rowFor(text, QVariant()));
}

qint64 ZCommonTreeModel::addChild(qint64 parent, const QString &text, const QVariant &data)
{
    return addChild(parent, rowFor(text, data));
}

qint64 ZCommonTreeModel::addChild(qint64 parent, const QString &text, const QString &icon, const QVariant &data)
{
    return addChild(parent, rowFor(text, icon, data));
}

qint64 ZCommonTreeModel::insertBefore(qint64 sibling, const RowData &data)
{
    return insertBeside(this, d.get(), sibling, 0, data);
}

qint64 ZCommonTreeModel::insertBefore(qint64 sibling, const QString &text)
{
    return insertBefore(sibling, rowFor(text, QVariant()));
}

qint64 ZCommonTreeModel::insertBefore(qint64 sibling, const QString &text, const QVariant &data)
{
    return insertBefore(sibling, rowFor(text, data));
}

qint64 ZCommonTreeModel::insertBefore(qint64 sibling, const QString &text, const QString &icon, const QVariant &data)
{
    return insertBefore(sibling, rowFor(text, icon, data));
}

qint64 ZCommonTreeModel::insertAfter(qint64 sibling, const RowData &data)
{
    return insertBeside(this, d.get(), sibling, 1, data);
}

qint64 ZCommonTreeModel::insertAfter(qint64 sibling, const QString &text)
{
    return insertAfter(sibling, rowFor(text, QVariant()));
}

qint64 ZCommonTreeModel::insertAfter(qint64 sibling, const QString &text, const QVariant &data)
{
    return insertAfter(sibling, rowFor(text, data));
}

qint64 ZCommonTreeModel::insertAfter(qint64 sibling, const QString &text, const QString &icon, const QVariant &data)
{
    return insertAfter(sibling, rowFor(text, icon, data));
}

bool ZCommonTreeModel::removeNode(qint64 id)
{
    Node *n = d->node(id);
    if (!n)
        return false;
    d->siblings(n).removeOne(n);
    QList<qint64> ids{n->id};
    ids += d->descendants(n->children);
    d->forget(ids);
    Q_EMIT itemsRemoved(ids);
    return true;
}

bool ZCommonTreeModel::removeChilds(qint64 id)
{
    QList<Node *> *list = id == 0 ? &d->roots : nullptr;
    if (id != 0) {
        Node *n = d->node(id);
        if (!n)
            return false;
        list = &n->children;
    }
    if (list->isEmpty())
        return false;
    const QList<qint64> ids = d->descendants(*list);
    list->clear();
    d->forget(ids);
    Q_EMIT itemsRemoved(ids);
    return true;
}

void ZCommonTreeModel::removeAll()
{
    qDeleteAll(d->nodes);
    d->nodes.clear();
    d->roots.clear();
    d->batchIds.clear();
    Q_EMIT modelReset();
}

void ZCommonTreeModel::batchInsert()
{
    d->batch = true;
    d->batchIds.clear();
}

QList<qint64> ZCommonTreeModel::batchCommit()
{
    d->batch = false;
    const QList<qint64> ids = d->batchIds;
    d->batchIds.clear();
    if (!ids.isEmpty())
        Q_EMIT itemsInserted(ids);
    return ids;
}

bool ZCommonTreeModel::moveToFront(qint64 id)
{
    Node *n = d->node(id);
    if (!n)
        return false;
    QList<Node *> &list = d->siblings(n);
    const qsizetype i = list.indexOf(n);
    if (i <= 0)
        return false;
    list.move(i, 0);
    Q_EMIT modelReset();
    return true;
}

bool ZCommonTreeModel::moveToBack(qint64 id)
{
    Node *n = d->node(id);
    if (!n)
        return false;
    QList<Node *> &list = d->siblings(n);
    const qsizetype i = list.indexOf(n);
    if (i + 1 >= list.size())
        return false;
    list.move(i, list.size() - 1);
    Q_EMIT modelReset();
    return true;
}

bool ZCommonTreeModel::moveToNext(qint64 id)
{
    Node *n = d->node(id);
    if (!n)
        return false;
    QList<Node *> &list = d->siblings(n);
    const qsizetype i = list.indexOf(n);
    if (i + 1 >= list.size())
        return false;
    list.move(i, i + 1);
    Q_EMIT modelReset();
    return true;
}

bool ZCommonTreeModel::moveToLast(qint64 id)
{
    Node *n = d->node(id);
    if (!n)
        return false;
    QList<Node *> &list = d->siblings(n);
    const qsizetype i = list.indexOf(n);
    if (i <= 0)
        return false;
    list.move(i, i - 1);
    Q_EMIT modelReset();
    return true;
}

bool ZCommonTreeModel::moveToParent(qint64 id)
{
    Node *n = d->node(id);
    if (!n || !n->parent)
        return false;
    Node *oldParent = n->parent;
    oldParent->children.removeOne(n);
    QList<Node *> &upper = d->siblings(oldParent);
    upper.insert(upper.indexOf(oldParent) + 1, n);
    n->parent = oldParent->parent;
    Q_EMIT modelReset();
    return true;
}

bool ZCommonTreeModel::moveToChild(qint64 id)
{
    const qint64 previous = previousSibling(id);
    if (!previous)
        return false;
    return moveToChild(id, previous);
}

bool ZCommonTreeModel::moveToChild(qint64 id, qint64 newParent)
{
    Node *n = d->node(id);
    if (!n)
        return false;
    Node *target = nullptr;
    if (newParent != 0) {
        target = d->node(newParent);
        if (!target || d->isInSubtree(target, n))
            return false;
    }
    QList<Node *> &dest = target ? target->children : d->roots;
    if (n->parent == target && !dest.isEmpty() && dest.last() == n)
        return false;
    d->siblings(n).removeOne(n);
    dest.append(n);
    n->parent = target;
    Q_EMIT modelReset();
    return true;
}
