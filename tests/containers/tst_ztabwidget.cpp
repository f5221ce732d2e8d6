// The tab widget and its tab items: tabs and pages pairing up through adds,
// removes and deletions, selection by mouse, the header looks by state,
// closable tabs, and tabs described in documents.

#include "zframeitem.h"
#include "zstackedwidget.h"
#include "ztabitem.h"
#include "ztabwidget.h"
#include "zxmlui.h"

#include <QtTest>

#include "../items/itemtestutil.h"

#include <QGraphicsScene>

using namespace itemtest;

namespace {

struct Fixture
{
    QGraphicsScene scene;
    ZTabWidget *tabs = new ZTabWidget;

    Fixture()
    {
        scene.addItem(tabs);
        tabs->stack()->setAnimated(false);
        tabs->setGeometry(QRectF(0, 0, 300, 200));
    }

    ZWidget *addPage(const QString &text)
    {
        auto *page = new ZWidget;
        page->setObjectName(text);
        tabs->addTab(page, text);
        return page;
    }

    QPointF centreOfTab(int index)
    {
        tabs->activateLayout();
        tabs->tabBar()->activateLayout();
        return tabs->tabItem(index)->mapToScene(tabs->tabItem(index)->rect().center());
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
        Fixture f;
        QSignalSpy changed(f.tabs, &ZTabWidget::currentChanged);
        QCOMPARE(f.tabs->currentIndex(), -1);
        ZWidget *a = f.addPage(QStringLiteral("a"));
        ZWidget *b = f.addPage(QStringLiteral("b"));
        auto *c = new ZTabItem(QStringLiteral("c"));
        QCOMPARE(f.tabs->insertTab(0, c), 0);
        QCOMPARE(f.tabs->count(), 3);
        QCOMPARE(f.tabs->tabItem(0)->text(), QStringLiteral("c"));
        QCOMPARE(f.tabs->page(0), c->page());
        QCOMPARE(f.tabs->page(1), a);
        QCOMPARE(f.tabs->indexOf(b), 2);
        QCOMPARE(f.tabs->indexOf(f.tabs->tabItem(2)), 2);
        // "a" stayed current, and moved to index 1.
        QCOMPARE(f.tabs->currentIndex(), 1);
        QCOMPARE(changed.size(), 2);
        QCOMPARE(changed.at(1).at(0).toInt(), 1);
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
        Fixture f;
        for (const char *name : {"a", "b", "c"})
            f.addPage(QString::fromLatin1(name));
        f.tabs->setCurrentIndex(current);
        QPointer<ZTabItem> tab = f.tabs->tabItem(index);
        QPointer<ZWidget> page = f.tabs->page(index);

        if (how == QLatin1String("removeTab")) {
            f.tabs->removeTab(index);
            QVERIFY(!tab && !page); // both deleted
        } else if (how.startsWith(QLatin1String("removeItem"))) {
            f.tabs->removeItem(how.endsWith(QLatin1String("Tab")) ? static_cast<ZWidget *>(tab.data()) : page.data());
            // Handed back: the tab is free and owns its page again.
            QVERIFY(tab && page);
            QCOMPARE(tab->parentItem(), nullptr);
            QCOMPARE(page->parentItem(), nullptr);
            QVERIFY(!tab->isSelected());
            delete tab.data();
        } else if (how == QLatin1String("deletePage")) {
            delete page.data();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(!tab);
        } else {
            delete tab.data();
            QVERIFY(!page);
        }
        QStringList texts;
        for (int i = 0; i < f.tabs->count(); ++i)
            texts.append(f.tabs->tabItem(i)->text());
        QCOMPARE(texts.join(QLatin1Char(' ')), left);
        QCOMPARE(f.tabs->currentIndex(), currentAfter);
        f.verifyPairs();
        QCOMPARE(f.tabs->tabBar()->childItems().contains(tab.data()), false);
    }

    void clickSelects()
    {
        Fixture f;
        for (const char *name : {"first", "second", "third"})
            f.addPage(QString::fromLatin1(name));
        QSignalSpy changed(f.tabs, &ZTabWidget::currentChanged);
        sendMouse(f.scene, QEvent::GraphicsSceneMousePress, f.centreOfTab(2));
        sendMouse(f.scene, QEvent::GraphicsSceneMouseRelease, f.centreOfTab(2));
        QCOMPARE(f.tabs->currentIndex(), 2);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.at(0).at(0).toInt(), 2);
        QVERIFY(f.tabs->page(2)->isVisible());
        QVERIFY(!f.tabs->page(0)->isVisible());
        // A disabled tab does not take the press.
        f.tabs->tabItem(1)->setEnabled(false);
        sendMouse(f.scene, QEvent::GraphicsSceneMousePress, f.centreOfTab(1));
        QCOMPARE(f.tabs->currentIndex(), 2);
        // Other buttons do nothing.
        sendMouse(f.scene, QEvent::GraphicsSceneMousePress, f.centreOfTab(0), Qt::RightButton);
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
        auto *tab = new ZTabItem(QStringLiteral("Tab"));
        scene.addItem(tab);
        tab->resize(60, 24);
        tab->setSelected(selected);
        if (hovered)
            sendHover(scene, tab, QEvent::GraphicsSceneHoverEnter, QPointF(5, 5));
        tab->setEnabled(enabled);
        QCOMPARE(tab->tabFrame()->frameIndex(), frame);
        QStringList images = tab->imagePath().split(QLatin1Char('|'));
        QVERIFY(images.value(frame).contains(QStringLiteral("tabframe_") + image));
        QCOMPARE(tab->tabFrame()->geometry(), QRectF(0, 0, 60, 24));
        if (hovered) {
            sendHover(scene, tab, QEvent::GraphicsSceneHoverLeave, QPointF(-5, -5));
            QCOMPARE(tab->tabFrame()->frameIndex(), enabled ? (selected ? 2 : 0) : 3);
        }
    }

    void headerWidthFollowsText()
    {
        ZTabItem tab(QStringLiteral("x"));
        const qreal narrow = tab.effectiveSizeHint(Qt::PreferredSize).width();
        tab.setText(QStringLiteral("a much longer caption"));
        const qreal wide = tab.effectiveSizeHint(Qt::PreferredSize).width();
        QVERIFY(wide > narrow + 50);
        tab.setClosable(true);
        QCOMPARE(tab.effectiveSizeHint(Qt::PreferredSize).width(), wide + 20);
        tab.setPadding(-4);
        QCOMPARE(tab.padding(), 0);
        tab.setTextColor(QColor()); // ignored
        QVERIFY(tab.textColor().isValid());
    }

    void closeButtons()
    {
        Fixture f;
        for (const char *name : {"a", "b"})
            f.addPage(QString::fromLatin1(name));
        QVERIFY(!f.tabs->tabItem(0)->closeButton()->isVisible());
        f.tabs->setTabsClosable(true);
        f.addPage(QStringLiteral("c")); // later tabs follow the setting
        for (int i = 0; i < 3; ++i)
            QVERIFY(f.tabs->tabItem(i)->closable());
        QSignalSpy close(f.tabs, &ZTabWidget::tabCloseRequested);
        f.centreOfTab(0);
        ZFrameItem *button = f.tabs->tabItem(1)->closeButton();
        QVERIFY(button->isVisible());
        const QPointF at = button->mapToScene(button->rect().center());
        sendMouse(f.scene, QEvent::GraphicsSceneMousePress, at);
        sendMouse(f.scene, QEvent::GraphicsSceneMouseRelease, at);
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
        Fixture f;
        f.tabs->setTabHeight(30);
        f.tabs->setTabSpacing(6);
        f.addPage(QStringLiteral("one"));
        f.addPage(QStringLiteral("two"));
        f.centreOfTab(0);
        QCOMPARE(f.tabs->tabHeight(), 30);
        QCOMPARE(f.tabs->tabBar()->geometry(), QRectF(0, 0, 300, 30));
        QCOMPARE(f.tabs->stack()->geometry(), QRectF(0, 30, 300, 170));
        ZTabItem *one = f.tabs->tabItem(0);
        ZTabItem *two = f.tabs->tabItem(1);
        QCOMPARE(one->pos(), QPointF(0, 0));
        QCOMPARE(two->pos().x(), one->size().width() + 6);
        QCOMPARE(one->size().height(), 30.0);
        f.tabs->setTabHeight(-3);
        QCOMPARE(f.tabs->tabHeight(), 0);
    }

    void fromDocument()
    {
        QGraphicsScene scene;
        auto *root = new ZWidget;
        scene.addItem(root);
        const QByteArray doc = R"(<uitree>
  <ZTabWidget objectName="tabs" currentIndex="1" tabsClosable="true" stack.animated="false">
    <ZTabItem objectName="general" text="General" page.layout="HBox">
      <ZWidget objectName="inside" fixSize="20,20"/>
    </ZTabItem>
    <ZTabItem text="Advanced" textColor="200,0,0"/>
    <ZWidget objectName="loose"/>
  </ZTabWidget>
</uitree>)";
        QVERIFY(ZXmlUI::widgetFromMemory(doc, root));
        auto *tabs = qobject_cast<ZTabWidget *>(root->findObject(QStringLiteral("tabs")));
        QVERIFY(tabs);
        QCOMPARE(tabs->count(), 3);
        QCOMPARE(tabs->currentIndex(), 1);
        QVERIFY(tabs->tabsClosable());
        QVERIFY(!tabs->stack()->animated());
        ZTabItem *general = tabs->tabItem(0);
        QCOMPARE(general->objectName(), QStringLiteral("general"));
        QCOMPARE(general->text(), QStringLiteral("General"));
        QVERIFY(general->closable());
        QCOMPARE(general->page()->layoutType(), ZWidget::HBox);
        auto *inside = qobject_cast<ZWidget *>(root->findObject(QStringLiteral("inside")));
        QVERIFY(inside);
        QCOMPARE(inside->parentItem(), general->page());
        QCOMPARE(tabs->tabItem(1)->textColor(), QColor(200, 0, 0));
        QCOMPARE(tabs->tabItem(1)->text(), QStringLiteral("Advanced"));
        QCOMPARE(tabs->page(2)->objectName(), QStringLiteral("loose"));
        QVERIFY(tabs->tabItem(2)->text().isEmpty());
        QVERIFY(tabs->tabItem(1)->isSelected());
        // The tab widget keeps its own arrangement.
        tabs->setLayoutType(ZWidget::HBox);
        QCOMPARE(tabs->layoutType(), ZWidget::VBox);
    }
};

QTEST_MAIN(tst_ZTabWidget)
#include "tst_ztabwidget.moc"
