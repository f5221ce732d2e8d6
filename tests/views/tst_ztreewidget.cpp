#include "common/scenetest.h"

#include "zcommontreemodel.h"
#include "zcommontreewidget.h"
#include "zlabel.h"
#include "zscrollbar.h"
#include "ztreeitem.h"
#include "zxmlui.h"

#include <QtTest/QtTest>

#include <random>

using namespace scenetest;

namespace {

// A model answering only with fixed links, for the shapes the common model cannot have.
class FixedModel : public ZAbstractTreeModel
{
public:
    qint64 nodeRoot() const override { return 0; }
    int count() const override { return loop ? 2 : int(ids.size()); }
    int nodeDepth(qint64 id) const override { return loop || ids.contains(id) ? 1 : id == 0 ? 0 : -1; }
    int childCount(qint64 id) const override { return loop ? 2 : id == 0 ? int(ids.size()) : 0; }
    QMap<Qt::ItemDataRole, QVariant> data(qint64 id) const override { return {{Qt::DisplayRole, QString("n%1").arg(id)}}; }
    qint64 parent(qint64 id) override { return loop ? (id == 1 ? 2 : 1) : 0; }
    QList<qint64> childs(qint64 id) override { return loop ? QList<qint64>{1, 2, 1} : id == 0 ? ids : QList<qint64>(); }
    void enumTree(qint64, ItemCall *) override {}
    qint64 firstChild(qint64 id) override { return childs(id).value(0); }
    bool hasNextSibling(qint64) override { return false; }
    bool hasPreviousSibling(qint64) override { return false; }
    qint64 nextSibling(qint64) override { return 0; }
    qint64 previousSibling(qint64) override { return 0; }
    void report(const QList<qint64> &inserted) { Q_EMIT itemsInserted(inserted); }

    QList<qint64> ids;
    bool loop = false; // every node names node 1 as its child, and parents loop
};

// Groups under the root, each with its own number of leaves; ids are made
// from positions, so a million nodes cost no storage. Leaves come and go at
// the end of a group, with the model's signals.
class ShapeModel : public ZAbstractTreeModel
{
public:
    ShapeModel(int groups, int leaves) : m_leaves(size_t(groups), leaves) {}

    static qint64 groupId(int g) { return qint64(g) + 1; }
    static qint64 leafId(int g, int k) { return ((qint64(g) + 1) << 32) | (qint64(k) + 1); }
    int leaves(int g) const { return m_leaves[size_t(g)]; }

    qint64 nodeRoot() const override { return 0; }
    int nodeDepth(qint64 id) const override { return id == 0 ? 0 : !valid(id) ? -1 : leaf(id) ? 2 : 1; }
    int childCount(qint64 id) const override
    {
        return id == 0 ? int(m_leaves.size()) : valid(id) && !leaf(id) ? leaves(group(id)) : 0;
    }
    int count() const override
    {
        int n = int(m_leaves.size());
        for (int k : m_leaves)
            n += k;
        return n;
    }
    QMap<Qt::ItemDataRole, QVariant> data(qint64 id) const override
    {
        if (!valid(id))
            return {};
        return {{Qt::DisplayRole, leaf(id) ? QString("g%1.%2").arg(group(id)).arg(index(id)) : QString("g%1").arg(group(id))}};
    }
    qint64 parent(qint64 id) override { return valid(id) && leaf(id) ? groupId(group(id)) : 0; }
    QList<qint64> childs(qint64 id) override
    {
        QList<qint64> ids;
        for (int k = 0; k < childCount(id); ++k)
            ids.append(id == 0 ? groupId(k) : leafId(group(id), k));
        return ids;
    }
    void enumTree(qint64, ItemCall *) override {}
    qint64 firstChild(qint64 id) override { return childCount(id) ? childs(id).first() : 0; }
    bool hasNextSibling(qint64 id) override { return nextSibling(id) != 0; }
    bool hasPreviousSibling(qint64 id) override { return previousSibling(id) != 0; }
    qint64 nextSibling(qint64 id) override { return valid(id) && valid(id + 1) ? id + 1 : 0; }
    qint64 previousSibling(qint64 id) override { return valid(id) && (id & 0xffffffff) > 1 ? id - 1 : 0; }

    void changeLeaves(int g, int n)
    {
        QList<qint64> ids;
        for (int k = 0; k < qAbs(n); ++k)
            ids.append(leafId(g, n > 0 ? leaves(g) + k : leaves(g) - 1 - k));
        m_leaves[size_t(g)] += n;
        if (n > 0)
            Q_EMIT itemsInserted(ids);
        else
            Q_EMIT itemsRemoved(ids);
    }

private:
    bool leaf(qint64 id) const { return (id >> 32) != 0; }
    int group(qint64 id) const { return int(leaf(id) ? (id >> 32) - 1 : id - 1); }
    int index(qint64 id) const { return int(id & 0xffffffff) - 1; }
    bool valid(qint64 id) const
    {
        return id > 0 && group(id) < int(m_leaves.size()) && (!leaf(id) || index(id) < leaves(group(id)));
    }
    std::vector<int> m_leaves;
};

// The rows must be the nodes shown by a walk through the model and the
// view's expanded states, both ways.
void checkAllRows(ZAbstractTreeModel *model, const ZTreeWidget *tree)
{
    QList<qint64> rows;
    std::vector<std::pair<QList<qint64>, int>> stack{{model->childs(0), 0}};
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
    QCOMPARE(tree->rowCount(), int(rows.size()));
    for (int row = 0; row < rows.size(); ++row) {
        QCOMPARE(tree->nodeAtRow(row), rows.at(row));
        QCOMPARE(tree->rowOfNode(rows.at(row)), row);
    }
    QCOMPARE(tree->nodeAtRow(int(rows.size())), 0);
}

// Every live item shows the node of its row, indented by its depth.
void checkItems(ZTreeWidget *tree, ZAbstractTreeModel *model, bool fewItems = false)
{
    const int first = tree->firstVisibleIndex();
    QVERIFY(tree->visibleItemCount() > 0 || tree->rowCount() == 0);
    for (int row = first; row < first + tree->visibleItemCount(); ++row) {
        auto *item = qobject_cast<ZTreeItem *>(tree->visibleItem(row));
        QVERIFY2(item, qPrintable(QString("row %1 has no item").arg(row)));
        const qint64 id = tree->nodeAtRow(row);
        QCOMPARE(item->node(), id);
        QCOMPARE(item->itemText(), model->data(id).value(Qt::DisplayRole).toString());
        QCOMPARE(item->depth(), model->nodeDepth(id));
        QCOMPARE(item->isExpanded(), tree->isExpanded(id));
        QCOMPARE(item->hasChildren(), model->childCount(id) > 0);
    }
    int live = 0;
    for (QGraphicsItem *child : tree->childItems())
        live += dynamic_cast<ZTreeItem *>(child) ? 1 : 0;
    QVERIFY(!fewItems || live <= 200 / 20 + 2);
}

// The centre of a row's branch arrow and a point on its text, in scene coordinates.
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

    QGraphicsScene *m_scene = nullptr;
    ZCommonTreeWidget *m_tree = nullptr;
    ZCommonTreeModel *m_model = nullptr;

    void key(int k) { scenetest::key(*m_scene, k); }
    // A second view in the scene for a model of the test's own.
    std::unique_ptr<ZTreeWidget> view(ZAbstractTreeModel *model)
    {
        auto tree = std::make_unique<ZTreeWidget>();
        m_scene->addItem(tree.get());
        tree->resize(300, 200);
        tree->setModel(model);
        return tree;
    }

private Q_SLOTS:
    void init()
    {
        m_scene = new QGraphicsScene(0, 0, 400, 400);
        m_tree = new ZCommonTreeWidget;
        m_scene->addItem(m_tree);
        m_tree->resize(300, 200);
        m_model = m_tree->commonModel();
    }

    void cleanup() { delete m_scene; }

    // Four top nodes with three children with two children each; ">id"
    // expands, "<id" collapses (ids as "t.c" paths).
    void expandCollapse_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<int>("rows");
        QTest::newRow("starts collapsed") << QStringList{} << 4;
        QTest::newRow("top and child") << QStringList{">1", ">1.0"} << 9;
        QTest::newRow("child under collapsed top stays hidden") << QStringList{">1.0"} << 4;
        QTest::newRow("hidden expansion shows later") << QStringList{">1.0", ">1"} << 9;
        QTest::newRow("collapse and expand again") << QStringList{">1", ">1.0", "<1", ">1"} << 9;
        QTest::newRow("last top") << QStringList{">3", ">3.2"} << 9;
        QTest::newRow("inner collapse") << QStringList{">2", ">2.0", ">2.1", "<2.0"} << 9;
    }

    void expandCollapse()
    {
        QFETCH(QStringList, steps);
        QFETCH(int, rows);
        QHash<QString, qint64> ids;
        for (int t = 0; t < 4; ++t) {
            const qint64 top = ids[QString::number(t)] = m_tree->addChild(0, QString("t%1").arg(t));
            for (int c = 0; c < 3; ++c) {
                const qint64 child = ids[QString("%1.%2").arg(t).arg(c)] = m_tree->addChild(top, "c");
                m_tree->addChild(child, "g");
                m_tree->addChild(child, "g");
            }
        }
        QSignalSpy expanded(m_tree, &ZTreeWidget::nodeExpanded);
        QSignalSpy collapsed(m_tree, &ZTreeWidget::nodeCollapsed);
        for (const QString &step : steps) {
            const qint64 id = ids.value(step.mid(1));
            const bool expand = step.startsWith('>');
            QVERIFY(expand ? m_tree->expand(id) : m_tree->collapse(id));
            QVERIFY(!(expand ? m_tree->expand(id) : m_tree->collapse(id)));
            checkAllRows(m_model, m_tree);
        }
        QCOMPARE(m_tree->rowCount(), rows);
        QCOMPARE(expanded.count() + collapsed.count(), steps.size());
        QCOMPARE(collapsed.count(), int(steps.filter("<").size()));
        settle();
        checkItems(m_tree, m_model);
        m_tree->expandAll();
        QCOMPARE(m_tree->rowCount(), 40);
    }

    // Random expands, collapses, insertions (batched and single) and removals:
    // after each the rows must be exactly the model walk.
    void randomOperations_data()
    {
        QTest::addColumn<unsigned>("seed");
        for (unsigned seed : {1u, 7u, 42u, 1234u})
            QTest::newRow(qPrintable(QString("seed %1").arg(seed))) << seed;
    }

    void randomOperations()
    {
        QFETCH(unsigned, seed);
        std::mt19937 rng(seed);
        QList<qint64> all;
        for (int i = 0; i < 20; ++i)
            all.append(m_tree->addChild(0, QString("n%1").arg(i)));
        int label = 20;
        auto pick = [&]() { return all.at(int(rng() % all.size())); };
        auto name = [&]() { return QString("n%1").arg(label++); };
        for (int op = 0; op < 250; ++op) {
            all.erase(std::remove_if(all.begin(), all.end(), [&](qint64 id) { return !m_model->contains(id); }), all.end());
            if (all.isEmpty())
                all.append(m_tree->addChild(0, name()));
            switch (rng() % 8) {
            case 0:
            case 1: m_tree->expand(pick()); break;
            case 2: m_tree->collapse(pick()); break;
            case 3: {
                const qint64 parent = pick();
                m_tree->batchInsert();
                for (int i = 0, n = 1 + int(rng() % 5); i < n; ++i)
                    all.append(m_tree->addChild(parent, name()));
                m_tree->batchCommit();
                break;
            }
            case 4: all.append(m_tree->insertBefore(pick(), name())); break;
            case 5: all.append(m_tree->insertAfter(pick(), name())); break;
            case 6: m_tree->removeNode(pick()); break;
            case 7:
                if (rng() % 4 == 0)
                    m_tree->removeChilds(pick());
                else
                    all.append(m_tree->addChild(pick(), name()));
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
    void millionNodes()
    {
        ShapeModel model(1000, 999);
        auto tree = view(&model);
        QCOMPARE(tree->rowCount(), 1000);
        tree->expandAll();
        QCOMPARE(tree->rowCount(), 1000000);
        settle();
        auto *bar = qobject_cast<ZScrollBar *>(tree->verticalScrollBar());
        QCOMPARE(bar->maximum(), qreal(1000000 * 20 - 200 + tree->contentHiddenBottom()));
        for (int g : {0, 1, 499, 999}) {
            QCOMPARE(tree->rowOfNode(ShapeModel::groupId(g)), g * 1000);
            for (int k : {0, 998}) {
                QCOMPARE(tree->rowOfNode(ShapeModel::leafId(g, k)), g * 1000 + 1 + k);
                QCOMPARE(tree->nodeAtRow(g * 1000 + 1 + k), ShapeModel::leafId(g, k));
            }
        }
        for (int value : {7, 5000000, 19999800}) {
            bar->setValue(value);
            settle();
            QCOMPARE(tree->firstVisibleIndex(), value / 20);
            checkItems(tree.get(), &model, true);
        }
        // Collapsing group 10 takes its rows out of everything below; leaves
        // come and go, also under the collapsed group, and rows below move.
        QVERIFY(tree->collapse(ShapeModel::groupId(10)));
        QCOMPARE(tree->rowOfNode(ShapeModel::leafId(10, 3)), -1);
        QCOMPARE(tree->rowOfNode(ShapeModel::groupId(11)), 10 * 1000 + 1);
        model.changeLeaves(500, 10);
        model.changeLeaves(20, -5);
        model.changeLeaves(10, 4);
        QCOMPARE(tree->rowCount(), 1000000 - 999 + 10 - 5);
        auto expectedRow = [&](int g, int k) {
            int row = 0;
            for (int i = 0; i < g; ++i)
                row += 1 + (i == 10 ? 0 : model.leaves(i));
            return row + 1 + k;
        };
        for (int g : {11, 21, 500, 501, 999})
            QCOMPARE(tree->rowOfNode(ShapeModel::leafId(g, 993)), expectedRow(g, 993));
        QCOMPARE(tree->nodeAtRow(expectedRow(500, 1008)), ShapeModel::leafId(500, 1008));
        QCOMPARE(tree->rowOfNode(ShapeModel::leafId(20, 994)), -1);
        bar->setValue(qreal(expectedRow(500, 1000)) * 20);
        settle();
        checkItems(tree.get(), &model);
        QVERIFY(tree->expand(ShapeModel::groupId(10)));
        QCOMPARE(tree->rowOfNode(ShapeModel::leafId(10, 1002)), expectedRow(10, 1002));
        tree->setModel(nullptr);
    }

    // Rows that stay in view are rebound when expanding changes their node;
    // the text starts after its level's indentation, beside the arrow.
    void itemsFollowRows()
    {
        m_tree->setIndentation(20);
        QList<qint64> tops;
        for (int i = 0; i < 30; ++i) {
            tops.append(m_tree->addChild(0, QString("top %1").arg(i)));
            for (int c = 0; c < 3; ++c)
                m_tree->addChild(tops.last(), QString("child %1.%2").arg(i).arg(c));
        }
        QVERIFY(m_tree->expand(tops.at(1)));
        settle();
        QCOMPARE(m_tree->visibleItem(2)->itemText(), QString("child 1.0"));
        checkItems(m_tree, m_model);
        QVERIFY(m_tree->collapse(tops.at(1)));
        m_tree->expand(tops.at(0));
        settle();
        QCOMPARE(m_tree->visibleItem(2)->itemText(), QString("child 0.1"));
        checkItems(m_tree, m_model, true);
        for (int row : {0, 1}) {
            auto *item = qobject_cast<ZTreeItem *>(m_tree->visibleItem(row));
            QCOMPARE(qobject_cast<ZLabel *>(item->textLabel())->geometry().left(), item->depth() * 20.0 + item->spacing());
            QCOMPARE(item->branchRect(), QRectF((item->depth() - 1) * 20, 0, 20, 20));
        }
    }

    // The arrow is drawn on rows with children only, and turns when expanded.
    void arrowDrawn()
    {
        m_tree->setIndentation(20);
        const qint64 a = m_tree->addChild(0, "parent");
        m_tree->addChild(a, "child");
        const qint64 leaf = m_tree->addChild(0, "leaf");
        m_tree->setItemBackgroundVariant(QColor(Qt::white), QColor(Qt::white), QColor(Qt::white));
        m_tree->expandAll();
        settle();
        auto ink = [](const QImage &image) { return countOf(image, [](QColor c) { return qGray(c.rgb()) < 200; }); };
        auto arrowBox = [this](qint64 id) { return QRectF(arrowOf(m_tree, id) - QPointF(10, 10), QSizeF(20, 20)).toRect(); };
        const QImage before = render(*m_scene, QSize(300, 200));
        QVERIFY(ink(before.copy(arrowBox(a))) > 0);
        QCOMPARE(ink(before.copy(arrowBox(leaf))), 0);
        m_tree->collapse(a);
        settle();
        const QImage after = render(*m_scene, QSize(300, 200));
        QVERIFY(ink(after.copy(arrowBox(a))) > 0);
        QVERIFY(after.copy(arrowBox(a)) != before.copy(arrowBox(a)));
    }

    // A press on the arrow toggles without selecting; on the text it selects;
    // a double click toggles unless turned off.
    void mouse()
    {
        const qint64 a = m_tree->addChild(0, "a");
        m_tree->addChild(a, "a1");
        const qint64 b = m_tree->addChild(0, "b");
        settle();
        QSignalSpy current(m_tree, &ZTreeWidget::currentNodeChanged);
        QSignalSpy clicked(m_tree, &ZTreeWidget::nodeClicked);
        QSignalSpy dbl(m_tree, &ZTreeWidget::nodeDbClicked);
        click(*m_scene, arrowOf(m_tree, a));
        settle();
        QVERIFY(m_tree->isExpanded(a));
        QCOMPARE(m_tree->rowCount(), 3);
        click(*m_scene, arrowOf(m_tree, a));
        settle();
        QVERIFY(!m_tree->isExpanded(a));
        QCOMPARE(current.count(), 0);
        click(*m_scene, textOf(m_tree, b));
        settle();
        QCOMPARE(m_tree->currentNode(), b);
        QCOMPARE(current.count(), 1);
        QCOMPARE(current.at(0).at(0).toLongLong(), b);
        QCOMPARE(clicked.count(), 1);
        QVERIFY(!m_tree->isExpanded(a));
        Mouse(*m_scene).doubleClick(textOf(m_tree, a));
        settle();
        QVERIFY(m_tree->isExpanded(a));
        QCOMPARE(dbl.count(), 1);
        QCOMPARE(dbl.at(0).at(0).toLongLong(), a);
        m_tree->setExpandOnDoubleClick(false);
        Mouse(*m_scene).doubleClick(textOf(m_tree, a));
        settle();
        QVERIFY(m_tree->isExpanded(a));
        QCOMPARE(dbl.count(), 2);
    }

    void keyboard()
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
        const struct { int key; qint64 current; bool aExpanded; } steps[] = {
            {Qt::Key_Right, a, true},  // expands
            {Qt::Key_Right, a1, true}, // into the first child
            {Qt::Key_Down, a2, true},
            {Qt::Key_Right, a2, true}, // a leaf: nothing
            {Qt::Key_Left, a, true},   // a leaf goes to its parent
            {Qt::Key_Left, a, false},  // collapses
            {Qt::Key_Down, b, false},
            {Qt::Key_Up, a, false},
            {Qt::Key_Up, a, false},    // stays at the top
            {Qt::Key_End, b, false},
            {Qt::Key_Home, a, false},
        };
        for (const auto &step : steps) {
            key(step.key);
            settle();
            QCOMPARE(m_tree->currentNode(), step.current);
            QCOMPARE(m_tree->isExpanded(a), step.aExpanded);
        }
        // Moving far down scrolls the current row into view.
        m_tree->expand(b);
        key(Qt::Key_End);
        settle();
        QCOMPARE(m_tree->currentNode(), many.last());
        ZTreeItem *item = m_tree->nodeItem(many.last());
        QVERIFY(item && item->geometry().bottom() <= m_tree->visibleRect().bottom() && item->geometry().top() >= 0);
        key(Qt::Key_PageUp);
        settle();
        QCOMPARE(m_tree->currentNode(), many.at(39 - 10));
        QVERIFY(m_tree->nodeItem(many.at(39 - 10)));
        // Keys on an empty tree do nothing.
        m_tree->removeAll();
        for (int k : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Left, Qt::Key_Right, Qt::Key_End, Qt::Key_PageDown})
            key(k);
        QCOMPARE(m_tree->currentNode(), 0);
    }

    // The current node keeps its node while rows move around it; collapsing
    // its parent moves it up, removing it clears it.
    void currentNode()
    {
        const qint64 a = m_tree->addChild(0, "a");
        const qint64 b = m_tree->addChild(0, "b");
        const qint64 c = m_tree->addChild(0, "c");
        const qint64 a1 = m_tree->addChild(a, "a1");
        const qint64 a11 = m_tree->addChild(a1, "a11");
        settle();
        m_tree->setCurrentNode(c);
        QSignalSpy current(m_tree, &ZTreeWidget::currentNodeChanged);
        m_tree->expand(a);
        QCOMPARE(m_tree->selectIndex(), 3);
        m_tree->insertBefore(b, "new");
        m_tree->removeNode(b);
        settle();
        QCOMPARE(m_tree->currentNode(), c);
        QCOMPARE(m_tree->selectIndex(), 3);
        QCOMPARE(current.count(), 0);
        QVERIFY(m_tree->nodeItem(c)->itemSelected());
        m_tree->setCurrentNode(a11);
        QVERIFY(m_tree->isExpanded(a1));
        m_tree->collapse(a);
        QCOMPARE(m_tree->currentNode(), a);
        QCOMPARE(current.count(), 2);
        m_tree->removeNode(a);
        settle();
        QCOMPARE(m_tree->currentNode(), 0);
        QCOMPARE(m_tree->selectIndex(), -1);
        QCOMPARE(current.count(), 3);
        checkAllRows(m_model, m_tree);
        // Making a deep node current far down expands its ancestors and scrolls to it.
        qint64 top = 0;
        for (int i = 0; i < 50; ++i)
            top = m_tree->addChild(0, QString("t%1").arg(i));
        const qint64 deep = m_tree->addChild(m_tree->addChild(top, "x"), "deep");
        m_tree->setCurrentNode(deep);
        settle();
        QCOMPARE(m_tree->rowOfNode(deep), 53);
        ZTreeItem *item = m_tree->nodeItem(deep);
        QVERIFY(item && item->isVisible() && item->geometry().top() >= 0 && item->geometry().bottom() <= 200);
    }

    // Moves report a reset: the expanded nodes stay expanded where they went.
    // Moves report a reset: expanded nodes stay expanded where they went.
    // Changed data and a first child rebind the shown item.
    void modelChangesRebind()
    {
        const qint64 a = m_tree->addChild(0, "a");
        const qint64 a1 = m_tree->addChild(a, "a1");
        m_tree->addChild(a1, "a11");
        const qint64 b = m_tree->addChild(0, "b");
        m_tree->setCurrentNode(a1);
        settle();
        QVERIFY(m_model->moveToBack(a));
        settle();
        QVERIFY(m_tree->isExpanded(a) && !m_tree->isExpanded(a1) && !m_tree->isExpanded(b));
        QCOMPARE(m_tree->selectIndex(), 2);
        checkAllRows(m_model, m_tree);
        checkItems(m_tree, m_model);
        QVERIFY(m_model->setData(b, {{Qt::DisplayRole, QString("renamed")}}));
        QVERIFY(!m_tree->nodeItem(b)->hasChildren());
        m_tree->addChild(b, "child");
        settle();
        QCOMPARE(m_tree->nodeItem(b)->itemText(), QString("renamed"));
        QVERIFY(m_tree->nodeItem(b)->hasChildren());
        m_tree->removeAll();
        settle();
        QCOMPARE(m_tree->visibleItemCount(), 0);
    }

    void badInput()
    {
        const qint64 a = m_tree->addChild(0, "a");
        const qint64 leaf = m_tree->addChild(a, "leaf");
        QVERIFY(!m_tree->expand(0));
        QVERIFY(!m_tree->expand(123456789));
        QVERIFY(!m_tree->collapse(-5));
        QVERIFY(!m_tree->expand(leaf));
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
    }

    // A model whose links loop shows each id once and neither hangs nor loops.
    void lyingModel()
    {
        FixedModel model;
        model.loop = true;
        auto tree = view(&model);
        QCOMPARE(tree->rowCount(), 2);
        tree->expandAll();
        tree->expand(1);
        tree->scrollToNode(2);
        tree->setCurrentNode(1);
        settle();
        QVERIFY(tree->rowCount() <= 2);
        render(*m_scene, QSize(300, 200));
        tree->setModel(nullptr);
    }

    // Reordered behind the view's back with only an insertion told: the view notices the new order.
    void reorderedBehindTheView()
    {
        FixedModel model;
        for (qint64 id = 1; id <= 30; ++id)
            model.ids.append(id);
        auto tree = view(&model);
        settle();
        tree->setCurrentNode(5);
        std::reverse(model.ids.begin(), model.ids.end());
        model.ids.removeAll(20);
        model.ids.insert(3, 99);
        model.report({99});
        settle();
        checkAllRows(&model, tree.get());
        checkItems(tree.get(), &model);
        QCOMPARE(tree->currentNode(), 5);
        QCOMPARE(tree->selectIndex(), int(model.ids.indexOf(5)));
        tree->setModel(nullptr);
    }

    // Deep enough that recursion would be felt.
    void deepChain()
    {
        qint64 id = 0;
        QList<qint64> chain;
        m_tree->batchInsert();
        for (int i = 0; i < 20000; ++i)
            chain.append(id = m_tree->addChild(id, QString("level %1").arg(i)));
        m_tree->batchCommit();
        m_tree->expandAll();
        QCOMPARE(m_tree->rowCount(), 20000);
        QCOMPARE(m_tree->nodeAtRow(12345), chain.at(12345));
        m_tree->collapse(chain.at(100));
        QCOMPARE(m_tree->rowCount(), 101);
        m_tree->setCurrentNode(chain.last());
        QCOMPARE(m_tree->rowOfNode(chain.last()), 19999);
        settle();
        QVERIFY(m_tree->nodeItem(chain.last()));
        m_tree->removeNode(chain.at(1));
        settle();
        QCOMPARE(m_tree->rowCount(), 1);
    }

    void modelDeleted()
    {
        auto *model = new ZCommonTreeModel;
        auto tree = view(model);
        model->addChild(model->addChild(0, "a"), "b");
        tree->expandAll();
        settle();
        QCOMPARE(tree->rowCount(), 2);
        delete model;
        QCOMPARE(tree->treeModel(), nullptr);
        settle();
        QCOMPARE(tree->rowCount(), 0);
        QCOMPARE(tree->visibleItemCount(), 0);
    }

    // Nodes come from nested <node> elements of tree:data, with text, value and expanded.
    void fromXml()
    {
        ZWidget root;
        QVERIFY(ZXmlUI::widgetFromMemory(R"(<uitree>
  <ZCommonTreeWidget objectName="tree">
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
        QCOMPARE(tree->commonModel()->count(), 5);
        QStringList texts;
        for (int row = 0; row < tree->rowCount(); ++row)
            texts << tree->commonModel()->data(tree->nodeAtRow(row)).value(Qt::DisplayRole).toString();
        QCOMPARE(texts, QStringList({"Fruit", "Apple", "Pear", "Vegetables"}));
        QCOMPARE(tree->commonModel()->data(tree->nodeAtRow(1)).value(Qt::ItemDataRole(33)).toString(), QString("7"));
    }
};

QTEST_MAIN(tst_ZTreeWidget)
#include "tst_ztreewidget.moc"
