// The movie item: a GIF written by the test itself (Qt reads GIF but does
// not write it), its frames, and the movie pausing while the item is hidden.

#include "zanimationitem.h"

#include <QMovie>
#include <QtTest>

#include "common/scenetest.h"

using scenetest::render;

namespace {

const QList<QColor> kPalette{QColor(255, 0, 0), QColor(0, 255, 0), QColor(0, 0, 255), QColor(255, 255, 0)};

// An uncompressed GIF: every frame one colour of the four-colour palette.
// The LZW stream sends a clear code before every two pixels, so that the
// code width never grows past three bits.
QByteArray makeGif(const QList<int> &frames, QSize size, int delayCs, int loops)
{
    QByteArray gif("GIF89a");
    const auto put8 = [&gif](std::initializer_list<int> bytes) {
        for (int b : bytes)
            gif.append(char(b));
    };
    const auto le16 = [&put8](int v) { put8({v & 0xff, (v >> 8) & 0xff}); };
    le16(size.width());
    le16(size.height());
    put8({0xF1, 0, 0}); // global table of 4 colours
    for (const QColor &c : kPalette)
        put8({c.red(), c.green(), c.blue()});
    gif.append("\x21\xFF\x0BNETSCAPE2.0\x03\x01", 16);
    le16(loops);
    put8({0});
    for (int index : frames) {
        put8({0x21, 0xF9, 0x04, 0x04}); // graphic control: keep the frame
        le16(delayCs);
        put8({0, 0, 0x2C, 0, 0, 0, 0}); // image at 0,0
        le16(size.width());
        le16(size.height());
        put8({0, 2}); // no local table, minimum code size
        QByteArray data;
        quint32 bits = 0;
        int count = 0;
        const auto code = [&](int c) {
            bits |= quint32(c) << count;
            for (count += 3; count >= 8; count -= 8, bits >>= 8)
                data.append(char(bits & 0xff));
        };
        for (int p = 0; p < size.width() * size.height(); ++p) {
            if (p % 2 == 0)
                code(4); // clear
            code(index);
        }
        code(5); // end of information
        if (count > 0)
            data.append(char(bits & 0xff));
        for (int at = 0; at < data.size(); at += 255) {
            put8({int(qMin<qsizetype>(255, data.size() - at))});
            gif.append(data.mid(at, 255));
        }
        put8({0});
    }
    put8({0x3B});
    return gif;
}

struct Fixture
{
    QTemporaryDir dir;
    QString path;
    QGraphicsScene scene;
    ZAnimationItem *item = new ZAnimationItem;

    explicit Fixture(const QList<int> &frames = {0, 1, 2}, int loops = 0)
    {
        QDir::setSearchPaths(QStringLiteral("movietest"), {dir.path()});
        path = write(QStringLiteral("movie.gif"), makeGif(frames, QSize(8, 6), 10, loops));
        scene.addItem(item);
        item->setGeometry(QRectF(0, 0, 8, 6));
    }
    // Answers the file's name under the search-path prefix (absolute paths load nothing).
    QString write(const QString &name, const QByteArray &bytes)
    {
        QFile file(dir.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? "movietest:" + name : QString();
    }
    QColor shown() { return render(scene, QSize(8, 6)).pixelColor(4, 3); }
};

} // namespace

class tst_ZAnimationItem : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!QImageReader::supportedImageFormats().contains("gif"))
            QSKIP("this Qt reads no GIF");
    }

    void framesOfTheFile()
    {
        Fixture f({0, 1, 2, 3});
        QSignalSpy frames(f.item, &ZAnimationItem::frameChanged);
        f.item->setAutoStart(false);
        f.item->setImagePath(f.path);
        QVERIFY(f.item->isValid());
        QCOMPARE(f.item->frameCount(), 4);
        QCOMPARE(f.item->currentFrame(), 0);
        QVERIFY(!f.item->isRunning());
        QCOMPARE(f.item->effectiveSizeHint(Qt::PreferredSize), QSizeF(8, 6));
        QCOMPARE(f.shown(), kPalette.at(0));
        for (int i : {2, 1, 3}) {
            f.item->setCurrentFrame(i);
            QCOMPARE(f.item->currentFrame(), i);
            QCOMPARE(f.shown(), kPalette.at(i));
        }
        QVERIFY(frames.size() >= 4);
        QCOMPARE(frames.last().at(0).toInt(), 3);
        // Stepping on from the last frame goes round.
        f.item->movie()->jumpToNextFrame();
        QCOMPARE(f.shown(), kPalette.at(0));
        // Fitted, the frame fills the item.
        f.item->setAutoAdjust(true);
        f.item->resize(40, 30);
        QCOMPARE(scenetest::boxOf(render(f.scene, QSize(40, 30)), kPalette.at(0)), QRect(0, 0, 40, 30));
    }

    void pausesWhileHidden()
    {
        Fixture f;
        f.item->setImagePath(f.path); // autoStart
        QVERIFY(f.item->isPlaying());
        QVERIFY(f.item->isRunning());
        f.item->setCurrentFrame(1);
        f.item->hide();
        QCOMPARE(f.item->movie()->state(), QMovie::Paused);
        QVERIFY(f.item->isPlaying()); // still wanted
        f.item->show();
        QCOMPARE(f.item->movie()->state(), QMovie::Running);
        QCOMPARE(f.item->currentFrame(), 1); // goes on where it was

        f.scene.removeItem(f.item);
        QCOMPARE(f.item->movie()->state(), QMovie::Paused);
        f.scene.addItem(f.item);
        QCOMPARE(f.item->movie()->state(), QMovie::Running);

        f.item->stop();
        QCOMPARE(f.item->movie()->state(), QMovie::NotRunning);
        f.item->setCurrentFrame(2);
        f.item->start();
        QCOMPARE(f.item->movie()->state(), QMovie::Running);
        QCOMPARE(f.item->currentFrame(), 2);
    }

    void autoStartOffAfterTheFile()
    {
        Fixture f;
        f.item->setImagePath(f.path);
        QVERIFY(f.item->isRunning());
        f.item->setAutoStart(false); // as a document setting it after imagePath
        QVERIFY(!f.item->isPlaying());
        QVERIFY(!f.item->isRunning());
        QCOMPARE(f.item->currentFrame(), 0);
        // A play asked for in code is not undone by autoStart.
        f.item->setAutoStart(true);
        f.item->start();
        f.item->setAutoStart(false);
        QVERIFY(f.item->isRunning());
    }

    void playsThroughOnItsTimer()
    {
        Fixture f({0, 1, 2}, 1);
        QSignalSpy finished(f.item, &ZAnimationItem::finished);
        f.item->setSpeed(1000); // ten times the pace: 10 ms a frame
        f.item->setImagePath(f.path);
        QVERIFY(finished.wait(5000));
        QVERIFY(!f.item->isPlaying());
        QVERIFY(!f.item->isRunning());
    }

    void badFiles()
    {
        Fixture f;
        const QString junk = f.write(QStringLiteral("junk.gif"), "GIF89a garbage that is no image at all");
        QVERIFY(!junk.isEmpty());
        for (const QString &path : {QStringLiteral("movietest:missing.gif"), junk, QString()}) {
            f.item->setImagePath(path);
            QVERIFY(!f.item->isValid());
            QCOMPARE(f.item->frameCount(), 0);
            QCOMPARE(f.item->currentFrame(), -1);
            QVERIFY(!f.item->isRunning());
            render(f.scene, QSize(8, 6));
        }
        f.item->setCurrentFrame(3);
        f.item->setSpeed(-50);
        QCOMPARE(f.item->speed(), 1);
        // A truncated file reads as far as it goes.
        const QByteArray whole = makeGif({0, 1, 2}, QSize(8, 6), 10, 0);
        f.item->setImagePath(f.write(QStringLiteral("cut.gif"), whole.left(whole.size() - 20)));
        render(f.scene, QSize(8, 6));
    }
};

QTEST_MAIN(tst_ZAnimationItem)
#include "tst_zanimationitem.moc"
