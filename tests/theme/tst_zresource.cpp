// Name resolution, search paths, the pixmap caches and their keys.

#include "xmlnode.h"
#include "zresource.h"
#include "ztheme.h"

#include <QApplication>
#include <QDir>
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

bool setMTime(const QString &path, qint64 secs)
{
    QFile f(path);
    return f.open(QIODevice::ReadWrite) && f.setFileTime(QDateTime::fromSecsSinceEpoch(secs), QFileDevice::FileModificationTime);
}

} // namespace

class tst_ZResource : public QObject
{
    Q_OBJECT

    QString m_appSub; // a folder under the executable's directory, removed at the end
    QTemporaryDir m_tmp;

    QString inApp(const QString &name) const { return QCoreApplication::applicationDirPath() + "/" + name; }

private slots:
    void initTestCase()
    {
        QVERIFY(m_tmp.isValid());
        m_appSub = QStringLiteral("zresource-test-%1").arg(QCoreApplication::applicationPid());
        QVERIFY(writePng(inApp(m_appSub + "/a.png"), Qt::red));
    }

    void cleanupTestCase() { QDir(inApp(m_appSub)).removeRecursively(); }

    // Relative names load from the application directory, documents as UTF-8.
    void relativeNames()
    {
        const QString name = m_appSub + "/a.png";
        QCOMPARE(QColor(ZResource::loadImage(name).pixel(0, 0)), QColor(Qt::red));
        QVERIFY(!ZResource::loadPixmap(name, false, true).isNull());
        QVERIFY(!ZResource::loadRawData(name).isEmpty());
        QCOMPARE(ZResource::absoluteFileName(name), inApp(name));
        QCOMPARE(ZResource::absoluteFileName(":/image/theme/titleicon.png"), QStringLiteral(":/image/theme/titleicon.png"));

        QFile f(inApp(m_appSub + "/doc.xml"));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<uitree><ZLabel text=\"\xe4\xbd\xa0\xe5\xa5\xbd\"/></uitree>");
        f.close();
        XMLNode node;
        QVERIFY(ZResource::loadXml(m_appSub + "/doc.xml", node));
        const XMLNode label = node.getChildNodeByPath("uitree/ZLabel", 0, '/');
        QCOMPARE(QString::fromUtf8(label.getAttribute("text", 0)), QString::fromUtf8("\xe4\xbd\xa0\xe5\xa5\xbd"));
    }

    // An absolute path without a colon loads nothing, even when it exists;
    // missing files load nothing either.
    void namesThatLoadNothing()
    {
        const QString path = m_tmp.filePath("abs.png");
        QVERIFY(writePng(path, Qt::green));
        for (const QString &name : {path, QStringLiteral("no/such/file.png"), QStringLiteral(":/no/such/resource"), QString()}) {
            QVERIFY(ZResource::loadImage(name).isNull());
            QPixmap pixmap;
            QVERIFY(!ZResource::loadPixmap(name, pixmap, true, true));
            QVERIFY(pixmap.isNull());
            QVERIFY(ZResource::loadRawData(name).isEmpty());
            XMLNode node;
            QVERIFY(!ZResource::loadXml(name, node));
        }
        QVERIFY(ZResource::pixmapCacheKey(path, false).isEmpty());
        QCOMPARE(ZResource::absoluteFileName(path), path);
    }

    void searchPaths()
    {
        const QString skinDir = m_tmp.filePath("skinroot");
        QVERIFY(writePng(skinDir + "/skin/b.png", Qt::blue));
        ZResource::addSearchPath("zskin", m_tmp.filePath("does-not-exist"));
        QVERIFY(ZResource::searchPaths("zskin").isEmpty());
        QCOMPARE(ZResource::absoluteFileName("zskin:skin/b.png"), QStringLiteral("zskin:skin/b.png"));

        ZResource::addSearchPath("zskin", skinDir);
        QCOMPARE(ZResource::searchPaths("zskin"), QStringList{skinDir});
        QCOMPARE(ZResource::absoluteFileName("zskin:skin/b.png"), skinDir + "/skin/b.png");
        QCOMPARE(QColor(ZResource::loadImage("zskin:skin/b.png").pixel(0, 0)), QColor(Qt::blue));

        // With two paths the existing file wins; otherwise the first path.
        const QString second = m_tmp.filePath("second");
        QVERIFY(writePng(second + "/only-here.png", Qt::yellow));
        ZResource::addSearchPath("zskin", second);
        QCOMPARE(ZResource::absoluteFileName("zskin:only-here.png"), QFileInfo(second + "/only-here.png").absoluteFilePath());
        QCOMPARE(ZResource::absoluteFileName("zskin:missing.png"), skinDir + "/missing.png");

        ZResource::addDefaultSearchPath();
        QVERIFY(ZResource::searchPaths("appdir").contains(QCoreApplication::applicationDirPath()));
        QCOMPARE(ZResource::absoluteFileName("appdir:skin/a.png"), inApp("skin/a.png"));
        QVERIFY(!ZResource::loadImage("appdir:" + m_appSub + "/a.png").isNull());
    }

    // A cached pixmap comes back as the same pixmap; editing the file on disk
    // changes its key, so the next load reads the new content.
    void cacheHitsAndStaleFiles()
    {
        const QString name = m_appSub + "/touched.png";
        QVERIFY(writePng(inApp(name), Qt::red));
        QVERIFY(setMTime(inApp(name), 1000000000));
        const QString key = ZResource::pixmapCacheKey(name, false);
        QVERIFY(!key.isEmpty() && key != ZResource::pixmapCacheKey(name, true));
        const QPixmap first = ZResource::loadPixmap(name, false, true);
        QVERIFY(!first.isNull());
        QCOMPARE(ZResource::loadPixmap(name, false, true).cacheKey(), first.cacheKey());

        QVERIFY(writePng(inApp(name), Qt::green, QSize(9, 9)));
        QVERIFY(setMTime(inApp(name), 1000000100));
        QVERIFY(ZResource::pixmapCacheKey(name, false) != key);
        const QPixmap third = ZResource::loadPixmap(name, false, true);
        QVERIFY(third.cacheKey() != first.cacheKey());
        QCOMPARE(QColor(third.toImage().pixel(0, 0)), QColor(Qt::green));

        // Without caching nothing is stored.
        const int before = ZResource::cacheCount(false);
        QVERIFY(writePng(inApp(m_appSub + "/uncached.png"), Qt::blue));
        QVERIFY(!ZResource::loadPixmap(m_appSub + "/uncached.png", false, false).isNull());
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
        QCOMPARE(t8.toImage().pixel(0, 0), ZTheme::convertToThemeColor(QColor(Qt::red)).rgba());
        QVERIFY(t0.toImage().pixel(0, 0) != t8.toImage().pixel(0, 0));
    }

    // A list gives each name's pixmap in order, holes included. Lists of
    // embedded images are kept, until a theme change for tinted ones; lists
    // with a file on disk follow the file.
    void pixmapLists()
    {
        const QString a = QStringLiteral(":/image/theme/checkbox_default_normal.png");
        const QString b = QStringLiteral(":/image/theme/checkbox_selected_normal.png");
        const QString names = a + "|" + b;
        for (const bool tinted : {false, true}) {
            ZTheme::setThemeIndex(0);
            const QList<QPixmap> first = ZResource::loadPixmaps(names, tinted);
            QCOMPARE(first.size(), 2);
            QCOMPARE(first.at(0).cacheKey(), ZResource::loadPixmap(a, tinted, true).cacheKey());
            QCOMPARE(first.at(1).cacheKey(), ZResource::loadPixmap(b, tinted, true).cacheKey());
            ZTheme::setThemeIndex(8);
            const QList<QPixmap> after = ZResource::loadPixmaps(names, tinted);
            QCOMPARE(after.at(1).cacheKey(), ZResource::loadPixmap(b, tinted, true).cacheKey());
            QCOMPARE(after.at(0).toImage() == first.at(0).toImage(), !tinted);
        }

        const QList<QPixmap> holes = ZResource::loadPixmaps(a + "||:/no/such.png|" + b, false);
        QCOMPARE(holes.size(), 4);
        QVERIFY(!holes.at(0).isNull() && holes.at(1).isNull() && holes.at(2).isNull() && !holes.at(3).isNull());

        const QString file = m_appSub + "/listed.png";
        QVERIFY(writePng(inApp(file), Qt::red));
        QVERIFY(setMTime(inApp(file), 1000000000));
        QCOMPARE(QColor(ZResource::loadPixmaps(a + "|" + file, false).at(1).toImage().pixel(0, 0)), QColor(Qt::red));
        QVERIFY(writePng(inApp(file), Qt::green));
        QVERIFY(setMTime(inApp(file), 1000000100));
        QCOMPARE(QColor(ZResource::loadPixmaps(a + "|" + file, false).at(1).toImage().pixel(0, 0)), QColor(Qt::green));
    }

    void cachesAreCapped()
    {
        for (int i = 0; i < 130; ++i) {
            const QString name = QStringLiteral("%1/many/%2.png").arg(m_appSub).arg(i);
            QVERIFY(writePng(inApp(name), QColor(i, 0, 0)));
            QVERIFY(!ZResource::loadPixmap(name, true, true).isNull());
        }
        QCOMPARE(ZResource::cacheCount(false), 100);
        QCOMPARE(ZResource::cacheCount(true), 100);
    }
};

QTEST_MAIN(tst_ZResource)
#include "tst_zresource.moc"
