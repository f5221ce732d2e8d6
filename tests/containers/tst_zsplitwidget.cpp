// Split widgets: how the panes share the length, where they stand after
// handle drags and resizes, and the extended form folding panes away.

#include "zsplitwidget.h"
#include "zsplitwidgetext.h"

#include "common/scenetest.h"

#include <QtTest>

namespace {

template<typename Split = ZSplitWidget>
struct Fixture
{
    QGraphicsScene scene;
    scenetest::Mouse mouse{scene};
    Split *split = new Split;

    explicit Fixture(int panes, Qt::Orientation orientation = Qt::Horizontal, const QList<qreal> &minimums = {})
    {
        scene.addItem(split);
        split->setOrientation(orientation);
        for (int i = 0; i < panes; ++i) {
            auto *pane = new ZWidget;
            const qreal m = minimums.value(i, 0);
            pane->setMinimumSize(orientation == Qt::Horizontal ? QSizeF(m, 0) : QSizeF(0, m));
            split->addItem(pane);
        }
    }
    QPointF handleCentre(int index) const { return split->handle(index)->sceneBoundingRect().center(); }
    // Two moves: the first beyond the click slop, the second to the end.
    void drag(int index, const QPointF &by) { mouse.drag(handleCentre(index), handleCentre(index) + by, 2); }
    void click(int index)
    {
        mouse.press(handleCentre(index));
        mouse.release(handleCentre(index));
    }
};

// Pane boundaries are rounded to whole pixels.
bool near(const QList<qreal> &got, const QList<qreal> &expected)
{
    bool same = got.size() == expected.size();
    for (int i = 0; same && i < got.size(); ++i)
        same = qAbs(got.at(i) - expected.at(i)) <= 1;
    return same;
}

} // namespace

class tst_ZSplitWidget : public QObject
{
    Q_OBJECT

private slots:
    void shares_data()
    {
        QTest::addColumn<Qt::Orientation>("orientation");
        QTest::addColumn<int>("length");
        QTest::addColumn<int>("handle");
        QTest::addColumn<QString>("ratios");
        QTest::addColumn<QList<qreal>>("minimums");
        QTest::addColumn<QList<qreal>>("sizes");
        const auto row = [](const char *name, int length, int handle, const char *ratios, QList<qreal> minimums,
                            QList<qreal> sizes, Qt::Orientation o = Qt::Horizontal) {
            QTest::newRow(name) << o << length << handle << QString::fromLatin1(ratios) << minimums << sizes;
        };
        row("equal by default", 205, 5, "", {0, 0, 0}, {65, 65, 65});
        row("by ratio", 420, 10, "2|1|1", {0, 0, 0}, {200, 100, 100});
        row("vertical", 420, 10, "1|3", {0, 0}, {102.5, 307.5}, Qt::Vertical);
        row("minimum holds", 310, 10, "9|1", {0, 80}, {220, 80});
        row("held pane frees the others", 320, 10, "1|1|1", {0, 120, 120}, {60, 120, 120});
        row("holding one pushes another under", 300, 0, "1|1|4", {49, 60, 0}, {49, 60, 191});
        row("minimums do not fit", 110, 10, "", {150, 50}, {150, 50});
        row("garbage ratios count as one", 500, 0, "x|-1|nan|2", {0, 0, 0, 0}, {100, 100, 100, 200});
        row("zero ratio", 105, 5, "0|1", {0, 0}, {0, 100});
        row("more ratios than panes", 300, 0, "1|2|7", {0, 0}, {100, 200});
    }
    void shares()
    {
        QFETCH(Qt::Orientation, orientation);
        QFETCH(int, length);
        QFETCH(int, handle);
        QFETCH(QString, ratios);
        QFETCH(QList<qreal>, minimums);
        QFETCH(QList<qreal>, sizes);
        const bool across = orientation == Qt::Horizontal;
        Fixture<> f(int(minimums.size()), orientation, minimums);
        f.split->setHandleWidth(handle);
        f.split->setRatiosText(ratios);
        // Fixed: the minimums would not let the widget get smaller than their sum.
        f.split->setFixSize(across ? QSizeF(length, 40) : QSizeF(40, length));
        f.split->resize(f.split->fixSize());
        const QList<qreal> got = f.split->sizes();
        QVERIFY(near(got, sizes));
        // Panes and handles follow each other without gaps, across the whole width.
        qreal edge = 0, needed = qreal(minimums.size() - 1) * handle;
        for (int i = 0; i < got.size(); ++i) {
            const QRectF g = f.split->widget(i)->geometry();
            QCOMPARE(across ? g.left() : g.top(), edge);
            QCOMPARE(across ? g.height() : g.width(), 40.0);
            edge += got.at(i);
            needed += minimums.at(i);
            if (i + 1 < got.size()) {
                const QRectF h = f.split->handle(i)->geometry();
                QCOMPARE(across ? h.left() : h.top(), edge);
                edge += handle;
            }
        }
        if (needed <= length)
            QCOMPARE(edge, qreal(length));
        else
            QVERIFY(f.split->flags() & QGraphicsItem::ItemClipsChildrenToShape);
    }

    void drags_data()
    {
        QTest::addColumn<Qt::Orientation>("orientation");
        QTest::addColumn<int>("handle");
        QTest::addColumn<qreal>("by");
        QTest::addColumn<QList<qreal>>("sizes");
        // Three panes of 100 with handles of 10, minimum 30 each.
        QTest::newRow("right") << Qt::Horizontal << 0 << 40.0 << QList<qreal>{140, 60, 100};
        QTest::newRow("left") << Qt::Horizontal << 1 << -25.0 << QList<qreal>{100, 75, 125};
        QTest::newRow("stopped by the next minimum") << Qt::Horizontal << 0 << 500.0 << QList<qreal>{170, 30, 100};
        QTest::newRow("stopped by its own minimum") << Qt::Horizontal << 1 << -90.0 << QList<qreal>{100, 30, 170};
        QTest::newRow("down") << Qt::Vertical << 0 << 20.0 << QList<qreal>{120, 80, 100};
        QTest::newRow("within the click slop") << Qt::Horizontal << 0 << 1.0 << QList<qreal>{100, 100, 100};
    }
    void drags()
    {
        QFETCH(Qt::Orientation, orientation);
        QFETCH(int, handle);
        QFETCH(qreal, by);
        QFETCH(QList<qreal>, sizes);
        const bool across = orientation == Qt::Horizontal;
        Fixture<> f(3, orientation, {30, 30, 30});
        f.split->setHandleWidth(10);
        f.split->resize(across ? QSizeF(320, 50) : QSizeF(50, 320));
        QSignalSpy moved(f.split, &ZSplitWidget::handleMoved);
        const qreal aside = qMin(qAbs(by), 3.0);
        f.drag(handle, across ? QPointF(by, aside) : QPointF(aside, by));
        QCOMPARE(f.split->sizes(), sizes);
        if (qAbs(by) < 2) {
            QCOMPARE(moved.size(), 0);
            return;
        }
        const qreal edge = sizes.at(0) + (handle ? 10 + sizes.at(1) : 0);
        QCOMPARE(moved.last(), (QList<QVariant>{handle, edge}));
        // The dragged sizes are the ratios from now on.
        f.split->resize(across ? QSizeF(620, 50) : QSizeF(50, 620));
        QVERIFY(near(f.split->sizes(), {2 * sizes.at(0), 2 * sizes.at(1), 2 * sizes.at(2)}));
    }

    void panesComeAndGo()
    {
        Fixture<> f(3);
        f.split->setHandleWidth(0);
        f.split->setRatios({1, 1, 2});
        f.split->resize(400, 20);
        auto *first = new ZWidget;
        f.split->insertItem(first, 0); // an average share: 4/3
        QCOMPARE(f.split->widget(0), first);
        QCOMPARE(f.split->ratios().size(), 4);
        QVERIFY(qAbs(f.split->ratios().at(0) - 4.0 / 3) < 1e-9);
        delete f.split->widget(3);
        QCOMPARE(f.split->count(), 3);
        QVERIFY(f.split->handle(1) && !f.split->handle(2));
        QVERIFY(qAbs(f.split->sizes().at(0) - 400 * (4.0 / 3) / (4.0 / 3 + 2)) <= 1);
        ZWidget *second = f.split->widget(1);
        f.split->removeItem(second);
        QCOMPARE(second->parentItem(), nullptr);
        delete second;
        QCOMPARE(f.split->count(), 2);
        // Extra handles hide; the only one left sits between the two panes.
        int visibleHandles = 0;
        for (QGraphicsItem *child : f.split->childItems())
            visibleHandles += (child->isVisible() && f.split->indexOf(static_cast<ZWidget *>(child)) < 0) ? 1 : 0;
        QCOMPARE(visibleHandles, 1);
        QVERIFY(!f.split->moveHandle(1, 10));
        QVERIFY(!f.split->moveHandle(-1, 10));
        QVERIFY(!f.split->moveHandle(0, qQNaN()));
        f.split->addItem(nullptr);
        f.split->addItem(f.split);
        QCOMPARE(f.split->count(), 2);
        // The panes are the layout.
        f.split->setLayoutType(ZWidget::VBox);
        QCOMPARE(f.split->layoutType(), ZWidget::None);
    }

    void collapse_data()
    {
        QTest::addColumn<ZSplitWidgetExt::CollapseSide>("side");
        QTest::addColumn<int>("pane");
        QTest::addColumn<QList<qreal>>("folded");
        // Three panes 100, 100, 200 (handles 8); clicks on handle 0.
        QTest::newRow("before") << ZSplitWidgetExt::Before << 0 << QList<qreal>{0, 133, 267};
        QTest::newRow("after") << ZSplitWidgetExt::After << 1 << QList<qreal>{133, 0, 267};
    }
    void collapse()
    {
        QFETCH(ZSplitWidgetExt::CollapseSide, side);
        QFETCH(int, pane);
        QFETCH(QList<qreal>, folded);
        Fixture<ZSplitWidgetExt> f(3);
        QCOMPARE(f.split->handleWidth(), 8);
        f.split->setCollapseSide(side);
        f.split->setRatios({1, 1, 2});
        f.split->resize(416, 30);
        const QList<qreal> open = f.split->sizes();
        QCOMPARE(open, (QList<qreal>{100, 100, 200}));
        QSignalSpy changed(f.split, &ZSplitWidgetExt::collapsedChanged);
        f.click(0);
        QVERIFY(f.split->isCollapsed(pane) && !f.split->widget(pane)->isVisible());
        QVERIFY(near(f.split->sizes(), folded));
        QCOMPARE(changed, QList<QList<QVariant>>{(QList<QVariant>{pane, true})});
        // A drag next to the folded pane does nothing; a resize keeps it folded.
        f.drag(0, QPointF(50, 0));
        QVERIFY(f.split->isCollapsed(pane));
        f.split->resize(516, 30);
        QCOMPARE(f.split->sizes().at(pane), 0.0);
        f.split->resize(416, 30);
        // The next click brings it back at the size it had.
        f.click(0);
        QVERIFY(!f.split->isCollapsed(pane) && f.split->widget(pane)->isVisible());
        QVERIFY(near(f.split->sizes(), open));
        QCOMPARE(changed.size(), 2);
    }

    void collapseFromCode()
    {
        Fixture<ZSplitWidgetExt> f(3);
        f.split->resize(316, 20);
        QVERIFY(!f.split->setCollapsed(3, true));
        QVERIFY(!f.split->setCollapsed(-1, true));
        QVERIFY(f.split->setCollapsed(0, true));
        QVERIFY(near(f.split->sizes(), {0, 150, 150}));
        // A drag elsewhere keeps the folded pane's share for its return.
        f.drag(1, QPointF(-50, 0));
        QVERIFY(f.split->isCollapsed(0));
        f.split->setCollapsed(0, false);
        QVERIFY(qAbs(f.split->sizes().at(0) - 100) <= 1);
        f.split->setCollapseSide(ZSplitWidgetExt::CollapseSide(5));
        QCOMPARE(f.split->collapseSide(), ZSplitWidgetExt::Before);
    }
};

QTEST_MAIN(tst_ZSplitWidget)
#include "tst_zsplitwidget.moc"
