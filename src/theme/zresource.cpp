#include "zresource.h"
#include "ztheme.h"
#include "xmlnode.h"

#include <QAtomicPointer>
#include <QCache>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QGuiApplication>
#include <QImageReader>
#include <QStandardPaths>
#include <QStringTokenizer>

#include <array>

namespace {

constexpr int kCacheCapacity = 100;

using PixmapCache = QCache<QString, QPixmap>;

QAtomicPointer<PixmapCache> g_caches[2]; // plain, tinted

PixmapCache *cache(bool tinted)
{
    QAtomicPointer<PixmapCache> &slot = g_caches[tinted ? 1 : 0];
    PixmapCache *c = slot.loadAcquire();
    if (c)
        return c;
    auto *fresh = new PixmapCache(kCacheCapacity);
    if (slot.testAndSetOrdered(nullptr, fresh))
        return fresh;
    delete fresh;
    return slot.loadAcquire();
}

const struct CacheReaper {
    ~CacheReaper()
    {
        for (auto &slot : g_caches)
            delete slot.fetchAndStoreOrdered(nullptr);
    }
} cacheReaper;

QString applicationDir()
{
    if (QCoreApplication::instance())
        return QCoreApplication::applicationDirPath();
    return QString::fromLocal8Bit(qgetenv("appdir"));
}

// The name to open, or an empty string when the name stands for nothing.
QString resolve(const QString &name)
{
    if (name.isEmpty())
        return QString();
    if (name.contains(QLatin1Char(':')))
        return name;
    if (QDir::isRelativePath(name))
        return applicationDir() + QLatin1Char('/') + name;
    return QString();
}

bool wantsHighDensity()
{
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance())
        && qApp->devicePixelRatio() >= 1.5;
}

// "dir/name.png" -> "dir/name@2x.png"
QString highDensityName(const QString &resolved)
{
    const int slash = resolved.lastIndexOf(QLatin1Char('/'));
    const int dot = resolved.lastIndexOf(QLatin1Char('.'));
    if (dot <= slash)
        return resolved + QLatin1String("@2x");
    return resolved.left(dot) + QLatin1String("@2x") + resolved.mid(dot);
}

// The file a pixmap is read from: the @2x form on dense screens when it
// exists. \a ratio receives the pixmap's device pixel ratio.
QString pixmapFile(const QString &name, qreal *ratio)
{
    const QString resolved = resolve(name);
    *ratio = 1;
    if (resolved.isEmpty() || !wantsHighDensity())
        return resolved;
    const QString dense = highDensityName(resolved);
    if (QFileInfo::exists(dense)) {
        *ratio = 2;
        return dense;
    }
    return resolved;
}

// "<absolute path><mtime s><size>" of a file.
QString fileStamp(const QString &file)
{
    const QFileInfo info(file);
    const QDateTime modified = info.lastModified();
    const qint64 seconds = modified.isValid() ? modified.toSecsSinceEpoch() : 0;
    return info.absoluteFilePath() + QString::number(seconds) + QString::number(info.size());
}

QString keyFor(const QString &file, bool tinted)
{
    const auto key = [](const QString &stamp, bool tinted) {
        return QLatin1String("zpixmap") + stamp + (tinted ? QLatin1Char('1') : QLatin1Char('0'));
    };
    if (!file.startsWith(QLatin1Char(':')))
        return key(fileStamp(file), tinted);
    // Embedded files do not change while the process runs, and reading a
    // resource's time costs a time-zone conversion: both keys of each are
    // made once. (GUI thread only, like every pixmap.)
    static QHash<QString, std::array<QString, 2>> resourceKeys;
    auto it = resourceKeys.constFind(file);
    if (it == resourceKeys.constEnd()) {
        const QString stamp = fileStamp(file);
        it = resourceKeys.insert(file, {key(stamp, false), key(stamp, true)});
    }
    return (*it)[tinted ? 1 : 0];
}

QPixmap readPixmap(const QString &file, qreal ratio)
{
    QImageReader reader(file);
    reader.setDecideFormatFromContent(true);
    const QImage image = reader.read();
    if (image.isNull())
        return QPixmap();
    QPixmap pixmap = QPixmap::fromImage(image);
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

// Whole lists of embedded images, by tint and density (see loadPixmaps()).
constexpr int kMostLists = 64;
QHash<QString, QList<QPixmap>> g_lists[2][2];

QPixmap plainPixmap(const QString &file, qreal ratio, bool useCache)
{
    const QString key = keyFor(file, false);
    PixmapCache *plain = cache(false);
    if (const QPixmap *hit = plain->object(key))
        return *hit;
    QPixmap pixmap = readPixmap(file, ratio);
    if (!pixmap.isNull() && useCache)
        plain->insert(key, new QPixmap(pixmap), 1);
    return pixmap;
}

} // namespace

void ZResource::addDefaultSearchPath()
{
    addSearchPath(QStringLiteral("appdata"),
                  QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    addSearchPath(QStringLiteral("appdir"), applicationDir());
}

void ZResource::addSearchPath(const QString &prefix, const QString &path)
{
    if (path.isEmpty() || !QFileInfo::exists(path))
        return;
    QDir::addSearchPath(prefix, path);
}

QStringList ZResource::searchPaths(const QString &prefix)
{
    return QDir::searchPaths(prefix);
}

QString ZResource::absoluteFileName(const QString &name)
{
    const int colon = name.indexOf(QLatin1Char(':'));
    if (colon > 0) {
        const QStringList paths = QDir::searchPaths(name.left(colon));
        const QString rest = name.mid(colon + 1);
        if (paths.isEmpty())
            return name;
        if (paths.size() > 1 && QFileInfo::exists(name))
            return QFileInfo(name).absoluteFilePath();
        return paths.first() + QLatin1Char('/') + rest;
    }
    if (colon == 0)
        return name;
    if (QDir::isRelativePath(name))
        return applicationDir() + QLatin1Char('/') + name;
    return name;
}

QString ZResource::pixmapCacheKey(const QString &name, bool tinted)
{
    qreal ratio;
    const QString file = pixmapFile(name, &ratio);
    return file.isEmpty() ? QString() : keyFor(file, tinted);
}

QImage ZResource::loadImage(const QString &name)
{
    const QString file = resolve(name);
    if (file.isEmpty())
        return QImage();
    QImageReader reader(file);
    reader.setDecideFormatFromContent(true);
    return reader.read();
}

QPixmap ZResource::loadPixmap(const QString &name, bool tinted, bool useCache)
{
    QPixmap pixmap;
    loadPixmap(name, pixmap, tinted, useCache);
    return pixmap;
}

bool ZResource::loadPixmap(const QString &name, QPixmap &out, bool tinted, bool useCache)
{
    qreal ratio;
    const QString file = pixmapFile(name, &ratio);
    if (file.isEmpty()) {
        out = QPixmap();
        return false;
    }
    if (!tinted) {
        out = plainPixmap(file, ratio, useCache);
        return !out.isNull();
    }
    const QString key = keyFor(file, true);
    PixmapCache *tintedCache = cache(true);
    if (const QPixmap *hit = tintedCache->object(key)) {
        out = *hit;
        return true;
    }
    out = ZTheme::convertToThemePixmap(plainPixmap(file, ratio, true));
    if (!out.isNull() && useCache)
        tintedCache->insert(key, new QPixmap(out), 1);
    return !out.isNull();
}

QByteArray ZResource::loadRawData(const QString &name)
{
    const QString file = resolve(name);
    if (file.isEmpty())
        return QByteArray();
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return QByteArray();
    return f.readAll();
}

bool ZResource::loadXml(const QString &name, XMLNode &out)
{
    const QString file = resolve(name);
    if (file.isEmpty())
        return false;
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return false;
    // Documents are UTF-8; the parser reads the process's 8-bit encoding.
    const QByteArray text = QString::fromUtf8(f.readAll()).toLocal8Bit();
    out = XMLNode::parseString(text.constData());
    return !out.isEmpty();
}

QList<QPixmap> ZResource::loadPixmaps(const QString &names, bool tinted)
{
    // Embedded images do not change while the process runs; the lists hold
    // the same pixmaps as the caches. (GUI thread only, like every pixmap.)
    QHash<QString, QList<QPixmap>> &lists = g_lists[tinted ? 1 : 0][wantsHighDensity() ? 1 : 0];
    if (const auto it = lists.constFind(names); it != lists.constEnd())
        return *it;
    QList<QPixmap> pixmaps;
    bool keep = true;
    for (const QStringView name : QStringTokenizer(names, u'|')) {
        pixmaps.append(loadPixmap(name.toString(), tinted, true));
        // An embedded image missing now may be registered later.
        keep = keep && name.startsWith(u':') && !pixmaps.constLast().isNull();
    }
    if (keep) {
        if (lists.size() >= kMostLists)
            lists.clear();
        lists.insert(names, pixmaps);
    }
    return pixmaps;
}

void ZResource::clearTintedCache()
{
    if (PixmapCache *c = g_caches[1].loadAcquire())
        c->clear();
    for (auto &byDensity : g_lists)
        for (auto &lists : byDensity)
            lists.clear();
}

int ZResource::cacheCount(bool tinted)
{
    PixmapCache *c = g_caches[tinted ? 1 : 0].loadAcquire();
    return c ? c->count() : 0;
}
