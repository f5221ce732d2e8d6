#include "ztreewidget.h"
#include "ztreewidget_p.h"

#include "zabstracttreemodel.h"
#include "zcreator.h"
#include "zlistitemcreator.h"
#include "zscrollbar.h"
#include "ztreeitem.h"

#include <QtGui/qevent.h>
#include <QtWidgets/qgraphicssceneevent.h>

#include <algorithm>

Z_REGISTER_WIDGET(ZTreeWidget);

namespace {
constexpr int MaxIndentation = 256;
} // namespace

// ---------------------------------------------------------------------------
// ZTreeRows

ZTreeRows::ZTreeRows()
{
    root.expanded = true;
    root.fenwick.assign(1, 0);
}

ZTreeRows::~ZTreeRows()
{
    clear();
}

void ZTreeRows::setModel(ZAbstractTreeModel *m)
{
    clear();
    model = m;
    resetPending = true;
}

void ZTreeRows::clear()
{
    forget();
    for (ZTreeNode *child : root.children)
        destroy(child);
    root.children.clear();
    root.fenwick.assign(1, 0);
    root.size = 1;
    root.loaded = false;
    nodes.clear();
    dirty.clear();
}

void ZTreeRows::destroy(ZTreeNode *node)
{
    forget();
    // Iterative: a deep chain must not exhaust the stack.
    std::vector<ZTreeNode *> stack{node};
    while (!stack.empty()) {
        ZTreeNode *n = stack.back();
        stack.pop_back();
        stack.insert(stack.end(), n->children.begin(), n->children.end());
        auto it = nodes.find(n->id);
        if (it != nodes.end() && it.value() == n)
            nodes.erase(it);
        delete n;
    }
}

void ZTreeRows::buildFenwick(ZTreeNode *node)
{
    forget();
    const int k = int(node->children.size());
    node->fenwick.assign(size_t(k) + 1, 0);
    for (int i = 1; i <= k; ++i) {
        node->fenwick[i] += node->children[i - 1]->size;
        const int j = i + (i & -i);
        if (j <= k)
            node->fenwick[j] += node->fenwick[i];
    }
}

void ZTreeRows::fenwickAdd(ZTreeNode *node, int index, int delta)
{
    const int k = int(node->children.size());
    for (int i = index + 1; i <= k; i += i & -i)
        node->fenwick[i] += delta;
}

int ZTreeRows::fenwickPrefix(const ZTreeNode *node, int count) const
{
    int sum = 0;
    for (int i = count; i > 0; i -= i & -i)
        sum += node->fenwick[i];
    return sum;
}

void ZTreeRows::sizeChanged(ZTreeNode *node, int delta)
{
    forget();
    if (delta == 0)
        return;
    for (ZTreeNode *c = node, *p = node->parent; p; c = p, p = p->parent) {
        fenwickAdd(p, c->indexInParent, delta);
        // A collapsed ancestor hides the change from those above it.
        if (!p->expanded)
            break;
        p->size += delta;
    }
}

void ZTreeRows::recompute(const std::vector<ZTreeNode *> &order)
{
    if (order.empty())
        return;
    const int before = order.front()->size;
    for (auto it = order.rbegin(); it != order.rend(); ++it) {
        ZTreeNode *n = *it;
        buildFenwick(n);
        n->size = n->expanded ? 1 + childrenSize(n) : 1;
    }
    sizeChanged(order.front(), order.front()->size - before);
}

void ZTreeRows::load(ZTreeNode *node)
{
    node->loaded = true;
    node->children.clear();
    if (!model) {
        buildFenwick(node);
        return;
    }
    const QList<qint64> ids = model->childs(node->id);
    node->children.reserve(size_t(ids.size()));
    for (qint64 id : ids) {
        // A model that repeats ids (or names an ancestor as child) must not
        // make the mirror a graph.
        if (id == 0 || nodes.contains(id))
            continue;
        auto *child = new ZTreeNode;
        child->id = id;
        child->parent = node;
        child->indexInParent = int(node->children.size());
        child->depth = node->depth + 1;
        node->children.push_back(child);
        nodes.insert(id, child);
    }
    buildFenwick(node);
}

void ZTreeRows::reload(ZTreeNode *node)
{
    const int before = node->size;
    const QList<qint64> ids = model ? model->childs(node->id) : QList<qint64>();
    std::vector<ZTreeNode *> old;
    old.swap(node->children);
    std::vector<ZTreeNode *> children;
    children.reserve(size_t(ids.size()));

    // The common changes (insertions, removals) keep the order of the rest:
    // walk both lists together and fall back to a lookup only when they part.
    size_t i = 0;
    QHash<qint64, ZTreeNode *> rest;
    bool merging = true;
    auto fresh = [&](qint64 id) {
        auto *child = new ZTreeNode;
        child->id = id;
        child->parent = node;
        child->depth = node->depth + 1;
        nodes.insert(id, child);
        children.push_back(child);
    };
    for (qint64 id : ids) {
        if (merging) {
            while (i < old.size() && old[i]->dead) {
                destroy(old[i]);
                old[i++] = nullptr;
            }
            if (i < old.size() && old[i]->id == id) {
                children.push_back(old[i]);
                old[i++] = nullptr;
                continue;
            }
            if (id != 0 && !nodes.contains(id)) {
                fresh(id);
                continue;
            }
            merging = false;
            for (size_t k = i; k < old.size(); ++k) {
                if (old[k]->dead)
                    destroy(old[k]);
                else
                    rest.insert(old[k]->id, old[k]);
                old[k] = nullptr;
            }
        }
        if (ZTreeNode *kept = rest.take(id))
            children.push_back(kept);
        else if (id != 0 && !nodes.contains(id))
            fresh(id);
    }
    // What the model no longer lists goes, with its subtree.
    for (ZTreeNode *n : old)
        if (n)
            destroy(n);
    for (ZTreeNode *n : std::as_const(rest))
        destroy(n);
    node->children.swap(children);
    for (size_t k = 0; k < node->children.size(); ++k)
        node->children[k]->indexInParent = int(k);
    buildFenwick(node);
    node->size = node->expanded ? 1 + childrenSize(node) : 1;
    sizeChanged(node, node->size - before);
}

ZTreeNode *ZTreeRows::nodeAt(int row) const
{
    if (row < 0 || row >= count())
        return nullptr;
    if (row == cachedRow)
        return cachedNode;
    ZTreeNode *n = nullptr;
    if (cachedNode && cachedRow >= 0 && row == cachedRow + 1) {
        // A pass binds rows in order: the next row is the next node in
        // pre-order, found without touching the counts.
        n = cachedNode;
        if (n->expanded && !n->children.empty()) {
            n = n->children.front();
        } else {
            while (n->parent && size_t(n->indexInParent) + 1 >= n->parent->children.size())
                n = n->parent;
            n = n->parent ? n->parent->children[size_t(n->indexInParent) + 1] : nullptr;
        }
    }
    if (!n)
        n = findRow(row);
    cachedRow = row;
    cachedNode = n;
    return n;
}

ZTreeNode *ZTreeRows::findRow(int row) const
{
    const ZTreeNode *n = &root;
    int rem = row;
    for (;;) {
        const int k = int(n->children.size());
        int step = 1;
        while (step * 2 <= k)
            step *= 2;
        // The number of children whose rows all lie before \a rem.
        int pos = 0;
        for (; step > 0; step /= 2) {
            if (pos + step <= k && n->fenwick[pos + step] <= rem) {
                pos += step;
                rem -= n->fenwick[pos];
            }
        }
        if (pos >= k)
            return nullptr;
        ZTreeNode *c = n->children[pos];
        if (rem == 0)
            return c;
        if (!c->expanded)
            return nullptr;
        rem -= 1;
        n = c;
    }
}

int ZTreeRows::rowOf(const ZTreeNode *node) const
{
    if (!node || node == &root || node->dead)
        return -1;
    int row = 0;
    const ZTreeNode *n = node;
    for (; n->parent; n = n->parent) {
        const ZTreeNode *p = n->parent;
        if (p != &root) {
            if (!p->expanded)
                return -1;
            row += 1;
        }
        row += fenwickPrefix(p, n->indexInParent);
    }
    return n == &root ? row : -1;
}

ZTreeNode *ZTreeRows::ensure(qint64 id)
{
    if (id == 0)
        return &root;
    if (ZTreeNode *n = nodes.value(id))
        return n;
    if (!model)
        return nullptr;
    // Walk up through the model to the nearest mirrored ancestor, then load
    // the chain downwards. A model whose parents loop is cut off by the count.
    QList<qint64> chain{id};
    qint64 p = model->parent(id);
    const int limit = model->count() + 1;
    while (p != 0 && !nodes.contains(p)) {
        if (chain.size() > limit)
            return nullptr;
        chain.append(p);
        p = model->parent(p);
    }
    ZTreeNode *at = find(p);
    if (!at->loaded)
        load(at);
    for (qsizetype i = chain.size() - 1; i >= 0; --i) {
        ZTreeNode *next = nodes.value(chain.at(i));
        if (!next || next->parent != at)
            return nullptr;
        if (i > 0 && !next->loaded)
            load(next);
        at = next;
    }
    return at;
}

bool ZTreeRows::expand(ZTreeNode *node)
{
    if (!node || node == &root || node->expanded)
        return false;
    forget();
    if (!node->loaded)
        load(node);
    if (node->children.empty())
        return false;
    node->expanded = true;
    const int delta = childrenSize(node);
    node->size += delta;
    sizeChanged(node, delta);
    return true;
}

bool ZTreeRows::collapse(ZTreeNode *node)
{
    if (!node || node == &root || !node->expanded)
        return false;
    forget();
    const int delta = 1 - node->size;
    node->size = 1;
    node->expanded = false;
    sizeChanged(node, delta);
    return true;
}

void ZTreeRows::expandAll(ZTreeNode *top)
{
    std::vector<ZTreeNode *> order;
    std::vector<ZTreeNode *> stack{top};
    while (!stack.empty()) {
        ZTreeNode *n = stack.back();
        stack.pop_back();
        if (!n->loaded)
            load(n);
        if (n != &root)
            n->expanded = !n->children.empty();
        if (n->children.empty())
            continue;
        order.push_back(n);
        stack.insert(stack.end(), n->children.rbegin(), n->children.rend());
    }
    recompute(order);
}

void ZTreeRows::collapseAll()
{
    for (ZTreeNode *child : root.children) {
        for (ZTreeNode *grandchild : child->children)
            destroy(grandchild);
        child->children.clear();
        child->fenwick.assign(1, 0);
        child->loaded = false;
        child->expanded = false;
        child->size = 1;
    }
    buildFenwick(&root);
    root.size = 1 + childrenSize(&root);
}

void ZTreeRows::inserted(const QList<qint64> &ids)
{
    if (resetPending || !model)
        return;
    for (qint64 id : ids) {
        const qint64 p = model->parent(id);
        const ZTreeNode *n = find(p);
        if (n && n->loaded)
            dirty.insert(p);
    }
}

void ZTreeRows::removed(const QList<qint64> &ids)
{
    forget();
    if (resetPending)
        return;
    for (qint64 id : ids) {
        ZTreeNode *n = nodes.value(id);
        if (!n)
            continue;
        dirty.insert(n->parent == &root ? 0 : n->parent->id);
        // Out of the lookup now (a model may hand the id out again); the
        // objects go when the parent is reloaded.
        std::vector<ZTreeNode *> stack{n};
        while (!stack.empty()) {
            ZTreeNode *x = stack.back();
            stack.pop_back();
            x->dead = true;
            auto it = nodes.find(x->id);
            if (it != nodes.end() && it.value() == x)
                nodes.erase(it);
            stack.insert(stack.end(), x->children.begin(), x->children.end());
        }
    }
}

void ZTreeRows::sync()
{
    if (resetPending) {
        resetPending = false;
        QSet<qint64> expandedIds;
        for (const ZTreeNode *n : std::as_const(nodes))
            if (n->expanded)
                expandedIds.insert(n->id);
        clear();
        load(&root);
        // Expand again what was expanded and still exists.
        std::vector<ZTreeNode *> order;
        std::vector<ZTreeNode *> stack{&root};
        while (!stack.empty()) {
            ZTreeNode *n = stack.back();
            stack.pop_back();
            order.push_back(n);
            for (ZTreeNode *c : n->children) {
                if (!expandedIds.contains(c->id))
                    continue;
                load(c);
                if (c->children.empty())
                    continue;
                c->expanded = true;
                stack.push_back(c);
            }
        }
        recompute(order);
        return;
    }
    const QSet<qint64> parents = std::exchange(dirty, QSet<qint64>());
    for (qint64 id : parents) {
        ZTreeNode *n = find(id);
        if (n && n->loaded && !n->dead)
            reload(n);
    }
}

// ---------------------------------------------------------------------------
// ZTreeRowModel

int ZTreeRowModel::count() const
{
    tree->sync();
    return tree->rows.count();
}

QMap<Qt::ItemDataRole, QVariant> ZTreeRowModel::data(int index) const
{
    tree->sync();
    const ZTreeNode *n = tree->rows.nodeAt(index);
    return n && tree->treeModel ? tree->treeModel->data(n->id) : QMap<Qt::ItemDataRole, QVariant>();
}

// ---------------------------------------------------------------------------
// ZTreeWidgetPrivate

ZTreeWidgetPrivate::ZTreeWidgetPrivate()
    : rowModel(this)
{
}

ZTreeWidgetPrivate::~ZTreeWidgetPrivate() = default;

void ZTreeWidgetPrivate::initTree()
{
    Z_Q(ZTreeWidget);
    creator.reset(new ZListItemCreatorT<ZTreeItem>);
    q->ZListWidget::setModel(&rowModel);
    q->setFlag(QGraphicsItem::ItemIsFocusable, true);
    q->setFocusPolicy(Qt::StrongFocus);
    QObject::connect(q, &ZListWidget::indexChanged, q, [this, q](int row) {
        const ZTreeNode *n = rows.nodeAt(row);
        Q_EMIT q->currentNodeChanged(n ? n->id : 0);
    });
    QObject::connect(q, &ZListWidget::itemClicked, q, [this, q](int row, Qt::MouseButton button) {
        if (const ZTreeNode *n = rows.nodeAt(row))
            Q_EMIT q->nodeClicked(n->id, button);
    });
    QObject::connect(q, &ZListWidget::itemDbClicked, q, [this, q](int row, Qt::MouseButton button) {
        if (const ZTreeNode *n = rows.nodeAt(row))
            Q_EMIT q->nodeDbClicked(n->id, button);
    });
}

namespace {

// Runs \a change and moves the selection with the current node: to its new
// row, to its nearest shown ancestor when it got hidden, or nowhere when it
// is gone. Returns the node that ended current (0: none) and whether it changed.
template<typename F>
std::pair<qint64, bool> keepingCurrent(ZTreeWidgetPrivate *d, F change)
{
    const ZTreeNode *before = d->rows.nodeAt(d->selected);
    const qint64 id = before && !before->dead ? before->id : 0;
    const bool had = before != nullptr;
    change();
    if (!had) {
        if (d->selected >= d->rows.count())
            d->selected = -1;
        return {0, false};
    }
    ZTreeNode *n = id ? d->rows.find(id) : nullptr;
    int row = -1;
    while (n && n != &d->rows.root && (row = d->rows.rowOf(n)) < 0)
        n = n->parent;
    if (!n || n == &d->rows.root) {
        d->selected = -1;
        return {0, true};
    }
    d->selected = row;
    return {n->id, n->id != id};
}

} // namespace

void ZTreeWidgetPrivate::sync()
{
    if (syncing || !rows.needsSync())
        return;
    syncing = true;
    const auto current = keepingCurrent(this, [this] { rows.sync(); });
    rebindVisible = true;
    syncing = false;
    if (current.second) {
        // Often reached from inside a layout pass: tell listeners afterwards.
        Z_Q(ZTreeWidget);
        const qint64 id = current.first;
        QMetaObject::invokeMethod(q, [q, id] { Q_EMIT q->currentNodeChanged(id); }, Qt::QueuedConnection);
    }
}

void ZTreeWidgetPrivate::rowsChanged()
{
    rebindVisible = true;
    scheduleAreas();
}

int ZTreeWidgetPrivate::pageRows() const
{
    const qreal h = visibleRect.height() > 0 ? visibleRect.height() : q_func()->size().height();
    return qMax(1, int(h / itemHeight));
}

void ZTreeWidgetPrivate::scrollToRow(int row)
{
    if (row < 0 || row >= rows.count())
        return;
    // The range must be current before it can be scrolled in.
    if (areaTimer.isActive()) {
        areaTimer.stop();
        resetAreas();
    }
    if (!scrollBar || !scrollBar->isVisible())
        return;
    qint64 top = qint64(row) * itemHeight;
    if (selectionInRange() && selected < row)
        top += selectedItemHeight - itemHeight;
    const qint64 bottom = top + rowHeight(row);
    const qint64 height = qint64(visibleRect.height());
    qint64 value = scrollValue;
    if (top < value)
        value = top;
    else if (bottom > value + height)
        value = bottom - height;
    if (value != scrollValue)
        scrollBar->setValue(qreal(value));
}

void ZTreeWidgetPrivate::selectRow(int row, bool scroll)
{
    Z_Q(ZTreeWidget);
    if (row < 0 || row >= rows.count())
        return;
    if (row != selected)
        q->setSelectIndex(row);
    if (scroll)
        scrollToRow(row);
}

bool ZTreeWidgetPrivate::toggle(qint64 id)
{
    Z_Q(ZTreeWidget);
    return q->isExpanded(id) ? q->collapse(id) : q->expand(id);
}

int ZTreeWidgetPrivate::branchRowAt(const QPointF &pos) const
{
    for (auto it = visibleItems.cbegin(); it != visibleItems.cend(); ++it) {
        const auto *item = qobject_cast<const ZTreeItem *>(it.value().data());
        if (!item || !item->isVisible() || !item->geometry().contains(pos))
            continue;
        if (!item->hasChildren())
            return -1;
        return item->branchRect().translated(item->pos()).contains(pos) ? it.key() : -1;
    }
    return -1;
}

// ---------------------------------------------------------------------------
// ZTreeWidget

ZTreeWidget::ZTreeWidget(QGraphicsItem *parent)
    : ZTreeWidget(*new ZTreeWidgetPrivate, parent)
{
}

ZTreeWidget::ZTreeWidget(ZTreeWidgetPrivate &dd, QGraphicsItem *parent)
    : ZListWidget(dd, parent)
{
    d_func()->initTree();
}

ZTreeWidget::~ZTreeWidget()
{
    Z_D(ZTreeWidget);
    ZListWidget::setModel(nullptr);
    if (d->treeModel)
        disconnect(d->treeModel, nullptr, this, nullptr);
}

ZAbstractTreeModel *ZTreeWidget::setModel(ZAbstractTreeModel *model)
{
    Z_D(ZTreeWidget);
    ZAbstractTreeModel *old = d->treeModel;
    if (old == model)
        return old;
    if (old) {
        disconnect(old, SIGNAL(itemsInserted(QList<qint64>)), this, SLOT(on_model_itemsInserted(QList<qint64>)));
        disconnect(old, SIGNAL(itemsRemoved(QList<qint64>)), this, SLOT(on_model_itemsRemoved(QList<qint64>)));
        disconnect(old, SIGNAL(itemsChanged(QList<qint64>,QList<Qt::ItemDataRole>)), this,
                   SLOT(on_model_itemsChanged(QList<qint64>,QList<Qt::ItemDataRole>)));
        disconnect(old, SIGNAL(modelReset()), this, SLOT(on_model_modelReset()));
        disconnect(old, SIGNAL(destroyed()), this, SLOT(on_model_modelReset()));
    }
    d->treeModel = model;
    if (model) {
        connect(model, SIGNAL(itemsInserted(QList<qint64>)), this, SLOT(on_model_itemsInserted(QList<qint64>)));
        connect(model, SIGNAL(itemsRemoved(QList<qint64>)), this, SLOT(on_model_itemsRemoved(QList<qint64>)));
        connect(model, SIGNAL(itemsChanged(QList<qint64>,QList<Qt::ItemDataRole>)), this,
                SLOT(on_model_itemsChanged(QList<qint64>,QList<Qt::ItemDataRole>)));
        connect(model, SIGNAL(modelReset()), this, SLOT(on_model_modelReset()));
        // A model deleted under the view leaves it empty, not dangling.
        connect(model, SIGNAL(destroyed()), this, SLOT(on_model_modelReset()));
    }
    // A new model starts collapsed.
    d->rows.setModel(model);
    d->selected = -1;
    d->firstVisible = 0;
    d->rowsChanged();
    return old;
}

ZAbstractTreeModel *ZTreeWidget::treeModel() const
{
    return d_func()->treeModel;
}

int ZTreeWidget::indentation() const
{
    return d_func()->indentation;
}

void ZTreeWidget::setIndentation(int indentation)
{
    Z_D(ZTreeWidget);
    indentation = qBound(0, indentation, MaxIndentation);
    if (d->indentation == indentation)
        return;
    d->indentation = indentation;
    d->rowsChanged();
}

QString ZTreeWidget::branchImage() const
{
    return d_func()->branchImage;
}

void ZTreeWidget::setBranchImage(const QString &path)
{
    Z_D(ZTreeWidget);
    if (d->branchImage == path)
        return;
    d->branchImage = path;
    for (const auto &item : std::as_const(d->visibleItems))
        if (item)
            item->update();
}

bool ZTreeWidget::expandOnDoubleClick() const
{
    return d_func()->expandOnDoubleClick;
}

void ZTreeWidget::setExpandOnDoubleClick(bool on)
{
    d_func()->expandOnDoubleClick = on;
}

bool ZTreeWidget::expand(qint64 id)
{
    Z_D(ZTreeWidget);
    d->sync();
    ZTreeNode *n = id ? d->rows.ensure(id) : nullptr;
    bool done = false;
    keepingCurrent(d, [&] { done = d->rows.expand(n); });
    if (!done)
        return false;
    d->rowsChanged();
    Q_EMIT nodeExpanded(id);
    return true;
}

bool ZTreeWidget::collapse(qint64 id)
{
    Z_D(ZTreeWidget);
    d->sync();
    ZTreeNode *n = id ? d->rows.find(id) : nullptr;
    bool done = false;
    const auto current = keepingCurrent(d, [&] { done = d->rows.collapse(n); });
    if (!done)
        return false;
    d->rowsChanged();
    Q_EMIT nodeCollapsed(id);
    if (current.second)
        Q_EMIT currentNodeChanged(current.first);
    return true;
}

bool ZTreeWidget::setExpanded(qint64 id, bool expanded)
{
    return expanded ? expand(id) : collapse(id);
}

bool ZTreeWidget::isExpanded(qint64 id) const
{
    const_cast<ZTreeWidgetPrivate *>(d_func())->sync();
    const ZTreeNode *n = id ? d_func()->rows.find(id) : nullptr;
    return n && n->expanded;
}

void ZTreeWidget::expandAll(qint64 id)
{
    Z_D(ZTreeWidget);
    d->sync();
    ZTreeNode *n = d->rows.ensure(id);
    if (!n)
        return;
    keepingCurrent(d, [&] { d->rows.expandAll(n); });
    d->rowsChanged();
}

void ZTreeWidget::collapseAll()
{
    Z_D(ZTreeWidget);
    d->sync();
    const auto current = keepingCurrent(d, [&] { d->rows.collapseAll(); });
    d->rowsChanged();
    if (current.second)
        Q_EMIT currentNodeChanged(current.first);
}

int ZTreeWidget::rowCount() const
{
    const_cast<ZTreeWidgetPrivate *>(d_func())->sync();
    return d_func()->rows.count();
}

qint64 ZTreeWidget::nodeAtRow(int row) const
{
    const_cast<ZTreeWidgetPrivate *>(d_func())->sync();
    const ZTreeNode *n = d_func()->rows.nodeAt(row);
    return n ? n->id : 0;
}

int ZTreeWidget::rowOfNode(qint64 id) const
{
    const_cast<ZTreeWidgetPrivate *>(d_func())->sync();
    return id ? d_func()->rows.rowOf(d_func()->rows.find(id)) : -1;
}

int ZTreeWidget::nodeDepth(qint64 id) const
{
    const_cast<ZTreeWidgetPrivate *>(d_func())->sync();
    const ZTreeNode *n = id ? d_func()->rows.find(id) : nullptr;
    return n ? n->depth : 0;
}

qint64 ZTreeWidget::currentNode() const
{
    Z_D(const ZTreeWidget);
    const_cast<ZTreeWidgetPrivate *>(d)->sync();
    const ZTreeNode *n = d->rows.nodeAt(d->selected);
    return n ? n->id : 0;
}

void ZTreeWidget::setCurrentNode(qint64 id)
{
    Z_D(ZTreeWidget);
    d->sync();
    if (id == 0) {
        if (d->selected >= 0) {
            clearSelected();
            Q_EMIT currentNodeChanged(0);
        }
        return;
    }
    scrollToNode(id);
    d->selectRow(d->rows.rowOf(d->rows.find(id)), true);
}

void ZTreeWidget::scrollToNode(qint64 id)
{
    Z_D(ZTreeWidget);
    d->sync();
    ZTreeNode *n = id ? d->rows.ensure(id) : nullptr;
    if (!n)
        return;
    bool changed = false;
    keepingCurrent(d, [&] {
        std::vector<ZTreeNode *> chain;
        for (ZTreeNode *p = n->parent; p && p != &d->rows.root; p = p->parent)
            chain.push_back(p);
        for (auto it = chain.rbegin(); it != chain.rend(); ++it)
            changed = d->rows.expand(*it) || changed;
    });
    if (changed)
        d->rowsChanged();
    d->scrollToRow(d->rows.rowOf(n));
}

ZTreeItem *ZTreeWidget::nodeItem(qint64 id) const
{
    return qobject_cast<ZTreeItem *>(visibleItem(rowOfNode(id)));
}

qint64 ZTreeWidget::branchAt(const QPointF &pos) const
{
    return nodeAtRow(d_func()->branchRowAt(pos));
}

bool ZTreeWidget::event(QEvent *event)
{
    Z_D(ZTreeWidget);
    switch (event->type()) {
    case QEvent::GraphicsSceneMousePress: {
        auto *e = static_cast<QGraphicsSceneMouseEvent *>(event);
        setFocus(Qt::MouseFocusReason);
        const int row = e->button() == Qt::LeftButton ? d->branchRowAt(e->pos()) : -1;
        if (row >= 0) {
            // The arrow toggles without selecting, so the press stops here.
            d->toggle(nodeAtRow(row));
            e->accept();
            return true;
        }
        break;
    }
    case QEvent::GraphicsSceneMouseDoubleClick: {
        auto *e = static_cast<QGraphicsSceneMouseEvent *>(event);
        const int branch = e->button() == Qt::LeftButton ? d->branchRowAt(e->pos()) : -1;
        if (branch >= 0) {
            // The second press of two on the arrow.
            d->toggle(nodeAtRow(branch));
            e->accept();
            return true;
        }
        const bool handled = ZListWidget::event(event);
        if (d->expandOnDoubleClick && e->button() == Qt::LeftButton) {
            if (ZListItem *hit = d->itemAt(e->pos()))
                d->toggle(nodeAtRow(hit->index()));
        }
        return handled;
    }
    default:
        break;
    }
    return ZListWidget::event(event);
}

void ZTreeWidget::keyPressEvent(QKeyEvent *event)
{
    Z_D(ZTreeWidget);
    d->sync();
    const int n = d->rows.count();
    const int cur = d->selected >= 0 && d->selected < n ? d->selected : -1;
    const ZTreeNode *node = d->rows.nodeAt(cur);
    switch (event->key()) {
    case Qt::Key_Down:
        d->selectRow(cur < 0 ? 0 : qMin(cur + 1, n - 1), true);
        break;
    case Qt::Key_Up:
        d->selectRow(cur < 0 ? 0 : qMax(cur - 1, 0), true);
        break;
    case Qt::Key_Home:
        d->selectRow(0, true);
        break;
    case Qt::Key_End:
        d->selectRow(n - 1, true);
        break;
    case Qt::Key_PageDown:
        d->selectRow(cur < 0 ? 0 : qMin(cur + d->pageRows(), n - 1), true);
        break;
    case Qt::Key_PageUp:
        d->selectRow(cur < 0 ? 0 : qMax(cur - d->pageRows(), 0), true);
        break;
    case Qt::Key_Right:
        if (node && node->expanded)
            d->selectRow(cur + 1, true);
        else if (node)
            expand(node->id);
        break;
    case Qt::Key_Left:
        if (node && node->expanded)
            collapse(node->id);
        else if (node && node->parent && node->parent != &d->rows.root)
            d->selectRow(d->rows.rowOf(node->parent), true);
        break;
    default:
        ZListWidget::keyPressEvent(event);
        return;
    }
    event->accept();
}

void ZTreeWidget::on_model_itemsInserted(QList<qint64> ids)
{
    Z_D(ZTreeWidget);
    d->rows.inserted(ids);
    // Even an insertion under a hidden node may give a shown row its arrow.
    d->rowsChanged();
}

void ZTreeWidget::on_model_itemsRemoved(QList<qint64> ids)
{
    Z_D(ZTreeWidget);
    d->rows.removed(ids);
    d->rowsChanged();
}

void ZTreeWidget::on_model_itemsChanged(QList<qint64> ids, QList<Qt::ItemDataRole> roles)
{
    Q_UNUSED(ids);
    Q_UNUSED(roles);
    Z_D(ZTreeWidget);
    d->rebindVisible = true;
    d->scheduleLayout();
}

void ZTreeWidget::on_model_modelReset()
{
    Z_D(ZTreeWidget);
    d->rows.reset();
    d->rowsChanged();
}
