// The title bar: which window buttons show for which window, what their
// clicks and a double click do, dragging, appended buttons, the caption and
// documents.

#include "common/dialogtestutil.h"

#include "zframeitem.h"
#include "zframewindow.h"
#include "zimageitem.h"
#include "zlabel.h"
#include "zpushbutton.h"
#include "zspacer.h"
#include "ztitlebar.h"
#include "zxmlui.h"

#include <QGraphicsLinearLayout>
#include <QScreen>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

namespace {

// A shown framed window of a given style, kept alive by the test.
struct Framed
{
    explicit Framed(ZPopupWindow::WindowStyles style)
    {
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        w.setWindowStyle(style);
        w.setGeometry(100, 100, 360, 240);
    }
    bool show()
    {
        w.show();
        if (!QTest::qWaitForWindowExposed(&w))
            return false;
        w.rootWidget()->activateLayout();
        return true;
    }
    ZTitlebar *bar() const { return w.titlebar(); }
    ZFrameWindow w;
};

QList<QGraphicsLayoutItem *> rowOf(ZTitlebar *bar)
{
    QList<QGraphicsLayoutItem *> items;
    auto *row = dynamic_cast<QGraphicsLinearLayout *>(bar->layout());
    for (int i = 0; row && i < row->count(); ++i)
        items << row->itemAt(i);
    return items;
}

QString shownButtons(ZTitlebar *bar)
{
    QString s;
    s += bar->minButton()->isVisible() ? QLatin1Char('m') : QLatin1Char('-');
    s += bar->maxButton()->isVisible() ? QLatin1Char('M') : QLatin1Char('-');
    s += bar->closeButton()->isVisible() ? QLatin1Char('x') : QLatin1Char('-');
    return s;
}

} // namespace

class tst_ZTitlebar : public QObject
{
    Q_OBJECT

private slots:
    void outsideAWindow()
    {
        ZTitlebar bar;
        QVERIFY(!bar.doubleClick()); // no window
        // The buttons show their images at the images' size.
        QCOMPARE(bar.closeButton()->size(), QSizeF(24, 18));
        QCOMPARE(bar.iconItem()->size(), QSizeF(16, 16));
        QVERIFY(bar.iconItem()->isVisible());
        // Outside a pop-up window only the close button is offered.
        QCOMPARE(shownButtons(&bar), QStringLiteral("--x"));
        // The row: icon, title, minimise, maximise, close.
        QCOMPARE(rowOf(&bar),
                 (QList<QGraphicsLayoutItem *>{bar.iconItem(), bar.titleText(), bar.minButton(), bar.maxButton(),
                                                bar.closeButton()}));
    }

    void buttonsFollowTheWindow_data()
    {
        QTest::addColumn<int>("style");
        QTest::addColumn<QString>("shown");
        QTest::newRow("Null") << int(ZPopupWindow::Null) << "---";
        QTest::newRow("Dialog") << int(ZPopupWindow::Dialog) << "--x";
        QTest::newRow("Window") << int(ZPopupWindow::Window) << "mMx";
        QTest::newRow("MainWindow") << int(ZPopupWindow::MainWindow) << "mMx";
        QTest::newRow("min and max, no close") << int(ZPopupWindow::MinButton | ZPopupWindow::MaxButton) << "mM-";
        QTest::newRow("max and close") << int(ZPopupWindow::MaxButton | ZPopupWindow::CloseButton) << "-Mx";
    }
    void buttonsFollowTheWindow()
    {
        QFETCH(int, style);
        QFETCH(QString, shown);
        Framed f{ZPopupWindow::WindowStyles(style)};
        QVERIFY(f.show());
        QCOMPARE(shownButtons(f.bar()), shown);
        QCOMPARE(f.bar()->doubleClick(), shown.contains(QLatin1Char('M')));
        // Hidden buttons take no room: the close button (or the last shown
        // one) ends where the bar's content ends.
        ZFrameItem *last = f.bar()->closeButton()->isVisible() ? f.bar()->closeButton() : f.bar()->maxButton();
        if (last->isVisible()) {
            const qreal end = last->mapToParent(QPointF(last->size().width(), 0)).x();
            QCOMPARE(end, f.bar()->size().width() - f.bar()->margins().right());
            // And it is drawn.
            const QRect area(f.w.mapFromScene(last->sceneBoundingRect().topLeft()), last->size().toSize());
            const QImage shown = dialogtest::picture(&f.w).copy(area);
            last->hide();
            QVERIFY(dialogtest::picture(&f.w).copy(area) != shown);
        }
    }

    void newFramedWindowOffersClose()
    {
        ZFrameWindow w;
        QVERIFY(w.windowStyle().testFlag(ZPopupWindow::CloseButton));
        w.construct();
        QCOMPARE(shownButtons(w.titlebar()), QStringLiteral("--x"));
        // Later changes of the style reach the bar through updateTitelbar().
        w.setMinimumButton(true);
        QCOMPARE(shownButtons(w.titlebar()), QStringLiteral("--x"));
        w.titlebar()->updateTitelbar();
        QCOMPARE(shownButtons(w.titlebar()), QStringLiteral("m-x"));
    }

    void emptyPathHidesItsButton()
    {
        Framed f{ZPopupWindow::Window};
        QVERIFY(f.show());
        ZTitlebar *bar = f.bar();
        const QString close = bar->closePath();
        bar->setClosePath(QString());
        QCOMPARE(shownButtons(bar), QStringLiteral("mM-"));
        bar->setMinimumPath(QString());
        QCOMPARE(shownButtons(bar), QStringLiteral("-M-"));
        bar->setClosePath(close);
        QCOMPARE(shownButtons(bar), QStringLiteral("-Mx"));
        QCOMPARE(bar->closeButton()->imagePath(), close);
        bar->setIconPath(QString());
        QVERIFY(!bar->iconItem()->isVisible());
        bar->setIconPath(QStringLiteral(":/no/such/icon.png"));
        QVERIFY(!bar->iconItem()->isVisible());
        bar->setIconPath(QStringLiteral(":/image/theme/messagebox_question.png"));
        QVERIFY(bar->iconItem()->isVisible());
        QCOMPARE(bar->iconItem()->pixmapSize(), QSize(40, 40));
    }

    void maximiseAndMinimiseButtons()
    {
        Framed f{ZPopupWindow::Window};
        QVERIFY(f.show());
        ZTitlebar *bar = f.bar();
        const QRect normal = f.w.geometry();
        dialogtest::click(bar->maxButton());
        QVERIFY(f.w.isWindowMaximized());
        QCOMPARE(f.w.geometry(), ZPopupWindow::maximizedGeometry(f.w.screen()->availableGeometry(),
                                                                  f.w.frameMargins(), f.w.borderPixel(), QSize()));
        QCOMPARE(bar->maxButton()->imagePath(), bar->restorePath());
        // Changing the restore images while maximised shows them at once.
        const QString other = QStringLiteral(":/image/theme/framemin_normal.png");
        bar->setRestorePath(other);
        QCOMPARE(bar->maxButton()->imagePath(), other);
        dialogtest::click(bar->maxButton());
        QVERIFY(!f.w.isWindowMaximized());
        QCOMPARE(f.w.geometry(), normal);
        QCOMPARE(bar->maxButton()->imagePath(), bar->maximumPath());
        // Maximising from code shows the restore images too.
        f.w.showMaximized();
        QCOMPARE(bar->maxButton()->imagePath(), other);
        f.w.showNormal();
        dialogtest::click(bar->minButton());
        QVERIFY(f.w.isMinimized());
    }

    void doubleClickOnTheBar_data()
    {
        QTest::addColumn<int>("style");
        QTest::addColumn<bool>("onButton");
        QTest::addColumn<bool>("maximises");
        QTest::newRow("with the maximise button") << int(ZPopupWindow::Window) << false << true;
        QTest::newRow("without") << int(ZPopupWindow::Dialog) << false << false;
        QTest::newRow("on a button") << int(ZPopupWindow::Window) << true << false;
    }
    void doubleClickOnTheBar()
    {
        QFETCH(int, style);
        QFETCH(bool, onButton);
        QFETCH(bool, maximises);
        Framed f{ZPopupWindow::WindowStyles(style)};
        QVERIFY(f.show());
        const QRect normal = f.w.geometry();
        // On the caption text: the label takes no clicks, the bar gets them.
        const auto at = [&] {
            return dialogtest::centreOf(onButton ? static_cast<QGraphicsItem *>(f.bar()->minButton())
                                                 : f.bar()->titleText());
        };
        dialogtest::doubleClick(f.w.scene(), at());
        QCOMPARE(f.w.isWindowMaximized(), maximises);
        dialogtest::doubleClick(f.w.scene(), at());
        QVERIFY(!f.w.isWindowMaximized());
        QCOMPARE(f.w.geometry(), normal);
    }

    void closeButtonClosesTheWindow()
    {
        auto *w = new ZFrameWindow;
        QPointer<ZFrameWindow> guard(w);
        w->resize(300, 200);
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w));
        w->rootWidget()->activateLayout();
        QSignalSpy closing(w, &ZWindow::aboutToClose);
        dialogtest::click(w->titlebar()->closeButton());
        QCOMPARE(closing.count(), 1);
        QTRY_VERIFY(guard.isNull()); // delete-on-close
    }

    void closeButtonInAPlainWindow()
    {
        // A bar in a window that is no pop-up window closes it plainly.
        ZWindow w;
        w.setRealWindow(true);
        w.setWindowFlags(Qt::Window);
        auto *bar = new ZTitlebar;
        w.rootWidget()->addItem(bar);
        w.resize(300, 200);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        bar->updateTitelbar();
        QCOMPARE(shownButtons(bar), QStringLiteral("--x"));
        w.rootWidget()->activateLayout();
        dialogtest::click(bar->closeButton());
        QVERIFY(!w.isVisible());
    }

    void iconClick_data()
    {
        QTest::addColumn<bool>("iconClickExit");
        QTest::newRow("closes") << true;
        QTest::newRow("does nothing") << false;
    }
    void iconClick()
    {
        QFETCH(bool, iconClickExit);
        Framed f{ZPopupWindow::Dialog};
        f.bar()->setIconClickExit(iconClickExit);
        QVERIFY(f.show());
        dialogtest::click(f.bar()->iconItem());
        QCOMPARE(f.w.isVisible(), !iconClickExit);
    }

    void pressDragsExceptOnButtons_data()
    {
        QTest::addColumn<QString>("part");
        QTest::addColumn<bool>("drags");
        QTest::newRow("caption") << "title" << true;
        QTest::newRow("icon") << "icon" << true;
        QTest::newRow("close button") << "close" << false;
        QTest::newRow("maximise button") << "max" << false;
    }
    void pressDragsExceptOnButtons()
    {
        QFETCH(QString, part);
        QFETCH(bool, drags);
        Framed f{ZPopupWindow::Window};
        QVERIFY(f.show());
        ZTitlebar *bar = f.bar();
        QGraphicsItem *item = part == QLatin1String("title") ? static_cast<QGraphicsItem *>(bar->titleText())
                              : part == QLatin1String("icon") ? static_cast<QGraphicsItem *>(bar->iconItem())
                              : part == QLatin1String("close") ? static_cast<QGraphicsItem *>(bar->closeButton())
                                                               : static_cast<QGraphicsItem *>(bar->maxButton());
        const QPoint at = f.w.mapFromScene(dialogtest::centreOf(item));
        const QPoint start = f.w.pos();
        QTest::mousePress(f.w.viewport(), Qt::LeftButton, {}, at);
        QTest::mouseMove(f.w.viewport(), at + QPoint(30, 20));
        QCOMPARE(f.w.pos(), drags ? start + QPoint(30, 20) : start);
        QTest::mouseRelease(f.w.viewport(), Qt::LeftButton, {}, at + QPoint(30, 20));
    }

    void appendedButtons()
    {
        Framed f{ZPopupWindow::Window};
        ZTitlebar *bar = f.bar();
        auto *first = new ZPushButton;
        first->setFixSize(QSizeF(30, 18));
        auto *second = new ZPushButton;
        second->setFixSize(QSizeF(30, 18));
        bar->appendButton(first);
        bar->appendButton(second);
        bar->appendButton(first);   // already there
        bar->appendButton(nullptr); // nothing
        bar->appendButton(bar);     // not itself
        QCOMPARE(rowOf(bar), (QList<QGraphicsLayoutItem *>{bar->iconItem(), bar->titleText(), first, second,
                                                           bar->minButton(), bar->maxButton(), bar->closeButton()}));
        QCOMPARE(first->parentItem(), bar);
        QVERIFY(f.show());
        // Left to right on screen as in the row.
        const qreal x1 = first->mapToScene(QPointF()).x();
        const qreal x2 = second->mapToScene(QPointF()).x();
        QVERIFY(x1 > bar->titleText()->mapToScene(QPointF()).x());
        QVERIFY(x2 >= x1 + 30);
        QVERIFY(bar->minButton()->mapToScene(QPointF()).x() >= x2 + 30);
        // An appended button deleted by its owner leaves the row.
        delete first;
        QCOMPARE(rowOf(bar).size(), 6);
        bar->activateLayout();
        auto *third = new ZPushButton;
        bar->appendButton(third);
        QCOMPARE(rowOf(bar).indexOf(third), rowOf(bar).indexOf(second) + 1);
        QCOMPARE(rowOf(bar).indexOf(third) + 1, rowOf(bar).indexOf(bar->minButton()));
        // A button taken from another row leaves that row.
        ZSpacer elsewhere;
        elsewhere.setLayoutType(ZWidget::HBox);
        auto *moved = new ZPushButton;
        elsewhere.addItem(moved);
        QCOMPARE(elsewhere.layout()->count(), 1);
        bar->appendButton(moved);
        QCOMPARE(elsewhere.layout()->count(), 0);
        QCOMPARE(moved->parentItem(), bar);
        QVERIFY(rowOf(bar).contains(moved));
    }

    void heightAndCaption()
    {
        Framed f{ZPopupWindow::Dialog};
        ZTitlebar *bar = f.bar();
        bar->setTitlebarHeight(40);
        bar->setTitlebarHeight(-5); // ignored
        QCOMPARE(bar->titlebarHeight(), 40);
        bar->setTitlebarHeight(1 << 30);
        QCOMPARE(bar->titlebarHeight(), int(ZTitlebar::MaximumHeight));
        bar->setTitlebarHeight(40);
        bar->setTitle(QStringLiteral("Caption"));
        bar->setTitleColor(QColor(10, 20, 30));
        bar->setTitleBold(true);
        QVERIFY(f.show());
        QCOMPARE(bar->size().height(), 40.0);
        QCOMPARE(bar->titleText()->text(), QStringLiteral("Caption"));
        QCOMPARE(bar->titleText()->textColor(), QColor(10, 20, 30));
        QVERIFY(bar->titleText()->bold());
        QCOMPARE(f.w.windowTitle(), QStringLiteral("Caption"));
        // The content starts below the bar.
        auto *content = new ZSpacer;
        f.w.rootWidget()->addItem(content);
        f.w.rootWidget()->activateLayout();
        QVERIFY(content->mapToScene(QPointF()).y() >= bar->mapToScene(QPointF(0, 40)).y());
    }

    void deletedPartsAreSurvived()
    {
        Framed f{ZPopupWindow::Window};
        ZTitlebar *bar = f.bar();
        delete bar->closeButton();
        delete bar->titleText();
        delete bar->iconItem();
        QVERIFY(!bar->closeButton());
        bar->setTitle(QStringLiteral("still"));
        bar->setClosePath(QString());
        bar->setIconPath(QString());
        bar->setIconClickExit(true);
        QVERIFY(f.show());
        bar->updateTitelbar();
        QCOMPARE(bar->title(), QStringLiteral("still"));
        // The bar itself deleted: the window goes on without it.
        delete bar;
        QVERIFY(!f.w.titlebar());
        f.w.construct();
        f.w.resize(400, 300);
    }

    // A framed window from a document builds its bar once the document is read.
    void fromDocument()
    {
        std::unique_ptr<ZWindow> window(ZXmlUI::windowFromMemory(
            "<uitree><ZFrameWindow windowStyle=\"Window\" titlebar.title=\"Framed\" titlebar.titlebarHeight=\"30\">"
            "<ZSpacer objectName=\"content\" fixHeight=\"50\"/></ZFrameWindow></uitree>"));
        auto *framed = qobject_cast<ZFrameWindow *>(window.get());
        QVERIFY(framed);
        framed->setAttribute(Qt::WA_DeleteOnClose, false);
        QCOMPARE(framed->titlebar()->title(), QStringLiteral("Framed"));
        QCOMPARE(shownButtons(framed->titlebar()), QStringLiteral("mMx"));
        framed->resize(300, 200);
        framed->rootWidget()->activateLayout();
        auto *content = qobject_cast<ZWidget *>(framed->rootWidget()->findObject(QStringLiteral("content")));
        QCOMPARE(content->mapToScene(QPointF()).y(), framed->titlebar()->mapToScene(QPointF(0, 30)).y());
    }

    void garbageFromDocuments_data()
    {
        QTest::addColumn<QByteArray>("attributes");
        QTest::addColumn<bool>("barFits"); // the maximise button is inside the window
        QTest::newRow("height not a number") << QByteArray("titlebar.titlebarHeight=\"tall\"") << true;
        QTest::newRow("negative height") << QByteArray("titlebar.titlebarHeight=\"-30\"") << true;
        QTest::newRow("height beyond int") << QByteArray("titlebar.titlebarHeight=\"99999999999\"") << false;
        QTest::newRow("colour") << QByteArray("titlebar.titleColor=\"no colour\"") << true;
        QTest::newRow("images of empty parts")
            << QByteArray("titlebar.closePath=\"||||\" titlebar.maximumPath=\"|\"") << true;
        QTest::newRow("missing images")
            << QByteArray("titlebar.minimumPath=\"nowhere/min.png\" titlebar.iconPath=\"nowhere/icon.png\"") << true;
        QTest::newRow("read-only and unknown")
            << QByteArray("titlebar.doubleClick=\"true\" titlebar.nothing=\"1\"") << true;
    }
    void garbageFromDocuments()
    {
        QFETCH(QByteArray, attributes);
        QFETCH(bool, barFits);
        std::unique_ptr<ZWindow> window(ZXmlUI::windowFromMemory(
            "<uitree><ZFrameWindow windowStyle=\"Window\" " + attributes
            + "><ZSpacer objectName=\"content\"/></ZFrameWindow></uitree>"));
        auto *w = qobject_cast<ZFrameWindow *>(window.get());
        QVERIFY(w);
        w->setAttribute(Qt::WA_DeleteOnClose, false);
        w->resize(320, 200);
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w));
        w->rootWidget()->activateLayout();
        ZTitlebar *bar = w->titlebar();
        QVERIFY(bar->titlebarHeight() >= 0);
        QVERIFY(bar->titlebarHeight() <= ZTitlebar::MaximumHeight);
        QVERIFY(!bar->doubleClick() || w->maximumButton());
        // Whatever was given, the window still lays out and its buttons still work.
        auto *content = qobject_cast<ZWidget *>(w->rootWidget()->findObject(QStringLiteral("content")));
        QVERIFY(qIsFinite(content->mapToScene(QPointF()).y()));
        const QImage img = dialogtest::picture(w);
        QVERIFY(!img.isNull());
        if (!barFits)
            return;
        dialogtest::click(bar->maxButton());
        QVERIFY(w->isWindowMaximized());
    }
};

QTEST_MAIN(tst_ZTitlebar)
#include "tst_ztitlebar.moc"
