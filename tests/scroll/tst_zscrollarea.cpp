// ZScrollArea and ZScrollWidget: bar decisions and placement, following the
// content, stretching it, wheel and drag through a scene, and documents.

#include <QtTest/QtTest>

#include "scroll/scrolltestutil.h"
#include "zframeitem.h"
#include "zlabel.h"
#include "zscrollarea.h"
#include "zscrollbar.h"
#include "zscrollwidget.h"
#include "zxmlui.h"

#include <limits>

using namespace scrolltest;

class tst_ZScrollArea : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void barDecisions_data();
    void barDecisions();
    void barsAlongTheFarEdges();
    void followsTheContentsGeometry();
    void barValuesAreTheOffset();
    void shrinkingContentReturnsToTheStart();
    void settingTheSameContentTwiceStopsFollowing();
    void contentReplacement();
    void widgetResizable();
    void widgetResizableOff();
    void wheelGoesToTheShownBar();
    void dragContent();
    void pressesPassThroughWithoutDrag();
    void thicknessAndOpacity();
    void deletedContent();
    void areaFromXml();

    void scrollWidgetVBox();
    void scrollWidgetHBox();
    void scrollWidgetFromXml();

private:
    ZScrollArea *makeArea(const QSizeF &contentSize);

    QGraphicsScene *m_scene = nullptr;
};

void tst_ZScrollArea::init()
{
    m_scene = new QGraphicsScene(0, 0, 400, 300);
}

void tst_ZScrollArea::cleanup()
{
    delete m_scene;
    m_scene = nullptr;
}

ZScrollArea *tst_ZScrollArea::makeArea(const QSizeF &contentSize)
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

void tst_ZScrollArea::barDecisions_data()
{
    QTest::addColumn<QSizeF>("content");
    QTest::addColumn<int>("hPolicy");
    QTest::addColumn<int>("vPolicy");
    QTest::addColumn<bool>("underBar");
    QTest::addColumn<bool>("hShown");
    QTest::addColumn<bool>("vShown");
    QTest::addColumn<QSizeF>("viewport");
    QTest::addColumn<qreal>("hMax");
    QTest::addColumn<qreal>("vMax");

    const int asNeeded = Qt::ScrollBarAsNeeded, on = Qt::ScrollBarAlwaysOn, off = Qt::ScrollBarAlwaysOff;
    // Area 200 x 100, bars 14 thick.
    QTest::newRow("small content") << QSizeF(50, 50) << asNeeded << asNeeded << false << false << false
                                   << QSizeF(200, 100) << 0.0 << 0.0;
    QTest::newRow("exactly fits") << QSizeF(200, 100) << asNeeded << asNeeded << false << false << false
                                  << QSizeF(200, 100) << 0.0 << 0.0;
    QTest::newRow("tall") << QSizeF(50, 300) << asNeeded << asNeeded << false << false << true
                          << QSizeF(186, 100) << 0.0 << 200.0;
    QTest::newRow("wide") << QSizeF(300, 50) << asNeeded << asNeeded << false << true << false
                          << QSizeF(200, 86) << 100.0 << 0.0;
    QTest::newRow("both") << QSizeF(300, 300) << asNeeded << asNeeded << false << true << true
                          << QSizeF(186, 86) << 114.0 << 214.0;
    QTest::newRow("vertical bar makes it too wide") << QSizeF(195, 300) << asNeeded << asNeeded << false << true
                                                    << true << QSizeF(186, 86) << 9.0 << 214.0;
    QTest::newRow("horizontal bar makes it too tall") << QSizeF(300, 95) << asNeeded << asNeeded << false << true
                                                      << true << QSizeF(186, 86) << 114.0 << 9.0;
    QTest::newRow("always on, nothing to scroll") << QSizeF(50, 50) << on << on << false << true << true
                                                  << QSizeF(186, 86) << 0.0 << 0.0;
    QTest::newRow("always off") << QSizeF(300, 300) << off << off << false << false << false
                                << QSizeF(200, 100) << 0.0 << 0.0;
    QTest::newRow("vertical only") << QSizeF(300, 300) << off << asNeeded << false << false << true
                                   << QSizeF(186, 100) << 0.0 << 200.0;
    QTest::newRow("under the bars") << QSizeF(300, 300) << asNeeded << asNeeded << true << true << true
                                    << QSizeF(200, 100) << 100.0 << 200.0;
    QTest::newRow("under the bars, one too tall") << QSizeF(195, 101) << asNeeded << asNeeded << true << false
                                                  << true << QSizeF(200, 100) << 0.0 << 1.0;
}

void tst_ZScrollArea::barDecisions()
{
    QFETCH(QSizeF, content);
    QFETCH(int, hPolicy);
    QFETCH(int, vPolicy);
    QFETCH(bool, underBar);
    QFETCH(bool, hShown);
    QFETCH(bool, vShown);
    QFETCH(QSizeF, viewport);
    QFETCH(qreal, hMax);
    QFETCH(qreal, vMax);

    ZScrollArea *area = makeArea(content);
    area->setHScrollBarPolicy(Qt::ScrollBarPolicy(hPolicy));
    area->setVScrollBarPolicy(Qt::ScrollBarPolicy(vPolicy));
    area->setContentUnderBar(underBar);
    QCOMPARE(area->hScrollBar()->isVisible(), hShown);
    QCOMPARE(area->vScrollBar()->isVisible(), vShown);
    QCOMPARE(area->effectiveHPolicy(), hShown ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    QCOMPARE(area->viewport()->geometry(), QRectF(QPointF(), viewport));
    QCOMPARE(area->hScrollBar()->maximum(), hMax);
    QCOMPARE(area->vScrollBar()->maximum(), vMax);
    QCOMPARE(area->hScrollBar()->minimum(), 0.0);
    if (vShown)
        QCOMPARE(area->vScrollBar()->pageStep(), viewport.height());
    if (hShown)
        QCOMPARE(area->hScrollBar()->pageStep(), viewport.width());
    if (!hShown)
        QVERIFY(area->hScrollBar()->size().isEmpty());
    QCOMPARE(qobject_cast<ZWidget *>(area->contentWidget())->pos(), QPointF(0, 0));
}

void tst_ZScrollArea::barsAlongTheFarEdges()
{
    ZScrollArea *area = makeArea(QSizeF(300, 300));
    QCOMPARE(area->vScrollBar()->geometry(), QRectF(186, 0, 14, 86));
    QCOMPARE(area->hScrollBar()->geometry(), QRectF(0, 86, 186, 14));
    QCOMPARE(area->vScrollBar()->orientation(), Qt::Vertical);
    area->setContentUnderBar(true);
    // Over the content now, the corner left free.
    QCOMPARE(area->vScrollBar()->geometry(), QRectF(186, 0, 14, 86));
    QCOMPARE(area->hScrollBar()->geometry(), QRectF(0, 86, 186, 14));
    QCOMPARE(area->viewport()->size(), QSizeF(200, 100));
    QVERIFY(area->vScrollBar()->zValue() > area->viewport()->zValue());
    QVERIFY(area->viewport()->flags() & QGraphicsItem::ItemClipsChildrenToShape);
}

void tst_ZScrollArea::followsTheContentsGeometry()
{
    ZScrollArea *area = makeArea(QSizeF(50, 50));
    auto *content = qobject_cast<ZWidget *>(area->contentWidget());
    QVERIFY(!area->vScrollBar()->isVisible());
    content->resize(50, 300);
    QVERIFY(area->vScrollBar()->isVisible());
    QCOMPARE(area->viewport()->size().width(), 186.0);
    QCOMPARE(area->vScrollBar()->maximum(), 200.0);
    area->setContentUnderBar(true);
    QCOMPARE(area->viewport()->size().width(), 200.0);
    QVERIFY(area->vScrollBar()->isVisible());
    // The area's own size counts as well.
    area->setContentUnderBar(false);
    area->resize(200, 400);
    QVERIFY(!area->vScrollBar()->isVisible());
    QCOMPARE(area->viewport()->size(), QSizeF(200, 400));
}

void tst_ZScrollArea::barValuesAreTheOffset()
{
    ZScrollArea *area = makeArea(QSizeF(300, 300));
    auto *content = qobject_cast<ZWidget *>(area->contentWidget());
    area->vScrollBar()->setValue(50);
    QCOMPARE(content->pos(), QPointF(0, -50));
    area->scrollTo(30, 60);
    QCOMPARE(content->pos(), QPointF(-30, -60));
    QCOMPARE(area->scrollPos(), QPoint(30, 60));
    QCOMPARE(area->property("scrollPos").toPoint(), QPoint(30, 60));
    QCOMPARE(area->hscrollPos(), 30.0);
    QCOMPARE(area->vscrollPos(), 60.0);
    area->scrollToEnd();
    QCOMPARE(content->pos(), QPointF(-30, -214));
    area->scrollToEnd(Qt::Horizontal);
    QCOMPARE(content->pos(), QPointF(-114, -214));
    area->scrollTo(QPointF(1000, -1000));
    QCOMPARE(area->scrollPos(), QPoint(114, 0));
    area->scrollToStart();
    QCOMPARE(content->pos(), QPointF(0, 0));
}

void tst_ZScrollArea::shrinkingContentReturnsToTheStart()
{
    ZScrollArea *area = makeArea(QSizeF(300, 300));
    auto *content = qobject_cast<ZWidget *>(area->contentWidget());
    area->scrollTo(100, 150);
    content->resize(250, 200);
    QCOMPARE(area->vScrollBar()->maximum(), 114.0);
    QCOMPARE(content->pos(), QPointF(-64, -114));
    content->resize(50, 50);
    QVERIFY(!area->vScrollBar()->isVisible());
    QVERIFY(!area->hScrollBar()->isVisible());
    QCOMPARE(content->pos(), QPointF(0, 0));
}

void tst_ZScrollArea::settingTheSameContentTwiceStopsFollowing()
{
    ZScrollArea *area = makeArea(QSizeF(50, 50));
    auto *content = qobject_cast<ZWidget *>(area->contentWidget());
    QCOMPARE(area->setContentWidget(content), content);
    QCOMPARE(area->contentWidget(), content);
    content->resize(50, 300);
    QVERIFY(!area->vScrollBar()->isVisible());
    // A direct call still lays the area out.
    area->updateScroll();
    QVERIFY(area->vScrollBar()->isVisible());
}

void tst_ZScrollArea::contentReplacement()
{
    ZScrollArea *area = makeArea(QSizeF(300, 300));
    auto *first = qobject_cast<ZWidget *>(area->contentWidget());
    QCOMPARE(first->parentItem(), area->viewport());
    QCOMPARE(first->parent(), area->viewport());
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
    QCOMPARE(area->contentWidget(), second);
    QCOMPARE(second->parentItem(), area->viewport());
    QCOMPARE(second->pos(), QPointF(0, 0));
    QCOMPARE(area->scrollPos(), QPoint(0, 0));
    QVERIFY(!area->hScrollBar()->isVisible());
    QCOMPARE(area->vScrollBar()->maximum(), 300.0);
    // The previous content is the caller's now and no longer followed.
    QCOMPARE(first->parentItem(), area->viewport());
    first->resize(1000, 1000);
    QVERIFY(!area->hScrollBar()->isVisible());
    delete first;
    second->resize(50, 50);
    QVERIFY(!area->vScrollBar()->isVisible());
}

void tst_ZScrollArea::widgetResizable()
{
    ZScrollArea *area = makeArea(QSizeF(50, 300));
    auto *content = qobject_cast<ZWidget *>(area->contentWidget());
    area->setWidgetResizable(true);
    // Stretched along the axis that does not scroll, and only along it.
    QCOMPARE(content->size(), QSizeF(186, 300));
    area->resize(300, 100);
    QCOMPARE(content->size(), QSizeF(286, 300));
    // Both bars off: both axes follow the viewport.
    area->setVScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QCOMPARE(content->size(), QSizeF(300, 100));
    // Squeezed by the area and without a minimum of its own, the content
    // fits as it is: no bar comes back.
    area->setVScrollBarPolicy(Qt::ScrollBarAsNeeded);
    QCOMPARE(content->size(), QSizeF(300, 100));
    QVERIFY(!area->vScrollBar()->isVisible());
    // A content that cannot shrink to fit gets its bars.
    content->setMinimumSize(400, 250);
    area->updateScroll();
    QVERIFY(area->hScrollBar()->isVisible());
    QVERIFY(area->vScrollBar()->isVisible());
    QCOMPARE(content->size(), QSizeF(400, 250));
    area->setWidgetResizable(false);
    content->setMinimumSize(0, 0);
    content->resize(10, 10);
    QCOMPARE(content->size(), QSizeF(10, 10));

    // Stretched to the full width, then growing taller by itself: the
    // vertical bar narrows the viewport and the content with it, and no
    // horizontal bar comes for the width the area gave.
    ZScrollArea *other = makeArea(QSizeF(50, 50));
    auto *grown = qobject_cast<ZWidget *>(other->contentWidget());
    other->setWidgetResizable(true);
    QCOMPARE(grown->size(), QSizeF(200, 100));
    grown->resize(200, 300);
    QVERIFY(other->vScrollBar()->isVisible());
    QVERIFY(!other->hScrollBar()->isVisible());
    QCOMPARE(grown->size(), QSizeF(186, 300));
}

void tst_ZScrollArea::widgetResizableOff()
{
    // Without widgetResizable the area never sizes the content.
    ZScrollArea *area = makeArea(QSizeF(50, 300));
    area->setScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->resize(300, 50);
    QCOMPARE(area->contentWidget()->property("size").toSizeF(), QSizeF(50, 300));
}

void tst_ZScrollArea::wheelGoesToTheShownBar()
{
    ZScrollArea *area = makeArea(QSizeF(300, 300));
    const QPointF over = area->mapToScene(50, 50);
    QVERIFY(wheel(*m_scene, over, -120));
    QCOMPARE(area->vscrollPos(), ZScrollArea::DefaultWheelStep);
    QCOMPARE(area->hscrollPos(), 0.0);
    area->setVScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QVERIFY(wheel(*m_scene, over, -240));
    QCOMPARE(area->hscrollPos(), 2 * ZScrollArea::DefaultWheelStep);
    // Over a bar, the bar takes it itself.
    area->setVScrollBarPolicy(Qt::ScrollBarAsNeeded);
    QVERIFY(wheel(*m_scene, area->mapToScene(50, 93), 120));
    QCOMPARE(area->hscrollPos(), ZScrollArea::DefaultWheelStep);
    QCOMPARE(area->vscrollPos(), 0.0);
    // Nothing to scroll: the event goes on to whatever lies below.
    qobject_cast<ZWidget *>(area->contentWidget())->resize(20, 20);
    QVERIFY(!wheel(*m_scene, over, -120));
}

void tst_ZScrollArea::dragContent()
{
    ZScrollArea *area = makeArea(QSizeF(300, 300));
    area->setDragContent(true);
    QCOMPARE(area->hitTest(QPointF(5, 5)), ZWidget::Nothing);
    Mouse mouse(*m_scene);
    const QPointF from = area->mapToScene(100, 60);
    QVERIFY(mouse.press(from));
    mouse.move(from + QPointF(-10, -20));
    QCOMPARE(area->scrollPos(), QPoint(10, 20));
    mouse.move(from + QPointF(-30, -25));
    QCOMPARE(area->scrollPos(), QPoint(30, 25));
    mouse.move(from + QPointF(500, 500)); // clamped at the start
    QCOMPARE(area->scrollPos(), QPoint(0, 0));
    mouse.release(from);
    QCOMPARE(qobject_cast<ZWidget *>(area->contentWidget())->pos(), QPointF(0, 0));
}

void tst_ZScrollArea::pressesPassThroughWithoutDrag()
{
    auto *below = new ZFrameItem;
    m_scene->addItem(below);
    below->setZValue(-1);
    below->setGeometry(0, 0, 400, 300);
    QSignalSpy pressed(below, &ZFrameItem::pressed);
    ZScrollArea *area = makeArea(QSizeF(300, 300));
    QCOMPARE(area->hitTest(QPointF(5, 5)), ZWidget::AskParent);
    Mouse mouse(*m_scene);
    mouse.press(area->mapToScene(50, 50));
    mouse.release(area->mapToScene(50, 50));
    QCOMPARE(pressed.count(), 1);
    area->setDragContent(true);
    mouse.press(area->mapToScene(50, 50));
    mouse.release(area->mapToScene(50, 50));
    QCOMPARE(pressed.count(), 1);
}

void tst_ZScrollArea::thicknessAndOpacity()
{
    ZScrollArea *area = makeArea(QSizeF(300, 300));
    QCOMPARE(area->barThickness(), ZScrollArea::DefaultBarThickness);
    area->setBarThickness(20);
    QCOMPARE(area->viewport()->size(), QSizeF(180, 80));
    QCOMPARE(area->vScrollBar()->geometry(), QRectF(180, 0, 20, 80));
    QCOMPARE(area->vScrollBar()->frameThickness(), 20.0);
    area->setBarThickness(-4);
    QCOMPARE(area->barThickness(), 20);
    area->setBarOpacity(0.5);
    QCOMPARE(area->vScrollBar()->opacity(), 0.5);
    QCOMPARE(area->hScrollBar()->opacity(), 0.5);
    area->setBarOpacity(std::numeric_limits<qreal>::quiet_NaN());
    QCOMPARE(area->barOpacity(), 0.5);
    area->setBarOpacity(7);
    QCOMPARE(area->barOpacity(), 1.0);
    area->setHScrollBarPolicy(Qt::ScrollBarPolicy(3));
    QCOMPARE(area->hbarPolicy(), Qt::ScrollBarAsNeeded);
    area->setBarThickness(1 << 30); // bars wider than the area: an empty viewport, no crash
    QCOMPARE(area->viewport()->size(), QSizeF(0, 0));
}

void tst_ZScrollArea::deletedContent()
{
    ZScrollArea *area = makeArea(QSizeF(300, 300));
    area->scrollTo(50, 50);
    delete area->contentWidget();
    QCOMPARE(area->contentWidget(), nullptr);
    QVERIFY(!area->vScrollBar()->isVisible());
    QVERIFY(!area->hScrollBar()->isVisible());
    area->scrollTo(10, 10);
    area->updateScroll();
    area->resize(50, 50);
    QCOMPARE(area->scrollPos(), QPoint(0, 0));
}

void tst_ZScrollArea::areaFromXml()
{
    ZWidget root;
    const QByteArray document = R"(<uitree>
  <ZScrollArea objectName="area" fixSize="200,100" vbarPolicy="ScrollBarAlwaysOn" barThickness="10"
               barOpacity="0.75" contentUnderBar="true" dragContent="true" widgetResizable="true"
               vscroll.deltaFactor="7" hscroll.thumbImage=":/image/theme/titleicon.png">
    <ZWidget objectName="content" fixHeight="300"/>
    <ZWidget objectName="extra"/>
  </ZScrollArea>
</uitree>)";
    QVERIFY(ZXmlUI::widgetFromMemory(document, &root));
    auto *area = qobject_cast<ZScrollArea *>(root.findObject(QStringLiteral("area")));
    QVERIFY(area);
    auto *content = qobject_cast<ZWidget *>(root.findObject(QStringLiteral("content")));
    QCOMPARE(area->contentWidget(), content);
    QCOMPARE(area->vbarPolicy(), Qt::ScrollBarAlwaysOn);
    QCOMPARE(area->barThickness(), 10);
    QCOMPARE(area->barOpacity(), 0.75);
    QVERIFY(area->contentUnderBar());
    QVERIFY(area->dragContent());
    QVERIFY(area->widgetResizable());
    QCOMPARE(area->vScrollBar()->deltaFactor(), 7.0);
    QCOMPARE(area->hScrollBar()->thumbImage(), QStringLiteral(":/image/theme/titleicon.png"));
    QCOMPARE(area->property("vscroll").value<QObject *>(), area->vScrollBar());
    // Stretched to the viewport's width; scrolled vertically.
    QCOMPARE(content->size(), QSizeF(200, 300));
    QCOMPARE(area->vScrollBar()->maximum(), 200.0);
    // Further children belong to the area itself.
    QCOMPARE(root.findObject(QStringLiteral("extra"))->parent(), area);
}

void tst_ZScrollArea::scrollWidgetVBox()
{
    auto *list = new ZScrollWidget;
    m_scene->addItem(list);
    list->resize(200, 100);
    list->setLayoutType(ZWidget::VBox);
    QCOMPARE(list->layoutType(), ZWidget::VBox);
    QCOMPARE(list->hbarPolicy(), Qt::ScrollBarAlwaysOff);
    auto *content = qobject_cast<ZWidget *>(list->contentWidget());
    QCOMPARE(list->layoutWidget(), content);
    QTRY_COMPARE(content->size().width(), 200.0);
    QList<ZLabel *> rows;
    for (int i = 0; i < 5; ++i) {
        auto *label = new ZLabel;
        label->setText(QString::number(i));
        label->setFixHeight(30);
        list->addItem(label);
        rows.append(label);
    }
    QCOMPARE(rows.first()->parentItem(), content);
    // Higher than the viewport: the vertical bar comes and narrows the content.
    QTRY_COMPARE(content->size().height(), 150.0);
    QVERIFY(list->vScrollBar()->isVisible());
    QVERIFY(!list->hScrollBar()->isVisible());
    QTRY_COMPARE(content->size().width(), 186.0);
    QCOMPARE(list->vScrollBar()->maximum(), 50.0);
    QCOMPARE(rows.last()->geometry().width(), 186.0);
    // Wider children never bring a horizontal bar.
    rows.first()->setFixWidth(500);
    QTest::qWait(20);
    QVERIFY(!list->hScrollBar()->isVisible());
    // Taking rows out shrinks the content until no bar is needed.
    for (int i = 0; i < 3; ++i)
        list->removeItem(rows.at(i));
    QTRY_VERIFY(!list->vScrollBar()->isVisible());
    QTRY_COMPARE(content->size().width(), 200.0);
    qDeleteAll(rows.mid(0, 3));
}

void tst_ZScrollArea::scrollWidgetHBox()
{
    auto *strip = new ZScrollWidget;
    m_scene->addItem(strip);
    strip->resize(200, 100);
    strip->setLayoutType(ZWidget::HBox);
    QCOMPARE(strip->vbarPolicy(), Qt::ScrollBarAlwaysOff);
    for (int i = 0; i < 4; ++i) {
        auto *cell = new ZWidget;
        cell->setFixWidth(80);
        strip->addItem(cell);
    }
    auto *content = qobject_cast<ZWidget *>(strip->contentWidget());
    QTRY_COMPARE(content->size().width(), 320.0);
    QTRY_VERIFY(strip->hScrollBar()->isVisible());
    QVERIFY(!strip->vScrollBar()->isVisible());
    QTRY_COMPARE(content->size().height(), 86.0);
    QCOMPARE(strip->hScrollBar()->maximum(), 120.0);
}

void tst_ZScrollArea::scrollWidgetFromXml()
{
    ZWidget root;
    const QByteArray document = R"(<uitree>
  <ZScrollWidget objectName="list" fixSize="200,100" layout="VBox" margins="4,4,4,4" spacing="2">
    <ZLabel fixHeight="30" text="one"/>
    <ZLabel fixHeight="30" text="two"/>
    <ZLabel fixHeight="30" text="three"/>
    <ZLabel objectName="last" fixHeight="30" text="four"/>
  </ZScrollWidget>
</uitree>)";
    QVERIFY(ZXmlUI::widgetFromMemory(document, &root));
    auto *list = qobject_cast<ZScrollWidget *>(root.findObject(QStringLiteral("list")));
    QVERIFY(list);
    auto *content = qobject_cast<ZWidget *>(list->contentWidget());
    QCOMPARE(list->margins(), QMargins(4, 4, 4, 4));
    QCOMPARE(content->margins(), QMargins(4, 4, 4, 4));
    QCOMPARE(content->spacing(), 2);
    QCOMPARE(root.findObject(QStringLiteral("last"))->parent(), content);
    // 4 * 30 + 3 * 2 + 8 = 134.
    QTRY_COMPARE(content->size().height(), 134.0);
    QVERIFY(list->vScrollBar()->isVisible());
    QVERIFY(!list->hScrollBar()->isVisible());
    QTRY_COMPARE(content->size().width(), 186.0);
    QCOMPARE(list->vScrollBar()->maximum(), 34.0);
}

QTEST_MAIN(tst_ZScrollArea)
#include "tst_zscrollarea.moc"
