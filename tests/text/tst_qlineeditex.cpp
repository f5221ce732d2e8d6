// The editor inside the line edit: its key rule (Caps Lock in password mode,
// Up and Down, a clicked() for every key) and its own menu when alone.

#include "qlineeditex.h"
#include "zlineedit.h"

#include "texttestutil.h"

#include <QtGui/QKeyEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

using texttest::MenuProbe;

class tst_QLineEditEx : public QObject
{
    Q_OBJECT

private slots:
    // Caps Lock is announced in password mode only; Up and Down are
    // announced in every mode; letters are typed in every mode.
    void keyRule_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("capsLock");
        QTest::addColumn<QVariantList>("updown");
        QTest::addColumn<QString>("text");
        const int normal = QLineEdit::Normal, password = QLineEdit::Password;
        QTest::newRow("password caps lock") << password << int(Qt::Key_CapsLock) << 1 << QVariantList() << "";
        QTest::newRow("normal caps lock") << normal << int(Qt::Key_CapsLock) << 0 << QVariantList() << "";
        QTest::newRow("echo-on-edit caps lock") << int(QLineEdit::PasswordEchoOnEdit) << int(Qt::Key_CapsLock) << 0
                                                << QVariantList() << "";
        QTest::newRow("normal up") << normal << int(Qt::Key_Up) << 0 << QVariantList{true} << "";
        QTest::newRow("password down") << password << int(Qt::Key_Down) << 0 << QVariantList{false} << "";
        QTest::newRow("password letter is typed") << password << int(Qt::Key_Q) << 0 << QVariantList() << "q";
    }

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
        QSignalSpy caps(edit, &QLineEditEx::capsLockChanged);
        QSignalSpy upDown(edit, &QLineEditEx::updownKeyClicked);
        QTest::keyClick(edit, Qt::Key(key));
        QCOMPARE(caps.count(), capsLock);
        QVariantList seen;
        for (const QList<QVariant> &args : std::as_const(upDown))
            seen << args.at(0);
        QCOMPARE(seen, updown);
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
};

QTEST_MAIN(tst_QLineEditEx)
#include "tst_qlineeditex.moc"
