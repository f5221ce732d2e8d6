// The flip widget: which face shows and how far each is turned at each
// moment of a driven clock.

#include "zflipwidget.h"

#include "common/animationclock.h"

#include <QGraphicsScene>
#include <QtTest>

namespace {

// A 100x60 flip turning in 400 ms, linear.
struct Fixture
{
    AnimationClock clock;
    QGraphicsScene scene;
    ZFlipWidget *flip = new ZFlipWidget;
    ZWidget *front = new ZWidget;
    ZWidget *back = new ZWidget;

    explicit Fixture(bool flipped = false)
    {
        scene.addItem(flip);
        flip->setGeometry(QRectF(0, 0, 100, 60));
        flip->setDuration(400);
        flip->setEasing(QEasingCurve::Linear);
        flip->setFlipped(flipped);
        flip->addItem(front);
        flip->addItem(back);
    }
};

// The x where the face's right edge appears, on its middle line.
qreal rightEdge(ZWidget *face)
{
    return face->mapToParent(QPointF(100, 30)).x();
}

} // namespace

class tst_ZFlipWidget : public QObject
{
    Q_OBJECT

private slots:
    void turning()
    {
        Fixture f;
        auto *extra = new ZWidget; // a third child is kept out of sight
        f.flip->addItem(extra);
        QVERIFY(f.flip->front() == f.front && f.flip->back() == f.back);
        QVERIFY(f.front->isVisible() && !f.back->isVisible() && !extra->isVisible());
        QCOMPARE(f.back->geometry(), QRectF(0, 0, 100, 60));
        QSignalSpy flipped(f.flip, &ZFlipWidget::flippedChanged);
        QSignalSpy done(f.flip, &ZFlipWidget::turnFinished);
        f.flip->setFlipped(true);
        QVERIFY(f.flip->isFlipped() && f.flip->isTurning());
        QCOMPARE(flipped.size(), 1);
        const int steps[] = {20, 20, 60, 100, 100, 100}; // 400 ms in all
        qreal a = 0;
        for (int step : steps) {
            f.clock.step(step);
            a += step * 180.0 / 400;
            QCOMPARE(done.size(), a >= 180 ? 1 : 0);
            QVERIFY(qAbs(f.flip->angle() - a) < 1e-6);
            QCOMPARE(f.front->isVisible(), a < 90);
            QCOMPARE(f.back->isVisible(), a >= 90);
            QVERIFY(!extra->isVisible());
            // The visible face narrows towards 90 degrees about the middle.
            const qreal half = rightEdge(a < 90 ? f.front : f.back) - 50;
            QVERIFY2(qAbs(qAbs(half) - 50 * qAbs(std::cos(qDegreesToRadians(a)))) < 2,
                     qPrintable(QString::number(half)));
        }
    }

    void noAnimation_data()
    {
        QTest::addColumn<QString>("why");
        QTest::newRow("animation off") << "animated";
        QTest::newRow("zero duration") << "duration";
        QTest::newRow("hidden") << "hidden";
        QTest::newRow("disabled") << "disabled";
    }
    void noAnimation()
    {
        QFETCH(QString, why);
        Fixture f;
        if (why == QLatin1String("animated"))
            f.flip->setAnimated(false);
        else if (why == QLatin1String("duration"))
            f.flip->setDuration(0);
        else if (why == QLatin1String("disabled"))
            f.flip->setEnabled(false);
        else
            f.flip->hide();
        QSignalSpy done(f.flip, &ZFlipWidget::turnFinished);
        f.flip->setFlipped(true);
        QVERIFY(!f.flip->isTurning());
        QCOMPARE(f.flip->angle(), 180.0);
        QCOMPARE(done.size(), 1);
        QVERIFY(f.back->isVisibleTo(f.flip) && !f.front->isVisibleTo(f.flip));
        // The back is not mirrored: its right edge is on the right.
        QVERIFY(qAbs(rightEdge(f.back) - 100) < 0.5);
    }

    void interrupted()
    {
        Fixture f;
        f.flip->setFlipped(true);
        f.clock.step(100); // 45 degrees
        f.flip->flip();    // back again: takes 100 ms only
        QVERIFY(!f.flip->isFlipped());
        f.clock.step(50);
        QVERIFY(qAbs(f.flip->angle() - 22.5) < 1e-6);
        f.clock.step(60);
        QCOMPARE(f.flip->angle(), 0.0);
        QVERIFY(!f.flip->isTurning());
        // Hiding ends a turn where it was going.
        f.flip->setFlipped(true);
        f.clock.step(100);
        f.flip->hide();
        QVERIFY(!f.flip->isTurning());
        QCOMPARE(f.flip->angle(), 180.0);
        f.clock.step(1000);
        QCOMPARE(f.flip->angle(), 180.0);
    }

    void facesComeAndGo()
    {
        // Flipped before it had faces (as a document sets it): they come in turned.
        {
            Fixture turned(true);
            turned.flip->finishTurn();
            QCOMPARE(turned.flip->angle(), 180.0);
            QVERIFY(turned.back->isVisible() && !turned.front->isVisible());
        }
        Fixture f;
        f.flip->setFlipped(true);
        f.clock.step(100);
        delete f.front;
        QCOMPARE(f.flip->front(), f.back); // the back is the only face now
        f.clock.step(1000);
        QCOMPARE(f.flip->angle(), 180.0);
        QVERIFY(!f.back->isVisible()); // a front face at 180 degrees is turned away
        f.flip->setFlipped(false);
        f.clock.step(1000);
        QVERIFY(f.back->isVisible());
    }

    void garbage()
    {
        ZFlipWidget flip;
        flip.setAngle(qQNaN());
        QCOMPARE(flip.angle(), 0.0);
        flip.setAngle(1000);
        QCOMPARE(flip.angle(), 180.0);
        flip.setAngle(-1);
        QCOMPARE(flip.angle(), 0.0);
        flip.setDuration(-4);
        QCOMPARE(flip.duration(), 0);
        flip.setEasing(QEasingCurve::Type(12345));
        QCOMPARE(flip.easing(), QEasingCurve::InOutQuad);
        flip.flip(); // no faces: still fine
        QVERIFY(flip.isFlipped());
    }
};

QTEST_MAIN(tst_ZFlipWidget)
#include "tst_zflipwidget.moc"
