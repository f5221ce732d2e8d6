#include "viewtestutil.h"

#include "zcommontablemodel.h"
#include "zscrollbar.h"
#include "ztablewidget.h"
#include "zxmlui.h"

#include <QtGui/QKeyEvent>
#include <QtTest/QtTest>

#include <cmath>
#include <limits>

using namespace viewtest;

namespace {

// A model of any size that counts the cells asked for, to see that the view
// only reads what it shows.
class CountingModel : public ZAbstractTableModel
{
public:
    CountingModel(int rows, int columns) : m_rows(rows), m_columns(columns) {}
    int rowCount() const override { return m_rows; }
    int columnCount() const override { return m_columns; }
    CellData data(int row, int column) const override
    {
        ++reads;
        return {{Qt::DisplayRole, QString("%1:%2").arg(row).arg(column)}};
    }
    CellData headerData(int column) const override { return {{Qt::DisplayRole, QString("H%1").arg(column)}}; }
    mutable int reads = 0;

private:
    int m_rows;
    int m_columns;
};

ZScrollBar *bar(QObject *object)
{
    return qobject_cast<ZScrollBar *>(object);
}

void key(QGraphicsScene &scene, int k)
{
    QKeyEvent press(QEvent::KeyPress, k, Qt::NoModifier);
    QCoreApplication::sendEvent(&scene, &press);
}

} // namespace

class tst_ZTableWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void commonModelColumns();
    void commonModelBatch();
    void hitTests_data();
    void hitTests();
    void hitTestsScrolled();
    void resizeHandles_data();
    void resizeHandles();
    void dragResizes();
    void dragRespectsMinimum();
    void notResizable();
    void selection_data();
    void selection();
    void keyboard();
    void scrollBars();
    void drawsOnlyWhatShows();
    void modelChangesKeepCurrent();
    void badInput();
    void foreignModelDeleted();
    void renders();
    void fromXml();

private:
    QGraphicsScene *m_scene = nullptr;
    ZTableWidget *m_table = nullptr;
    ZCommonTableModel *m_model = nullptr;
};

void tst_ZTableWidget::init()
{
    m_scene = new QGraphicsScene(0, 0, 400, 300);
    m_table = new ZTableWidget;
    m_scene->addItem(m_table);
    m_table->resize(300, 200);
    m_model = m_table->commonModel();
    // 50 + 80 + 30 + 100 = 260 wide: no horizontal bar in 300 - 18.
    m_model->setHeaderLabels({"Name", "Size", "Kind", "Date"});
    m_table->setColumnWidths("50|80|30|100");
    m_model->batchInsert();
    for (int r = 0; r < 100; ++r)
        m_model->addRow({QString("n%1").arg(r), QString::number(r * 10), "file", "today"});
    m_model->batchCommit();
    settle();
}

void tst_ZTableWidget::cleanup()
{
    delete m_scene;
    m_scene = nullptr;
    m_table = nullptr;
    m_model = nullptr;
}

void tst_ZTableWidget::commonModelColumns()
{
    ZCommonTableModel model;
    QSignalSpy inserted(&model, &ZAbstractTableModel::columnsInserted);
    QSignalSpy removed(&model, &ZAbstractTableModel::columnsRemoved);
    model.addRow({"a", "b"});
    QCOMPARE(model.columnCount(), 2);
    QCOMPARE(inserted.count(), 1);
    // A longer row widens the table and pads the rows before it.
    model.addRow({"c", "d", "e"});
    QCOMPARE(model.columnCount(), 3);
    QCOMPARE(model.cellText(0, 2), QString());
    QCOMPARE(model.data(0, 2).contains(Qt::DisplayRole), true);
    model.addRow({"f"});
    QCOMPARE(model.cellText(2, 1), QString());
    model.setHeaderText("A|B");
    QCOMPARE(model.columnCount(), 2);
    QCOMPARE(removed.count(), 1);
    QCOMPARE(model.headerText(), QString("A|B"));
    QCOMPARE(model.headerData(1).value(Qt::DisplayRole).toString(), QString("B"));
    QVERIFY(model.headerData(2).isEmpty());
    QCOMPARE(model.cellText(1, 2), QString());
    QVERIFY(model.data(1, 2).isEmpty());
    QVERIFY(model.data(-1, 0).isEmpty());
    QVERIFY(!model.setCellText(5, 0, "x"));
    QSignalSpy changed(&model, &ZAbstractTableModel::cellsChanged);
    QVERIFY(model.setCellText(1, 1, "x"));
    QCOMPARE(changed.count(), 1);
    QVERIFY(model.setCellText(1, 1, "x"));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(model.insertRow(-7, {"first"}), 0);
    QCOMPARE(model.insertRow(99, {"last"}), 4);
    QCOMPARE(model.cellText(0, 0), QString("first"));
    QVERIFY(model.removeRow(0));
    QVERIFY(!model.removeRow(4));
    model.setColumnCount(1 << 30);
    QVERIFY(model.columnCount() <= 4096);
    model.setColumnCount(-3);
    QCOMPARE(model.columnCount(), 0);
}

void tst_ZTableWidget::commonModelBatch()
{
    ZCommonTableModel model;
    model.addRow({"a"});
    QSignalSpy inserted(&model, &ZAbstractTableModel::rowsInserted);
    model.batchInsert();
    model.addRow({"b"});
    model.addRow({"c"});
    QCOMPARE(inserted.count(), 0);
    QCOMPARE(model.batchCommit(), 2);
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(inserted.at(0).at(0).toInt(), 1);
    QCOMPARE(inserted.at(0).at(1).toInt(), 2);
    model.batchInsert();
    QCOMPARE(model.batchCommit(), 0);
    QCOMPARE(inserted.count(), 1);
}

// Columns 50, 80, 30, 100 wide from x = 0, rows 20 high under a 24 high header.
void tst_ZTableWidget::hitTests_data()
{
    QTest::addColumn<QPointF>("pos");
    QTest::addColumn<QPoint>("cell");
    QTest::newRow("first cell") << QPointF(0, 24) << QPoint(0, 0);
    QTest::newRow("first cell, last pixel") << QPointF(49.9, 43.9) << QPoint(0, 0);
    QTest::newRow("second column starts") << QPointF(50, 24) << QPoint(1, 0);
    QTest::newRow("second row starts") << QPointF(10, 44) << QPoint(0, 1);
    QTest::newRow("third column") << QPointF(130, 100) << QPoint(2, 3);
    QTest::newRow("last column") << QPointF(259.5, 199) << QPoint(3, 8);
    QTest::newRow("right of the columns") << QPointF(260, 50) << QPoint(-1, -1);
    QTest::newRow("in the header") << QPointF(60, 10) << QPoint(-1, -1);
    QTest::newRow("left of the table") << QPointF(-1, 50) << QPoint(-1, -1);
    QTest::newRow("below the table") << QPointF(60, 200) << QPoint(-1, -1);
    QTest::newRow("on the scroll bar") << QPointF(295, 50) << QPoint(-1, -1);
    QTest::newRow("not a number") << QPointF(std::nan(""), 50) << QPoint(-1, -1);
    QTest::newRow("infinite") << QPointF(10, std::numeric_limits<qreal>::infinity()) << QPoint(-1, -1);
}

void tst_ZTableWidget::hitTests()
{
    QFETCH(QPointF, pos);
    QFETCH(QPoint, cell);
    QCOMPARE(m_table->cellAt(pos), cell);
    if (cell.x() >= 0) {
        QVERIFY(m_table->cellRect(cell.y(), cell.x()).contains(pos));
        QCOMPARE(m_table->columnAt(pos.x()), cell.x());
        QCOMPARE(m_table->rowAt(pos.y()), cell.y());
    }
}

void tst_ZTableWidget::hitTestsScrolled()
{
    auto *v = bar(m_table->verticalScrollBar());
    QVERIFY(v && v->isVisible());
    QCOMPARE(v->maximum(), qreal(100 * 20 - (200 - 24)));
    v->setValue(35);
    settle();
    // Row 1 covers content 20 .. 40: 35 is under the header's lower edge.
    QCOMPARE(m_table->rowAt(24), 1);
    QCOMPARE(m_table->rowAt(24 + 4.9), 1);
    QCOMPARE(m_table->rowAt(24 + 5), 2);
    QCOMPARE(m_table->cellRect(2, 1), QRectF(50, 24 + 40 - 35, 80, 20));
    v->setValue(v->maximum());
    settle();
    QCOMPARE(m_table->rowAt(199), 99);
    QCOMPARE(m_table->cellRect(99, 3).bottom(), 200.0);
}

// Header edges at 50, 130, 160 and 260 can be grabbed within 4 units.
void tst_ZTableWidget::resizeHandles_data()
{
    QTest::addColumn<QPointF>("pos");
    QTest::addColumn<int>("column");
    QTest::newRow("first edge") << QPointF(50, 10) << 0;
    QTest::newRow("first edge, left reach") << QPointF(46, 10) << 0;
    QTest::newRow("first edge, right reach") << QPointF(54, 10) << 0;
    QTest::newRow("beyond reach") << QPointF(55, 10) << -1;
    QTest::newRow("second edge") << QPointF(131, 3) << 1;
    QTest::newRow("third edge") << QPointF(158, 20) << 2;
    QTest::newRow("last edge") << QPointF(262, 10) << 3;
    QTest::newRow("middle of a column") << QPointF(90, 10) << -1;
    QTest::newRow("the left border moves nothing") << QPointF(1, 10) << -1;
    QTest::newRow("in the body, not the header") << QPointF(50, 30) << -1;
    QTest::newRow("above the table") << QPointF(50, -1) << -1;
}

void tst_ZTableWidget::resizeHandles()
{
    QFETCH(QPointF, pos);
    QFETCH(int, column);
    QCOMPARE(m_table->resizeHandleAt(pos), column);
}

void tst_ZTableWidget::dragResizes()
{
    QSignalSpy resized(m_table, &ZTableWidget::columnResized);
    QSignalSpy current(m_table, &ZTableWidget::currentCellChanged);
    mouse(*m_scene, QEvent::GraphicsSceneMousePress, QPointF(131, 10));
    for (qreal x : {140.0, 150.0, 171.0}) {
        QGraphicsSceneMouseEvent move(QEvent::GraphicsSceneMouseMove);
        move.setScenePos(QPointF(x, 12));
        move.setButtons(Qt::LeftButton);
        QCoreApplication::sendEvent(m_scene, &move);
    }
    mouse(*m_scene, QEvent::GraphicsSceneMouseRelease, QPointF(171, 12));
    QCOMPARE(m_table->columnWidth(1), 80 + 40);
    QCOMPARE(resized.count(), 3);
    QCOMPARE(resized.last().at(0).toInt(), 1);
    QCOMPARE(resized.last().at(1).toInt(), 120);
    QCOMPARE(current.count(), 0);
    // Columns to the right moved with the edge; those to the left did not.
    QCOMPARE(m_table->cellRect(0, 0).left(), 0.0);
    QCOMPARE(m_table->cellRect(0, 2).left(), 170.0);
    QCOMPARE(m_table->columnAt(175), 2);
    QCOMPARE(m_table->columnWidths(), QString("50|120|30|100"));
    // A move after the release changes nothing.
    QGraphicsSceneMouseEvent move(QEvent::GraphicsSceneMouseMove);
    move.setScenePos(QPointF(250, 12));
    QCoreApplication::sendEvent(m_scene, &move);
    QCOMPARE(m_table->columnWidth(1), 120);
    // Wider than the view: the horizontal bar comes.
    m_table->setColumnWidth(3, 400);
    settle();
    auto *h = bar(m_table->horizontalScrollBar());
    QVERIFY(h && h->isVisible());
    QCOMPARE(h->maximum(), qreal(50 + 120 + 30 + 400) - m_table->bodyRect().width());
}

void tst_ZTableWidget::dragRespectsMinimum()
{
    m_table->setMinimumColumnWidth(20);
    mouse(*m_scene, QEvent::GraphicsSceneMousePress, QPointF(50, 10));
    QGraphicsSceneMouseEvent move(QEvent::GraphicsSceneMouseMove);
    move.setScenePos(QPointF(-500, 10));
    move.setButtons(Qt::LeftButton);
    QCoreApplication::sendEvent(m_scene, &move);
    mouse(*m_scene, QEvent::GraphicsSceneMouseRelease, QPointF(-500, 10));
    QCOMPARE(m_table->columnWidth(0), 20);
    QCOMPARE(m_table->cellRect(0, 1).left(), 20.0);
}

void tst_ZTableWidget::notResizable()
{
    m_table->setResizableColumns(false);
    QCOMPARE(m_table->resizeHandleAt(QPointF(50, 10)), -1);
    QSignalSpy header(m_table, &ZTableWidget::headerClicked);
    mouse(*m_scene, QEvent::GraphicsSceneMousePress, QPointF(50, 10));
    QGraphicsSceneMouseEvent move(QEvent::GraphicsSceneMouseMove);
    move.setScenePos(QPointF(90, 10));
    move.setButtons(Qt::LeftButton);
    QCoreApplication::sendEvent(m_scene, &move);
    QCOMPARE(m_table->columnWidth(0), 50);
    // The press was a header click on the column it fell in.
    QCOMPARE(header.count(), 1);
    QCOMPARE(header.at(0).at(0).toInt(), 1);
}

void tst_ZTableWidget::selection_data()
{
    QTest::addColumn<int>("behavior");
    QTest::addColumn<QPointF>("pos");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<QList<QPoint>>("selected");
    QTest::addColumn<QList<QPoint>>("unselected");
    QTest::newRow("cell") << int(ZTableWidget::SelectCells) << QPointF(60, 50) << 1 << 1
                          << QList<QPoint>{{1, 1}} << QList<QPoint>{{0, 1}, {2, 1}, {1, 0}, {1, 2}};
    QTest::newRow("row") << int(ZTableWidget::SelectRows) << QPointF(60, 50) << 1 << 1
                         << QList<QPoint>{{0, 1}, {1, 1}, {2, 1}, {3, 1}} << QList<QPoint>{{1, 0}, {1, 2}, {4, 1}};
    QTest::newRow("last cell in view") << int(ZTableWidget::SelectCells) << QPointF(255, 195) << 8 << 3
                                       << QList<QPoint>{{3, 8}} << QList<QPoint>{{2, 8}, {3, 7}};
}

void tst_ZTableWidget::selection()
{
    QFETCH(int, behavior);
    QFETCH(QPointF, pos);
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(QList<QPoint>, selected);
    QFETCH(QList<QPoint>, unselected);
    m_table->setSelectionBehavior(ZTableWidget::SelectionBehavior(behavior));
    QSignalSpy current(m_table, &ZTableWidget::currentCellChanged);
    QSignalSpy clicked(m_table, &ZTableWidget::cellClicked);
    click(*m_scene, pos);
    QCOMPARE(m_table->currentRow(), row);
    QCOMPARE(m_table->currentColumn(), column);
    QCOMPARE(current.count(), 1);
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).toInt(), row);
    QCOMPARE(clicked.at(0).at(1).toInt(), column);
    for (const QPoint &cell : selected)
        QVERIFY2(m_table->isSelected(cell.y(), cell.x()), qPrintable(QString("%1,%2").arg(cell.x()).arg(cell.y())));
    for (const QPoint &cell : unselected)
        QVERIFY2(!m_table->isSelected(cell.y(), cell.x()), qPrintable(QString("%1,%2").arg(cell.x()).arg(cell.y())));
    // The same cell again: clicked, but no change.
    click(*m_scene, pos);
    QCOMPARE(current.count(), 1);
    QCOMPARE(clicked.count(), 2);
    // Empty space changes nothing.
    click(*m_scene, QPointF(280, 100));
    QCOMPARE(m_table->currentRow(), row);
}

void tst_ZTableWidget::keyboard()
{
    QEvent activate(QEvent::WindowActivate);
    QCoreApplication::sendEvent(m_scene, &activate);
    click(*m_scene, QPointF(10, 30));
    QVERIFY(m_table->hasFocus());
    struct Step
    {
        int key;
        int row;
        int column;
    };
    const Step steps[] = {
        {Qt::Key_Right, 0, 1}, {Qt::Key_Right, 0, 2}, {Qt::Key_Right, 0, 3}, {Qt::Key_Right, 0, 3},
        {Qt::Key_Down, 1, 3},  {Qt::Key_Left, 1, 2},  {Qt::Key_Up, 0, 2},    {Qt::Key_Up, 0, 2},
        {Qt::Key_End, 99, 2},  {Qt::Key_PageUp, 91, 2}, {Qt::Key_Home, 0, 2}, {Qt::Key_PageDown, 8, 2},
    };
    for (const Step &step : steps) {
        key(*m_scene, step.key);
        QCOMPARE(m_table->currentRow(), step.row);
        QCOMPARE(m_table->currentColumn(), step.column);
        settle();
        // The current cell is always in view.
        const QRectF rect = m_table->cellRect(step.row, step.column);
        QVERIFY(rect.top() >= m_table->bodyRect().top() - 0.5);
        QVERIFY(rect.bottom() <= m_table->bodyRect().bottom() + 0.5);
    }
}

void tst_ZTableWidget::scrollBars()
{
    ZTableWidget table;
    m_scene->addItem(&table);
    table.resize(300, 200);
    table.commonModel()->addRow({"a", "b"});
    settle();
    QVERIFY(!bar(table.verticalScrollBar()) || !bar(table.verticalScrollBar())->isVisible());
    QVERIFY(!bar(table.horizontalScrollBar()) || !bar(table.horizontalScrollBar())->isVisible());
    QCOMPARE(table.bodyRect(), QRectF(0, 24, 300, 176));
    // Ten columns of 100: the horizontal bar takes the bottom.
    table.commonModel()->setColumnCount(10);
    settle();
    auto *h = bar(table.horizontalScrollBar());
    QVERIFY(h && h->isVisible());
    QCOMPARE(table.bodyRect().width(), 300.0);
    QVERIFY(table.bodyRect().bottom() < 200);
    h->setValue(250);
    settle();
    QCOMPARE(table.columnAt(0), 2);
    QCOMPARE(table.cellRect(0, 3).left(), 50.0);
    // The wheel scrolls the rows.
    for (int i = 0; i < 50; ++i)
        table.commonModel()->addRow({"x"});
    settle();
    auto *v = bar(table.verticalScrollBar());
    QVERIFY(v && v->isVisible());
    wheel(*m_scene, QPointF(50, 100), -120);
    QVERIFY(v->value() > 0);
    m_scene->removeItem(&table);
}

void tst_ZTableWidget::drawsOnlyWhatShows()
{
    CountingModel model(1000000, 1000);
    m_table->setModel(&model);
    settle();
    QCOMPARE(m_table->rowCount(), 1000000);
    auto *v = bar(m_table->verticalScrollBar());
    QVERIFY(v);
    QCOMPARE(v->maximum(), qreal(1000000.0 * 20 - m_table->bodyRect().height()));
    QVERIFY(m_table->bodyRect().height() < 200 - 24);
    v->setValue(v->maximum() / 2);
    settle();
    // The cells that meet the body, found through the hit tests.
    const QRectF body = m_table->bodyRect();
    QSet<int> rows, columns;
    for (qreal y = body.top(); y < body.bottom(); y += 1)
        rows.insert(m_table->rowAt(y));
    for (qreal x = body.left(); x < body.right(); x += 1)
        columns.insert(m_table->columnAt(x));
    QVERIFY(!rows.contains(-1) && !columns.contains(-1));
    model.reads = 0;
    render(*m_scene, QSize(400, 300));
    // Each shown cell is read once; a row touching the bottom edge may be read as well.
    QVERIFY2(model.reads >= rows.size() * columns.size(), qPrintable(QString::number(model.reads)));
    QVERIFY2(model.reads <= (rows.size() + 1) * columns.size(), qPrintable(QString::number(model.reads)));
    QCOMPARE(m_table->setModel(nullptr), &model);
    QCOMPARE(m_table->model(), m_table->commonModel());
}

void tst_ZTableWidget::modelChangesKeepCurrent()
{
    QVERIFY(m_table->setCurrentCell(5, 2));
    m_model->insertRow(0, {"new"});
    QCOMPARE(m_table->currentRow(), 6);
    m_model->removeRow(0);
    m_model->removeRow(0);
    QCOMPARE(m_table->currentRow(), 4);
    QSignalSpy current(m_table, &ZTableWidget::currentCellChanged);
    m_model->removeRow(4);
    QCOMPARE(m_table->currentRow(), -1);
    QCOMPARE(current.count(), 1);
    QVERIFY(m_table->setCurrentCell(1, 3));
    m_model->setColumnCount(2);
    QCOMPARE(m_table->currentColumn(), -1);
    // The hit tests know at once that the third column is gone.
    QCOMPARE(m_table->columnAt(140), -1);
    QCOMPARE(m_table->cellAt(QPointF(140, 50)), QPoint(-1, -1));
    // Widths stay with their columns.
    QCOMPARE(m_table->columnWidths(), QString("50|80"));
    m_model->removeAll();
    settle();
    QCOMPARE(m_table->rowCount(), 0);
    render(*m_scene, QSize(400, 300));
}

void tst_ZTableWidget::badInput()
{
    m_table->setColumnWidths("a|-5|70|");
    QCOMPARE(m_table->columnWidths(), QString("100|100|70|100"));
    m_table->setRowHeight(-3);
    QCOMPARE(m_table->rowHeight(), 1);
    m_table->setRowHeight(1 << 30);
    QCOMPARE(m_table->rowHeight(), 65536);
    m_table->setHeaderHeight(-1);
    QCOMPARE(m_table->headerHeight(), 0);
    QVERIFY(!m_table->setColumnWidth(4, 10));
    QVERIFY(!m_table->setColumnWidth(-1, 10));
    QVERIFY(m_table->setColumnWidth(0, -100));
    QCOMPARE(m_table->columnWidth(0), m_table->minimumColumnWidth());
    QVERIFY(!m_table->setCurrentCell(100, 0));
    QVERIFY(!m_table->setCurrentCell(0, 4));
    m_table->setSelectionBehavior(ZTableWidget::SelectionBehavior(77));
    QCOMPARE(m_table->selectionBehavior(), ZTableWidget::SelectCells);
    QCOMPARE(m_table->cellRect(-1, 0), QRectF());
    settle();
    render(*m_scene, QSize(400, 300));
    m_table->resize(0, 0);
    settle();
    render(*m_scene, QSize(400, 300));
    QCOMPARE(m_table->cellAt(QPointF(0, 0)), QPoint(-1, -1));
    // A model claiming every column there can be: the view lays out a bounded number.
    CountingModel huge(10, std::numeric_limits<int>::max());
    m_table->resize(300, 200);
    m_table->setModel(&huge);
    settle();
    QVERIFY(m_table->columnCount() <= 65536);
    render(*m_scene, QSize(400, 300));
    m_table->setModel(nullptr);
}

void tst_ZTableWidget::foreignModelDeleted()
{
    auto *model = new CountingModel(10, 3);
    m_table->setModel(model);
    settle();
    QCOMPARE(m_table->rowCount(), 10);
    delete model;
    QCOMPARE(m_table->model(), m_table->commonModel());
    settle();
    QCOMPARE(m_table->rowCount(), 100);
    render(*m_scene, QSize(400, 300));
}

void tst_ZTableWidget::renders()
{
    m_table->setSelectionBehavior(ZTableWidget::SelectRows);
    m_table->setSelectedColor(QColor(0, 200, 0));
    QVERIFY(m_table->setCurrentCell(2, 1));
    settle();
    const QImage image = render(*m_scene, QSize(400, 300));
    image.save("/tmp/zkit-tree-table.png");
    // The selected row is filled across its columns; the row above is not.
    const QRectF selected = m_table->cellRect(2, 3);
    QCOMPARE(QColor(image.pixel(int(selected.right()) - 3, int(selected.top()) + 2)), QColor(0, 200, 0));
    const QRectF other = m_table->cellRect(1, 3);
    QVERIFY(QColor(image.pixel(int(other.right()) - 3, int(other.top()) + 2)) != QColor(0, 200, 0));
    // The header stands apart from the body, and takes a skin image when given one.
    QVERIFY(image.pixel(25, 12) != image.pixel(25, 24 + 5 * 20 + 10));
    m_table->setHeaderImage(":/image/theme/pushbutton_normal.png");
    const QImage skinned = render(*m_scene, QSize(400, 300));
    QVERIFY(skinned.copy(0, 0, 260, 24) != image.copy(0, 0, 260, 24));
    QCOMPARE(skinned.copy(0, 24, 260, 150), image.copy(0, 24, 260, 150));
}

void tst_ZTableWidget::fromXml()
{
    ZWidget root;
    QVERIFY(ZXmlUI::widgetFromMemory(R"(<uitree>
  <ZTableWidget objectName="table" headerText="A|B|C" columnWidths="40|60" rowHeight="18"
                selectionBehavior="SelectRows" resizableColumns="false" gridColor="#ff0000">
    <table:data>
      <row cells="1|2|3"/>
      <row cells="4|5"/>
      <other cells="skipped"/>
      <row/>
    </table:data>
  </ZTableWidget>
</uitree>)", &root));
    auto *table = qobject_cast<ZTableWidget *>(root.findObject("table"));
    QVERIFY(table);
    QCOMPARE(table->headerText(), QString("A|B|C"));
    QCOMPARE(table->columnCount(), 3);
    QCOMPARE(table->rowCount(), 3);
    QCOMPARE(table->columnWidths(), QString("40|60|100"));
    QCOMPARE(table->rowHeight(), 18);
    QCOMPARE(table->selectionBehavior(), ZTableWidget::SelectRows);
    QVERIFY(!table->resizableColumns());
    QCOMPARE(table->gridColor(), QColor(255, 0, 0));
    QCOMPARE(table->commonModel()->cellText(1, 1), QString("5"));
    QCOMPARE(table->commonModel()->cellText(1, 2), QString());
}

QTEST_MAIN(tst_ZTableWidget)
#include "tst_ztablewidget.moc"
