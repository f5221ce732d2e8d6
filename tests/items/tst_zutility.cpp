// The skin-drawing rules, checked pixel by pixel.
//
// Source images give every logical pixel its own colour, so a pixel of the
// result names the source pixel it came from. Each case lists probe points
// with the source pixel expected there, or "bg" where nothing may be drawn.
// Every case runs at device pixel ratio 1 and again at 2 (an @2x image on a
// 2x canvas), where the same logical result is expected.

#include <QtGui/QPainter>
#include <QtTest/QtTest>

#include "zutility.h"

namespace {

using DrawFn = void (*)(QPainter *, const QRectF &, const QPixmap &, bool smooth);

#define PLAIN(f) [](QPainter *p, const QRectF &t, const QPixmap &m, bool) { ZUtility::f(p, t, m); }
#define SMOOTH(f) [](QPainter *p, const QRectF &t, const QPixmap &m, bool s) { ZUtility::f(p, t, m, s); }

struct Rule
{
    const char *name;
    DrawFn draw;
    const char *twin; // the same rule along the other axis
};

const Rule kRules[] = {
    {"OneTopLeft", PLAIN(drawOneTopLeft), nullptr},
    {"OneTopRight", PLAIN(drawOneTopRight), "OneBotLeft"},
    {"OneBotLeft", PLAIN(drawOneBotLeft), nullptr},
    {"OneBotRight", PLAIN(drawOneBotRight), nullptr},
    {"OneHCenter", PLAIN(drawOneHCenter), "OneVCenter"},
    {"OneVCenter", PLAIN(drawOneVCenter), nullptr},
    {"OneHVCenter", PLAIN(drawOneHVCenter), nullptr},
    {"TileH", PLAIN(drawTileH), "TileV"},
    {"TileV", PLAIN(drawTileV), nullptr},
    {"TileHV", PLAIN(drawTileHV), nullptr},
    {"StretchH", SMOOTH(drawStretchH), "StretchV"},
    {"StretchV", SMOOTH(drawStretchV), nullptr},
    {"StretchHV", SMOOTH(drawStretchHV), nullptr},
    {"StretchHTwoSize", PLAIN(drawStretchHTwoSize), "StretchVTwoSize"},
    {"StretchVTwoSize", PLAIN(drawStretchVTwoSize), nullptr},
    {"StretchHMiddle", PLAIN(drawStretchHMiddle), "StretchVMiddle"},
    {"StretchVMiddle", PLAIN(drawStretchVMiddle), nullptr},
    {"GridFour", PLAIN(drawGridFour), nullptr},
    {"GridFrameFour", PLAIN(drawGridFrameFour), nullptr},
    {"GridNine", PLAIN(drawGridNine), nullptr},
};

int ruleIndex(const char *name)
{
    for (int i = 0; i < int(std::size(kRules)); ++i) {
        if (qstrcmp(kRules[i].name, name) == 0)
            return i;
    }
    qFatal("no rule %s", name);
}

bool isStretch(int rule)
{
    const QByteArray name = kRules[rule].name;
    return name == "StretchH" || name == "StretchV" || name == "StretchHV";
}

QPixmap labelledPixmap(QSize size, int ratio)
{
    QImage image(size * ratio, QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixelColor(x, y, QColor(10 + 7 * (x / ratio), 10 + 7 * (y / ratio), 0xab));
    }
    QPixmap pixmap = QPixmap::fromImage(image);
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

QImage canvas(QSize size, int ratio)
{
    QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    return image;
}

// "x,y" of the source pixel shown at logical (x, y), "bg", or the raw colour.
QString sourceAt(const QImage &image, int x, int y)
{
    const int r = int(image.devicePixelRatio());
    const QColor c = image.pixelColor(x * r + r - 1, y * r + r - 1);
    if (c.alpha() == 0)
        return QStringLiteral("bg");
    if (c.blue() != 0xab || (c.red() - 10) % 7 || (c.green() - 10) % 7)
        return c.name(QColor::HexArgb);
    return QStringLiteral("%1,%2").arg((c.red() - 10) / 7).arg((c.green() - 10) / 7);
}

// "x,y=sx,sy x,y=bg ..." with every pair swapped.
QString transposed(const QString &probes)
{
    static const QRegularExpression pair(QStringLiteral("(\\d+),(\\d+)"));
    return QString(probes).replace(pair, QStringLiteral("\\2,\\1"));
}

} // namespace

class tst_ZUtility : public QObject
{
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral("."))); }

    void imageRules_data()
    {
        QTest::addColumn<int>("rule");
        QTest::addColumn<QSize>("imageSize");
        QTest::addColumn<QRectF>("target");
        QTest::addColumn<QString>("probes");
        QTest::addColumn<int>("ratio");

        struct Case
        {
            const char *rule, *name;
            QSize image;
            QRectF target;
            const char *probes;
        };
        const Case cases[] = {
            {"OneTopLeft", "", {10, 6}, {5, 3, 40, 20}, "5,3=0,0 14,8=9,5 15,3=bg 5,9=bg 4,3=bg 5,2=bg"},
            {"OneTopRight", "", {10, 6}, {5, 3, 40, 20}, "35,3=0,0 44,8=9,5 34,3=bg 45,3=bg 44,9=bg"},
            {"OneBotRight", "", {10, 6}, {5, 3, 40, 20}, "35,17=0,0 44,22=9,5 34,22=bg 44,23=bg 45,22=bg"},
            {"OneBotRight", "larger than target", {10, 6}, {20, 20, 4, 4}, "14,18=0,0 23,23=9,5 13,18=bg 24,23=bg"},
            {"OneHCenter", "", {10, 6}, {5, 3, 40, 20}, "20,3=0,0 29,8=9,5 19,3=bg 30,3=bg 20,9=bg"},
            {"OneHVCenter", "", {10, 6}, {5, 3, 40, 20}, "20,10=0,0 29,15=9,5 19,10=bg 20,9=bg 30,15=bg"},
            // int(T.width / pw + 1) copies; the last one reaches past T.
            {"TileH", "four copies", {30, 4}, {0, 0, 100, 10}, "29,3=29,3 30,0=0,0 90,0=0,0 119,3=29,3 120,0=bg 0,4=bg"},
            {"TileH", "exact multiple", {25, 4}, {0, 0, 100, 10}, "99,0=24,0 100,0=0,0 124,0=24,0 125,0=bg"},
            {"TileH", "offset", {9, 3}, {7, 2, 4, 10}, "6,2=bg 7,2=0,0 15,4=8,2 16,2=bg 7,5=bg"},
            {"TileHV", "", {9, 7}, {3, 2, 20, 10}, "3,2=0,0 12,9=0,0 21,10=0,1 29,15=8,6 30,2=bg 3,16=bg 2,2=bg"},
            // The plain stretches keep the other size natural.
            {"StretchH", "", {9, 4}, {4, 6, 90, 20}, "9,6=0,0 49,7=4,1 93,9=8,3 94,6=bg 3,6=bg 9,10=bg"},
            {"StretchHV", "", {9, 9}, {2, 3, 90, 45}, "7,5=0,0 47,25=4,4 87,45=8,8 1,5=bg 92,25=bg 47,48=bg 47,2=bg"},
            // Image centred, first and last column stretched outwards.
            {"StretchHTwoSize", "", {9, 4}, {3, 5, 29, 8},
             "2,5=bg 3,5=0,0 12,5=0,0 13,5=0,0 17,7=4,2 21,5=8,0 22,5=8,0 31,8=8,3 32,5=bg 3,9=bg"},
            {"StretchHTwoSize", "narrow", {9, 4}, {10, 0, 5, 10}, "7,0=bg 8,0=0,0 16,0=8,0 17,0=bg"},
            // Left half, right part flush right, column pw / 2 between.
            {"StretchHMiddle", "", {9, 4}, {5, 2, 20, 6},
             "4,2=bg 5,2=0,0 8,2=3,0 9,2=4,0 19,5=4,3 20,2=4,0 21,3=5,1 24,5=8,3 25,2=bg 5,6=bg"},
            {"StretchHMiddle", "narrow", {9, 4}, {0, 0, 6, 4}, "0,0=0,0 1,0=4,0 5,0=8,0 6,0=bg"},
            // 9 x 9 cut at 4: corners 4 and 5 wide, column and row 4 stretched over 91 x 21.
            {"GridFour", "", {9, 9}, {5, 3, 100, 30},
             "5,3=0,0 8,6=3,3 9,3=4,0 50,5=4,2 99,6=4,3 100,3=4,0 101,4=5,1 104,6=8,3 5,7=0,4 8,27=3,4 "
             "50,15=4,4 99,27=4,4 104,20=8,4 5,28=0,4 5,32=0,8 50,32=4,8 104,32=8,8 4,3=bg 5,2=bg 105,3=bg 5,33=bg"},
            {"GridFour", "fractional", {9, 9}, {5.2, 3.2, 100.2, 29.6}, "5,3=0,0 9,3=4,0 100,3=4,0 104,32=8,8 105,3=bg"},
            {"GridFour", "small", {9, 9}, {0, 0, 6, 6}, "0,0=0,0 1,0=4,0 0,1=0,4 1,1=4,4 5,5=8,8 6,0=bg 0,6=bg"},
            {"GridFour", "one pixel", {1, 1}, {2, 2, 10, 6}, "2,2=0,0 6,4=0,0 11,7=0,0 12,2=bg 2,8=bg 1,2=bg"},
            {"GridFrameFour", "", {9, 9}, {5, 3, 100, 30},
             "5,3=0,0 9,3=4,0 50,5=4,2 104,6=8,3 5,7=0,4 104,20=8,4 50,32=4,8 9,7=bg 50,15=bg 99,27=bg"},
            // Margins a third of the image and a third of the target.
            {"GridNine", "", {9, 9}, {0, 0, 90, 60}, "5,3=0,0 25,17=2,2 45,30=4,4 15,30=1,4 45,48=4,7 85,55=8,8 90,5=bg"},
            {"GridNine", "corners grow", {9, 9}, {0, 0, 180, 120}, "55,35=2,2 65,45=3,3 90,60=4,4 175,115=8,8"},
            {"GridNine", "offset", {9, 9}, {10, 5, 60, 30}, "12,6=0,0 41,19=4,4 68,33=8,8 9,5=bg 70,5=bg 10,35=bg"},
        };
        for (int ratio : {1, 2}) {
            for (const Case &c : cases) {
                const int rule = ruleIndex(c.rule);
                const QByteArray name = *c.name ? QByteArray(" ") + c.name : QByteArray();
                QTest::addRow("%s%s @%dx", c.rule, name.constData(), ratio) << rule << c.image << c.target << QString::fromLatin1(c.probes) << ratio;
                if (const char *twin = kRules[rule].twin) {
                    const QRectF t = c.target;
                    QTest::addRow("%s%s (transposed) @%dx", twin, name.constData(), ratio)
                        << ruleIndex(twin) << c.image.transposed() << QRectF(t.y(), t.x(), t.height(), t.width())
                        << transposed(QString::fromLatin1(c.probes)) << ratio;
                }
            }
        }
    }
    void imageRules()
    {
        QFETCH(int, rule);
        QFETCH(QSize, imageSize);
        QFETCH(QRectF, target);
        QFETCH(QString, probes);
        QFETCH(int, ratio);

        QImage image = canvas(QSize(200, 130), ratio);
        {
            QPainter painter(&image);
            kRules[rule].draw(&painter, target, labelledPixmap(imageSize, ratio), false);
        }
        QStringList got, want;
        for (const QString &probe : probes.split(QLatin1Char(' '))) {
            const QStringList at = probe.section(QLatin1Char('='), 0, 0).split(QLatin1Char(','));
            got << probe.section(QLatin1Char('='), 0, 0) + QLatin1Char('=') + sourceAt(image, at[0].toInt(), at[1].toInt());
            want << probe;
        }
        QCOMPARE(got, want);
    }

    void smoothHint_data()
    {
        QTest::addColumn<int>("rule");
        QTest::addColumn<bool>("before");
        QTest::addColumn<bool>("smooth");
        for (int i = 0; i < int(std::size(kRules)); ++i) {
            for (bool before : {false, true}) {
                for (bool smooth : {false, true})
                    QTest::addRow("%s hint %d smooth %d", kRules[i].name, before, smooth) << i << before << smooth;
            }
        }
    }

    // The plain stretches scale smoothly on request and leave the hint at

    // !smooth, whatever it was; every other rule leaves the hint alone.

    void smoothHint()
    {
        QFETCH(int, rule);
        QFETCH(bool, before);
        QFETCH(bool, smooth);

        QImage checker(2, 2, QImage::Format_ARGB32);
        checker.fill(Qt::white);
        checker.setPixelColor(0, 0, Qt::black);
        checker.setPixelColor(1, 1, Qt::black);
        QImage image = canvas(QSize(40, 40), 1);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::SmoothPixmapTransform, before);
        kRules[rule].draw(&painter, QRectF(0, 0, 40, 40), QPixmap::fromImage(checker), smooth);
        const bool stretch = isStretch(rule);
        QCOMPARE(painter.testRenderHint(QPainter::SmoothPixmapTransform), stretch ? !smooth : before);
        painter.end();
        if (!stretch)
            return;
        // Smooth scaling blends neighbours into greys; otherwise each pixel copies one.
        int blended = 0;
        for (int i = 0; i < 40; ++i) {
            for (const QRgb p : {image.pixel(i, 0), image.pixel(0, i)})
                blended += qGray(p) > 10 && qGray(p) < 245;
        }
        QCOMPARE(blended > 4, smooth);
    }
    void degenerateInput_data()
    {
        QTest::addColumn<int>("rule");
        QTest::addColumn<QRectF>("target");
        QTest::addColumn<QSize>("imageSize");
        for (int i = 0; i < int(std::size(kRules)); ++i) {
            const char *name = kRules[i].name;
            QTest::addRow("%s null pixmap", name) << i << QRectF(2, 2, 30, 20) << QSize();
            QTest::addRow("%s empty target", name) << i << QRectF(10, 10, 0, 0) << QSize(1, 1);
            QTest::addRow("%s negative target", name) << i << QRectF(30, 30, -20, -20) << QSize(9, 9);
            QTest::addRow("%s tiny image", name) << i << QRectF(2, 2, 1, 1) << QSize(2, 2);
            // Tiles over it are one fill, not millions of draws.
            QTest::addRow("%s largest item", name) << i << QRectF(-1e7, -1e7, 2e7, 2e7) << QSize(3, 3);
        }
    }

    // No crash, no hang, no warning; a null pixmap or painter draws nothing.

    void degenerateInput()
    {
        QFETCH(int, rule);
        QFETCH(QRectF, target);
        QFETCH(QSize, imageSize);

        const QPixmap pixmap = imageSize.isValid() ? labelledPixmap(imageSize, 1) : QPixmap();
        QImage image = canvas(QSize(60, 60), 1);
        {
            QPainter painter(&image);
            kRules[rule].draw(&painter, target, pixmap, false);
            kRules[rule].draw(nullptr, target, pixmap, false);
        }
        if (pixmap.isNull())
            QCOMPARE(image, canvas(QSize(60, 60), 1));
    }
    void colorFrames_data()
    {
        QTest::addColumn<QRectF>("target");
        QTest::addColumn<int>("pen");
        QTest::addColumn<int>("radius");
        QTest::addColumn<QRect>("line"); // T rounded and inset by the pen; null: nothing drawn
        QTest::addColumn<int>("ratio");

        for (int ratio : {1, 2}) {
            QTest::addRow("pen 1 @%dx", ratio) << QRectF(2, 2, 20, 12) << 1 << 0 << QRect(3, 3, 18, 10) << ratio;
            QTest::addRow("pen 2 @%dx", ratio) << QRectF(2, 2, 24, 16) << 2 << 0 << QRect(4, 4, 20, 12) << ratio;
            QTest::addRow("pen 3 @%dx", ratio) << QRectF(0, 0, 30, 20) << 3 << 0 << QRect(3, 3, 24, 14) << ratio;
            QTest::addRow("fractional @%dx", ratio) << QRectF(1.6, 2.4, 20.2, 12.0) << 1 << 0 << QRect(3, 3, 18, 10) << ratio;
            for (int radius : {3, 4, 5, 6, 7})
                QTest::addRow("radius %d @%dx", radius, ratio) << QRectF(0, 0, 36, 24) << 2 << radius << QRect(2, 2, 32, 20) << ratio;
        }
        QTest::newRow("negative pen") << QRectF(0, 0, 30, 20) << -1 << 0 << QRect() << 1;
        QTest::newRow("inset leaves nothing") << QRectF(0, 0, 30, 8) << 4 << 3 << QRect() << 1;
        QTest::newRow("negative target") << QRectF(30, 20, -20, -10) << 1 << 0 << QRect() << 1;
    }

    // The outline runs on the inset rectangle, inside and outside stay clear;

    // rounded frames cut the corners by an absolute radius.

    void colorFrames()
    {
        QFETCH(QRectF, target);
        QFETCH(int, pen);
        QFETCH(int, radius);
        QFETCH(QRect, line);
        QFETCH(int, ratio);

        const QColor color(200, 30, 60);
        auto draw = [&](int r, const QColor &c) {
            QImage image = canvas(QSize(40, 30), ratio);
            QPainter painter(&image);
            if (r)
                ZUtility::drawRoundRect(&painter, target, c, pen, r);
            else
                ZUtility::drawRectangle(&painter, target, c, pen);
            ZUtility::drawRectangle(nullptr, target, c, pen);
            return image;
        };
        const QImage image = draw(radius, color);
        if (line.isNull()) {
            QCOMPARE(image, canvas(QSize(40, 30), 1));
            return;
        }
        QCOMPARE(draw(radius, QColor()), canvas(QSize(40, 30), ratio)); // invalid colour: nothing

        // On the line's centre and clear of the pen, in both ratios.
        auto at = [&](int x, int y) { return image.pixelColor(x * ratio, y * ratio); };
        const int l = line.left(), t = line.top(), r = l + line.width(), b = t + line.height();
        const int mx = (l + r) / 2, my = (t + b) / 2, off = pen / 2 + 1;
        for (const QPoint &p : {QPoint(l, my), QPoint(r, my), QPoint(mx, t), QPoint(mx, b)})
            QVERIFY2(at(p.x(), p.y()) == color, qPrintable(QStringLiteral("line at %1,%2").arg(p.x()).arg(p.y())));
        for (const QPoint &p : {QPoint(l - off, my), QPoint(l + off, my), QPoint(r + off, my), QPoint(r - off, my),
                                QPoint(mx, t - off), QPoint(mx, b + off), QPoint(mx, my)})
            QVERIFY2(at(p.x(), p.y()).alpha() == 0, qPrintable(QStringLiteral("clear at %1,%2").arg(p.x()).arg(p.y())));

        if (radius) {
            QVERIFY(image != draw(radius + 1, color));
            QImage expected = canvas(QSize(40, 30), ratio);
            QPainter painter(&expected);
            painter.setPen(QPen(color, pen));
            painter.drawRoundedRect(line, radius, radius, Qt::AbsoluteSize);
            painter.end();
            QCOMPARE(image, expected);
        }
    }

    // The frame sets its own pen but gives the painter back as it was, and

    // fills with the caller's brush (none unless the caller set one).

    void colorFrameKeepsPainterState()
    {
        QImage image = canvas(QSize(40, 30), 1);
        QPainter painter(&image);
        const QPen pen(Qt::blue, 5);
        painter.setPen(pen);
        ZUtility::drawRectangle(&painter, QRectF(0, 0, 40, 30), Qt::red, 1);
        QCOMPARE(painter.pen(), pen);
        QCOMPARE(image.pixelColor(20, 15).alpha(), 0);
        painter.setBrush(Qt::green);
        ZUtility::drawRoundRect(&painter, QRectF(0, 0, 40, 30), Qt::red, 1, 4);
        QCOMPARE(image.pixelColor(20, 15), QColor(Qt::green));
        QCOMPARE(painter.pen(), pen);
    }
};

QTEST_MAIN(tst_ZUtility)
#include "tst_zutility.moc"
