#ifndef ZRESOURCE_H
#define ZRESOURCE_H

#include "zglobal.h"

#include <QByteArray>
#include <QImage>
#include <QPixmap>
#include <QString>
#include <QStringList>

class XMLNode;

/*!
 * Turns the paths found in documents and properties into files, images,
 * pixmaps and parsed XML.
 *
 * Names for loading:
 * - a name containing ":" is used as it stands (resource paths ":/...",
 *   search-path prefixes such as "appdir:skin/a.png");
 * - a relative name is taken relative to the application directory;
 * - an absolute name without ":" loads nothing.
 *
 * Every skin pixmap passes through one of two caches (plain and tinted),
 * each holding at most 100 pixmaps, keyed by the file's path, modification
 * time and size, so that a file edited on disk is read afresh.
 *
 * On screens with a device pixel ratio of 1.5 or more, loadPixmap() prefers
 * "name@2x.ext" where it exists and gives the pixmap a device pixel ratio of
 * 2, so that its size in logical pixels is that of the plain image.
 */
class ZKIT_EXPORT ZResource
{
public:
    /// Registers "appdata" (the user's data folder) and "appdir" (the
    /// executable's directory).
    static void addDefaultSearchPath();
    /// Registers \a path under \a prefix when it exists on disk.
    static void addSearchPath(const QString &prefix, const QString &path);
    static QStringList searchPaths(const QString &prefix);

    static QString absoluteFileName(const QString &name);
    /// "zpixmap<absolute path><mtime s><size><tinted 0/1>", or empty when
    /// \a name resolves to nothing.
    static QString pixmapCacheKey(const QString &name, bool tinted);

    static QImage loadImage(const QString &name);
    static QPixmap loadPixmap(const QString &name, bool tinted = false, bool cache = true);
    static bool loadPixmap(const QString &name, QPixmap &out, bool tinted = false, bool cache = true);
    /// The pixmaps of the "|"-separated \a names, each as loadPixmap() gives
    /// it with the cache. Lists of embedded images only (the default skins of
    /// the controls, asked for by every control made) are kept whole until
    /// the tinted cache is emptied.
    static QList<QPixmap> loadPixmaps(const QString &names, bool tinted);
    static QByteArray loadRawData(const QString &name);
    /// Parses the file into \a out; true when the document is not empty.
    static bool loadXml(const QString &name, XMLNode &out);

    /// Empties the tinted cache (the theme does so on every change).
    static void clearTintedCache();
    /// Number of pixmaps held by the plain (false) or tinted (true) cache.
    static int cacheCount(bool tinted);

private:
    ZResource() = delete;
};

#endif // ZRESOURCE_H
