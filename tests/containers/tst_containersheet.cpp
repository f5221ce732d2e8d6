// Renders each container and animated item in a typical state into
// zkit-cont-<name>.png in the temporary folder, for a person to look at, and
// checks what every picture must show.

#include "zflipwidget.h"
#include "zframeitem.h"
#include "zloadingitem.h"
#include "zpushbutton.h"
#include "zsequentimageitem.h"
#include "zsplitwidgetext.h"
#include "zstackedwidget.h"
#include "ztabitem.h"
#include "ztabwidget.h"
#include "ztoolbar.h"
#include "ztoolbarseparator.h"
#include "zxmlui.h"

#include "../items/animationclock.h"

#include <QtTest>

#include "../items/itemtestutil.h"

using namespace itemtest;

namespace {

ZWidget *colored(const QColor &color)
{
    auto *w = new ZWidget;
    w->setBackgroundColor(color);
    w->setThemePolicy(ZWidget::NoTheme);
    return w;
}

QImage shoot(QGraphicsScene &scene, const QSize &size, const QString &name)
{
    const QImage image = render(scene, size, QColor(246, 246, 246));
    image.save(QDir::temp().filePath(QStringLiteral("zkit-cont-%1.png").arg(name)));
    return image;
}

bool near(const QColor &a, const QColor &b, int tolerance = 12)
{
    return qAbs(a.red() - b.red()) <= tolerance && qAbs(a.green() - b.green()) <= tolerance
        && qAbs(a.blue() - b.blue()) <= tolerance;
}

} // namespace

class tst_ContainerSheet : public QObject
{
    Q_OBJECT

private slots:
    void tabs()
    {
        QGraphicsScene scene;
        auto *tabs = new ZTabWidget;
        scene.addItem(tabs);
        tabs->stack()->setAnimated(false);
        tabs->setTabsClosable(true);
        tabs->setGeometry(QRectF(10, 10, 320, 160));
        tabs->addTab(colored(QColor(220, 235, 250)), QStringLiteral("General"));
        tabs->addTab(colored(QColor(250, 235, 220)), QStringLiteral("Advanced"));
        tabs->addTab(colored(QColor(230, 250, 230)), QStringLiteral("Disabled"));
        tabs->tabItem(2)->setEnabled(false);
        tabs->setCurrentIndex(1);
        tabs->activateLayout();
        tabs->tabBar()->activateLayout();
        sendHover(scene, tabs->tabItem(0), QEvent::GraphicsSceneHoverEnter, QPointF(5, 5));
        const QImage shot = shoot(scene, QSize(340, 180), QStringLiteral("tabs"));
        // The page of the current tab fills the area under the bar.
        QVERIFY(near(shot.pixelColor(170, 120), QColor(250, 235, 220)));
        // Selected, hovered and disabled headers differ from each other.
        auto middle = [&](int i) {
            ZTabItem *t = tabs->tabItem(i);
            return shot.pixelColor(t->mapToScene(QPointF(4, t->size().height() / 2)).toPoint());
        };
        QVERIFY(middle(0) != middle(1));
        QVERIFY(middle(1) != middle(2));
        QVERIFY(middle(0) != middle(2));
    }

    void split()
    {
        QGraphicsScene scene;
        auto *split = new ZSplitWidgetExt;
        scene.addItem(split);
        split->setGeometry(QRectF(10, 10, 316, 100));
        split->addItem(colored(QColor(200, 60, 60)));
        split->addItem(colored(QColor(60, 200, 60)));
        split->addItem(colored(QColor(60, 60, 200)));
        split->setRatios({1, 2, 1});
        const QImage open = shoot(scene, QSize(336, 120), QStringLiteral("split"));
        QVERIFY(near(open.pixelColor(50, 60), QColor(200, 60, 60)));
        QVERIFY(near(open.pixelColor(160, 60), QColor(60, 200, 60)));
        split->setCollapsed(2, true);
        const QImage folded = shoot(scene, QSize(336, 120), QStringLiteral("split-folded"));
        QCOMPARE(boxOf(folded, QColor(60, 60, 200)), QRect());
        QVERIFY(near(folded.pixelColor(300, 60), QColor(60, 200, 60)));
    }

    void toolbar()
    {
        QGraphicsScene scene;
        auto *bar = new ZToolBar;
        scene.addItem(bar);
        for (const char *text : {"Open", "Save", "|", "Cut", "Copy", "Paste", "|", "Help"}) {
            if (QByteArray(text) == "|") {
                bar->addSeparator();
                continue;
            }
            auto *b = new ZPushButton;
            b->setText(QString::fromLatin1(text));
            b->setFixSize(QSizeF(44, 24));
            bar->addItem(b);
        }
        bar->setGeometry(QRectF(10, 10, 200, 30));
        bar->activateLayout();
        const QImage shot = shoot(scene, QSize(220, 50), QStringLiteral("toolbar"));
        QVERIFY(bar->overflowCount() > 0);
        ZFrameItem *drop = bar->dropButton();
        QVERIFY(drop->isVisible());
        const QRect dropRect = drop->mapRectToScene(drop->rect()).toRect();
        QVERIFY(dropRect.right() <= 210);
        // The arrow of the drop button is drawn.
        const int inked = countOf(shot.copy(dropRect), [](QColor c) { return c.value() < 160; });
        QVERIFY(inked >= 6);
    }

    void stackedMidSlide()
    {
        AnimationClock clock;
        QGraphicsScene scene;
        auto *stack = new ZStackedWidget;
        scene.addItem(stack);
        stack->setGeometry(QRectF(10, 10, 200, 100));
        stack->addItem(colored(QColor(200, 60, 60)));
        stack->addItem(colored(QColor(60, 60, 200)));
        stack->setEasing(QEasingCurve::Linear);
        stack->setDuration(200);
        stack->setCurrentIndex(1);
        clock.step(80);
        const QImage shot = shoot(scene, QSize(220, 120), QStringLiteral("stacked"));
        // 40% in: the new page covers the right 80 pixels, the old one the rest.
        QCOMPARE(boxOf(shot, QColor(60, 60, 200)), QRect(130, 10, 80, 100));
        QCOMPARE(boxOf(shot, QColor(200, 60, 60)), QRect(10, 10, 120, 100));
    }

    void flipMidTurn()
    {
        AnimationClock clock;
        QGraphicsScene scene;
        auto *flip = new ZFlipWidget;
        scene.addItem(flip);
        flip->setGeometry(QRectF(10, 10, 200, 100));
        flip->addItem(colored(QColor(200, 60, 60)));
        flip->addItem(colored(QColor(60, 60, 200)));
        flip->setEasing(QEasingCurve::Linear);
        flip->setDuration(180);
        flip->setFlipped(true);
        clock.step(60); // 60 degrees: the front, narrowed to half
        const QImage shot = shoot(scene, QSize(220, 120), QStringLiteral("flip"));
        const QRect front = boundingBox(shot, [](QColor c) { return near(c, QColor(200, 60, 60), 40); });
        QVERIFY2(qAbs(front.width() - 100) <= 6, qPrintable(QString::number(front.width())));
        // Centred but for the perspective, which makes the far edge shorter.
        QVERIFY(qAbs(front.center().x() - 110) <= 8);
        QVERIFY(front.height() > 100); // the near edge grows
        QCOMPARE(boxOf(shot, QColor(60, 60, 200)), QRect());
        clock.step(60); // 120 degrees: the back
        const QImage later = shoot(scene, QSize(220, 120), QStringLiteral("flip-back"));
        const QRect back = boundingBox(later, [](QColor c) { return near(c, QColor(60, 60, 200), 40); });
        QVERIFY(qAbs(back.width() - 100) <= 6);
    }

    void animatedItems()
    {
        AnimationClock clock;
        QGraphicsScene scene;
        auto *busy = new ZLoadingItem;
        scene.addItem(busy);
        busy->setGeometry(QRectF(10, 10, 40, 40));
        QTemporaryDir dir;
        QImage strip(96, 24, QImage::Format_ARGB32);
        strip.fill(Qt::transparent);
        QPainter p(&strip);
        for (int i = 0; i < 4; ++i)
            p.fillRect(QRect(24 * i + 4, 4, 16, 16), QColor::fromHsv(90 * i, 200, 220));
        p.end();
        strip.save(dir.filePath(QStringLiteral("strip.png")));
        QDir::setSearchPaths(QStringLiteral("sheettest"), {dir.path()});
        auto *sequence = new ZSequentImageItem;
        scene.addItem(sequence);
        sequence->setGeometry(QRectF(60, 10, 40, 40));
        sequence->setImagePath(QStringLiteral("sheettest:strip.png"));
        clock.step(250);
        const QImage shot = shoot(scene, QSize(110, 60), QStringLiteral("animated"));
        QVERIFY(countOf(shot.copy(10, 10, 40, 40), [](QColor c) { return c != QColor(246, 246, 246); }) > 100);
        QCOMPARE(sequence->currentFrame(), 2);
        QVERIFY(near(shot.pixelColor(80, 30), QColor::fromHsv(180, 200, 220), 4));
    }

    // Every class from one document, as the gallery shows them.
    void galleryDocument()
    {
        AnimationClock clock;
        QGraphicsScene scene;
        auto *root = new ZWidget;
        scene.addItem(root);
        root->setLayoutType(ZWidget::VBox);
        root->setGeometry(QRectF(0, 0, 520, 320));
        const QByteArray doc = QByteArrayLiteral(R"(<uitree>
<ZWidget objectName="containersPage" layout="VBox" spacing="8" margins="8,8,8,8">
  <ZToolBar objectName="galleryToolBar" fixHeight="28">
    <ZPushButton text="Open" fixSize="48,24"/>
    <ZPushButton text="Save" fixSize="48,24"/>
    <ZToolBarSeparator/>
    <ZPushButton text="Cut" fixSize="48,24"/>
    <ZPushButton text="Copy" fixSize="48,24"/>
    <ZPushButton text="Paste" fixSize="48,24"/>
    <ZToolBarSeparator/>
    <ZPushButton text="Help" fixSize="48,24"/>
  </ZToolBar>
  <ZSplitWidgetExt objectName="gallerySplit" ratios="1|2">
    <ZTabWidget objectName="galleryTabs" tabsClosable="true" currentIndex="0">
      <ZTabItem text="Spinner" page.layout="HBox" page.margins="12,12,12,12">
        <ZLoadingItem fixSize="40,40"/>
        <ZSequentImageItem imagePath=":/image/theme/anijuhua.png|:/image/theme/titleicon.png" fps="2" fixSize="40,40"/>
      </ZTabItem>
      <ZTabItem text="Layers">
        <ZLayerWidget>
          <ZWidget backgroundColor="230,240,250"/>
          <ZWidget backgroundColor="0,0,0,40" margins="20,20,20,20"/>
        </ZLayerWidget>
      </ZTabItem>
    </ZTabWidget>
    <ZSplitWidget orientation="Vertical" ratios="1|1">
      <ZFlipWidget objectName="galleryFlip" duration="500">
        <ZWidget backgroundColor="250,225,200"/>
        <ZWidget backgroundColor="200,225,250"/>
      </ZFlipWidget>
      <ZStackedWidget objectName="galleryStack" currentIndex="1" duration="300">
        <ZWidget backgroundColor="220,250,220"/>
        <ZWidget backgroundColor="250,250,210"/>
      </ZStackedWidget>
    </ZSplitWidget>
  </ZSplitWidgetExt>
</ZWidget>
)</uitree>)");
        QVERIFY(ZXmlUI::widgetFromMemory(doc, root));
        root->activateLayout();
        for (int round = 0; round < 3; ++round) {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
            root->activateLayout();
        }
        auto *tabs = qobject_cast<ZTabWidget *>(root->findObject(QStringLiteral("galleryTabs")));
        auto *stack = qobject_cast<ZStackedWidget *>(root->findObject(QStringLiteral("galleryStack")));
        auto *flip = qobject_cast<ZFlipWidget *>(root->findObject(QStringLiteral("galleryFlip")));
        auto *bar = qobject_cast<ZToolBar *>(root->findObject(QStringLiteral("galleryToolBar")));
        QVERIFY(tabs && stack && flip && bar);
        QCOMPARE(tabs->count(), 2);
        QCOMPARE(stack->currentIndex(), 1);
        QCOMPARE(bar->items().size(), 8);
        flip->setFlipped(true);
        clock.step(200);
        const QImage shot = shoot(scene, QSize(520, 320), QStringLiteral("gallery"));
        // The current page of the stack, and the front of the flip turned 72 degrees.
        const QRect page = boxOf(shot, QColor(250, 250, 210));
        QCOMPARE(page, stack->mapRectToScene(stack->rect()).toRect().intersected(page));
        QVERIFY(page.width() > 200 && page.height() > 100);
        const QRect front = boundingBox(shot, [](QColor c) { return near(c, QColor(250, 225, 200), 3); });
        QVERIFY(!front.isNull() && front.width() < flip->size().width() * 0.6);
    }
};

QTEST_MAIN(tst_ContainerSheet)
#include "tst_containersheet.moc"
