// The image-sequence item: frames cut from a strip or listed one by one,
// and the frame shown at each moment of a clock the test drives.

#include "zsequentimageitem.h"

#include "common/animationclock.h"

#include <QtTest>

#include "common/scenetest.h"

using scenetest::render;
using scenetest::solidPixmap;

namespace {

const QList<QColor> kColors{Qt::red, Qt::green, Qt::blue, Qt::yellow};

// A strip of one 10x10 square per colour, saved as PNG; answers its name
// under the search-path prefix "seqtest" (absolute paths load nothing).
QString writeStrip(const QTemporaryDir &dir, const QList<QColor> &colors, const QString &name = QStringLiteral("strip.png"))
{
    QImage strip(10 * int(colors.size()), 10, QImage::Format_RGB32);
    QPainter painter(&strip);
    for (int i = 0; i < colors.size(); ++i)
        painter.fillRect(10 * i, 0, 10, 10, colors.at(i));
    painter.end();
    strip.save(dir.filePath(name));
    QDir::setSearchPaths(QStringLiteral("seqtest"), {dir.path()});
    return QStringLiteral("seqtest:") + name;
}

struct Fixture
{
    QTemporaryDir dir;
    AnimationClock clock;
    QGraphicsScene scene;
    ZSequentImageItem *item = new ZSequentImageItem;

    Fixture()
    {
        scene.addItem(item);
        item->setGeometry(QRectF(0, 0, 10, 10));
    }

    QColor shown() { return render(scene, QSize(10, 10)).pixelColor(5, 5); }
};

} // namespace

class tst_ZSequentImageItem : public QObject
{
    Q_OBJECT

private slots:
    void frames_data()
    {
        QTest::addColumn<QString>("source"); // "strip", "stripN" (stripCount N) or "list"
        QTest::addColumn<int>("count");
        QTest::newRow("square frames") << "strip" << 4;
        QTest::newRow("counted frames") << "strip4" << 4;
        QTest::newRow("two of a strip") << "strip2" << 2;
        QTest::newRow("list, missing part left out") << "list" << 3;
    }
    void frames()
    {
        QFETCH(QString, source);
        QFETCH(int, count);
        Fixture f;
        f.item->setAutoStart(false);
        if (source.startsWith(QLatin1String("strip"))) {
            const int strips = source.mid(5).toInt();
            if (strips == 4)
                f.item->setStripCount(strips);
            f.item->setImagePath(writeStrip(f.dir, kColors));
            f.item->setStripCount(strips); // also after the file, as documents may: cut again
        } else {
            const QString a = writeStrip(f.dir, {Qt::red}, QStringLiteral("a.png"));
            const QString b = writeStrip(f.dir, {Qt::green}, QStringLiteral("b.png"));
            const QString c = writeStrip(f.dir, {Qt::blue}, QStringLiteral("c.png"));
            f.item->setImagePath(QStringList{a, QStringLiteral("seqtest:none.png"), b, c}.join(QLatin1Char('|')));
        }
        QCOMPARE(f.item->frameCount(), count);
        QCOMPARE(f.item->currentFrame(), 0);
        QVERIFY(!f.item->isRunning());
        for (int i = 0; i < count; ++i) {
            f.item->setCurrentFrame(i);
            const int width = source == QLatin1String("strip2") ? 20 : 10;
            QCOMPARE(f.item->currentPixmap().size(), QSize(width, 10));
            // Two-frame strips hold two colours per frame: the first is at the left.
            const QImage frame = f.item->currentPixmap().toImage();
            QCOMPARE(frame.pixelColor(2, 5), kColors.at(source == QLatin1String("strip2") ? 2 * i : i));
        }
        QCOMPARE(f.item->effectiveSizeHint(Qt::PreferredSize), QSizeF(source == QLatin1String("strip2") ? 20 : 10, 10));
    }

    void playback_data()
    {
        QTest::addColumn<qreal>("fps");
        QTest::addColumn<int>("loops");
        QTest::addColumn<QList<int>>("steps");  // clock steps in ms
        QTest::addColumn<QList<int>>("frames"); // the frame after each step
        QTest::addColumn<bool>("ends");
        QTest::newRow("10 fps once") << 10.0 << 1 << QList<int>{50, 100, 100, 100, 100, 500}
                                     << QList<int>{0, 1, 2, 3, 3, 3} << true;
        QTest::newRow("10 fps twice") << 10.0 << 2 << QList<int>{350, 100, 200, 400}
                                      << QList<int>{3, 0, 2, 3} << true;
        QTest::newRow("25 fps for ever") << 25.0 << -1 << QList<int>{20, 40, 40, 40, 40, 1000}
                                         << QList<int>{0, 1, 2, 3, 0, 1} << false;
    }
    void playback()
    {
        QFETCH(qreal, fps);
        QFETCH(int, loops);
        QFETCH(QList<int>, steps);
        QFETCH(QList<int>, frames);
        QFETCH(bool, ends);
        Fixture f;
        f.item->setFps(fps);
        f.item->setLoopCount(loops);
        QSignalSpy finished(f.item, &ZSequentImageItem::finished);
        f.item->setImagePath(writeStrip(f.dir, kColors)); // autoStart
        QVERIFY(f.item->isRunning());
        for (int i = 0; i < steps.size(); ++i) {
            f.clock.step(steps.at(i));
            QCOMPARE(f.item->currentFrame(), frames.at(i));
            QCOMPARE(f.shown(), kColors.at(frames.at(i)));
        }
        QCOMPARE(finished.size(), ends ? 1 : 0);
        QCOMPARE(f.item->isRunning(), !ends);
        if (ends) {
            // Started again after its end, it plays from the first frame.
            f.item->start();
            f.clock.step(1000 / int(fps) + 1);
            QCOMPARE(f.item->currentFrame(), 1);
        }
    }

    void pausedWhileHidden()
    {
        Fixture f;
        f.item->setImagePath(writeStrip(f.dir, kColors));
        f.clock.step(150);
        QCOMPARE(f.item->currentFrame(), 1);
        f.item->hide();
        QVERIFY(!f.item->isRunning());
        f.clock.step(1000);
        QCOMPARE(f.item->currentFrame(), 1);
        f.item->show();
        QVERIFY(f.item->isRunning());
        f.clock.step(100); // on from where it was
        QCOMPARE(f.item->currentFrame(), 2);

        // A hidden parent hides it too.
        auto *parent = new ZWidget;
        f.scene.addItem(parent);
        f.item->setParentItem(parent);
        parent->hide();
        QVERIFY(!f.item->isRunning());
        parent->show();
        QVERIFY(f.item->isRunning());

        // Out of any scene it does not run at all.
        f.scene.removeItem(parent);
        QVERIFY(!f.item->isRunning());
        f.scene.addItem(parent);
        QVERIFY(f.item->isRunning());
    }

    void stopAndJump()
    {
        Fixture f;
        f.item->setImagePath(writeStrip(f.dir, kColors));
        f.item->setCurrentFrame(3);
        QCOMPARE(f.item->currentFrame(), 3);
        f.clock.step(110); // for ever by default: on to the next loop
        QCOMPARE(f.item->currentFrame(), 0);
        f.item->stop();
        QVERIFY(!f.item->isRunning());
        f.clock.step(300);
        QCOMPARE(f.item->currentFrame(), 0);
        f.item->setCurrentFrame(2);
        f.item->start(); // from the frame shown
        f.clock.step(110);
        QCOMPARE(f.item->currentFrame(), 3);
        // Twice the pace from here.
        f.item->setFps(20);
        f.clock.step(55);
        QCOMPARE(f.item->currentFrame(), 0);
        f.item->setCurrentFrame(9); // no such frame
        f.item->setCurrentFrame(-1);
        QCOMPARE(f.item->currentFrame(), 0);
    }

    void garbage()
    {
        Fixture f;
        f.item->setFps(qQNaN());
        f.item->setFps(0);
        f.item->setFps(-3);
        QCOMPARE(f.item->fps(), 10.0);
        f.item->setFps(1e9);
        QCOMPARE(f.item->fps(), 1000.0);
        f.item->setLoopCount(0);
        QCOMPARE(f.item->loopCount(), 1);
        f.item->setLoopCount(-7);
        QCOMPARE(f.item->loopCount(), 1);
        f.item->setStripCount(1000000);
        f.item->setImagePath(writeStrip(f.dir, kColors));
        QCOMPARE(f.item->frameCount(), 40); // one pixel a frame at most
        f.item->setImagePath(QStringLiteral("seqtest:missing.png"));
        QCOMPARE(f.item->frameCount(), 0);
        QCOMPARE(f.item->currentFrame(), -1);
        QVERIFY(!f.item->isRunning());
        f.clock.step(100);
        f.item->setImagePath(QStringLiteral("|||"));
        QCOMPARE(f.item->frameCount(), 0);
        f.item->start(); // nothing to play: waits for frames
        QVERIFY(!f.item->isRunning());
        f.item->setFrames({QPixmap(), solidPixmap(QSize(4, 4), Qt::red)});
        QCOMPARE(f.item->frameCount(), 1);
        QVERIFY(f.item->imagePath().isEmpty());
        QVERIFY(f.item->isRunning());
        render(f.scene, QSize(10, 10)); // paints without frames too
    }
};

QTEST_MAIN(tst_ZSequentImageItem)
#include "tst_zsequentimageitem.moc"
