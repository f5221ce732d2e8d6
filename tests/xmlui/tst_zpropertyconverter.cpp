#include "qtgradient.h"
#include "zpropertyconverter.h"
#include "zwidget.h"

#include "common/scenetest.h"

#include <QtTest>

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
    bool a = false, b = false;
    if (p.size() == 2) {
        f.numerator = p[0].toInt(&a);
        f.denominator = p[1].toInt(&b);
    }
    const bool good = a && b && f.denominator != 0;
    if (ok)
        *ok = good;
    return QVariant::fromValue(good ? f : Fraction());
}

// The geometry that a gradient's text set, in one line.
QString geometry(const QGradient &g)
{
    auto point = [](QPointF p) { return QStringLiteral("%1,%2").arg(p.x()).arg(p.y()); };
    switch (g.type()) {
    case QGradient::LinearGradient: {
        const auto &l = static_cast<const QLinearGradient &>(g);
        return point(l.start()) + QLatin1Char(' ') + point(l.finalStop());
    }
    case QGradient::RadialGradient: {
        const auto &r = static_cast<const QRadialGradient &>(g);
        return point(r.center()) + QStringLiteral(" r") + QString::number(r.radius());
    }
    case QGradient::ConicalGradient: {
        const auto &c = static_cast<const QConicalGradient &>(g);
        return point(c.center()) + QStringLiteral(" a") + QString::number(c.angle());
    }
    default:
        return QString();
    }
}

// QGradient::stops() reports black-to-white when none are set.
int stopCount(const QGradient &g)
{
    const QGradientStops defaults{{0, QColor(Qt::black)}, {1, QColor(Qt::white)}};
    return g.stops() == defaults ? 0 : int(g.stops().size());
}

} // namespace

class tst_ZPropertyConverter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void colors_data();
    void colors();
    void values_data();
    void values();
    void registerNewType();
    void gradientText_data();
    void gradientText();
    void gradientStops();
    void paintGradient_data();
    void paintGradient();
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
    QTest::newRow("name") << "white" << QColor(Qt::white);
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

void tst_ZPropertyConverter::values_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QVariant>("expected");
    QTest::addColumn<bool>("ok");

    QTest::newRow("size") << QByteArray("QSizeF") << "10,20" << QVariant(QSizeF(10, 20)) << true;
    QTest::newRow("size: one piece") << QByteArray("QSizeF") << "10" << QVariant(QSizeF()) << false;
    QTest::newRow("size: empty") << QByteArray("QSize") << "" << QVariant(QSize()) << false;
    QTest::newRow("size: first two of three") << QByteArray("QSize") << "10,20,30" << QVariant(QSize(10, 20)) << true;
    QTest::newRow("size: rounded") << QByteArray("QSize") << "1.5,2.4" << QVariant(QSize(2, 2)) << true;
    QTest::newRow("size: fractions kept") << QByteArray("QSizeF") << "1.5,2.25" << QVariant(QSizeF(1.5, 2.25)) << true;
    QTest::newRow("size: empty pieces dropped") << QByteArray("QSizeF") << ",7,,8," << QVariant(QSizeF(7, 8)) << true;
    QTest::newRow("size: garbage piece is 0") << QByteArray("QSize") << "abc,5" << QVariant(QSize(0, 5)) << false;
    QTest::newRow("size: not finite is 0") << QByteArray("QSizeF") << "nan,inf" << QVariant(QSizeF(0, 0)) << false;
    QTest::newRow("size: negative parts kept") << QByteArray("QSize") << "-5,5" << QVariant(QSize(-5, 5)) << true;
    QTest::newRow("point") << QByteArray("QPointF") << "3,4" << QVariant(QPointF(3, 4)) << true;
    QTest::newRow("point: one piece") << QByteArray("QPoint") << "7" << QVariant(QPoint(0, 0)) << false;
    QTest::newRow("point: rounded") << QByteArray("QPoint") << "1.6,-2.6" << QVariant(QPoint(2, -3)) << true;
    QTest::newRow("point: huge stays inside int") << QByteArray("QPoint") << "1e30,-1e30"
                                                  << QVariant(QPoint(1 << 29, -(1 << 29))) << true;
    QTest::newRow("rect") << QByteArray("QRectF") << "0.5,1.5,10,10" << QVariant(QRectF(0.5, 1.5, 10, 10)) << true;
    QTest::newRow("rect: integers") << QByteArray("QRect") << "1,2,3,4" << QVariant(QRect(1, 2, 3, 4)) << true;
    QTest::newRow("rect: three pieces") << QByteArray("QRectF") << "1,2,3" << QVariant(QRectF()) << false;
    QTest::newRow("rect: five pieces") << QByteArray("QRect") << "1,2,3,4,5" << QVariant(QRect()) << false;
    QTest::newRow("margins") << QByteArray("QMargins") << "10,5,10,10" << QVariant::fromValue(QMargins(10, 5, 10, 10))
                             << true;
    QTest::newRow("margins: three pieces") << QByteArray("QMargins") << "1,2,3" << QVariant::fromValue(QMargins())
                                           << false;
    QTest::newRow("margins: truncated") << QByteArray("QMargins") << "1.9,-1.9,3,4"
                                        << QVariant::fromValue(QMargins(1, -1, 3, 4)) << true;
    QTest::newRow("margins: huge clamped") << QByteArray("QMargins") << "1e30,0,0,0"
                                           << QVariant::fromValue(QMargins(1 << 29, 0, 0, 0)) << true;
    QTest::newRow("margins: garbage piece") << QByteArray("QMargins") << "x,1,2,3"
                                            << QVariant::fromValue(QMargins(0, 1, 2, 3)) << false;
    QTest::newRow("font: empty is the default") << QByteArray("QFont") << "" << QVariant(QFont()) << true;
    // No converter: the text, for the property system to convert.
    QTest::newRow("int") << QByteArray("int") << "12" << QVariant(QStringLiteral("12")) << true;
    QTest::newRow("QBrush") << QByteArray("QBrush") << "red" << QVariant(QStringLiteral("red")) << true;
    QTest::newRow("unknown type") << QByteArray("NoSuchType") << "x" << QVariant(QStringLiteral("x")) << true;
}

void tst_ZPropertyConverter::values()
{
    QFETCH(QByteArray, type);
    QFETCH(QString, text);
    QFETCH(QVariant, expected);
    QFETCH(bool, ok);
    bool actualOk = !ok;
    const QVariant v = ZPropertyConverter::convert(type.constData(), text, &actualOk);
    QCOMPARE(actualOk, ok);
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
    QTest::addColumn<QString>("geometry");
    QTest::addColumn<bool>("relative");

    const int none = QGradient::NoGradient;
    const int linear = QGradient::LinearGradient;
    const int radial = QGradient::RadialGradient;
    const int conical = QGradient::ConicalGradient;
    QTest::newRow("linear") << "Start:0,0|Final:0,1|Color:0:#ffffff|Color:1:#000000" << linear << 0 << 2
                            << "0,0 0,1" << true;
    QTest::newRow("linear in pixels") << "Final:30,40|Start:10,20" << linear << 0 << 0 << "10,20 30,40" << false;
    QTest::newRow("one coordinate is the origin") << "Start:5|Final:1,1" << linear << 0 << 0 << "0,0 1,1" << true;
    QTest::newRow("negative coordinate") << "Start:-0.5,0|Final:1,1" << linear << 0 << 0 << "-0.5,0 1,1" << false;
    QTest::newRow("linear without Start") << "Final:0,1|Color:0:#ffffff" << none << 0 << 0 << "" << false;
    QTest::newRow("radial") << "Center:4,5|Radius:6|Color:0:red" << radial << 0 << 1 << "4,5 r6" << false;
    QTest::newRow("radial unit") << "Center:0.5,0.5|Radius:0.5" << radial << 0 << 0 << "0.5,0.5 r0.5" << true;
    QTest::newRow("radial without Center") << "Radius:5|Color:0:red" << none << 0 << 0 << "" << false;
    QTest::newRow("Radius beats Angle") << "Center:0,0|Radius:1|Angle:30" << radial << 0 << 0 << "0,0 r1" << true;
    QTest::newRow("Angle beats Final") << "Angle:90|Start:0,0|Final:1,1" << conical << 0 << 0 << "0,0 a90"
                                       << true;
    QTest::newRow("conical: angle is no coordinate") << "Center:0.5,0.5|Angle:270|Color:0.5:0,0,0,128" << conical
                                                     << 0 << 1 << "0.5,0.5 a270" << true;
    QTest::newRow("Spread:Repeat is Qt's 2") << "Start:0,0|Final:1,0|Spread:Repeat" << linear << 2 << 0
                                             << "0,0 1,0" << true;
    QTest::newRow("Spread:Reflect is Qt's 1") << "Start:0,0|Final:1,0|Spread:Reflect" << linear << 1 << 0
                                              << "0,0 1,0" << true;
    QTest::newRow("last Spread wins") << "Start:0,0|Final:1,0|Spread:Reflect|Spread:Pad" << linear << 0 << 0
                                      << "0,0 1,0" << true;
    QTest::newRow("unknown spread word") << "Start:0,0|Final:1,0|Spread:repeat" << linear << 0 << 0 << "0,0 1,0"
                                         << true;
    QTest::newRow("keys are case-sensitive") << "center:0,0|radius:3|start:0,0|final:1,1" << none << 0 << 0 << ""
                                             << false;
    QTest::newRow("empty items dropped") << "||Start:0,0||Final:0,1||Color:0:red||" << linear << 0 << 1
                                         << "0,0 0,1" << true;
    QTest::newRow("stop outside 0..1 dropped") << "Start:0,0|Final:0,1|Color:1.5:red|Color:-1:red|Color:0.5:red"
                                               << linear << 0 << 1 << "0,0 0,1" << true;
    QTest::newRow("stop with bad colour dropped") << "Start:0,0|Final:0,1|Color:0:nocolour|Color:1:255,0" << linear
                                                  << 0 << 0 << "0,0 0,1" << true;
    QTest::newRow("stop without colour") << "Start:0,0|Final:0,1|Color:0" << linear << 0 << 0 << "0,0 0,1" << true;
    QTest::newRow("empty") << "" << none << 0 << 0 << "" << false;
    QTest::newRow("garbage") << ":::|||:::" << none << 0 << 0 << "" << false;
}

void tst_ZPropertyConverter::gradientText()
{
    QFETCH(QString, text);
    QFETCH(int, type);
    QFETCH(int, spread);
    QFETCH(int, stops);
    QFETCH(QString, geometry);
    QFETCH(bool, relative);
    const QtGradient g = QtGradient::fromString(text);
    QCOMPARE(int(g.type()), type);
    QCOMPARE(g.isValid(), type != QGradient::NoGradient);
    QCOMPARE(int(g.gradient().spread()), spread);
    QCOMPARE(stopCount(g.gradient()), stops);
    QCOMPARE(::geometry(g.gradient()), geometry);
    QCOMPARE(g.isRelative(), relative);

    bool ok = !g.isValid();
    const QVariant v = ZPropertyConverter::convert(QMetaType::fromType<QtGradient>(), text, &ok);
    QCOMPARE(ok, g.isValid());
    QCOMPARE(v.value<QtGradient>(), g);
}

void tst_ZPropertyConverter::gradientStops()
{
    // Sorted by position; the last stop at a position wins; the colour rules apply.
    const QtGradient g = QtGradient::fromString(
        QStringLiteral("Start:0,0|Final:0,1|Color:1:0,0,0,128|Color:0:#ff000080|Color:0.5:white|Color:0.5:blue"));
    const QGradientStops expected{{0, QColor(255, 0, 0, 128)}, {0.5, QColor(Qt::blue)}, {1, QColor(0, 0, 0, 128)}};
    QCOMPARE(g.gradient().stops(), expected);
}

void tst_ZPropertyConverter::paintGradient_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("tolerance");
    QTest::addColumn<QVariantList>("probes"); // point, colour, point, colour...

    const QString redToBlue = QStringLiteral("Color:0:#ff0000|Color:1:#0000ff");
    const QColor purple(127, 0, 127);
    // Fractions of the widget: top edge to bottom edge whatever the size.
    QTest::newRow("relative") << "Start:0,0|Final:0,1|" + redToBlue << QSize(40, 50) << 12
                              << QVariantList{QPoint(20, 0), QColor(Qt::red), QPoint(20, 25), purple,
                                              QPoint(20, 49), QColor(Qt::blue)};
    QTest::newRow("relative, taller") << "Start:0,0|Final:0,1|" + redToBlue << QSize(40, 200) << 12
                                      << QVariantList{QPoint(5, 0), QColor(Qt::red), QPoint(5, 100), purple,
                                                      QPoint(5, 199), QColor(Qt::blue)};
    // Twenty units from the top, padded or repeated beyond.
    QTest::newRow("absolute") << "Start:0,0|Final:0,20|" + redToBlue << QSize(30, 100) << 20
                              << QVariantList{QPoint(10, 0), QColor(Qt::red), QPoint(10, 10), purple,
                                              QPoint(10, 30), QColor(Qt::blue), QPoint(10, 99), QColor(Qt::blue)};
    QTest::newRow("absolute, repeated") << "Start:0,0|Final:0,20|Spread:Repeat|" + redToBlue << QSize(30, 100) << 30
                                        << QVariantList{QPoint(10, 41), QColor(Qt::red), QPoint(10, 50), purple};
    // An ellipse over the rectangle: black at each edge's midpoint.
    QTest::newRow("radial") << "Center:0.5,0.5|Radius:0.5|Color:0:#00ff00|Color:1:#000000" << QSize(80, 40) << 16
                            << QVariantList{QPoint(40, 20), QColor(Qt::green), QPoint(20, 20), QColor(0, 127, 0),
                                            QPoint(0, 20), QColor(Qt::black), QPoint(79, 20), QColor(Qt::black),
                                            QPoint(40, 0), QColor(Qt::black)};
}

void tst_ZPropertyConverter::paintGradient()
{
    QFETCH(QString, text);
    QFETCH(QSize, size);
    QFETCH(int, tolerance);
    QFETCH(QVariantList, probes);

    QGraphicsScene scene;
    auto *w = new ZWidget;
    scene.addItem(w);
    w->resize(10, 10);
    // Set as a document sets it; the size comes later, as a layout gives it.
    QVERIFY(w->setProperty("backgroundGradient",
                           ZPropertyConverter::convert(QMetaType::fromType<QtGradient>(), text)));
    w->resize(size);
    const QImage image = scenetest::render(scene, size, Qt::transparent);
    for (int i = 0; i < probes.size(); i += 2) {
        const QColor actual = image.pixelColor(probes[i].toPoint());
        const QColor expected = probes[i + 1].value<QColor>();
        QVERIFY2(qAbs(actual.red() - expected.red()) <= tolerance
                     && qAbs(actual.green() - expected.green()) <= tolerance
                     && qAbs(actual.blue() - expected.blue()) <= tolerance && actual.alpha() == 255,
                 qPrintable(QStringLiteral("%1 at probe %2").arg(actual.name()).arg(i / 2)));
    }

    // An invalid gradient removes the background.
    w->setBackgroundGradient(QtGradient::fromString(QStringLiteral("Radius:3")));
    QVERIFY(!w->autoFillBackground());
    QCOMPARE(scenetest::render(scene, size, Qt::transparent).pixelColor(size.width() / 2, size.height() / 2).alpha(),
             0);
}

QTEST_MAIN(tst_ZPropertyConverter)
#include "tst_zpropertyconverter.moc"
