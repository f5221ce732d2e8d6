#include "common/scenetest.h"

#include "zcommonlistmodel.h"
#include "zcommonlistwidget.h"
#include "zlabel.h"
#include "zlistitem.h"
#include "zlistitemcreator.h"
#include "zscrollbar.h"

#include <QtTest/QtTest>

using namespace scenetest;

namespace {

// Counts its bindings and live copies, and answers one action.
class CountingItem : public ZListItem
{
public:
    explicit CountingItem(ZListWidget *view) : ZListItem(view) { ++alive; }
    ~CountingItem() override { --alive; }
    void itemReset() override
    {
        ++resets;
        ZListItem::itemReset();
    }
    bool setAction(int action, const QVariant &param, QVariant &result) override
    {
        if (action != 7)
            return false;
        result = itemText() + param.toString();
        return true;
    }
    int resets = 0;
    static int alive;
};
int CountingItem::alive = 0;

// Rows with icons, which the common model never stores.
class IconModel : public ZAbstractListModel
{
public:
    int count() const override { return 3; }
    QMap<Qt::ItemDataRole, QVariant> data(int index) const override
    {
        QMap<Qt::ItemDataRole, QVariant> row{{Qt::DisplayRole, QString("i%1").arg(index)}};
        if (index != 1)
            row.insert(Qt::DecorationRole, QString(":/image/theme/comboboxbutton_icon.png"));
        return row;
    }
    void reset() { Q_EMIT modelReset(); }
};

const QColor plain(255, 255, 255), chosen(250, 250, 176), hovered(250, 250, 206);

} // namespace

class tst_ZListWidget : public QObject
{
    Q_OBJECT

    QGraphicsScene *m_scene = nullptr;
    ZListWidget *m_list = nullptr;
    ZCommonListModel *m_model = nullptr;

    void fill(int rows)
    {
        m_model->batchInsert();
        for (int i = 0; i < rows; ++i)
            m_model->addItem(QString("row %1").arg(i));
        m_model->batchCommit();
        settle();
    }
    ZScrollBar *bar() const { return qobject_cast<ZScrollBar *>(m_list->verticalScrollBar()); }
    QColor background(int row) const { return m_list->visibleItem(row)->backgroundColor(); }
    int itemChildren() const
    {
        int n = 0;
        for (QGraphicsItem *child : m_list->childItems())
            n += dynamic_cast<ZListItem *>(child) ? 1 : 0;
        return n;
    }
    // Every visible row has an item bound to it at the row's place.
    void checkRows(int selected = -1, int selectedHeight = 20)
    {
        const int first = m_list->firstVisibleIndex();
        for (int row = first; row < first + m_list->visibleItemCount(); ++row) {
            ZListItem *item = m_list->visibleItem(row);
            QVERIFY2(item, qPrintable(QString("row %1 has no item").arg(row)));
            QCOMPARE(item->index(), row);
            QCOMPARE(item->itemText(), QString("row %1").arg(row));
            const qreal top = row * 20.0 - m_list->scrollValue() + (selected >= 0 && row > selected ? selectedHeight - 20 : 0);
            QCOMPARE(item->geometry().top(), top);
            QCOMPARE(item->geometry().height(), row == selected ? qreal(selectedHeight) : 20.0);
            QVERIFY(item->isVisible());
        }
    }

private Q_SLOTS:
    void init()
    {
        m_scene = new QGraphicsScene(0, 0, 400, 400);
        m_model = new ZCommonListModel;
        m_list = new ZListWidget;
        m_scene->addItem(m_list);
        m_list->setItemCreator(new ZListItemCreatorT<CountingItem>);
        m_list->setModel(m_model);
        m_list->resize(300, 200);
    }

    void cleanup()
    {
        delete m_scene;
        delete m_model;
        QCOMPARE(CountingItem::alive, 0);
    }

    void manyRowsFewItems_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("scroll");
        QTest::newRow("few rows, no bar") << 5 << 0;
        for (int v : {0, 19, 20, 1234, 199800, 199810, 250000})
            QTest::newRow(qPrintable(QString::number(v))) << 10000 << v;
    }

    void manyRowsFewItems()
    {
        QFETCH(int, rows);
        QFETCH(int, scroll);
        fill(rows);
        if (rows * 20 <= 200) {
            QVERIFY(!bar());
            QCOMPARE(m_list->visibleRect(), QRectF(0, 0, 300, 200));
            QCOMPARE(m_list->visibleItemCount(), rows);
            QCOMPARE(m_list->visibleItem(0)->geometry().width(), 300.0);
            return checkRows();
        }
        QVERIFY(bar() && bar()->isVisible());
        QCOMPARE(bar()->maximum(), rows * 20 - 200 + 10.0);
        QCOMPARE(bar()->singleStep(), 20.0);
        QCOMPARE(bar()->pageStep(), 180.0);
        QCOMPARE(m_list->visibleRect(), QRectF(0, 0, 300 - 18, 200));
        bar()->setValue(scroll);
        settle();
        const int value = qMin(scroll, 199810);
        QCOMPARE(m_list->scrollValue(), value);
        QCOMPARE(m_list->firstVisibleIndex(), value / 20);
        // Ten rows when the top is aligned, else eleven partly shown; fewer at the end.
        QCOMPARE(m_list->visibleItemCount(), qMin(9999, (value + 200 - 1) / 20) - value / 20 + 1);
        checkRows();
        QVERIFY(itemChildren() <= 11 + 3);
    }

    void firstRowSearch_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("selected");
        QTest::addColumn<int>("scroll");
        // Selections inside coarse steps, before, at and after the top.
        QTest::newRow("sel inside, after top") << 100000 << 54321 << 500000;
        QTest::newRow("sel inside, before top") << 100000 << 4321 << 500000;
        QTest::newRow("sel at top") << 100000 << 25001 << 500020;
        QTest::newRow("sel just above") << 100000 << 24999 << 500000;
        QTest::newRow("small model") << 29 << 3 << 200;
        QTest::newRow("exactly thirty") << 30 << 17 << 400;
        QTest::newRow("no selection") << 300000 << -1 << 4345678;
    }

    void firstRowSearch()
    {
        QFETCH(int, rows);
        QFETCH(int, selected);
        QFETCH(int, scroll);
        fill(rows);
        m_list->setItemHeight(20, 40);
        m_list->setSelectIndex(selected);
        settle();
        bar()->setValue(scroll);
        settle();
        // The first row whose bottom is below the top, by a plain walk.
        int expected = 0;
        for (qint64 y = -scroll; expected < rows; ++expected) {
            y += expected == selected ? 40 : 20;
            if (y > 0)
                break;
        }
        QCOMPARE(m_list->firstVisibleIndex(), expected);
        checkRows(selected, 40);
    }

    // Rows that stay in view keep their items; those that leave give theirs to those that come.
    void scrollKeepsStayingItems()
    {
        fill(1000);
        ZListItem *ninth = m_list->visibleItem(9);
        for (int row = 0; row < 10; ++row)
            static_cast<CountingItem *>(m_list->visibleItem(row))->resets = 0;
        bar()->setValue(180);
        settle();
        QCOMPARE(m_list->firstVisibleIndex(), 9);
        QCOMPARE(m_list->visibleItem(9), ninth);
        QCOMPARE(static_cast<CountingItem *>(ninth)->resets, 0);
        int rebound = 0;
        for (int row = 10; row < 19; ++row)
            rebound += static_cast<CountingItem *>(m_list->visibleItem(row))->resets;
        QCOMPARE(rebound, 9);
        checkRows();
        QCOMPARE(itemChildren(), 10);
    }

    void selectedRowHeight()
    {
        fill(10000);
        const qreal maxBefore = bar()->maximum();
        m_list->setSelectIndex(5);
        m_list->setItemHeight(20, 40);
        settle();
        QCOMPARE(m_list->itemsHeight(), 10000 * 20 + 20);
        QCOMPARE(bar()->maximum(), maxBefore + 20);
        QCOMPARE(m_list->visibleItem(5)->geometry(), QRectF(0, 100, 282, 40));
        QCOMPARE(background(5), chosen);
        QCOMPARE(background(4), plain);
        checkRows(5, 40);
        QCOMPARE(m_list->visibleItemCount(), 9);
    }

    // Changes are laid out once, on the next turn; an item keeps its data while
    // its row number stays visible, even across a reset.
    void deferredRebinding()
    {
        fill(3);
        ZListItem *first = m_list->visibleItem(0);
        m_model->setItemsText("a|b|c|d");
        m_model->setItemsText("a|b|c|d|e");
        m_list->setSelectIndex(1);
        m_list->clearSelected();
        QCOMPARE(m_list->visibleItemCount(), 3);
        settle();
        QCOMPARE(m_list->visibleItemCount(), 5);
        QCOMPARE(m_list->visibleItem(0), first);
        QCOMPARE(first->itemText(), QString("row 0"));
        QCOMPARE(m_list->visibleItem(3)->itemText(), QString("d"));
        m_model->removeItem(0);
        settle();
        QCOMPARE(m_list->visibleItem(0)->itemText(), QString("row 0"));
        m_model->removeAll();
        settle();
        m_model->setItemsText("p|q");
        settle();
        QCOMPARE(m_list->visibleItem(0)->itemText(), QString("p"));
    }

    // An emptied model hides its items and keeps three in the pool, used again first.
    void removeAllReleases()
    {
        fill(100);
        bar()->setValue(30);
        settle();
        QCOMPARE(itemChildren(), 11);
        m_model->removeAll();
        settle();
        QCOMPARE(m_list->visibleItemCount(), 0);
        QCOMPARE(m_list->itemCreator()->poolSize(), 3);
        QCOMPARE(CountingItem::alive, 3);
        for (QGraphicsItem *child : m_list->childItems())
            QVERIFY(!dynamic_cast<ZListItem *>(child) || !child->isVisible());
        QVERIFY(!bar()->isVisible());
        QCOMPARE(m_list->scrollValue(), 0);
        fill(2);
        QCOMPARE(CountingItem::alive, 3);
        QCOMPARE(m_list->itemCreator()->poolSize(), 1);
    }

    void mouse()
    {
        fill(10);
        QSignalSpy item(m_list, &ZListWidget::itemClicked);
        QSignalSpy empty(m_list, &ZListWidget::clicked);
        QSignalSpy dbl(m_list, &ZListWidget::itemDbClicked);
        QStringList order;
        connect(m_list, &ZListWidget::indexChanged, this, [&order](int i) { order << QString("index %1").arg(i); });
        connect(m_list, &ZListWidget::itemClicked, this, [&order](int i) { order << QString("item %1").arg(i); });
        click(*m_scene, QPointF(50, 45));
        click(*m_scene, QPointF(50, 45));
        QCOMPARE(order, (QStringList{"index 2", "item 2", "item 2"}));
        QCOMPARE(background(2), chosen);
        click(*m_scene, QPointF(50, 105), Qt::RightButton);
        QCOMPARE(m_list->selectIndex(), 5);
        QCOMPARE(item.last().at(1).value<Qt::MouseButton>(), Qt::RightButton);
        QCOMPARE(background(2), plain);
        Mouse(*m_scene).doubleClick(QPointF(20, 65));
        QCOMPARE(dbl.count(), 1);
        QCOMPARE(dbl.at(0).at(0).toInt(), 3);
        QCOMPARE(empty.count(), 0);
        // Below the rows: a plain click, the selection stays; the middle button is not taken.
        m_model->setItemsText("a|b|c");
        m_list->setSelectIndex(1);
        settle();
        item.clear();
        click(*m_scene, QPointF(50, 150));
        QCOMPARE(empty.count(), 1);
        QCOMPARE(empty.at(0).at(0).value<Qt::MouseButton>(), Qt::LeftButton);
        click(*m_scene, QPointF(50, 10), Qt::MiddleButton);
        QCOMPARE(empty.count(), 1);
        Mouse(*m_scene).doubleClick(QPointF(20, 150));
        QCOMPARE(item.count(), 0);
        QCOMPARE(dbl.count(), 1);
        QCOMPARE(m_list->selectIndex(), 1);
        // A taller selection is laid out on the next turn.
        m_list->setItemHeight(20, 30);
        click(*m_scene, QPointF(50, 15));
        settle();
        QCOMPARE(m_list->visibleItem(1)->geometry().top(), 30.0);
    }

    void wheelScrolls()
    {
        fill(5);
        wheel(*m_scene, QPointF(50, 50), -120); // no scroll bar: nothing to do
        settle();
        QCOMPARE(m_list->scrollValue(), 0);
        fill(100);
        wheel(*m_scene, QPointF(50, 50), -120);
        settle();
        const int down = m_list->scrollValue();
        QVERIFY(down > 0);
        QCOMPARE(m_list->firstVisibleIndex(), down / 20);
        wheel(*m_scene, QPointF(50, 50), 120);
        settle();
        QVERIFY(m_list->scrollValue() < down);
    }

    void hoverBackground()
    {
        fill(5);
        m_list->setSelectIndex(0);
        settle();
        Mouse mouse(*m_scene);
        mouse.move(QPointF(40, 30));
        QCOMPARE(background(1), hovered);
        mouse.move(QPointF(40, 50));
        QCOMPARE(background(1), plain);
        QCOMPARE(background(2), hovered);
        // The selected row keeps its look under the pointer.
        mouse.move(QPointF(40, 10));
        QCOMPARE(background(0), chosen);
        // A pass keeps the hovered look of the item under the pointer.
        mouse.move(QPointF(40, 70));
        m_list->setItemBackgroundVariant(QColor(Qt::red), QColor(Qt::green), QColor(Qt::blue));
        settle();
        QCOMPARE(background(3), QColor(Qt::blue));
        QCOMPARE(background(0), QColor(Qt::green));
        QCOMPARE(background(4), QColor(Qt::red));
        // Documents give colour names; backgrounds that are no colour leave the default look alone.
        m_list->setItemSelectedBackgroundVariant(QString("#00ff00"));
        QCOMPARE(m_list->itemSelectedBackgroundVariant(), QVariant(QColor(0, 255, 0)));
        m_list->setItemBackgroundVariant(QString("img.png"), QVariant(), 5);
        settle();
        QCOMPARE(background(4), QColor(Qt::red));
    }

    void lookups()
    {
        fill(100);
        QVariant result;
        QVERIFY(m_list->tryToSetAction(3, 7, QString("!"), result));
        QCOMPARE(result.toString(), QString("row 3!"));
        QVERIFY(!m_list->tryToSetAction(3, 8, QVariant(), result));
        QVERIFY(!m_list->tryToSetAction(50, 7, QVariant(), result)); // no item for the row
        QVERIFY(!m_list->tryToSetAction(-1, 7, QVariant(), result));
        m_model->setItemsText("a|b|a|A");
        QCOMPARE(m_list->indexOfText("a"), 0);
        QCOMPARE(m_list->findOneIndexByText("A"), 3);
        QCOMPARE(m_list->findAllIndexByText("a"), (QList<int>{0, 2}));
        QCOMPARE(m_list->indexOfText("c"), -1);
        QVERIFY(m_list->findAllIndexByText("").isEmpty());
        QVERIFY(m_list->itemData(9).isEmpty());
    }

    // Icon first, then the text, three apart; rows without an icon have none.
    void iconsFromModel()
    {
        IconModel icons;
        m_list->setModel(&icons);
        icons.reset();
        settle();
        ZListItem *with = m_list->visibleItem(0);
        auto *icon = qobject_cast<ZWidget *>(with->iconItem());
        auto *label = qobject_cast<ZLabel *>(with->textLabel());
        QVERIFY(icon && label);
        QCOMPARE(icon->fixWidth(), 9.0); // the image's width
        QCOMPARE(label->text(), QString("i0"));
        QVERIFY(icon->geometry().right() <= label->geometry().left() - 3 + 0.5);
        QVERIFY(!m_list->visibleItem(1)->iconItem());
        m_list->setModel(m_model);
    }

    void hiddenArea()
    {
        m_list->setContentHiddenArea(-5, -5);
        QCOMPARE(m_list->contentHiddenTop(), 0);
        QCOMPARE(m_list->contentHiddenBottom(), 0);
        fill(100);
        QCOMPARE(bar()->maximum(), 2000.0 - 200);
        m_list->setContentHiddenArea(7, 50);
        settle();
        QCOMPARE(bar()->maximum(), 2000.0 - 200 + 50);
    }

    void setSelectIndexRules()
    {
        fill(4);
        QSignalSpy index(m_list, &ZListWidget::indexChanged);
        m_list->setSelectIndex(4);
        m_list->setSelectIndex(-1);
        m_list->setSelectIndex(2);
        m_list->setSelectIndex(2);
        QCOMPARE(index.count(), 1);
        m_list->clearSelected();
        QCOMPARE(m_list->selectIndex(), -1);
        QCOMPARE(index.count(), 1);
        // Removing rows does not move the selection; out of range it is not laid out.
        m_list->setSelectIndex(3);
        m_list->setItemHeight(20, 50);
        m_model->removeItem(3);
        settle();
        QCOMPARE(m_list->selectIndex(), 3);
        QCOMPARE(m_list->itemsHeight(), 60);
        // A reset clears it.
        m_model->setItemsText("x");
        settle();
        QCOMPARE(m_list->selectIndex(), -1);
    }

    void modelSwap()
    {
        fill(3);
        ZCommonListModel other;
        other.setItemsText("o1|o2");
        QCOMPARE(m_list->setModel(&other), static_cast<ZAbstractListModel *>(m_model));
        QCOMPARE(m_list->count(), 2);
        // The old model no longer drives the view.
        m_model->setItemsText("");
        other.addItem("o3");
        settle();
        QCOMPARE(m_list->visibleItemCount(), 3);
        // A destroyed model leaves an empty view.
        auto *temp = new ZCommonListModel;
        temp->setItemsText("t");
        m_list->setModel(temp);
        delete temp;
        QCOMPARE(m_list->count(), 0);
        m_list->setSelectIndex(0);
        QCOMPARE(m_list->selectIndex(), -1);
        QCOMPARE(m_list->setModel(m_model), nullptr);
    }

    void badHeights()
    {
        fill(50);
        m_list->setItemHeight(-3, 0);
        settle();
        QCOMPARE(m_list->itemHeight(), 1);
        QCOMPARE(m_list->selectedItemHeight(), 1);
        QCOMPARE(m_list->visibleItemCount(), 50);
        m_list->setItemHeight(INT_MAX, INT_MAX);
        settle();
        QCOMPARE(m_list->itemHeight(), 65536);
        QVERIFY(m_list->itemsHeight() > 0);
        QCOMPARE(m_list->visibleItemCount(), 1);
        bar()->setValue(qQNaN());
        bar()->setValue(1e300);
        settle();
        QVERIFY(m_list->visibleItemCount() >= 1 && m_list->visibleItemCount() <= 2);
    }

    // The selected row's colour and the row texts reach the pixels, scrolled.
    void renders()
    {
        delete m_list;
        m_list = new ZCommonListWidget;
        m_scene->addItem(m_list);
        m_list->resize(300, 200);
        auto *list = static_cast<ZCommonListWidget *>(m_list);
        list->setItemBackgroundVariant(plain, QColor(0, 0, 255), QColor(0, 255, 0));
        for (int i = 0; i < 200; ++i)
            list->addItem(QString("row %1").arg(i));
        list->setSelectIndex(2);
        settle();
        bar()->setValue(10);
        settle();
        const QImage image = render(*m_scene, QSize(300, 200));
        // Row 2 spans y 30 .. 50 after scrolling by 10.
        const QRect selected = boxOf(image, QColor(0, 0, 255));
        QCOMPARE(selected.top(), 30);
        QCOMPARE(selected.bottom(), 49);
        QVERIFY(selected.width() > 200);
        QVERIFY(countOf(image.copy(0, 0, 150, 10), [](QColor c) { return c.lightness() < 128; }) > 5);
    }
};

QTEST_MAIN(tst_ZListWidget)
#include "tst_zlistwidget.moc"
