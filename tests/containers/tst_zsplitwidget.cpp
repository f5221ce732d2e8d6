// Split widgets: how the panes share the length, where they stand after
// handle drags and resizes, and the extended form folding panes away.

#include "zsplitwidget.h"
#include "zsplitwidgetext.h"
#include "zxmlui.h"

#include <QtTest>

#include "../items/itemtestutil.h"

#include <QGraphicsScene>

using namespace itemtest;

namespace {

template<typename Split = ZSplitWidget>
struct Fixture
{
    QGraphicsScene scene;
    Split *split = new Split;

    explicit Fixture(int panes, Qt::Orientation orientation = Qt::Horizontal, const QList<qreal> &minimums = {})
    {
        scene.addItem(split);
        split->setOrientation(orientation);
        for (int i = 0; i < panes; ++i) {
            auto *pane = new ZWidget;
            pane->setObjectName(QString::number(i));
            const qreal m = minimums.value(i, 0);
            if (orientation == Qt::Horizontal)
                pane->setMinimumWidth(m);
            else
                pane->setMinimumHeight(m);
            split->addItem(pane);
        }
    }

    QPointF handleCentre(int index) const
    {
        ZWidget *h = split->handle(index);
        return h->mapToScene(h->rect().center());
    }

    void drag(int index, const QPointF &by)
    {
        const QPointF from = handleCentre(index);
        sendMouse(scene, QEvent::GraphicsSceneMousePress, from);
        // Two moves: the first beyond the click slop, the second to the end.
        sendMouse(scene, QEvent::GraphicsSceneMouseMove, from + by / 2);
        sendMouse(scene, QEvent::GraphicsSceneMouseMove, from + by);
        sendMouse(scene, QEvent::GraphicsSceneMouseRelease, from + by);
    }

    void click(int index)
    {
        const QPointF at = handleCentre(index);
        sendMouse(scene, QEvent::GraphicsSceneMousePress, at);
        sendMouse(scene, QEvent::GraphicsSceneMouseRelease, at);
    }
};

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
        QTest::newRow("equal by default") << Qt::Horizontal << 205 << 5 << "" << QList<qreal>{0, 0, 0}
                                          << QList<qreal>{65, 65, 65};
        QTest::newRow("by ratio") << Qt::Horizontal << 420 << 10 << "2|1|1" << QList<qreal>{0, 0, 0}
                                  << QList<qreal>{200, 100, 100};
        QTest::newRow("vertical") << Qt::Vertical << 420 << 10 << "1|3" << QList<qreal>{0, 0}
                                  << QList<qreal>{102.5, 307.5};
        QTest::newRow("minimum holds") << Qt::Horizontal << 310 << 10 << "9|1" << QList<qreal>{0, 80}
                                       << QList<qreal>{220, 80};
        QTest::newRow("held pane frees the others") << Qt::Horizontal << 320 << 10 << "1|1|1"
                                                    << QList<qreal>{0, 120, 120} << QList<qreal>{60, 120, 120};
        QTest::newRow("holding one pushes another under") << Qt::Horizontal << 300 << 0 << "1|1|4"
                                                          << QList<qreal>{49, 60, 0} << QList<qreal>{49, 60, 191};
        QTest::newRow("minimums do not fit") << Qt::Horizontal << 110 << 10 << "" << QList<qreal>{150, 50}
                                             << QList<qreal>{150, 50};
        QTest::newRow("garbage ratios count as one") << Qt::Horizontal << 500 << 0 << "x|-1|nan|2"
                                                     << QList<qreal>{0, 0, 0, 0} << QList<qreal>{100, 100, 100, 200};
        QTest::newRow("zero ratio") << Qt::Horizontal << 105 << 5 << "0|1" << QList<qreal>{0, 0}
                                    << QList<qreal>{0, 100};
        QTest::newRow("more ratios than panes") << Qt::Horizontal << 300 << 0 << "1|2|7" << QList<qreal>{0, 0}
                                                << QList<qreal>{100, 200};
    }
    void shares()
    {
        QFETCH(Qt::Orientation, orientation);
        QFETCH(int, length);
        QFETCH(int, handle);
        QFETCH(QString, ratios);
        QFETCH(QList<qreal>, minimums);
        QFETCH(QList<qreal>, sizes);
        Fixture<> f(int(minimums.size()), orientation, minimums);
        f.split->setHandleWidth(handle);
        f.split->setRatiosText(ratios);
        // Fixed: the minimums would not let the widget get smaller than their sum.
        f.split->setFixSize(orientation == Qt::Horizontal ? QSizeF(length, 40) : QSizeF(40, length));
        f.split->resize(f.split->fixSize());
        const QList<qreal> got = f.split->sizes();
        QCOMPARE(got.size(), sizes.size());
        qreal edge = 0;
        for (int i = 0; i < got.size(); ++i) {
            // Boundaries are rounded to whole pixels.
            QVERIFY2(qAbs(got.at(i) - sizes.at(i)) <= 1, qPrintable(QStringLiteral("pane %1: %2").arg(i).arg(got.at(i))));
            ZWidget *pane = f.split->widget(i);
            const QRectF g = pane->geometry();
            QCOMPARE(orientation == Qt::Horizontal ? g.left() : g.top(), edge);
            QCOMPARE(orientation == Qt::Horizontal ? g.height() : g.width(), 40.0);
            edge += got.at(i);
            if (i + 1 < got.size()) {
                const QRectF h = f.split->handle(i)->geometry();
                QCOMPARE(orientation == Qt::Horizontal ? h.left() : h.top(), edge);
                edge += handle;
            }
        }
        qreal needed = qreal(minimums.size() - 1) * handle;
        for (qreal m : minimums)
            needed += m;
        if (needed <= length)
            QCOMPARE(edge, qreal(length));
        else
            QVERIFY(f.split->flags() & QGraphicsItem::ItemClipsChildrenToShape);
    }

    void ratiosKeptOnResize()
    {
        Fixture<> f(2);
        f.split->setHandleWidth(0);
        f.split->setRatios({1, 3});
        f.split->resize(400, 30);
        QCOMPARE(f.split->sizes(), (QList<qreal>{100, 300}));
        f.split->resize(800, 30);
        QCOMPARE(f.split->sizes(), (QList<qreal>{200, 600}));
        QCOMPARE(f.split->ratiosText(), QStringLiteral("1|3"));
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
    }
    void drags()
    {
        QFETCH(Qt::Orientation, orientation);
        QFETCH(int, handle);
        QFETCH(qreal, by);
        QFETCH(QList<qreal>, sizes);
        Fixture<> f(3, orientation, {30, 30, 30});
        f.split->setHandleWidth(10);
        f.split->resize(orientation == Qt::Horizontal ? QSizeF(320, 50) : QSizeF(50, 320));
        QSignalSpy moved(f.split, &ZSplitWidget::handleMoved);
        f.drag(handle, orientation == Qt::Horizontal ? QPointF(by, 3) : QPointF(3, by));
        QCOMPARE(f.split->sizes(), sizes);
        QVERIFY(moved.size() >= 1);
        QCOMPARE(moved.last().at(0).toInt(), handle);
        qreal expectedEdge = 0;
        for (int i = 0; i <= handle; ++i)
            expectedEdge += sizes.at(i) + (i < handle ? 10 : 0);
        QCOMPARE(moved.last().at(1).toReal(), expectedEdge);
        // The dragged sizes are the ratios from now on.
        f.split->resize(orientation == Qt::Horizontal ? QSizeF(620, 50) : QSizeF(50, 620));
        const QList<qreal> after = f.split->sizes();
        for (int i = 0; i < 3; ++i)
            QVERIFY(qAbs(after.at(i) - 2 * sizes.at(i)) <= 1);
    }

    void clickIsNoDrag()
    {
        Fixture<> f(2);
        f.split->resize(205, 20);
        QSignalSpy moved(f.split, &ZSplitWidget::handleMoved);
        const QPointF at = f.handleCentre(0);
        sendMouse(f.scene, QEvent::GraphicsSceneMousePress, at);
        sendMouse(f.scene, QEvent::GraphicsSceneMouseMove, at + QPointF(1, 1)); // within the slop
        sendMouse(f.scene, QEvent::GraphicsSceneMouseRelease, at + QPointF(1, 1));
        QCOMPARE(moved.size(), 0);
        QCOMPARE(f.split->sizes(), (QList<qreal>{100, 100}));
    }

    void panesComeAndGo()
    {
        Fixture<> f(3);
        f.split->setHandleWidth(0);
        f.split->setRatios({1, 1, 2});
        f.split->resize(400, 20);
        auto *first = new ZWidget;
        f.split->insertItem(first, 0); // an average share: 4/3
        QCOMPARE(f.split->count(), 4);
        QCOMPARE(f.split->widget(0), first);
        QCOMPARE(f.split->ratios().size(), 4);
        QVERIFY(qAbs(f.split->ratios().at(0) - 4.0 / 3) < 1e-9);
        delete f.split->widget(3);
        QCOMPARE(f.split->count(), 3);
        QCOMPARE(f.split->handle(1) != nullptr, true);
        QCOMPARE(f.split->handle(2), nullptr);
        // Equal shares again (4/3, 1, 1 of 400).
        const QList<qreal> s = f.split->sizes();
        QVERIFY(qAbs(s.at(0) - 400 * (4.0 / 3) / (4.0 / 3 + 2)) <= 1);
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
        QVERIFY(f.split->isCollapsed(pane));
        QVERIFY(!f.split->widget(pane)->isVisible());
        const QList<qreal> s = f.split->sizes();
        for (int i = 0; i < 3; ++i)
            QVERIFY2(qAbs(s.at(i) - folded.at(i)) <= 1, qPrintable(QString::number(s.at(i))));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.at(0).at(0).toInt(), pane);
        QCOMPARE(changed.at(0).at(1).toBool(), true);

        // A drag next to the folded pane does nothing; a resize keeps it folded.
        f.drag(0, QPointF(50, 0));
        QVERIFY(f.split->isCollapsed(pane));
        f.split->resize(516, 30);
        QCOMPARE(f.split->sizes().at(pane), 0.0);
        f.split->resize(416, 30);

        // The next click brings it back at the size it had.
        f.click(0);
        QVERIFY(!f.split->isCollapsed(pane));
        QVERIFY(f.split->widget(pane)->isVisible());
        const QList<qreal> back = f.split->sizes();
        for (int i = 0; i < 3; ++i)
            QVERIFY(qAbs(back.at(i) - open.at(i)) <= 1);
        QCOMPARE(changed.size(), 2);
    }

    void collapseFromCode()
    {
        Fixture<ZSplitWidgetExt> f(2);
        f.split->resize(208, 20);
        QVERIFY(!f.split->setCollapsed(2, true));
        QVERIFY(!f.split->setCollapsed(-1, true));
        QVERIFY(f.split->setCollapsed(1, true));
        QCOMPARE(f.split->sizes(), (QList<qreal>{200, 0}));
        // A drag elsewhere keeps the folded pane's share for its return.
        Fixture<ZSplitWidgetExt> g(3);
        g.split->resize(316, 20);
        g.split->setCollapsed(0, true);
        g.drag(1, QPointF(-50, 0));
        QVERIFY(g.split->isCollapsed(0));
        g.split->setCollapsed(0, false);
        QVERIFY(qAbs(g.split->sizes().at(0) - 100) <= 1);
        g.split->setCollapseSide(ZSplitWidgetExt::CollapseSide(5));
        QCOMPARE(g.split->collapseSide(), ZSplitWidgetExt::Before);
    }

    void fromDocument()
    {
        QGraphicsScene scene;
        auto *root = new ZWidget;
        scene.addItem(root);
        const QByteArray doc = R"(<uitree>
  <ZSplitWidget objectName="split" orientation="Vertical" handleWidth="4" ratios="1|2" handleColor="255,0,0">
    <ZWidget/>
    <ZWidget minimumHeight="50"/>
  </ZSplitWidget>
  <ZSplitWidgetExt objectName="ext" collapseSide="After">
    <ZWidget/>
    <ZWidget/>
  </ZSplitWidgetExt>
</uitree>)";
        QVERIFY(ZXmlUI::widgetFromMemory(doc, root));
        auto *split = qobject_cast<ZSplitWidget *>(root->findObject(QStringLiteral("split")));
        QVERIFY(split);
        QCOMPARE(split->orientation(), Qt::Vertical);
        QCOMPARE(split->count(), 2);
        QCOMPARE(split->handleColor(), QColor(255, 0, 0));
        split->resize(40, 304);
        QCOMPARE(split->sizes(), (QList<qreal>{100, 200}));
        auto *ext = qobject_cast<ZSplitWidgetExt *>(root->findObject(QStringLiteral("ext")));
        QVERIFY(ext);
        QCOMPARE(ext->collapseSide(), ZSplitWidgetExt::After);
        QCOMPARE(ext->count(), 2);
        // The panes are the layout.
        split->setLayoutType(ZWidget::VBox);
        QCOMPARE(split->layoutType(), ZWidget::None);
    }
};

QTEST_MAIN(tst_ZSplitWidget)
#include "tst_zsplitwidget.moc"
