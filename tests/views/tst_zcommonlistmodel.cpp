#include "zcommonlistmodel.h"

#include <QtTest/QtTest>

using RowData = QMap<Qt::ItemDataRole, QVariant>;

class tst_ZCommonListModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itemsTextRoundTrip_data();
    void itemsTextRoundTrip();
    void insertionSignals();
    void batchReportsOneRange();
    void iconRule_data();
    void iconRule();
    void removal();
    void dataOutOfRange();
    void connectsByName();
};

void tst_ZCommonListModel::itemsTextRoundTrip_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("empty middle") << "a||b" << QStringList{"a", "", "b"};
    QTest::newRow("empty text") << "" << QStringList{""};
    QTest::newRow("trailing") << "x|" << QStringList{"x", ""};
    QTest::newRow("case kept") << "A|a" << QStringList{"A", "a"};
    QTest::newRow("unicode") << QString::fromUtf8("范例|b") << QStringList{QString::fromUtf8("范例"), "b"};
}

void tst_ZCommonListModel::itemsTextRoundTrip()
{
    QFETCH(QString, text);
    QFETCH(QStringList, rows);
    ZCommonListModel model;
    model.addItem("old");
    QSignalSpy reset(&model, &ZCommonListModel::modelReset);
    QSignalSpy inserted(&model, &ZCommonListModel::itemsInserted);
    model.setItemsText(text);
    QCOMPARE(reset.count(), 1);
    QCOMPARE(inserted.count(), 0);
    QCOMPARE(model.count(), rows.size());
    for (int i = 0; i < rows.size(); ++i)
        QCOMPARE(model.data(i).value(Qt::DisplayRole).toString(), rows.at(i));
    QCOMPARE(model.itemsText(), text);
}

void tst_ZCommonListModel::insertionSignals()
{
    ZCommonListModel model;
    QSignalSpy inserted(&model, &ZCommonListModel::itemsInserted);
    model.addItem("a");
    model.addItem("b", QVariant(7));
    model.insertItem(1, "c", "", QVariant());
    QCOMPARE(inserted.count(), 3);
    QCOMPARE(inserted.at(0), (QVariantList{0, 1}));
    QCOMPARE(inserted.at(1), (QVariantList{1, 1}));
    QCOMPARE(inserted.at(2), (QVariantList{1, 1}));
    QCOMPARE(model.itemsText(), QString("a|c|b"));
}

void tst_ZCommonListModel::batchReportsOneRange()
{
    ZCommonListModel model;
    model.addItem("x");
    model.addItem("y");
    QSignalSpy inserted(&model, &ZCommonListModel::itemsInserted);
    model.batchInsert();
    QVERIFY(model.inBatch());
    model.addItem("a");
    model.addItem("b");
    model.addItem("c");
    QCOMPARE(inserted.count(), 0);
    QCOMPARE(model.batchCommit(), 3);
    QVERIFY(!model.inBatch());
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(inserted.at(0), (QVariantList{2, 3}));

    // Scattered insertions: the range starts at the first and counts all.
    inserted.clear();
    model.batchInsert();
    model.insertItem(4, "p", "", QVariant());
    model.insertItem(0, "q", "", QVariant());
    QCOMPARE(model.batchCommit(), 2);
    QCOMPARE(inserted.at(0), (QVariantList{4, 2}));

    // Removal ignores the batch.
    QSignalSpy removed(&model, &ZCommonListModel::itemsRemoved);
    model.batchInsert();
    model.removeItem(0);
    QCOMPARE(removed.count(), 1);
    QCOMPARE(model.batchCommit(), 0);

    // An empty batch says nothing; a second batchInsert restarts, and the
    // first rows lose their notice.
    inserted.clear();
    model.batchInsert();
    QCOMPARE(model.batchCommit(), 0);
    model.batchInsert();
    model.addItem("a");
    model.batchInsert();
    model.addItem("c");
    QCOMPARE(model.batchCommit(), 1);
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(inserted.at(0), (QVariantList{7, 1}));
}

void tst_ZCommonListModel::iconRule_data()
{
    QTest::addColumn<QString>("icon");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("hasIcon");
    QTest::addColumn<bool>("hasValue");
    QTest::newRow("icon dropped") << "icon.png" << QVariant() << false << false;
    QTest::newRow("empty icon kept") << "" << QVariant(5) << true << true;
    QTest::newRow("resource icon dropped") << ":/image/theme/x.png" << QVariant("v") << false << true;
}

void tst_ZCommonListModel::iconRule()
{
    QFETCH(QString, icon);
    QFETCH(QVariant, value);
    QFETCH(bool, hasIcon);
    QFETCH(bool, hasValue);
    for (int form = 0; form < 2; ++form) {
        ZCommonListModel model;
        if (form == 0)
            model.addItem("x", icon, value);
        else
            model.insertItem(0, "x", icon, value);
        const RowData row = model.data(0);
        QCOMPARE(row.contains(Qt::DecorationRole), hasIcon);
        if (hasIcon)
            QCOMPARE(row.value(Qt::DecorationRole), QVariant(QString("")));
        QCOMPARE(row.contains(ZAbstractListModel::UserValueRole), hasValue);
        if (hasValue)
            QCOMPARE(row.value(ZAbstractListModel::UserValueRole), value);
    }
}

void tst_ZCommonListModel::removal()
{
    ZCommonListModel model;
    model.setItemsText("a|B|b|B");
    QSignalSpy removed(&model, &ZCommonListModel::itemsRemoved);
    model.removeItem("B");
    QCOMPARE(model.itemsText(), QString("a|b|B"));
    QCOMPARE(removed.at(0), (QVariantList{1, 1}));
    model.removeItem("missing");
    model.removeItem(-1);
    model.removeItem(3);
    QCOMPARE(removed.count(), 1);
    model.removeItem(2);
    QCOMPARE(removed.at(1), (QVariantList{2, 1}));

    QSignalSpy reset(&model, &ZCommonListModel::modelReset);
    model.removeAll();
    QCOMPARE(reset.count(), 1);
    QVERIFY(model.isEmpty());
    QCOMPARE(model.itemsText(), QString());
}

void tst_ZCommonListModel::dataOutOfRange()
{
    ZCommonListModel model;
    model.addItem("a");
    QVERIFY(model.data(-1).isEmpty());
    QVERIFY(model.data(1).isEmpty());
    QVERIFY(model.data(INT_MIN).isEmpty());
    // An index beyond the rows is pinned to the end rather than trusted.
    model.insertItem(99, "b", "", QVariant());
    model.insertItem(-5, "c", "", QVariant());
    QCOMPARE(model.itemsText(), QString("c|a|b"));
}

// Views connect to the change signal by name: its parameter type must be known.
void tst_ZCommonListModel::connectsByName()
{
    ZCommonListModel model;
    QSignalSpy changed(&model, SIGNAL(itemsChanged(int,int,QList<Qt::ItemDataRole>)));
    QVERIFY(changed.isValid());
    QVERIFY(QMetaType::fromName("QList<Qt::ItemDataRole>").isValid());
}

QTEST_GUILESS_MAIN(tst_ZCommonListModel)
#include "tst_zcommonlistmodel.moc"
