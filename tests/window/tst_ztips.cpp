// Tips: the bubble and its arrow, the text bubble, the tool tip's triggers.

#include "common/dialogtestutil.h"

#include "zbubbletip.h"
#include "zlabel.h"
#include "zpopupwindow.h"
#include "zspacer.h"
#include "ztextbubbletip.h"
#include "ztextitem.h"
#include "ztooltip.h"

#include <QPointer>
#include <QScreen>
#include <QSignalSpy>
#include <QtTest>

#include <cmath>

using Direction = ZFollowWindow::Direction;

namespace {

// A real window holding targets at known places.
struct Host
{
    ZPopupWindow window;

    Host()
    {
        window.setAttribute(Qt::WA_DeleteOnClose, false);
        window.setGeometry(200, 150, 400, 300);
        window.rootWidget()->setLayoutType(ZWidget::None);
    }
    ZSpacer *addTarget(const QRectF &geometry, const QString &tip = QString())
    {
        auto *t = new ZSpacer;
        window.rootWidget()->addItem(t);
        t->setGeometry(geometry);
        t->setToolTip(tip);
        return t;
    }
    bool show()
    {
        window.show();
        return QTest::qWaitForWindowExposed(&window);
    }
    QPoint pointOf(ZWidget *w) const { return window.mapFromScene(w->mapToScene(w->rect().center())); }
};

using dialogtest::picture;

} // namespace

class tst_ZTips : public QObject
{
    Q_OBJECT

private slots:
    void arrowEdge()
    {
        // The arrow is on the side facing the target.
        for (Direction d : {ZFollowWindow::TopLeft, ZFollowWindow::TopCenter, ZFollowWindow::TopRight})
            QCOMPARE(ZBubbleTip::arrowEdgeFor(d), Qt::Edges(Qt::BottomEdge));
        for (Direction d : {ZFollowWindow::BottomLeft, ZFollowWindow::BottomCenter, ZFollowWindow::BottomRight,
                            ZFollowWindow::UnderCursor})
            QCOMPARE(ZBubbleTip::arrowEdgeFor(d), Qt::Edges(Qt::TopEdge));
        for (Direction d : {ZFollowWindow::LeftTop, ZFollowWindow::LeftCenter, ZFollowWindow::LeftBottom})
            QCOMPARE(ZBubbleTip::arrowEdgeFor(d), Qt::Edges(Qt::RightEdge));
        for (Direction d : {ZFollowWindow::RightTop, ZFollowWindow::RightCenter, ZFollowWindow::RightBottom})
            QCOMPARE(ZBubbleTip::arrowEdgeFor(d), Qt::Edges(Qt::LeftEdge));
        QCOMPARE(ZBubbleTip::arrowEdgeFor(ZFollowWindow::Custom), Qt::Edges());
    }

    void bubbleMarginsAndBounds()
    {
        ZBubbleTip tip;
        // The content sits below the arrow, inside the shadow band.
        QCOMPARE(tip.arrowEdge(), Qt::Edges(Qt::TopEdge));
        const QMargins m = tip.sceneMargins();
        QCOMPARE(m.top() - m.bottom(), 7 - int(std::ceil(tip.shadowOffset().y())));
        tip.setShadowBlur(-3);
        QCOMPARE(tip.shadowBlur(), 0.0);
        tip.setShadowBlur(qQNaN());
        QCOMPARE(tip.shadowBlur(), 0.0);
        tip.setShadowBlur(1e9);
        QCOMPARE(tip.shadowBlur(), 64.0);
        tip.setShadowOffset(QPointF(qInf(), -500));
        QCOMPARE(tip.shadowOffset(), QPointF(0, -64));
        tip.setShadow(false);
        QCOMPARE(tip.sceneMargins(), QMargins(2, 2 + 7, 2, 2));
        tip.setDirection(ZFollowWindow::LeftCenter);
        QCOMPARE(tip.sceneMargins(), QMargins(2, 2, 2 + 7, 2));
        tip.setPenColor(QColor());
        tip.resize(60, 40);
        picture(&tip); // an invalid pen draws no outline, and nothing breaks
    }

    void arrowPointsAtTheTarget_data()
    {
        QTest::addColumn<Direction>("direction");
        QTest::addColumn<QRectF>("target"); // in the host's root
        QTest::addColumn<Qt::Edges>("edge");
        QTest::addColumn<bool>("centred"); // else only over the target: the corner keeps it back
        QTest::newRow("below") << ZFollowWindow::BottomCenter << QRectF(150, 100, 80, 30) << Qt::Edges(Qt::TopEdge)
                               << true;
        QTest::newRow("above") << ZFollowWindow::TopLeft << QRectF(150, 100, 80, 30) << Qt::Edges(Qt::BottomEdge)
                               << true;
        QTest::newRow("left") << ZFollowWindow::LeftCenter << QRectF(250, 100, 80, 30) << Qt::Edges(Qt::RightEdge)
                              << true;
        QTest::newRow("right") << ZFollowWindow::RightBottom << QRectF(20, 100, 80, 60) << Qt::Edges(Qt::LeftEdge)
                               << true;
        QTest::newRow("narrow target") << ZFollowWindow::BottomLeft << QRectF(150, 100, 20, 20)
                                       << Qt::Edges(Qt::TopEdge) << false;
    }
    void arrowPointsAtTheTarget()
    {
        QFETCH(Direction, direction);
        QFETCH(QRectF, target);
        QFETCH(Qt::Edges, edge);
        QFETCH(bool, centred);
        Host host;
        ZSpacer *t = host.addTarget(target);
        QVERIFY(host.show());
        ZBubbleTip tip;
        tip.setDirection(direction);
        tip.setWindowSize(140, 70);
        tip.setTarget(t);
        tip.show();
        QVERIFY(QTest::qWaitForWindowExposed(&tip));
        QCOMPARE(tip.arrowEdge(), edge);
        // The arrow's apex: the outline's point farthest out on the arrow edge.
        const QPainterPath shape = tip.bubblePath().translated(tip.pos());
        const bool alongX = edge & (Qt::TopEdge | Qt::BottomEdge);
        const qreal sign = (edge & (Qt::TopEdge | Qt::LeftEdge)) ? -1 : 1;
        QPointF apex = shape.elementAt(0);
        for (int i = 1; i < shape.elementCount(); ++i) {
            const QPointF p = shape.elementAt(i);
            if (sign * (alongX ? p.y() - apex.y() : p.x() - apex.x()) > 0)
                apex = p;
        }
        // It touches the target's edge ...
        const QRectF screenTarget = t->rectToScreen();
        const qreal touching = edge == Qt::TopEdge      ? screenTarget.bottom()
                               : edge == Qt::BottomEdge ? screenTarget.top()
                               : edge == Qt::LeftEdge   ? screenTarget.right()
                                                        : screenTarget.left();
        QVERIFY2(std::abs((alongX ? apex.y() : apex.x()) - touching) <= 1.0, qPrintable(QString::number(apex.y())));
        // ... over the target, at its middle unless the bubble's corner is in the way.
        const qreal along = alongX ? apex.x() : apex.y();
        const qreal middle = alongX ? screenTarget.center().x() : screenTarget.center().y();
        QVERIFY(along > (alongX ? screenTarget.left() : screenTarget.top()));
        QVERIFY(along < (alongX ? screenTarget.right() : screenTarget.bottom()));
        if (centred)
            QVERIFY2(std::abs(along - middle) <= 1.0, qPrintable(QString::number(along - middle)));
    }

    void bubbleFlipsAndTheArrowFollows()
    {
        const QRect work = QGuiApplication::primaryScreen()->availableGeometry();
        Host host;
        host.window.setGeometry(work.left() + 100, work.bottom() - 120, 300, 110);
        ZSpacer *t = host.addTarget(QRectF(50, 60, 60, 30));
        QVERIFY(host.show());
        ZBubbleTip tip;
        tip.setWindowSize(120, 60);
        tip.setTarget(t); // BottomCenter: no room below
        tip.show();
        QCOMPARE(tip.placedDirection(), ZFollowWindow::TopCenter);
        QCOMPARE(tip.arrowEdge(), Qt::Edges(Qt::BottomEdge));
        QVERIFY(tip.sceneMargins().bottom() > tip.sceneMargins().top());
        QVERIFY(tip.geometry().bottom() <= t->geometryToScreen().top() + 10);
    }

    void paintsEachOrientation_data()
    {
        QTest::addColumn<Direction>("direction");
        QTest::newRow("below") << ZFollowWindow::BottomCenter;
        QTest::newRow("above") << ZFollowWindow::TopCenter;
        QTest::newRow("left") << ZFollowWindow::LeftCenter;
        QTest::newRow("right") << ZFollowWindow::RightCenter;
    }
    void paintsEachOrientation()
    {
        QFETCH(Direction, direction);
        Host host;
        ZSpacer *t = host.addTarget(QRectF(170, 120, 60, 40));
        QVERIFY(host.show());
        ZTextBubbleTip tip;
        tip.setDirection(direction);
        tip.setText(QStringLiteral("A bubble tip"));
        tip.setTarget(t);
        tip.show();
        QVERIFY(QTest::qWaitForWindowExposed(&tip));
        const QImage img = picture(&tip);
        const QPainterPath path = tip.bubblePath();
        const QPoint middle = path.boundingRect().center().toPoint();
        // Outside the bubble the window is see-through (a faint shadow at
        // most); inside it is the brush, here and at the base of the arrow.
        QVERIFY(qAlpha(img.pixel(0, 0)) < 40);
        const QRectF body = tip.geometry().marginsRemoved(tip.sceneMargins()).translated(-tip.pos());
        QCOMPARE(img.pixelColor(int(body.left()) + 1, int(body.center().y())), tip.brushColor());
        const QRectF bounds = path.boundingRect();
        QPoint arrowBase;
        switch (tip.arrowEdge().toInt()) {
        case Qt::TopEdge: arrowBase = QPoint(middle.x(), int(bounds.top()) + 6); break;
        case Qt::BottomEdge: arrowBase = QPoint(middle.x(), int(bounds.bottom()) - 6); break;
        case Qt::LeftEdge: arrowBase = QPoint(int(bounds.left()) + 6, middle.y()); break;
        default: arrowBase = QPoint(int(bounds.right()) - 6, middle.y()); break;
        }
        QCOMPARE(img.pixelColor(arrowBase), tip.brushColor());
    }

    void shadowIsDrawnOnlyWhenOn()
    {
        ZBubbleTip tip;
        tip.setDirection(ZFollowWindow::Custom); // no arrow
        tip.resize(80, 50);
        const QRectF bounds = tip.bubblePath().boundingRect();
        const QPoint below(int(bounds.center().x()), int(bounds.bottom()) + 3);
        QVERIFY(qAlpha(picture(&tip).pixel(below)) > 0);
        tip.setShadow(false);
        tip.resize(80, 50);
        const QRectF plain = tip.bubblePath().boundingRect();
        QCOMPARE(qAlpha(picture(&tip).pixel(int(plain.center().x()), int(plain.bottom()) + 1)), 0);
    }

    void textBubbleSizesToItsText()
    {
        ZTextBubbleTip tip;
        QVERIFY(tip.labelObject());
        QVERIFY(tip.textObject());
        tip.setText(QStringLiteral("Short"));
        const QSize shortSize = tip.size();
        tip.setText(QStringLiteral("A much longer text for the same tip"));
        QVERIFY(tip.width() > shortSize.width());
        QCOMPARE(tip.height(), shortSize.height());
        QCOMPARE(tip.labelObject()->text(), tip.text());
        QVERIFY(tip.labelObject()->isVisible());
        QVERIFY(!tip.textObject()->isVisible());
        tip.setTextWidth(120);
        QVERIFY(tip.textObject()->isVisible());
        QVERIFY(!tip.labelObject()->isVisible());
        const QMargins rm = tip.rootWidget()->margins();
        const QMargins sm = tip.sceneMargins();
        QCOMPARE(tip.width(), 120 + rm.left() + rm.right() + sm.left() + sm.right());
        QVERIFY(tip.height() > shortSize.height()); // wrapped onto more lines
        QCOMPARE(tip.textObject()->toText(), tip.text());
        tip.setTextWidth(-5);
        QCOMPARE(tip.textWidth(), 0);
        QVERIFY(tip.labelObject()->isVisible());
    }

    void orientation_data()
    {
        QTest::addColumn<Qt::Orientation>("orientation");
        QTest::addColumn<Direction>("direction");
        QTest::newRow("vertical") << Qt::Vertical << ZFollowWindow::BottomCenter;
        QTest::newRow("horizontal") << Qt::Horizontal << ZFollowWindow::RightCenter;
    }
    void orientation()
    {
        QFETCH(Qt::Orientation, orientation);
        QFETCH(Direction, direction);
        Host host;
        ZSpacer *t = host.addTarget(QRectF(100, 100, 50, 30));
        QVERIFY(host.show());
        ZTextBubbleTip tip;
        tip.setText(QStringLiteral("Which side?"));
        tip.setOrientation(orientation == Qt::Vertical ? Qt::Horizontal : Qt::Vertical);
        tip.setOrientation(orientation);
        QCOMPARE(tip.orientation(), orientation);
        QCOMPARE(tip.direction(), direction);
        tip.setTarget(t);
        tip.show();
        const QRect target = t->geometryToScreen();
        if (orientation == Qt::Vertical)
            QVERIFY(tip.geometry().top() > target.center().y());
        else
            QVERIFY(tip.geometry().left() > target.center().x());
    }

    void elapseCountdown()
    {
        Host host;
        ZSpacer *t = host.addTarget(QRectF(100, 100, 50, 30));
        QVERIFY(host.show());
        ZTextBubbleTip tip;
        tip.setText(QStringLiteral("Going soon"));
        tip.setTarget(t);
        tip.setElapseTime(60);
        tip.show();
        QVERIFY(tip.isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(!tip.isVisible(), 2000);
        // The mouse over the tip holds the countdown; leaving starts it afresh.
        tip.show();
        QEvent enter(QEvent::Enter);
        QCoreApplication::sendEvent(&tip, &enter);
        QTest::qWait(150);
        QVERIFY(tip.isVisible());
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&tip, &leave);
        QTRY_VERIFY_WITH_TIMEOUT(!tip.isVisible(), 2000);
        // No elapse time: stays.
        tip.setElapseTime(-1);
        QCOMPARE(tip.elapseTime(), 0);
        tip.show();
        QTest::qWait(100);
        QVERIFY(tip.isVisible());
    }

    void textBubbleClick()
    {
        Host host;
        ZSpacer *t = host.addTarget(QRectF(100, 100, 50, 30));
        QVERIFY(host.show());
        ZTextBubbleTip tip;
        tip.setText(QStringLiteral("Click me"));
        tip.setTarget(t);
        tip.show();
        QVERIFY(QTest::qWaitForWindowExposed(&tip));
        const ZFollowWindow::HideFlags flags = tip.hideFlags();
        tip.setHideFlags({});
        QSignalSpy clicked(&tip, &ZTextBubbleTip::clicked);
        QTest::mouseClick(tip.viewport(), Qt::RightButton, {}, tip.rect().center());
        QCOMPARE(clicked.count(), 0);
        QTest::mouseClick(tip.viewport(), Qt::LeftButton, {}, tip.rect().center());
        QCOMPARE(clicked.count(), 1);
        QCoreApplication::processEvents();
        QVERIFY(tip.isVisible());
        // With the default hide flags the click also hides the tip.
        tip.setHideFlags(flags);
        QTest::mouseClick(tip.viewport(), Qt::LeftButton, {}, tip.rect().center());
        QCOMPARE(clicked.count(), 2);
        QTRY_VERIFY(!tip.isVisible());
    }

    void hoverShowsAfterTheDelay()
    {
        Host host;
        ZSpacer *a = host.addTarget(QRectF(20, 20, 60, 30), QStringLiteral("First target"));
        ZSpacer *b = host.addTarget(QRectF(120, 20, 60, 30), QStringLiteral("Second target"));
        ZSpacer *none = host.addTarget(QRectF(220, 20, 60, 30));
        QVERIFY(host.show());
        ZToolTip tip;
        tip.setDelay(60);
        tip.setTimeout(0);
        tip.addTarget(a);
        tip.addTarget(b);
        tip.addTarget(b); // once
        tip.addTarget(none);
        QCOMPARE(tip.targets(), (QList<ZWidget *>{a, b, none}));
        QTest::mouseMove(host.window.viewport(), host.pointOf(a));
        QVERIFY(!tip.isVisible());
        QTRY_VERIFY(tip.isVisible());
        QCOMPARE(tip.target(), a);
        QCOMPARE(tip.label()->text(), QStringLiteral("First target"));
        // To another target while shown: at once.
        QTest::mouseMove(host.window.viewport(), host.pointOf(b));
        QVERIFY(tip.isVisible());
        QCOMPARE(tip.target(), b);
        QCOMPARE(tip.label()->text(), QStringLiteral("Second target"));
        // A target without a tip text shows nothing.
        QTest::mouseMove(host.window.viewport(), host.pointOf(none));
        QVERIFY(!tip.isVisible());
        QTest::qWait(150);
        QVERIFY(!tip.isVisible());
        // Off the targets before the delay ran out: nothing.
        QTest::mouseMove(host.window.viewport(), host.pointOf(a));
        QTest::mouseMove(host.window.viewport(), QPoint(300, 250));
        QTest::qWait(150);
        QVERIFY(!tip.isVisible());
        // A press hides it.
        QTest::mouseMove(host.window.viewport(), host.pointOf(b));
        QTRY_VERIFY(tip.isVisible());
        QTest::mousePress(host.window.viewport(), Qt::LeftButton, {}, host.pointOf(b));
        QVERIFY(!tip.isVisible());
        QTest::mouseRelease(host.window.viewport(), Qt::LeftButton, {}, host.pointOf(b));
    }

    void timeoutHidesTheTip()
    {
        Host host;
        ZSpacer *a = host.addTarget(QRectF(20, 20, 60, 30), QStringLiteral("Brief"));
        QVERIFY(host.show());
        ZToolTip tip;
        tip.setDelay(0);
        tip.setTimeout(80);
        tip.addTarget(a);
        QSignalSpy shown(&tip, &ZFollowWindow::aboutToShow); // however late this test gets to look
        QTest::mouseMove(host.window.viewport(), host.pointOf(a));
        QTRY_COMPARE(shown.count(), 1);
        QTRY_VERIFY_WITH_TIMEOUT(!tip.isVisible(), 2000);
        QCOMPARE(shown.count(), 1);
        tip.setTimeout(-4);
        QCOMPARE(tip.timeout(), 0);
        tip.setDelay(-1);
        QCOMPARE(tip.delay(), 0);
    }

    void clickTrigger()
    {
        Host host;
        ZSpacer *a = host.addTarget(QRectF(20, 20, 60, 30), QStringLiteral("Clicked"));
        QVERIFY(host.show());
        ZToolTip tip;
        tip.setTrigger(ZToolTip::ClickTrigger);
        tip.setTimeout(0);
        tip.addTarget(a);
        QTest::mouseMove(host.window.viewport(), host.pointOf(a));
        QTest::qWait(50);
        QVERIFY(!tip.isVisible()); // hovering does nothing
        QTest::mouseClick(host.window.viewport(), Qt::LeftButton, {}, host.pointOf(a));
        QVERIFY(tip.isVisible());
        QTest::mouseClick(host.window.viewport(), Qt::LeftButton, {}, host.pointOf(a));
        QVERIFY(!tip.isVisible());
        QTest::mouseClick(host.window.viewport(), Qt::LeftButton, {}, host.pointOf(a));
        QVERIFY(tip.isVisible());
        QTest::mouseClick(host.window.viewport(), Qt::LeftButton, {}, QPoint(300, 250));
        QVERIFY(!tip.isVisible());
        tip.setTrigger(ZToolTip::TipTrigger(7));
        QCOMPARE(tip.trigger(), ZToolTip::ClickTrigger);
    }

    void manualTriggerAndTargets()
    {
        Host host;
        ZSpacer *a = host.addTarget(QRectF(20, 20, 60, 30), QStringLiteral("Manual"));
        QVERIFY(host.show());
        ZToolTip tip;
        tip.setTrigger(ZToolTip::ManualTrigger);
        tip.setDelay(0);
        tip.addTarget(a);
        QTest::mouseMove(host.window.viewport(), host.pointOf(a));
        QTest::qWait(50);
        QVERIFY(!tip.isVisible());
        tip.showTip(a);
        QVERIFY(tip.isVisible());
        QCOMPARE(tip.target(), a);
        tip.removeTarget(a);
        QVERIFY(!tip.isVisible());
        QVERIFY(tip.targets().isEmpty());
        tip.showTip(nullptr);
        QVERIFY(!tip.isVisible());
        // Hidden with its target.
        tip.showTip(a);
        QVERIFY(tip.isVisible());
        a->hide();
        QTRY_VERIFY(!tip.isVisible());
    }

    void destroyedTargetsDropOut()
    {
        Host host;
        ZSpacer *a = host.addTarget(QRectF(20, 20, 60, 30), QStringLiteral("Gone"));
        ZSpacer *b = host.addTarget(QRectF(120, 20, 60, 30), QStringLiteral("Stays"));
        QVERIFY(host.show());
        ZToolTip tip;
        tip.setDelay(0);
        tip.addTarget(a);
        tip.addTarget(b);
        tip.addTarget(nullptr);
        delete a;
        QCOMPARE(tip.targets(), QList<ZWidget *>{b});
        QTest::mouseMove(host.window.viewport(), QPoint(50, 35));
        QTest::mouseMove(host.window.viewport(), host.pointOf(b));
        QTRY_VERIFY(tip.isVisible());
        tip.removeAllTarget();
        QVERIFY(!tip.isVisible());
        QVERIFY(tip.targets().isEmpty());
        QTest::mouseMove(host.window.viewport(), QPoint(150, 30));
        QTest::qWait(30);
        QVERIFY(!tip.isVisible());
    }

    void tipStyles()
    {
        Host host;
        ZSpacer *a = host.addTarget(QRectF(20, 20, 60, 30), QStringLiteral("A tool tip"));
        QVERIFY(host.show());
        // The text tip is shared; it paints a white body in a darker outline, with rounded corners.
        ZToolTip *shared = ZToolTip::textTipInstance();
        QVERIFY(shared && shared->label() && ZToolTip::textTipInstance() == shared);
        ZToolTip tip;
        tip.showTip(a);
        QVERIFY(QTest::qWaitForWindowExposed(&tip));
        const QImage img = picture(&tip);
        QCOMPARE(img.pixelColor(img.width() / 2, 2), QColor(255, 255, 255));
        QVERIFY(img.pixelColor(img.width() / 2, 0).lightness() < 250);
        QVERIFY(qAlpha(img.pixel(0, 0)) < 255);
        // A custom tip shows its own content at its own size, without a tip text.
        ZToolTip custom(ZToolTip::CustomTip);
        QVERIFY(!custom.label());
        auto *content = new ZSpacer;
        content->setFixSize(QSizeF(50, 20));
        custom.rootWidget()->addItem(content);
        custom.setWindowSize(60, 30);
        a->setToolTip(QString());
        custom.showTip(a);
        QVERIFY(custom.isVisible());
        QCOMPARE(custom.size(), QSize(60, 30));
    }
};

QTEST_MAIN(tst_ZTips)
#include "tst_ztips.moc"
