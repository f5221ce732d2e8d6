#ifndef ZTHEME_H
#define ZTHEME_H

#include "zglobal.h"

#include <QBrush>
#include <QColor>
#include <QImage>
#include <QPixmap>
#include <QRect>
#include <QSize>

class QObject;

/*!
 * The process-wide theme: one theme colour and the index of one of nine
 * predefined rows of colours.
 *
 * Controls that take part in theming draw their skin images and colours
 * tinted towards the theme colour: a tinted pixel keeps its lightness (moved
 * by a shift derived from the theme colour's lightness) and takes the theme
 * colour's hue and saturation. Pure white and pure black stay as they are.
 *
 * Changing the theme posts one ZThemeChangeEvent to every top-level widget
 * and empties the cache of tinted pixmaps.
 */
class ZKIT_EXPORT ZTheme
{
public:
    static QColor themeColor();
    static int themeIndex();
    /// Text colour of the current row.
    static QColor textColor();
    /// Level colour 0 to 4 of the current row; any other level is invalid.
    static QColor levelColor(int level);

    /// Selects row \a index (0 to 8, not checked) and its theme colour.
    static void setThemeIndex(int index);
    /// Sets any colour; the index becomes the row whose theme colour is
    /// nearest in the (a*, b*) plane of CIE Lab (ties to the lower index).
    static void setThemeColor(const QColor &color);
    /// Empties the tinted pixmap cache.
    static void resetTheme();

    static QColor convertToThemeColor(const QColor &color);
    static QImage convertToThemeImage(const QImage &image);
    static QPixmap convertToThemePixmap(const QPixmap &pixmap);
    static QBrush convertToThemeBrush(const QBrush &brush);

    /*!
     * The general tint: with all three adjustments -1 the colour takes the
     * theme's hue and saturation; otherwise the new hue is
     * H - \a hue + H(theme) and the new saturation S - \a saturation +
     * S(theme). The lightness always becomes L + shift.
     */
    static QColor convertToThemeColor(const QColor &color, int hue, int saturation, int lightness);

    /// Applies the skin named \a skinName to \a object.
    static void setSkinName(QObject *object, const QString &skinName);

    static QImage getImage(const QString &name);
    static QPixmap getPixmap(const QString &name, bool tinted, bool cache);
    static QPixmap getRawPixmap(const QString &name);
    static QPixmap getThemePixmap(const QString &name);

    /// Bounding rectangle (and size) of all screens together.
    static QRect virtualScreenRect();
    static QSize virtualScreenSize();

private:
    ZTheme() = delete;
    static int calcNearestThemeIndex(const QColor &color);
    friend class tst_ZTheme;
};

#endif // ZTHEME_H
