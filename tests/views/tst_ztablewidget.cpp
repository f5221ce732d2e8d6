#include "common/scenetest.h"

#include "zcommontablemodel.h"
#include "zscrollbar.h"
#include "ztablewidget.h"
#include "zxmlui.h"

#include <QtTest/QtTest>

#include <cmath>
#include <limits>

using namespace scenetest;

namespace {

// A model of any size that counts the cells asked for.
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

} // namespace

// Columns 50, 80, 30, 100 wide from x = 0 (260 in all, no horizontal bar in
// 300 - 18), 100 rows 20 high under a 24 high header.
class tst_ZTableWidget : public QObject
{
    Q_OBJECT

    QGraphicsScene *m_scene = nullptr;
    ZTableWidget *m_table = nullptr;
    ZCommonTableModel *m_model = nullptr;

    void key(int k) { scenetest::key(*m_scene, k); }

private Q_SLOTS:
    void init()
    {
        m_scene = new QGraphicsScene(0, 0, 400, 300);
        m_table = new ZTableWidget;
        m_scene->addItem(m_table);
        m_table->resize(300, 200);
        m_model = m_table->commonModel();
        m_model->setHeaderLabels({"Name", "Size", "Kind", "Date"});
        m_table->setColumnWidths("50|80|30|100");
        m_model->batchInsert();
        for (int r = 0; r < 100; ++r)
            m_model->addRow({QString("n%1").arg(r), QString::number(r * 10), "file", "today"});
        m_model->batchCommit();
        settle();
    }

    void cleanup() { delete m_scene; }

    void commonModel()
    {
        ZCommonTableModel model;
        QSignalSpy inserted(&model, &ZAbstractTableModel::columnsInserted);
        QSignalSpy removed(&model, &ZAbstractTableModel::columnsRemoved);
        QSignalSpy rows(&model, &ZAbstractTableModel::rowsInserted);
        // A longer row widens the table and pads the rows before it.
        model.addRow({"a", "b"});
        model.addRow({"c", "d", "e"});
        model.addRow({"f"});
        QCOMPARE(model.columnCount(), 3);
        QCOMPARE(inserted.count(), 2);
        QVERIFY(model.data(0, 2).contains(Qt::DisplayRole));
        QCOMPARE(model.cellText(2, 1), QString());
        model.setHeaderText("A|B");
        QCOMPARE(model.columnCount(), 2);
        QCOMPARE(removed.count(), 1);
        QCOMPARE(model.headerData(1).value(Qt::DisplayRole).toString(), QString("B"));
        QVERIFY(model.headerData(2).isEmpty());
        QVERIFY(model.data(1, 2).isEmpty());
        QVERIFY(model.data(-1, 0).isEmpty());
        QVERIFY(!model.setCellText(5, 0, "x"));
        QSignalSpy changed(&model, &ZAbstractTableModel::cellsChanged);
        QVERIFY(model.setCellText(1, 1, "x"));
        QVERIFY(model.setCellText(1, 1, "x"));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(model.insertRow(-7, {"first"}), 0);
        QCOMPARE(model.insertRow(99, {"last"}), 4);
        QVERIFY(model.removeRow(0));
        QVERIFY(!model.removeRow(4));
        model.setColumnCount(1 << 30);
        QVERIFY(model.columnCount() <= 4096);
        model.setColumnCount(-3);
        QCOMPARE(model.columnCount(), 0);
        // A batch reports its rows once.
        rows.clear();
        model.batchInsert();
        model.addRow({"b"});
        model.addRow({"c"});
        QCOMPARE(rows.count(), 0);
        QCOMPARE(model.batchCommit(), 2);
        QCOMPARE(rows.count(), 1);
        QCOMPARE(rows.at(0), (QVariantList{4, 2}));
        model.batchInsert();
        QCOMPARE(model.batchCommit(), 0);
        QCOMPARE(rows.count(), 1);
    }

    void hitTests_data()
    {
        QTest::addColumn<QPointF>("pos");
        QTest::addColumn<QPoint>("cell");
        QTest::newRow("first cell") << QPointF(0, 24) << QPoint(0, 0);
        QTest::newRow("first cell, last pixel") << QPointF(49.9, 43.9) << QPoint(0, 0);
        QTest::newRow("second column starts") << QPointF(50, 24) << QPoint(1, 0);
        QTest::newRow("second row starts") << QPointF(10, 44) << QPoint(0, 1);
        QTest::newRow("last column") << QPointF(259.5, 199) << QPoint(3, 8);
        QTest::newRow("right of the columns") << QPointF(260, 50) << QPoint(-1, -1);
        QTest::newRow("in the header") << QPointF(60, 10) << QPoint(-1, -1);
        QTest::newRow("left of the table") << QPointF(-1, 50) << QPoint(-1, -1);
        QTest::newRow("below the table") << QPointF(60, 200) << QPoint(-1, -1);
        QTest::newRow("on the scroll bar") << QPointF(295, 50) << QPoint(-1, -1);
        QTest::newRow("not a number") << QPointF(std::nan(""), 50) << QPoint(-1, -1);
        QTest::newRow("infinite") << QPointF(10, std::numeric_limits<qreal>::infinity()) << QPoint(-1, -1);
    }

    void hitTests()
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

    void hitTestsScrolled()
    {
        auto *v = bar(m_table->verticalScrollBar());
        QVERIFY(v && v->isVisible());
        QCOMPARE(v->maximum(), qreal(100 * 20 - (200 - 24)));
        v->setValue(35);
        settle();
        // Row 1 covers content 20 .. 40: 35 is under the header's lower edge.
        QCOMPARE(m_table->rowAt(24 + 4.9), 1);
        QCOMPARE(m_table->rowAt(24 + 5), 2);
        QCOMPARE(m_table->cellRect(2, 1), QRectF(50, 24 + 40 - 35, 80, 20));
        v->setValue(v->maximum());
        settle();
        QCOMPARE(m_table->rowAt(199), 99);
        QCOMPARE(m_table->cellRect(99, 3).bottom(), 200.0);
    }

    // Header edges at 50, 130, 160 and 260 can be grabbed within 4 units.
    void resizeHandles_data()
    {
        QTest::addColumn<QPointF>("pos");
        QTest::addColumn<int>("column");
        QTest::newRow("first edge") << QPointF(50, 10) << 0;
        QTest::newRow("first edge, left reach") << QPointF(46, 10) << 0;
        QTest::newRow("first edge, right reach") << QPointF(54, 10) << 0;
        QTest::newRow("beyond reach") << QPointF(55, 10) << -1;
        QTest::newRow("third edge") << QPointF(158, 20) << 2;
        QTest::newRow("last edge") << QPointF(262, 10) << 3;
        QTest::newRow("the left border moves nothing") << QPointF(1, 10) << -1;
        QTest::newRow("in the body, not the header") << QPointF(50, 30) << -1;
        QTest::newRow("above the table") << QPointF(50, -1) << -1;
    }

    void resizeHandles()
    {
        QFETCH(QPointF, pos);
        QFETCH(int, column);
        QCOMPARE(m_table->resizeHandleAt(pos), column);
    }

    // Over an edge the split cursor; away from it the table's own cursor, or none.
    void handleCursor()
    {
        for (bool own : {false, true}) {
            if (own)
                m_table->setCursor(Qt::PointingHandCursor);
            scenetest::sendHoverTo(m_table, QEvent::GraphicsSceneHoverMove, QPointF(50, 10));
            QCOMPARE(m_table->cursor().shape(), Qt::SplitHCursor);
            scenetest::sendHoverTo(m_table, QEvent::GraphicsSceneHoverMove, QPointF(20, 30));
            QCOMPARE(m_table->hasCursor(), own);
            if (own)
                QCOMPARE(m_table->cursor().shape(), Qt::PointingHandCursor);
        }
    }

    void dragResizes()
    {
        QSignalSpy resized(m_table, &ZTableWidget::columnResized);
        QSignalSpy current(m_table, &ZTableWidget::currentCellChanged);
        Mouse mouse(*m_scene);
        mouse.drag(QPointF(131, 10), QPointF(171, 12), 3);
        QCOMPARE(m_table->columnWidth(1), 80 + 40);
        QCOMPARE(resized.count(), 3);
        QCOMPARE(resized.last(), (QVariantList{1, 120}));
        QCOMPARE(current.count(), 0);
        // Columns to the right moved with the edge; those to the left did not.
        QCOMPARE(m_table->cellRect(0, 0).left(), 0.0);
        QCOMPARE(m_table->cellRect(0, 2).left(), 170.0);
        QCOMPARE(m_table->columnWidths(), QString("50|120|30|100"));
        mouse.move(QPointF(250, 12));
        QCOMPARE(m_table->columnWidth(1), 120);
        // Wider than the view: the horizontal bar comes.
        m_table->setColumnWidth(3, 400);
        settle();
        auto *h = bar(m_table->horizontalScrollBar());
        QVERIFY(h && h->isVisible());
        QCOMPARE(h->maximum(), qreal(50 + 120 + 30 + 400) - m_table->bodyRect().width());
        // Never below the minimum width.
        m_table->setMinimumColumnWidth(20);
        mouse.drag(QPointF(50, 10), QPointF(-500, 10), 1);
        QCOMPARE(m_table->columnWidth(0), 20);
        QCOMPARE(m_table->cellRect(0, 1).left(), 20.0);
        // Not resizable: the press is a header click on the column it fell in.
        m_table->setResizableColumns(false);
        QCOMPARE(m_table->resizeHandleAt(QPointF(20, 10)), -1);
        QSignalSpy header(m_table, &ZTableWidget::headerClicked);
        mouse.drag(QPointF(20, 10), QPointF(90, 10), 1);
        QCOMPARE(m_table->columnWidth(0), 20);
        QCOMPARE(header.count(), 1);
        QCOMPARE(header.at(0).at(0).toInt(), 1);
    }

    void selection_data()
    {
        QTest::addColumn<int>("behavior");
        QTest::addColumn<QPointF>("pos");
        QTest::addColumn<QPoint>("cell");
        QTest::addColumn<QList<QPoint>>("selected");
        QTest::addColumn<QList<QPoint>>("unselected");
        QTest::newRow("cell") << int(ZTableWidget::SelectCells) << QPointF(60, 50) << QPoint(1, 1)
                              << QList<QPoint>{{1, 1}} << QList<QPoint>{{0, 1}, {2, 1}, {1, 0}, {1, 2}};
        QTest::newRow("row") << int(ZTableWidget::SelectRows) << QPointF(60, 50) << QPoint(1, 1)
                             << QList<QPoint>{{0, 1}, {1, 1}, {2, 1}, {3, 1}} << QList<QPoint>{{1, 0}, {1, 2}};
        QTest::newRow("last cell in view") << int(ZTableWidget::SelectCells) << QPointF(255, 195) << QPoint(3, 8)
                                           << QList<QPoint>{{3, 8}} << QList<QPoint>{{2, 8}, {3, 7}};
    }

    void selection()
    {
        QFETCH(int, behavior);
        QFETCH(QPointF, pos);
        QFETCH(QPoint, cell);
        QFETCH(QList<QPoint>, selected);
        QFETCH(QList<QPoint>, unselected);
        m_table->setSelectionBehavior(ZTableWidget::SelectionBehavior(behavior));
        QSignalSpy current(m_table, &ZTableWidget::currentCellChanged);
        QSignalSpy clicked(m_table, &ZTableWidget::cellClicked);
        click(*m_scene, pos);
        click(*m_scene, pos);
        QCOMPARE(QPoint(m_table->currentColumn(), m_table->currentRow()), cell);
        QCOMPARE(current.count(), 1);
        QCOMPARE(clicked.count(), 2);
        QCOMPARE(clicked.at(0).mid(0, 2), (QVariantList{cell.y(), cell.x()}));
        for (const QPoint &p : selected)
            QVERIFY(m_table->isSelected(p.y(), p.x()));
        for (const QPoint &p : unselected)
            QVERIFY(!m_table->isSelected(p.y(), p.x()));
        // Empty space changes nothing.
        click(*m_scene, QPointF(280, 100));
        QCOMPARE(m_table->currentRow(), cell.y());
    }

    // Arrows stop at the edges, pages move by the rows in view, and the
    // current cell is always scrolled into view.
    void keyboard()
    {
        QEvent activate(QEvent::WindowActivate);
        QCoreApplication::sendEvent(m_scene, &activate);
        click(*m_scene, QPointF(10, 30));
        QVERIFY(m_table->hasFocus());
        const struct { int key, row, column; } steps[] = {
            {Qt::Key_Right, 0, 1}, {Qt::Key_Right, 0, 2}, {Qt::Key_Right, 0, 3}, {Qt::Key_Right, 0, 3},
            {Qt::Key_Down, 1, 3},  {Qt::Key_Left, 1, 2},  {Qt::Key_Up, 0, 2},    {Qt::Key_Up, 0, 2},
            {Qt::Key_End, 99, 2},  {Qt::Key_PageUp, 91, 2}, {Qt::Key_Home, 0, 2}, {Qt::Key_PageDown, 8, 2},
        };
        for (const auto &step : steps) {
            key(step.key);
            QCOMPARE(QPoint(m_table->currentColumn(), m_table->currentRow()), QPoint(step.column, step.row));
            settle();
            const QRectF rect = m_table->cellRect(step.row, step.column);
            QVERIFY(rect.top() >= m_table->bodyRect().top() - 0.5);
            QVERIFY(rect.bottom() <= m_table->bodyRect().bottom() + 0.5);
        }
    }

    void scrollBars()
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
        QVERIFY(table.bodyRect().bottom() < 200);
        h->setValue(250);
        settle();
        QCOMPARE(table.columnAt(0), 2);
        QCOMPARE(table.cellRect(0, 3).left(), 50.0);
        // The wheel scrolls the rows.
        for (int i = 0; i < 50; ++i)
            table.commonModel()->addRow({"x"});
        settle();
        wheel(*m_scene, QPointF(50, 100), -120);
        QVERIFY(bar(table.verticalScrollBar())->value() > 0);
        m_scene->removeItem(&table);
    }

    // A million rows by a thousand columns: only the shown cells are read.
    void drawsOnlyWhatShows()
    {
        CountingModel model(1000000, 1000);
        m_table->setModel(&model);
        settle();
        auto *v = bar(m_table->verticalScrollBar());
        QCOMPARE(v->maximum(), qreal(1000000.0 * 20 - m_table->bodyRect().height()));
        v->setValue(v->maximum() / 2);
        settle();
        const QRectF body = m_table->bodyRect();
        QSet<int> rows, columns;
        for (qreal y = body.top(); y < body.bottom(); y += 1)
            rows.insert(m_table->rowAt(y));
        for (qreal x = body.left(); x < body.right(); x += 1)
            columns.insert(m_table->columnAt(x));
        QVERIFY(!rows.contains(-1) && !columns.contains(-1));
        model.reads = 0;
        render(*m_scene, QSize(400, 300));
        // A row touching the bottom edge may be read as well.
        QVERIFY2(model.reads >= rows.size() * columns.size(), qPrintable(QString::number(model.reads)));
        QVERIFY2(model.reads <= (rows.size() + 1) * columns.size(), qPrintable(QString::number(model.reads)));
        QCOMPARE(m_table->setModel(nullptr), &model);
        QCOMPARE(m_table->model(), m_table->commonModel());
    }

    void modelChangesKeepCurrent()
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
        // The hit tests know at once that the third column is gone; widths stay with their columns.
        QCOMPARE(m_table->columnAt(140), -1);
        QCOMPARE(m_table->columnWidths(), QString("50|80"));
        m_model->removeAll();
        settle();
        QCOMPARE(m_table->rowCount(), 0);
        render(*m_scene, QSize(400, 300));
    }

    void badInput()
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
        // A deleted model gives the view its own back.
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

    // The selected row is filled across its columns; a header image reaches the header only.
    void renders()
    {
        m_table->setSelectionBehavior(ZTableWidget::SelectRows);
        m_table->setSelectedColor(QColor(0, 200, 0));
        QVERIFY(m_table->setCurrentCell(2, 1));
        settle();
        const QImage image = render(*m_scene, QSize(400, 300));
        const QRect green = boxOf(image, QColor(0, 200, 0));
        const QRectF row = m_table->cellRect(2, 0);
        QVERIFY(green.top() >= row.top() && green.top() <= row.top() + 1);
        QVERIFY(green.bottom() < row.bottom() + 1);
        QVERIFY(green.left() < 50 && green.right() > 250);
        m_table->setHeaderImage(":/image/theme/pushbutton_normal.png");
        const QImage skinned = render(*m_scene, QSize(400, 300));
        QVERIFY(skinned.copy(0, 0, 260, 24) != image.copy(0, 0, 260, 24));
        QCOMPARE(skinned.copy(0, 24, 260, 150), image.copy(0, 24, 260, 150));
    }

    // Rows come from <row cells=".."/> children of table:data; other elements are skipped.
    void fromXml()
    {
        ZWidget root;
        QVERIFY(ZXmlUI::widgetFromMemory(R"(<uitree>
  <ZTableWidget objectName="table" headerText="A|B|C" columnWidths="40|60">
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
        QCOMPARE(table->columnCount(), 3);
        QCOMPARE(table->rowCount(), 3);
        QCOMPARE(table->columnWidths(), QString("40|60|100"));
        QCOMPARE(table->commonModel()->cellText(1, 1), QString("5"));
        QCOMPARE(table->commonModel()->cellText(1, 2), QString());
    }
};

QTEST_MAIN(tst_ZTableWidget)
#include "tst_ztablewidget.moc"
