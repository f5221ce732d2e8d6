// The pop-up window: frame rules, hit-testing and placement tables, styles,
// keys, close requests, moving and resizing by the mouse, painting.

#include "common/dialogtestutil.h"

#include "zlabel.h"
#include "zpopupwindow.h"
#include "zpopupwindow_p.h"
#include "zspacer.h"
#include "ztheme.h"

#include <QDir>
#include <QScreen>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QWindow>
#include <QtTest>
#include <QtTest/qtestspontaneevent.h>

namespace {

using Hit = ZPopupWindow::HitArea;
using dialogtest::picture;

// Records what keys reach the scene's focus item.
class KeyRecorder : public ZWidget
{
public:
    KeyRecorder()
    {
        setFlag(QGraphicsItem::ItemIsFocusable);
        resize(20, 20);
    }
    QList<int> keys;

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        // QTest presses the modifier keys as keys of their own.
        if (!QList<int>{Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_Meta}.contains(event->key()))
            keys.append(event->key());
    }
};

// Sees the modifiers the window hands to its key hooks.
class HookWindow : public ZPopupWindow
{
public:
    QList<Qt::KeyboardModifiers> escapes;

protected:
    void onEscPressed(Qt::KeyboardModifiers modifiers) override
    {
        escapes.append(modifiers);
        ZPopupWindow::onEscPressed(modifiers);
    }
};

// A 40x40 image, opaque except for a transparent band of the given widths.
QImage bandImage(const QMargins &band, QImage::Format format = QImage::Format_ARGB32)
{
    QImage img(40, 40, format);
    img.fill(Qt::transparent);
    QPainter(&img).fillRect(QRect(0, 0, 40, 40).marginsRemoved(band), Qt::black);
    return img;
}

// Shows \a w at \a geometry, kept alive by the test.
bool showAt(ZPopupWindow &w, const QRect &geometry)
{
    w.setAttribute(Qt::WA_DeleteOnClose, false);
    w.setGeometry(geometry);
    w.show();
    return QTest::qWaitForWindowExposed(&w);
}

struct HitCase
{
    QRect window;
    QMargins frame;
    int border;
    bool resizable;
    bool maximized;
    QPoint pos;
    Hit hit;
};

struct PlaceCase
{
    QRect area;
    QMargins frame;
    int border;
    QSize size;
    QRect expected;
};

struct CentreCase
{
    QSize size;
    QMargins frame;
    QPoint centre;
    QRect area;
    QPoint expected;
};

} // namespace

Q_DECLARE_METATYPE(HitCase)
Q_DECLARE_METATYPE(PlaceCase)
Q_DECLARE_METATYPE(CentreCase)

class tst_ZPopupWindow : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        QDir::setSearchPaths(QStringLiteral("popuptest"), {m_dir.path()});
    }

    void frameFromTheSkin()
    {
        ZPopupWindow w;
        QCOMPARE(w.frameMargins(), QMargins(9, 9, 9, 9)); // the embedded skin's shadow band
        QCOMPARE(w.sceneMargins(), w.frameMargins());
        QCOMPARE(w.backgroundColor(), ZTheme::themeColor());
        QVERIFY(w.testAttribute(Qt::WA_DeleteOnClose) && w.testAttribute(Qt::WA_TranslucentBackground));
    }

    void transparentBand_data()
    {
        QTest::addColumn<QImage>("image");
        QTest::addColumn<QMargins>("band");
        QTest::newRow("even") << bandImage(QMargins(9, 9, 9, 9)) << QMargins(9, 9, 9, 9);
        QTest::newRow("uneven") << bandImage(QMargins(1, 2, 3, 4)) << QMargins(1, 2, 3, 4);
        QTest::newRow("none") << bandImage(QMargins()) << QMargins();
        QTest::newRow("no alpha channel") << bandImage(QMargins(5, 5, 5, 5), QImage::Format_RGB32) << QMargins();
        QImage hidpi = bandImage(QMargins(9, 9, 9, 9));
        hidpi.setDevicePixelRatio(2);
        QTest::newRow("device pixel ratio 2") << hidpi << QMargins(4, 4, 4, 4);
        QImage clear(10, 6, QImage::Format_ARGB32);
        clear.fill(Qt::transparent);
        QTest::newRow("all transparent") << clear << QMargins(10, 6, 10, 6);
        QTest::newRow("null") << QImage() << QMargins();
    }
    void transparentBand()
    {
        QFETCH(QImage, image);
        QFETCH(QMargins, band);
        QCOMPARE(zTransparentBand(image), band);
    }

    void frameMarginsRule_data()
    {
        QTest::addColumn<QMargins>("maskBand");  // invalid (-1): no mask image
        QTest::addColumn<QMargins>("frameBand"); // invalid (-1): no frame image
        QTest::addColumn<QMargins>("maskMargins");
        QTest::addColumn<bool>("hasFrame");
        QTest::addColumn<QMargins>("expected");
        const QMargins none(-1, -1, -1, -1), m16(16, 16, 16, 16);
        QTest::newRow("mask decides") << QMargins(3, 5, 7, 2) << QMargins(1, 1, 1, 1) << m16 << true
                                      << QMargins(3, 5, 7, 2);
        QTest::newRow("frame without mask") << none << QMargins(4, 4, 6, 6) << m16 << true << QMargins(4, 4, 6, 6);
        QTest::newRow("neither image") << none << none << m16 << true << QMargins();
        QTest::newRow("capped by the mask margins")
            << QMargins(12, 12, 12, 12) << none << QMargins(8, 10, 20, 4) << true << QMargins(8, 10, 12, 4);
        QTest::newRow("no frame") << QMargins(9, 9, 9, 9) << none << m16 << false << QMargins();
        QTest::newRow("negative mask margins count as 0")
            << QMargins(9, 9, 9, 9) << none << QMargins(-1, 4, -8, 2) << true << QMargins(0, 4, 0, 2);
    }
    void frameMarginsRule()
    {
        QFETCH(QMargins, maskBand);
        QFETCH(QMargins, frameBand);
        QFETCH(QMargins, maskMargins);
        QFETCH(bool, hasFrame);
        QFETCH(QMargins, expected);
        const auto write = [this](const QMargins &band, const QString &kind) {
            if (band.left() < 0)
                return QStringLiteral("popuptest:missing.png");
            QString name = QString::fromLatin1(QTest::currentDataTag()) + kind + QStringLiteral(".png");
            name.replace(QLatin1Char(' '), QLatin1Char('_'));
            bandImage(band).save(m_dir.filePath(name));
            return QStringLiteral("popuptest:") + name;
        };
        ZPopupWindow w;
        w.setMaskMargins(maskMargins);
        w.setHasFrame(hasFrame);
        w.setMaskImage(write(maskBand, QStringLiteral("mask")));
        w.setFrameImage(write(frameBand, QStringLiteral("frame")));
        QCOMPARE(w.frameMargins(), expected);
    }

    void hitTest_data()
    {
        QTest::addColumn<HitCase>("c");
        // Window 0,0 200x100 with frame margins 10: R = (10,10) 180x80,
        // right = 190, bottom = 90; border 3, corners 6.
        const auto row = [](const char *name, QPoint pos, Hit hit, bool resizable = true, bool maximized = false) {
            QTest::newRow(name) << HitCase{{0, 0, 200, 100}, {10, 10, 10, 10}, 3, resizable, maximized, pos, hit};
        };
        row("not resizable: corner", {10, 10}, ZPopupWindow::Client, false);
        row("not resizable: edge", {100, 10}, ZPopupWindow::Client, false);
        row("maximised: corner", {10, 10}, ZPopupWindow::Client, true, true);
        row("maximised: bottom edge", {100, 89}, ZPopupWindow::Client, true, true);
        row("top-left corner origin", {10, 10}, ZPopupWindow::TopLeftCorner);
        row("top-left corner far end", {15, 15}, ZPopupWindow::TopLeftCorner);
        row("just past the top-left square", {16, 16}, ZPopupWindow::Client);
        row("top-right corner", {189, 10}, ZPopupWindow::TopRightCorner);
        row("top-right corner inner end", {184, 15}, ZPopupWindow::TopRightCorner);
        row("bottom-left corner", {10, 89}, ZPopupWindow::BottomLeftCorner);
        row("bottom-left corner inner end", {15, 84}, ZPopupWindow::BottomLeftCorner);
        row("bottom-right corner", {189, 89}, ZPopupWindow::BottomRightCorner);
        row("top edge", {100, 12}, ZPopupWindow::TopEdge);
        row("top edge left end", {16, 10}, ZPopupWindow::TopEdge);
        row("below the top edge", {100, 13}, ZPopupWindow::Client);
        row("left edge", {11, 50}, ZPopupWindow::LeftEdge);
        row("left edge upper end", {10, 16}, ZPopupWindow::LeftEdge);

        // The left edge ends 3B above the bottom: y 13..83; 84.. is the corner.
        row("left edge lower end", {12, 83}, ZPopupWindow::LeftEdge);
        row("right edge", {188, 50}, ZPopupWindow::RightEdge);
        row("right edge lower end", {187, 83}, ZPopupWindow::RightEdge);
        row("bottom edge", {100, 87}, ZPopupWindow::BottomEdge);
        row("above the bottom edge", {100, 86}, ZPopupWindow::Client);
        row("middle", {100, 50}, ZPopupWindow::Client);
        row("in the shadow band", {5, 5}, ZPopupWindow::Client);
        row("right of the frame", {195, 50}, ZPopupWindow::Client);
        QTest::newRow("no frame margins, corner at the window's")
            << HitCase{{0, 0, 50, 50}, {}, 3, true, false, {0, 0}, ZPopupWindow::TopLeftCorner};
        QTest::newRow("border 0 leaves only client")
            << HitCase{{0, 0, 50, 50}, {}, 0, true, false, {0, 0}, ZPopupWindow::Client};
        QTest::newRow("window rect not at the origin")
            << HitCase{{100, 100, 50, 50}, {2, 2, 2, 2}, 4, true, false, {147, 130}, ZPopupWindow::RightEdge};
        QTest::newRow("wide border: corners win over edges")
            << HitCase{{0, 0, 40, 40}, {}, 10, true, false, {15, 5}, ZPopupWindow::TopLeftCorner};
    }
    void hitTest()
    {
        QFETCH(HitCase, c);
        QCOMPARE(ZPopupWindow::frameHitTest(c.window, c.frame, c.border, c.resizable, c.maximized, c.pos), c.hit);
    }

    void edgesForHitArea()
    {
        QCOMPARE(ZPopupWindow::edgesForHitArea(ZPopupWindow::Client), Qt::Edges());
        QCOMPARE(ZPopupWindow::edgesForHitArea(ZPopupWindow::Caption), Qt::Edges());
        QCOMPARE(ZPopupWindow::edgesForHitArea(ZPopupWindow::LeftEdge), Qt::Edges(Qt::LeftEdge));
        QCOMPARE(ZPopupWindow::edgesForHitArea(ZPopupWindow::BottomEdge), Qt::Edges(Qt::BottomEdge));
        QCOMPARE(ZPopupWindow::edgesForHitArea(ZPopupWindow::TopRightCorner), Qt::TopEdge | Qt::RightEdge);
        QCOMPARE(ZPopupWindow::edgesForHitArea(ZPopupWindow::BottomLeftCorner), Qt::BottomEdge | Qt::LeftEdge);
    }

    void maximizedGeometry_data()
    {
        QTest::addColumn<PlaceCase>("c"); // work area, frame, border, maximum size
        const QRect screen(0, 0, 800, 600);
        const QMargins m9(9, 9, 9, 9);
        QTest::newRow("plain") << PlaceCase{screen, m9, 3, {}, {-12, -12, 824, 624}};
        QTest::newRow("uneven frame, task bar at the top")
            << PlaceCase{{0, 40, 1024, 728}, {2, 4, 6, 8}, 1, {}, {-3, 35, 1034, 742}};
        QTest::newRow("second monitor") << PlaceCase{{1920, 0, 1280, 1024}, {}, 3, {}, {1917, -3, 1286, 1030}};
        QTest::newRow("clamped by the maximum size") << PlaceCase{screen, m9, 3, {500, 400}, {-12, -12, 500, 400}};
        QTest::newRow("maximum width only") << PlaceCase{screen, {}, 0, {300, -1}, {0, 0, 300, 600}};
        QTest::newRow("negative border counts as 0") << PlaceCase{screen, {}, -5, {}, screen};
    }
    void maximizedGeometry()
    {
        QFETCH(PlaceCase, c);
        QCOMPARE(ZPopupWindow::maximizedGeometry(c.area, c.frame, c.border, c.size), c.expected);
    }

    void minimumTrackSize()
    {
        QCOMPARE(ZPopupWindow::minimumTrackSize(QMargins(9, 9, 9, 9), QSize()), QSize(90, 54));
        QCOMPARE(ZPopupWindow::minimumTrackSize(QMargins(1, 2, 3, 4), QSize()), QSize(20, 18));
        QCOMPARE(ZPopupWindow::minimumTrackSize(QMargins(9, 9, 9, 9), QSize(200, 40)), QSize(200, 54));
        QCOMPARE(ZPopupWindow::minimumTrackSize(QMargins(), QSize(-1, 30)), QSize(0, 30));
    }

    void centeredPosition_data()
    {
        QTest::addColumn<CentreCase>("c");
        const QRect area(0, 0, 800, 600);
        const QMargins m9(9, 9, 9, 9);
        QTest::newRow("centred") << CentreCase{{200, 100}, {}, {400, 300}, area, {300, 250}};
        QTest::newRow("frame margins not counted") << CentreCase{{218, 118}, m9, {400, 300}, area, {291, 241}};
        QTest::newRow("pushed in from the left") << CentreCase{{200, 100}, m9, {10, 300}, area, {-9, 250}};
        QTest::newRow("pushed in from the bottom right") << CentreCase{{200, 100}, {}, {790, 590}, area, {600, 500}};
        QTest::newRow("larger than the area") << CentreCase{{1000, 100}, {}, {400, 300}, area, {0, 250}};
        QTest::newRow("area not at the origin") << CentreCase{{100, 100}, {}, {0, 0}, {800, 0, 400, 300}, {800, 0}};
        QTest::newRow("no area") << CentreCase{{100, 100}, {}, {-500, -500}, {}, {-550, -550}};
    }
    void centeredPosition()
    {
        QFETCH(CentreCase, c);
        QCOMPARE(ZPopupWindow::centeredPosition(c.size, c.frame, c.centre, c.area), c.expected);
    }

    void windowStyle_data()
    {
        QTest::addColumn<int>("style");
        QTest::addColumn<QString>("expected"); // resizable, min, max, quits, tool, system menu, frame
        QTest::newRow("Null") << 0 << "----t-f";
        QTest::newRow("Window") << int(ZPopupWindow::Window) << "rmM--sf";

        // A tool-type window without the system menu that quits the application.
        QTest::newRow("Dialog") << int(ZPopupWindow::Dialog) << "---qt-f";
        QTest::newRow("MainWindow") << int(ZPopupWindow::MainWindow) << "rmMq-sf";
        QTest::newRow("tool window with system menu")
            << int(ZPopupWindow::ToolWindow | ZPopupWindow::SystemMenu) << "----tsf";
        QTest::newRow("NoFrame") << int(ZPopupWindow::NoFrame | ZPopupWindow::SystemMenu) << "-----s-";
        QTest::newRow("buttons only") << int(ZPopupWindow::MinButton | ZPopupWindow::MaxButton) << "-mM-t-f";
    }
    void windowStyle()
    {
        QFETCH(int, style);
        QFETCH(QString, expected);
        ZPopupWindow w;
        w.setWindowStyle(ZPopupWindow::WindowStyles(style));
        QCOMPARE(w.windowStyle(), ZPopupWindow::WindowStyles(style));
        const auto flag = [](bool on, char c) { return QChar::fromLatin1(on ? c : '-'); };
        const QString got = QString() + flag(w.resizable(), 'r') + flag(w.minimumButton(), 'm')
                            + flag(w.maximumButton(), 'M') + flag(w.quitAppOnClose(), 'q') + flag(w.toolWindow(), 't')
                            + flag(w.systemMenu(), 's') + flag(w.hasFrame(), 'f');
        QCOMPARE(got, expected);
        QCOMPARE(w.testAttribute(Qt::WA_QuitOnClose), w.quitAppOnClose());
        QCOMPARE(w.windowType(), w.toolWindow() ? Qt::Tool : Qt::Window);
        QCOMPARE(bool(w.windowFlags() & Qt::WindowSystemMenuHint), w.systemMenu());
        // The button hints live on the native window, which stays frameless.
        QVERIFY(showAt(w, QRect(100, 100, 120, 80)));
        const Qt::WindowFlags native = w.windowHandle()->flags();
        QCOMPARE(bool(native & Qt::WindowMinimizeButtonHint), w.minimumButton());
        QCOMPARE(bool(native & Qt::WindowMaximizeButtonHint), w.maximumButton());
        QVERIFY(native & Qt::FramelessWindowHint);
        QVERIFY(w.windowFlags() & Qt::FramelessWindowHint);
    }

    void singleSettersKeepTheStyle()
    {
        ZPopupWindow w;
        w.setWindowStyle(ZPopupWindow::Dialog);
        w.setResizable(true);
        w.setSystemMenu(true);
        QCOMPARE(w.windowStyle(), ZPopupWindow::Dialog | ZPopupWindow::Resizable | ZPopupWindow::SystemMenu);
        QCOMPARE(w.windowType(), Qt::Window);
        // Changing the window type must not lose quit-on-close.
        w.setToolWindow(true);
        QCOMPARE(w.windowType(), Qt::Tool);
        QVERIFY(w.quitAppOnClose());
        w.setSystemMenu(false);
        QCOMPARE(w.windowType(), Qt::Tool);
        QVERIFY(!(w.windowFlags() & Qt::WindowSystemMenuHint));
        w.setToolWindow(false);
        QCOMPARE(w.windowType(), Qt::Window);
    }

    // Button hints are only ever added, and style changes keep the window shown.
    void buttonHintsAreOnlyAdded()
    {
        ZPopupWindow w;
        QVERIFY(showAt(w, QRect(100, 100, 100, 60)));
        const auto hints = [&w] { return w.windowHandle()->flags(); };
        QVERIFY(!(hints() & Qt::WindowMaximizeButtonHint));
        w.setMaximumButton(true);
        w.setMinimumButton(true);
        w.setMaximumButton(false);
        w.setMinimumButton(false);
        QVERIFY(!w.maximumButton() && !w.minimumButton());
        QVERIFY((hints() & Qt::WindowMaximizeButtonHint) && (hints() & Qt::WindowMinimizeButtonHint));
        // A new native window (a change of window type) gets them on show.
        w.setMaximumButton(true);
        w.setToolWindow(true);
        QVERIFY(w.isVisible());
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QVERIFY((hints() & Qt::WindowMaximizeButtonHint) && (hints() & Qt::FramelessWindowHint));
        w.setWindowStyle(ZPopupWindow::MainWindow);
        QVERIFY(w.isVisible());
    }

    void sizesAndBadValues()
    {
        ZPopupWindow w;
        w.setMinimumSize(QSize(100, 50));
        w.setMaximumSize(300, 200);
        w.setFixSize(QSize(150, 90));
        QCOMPARE(w.QWidget::minimumSize(), QSize(150, 90));
        QCOMPARE(w.QWidget::maximumSize(), QSize(150, 90));
        w.setFixSize(QSize());
        QVERIFY(!w.fixSize().isValid());
        QCOMPARE(w.QWidget::minimumSize(), QSize(0, 0));
        QCOMPARE(w.QWidget::maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
        w.setFrameSize(QSize(222, 111));
        w.setFrameSize(QSize(-1, 5));
        QCOMPARE(w.frameSize(), QSize(222, 111));
        w.setBorderPixel(-4);
        QCOMPARE(w.borderPixel(), 0);
        w.setMaskImage(QStringLiteral("popuptest:nothing-here.png"));
        w.setFrameImage(QString());
        QCOMPARE(w.frameMargins(), QMargins());
        w.setBackgroundImage(QStringLiteral("/no/such/file.png"));
        w.resize(60, 40);
        QCOMPARE(picture(&w).pixelColor(30, 20), w.backgroundColor()); // the colour still paints
    }

    void keys_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<bool>("closeOnEscape");
        QTest::addColumn<bool>("closes");
        QTest::addColumn<int>("enter"); // the modifiers enterPressed() gives, -1: not signalled
        QTest::addColumn<bool>("passedOn");
        const Qt::KeyboardModifiers none;
        QTest::newRow("plain key") << int(Qt::Key_A) << none << true << false << -1 << true;

        // Escape never reaches the scene; the hook sees the modifiers without the keypad.
        QTest::newRow("escape") << int(Qt::Key_Escape) << none << true << true << -1 << false;
        QTest::newRow("escape, closeOnEscape off")
            << int(Qt::Key_Escape) << (Qt::ShiftModifier | Qt::KeypadModifier) << false << false << -1 << false;
        QTest::newRow("return") << int(Qt::Key_Return) << none << true << false << 0 << true;
        QTest::newRow("keypad enter") << int(Qt::Key_Enter) << Qt::KeyboardModifiers(Qt::KeypadModifier) << true
                                      << false << 0 << true;
        QTest::newRow("ctrl+return") << int(Qt::Key_Return) << Qt::KeyboardModifiers(Qt::ControlModifier) << true
                                     << false << int(Qt::ControlModifier) << true;
    }
    void keys()
    {
        QFETCH(int, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QFETCH(bool, closeOnEscape);
        QFETCH(bool, closes);
        QFETCH(int, enter);
        QFETCH(bool, passedOn);
        HookWindow w;
        w.setCloseOnEscape(closeOnEscape);
        auto *recorder = new KeyRecorder;
        w.rootWidget()->addItem(recorder);
        QVERIFY(showAt(w, QRect(100, 100, 200, 120)));
        QVERIFY(QTest::qWaitForWindowActive(&w));
        w.scene()->setFocusItem(recorder);
        QSignalSpy closing(&w, &ZWindow::aboutToClose);
        QSignalSpy entered(&w, &ZPopupWindow::enterPressed);
        QTest::keyClick(&w, Qt::Key(key), modifiers);
        QCOMPARE(closing.size(), closes ? 1 : 0);
        QCOMPARE(w.isVisible(), !closes);
        QCOMPARE(recorder->keys, passedOn ? QList<int>{key} : QList<int>());
        QCOMPARE(entered.size(), enter < 0 ? 0 : 1);
        if (enter >= 0)
            QCOMPARE(entered.at(0).at(0).value<Qt::KeyboardModifiers>().toInt(), enter);
        if (key == Qt::Key_Escape)
            QCOMPARE(w.escapes, QList<Qt::KeyboardModifiers>{modifiers & ~Qt::KeypadModifier});
    }

    void closeOnF4_data()
    {
        QTest::addColumn<bool>("closeOnF4");
        QTest::newRow("on") << true;
        QTest::newRow("off") << false;
    }
    void closeOnF4()
    {
        QFETCH(bool, closeOnF4);
        ZPopupWindow w;
        w.setCloseOnF4(closeOnF4);
        QVERIFY(showAt(w, QRect(100, 100, 100, 80)));
        // What the window manager's Alt+F4 turns into: a close request from
        // the window system, a spontaneous close event.
        QCloseEvent request;
        QSpontaneKeyEvent::setSpontaneous(&request);
        qApp->notify(&w, &request); // sendEvent() would make it non-spontaneous
        // Accepting it is what lets the window system's close go ahead.
        QCOMPARE(request.isAccepted(), closeOnF4);
        if (!closeOnF4) {
            QVERIFY(w.isVisible());
            // Closing the native window from code is no request: it closes.
            w.windowHandle()->close();
            QVERIFY(!w.isVisible());
        }
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QVERIFY(w.close()); // code may always close
        QVERIFY(!w.isVisible());
    }

    void drag_data()
    {
        QTest::addColumn<QString>("why");
        QTest::addColumn<bool>("moves");
        QTest::newRow("on the root widget") << "root" << true;
        QTest::newRow("corner of a window not resizable") << "corner" << true;
        QTest::newRow("widget says Nothing") << "nothing" << false;
        QTest::newRow("dragWindow off") << "off" << false;
        QTest::newRow("maximised") << "maximised" << false;
        QTest::newRow("right button") << "right" << false;
    }
    void drag()
    {
        QFETCH(QString, why);
        QFETCH(bool, moves);
        ZPopupWindow w;
        auto *still = new ZSpacer;
        still->setDragPolicy(ZWidget::Nothing);
        still->setFixSize(QSizeF(80, 60));
        w.rootWidget()->addItem(still);
        w.setDragWindow(why != QLatin1String("off"));
        QVERIFY(showAt(w, QRect(100, 100, 300, 200)));
        if (why == QLatin1String("maximised"))
            w.showMaximized();
        w.rootWidget()->activateLayout();
        QPoint at = w.mapFromScene(w.rootWidget()->sceneBoundingRect().bottomRight()) - QPoint(30, 30);
        if (why == QLatin1String("nothing"))
            at = w.mapFromScene(still->sceneBoundingRect().center());
        else if (why == QLatin1String("corner"))
            at = QPoint(289, 189); // the corner of the visible frame
        const Qt::MouseButton button = why == QLatin1String("right") ? Qt::RightButton : Qt::LeftButton;
        const QPoint start = w.pos();
        QTest::mousePress(w.viewport(), button, {}, at);
        QTest::mouseMove(w.viewport(), at + QPoint(30, 20));
        QCOMPARE(w.pos(), moves ? start + QPoint(30, 20) : start);
        QTest::mouseMove(w.viewport(), at + QPoint(10, 10)); // relative to the moved window
        QCOMPARE(w.pos(), moves ? start + QPoint(40, 30) : start);
        QTest::mouseRelease(w.viewport(), button, {}, at + QPoint(10, 10));
        QTest::mouseMove(w.viewport(), QPoint(20, 20));
        QCOMPARE(w.pos(), moves ? start + QPoint(40, 30) : start);
        QCOMPARE(w.size(), why == QLatin1String("maximised") ? w.size() : QSize(300, 200));
    }

    void borderResizes_data()
    {
        QTest::addColumn<QPoint>("press");
        QTest::addColumn<QPoint>("delta");
        QTest::addColumn<QRect>("expected");
        // Window 300x200 at (100,100), frame margins 9, border 3.
        QTest::newRow("bottom-right corner") << QPoint(289, 189) << QPoint(40, 30) << QRect(100, 100, 340, 230);
        QTest::newRow("left edge") << QPoint(10, 100) << QPoint(-20, 50) << QRect(80, 100, 320, 200);
        QTest::newRow("top edge") << QPoint(150, 10) << QPoint(70, 25) << QRect(100, 125, 300, 175);
        QTest::newRow("top-left, down to the minimum track size")
            << QPoint(10, 10) << QPoint(400, 400) << QRect(310, 246, 90, 54);
    }
    void borderResizes()
    {
        QFETCH(QPoint, press);
        QFETCH(QPoint, delta);
        QFETCH(QRect, expected);
        ZPopupWindow w;
        w.setResizable(true);
        QVERIFY(showAt(w, QRect(100, 100, 300, 200)));
        QTest::mouseMove(w.viewport(), press);
        QCOMPARE(w.viewport()->cursor().shape(), press == QPoint(150, 10) ? Qt::SizeVerCursor
                                                 : press.x() == 10 && press.y() == 100 ? Qt::SizeHorCursor
                                                                                        : Qt::SizeFDiagCursor);
        QTest::mousePress(w.viewport(), Qt::LeftButton, {}, press);
        QTest::mouseMove(w.viewport(), press + delta);
        QTest::mouseRelease(w.viewport(), Qt::LeftButton, {}, press + delta);
        QCOMPARE(w.geometry(), expected);
        QTest::mouseMove(w.viewport(), w.rect().center());
        QCOMPARE(w.viewport()->cursor().shape(), Qt::ArrowCursor);
    }

    // The title bar's tests maximise and restore; here the maximum size holds.
    void maximiseKeepsTheMaximumSize()
    {
        ZPopupWindow w;
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        w.setMaximumSize(QSize(400, 300));
        w.showMaximized();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QVERIFY(w.isWindowMaximized());
        QCOMPARE(w.size(), QSize(400, 300));
    }

    void moveCenterOnWidget()
    {
        ZPopupWindow owner;
        QVERIFY(showAt(owner, QRect(50, 60, 400, 300)));
        auto *anchor = new ZSpacer;
        owner.rootWidget()->addItem(anchor);
        ZPopupWindow w;
        w.resize(119, 79); // odd visible sizes have an exact centre
        w.moveCenter(anchor);
        QCOMPARE(w.geometry().center(), owner.geometry().center());
        // Deferred: nothing before the event loop turns.
        owner.move(100, 100);
        w.moveCenter(anchor, true);
        QVERIFY(w.geometry().center() != owner.geometry().center());
        QTRY_COMPARE(w.geometry().center(), owner.geometry().center());
        // A widget destroyed before the deferred move cancels it.
        const QPoint before = w.pos();
        w.moveCenter(anchor, true);
        delete anchor;
        owner.move(10, 10);
        QTest::qWait(20);
        QCOMPARE(w.pos(), before);
        // No widget: the screen's middle.
        w.moveCenter(static_cast<ZWidget *>(nullptr));
        QCOMPARE(w.geometry().center(), w.screen()->availableGeometry().center());
    }

    void opaqueWindowIsCutToTheMask()
    {
        ZPopupWindow w;
        w.resize(120, 80);
        QVERIFY(w.mask().isEmpty()); // translucent: no shape needed
        w.setTranslucent(false);
        QVERIFY(!w.testAttribute(Qt::WA_TranslucentBackground));
        QVERIFY(showAt(w, QRect(100, 100, 120, 80)));
        const QRegion shape = w.mask();
        QVERIFY(shape.contains(QPoint(60, 40)));
        QVERIFY(!shape.contains(QPoint(2, 2))); // shadow band
        QVERIFY(!shape.contains(QPoint(9, 9))); // rounded corner
        QVERIFY(shape.contains(QPoint(60, 9))); // top of the visible frame
        w.resize(200, 100);
        QVERIFY(w.mask().contains(QPoint(180, 50)));
        w.setHasFrame(false);
        QVERIFY(w.mask().isEmpty());
    }

    void paintsFrameBackgroundAndContent()
    {
        ZPopupWindow w;
        w.setBackgroundColor(QColor(240, 244, 250));
        auto *label = new ZLabel;
        label->setText(QStringLiteral("Pop-up window"));
        label->setFixHeight(30);
        w.rootWidget()->addItem(label);
        auto *panel = new ZSpacer;
        panel->setBackgroundColor(QColor(255, 255, 255));
        w.rootWidget()->setMargins(QMargins(0, 0, 0, 0));
        w.rootWidget()->addItem(panel);
        QVERIFY(showAt(w, QRect(100, 100, 260, 160)));
        const QImage img = picture(&w);
        // Shadow band: nearly transparent at the outer corner, a soft shadow beside the frame.
        QVERIFY(qAlpha(img.pixel(0, 0)) < 8);
        QVERIFY(qAlpha(img.pixel(130, 3)) > 0 && qAlpha(img.pixel(130, 3)) < 128);
        // Inside the frame: opaque background, then the white panel below the label.
        QCOMPARE(img.pixelColor(130, 14), QColor(240, 244, 250));
        QCOMPARE(img.pixelColor(130, 120), QColor(255, 255, 255));
        QVERIFY(qAlpha(img.pixel(9, 9)) < 255);   // the rounded corner is cut out
        QVERIFY(img.pixelColor(130, 9).red() < 240); // the outline darkens the first row
        w.setHasFrame(false);
        QCOMPARE(picture(&w).pixelColor(0, 0), QColor(240, 244, 250));
        // A background image replaces the colour.
        QImage tile(4, 4, QImage::Format_ARGB32);
        tile.fill(QColor(10, 200, 30));
        tile.save(m_dir.filePath(QStringLiteral("background.png")));
        ZPopupWindow tiled;
        tiled.resize(100, 80);
        tiled.setBackgroundImage(QStringLiteral("popuptest:background.png"));
        QCOMPARE(picture(&tiled).pixelColor(50, 40), QColor(10, 200, 30));
        QVERIFY(qAlpha(picture(&tiled).pixel(1, 1)) < 8);
    }
};

QTEST_MAIN(tst_ZPopupWindow)
#include "tst_zpopupwindow.moc"
