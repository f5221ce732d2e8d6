// The state machine every button shares: which word each event leads to for
// both button types, when updateState() runs, and the signals that follow.

#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsScene>
#include <QtWidgets/QGraphicsSceneHoverEvent>

#include "buttons/buttontestutil.h"
#include "zabstractbutton.h"

using buttontest::Pointer;
using State = ZAbstractButton::ButtonState;
using States = ZAbstractButton::ButtonStates;

namespace {

// Records every word handed to updateState().
class Recorder : public ZAbstractButton
{
public:
    explicit Recorder(ButtonType type, QGraphicsItem *parent = nullptr) : ZAbstractButton(parent, type) {}
    void updateLayout() override { ++layouts; }
    void updateState(ButtonStates state) override { words << int(state); }
    // What a subclass forwarding events would do; the scene gives disabled items none.
    using ZAbstractButton::hoverEnterEvent;
    using ZAbstractButton::mouseReleaseEvent;

    QList<int> words;
    int layouts = 0;
};

enum Event { HoverEnter, HoverMove, HoverLeave, Press, Release };

// Hands one event to the button through the scene's own delivery.
void deliver(QGraphicsScene &scene, ZAbstractButton *button, Event event, const QPointF &pos = QPointF(5, 5))
{
    if (event == Press || event == Release) {
        QGraphicsSceneMouseEvent e(event == Press ? QEvent::GraphicsSceneMousePress : QEvent::GraphicsSceneMouseRelease);
        e.setPos(pos);
        e.setScenePos(button->mapToScene(pos));
        e.setButton(Qt::LeftButton);
        e.setButtons(event == Press ? Qt::LeftButton : Qt::NoButton);
        e.setAccepted(false);
        scene.sendEvent(button, &e);
        QVERIFY(e.isAccepted());
        return;
    }
    const QEvent::Type types[] = {QEvent::GraphicsSceneHoverEnter, QEvent::GraphicsSceneHoverMove,
                                  QEvent::GraphicsSceneHoverLeave};
    QGraphicsSceneHoverEvent e(types[event]);
    e.setPos(pos);
    e.setScenePos(button->mapToScene(pos));
    e.setAccepted(false);
    scene.sendEvent(button, &e);
    QVERIFY(e.isAccepted());
}

} // namespace

class tst_ZAbstractButton : public QObject
{
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral("."))); }

    void vocabulary();
    void construction();
    void transitions_data();
    void transitions();
    void everyEventRunsUpdateState();
    void signalsFollowTheState();
    void releaseOutsideStillClicks_data();
    void releaseOutsideStillClicks();
    void releaseShowsNormalBeforeHover();
    void twoClicksRestoreChecked_data();
    void twoClicksRestoreChecked();
    void setChecked();
    void setEnabled_data();
    void setEnabled();
    void disabledIgnoresThePointer();
    void followsParentEnable();
    void deletedByReceiver();
    void resizeRunsUpdateLayout();
};

void tst_ZAbstractButton::vocabulary()
{
    // Documents name these keys; the numbers are part of the state word.
    const QMetaEnum states = QMetaEnum::fromType<ZAbstractButton::ButtonStates>();
    QVERIFY(states.isFlag());
    const QList<QPair<const char *, int>> expected = {{"StateNormal", 0x1},    {"StateHover", 0x2},
                                                      {"StatePressed", 0x4},   {"StateChecked", 0x100},
                                                      {"StateDisable", 0x200}, {"CheckMask", 0xFF00}};
    QCOMPARE(states.keyCount(), int(expected.size()));
    for (const auto &[key, value] : expected)
        QCOMPARE(states.keyToValue(key), value);
    const QMetaEnum types = QMetaEnum::fromType<ZAbstractButton::ButtonType>();
    QCOMPARE(types.keyToValue("ButtonToggle"), 0);
    QCOMPARE(types.keyToValue("ButtonPush"), 1);
}

void tst_ZAbstractButton::construction()
{
    for (auto type : {ZAbstractButton::ButtonToggle, ZAbstractButton::ButtonPush}) {
        Recorder button(type);
        QCOMPARE(button.buttonType(), type);
        QCOMPARE(button.state(), States(ZAbstractButton::StateNormal));
        QVERIFY(button.enabled());
        QVERIFY(!button.checked());
        QVERIFY(button.acceptHoverEvents());
        QCOMPARE(button.acceptedMouseButtons(), Qt::MouseButtons(Qt::LeftButton));
        QCOMPARE(button.dragPolicy(), ZWidget::Nothing);
        QVERIFY(button.words.isEmpty());
    }
}

void tst_ZAbstractButton::transitions_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("before"); // lasting bits set first
    QTest::addColumn<int>("event");
    QTest::addColumn<int>("after");

    const int T = ZAbstractButton::ButtonToggle, P = ZAbstractButton::ButtonPush;
    const int N = State::StateNormal, H = State::StateHover, D = State::StatePressed;
    const int C = State::StateChecked, X = State::StateDisable;

    QTest::newRow("toggle hover enter") << T << 0 << int(HoverEnter) << H;
    QTest::newRow("toggle hover enter checked") << T << C << int(HoverEnter) << (C | H);
    QTest::newRow("toggle hover move checked") << T << C << int(HoverMove) << (C | H);
    QTest::newRow("toggle hover leave checked") << T << C << int(HoverLeave) << (C | N);
    QTest::newRow("toggle press checked") << T << C << int(Press) << (C | D);
    QTest::newRow("toggle release checks") << T << 0 << int(Release) << (N | C);
    QTest::newRow("toggle release unchecks") << T << C << int(Release) << N;
    QTest::newRow("toggle keeps disable on hover") << T << (C | X) << int(HoverEnter) << (C | X | H);
    QTest::newRow("toggle keeps disable on release") << T << X << int(Release) << (X | N | C);
    QTest::newRow("push hover enter") << P << 0 << int(HoverEnter) << H;
    QTest::newRow("push hover enter drops checked") << P << C << int(HoverEnter) << H;
    QTest::newRow("push hover move drops checked") << P << C << int(HoverMove) << H;
    QTest::newRow("push hover leave") << P << C << int(HoverLeave) << N;
    QTest::newRow("push press drops checked") << P << C << int(Press) << D;
    QTest::newRow("push release") << P << C << int(Release) << N;
    QTest::newRow("push release drops disable") << P << X << int(Release) << N;
}

void tst_ZAbstractButton::transitions()
{
    QFETCH(int, type);
    QFETCH(int, before);
    QFETCH(int, event);
    QFETCH(int, after);

    QGraphicsScene scene;
    auto *button = new Recorder(ZAbstractButton::ButtonType(type));
    scene.addItem(button);
    button->resize(40, 20);
    if (before & State::StateChecked)
        button->setChecked(true);
    button->words.clear();

    if (before & State::StateDisable) {
        button->setEnabled(false);
        button->words.clear();
        if (event == HoverEnter) {
            QGraphicsSceneHoverEvent e(QEvent::GraphicsSceneHoverEnter);
            button->hoverEnterEvent(&e);
        } else {
            QGraphicsSceneMouseEvent e(QEvent::GraphicsSceneMouseRelease);
            button->mouseReleaseEvent(&e);
        }
    } else {
        deliver(scene, button, Event(event));
    }
    QCOMPARE(button->words, QList<int>{after});
    QCOMPARE(int(button->state()), after);
}

void tst_ZAbstractButton::everyEventRunsUpdateState()
{
    QGraphicsScene scene;
    auto *button = new Recorder(ZAbstractButton::ButtonPush);
    scene.addItem(button);
    button->resize(40, 20);
    Pointer pointer(scene);
    pointer.move(QPointF(5, 5));
    pointer.move(QPointF(6, 5));
    pointer.move(QPointF(7, 5));
    const int H = State::StateHover;
    QCOMPARE(button->words, (QList<int>{H, H, H, H})); // enter and move, move, move: the same word each time
}

void tst_ZAbstractButton::signalsFollowTheState()
{
    QGraphicsScene scene;
    auto *button = new Recorder(ZAbstractButton::ButtonToggle);
    scene.addItem(button);
    button->setPos(100, 50);
    button->resize(40, 20);

    QStringList log;
    connect(button, &ZAbstractButton::pressed, this, [&](QPointF &pt) {
        log << QStringLiteral("pressed %1,%2 word %3").arg(pt.x()).arg(pt.y()).arg(int(button->state()), 0, 16);
    });
    connect(button, &ZAbstractButton::released, this, [&](QPointF &pt) {
        log << QStringLiteral("released %1,%2 word %3").arg(pt.x()).arg(pt.y()).arg(int(button->state()), 0, 16);
    });
    connect(button, &ZAbstractButton::clicked, this, [&] { log << QStringLiteral("clicked"); });

    Pointer pointer(scene);
    pointer.press(QPointF(103, 54));
    QCOMPARE(log, QStringList{"pressed 3,4 word 4"}); // item coordinates, word already pressed
    pointer.move(QPointF(110, 60));
    pointer.release(QPointF(112, 61));
    QCOMPARE(log, (QStringList{"pressed 3,4 word 4", "released 12,11 word 101", "clicked"}));

    // Other buttons do not press a button.
    log.clear();
    Pointer right(scene);
    QVERIFY(!right.press(QPointF(103, 54), Qt::RightButton));
    right.release(QPointF(103, 54));
    QVERIFY(log.isEmpty());
}

void tst_ZAbstractButton::releaseOutsideStillClicks_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("finalWord");
    QTest::newRow("push") << int(ZAbstractButton::ButtonPush) << int(State::StateNormal);
    QTest::newRow("toggle") << int(ZAbstractButton::ButtonToggle) << int(State::StateNormal | State::StateChecked);
}

void tst_ZAbstractButton::releaseOutsideStillClicks()
{
    QFETCH(int, type);
    QFETCH(int, finalWord);

    QGraphicsScene scene(0, 0, 400, 300);
    auto *button = new Recorder(ZAbstractButton::ButtonType(type));
    scene.addItem(button);
    button->setPos(20, 20);
    button->resize(60, 24);
    QList<QPointF> released;
    connect(button, &ZAbstractButton::released, this, [&](QPointF &pt) { released << pt; });
    QSignalSpy clicked(button, &ZAbstractButton::clicked);

    Pointer pointer(scene);
    pointer.move(QPointF(30, 30));
    pointer.press(QPointF(30, 30));
    pointer.move(QPointF(200, 200)); // the button holds the mouse: no hover leave yet
    QCOMPARE(button->state() & ~ZAbstractButton::CheckMask, States(ZAbstractButton::StatePressed));
    pointer.release(QPointF(250, 250));
    QCOMPARE(released.count(), 1);
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(int(button->state()), finalWord);
    QCOMPARE(released.first(), QPointF(230, 230));
}

void tst_ZAbstractButton::releaseShowsNormalBeforeHover()
{
    QGraphicsScene scene(0, 0, 200, 100);
    auto *button = new Recorder(ZAbstractButton::ButtonPush);
    scene.addItem(button);
    button->resize(60, 24);
    Pointer pointer(scene);
    pointer.move(QPointF(10, 10));
    pointer.press(QPointF(10, 10));
    button->words.clear();
    pointer.release(QPointF(10, 10));
    // The release itself gives the normal word; only the following hover
    // (the scene sends one as the button lets the mouse go) gives hover.
    QVERIFY(!button->words.isEmpty());
    QCOMPARE(button->words.first(), int(State::StateNormal));
    pointer.move(QPointF(11, 10));
    QCOMPARE(button->words.last(), int(State::StateHover));
}

void tst_ZAbstractButton::twoClicksRestoreChecked_data()
{
    QTest::addColumn<bool>("initially");
    QTest::newRow("unchecked") << false;
    QTest::newRow("checked") << true;
}

void tst_ZAbstractButton::twoClicksRestoreChecked()
{
    QFETCH(bool, initially);
    QGraphicsScene scene;
    auto *button = new Recorder(ZAbstractButton::ButtonToggle);
    scene.addItem(button);
    button->resize(30, 30);
    button->setChecked(initially);
    Pointer pointer(scene);
    pointer.click(QPointF(15, 15));
    QCOMPARE(button->checked(), !initially);
    pointer.click(QPointF(15, 15));
    QCOMPARE(button->checked(), initially);
}

void tst_ZAbstractButton::setChecked()
{
    QGraphicsScene scene;
    auto *button = new Recorder(ZAbstractButton::ButtonToggle);
    scene.addItem(button);
    button->resize(30, 30);
    button->setChecked(false); // no change
    QVERIFY(button->words.isEmpty());
    button->setChecked(true);
    QCOMPARE(button->words, QList<int>{State::StateNormal | State::StateChecked});
    button->setChecked(true);
    QCOMPARE(button->words.size(), 1);
    QVERIFY(button->property("check").toBool());
    QVERIFY(button->setProperty("check", false));
    QVERIFY(!button->checked());

    // A press keeps the checked bit of a toggle button.
    button->setChecked(true);
    Pointer pointer(scene);
    pointer.press(QPointF(5, 5));
    QCOMPARE(button->state(), ZAbstractButton::StateChecked | ZAbstractButton::StatePressed);
}

void tst_ZAbstractButton::setEnabled_data()
{
    QTest::addColumn<QByteArray>("property"); // empty: the setter itself
    QTest::newRow("setter") << QByteArray();
    QTest::newRow("enable") << QByteArray("enable");
    QTest::newRow("enabled") << QByteArray("enabled");
}

void tst_ZAbstractButton::setEnabled()
{
    QFETCH(QByteArray, property);
    Recorder button(ZAbstractButton::ButtonPush);
    const auto set = [&](bool on) {
        if (property.isEmpty())
            button.setEnabled(on);
        else
            QVERIFY(button.setProperty(property.constData(), on));
    };
    set(false);
    QVERIFY(!button.enabled());
    QVERIFY(!button.isEnabled());
    QCOMPARE(button.words, QList<int>{State::StateNormal | State::StateDisable});
    set(false); // always reported, changed or not
    QCOMPARE(button.words.size(), 2);
    set(true);
    QVERIFY(button.enabled());
    QVERIFY(button.isEnabled());
    QCOMPARE(button.words.last(), int(State::StateNormal));
    QCOMPARE(button.property("enable").toBool(), true);
}

void tst_ZAbstractButton::disabledIgnoresThePointer()
{
    QGraphicsScene scene;
    auto *button = new Recorder(ZAbstractButton::ButtonToggle);
    scene.addItem(button);
    button->resize(30, 30);
    button->setEnabled(false);
    button->words.clear();
    QSignalSpy clicked(button, &ZAbstractButton::clicked);
    Pointer pointer(scene);
    pointer.click(QPointF(15, 15));
    QCOMPARE(clicked.count(), 0);
    QVERIFY(button->words.isEmpty());
    QVERIFY(!button->checked());
}

void tst_ZAbstractButton::followsParentEnable()
{
    ZWidget parent;
    auto *button = new Recorder(ZAbstractButton::ButtonToggle, &parent);
    parent.setEnabled(false);
    QVERIFY(!button->enabled());
    QCOMPARE(button->words, QList<int>{State::StateNormal | State::StateDisable});
    parent.setEnabled(true);
    QVERIFY(button->enabled());
    QCOMPARE(button->words.last(), int(State::StateNormal));
    QCOMPARE(button->words.size(), 2);
}

void tst_ZAbstractButton::deletedByReceiver()
{
    QGraphicsScene scene;
    auto *button = new Recorder(ZAbstractButton::ButtonPush);
    scene.addItem(button);
    button->resize(30, 30);
    QPointer<Recorder> guard(button);
    int clicks = 0;
    connect(button, &ZAbstractButton::released, this, [&](QPointF &) { delete guard.data(); });
    connect(button, &ZAbstractButton::clicked, this, [&] { ++clicks; });
    Pointer pointer(scene);
    pointer.click(QPointF(10, 10));
    QVERIFY(guard.isNull());
    QCOMPARE(clicks, 0);
    pointer.move(QPointF(12, 12)); // the scene goes on without it
}

void tst_ZAbstractButton::resizeRunsUpdateLayout()
{
    Recorder button(ZAbstractButton::ButtonPush);
    button.resize(10, 10);
    const int after = button.layouts;
    QVERIFY(after >= 1);
    button.resize(10, 10);
    QCOMPARE(button.layouts, after);
    button.resize(12, 10);
    QCOMPARE(button.layouts, after + 1);
}

QTEST_MAIN(tst_ZAbstractButton)
#include "tst_zabstractbutton.moc"
