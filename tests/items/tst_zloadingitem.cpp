// The busy indicator: the angle it shows at each moment of a driven clock,
// and that it stands still while hidden or inactive.

#include "zloadingitem.h"

#include "common/animationclock.h"

#include <QtTest>

#include "common/scenetest.h"

using scenetest::countOf;
using scenetest::render;

class tst_ZLoadingItem : public QObject
{
    Q_OBJECT

private slots:
    void angles_data()
    {
        QTest::addColumn<int>("period");
        QTest::addColumn<int>("steps");
        QTest::addColumn<QList<int>>("times");     // clock steps in ms
        QTest::addColumn<QList<qreal>>("angles"); // the angle after each
        QTest::newRow("12 jumps a turn") << 1200 << 12 << QList<int>{50, 100, 100, 1100}
                                         << QList<qreal>{0, 30, 60, 30};
        QTest::newRow("smooth") << 1000 << 0 << QList<int>{250, 500, 500} << QList<qreal>{90, 270, 90};
        QTest::newRow("4 jumps, short period") << 400 << 4 << QList<int>{99, 2, 300} << QList<qreal>{0, 90, 0};
    }
    void angles()
    {
        QFETCH(int, period);
        QFETCH(int, steps);
        QFETCH(QList<int>, times);
        QFETCH(QList<qreal>, angles);
        AnimationClock clock;
        QGraphicsScene scene;
        auto *item = new ZLoadingItem;
        item->setPeriod(period);
        item->setSteps(steps);
        scene.addItem(item);
        QVERIFY(item->isRunning());
        for (int i = 0; i < times.size(); ++i) {
            clock.step(times.at(i));
            QCOMPARE(item->angle(), angles.at(i));
        }
    }

    void standsStill()
    {
        AnimationClock clock;
        QGraphicsScene scene;
        auto *item = new ZLoadingItem;
        QVERIFY(!item->isRunning()); // not in a scene yet
        scene.addItem(item);
        clock.step(250);
        QCOMPARE(item->angle(), 90.0);
        item->hide();
        QVERIFY(!item->isRunning());
        clock.step(500);
        QCOMPARE(item->angle(), 90.0);
        item->show();
        QVERIFY(item->isRunning());
        clock.step(100); // on from where it was
        QCOMPARE(item->angle(), 120.0);
        item->stop();
        QVERIFY(!item->isActive() && !item->isRunning());
        clock.step(400);
        QCOMPARE(item->angle(), 120.0);
        item->start();
        QVERIFY(item->isRunning());
        clock.step(100);
        QCOMPARE(item->angle(), 150.0);
        // No image, nothing to turn.
        item->setImagePath(QStringLiteral(":/image/theme/no-such-image.png"));
        QVERIFY(!item->isRunning());
    }

    void drawsTurned()
    {
        AnimationClock clock;
        QGraphicsScene scene;
        auto *item = new ZLoadingItem;
        scene.addItem(item);
        QCOMPARE(item->effectiveSizeHint(Qt::PreferredSize), QSizeF(32, 32));
        item->setGeometry(QRectF(0, 0, 32, 32));
        item->setSteps(4);
        const QImage still = render(scene, QSize(32, 32));
        QVERIFY(countOf(still, [](QColor c) { return c != QColor(Qt::white); }) > 50);
        clock.step(260); // a quarter turn
        QCOMPARE(item->angle(), 90.0);
        const QImage turned = render(scene, QSize(32, 32));
        QVERIFY(turned != still);
        // What was at the top right is now at the bottom right.
        QTransform quarter;
        quarter.translate(16, 16).rotate(90).translate(-16, -16);
        int same = 0;
        int inked = 0;
        for (int y = 2; y < 30; ++y) {
            for (int x = 2; x < 30; ++x) {
                const QColor before = still.pixelColor(x, y);
                if (before == QColor(Qt::white))
                    continue;
                ++inked;
                const QPointF mapped = quarter.map(QPointF(x + 0.5, y + 0.5));
                const QPoint to(int(std::floor(mapped.x())), int(std::floor(mapped.y())));
                const QColor after = turned.pixelColor(qBound(0, to.x(), 31), qBound(0, to.y(), 31));
                same += qAbs(after.red() - before.red()) + qAbs(after.green() - before.green()) < 60 ? 1 : 0;
            }
        }
        QVERIFY2(same > inked * 8 / 10, qPrintable(QStringLiteral("%1 of %2").arg(same).arg(inked)));
    }

    void garbage()
    {
        ZLoadingItem item;
        item.setPeriod(-5);
        QCOMPARE(item.period(), 10);
        item.setPeriod(INT_MAX);
        QCOMPARE(item.period(), 600000);
        item.setSteps(-1);
        QCOMPARE(item.steps(), 0);
        item.setSteps(100000);
        QCOMPARE(item.steps(), 360);
    }
};

QTEST_MAIN(tst_ZLoadingItem)
#include "tst_zloadingitem.moc"
