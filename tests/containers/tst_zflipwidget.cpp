// The flip widget: which face shows and how far each is turned at each
// moment of a driven clock.

#include "zflipwidget.h"
#include "zxmlui.h"

#include "../items/animationclock.h"

#include <QGraphicsScene>
#include <QtTest>

namespace {

struct Fixture
{
    AnimationClock clock;
    QGraphicsScene scene;
    ZFlipWidget *flip = new ZFlipWidget;
    ZWidget *front = new ZWidget;
    ZWidget *back = new ZWidget;

    Fixture()
    {
        scene.addItem(flip);
        flip->setGeometry(QRectF(0, 0, 100, 60));
        flip->addItem(front);
        flip->addItem(back);
        flip->setDuration(400);
        flip->setEasing(QEasingCurve::Linear);
    }

    // The x where the face's right edge appears, on its middle line.
    static qreal rightEdge(ZWidget *face)
    {
        return face->mapToParent(QPointF(100, 30)).x();
    }
};

} // namespace

class tst_ZFlipWidget : public QObject
{
    Q_OBJECT

private slots:
    void faces()
    {
        Fixture f;
        QCOMPARE(f.flip->front(), f.front);
        QCOMPARE(f.flip->back(), f.back);
        QVERIFY(f.front->isVisible());
        QVERIFY(!f.back->isVisible());
        QCOMPARE(f.back->geometry(), QRectF(0, 0, 100, 60));
        // A third child is kept out of sight.
        auto *extra = new ZWidget;
        f.flip->addItem(extra);
        QVERIFY(!extra->isVisible());
        f.flip->setFlipped(true);
        f.clock.step(1000);
        QVERIFY(!extra->isVisible());
    }

    void turning_data()
    {
        QTest::addColumn<QList<int>>("steps");
        QTest::addColumn<QList<qreal>>("angles");
        // 400 ms for 180 degrees, linear.
        QTest::newRow("over") << QList<int>{100, 100, 100, 100} << QList<qreal>{45, 90, 135, 180};
        QTest::newRow("in small steps") << QList<int>{20, 20, 40} << QList<qreal>{9, 18, 36};
    }
    void turning()
    {
        QFETCH(QList<int>, steps);
        QFETCH(QList<qreal>, angles);
        Fixture f;
        QSignalSpy flipped(f.flip, &ZFlipWidget::flippedChanged);
        QSignalSpy done(f.flip, &ZFlipWidget::turnFinished);
        f.flip->setFlipped(true);
        QVERIFY(f.flip->isFlipped());
        QCOMPARE(flipped.size(), 1);
        QVERIFY(f.flip->isTurning());
        for (int i = 0; i < steps.size(); ++i) {
            f.clock.step(steps.at(i));
            const qreal a = angles.at(i);
            QVERIFY(qAbs(f.flip->angle() - a) < 1e-6);
            QCOMPARE(f.front->isVisible(), a < 90);
            QCOMPARE(f.back->isVisible(), a >= 90);
            QCOMPARE(f.front->yRotate(), a);
            QCOMPARE(f.back->yRotate(), a - 180);
            QCOMPARE(f.front->originPoint(), QPointF(50, 30));
            // The visible face narrows towards 90 degrees about the middle.
            ZWidget *face = a < 90 ? f.front : f.back;
            const qreal half = Fixture::rightEdge(face) - 50;
            QVERIFY2(qAbs(qAbs(half) - 50 * qAbs(std::cos(qDegreesToRadians(a)))) < 2,
                     qPrintable(QString::number(half)));
        }
        QCOMPARE(done.size(), angles.last() == 180 ? 1 : 0);
    }

    void backTurnsTheRightWayRound()
    {
        Fixture f;
        f.flip->setAnimated(false);
        f.flip->setFlipped(true);
        QCOMPARE(f.flip->angle(), 180.0);
        QVERIFY(f.back->isVisible() && !f.front->isVisible());
        // Not mirrored: its right edge is on the right.
        QVERIFY(qAbs(Fixture::rightEdge(f.back) - 100) < 0.5);
    }

    void reverseHalfWay()
    {
        Fixture f;
        f.flip->setFlipped(true);
        f.clock.step(100); // 45 degrees
        f.flip->flip();     // back again: takes 100 ms only
        QVERIFY(!f.flip->isFlipped());
        f.clock.step(50);
        QVERIFY(qAbs(f.flip->angle() - 22.5) < 1e-6);
        f.clock.step(60);
        QCOMPARE(f.flip->angle(), 0.0);
        QVERIFY(!f.flip->isTurning());
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
    }

    void hidingEndsTheTurn()
    {
        Fixture f;
        f.flip->setFlipped(true);
        f.clock.step(100);
        f.flip->hide();
        QVERIFY(!f.flip->isTurning());
        QCOMPARE(f.flip->angle(), 180.0);
        f.clock.step(1000);
        QCOMPARE(f.flip->angle(), 180.0);
    }

    void facesLeave()
    {
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

    void fromDocument()
    {
        QGraphicsScene scene;
        auto *root = new ZWidget;
        scene.addItem(root);
        const QByteArray doc = R"(<uitree>
  <ZFlipWidget objectName="flip" duration="250" easing="OutBack" flipped="true">
    <ZWidget objectName="front"/>
    <ZWidget objectName="back"/>
  </ZFlipWidget>
</uitree>)";
        QVERIFY(ZXmlUI::widgetFromMemory(doc, root));
        auto *flip = qobject_cast<ZFlipWidget *>(root->findObject(QStringLiteral("flip")));
        QVERIFY(flip);
        QCOMPARE(flip->duration(), 250);
        QCOMPARE(flip->easing(), QEasingCurve::OutBack);
        QVERIFY(flip->isFlipped());
        flip->finishTurn();
        QCOMPARE(flip->angle(), 180.0);
        QVERIFY(flip->back()->isVisible());
        QVERIFY(!flip->front()->isVisible());
    }
};

QTEST_MAIN(tst_ZFlipWidget)
#include "tst_zflipwidget.moc"
