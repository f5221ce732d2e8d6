// The movie item: a GIF written by the test itself (Qt reads GIF but does
// not write it), its frames, and the movie pausing while the item is hidden.

#include "zanimationitem.h"
#include "zxmlui.h"

#include <QMovie>
#include <QtTest>

#include "itemtestutil.h"

using namespace itemtest;

namespace {

// An uncompressed GIF: every frame one colour of a four-colour palette.
// The LZW stream sends a clear code before every two pixels, so that the
// code width never grows past three bits.
QByteArray makeGif(const QList<int> &frames, const QList<QColor> &palette, QSize size, int delayCs, int loops)
{
    QByteArray gif("GIF89a");
    auto le16 = [&gif](int v) {
        gif.append(char(v & 0xff));
        gif.append(char((v >> 8) & 0xff));
    };
    le16(size.width());
    le16(size.height());
    gif.append(char(0xF1)); // global table of 4 colours
    gif.append(char(0));
    gif.append(char(0));
    for (int i = 0; i < 4; ++i) {
        const QColor c = palette.value(i, Qt::black);
        gif.append(char(c.red()));
        gif.append(char(c.green()));
        gif.append(char(c.blue()));
    }
    gif.append("\x21\xFF\x0BNETSCAPE2.0\x03\x01", 16);
    le16(loops);
    gif.append(char(0));
    for (int index : frames) {
        gif.append("\x21\xF9\x04\x04", 4); // graphic control: keep the frame
        le16(delayCs);
        gif.append(char(0));
        gif.append(char(0));
        gif.append(char(0x2C));
        le16(0);
        le16(0);
        le16(size.width());
        le16(size.height());
        gif.append(char(0));
        gif.append(char(2)); // minimum code size

        QByteArray data;
        quint32 bits = 0;
        int count = 0;
        auto put = [&](int code) {
            bits |= quint32(code) << count;
            count += 3;
            while (count >= 8) {
                data.append(char(bits & 0xff));
                bits >>= 8;
                count -= 8;
            }
        };
        const int pixels = size.width() * size.height();
        for (int p = 0; p < pixels; ++p) {
            if (p % 2 == 0)
                put(4); // clear
            put(index);
        }
        put(5); // end of information
        if (count > 0)
            data.append(char(bits & 0xff));
        for (int at = 0; at < data.size(); at += 255) {
            const QByteArray block = data.mid(at, 255);
            gif.append(char(block.size()));
            gif.append(block);
        }
        gif.append(char(0));
    }
    gif.append(char(0x3B));
    return gif;
}

const QList<QColor> kPalette{QColor(255, 0, 0), QColor(0, 255, 0), QColor(0, 0, 255), QColor(255, 255, 0)};

struct Fixture
{
    QTemporaryDir dir;
    QString path;
    QGraphicsScene scene;
    ZAnimationItem *item = new ZAnimationItem;

    explicit Fixture(const QList<int> &frames = {0, 1, 2}, int loops = 0)
    {
        QDir::setSearchPaths(QStringLiteral("movietest"), {dir.path()});
        path = QStringLiteral("movietest:movie.gif");
        QFile file(dir.filePath(QStringLiteral("movie.gif")));
        if (file.open(QIODevice::WriteOnly))
            file.write(makeGif(frames, kPalette, QSize(8, 6), 10, loops));
        file.close();
        scene.addItem(item);
        item->setGeometry(QRectF(0, 0, 8, 6));
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
        QFile junk(f.dir.filePath(QStringLiteral("junk.gif")));
        QVERIFY(junk.open(QIODevice::WriteOnly));
        junk.write("GIF89a garbage that is no image at all");
        junk.close();
        for (const QString &path : {QStringLiteral("movietest:missing.gif"), QStringLiteral("movietest:junk.gif"), QString()}) {
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
        const QByteArray whole = makeGif({0, 1, 2}, kPalette, QSize(8, 6), 10, 0);
        QFile cut(f.dir.filePath(QStringLiteral("cut.gif")));
        QVERIFY(cut.open(QIODevice::WriteOnly));
        cut.write(whole.left(whole.size() - 20));
        cut.close();
        f.item->setImagePath(QStringLiteral("movietest:cut.gif"));
        render(f.scene, QSize(8, 6));
    }

    void fromDocument()
    {
        Fixture f;
        QGraphicsScene scene;
        auto *root = new ZWidget;
        scene.addItem(root);
        const QByteArray doc = QStringLiteral(R"(<uitree>
  <ZAnimationItem objectName="movie" imagePath="%1" autoStart="false" speed="50" autoAdjust="true" fixSize="40,30"/>
</uitree>)").arg(f.path).toUtf8();
        QVERIFY(ZXmlUI::widgetFromMemory(doc, root));
        auto *item = qobject_cast<ZAnimationItem *>(root->findObject(QStringLiteral("movie")));
        QVERIFY(item);
        QVERIFY(item->isValid());
        QVERIFY(!item->isPlaying());
        QCOMPARE(item->speed(), 50);
        QVERIFY(item->autoAdjust());
        // Fitted: 8x6 grows to the whole 40x30.
        item->setPos(0, 0);
        item->resize(40, 30);
        const QImage shot = render(scene, QSize(40, 30));
        QCOMPARE(boxOf(shot, kPalette.at(0)), QRect(0, 0, 40, 30));
    }
};

QTEST_MAIN(tst_ZAnimationItem)
#include "tst_zanimationitem.moc"
