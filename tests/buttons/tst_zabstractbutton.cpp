// The state machine every button shares: which word each event leads to for
// both button types, when updateState() runs, and the signals that follow.

#include <QtTest/QtTest>

#include "common/scenetest.h"
#include "zabstractbutton.h"

using scenetest::Mouse;
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

Recorder *addButton(QGraphicsScene &scene, ZAbstractButton::ButtonType type, const QSizeF &size = QSizeF(40, 20))
{
    auto *button = new Recorder(type);
    scene.addItem(button);
    button->resize(size);
    return button;
}

enum Event { HoverEnter, HoverMove, HoverLeave, Press, Release };

} // namespace

class tst_ZAbstractButton : public QObject
{
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral("."))); }

    void transitions_data()
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
    void transitions()
    {
        QFETCH(int, type);
        QFETCH(int, before);
        QFETCH(int, event);
        QFETCH(int, after);
        QGraphicsScene scene;
        Recorder *button = addButton(scene, ZAbstractButton::ButtonType(type));
        button->setChecked(before & State::StateChecked);
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
            button->words.clear();
            const QPointF at(5, 5);
            if (event == Press || event == Release) {
                QVERIFY(scenetest::sendMouseTo(button, event == Press ? QEvent::GraphicsSceneMousePress
                                                                      : QEvent::GraphicsSceneMouseRelease, at));
            } else {
                const QEvent::Type hover[] = {QEvent::GraphicsSceneHoverEnter, QEvent::GraphicsSceneHoverMove,
                                              QEvent::GraphicsSceneHoverLeave};
                QVERIFY(scenetest::sendHoverTo(button, hover[event], at));
            }
        }
        QCOMPARE(button->words, QList<int>{after});
        QCOMPARE(int(button->state()), after);
    }

    // updateState() runs on every event, also when the word stays the same.
    void everyEventRunsUpdateState()
    {
        QGraphicsScene scene;
        Recorder *button = addButton(scene, ZAbstractButton::ButtonPush);
        Mouse mouse(scene);
        for (int x : {5, 6, 7})
            mouse.move(QPointF(x, 5));
        const int H = State::StateHover;
        QCOMPARE(button->words, (QList<int>{H, H, H, H})); // enter and move, move, move
    }

    void signalsFollowTheState()
    {
        QGraphicsScene scene;
        Recorder *button = addButton(scene, ZAbstractButton::ButtonToggle);
        button->setPos(100, 50);
        QCOMPARE(button->dragPolicy(), ZWidget::Nothing); // pressing a button never drags its window
        QStringList log;
        const auto record = [&](const char *what, const QPointF &pt) {
            log << QStringLiteral("%1 %2,%3 word %4").arg(QLatin1String(what)).arg(pt.x()).arg(pt.y()).arg(int(button->state()), 0, 16);
        };
        connect(button, &ZAbstractButton::pressed, this, [&](QPointF &pt) { record("pressed", pt); });
        connect(button, &ZAbstractButton::released, this, [&](QPointF &pt) { record("released", pt); });
        connect(button, &ZAbstractButton::clicked, this, [&] { log << QStringLiteral("clicked"); });

        Mouse mouse(scene);
        mouse.press(QPointF(103, 54));
        QCOMPARE(log, QStringList{"pressed 3,4 word 4"}); // item coordinates, word already pressed
        mouse.move(QPointF(110, 60));
        mouse.release(QPointF(112, 61));
        QCOMPARE(log, (QStringList{"pressed 3,4 word 4", "released 12,11 word 101", "clicked"}));

        // Other buttons do not press a button.
        log.clear();
        QVERIFY(!mouse.press(QPointF(103, 54), Qt::RightButton));
        mouse.release(QPointF(103, 54));
        QVERIFY(log.isEmpty());
    }

    // The button holds the mouse after a press: a release anywhere clicks.
    void releaseOutsideStillClicks_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("finalWord");
        QTest::newRow("push") << int(ZAbstractButton::ButtonPush) << int(State::StateNormal);
        QTest::newRow("toggle") << int(ZAbstractButton::ButtonToggle) << int(State::StateNormal | State::StateChecked);
    }
    void releaseOutsideStillClicks()
    {
        QFETCH(int, type);
        QFETCH(int, finalWord);
        QGraphicsScene scene(0, 0, 400, 300);
        Recorder *button = addButton(scene, ZAbstractButton::ButtonType(type), QSizeF(60, 24));
        button->setPos(20, 20);
        QList<QPointF> released;
        connect(button, &ZAbstractButton::released, this, [&](QPointF &pt) { released << pt; });
        QSignalSpy clicked(button, &ZAbstractButton::clicked);

        Mouse mouse(scene);
        mouse.move(QPointF(30, 30));
        mouse.press(QPointF(30, 30));
        mouse.move(QPointF(200, 200)); // no hover leave while held
        QCOMPARE(button->state() & ~ZAbstractButton::CheckMask, States(ZAbstractButton::StatePressed));
        mouse.release(QPointF(250, 250));
        QCOMPARE(released, QList<QPointF>{QPointF(230, 230)});
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(int(button->state()), finalWord);
    }

    // The release itself gives the normal word; only the hover the scene
    // sends as the button lets the mouse go gives hover.
    void releaseShowsNormalBeforeHover()
    {
        QGraphicsScene scene(0, 0, 200, 100);
        Recorder *button = addButton(scene, ZAbstractButton::ButtonPush, QSizeF(60, 24));
        Mouse mouse(scene);
        mouse.move(QPointF(10, 10));
        mouse.press(QPointF(10, 10));
        button->words.clear();
        mouse.release(QPointF(10, 10));
        QVERIFY(!button->words.isEmpty());
        QCOMPARE(button->words.first(), int(State::StateNormal));
        mouse.move(QPointF(11, 10));
        QCOMPARE(button->words.last(), int(State::StateHover));
    }

    void checkedByClicksAndSetter()
    {
        QGraphicsScene scene;
        Recorder *button = addButton(scene, ZAbstractButton::ButtonToggle, QSizeF(30, 30));
        Mouse mouse(scene);
        for (bool initially : {false, true}) { // two clicks restore the state
            button->setChecked(initially);
            mouse.click(QPointF(15, 15));
            QCOMPARE(button->checked(), !initially);
            mouse.click(QPointF(15, 15));
            QCOMPARE(button->checked(), initially);
        }
        mouse.move(QPointF(100, 100));
        button->words.clear();
        button->setChecked(true); // no change: no word
        QVERIFY(button->words.isEmpty());
        QVERIFY(button->setProperty("check", false));
        QVERIFY(!button->checked());
        button->setChecked(true);
        QCOMPARE(button->words, (QList<int>{State::StateNormal, State::StateNormal | State::StateChecked}));
        // A press keeps the checked bit of a toggle button.
        button->setChecked(true);
        mouse.press(QPointF(5, 5));
        QCOMPARE(button->state(), ZAbstractButton::StateChecked | ZAbstractButton::StatePressed);
    }

    void setEnabled_data()
    {
        QTest::addColumn<QByteArray>("property"); // empty: the setter itself
        QTest::newRow("setter") << QByteArray();
        QTest::newRow("enable") << QByteArray("enable");
        QTest::newRow("enabled") << QByteArray("enabled");
    }
    void setEnabled()
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
        QVERIFY(!button.enabled() && !button.isEnabled());
        QCOMPARE(button.words, QList<int>{State::StateNormal | State::StateDisable});
        set(false); // always reported, changed or not
        QCOMPARE(button.words.size(), 2);
        set(true);
        QVERIFY(button.enabled() && button.isEnabled());
        QCOMPARE(button.words.last(), int(State::StateNormal));
    }

    void disabledIgnoresThePointer()
    {
        QGraphicsScene scene;
        Recorder *button = addButton(scene, ZAbstractButton::ButtonToggle, QSizeF(30, 30));
        button->setEnabled(false);
        button->words.clear();
        QSignalSpy clicked(button, &ZAbstractButton::clicked);
        Mouse(scene).click(QPointF(15, 15));
        QCOMPARE(clicked.count(), 0);
        QVERIFY(button->words.isEmpty());
        QVERIFY(!button->checked());
    }

    void followsParentEnable()
    {
        ZWidget parent;
        auto *button = new Recorder(ZAbstractButton::ButtonToggle, &parent);
        parent.setEnabled(false);
        QVERIFY(!button->enabled());
        parent.setEnabled(true);
        QVERIFY(button->enabled());
        QCOMPARE(button->words, (QList<int>{State::StateNormal | State::StateDisable, State::StateNormal}));
    }

    void deletedByReceiver()
    {
        QGraphicsScene scene;
        QPointer<Recorder> guard(addButton(scene, ZAbstractButton::ButtonPush, QSizeF(30, 30)));
        int clicks = 0;
        connect(guard.data(), &ZAbstractButton::released, this, [&](QPointF &) { delete guard.data(); });
        connect(guard.data(), &ZAbstractButton::clicked, this, [&] { ++clicks; });
        Mouse mouse(scene);
        mouse.click(QPointF(10, 10));
        QVERIFY(guard.isNull());
        QCOMPARE(clicks, 0);
        mouse.move(QPointF(12, 12)); // the scene goes on without it
    }

    void resizeRunsUpdateLayout()
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
};

QTEST_MAIN(tst_ZAbstractButton)
#include "tst_zabstractbutton.moc"
