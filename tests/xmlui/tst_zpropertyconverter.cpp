#include "qtgradient.h"
#include "zpropertyconverter.h"
#include "zwidget.h"

#include <QGraphicsScene>
#include <QPainter>
#include <QtTest>

#include <cmath>

// A type the toolkit does not know, to register a converter for.
struct Fraction
{
    int numerator = 0;
    int denominator = 1;
    bool operator==(const Fraction &o) const { return numerator == o.numerator && denominator == o.denominator; }
};
Q_DECLARE_METATYPE(Fraction)

namespace {

QVariant fractionConverter(const QString &text, bool *ok)
{
    const QStringList p = text.split(QLatin1Char('/'));
    Fraction f;
    bool good = p.size() == 2;
    if (good) {
        bool a = false, b = false;
        f.numerator = p[0].toInt(&a);
        f.denominator = p[1].toInt(&b);
        good = a && b && f.denominator != 0;
    }
    if (ok)
        *ok = good;
    return QVariant::fromValue(good ? f : Fraction());
}

// The pixels of \a widget as painted by a scene.
QImage render(ZWidget *widget)
{
    QGraphicsScene scene;
    scene.addItem(widget);
    const QSize size = widget->size().toSize();
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    scene.render(&painter, QRectF(QPointF(0, 0), size), QRectF(QPointF(0, 0), size));
    painter.end();
    scene.removeItem(widget);
    return image;
}

bool near(QRgb actual, QColor expected, int tolerance = 6)
{
    return qAbs(qRed(actual) - expected.red()) <= tolerance && qAbs(qGreen(actual) - expected.green()) <= tolerance
        && qAbs(qBlue(actual) - expected.blue()) <= tolerance && qAbs(qAlpha(actual) - expected.alpha()) <= tolerance;
}

// QGradient::stops() reports black-to-white when none are set.
int stopCount(const QGradient &g)
{
    const QGradientStops stops = g.stops();
    const QGradientStops defaults{{0, QColor(Qt::black)}, {1, QColor(Qt::white)}};
    return stops == defaults ? 0 : int(stops.size());
}

} // namespace

class tst_ZPropertyConverter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void colors_data();
    void colors();
    void sizes_data();
    void sizes();
    void points_data();
    void points();
    void rects_data();
    void rects();
    void margins_data();
    void margins();
    void fonts();
    void registryDispatch_data();
    void registryDispatch();
    void registerNewType();

    void gradientText_data();
    void gradientText();
    void gradientGeometry();
    void gradientStops();
    void gradientRelative_data();
    void gradientRelative();
    void paintRelativeGradientFollowsSize();
    void paintAbsoluteGradient();
    void paintRadialGradient();
    void gradientProperty();
};

void tst_ZPropertyConverter::colors_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QColor>("expected"); // invalid: no colour
    QTest::newRow("#RRGGBBAA alpha last") << "#ff000080" << QColor(255, 0, 0, 128);
    QTest::newRow("#RRGGBBAA other channels") << "#12345678" << QColor(0x12, 0x34, 0x56, 0x78);
    QTest::newRow("only nine characters count") << "#00ff00ffxyz" << QColor(0, 255, 0, 255);
    QTest::newRow("#RGB opaque") << "#f00" << QColor(255, 0, 0);
    QTest::newRow("#RRGGBB") << "#00ff00" << QColor(0, 255, 0);
    QTest::newRow("bad alpha digits") << "#ff0000zz" << QColor();
    QTest::newRow("bad hex") << "#gg0000" << QColor();
    QTest::newRow("r,g,b opaque") << "255,0,0" << QColor(255, 0, 0, 255);
    QTest::newRow("r,g,b,a") << "0,0,255,64" << QColor(0, 0, 255, 64);
    QTest::newRow("extra pieces ignored") << "1,2,3,4,5" << QColor(1, 2, 3, 4);
    QTest::newRow("empty pieces dropped") << ",255,,0,0" << QColor(255, 0, 0);
    QTest::newRow("two pieces: invalid") << "255,0" << QColor();
    QTest::newRow("component out of range") << "256,0,0" << QColor();
    QTest::newRow("component not a number") << "a,b,c" << QColor();
    QTest::newRow("name") << "red" << QColor(Qt::red);
    QTest::newRow("name white") << "white" << QColor(Qt::white);
    QTest::newRow("unknown name") << "reddish" << QColor();
    QTest::newRow("empty") << "" << QColor();
}

void tst_ZPropertyConverter::colors()
{
    QFETCH(QString, text);
    QFETCH(QColor, expected);
    bool ok = !expected.isValid(); // must be overwritten
    const QColor c = ZPropertyConverter::toColor(text, &ok);
    QCOMPARE(ok, expected.isValid());
    QCOMPARE(c.isValid(), expected.isValid());
    if (expected.isValid())
        QCOMPARE(c.rgba(), expected.rgba());
    // The registry hands out the same converter for QColor properties.
    const QVariant v = ZPropertyConverter::convert(QMetaType::fromType<QColor>(), text);
    QCOMPARE(v.metaType(), QMetaType::fromType<QColor>());
    QCOMPARE(v.value<QColor>(), c);
}

void tst_ZPropertyConverter::sizes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSizeF>("sizeF");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("ok");
    QTest::newRow("w,h") << "10,20" << QSizeF(10, 20) << QSize(10, 20) << true;
    QTest::newRow("one piece: invalid") << "10" << QSizeF() << QSize() << false;
    QTest::newRow("three pieces: first two") << "10,20,30" << QSizeF(10, 20) << QSize(10, 20) << true;
    QTest::newRow("rounded") << "1.5,2.4" << QSizeF(1.5, 2.4f) << QSize(2, 2) << true;
    QTest::newRow("empty pieces dropped") << ",7,,8," << QSizeF(7, 8) << QSize(7, 8) << true;
    QTest::newRow("garbage piece is 0") << "abc,5" << QSizeF(0, 5) << QSize(0, 5) << false;
    QTest::newRow("not finite is 0") << "nan,inf" << QSizeF(0, 0) << QSize(0, 0) << false;
    QTest::newRow("negative parts kept") << "-5,5" << QSizeF(-5, 5) << QSize(-5, 5) << true;
    QTest::newRow("empty") << "" << QSizeF() << QSize() << false;
}

void tst_ZPropertyConverter::sizes()
{
    QFETCH(QString, text);
    QFETCH(QSizeF, sizeF);
    QFETCH(QSize, size);
    QFETCH(bool, ok);
    bool okF = !ok, okI = !ok;
    const QSizeF f = ZPropertyConverter::toSizeF(text, &okF);
    QCOMPARE(f.isValid(), sizeF.isValid());
    if (sizeF.isValid())
        QCOMPARE(f, sizeF);
    QCOMPARE(ZPropertyConverter::toSize(text, &okI), size);
    QCOMPARE(okF, ok);
    QCOMPARE(okI, ok);
}

void tst_ZPropertyConverter::points_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QPointF>("pointF");
    QTest::addColumn<QPoint>("point");
    QTest::newRow("x,y") << "3,4" << QPointF(3, 4) << QPoint(3, 4);
    QTest::newRow("one piece: origin") << "7" << QPointF(0, 0) << QPoint(0, 0);
    QTest::newRow("rounded") << "1.6,-2.6" << QPointF(1.6f, -2.6f) << QPoint(2, -3);
    QTest::newRow("huge stays inside int") << "1e30,-1e30" << QPointF(1e30f, -1e30f) << QPoint(1 << 29, -(1 << 29));
}

void tst_ZPropertyConverter::points()
{
    QFETCH(QString, text);
    QFETCH(QPointF, pointF);
    QFETCH(QPoint, point);
    QCOMPARE(ZPropertyConverter::toPointF(text), pointF);
    QCOMPARE(ZPropertyConverter::toPoint(text), point);
}

void tst_ZPropertyConverter::rects_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QRectF>("rectF");
    QTest::addColumn<QRect>("rect");
    QTest::newRow("four pieces") << "1,2,3,4" << QRectF(1, 2, 3, 4) << QRect(1, 2, 3, 4);
    QTest::newRow("three pieces: null") << "1,2,3" << QRectF() << QRect();
    QTest::newRow("five pieces: null") << "1,2,3,4,5" << QRectF() << QRect();
    QTest::newRow("fractions") << "0.5,1.5,10,10" << QRectF(0.5, 1.5, 10, 10) << QRectF(0.5, 1.5, 10, 10).toRect();
}

void tst_ZPropertyConverter::rects()
{
    QFETCH(QString, text);
    QFETCH(QRectF, rectF);
    QFETCH(QRect, rect);
    const QRectF f = ZPropertyConverter::toRectF(text);
    QCOMPARE(f, rectF);
    QCOMPARE(f.isNull(), rectF.isNull());
    QCOMPARE(ZPropertyConverter::toRect(text), rect);
}

void tst_ZPropertyConverter::margins_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QMargins>("expected");
    QTest::addColumn<bool>("ok");
    QTest::newRow("message box") << "10,5,10,10" << QMargins(10, 5, 10, 10) << true;
    QTest::newRow("three pieces: zero") << "1,2,3" << QMargins() << false;
    QTest::newRow("truncated, not rounded") << "1.9,2,3,4" << QMargins(1, 2, 3, 4) << true;
    QTest::newRow("negative truncated toward zero") << "-1.9,0,0,0" << QMargins(-1, 0, 0, 0) << true;
    QTest::newRow("huge clamped") << "1e30,0,0,0" << QMargins(1 << 29, 0, 0, 0) << true;
    QTest::newRow("garbage piece") << "x,1,2,3" << QMargins(0, 1, 2, 3) << false;
}

void tst_ZPropertyConverter::margins()
{
    QFETCH(QString, text);
    QFETCH(QMargins, expected);
    QFETCH(bool, ok);
    bool actualOk = !ok;
    QCOMPARE(ZPropertyConverter::toMargins(text, &actualOk), expected);
    QCOMPARE(actualOk, ok);
    const QVariant v = ZPropertyConverter::convert(QMetaType::fromType<QMargins>(), text);
    QCOMPARE(v.value<QMargins>(), expected);
}

void tst_ZPropertyConverter::fonts()
{
    QFont f(QStringLiteral("DejaVu Sans"), 13);
    f.setBold(true);
    bool ok = false;
    const QFont read = ZPropertyConverter::toFont(f.toString(), &ok);
    QVERIFY(ok);
    QCOMPARE(read.family(), f.family());
    QCOMPARE(read.pointSize(), 13);
    QVERIFY(read.bold());

    QCOMPARE(ZPropertyConverter::toFont(QString(), &ok), QFont());
    QVERIFY(ok);
}

void tst_ZPropertyConverter::registryDispatch_data()
{
    QTest::addColumn<QByteArray>("typeName");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QVariant>("expected");
    QTest::newRow("QSizeF") << QByteArray("QSizeF") << "1,2" << QVariant(QSizeF(1, 2));
    QTest::newRow("QSize") << QByteArray("QSize") << "1,2" << QVariant(QSize(1, 2));
    QTest::newRow("QPointF") << QByteArray("QPointF") << "1,2" << QVariant(QPointF(1, 2));
    QTest::newRow("QPoint") << QByteArray("QPoint") << "1,2" << QVariant(QPoint(1, 2));
    QTest::newRow("QRectF") << QByteArray("QRectF") << "1,2,3,4" << QVariant(QRectF(1, 2, 3, 4));
    QTest::newRow("QRect") << QByteArray("QRect") << "1,2,3,4" << QVariant(QRect(1, 2, 3, 4));
    QTest::newRow("QMargins") << QByteArray("QMargins") << "1,2,3,4" << QVariant::fromValue(QMargins(1, 2, 3, 4));
    QTest::newRow("QColor") << QByteArray("QColor") << "#0000ff" << QVariant(QColor(Qt::blue));
    // No converter: the text, for the property system to convert.
    QTest::newRow("int") << QByteArray("int") << "12" << QVariant(QStringLiteral("12"));
    QTest::newRow("qreal") << QByteArray("qreal") << "1.5" << QVariant(QStringLiteral("1.5"));
    QTest::newRow("QBrush") << QByteArray("QBrush") << "red" << QVariant(QStringLiteral("red"));
    QTest::newRow("unknown type") << QByteArray("NoSuchType") << "x" << QVariant(QStringLiteral("x"));
}

void tst_ZPropertyConverter::registryDispatch()
{
    QFETCH(QByteArray, typeName);
    QFETCH(QString, text);
    QFETCH(QVariant, expected);
    const QVariant v = ZPropertyConverter::convert(typeName.constData(), text);
    QCOMPARE(v.metaType(), expected.metaType());
    QCOMPARE(v, expected);
}

void tst_ZPropertyConverter::registerNewType()
{
    QVERIFY(!ZPropertyConverter::registerConverter("NoSuchTypeAtAll", fractionConverter));
    QVERIFY(!ZPropertyConverter::converter(QMetaType::fromName("NoSuchTypeAtAll")));

    // The template form makes the name known first.
    QVERIFY(ZPropertyConverter::registerConverter<Fraction>("Fraction", fractionConverter));
    const QMetaType type = QMetaType::fromName("Fraction");
    QVERIFY(type.isValid());
    bool ok = false;
    QVariant v = ZPropertyConverter::convert(type, QStringLiteral("3/4"), &ok);
    QVERIFY(ok);
    QCOMPARE(v.value<Fraction>(), (Fraction{3, 4}));
    v = ZPropertyConverter::convert("Fraction", QStringLiteral("3/0"), &ok);
    QVERIFY(!ok);
    QCOMPARE(v.value<Fraction>(), Fraction());

    // Replacing a built-in and removing it again.
    QVERIFY(ZPropertyConverter::registerConverter(QMetaType::fromType<QSize>(), fractionConverter));
    QCOMPARE(ZPropertyConverter::convert("QSize", QStringLiteral("1/2")).metaType(), QMetaType::fromType<Fraction>());
    ZPropertyConverter::unregisterConverter(QMetaType::fromType<QSize>());
    QCOMPARE(ZPropertyConverter::convert("QSize", QStringLiteral("1,2")), QVariant(QStringLiteral("1,2")));
    QVERIFY(ZPropertyConverter::registerConverter("QSize", [](const QString &t, bool *ok) {
        return QVariant(ZPropertyConverter::toSize(t, ok));
    }));
    QCOMPARE(ZPropertyConverter::convert("QSize", QStringLiteral("1,2")), QVariant(QSize(1, 2)));
    ZPropertyConverter::unregisterConverter(type);
}

void tst_ZPropertyConverter::gradientText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("spread");
    QTest::addColumn<int>("stops");

    const int none = QGradient::NoGradient;
    QTest::newRow("linear") << "Start:0,0|Final:0,1|Color:0:#ffffff|Color:1:#000000"
                            << int(QGradient::LinearGradient) << int(QGradient::PadSpread) << 2;
    QTest::newRow("linear without Start") << "Final:0,1|Color:0:#ffffff|Color:1:#000000" << none << 0 << 0;
    QTest::newRow("radial") << "Center:5,5|Radius:5|Color:0:red" << int(QGradient::RadialGradient)
                            << int(QGradient::PadSpread) << 1;
    QTest::newRow("radial without Center") << "Radius:5|Color:0:red" << none << 0 << 0;
    QTest::newRow("Radius and Angle: radial") << "Center:0,0|Radius:1|Angle:30|Color:0:red"
                                              << int(QGradient::RadialGradient) << int(QGradient::PadSpread) << 1;
    QTest::newRow("Angle and Final: conical") << "Angle:90|Start:0,0|Final:1,1"
                                              << int(QGradient::ConicalGradient) << int(QGradient::PadSpread) << 0;
    QTest::newRow("conical needs no centre") << "Angle:45|Color:0.5:0,0,0,128"
                                             << int(QGradient::ConicalGradient) << int(QGradient::PadSpread) << 1;
    QTest::newRow("Spread:Repeat is Qt's 2") << "Start:0,0|Final:1,0|Spread:Repeat"
                                             << int(QGradient::LinearGradient) << 2 << 0;
    QTest::newRow("Spread:Reflect is Qt's 1") << "Start:0,0|Final:1,0|Spread:Reflect"
                                              << int(QGradient::LinearGradient) << 1 << 0;
    QTest::newRow("Spread:Pad") << "Start:0,0|Final:1,0|Spread:Reflect|Spread:Pad"
                                << int(QGradient::LinearGradient) << 0 << 0;
    QTest::newRow("unknown spread word") << "Start:0,0|Final:1,0|Spread:repeat"
                                         << int(QGradient::LinearGradient) << 0 << 0;
    QTest::newRow("keys are case-sensitive") << "center:0,0|radius:3|start:0,0|final:1,1" << none << 0 << 0;
    QTest::newRow("empty items dropped") << "||Start:0,0||Final:0,1||Color:0:red||"
                                         << int(QGradient::LinearGradient) << 0 << 1;
    QTest::newRow("stop outside 0..1 dropped") << "Start:0,0|Final:0,1|Color:1.5:red|Color:-1:red|Color:0.5:red"
                                               << int(QGradient::LinearGradient) << 0 << 1;
    QTest::newRow("stop with bad colour dropped") << "Start:0,0|Final:0,1|Color:0:nocolour|Color:1:255,0"
                                                  << int(QGradient::LinearGradient) << 0 << 0;
    QTest::newRow("stop without colour") << "Start:0,0|Final:0,1|Color:0" << int(QGradient::LinearGradient) << 0
                                         << 0;
    QTest::newRow("empty") << "" << none << 0 << 0;
    QTest::newRow("garbage") << ":::|||:::" << none << 0 << 0;
}

void tst_ZPropertyConverter::gradientText()
{
    QFETCH(QString, text);
    QFETCH(int, type);
    QFETCH(int, spread);
    QFETCH(int, stops);
    const QtGradient g = QtGradient::fromString(text);
    QCOMPARE(int(g.type()), type);
    QCOMPARE(g.isValid(), type != QGradient::NoGradient);
    QCOMPARE(int(g.gradient().spread()), spread);
    QCOMPARE(stopCount(g.gradient()), stops);

    bool ok = !g.isValid();
    const QVariant v = ZPropertyConverter::convert(QMetaType::fromType<QtGradient>(), text, &ok);
    QCOMPARE(ok, g.isValid());
    QCOMPARE(v.value<QtGradient>(), g);
}

void tst_ZPropertyConverter::gradientGeometry()
{
    const QtGradient linear = QtGradient::fromString(QStringLiteral("Final:30,40|Start:10,20"));
    const QGradient lg = linear.gradient();
    QCOMPARE(static_cast<const QLinearGradient &>(lg).start(), QPointF(10, 20));
    QCOMPARE(static_cast<const QLinearGradient &>(lg).finalStop(), QPointF(30, 40));

    const QtGradient radial = QtGradient::fromString(QStringLiteral("Center:4,5|Radius:6"));
    const QGradient rg = radial.gradient();
    QCOMPARE(static_cast<const QRadialGradient &>(rg).center(), QPointF(4, 5));
    QCOMPARE(static_cast<const QRadialGradient &>(rg).radius(), 6.0);

    const QtGradient conical = QtGradient::fromString(QStringLiteral("Center:1,2|Angle:75"));
    const QGradient cg = conical.gradient();
    QCOMPARE(static_cast<const QConicalGradient &>(cg).center(), QPointF(1, 2));
    QCOMPARE(static_cast<const QConicalGradient &>(cg).angle(), 75.0);

    // A point with one coordinate reads as the origin, as a point attribute does.
    const QtGradient half = QtGradient::fromString(QStringLiteral("Start:5|Final:1,1"));
    const QGradient hg = half.gradient();
    QCOMPARE(static_cast<const QLinearGradient &>(hg).start(), QPointF(0, 0));
}

void tst_ZPropertyConverter::gradientStops()
{
    const QtGradient g = QtGradient::fromString(
        QStringLiteral("Start:0,0|Final:0,1|Color:1:0,0,0,128|Color:0:#ff000080|Color:0.5:white|Color:0.5:blue"));
    const QGradientStops stops = g.gradient().stops();
    QCOMPARE(stops.size(), 3);
    // Sorted by position; the last stop at a position wins; the colour rules apply.
    QCOMPARE(stops[0].first, 0.0);
    QCOMPARE(stops[0].second, QColor(255, 0, 0, 128));
    QCOMPARE(stops[1].first, 0.5);
    QCOMPARE(stops[1].second, QColor(Qt::blue));
    QCOMPARE(stops[2].first, 1.0);
    QCOMPARE(stops[2].second, QColor(0, 0, 0, 128));
}

void tst_ZPropertyConverter::gradientRelative_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("relative");
    QTest::newRow("linear unit") << "Start:0,0|Final:0,1" << true;
    QTest::newRow("linear pixels") << "Start:0,0|Final:0,20" << false;
    QTest::newRow("radial unit") << "Center:0.5,0.5|Radius:0.5" << true;
    QTest::newRow("radial big radius") << "Center:0.5,0.5|Radius:2" << false;
    QTest::newRow("conical: angle is no coordinate") << "Center:0.5,0.5|Angle:270" << true;
    QTest::newRow("negative coordinate") << "Start:-0.5,0|Final:1,1" << false;
    QTest::newRow("none") << "" << false;
}

void tst_ZPropertyConverter::gradientRelative()
{
    QFETCH(QString, text);
    QFETCH(bool, relative);
    QCOMPARE(QtGradient::fromString(text).isRelative(), relative);
}

void tst_ZPropertyConverter::paintRelativeGradientFollowsSize()
{
    ZWidget w;
    w.resize(40, 50);
    w.setBackgroundGradient(QtGradient::fromString(QStringLiteral("Start:0,0|Final:0,1|Color:0:#ff0000|Color:1:#0000ff")));
    QImage image = render(&w);
    QVERIFY2(near(image.pixel(20, 0), Qt::red, 12), qPrintable(QColor(image.pixel(20, 0)).name()));
    QVERIFY2(near(image.pixel(20, 49), Qt::blue, 12), qPrintable(QColor(image.pixel(20, 49)).name()));
    QVERIFY(near(image.pixel(20, 25), QColor(127, 0, 127), 12));

    // Grown: the gradient still runs from the top edge to the bottom edge.
    w.resize(40, 200);
    image = render(&w);
    QVERIFY(near(image.pixel(5, 100), QColor(127, 0, 127), 12));
    QVERIFY(near(image.pixel(5, 199), Qt::blue, 12));
    QVERIFY(near(image.pixel(5, 0), Qt::red, 12));
}

void tst_ZPropertyConverter::paintAbsoluteGradient()
{
    ZWidget w;
    w.resize(30, 100);
    w.setBackgroundGradient(
        QtGradient::fromString(QStringLiteral("Start:0,0|Final:0,20|Color:0:#ff0000|Color:1:#0000ff")));
    const QImage image = render(&w);
    // Twenty logical units from the top; padded beyond.
    QVERIFY(near(image.pixel(10, 0), Qt::red, 20));
    QVERIFY(near(image.pixel(10, 10), QColor(127, 0, 127), 20));
    QVERIFY(near(image.pixel(10, 30), Qt::blue));
    QVERIFY(near(image.pixel(10, 99), Qt::blue));

    // Repeat spread repeats every twenty units.
    w.setBackgroundGradient(QtGradient::fromString(
        QStringLiteral("Start:0,0|Final:0,20|Color:0:#ff0000|Color:1:#0000ff|Spread:Repeat")));
    const QImage repeated = render(&w);
    QVERIFY(near(repeated.pixel(10, 41), Qt::red, 30));
    QVERIFY(near(repeated.pixel(10, 50), QColor(127, 0, 127), 20));
}

void tst_ZPropertyConverter::paintRadialGradient()
{
    ZWidget w;
    w.resize(80, 40);
    w.setBackgroundGradient(QtGradient::fromString(
        QStringLiteral("Center:0.5,0.5|Radius:0.5|Color:0:#00ff00|Color:1:#000000")));
    const QImage image = render(&w);
    // An ellipse over the rectangle: green in the middle, black at each edge's midpoint.
    QVERIFY(near(image.pixel(40, 20), Qt::green, 16));
    QVERIFY(near(image.pixel(0, 20), Qt::black, 16));
    QVERIFY(near(image.pixel(79, 20), Qt::black, 16));
    QVERIFY(near(image.pixel(40, 0), Qt::black, 16));
    QVERIFY(near(image.pixel(20, 20), QColor(0, 127, 0), 16));
}

void tst_ZPropertyConverter::gradientProperty()
{
    ZWidget w;
    w.resize(10, 10);
    const QString text = QStringLiteral("Angle:90|Center:0.5,0.5|Color:0:red|Color:1:blue");
    QVERIFY(w.setProperty("backgroundGradient", QVariant::fromValue(QtGradient::fromString(text))));
    QCOMPARE(w.backgroundGradient(), QtGradient::fromString(text));
    QCOMPARE(w.backgroundBrush().style(), Qt::ConicalGradientPattern);
    QVERIFY(w.autoFillBackground());
    const QBrush painted = w.palette().brush(QPalette::Window);
    QCOMPARE(painted.style(), Qt::ConicalGradientPattern);
    QCOMPARE(painted.transform(), QTransform(10, 0, 0, 10, 0, 0));

    // An invalid gradient removes the background.
    w.setBackgroundGradient(QtGradient::fromString(QStringLiteral("Radius:3")));
    QVERIFY(!w.backgroundGradient().isValid());
    QVERIFY(!w.autoFillBackground());
}

QTEST_MAIN(tst_ZPropertyConverter)
#include "tst_zpropertyconverter.moc"
