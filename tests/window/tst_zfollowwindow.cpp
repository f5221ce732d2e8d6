// Follow windows: placement by direction with flipping at the work area's
// edges, and hiding by the hide flags.

#include "zfollowwindow.h"
#include "zpopupwindow.h"
#include "zspacer.h"

#include <QPointer>
#include <QScreen>
#include <QSignalSpy>
#include <QtTest>

using Direction = ZFollowWindow::Direction;

namespace {

// A real window holding one target widget at a known place.
struct Host
{
    ZPopupWindow window;
    ZSpacer *target = nullptr;

    Host()
    {
        window.setAttribute(Qt::WA_DeleteOnClose, false);
        window.setGeometry(100, 100, 300, 200);
        window.rootWidget()->setLayoutType(ZWidget::None);
        target = new ZSpacer;
        window.rootWidget()->addItem(target);
        target->setGeometry(QRectF(50, 40, 60, 30));
    }
    bool show()
    {
        window.show();
        return QTest::qWaitForWindowExposed(&window);
    }
    // The target's middle in the host's viewport.
    QPoint targetPoint() const { return window.mapFromScene(target->mapToScene(target->rect().center())); }
};

} // namespace

class tst_ZFollowWindow : public QObject
{
    Q_OBJECT

private slots:
    void placement_data()
    {
        QTest::addColumn<Direction>("direction");
        QTest::addColumn<QRectF>("target");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QPointF>("offset");
        QTest::addColumn<QRect>("area");
        QTest::addColumn<QPoint>("expected");
        QTest::addColumn<Direction>("used");
        // T = 300,200 100x40 (right 400, bottom 240, centre 350,220); window 80x30.
        const QRectF t(300, 200, 100, 40);
        const QSize s(80, 30);
        const QRect area(0, 0, 800, 600);
        const auto row = [&](const char *name, Direction d, QPoint at) {
            QTest::newRow(name) << d << t << s << QPointF() << area << at << d;
        };
        row("TopLeft", ZFollowWindow::TopLeft, QPoint(300, 170));
        row("TopCenter", ZFollowWindow::TopCenter, QPoint(310, 170));
        row("TopRight", ZFollowWindow::TopRight, QPoint(320, 170));
        row("BottomLeft", ZFollowWindow::BottomLeft, QPoint(300, 240));
        row("BottomCenter", ZFollowWindow::BottomCenter, QPoint(310, 240));
        row("BottomRight", ZFollowWindow::BottomRight, QPoint(320, 240));
        row("LeftTop", ZFollowWindow::LeftTop, QPoint(220, 200));
        row("LeftCenter", ZFollowWindow::LeftCenter, QPoint(220, 205));
        row("LeftBottom", ZFollowWindow::LeftBottom, QPoint(220, 210));
        row("RightTop", ZFollowWindow::RightTop, QPoint(400, 200));
        row("RightCenter", ZFollowWindow::RightCenter, QPoint(400, 205));
        row("RightBottom", ZFollowWindow::RightBottom, QPoint(400, 210));
        row("Custom", ZFollowWindow::Custom, QPoint(300, 200));
        QTest::newRow("offset") << ZFollowWindow::BottomLeft << t << s << QPointF(5, 4) << area
                                << QPoint(305, 244) << ZFollowWindow::BottomLeft;
        QTest::newRow("fractional centre rounds") << ZFollowWindow::TopCenter << QRectF(0.5, 100, 10, 10)
                                                  << QSize(4, 5) << QPointF() << area << QPoint(4, 95)
                                                  << ZFollowWindow::TopCenter;

        // Flipping to the opposite side, the offset mirrored across.
        const QRectF top(300, 10, 100, 40);
        QTest::newRow("top flips to bottom") << ZFollowWindow::TopCenter << top << s << QPointF(0, -4) << area
                                             << QPoint(310, 54) << ZFollowWindow::BottomCenter;
        const QRectF bottom(300, 560, 100, 30);
        QTest::newRow("bottom flips to top") << ZFollowWindow::BottomRight << bottom << s << QPointF(3, 2) << area
                                             << QPoint(323, 528) << ZFollowWindow::TopRight;
        const QRectF left(20, 200, 100, 40);
        QTest::newRow("left flips to right") << ZFollowWindow::LeftBottom << left << s << QPointF(-2, 0) << area
                                             << QPoint(122, 210) << ZFollowWindow::RightBottom;
        const QRectF right(690, 200, 100, 40);
        QTest::newRow("right flips to left") << ZFollowWindow::RightTop << right << s << QPointF() << area
                                             << QPoint(610, 200) << ZFollowWindow::LeftTop;
        QTest::newRow("exactly at the edge stays") << ZFollowWindow::TopLeft << QRectF(300, 30, 100, 40) << s
                                                   << QPointF() << area << QPoint(300, 0) << ZFollowWindow::TopLeft;
        QTest::newRow("no room on either side stays")
            << ZFollowWindow::BottomLeft << QRectF(300, 0, 100, 580) << s << QPointF() << area << QPoint(300, 580)
            << ZFollowWindow::BottomLeft;

        // Along the side the window is shifted into the area.
        QTest::newRow("shifted left") << ZFollowWindow::BottomLeft << QRectF(760, 200, 30, 20) << s << QPointF()
                                      << area << QPoint(720, 220) << ZFollowWindow::BottomLeft;
        QTest::newRow("shifted down") << ZFollowWindow::RightCenter << QRectF(100, 0, 20, 10) << s << QPointF()
                                      << area << QPoint(120, 0) << ZFollowWindow::RightCenter;
        QTest::newRow("wider than the area") << ZFollowWindow::BottomCenter << t << QSize(900, 30) << QPointF()
                                             << area << QPoint(0, 240) << ZFollowWindow::BottomCenter;
        QTest::newRow("flipped and shifted")
            << ZFollowWindow::TopLeft << QRectF(780, 5, 20, 20) << s << QPointF() << area << QPoint(720, 25)
            << ZFollowWindow::BottomLeft;
        QTest::newRow("area not at the origin")
            << ZFollowWindow::LeftCenter << QRectF(820, 100, 20, 20) << s << QPointF() << QRect(800, 0, 400, 300)
            << QPoint(840, 95) << ZFollowWindow::RightCenter;

        // The cursor is a zero-size target.
        QTest::newRow("under the cursor") << ZFollowWindow::UnderCursor << QRectF(200, 300, 0, 0) << s
                                          << QPointF(12, 20) << area << QPoint(212, 320)
                                          << ZFollowWindow::BottomLeft;
        QTest::newRow("under the cursor near the bottom")
            << ZFollowWindow::UnderCursor << QRectF(200, 590, 0, 0) << s << QPointF(12, 20) << area
            << QPoint(212, 540) << ZFollowWindow::TopLeft;
        QTest::newRow("Custom is never flipped") << ZFollowWindow::Custom << QRectF(790, 590, 5, 5) << s
                                                 << QPointF(10, 10) << area << QPoint(800, 600)
                                                 << ZFollowWindow::Custom;
        QTest::newRow("no work area") << ZFollowWindow::TopLeft << QRectF(0, 0, 10, 10) << s << QPointF() << QRect()
                                      << QPoint(0, -30) << ZFollowWindow::TopLeft;
    }
    void placement()
    {
        QFETCH(Direction, direction);
        QFETCH(QRectF, target);
        QFETCH(QSize, size);
        QFETCH(QPointF, offset);
        QFETCH(QRect, area);
        QFETCH(QPoint, expected);
        QFETCH(Direction, used);
        Direction taken = ZFollowWindow::Custom;
        QCOMPARE(ZFollowWindow::placement(direction, target, size, offset, area, &taken), expected);
        QCOMPARE(taken, used);
        QCOMPARE(ZFollowWindow::placement(direction, target, size, offset, area), expected);
    }

    // AlwaysHide must hold every bit, as documents name it; unknown directions are refused.
    void enumsAsDocumentsSeeThem()
    {
        const QMetaEnum flags = QMetaEnum::fromType<ZFollowWindow::HideFlags>();
        bool ok = false;
        QCOMPARE(uint(flags.keysToValue("AlwaysHide", &ok)), 4294967295u);
        QVERIFY(ok);
        ZFollowWindow f;
        f.setDirection(ZFollowWindow::RightCenter);
        f.setDirection(Direction(99));
        QCOMPARE(f.direction(), ZFollowWindow::RightCenter);
    }

    void placesNextToTheTarget()
    {
        Host host;
        QVERIFY(host.show());
        ZFollowWindow f;
        f.setWindowSize(80, 30);
        f.setTarget(host.target);
        f.setDirection(ZFollowWindow::BottomLeft);
        f.setPosOffset(2, 3);
        QSignalSpy shown(&f, &ZFollowWindow::aboutToShow);
        QSignalSpy adjusting(&f, &ZFollowWindow::aboutToAdjust);
        f.show();
        QCOMPARE(shown.count(), 1);
        QCOMPARE(adjusting.count(), 1);
        const QRect t = host.target->geometryToScreen();
        QCOMPARE(f.pos(), QPoint(t.left() + 2, t.top() + t.height() + 3));
        QCOMPARE(f.placedDirection(), ZFollowWindow::BottomLeft);
        f.show(); // already visible: nothing again
        QCOMPARE(shown.count(), 1);
        // Follows when the target's window moves.
        host.window.move(150, 130);
        QTRY_COMPARE(f.pos(), host.target->geometryToScreen().bottomLeft() + QPoint(2, 4));
    }

    // A receiver of aboutToAdjust() may place the window itself; without a
    // target the window stays where it is.
    void otherPlacements()
    {
        Host host;
        QVERIFY(host.show());
        ZFollowWindow f;
        f.setWindowSize(80, 30);
        f.move(5, 6);
        f.setTarget(host.target);
        const auto connection = connect(&f, &ZFollowWindow::aboutToAdjust, &f, [](QWidget *w, bool *handled) {
            w->move(40, 50);
            *handled = true;
        });
        f.show();
        QCOMPARE(f.pos(), QPoint(40, 50));
        disconnect(connection);
        f.setTarget(nullptr);
        f.move(33, 44);
        QSignalSpy adjusting(&f, &ZFollowWindow::aboutToAdjust);
        f.resetGeometry();
        QCOMPARE(f.pos(), QPoint(33, 44));
        QCOMPARE(adjusting.count(), 0);
    }

    void destroyedTarget()
    {
        auto host = std::make_unique<Host>();
        QVERIFY(host->show());
        ZFollowWindow f;
        f.setWindowSize(80, 30);
        f.setHideFlags(ZFollowWindow::HideFlags::fromInt(~uint(ZFollowWindow::TargetWindowInactive)));
        f.setTarget(host->target);
        f.show();
        QVERIFY(QTest::qWaitForWindowExposed(&f));
        delete host->target;
        QVERIFY(!f.target());
        const QPoint before = f.pos();
        f.resetGeometry();
        QCOMPARE(f.pos(), before);
        // The whole host going away must not leave dangling filters behind.
        host.reset();
        QCoreApplication::processEvents();
        QVERIFY(f.isVisible());
    }

    void hideFlags_data()
    {
        QTest::addColumn<uint>("flags");
        QTest::addColumn<QString>("event");
        QTest::addColumn<bool>("hides");
        QTest::addColumn<uint>("signalled"); // the flag aboutToHide() names, 0: none
        const auto row = [](const char *name, uint flags, const char *event, bool hides, uint signalled) {
            QTest::newRow(name) << flags << QString::fromLatin1(event) << hides << signalled;
        };
        row("click at target", 1, "pressTarget", true, 1);
        row("click at target, flag off", 4, "pressTarget", false, 0);
        row("click elsewhere", 4, "pressOther", true, 4);
        row("click elsewhere, flag off", 1, "pressOther", false, 0);
        row("click at myself", 2, "pressSelf", true, 2);

        // Rows whose event may move the activation leave TargetWindowInactive
        // off: the host losing the activation to the tip would hide it.
        row("click at myself, flag off", 117, "pressSelf", false, 0);
        row("target window inactive", 8, "deactivateHost", true, 8);
        row("target window inactive, flag off", 7, "deactivateHost", false, 0);
        row("target window resized", 16, "resizeHost", true, 16);
        row("target window resized, flag off", 32, "resizeHost", false, 0);
        row("target window moved", 32, "moveHost", true, 32);
        row("target window moved, flag off", 16, "moveHost", false, 0);
        row("deactivated, 128", 128, "deactivateSelf", true, 128);
        row("deactivated, 64", 64, "deactivateSelf", false, 0);
        row("deactivated, 119", 119, "deactivateSelf", false, 0);
        row("deactivated, 129", 129, "deactivateSelf", true, 128);
        row("deactivated, 256 (no 128 bit)", 256, "deactivateSelf", true, 128);
        row("deactivated, always", 4294967295u, "deactivateSelf", true, 128);
        row("nothing", 0, "pressTarget", false, 0);
    }
    void hideFlags()
    {
        QFETCH(uint, flags);
        QFETCH(QString, event);
        QFETCH(bool, hides);
        QFETCH(uint, signalled);
        Host host;
        QVERIFY(host.show());
        ZFollowWindow f;
        f.setWindowSize(80, 30);
        f.setTarget(host.target);
        f.setHideFlags(ZFollowWindow::HideFlags::fromInt(flags));
        f.show();
        QVERIFY(QTest::qWaitForWindowExposed(&f));
        QList<uint> seen;
        connect(&f, &ZFollowWindow::aboutToHide, &f, [&seen, &f](ZFollowWindow::HideFlag flag, bool *aborted) {
            QVERIFY(aborted && !*aborted);
            QVERIFY(f.isVisible());
            seen.append(uint(flag));
        });
        if (event == QLatin1String("pressTarget") || event == QLatin1String("pressOther")) {
            const QPoint at = event == QLatin1String("pressTarget") ? host.targetPoint() : QPoint(250, 150);
            QTest::mousePress(host.window.viewport(), Qt::LeftButton, {}, at);
            QTest::mouseRelease(host.window.viewport(), Qt::LeftButton, {}, at);
        } else if (event == QLatin1String("pressSelf")) {
            QTest::mouseClick(f.viewport(), Qt::LeftButton, {}, QPoint(10, 10));
        } else if (event == QLatin1String("deactivateHost")) {
            QEvent deactivate(QEvent::WindowDeactivate);
            QCoreApplication::sendEvent(&host.window, &deactivate);
        } else if (event == QLatin1String("deactivateSelf")) {
            QEvent deactivate(QEvent::WindowDeactivate);
            QCoreApplication::sendEvent(&f, &deactivate);
        } else if (event == QLatin1String("resizeHost")) {
            host.window.resize(320, 210);
        } else if (event == QLatin1String("moveHost")) {
            host.window.move(130, 120);
        }
        QCOMPARE(seen.size(), signalled ? 1 : 0);
        if (signalled)
            QCOMPARE(seen.first(), signalled);
        // Hiding waits for the event to finish.
        QVERIFY(f.isVisible());
        QCoreApplication::processEvents();
        QCOMPARE(f.isVisible(), !hides);
    }

    void abortKeepsTheWindowOpen()
    {
        Host host;
        QVERIFY(host.show());
        ZFollowWindow f;
        f.setWindowSize(80, 30);
        f.setTarget(host.target);
        f.setHideFlags(ZFollowWindow::ClickAtTarget | ZFollowWindow::ClickAtOther);
        f.show();
        int asked = 0;
        connect(&f, &ZFollowWindow::aboutToHide, &f, [&asked](ZFollowWindow::HideFlag, bool *aborted) {
            ++asked;
            *aborted = true;
        });
        QTest::mouseClick(host.window.viewport(), Qt::LeftButton, {}, host.targetPoint());
        QTest::mouseClick(host.window.viewport(), Qt::LeftButton, {}, QPoint(250, 150));
        QCoreApplication::processEvents();
        QCOMPARE(asked, 2);
        QVERIFY(f.isVisible());
    }

    void hidesWithTheTarget_data()
    {
        QTest::addColumn<uint>("flags");
        QTest::addColumn<bool>("hides");
        QTest::newRow("HideAsTargetHidden") << uint(ZFollowWindow::HideAsTargetHidden) << true;
        QTest::newRow("the target-side others") << uint(ZFollowWindow::ClickAtTarget | ZFollowWindow::ClickAtOther
                                                        | ZFollowWindow::TargetWindowResize
                                                        | ZFollowWindow::TargetWindowMoving)
                                                << false;
    }
    void hidesWithTheTarget()
    {
        QFETCH(uint, flags);
        QFETCH(bool, hides);
        Host host;
        QVERIFY(host.show());
        ZFollowWindow f;
        f.setWindowSize(80, 30);
        f.setTarget(host.target);
        f.setHideFlags(ZFollowWindow::HideFlags::fromInt(flags));
        f.show();
        QSignalSpy hiding(&f, &ZFollowWindow::aboutToHide);
        host.target->hide();
        QVERIFY(f.isVisible()); // queued
        QCoreApplication::processEvents();
        QCOMPARE(f.isVisible(), !hides);
        QCOMPARE(hiding.count(), 0); // never asked
    }

    void newTargetMovesTheWatch()
    {
        Host first;
        Host second;
        QVERIFY(first.show());
        QVERIFY(second.show());
        ZFollowWindow f;
        f.setWindowSize(80, 30);
        f.setTarget(first.target);
        f.setHideFlags(ZFollowWindow::AlwaysHide);
        QSignalSpy hiding(&f, &ZFollowWindow::aboutToHide);
        // A hidden window asks nothing.
        QTest::mouseClick(first.window.viewport(), Qt::LeftButton, {}, first.targetPoint());
        first.window.move(140, 140);
        QCOMPARE(hiding.count(), 0);
        f.setHideFlags(ZFollowWindow::ClickAtTarget);
        f.setTarget(second.target);
        f.show();
        QTest::mouseClick(first.window.viewport(), Qt::LeftButton, {}, first.targetPoint());
        QCOMPARE(hiding.count(), 0);
        QTest::mouseClick(second.window.viewport(), Qt::LeftButton, {}, second.targetPoint());
        QCOMPARE(hiding.count(), 1);
        f.setTarget(nullptr);
        f.resetGeometry(); // no target: nothing
    }

    void showsAgain()
    {
        Host host;
        QVERIFY(host.show());
        ZFollowWindow f;
        f.setWindowSize(80, 30);
        f.setTarget(host.target);
        f.setHideFlags(ZFollowWindow::ClickAtMySelf);
        QSignalSpy shown(&f, &ZFollowWindow::aboutToShow);
        for (int i = 0; i < 3; ++i) {
            f.show();
            QVERIFY(QTest::qWaitForWindowExposed(&f));
            QTest::mouseClick(f.viewport(), Qt::LeftButton, {}, QPoint(5, 5));
            QTRY_VERIFY(!f.isVisible());
        }
        QCOMPARE(shown.count(), 3);
    }
};

QTEST_MAIN(tst_ZFollowWindow)
#include "tst_zfollowwindow.moc"
