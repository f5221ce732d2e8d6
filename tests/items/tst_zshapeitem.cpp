// The shape item: which pixels each shape fills, the outline staying inside,
// brushes (pattern, texture, gradient) and the painter handed back as it came.

#include <QtTest/QtTest>
#include <QtWidgets/QStyleOptionGraphicsItem>

#include "common/scenetest.h"
#include "qtgradient.h"
#include "zshapeitem.h"

using scenetest::countOf;

namespace {

struct Fixture
{
    QGraphicsScene scene;
    ZShapeItem *item = new ZShapeItem;

    explicit Fixture(const QSizeF &size, const QColor &brush = Qt::blue)
    {
        scene.addItem(item);
        item->resize(size);
        item->setPenStyle(Qt::NoPen);
        item->setBrushColor(brush);
    }
    QImage shot() { return scenetest::render(scene, item->size().toSize()); }
    int count(const QColor &color) { return countOf(shot(), [color](QColor c) { return c == color; }); }
};

} // namespace

class tst_ZShapeItem : public QObject
{
    Q_OBJECT

private slots:
    // Points that must and must not be filled. The shape's rectangle is
    // (10, 10, 80, 80), its circle centred at (50, 50) with radius 40.
    void shapes_data()
    {
        QTest::addColumn<int>("shape");
        QTest::addColumn<QSize>("fan");
        QTest::addColumn<int>("round");
        QTest::addColumn<QList<QPoint>>("filled");
        QTest::addColumn<QList<QPoint>>("empty");
        QTest::newRow("rect") << int(ZShapeItem::Rect) << QSize() << 0 << QList<QPoint>{{10, 10}, {89, 89}, {50, 50}, {89, 10}}
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
                                                      << QList<QPoint>{{70, 70}} << QList<QPoint>{{70, 30}, {30, 30}, {30, 70}};
        QTest::newRow("half chord") << int(ZShapeItem::Chord) << QSize(0, 2880) << 0
                                    << QList<QPoint>{{50, 30}, {20, 45}, {80, 45}} << QList<QPoint>{{50, 70}, {20, 60}};
        // A quarter chord is the pie less the triangle to the centre.
        QTest::newRow("quarter chord") << int(ZShapeItem::Chord) << QSize(0, 1440) << 0
                                       << QList<QPoint>{{75, 25}} << QList<QPoint>{{60, 40}, {30, 30}, {70, 70}};
    }
    void shapes()
    {
        QFETCH(int, shape);
        QFETCH(QSize, fan);
        QFETCH(int, round);
        QFETCH(QList<QPoint>, filled);
        QFETCH(QList<QPoint>, empty);
        Fixture f(QSizeF(100, 100));
        f.item->setShapeMargins(QMargins(10, 10, 10, 10));
        f.item->setDrawShape(ZShapeItem::Shape(shape));
        if (shape == ZShapeItem::Pie || shape == ZShapeItem::Chord)
            f.item->setFanAngle(fan);
        f.item->setRoundPixel(round);
        const QImage image = f.shot();
        for (const QPoint &p : filled)
            QVERIFY2(image.pixelColor(p) == Qt::blue, qPrintable(QStringLiteral("%1,%2 empty").arg(p.x()).arg(p.y())));
        for (const QPoint &p : empty)
            QVERIFY2(image.pixelColor(p) == Qt::white, qPrintable(QStringLiteral("%1,%2 filled").arg(p.x()).arg(p.y())));
    }

    // A round rectangle without radius is the rectangle; a full pie is the
    // ellipse and a quarter pie a quarter of it.
    void equivalentShapes()
    {
        Fixture f(QSizeF(100, 100));
        f.item->setPenStyle(Qt::SolidLine);
        f.item->setPenWidth(2);
        f.item->setPenColor(Qt::red);
        const QImage rect = f.shot();
        f.item->setDrawShape(ZShapeItem::RoundRect);
        QCOMPARE(f.shot(), rect);
        f.item->setRoundPixel(10);
        QVERIFY(f.shot() != rect);

        f.item->setPenStyle(Qt::NoPen);
        f.item->setDrawShape(ZShapeItem::Ellipse);
        const int ellipse = f.count(Qt::blue);
        f.item->setDrawShape(ZShapeItem::Pie);
        f.item->setFanAngle(QSize(0, 5760));
        QVERIFY2(qAbs(f.count(Qt::blue) - ellipse) <= ellipse / 100, qPrintable(QString::number(ellipse)));
        f.item->setFanAngle(QSize(1440, 1440));
        QVERIFY(qAbs(f.count(Qt::blue) * 4 - ellipse) <= ellipse / 20);
    }

    void outlineStaysInside_data()
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
    void outlineStaysInside()
    {
        QFETCH(int, shape);
        QFETCH(int, width);
        QFETCH(QMargins, margins);
        Fixture f(QSizeF(60, 50), Qt::transparent);
        f.item->setPos(20, 20);
        f.item->setDrawShape(ZShapeItem::Shape(shape));
        f.item->setPenStyle(Qt::SolidLine);
        f.item->setPenColor(Qt::red);
        f.item->setPenWidth(width);
        f.item->setPenJoinStyle(Qt::MiterJoin);
        f.item->setShapeMargins(margins);
        const QRect ink = scenetest::boundingBox(scenetest::render(f.scene, QSize(100, 90)), [](QColor c) { return c != Qt::white; });
        QVERIFY(!ink.isNull());
        QVERIFY2(QRect(20, 20, 60, 50).marginsRemoved(margins).contains(ink),
                 qPrintable(QStringLiteral("%1,%2 %3x%4").arg(ink.x()).arg(ink.y()).arg(ink.width()).arg(ink.height())));
    }

    // Values between the enumerators and negative widths leave the pen alone.
    void badPenValues()
    {
        ZShapeItem item;
        item.setPenStyle(Qt::DashLine);
        item.setPenCapStyle(Qt::FlatCap);
        item.setPenJoinStyle(Qt::RoundJoin);
        item.setPenWidth(3);
        const QPen pen = item.pen();
        QCOMPARE(pen.capStyle(), Qt::FlatCap);
        item.setPenStyle(Qt::PenStyle(9));
        item.setPenCapStyle(Qt::PenCapStyle(0x17));
        item.setPenJoinStyle(Qt::PenJoinStyle(0x41));
        item.setPenWidth(-2);
        QCOMPARE(item.pen(), pen);
    }

    // Styles and colour are kept apart: a pattern keeps the colour, and
    // gradients and textures do not come from a style alone.
    void brushStyle()
    {
        Fixture f(QSizeF(40, 40), Qt::red);
        f.item->setBrushStyle(Qt::Dense4Pattern);
        const int red = f.count(Qt::red);
        QVERIFY(red > 200 && red < 1400);
        f.item->setBrushColor(Qt::blue);
        QCOMPARE(f.item->brushStyle(), Qt::Dense4Pattern);
        f.item->setBrushStyle(Qt::SolidPattern);
        QCOMPARE(f.count(Qt::blue), 1600);
        for (int style : {int(Qt::TexturePattern), int(Qt::LinearGradientPattern), int(Qt::ConicalGradientPattern), 31}) {
            f.item->setBrushStyle(Qt::BrushStyle(style));
            QCOMPARE(f.item->brushStyle(), Qt::SolidPattern);
        }
        f.item->setBrushStyle(Qt::NoBrush);
        QCOMPARE(f.count(Qt::white), 1600);
    }

    // A texture that loads replaces the brush; one that does not changes
    // nothing; a plain style afterwards fills in the colour kept all along.
    void texture()
    {
        QTemporaryDir dir(QCoreApplication::applicationDirPath() + "/shapeitem-XXXXXX");
        QVERIFY(dir.isValid());
        QImage tile(2, 2, QImage::Format_ARGB32);
        tile.fill(Qt::red);
        tile.setPixelColor(1, 0, Qt::green);
        tile.setPixelColor(0, 1, Qt::green);
        QVERIFY(tile.save(dir.filePath("tile.png")));
        const QString path = QDir(QCoreApplication::applicationDirPath()).relativeFilePath(dir.filePath("tile.png"));

        Fixture f(QSizeF(20, 20));
        f.item->setTextureBrush(QStringLiteral("no/such/tile.png"));
        QCOMPARE(f.item->brushStyle(), Qt::SolidPattern);
        f.item->setTextureBrush(path);
        const QImage image = f.shot();
        QCOMPARE(image.pixelColor(4, 4), QColor(Qt::red));
        QCOMPARE(image.pixelColor(5, 4), QColor(Qt::green));
        QCOMPARE(image.pixelColor(5, 5), QColor(Qt::red));
        QCOMPARE(f.count(Qt::green), 200);
        f.item->setTextureBrush(QStringLiteral("no/such/tile.png"));
        QCOMPARE(f.item->textureBrush(), path);
        QCOMPARE(f.count(Qt::green), 200);
        f.item->setBrushStyle(Qt::SolidPattern);
        QCOMPARE(f.count(Qt::blue), 400);
    }

    // The gradient is fitted to the item: sample its ends, also after a resize.
    void gradients_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QPoint>("redPoint");
        QTest::addColumn<QPoint>("bluePoint");
        QTest::newRow("linear left to right") << "Start:0,0|Final:1,0|Color:0:#ff0000|Color:1:#0000ff" << QPoint(1, 40) << QPoint(118, 40);
        QTest::newRow("linear bottom to top") << "Start:0,1|Final:0,0|Color:0:#ff0000|Color:1:#0000ff" << QPoint(60, 78) << QPoint(60, 1);
        QTest::newRow("linear in pixels") << "Start:0,0|Final:20,0|Color:0:#ff0000|Color:1:#0000ff" << QPoint(0, 40) << QPoint(60, 40);
        QTest::newRow("radial") << "Center:0.5,0.5|Radius:0.5|Color:0:#ff0000|Color:1:#0000ff" << QPoint(60, 40) << QPoint(1, 1);
        QTest::newRow("conical") << "Center:0.5,0.5|Angle:0|Color:0:#ff0000|Color:1:#0000ff" << QPoint(110, 38) << QPoint(110, 42);
    }
    void gradients()
    {
        QFETCH(QString, text);
        QFETCH(QPoint, redPoint);
        QFETCH(QPoint, bluePoint);
        Fixture f(QSizeF(120, 80));
        const QtGradient gradient = QtGradient::fromString(text);
        QVERIFY(gradient.isValid());
        f.item->setGradientBrush(gradient);
        for (int scale : {1, 2}) {
            const QImage image = f.shot();
            const QColor red = image.pixelColor(redPoint / scale), blue = image.pixelColor(bluePoint / scale);
            const int high = scale == 1 ? 200 : 180, low = scale == 1 ? 60 : 80;
            QVERIFY2(red.red() > high && red.blue() < low, qPrintable(red.name()));
            QVERIFY2(blue.blue() > high && blue.red() < low, qPrintable(blue.name()));
            if (!gradient.isRelative())
                break;
            f.item->resize(60, 40);
        }
    }

    // An invalid gradient changes nothing; leaving a gradient for a plain
    // style keeps the colour.
    void invalidGradient()
    {
        ZShapeItem item;
        item.setBrushColor(Qt::red);
        item.setGradientBrush(QtGradient::fromString(QStringLiteral("Final:1,0|Color:0:#ff0000")));
        QCOMPARE(item.brushStyle(), Qt::SolidPattern);
        const QtGradient linear = QtGradient::fromString(QStringLiteral("Start:0,0|Final:1,0|Color:0:#ff0000"));
        item.setGradientBrush(linear);
        item.setGradientBrush(QtGradient());
        QCOMPARE(item.brushStyle(), Qt::LinearGradientPattern);
        QCOMPARE(item.gradientBrush(), linear);
        item.setBrushStyle(Qt::SolidPattern);
        QCOMPARE(item.brushColor(), QColor(Qt::red));
    }

    // smooth switches antialiasing on; the painter is handed back as it came.
    void smoothAndPainterState()
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
            if (painter.pen() != pen || painter.brush() != brush || painter.testRenderHint(QPainter::Antialiasing) == smooth)
                return -1;
            return countOf(image, [](QColor c) { return c != Qt::white && c != Qt::black; });
        };
        QCOMPARE(paintWith(false), 0);
        QVERIFY(paintWith(true) > 20);
    }
};

QTEST_MAIN(tst_ZShapeItem)
#include "tst_zshapeitem.moc"
