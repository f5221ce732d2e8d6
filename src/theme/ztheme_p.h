#ifndef ZTHEME_P_H
#define ZTHEME_P_H

#include "ztheme.h"

#include <QRgb>

/*
 * The tint towards one theme colour. For a fixed theme colour the tinted
 * colour depends only on the source's lightness, and the lightness of an
 * 8-bit colour only on max + min of its channels (0 to 510): the whole tint
 * is one table of 511 entries.
 */
class ZThemeTint
{
public:
    explicit ZThemeTint(const QColor &themeColor);

    /// The tinted RGB of an opaque colour, alpha bits zero.
    QRgb tint(QRgb rgb) const { return m_table[lightnessKey(rgb)]; }
    /// Tints 32-bit ARGB pixels from \a src into \a dst (which may be the
    /// same), keeping each pixel's alpha.
    void tintPixels(const QRgb *src, QRgb *dst, qsizetype count) const;

    /// max + min of the three channels.
    static inline int lightnessKey(QRgb rgb)
    {
        const int r = qRed(rgb), g = qGreen(rgb), b = qBlue(rgb);
        const int mx = qMax(r, qMax(g, b));
        const int mn = qMin(r, qMin(g, b));
        return mx + mn;
    }

    /// The tint of one colour by the formula, without the table.
    static QRgb tintByFormula(QRgb rgb, double hueT, double satT, double shift,
                              int hueAdjust = -1, int satAdjust = -1);

    /// Hue in degrees, saturation and lightness on 0 to 100.
    static void rgbToHsl(QRgb rgb, double &h, double &s, double &l);
    /// The opaque colour of a hue, saturation and lightness (alpha bits zero).
    static QRgb hslToRgb(double h, double s, double l);

    double hue() const { return m_hue; }
    double saturation() const { return m_saturation; }
    double shift() const { return m_shift; }

private:
    double m_hue = 0;        // degrees
    double m_saturation = 0; // 0 to 100
    double m_shift = 0;      // lightness shift, on the 0 to 100 scale
    QRgb m_table[511];
};

/*
 * Applies a named skin to an object. The XML loader, which owns the skins,
 * installs the applier; until then setSkinName does nothing.
 */
using ZSkinApplier = void (*)(QObject *object, const QString &skinName);
ZKIT_EXPORT void zSetSkinApplier(ZSkinApplier applier);

#endif // ZTHEME_P_H
