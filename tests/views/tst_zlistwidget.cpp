#include "viewtestutil.h"

#include "zcommonlistmodel.h"
#include "zcommonlistwidget.h"
#include "zlabel.h"
#include "zlistitem.h"
#include "zlistitemcreator.h"
#include "zscrollbar.h"
#include "zxmlui.h"

#include <QtTest/QtTest>

using namespace viewtest;

namespace {

// Counts its bindings, and answers one action, to see what the view does with items.
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

QList<ZListItem *> itemChildren(ZListWidget *list)
{
    QList<ZListItem *> items;
    for (QGraphicsItem *child : list->childItems())
        if (auto *item = dynamic_cast<ZListItem *>(child))
            items.append(item);
    return items;
}

ZScrollBar *scrollBar(ZListWidget *list)
{
    return qobject_cast<ZScrollBar *>(list->verticalScrollBar());
}

// Every visible row has an item bound to it at the row's place.
void checkRows(ZListWidget *list, int selected = -1, int selectedHeight = 20)
{
    const int first = list->firstVisibleIndex();
    for (int row = first; row < first + list->visibleItemCount(); ++row) {
        ZListItem *item = list->visibleItem(row);
        QVERIFY2(item, qPrintable(QString("row %1 has no item").arg(row)));
        QCOMPARE(item->index(), row);
        QCOMPARE(item->itemText(), QString("row %1").arg(row));
        qreal top = row * 20.0 - list->scrollValue();
        if (selected >= 0 && row > selected)
            top += selectedHeight - 20;
        QCOMPARE(item->geometry().top(), top);
        QCOMPARE(item->geometry().height(), row == selected ? qreal(selectedHeight) : 20.0);
        QVERIFY(item->isVisible());
    }
}

} // namespace

class tst_ZListWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void defaults();
    void fewRowsNoScrollBar();
    void manyRowsFewItems_data();
    void manyRowsFewItems();
    void firstRowSearch_data();
    void firstRowSearch();
    void scrollKeepsStayingItems();
    void selectedRowHeight();
    void burstsCostOnePass();
    void keepsDataWhileRowVisible();
    void removeAllReleases();
    void pressOnRows();
    void pressOnEmptySpace();
    void doubleClick();
    void wheelScrolls();
    void hoverBackground();
    void tryToSetAction();
    void iconsFromModel();
    void textLookups();
    void hiddenArea();
    void setSelectIndexRules();
    void modelSwap();
    void badHeights();
    void fromXml();
    void renders();

private:
    void fill(int rows, bool batch = true);
    void newList(ZListWidget *list = nullptr);

    QGraphicsScene *m_scene = nullptr;
    ZListWidget *m_list = nullptr;
    ZCommonListModel *m_model = nullptr;
};

void tst_ZListWidget::init()
{
    m_scene = new QGraphicsScene(0, 0, 400, 400);
    m_model = new ZCommonListModel;
    newList();
}

void tst_ZListWidget::newList(ZListWidget *list)
{
    m_list = list ? list : new ZListWidget;
    m_scene->addItem(m_list);
    m_list->setItemCreator(new ZListItemCreatorT<CountingItem>);
    m_list->setModel(m_model);
    m_list->resize(300, 200);
}

void tst_ZListWidget::cleanup()
{
    delete m_scene;
    delete m_model;
    m_scene = nullptr;
    m_list = nullptr;
    m_model = nullptr;
    QCOMPARE(CountingItem::alive, 0);
}

void tst_ZListWidget::fill(int rows, bool batch)
{
    if (batch)
        m_model->batchInsert();
    for (int i = 0; i < rows; ++i)
        m_model->addItem(QString("row %1").arg(i));
    if (batch)
        m_model->batchCommit();
    settle();
}

void tst_ZListWidget::defaults()
{
    ZListWidget list;
    QCOMPARE(list.selectIndex(), -1);
    QCOMPARE(list.itemHeight(), 20);
    QCOMPARE(list.selectedItemHeight(), 20);
    QCOMPARE(list.itemUnselectBackgroundVariant(), QVariant(QColor(255, 255, 255)));
    QCOMPARE(list.itemSelectedBackgroundVariant(), QVariant(QColor(250, 250, 176)));
    QCOMPARE(list.itemHoveredBackgroundVariant(), QVariant(QColor(250, 250, 206)));
    QCOMPARE(list.contentHiddenBottom(), 10);
    QCOMPARE(list.contentHiddenTop(), 0);
    QVERIFY(!list.verticalScrollBar());
    QVERIFY(list.flags() & QGraphicsItem::ItemClipsChildrenToShape);
    QCOMPARE(list.acceptedMouseButtons(), Qt::LeftButton | Qt::RightButton);
    QCOMPARE(list.count(), 0);
    QCOMPARE(list.itemsHeight(), 0);
}

void tst_ZListWidget::fewRowsNoScrollBar()
{
    fill(5);
    QVERIFY(!m_list->verticalScrollBar());
    QCOMPARE(m_list->visibleRect(), QRectF(0, 0, 300, 200));
    QCOMPARE(m_list->visibleItemCount(), 5);
    checkRows(m_list);
    QCOMPARE(m_list->visibleItem(0)->geometry().width(), 300.0);
}

void tst_ZListWidget::manyRowsFewItems_data()
{
    QTest::addColumn<int>("scroll");
    for (int v : {0, 1, 5, 10, 19, 20, 21, 1234, 99999, 100000, 199800, 199810, 250000})
        QTest::newRow(qPrintable(QString::number(v))) << v;
}

void tst_ZListWidget::manyRowsFewItems()
{
    QFETCH(int, scroll);
    fill(10000);
    ZScrollBar *bar = scrollBar(m_list);
    QVERIFY(bar);
    QVERIFY(bar->isVisible());
    QCOMPARE(bar->maximum(), 10000 * 20 - 200 + 10.0);
    QCOMPARE(bar->singleStep(), 20.0);
    QCOMPARE(bar->pageStep(), 180.0);
    QCOMPARE(m_list->visibleRect(), QRectF(0, 0, 300 - 18, 200));
    QCOMPARE(bar->geometry().right(), 300.0);

    bar->setValue(scroll);
    settle();
    const int value = qMin(scroll, 199810);
    QCOMPARE(m_list->scrollValue(), value);
    QCOMPARE(m_list->firstVisibleIndex(), value / 20);
    // Ten rows when the top is aligned, else eleven partly shown; fewer at the end.
    const int last = qMin(9999, (value + 200 - 1) / 20);
    QCOMPARE(m_list->visibleItemCount(), last - value / 20 + 1);
    checkRows(m_list);
    QVERIFY(itemChildren(m_list).size() <= 11 + 3);
}

void tst_ZListWidget::firstRowSearch_data()
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

void tst_ZListWidget::firstRowSearch()
{
    QFETCH(int, rows);
    QFETCH(int, selected);
    QFETCH(int, scroll);
    fill(rows);
    m_list->setItemHeight(20, 40);
    m_list->setSelectIndex(selected);
    settle();
    scrollBar(m_list)->setValue(scroll);
    settle();
    // The first row whose bottom is below the top, by a plain walk.
    int expected = 0;
    qint64 y = -scroll;
    for (int r = 0; r < rows; ++r) {
        const int h = r == selected ? 40 : 20;
        if (y + h > 0) {
            expected = r;
            break;
        }
        y += h;
    }
    QCOMPARE(m_list->firstVisibleIndex(), expected);
    checkRows(m_list, selected, 40);
}

void tst_ZListWidget::scrollKeepsStayingItems()
{
    fill(1000);
    QHash<int, ZListItem *> before;
    for (int row = 0; row < 10; ++row)
        before.insert(row, m_list->visibleItem(row));
    for (ZListItem *item : before)
        static_cast<CountingItem *>(item)->resets = 0;

    scrollBar(m_list)->setValue(180); // one page: rows 9 .. 18 now
    settle();
    QCOMPARE(m_list->firstVisibleIndex(), 9);
    QCOMPARE(m_list->visibleItemCount(), 10);
    QCOMPARE(m_list->visibleItem(9), before.value(9));
    QCOMPARE(static_cast<CountingItem *>(m_list->visibleItem(9))->resets, 0);
    int rebound = 0;
    for (int row = 10; row < 19; ++row)
        rebound += static_cast<CountingItem *>(m_list->visibleItem(row))->resets;
    QCOMPARE(rebound, 9);
    checkRows(m_list);
    // The rows that left gave their items to the rows that came.
    QCOMPARE(itemChildren(m_list).size(), 10);
}

void tst_ZListWidget::selectedRowHeight()
{
    fill(10000);
    const qreal maxBefore = scrollBar(m_list)->maximum();
    m_list->setSelectIndex(5);
    m_list->setItemHeight(20, 40);
    settle();
    QCOMPARE(m_list->itemsHeight(), 10000 * 20 + 20);
    QCOMPARE(scrollBar(m_list)->maximum(), maxBefore + 20);
    QCOMPARE(m_list->visibleItem(5)->geometry(), QRectF(0, 100, 282, 40));
    QCOMPARE(m_list->visibleItem(6)->geometry().top(), 140.0);
    QCOMPARE(m_list->visibleItem(5)->backgroundColor(), QColor(250, 250, 176));
    QCOMPARE(m_list->visibleItem(4)->backgroundColor(), QColor(255, 255, 255));
    checkRows(m_list, 5, 40);
    // One row less fits now.
    QCOMPARE(m_list->visibleItemCount(), 9);
}

void tst_ZListWidget::burstsCostOnePass()
{
    fill(3);
    auto *item = static_cast<CountingItem *>(m_list->visibleItem(0));
    QVERIFY(item);
    m_model->setItemsText("x|y|z|w");
    m_model->setItemsText("x|y|z|w|v");
    m_list->setSelectIndex(1);
    m_list->clearSelected();
    QCOMPARE(m_list->visibleItemCount(), 3); // nothing happens before the event loop runs
    settle();
    QCOMPARE(m_list->visibleItemCount(), 5);
    QCOMPARE(m_list->visibleItem(0), item);
}

// Only rows that gain an item are rebound: an item keeps its data while its
// row number stays visible, even across a reset.
void tst_ZListWidget::keepsDataWhileRowVisible()
{
    fill(3);
    m_model->setItemsText("a|b|c|d");
    settle();
    QCOMPARE(m_list->visibleItem(0)->itemText(), QString("row 0"));
    QCOMPARE(m_list->visibleItem(2)->itemText(), QString("row 2"));
    QCOMPARE(m_list->visibleItem(3)->itemText(), QString("d"));
    m_model->removeItem(0);
    settle();
    QCOMPARE(m_list->visibleItemCount(), 3);
    QCOMPARE(m_list->visibleItem(0)->itemText(), QString("row 0"));
    // An emptied model releases everything; refilling binds afresh.
    m_model->removeAll();
    settle();
    m_model->setItemsText("p|q");
    settle();
    QCOMPARE(m_list->visibleItem(0)->itemText(), QString("p"));
    QCOMPARE(m_list->visibleItem(1)->itemText(), QString("q"));
}

void tst_ZListWidget::removeAllReleases()
{
    fill(100);
    scrollBar(m_list)->setValue(30);
    settle();
    QCOMPARE(m_list->visibleItemCount(), 11);
    QCOMPARE(itemChildren(m_list).size(), 11);
    m_model->removeAll();
    settle();
    QCOMPARE(m_list->visibleItemCount(), 0);
    QCOMPARE(m_list->itemCreator()->poolSize(), 3);
    const QList<ZListItem *> left = itemChildren(m_list);
    QCOMPARE(left.size(), 3);
    QCOMPARE(CountingItem::alive, 3);
    for (ZListItem *item : left)
        QVERIFY(!item->isVisible());
    QVERIFY(!scrollBar(m_list)->isVisible());
    QCOMPARE(m_list->scrollValue(), 0);
    QCOMPARE(m_list->selectIndex(), -1);

    // The pool is used again before anything new is made.
    fill(2);
    QCOMPARE(CountingItem::alive, 3);
    QCOMPARE(m_list->itemCreator()->poolSize(), 1);
}

void tst_ZListWidget::pressOnRows()
{
    fill(10);
    QSignalSpy index(m_list, &ZListWidget::indexChanged);
    QSignalSpy item(m_list, &ZListWidget::itemClicked);
    QSignalSpy plain(m_list, &ZListWidget::clicked);
    QStringList order;
    connect(m_list, &ZListWidget::indexChanged, this, [&order](int i) { order << QString("index %1").arg(i); });
    connect(m_list, &ZListWidget::itemClicked, this,
            [&order](int i, Qt::MouseButton) { order << QString("item %1").arg(i); });

    click(*m_scene, QPointF(50, 45));
    QCOMPARE(order, (QStringList{"index 2", "item 2"}));
    QCOMPARE(m_list->selectIndex(), 2);
    QCOMPARE(m_list->visibleItem(2)->backgroundColor(), QColor(250, 250, 176));

    click(*m_scene, QPointF(50, 45));
    QCOMPARE(index.count(), 1);
    QCOMPARE(item.count(), 2);

    click(*m_scene, QPointF(50, 105), Qt::RightButton);
    QCOMPARE(m_list->selectIndex(), 5);
    QCOMPARE(item.last().at(1).value<Qt::MouseButton>(), Qt::RightButton);
    QCOMPARE(m_list->visibleItem(2)->backgroundColor(), QColor(255, 255, 255));
    QCOMPARE(plain.count(), 0);

    // A taller selection is laid out on the next turn.
    m_list->setItemHeight(20, 30);
    settle();
    click(*m_scene, QPointF(50, 15));
    settle();
    QCOMPARE(m_list->visibleItem(0)->geometry().height(), 30.0);
    QCOMPARE(m_list->visibleItem(1)->geometry().top(), 30.0);
}

void tst_ZListWidget::pressOnEmptySpace()
{
    fill(3);
    m_list->setSelectIndex(1);
    settle();
    QSignalSpy index(m_list, &ZListWidget::indexChanged);
    QSignalSpy item(m_list, &ZListWidget::itemClicked);
    QSignalSpy plain(m_list, &ZListWidget::clicked);
    click(*m_scene, QPointF(50, 150));
    QCOMPARE(plain.count(), 1);
    QCOMPARE(plain.at(0).at(0).value<Qt::MouseButton>(), Qt::LeftButton);
    QCOMPARE(index.count(), 0);
    QCOMPARE(item.count(), 0);
    QCOMPARE(m_list->selectIndex(), 1);
    // The middle button is not taken at all.
    click(*m_scene, QPointF(50, 10), Qt::MiddleButton);
    QCOMPARE(m_list->selectIndex(), 1);
    QCOMPARE(plain.count(), 1);
}

void tst_ZListWidget::doubleClick()
{
    fill(5);
    QSignalSpy dbl(m_list, &ZListWidget::itemDbClicked);
    click(*m_scene, QPointF(20, 65));
    mouse(*m_scene, QEvent::GraphicsSceneMouseDoubleClick, QPointF(20, 65));
    mouse(*m_scene, QEvent::GraphicsSceneMouseRelease, QPointF(20, 65));
    QCOMPARE(dbl.count(), 1);
    QCOMPARE(dbl.at(0).at(0).toInt(), 3);
    mouse(*m_scene, QEvent::GraphicsSceneMousePress, QPointF(20, 150));
    mouse(*m_scene, QEvent::GraphicsSceneMouseRelease, QPointF(20, 150));
    mouse(*m_scene, QEvent::GraphicsSceneMouseDoubleClick, QPointF(20, 150));
    mouse(*m_scene, QEvent::GraphicsSceneMouseRelease, QPointF(20, 150));
    QCOMPARE(dbl.count(), 1);
}

void tst_ZListWidget::wheelScrolls()
{
    fill(5);
    wheel(*m_scene, QPointF(50, 50), -120); // no scroll bar: nothing to do
    settle();
    QCOMPARE(m_list->scrollValue(), 0);
    fill(100);
    wheel(*m_scene, QPointF(50, 50), -120);
    settle();
    QVERIFY(m_list->scrollValue() > 0);
    QCOMPARE(m_list->firstVisibleIndex(), m_list->scrollValue() / 20);
    const int down = m_list->scrollValue();
    wheel(*m_scene, QPointF(50, 50), 120);
    settle();
    QVERIFY(m_list->scrollValue() < down);
}

void tst_ZListWidget::hoverBackground()
{
    fill(5);
    m_list->setSelectIndex(0);
    settle();
    moveTo(*m_scene, QPointF(40, 30));
    QCOMPARE(m_list->visibleItem(1)->backgroundColor(), QColor(250, 250, 206));
    moveTo(*m_scene, QPointF(40, 50));
    QCOMPARE(m_list->visibleItem(1)->backgroundColor(), QColor(255, 255, 255));
    QCOMPARE(m_list->visibleItem(2)->backgroundColor(), QColor(250, 250, 206));
    // The selected row keeps its look under the pointer.
    moveTo(*m_scene, QPointF(40, 10));
    QCOMPARE(m_list->visibleItem(0)->backgroundColor(), QColor(250, 250, 176));
    // A pass keeps the hovered look of the item under the pointer.
    moveTo(*m_scene, QPointF(40, 70));
    m_list->setItemBackgroundVariant(QColor(Qt::red), QColor(Qt::green), QColor(Qt::blue));
    settle();
    QCOMPARE(m_list->visibleItem(3)->backgroundColor(), QColor(Qt::blue));
    QCOMPARE(m_list->visibleItem(0)->backgroundColor(), QColor(Qt::green));
    QCOMPARE(m_list->visibleItem(4)->backgroundColor(), QColor(Qt::red));
    // Backgrounds that are no colour leave the default look alone.
    m_list->setItemBackgroundVariant(QString("img.png"), QVariant(), 5);
    settle();
    QCOMPARE(m_list->visibleItem(4)->backgroundColor(), QColor(Qt::red));
}

void tst_ZListWidget::tryToSetAction()
{
    fill(100);
    QVariant result;
    QVERIFY(m_list->tryToSetAction(3, 7, QString("!"), result));
    QCOMPARE(result.toString(), QString("row 3!"));
    QVERIFY(!m_list->tryToSetAction(3, 8, QVariant(), result));
    QVERIFY(!m_list->tryToSetAction(50, 7, QVariant(), result));
    QVERIFY(!m_list->tryToSetAction(-1, 7, QVariant(), result));
}

namespace {
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
} // namespace

void tst_ZListWidget::iconsFromModel()
{
    IconModel icons;
    m_list->setModel(&icons);
    icons.reset();
    settle();
    QCOMPARE(m_list->visibleItemCount(), 3);
    ZListItem *with = m_list->visibleItem(0);
    auto *icon = qobject_cast<ZWidget *>(with->iconItem());
    QVERIFY(icon);
    QCOMPARE(icon->fixWidth(), 9.0); // the image's width
    auto *label = qobject_cast<ZLabel *>(with->textLabel());
    QCOMPARE(label->text(), QString("i0"));
    // Icon first, then the text, three apart.
    QVERIFY(icon->geometry().right() <= label->geometry().left() - 3 + 0.5);
    QCOMPARE(with->layoutType(), ZWidget::HBox);
    QCOMPARE(with->spacing(), 3);
    QVERIFY(!m_list->visibleItem(1)->iconItem());
    m_list->setModel(m_model);
}

void tst_ZListWidget::textLookups()
{
    m_model->setItemsText("a|b|a|A");
    QCOMPARE(m_list->indexOfText("a"), 0);
    QCOMPARE(m_list->findOneIndexByText("A"), 3);
    QCOMPARE(m_list->findAllIndexByText("a"), (QList<int>{0, 2}));
    QCOMPARE(m_list->indexOfText("c"), -1);
    QVERIFY(m_list->findAllIndexByText("").isEmpty());
    QCOMPARE(m_list->itemData(1).value(Qt::DisplayRole).toString(), QString("b"));
    QVERIFY(m_list->itemData(9).isEmpty());
}

void tst_ZListWidget::hiddenArea()
{
    m_list->setContentHiddenArea(-5, -5);
    QCOMPARE(m_list->contentHiddenTop(), 0);
    QCOMPARE(m_list->contentHiddenBottom(), 0);
    fill(100);
    QCOMPARE(scrollBar(m_list)->maximum(), 2000.0 - 200);
    m_list->setContentHiddenArea(7, 50);
    settle();
    QCOMPARE(scrollBar(m_list)->maximum(), 2000.0 - 200 + 50);
}

void tst_ZListWidget::setSelectIndexRules()
{
    fill(4);
    QSignalSpy index(m_list, &ZListWidget::indexChanged);
    m_list->setSelectIndex(4);
    m_list->setSelectIndex(-1);
    QCOMPARE(index.count(), 0);
    m_list->setSelectIndex(2);
    m_list->setSelectIndex(2);
    QCOMPARE(index.count(), 1);
    QCOMPARE(m_list->property("index").toInt(), 2);
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

void tst_ZListWidget::modelSwap()
{
    fill(3);
    ZCommonListModel other;
    other.setItemsText("o1|o2");
    QCOMPARE(m_list->setModel(&other), static_cast<ZAbstractListModel *>(m_model));
    QCOMPARE(m_list->model(), static_cast<ZAbstractListModel *>(&other));
    QCOMPARE(m_list->count(), 2);
    // The old model no longer drives the view.
    m_model->setItemsText("");
    other.addItem("o3");
    settle();
    QCOMPARE(m_list->visibleItemCount(), 3);
    // A destroyed model leaves an empty view.
    m_list->setModel(m_model);
    { 
        auto *temp = new ZCommonListModel;
        temp->setItemsText("t");
        m_list->setModel(temp);
        delete temp;
    }
    QCOMPARE(m_list->count(), 0);
    m_list->setSelectIndex(0);
    QCOMPARE(m_list->selectIndex(), -1);
    QCOMPARE(m_list->setModel(m_model), nullptr);
}

void tst_ZListWidget::badHeights()
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
    scrollBar(m_list)->setValue(qQNaN());
    scrollBar(m_list)->setValue(1e300);
    settle();
    QVERIFY(m_list->visibleItemCount() >= 1);
    QVERIFY(m_list->visibleItemCount() <= 2);
}

void tst_ZListWidget::fromXml()
{
    ZWidget root;
    QVERIFY(ZXmlUI::widgetFromMemory(R"(<uitree>
  <ZCommonListWidget objectName="list" itemsText="one|two|three" itemMargins="1,2,3,4" itemHeight="24"
                     selectedItemHeight="30" index="1" itemSelectedBackground="#00ff00"/>
</uitree>)", &root));
    auto *list = qobject_cast<ZCommonListWidget *>(root.findObject("list"));
    QVERIFY(list);
    QCOMPARE(list->count(), 3);
    QCOMPARE(list->itemsText(), QString("one|two|three"));
    QCOMPARE(list->itemMargins(), QMargins(1, 2, 3, 4));
    QCOMPARE(list->itemHeight(), 24);
    QCOMPARE(list->selectedItemHeight(), 30);
    QCOMPARE(list->selectIndex(), 1);
    QCOMPARE(list->itemSelectedBackgroundVariant(), QVariant(QColor(0, 255, 0)));
    QVERIFY(list->property("vscroll").isValid());
}

void tst_ZListWidget::renders()
{
    delete m_scene;
    m_scene = new QGraphicsScene(0, 0, 300, 200);
    auto *list = new ZCommonListWidget;
    newList(list);
    list->setModel(list->commonModel());
    list->setItemBackgroundVariant(QColor(255, 255, 255), QColor(0, 0, 255), QColor(0, 255, 0));
    for (int i = 0; i < 200; ++i)
        list->addItem(QString("row %1").arg(i));
    list->setSelectIndex(2);
    settle();
    scrollBar(list)->setValue(10);
    settle();
    const QImage image = render(*m_scene, QSize(300, 200));
    if (qEnvironmentVariableIsSet("ZKIT_TEST_PNG_DIR"))
        image.save(qEnvironmentVariable("ZKIT_TEST_PNG_DIR") + "/zlistwidget.png");
    // Row 2 spans y 30 .. 50 after scrolling by 10.
    QCOMPARE(image.pixelColor(150, 40), QColor(0, 0, 255));
    QCOMPARE(image.pixelColor(150, 28).rgb(), QColor(255, 255, 255).rgb());
    QCOMPARE(image.pixelColor(150, 52).rgb(), QColor(255, 255, 255).rgb());
    // Some text is drawn in the first row.
    int dark = 0;
    for (int x = 0; x < 150; ++x)
        for (int y = 0; y < 10; ++y)
            dark += image.pixelColor(x, y).lightness() < 128 ? 1 : 0;
    QVERIFY(dark > 5);
}

QTEST_MAIN(tst_ZListWidget)
#include "tst_zlistwidget.moc"
