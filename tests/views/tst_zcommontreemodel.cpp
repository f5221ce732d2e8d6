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

QList<qint64> reported(const QSignalSpy &spy, int at)
{
    return spy.at(at).at(0).value<QList<qint64>>();
}

} // namespace

class tst_ZCommonTreeModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Ids are time << 16 plus a counter stepping by one, never 0, never repeated.
    void ids()
    {
        const qint64 before = QDateTime::currentMSecsSinceEpoch();
        qint64 a = 0, b = 0;
        for (int tries = 0; tries < 100 && (a == 0 || (a >> 16) != (b >> 16)); ++tries) {
            a = ZCommonTreeModel::createId();
            b = ZCommonTreeModel::createId();
        }
        QCOMPARE(b - a, qint64(1));
        QVERIFY((a >> 16) >= before - 1 && (a >> 16) <= QDateTime::currentMSecsSinceEpoch() + 1);
        ZCommonTreeModel model;
        QSet<qint64> seen;
        for (int i = 0; i < 1000; ++i)
            seen.insert(model.addChild(0, QString::number(i)));
        QCOMPARE(seen.size(), 1000);
        QVERIFY(!seen.contains(0));
    }

    void structure()
    {
        ZCommonTreeModel model;
        QSignalSpy inserted(&model, &ZCommonTreeModel::itemsInserted);
        const qint64 p = model.addChild(0, "p", QVariant(3));
        const qint64 b = model.addChild(p, "b", "icon.png", QVariant());
        model.insertBefore(b, "a");
        const qint64 c = model.insertAfter(b, "c", "", QVariant("u"));
        model.insertBefore(p, "top");
        QCOMPARE(texts(model, p), (QStringList{"a", "b", "c"}));
        QCOMPARE(texts(model, 0), (QStringList{"top", "p"}));
        QCOMPARE(inserted.count(), 5);
        QCOMPARE(reported(inserted, 3), QList<qint64>{c});
        QCOMPARE(model.count(), 5);
        QCOMPARE(model.childCount(p), 3);
        QCOMPARE(model.parent(c), p);
        QCOMPARE(model.parent(p), qint64(0));
        QCOMPARE(model.nodeDepth(0), 0);
        QCOMPARE(model.nodeDepth(c), 2);
        QCOMPARE(model.nodeDepth(12345), -1);
        QVERIFY(model.hasChildren(p) && !model.hasChildren(c));
        // Siblings.
        QCOMPARE(model.firstChild(p), model.previousSibling(b));
        QCOMPARE(model.nextSibling(b), c);
        QVERIFY(!model.hasPreviousSibling(model.firstChild(p)));
        QVERIFY(!model.hasNextSibling(c) && model.hasNextSibling(b));
        QCOMPARE(model.nextSibling(777), qint64(0));
        QCOMPARE(model.firstChild(c), qint64(0));
        // Values under role 33; an icon is kept only when empty.
        QCOMPARE(model.data(p).value(Qt::ItemDataRole(33)).toInt(), 3);
        QVERIFY(!model.data(b).contains(Qt::DecorationRole));
        QCOMPARE(model.data(c).value(Qt::DecorationRole), QVariant(QString("")));
        QCOMPARE(model.data(c).value(Qt::ItemDataRole(33)).toString(), QString("u"));
        QVERIFY(model.data(999).isEmpty());
        // Unknown places add nothing.
        QCOMPARE(model.addChild(424242, "x"), qint64(0));
        QCOMPARE(model.insertBefore(424242, "x"), qint64(0));
        QCOMPARE(model.insertAfter(0, "x"), qint64(0));
        QCOMPARE(inserted.count(), 5);
    }

    void batch()
    {
        ZCommonTreeModel model;
        QSignalSpy inserted(&model, &ZCommonTreeModel::itemsInserted);
        model.batchInsert();
        const qint64 a = model.addChild(0, "a");
        const qint64 b = model.addChild(a, "b");
        const qint64 c = model.addChild(0, "c");
        QCOMPARE(inserted.count(), 0);
        QCOMPARE(model.batchCommit(), (QList<qint64>{a, b, c}));
        QCOMPARE(reported(inserted, 0), (QList<qint64>{a, b, c}));
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

    // A removal reports the node and its subtree in tree order; removeAll resets.
    void removal()
    {
        ZCommonTreeModel model;
        const qint64 a = model.addChild(0, "a");
        const qint64 a1 = model.addChild(a, "a1");
        const qint64 a11 = model.addChild(a1, "a11");
        const qint64 a2 = model.addChild(a, "a2");
        const qint64 b = model.addChild(0, "b");
        const qint64 c = model.addChild(0, "c");
        const qint64 c1 = model.addChild(c, "c1");
        QSignalSpy removed(&model, &ZCommonTreeModel::itemsRemoved);
        QVERIFY(model.removeChilds(a1));
        QCOMPARE(reported(removed, 0), QList<qint64>{a11});
        QVERIFY(!model.removeChilds(a1));
        QVERIFY(model.removeNode(a));
        QCOMPARE(reported(removed, 1), (QList<qint64>{a, a1, a2}));
        QVERIFY(!model.contains(a2));
        QVERIFY(!model.removeNode(a));
        QVERIFY(!model.removeNode(0));
        QCOMPARE(removed.count(), 2);
        QCOMPARE(model.childs(0), (QList<qint64>{b, c}));
        QVERIFY(model.removeChilds(0));
        QCOMPARE(reported(removed, 2), (QList<qint64>{b, c, c1}));
        QVERIFY(model.isEmpty());

        model.addChild(model.addChild(0, "x"), "y");
        QSignalSpy reset(&model, &ZCommonTreeModel::modelReset);
        model.removeAll();
        QCOMPARE(reset.count(), 1);
        QCOMPARE(removed.count(), 3);
        QCOMPARE(model.count(), 0);
        QCOMPARE(model.firstChild(0), qint64(0));
    }

    void moves_data()
    {
        QTest::addColumn<QString>("move");
        QTest::addColumn<int>("node");
        QTest::addColumn<bool>("moved");
        QTest::addColumn<QStringList>("top");
        QTest::addColumn<QStringList>("underB");

        const QStringList base{"a", "b", "c"}, bs{"b1", "b2"};
        QTest::newRow("front") << "front" << 2 << true << QStringList{"c", "a", "b"} << bs;
        QTest::newRow("front of first") << "front" << 0 << false << base << bs;
        QTest::newRow("back") << "back" << 0 << true << QStringList{"b", "c", "a"} << bs;
        QTest::newRow("back of last") << "back" << 2 << false << base << bs;
        QTest::newRow("next") << "next" << 0 << true << QStringList{"b", "a", "c"} << bs;
        QTest::newRow("next of last") << "next" << 2 << false << base << bs;
        QTest::newRow("last") << "last" << 2 << true << QStringList{"a", "c", "b"} << bs;
        QTest::newRow("last of first") << "last" << 0 << false << base << bs;
        QTest::newRow("parent of top") << "parent" << 1 << false << base << bs;
        QTest::newRow("parent") << "parent" << 3 << true << QStringList{"a", "b", "b1", "c"} << QStringList{"b2"};
        QTest::newRow("child") << "child" << 2 << true << QStringList{"a", "b"} << QStringList{"b1", "b2", "c"};
        QTest::newRow("child of first") << "child" << 0 << false << base << bs;
        QTest::newRow("unknown") << "front" << -1 << false << base << bs;
    }

    void moves()
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
        const QHash<QString, std::function<bool(qint64)>> moves{
            {"front", [&](qint64 n) { return model.moveToFront(n); }},
            {"back", [&](qint64 n) { return model.moveToBack(n); }},
            {"next", [&](qint64 n) { return model.moveToNext(n); }},
            {"last", [&](qint64 n) { return model.moveToLast(n); }},
            {"parent", [&](qint64 n) { return model.moveToParent(n); }},
            {"child", [&](qint64 n) { return model.moveToChild(n); }}};
        QCOMPARE(moves.value(move)(id), moved);
        QCOMPARE(reset.count(), moved ? 1 : 0);
        QCOMPARE(texts(model, 0), top);
        QCOMPARE(texts(model, b), underB);
        QCOMPARE(model.count(), 5);
    }

    void moveToChildGuards()
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

    void enumTreeOrder()
    {
        ZCommonTreeModel model;
        const qint64 a = model.addChild(0, "a");
        const qint64 a1 = model.addChild(a, "a1");
        const qint64 a11 = model.addChild(a1, "a11");
        const qint64 a2 = model.addChild(a, "a2");
        const qint64 b = model.addChild(0, "b");
        Collector all, sub, stop, none;
        model.enumTree(0, &all);
        QCOMPARE(all.ids, (QList<qint64>{a, a1, a11, a2, b}));
        QCOMPARE(all.depths, (QList<int>{1, 2, 3, 2, 1}));
        model.enumTree(a1, &sub);
        QCOMPARE(sub.ids, QList<qint64>{a11});
        stop.limit = 2;
        model.enumTree(0, &stop);
        QCOMPARE(stop.ids.size(), 2);
        model.enumTree(999, &none);
        model.enumTree(0, nullptr);
        QVERIFY(none.ids.isEmpty());
    }

    // A long chain must neither overflow the stack nor leak.
    void deepChain()
    {
        ZCommonTreeModel model;
        const qint64 first = model.addChild(0, "0");
        qint64 parent = first;
        for (int i = 1; i < 100000; ++i)
            parent = model.addChild(parent, QString::number(i));
        Collector all;
        model.enumTree(0, &all);
        QCOMPARE(all.ids.size(), 100000);
        QSignalSpy removed(&model, &ZCommonTreeModel::itemsRemoved);
        QVERIFY(model.removeNode(first));
        QCOMPARE(reported(removed, 0).size(), 100000);
        QVERIFY(model.isEmpty());
    }

    // Only real changes are reported, with the roles that changed.
    void setDataReportsRoles()
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
        QCOMPARE(reported(changed, 0), QList<qint64>{a});
        QCOMPARE(changed.at(0).at(1).value<QList<Qt::ItemDataRole>>(),
                 (QList<Qt::ItemDataRole>{Qt::DisplayRole, Qt::ToolTipRole}));
        QVERIFY(!model.setData(4444, data));
    }
};

QTEST_GUILESS_MAIN(tst_ZCommonTreeModel)
#include "tst_zcommontreemodel.moc"
