// Keyboard focus in loaded windows: Tab walks the controls in document
// order, however the loader built the containers, and a field that the
// document focuses keeps the focus when the window comes up.

#include "common/scenetest.h"
#include "zwidget.h"
#include "zwindow.h"
#include "zxmlui.h"

#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsLayout>
#include <QtWidgets/QGraphicsScene>
#include <QtWidgets/QGraphicsWidget>

class tst_FocusChain : public QObject
{
    Q_OBJECT

private slots:
    void tabFollowsDocumentOrder_data();
    void tabFollowsDocumentOrder();
    void loadIntoPopulatedWidgetAppends();
    void documentFocusSurvivesLoad();
    void deleteTakesChildrenFirst();
};

namespace {

// Every ZWidget named in \a names takes tab focus.
void makeFocusable(QGraphicsItem *root, const QStringList &names)
{
    for (QGraphicsItem *item : root->childItems()) {
        if (item->isWidget()) {
            auto *w = static_cast<QGraphicsWidget *>(item);
            if (names.contains(w->objectName()))
                w->setFocusPolicy(Qt::StrongFocus);
        }
        makeFocusable(item, names);
    }
}

// The names of the widgets Tab (or Backtab) visits, starting from \a first.
QStringList tabWalk(QGraphicsScene *scene, QGraphicsWidget *first, int steps, Qt::Key key = Qt::Key_Tab)
{
    QEvent activate(QEvent::WindowActivate);
    QCoreApplication::sendEvent(scene, &activate);
    scene->setFocusItem(first, Qt::OtherFocusReason);
    QStringList visited;
    for (int i = 0; i < steps && scene->focusItem(); ++i) {
        visited << static_cast<QGraphicsWidget *>(scene->focusItem())->objectName();
        scenetest::key(*scene, key);
    }
    return visited;
}

QGraphicsWidget *findWidget(QGraphicsItem *root, const QString &name)
{
    for (QGraphicsItem *item : root->childItems()) {
        if (item->isWidget() && static_cast<QGraphicsWidget *>(item)->objectName() == name)
            return static_cast<QGraphicsWidget *>(item);
        if (QGraphicsWidget *found = findWidget(item, name))
            return found;
    }
    return nullptr;
}

} // namespace

void tst_FocusChain::tabFollowsDocumentOrder_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QStringList>("order");

    const QStringList abcd{"a", "b", "c", "d"};
    QTest::newRow("flat") << QByteArray("<ZWidget objectName='a'/><ZWidget objectName='b'/>"
                                        "<ZWidget objectName='c'/><ZWidget objectName='d'/>")
                          << abcd;
    QTest::newRow("rows") << QByteArray("<ZWidget layout='VBox'>"
                                        "<ZWidget layout='HBox'><ZWidget objectName='a'/><ZWidget objectName='b'/></ZWidget>"
                                        "<ZWidget layout='HBox'><ZWidget objectName='c'/><ZWidget objectName='d'/></ZWidget>"
                                        "</ZWidget>")
                          << abcd;
    // Single children, actions between widgets, a container that is itself
    // focusable and deeper nesting on one side.
    QTest::newRow("mixed") << QByteArray("<ZWidget layout='VBox'>"
                                         "<ZWidget><ZWidget objectName='a'/></ZWidget>"
                                         "<ZWidget objectName='b' layout='HBox'><x:invoke function='update'/>"
                                         "<ZWidget><ZWidget><ZWidget objectName='c'/><ZWidget/></ZWidget></ZWidget>"
                                         "<ZPushButton objectName='d'/></ZWidget>"
                                         "<ZWidget objectName='e'/>"
                                         "</ZWidget>")
                           << QStringList{"a", "b", "c", "d", "e"};
    // A container of many elements (their children are held out of the
    // chain while it fills), holding small ones and a nested large one.
    QByteArray many = "<ZWidget layout='VBox'>";
    QStringList manyOrder;
    for (int i = 0; i < 18; ++i) {
        const QByteArray n = QByteArray::number(i);
        many += "<ZWidget layout='HBox'><ZWidget objectName='r" + n + "a'/><ZWidget objectName='r" + n + "b'/></ZWidget>";
        manyOrder << "r" + n + "a" << "r" + n + "b";
        if (i == 9) {
            many += "<ZWidget layout='HBox'>";
            for (int j = 0; j < 17; ++j) {
                many += "<ZWidget objectName='w" + QByteArray::number(j) + "'/>";
                manyOrder << "w" + QString::number(j);
            }
            many += "</ZWidget>";
        }
    }
    QTest::newRow("many") << many + "</ZWidget>" << manyOrder;
}

void tst_FocusChain::tabFollowsDocumentOrder()
{
    QFETCH(QByteArray, body);
    QFETCH(QStringList, order);
    QScopedPointer<ZWindow> window(ZXmlUI::windowFromMemory("<uitree><ZWindow>" + body + "</ZWindow></uitree>"));
    QVERIFY(window);
    makeFocusable(window->rootWidget(), order);
    QGraphicsWidget *first = findWidget(window->rootWidget(), order.first());
    QGraphicsWidget *last = findWidget(window->rootWidget(), order.last());
    QVERIFY(first && last);
    QCOMPARE(tabWalk(window->scene(), first, order.size()), order);
    QStringList backwards = order;
    std::reverse(backwards.begin(), backwards.end());
    QCOMPARE(tabWalk(window->scene(), last, order.size(), Qt::Key_Backtab), backwards);
    // Nothing the loader did is left behind as a panel.
    for (QGraphicsItem *item : window->scene()->items())
        QVERIFY2(!item->isPanel(), qPrintable(static_cast<QGraphicsWidget *>(item)->objectName()));
}

void tst_FocusChain::loadIntoPopulatedWidgetAppends()
{
    ZWindow window;
    auto *old = new ZWidget;
    old->setObjectName("old");
    window.rootWidget()->addItem(old);
    // Enough new elements that an empty container would hold them.
    QByteArray body = "<uitree>";
    QStringList order{"old"};
    for (int i = 1; i <= 17; ++i) {
        body += "<ZWidget objectName='n" + QByteArray::number(i) + "'/>";
        order << "n" + QString::number(i);
    }
    QVERIFY(ZXmlUI::widgetFromMemory(body + "</uitree>", window.rootWidget()));
    makeFocusable(window.rootWidget(), order);
    QCOMPARE(tabWalk(window.scene(), old, int(order.size())), order);
}

void tst_FocusChain::documentFocusSurvivesLoad()
{
    QScopedPointer<ZWindow> window(ZXmlUI::windowFromMemory(
        "<uitree><ZWindow><ZWidget layout='VBox'>"
        "<ZLineEdit objectName='one'/><ZLineEdit objectName='two' focus='true'/><ZLineEdit objectName='three'/>"
        "</ZWidget></ZWindow></uitree>"));
    QVERIFY(window);
    window->resize(300, 200);
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.data()));
    QGraphicsItem *focused = window->scene()->focusItem();
    QVERIFY(focused);
    QVERIFY(focused->parentItem());
    QCOMPARE(static_cast<QGraphicsWidget *>(focused->parentItem())->objectName(), QStringLiteral("two"));
}

// A widget takes its subtree down before it leaves its parent; a child whose
// destructor takes a sibling with it must not leave a dangling item behind.
class SiblingKiller : public ZWidget
{
public:
    using ZWidget::ZWidget;
    ~SiblingKiller() override { delete victim; }
    ZWidget *victim = nullptr;
};

void tst_FocusChain::deleteTakesChildrenFirst()
{
    QGraphicsScene scene;
    auto *top = new ZWidget;
    top->setLayoutType(ZWidget::VBox);
    scene.addItem(top);
    auto *victim = new ZWidget;
    top->addItem(victim);
    auto *killer = new SiblingKiller;
    top->addItem(killer);
    killer->victim = victim;
    auto *grandchild = new ZWidget(killer);
    auto *bystander = new ZWidget;
    top->addItem(bystander);
    QPointer<ZWidget> watchVictim(victim), watchGrandchild(grandchild);

    // One child deleted on its own leaves its parent's layout in order.
    auto *single = new ZWidget;
    top->addItem(single);
    QCOMPARE(top->layout()->count(), 4);
    delete single;
    QCOMPARE(top->layout()->count(), 3);
    top->resize(100, 300);
    top->activateLayout();
    QCOMPARE(bystander->geometry().width(), 100.0);

    QSignalSpy topGone(top, &QObject::destroyed);
    delete top;
    QCOMPARE(topGone.size(), 1);
    QVERIFY(!watchVictim);
    QVERIFY(!watchGrandchild);
    QVERIFY(scene.items().isEmpty());
}

QTEST_MAIN(tst_FocusChain)
#include "tst_focuschain.moc"
