// The message box: the layout it loads, which buttons show, the answers of
// buttons, keys and the title bar, the countdown, the skin setters, owner
// and placement.

#include "common/dialogtestutil.h"

#include "zcreator.h"
#include "zframeitem.h"
#include "zmessagebox.h"
#include "zpushbutton.h"
#include "zspacer.h"
#include "ztextitem.h"
#include "ztheme.h"
#include "ztitlebar.h"

#include <QElapsedTimer>
#include <QScreen>
#include <QSignalSpy>
#include <QtTest>

using dialogtest::MessageBoxWatcher;

namespace {

using Kind = ZMessageBox::Kind;

// Calls the static of \a kind.
int runBox(Kind kind, ZWidget *parent, const QString &title, const QString &text, const QString &b0 = QString(),
           const QString &b1 = QString(), const QString &b2 = QString(), int countdown = 0)
{
    switch (kind) {
    case ZMessageBox::Question: return ZMessageBox::question(parent, title, text, b0, b1, b2, countdown);
    case ZMessageBox::Warning: return ZMessageBox::warning(parent, title, text, b0, b1, b2, countdown);
    case ZMessageBox::Critical: return ZMessageBox::critical(parent, title, text, b0, b1, b2, countdown);
    case ZMessageBox::Information: break;
    }
    return ZMessageBox::information(parent, title, text, b0, b1, b2, countdown);
}

// A box built as the statics build it, deleted with the test function.
struct BoxHolder
{
    explicit BoxHolder(ZMessageBox *b) : box(b) {}
    ~BoxHolder() { delete box.data(); }
    ZMessageBox *operator->() const { return box; }
    QPointer<ZMessageBox> box;
};

} // namespace

class tst_ZMessageBox : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        ZMessageBox::resetSkin();
        // Boxes of the statics go with deleteLater.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    // Every window class of the toolkit can be named in documents.
    void registeredAsWindows()
    {
        for (const char *name : {"ZMessageBox", "ZDialog", "ZDialogBase", "ZFrameWindow", "ZPopupWindow",
                                 "ZFollowWindow", "ZBubbleTip", "ZTextBubbleTip", "ZToolTip"}) {
            ZWindowCreatorBase *creator = ZWindowCreatorBase::find(name);
            QVERIFY2(creator, name);
            std::unique_ptr<ZWindow> w(creator->create(nullptr));
            QCOMPARE(QByteArray(w->metaObject()->className()), QByteArray(name));
        }
        QVERIFY(ZWidgetCreatorBase::find("ZTitlebar"));
    }

    void layoutFromResource()
    {
        BoxHolder box(ZMessageBox::create(nullptr, ZMessageBox::Information, QStringLiteral("T"),
                                          QStringLiteral("x")));
        QVERIFY(box.box);
        QCOMPARE(box->windowStyle(), ZPopupWindow::WindowStyles(ZPopupWindow::Dialog));
        ZTitlebar *bar = box->titlebar();
        QVERIFY(bar);
        QCOMPARE(bar->titlebarHeight(), 20);
        // No icon; dialog style: the close button only.
        QVERIFY(!bar->iconItem()->isVisible());
        QVERIFY(bar->closeButton()->isVisible() && !bar->minButton()->isVisible() && !bar->maxButton()->isVisible());
        QVERIFY(box->button(0) && box->button(1) && box->button(2) && !box->button(3) && !box->button(-1));
        // The box's content sits below the title bar.
        auto *text = qobject_cast<ZTextItem *>(box->rootWidget()->findObject(QStringLiteral("textShower")));
        QVERIFY(text);
        box->rootWidget()->activateLayout();
        QVERIFY(text->mapToScene(QPointF()).y() >= bar->mapToScene(QPointF(0, bar->size().height())).y());
    }

    void kindPicksSymbol_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("symbol");
        QTest::newRow("information") << int(ZMessageBox::Information)
                                     << QStringLiteral(":/image/theme/messagebox_infomation.png");
        QTest::newRow("question") << int(ZMessageBox::Question)
                                  << QStringLiteral(":/image/theme/messagebox_question.png");
        QTest::newRow("warning") << int(ZMessageBox::Warning) << QStringLiteral(":/image/theme/messagebox_warning.png");
        QTest::newRow("critical") << int(ZMessageBox::Critical) << QStringLiteral(":/image/theme/messagbox_error.png");
    }
    void kindPicksSymbol()
    {
        QFETCH(int, kind);
        QFETCH(QString, symbol);
        ZMessageBox::Kind seenKind = ZMessageBox::Information;
        QString seenSymbol, seenTitle;
        QSizeF iconSize;
        QImage img;
        MessageBoxWatcher watcher([&](ZMessageBox *box) {
            seenKind = box->kind();
            seenTitle = box->title();
            auto *icon = qobject_cast<ZFrameItem *>(box->rootWidget()->findObject(QStringLiteral("iconShower")));
            seenSymbol = icon->imagePath();
            iconSize = icon->size();
            box->rootWidget()->activateLayout();
            img = dialogtest::picture(box);
            box->done(1);
        });
        QCOMPARE(runBox(Kind(kind), nullptr, QStringLiteral("Title"), QStringLiteral("Body")), 1);
        QCOMPARE(watcher.texts, QStringList{QStringLiteral("Body")});
        QCOMPARE(int(seenKind), kind);
        QCOMPARE(seenTitle, QStringLiteral("Title"));
        QCOMPARE(seenSymbol, symbol);
        // The icon takes the picture's size, not the layout's 45x45.
        QCOMPARE(iconSize, QSizeF(40, 40));
        // The background fills the box; the shadow band is see-through.
        QCOMPARE(img.pixelColor(img.width() / 2, img.height() / 3).alpha(), 255);
        QVERIFY(img.pixelColor(0, 0).alpha() < 255);
    }

    void unknownKindShowsInformation()
    {
        BoxHolder box(ZMessageBox::create(nullptr, Kind(42), QString(), QStringLiteral("x")));
        QCOMPARE(box->kind(), ZMessageBox::Information);
        auto *icon = qobject_cast<ZFrameItem *>(box->rootWidget()->findObject(QStringLiteral("iconShower")));
        QCOMPARE(icon->imagePath(), QStringLiteral(":/image/theme/messagebox_infomation.png"));
    }

    void buttonsByText_data()
    {
        QTest::addColumn<QStringList>("given");
        QTest::addColumn<QList<bool>>("shown");
        QTest::addColumn<QStringList>("texts");
        QTest::newRow("none given: OK alone") << QStringList{QString(), QString(), QString()}
                                              << QList<bool>{true, false, false}
                                              << QStringList{"OK", "Cancel", "Abort"};
        QTest::newRow("two") << QStringList{"Yes", "No", QString()} << QList<bool>{true, true, false}
                             << QStringList{"Yes", "No", "Abort"};
        QTest::newRow("three") << QStringList{"Save", "Discard", "Cancel"} << QList<bool>{true, true, true}
                               << QStringList{"Save", "Discard", "Cancel"};
        QTest::newRow("third without second") << QStringList{"A", QString(), "C"} << QList<bool>{true, false, true}
                                              << QStringList{"A", "Cancel", "C"};
        QTest::newRow("first empty keeps OK") << QStringList{QString(), "No", QString()}
                                              << QList<bool>{true, true, false}
                                              << QStringList{"OK", "No", "Abort"};
        QTest::newRow("long text widens") << QStringList{"Save everything and quit now", "No", QString()}
                                          << QList<bool>{true, true, false}
                                          << QStringList{"Save everything and quit now", "No", "Abort"};
    }
    void buttonsByText()
    {
        QFETCH(QStringList, given);
        QFETCH(QList<bool>, shown);
        QFETCH(QStringList, texts);
        BoxHolder box(ZMessageBox::create(nullptr, ZMessageBox::Question, QStringLiteral("t"), QStringLiteral("x"),
                                          given.at(0), given.at(1), given.at(2)));
        box->show();
        QVERIFY(QTest::qWaitForWindowExposed(box.box));
        box->rootWidget()->activateLayout();
        qreal lastRight = -1;
        for (int i = 0; i < 3; ++i) {
            ZPushButton *b = box->button(i);
            QCOMPARE(b->isVisible(), shown.at(i));
            QCOMPARE(b->text(), texts.at(i));
            if (!shown.at(i))
                continue;
            // Shown buttons stand side by side inside the box, as wide as the
            // layout made them and wide enough for their text.
            const QRectF r = b->mapRectToScene(b->rect());
            const qreal textWidth = QFontMetricsF(b->buttonText()->font()).horizontalAdvance(b->text());
            QVERIFY(r.left() > lastRight);
            QVERIFY(r.width() >= qMax(60.0, textWidth + 2 * ZMessageBox::ButtonTextMargin - 1));
            QVERIFY(box->rect().contains(r.toRect()));
            lastRight = r.right();
        }
    }

    void answers_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<int>("expected");
        QTest::newRow("first button") << "button0" << 1;
        QTest::newRow("second button") << "button1" << 2;
        QTest::newRow("third button") << "button2" << 3;
        QTest::newRow("Enter") << "enter" << 1;
        QTest::newRow("Return") << "return" << 1;
        QTest::newRow("Escape gives 2, not 0") << "escape" << 2;
        QTest::newRow("Escape, closeOnEscape off") << "escapeOff" << 9;
        QTest::newRow("title bar close") << "close" << 2;
        QTest::newRow("done(9)") << "done9" << 9;
    }
    void answers()
    {
        QFETCH(QString, how);
        QFETCH(int, expected);
        QPointer<ZMessageBox> seen;
        MessageBoxWatcher watcher([&](ZMessageBox *box) {
            seen = box;
            if (how.startsWith(QLatin1String("button")))
                dialogtest::click(box->button(how.right(1).toInt()));
            else if (how == QLatin1String("enter"))
                QTest::keyClick(box, Qt::Key_Enter, Qt::KeypadModifier);
            else if (how == QLatin1String("return"))
                QTest::keyClick(box, Qt::Key_Return);
            else if (how.startsWith(QLatin1String("escape"))) {
                box->setCloseOnEscape(how == QLatin1String("escape"));
                QTest::keyClick(box, Qt::Key_Escape);
                if (box->isVisible())
                    box->done(9);
            }
            else if (how == QLatin1String("close"))
                dialogtest::click(box->titlebar()->closeButton());
            else
                box->done(9);
        });
        const int answer = ZMessageBox::warning(nullptr, QStringLiteral("t"), QStringLiteral("x"), QStringLiteral("A"),
                                                QStringLiteral("B"), QStringLiteral("C"));
        QCOMPARE(answer, expected);
        QCOMPARE(watcher.texts.size(), 1);
        // Deleted after its run.
        QTRY_VERIFY(seen.isNull());
    }

    void countdownTicks()
    {
        // Ticks driven by hand: what each one shows, and the end with 1.
        QStringList shownTexts;
        QList<int> left;
        MessageBoxWatcher watcher([&](ZMessageBox *box) {
            shownTexts << box->button(0)->text();
            left << box->countdown();
            for (int i = 0; i < 3; ++i) {
                QMetaObject::invokeMethod(box, "on_elapse_timeout");
                shownTexts << box->button(0)->text();
                left << box->countdown();
            }
        });
        QCOMPARE(ZMessageBox::question(nullptr, QString(), QStringLiteral("x"), QStringLiteral("Go"),
                                       QStringLiteral("Stop"), QString(), 3),
                 1);
        QCOMPARE(shownTexts, (QStringList{"Go(3)", "Go(2)", "Go(1)", "Go(0)"}));
        QCOMPARE(left, (QList<int>{3, 2, 1, 0}));
    }

    void countdownRunsOnItsOwn()
    {
        QElapsedTimer clock;
        QString first;
        MessageBoxWatcher watcher([&](ZMessageBox *box) { first = box->button(0)->text(); });
        clock.start();
        QCOMPARE(ZMessageBox::information(nullptr, QString(), QStringLiteral("x"), QString(), QString(), QString(), 1),
                 1);
        QCOMPARE(first, QStringLiteral("OK(1)"));
        // One tick of a second, from the moment the box showed.
        QVERIFY2(clock.elapsed() >= 900, qPrintable(QString::number(clock.elapsed())));
    }

    void countdownStopsWhenAnswered()
    {
        QPointer<ZMessageBox> box(ZMessageBox::create(nullptr, ZMessageBox::Warning, QString(), QStringLiteral("x"),
                                                      QStringLiteral("A"), QStringLiteral("B"), QString(), 1));
        QVERIFY(box);
        QTimer::singleShot(0, box, [&] { dialogtest::click(box->button(1)); });
        QCOMPARE(box->doModal(nullptr, true, false), 2);
        // A second later the stopped countdown has not ended anything.
        QTest::qWait(1300);
        QVERIFY(box);
        QCOMPARE(box->result(), 2);
        QCOMPARE(box->countdown(), 1);
        delete box;
    }

    void noCountdown()
    {
        for (int seconds : {0, -5}) {
            BoxHolder box(ZMessageBox::create(nullptr, ZMessageBox::Warning, QString(), QStringLiteral("x"), QString(),
                                              QString(), QString(), seconds));
            QCOMPARE(box->button(0)->text(), QStringLiteral("OK"));
            QCOMPARE(box->countdown(), 0);
        }
    }

    void ownerAndPlacement()
    {
        ZWindow owner;
        owner.setRealWindow(true);
        owner.setWindowFlags(Qt::Window);
        owner.setGeometry(60, 50, 500, 400);
        auto *inside = new ZSpacer;
        owner.rootWidget()->addItem(inside);
        owner.show();
        QVERIFY(QTest::qWaitForWindowExposed(&owner));
        QWidget *ownerSeen = &owner;
        QPoint visibleCentre;
        bool modalToOwner = false;
        MessageBoxWatcher watcher([&](ZMessageBox *box) {
            ownerSeen = box->parentWidget();
            visibleCentre = box->geometry().marginsRemoved(box->frameMargins()).center();
            modalToOwner = box->windowModality() == Qt::WindowModal && box->isWindow();
            box->done(1);
        });
        QCOMPARE(ZMessageBox::information(inside, QString(), QStringLiteral("x")), 1);
        QCOMPARE(ownerSeen, &owner);
        QVERIFY(modalToOwner);
        QVERIFY2((visibleCentre - owner.geometry().center()).manhattanLength() <= 2,
                 qPrintable(QStringLiteral("%1,%2").arg(visibleCentre.x()).arg(visibleCentre.y())));
        // Without a parent: no owner, centred on the screen.
        ownerSeen = &owner;
        QCOMPARE(ZMessageBox::information(nullptr, QString(), QStringLiteral("x")), 1);
        QCOMPARE(ownerSeen, nullptr);
        const QPoint screenCentre = QGuiApplication::primaryScreen()->availableGeometry().center();
        QVERIFY((visibleCentre - screenCentre).manhattanLength() <= 2);
    }

    void ownerDeletedDuringTheRun()
    {
        auto *owner = new ZWindow;
        owner->setRealWindow(true);
        owner->setWindowFlags(Qt::Window);
        owner->resize(300, 200);
        auto *inside = new ZSpacer;
        owner->rootWidget()->addItem(inside);
        owner->show();
        QVERIFY(QTest::qWaitForWindowExposed(owner));
        QPointer<ZMessageBox> seen;
        MessageBoxWatcher watcher([&](ZMessageBox *box) {
            seen = box;
            delete owner; // takes the box with it
        });
        QCOMPARE(ZMessageBox::critical(inside, QString(), QStringLiteral("x")), 0);
        QVERIFY(seen.isNull());
    }

    void skinSetters()
    {
        const QColor red(200, 30, 30);
        const QString buttons = QStringLiteral(":/image/theme/rectframe_normal.png|:/image/theme/rectframe_hover.png");
        const QString close = QStringLiteral(":/image/theme/framemin_normal.png");
        const QString symbol = QStringLiteral(":/image/theme/titleicon.png");
        ZMessageBox::setBackgroundColor(red);
        ZMessageBox::setButtonImage(buttons);
        ZMessageBox::setCloseButtonImage(close);
        ZMessageBox::setCriticalSymbol(symbol);
        ZMessageBox::setMaskMargins(QMargins(12, 12, 12, 12));
        {
            BoxHolder box(ZMessageBox::create(nullptr, ZMessageBox::Critical, QString(), QStringLiteral("x")));
            QCOMPARE(box->backgroundColor(), red);
            for (int i = 0; i < 3; ++i)
                QCOMPARE(box->button(i)->imagePath(), buttons);
            QCOMPARE(box->titlebar()->closePath(), close);
            QCOMPARE(box->maskMargins(), QMargins(12, 12, 12, 12));
            auto *icon = qobject_cast<ZFrameItem *>(box->rootWidget()->findObject(QStringLiteral("iconShower")));
            QCOMPARE(icon->imagePath(), symbol);
            QCOMPARE(icon->size(), QSizeF(16, 16));
            // The symbol of another kind is untouched.
            BoxHolder other(ZMessageBox::create(nullptr, ZMessageBox::Warning, QString(), QStringLiteral("x")));
            auto *otherIcon =
                qobject_cast<ZFrameItem *>(other->rootWidget()->findObject(QStringLiteral("iconShower")));
            QCOMPARE(otherIcon->imagePath(), QStringLiteral(":/image/theme/messagebox_warning.png"));
            // A theme change gives windows the theme colour; the box keeps its own.
            ZPopupWindow plain;
            const QColor old = ZTheme::themeColor();
            ZTheme::setThemeColor(QColor(40, 120, 60));
            QTRY_COMPARE(plain.backgroundColor(), ZTheme::themeColor());
            QCOMPARE(box->backgroundColor(), red);
            ZTheme::setThemeColor(old);
        }
        // Empty values return to the defaults, and resetSkin() to all of them.
        ZMessageBox::setButtonImage(QString());
        ZMessageBox::setBackgroundColor(QColor());
        {
            BoxHolder box(ZMessageBox::create(nullptr, ZMessageBox::Critical, QString(), QStringLiteral("x")));
            QCOMPARE(box->button(0)->imagePath(), ZPushButton().imagePath());
            QCOMPARE(box->backgroundColor(), ZTheme::themeColor());
            QCOMPARE(box->titlebar()->closePath(), close); // not reset yet
        }
        ZMessageBox::resetSkin();
        {
            BoxHolder box(ZMessageBox::create(nullptr, ZMessageBox::Critical, QString(), QStringLiteral("x")));
            ZPopupWindow plain;
            QCOMPARE(box->titlebar()->closePath(), ZTitlebar().closePath());
            QCOMPARE(box->maskImage(), plain.maskImage());
            QCOMPARE(box->frameImage(), plain.frameImage());
            QCOMPARE(box->maskMargins(), plain.maskMargins());
            auto *icon = qobject_cast<ZFrameItem *>(box->rootWidget()->findObject(QStringLiteral("iconShower")));
            QCOMPARE(icon->imagePath(), QStringLiteral(":/image/theme/messagbox_error.png"));
        }
    }

    void missingSymbolDoesNotBreakTheBox()
    {
        ZMessageBox::setInfomationSymbol(QStringLiteral(":/no/such/symbol.png"));
        MessageBoxWatcher watcher([](ZMessageBox *box) { QTest::keyClick(box, Qt::Key_Return); });
        QCOMPARE(ZMessageBox::information(nullptr, QString(), QStringLiteral("still here")), 1);
        QCOMPARE(watcher.texts, QStringList{QStringLiteral("still here")});
    }

    void textSizesTheBox_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("short") << QStringLiteral("Done.");
        QTest::newRow("lines") << QStringLiteral("First line\nsecond line\nthird line\nfourth line");
        QTest::newRow("long sentence") << QStringLiteral("word ").repeated(200);
        QTest::newRow("one unbreakable word") << QStringLiteral("x").repeated(3000);
        QTest::newRow("rich text") << QStringLiteral("<b>Bold</b> and <i>italic</i>");
        QTest::newRow("empty") << QString();
    }
    void textSizesTheBox()
    {
        QFETCH(QString, text);
        BoxHolder box(ZMessageBox::create(nullptr, ZMessageBox::Information, QStringLiteral("t"), text));
        box->show();
        QVERIFY(QTest::qWaitForWindowExposed(box.box));
        box->rootWidget()->activateLayout();
        auto *shower = qobject_cast<ZTextItem *>(box->rootWidget()->findObject(QStringLiteral("textShower")));
        const QSize screen = QGuiApplication::primaryScreen()->availableGeometry().size();
        const QRect visible = box->rect().marginsRemoved(box->frameMargins());
        QVERIFY(visible.width() <= screen.width());
        QVERIFY(visible.height() <= screen.height());
        // The text never wraps wider than a box should be.
        QVERIFY2(shower->size().width() <= 481, qPrintable(QString::number(shower->size().width())));
        if (text.size() < 100) {
            // A short text is shown whole: its item is as tall as the text needs.
            const QSizeF needed = shower->document()->size();
            QVERIFY2(shower->size().height() + 0.5 >= needed.height(),
                     qPrintable(QStringLiteral("%1 < %2").arg(shower->size().height()).arg(needed.height())));
            // And the buttons are inside the visible frame.
            ZPushButton *b = box->button(0);
            QVERIFY(visible.contains(box->mapFromScene(b->mapToScene(b->rect().bottomRight()))));
        }
    }
};

QTEST_MAIN(tst_ZMessageBox)
#include "tst_zmessagebox.moc"
