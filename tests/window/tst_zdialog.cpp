// Dialogs: the modal run and every way it ends, results, the exit() slot,
// keys and focus during the run, placement, deletion, and ZDialog's title
// bar, in code and from documents.

#include "dialogtestutil.h"

#include "zcreator.h"
#include "zdialog.h"
#include "zdialogbase.h"
#include "zpushbutton.h"
#include "zspacer.h"
#include "ztitlebar.h"
#include "zxmlui.h"

#include <QScreen>
#include <QSignalSpy>
#include <QtTest>
#include <QtTest/qtestspontaneevent.h>

#include <functional>
#include <memory>

namespace {

// Records the keys that reach the scene's focus item.
class KeyRecorder : public ZWidget
{
public:
    KeyRecorder()
    {
        setFlag(QGraphicsItem::ItemIsFocusable);
        setFixSize(QSizeF(20, 20));
    }
    QList<int> keys;

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        static const QList<int> modifierKeys{Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_Meta};
        if (!modifierKeys.contains(event->key()))
            keys.append(event->key());
    }
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

// A window to centre dialogs on, with a widget inside it.
struct Owner
{
    Owner()
    {
        window.setRealWindow(true);
        window.setWindowFlags(Qt::Window);
        window.setGeometry(80, 60, 520, 380);
        inside = new ZSpacer;
        window.rootWidget()->addItem(inside);
    }
    ZWindow window;
    ZSpacer *inside;
};

} // namespace

class tst_ZDialog : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    void defaults()
    {
        ZDialogBase d;
        QCOMPARE(d.result(), 0);
        QVERIFY(d.rejected());
        QVERIFY(!d.accepted());
        QVERIFY(!d.isModalRunning());
        QVERIFY(d.testAttribute(Qt::WA_DeleteOnClose)); // as every pop-up window, until doModal()
        QCOMPARE(d.property("result").toInt(), 0);
    }

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

    void resultStartsAgainEachRun()
    {
        ExitDialog d;
        duringRun(&d, [&] { d.done(5); });
        QCOMPARE(d.doModal(), 5);
        // Closed without an answer the second time: rejected, not the old 5.
        duringRun(&d, [&] { QTest::keyClick(&d, Qt::Key_Escape); });
        QCOMPARE(d.doModal(), 0);
    }

    void endedFromDialogShow()
    {
        // No loop may wait for a dialog that closed before the loop started.
        ExitDialog d;
        connect(&d, &ZDialogBase::dialogShow, &d, [&] { d.done(4); });
        QCOMPARE(d.doModal(), 4);
        QVERIFY(!d.isVisible());
    }

    void secondDoModalDuringTheRun()
    {
        ExitDialog d;
        int inner = 0;
        duringRun(&d, [&] {
            inner = d.doModal();
            d.done(2);
        });
        QCOMPARE(d.doModal(), 2);
        QCOMPARE(inner, -1);
    }

    void nestedDialogs()
    {
        // A dialog opened from another's run ends first; then the outer one.
        ExitDialog outer;
        ExitDialog innerDialog;
        int innerResult = 0;
        duringRun(&outer, [&] {
            duringRun(&innerDialog, [&] { innerDialog.done(6); });
            innerResult = innerDialog.doModal();
            QVERIFY(outer.isModalRunning());
            outer.done(3);
        });
        QCOMPARE(outer.doModal(), 3);
        QCOMPARE(innerResult, 6);
    }

    void abortedCloseKeepsTheRun()
    {
        ExitDialog d;
        bool abort = true;
        connect(&d, &ZWindow::aboutToClose, &d, [&] {
            if (abort)
                d.abortCloseWindow();
        });
        bool runningAfterAbort = false;
        duringRun(&d, [&] {
            d.done(3);
            runningAfterAbort = d.isModalRunning() && d.isVisible();
            abort = false;
            d.done(6);
        });
        QCOMPARE(d.doModal(), 6);
        QVERIFY(runningAfterAbort);
    }

    void windowSystemCloseWithCloseOnF4Off()
    {
        ExitDialog d;
        d.setCloseOnF4(false);
        bool stillRunning = false;
        duringRun(&d, [&] {
            QCloseEvent request;
            QSpontaneKeyEvent::setSpontaneous(&request);
            qApp->notify(&d, &request);
            stillRunning = d.isModalRunning() && d.isVisible();
            d.done(1);
        });
        QCOMPARE(d.doModal(), 1);
        QVERIFY(stillRunning);
    }

    void flagChangeDuringTheRunDoesNotEndIt()
    {
        // Changing the style re-creates the window (hide, show): no ending.
        ExitDialog d;
        bool stillRunning = false;
        duringRun(&d, [&] {
            d.setToolWindow(!d.toolWindow());
            QTimer::singleShot(20, &d, [&] {
                stillRunning = d.isModalRunning() && d.isVisible();
                d.done(9);
            });
        });
        QCOMPARE(d.doModal(), 9);
        QVERIFY(stillRunning);
    }

    void deleteAfter()
    {
        auto *d = new ExitDialog;
        QPointer<ExitDialog> guard(d);
        duringRun(d, [d] { d->done(1); });
        QCOMPARE(d->doModal(nullptr, true, true), 1);
        QVERIFY(guard); // not yet: once the caller's event is done
        QTRY_VERIFY(guard.isNull());

        // Without deleteAfter the dialog outlives its run, delete-on-close or not.
        auto *kept = new ExitDialog;
        QPointer<ExitDialog> keptGuard(kept);
        duringRun(kept, [kept] { kept->close(); });
        kept->doModal(nullptr, true, false);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(keptGuard);
        delete kept;
    }

    void deletedDuringTheRun()
    {
        auto *d = new ExitDialog;
        QPointer<ExitDialog> guard(d);
        duringRun(d, [d] { delete d; });
        QCOMPARE(d->doModal(nullptr, true, true), 0);
        QVERIFY(guard.isNull());
    }

    void placement()
    {
        Owner owner;
        owner.window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&owner.window));
        ExitDialog d;
        QPoint centre;
        duringRun(&d, [&] {
            centre = d.geometry().marginsRemoved(d.frameMargins()).center();
            d.done(1);
        });
        // On the window of the given widget.
        d.doModal(owner.inside);
        QVERIFY((centre - owner.window.geometry().center()).manhattanLength() <= 2);
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

    void centreDeletedBeforeTheRun()
    {
        ExitDialog d;
        auto *gone = new ZSpacer;
        QPointer<ZSpacer> guard(gone);
        delete gone;
        duringRun(&d, [&] { d.done(1); });
        QCOMPARE(d.doModal(guard.data()), 1);
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
        QVERIFY(openAfterEnter);
        QCOMPARE(enter.count(), 1);
        // Escape ends the run and never reaches the scene.
        QCOMPARE(recorder->keys, (QList<int>{Qt::Key_A, Qt::Key_Return}));
    }

    void escapeWithCloseOnEscapeOff()
    {
        ExitDialog d;
        d.setCloseOnEscape(false);
        bool open = false;
        duringRun(&d, [&] {
            QTest::keyClick(&d, Qt::Key_Escape);
            open = d.isVisible();
            d.done(2);
        });
        QCOMPARE(d.doModal(), 2);
        QVERIFY(open);
    }

    void dialogTitlebar()
    {
        ZDialog d;
        d.setAttribute(Qt::WA_DeleteOnClose, false);
        ZTitlebar *bar = d.titlebar();
        QVERIFY(bar);
        QCOMPARE(bar->objectName(), QStringLiteral("titlebar"));
        QCOMPARE(d.property("titlebar").value<QObject *>(), bar);
        QVERIFY(d.windowStyle().testFlag(ZPopupWindow::CloseButton));
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

    void dialogFromDocument()
    {
        std::unique_ptr<ZWindow> window(ZXmlUI::windowFromMemory(
            "<uitree><ZDialog windowStyle=\"Dialog\" titlebar.title=\"Pick\" titlebar.titleBold=\"true\">"
            "<ZToolBar objectName=\"bar\"><ZPushButton objectName=\"7\" text=\"Seven\" fixSize=\"70,24\"/>"
            "<ZPushButton objectName=\"8\" text=\"Eight\" fixSize=\"70,24\"/></ZToolBar></ZDialog></uitree>"));
        auto *d = qobject_cast<ZDialog *>(window.get());
        QVERIFY(d);
        QCOMPARE(d->titlebar()->title(), QStringLiteral("Pick"));
        QVERIFY(d->titlebar()->titleBold());
        auto *seven = qobject_cast<ZPushButton *>(d->rootWidget()->findObject(QStringLiteral("7")));
        auto *eight = qobject_cast<ZPushButton *>(d->rootWidget()->findObject(QStringLiteral("8")));
        QVERIFY(seven && eight);
        QVERIFY(connect(seven, SIGNAL(clicked()), d, SLOT(exit())));
        QVERIFY(connect(eight, SIGNAL(clicked()), d, SLOT(exit())));
        d->resize(260, 140);
        duringRun(d, [&] {
            d->rootWidget()->activateLayout();
            dialogtest::click(seven);
        });
        QCOMPARE(d->doModal(), 7);
        duringRun(d, [&] { dialogtest::click(eight); });
        QCOMPARE(d->doModal(), 8);

        std::unique_ptr<ZWindow> base(ZXmlUI::windowFromMemory("<uitree><ZDialogBase closeOnEscape=\"false\"/></uitree>"));
        auto *plain = qobject_cast<ZDialogBase *>(base.get());
        QVERIFY(plain);
        QVERIFY(!qobject_cast<ZDialog *>(base.get()));
        QVERIFY(!plain->closeOnEscape());
        // The result is read-only to documents.
        QVERIFY(!ZXmlUI::setPropertyEx(plain, "result", QVariant(4)));
        QCOMPARE(plain->result(), 0);
    }
};

QTEST_MAIN(tst_ZDialog)
#include "tst_zdialog.moc"
