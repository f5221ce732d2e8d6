// The editor inside the line edit: its key rule (Caps Lock in password mode,
// Up and Down, a clicked() for every key), focus and mouse signals, and where
// its context-menu requests go.

#include "qlineeditex.h"
#include "zlineedit.h"

#include "texttestutil.h"

#include <QtGui/QKeyEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

using texttest::ActiveScene;
using texttest::MenuProbe;

class tst_QLineEditEx : public QObject
{
    Q_OBJECT

private slots:
    void keyRule_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("capsLock");
        QTest::addColumn<QVariantList>("updown");
        QTest::addColumn<QString>("text");

        const QVariantList none;
        QTest::newRow("password caps lock") << int(QLineEdit::Password) << int(Qt::Key_CapsLock) << 1 << none << "";
        QTest::newRow("normal caps lock") << int(QLineEdit::Normal) << int(Qt::Key_CapsLock) << 0 << none << "";
        QTest::newRow("no-echo caps lock") << int(QLineEdit::NoEcho) << int(Qt::Key_CapsLock) << 0 << none << "";
        QTest::newRow("echo-on-edit caps lock")
            << int(QLineEdit::PasswordEchoOnEdit) << int(Qt::Key_CapsLock) << 0 << none << "";
        QTest::newRow("normal up") << int(QLineEdit::Normal) << int(Qt::Key_Up) << 0 << QVariantList{true} << "";
        QTest::newRow("normal down") << int(QLineEdit::Normal) << int(Qt::Key_Down) << 0 << QVariantList{false} << "";
        QTest::newRow("password up") << int(QLineEdit::Password) << int(Qt::Key_Up) << 0 << QVariantList{true} << "";
        QTest::newRow("password down")
            << int(QLineEdit::Password) << int(Qt::Key_Down) << 0 << QVariantList{false} << "";
        QTest::newRow("letter is typed") << int(QLineEdit::Normal) << int(Qt::Key_A) << 0 << none << "a";
        QTest::newRow("password letter is typed") << int(QLineEdit::Password) << int(Qt::Key_Q) << 0 << none << "q";
    }

    // Key presses through QTest on the editor of a real line edit.
    void keyRule()
    {
        QFETCH(int, mode);
        QFETCH(int, key);
        QFETCH(int, capsLock);
        QFETCH(QVariantList, updown);
        QFETCH(QString, text);

        ZLineEdit field;
        field.setMode(QLineEdit::EchoMode(mode));
        auto *edit = qobject_cast<QLineEditEx *>(field.realLineEdit());
        QVERIFY(edit);
        QSignalSpy caps(edit, &QLineEditEx::capsLockChanged);
        QSignalSpy upDown(edit, &QLineEditEx::updownKeyClicked);
        QList<int> clickedKeys;
        QList<int> forwardedKeys;
        connect(edit, &QLineEditEx::clicked, this, [&](QKeyEvent *e) { clickedKeys << e->key(); });
        connect(&field, &ZLineEdit::clicked, this, [&](QKeyEvent *e) { forwardedKeys << e->key(); });

        QTest::keyClick(edit, Qt::Key(key));

        QCOMPARE(caps.count(), capsLock);
        QVariantList seen;
        for (const QList<QVariant> &args : std::as_const(upDown))
            seen << args.at(0);
        QCOMPARE(seen, updown);
        QCOMPARE(clickedKeys, QList<int>{key});
        QCOMPARE(forwardedKeys, QList<int>{key});
        QCOMPARE(edit->text(), text);
    }

    // clicked() follows every press, after the standard handling, and every
    // press ends accepted, also the keys a plain line edit ignores.
    void everyKeyIsClickedAndAccepted()
    {
        ZLineEdit field;
        auto *edit = qobject_cast<QLineEditEx *>(field.realLineEdit());
        QStringList textAtSignal;
        QList<int> keys;
        connect(edit, &QLineEditEx::clicked, this, [&](QKeyEvent *e) {
            keys << e->key();
            textAtSignal << edit->text();
        });

        const QList<Qt::Key> presses = {Qt::Key_H, Qt::Key_I, Qt::Key_Backspace, Qt::Key_F5, Qt::Key_Escape,
                                        Qt::Key_Return, Qt::Key_Up, Qt::Key_Left, Qt::Key_Shift};
        QList<int> expected;
        for (Qt::Key k : presses) {
            const QString typed = (k >= Qt::Key_A && k <= Qt::Key_Z) ? QString(QChar('a' + (k - Qt::Key_A))) : QString();
            QKeyEvent press(QEvent::KeyPress, k, Qt::NoModifier, typed);
            press.ignore();
            QCoreApplication::sendEvent(edit, &press);
            QVERIFY2(press.isAccepted(), qPrintable(QString::number(k, 16)));
            expected << k;
        }
        QCOMPARE(keys, expected);
        // The text is already edited when the signal comes.
        QCOMPARE(textAtSignal.mid(0, 3), (QStringList{"h", "hi", "h"}));
    }

    void focusSignals()
    {
        ActiveScene scene;
        ZLineEdit field;
        scene.addItem(&field);
        auto *edit = qobject_cast<QLineEditEx *>(field.realLineEdit());
        QSignalSpy in(edit, &QLineEditEx::focusIn);
        QSignalSpy out(edit, &QLineEditEx::focusOut);

        field.setFocus(true);
        QVERIFY(field.focus());
        QCOMPARE(in.count(), 1);
        QCOMPARE(out.count(), 0);

        scene.focusElsewhere();
        QVERIFY(!field.focus());
        QCOMPARE(in.count(), 1);
        QCOMPARE(out.count(), 1);
        scene.removeItem(&field);
    }

    void buttonClicked_data()
    {
        QTest::addColumn<int>("button");
        QTest::newRow("left") << int(Qt::LeftButton);
        QTest::newRow("right") << int(Qt::RightButton);
        QTest::newRow("middle") << int(Qt::MiddleButton);
    }

    void buttonClicked()
    {
        QFETCH(int, button);
        QLineEditEx edit;
        edit.resize(100, 20);
        QSignalSpy spy(&edit, &QLineEditEx::buttonClicked);
        QTest::mousePress(&edit, Qt::MouseButton(button), Qt::NoModifier, QPoint(10, 10));
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).value<Qt::MouseButton>(), Qt::MouseButton(button));
        QTest::mouseRelease(&edit, Qt::MouseButton(button), Qt::NoModifier, QPoint(10, 10));
    }

    // On its own the editor offers the toolkit's menu itself.
    void standaloneContextMenu()
    {
        QLineEditEx edit(QStringLiteral("hello"));
        edit.resize(100, 20);
        MenuProbe probe;
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), edit.mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(&edit, &event);
        QVERIFY(probe.sawMenu);
        QVERIFY(event.isAccepted());
        QCOMPARE(probe.texts().size(), 7);
        QVERIFY(probe.texts().at(0).startsWith(QLatin1String("&Undo")));
    }

    // Inside a line edit the request goes to the line edit, which may say no.
    void hostedContextMenuIsLeftToTheHost()
    {
        ActiveScene scene;
        ZLineEdit field;
        field.resize(120, 24);
        scene.addItem(&field);
        field.setContextMenu(false);
        MenuProbe probe;
        texttest::requestContextMenu(&field);
        QTest::qWait(20);
        QVERIFY(!probe.sawMenu);
        scene.removeItem(&field);
    }
};

QTEST_MAIN(tst_QLineEditEx)
#include "tst_qlineeditex.moc"
