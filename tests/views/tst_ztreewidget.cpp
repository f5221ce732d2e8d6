#include "viewtestutil.h"

#include "zcommontreemodel.h"
#include "zcommontreewidget.h"
#include "zlabel.h"
#include "zscrollbar.h"
#include "ztreeitem.h"
#include "zxmlui.h"

#include <QtGui/QKeyEvent>
#include <QtTest/QtTest>

#include <random>

using namespace viewtest;

namespace {

// Groups under the root, each with its own number of leaves; ids are made
// from positions, so a million nodes cost no storage. Leaves can be added
// to and taken from the end of a group, with the model's signals.
class ShapeModel : public ZAbstractTreeModel
{
public:
    explicit ShapeModel(int groups, int leaves) : m_leaves(size_t(groups), leaves) { recount(); }

    static qint64 groupId(int g) { return qint64(g) + 1; }
    static qint64 leafId(int g, int k) { return ((qint64(g) + 1) << 32) | (qint64(k) + 1); }
    int groupOf(qint64 id) const { return int((id >> 32) ? (id >> 32) - 1 : id - 1); }
    bool isLeaf(qint64 id) const { return (id >> 32) != 0; }
    bool valid(qint64 id) const
    {
        if (id <= 0)
            return false;
        const int g = groupOf(id);
        if (g < 0 || g >= int(m_leaves.size()))
            return false;
        return !isLeaf(id) || int(id & 0xffffffff) - 1 < m_leaves[size_t(g)];
    }
    int leaves(int g) const { return m_leaves[size_t(g)]; }

    qint64 nodeRoot() const override { return 0; }
    int nodeDepth(qint64 id) const override { return id == 0 ? 0 : !valid(id) ? -1 : isLeaf(id) ? 2 : 1; }
    int childCount(qint64 id) const override
    {
        if (id == 0)
            return int(m_leaves.size());
        return valid(id) && !isLeaf(id) ? m_leaves[size_t(groupOf(id))] : 0;
    }
    int count() const override { return m_count; }
    QMap<Qt::ItemDataRole, QVariant> data(qint64 id) const override
    {
        QMap<Qt::ItemDataRole, QVariant> row;
        if (valid(id))
            row.insert(Qt::DisplayRole, isLeaf(id) ? QString("g%1.%2").arg(groupOf(id)).arg((id & 0xffffffff) - 1)
                                                   : QString("g%1").arg(groupOf(id)));
        return row;
    }
    qint64 parent(qint64 id) override { return valid(id) && isLeaf(id) ? groupId(groupOf(id)) : 0; }
    QList<qint64> childs(qint64 id) override
    {
        QList<qint64> ids;
        if (id == 0) {
            for (int g = 0; g < int(m_leaves.size()); ++g)
                ids.append(groupId(g));
        } else if (valid(id) && !isLeaf(id)) {
            const int g = groupOf(id);
            for (int k = 0; k < m_leaves[size_t(g)]; ++k)
                ids.append(leafId(g, k));
        }
        return ids;
    }
    void enumTree(qint64, ItemCall *) override {}
    qint64 firstChild(qint64 id) override { return childCount(id) ? childs(id).first() : 0; }
    bool hasNextSibling(qint64 id) override { return nextSibling(id) != 0; }
    bool hasPreviousSibling(qint64 id) override { return previousSibling(id) != 0; }
    qint64 nextSibling(qint64 id) override
    {
        if (!valid(id))
            return 0;
        const qint64 next = id + 1;
        return valid(next) ? next : 0;
    }
    qint64 previousSibling(qint64 id) override
    {
        if (!valid(id))
            return 0;
        return (id & 0xffffffff) > 1 ? id - 1 : 0;
    }

    void appendLeaves(int g, int n)
    {
        QList<qint64> ids;
        for (int k = 0; k < n; ++k)
            ids.append(leafId(g, m_leaves[size_t(g)] + k));
        m_leaves[size_t(g)] += n;
        recount();
        Q_EMIT itemsInserted(ids);
    }
    void removeLastLeaves(int g, int n)
    {
        QList<qint64> ids;
        for (int k = 0; k < n; ++k)
            ids.append(leafId(g, m_leaves[size_t(g)] - 1 - k));
        m_leaves[size_t(g)] -= n;
        recount();
        Q_EMIT itemsRemoved(ids);
    }

private:
    void recount()
    {
        m_count = int(m_leaves.size());
        for (int n : m_leaves)
            m_count += n;
    }
    std::vector<int> m_leaves;
    int m_count = 0;
};

// A model that lies: every node names the root's first child as its own
// child, and parents loop. The view must neither hang nor loop.
class LoopModel : public ZAbstractTreeModel
{
public:
    qint64 nodeRoot() const override { return 0; }
    int nodeDepth(qint64) const override { return 1; }
    int childCount(qint64) const override { return 2; }
    int count() const override { return 2; }
    QMap<Qt::ItemDataRole, QVariant> data(qint64 id) const override
    {
        return {{Qt::DisplayRole, QString::number(id)}};
    }
    qint64 parent(qint64 id) override { return id == 1 ? 2 : 1; }
    QList<qint64> childs(qint64) override { return {1, 2, 1}; }
    void enumTree(qint64, ItemCall *) override {}
    qint64 firstChild(qint64) override { return 1; }
    bool hasNextSibling(qint64) override { return false; }
    bool hasPreviousSibling(qint64) override { return false; }
    qint64 nextSibling(qint64) override { return 0; }
    qint64 previousSibling(qint64) override { return 0; }
};

// A flat list of ids under the root that can be reordered behind the view's
// back: only an insertion is reported, so the view must notice the new order.
class FlatModel : public ZAbstractTreeModel
{
public:
    QList<qint64> ids;
    qint64 nodeRoot() const override { return 0; }
    int nodeDepth(qint64 id) const override { return id == 0 ? 0 : ids.contains(id) ? 1 : -1; }
    int childCount(qint64 id) const override { return id == 0 ? int(ids.size()) : 0; }
    int count() const override { return int(ids.size()); }
    QMap<Qt::ItemDataRole, QVariant> data(qint64 id) const override
    {
        return {{Qt::DisplayRole, QString("n%1").arg(id)}};
    }
    qint64 parent(qint64) override { return 0; }
    QList<qint64> childs(qint64 id) override { return id == 0 ? ids : QList<qint64>(); }
    void enumTree(qint64, ItemCall *) override {}
    qint64 firstChild(qint64 id) override { return id == 0 && !ids.isEmpty() ? ids.first() : 0; }
    bool hasNextSibling(qint64) override { return false; }
    bool hasPreviousSibling(qint64) override { return false; }
    qint64 nextSibling(qint64) override { return 0; }
    qint64 previousSibling(qint64) override { return 0; }
    void report(const QList<qint64> &inserted) { Q_EMIT itemsInserted(inserted); }
};

// The shown nodes in order, walked through the model and the view's
// expanded states: what the rows must be.
QList<qint64> expectedRows(ZAbstractTreeModel *model, const ZTreeWidget *tree)
{
    QList<qint64> rows;
    std::vector<std::pair<QList<qint64>, int>> stack;
    stack.emplace_back(model->childs(0), 0);
    while (!stack.empty()) {
        auto &top = stack.back();
        if (top.second >= top.first.size()) {
            stack.pop_back();
            continue;
        }
        const qint64 id = top.first.at(top.second++);
        rows.append(id);
        if (tree->isExpanded(id))
            stack.emplace_back(model->childs(id), 0);
    }
    return rows;
}

void checkAllRows(ZAbstractTreeModel *model, const ZTreeWidget *tree)
{
    const QList<qint64> rows = expectedRows(model, tree);
    QCOMPARE(tree->rowCount(), int(rows.size()));
    for (int row = 0; row < rows.size(); ++row) {
        QCOMPARE(tree->nodeAtRow(row), rows.at(row));
        QCOMPARE(tree->rowOfNode(rows.at(row)), row);
    }
    QCOMPARE(tree->nodeAtRow(-1), 0);
    QCOMPARE(tree->nodeAtRow(int(rows.size())), 0);
}

// Every live item shows the node of its row, indented by its depth.
void checkItems(ZTreeWidget *tree, ZAbstractTreeModel *model)
{
    const int first = tree->firstVisibleIndex();
    const int n = tree->visibleItemCount();
    QVERIFY(n > 0 || tree->rowCount() == 0);
    for (int row = first; row < first + n; ++row) {
        auto *item = qobject_cast<ZTreeItem *>(tree->visibleItem(row));
        QVERIFY2(item, qPrintable(QString("row %1 has no item").arg(row)));
        const qint64 id = tree->nodeAtRow(row);
        QCOMPARE(item->node(), id);
        QCOMPARE(item->itemText(), model->data(id).value(Qt::DisplayRole).toString());
        QCOMPARE(item->depth(), model->nodeDepth(id));
        QCOMPARE(item->isExpanded(), tree->isExpanded(id));
        QCOMPARE(item->hasChildren(), model->childCount(id) > 0);
    }
}

int liveItems(ZTreeWidget *tree)
{
    int n = 0;
    for (QGraphicsItem *child : tree->childItems())
        n += dynamic_cast<ZTreeItem *>(child) ? 1 : 0;
    return n;
}

void key(QGraphicsScene &scene, int k)
{
    QKeyEvent press(QEvent::KeyPress, k, Qt::NoModifier);
    QCoreApplication::sendEvent(&scene, &press);
    QKeyEvent release(QEvent::KeyRelease, k, Qt::NoModifier);
    QCoreApplication::sendEvent(&scene, &release);
}

// The centre of a row's branch arrow and of its text, in scene coordinates.
QPointF arrowOf(ZTreeWidget *tree, qint64 id)
{
    ZTreeItem *item = tree->nodeItem(id);
    return item ? item->mapToScene(item->branchRect().center()) : QPointF(-1, -1);
}

QPointF textOf(ZTreeWidget *tree, qint64 id)
{
    ZTreeItem *item = tree->nodeItem(id);
    return item ? item->mapToScene(QPointF(item->size().width() - 20, item->size().height() / 2)) : QPointF(-1, -1);
}

} // namespace

class tst_ZTreeWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void startsCollapsed();
    void expandCollapse_data();
    void expandCollapse();
    void randomOperations_data();
    void randomOperations();
    void millionNodes();
    void itemsFollowRows();
    void indentationAndArrow();
    void clickArrowToggles();
    void doubleClickToggles();
    void keyboard();
    void currentFollowsNode();
    void currentOnCollapseAndRemove();
    void resetKeepsExpanded();
    void changedDataRebinds();
    void scrollToNode();
    void badInput();
    void lyingModel();
    void reorderedBehindTheView();
    void deepChain();
    void modelDeleted();
    void fromXml();

private:
    QGraphicsScene *m_scene = nullptr;
    ZCommonTreeWidget *m_tree = nullptr;
    ZCommonTreeModel *m_model = nullptr;
};

void tst_ZTreeWidget::init()
{
    m_scene = new QGraphicsScene(0, 0, 400, 400);
    m_tree = new ZCommonTreeWidget;
    m_scene->addItem(m_tree);
    m_tree->resize(300, 200);
    m_model = m_tree->commonModel();
}

void tst_ZTreeWidget::cleanup()
{
    delete m_scene;
    m_scene = nullptr;
    m_tree = nullptr;
    m_model = nullptr;
}

void tst_ZTreeWidget::startsCollapsed()
{
    const qint64 a = m_tree->addChild(0, "a");
    m_tree->addChild(a, "a1");
    m_tree->addChild(0, "b");
    settle();
    QCOMPARE(m_tree->rowCount(), 2);
    QCOMPARE(m_tree->count(), 2);
    QVERIFY(!m_tree->isExpanded(a));
    checkAllRows(m_model, m_tree);
    checkItems(m_tree, m_model);
}

// A tree of three levels: 4 top nodes with 3 children with 2 children each;
// expand and collapse in the given order (">id" expands, "<id" collapses,
// ids as "t.c" paths) and compare every row with the model walk.
void tst_ZTreeWidget::expandCollapse_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<int>("rows");
    QTest::newRow("none") << QStringList{} << 4;
    QTest::newRow("one top") << QStringList{">1"} << 7;
    QTest::newRow("top and child") << QStringList{">1", ">1.0"} << 9;
    QTest::newRow("child under collapsed top stays hidden") << QStringList{">1.0"} << 4;
    QTest::newRow("hidden expansion shows later") << QStringList{">1.0", ">1"} << 9;
    QTest::newRow("collapse hides, keeps inner state") << QStringList{">1", ">1.0", "<1"} << 4;
    QTest::newRow("collapse and expand again") << QStringList{">1", ">1.0", "<1", ">1"} << 9;
    QTest::newRow("last top") << QStringList{">3", ">3.2"} << 9;
    QTest::newRow("everything") << QStringList{">0", ">1", ">2", ">3", ">0.0", ">0.1", ">0.2", ">1.0", ">1.1",
                                               ">1.2", ">2.0", ">2.1", ">2.2", ">3.0", ">3.1", ">3.2"}
                                << 40;
    QTest::newRow("inner collapse") << QStringList{">2", ">2.0", ">2.1", "<2.0"} << 9;
}

void tst_ZTreeWidget::expandCollapse()
{
    QFETCH(QStringList, steps);
    QFETCH(int, rows);
    QHash<QString, qint64> ids;
    for (int t = 0; t < 4; ++t) {
        const qint64 top = m_tree->addChild(0, QString("t%1").arg(t));
        ids.insert(QString::number(t), top);
        for (int c = 0; c < 3; ++c) {
            const qint64 child = m_tree->addChild(top, QString("t%1.%2").arg(t).arg(c));
            ids.insert(QString("%1.%2").arg(t).arg(c), child);
            for (int g = 0; g < 2; ++g)
                m_tree->addChild(child, QString("t%1.%2.%3").arg(t).arg(c).arg(g));
        }
    }
    QSignalSpy expanded(m_tree, &ZTreeWidget::nodeExpanded);
    QSignalSpy collapsed(m_tree, &ZTreeWidget::nodeCollapsed);
    int expands = 0, collapses = 0;
    for (const QString &step : steps) {
        const qint64 id = ids.value(step.mid(1));
        if (step.startsWith('>')) {
            QVERIFY(m_tree->expand(id));
            QVERIFY(!m_tree->expand(id));
            ++expands;
        } else {
            QVERIFY(m_tree->collapse(id));
            QVERIFY(!m_tree->collapse(id));
            ++collapses;
        }
        checkAllRows(m_model, m_tree);
    }
    QCOMPARE(m_tree->rowCount(), rows);
    QCOMPARE(expanded.count(), expands);
    QCOMPARE(collapsed.count(), collapses);
    settle();
    checkItems(m_tree, m_model);
}

// Random expands, collapses, insertions (batched and single, at the front,
// middle and end) and removals; after each turn of the event loop the rows
// must be exactly the model walk.
void tst_ZTreeWidget::randomOperations_data()
{
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed : {1u, 7u, 42u, 1234u})
        QTest::newRow(qPrintable(QString("seed %1").arg(seed))) << seed;
}

void tst_ZTreeWidget::randomOperations()
{
    QFETCH(unsigned, seed);
    std::mt19937 rng(seed);
    QList<qint64> all;
    for (int i = 0; i < 20; ++i)
        all.append(m_tree->addChild(0, QString("n%1").arg(i)));
    int label = 20;
    auto pick = [&]() { return all.at(int(rng() % all.size())); };
    for (int op = 0; op < 250; ++op) {
        all.erase(std::remove_if(all.begin(), all.end(), [&](qint64 id) { return !m_model->contains(id); }),
                  all.end());
        if (all.isEmpty())
            all.append(m_tree->addChild(0, QString("n%1").arg(label++)));
        switch (rng() % 8) {
        case 0:
        case 1:
            m_tree->expand(pick());
            break;
        case 2:
            m_tree->collapse(pick());
            break;
        case 3: {
            const qint64 parent = pick();
            m_tree->batchInsert();
            const int n = 1 + int(rng() % 5);
            for (int i = 0; i < n; ++i)
                all.append(m_tree->addChild(parent, QString("n%1").arg(label++)));
            m_tree->batchCommit();
            break;
        }
        case 4:
            all.append(m_tree->insertBefore(pick(), QString("n%1").arg(label++)));
            break;
        case 5:
            all.append(m_tree->insertAfter(pick(), QString("n%1").arg(label++)));
            break;
        case 6:
            m_tree->removeNode(pick());
            break;
        case 7:
            if (rng() % 4 == 0)
                m_tree->removeChilds(pick());
            else
                all.append(m_tree->addChild(pick(), QString("n%1").arg(label++)));
            break;
        }
        if (op % 3 == 0)
            settle();
        checkAllRows(m_model, m_tree);
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(QString("after operation %1").arg(op)));
    }
    settle();
    checkItems(m_tree, m_model);
}

// 1,000 groups of 999 leaves: a million nodes, all expanded, then changed.
void tst_ZTreeWidget::millionNodes()
{
    ShapeModel model(1000, 999);
    ZTreeWidget tree;
    m_scene->addItem(&tree);
    tree.resize(300, 200);
    tree.setModel(&model);
    QCOMPARE(tree.rowCount(), 1000);
    tree.expandAll();
    QCOMPARE(tree.rowCount(), 1000000);
    settle();
    auto *bar = qobject_cast<ZScrollBar *>(tree.verticalScrollBar());
    QVERIFY(bar);
    QCOMPARE(bar->maximum(), qreal(1000000 * 20 - 200 + tree.contentHiddenBottom()));

    // A leaf's row is its group's offset plus its place in the group.
    auto rowOf = [](int g, int k) { return g * 1000 + 1 + k; };
    for (int g : {0, 1, 499, 998, 999}) {
        for (int k : {0, 500, 998}) {
            QCOMPARE(tree.rowOfNode(ShapeModel::leafId(g, k)), rowOf(g, k));
            QCOMPARE(tree.nodeAtRow(rowOf(g, k)), ShapeModel::leafId(g, k));
        }
        QCOMPARE(tree.rowOfNode(ShapeModel::groupId(g)), g * 1000);
    }

    for (int value : {0, 7, 5000000, 19999800, 12345678}) {
        bar->setValue(value);
        settle();
        const int first = int(bar->value()) / 20;
        QCOMPARE(tree.firstVisibleIndex(), first);
        QVERIFY(liveItems(&tree) <= 200 / 20 + 2);
        checkItems(&tree, &model);
    }

    // Collapsing group 10 takes its 999 rows out of everything below.
    QVERIFY(tree.collapse(ShapeModel::groupId(10)));
    QCOMPARE(tree.rowCount(), 1000000 - 999);
    QCOMPARE(tree.rowOfNode(ShapeModel::leafId(10, 3)), -1);
    QCOMPARE(tree.rowOfNode(ShapeModel::groupId(11)), 10 * 1000 + 1);
    QCOMPARE(tree.rowOfNode(ShapeModel::leafId(999, 998)), 1000000 - 999 - 1);
    settle();
    checkItems(&tree, &model);

    // Leaves come and go at this scale; rows below a change move with it.
    model.appendLeaves(500, 10);
    model.removeLastLeaves(20, 5);
    model.appendLeaves(10, 4); // hidden: only the count of group 10 changes
    QCOMPARE(tree.rowCount(), 1000000 - 999 + 10 - 5);
    auto expectedRow = [&](int g, int k) {
        int row = 0;
        for (int i = 0; i < g; ++i)
            row += 1 + (i == 10 ? 0 : model.leaves(i));
        return row + 1 + k;
    };
    for (int g : {0, 11, 20, 21, 500, 501, 999})
        for (int k : {0, 993})
            QCOMPARE(tree.rowOfNode(ShapeModel::leafId(g, k)), expectedRow(g, k));
    QCOMPARE(tree.nodeAtRow(expectedRow(500, 1008)), ShapeModel::leafId(500, 1008));
    QCOMPARE(tree.rowOfNode(ShapeModel::leafId(20, 994)), -1);
    bar->setValue(qreal(expectedRow(500, 1000)) * 20);
    settle();
    checkItems(&tree, &model);
    QVERIFY(tree.expand(ShapeModel::groupId(10)));
    QCOMPARE(tree.rowOfNode(ShapeModel::leafId(10, 1002)), expectedRow(10, 1002));
    QCOMPARE(tree.rowCount(), 1000000 + 10 - 5 + 4);
    tree.setModel(nullptr);
}

// Rows that stay in view are rebound when expanding changes their node.
void tst_ZTreeWidget::itemsFollowRows()
{
    QList<qint64> tops;
    for (int i = 0; i < 30; ++i) {
        tops.append(m_tree->addChild(0, QString("top %1").arg(i)));
        for (int c = 0; c < 3; ++c)
            m_tree->addChild(tops.last(), QString("child %1.%2").arg(i).arg(c));
    }
    settle();
    checkItems(m_tree, m_model);
    QVERIFY(m_tree->expand(tops.at(1)));
    settle();
    QCOMPARE(m_tree->visibleItem(2)->itemText(), QString("child 1.0"));
    checkItems(m_tree, m_model);
    QVERIFY(m_tree->collapse(tops.at(1)));
    m_tree->expand(tops.at(0));
    settle();
    QCOMPARE(m_tree->visibleItem(2)->itemText(), QString("child 0.1"));
    checkItems(m_tree, m_model);
    QVERIFY(liveItems(m_tree) <= 200 / 20 + 2);
}

void tst_ZTreeWidget::indentationAndArrow()
{
    m_tree->setIndentation(20);
    const qint64 a = m_tree->addChild(0, "parent");
    const qint64 b = m_tree->addChild(a, "child");
    m_tree->addChild(b, "grandchild");
    const qint64 leaf = m_tree->addChild(0, "leaf");
    m_tree->setItemBackgroundVariant(QColor(Qt::white), QColor(Qt::white), QColor(Qt::white));
    m_tree->expandAll();
    settle();
    for (qint64 id : {a, b}) {
        ZTreeItem *item = m_tree->nodeItem(id);
        QVERIFY(item);
        auto *label = qobject_cast<ZLabel *>(item->textLabel());
        QVERIFY(label);
        // The text starts after its level's indentation and the box's spacing.
        QCOMPARE(label->geometry().left(), qreal(item->depth()) * 20 + item->spacing());
        QCOMPARE(item->branchRect(), QRectF((item->depth() - 1) * 20, 0, 20, 20));
    }

    // The arrow shows on rows with children only, and turns when expanded.
    const QImage before = render(*m_scene, QSize(300, 200));
    auto inkIn = [](const QImage &image, const QRect &box) {
        int n = 0;
        for (int y = box.top(); y <= box.bottom(); ++y)
            for (int x = box.left(); x <= box.right(); ++x)
                n += qGray(image.pixel(x, y)) < 200 ? 1 : 0;
        return n;
    };
    const QRect arrowA = QRectF(arrowOf(m_tree, a) - QPointF(10, 10), QSizeF(20, 20)).toRect();
    const QRect arrowLeaf = QRectF(arrowOf(m_tree, leaf) - QPointF(10, 10), QSizeF(20, 20)).toRect();
    QVERIFY(inkIn(before, arrowA) > 0);
    QCOMPARE(inkIn(before, arrowLeaf), 0);
    m_tree->collapse(a);
    settle();
    const QImage after = render(*m_scene, QSize(300, 200));
    QVERIFY(inkIn(after, arrowA) > 0);
    QVERIFY(after.copy(arrowA) != before.copy(arrowA));
    before.save("/tmp/zkit-tree-expanded.png");
    after.save("/tmp/zkit-tree-collapsed.png");
}

void tst_ZTreeWidget::clickArrowToggles()
{
    const qint64 a = m_tree->addChild(0, "a");
    m_tree->addChild(a, "a1");
    const qint64 b = m_tree->addChild(0, "b");
    settle();
    QSignalSpy current(m_tree, &ZTreeWidget::currentNodeChanged);
    click(*m_scene, arrowOf(m_tree, a));
    settle();
    QVERIFY(m_tree->isExpanded(a));
    QCOMPARE(current.count(), 0); // the arrow does not select
    QCOMPARE(m_tree->rowCount(), 3);
    click(*m_scene, arrowOf(m_tree, a));
    settle();
    QVERIFY(!m_tree->isExpanded(a));

    // A press on the text selects and does not toggle.
    QSignalSpy clicked(m_tree, &ZTreeWidget::nodeClicked);
    click(*m_scene, textOf(m_tree, b));
    settle();
    QCOMPARE(m_tree->currentNode(), b);
    QCOMPARE(current.count(), 1);
    QCOMPARE(current.at(0).at(0).toLongLong(), b);
    QCOMPARE(clicked.count(), 1);
    QVERIFY(!m_tree->isExpanded(a));
}

void tst_ZTreeWidget::doubleClickToggles()
{
    const qint64 a = m_tree->addChild(0, "a");
    m_tree->addChild(a, "a1");
    settle();
    QSignalSpy dbl(m_tree, &ZTreeWidget::nodeDbClicked);
    mouse(*m_scene, QEvent::GraphicsSceneMouseDoubleClick, textOf(m_tree, a));
    settle();
    QVERIFY(m_tree->isExpanded(a));
    QCOMPARE(dbl.count(), 1);
    QCOMPARE(dbl.at(0).at(0).toLongLong(), a);
    m_tree->setExpandOnDoubleClick(false);
    mouse(*m_scene, QEvent::GraphicsSceneMouseDoubleClick, textOf(m_tree, a));
    settle();
    QVERIFY(m_tree->isExpanded(a));
    QCOMPARE(dbl.count(), 2);
}

void tst_ZTreeWidget::keyboard()
{
    QEvent activate(QEvent::WindowActivate);
    QCoreApplication::sendEvent(m_scene, &activate);
    const qint64 a = m_tree->addChild(0, "a");
    const qint64 a1 = m_tree->addChild(a, "a1");
    const qint64 a2 = m_tree->addChild(a, "a2");
    const qint64 b = m_tree->addChild(0, "b");
    QList<qint64> many;
    for (int i = 0; i < 40; ++i)
        many.append(m_tree->addChild(b, QString("b%1").arg(i)));
    settle();
    click(*m_scene, textOf(m_tree, a));
    QVERIFY(m_tree->hasFocus());
    QCOMPARE(m_tree->currentNode(), a);

    struct Step
    {
        int key;
        qint64 current;
        bool aExpanded;
    };
    const Step steps[] = {
        {Qt::Key_Right, a, true},    // expands
        {Qt::Key_Right, a1, true},   // into the first child
        {Qt::Key_Down, a2, true},
        {Qt::Key_Right, a2, true},   // a leaf: nothing
        {Qt::Key_Left, a, true},     // a leaf goes to its parent
        {Qt::Key_Left, a, false},    // collapses
        {Qt::Key_Down, b, false},
        {Qt::Key_Up, a, false},
        {Qt::Key_Up, a, false},      // stays at the top
        {Qt::Key_End, b, false},
        {Qt::Key_Home, a, false},
    };
    for (const Step &step : steps) {
        key(*m_scene, step.key);
        settle();
        QCOMPARE(m_tree->currentNode(), step.current);
        QCOMPARE(m_tree->isExpanded(a), step.aExpanded);
    }

    // Moving far down scrolls the current row into view.
    m_tree->expand(b);
    key(*m_scene, Qt::Key_End);
    settle();
    QCOMPARE(m_tree->currentNode(), many.last());
    ZTreeItem *item = m_tree->nodeItem(many.last());
    QVERIFY(item);
    QVERIFY(item->geometry().bottom() <= m_tree->visibleRect().bottom());
    QVERIFY(item->geometry().top() >= 0);
    key(*m_scene, Qt::Key_PageUp);
    settle();
    QCOMPARE(m_tree->currentNode(), many.at(39 - 10));
    QVERIFY(m_tree->nodeItem(many.at(39 - 10)));
}

void tst_ZTreeWidget::currentFollowsNode()
{
    const qint64 a = m_tree->addChild(0, "a");
    const qint64 b = m_tree->addChild(0, "b");
    const qint64 c = m_tree->addChild(0, "c");
    m_tree->addChild(a, "a1");
    m_tree->addChild(a, "a2");
    settle();
    m_tree->setCurrentNode(c);
    QCOMPARE(m_tree->selectIndex(), 2);
    QSignalSpy current(m_tree, &ZTreeWidget::currentNodeChanged);
    m_tree->expand(a);
    QCOMPARE(m_tree->currentNode(), c);
    QCOMPARE(m_tree->selectIndex(), 4);
    m_tree->insertBefore(b, "new");
    settle();
    QCOMPARE(m_tree->currentNode(), c);
    QCOMPARE(m_tree->selectIndex(), 5);
    m_tree->removeNode(b);
    settle();
    QCOMPARE(m_tree->currentNode(), c);
    QCOMPARE(m_tree->selectIndex(), 4);
    QCOMPARE(current.count(), 0);
    ZTreeItem *item = m_tree->nodeItem(c);
    QVERIFY(item);
    QVERIFY(item->itemSelected());
}

void tst_ZTreeWidget::currentOnCollapseAndRemove()
{
    const qint64 a = m_tree->addChild(0, "a");
    const qint64 a1 = m_tree->addChild(a, "a1");
    const qint64 a11 = m_tree->addChild(a1, "a11");
    m_tree->addChild(0, "b");
    m_tree->setCurrentNode(a11);
    QVERIFY(m_tree->isExpanded(a));
    QVERIFY(m_tree->isExpanded(a1));
    QCOMPARE(m_tree->currentNode(), a11);
    QSignalSpy current(m_tree, &ZTreeWidget::currentNodeChanged);
    m_tree->collapse(a);
    QCOMPARE(m_tree->currentNode(), a);
    QCOMPARE(current.count(), 1);
    QCOMPARE(current.last().at(0).toLongLong(), a);

    m_tree->removeNode(a);
    settle();
    QCOMPARE(m_tree->currentNode(), 0);
    QCOMPARE(m_tree->selectIndex(), -1);
    QCOMPARE(current.count(), 2);
    QCOMPARE(current.last().at(0).toLongLong(), 0);
    checkAllRows(m_model, m_tree);
}

void tst_ZTreeWidget::resetKeepsExpanded()
{
    const qint64 a = m_tree->addChild(0, "a");
    const qint64 a1 = m_tree->addChild(a, "a1");
    m_tree->addChild(a1, "a11");
    const qint64 b = m_tree->addChild(0, "b");
    m_tree->addChild(b, "b1");
    m_tree->expand(a);
    m_tree->expand(a1);
    m_tree->setCurrentNode(a1);
    settle();
    // Moves report a reset: the expanded nodes stay expanded where they went.
    QVERIFY(m_model->moveToBack(a));
    settle();
    QVERIFY(m_tree->isExpanded(a));
    QVERIFY(m_tree->isExpanded(a1));
    QVERIFY(!m_tree->isExpanded(b));
    QCOMPARE(m_tree->currentNode(), a1);
    QCOMPARE(m_tree->selectIndex(), 2);
    checkAllRows(m_model, m_tree);
    checkItems(m_tree, m_model);

    m_tree->removeAll();
    settle();
    QCOMPARE(m_tree->rowCount(), 0);
    QCOMPARE(m_tree->visibleItemCount(), 0);
    QCOMPARE(m_tree->currentNode(), 0);
}

void tst_ZTreeWidget::changedDataRebinds()
{
    const qint64 a = m_tree->addChild(0, "a");
    settle();
    QCOMPARE(m_tree->nodeItem(a)->itemText(), QString("a"));
    QVERIFY(m_model->setData(a, {{Qt::DisplayRole, QString("renamed")}}));
    settle();
    QCOMPARE(m_tree->nodeItem(a)->itemText(), QString("renamed"));
    // A first child under a shown leaf gives it its arrow.
    QVERIFY(!m_tree->nodeItem(a)->hasChildren());
    m_tree->addChild(a, "child");
    settle();
    QVERIFY(m_tree->nodeItem(a)->hasChildren());
}

void tst_ZTreeWidget::scrollToNode()
{
    QList<qint64> tops;
    for (int i = 0; i < 50; ++i)
        tops.append(m_tree->addChild(0, QString("t%1").arg(i)));
    const qint64 deep = m_tree->addChild(m_tree->addChild(tops.at(40), "x"), "deep");
    settle();
    m_tree->setCurrentNode(deep);
    settle();
    QVERIFY(m_tree->isExpanded(tops.at(40)));
    QCOMPARE(m_tree->rowOfNode(deep), 42);
    ZTreeItem *item = m_tree->nodeItem(deep);
    QVERIFY(item);
    QVERIFY(item->isVisible());
    QVERIFY(item->geometry().top() >= 0 && item->geometry().bottom() <= 200);
    QCOMPARE(item->depth(), 3);
}

void tst_ZTreeWidget::badInput()
{
    const qint64 a = m_tree->addChild(0, "a");
    const qint64 leaf = m_tree->addChild(a, "leaf");
    QVERIFY(!m_tree->expand(0));
    QVERIFY(!m_tree->expand(123456789));
    QVERIFY(!m_tree->collapse(-5));
    QVERIFY(!m_tree->expand(leaf));
    QVERIFY(!m_tree->isExpanded(leaf));
    QCOMPARE(m_tree->rowOfNode(987654), -1);
    QCOMPARE(m_tree->nodeDepth(987654), 0);
    m_tree->setCurrentNode(987654);
    QCOMPARE(m_tree->currentNode(), 0);
    m_tree->scrollToNode(-1);
    m_tree->setIndentation(-5);
    QCOMPARE(m_tree->indentation(), 0);
    m_tree->setIndentation(100000);
    QCOMPARE(m_tree->indentation(), 256);
    m_tree->setBranchImage("no/such/image.png");
    m_tree->expand(a);
    settle();
    render(*m_scene, QSize(300, 200));
    checkAllRows(m_model, m_tree);
    // Keys on an empty tree do nothing.
    ZCommonTreeWidget empty;
    m_scene->addItem(&empty);
    QEvent activate(QEvent::WindowActivate);
    QCoreApplication::sendEvent(m_scene, &activate);
    empty.setFocus();
    for (int k : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Left, Qt::Key_Right, Qt::Key_End, Qt::Key_PageDown})
        key(*m_scene, k);
    QCOMPARE(empty.currentNode(), 0);
    m_scene->removeItem(&empty);
}

void tst_ZTreeWidget::lyingModel()
{
    LoopModel model;
    ZTreeWidget tree;
    m_scene->addItem(&tree);
    tree.resize(300, 200);
    tree.setModel(&model);
    QCOMPARE(tree.rowCount(), 2); // the repeated id is shown once
    tree.expandAll();
    tree.expand(1);
    tree.scrollToNode(2);
    tree.setCurrentNode(1);
    settle();
    QVERIFY(tree.rowCount() <= 2);
    render(*m_scene, QSize(300, 200));
    tree.setModel(nullptr);
}

void tst_ZTreeWidget::reorderedBehindTheView()
{
    FlatModel model;
    for (qint64 id = 1; id <= 30; ++id)
        model.ids.append(id);
    ZTreeWidget tree;
    m_scene->addItem(&tree);
    tree.resize(300, 200);
    tree.setModel(&model);
    settle();
    tree.setCurrentNode(5);
    // Reversed, one taken out and one added, but only the addition is told.
    std::reverse(model.ids.begin(), model.ids.end());
    model.ids.removeAll(20);
    model.ids.insert(3, 99);
    model.report({99});
    settle();
    checkAllRows(&model, &tree);
    checkItems(&tree, &model);
    QCOMPARE(tree.currentNode(), 5);
    QCOMPARE(tree.selectIndex(), int(model.ids.indexOf(5)));
    tree.setModel(nullptr);
}

void tst_ZTreeWidget::deepChain()
{
    // Deep enough that recursion would be felt, shallow enough for a quick test.
    qint64 id = 0;
    QList<qint64> chain;
    m_tree->batchInsert();
    for (int i = 0; i < 20000; ++i)
        chain.append(id = m_tree->addChild(id, QString("level %1").arg(i)));
    m_tree->batchCommit();
    m_tree->expandAll();
    QCOMPARE(m_tree->rowCount(), 20000);
    QCOMPARE(m_tree->rowOfNode(chain.last()), 19999);
    QCOMPARE(m_tree->nodeAtRow(12345), chain.at(12345));
    m_tree->collapse(chain.at(100));
    QCOMPARE(m_tree->rowCount(), 101);
    m_tree->setCurrentNode(chain.last());
    QCOMPARE(m_tree->rowCount(), 20000);
    settle();
    QVERIFY(m_tree->nodeItem(chain.last()));
    m_tree->removeNode(chain.at(1));
    settle();
    QCOMPARE(m_tree->rowCount(), 1);
}

void tst_ZTreeWidget::modelDeleted()
{
    auto *model = new ZCommonTreeModel;
    ZTreeWidget tree;
    m_scene->addItem(&tree);
    tree.resize(300, 200);
    tree.setModel(model);
    model->addChild(model->addChild(0, "a"), "b");
    tree.expandAll();
    settle();
    QCOMPARE(tree.rowCount(), 2);
    delete model;
    QCOMPARE(tree.treeModel(), nullptr);
    settle();
    QCOMPARE(tree.rowCount(), 0);
    QCOMPARE(tree.visibleItemCount(), 0);
}

void tst_ZTreeWidget::fromXml()
{
    ZWidget root;
    QVERIFY(ZXmlUI::widgetFromMemory(R"(<uitree>
  <ZCommonTreeWidget objectName="tree" indentation="24" itemHeight="22" expandOnDoubleClick="false">
    <tree:data>
      <node text="Fruit" expanded="true">
        <node text="Apple" value="7"/>
        <node text="Pear"><node text="Nashi"/></node>
      </node>
      <ignored text="not a node"/>
      <node text="Vegetables"/>
    </tree:data>
  </ZCommonTreeWidget>
</uitree>)", &root));
    auto *tree = qobject_cast<ZCommonTreeWidget *>(root.findObject("tree"));
    QVERIFY(tree);
    QCOMPARE(tree->indentation(), 24);
    QCOMPARE(tree->itemHeight(), 22);
    QVERIFY(!tree->expandOnDoubleClick());
    QCOMPARE(tree->commonModel()->count(), 5);
    QCOMPARE(tree->rowCount(), 4);
    QStringList texts;
    for (int row = 0; row < tree->rowCount(); ++row)
        texts << tree->commonModel()->data(tree->nodeAtRow(row)).value(Qt::DisplayRole).toString();
    QCOMPARE(texts, QStringList({"Fruit", "Apple", "Pear", "Vegetables"}));
    QCOMPARE(tree->commonModel()->data(tree->nodeAtRow(1)).value(Qt::ItemDataRole(33)).toString(), QString("7"));
}

QTEST_MAIN(tst_ZTreeWidget)
#include "tst_ztreewidget.moc"
