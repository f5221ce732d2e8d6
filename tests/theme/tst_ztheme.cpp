// Theme table, nearest-row search, the tint and theme-change propagation.

#include "ztheme.h"
#include "zthemechangeevent.h"

#include <QApplication>
#include <QLinearGradient>
#include <QWidget>
#include <QtTest>

#include <cmath>

namespace {

void toHsl(double r, double g, double b, double &h, double &s, double &l)
{
    r /= 255, g /= 255, b /= 255;
    const double mx = std::max({r, g, b}), mn = std::min({r, g, b}), d = mx - mn;
    l = (mx + mn) / 2;
    h = s = 0;
    if (d != 0) {
        s = l > 0.5 ? d / (2 - mx - mn) : d / (mx + mn);
        h = 60 * (mx == r ? (g - b) / d + (g < b ? 6 : 0) : mx == g ? (b - r) / d + 2 : (r - g) / d + 4);
    }
    s *= 100, l *= 100;
}

// The tint written out from its definition, independent of the library's
// table: hue and saturation of the theme, lightness shifted.
QRgb referenceTint(QRgb src, const QColor &theme)
{
    double ht, st, lt, h, s, l;
    toHsl(theme.red(), theme.green(), theme.blue(), ht, st, lt);
    toHsl(qRed(src), qGreen(src), qBlue(src), h, s, l);
    if (l >= 100 || l <= 0)
        return src;
    const double shift = lt > 50 ? std::pow(lt - 50, 0.88) : -std::pow(50 - lt, 0.88);
    const double L = std::clamp(l + shift, 0.0, 100.0) / 100, S = st / 100, H = ht / 360;
    auto channel = [](double p, double q, double t) {
        t += t < 0 ? 1 : t > 1 ? -1 : 0;
        return t < 1.0 / 6 ? p + (q - p) * 6 * t : t < 0.5 ? q : t < 2.0 / 3 ? p + (q - p) * (2.0 / 3 - t) * 6 : p;
    };
    double r = L, g = L, b = L;
    if (S != 0) {
        const double q = L < 0.5 ? L * (1 + S) : L + S - L * S, p = 2 * L - q;
        r = channel(p, q, H + 1.0 / 3), g = channel(p, q, H), b = channel(p, q, H - 1.0 / 3);
    }
    auto to8 = [](double v) { return std::clamp(int(std::lround(v * 255)), 0, 255); };
    return qRgba(to8(r), to8(g), to8(b), qAlpha(src));
}

// The colour with the same a*, b* as \a color and L* moved by \a dl (D65).
QColor withLabLightness(const QColor &color, double dl)
{
    auto lin = [](double c) { c /= 255; return 100 * (c > 0.04045 ? std::pow((c + 0.055) / 1.055, 2.4) : c / 12.92); };
    const double r = lin(color.red()), g = lin(color.green()), b = lin(color.blue());
    auto f = [](double t) { return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 0.13793; };
    const double fx = f((0.4124 * r + 0.3576 * g + 0.1805 * b) / 95.047);
    const double fy = f((0.2126 * r + 0.7152 * g + 0.0722 * b) / 100);
    const double fz = f((0.0193 * r + 0.1192 * g + 0.9505 * b) / 108.88);
    const double ny = (116 * fy + dl) / 116, nx = ny + fx - fy, nz = ny - (fy - fz);
    auto finv = [](double t) { return t * t * t > 0.008856 ? t * t * t : (t - 0.13793) / 7.787; };
    const double X = finv(nx) * 95.047, Y = finv(ny) * 100, Z = finv(nz) * 108.88;
    auto gam = [](double c) {
        c = std::clamp(c / 100, 0.0, 1.0);
        return int(std::lround(255 * (c > 0.0031308 ? 1.055 * std::pow(c, 1 / 2.4) - 0.055 : 12.92 * c)));
    };
    return QColor(gam(3.2406 * X - 1.5372 * Y - 0.4986 * Z), gam(-0.9689 * X + 1.8758 * Y + 0.0415 * Z),
                  gam(0.0557 * X - 0.2040 * Y + 1.0570 * Z));
}

class ThemeEventCounter : public QObject
{
public:
    int count = 0;
    bool eventFilter(QObject *, QEvent *e) override
    {
        count += e->type() == ZThemeChangeEvent::eventType();
        return false;
    }
};

} // namespace

class tst_ZTheme : public QObject
{
    Q_OBJECT

private slots:
    void init() { ZTheme::setThemeIndex(0); }

    void table_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QRgb>("theme");
        QTest::addColumn<QList<QRgb>>("levels");
        const QRgb white = 0xffffffffu;
        QTest::newRow("0") << 0 << 0xff3a6ea5u << QList<QRgb>{0xff010101u, 0xff020202u, 0xff030303u, 0xff040404u, 0xff000000u};
        QTest::newRow("1") << 1 << 0xff4bffa8u << QList<QRgb>{white, 0, 0, 0, white};
        QTest::newRow("5") << 5 << 0xffbde594u << QList<QRgb>{white, 0, 0, 0, white};
        QTest::newRow("7") << 7 << 0xff16c516u << QList<QRgb>{white, 0, 0, 0, white};
        QTest::newRow("8") << 8 << 0xff0000aau << QList<QRgb>{white, 0, 0, 0, white};
    }
    void table()
    {
        QFETCH(int, index);
        QFETCH(QRgb, theme);
        QFETCH(QList<QRgb>, levels); // 0: not checked
        ZTheme::setThemeIndex(index);
        QCOMPARE(ZTheme::themeIndex(), index);
        QCOMPARE(ZTheme::themeColor().rgba(), theme);
        QCOMPARE(ZTheme::textColor().rgba(), 0xffffffffu);
        for (int level = 0; level < 5; ++level) {
            if (levels[level])
                QCOMPARE(ZTheme::levelColor(level).rgba(), levels[level]);
        }
        QVERIFY(!ZTheme::levelColor(5).isValid());
        QVERIFY(!ZTheme::levelColor(-1).isValid());
    }

    void nearestIndex_data()
    {
        QTest::addColumn<QColor>("color");
        QTest::addColumn<int>("index"); // -2: any valid row
        QTest::newRow("row 0 exact") << QColor(0x3a, 0x6e, 0xa5) << 0;
        QTest::newRow("row 6/7 tie goes low") << QColor(0x16, 0xc5, 0x16) << 6;
        QTest::newRow("row 8 exact") << QColor(0x00, 0x00, 0xaa) << 8;
        QTest::newRow("row 5 exact") << QColor(0xbd, 0xe5, 0x94) << 5;
        // Same hue and saturation, other lightness: the row still wins.
        QTest::newRow("row 0 lighter") << QColor::fromHsl(QColor(0x3a, 0x6e, 0xa5).hslHue(),
                                                           QColor(0x3a, 0x6e, 0xa5).hslSaturation(), 150) << 0;
        QTest::newRow("row 8 lighter") << QColor::fromHsl(240, 255, 120) << 8;
        // Only the (a*, b*) plane counts.
        QTest::newRow("row 6, other L*") << withLabLightness(QColor(0x16, 0xc5, 0x16), -12) << 6;
        QTest::newRow("row 8, other L*") << withLabLightness(QColor(0x00, 0x00, 0xaa), 15) << 8;
        QTest::newRow("row 5, other L*") << withLabLightness(QColor(0xbd, 0xe5, 0x94), -25) << 5;
        QTest::newRow("red goes somewhere valid") << QColor(Qt::red) << -2;
    }
    void nearestIndex()
    {
        QFETCH(QColor, color);
        QFETCH(int, index);
        ZTheme::setThemeColor(color);
        QCOMPARE(ZTheme::themeColor(), color);
        if (index == -2)
            QVERIFY(ZTheme::themeIndex() >= 0 && ZTheme::themeIndex() <= 8);
        else
            QCOMPARE(ZTheme::themeIndex(), index);
    }


    // The image path (a table) and the colour path must both give exactly
    // the formula's result, for every alpha, over a dense sample.
    void tintExact_data()
    {
        QTest::addColumn<QColor>("theme");
        QTest::newRow("row 0") << QColor(0x3a, 0x6e, 0xa5);
        QTest::newRow("light green") << QColor(0xbd, 0xe5, 0x94);
        QTest::newRow("dark blue") << QColor(0x00, 0x00, 0xaa);
        QTest::newRow("grey") << QColor(128, 128, 128);
        QTest::newRow("orange") << QColor(0xff, 0x88, 0x11);
    }
    void tintExact()
    {
        QFETCH(QColor, theme);
        ZTheme::setThemeColor(theme);
        QVector<QRgb> sources;
        for (int r = 0; r < 256; r += 17)
            for (int g = 0; g < 256; g += 15)
                for (int b = 0; b < 256; b += 13)
                    sources.append(qRgba(r, g, b, (r * 7 + g * 3 + b) & 0xff));
        for (int i = 0; i < 256; ++i) // every lightness, every alpha
            sources.append(qRgba(i, 255 - i, i / 2, i));
        sources << qRgba(255, 255, 255, 255) << qRgba(255, 255, 255, 40) << qRgba(0, 0, 0, 255); // stay as they are
        QImage image(64, 64 * 8, QImage::Format_ARGB32);
        QVERIFY(sources.size() <= image.width() * image.height());
        for (int i = 0; i < image.width() * image.height(); ++i)
            image.setPixel(i % 64, i / 64, sources[i % sources.size()]);

        const QImage tinted = ZTheme::convertToThemeImage(image);
        QCOMPARE(tinted.format(), QImage::Format_ARGB32);
        for (int i = 0; i < sources.size(); ++i) {
            const QRgb expected = referenceTint(sources[i], theme), got = tinted.pixel(i % 64, i / 64);
            if (got != expected)
                QFAIL(qPrintable(QStringLiteral("pixel %1: source %2 tinted %3, formula %4")
                                     .arg(i).arg(sources[i], 8, 16).arg(got, 8, 16).arg(expected, 8, 16)));
            QCOMPARE(ZTheme::convertToThemeColor(QColor::fromRgba(sources[i])).rgba(), expected);
        }
    }

    // Adjustments equal to the source's own hue and saturation give the plain
    // tint; other adjustments move it.
    void adjustedTint()
    {
        ZTheme::setThemeColor(QColor(0x00, 0x00, 0xaa));
        const QColor src = QColor::fromHsl(120, 255, 128);
        const QColor plain = ZTheme::convertToThemeColor(src);
        QCOMPARE(ZTheme::convertToThemeColor(src, 120, 100, 0).rgba(), plain.rgba());
        QVERIFY(ZTheme::convertToThemeColor(src, 0, 100, 0).rgba() != plain.rgba());
    }

    void brushes()
    {
        ZTheme::setThemeColor(QColor(0xff, 0x88, 0x11));
        const QColor blue(40, 90, 200), tinted = ZTheme::convertToThemeColor(blue);
        QCOMPARE(ZTheme::convertToThemeBrush(QBrush()), QBrush());
        QCOMPARE(ZTheme::convertToThemeBrush(QBrush(blue)).color(), tinted);

        QImage texture(4, 4, QImage::Format_ARGB32);
        texture.fill(blue);
        const QBrush textured = ZTheme::convertToThemeBrush(QBrush(texture));
        QCOMPARE(textured.style(), Qt::TexturePattern);
        QCOMPARE(QColor(textured.textureImage().pixel(1, 1)), tinted);

        QLinearGradient gradient(0, 0, 10, 0);
        gradient.setColorAt(0, blue);
        gradient.setColorAt(1, Qt::white);
        const QBrush tintedGradient = ZTheme::convertToThemeBrush(QBrush(gradient));
        QVERIFY(tintedGradient.gradient());
        QCOMPARE(tintedGradient.gradient()->stops().at(0).second, tinted);
        QCOMPARE(tintedGradient.gradient()->stops().at(1).second, QColor(Qt::white));
    }

    // One posted event per top-level widget, delivered after the change.
    void themeChangeReachesTopLevels()
    {
        QWidget a, b;
        ThemeEventCounter counter;
        a.installEventFilter(&counter);
        b.installEventFilter(&counter);
        ZTheme::setThemeIndex(3);
        QCOMPARE(counter.count, 0); // posted, not sent
        QCoreApplication::processEvents();
        QCOMPARE(counter.count, 2);
        ZTheme::setThemeColor(QColor(1, 2, 3));
        QCoreApplication::processEvents();
        QCOMPARE(counter.count, 4);
    }
};

QTEST_MAIN(tst_ZTheme)
#include "tst_ztheme.moc"
