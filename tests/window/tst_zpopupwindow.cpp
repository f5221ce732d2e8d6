// The pop-up window: frame rules, hit-testing and placement tables, styles,
// keys, close requests, moving and resizing by the mouse, painting.

#include "zcreator.h"
#include "zlabel.h"
#include "zpopupwindow.h"
#include "zpopupwindow_p.h"
#include "zspacer.h"
#include "ztheme.h"

#include <QDir>
#include <QGraphicsScene>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QWindow>
#include <QtTest>
#include <QtTest/qtestspontaneevent.h>

namespace {

using Hit = ZPopupWindow::HitArea;

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
        static const QList<int> modifierKeys{Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_Meta};
        if (!modifierKeys.contains(event->key()))
            keys.append(event->key());
    }
};

// Sees the modifiers the window hands to its key hooks.
class HookWindow : public ZPopupWindow
{
public:
    Qt::KeyboardModifiers escModifiers{Qt::KeyboardModifier(-1)};
    int escCalls = 0;

protected:
    void onEscPressed(Qt::KeyboardModifiers modifiers) override
    {
        ++escCalls;
        escModifiers = modifiers;
        ZPopupWindow::onEscPressed(modifiers);
    }
};

// A 40x40 image, opaque except for a transparent band of the given widths.
QImage bandImage(const QMargins &band, QImage::Format format = QImage::Format_ARGB32)
{
    QImage img(40, 40, format);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.fillRect(QRect(0, 0, 40, 40).marginsRemoved(band), Qt::black);
    return img;
}

QImage shown(QWidget *w)
{
    QImage img(w->size(), QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    w->render(&img, QPoint(), QRegion(), QWidget::DrawChildren);
    return img;
}

// Saves the picture as it is and, for looking at, on a grey desktop.
void savePng(const QImage &img, const QString &name)
{
    const QString base = QCoreApplication::applicationDirPath() + QLatin1Char('/') + name;
    img.save(base + QStringLiteral(".png"));
    QImage onGrey(img.size(), QImage::Format_ARGB32_Premultiplied);
    onGrey.fill(QColor(200, 200, 200));
    QPainter p(&onGrey);
    p.drawImage(0, 0, img);
    p.end();
    onGrey.save(base + QStringLiteral("-on-grey.png"));
}

} // namespace

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

    void defaults()
    {
        ZPopupWindow w;
        QCOMPARE(w.frameImage(), QStringLiteral(":/image/theme/frameimage.png"));
        QCOMPARE(w.maskImage(), QStringLiteral(":/image/theme/maskimage.png"));
        QCOMPARE(w.maskMargins(), QMargins(16, 16, 16, 16));
        // The embedded skin's shadow band.
        QCOMPARE(w.frameMargins(), QMargins(9, 9, 9, 9));
        QCOMPARE(w.sceneMargins(), w.frameMargins());
        QVERIFY(w.isWindow());
        QVERIFY(w.windowFlags() & Qt::FramelessWindowHint);
        QVERIFY(w.windowFlags() & Qt::CustomizeWindowHint);
        QCOMPARE(w.windowType(), Qt::Window);
        QVERIFY(w.testAttribute(Qt::WA_DeleteOnClose));
        QVERIFY(w.testAttribute(Qt::WA_TranslucentBackground));
        QVERIFY(w.translucent());
        QCOMPARE(w.backgroundColor(), ZTheme::themeColor());
        QCOMPARE(w.borderPixel(), 3);
        QVERIFY(w.dragWindow());
        QVERIFY(w.closeOnEscape());
        QVERIFY(w.closeOnF4());
        QVERIFY(!w.resizable());
        QVERIFY(w.hasFrame());
        QVERIFY(!w.minimumSize().isValid());
        QVERIFY(!w.maximumSize().isValid());
        QVERIFY(!w.fixSize().isValid());
    }

    void registered()
    {
        ZWindowCreatorBase *creator = ZWindowCreatorBase::find("ZPopupWindow");
        QVERIFY(creator);
        ZWindow *w = creator->create(nullptr);
        QVERIFY(qobject_cast<ZPopupWindow *>(w));
        delete w;
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
        const QMargins none(-1, -1, -1, -1);
        const QMargins m16(16, 16, 16, 16);
        QTest::newRow("mask decides") << QMargins(3, 5, 7, 2) << QMargins(1, 1, 1, 1) << m16 << true
                                      << QMargins(3, 5, 7, 2);
        QTest::newRow("frame without mask") << none << QMargins(4, 4, 6, 6) << m16 << true << QMargins(4, 4, 6, 6);
        QTest::newRow("neither image") << none << none << m16 << true << QMargins();
        QTest::newRow("capped by the mask margins")
            << QMargins(12, 12, 12, 12) << none << QMargins(8, 10, 20, 4) << true << QMargins(8, 10, 12, 4);
        QTest::newRow("no frame") << QMargins(9, 9, 9, 9) << none << m16 << false << QMargins();
    }
    void frameMarginsRule()
    {
        QFETCH(QMargins, maskBand);
        QFETCH(QMargins, frameBand);
        QFETCH(QMargins, maskMargins);
        QFETCH(bool, hasFrame);
        QFETCH(QMargins, expected);
        const QString tag = QString::fromLatin1(QTest::currentDataTag()).replace(QLatin1Char(' '), QLatin1Char('_'));
        const auto write = [&](const QMargins &band, const QString &kind) {
            if (band.left() < 0)
                return QStringLiteral("popuptest:missing.png");
            const QString name = tag + kind + QStringLiteral(".png");
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
        QTest::addColumn<QRect>("window");
        QTest::addColumn<QMargins>("frame");
        QTest::addColumn<int>("border");
        QTest::addColumn<bool>("resizable");
        QTest::addColumn<bool>("maximized");
        QTest::addColumn<QPoint>("pos");
        QTest::addColumn<Hit>("hit");

        // Window 0,0 200x100 with frame margins 10: R = (10,10) 180x80,
        // right = 190, bottom = 90; border 3, corners 6.
        const QRect win(0, 0, 200, 100);
        const QMargins fm(10, 10, 10, 10);
        const auto row = [&](const char *name, QPoint pos, Hit hit, bool resizable = true, bool maximized = false) {
            QTest::newRow(name) << win << fm << 3 << resizable << maximized << pos << hit;
        };
        row("not resizable: corner", QPoint(10, 10), ZPopupWindow::Client, false);
        row("not resizable: edge", QPoint(100, 10), ZPopupWindow::Client, false);
        row("maximised: corner", QPoint(10, 10), ZPopupWindow::Client, true, true);
        row("maximised: bottom edge", QPoint(100, 89), ZPopupWindow::Client, true, true);
        row("top-left corner origin", QPoint(10, 10), ZPopupWindow::TopLeftCorner);
        row("top-left corner far end", QPoint(15, 15), ZPopupWindow::TopLeftCorner);
        row("just past the top-left square", QPoint(16, 16), ZPopupWindow::Client);
        row("top-right corner", QPoint(189, 10), ZPopupWindow::TopRightCorner);
        row("top-right corner inner end", QPoint(184, 15), ZPopupWindow::TopRightCorner);
        row("bottom-left corner", QPoint(10, 89), ZPopupWindow::BottomLeftCorner);
        row("bottom-left corner inner end", QPoint(15, 84), ZPopupWindow::BottomLeftCorner);
        row("bottom-right corner", QPoint(189, 89), ZPopupWindow::BottomRightCorner);
        row("top edge", QPoint(100, 12), ZPopupWindow::TopEdge);
        row("top edge left end", QPoint(16, 10), ZPopupWindow::TopEdge);
        row("below the top edge", QPoint(100, 13), ZPopupWindow::Client);
        row("left edge", QPoint(11, 50), ZPopupWindow::LeftEdge);
        row("left edge upper end", QPoint(10, 16), ZPopupWindow::LeftEdge);
        // The left edge ends 3B above the bottom: y 13..83; 84.. is the corner.
        row("left edge lower end", QPoint(12, 83), ZPopupWindow::LeftEdge);
        row("right edge", QPoint(188, 50), ZPopupWindow::RightEdge);
        row("right edge lower end", QPoint(187, 83), ZPopupWindow::RightEdge);
        row("bottom edge", QPoint(100, 87), ZPopupWindow::BottomEdge);
        row("above the bottom edge", QPoint(100, 86), ZPopupWindow::Client);
        row("middle", QPoint(100, 50), ZPopupWindow::Client);
        row("in the shadow band", QPoint(5, 5), ZPopupWindow::Client);
        row("right of the frame", QPoint(195, 50), ZPopupWindow::Client);

        QTest::newRow("no frame margins, corner at the window's")
            << QRect(0, 0, 50, 50) << QMargins() << 3 << true << false << QPoint(0, 0) << ZPopupWindow::TopLeftCorner;
        QTest::newRow("border 0 leaves only client")
            << QRect(0, 0, 50, 50) << QMargins() << 0 << true << false << QPoint(0, 0) << ZPopupWindow::Client;
        QTest::newRow("window rect not at the origin")
            << QRect(100, 100, 50, 50) << QMargins(2, 2, 2, 2) << 4 << true << false << QPoint(147, 130)
            << ZPopupWindow::RightEdge;
        QTest::newRow("wide border: corners win over edges")
            << QRect(0, 0, 40, 40) << QMargins() << 10 << true << false << QPoint(15, 5) << ZPopupWindow::TopLeftCorner;
    }
    void hitTest()
    {
        QFETCH(QRect, window);
        QFETCH(QMargins, frame);
        QFETCH(int, border);
        QFETCH(bool, resizable);
        QFETCH(bool, maximized);
        QFETCH(QPoint, pos);
        QFETCH(Hit, hit);
        QCOMPARE(ZPopupWindow::frameHitTest(window, frame, border, resizable, maximized, pos), hit);
    }

    void edgesForHitArea_data()
    {
        QTest::addColumn<Hit>("hit");
        QTest::addColumn<Qt::Edges>("edges");
        QTest::newRow("client") << ZPopupWindow::Client << Qt::Edges();
        QTest::newRow("caption") << ZPopupWindow::Caption << Qt::Edges();
        QTest::newRow("left") << ZPopupWindow::LeftEdge << Qt::Edges(Qt::LeftEdge);
        QTest::newRow("bottom") << ZPopupWindow::BottomEdge << Qt::Edges(Qt::BottomEdge);
        QTest::newRow("top-right") << ZPopupWindow::TopRightCorner << (Qt::TopEdge | Qt::RightEdge);
        QTest::newRow("bottom-left") << ZPopupWindow::BottomLeftCorner << (Qt::BottomEdge | Qt::LeftEdge);
    }
    void edgesForHitArea()
    {
        QFETCH(Hit, hit);
        QFETCH(Qt::Edges, edges);
        QCOMPARE(ZPopupWindow::edgesForHitArea(hit), edges);
    }

    void maximizedGeometry_data()
    {
        QTest::addColumn<QRect>("work");
        QTest::addColumn<QMargins>("frame");
        QTest::addColumn<int>("border");
        QTest::addColumn<QSize>("maximum");
        QTest::addColumn<QRect>("expected");
        QTest::newRow("plain") << QRect(0, 0, 800, 600) << QMargins(9, 9, 9, 9) << 3 << QSize()
                               << QRect(-12, -12, 824, 624);
        QTest::newRow("uneven frame, task bar at the top")
            << QRect(0, 40, 1024, 728) << QMargins(2, 4, 6, 8) << 1 << QSize() << QRect(-3, 35, 1034, 742);
        QTest::newRow("second monitor") << QRect(1920, 0, 1280, 1024) << QMargins() << 3 << QSize()
                                        << QRect(1917, -3, 1286, 1030);
        QTest::newRow("clamped by the maximum size")
            << QRect(0, 0, 800, 600) << QMargins(9, 9, 9, 9) << 3 << QSize(500, 400) << QRect(-12, -12, 500, 400);
        QTest::newRow("maximum width only")
            << QRect(0, 0, 800, 600) << QMargins() << 0 << QSize(300, -1) << QRect(0, 0, 300, 600);
        QTest::newRow("negative border counts as 0")
            << QRect(0, 0, 800, 600) << QMargins() << -5 << QSize() << QRect(0, 0, 800, 600);
    }
    void maximizedGeometry()
    {
        QFETCH(QRect, work);
        QFETCH(QMargins, frame);
        QFETCH(int, border);
        QFETCH(QSize, maximum);
        QFETCH(QRect, expected);
        QCOMPARE(ZPopupWindow::maximizedGeometry(work, frame, border, maximum), expected);
    }

    void minimumTrackSize_data()
    {
        QTest::addColumn<QMargins>("frame");
        QTest::addColumn<QSize>("minimum");
        QTest::addColumn<QSize>("expected");
        QTest::newRow("from the frame") << QMargins(9, 9, 9, 9) << QSize() << QSize(90, 54);
        QTest::newRow("uneven") << QMargins(1, 2, 3, 4) << QSize() << QSize(20, 18);
        QTest::newRow("raised by the minimum") << QMargins(9, 9, 9, 9) << QSize(200, 40) << QSize(200, 54);
        QTest::newRow("no frame") << QMargins() << QSize(-1, 30) << QSize(0, 30);
    }
    void minimumTrackSize()
    {
        QFETCH(QMargins, frame);
        QFETCH(QSize, minimum);
        QFETCH(QSize, expected);
        QCOMPARE(ZPopupWindow::minimumTrackSize(frame, minimum), expected);
    }

    void centeredPosition_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QMargins>("frame");
        QTest::addColumn<QPoint>("center");
        QTest::addColumn<QRect>("area");
        QTest::addColumn<QPoint>("expected");
        const QRect area(0, 0, 800, 600);
        QTest::newRow("centred") << QSize(200, 100) << QMargins() << QPoint(400, 300) << area << QPoint(300, 250);
        QTest::newRow("frame margins not counted")
            << QSize(218, 118) << QMargins(9, 9, 9, 9) << QPoint(400, 300) << area << QPoint(291, 241);
        QTest::newRow("pushed in from the left")
            << QSize(200, 100) << QMargins(9, 9, 9, 9) << QPoint(10, 300) << area << QPoint(-9, 250);
        QTest::newRow("pushed in from the bottom right")
            << QSize(200, 100) << QMargins() << QPoint(790, 590) << area << QPoint(600, 500);
        QTest::newRow("larger than the area")
            << QSize(1000, 100) << QMargins() << QPoint(400, 300) << area << QPoint(0, 250);
        QTest::newRow("area not at the origin")
            << QSize(100, 100) << QMargins() << QPoint(0, 0) << QRect(800, 0, 400, 300) << QPoint(800, 0);
        QTest::newRow("no area") << QSize(100, 100) << QMargins() << QPoint(-500, -500) << QRect()
                                 << QPoint(-550, -550);
    }
    void centeredPosition()
    {
        QFETCH(QSize, size);
        QFETCH(QMargins, frame);
        QFETCH(QPoint, center);
        QFETCH(QRect, area);
        QFETCH(QPoint, expected);
        QCOMPARE(ZPopupWindow::centeredPosition(size, frame, center, area), expected);
    }

    void windowStyle_data()
    {
        QTest::addColumn<int>("style");
        QTest::addColumn<bool>("resizable");
        QTest::addColumn<bool>("minButton");
        QTest::addColumn<bool>("maxButton");
        QTest::addColumn<bool>("quitOnClose");
        QTest::addColumn<Qt::WindowType>("type");
        QTest::addColumn<bool>("systemMenu");
        QTest::addColumn<bool>("hasFrame");
        QTest::newRow("Null") << 0 << false << false << false << false << Qt::Tool << false << true;
        QTest::newRow("Window") << int(ZPopupWindow::Window) << true << true << true << false << Qt::Window << true
                                << true;
        // A tool-type window without the system menu that quits the application.
        QTest::newRow("Dialog") << int(ZPopupWindow::Dialog) << false << false << false << true << Qt::Tool << false
                                << true;
        QTest::newRow("MainWindow") << int(ZPopupWindow::MainWindow) << true << true << true << true << Qt::Window
                                    << true << true;
        QTest::newRow("tool window with system menu")
            << int(ZPopupWindow::ToolWindow | ZPopupWindow::SystemMenu) << false << false << false << false
            << Qt::Tool << true << true;
        QTest::newRow("NoFrame") << int(ZPopupWindow::NoFrame | ZPopupWindow::SystemMenu) << false << false
                                 << false << false << Qt::Window << true << false;
        QTest::newRow("buttons only") << int(ZPopupWindow::MinButton | ZPopupWindow::MaxButton) << false << true
                                      << true << false << Qt::Tool << false << true;
    }
    void windowStyle()
    {
        QFETCH(int, style);
        QFETCH(bool, resizable);
        QFETCH(bool, minButton);
        QFETCH(bool, maxButton);
        QFETCH(bool, quitOnClose);
        QFETCH(Qt::WindowType, type);
        QFETCH(bool, systemMenu);
        QFETCH(bool, hasFrame);
        ZPopupWindow w;
        w.setWindowStyle(ZPopupWindow::WindowStyles(style));
        QCOMPARE(w.windowStyle(), ZPopupWindow::WindowStyles(style));
        QCOMPARE(w.resizable(), resizable);
        QCOMPARE(w.minimumButton(), minButton);
        QCOMPARE(w.maximumButton(), maxButton);
        QCOMPARE(w.quitAppOnClose(), quitOnClose);
        QCOMPARE(w.testAttribute(Qt::WA_QuitOnClose), quitOnClose);
        QCOMPARE(w.windowType(), type);
        QCOMPARE(w.toolWindow(), type == Qt::Tool);
        QCOMPARE(w.systemMenu(), systemMenu);
        QCOMPARE(bool(w.windowFlags() & Qt::WindowSystemMenuHint), systemMenu);
        QCOMPARE(w.hasFrame(), hasFrame);
        QVERIFY(w.windowFlags() & Qt::FramelessWindowHint);
        // The button hints live on the native window, which stays frameless.
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        const Qt::WindowFlags native = w.windowHandle()->flags();
        QCOMPARE(bool(native & Qt::WindowMinimizeButtonHint), minButton);
        QCOMPARE(bool(native & Qt::WindowMaximizeButtonHint), maxButton);
        QVERIFY(native & Qt::FramelessWindowHint);
        QVERIFY(w.windowFlags() & Qt::FramelessWindowHint);
    }

    void styleFromDocumentText()
    {
        ZPopupWindow w;
        const QMetaProperty prop = w.metaObject()->property(w.metaObject()->indexOfProperty("windowStyle"));
        QVERIFY(prop.isFlagType());
        bool ok = false;
        const int value = prop.enumerator().keysToValue("Resizable|AppWindow", &ok);
        QVERIFY(ok);
        QVERIFY(w.setProperty("windowStyle", value));
        QVERIFY(w.resizable());
        QVERIFY(w.quitAppOnClose());
        QCOMPARE(prop.enumerator().keyToValue("MainWindow"), 95);
        QCOMPARE(prop.enumerator().keyToValue("Dialog"), 18);
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
        QVERIFY(w.quitAppOnClose());
        w.setToolWindow(true);
        QCOMPARE(w.windowType(), Qt::Tool);
        QVERIFY(w.quitAppOnClose());
        w.setSystemMenu(false);
        QCOMPARE(w.windowType(), Qt::Tool);
        QVERIFY(!(w.windowFlags() & Qt::WindowSystemMenuHint));
        w.setToolWindow(false);
        QCOMPARE(w.windowType(), Qt::Window);
    }

    void buttonHintsAreOnlyAdded()
    {
        ZPopupWindow w;
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        w.resize(100, 60);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QVERIFY(!(w.windowHandle()->flags() & Qt::WindowMaximizeButtonHint));
        w.setMaximumButton(true);
        w.setMinimumButton(true);
        QVERIFY(w.windowHandle()->flags() & Qt::WindowMaximizeButtonHint);
        QVERIFY(w.windowHandle()->flags() & Qt::WindowMinimizeButtonHint);
        w.setMaximumButton(false);
        w.setMinimumButton(false);
        QVERIFY(!w.maximumButton());
        QVERIFY(!w.minimumButton());
        QVERIFY(w.windowHandle()->flags() & Qt::WindowMaximizeButtonHint);
        QVERIFY(w.windowHandle()->flags() & Qt::WindowMinimizeButtonHint);
        // A new native window (a change of window type) gets them on show.
        w.setMaximumButton(true);
        w.setToolWindow(true);
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QVERIFY(w.windowHandle()->flags() & Qt::WindowMaximizeButtonHint);
        QVERIFY(w.windowHandle()->flags() & Qt::FramelessWindowHint);
    }

    void flagChangesKeepTheWindowShown()
    {
        ZPopupWindow w;
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        w.resize(120, 80);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        w.setWindowStyle(ZPopupWindow::MainWindow);
        QVERIFY(w.isVisible());
        w.setToolWindow(true);
        QVERIFY(w.isVisible());
    }

    void sizes()
    {
        ZPopupWindow w;
        w.setMinimumSize(QSize(100, 50));
        QCOMPARE(w.minimumSize(), QSize(100, 50));
        QCOMPARE(w.QWidget::minimumSize(), QSize(100, 50));
        w.setMaximumSize(300, 200);
        QCOMPARE(w.maximumSize(), QSize(300, 200));
        QCOMPARE(w.QWidget::maximumSize(), QSize(300, 200));
        QVERIFY(!w.fixSize().isValid());
        w.setFixSize(QSize(150, 90));
        QCOMPARE(w.fixSize(), QSize(150, 90));
        QCOMPARE(w.QWidget::minimumSize(), QSize(150, 90));
        QCOMPARE(w.QWidget::maximumSize(), QSize(150, 90));
        w.setFixSize(QSize());
        QVERIFY(!w.fixSize().isValid());
        QCOMPARE(w.QWidget::minimumSize(), QSize(0, 0));
        QCOMPARE(w.QWidget::maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
        w.setFrameSize(QSize(222, 111));
        QCOMPARE(w.frameSize(), QSize(222, 111));
        w.setFrameSize(QSize(-1, 5));
        QCOMPARE(w.frameSize(), QSize(222, 111));
    }

    void badValuesAreBounded()
    {
        ZPopupWindow w;
        w.setBorderPixel(-4);
        QCOMPARE(w.borderPixel(), 0);
        w.setMaskMargins(QMargins(-1, 4, -8, 2));
        QCOMPARE(w.maskMargins(), QMargins(0, 4, 0, 2));
        // The band may not leave the corner pieces.
        QCOMPARE(w.frameMargins(), QMargins(0, 4, 0, 2));
        w.setMaskImage(QStringLiteral("popuptest:nothing-here.png"));
        w.setFrameImage(QString());
        QCOMPARE(w.frameMargins(), QMargins());
        w.setBackgroundImage(QStringLiteral("/no/such/file.png"));
        w.resize(60, 40);
        const QImage img = shown(&w); // paints without a crash, colour still used
        QCOMPARE(img.pixelColor(30, 20), w.backgroundColor());
    }

    void escapeCloses()
    {
        auto *w = new ZPopupWindow;
        auto *recorder = new KeyRecorder;
        w->rootWidget()->addItem(recorder);
        w->resize(200, 120);
        w->show();
        QVERIFY(QTest::qWaitForWindowActive(w));
        w->scene()->setFocusItem(recorder);
        QPointer<ZPopupWindow> guard(w);
        QSignalSpy closing(w, &ZWindow::aboutToClose);
        QTest::keyClick(w, Qt::Key_A);
        QCOMPARE(recorder->keys, QList<int>{Qt::Key_A});
        QTest::keyClick(w, Qt::Key_Escape);
        QCOMPARE(closing.count(), 1);
        QCOMPARE(recorder->keys, QList<int>{Qt::Key_A}); // Escape never reaches the scene
        QVERIFY(!w->isVisible());
        QTRY_VERIFY(guard.isNull()); // delete-on-close, later
    }

    void escapeWithoutClosing()
    {
        HookWindow w;
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        w.setCloseOnEscape(false);
        auto *recorder = new KeyRecorder;
        w.rootWidget()->addItem(recorder);
        w.resize(200, 120);
        w.show();
        QVERIFY(QTest::qWaitForWindowActive(&w));
        w.scene()->setFocusItem(recorder);
        QTest::keyClick(&w, Qt::Key_Escape, Qt::ShiftModifier | Qt::KeypadModifier);
        QVERIFY(w.isVisible());
        QCOMPARE(w.escCalls, 1);
        QCOMPARE(w.escModifiers, Qt::KeyboardModifiers(Qt::ShiftModifier));
        QVERIFY(recorder->keys.isEmpty());
    }

    void enterIsSignalledAndPassedOn_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<Qt::KeyboardModifiers>("signalled");
        QTest::newRow("return") << int(Qt::Key_Return) << Qt::KeyboardModifiers() << Qt::KeyboardModifiers();
        QTest::newRow("keypad enter") << int(Qt::Key_Enter) << Qt::KeyboardModifiers(Qt::KeypadModifier)
                                      << Qt::KeyboardModifiers();
        QTest::newRow("ctrl+return") << int(Qt::Key_Return) << Qt::KeyboardModifiers(Qt::ControlModifier)
                                     << Qt::KeyboardModifiers(Qt::ControlModifier);
    }
    void enterIsSignalledAndPassedOn()
    {
        QFETCH(int, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QFETCH(Qt::KeyboardModifiers, signalled);
        ZPopupWindow w;
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        auto *recorder = new KeyRecorder;
        w.rootWidget()->addItem(recorder);
        w.resize(200, 120);
        w.show();
        QVERIFY(QTest::qWaitForWindowActive(&w));
        w.scene()->setFocusItem(recorder);
        QSignalSpy enter(&w, &ZPopupWindow::enterPressed);
        QTest::keyClick(&w, Qt::Key(key), modifiers);
        QCOMPARE(enter.count(), 1);
        QCOMPARE(enter.at(0).at(0).value<Qt::KeyboardModifiers>(), signalled);
        QCOMPARE(recorder->keys, QList<int>{key});
        QVERIFY(w.isVisible());
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
        auto *w = new ZPopupWindow;
        QPointer<ZPopupWindow> guard(w);
        w->setAttribute(Qt::WA_DeleteOnClose, false);
        w->setCloseOnF4(closeOnF4);
        w->resize(100, 80);
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w));
        // What the window manager's Alt+F4 turns into: a close request from
        // the window system, a spontaneous close event.
        QCloseEvent request;
        QSpontaneKeyEvent::setSpontaneous(&request);
        qApp->notify(w, &request); // sendEvent() would make it non-spontaneous
        // Accepting it is what lets the window system's close go ahead.
        QCOMPARE(request.isAccepted(), closeOnF4);
        if (!closeOnF4) {
            QVERIFY(w->isVisible());
            // Closing the native window from code is no request: it closes.
            w->windowHandle()->close();
            QVERIFY(!w->isVisible());
        }
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w));
        QVERIFY(w->close()); // code may always close
        QVERIFY(!w->isVisible());
        delete w;
    }

    void dragMovesTheWindow()
    {
        ZPopupWindow w;
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        w.resize(200, 120);
        w.move(100, 100);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        const QPoint start = w.pos();
        // The root widget answers WindowMove.
        QTest::mousePress(w.viewport(), Qt::LeftButton, {}, QPoint(60, 50));
        QTest::mouseMove(w.viewport(), QPoint(90, 70));
        QCOMPARE(w.pos(), start + QPoint(30, 20));
        QTest::mouseMove(w.viewport(), QPoint(70, 60)); // relative to the moved window
        QCOMPARE(w.pos(), start + QPoint(40, 30));
        QTest::mouseRelease(w.viewport(), Qt::LeftButton, {}, QPoint(70, 60));
        const QPoint end = w.pos();
        QTest::mouseMove(w.viewport(), QPoint(20, 20));
        QCOMPARE(w.pos(), end);
    }

    void noDrag_data()
    {
        QTest::addColumn<QString>("why");
        QTest::newRow("widget says Nothing") << QStringLiteral("nothing");
        QTest::newRow("dragWindow off") << QStringLiteral("off");
        QTest::newRow("maximised") << QStringLiteral("maximised");
        QTest::newRow("right button") << QStringLiteral("right");
    }
    void noDrag()
    {
        QFETCH(QString, why);
        ZPopupWindow w;
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        auto *still = new ZSpacer;
        still->setDragPolicy(ZWidget::Nothing);
        still->setFixSize(QSizeF(80, 60));
        w.rootWidget()->addItem(still);
        w.resize(200, 120);
        w.move(100, 100);
        if (why == QLatin1String("off"))
            w.setDragWindow(false);
        if (why == QLatin1String("maximised"))
            w.showMaximized();
        else
            w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        w.rootWidget()->activateLayout();
        const QPoint inside = w.mapFromScene(still->mapToScene(still->rect().center()));
        const QPoint onRoot = w.mapFromScene(w.rootWidget()->mapToScene(w.rootWidget()->rect().bottomRight()))
                              - QPoint(5, 5);
        const QPoint at = why == QLatin1String("nothing") ? inside : onRoot;
        const Qt::MouseButton button = why == QLatin1String("right") ? Qt::RightButton : Qt::LeftButton;
        const QPoint start = w.pos();
        QTest::mousePress(w.viewport(), button, {}, at);
        QTest::mouseMove(w.viewport(), at + QPoint(25, 15));
        QTest::mouseRelease(w.viewport(), button, {}, at + QPoint(25, 15));
        QCOMPARE(w.pos(), start);
    }

    void borderResizes_data()
    {
        QTest::addColumn<QPoint>("press"); // relative to the visible frame's corners, see below
        QTest::addColumn<QPoint>("delta");
        QTest::addColumn<QRect>("expected"); // relative to the start geometry
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
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        w.setResizable(true);
        w.setGeometry(100, 100, 300, 200);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QCOMPARE(w.frameMargins(), QMargins(9, 9, 9, 9));
        QTest::mousePress(w.viewport(), Qt::LeftButton, {}, press);
        QTest::mouseMove(w.viewport(), press + delta);
        QTest::mouseRelease(w.viewport(), Qt::LeftButton, {}, press + delta);
        QCOMPARE(w.geometry(), expected);
    }

    void borderNeedsResizable()
    {
        ZPopupWindow w;
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        w.setGeometry(100, 100, 300, 200);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        // Not resizable: the corner is client area, so the press drags instead.
        QTest::mousePress(w.viewport(), Qt::LeftButton, {}, QPoint(289, 189));
        QTest::mouseMove(w.viewport(), QPoint(299, 199));
        QTest::mouseRelease(w.viewport(), Qt::LeftButton, {}, QPoint(299, 199));
        QCOMPARE(w.size(), QSize(300, 200));
        QCOMPARE(w.pos(), QPoint(110, 110));
    }

    void borderCursor()
    {
        ZPopupWindow w;
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        w.setResizable(true);
        w.setGeometry(100, 100, 300, 200);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QTest::mouseMove(w.viewport(), QPoint(289, 189));
        QCOMPARE(w.viewport()->cursor().shape(), Qt::SizeFDiagCursor);
        QTest::mouseMove(w.viewport(), QPoint(150, 10));
        QCOMPARE(w.viewport()->cursor().shape(), Qt::SizeVerCursor);
        QTest::mouseMove(w.viewport(), QPoint(150, 100));
        QCOMPARE(w.viewport()->cursor().shape(), Qt::ArrowCursor);
    }

    void maximiseAndRestore()
    {
        ZPopupWindow w;
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        w.setGeometry(120, 90, 300, 200);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        const QRect normal = w.geometry();
        const QRect work = w.screen()->availableGeometry();
        w.showMaximizeOrRestore();
        QVERIFY(w.isWindowMaximized());
        QCOMPARE(w.geometry(), ZPopupWindow::maximizedGeometry(work, w.frameMargins(), w.borderPixel(), QSize()));
        // The visible frame less the border covers the work area exactly.
        QCOMPARE(w.geometry().marginsRemoved(w.frameMargins()).adjusted(3, 3, -3, -3), work);
        w.showMaximizeOrRestore();
        QVERIFY(!w.isWindowMaximized());
        QCOMPARE(w.geometry(), normal);
    }

    void maximiseRespectsMaximumSize()
    {
        ZPopupWindow w;
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        w.setMaximumSize(QSize(400, 300));
        w.showMaximized();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QCOMPARE(w.size(), QSize(400, 300));
    }

    void moveCenterOnPoint()
    {
        ZPopupWindow w;
        w.resize(219, 119); // odd visible sizes have an exact centre
        const QRect work = w.screen()->availableGeometry();
        w.moveCenter(work.center());
        QCOMPARE(w.geometry().marginsRemoved(w.frameMargins()).center(), work.center());
        w.moveCenter(work.topLeft());
        QCOMPARE(w.geometry().marginsRemoved(w.frameMargins()).topLeft(), work.topLeft());
        w.moveCenter(work.bottomRight() + QPoint(500, 500));
        QCOMPARE(w.geometry().marginsRemoved(w.frameMargins()).bottomRight(), work.bottomRight());
    }

    void moveCenterOnWidget()
    {
        ZPopupWindow owner;
        owner.setAttribute(Qt::WA_DeleteOnClose, false);
        owner.setGeometry(50, 60, 400, 300);
        owner.show();
        QVERIFY(QTest::qWaitForWindowExposed(&owner));
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

    void themeColourFollows()
    {
        const QColor old = ZTheme::themeColor();
        ZPopupWindow w;
        w.setBackgroundColor(Qt::red);
        ZTheme::setThemeColor(QColor(20, 140, 60));
        QTRY_COMPARE(w.backgroundColor(), ZTheme::themeColor());
        ZTheme::setThemeColor(old);
        QCoreApplication::processEvents();
    }

    void opaqueWindowIsCutToTheMask()
    {
        ZPopupWindow w;
        w.resize(120, 80);
        QVERIFY(w.mask().isEmpty()); // translucent: no shape needed
        w.setAttribute(Qt::WA_DeleteOnClose, false);
        w.setTranslucent(false);
        QVERIFY(!w.testAttribute(Qt::WA_TranslucentBackground));
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        const QRegion shape = w.mask();
        QVERIFY(!shape.isEmpty());
        QVERIFY(shape.contains(QPoint(60, 40)));
        QVERIFY(!shape.contains(QPoint(2, 2)));    // shadow band
        QVERIFY(!shape.contains(QPoint(9, 9)));    // rounded corner
        QVERIFY(shape.contains(QPoint(60, 9)));    // top of the visible frame
        w.resize(200, 100);
        QVERIFY(w.mask().contains(QPoint(180, 50)));
        w.setHasFrame(false);
        QVERIFY(w.mask().isEmpty());
    }

    void paintsFrameBackgroundAndContent()
    {
        ZPopupWindow w;
        w.setBackgroundColor(QColor(240, 244, 250));
        w.resize(260, 160);
        auto *label = new ZLabel;
        label->setText(QStringLiteral("Pop-up window"));
        label->setFixHeight(30);
        label->setTextMargins(QMargins(12, 0, 0, 0));
        w.rootWidget()->addItem(label);
        auto *panel = new ZSpacer;
        panel->setBackgroundColor(QColor(255, 255, 255));
        w.rootWidget()->setMargins(QMargins(0, 0, 0, 0));
        w.rootWidget()->addItem(panel);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        const QImage img = shown(&w);
        savePng(img, QStringLiteral("popupwindow"));

        // Shadow band: nearly transparent at the outer corner, a soft shadow
        // beside the frame.
        QVERIFY(qAlpha(img.pixel(0, 0)) < 8);
        QVERIFY(qAlpha(img.pixel(130, 3)) > 0);
        QVERIFY(qAlpha(img.pixel(130, 3)) < 128);
        // Inside the frame: opaque background, then the white panel below
        // the label.
        QCOMPARE(img.pixelColor(130, 14), QColor(240, 244, 250));
        QCOMPARE(img.pixelColor(130, 120), QColor(255, 255, 255));
        // The rounded corner of the visible frame is cut out.
        QVERIFY(qAlpha(img.pixel(9, 9)) < 255);
        // The frame's outline darkens the first row of the visible part.
        const QColor edge = img.pixelColor(130, 9);
        QVERIFY(edge.red() < 240);

        w.setHasFrame(false);
        const QImage plain = shown(&w);
        QCOMPARE(plain.pixelColor(0, 0), QColor(240, 244, 250));
    }

    void backgroundImageReplacesTheColour()
    {
        QImage tile(4, 4, QImage::Format_ARGB32);
        tile.fill(QColor(10, 200, 30));
        tile.save(m_dir.filePath(QStringLiteral("background.png")));
        ZPopupWindow w;
        w.resize(100, 80);
        w.setBackgroundImage(QStringLiteral("popuptest:background.png"));
        const QImage img = shown(&w);
        QCOMPARE(img.pixelColor(50, 40), QColor(10, 200, 30));
        QVERIFY(qAlpha(img.pixel(1, 1)) < 8);
    }
};

QTEST_MAIN(tst_ZPopupWindow)
#include "tst_zpopupwindow.moc"
