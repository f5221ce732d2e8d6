// Dialogs: the modal run and every way it ends, results, the exit() slot,
// keys and focus during the run, placement, deletion, and ZDialog's title
// bar, in code and from documents.

#include "common/dialogtestutil.h"

#include "zdialog.h"
#include "zdialogbase.h"
#include "zpushbutton.h"
#include "zspacer.h"
#include "ztitlebar.h"

#include <QScreen>
#include <QSignalSpy>
#include <QtTest>
#include <QtTest/qtestspontaneevent.h>

#include <functional>

namespace {

// Records the keys that reach the scene's focus item.
class KeyRecorder : public ZWidget
{
public:
    KeyRecorder() { setFlag(QGraphicsItem::ItemIsFocusable); }
    QList<int> keys;

protected:
    void keyPressEvent(QKeyEvent *event) override { keys.append(event->key()); }
};

// Opens exit() to the tests, as application code calling its own dialog's
// slot would, and counts the close-button endings.
class ExitDialog : public ZDialogBase
{
public:
    ExitDialog() { resize(240, 160); }
    using ZDialogBase::exit;
    int closeClicks = 0;

protected:
    void onCloseClick() override
    {
        ++closeClicks;
        ZDialogBase::onCloseClick();
    }
};

// What a run ended by the watchdog answers.
constexpr int kTimedOut = -1000;

// Runs \a action once the dialog's modal loop is running. A run that is
// still going five seconds later is ended with kTimedOut, so that a broken
// ending fails the test instead of hanging it.
void duringRun(ZDialogBase *dialog, std::function<void()> action)
{
    QObject::connect(
        dialog, &ZDialogBase::dialogShow, dialog,
        [dialog, action = std::move(action)] {
            QTimer::singleShot(0, action);
            QTimer::singleShot(5000, dialog, [dialog] {
                if (dialog->isModalRunning())
                    dialog->done(kTimedOut);
            });
        },
        Qt::SingleShotConnection);
}

} // namespace

class tst_ZDialog : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    void endings_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<int>("expected");
        QTest::newRow("setAccepted") << "accept" << 1;
        QTest::newRow("setRejected") << "reject" << 0;
        QTest::newRow("done(5)") << "done5" << 5;
        QTest::newRow("done(-3)") << "done-3" << -3;
        QTest::newRow("endDialog(8)") << "end8" << 8;
        QTest::newRow("close()") << "close" << 0;
        QTest::newRow("Escape") << "escape" << 0;
        QTest::newRow("exit() called directly") << "direct" << 0;
        QTest::newRow("hidden by code") << "hide" << 0;
    }
    void endings()
    {
        QFETCH(QString, how);
        QFETCH(int, expected);
        ExitDialog d;
        QSignalSpy shown(&d, &ZDialogBase::dialogShow);
        bool modalDuring = false;
        duringRun(&d, [&] {
            modalDuring = d.isModalRunning() && d.isVisible() && d.windowModality() == Qt::WindowModal
                          && d.testAttribute(Qt::WA_ShowModal) && !d.testAttribute(Qt::WA_DeleteOnClose);
            if (how == QLatin1String("accept"))
                d.setAccepted();
            else if (how == QLatin1String("reject"))
                d.setRejected();
            else if (how.startsWith(QLatin1String("done")))
                d.done(how.mid(4).toInt());
            else if (how == QLatin1String("end8"))
                d.endDialog(8);
            else if (how == QLatin1String("close"))
                d.close();
            else if (how == QLatin1String("escape"))
                QTest::keyClick(&d, Qt::Key_Escape);
            else if (how == QLatin1String("direct"))
                d.exit();
            else if (how == QLatin1String("hide"))
                d.hide();
        });
        const int result = d.doModal(nullptr, true, false);
        QCOMPARE(result, expected);
        QCOMPARE(d.result(), expected);
        QCOMPARE(d.accepted(), expected == 1);
        QCOMPARE(d.rejected(), expected == 0);
        QCOMPARE(shown.count(), 1);
        QVERIFY(modalDuring);
        // After the run: hidden, not modal, not deleted.
        QVERIFY(!d.isVisible());
        QVERIFY(!d.isModalRunning());
        QCOMPARE(d.windowModality(), Qt::NonModal);
        QVERIFY(!d.testAttribute(Qt::WA_ShowModal));
        QCOMPARE(d.closeClicks, how == QLatin1String("direct") ? 1 : 0);
    }

    void exitReadsTheSendersName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("expected");
        QTest::addColumn<int>("closeClicks");
        QTest::newRow("7") << "7" << 7 << 0;
        QTest::newRow("0") << "0" << 0 << 0;
        QTest::newRow("-12") << "-12" << -12 << 0;
        QTest::newRow("not a number") << "ok" << 0 << 1;
        QTest::newRow("empty") << "" << 0 << 1;
        QTest::newRow("too large for int") << "99999999999" << 0 << 1;
    }
    void exitReadsTheSendersName()
    {
        QFETCH(QString, name);
        QFETCH(int, expected);
        QFETCH(int, closeClicks);
        ExitDialog d;
        auto *button = new ZPushButton;
        button->setObjectName(name);
        button->setText(QStringLiteral("End"));
        button->setFixSize(QSizeF(80, 24));
        d.rootWidget()->addItem(button);
        QVERIFY(connect(button, SIGNAL(clicked()), &d, SLOT(exit())));
        duringRun(&d, [&] {
            d.rootWidget()->activateLayout();
            dialogtest::click(button);
        });
        QCOMPARE(d.doModal(nullptr, true, false), expected);
        QCOMPARE(d.closeClicks, closeClicks);
    }

    void runAfterRun()
    {
        // No loop may wait for a dialog that closed before the loop started.
        ExitDialog d;
        connect(&d, &ZDialogBase::dialogShow, &d, [&] { d.done(5); }, Qt::SingleShotConnection);
        QCOMPARE(d.doModal(), 5);
        QVERIFY(!d.isVisible());
        // Closed without an answer the second time: rejected, not the old 5;
        // a second doModal() during the run is refused.
        int inner = 0;
        duringRun(&d, [&] {
            inner = d.doModal();
            QTest::keyClick(&d, Qt::Key_Escape);
        });
        QCOMPARE(d.doModal(), 0);
        QCOMPARE(inner, -1);
        // A dialog opened from another's run ends first; then the outer one.
        ExitDialog nested;
        duringRun(&d, [&] {
            duringRun(&nested, [&] { nested.done(6); });
            inner = nested.doModal();
            QVERIFY(d.isModalRunning());
            d.done(3);
        });
        QCOMPARE(d.doModal(), 3);
        QCOMPARE(inner, 6);
    }

    // An aborted close, a window-system close with closeOnF4 off and a style
    // change (which re-creates the window: hide, show) do not end the run.
    void runSurvives()
    {
        ExitDialog d;
        d.setCloseOnF4(false);
        bool abort = true, stillRunning = false;
        connect(&d, &ZWindow::aboutToClose, &d, [&] {
            if (abort)
                d.abortCloseWindow();
        });
        duringRun(&d, [&] {
            d.done(3);
            abort = false;
            QCloseEvent request;
            QSpontaneKeyEvent::setSpontaneous(&request);
            qApp->notify(&d, &request);
            d.setToolWindow(!d.toolWindow());
            QTimer::singleShot(20, &d, [&] {
                stillRunning = d.isModalRunning() && d.isVisible();
                d.done(9);
            });
        });
        QCOMPARE(d.doModal(), 9);
        QVERIFY(stillRunning);
    }

    void deletion()
    {
        auto *d = new ExitDialog;
        QPointer<ExitDialog> guard(d);
        duringRun(d, [d] { d->done(1); });
        QCOMPARE(d->doModal(nullptr, true, true), 1);
        QVERIFY(guard); // not yet: once the caller's event is done
        QTRY_VERIFY(guard.isNull());
        // Without deleteAfter the dialog outlives its run, delete-on-close or not.
        d = new ExitDialog;
        guard = d;
        duringRun(d, [d] { d->close(); });
        d->doModal(nullptr, true, false);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(guard);
        // Deleted during its own run, centred on a widget already gone.
        QPointer<ZSpacer> gone(new ZSpacer);
        delete gone.data();
        duringRun(d, [d] { delete d; });
        QCOMPARE(d->doModal(gone.data(), true, true), 0);
        QVERIFY(guard.isNull());
    }

    void placement()
    {
        ZWindow owner;
        owner.setRealWindow(true);
        owner.setWindowFlags(Qt::Window);
        owner.setGeometry(80, 60, 520, 380);
        auto *inside = new ZSpacer;
        owner.rootWidget()->addItem(inside);
        owner.show();
        QVERIFY(QTest::qWaitForWindowExposed(&owner));
        ExitDialog d;
        QPoint centre;
        duringRun(&d, [&] {
            centre = d.geometry().marginsRemoved(d.frameMargins()).center();
            d.done(1);
        });
        // On the window of the given widget.
        d.doModal(inside);
        QVERIFY((centre - owner.geometry().center()).manhattanLength() <= 2);
        // Without one, a dialog that was placed stays where it is...
        d.move(30, 40);
        duringRun(&d, [&] { d.done(1); });
        d.doModal();
        QCOMPARE(d.pos(), QPoint(30, 40));
        // ...and a new one goes to the middle of the screen.
        ExitDialog fresh;
        duringRun(&fresh, [&] {
            centre = fresh.geometry().marginsRemoved(fresh.frameMargins()).center();
            fresh.done(1);
        });
        fresh.doModal();
        const QPoint screenCentre = QGuiApplication::primaryScreen()->availableGeometry().center();
        QVERIFY((centre - screenCentre).manhattanLength() <= 2);
    }

    void keysAndFocusDuringTheRun()
    {
        ExitDialog d;
        auto *recorder = new KeyRecorder;
        d.rootWidget()->addItem(recorder);
        QSignalSpy enter(&d, &ZPopupWindow::enterPressed);
        bool openAfterEnter = false;
        duringRun(&d, [&] {
            d.scene()->setFocusItem(recorder);
            QTest::keyClick(&d, Qt::Key_A);
            QTest::keyClick(&d, Qt::Key_Return);
            openAfterEnter = d.isVisible();
            QTest::keyClick(&d, Qt::Key_Escape);
        });
        QCOMPARE(d.doModal(), 0);
        // Enter is signalled and reaches the focus item; a plain dialog stays.
        // Escape ends the run and never reaches the scene.
        QVERIFY(openAfterEnter);
        QCOMPARE(enter.count(), 1);
        QCOMPARE(recorder->keys, (QList<int>{Qt::Key_A, Qt::Key_Return}));
        // With closeOnEscape off, Escape does not end it.
        d.setCloseOnEscape(false);
        duringRun(&d, [&] {
            QTest::keyClick(&d, Qt::Key_Escape);
            openAfterEnter = d.isVisible();
            d.done(2);
        });
        QCOMPARE(d.doModal(), 2);
        QVERIFY(openAfterEnter);
    }

    void dialogTitlebar()
    {
        ZDialog d;
        ZTitlebar *bar = d.titlebar();
        QVERIFY(bar);
        auto *content = new ZSpacer;
        content->setFixHeight(40);
        d.rootWidget()->addItem(content);
        d.resize(300, 200);
        duringRun(&d, [&] {
            d.rootWidget()->activateLayout();
            // Content below the bar; the bar's close button ends the run.
            QVERIFY(content->mapToScene(QPointF()).y() >= bar->mapToScene(QPointF(0, bar->size().height())).y());
            QVERIFY(bar->closeButton()->isVisible());
            dialogtest::click(bar->closeButton());
        });
        QCOMPARE(d.doModal(), 0);
        QVERIFY(!d.isVisible());
    }
};

QTEST_MAIN(tst_ZDialog)
#include "tst_zdialog.moc"
