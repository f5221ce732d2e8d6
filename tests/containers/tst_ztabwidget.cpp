// The tab widget and its tab items: tabs and pages pairing up through adds,
// removes and deletions, selection by mouse, the header looks by state,
// closable tabs, and tabs described in documents.

#include "zframeitem.h"
#include "zstackedwidget.h"
#include "ztabitem.h"
#include "ztabwidget.h"
#include "zxmlui.h"

#include "common/scenetest.h"

#include <QtTest>

namespace {

struct Fixture
{
    QGraphicsScene scene;
    ZTabWidget *tabs = new ZTabWidget;

    explicit Fixture(std::initializer_list<const char *> pages = {})
    {
        scene.addItem(tabs);
        tabs->stack()->setAnimated(false);
        tabs->setGeometry(QRectF(0, 0, 300, 200));
        for (const char *text : pages)
            tabs->addTab(new ZWidget, QString::fromLatin1(text));
    }
    QPointF centreOf(QGraphicsItem *item)
    {
        tabs->activateLayout();
        tabs->tabBar()->activateLayout();
        return item->sceneBoundingRect().center();
    }
    QString texts() const
    {
        QStringList list;
        for (int i = 0; i < tabs->count(); ++i)
            list << tabs->tabItem(i)->text();
        return list.join(QLatin1Char(' '));
    }
    // Tabs and pages must pair up, in the same order, whatever happened.
    void verifyPairs()
    {
        QCOMPARE(tabs->stack()->count(), tabs->count());
        for (int i = 0; i < tabs->count(); ++i) {
            QCOMPARE(tabs->stack()->widget(i), tabs->page(i));
            QCOMPARE(tabs->tabItem(i)->isSelected(), i == tabs->currentIndex());
        }
    }
};

} // namespace

class tst_ZTabWidget : public QObject
{
    Q_OBJECT

private slots:
    void addAndInsert()
    {
        Fixture f{"a", "b"};
        ZWidget *a = f.tabs->page(0);
        auto *c = new ZTabItem(QStringLiteral("c"));
        QSignalSpy changed(f.tabs, &ZTabWidget::currentChanged);
        QCOMPARE(f.tabs->insertTab(0, c), 0);
        QCOMPARE(f.texts(), QStringLiteral("c a b"));
        QCOMPARE(f.tabs->page(0), c->page());
        QCOMPARE(f.tabs->indexOf(f.tabs->tabItem(2)), 2);
        // "a" stayed current, and moved to index 1.
        QCOMPARE(f.tabs->currentIndex(), 1);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.at(0).at(0).toInt(), 1);
        f.verifyPairs();
        // Refusals.
        QCOMPARE(f.tabs->addTab(nullptr), -1);
        QCOMPARE(f.tabs->addTab(c), -1);
        QCOMPARE(f.tabs->addTab(a, QStringLiteral("again")), -1);
        QCOMPARE(f.tabs->addTab(f.tabs, QStringLiteral("itself")), -1);
        QCOMPARE(f.tabs->count(), 3);
        f.verifyPairs();
    }

    void removeAndDelete_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("current"); // before: 1 of a, b, c
        QTest::addColumn<QString>("left");
        QTest::addColumn<int>("currentAfter");
        QTest::newRow("removeTab current") << "removeTab" << 1 << 1 << "a c" << 1;
        QTest::newRow("removeTab before") << "removeTab" << 0 << 1 << "b c" << 0;
        QTest::newRow("removeItem tab") << "removeItemTab" << 2 << 1 << "a b" << 1;
        QTest::newRow("removeItem page") << "removeItemPage" << 1 << 1 << "a c" << 1;
        QTest::newRow("page deleted") << "deletePage" << 0 << 1 << "b c" << 0;
        QTest::newRow("tab deleted") << "deleteTab" << 1 << 1 << "a c" << 1;
        QTest::newRow("last of current deleted") << "deletePage" << 2 << 2 << "a b" << 1;
    }
    void removeAndDelete()
    {
        QFETCH(QString, how);
        QFETCH(int, index);
        QFETCH(int, current);
        QFETCH(QString, left);
        QFETCH(int, currentAfter);
        Fixture f{"a", "b", "c"};
        f.tabs->setCurrentIndex(current);
        QPointer<ZTabItem> tab = f.tabs->tabItem(index);
        QPointer<ZWidget> page = f.tabs->page(index);
        if (how == QLatin1String("removeTab")) {
            f.tabs->removeTab(index);
            QVERIFY(!tab && !page); // both deleted
        } else if (how.startsWith(QLatin1String("removeItem"))) {
            f.tabs->removeItem(how.endsWith(QLatin1String("Tab")) ? static_cast<ZWidget *>(tab.data()) : page.data());
            // Handed back: the tab is free and owns its page again.
            QVERIFY(tab && page && !tab->parentItem() && !page->parentItem() && !tab->isSelected());
            delete tab.data();
        } else if (how == QLatin1String("deletePage")) {
            delete page.data();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(!tab);
        } else {
            delete tab.data();
            QVERIFY(!page);
        }
        QCOMPARE(f.texts(), left);
        QCOMPARE(f.tabs->currentIndex(), currentAfter);
        f.verifyPairs();
    }

    void clickSelects()
    {
        Fixture f{"first", "second", "third"};
        QSignalSpy changed(f.tabs, &ZTabWidget::currentChanged);
        scenetest::Mouse mouse(f.scene);
        mouse.click(f.centreOf(f.tabs->tabItem(2)));
        QCOMPARE(f.tabs->currentIndex(), 2);
        QCOMPARE(changed.size(), 1);
        QVERIFY(f.tabs->page(2)->isVisible() && !f.tabs->page(0)->isVisible());
        // A disabled tab does not take the press; other buttons do nothing.
        f.tabs->tabItem(1)->setEnabled(false);
        mouse.click(f.centreOf(f.tabs->tabItem(1)));
        mouse.click(f.centreOf(f.tabs->tabItem(0)), Qt::RightButton);
        QCOMPARE(f.tabs->currentIndex(), 2);
        f.verifyPairs();
    }

    void headerLooks_data()
    {
        QTest::addColumn<bool>("selected");
        QTest::addColumn<bool>("hovered");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<int>("frame");
        QTest::addColumn<QString>("image");
        QTest::newRow("plain") << false << false << true << 0 << "unselect";
        QTest::newRow("hover") << false << true << true << 1 << "hover";
        QTest::newRow("selected") << true << false << true << 2 << "select";
        QTest::newRow("selected wins over hover") << true << true << true << 2 << "select";
        QTest::newRow("disabled wins") << true << true << false << 3 << "disable";
    }
    void headerLooks()
    {
        QFETCH(bool, selected);
        QFETCH(bool, hovered);
        QFETCH(bool, enabled);
        QFETCH(int, frame);
        QFETCH(QString, image);
        QGraphicsScene scene;
        auto *plain = new ZTabItem(QStringLiteral("Tab"));
        auto *tab = new ZTabItem(QStringLiteral("Tab"));
        for (ZTabItem *t : {plain, tab}) {
            scene.addItem(t);
            t->resize(60, 24);
        }
        plain->setPos(0, 30);
        tab->setSelected(selected);
        if (hovered)
            scenetest::sendHoverTo(tab, QEvent::GraphicsSceneHoverEnter, QPointF(5, 5));
        tab->setEnabled(enabled);
        QCOMPARE(tab->tabFrame()->frameIndex(), frame);
        QVERIFY(tab->imagePath().split(QLatin1Char('|')).value(frame).contains(QStringLiteral("tabframe_") + image));
        QCOMPARE(tab->tabFrame()->geometry(), QRectF(0, 0, 60, 24));
        // The state's image is what is painted.
        const QImage shot = scenetest::render(scene, QSize(60, 54));
        QCOMPARE(shot.copy(0, 0, 60, 24) == shot.copy(0, 30, 60, 24), frame == 0);
        if (hovered) {
            scenetest::sendHoverTo(tab, QEvent::GraphicsSceneHoverLeave, QPointF(-5, -5));
            QCOMPARE(tab->tabFrame()->frameIndex(), enabled ? (selected ? 2 : 0) : 3);
        }
    }

    void closeButtons()
    {
        Fixture f{"a", "b"};
        QVERIFY(!f.tabs->tabItem(0)->closeButton()->isVisible());
        f.tabs->setTabsClosable(true);
        f.tabs->addTab(new ZWidget, QStringLiteral("c")); // later tabs follow the setting
        for (int i = 0; i < 3; ++i)
            QVERIFY(f.tabs->tabItem(i)->closable());
        QSignalSpy close(f.tabs, &ZTabWidget::tabCloseRequested);
        ZFrameItem *button = f.tabs->tabItem(1)->closeButton();
        scenetest::click(f.scene, f.centreOf(button));
        QCOMPARE(close.size(), 1);
        QCOMPARE(close.at(0).at(0).toInt(), 1);
        // Asking is all: the application decides.
        QCOMPARE(f.tabs->count(), 3);
        QCOMPARE(f.tabs->currentIndex(), 0);
        f.tabs->setTabsClosable(false);
        QVERIFY(!button->isVisible());
    }

    void bar()
    {
        Fixture f{"one", "two"};
        f.tabs->setTabHeight(30);
        f.tabs->setTabSpacing(6);
        ZTabItem *one = f.tabs->tabItem(0), *two = f.tabs->tabItem(1);
        f.centreOf(one);
        QCOMPARE(f.tabs->tabBar()->geometry(), QRectF(0, 0, 300, 30));
        QCOMPARE(f.tabs->stack()->geometry(), QRectF(0, 30, 300, 170));
        QCOMPARE(one->geometry(), QRectF(0, 0, one->size().width(), 30));
        QCOMPARE(two->pos().x(), one->size().width() + 6);
        f.tabs->setTabHeight(-3);
        QCOMPARE(f.tabs->tabHeight(), 0);
        // Headers are as wide as their text, with room for the close button.
        const qreal narrow = two->effectiveSizeHint(Qt::PreferredSize).width();
        two->setText(QStringLiteral("a much longer caption"));
        const qreal wide = two->effectiveSizeHint(Qt::PreferredSize).width();
        QVERIFY(wide > narrow + 50);
        two->setClosable(true);
        QCOMPARE(two->effectiveSizeHint(Qt::PreferredSize).width(), wide + 20);
        two->setPadding(-4);
        QCOMPARE(two->padding(), 0);
        two->setTextColor(QColor()); // ignored
        QVERIFY(two->textColor().isValid());
    }

    // Tab items carry their pages; a loose widget gets a tab of its own.
    void fromDocument()
    {
        QGraphicsScene scene;
        auto *root = new ZWidget;
        scene.addItem(root);
        QVERIFY(ZXmlUI::widgetFromMemory(
            "<uitree><ZTabWidget objectName=\"tabs\" currentIndex=\"1\">"
            "<ZTabItem text=\"General\" page.layout=\"HBox\"><ZWidget objectName=\"inside\"/></ZTabItem>"
            "<ZTabItem text=\"Advanced\"/><ZWidget objectName=\"loose\"/></ZTabWidget></uitree>",
            root));
        auto *tabs = qobject_cast<ZTabWidget *>(root->findObject(QStringLiteral("tabs")));
        QVERIFY(tabs);
        QCOMPARE(tabs->count(), 3);
        QCOMPARE(tabs->currentIndex(), 1);
        QVERIFY(tabs->tabItem(1)->isSelected());
        QCOMPARE(tabs->tabItem(0)->page()->layoutType(), ZWidget::HBox);
        QCOMPARE(qobject_cast<ZWidget *>(tabs->findObject(QStringLiteral("inside")))->parentItem(),
                 tabs->tabItem(0)->page());
        QCOMPARE(tabs->page(2)->objectName(), QStringLiteral("loose"));
        QVERIFY(tabs->tabItem(2)->text().isEmpty());
        // The tab widget keeps its own arrangement.
        tabs->setLayoutType(ZWidget::HBox);
        QCOMPARE(tabs->layoutType(), ZWidget::VBox);
    }
};

QTEST_MAIN(tst_ZTabWidget)
#include "tst_ztabwidget.moc"
