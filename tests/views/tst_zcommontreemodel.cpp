#include "zcommontreemodel.h"

#include <QtTest/QtTest>

namespace {

struct Collector : ZAbstractTreeModel::ItemCall
{
    bool visit(qint64 id, int depth) override
    {
        ids.append(id);
        depths.append(depth);
        return limit < 0 || ids.size() < limit;
    }
    QList<qint64> ids;
    QList<int> depths;
    int limit = -1;
};

QStringList texts(ZCommonTreeModel &model, qint64 parent)
{
    QStringList out;
    for (qint64 id : model.childs(parent))
        out << model.data(id).value(Qt::DisplayRole).toString();
    return out;
}

} // namespace

class tst_ZCommonTreeModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ids();
    void addAndCount();
    void unknownParent();
    void insertBeforeAfter();
    void textForms();
    void batch();
    void removeNode();
    void removeChilds();
    void removeAllResets();
    void siblingsNavigation();
    void moves_data();
    void moves();
    void moveToChildGuards();
    void enumTreeOrder();
    void deepChain();
    void setDataReportsRoles();
};

void tst_ZCommonTreeModel::ids()
{
    // Ids are time << 16 plus a counter stepping by one.
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    qint64 a = 0, b = 0;
    for (int tries = 0; tries < 100; ++tries) {
        a = ZCommonTreeModel::createId();
        b = ZCommonTreeModel::createId();
        if ((a >> 16) == (b >> 16))
            break;
    }
    const qint64 after = QDateTime::currentMSecsSinceEpoch();
    QCOMPARE(b - a, qint64(1));
    QVERIFY((a >> 16) >= before - 1 && (a >> 16) <= after + 1);
    QVERIFY(a != 0);

    ZCommonTreeModel model;
    QSet<qint64> seen;
    for (int i = 0; i < 1000; ++i) {
        const qint64 id = model.addChild(0, QString::number(i));
        QVERIFY(id != 0);
        QVERIFY(!seen.contains(id));
        seen.insert(id);
    }
}

void tst_ZCommonTreeModel::addAndCount()
{
    ZCommonTreeModel model;
    QSignalSpy inserted(&model, &ZCommonTreeModel::itemsInserted);
    QVERIFY(model.isEmpty());
    const qint64 root = model.addChild(0, "root");
    const qint64 c1 = model.addChild(root, "c1");
    const qint64 c2 = model.addChild(root, "c2");
    QCOMPARE(model.count(), 3);
    QCOMPARE(model.childCount(0), 1);
    QCOMPARE(model.childCount(root), 2);
    QCOMPARE(model.childs(root), (QList<qint64>{c1, c2}));
    QCOMPARE(model.parent(c1), root);
    QCOMPARE(model.parent(root), qint64(0));
    QCOMPARE(model.nodeDepth(0), 0);
    QCOMPARE(model.nodeDepth(root), 1);
    QCOMPARE(model.nodeDepth(c2), 2);
    QCOMPARE(model.nodeDepth(12345), -1);
    QVERIFY(model.hasChildren(root));
    QVERIFY(!model.hasChildren(c1));
    QCOMPARE(model.nodeRoot(), qint64(0));
    QCOMPARE(inserted.count(), 3);
    QCOMPARE(inserted.at(2).at(0).value<QList<qint64>>(), QList<qint64>{c2});
}

void tst_ZCommonTreeModel::unknownParent()
{
    ZCommonTreeModel model;
    QSignalSpy inserted(&model, &ZCommonTreeModel::itemsInserted);
    QCOMPARE(model.addChild(424242, "x"), qint64(0));
    QCOMPARE(model.insertBefore(424242, "x"), qint64(0));
    QCOMPARE(model.insertAfter(0, "x"), qint64(0));
    QCOMPARE(inserted.count(), 0);
    QCOMPARE(model.count(), 0);
}

void tst_ZCommonTreeModel::insertBeforeAfter()
{
    ZCommonTreeModel model;
    const qint64 p = model.addChild(0, "p");
    const qint64 b = model.addChild(p, "b");
    model.insertBefore(b, "a");
    model.insertAfter(b, "c");
    const qint64 d = model.insertAfter(model.childs(p).last(), "d");
    QCOMPARE(texts(model, p), (QStringList{"a", "b", "c", "d"}));
    QCOMPARE(model.parent(d), p);
    model.insertBefore(p, "top");
    QCOMPARE(texts(model, 0), (QStringList{"top", "p"}));
}

void tst_ZCommonTreeModel::textForms()
{
    ZCommonTreeModel model;
    const qint64 a = model.addChild(0, "a", QVariant(3));
    const qint64 b = model.addChild(0, "b", "icon.png", QVariant());
    const qint64 c = model.addChild(0, "c", "", QVariant("u"));
    QCOMPARE(model.data(a).value(Qt::ItemDataRole(33)).toInt(), 3);
    QVERIFY(!model.data(b).contains(Qt::DecorationRole));
    QCOMPARE(model.data(c).value(Qt::DecorationRole), QVariant(QString("")));
    QCOMPARE(model.data(c).value(Qt::ItemDataRole(33)).toString(), QString("u"));
    QVERIFY(model.data(999).isEmpty());
}

void tst_ZCommonTreeModel::batch()
{
    ZCommonTreeModel model;
    QSignalSpy inserted(&model, &ZCommonTreeModel::itemsInserted);
    model.batchInsert();
    const qint64 a = model.addChild(0, "a");
    const qint64 b = model.addChild(a, "b");
    const qint64 c = model.addChild(0, "c");
    QCOMPARE(inserted.count(), 0);
    const QList<qint64> ids = model.batchCommit();
    QCOMPARE(ids, (QList<qint64>{a, b, c}));
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(inserted.at(0).at(0).value<QList<qint64>>(), ids);
    QVERIFY(model.batchCommit().isEmpty());
    QCOMPARE(inserted.count(), 1);

    // Nodes removed inside a batch are not reported as inserted.
    model.batchInsert();
    const qint64 x = model.addChild(a, "x");
    model.addChild(x, "y");
    const qint64 z = model.addChild(0, "z");
    model.removeNode(x);
    QCOMPARE(model.batchCommit(), QList<qint64>{z});
}

void tst_ZCommonTreeModel::removeNode()
{
    ZCommonTreeModel model;
    const qint64 a = model.addChild(0, "a");
    const qint64 a1 = model.addChild(a, "a1");
    const qint64 a11 = model.addChild(a1, "a11");
    const qint64 a2 = model.addChild(a, "a2");
    const qint64 b = model.addChild(0, "b");
    QSignalSpy removed(&model, &ZCommonTreeModel::itemsRemoved);
    QVERIFY(model.removeNode(a));
    QCOMPARE(removed.count(), 1);
    QCOMPARE(removed.at(0).at(0).value<QList<qint64>>(), (QList<qint64>{a, a1, a11, a2}));
    QCOMPARE(model.count(), 1);
    QCOMPARE(model.childs(0), QList<qint64>{b});
    QVERIFY(!model.contains(a11));
    QVERIFY(!model.removeNode(a));
    QVERIFY(!model.removeNode(0));
    QCOMPARE(removed.count(), 1);
}

void tst_ZCommonTreeModel::removeChilds()
{
    ZCommonTreeModel model;
    const qint64 a = model.addChild(0, "a");
    const qint64 a1 = model.addChild(a, "a1");
    const qint64 a11 = model.addChild(a1, "a11");
    const qint64 b = model.addChild(0, "b");
    QSignalSpy removed(&model, &ZCommonTreeModel::itemsRemoved);
    QVERIFY(model.removeChilds(a));
    QCOMPARE(removed.at(0).at(0).value<QList<qint64>>(), (QList<qint64>{a1, a11}));
    QVERIFY(model.contains(a));
    QCOMPARE(model.childCount(a), 0);
    QVERIFY(!model.removeChilds(a));
    QVERIFY(model.removeChilds(0));
    QCOMPARE(removed.at(1).at(0).value<QList<qint64>>(), (QList<qint64>{a, b}));
    QVERIFY(model.isEmpty());
}

void tst_ZCommonTreeModel::removeAllResets()
{
    ZCommonTreeModel model;
    const qint64 a = model.addChild(0, "a");
    model.addChild(a, "b");
    QSignalSpy reset(&model, &ZCommonTreeModel::modelReset);
    QSignalSpy removed(&model, &ZCommonTreeModel::itemsRemoved);
    model.removeAll();
    QCOMPARE(reset.count(), 1);
    QCOMPARE(removed.count(), 0);
    QCOMPARE(model.count(), 0);
    QCOMPARE(model.firstChild(0), qint64(0));
}

void tst_ZCommonTreeModel::siblingsNavigation()
{
    ZCommonTreeModel model;
    const qint64 a = model.addChild(0, "a");
    const qint64 b = model.addChild(0, "b");
    const qint64 c = model.addChild(0, "c");
    QCOMPARE(model.firstChild(0), a);
    QCOMPARE(model.nextSibling(a), b);
    QCOMPARE(model.previousSibling(c), b);
    QVERIFY(!model.hasPreviousSibling(a));
    QVERIFY(!model.hasNextSibling(c));
    QVERIFY(model.hasNextSibling(b));
    QCOMPARE(model.nextSibling(777), qint64(0));
    QCOMPARE(model.firstChild(a), qint64(0));
}

void tst_ZCommonTreeModel::moves_data()
{
    QTest::addColumn<QString>("move");
    QTest::addColumn<int>("node");
    QTest::addColumn<bool>("moved");
    QTest::addColumn<QStringList>("top");
    QTest::addColumn<QStringList>("underB");

    const QStringList base{"a", "b", "c"};
    QTest::newRow("front") << "front" << 2 << true << QStringList{"c", "a", "b"} << QStringList{"b1", "b2"};
    QTest::newRow("front of first") << "front" << 0 << false << base << QStringList{"b1", "b2"};
    QTest::newRow("back") << "back" << 0 << true << QStringList{"b", "c", "a"} << QStringList{"b1", "b2"};
    QTest::newRow("back of last") << "back" << 2 << false << base << QStringList{"b1", "b2"};
    QTest::newRow("next") << "next" << 0 << true << QStringList{"b", "a", "c"} << QStringList{"b1", "b2"};
    QTest::newRow("next of last") << "next" << 2 << false << base << QStringList{"b1", "b2"};
    QTest::newRow("last") << "last" << 2 << true << QStringList{"a", "c", "b"} << QStringList{"b1", "b2"};
    QTest::newRow("last of first") << "last" << 0 << false << base << QStringList{"b1", "b2"};
    QTest::newRow("parent of top") << "parent" << 1 << false << base << QStringList{"b1", "b2"};
    QTest::newRow("parent") << "parent" << 3 << true << QStringList{"a", "b", "b1", "c"} << QStringList{"b2"};
    QTest::newRow("child") << "child" << 2 << true << QStringList{"a", "b"} << QStringList{"b1", "b2", "c"};
    QTest::newRow("child of first") << "child" << 0 << false << base << QStringList{"b1", "b2"};
    QTest::newRow("unknown") << "front" << -1 << false << base << QStringList{"b1", "b2"};
}

void tst_ZCommonTreeModel::moves()
{
    QFETCH(QString, move);
    QFETCH(int, node);
    QFETCH(bool, moved);
    QFETCH(QStringList, top);
    QFETCH(QStringList, underB);

    ZCommonTreeModel model;
    const qint64 a = model.addChild(0, "a");
    const qint64 b = model.addChild(0, "b");
    const qint64 c = model.addChild(0, "c");
    const qint64 b1 = model.addChild(b, "b1");
    model.addChild(b, "b2");
    const qint64 nodes[] = {a, b, c, b1};
    const qint64 id = node < 0 ? 31337 : nodes[node];
    QSignalSpy reset(&model, &ZCommonTreeModel::modelReset);

    bool result = false;
    if (move == "front")
        result = model.moveToFront(id);
    else if (move == "back")
        result = model.moveToBack(id);
    else if (move == "next")
        result = model.moveToNext(id);
    else if (move == "last")
        result = model.moveToLast(id);
    else if (move == "parent")
        result = model.moveToParent(id);
    else if (move == "child")
        result = model.moveToChild(id);
    QCOMPARE(result, moved);
    QCOMPARE(reset.count(), moved ? 1 : 0);
    QCOMPARE(texts(model, 0), top);
    QCOMPARE(texts(model, b), underB);
    QCOMPARE(model.count(), 5);
}

void tst_ZCommonTreeModel::moveToChildGuards()
{
    ZCommonTreeModel model;
    const qint64 a = model.addChild(0, "a");
    const qint64 a1 = model.addChild(a, "a1");
    const qint64 a11 = model.addChild(a1, "a11");
    const qint64 b = model.addChild(0, "b");
    QSignalSpy reset(&model, &ZCommonTreeModel::modelReset);
    QVERIFY(!model.moveToChild(a, a11)); // into its own subtree
    QVERIFY(!model.moveToChild(a, a));
    QVERIFY(!model.moveToChild(a, 5555));
    QVERIFY(!model.moveToChild(b, 0)); // already the root's last child
    QCOMPARE(reset.count(), 0);
    QVERIFY(model.moveToChild(a1, b));
    QCOMPARE(model.parent(a1), b);
    QCOMPARE(model.nodeDepth(a11), 3);
    QVERIFY(model.moveToChild(a11, 0));
    QCOMPARE(model.childs(0), (QList<qint64>{a, b, a11}));
    QCOMPARE(model.nodeDepth(a11), 1);
    QCOMPARE(reset.count(), 2);
}

void tst_ZCommonTreeModel::enumTreeOrder()
{
    ZCommonTreeModel model;
    const qint64 a = model.addChild(0, "a");
    const qint64 a1 = model.addChild(a, "a1");
    const qint64 a11 = model.addChild(a1, "a11");
    const qint64 a2 = model.addChild(a, "a2");
    const qint64 b = model.addChild(0, "b");

    Collector all;
    model.enumTree(0, &all);
    QCOMPARE(all.ids, (QList<qint64>{a, a1, a11, a2, b}));
    QCOMPARE(all.depths, (QList<int>{1, 2, 3, 2, 1}));

    Collector sub;
    model.enumTree(a1, &sub);
    QCOMPARE(sub.ids, QList<qint64>{a11});

    Collector stop;
    stop.limit = 2;
    model.enumTree(0, &stop);
    QCOMPARE(stop.ids.size(), 2);

    Collector none;
    model.enumTree(999, &none);
    model.enumTree(0, nullptr);
    QVERIFY(none.ids.isEmpty());
}

// A long chain must neither overflow the stack nor leak.
void tst_ZCommonTreeModel::deepChain()
{
    ZCommonTreeModel model;
    qint64 parent = 0;
    const qint64 first = model.addChild(0, "0");
    parent = first;
    for (int i = 1; i < 100000; ++i)
        parent = model.addChild(parent, QString::number(i));
    QCOMPARE(model.count(), 100000);
    Collector all;
    model.enumTree(0, &all);
    QCOMPARE(all.ids.size(), 100000);
    QSignalSpy removed(&model, &ZCommonTreeModel::itemsRemoved);
    QVERIFY(model.removeNode(first));
    QCOMPARE(removed.at(0).at(0).value<QList<qint64>>().size(), 100000);
    QVERIFY(model.isEmpty());
}

void tst_ZCommonTreeModel::setDataReportsRoles()
{
    ZCommonTreeModel model;
    const qint64 a = model.addChild(0, "a", QVariant(1));
    QSignalSpy changed(&model, &ZCommonTreeModel::itemsChanged);
    QMap<Qt::ItemDataRole, QVariant> data = model.data(a);
    QVERIFY(model.setData(a, data));
    QCOMPARE(changed.count(), 0);
    data[Qt::DisplayRole] = "b";
    data[Qt::ToolTipRole] = "tip";
    QVERIFY(model.setData(a, data));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).value<QList<qint64>>(), QList<qint64>{a});
    QCOMPARE(changed.at(0).at(1).value<QList<Qt::ItemDataRole>>(),
             (QList<Qt::ItemDataRole>{Qt::DisplayRole, Qt::ToolTipRole}));
    QVERIFY(!model.setData(4444, data));
}

QTEST_GUILESS_MAIN(tst_ZCommonTreeModel)
#include "tst_zcommontreemodel.moc"
