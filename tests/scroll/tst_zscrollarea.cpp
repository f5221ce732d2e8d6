// ZScrollArea and ZScrollWidget: bar decisions and placement, following the
// content, stretching it, wheel and drag through a scene, and documents.

#include "common/scenetest.h"
#include "zframeitem.h"
#include "zlabel.h"
#include "zscrollarea.h"
#include "zscrollbar.h"
#include "zscrollwidget.h"
#include "zxmlui.h"

#include <QtTest/QtTest>

using namespace scenetest;

// Areas are 200 x 100 with bars 14 thick.
class tst_ZScrollArea : public QObject
{
    Q_OBJECT

    QGraphicsScene *m_scene = nullptr;

    ZScrollArea *makeArea(const QSizeF &contentSize)
    {
        auto *area = new ZScrollArea;
        m_scene->addItem(area);
        area->setPos(10, 10);
        area->resize(200, 100);
        auto *content = new ZWidget;
        content->resize(contentSize);
        area->setContentWidget(content);
        return area;
    }
    static ZWidget *content(ZScrollArea *area) { return qobject_cast<ZWidget *>(area->contentWidget()); }

private slots:
    void init() { m_scene = new QGraphicsScene(0, 0, 400, 300); }
    void cleanup() { delete m_scene; }

    void barDecisions_data()
    {
        QTest::addColumn<QSizeF>("content");
        QTest::addColumn<int>("hPolicy");
        QTest::addColumn<int>("vPolicy");
        QTest::addColumn<bool>("underBar");
        QTest::addColumn<QSizeF>("viewport");
        QTest::addColumn<QSizeF>("maxima"); // a negative maximum: that bar hidden
        const int asNeeded = Qt::ScrollBarAsNeeded, on = Qt::ScrollBarAlwaysOn, off = Qt::ScrollBarAlwaysOff;
        QTest::newRow("exactly fits") << QSizeF(200, 100) << asNeeded << asNeeded << false << QSizeF(200, 100) << QSizeF(-1, -1);
        QTest::newRow("tall") << QSizeF(50, 300) << asNeeded << asNeeded << false << QSizeF(186, 100) << QSizeF(-1, 200);
        QTest::newRow("wide") << QSizeF(300, 50) << asNeeded << asNeeded << false << QSizeF(200, 86) << QSizeF(100, -1);
        QTest::newRow("vertical bar makes it too wide") << QSizeF(195, 300) << asNeeded << asNeeded << false
                                                        << QSizeF(186, 86) << QSizeF(9, 214);
        QTest::newRow("horizontal bar makes it too tall") << QSizeF(300, 95) << asNeeded << asNeeded << false
                                                          << QSizeF(186, 86) << QSizeF(114, 9);
        QTest::newRow("always on, nothing to scroll") << QSizeF(50, 50) << on << on << false << QSizeF(186, 86) << QSizeF(0, 0);
        QTest::newRow("always off") << QSizeF(300, 300) << off << off << false << QSizeF(200, 100) << QSizeF(-1, -1);
        QTest::newRow("vertical only") << QSizeF(300, 300) << off << asNeeded << false << QSizeF(186, 100) << QSizeF(-1, 200);
        QTest::newRow("under the bars") << QSizeF(300, 300) << asNeeded << asNeeded << true << QSizeF(200, 100) << QSizeF(100, 200);
        QTest::newRow("under the bars, one too tall") << QSizeF(195, 101) << asNeeded << asNeeded << true
                                                      << QSizeF(200, 100) << QSizeF(-1, 1);
    }

    void barDecisions()
    {
        QFETCH(QSizeF, content);
        QFETCH(int, hPolicy);
        QFETCH(int, vPolicy);
        QFETCH(bool, underBar);
        QFETCH(QSizeF, viewport);
        QFETCH(QSizeF, maxima);
        ZScrollArea *area = makeArea(content);
        area->setHScrollBarPolicy(Qt::ScrollBarPolicy(hPolicy));
        area->setVScrollBarPolicy(Qt::ScrollBarPolicy(vPolicy));
        area->setContentUnderBar(underBar);
        const bool hShown = maxima.width() >= 0, vShown = maxima.height() >= 0;
        QCOMPARE(area->hScrollBar()->isVisible(), hShown);
        QCOMPARE(area->vScrollBar()->isVisible(), vShown);
        QCOMPARE(area->effectiveHPolicy(), hShown ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
        QCOMPARE(area->viewport()->geometry(), QRectF(QPointF(), viewport));
        QCOMPARE(area->hScrollBar()->maximum(), qMax(0.0, maxima.width()));
        QCOMPARE(area->vScrollBar()->maximum(), qMax(0.0, maxima.height()));
        if (vShown)
            QCOMPARE(area->vScrollBar()->pageStep(), viewport.height());
        if (!hShown)
            QVERIFY(area->hScrollBar()->size().isEmpty());
    }

    // The bars lie along the far edges, the corner free, also over the content.
    void barsAlongTheFarEdges()
    {
        ZScrollArea *area = makeArea(QSizeF(300, 300));
        for (bool under : {true, false}) {
            area->setContentUnderBar(under);
            QCOMPARE(area->vScrollBar()->geometry(), QRectF(186, 0, 14, 86));
            QCOMPARE(area->hScrollBar()->geometry(), QRectF(0, 86, 186, 14));
        }
        QVERIFY(area->vScrollBar()->zValue() > area->viewport()->zValue());
        QVERIFY(area->viewport()->flags() & QGraphicsItem::ItemClipsChildrenToShape);
        area->setBarThickness(20);
        QCOMPARE(area->vScrollBar()->geometry(), QRectF(180, 0, 20, 80));
        QCOMPARE(area->vScrollBar()->frameThickness(), 20.0);
        area->setBarThickness(-4);
        QCOMPARE(area->barThickness(), 20);
        area->setBarOpacity(0.5);
        area->setBarOpacity(qQNaN());
        QCOMPARE(area->hScrollBar()->opacity(), 0.5);
        area->setBarOpacity(7);
        QCOMPARE(area->barOpacity(), 1.0);
        area->setHScrollBarPolicy(Qt::ScrollBarPolicy(3));
        QCOMPARE(area->hbarPolicy(), Qt::ScrollBarAsNeeded);
        area->setBarThickness(1 << 30); // bars wider than the area: an empty viewport
        QCOMPARE(area->viewport()->size(), QSizeF(0, 0));
    }

    // The content's and the area's geometry both count; shrinking returns towards the start.
    void followsTheGeometry()
    {
        ZScrollArea *area = makeArea(QSizeF(50, 50));
        content(area)->resize(50, 300);
        QVERIFY(area->vScrollBar()->isVisible());
        QCOMPARE(area->vScrollBar()->maximum(), 200.0);
        area->resize(200, 400);
        QVERIFY(!area->vScrollBar()->isVisible());
        area->resize(200, 100);
        content(area)->resize(300, 300);
        area->scrollTo(100, 150);
        content(area)->resize(250, 200);
        QCOMPARE(content(area)->pos(), QPointF(-64, -114));
        content(area)->resize(50, 50);
        QVERIFY(!area->vScrollBar()->isVisible() && !area->hScrollBar()->isVisible());
        QCOMPARE(content(area)->pos(), QPointF(0, 0));
        // Setting the same content again stops following it; a direct call still lays out.
        QCOMPARE(area->setContentWidget(content(area)), content(area));
        content(area)->resize(50, 300);
        QVERIFY(!area->vScrollBar()->isVisible());
        area->updateScroll();
        QVERIFY(area->vScrollBar()->isVisible());
    }

    void barValuesAreTheOffset()
    {
        ZScrollArea *area = makeArea(QSizeF(300, 300));
        area->vScrollBar()->setValue(50);
        QCOMPARE(content(area)->pos(), QPointF(0, -50));
        area->scrollTo(30, 60);
        QCOMPARE(content(area)->pos(), QPointF(-30, -60));
        QCOMPARE(area->property("scrollPos").toPoint(), QPoint(30, 60));
        area->scrollToEnd();
        QCOMPARE(content(area)->pos(), QPointF(-30, -214));
        area->scrollToEnd(Qt::Horizontal);
        QCOMPARE(content(area)->pos(), QPointF(-114, -214));
        area->scrollTo(QPointF(1000, -1000));
        QCOMPARE(area->scrollPos(), QPoint(114, 0));
        area->scrollToStart();
        QCOMPARE(content(area)->pos(), QPointF(0, 0));
    }

    // What is no fit content is refused; a new content is placed at the start,
    // and the previous one is the caller's, no longer followed.
    void contentReplacement()
    {
        ZScrollArea *area = makeArea(QSizeF(300, 300));
        ZWidget *first = content(area);
        QCOMPARE(first->parentItem(), area->viewport());
        area->scrollTo(20, 20);
        QObject notAWidget;
        QCOMPARE(area->setContentWidget(&notAWidget), first);
        QCOMPARE(area->setContentWidget(nullptr), first);
        QCOMPARE(area->setContentWidget(area), first);
        QCOMPARE(area->setContentWidget(area->vScrollBar()), first);
        auto *owner = new ZWidget;
        area->setParent(owner);
        QCOMPARE(area->setContentWidget(owner), first);
        area->setParent(nullptr);
        delete owner;
        QCOMPARE(area->contentWidget(), first);

        auto *holder = new ZWidget;
        holder->setLayoutType(ZWidget::VBox);
        m_scene->addItem(holder);
        auto *second = new ZWidget;
        holder->addItem(second);
        second->resize(50, 400);
        QCOMPARE(area->setContentWidget(second), first);
        QCOMPARE(second->parentItem(), area->viewport());
        QCOMPARE(area->scrollPos(), QPoint(0, 0));
        QCOMPARE(area->vScrollBar()->maximum(), 300.0);
        first->resize(1000, 1000);
        QVERIFY(!area->hScrollBar()->isVisible());
        delete first;
        second->resize(50, 50);
        QVERIFY(!area->vScrollBar()->isVisible());
        // A deleted content leaves an empty area.
        delete second;
        QCOMPARE(area->contentWidget(), nullptr);
        area->scrollTo(10, 10);
        area->updateScroll();
        area->resize(50, 50);
        QCOMPARE(area->scrollPos(), QPoint(0, 0));
    }

    // The content is stretched along the axes that do not scroll, never below its minimum.
    void widgetResizable()
    {
        ZScrollArea *area = makeArea(QSizeF(50, 300));
        area->setWidgetResizable(true);
        QCOMPARE(content(area)->size(), QSizeF(186, 300));
        area->resize(300, 100);
        QCOMPARE(content(area)->size(), QSizeF(286, 300));
        area->setVScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        QCOMPARE(content(area)->size(), QSizeF(300, 100));
        // Squeezed and without a minimum of its own, the content fits: no bar comes back.
        area->setVScrollBarPolicy(Qt::ScrollBarAsNeeded);
        QCOMPARE(content(area)->size(), QSizeF(300, 100));
        QVERIFY(!area->vScrollBar()->isVisible());
        content(area)->setMinimumSize(400, 250);
        area->updateScroll();
        QVERIFY(area->hScrollBar()->isVisible() && area->vScrollBar()->isVisible());
        QCOMPARE(content(area)->size(), QSizeF(400, 250));
        area->setWidgetResizable(false);
        content(area)->setMinimumSize(0, 0);
        area->setScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        content(area)->resize(10, 10);
        area->resize(300, 50);
        QCOMPARE(content(area)->size(), QSizeF(10, 10));
        // Stretched to the full width, then growing taller by itself: the
        // vertical bar narrows it, and no horizontal bar comes for the width given.
        ZScrollArea *other = makeArea(QSizeF(50, 50));
        other->setWidgetResizable(true);
        content(other)->resize(200, 300);
        QVERIFY(other->vScrollBar()->isVisible());
        QVERIFY(!other->hScrollBar()->isVisible());
        QCOMPARE(content(other)->size(), QSizeF(186, 300));
    }

    void wheelGoesToTheShownBar()
    {
        ZScrollArea *area = makeArea(QSizeF(300, 300));
        const QPointF over = area->mapToScene(50, 50);
        QVERIFY(wheel(*m_scene, over, -120));
        QCOMPARE(area->vscrollPos(), ZScrollArea::DefaultWheelStep);
        area->setVScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        QVERIFY(wheel(*m_scene, over, -240));
        QCOMPARE(area->hscrollPos(), 2 * ZScrollArea::DefaultWheelStep);
        // Over a bar, the bar takes it itself.
        area->setVScrollBarPolicy(Qt::ScrollBarAsNeeded);
        QVERIFY(wheel(*m_scene, area->mapToScene(50, 93), 120));
        QCOMPARE(area->hscrollPos(), ZScrollArea::DefaultWheelStep);
        QCOMPARE(area->vscrollPos(), 0.0);
        // Nothing to scroll: the event goes on to whatever lies below.
        content(area)->resize(20, 20);
        QVERIFY(!wheel(*m_scene, over, -120));
    }

    // Presses pass through to what lies below, unless dragging the content is on.
    void dragContent()
    {
        auto *below = new ZFrameItem;
        m_scene->addItem(below);
        below->setZValue(-1);
        below->setGeometry(0, 0, 400, 300);
        QSignalSpy pressed(below, &ZFrameItem::pressed);
        ZScrollArea *area = makeArea(QSizeF(300, 300));
        Mouse mouse(*m_scene);
        mouse.click(area->mapToScene(50, 50));
        QCOMPARE(pressed.count(), 1);
        area->setDragContent(true);
        const QPointF from = area->mapToScene(100, 60);
        QVERIFY(mouse.press(from));
        mouse.move(from + QPointF(-10, -20));
        QCOMPARE(area->scrollPos(), QPoint(10, 20));
        mouse.move(from + QPointF(-30, -25));
        QCOMPARE(area->scrollPos(), QPoint(30, 25));
        mouse.move(from + QPointF(500, 500)); // clamped at the start
        QCOMPARE(area->scrollPos(), QPoint(0, 0));
        mouse.release(from);
        QCOMPARE(pressed.count(), 1);
    }

    // The first child becomes the content, further children belong to the area.
    void areaFromXml()
    {
        ZWidget root;
        QVERIFY(ZXmlUI::widgetFromMemory(R"(<uitree>
  <ZScrollArea objectName="area" fixSize="200,100" widgetResizable="true">
    <ZWidget objectName="content" fixHeight="300"/>
    <ZWidget objectName="extra"/>
  </ZScrollArea>
</uitree>)", &root));
        auto *area = qobject_cast<ZScrollArea *>(root.findObject(QStringLiteral("area")));
        QVERIFY(area);
        auto *content = qobject_cast<ZWidget *>(root.findObject(QStringLiteral("content")));
        QCOMPARE(area->contentWidget(), content);
        QCOMPARE(content->size(), QSizeF(186, 300));
        QCOMPARE(root.findObject(QStringLiteral("extra"))->parent(), area);
    }

    // A scroll widget lays its items out in its content; the bar across the
    // layout never shows, the one along it as needed.
    void scrollWidget()
    {
        auto *list = new ZScrollWidget;
        m_scene->addItem(list);
        list->resize(200, 100);
        list->setLayoutType(ZWidget::VBox);
        auto *content = qobject_cast<ZWidget *>(list->contentWidget());
        QCOMPARE(list->layoutWidget(), content);
        QList<ZLabel *> rows;
        for (int i = 0; i < 5; ++i) {
            rows.append(new ZLabel);
            rows.last()->setFixHeight(30);
            list->addItem(rows.last());
        }
        QCOMPARE(rows.first()->parentItem(), content);
        QTRY_COMPARE(content->size(), QSizeF(186, 150));
        QVERIFY(list->vScrollBar()->isVisible());
        QCOMPARE(list->vScrollBar()->maximum(), 50.0);
        rows.first()->setFixWidth(500);
        QTest::qWait(20);
        QVERIFY(!list->hScrollBar()->isVisible());
        for (int i = 0; i < 3; ++i)
            list->removeItem(rows.at(i));
        QTRY_VERIFY(!list->vScrollBar()->isVisible());
        QTRY_COMPARE(content->size().width(), 200.0);
        qDeleteAll(rows.mid(0, 3));

        auto *strip = new ZScrollWidget;
        m_scene->addItem(strip);
        strip->resize(200, 100);
        strip->setLayoutType(ZWidget::HBox);
        for (int i = 0; i < 4; ++i) {
            auto *cell = new ZWidget;
            cell->setFixWidth(80);
            strip->addItem(cell);
        }
        QTRY_COMPARE(qobject_cast<ZWidget *>(strip->contentWidget())->size(), QSizeF(320, 86));
        QVERIFY(!strip->vScrollBar()->isVisible());
        QCOMPARE(strip->hScrollBar()->maximum(), 120.0);
    }

    // Document children go into the content, which takes the widget's layout settings.
    void scrollWidgetFromXml()
    {
        ZWidget root;
        QVERIFY(ZXmlUI::widgetFromMemory(R"(<uitree>
  <ZScrollWidget objectName="list" fixSize="200,100" layout="VBox" margins="4,4,4,4" spacing="2">
    <ZLabel fixHeight="30"/><ZLabel fixHeight="30"/><ZLabel fixHeight="30"/>
    <ZLabel objectName="last" fixHeight="30"/>
  </ZScrollWidget>
</uitree>)", &root));
        auto *list = qobject_cast<ZScrollWidget *>(root.findObject(QStringLiteral("list")));
        QVERIFY(list);
        auto *content = qobject_cast<ZWidget *>(list->contentWidget());
        QCOMPARE(content->margins(), QMargins(4, 4, 4, 4));
        QCOMPARE(content->spacing(), 2);
        QCOMPARE(root.findObject(QStringLiteral("last"))->parent(), content);
        // 4 * 30 + 3 * 2 + 8 = 134.
        QTRY_COMPARE(content->size(), QSizeF(186, 134));
        QCOMPARE(list->vScrollBar()->maximum(), 34.0);
    }
};

QTEST_MAIN(tst_ZScrollArea)
#include "tst_zscrollarea.moc"
