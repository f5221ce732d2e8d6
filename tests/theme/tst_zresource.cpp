// Name resolution, search paths, the pixmap caches and their keys.

#include "zresource.h"
#include "ztheme.h"
#include "xmlnode.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

namespace {

bool writePng(const QString &path, const QColor &color, const QSize &size = QSize(8, 8))
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    return image.save(path, "PNG");
}

} // namespace

class tst_ZResource : public QObject
{
    Q_OBJECT

    QString m_appSub; // a folder under the executable's directory, removed at the end
    QTemporaryDir m_tmp;

private slots:
    void initTestCase()
    {
        QVERIFY(m_tmp.isValid());
        m_appSub = QStringLiteral("zresource-test-%1").arg(QCoreApplication::applicationPid());
        QVERIFY(writePng(QCoreApplication::applicationDirPath() + "/" + m_appSub + "/a.png", Qt::red));
    }

    void cleanupTestCase()
    {
        QDir(QCoreApplication::applicationDirPath() + "/" + m_appSub).removeRecursively();
    }

    void relativeNamesLoadFromTheApplicationDirectory()
    {
        const QImage image = ZResource::loadImage(m_appSub + "/a.png");
        QVERIFY(!image.isNull());
        QCOMPARE(QColor(image.pixel(0, 0)), QColor(Qt::red));
        QVERIFY(!ZResource::loadPixmap(m_appSub + "/a.png", false, true).isNull());
        QVERIFY(!ZResource::loadRawData(m_appSub + "/a.png").isEmpty());
        QCOMPARE(ZResource::absoluteFileName(m_appSub + "/a.png"),
                 QCoreApplication::applicationDirPath() + "/" + m_appSub + "/a.png");
    }

    // An absolute path without a colon loads nothing, even when it exists.
    void absoluteNamesLoadNothing()
    {
        const QString path = m_tmp.filePath("abs.png");
        QVERIFY(writePng(path, Qt::green));
        QVERIFY(ZResource::loadImage(path).isNull());
        QPixmap pixmap;
        QVERIFY(!ZResource::loadPixmap(path, pixmap, false, true));
        QVERIFY(pixmap.isNull());
        QVERIFY(ZResource::loadRawData(path).isEmpty());
        QVERIFY(ZResource::pixmapCacheKey(path, false).isEmpty());
        XMLNode node;
        QVERIFY(!ZResource::loadXml(path, node));
        QCOMPARE(ZResource::absoluteFileName(path), path);
    }

    void searchPaths()
    {
        const QString skinDir = m_tmp.filePath("skinroot");
        QVERIFY(writePng(skinDir + "/skin/b.png", Qt::blue));
        ZResource::addSearchPath(QStringLiteral("zskin"), m_tmp.filePath("does-not-exist"));
        QVERIFY(ZResource::searchPaths(QStringLiteral("zskin")).isEmpty());
        QCOMPARE(ZResource::absoluteFileName(QStringLiteral("zskin:skin/b.png")), QStringLiteral("zskin:skin/b.png"));

        ZResource::addSearchPath(QStringLiteral("zskin"), skinDir);
        QCOMPARE(ZResource::searchPaths(QStringLiteral("zskin")), QStringList{skinDir});
        QCOMPARE(ZResource::absoluteFileName(QStringLiteral("zskin:skin/b.png")), skinDir + "/skin/b.png");
        QCOMPARE(QColor(ZResource::loadImage(QStringLiteral("zskin:skin/b.png")).pixel(0, 0)), QColor(Qt::blue));

        // With two paths the existing file wins; otherwise the first path.
        const QString second = m_tmp.filePath("second");
        QVERIFY(writePng(second + "/only-here.png", Qt::yellow));
        ZResource::addSearchPath(QStringLiteral("zskin"), second);
        QCOMPARE(ZResource::absoluteFileName(QStringLiteral("zskin:only-here.png")),
                 QFileInfo(second + "/only-here.png").absoluteFilePath());
        QCOMPARE(ZResource::absoluteFileName(QStringLiteral("zskin:missing.png")), skinDir + "/missing.png");
    }

    void defaultSearchPaths()
    {
        ZResource::addDefaultSearchPath();
        QVERIFY(ZResource::searchPaths(QStringLiteral("appdir")).contains(QCoreApplication::applicationDirPath()));
        QCOMPARE(ZResource::absoluteFileName(QStringLiteral("appdir:skin/a.png")),
                 QCoreApplication::applicationDirPath() + "/skin/a.png");
        QVERIFY(!ZResource::loadImage("appdir:" + m_appSub + "/a.png").isNull());
    }

    void resourceNamesAreNeverExpanded()
    {
        QCOMPARE(ZResource::absoluteFileName(QStringLiteral(":/image/theme/titleicon.png")),
                 QStringLiteral(":/image/theme/titleicon.png"));
    }

    void cacheKeyFormat()
    {
        const QString path = QCoreApplication::applicationDirPath() + "/" + m_appSub + "/a.png";
        const QFileInfo info(path);
        const QString expected = QStringLiteral("zpixmap") + info.absoluteFilePath()
            + QString::number(info.lastModified().toSecsSinceEpoch()) + QString::number(info.size());
        QCOMPARE(ZResource::pixmapCacheKey(m_appSub + "/a.png", false), expected + "0");
        QCOMPARE(ZResource::pixmapCacheKey(m_appSub + "/a.png", true), expected + "1");
    }

    // A cached pixmap comes back as the same pixmap; editing the file on disk
    // changes its key, so the next load reads the new content.
    void cacheHitsAndStaleFiles()
    {
        const QString name = m_appSub + "/touched.png";
        const QString path = QCoreApplication::applicationDirPath() + "/" + name;
        QVERIFY(writePng(path, Qt::red));
        QFile f(path);
        QVERIFY(f.open(QIODevice::ReadWrite));
        QVERIFY(f.setFileTime(QDateTime::fromSecsSinceEpoch(1000000000), QFileDevice::FileModificationTime));
        f.close();

        const QPixmap first = ZResource::loadPixmap(name, false, true);
        const QPixmap second = ZResource::loadPixmap(name, false, true);
        QVERIFY(!first.isNull());
        QCOMPARE(second.cacheKey(), first.cacheKey());
        const QString oldKey = ZResource::pixmapCacheKey(name, false);

        QVERIFY(writePng(path, Qt::green, QSize(9, 9)));
        QVERIFY(f.open(QIODevice::ReadWrite));
        QVERIFY(f.setFileTime(QDateTime::fromSecsSinceEpoch(1000000100), QFileDevice::FileModificationTime));
        f.close();
        QVERIFY(ZResource::pixmapCacheKey(name, false) != oldKey);
        const QPixmap third = ZResource::loadPixmap(name, false, true);
        QVERIFY(third.cacheKey() != first.cacheKey());
        QCOMPARE(QColor(third.toImage().pixel(0, 0)), QColor(Qt::green));

        // Without caching nothing is stored.
        const int before = ZResource::cacheCount(false);
        const QString uncached = m_appSub + "/uncached.png";
        QVERIFY(writePng(QCoreApplication::applicationDirPath() + "/" + uncached, Qt::blue));
        QVERIFY(!ZResource::loadPixmap(uncached, false, false).isNull());
        QCOMPARE(ZResource::cacheCount(false), before);
    }

    void tintedCacheFollowsTheTheme()
    {
        const QString name = m_appSub + "/a.png";
        ZTheme::setThemeIndex(0);
        const QPixmap t0 = ZResource::loadPixmap(name, true, true);
        QVERIFY(ZResource::cacheCount(true) > 0);
        QCOMPARE(ZResource::loadPixmap(name, true, true).cacheKey(), t0.cacheKey());
        ZTheme::setThemeIndex(8);
        QCOMPARE(ZResource::cacheCount(true), 0);
        const QPixmap t8 = ZResource::loadPixmap(name, true, true);
        QVERIFY(t8.cacheKey() != t0.cacheKey());
        QCOMPARE(t8.toImage().pixel(0, 0), ZTheme::convertToThemeColor(QColor(Qt::red)).rgba());
        QVERIFY(t0.toImage().pixel(0, 0) != t8.toImage().pixel(0, 0));
    }

    void cachesAreCapped()
    {
        const QString dir = m_appSub + "/many";
        for (int i = 0; i < 130; ++i) {
            const QString name = QStringLiteral("%1/%2.png").arg(dir).arg(i);
            QVERIFY(writePng(QCoreApplication::applicationDirPath() + "/" + name, QColor(i, 0, 0)));
            QVERIFY(!ZResource::loadPixmap(name, true, true).isNull());
        }
        QCOMPARE(ZResource::cacheCount(false), 100);
        QCOMPARE(ZResource::cacheCount(true), 100);
    }

    void missingFiles()
    {
        QVERIFY(ZResource::loadImage(QStringLiteral("no/such/file.png")).isNull());
        QVERIFY(ZResource::loadPixmap(QStringLiteral("no/such/file.png"), true, true).isNull());
        QVERIFY(ZResource::loadRawData(QStringLiteral(":/no/such/resource")).isEmpty());
        QVERIFY(ZResource::loadImage(QString()).isNull());
        XMLNode node;
        QVERIFY(!ZResource::loadXml(QStringLiteral("no/such.xml"), node));
    }

    void loadXml()
    {
        const QString name = m_appSub + "/doc.xml";
        QFile f(QCoreApplication::applicationDirPath() + "/" + name);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<uitree><ZLabel text=\"\xe4\xbd\xa0\xe5\xa5\xbd\"/></uitree>");
        f.close();
        XMLNode node;
        QVERIFY(ZResource::loadXml(name, node));
        const XMLNode label = node.getChildNodeByPath("uitree/ZLabel", 0, '/');
        QCOMPARE(QString::fromUtf8(label.getAttribute("text", 0)), QString::fromUtf8("\xe4\xbd\xa0\xe5\xa5\xbd"));
    }
};

QTEST_MAIN(tst_ZResource)
#include "tst_zresource.moc"
