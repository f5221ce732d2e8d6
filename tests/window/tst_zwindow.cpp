// The window host: root sizing, fonts, closing, theme changes.

#include "zpopupwindow.h"
#include "zwindow.h"
#include "zspacer.h"
#include "ztheme.h"
#include "zthemechangeevent.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QPointer>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

namespace {

// Counts theme changes reaching it.
class ThemedWidget : public ZWidget
{
public:
    using ZWidget::ZWidget;
    int themeChanges = 0;
    void doThemeChange() override
    {
        ++themeChanges;
        ZWidget::doThemeChange();
    }
};

} // namespace

class tst_ZWindow : public QObject
{
    Q_OBJECT

private slots:
    // The root widget lays out its children and drags the window.
    void construction()
    {
        ZWindow w;
        QVERIFY(qobject_cast<ZSpacer *>(w.rootWidget()));
        QCOMPARE(w.rootWidget()->layoutType(), ZWidget::VBox);
        QCOMPARE(w.rootWidget()->dragPolicy(), ZWidget::WindowMove);
        QVERIFY(w.rootWidget()->flags() & QGraphicsItem::ItemClipsChildrenToShape);
        QCOMPARE(w.rootWidget()->scene(), w.scene());
        QCOMPARE(w.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QCOMPARE(w.verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QVERIFY(QCoreApplication::testAttribute(Qt::AA_DontCreateNativeWidgetSiblings));
    }

    void rootFollowsTheView_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QMargins>("margins");
        QTest::addColumn<QRectF>("root");
        QTest::newRow("no margins") << QSize(300, 200) << QMargins() << QRectF(0, 0, 300, 200);
        QTest::newRow("margins") << QSize(300, 200) << QMargins(10, 5, 20, 15) << QRectF(10, 5, 270, 180);
        QTest::newRow("margins beyond the view") << QSize(50, 40) << QMargins(40, 30, 40, 30)
                                                 << QRectF(40, 30, 0, 0);
    }
    void rootFollowsTheView()
    {
        QFETCH(QSize, size);
        QFETCH(QMargins, margins);
        QFETCH(QRectF, root);
        ZWindow w;
        QSignalSpy resized(&w, &ZWindow::resized);
        w.setSceneMargins(margins);
        w.resize(size);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QVERIFY(resized.count() >= 1);
        QCOMPARE(w.sceneRect(), QRectF(QPointF(0, 0), QSizeF(size)));
        QCOMPARE(w.rootWidget()->geometry(), root);
        QCOMPARE(w.rootWidget()->minimumSize(), root.size());
        QCOMPARE(w.rootWidget()->maximumSize(), root.size());
    }

    void preferSizeIncludesMargins()
    {
        ZWindow w;
        w.setSceneMargins(QMargins(3, 4, 5, 6));
        w.rootWidget()->setMargins(QMargins());
        auto *child = new ZWidget;
        child->setFixSize(QSizeF(120, 80));
        w.rootWidget()->addItem(child);
        const QSizeF size = w.calcWindowPreferSize();
        QCOMPARE(size, QSizeF(120 + 8, 80 + 10));
    }

    // A widget without a font of its own follows the window's font setters.
    void fontsReachTheScene()
    {
        ZWindow w;
        auto *child = new ZWidget;
        w.rootWidget()->addItem(child);
        w.setFontSize(17);
        QCOMPARE(w.fontSize(), 17);
        QCOMPARE(w.scene()->font().pixelSize(), 17);
        QCOMPARE(child->font().pixelSize(), 17);
        w.setFontName(QStringLiteral("DejaVu Serif"));
        QCOMPARE(w.fontName(), QStringLiteral("DejaVu Serif"));
        QCOMPARE(child->font().family(), QStringLiteral("DejaVu Serif"));
        QCOMPARE(child->font().pixelSize(), 17);
        w.setBold(true);
        QVERIFY(w.bold());
        QVERIFY(child->font().bold());
    }

    void closing()
    {
        ZWindow w;
        QSignalSpy visible(&w, &ZWindow::visibleChanged);
        w.show();
        int nested = 0;
        auto guard = connect(&w, &ZWindow::aboutToClose, &w, [&] {
            ++nested;
            QVERIFY(!w.close()); // re-entrant: does nothing
        });
        QVERIFY(w.close());
        QCOMPARE(nested, 1);
        QVERIFY(!w.isVisible());
        QCOMPARE(visible.count(), 2);
        disconnect(guard);
        // An aborted close keeps the window, delete-on-close and all.
        QPointer<ZWindow> p = new ZWindow;
        p->setAttribute(Qt::WA_DeleteOnClose);
        p->show();
        guard = connect(p, &ZWindow::aboutToClose, p, [&] { p->abortCloseWindow(); });
        p->close();
        QVERIFY(p->isVisible() && p->testAttribute(Qt::WA_DeleteOnClose));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(p);
        // Closed for real it goes once the event loop turns.
        disconnect(guard);
        p->close();
        QVERIFY(p);
        QTRY_VERIFY(!p);
        // Skipping its own close handling leaves Qt's plain close, which deletes later too.
        p = new ZWindow;
        p->setAttribute(Qt::WA_DeleteOnClose);
        p->skipMyCloseExecution();
        p->show();
        p->close();
        QTRY_VERIFY(!p);
    }

    void maximizeOrRestore()
    {
        ZWindow w;
        w.setRealWindow(true);
        w.show();
        QVERIFY(!w.isMaximized());
        w.showMaximizeOrRestore();
        QVERIFY(w.isMaximized());
        w.showMaximizeOrRestore();
        QVERIFY(!w.isMaximized());
    }

    void autoDeleteAtQuit()
    {
        QPointer<ZWindow> kept = new ZWindow;
        QPointer<ZWindow> dropped = new ZWindow;
        kept->setAutoDeleteWhenAppQuit(true);
        dropped->setAutoDeleteWhenAppQuit(true);
        dropped->setAutoDeleteWhenAppQuit(false);
        QMetaObject::invokeMethod(qApp, "aboutToQuit");
        QVERIFY(!kept);
        QVERIFY(dropped);
        delete dropped;
    }

    void moveEmitsPosChanged()
    {
        ZWindow w;
        w.setRealWindow(true);
        QSignalSpy moved(&w, &ZWindow::posChanged);
        w.show();
        w.move(w.pos() + QPoint(13, 7));
        QTRY_VERIFY(moved.count() >= 1);
    }

    // A theme change reaches the widgets of two windows, by their policies.
    void themeChangeReachesWidgets()
    {
        ZWindow a, b;
        a.setWindowFlag(Qt::Window);
        b.setWindowFlag(Qt::Window);
        auto *themed = new ThemedWidget;
        themed->setThemePolicy(ZWidget::HasTheme);
        auto *inherits = new ThemedWidget;
        inherits->setThemePolicy(ZWidget::ThemeWithParent);
        themed->addItem(inherits);
        a.rootWidget()->addItem(themed);
        auto *plain = new ThemedWidget;
        plain->setThemePolicy(ZWidget::NoTheme);
        auto *other = new ThemedWidget;
        other->setThemePolicy(ZWidget::HasTheme);
        b.rootWidget()->addItem(plain);
        b.rootWidget()->addItem(other);
        a.show();
        b.show();
        ZTheme::setThemeIndex(4);
        QCOMPARE(themed->themeChanges, 0); // posted
        QCoreApplication::processEvents();
        QCOMPARE(themed->themeChanges, 1);
        QCOMPARE(inherits->themeChanges, 1);
        QCOMPARE(other->themeChanges, 1);
        QCOMPARE(plain->themeChanges, 0);
        // construct() re-themes too.
        a.construct();
        QCOMPARE(themed->themeChanges, 2);
    }

    // The viewport paints every pixel of an opaque frameless window, so the
    // view skips its own background fill; a translucent or framed window keeps
    // it, and a new style sheet (whose polish clears the attribute) decides
    // again.
    void backgroundFilledOnce_data()
    {
        QTest::addColumn<bool>("popup");
        QTest::addColumn<bool>("translucent");
        QTest::addColumn<QString>("styleSheet"); // for a popup: made opaque
        QTest::addColumn<bool>("skips");
        const QString none;
        QTest::newRow("window") << false << false << none << true;
        QTest::newRow("window, restyled") << false << false << "QGraphicsView { border-style: none }" << true;
        QTest::newRow("window with a border") << false << false << "QGraphicsView { border: 3px solid red }" << false;
        QTest::newRow("opaque popup") << true << false << none << true;
        QTest::newRow("translucent popup") << true << true << none << false;
        QTest::newRow("translucent popup made opaque") << true << true << "opaque" << true;
    }
    void backgroundFilledOnce()
    {
        QFETCH(bool, popup);
        QFETCH(bool, translucent);
        QFETCH(QString, styleSheet);
        QFETCH(bool, skips);
        std::unique_ptr<ZWindow> window(popup ? new ZPopupWindow : new ZWindow);
        ZWindow &w = *window;
        if (popup)
            static_cast<ZPopupWindow &>(w).setTranslucent(translucent);
        w.resize(120, 80);
        w.ensurePolished();
        if (popup && !styleSheet.isEmpty())
            static_cast<ZPopupWindow &>(w).setTranslucent(false);
        else if (!styleSheet.isEmpty())
            w.setStyleSheet(styleSheet);
        QCOMPARE(w.testAttribute(Qt::WA_OpaquePaintEvent), skips);
        if (!skips)
            return;
        // Skipping the view's fill changes no pixel: the viewport covers it.
        const auto rendered = [&w] {
            QImage image(w.size(), QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::magenta);
            w.QWidget::render(&image);
            return image;
        };
        const QImage skipped = rendered();
        w.setAttribute(Qt::WA_OpaquePaintEvent, false);
        QCOMPARE(skipped, rendered());
    }

    // The periodic repaint runs only while the window is visible.
    void viewportRepairTimer()
    {
        ZWindow w;
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QTimer *running = nullptr;
        for (QTimer *t : w.findChildren<QTimer *>())
            if (t->isActive() && t->interval() == 512)
                running = t;
        QVERIFY(running);
        w.hide();
        QVERIFY(!running->isActive());
    }
};

QTEST_MAIN(tst_ZWindow)
#include "tst_zwindow.moc"
