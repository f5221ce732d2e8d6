// Theme table, nearest-row search, the tint and theme-change propagation.

#include "ztheme.h"
#include "zresource.h"
#include "zthemechangeevent.h"

#include <QApplication>
#include <QLinearGradient>
#include <QWidget>
#include <QtTest>

#include <cmath>

namespace {

// The tint written out straight from its definition, independent of the
// library's table: hue and saturation of the theme, lightness shifted.
QRgb referenceTint(QRgb src, const QColor &theme)
{
    auto hsl = [](double r, double g, double b, double &h, double &s, double &l) {
        r /= 255; g /= 255; b /= 255;
        const double mx = std::max({r, g, b}), mn = std::min({r, g, b});
        l = (mx + mn) / 2;
        h = s = 0;
        if (mx != mn) {
            const double d = mx - mn;
            s = l > 0.5 ? d / (2 - mx - mn) : d / (mx + mn);
            if (mx == r) h = (g - b) / d + (g < b ? 6 : 0);
            else if (mx == g) h = (b - r) / d + 2;
            else h = (r - g) / d + 4;
            h *= 60;
        }
        s *= 100;
        l *= 100;
    };
    double ht, st, lt;
    hsl(theme.red(), theme.green(), theme.blue(), ht, st, lt);
    const double shift = lt > 50 ? std::pow(lt - 50, 0.88) : -std::pow(50 - lt, 0.88);
    double h, s, l;
    hsl(qRed(src), qGreen(src), qBlue(src), h, s, l);
    if (l >= 100 || l <= 0)
        return src;
    const double L = std::clamp(l + shift, 0.0, 100.0) / 100, S = st / 100, H = ht / 360;
    auto channel = [](double p, double q, double t) {
        if (t < 0) t += 1;
        if (t > 1) t -= 1;
        if (t < 1.0 / 6) return p + (q - p) * 6 * t;
        if (t < 0.5) return q;
        if (t < 2.0 / 3) return p + (q - p) * (2.0 / 3 - t) * 6;
        return p;
    };
    double r = L, g = L, b = L;
    if (S != 0) {
        const double q = L < 0.5 ? L * (1 + S) : L + S - L * S, p = 2 * L - q;
        r = channel(p, q, H + 1.0 / 3);
        g = channel(p, q, H);
        b = channel(p, q, H - 1.0 / 3);
    }
    auto to8 = [](double v) { return std::clamp(int(std::lround(v * 255)), 0, 255); };
    return qRgba(to8(r), to8(g), to8(b), qAlpha(src));
}

// The colour with the same a*, b* as \a color and L* moved by \a dl.
QColor withLabLightness(const QColor &color, double dl)
{
    auto lin = [](double c) { c /= 255; return 100 * (c > 0.04045 ? std::pow((c + 0.055) / 1.055, 2.4) : c / 12.92); };
    const double r = lin(color.red()), g = lin(color.green()), b = lin(color.blue());
    const double x = 0.4124 * r + 0.3576 * g + 0.1805 * b;
    const double y = 0.2126 * r + 0.7152 * g + 0.0722 * b;
    const double z = 0.0193 * r + 0.1192 * g + 0.9505 * b;
    auto f = [](double t) { return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 0.13793; };
    const double fx = f(x / 95.047), fy = f(y / 100), fz = f(z / 108.88);
    const double L = 116 * fy - 16 + dl, A = 500 * (fx - fy), B = 200 * (fy - fz);
    const double ny = (L + 16) / 116, nx = ny + A / 500, nz = ny - B / 200;
    auto finv = [](double t) { return t * t * t > 0.008856 ? t * t * t : (t - 0.13793) / 7.787; };
    const double X = finv(nx) * 95.047, Y = finv(ny) * 100, Z = finv(nz) * 108.88;
    // Inverse of the D65 matrix.
    const double R = (3.2406 * X - 1.5372 * Y - 0.4986 * Z) / 100;
    const double G = (-0.9689 * X + 1.8758 * Y + 0.0415 * Z) / 100;
    const double Bl = (0.0557 * X - 0.2040 * Y + 1.0570 * Z) / 100;
    auto gam = [](double c) {
        c = std::clamp(c, 0.0, 1.0);
        return int(std::lround(255 * (c > 0.0031308 ? 1.055 * std::pow(c, 1 / 2.4) - 0.055 : 12.92 * c)));
    };
    return QColor(gam(R), gam(G), gam(Bl));
}

class ThemeEventCounter : public QObject
{
public:
    int count = 0;
    bool eventFilter(QObject *, QEvent *e) override
    {
        if (e->type() == ZThemeChangeEvent::eventType())
            ++count;
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
        QTest::addColumn<QRgb>("level0");
        QTest::addColumn<QRgb>("level4");
        QTest::newRow("0") << 0 << 0xff3a6ea5u << 0xff010101u << 0xff000000u;
        QTest::newRow("1") << 1 << 0xff4bffa8u << 0xffffffffu << 0xffffffffu;
        QTest::newRow("5") << 5 << 0xffbde594u << 0xffffffffu << 0xffffffffu;
        QTest::newRow("7") << 7 << 0xff16c516u << 0xffffffffu << 0xffffffffu;
        QTest::newRow("8") << 8 << 0xff0000aau << 0xffffffffu << 0xffffffffu;
    }
    void table()
    {
        QFETCH(int, index);
        QFETCH(QRgb, theme);
        QFETCH(QRgb, level0);
        QFETCH(QRgb, level4);
        ZTheme::setThemeIndex(index);
        QCOMPARE(ZTheme::themeIndex(), index);
        QCOMPARE(ZTheme::themeColor().rgba(), theme);
        QCOMPARE(ZTheme::textColor().rgba(), 0xffffffffu);
        QCOMPARE(ZTheme::levelColor(0).rgba(), level0);
        QCOMPARE(ZTheme::levelColor(4).rgba(), level4);
        QVERIFY(!ZTheme::levelColor(5).isValid());
        QVERIFY(!ZTheme::levelColor(-1).isValid());
    }

    void rowZeroLevelRamp()
    {
        const QRgb ramp[] = {0xff010101, 0xff020202, 0xff030303, 0xff040404, 0xff000000};
        for (int level = 0; level < 5; ++level)
            QCOMPARE(ZTheme::levelColor(level).rgba(), ramp[level]);
    }

    void nearestIndex_data()
    {
        QTest::addColumn<QColor>("color");
        QTest::addColumn<int>("index");
        QTest::newRow("row 0 exact") << QColor(0x3a, 0x6e, 0xa5) << 0;
        QTest::newRow("row 6/7 tie goes low") << QColor(0x16, 0xc5, 0x16) << 6;
        QTest::newRow("row 8 exact") << QColor(0x00, 0x00, 0xaa) << 8;
        QTest::newRow("row 5 exact") << QColor(0xbd, 0xe5, 0x94) << 5;
        // Same hue and saturation, other lightness: the row still wins.
        QTest::newRow("row 0 lighter") << QColor::fromHsl(QColor(0x3a, 0x6e, 0xa5).hslHue(),
                                                           QColor(0x3a, 0x6e, 0xa5).hslSaturation(), 150) << 0;
        QTest::newRow("row 8 lighter") << QColor::fromHsl(240, 255, 120) << 8;
        // Only the (a*, b*) plane counts: another L* with the same a*, b*.
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

    void whiteAndBlackStay()
    {
        for (int i = 0; i < 9; ++i) {
            ZTheme::setThemeIndex(i);
            QCOMPARE(ZTheme::convertToThemeColor(QColor(Qt::white)).rgba(), 0xffffffffu);
            QCOMPARE(ZTheme::convertToThemeColor(QColor(Qt::black)).rgba(), 0xff000000u);
            QCOMPARE(ZTheme::convertToThemeColor(QColor(255, 255, 255, 40)).rgba(), qRgba(255, 255, 255, 40));
        }
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
        QImage image(64, 64 * 8, QImage::Format_ARGB32);
        QVector<QRgb> sources;
        for (int r = 0; r < 256; r += 17)
            for (int g = 0; g < 256; g += 15)
                for (int b = 0; b < 256; b += 13)
                    sources.append(qRgba(r, g, b, (r * 7 + g * 3 + b) & 0xff));
        for (int i = 0; i < 256; ++i) // every lightness, every alpha
            sources.append(qRgba(i, 255 - i, i / 2, i));
        QCOMPARE(sources.size() <= image.width() * image.height(), true);
        for (int i = 0; i < image.width() * image.height(); ++i)
            image.setPixel(i % 64, i / 64, sources[i % sources.size()]);

        const QImage tinted = ZTheme::convertToThemeImage(image);
        QCOMPARE(tinted.format(), QImage::Format_ARGB32);
        for (int i = 0; i < sources.size(); ++i) {
            const QRgb expected = referenceTint(sources[i], theme);
            const QRgb got = tinted.pixel(i % 64, i / 64);
            if (got != expected)
                QFAIL(qPrintable(QStringLiteral("pixel %1: source %2 tinted %3, formula %4")
                                     .arg(i).arg(sources[i], 8, 16).arg(got, 8, 16).arg(expected, 8, 16)));
            QCOMPARE(ZTheme::convertToThemeColor(QColor::fromRgba(sources[i])).rgba(), expected);
        }
    }

    void tintKeepsThemeHue()
    {
        ZTheme::setThemeColor(QColor(0xff, 0x88, 0x11));
        const QColor grey(100, 100, 100);
        const QColor tinted = ZTheme::convertToThemeColor(grey);
        QVERIFY(qAbs(tinted.hslHue() - QColor(0xff, 0x88, 0x11).hslHue()) <= 2);
        QVERIFY(tinted.hslSaturation() > 200);
    }

    void adjustedTint()
    {
        ZTheme::setThemeColor(QColor(0x00, 0x00, 0xaa));
        // Adjustments equal to the source's own hue and saturation give the
        // same hue and saturation as the plain tint.
        const QColor src = QColor::fromHsl(120, 255, 128);
        const QColor plain = ZTheme::convertToThemeColor(src);
        const QColor adjusted = ZTheme::convertToThemeColor(src, 120, 100, 0);
        QCOMPARE(adjusted.rgba(), plain.rgba());
        // No adjustment to the hue keeps the source hue offset.
        const QColor shifted = ZTheme::convertToThemeColor(src, 0, 100, 0);
        QVERIFY(shifted.rgba() != plain.rgba());
    }

    void brushes()
    {
        ZTheme::setThemeColor(QColor(0xff, 0x88, 0x11));
        QCOMPARE(ZTheme::convertToThemeBrush(QBrush()), QBrush());

        const QBrush solid(QColor(40, 90, 200));
        QCOMPARE(ZTheme::convertToThemeBrush(solid).color(), ZTheme::convertToThemeColor(solid.color()));

        QImage texture(4, 4, QImage::Format_ARGB32);
        texture.fill(QColor(40, 90, 200));
        const QBrush textured = ZTheme::convertToThemeBrush(QBrush(texture));
        QCOMPARE(textured.style(), Qt::TexturePattern);
        QCOMPARE(QColor(textured.textureImage().pixel(1, 1)), ZTheme::convertToThemeColor(QColor(40, 90, 200)));

        QLinearGradient gradient(0, 0, 10, 0);
        gradient.setColorAt(0, QColor(40, 90, 200));
        gradient.setColorAt(1, Qt::white);
        const QBrush tintedGradient = ZTheme::convertToThemeBrush(QBrush(gradient));
        QVERIFY(tintedGradient.gradient());
        QCOMPARE(tintedGradient.gradient()->stops().at(0).second,
                 ZTheme::convertToThemeColor(QColor(40, 90, 200)));
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

    void eventTypeIsRegisteredOnce()
    {
        const ZThemeChangeEvent e1, e2;
        QCOMPARE(e1.type(), e2.type());
        QVERIFY(e1.type() >= QEvent::User);
    }

    void virtualScreen()
    {
        const QRect rect = ZTheme::virtualScreenRect();
        QVERIFY(rect.isValid());
        QCOMPARE(ZTheme::virtualScreenSize(), rect.size());
        for (const QScreen *s : QGuiApplication::screens())
            QVERIFY(rect.contains(s->geometry()));
    }
};

QTEST_MAIN(tst_ZTheme)
#include "tst_ztheme.moc"
