// On a screen with a device pixel ratio of 2 skin pixmaps come from the @2x
// files and keep their size in logical pixels.

#include "zresource.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

class tst_ZResourceHiDpi : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QCOMPARE(qApp->devicePixelRatio(), 2.0); }

    // Plain and tinted pixmaps alike; images keep the file that was named.
    void embeddedSkinPrefersTheDenseFile_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QSize>("logical");
        QTest::newRow("check box") << ":/image/theme/checkbox_default_normal.png" << QSize(16, 16);
        QTest::newRow("push button") << ":/image/theme/pushbutton_normal.png" << QSize(11, 11);
        QTest::newRow("message icon") << ":/image/theme/messagebox_warning.png" << QSize(40, 40);
    }
    void embeddedSkinPrefersTheDenseFile()
    {
        QFETCH(QString, name);
        QFETCH(QSize, logical);
        for (bool tinted : {false, true}) {
            const QPixmap pixmap = ZResource::loadPixmap(name, tinted, true);
            QCOMPARE(pixmap.devicePixelRatio(), 2.0);
            QCOMPARE(pixmap.size(), logical * 2);
        }
        QVERIFY(ZResource::pixmapCacheKey(name, false).contains(QString(name).replace(".png", "@2x.png").mid(1)));
        QCOMPARE(ZResource::loadImage(name).size(), logical);
    }

    // Only where the @2x file exists: otherwise the plain one at ratio 1.
    void applicationFiles()
    {
        QTemporaryDir dir(QCoreApplication::applicationDirPath() + "/hidpi-XXXXXX");
        QVERIFY(dir.isValid());
        const QString sub = QDir(QCoreApplication::applicationDirPath()).relativeFilePath(dir.path());
        QImage image(10, 6, QImage::Format_ARGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(dir.filePath("a.png")) && image.save(dir.filePath("b.png")));
        image = QImage(20, 12, QImage::Format_ARGB32);
        image.fill(Qt::blue);
        QVERIFY(image.save(dir.filePath("a@2x.png")));

        const QPixmap a = ZResource::loadPixmap(sub + "/a.png", false, true);
        QCOMPARE(a.devicePixelRatio(), 2.0);
        QCOMPARE(a.deviceIndependentSize().toSize(), QSize(10, 6));
        QCOMPARE(QColor(a.toImage().pixel(0, 0)), QColor(Qt::blue));
        const QPixmap b = ZResource::loadPixmap(sub + "/b.png", false, true);
        QCOMPARE(b.devicePixelRatio(), 1.0);
        QCOMPARE(b.size(), QSize(10, 6));
    }
};

int main(int argc, char **argv)
{
    qputenv("QT_SCALE_FACTOR", "2");
    QApplication app(argc, argv);
    tst_ZResourceHiDpi test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_zresourcehidpi.moc"
