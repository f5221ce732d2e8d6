#include <QtTest/QtTest>
#include <QtWidgets/QStyleOptionGraphicsItem>

#include "items/itemtestutil.h"
#include "qtgradient.h"
#include "zshapeitem.h"

using namespace itemtest;

namespace {

// A 100 x 100 shape item without pen, filled blue inside margins of 10.
ZShapeItem *blueShape(QGraphicsScene &scene, ZShapeItem::Shape shape)
{
    auto *item = new ZShapeItem;
    scene.addItem(item);
    item->resize(100, 100);
    item->setPenStyle(Qt::NoPen);
    item->setBrushColor(Qt::blue);
    item->setShapeMargins(QMargins(10, 10, 10, 10));
    item->setDrawShape(shape);
    return item;
}

bool isBlue(QColor c)
{
    return c == QColor(Qt::blue);
}

} // namespace

class tst_ZShapeItem : public QObject
{
    Q_OBJECT

private slots:
    void enumAndDefaults();
    void shapes_data();
    void shapes();
    void roundRectWithoutRadiusIsARect();
    void fullPieIsTheEllipse();
    void outlineStaysInside_data();
    void outlineStaysInside();
    void penSetters();
    void brushStyleKeepsColour();
    void texture();
    void gradients_data();
    void gradients();
    void invalidGradientChangesNothing();
    void smoothAndPainterState();
};

void tst_ZShapeItem::enumAndDefaults()
{
    const QMetaEnum e = QMetaEnum::fromType<ZShapeItem::Shape>();
    QCOMPARE(e.keyToValue("Rect"), 0);
    QCOMPARE(e.keyToValue("RoundRect"), 1);
    QCOMPARE(e.keyToValue("Ellipse"), 2);
    QCOMPARE(e.keyToValue("Pie"), 3);
    QCOMPARE(e.keyToValue("Chord"), 4);

    ZShapeItem item;
    QCOMPARE(item.drawShape(), ZShapeItem::Rect);
    QCOMPARE(item.fanAngle(), QSize(0, 5760));
    QCOMPARE(item.penColor(), QColor(Qt::black));
    QCOMPARE(item.penWidth(), 1);
    QCOMPARE(item.penStyle(), Qt::SolidLine);
    QCOMPARE(item.brushStyle(), Qt::SolidPattern);
    QCOMPARE(item.brushColor().alpha(), 0);
    QVERIFY(!item.smooth());
    QVERIFY(!item.gradientBrush().isValid());

    // The documents' names.
    QVERIFY(item.setProperty("shape", "Ellipse"));
    QCOMPARE(item.drawShape(), ZShapeItem::Ellipse);
    QVERIFY(item.setProperty("fan", QSize(16, 32)));
    QCOMPARE(item.fanAngle(), QSize(16, 32));
    QVERIFY(item.setProperty("capStyle", "RoundCap"));
    QCOMPARE(item.penCapStyle(), Qt::RoundCap);
    QVERIFY(item.setProperty("joinStyle", "RoundJoin"));
    QCOMPARE(item.penJoinStyle(), Qt::RoundJoin);
}

// Shape, angles, radius; points that must and must not be filled. The shape's
// rectangle is (10, 10, 80, 80), its circle centred at (50, 50) with radius 40.
void tst_ZShapeItem::shapes_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<QSize>("fan");
    QTest::addColumn<int>("round");
    QTest::addColumn<QList<QPoint>>("filled");
    QTest::addColumn<QList<QPoint>>("empty");

    QTest::newRow("rect") << int(ZShapeItem::Rect) << QSize() << 0
                          << QList<QPoint>{{10, 10}, {89, 89}, {50, 50}, {89, 10}}
                          << QList<QPoint>{{9, 50}, {90, 50}, {50, 9}, {50, 90}};
    QTest::newRow("round rect") << int(ZShapeItem::RoundRect) << QSize() << 20
                                << QList<QPoint>{{50, 11}, {11, 50}, {50, 50}, {20, 20}}
                                << QList<QPoint>{{11, 11}, {88, 88}, {12, 87}};
    QTest::newRow("ellipse") << int(ZShapeItem::Ellipse) << QSize() << 0
                             << QList<QPoint>{{50, 12}, {12, 50}, {50, 50}, {87, 50}}
                             << QList<QPoint>{{13, 13}, {86, 86}, {9, 50}};
    QTest::newRow("quarter pie from 90 degrees") << int(ZShapeItem::Pie) << QSize(1440, 1440) << 0
                                                 << QList<QPoint>{{30, 30}, {48, 15}, {15, 48}}
                                                 << QList<QPoint>{{70, 30}, {30, 70}, {70, 70}};
    QTest::newRow("quarter pie from 0 degrees") << int(ZShapeItem::Pie) << QSize(0, 1440) << 0
                                                << QList<QPoint>{{70, 30}, {60, 40}}
                                                << QList<QPoint>{{30, 30}, {30, 70}, {70, 70}};
    QTest::newRow("negative span runs clockwise") << int(ZShapeItem::Pie) << QSize(0, -1440) << 0
                                                  << QList<QPoint>{{70, 70}}
                                                  << QList<QPoint>{{70, 30}, {30, 30}, {30, 70}};
    QTest::newRow("half chord") << int(ZShapeItem::Chord) << QSize(0, 2880) << 0
                                << QList<QPoint>{{50, 30}, {20, 45}, {80, 45}}
                                << QList<QPoint>{{50, 70}, {20, 60}};
    // A quarter chord is the pie less the triangle to the centre.
    QTest::newRow("quarter chord") << int(ZShapeItem::Chord) << QSize(0, 1440) << 0
                                   << QList<QPoint>{{75, 25}}
                                   << QList<QPoint>{{60, 40}, {30, 30}, {70, 70}};
}

void tst_ZShapeItem::shapes()
{
    QFETCH(int, shape);
    QFETCH(QSize, fan);
    QFETCH(int, round);
    QFETCH(QList<QPoint>, filled);
    QFETCH(QList<QPoint>, empty);

    QGraphicsScene scene;
    ZShapeItem *item = blueShape(scene, ZShapeItem::Shape(shape));
    if (shape == ZShapeItem::Pie || shape == ZShapeItem::Chord)
        item->setFanAngle(fan);
    item->setRoundPixel(round);
    const QImage image = render(scene, QSize(100, 100));
    for (const QPoint &p : filled)
        QVERIFY2(isBlue(image.pixelColor(p)), qPrintable(QStringLiteral("%1,%2 empty").arg(p.x()).arg(p.y())));
    for (const QPoint &p : empty)
        QVERIFY2(image.pixelColor(p) == Qt::white, qPrintable(QStringLiteral("%1,%2 filled").arg(p.x()).arg(p.y())));
}

void tst_ZShapeItem::roundRectWithoutRadiusIsARect()
{
    QGraphicsScene scene;
    ZShapeItem *item = blueShape(scene, ZShapeItem::Rect);
    item->setPenStyle(Qt::SolidLine);
    item->setPenWidth(2);
    item->setPenColor(Qt::red);
    const QImage rect = render(scene, QSize(100, 100));
    item->setDrawShape(ZShapeItem::RoundRect);
    QCOMPARE(render(scene, QSize(100, 100)), rect);
    item->setRoundPixel(10);
    QVERIFY(render(scene, QSize(100, 100)) != rect);
}

void tst_ZShapeItem::fullPieIsTheEllipse()
{
    QGraphicsScene scene;
    ZShapeItem *item = blueShape(scene, ZShapeItem::Ellipse);
    const int ellipse = countOf(render(scene, QSize(100, 100)), isBlue);
    item->setDrawShape(ZShapeItem::Pie);
    item->setFanAngle(QSize(0, 5760));
    const int pie = countOf(render(scene, QSize(100, 100)), isBlue);
    QVERIFY2(qAbs(pie - ellipse) <= ellipse / 100, qPrintable(QStringLiteral("%1 vs %2").arg(pie).arg(ellipse)));
    // A quarter is a quarter.
    item->setFanAngle(QSize(1440, 1440));
    const int quarter = countOf(render(scene, QSize(100, 100)), isBlue);
    QVERIFY(qAbs(quarter * 4 - ellipse) <= ellipse / 20);
}

void tst_ZShapeItem::outlineStaysInside_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<int>("width");
    QTest::addColumn<QMargins>("margins");
    for (int shape = ZShapeItem::Rect; shape <= ZShapeItem::Chord; ++shape) {
        for (int width : {1, 4, 9}) {
            QTest::addRow("shape %d, pen %d", shape, width) << shape << width << QMargins();
            QTest::addRow("shape %d, pen %d, margins", shape, width) << shape << width << QMargins(5, 7, 11, 3);
        }
    }
}

void tst_ZShapeItem::outlineStaysInside()
{
    QFETCH(int, shape);
    QFETCH(int, width);
    QFETCH(QMargins, margins);

    QGraphicsScene scene;
    auto *item = new ZShapeItem;
    scene.addItem(item);
    item->setPos(20, 20);
    item->resize(60, 50);
    item->setDrawShape(ZShapeItem::Shape(shape));
    item->setFanAngle(QSize(0, 5760));
    item->setPenColor(Qt::red);
    item->setPenWidth(width);
    item->setPenJoinStyle(Qt::MiterJoin);
    item->setShapeMargins(margins);
    const QImage image = render(scene, QSize(100, 90));
    const QRect ink = boundingBox(image, [](QColor c) { return c != Qt::white; });
    const QRect area = QRect(20, 20, 60, 50).marginsRemoved(margins);
    QVERIFY(!ink.isNull());
    QVERIFY2(area.contains(ink), qPrintable(QStringLiteral("%1,%2 %3x%4").arg(ink.x()).arg(ink.y()).arg(ink.width()).arg(ink.height())));
}

void tst_ZShapeItem::penSetters()
{
    ZShapeItem item;
    item.setPenStyle(Qt::DashLine);
    item.setPenCapStyle(Qt::FlatCap);
    item.setPenJoinStyle(Qt::RoundJoin);
    item.setPenColor(Qt::green);
    item.setPenWidth(3);
    const QPen pen = item.pen();
    QCOMPARE(pen.style(), Qt::DashLine);
    QCOMPARE(pen.capStyle(), Qt::FlatCap);
    QCOMPARE(pen.joinStyle(), Qt::RoundJoin);
    QCOMPARE(pen.color(), QColor(Qt::green));
    QCOMPARE(pen.width(), 3);

    // Values between the enumerators and negative widths leave the pen alone.
    item.setPenStyle(Qt::PenStyle(9));
    item.setPenCapStyle(Qt::PenCapStyle(0x17));
    item.setPenJoinStyle(Qt::PenJoinStyle(0x41));
    item.setPenWidth(-2);
    QCOMPARE(item.pen(), pen);
}

void tst_ZShapeItem::brushStyleKeepsColour()
{
    QGraphicsScene scene;
    auto *item = new ZShapeItem;
    scene.addItem(item);
    item->resize(40, 40);
    item->setPenStyle(Qt::NoPen);
    item->setBrushColor(Qt::red);
    item->setBrushStyle(Qt::Dense4Pattern);
    QCOMPARE(item->brushColor(), QColor(Qt::red));
    QCOMPARE(item->brushStyle(), Qt::Dense4Pattern);
    const QImage pattern = render(scene, QSize(40, 40));
    const int red = countOf(pattern, [](QColor c) { return c == Qt::red; });
    QVERIFY(red > 200 && red < 1400);

    item->setBrushColor(Qt::blue);
    QCOMPARE(item->brushStyle(), Qt::Dense4Pattern);
    item->setBrushStyle(Qt::SolidPattern);
    QCOMPARE(countOf(render(scene, QSize(40, 40)), isBlue), 1600);

    // Gradients and textures do not come from a style alone.
    for (Qt::BrushStyle style : {Qt::TexturePattern, Qt::LinearGradientPattern, Qt::ConicalGradientPattern,
                                 Qt::BrushStyle(31)}) {
        item->setBrushStyle(style);
        QCOMPARE(item->brushStyle(), Qt::SolidPattern);
    }
    item->setBrushStyle(Qt::NoBrush);
    QCOMPARE(countOf(render(scene, QSize(40, 40)), [](QColor c) { return c != Qt::white; }), 0);
}

void tst_ZShapeItem::texture()
{
    QTemporaryDir dir(QCoreApplication::applicationDirPath() + "/shapeitem-XXXXXX");
    QVERIFY(dir.isValid());
    QImage tile(2, 2, QImage::Format_ARGB32);
    tile.fill(Qt::red);
    tile.setPixelColor(1, 0, Qt::green);
    tile.setPixelColor(0, 1, Qt::green);
    QVERIFY(tile.save(dir.filePath("tile.png")));
    const QString path = QDir(QCoreApplication::applicationDirPath()).relativeFilePath(dir.filePath("tile.png"));

    QGraphicsScene scene;
    auto *item = new ZShapeItem;
    scene.addItem(item);
    item->resize(20, 20);
    item->setPenStyle(Qt::NoPen);
    item->setBrushColor(Qt::blue);

    item->setTextureBrush(QStringLiteral("no/such/tile.png"));
    QCOMPARE(item->brushStyle(), Qt::SolidPattern);
    QVERIFY(item->textureBrush().isEmpty());

    item->setTextureBrush(path);
    QCOMPARE(item->brushStyle(), Qt::TexturePattern);
    QCOMPARE(item->textureBrush(), path);
    const QImage image = render(scene, QSize(20, 20));
    QCOMPARE(image.pixelColor(4, 4), QColor(Qt::red));
    QCOMPARE(image.pixelColor(5, 4), QColor(Qt::green));
    QCOMPARE(image.pixelColor(5, 5), QColor(Qt::red));
    QCOMPARE(countOf(image, [](QColor c) { return c == Qt::green; }), 200);

    // A path that does not load keeps the texture.
    item->setTextureBrush(QStringLiteral("no/such/tile.png"));
    QCOMPARE(item->brushStyle(), Qt::TexturePattern);
    QCOMPARE(item->textureBrush(), path);
    // And a style replaces it, in the colour kept all along.
    item->setBrushStyle(Qt::SolidPattern);
    QCOMPARE(countOf(render(scene, QSize(20, 20)), isBlue), 400);
}

// The gradient is fitted to the item: sample its ends.
void tst_ZShapeItem::gradients_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QPoint>("redPoint");
    QTest::addColumn<QPoint>("bluePoint");

    QTest::newRow("linear left to right") << "Start:0,0|Final:1,0|Color:0:#ff0000|Color:1:#0000ff"
                                          << QPoint(1, 40) << QPoint(118, 40);
    QTest::newRow("linear bottom to top") << "Start:0,1|Final:0,0|Color:0:#ff0000|Color:1:#0000ff"
                                          << QPoint(60, 78) << QPoint(60, 1);
    QTest::newRow("linear in pixels") << "Start:0,0|Final:20,0|Color:0:#ff0000|Color:1:#0000ff"
                                      << QPoint(0, 40) << QPoint(60, 40);
    QTest::newRow("radial") << "Center:0.5,0.5|Radius:0.5|Color:0:#ff0000|Color:1:#0000ff"
                            << QPoint(60, 40) << QPoint(1, 1);
    QTest::newRow("conical") << "Center:0.5,0.5|Angle:0|Color:0:#ff0000|Color:1:#0000ff"
                             << QPoint(110, 38) << QPoint(110, 42);
}

void tst_ZShapeItem::gradients()
{
    QFETCH(QString, text);
    QFETCH(QPoint, redPoint);
    QFETCH(QPoint, bluePoint);

    QGraphicsScene scene;
    auto *item = new ZShapeItem;
    scene.addItem(item);
    item->resize(120, 80);
    item->setPenStyle(Qt::NoPen);
    const QtGradient gradient = QtGradient::fromString(text);
    QVERIFY(gradient.isValid());
    QVERIFY(item->setProperty("gradient", QVariant::fromValue(gradient)));
    QCOMPARE(item->gradientBrush(), gradient);

    const QImage image = render(scene, QSize(120, 80));
    const QColor red = image.pixelColor(redPoint);
    const QColor blue = image.pixelColor(bluePoint);
    QVERIFY2(red.red() > 200 && red.blue() < 60, qPrintable(red.name()));
    QVERIFY2(blue.blue() > 200 && blue.red() < 60, qPrintable(blue.name()));

    // The gradient follows the item's size.
    if (gradient.isRelative()) {
        item->resize(60, 40);
        const QImage small = render(scene, QSize(60, 40));
        const QColor stillRed = small.pixelColor(redPoint / 2);
        const QColor stillBlue = small.pixelColor(bluePoint / 2);
        QVERIFY2(stillRed.red() > 180 && stillRed.blue() < 80, qPrintable(stillRed.name()));
        QVERIFY2(stillBlue.blue() > 180 && stillBlue.red() < 80, qPrintable(stillBlue.name()));
    }
}

void tst_ZShapeItem::invalidGradientChangesNothing()
{
    ZShapeItem item;
    item.setBrushColor(Qt::red);
    item.setGradientBrush(QtGradient::fromString(QStringLiteral("Final:1,0|Color:0:#ff0000")));
    QCOMPARE(item.brushStyle(), Qt::SolidPattern);
    QVERIFY(!item.gradientBrush().isValid());

    const QtGradient linear = QtGradient::fromString(QStringLiteral("Start:0,0|Final:1,0|Color:0:#ff0000"));
    item.setGradientBrush(linear);
    QCOMPARE(item.brushStyle(), Qt::LinearGradientPattern);
    item.setGradientBrush(QtGradient());
    QCOMPARE(item.brushStyle(), Qt::LinearGradientPattern);
    QCOMPARE(item.gradientBrush(), linear);
    // Leaving the gradient for a plain style keeps the colour.
    item.setBrushStyle(Qt::SolidPattern);
    QCOMPARE(item.brushColor(), QColor(Qt::red));
}

void tst_ZShapeItem::smoothAndPainterState()
{
    ZShapeItem item;
    item.resize(40, 40);
    item.setDrawShape(ZShapeItem::Ellipse);
    item.setPenStyle(Qt::NoPen);
    item.setBrushColor(Qt::black);

    const auto paintWith = [&item](bool smooth) {
        item.setSmooth(smooth);
        QImage image(40, 40, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        const QPen pen(Qt::cyan, 3);
        const QBrush brush(Qt::magenta, Qt::CrossPattern);
        painter.setPen(pen);
        painter.setBrush(brush);
        painter.setRenderHint(QPainter::Antialiasing, !smooth);
        QStyleOptionGraphicsItem option;
        static_cast<QGraphicsItem &>(item).paint(&painter, &option, nullptr);
        // The painter is handed back as it came.
        if (painter.pen() != pen || painter.brush() != brush
            || painter.testRenderHint(QPainter::Antialiasing) == smooth)
            return -1;
        return countOf(image, [](QColor c) { return c != Qt::white && c != Qt::black; });
    };
    QCOMPARE(paintWith(false), 0);
    QVERIFY(paintWith(true) > 20);
}

QTEST_MAIN(tst_ZShapeItem)
#include "tst_zshapeitem.moc"
