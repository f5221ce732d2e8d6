#include "ztheme_p.h"
#include "zresource.h"
#include "zthemechangeevent.h"

#include <QApplication>
#include <QAtomicPointer>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <cmath>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif
#include <limits>
#include <memory>

namespace {

struct ThemeRow {
    QRgb theme;
    QRgb text;
    QRgb levels[5];
};

// The nine rows of theme colours, as every skin was designed against them.
const ThemeRow kThemeTable[9] = {
    {0xff3a6ea5, 0xffffffff, {0xff010101, 0xff020202, 0xff030303, 0xff040404, 0xff000000}},
    {0xff4bffa8, 0xffffffff, {0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff}},
    {0xff21ff9a, 0xffffffff, {0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff}},
    {0xff29ff95, 0xffffffff, {0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff}},
    {0xff54b47d, 0xffffffff, {0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff}},
    {0xffbde594, 0xffffffff, {0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff}},
    {0xff16c516, 0xffffffff, {0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff}},
    {0xff16c516, 0xffffffff, {0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff}},
    {0xff0000aa, 0xffffffff, {0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff}},
};
constexpr int kThemeRows = int(sizeof(kThemeTable) / sizeof(kThemeTable[0]));

struct ThemeState {
    QColor color = QColor::fromRgba(kThemeTable[0].theme);
    int index = 0;
    std::unique_ptr<ZThemeTint> tint; // for `color`, built on first use
};

QAtomicPointer<ThemeState> g_state;
ZSkinApplier g_skinApplier = nullptr;

ThemeState *state()
{
    ThemeState *s = g_state.loadAcquire();
    if (s)
        return s;
    auto *fresh = new ThemeState;
    if (g_state.testAndSetOrdered(nullptr, fresh))
        return fresh;
    delete fresh;
    return g_state.loadAcquire();
}

// Frees the state when the library is unloaded.
const struct StateReaper {
    ~StateReaper() { delete g_state.fetchAndStoreOrdered(nullptr); }
} stateReaper;

const ZThemeTint &currentTint()
{
    ThemeState *s = state();
    if (!s->tint)
        s->tint = std::make_unique<ZThemeTint>(s->color);
    return *s->tint;
}

void rgbToHsl8(int r8, int g8, int b8, double &h, double &s, double &l)
{
    const double r = r8 / 255.0, g = g8 / 255.0, b = b8 / 255.0;
    const double mx = std::max(r, std::max(g, b));
    const double mn = std::min(r, std::min(g, b));
    const double light = (mx + mn) / 2;
    l = light * 100;
    if (mx == mn) {
        h = s = 0;
        return;
    }
    const double d = mx - mn;
    s = (light > 0.5 ? d / (2 - mx - mn) : d / (mx + mn)) * 100;
    double hue;
    if (mx == r)
        hue = (g - b) / d + (g < b ? 6 : 0);
    else if (mx == g)
        hue = (b - r) / d + 2;
    else
        hue = (r - g) / d + 4;
    h = hue * 60;
}

double hueToChannel(double p, double q, double t)
{
    if (t < 0)
        t += 1;
    if (t > 1)
        t -= 1;
    if (t < 1.0 / 6)
        return p + (q - p) * 6 * t;
    if (t < 1.0 / 2)
        return q;
    if (t < 2.0 / 3)
        return p + (q - p) * (2.0 / 3 - t) * 6;
    return p;
}

} // namespace

void ZThemeTint::rgbToHsl(QRgb rgb, double &h, double &s, double &l)
{
    rgbToHsl8(qRed(rgb), qGreen(rgb), qBlue(rgb), h, s, l);
}

QRgb ZThemeTint::hslToRgb(double h, double s, double l)
{
    h = std::fmod(h, 360.0);
    if (h < 0)
        h += 360;
    s = std::clamp(s, 0.0, 100.0) / 100;
    l = std::clamp(l, 0.0, 100.0) / 100;
    double r, g, b;
    if (s == 0) {
        r = g = b = l;
    } else {
        const double q = l < 0.5 ? l * (1 + s) : l + s - l * s;
        const double p = 2 * l - q;
        const double hk = h / 360;
        r = hueToChannel(p, q, hk + 1.0 / 3);
        g = hueToChannel(p, q, hk);
        b = hueToChannel(p, q, hk - 1.0 / 3);
    }
    auto to8 = [](double v) { return std::clamp(int(std::lround(v * 255)), 0, 255); };
    return qRgb(to8(r), to8(g), to8(b)) & 0x00ffffff;
}

namespace {

double lightnessShift(double themeLightness)
{
    return themeLightness - 50 > 0 ? std::pow(themeLightness - 50, 0.88)
                                   : -std::pow(50 - themeLightness, 0.88);
}

void postThemeChange()
{
    if (auto *app = qobject_cast<QApplication *>(QCoreApplication::instance())) {
        const QWidgetList tops = QApplication::topLevelWidgets();
        for (QWidget *w : tops)
            QCoreApplication::postEvent(w, new ZThemeChangeEvent);
        Q_UNUSED(app);
    }
}

void setState(const QColor &color, int index)
{
    ThemeState *s = state();
    s->color = color;
    s->index = index;
    s->tint.reset();
    postThemeChange();
    ZTheme::resetTheme();
}

// CIE L*a*b* (a*, b*) of an sRGB colour, D65 white.
void colorToAB(const QColor &color, double &a, double &b)
{
    auto linear = [](int channel) {
        double c = std::min(channel, 255) / 255.0;
        c = c > 0.04045 ? std::pow((c + 0.055) / 1.055, 2.4) : c / 12.92;
        return c * 100;
    };
    const double r = linear(color.red()), g = linear(color.green()), bl = linear(color.blue());
    const double x = 0.4124 * r + 0.3576 * g + 0.1805 * bl;
    const double y = 0.2126 * r + 0.7152 * g + 0.0722 * bl;
    const double z = 0.0193 * r + 0.1192 * g + 0.9505 * bl;
    auto f = [](double t) { return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 0.13793; };
    const double fx = f(x / 95.047), fy = f(y / 100.0), fz = f(z / 108.88);
    a = 500 * (fx - fy);
    b = 200 * (fy - fz);
}

} // namespace

// ---------------------------------------------------------------------------

ZThemeTint::ZThemeTint(const QColor &themeColor)
{
    double lightness;
    rgbToHsl(themeColor.rgb(), m_hue, m_saturation, lightness);
    m_shift = lightnessShift(lightness);
    // Index k = max + min of a colour whose lightness is k / 510. Any grey
    // with that sum stands for all colours with it.
    for (int k = 0; k <= 510; ++k) {
        const int lo = k / 2, hi = k - lo;
        m_table[k] = tintByFormula(qRgb(hi, lo, lo), m_hue, m_saturation, m_shift) & 0x00ffffff;
    }
}

void ZThemeTint::tintPixels(const QRgb *src, QRgb *dst, qsizetype count) const
{
    const QRgb *table = m_table;
    qsizetype i = 0;
#if defined(__SSE2__)
    // Four pixels at a time: the per-channel max and min come from byte-wise
    // max/min of the pixel and its shifted copies (only the low byte of each
    // lane matters); the table lookups stay scalar.
    const __m128i lowByte = _mm_set1_epi32(0xff);
    const __m128i alphaMask = _mm_set1_epi32(int(0xff000000u));
    alignas(16) quint32 keys[4];
    for (; i + 4 <= count; i += 4) {
        const __m128i p = _mm_loadu_si128(reinterpret_cast<const __m128i *>(src + i));
        const __m128i g = _mm_srli_epi32(p, 8);
        const __m128i r = _mm_srli_epi32(p, 16);
        const __m128i mx = _mm_max_epu8(_mm_max_epu8(p, g), r);
        const __m128i mn = _mm_min_epu8(_mm_min_epu8(p, g), r);
        _mm_store_si128(reinterpret_cast<__m128i *>(keys),
                        _mm_add_epi32(_mm_and_si128(mx, lowByte), _mm_and_si128(mn, lowByte)));
        const __m128i tinted = _mm_set_epi32(int(table[keys[3]]), int(table[keys[2]]),
                                             int(table[keys[1]]), int(table[keys[0]]));
        _mm_storeu_si128(reinterpret_cast<__m128i *>(dst + i),
                         _mm_or_si128(_mm_and_si128(p, alphaMask), tinted));
    }
#endif
    for (; i < count; ++i) {
        const QRgb p = src[i];
        dst[i] = (p & 0xff000000u) | table[lightnessKey(p)];
    }
}

QRgb ZThemeTint::tintByFormula(QRgb rgb, double hueT, double satT, double shift,
                               int hueAdjust, int satAdjust)
{
    double h, s, l;
    rgbToHsl(rgb, h, s, l);
    if (l >= 100 || l <= 0)
        return rgb;
    double newHue = hueT, newSat = satT;
    if (hueAdjust != -1 || satAdjust != -1) {
        newHue = h - hueAdjust + hueT;
        newSat = s - satAdjust + satT;
    }
    return (rgb & 0xff000000u) | hslToRgb(newHue, newSat, l + shift);
}

// ---------------------------------------------------------------------------

QColor ZTheme::themeColor()
{
    return state()->color;
}

int ZTheme::themeIndex()
{
    return state()->index;
}

QColor ZTheme::textColor()
{
    const int index = themeIndex();
    if (index < 0 || index >= kThemeRows)
        return QColor();
    return QColor::fromRgba(kThemeTable[index].text);
}

QColor ZTheme::levelColor(int level)
{
    const int index = themeIndex();
    if (level < 0 || level > 4 || index < 0 || index >= kThemeRows)
        return QColor();
    return QColor::fromRgba(kThemeTable[index].levels[level]);
}

void ZTheme::setThemeIndex(int index)
{
    // The index is not range-checked by contract; a bad one must still not
    // read outside the table.
    const QColor color = index >= 0 && index < kThemeRows ? QColor::fromRgba(kThemeTable[index].theme)
                                                         : themeColor();
    setState(color, index);
}

void ZTheme::setThemeColor(const QColor &color)
{
    setState(color, calcNearestThemeIndex(color));
}

void ZTheme::resetTheme()
{
    ZResource::clearTintedCache();
}

int ZTheme::calcNearestThemeIndex(const QColor &color)
{
    double a, b;
    colorToAB(color, a, b);
    double best = std::numeric_limits<double>::max();
    int bestIndex = -1;
    for (int i = 0; i < kThemeRows; ++i) {
        double ra, rb;
        colorToAB(QColor::fromRgba(kThemeTable[i].theme), ra, rb);
        const double d = (a - ra) * (a - ra) + (b - rb) * (b - rb);
        if (d < best) {
            best = d;
            bestIndex = i;
        }
    }
    return bestIndex;
}

QColor ZTheme::convertToThemeColor(const QColor &color)
{
    if (!color.isValid())
        return color;
    const QRgb rgb = color.rgba();
    return QColor::fromRgba((rgb & 0xff000000u) | currentTint().tint(rgb));
}

QColor ZTheme::convertToThemeColor(const QColor &color, int hue, int saturation, int lightness)
{
    Q_UNUSED(lightness); // the lightness always moves by the theme's shift
    if (!color.isValid())
        return color;
    const ZThemeTint &t = currentTint();
    return QColor::fromRgba(ZThemeTint::tintByFormula(color.rgba(), t.hue(), t.saturation(), t.shift(),
                                                      hue, saturation));
}

QImage ZTheme::convertToThemeImage(const QImage &image)
{
    if (image.isNull())
        return image;
    const QImage source = image.format() == QImage::Format_ARGB32
        ? image : image.convertToFormat(QImage::Format_ARGB32);
    // Tint straight from the source into a fresh image: one pass, no copy.
    QImage out(source.size(), QImage::Format_ARGB32);
    if (out.isNull())
        return out;
    out.setDevicePixelRatio(source.devicePixelRatio());
    out.setDotsPerMeterX(source.dotsPerMeterX());
    out.setDotsPerMeterY(source.dotsPerMeterY());
    const ZThemeTint &t = currentTint();
    const int w = source.width();
    for (int y = 0; y < source.height(); ++y)
        t.tintPixels(reinterpret_cast<const QRgb *>(source.constScanLine(y)),
                     reinterpret_cast<QRgb *>(out.scanLine(y)), w);
    return out;
}

QPixmap ZTheme::convertToThemePixmap(const QPixmap &pixmap)
{
    if (pixmap.isNull())
        return pixmap;
    QPixmap out = QPixmap::fromImage(convertToThemeImage(pixmap.toImage()));
    out.setDevicePixelRatio(pixmap.devicePixelRatio());
    return out;
}

QBrush ZTheme::convertToThemeBrush(const QBrush &brush)
{
    if (brush.style() == Qt::NoBrush)
        return brush;
    if (brush.style() == Qt::TexturePattern) {
        QBrush out = brush;
        out.setTextureImage(convertToThemeImage(brush.textureImage()));
        return out;
    }
    if (const QGradient *gradient = brush.gradient()) {
        // Gradients keep their geometry; their stops are tinted.
        QGradient tinted = *gradient;
        QGradientStops stops = tinted.stops();
        for (QGradientStop &stop : stops)
            stop.second = convertToThemeColor(stop.second);
        tinted.setStops(stops);
        QBrush out(tinted);
        out.setTransform(brush.transform());
        return out;
    }
    if (brush.color().isValid())
        return QBrush(convertToThemeColor(brush.color()));
    return brush;
}

void ZTheme::setSkinName(QObject *object, const QString &skinName)
{
    if (g_skinApplier && object)
        g_skinApplier(object, skinName);
}

void zSetSkinApplier(ZSkinApplier applier)
{
    g_skinApplier = applier;
}

QImage ZTheme::getImage(const QString &name)
{
    return ZResource::loadImage(name);
}

QPixmap ZTheme::getPixmap(const QString &name, bool tinted, bool cache)
{
    return ZResource::loadPixmap(name, tinted, cache);
}

QPixmap ZTheme::getRawPixmap(const QString &)
{
    return QPixmap();
}

QPixmap ZTheme::getThemePixmap(const QString &)
{
    return QPixmap();
}

QRect ZTheme::virtualScreenRect()
{
    QRect rect;
    const auto screens = QGuiApplication::screens();
    for (const QScreen *screen : screens)
        rect |= screen->geometry();
    return rect;
}

QSize ZTheme::virtualScreenSize()
{
    return virtualScreenRect().size();
}
