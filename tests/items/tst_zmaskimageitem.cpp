// The masked picture: the mask image cuts the picture, the mask region
// shapes the mouse test, and random points come from inside the region.

#include <QtTest/QtTest>

#include "common/scenetest.h"
#include "zmaskimageitem.h"

using scenetest::boxOf;
using scenetest::render;

class tst_ZMaskImageItem : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;

    // Writes an image under the application directory and answers its relative name.
    QString saveImage(const QString &name, const QImage &image)
    {
        const QString file = m_dir->filePath(name);
        return image.save(file) ? QDir(QCoreApplication::applicationDirPath()).relativeFilePath(file) : QString();
    }

    // Opaque left half, transparent right half.
    static QImage halfMask(const QSize &size)
    {
        QImage mask(size, QImage::Format_ARGB32);
        mask.fill(Qt::transparent);
        QPainter(&mask).fillRect(QRect(0, 0, size.width() / 2, size.height()), Qt::black);
        return mask;
    }

private slots:
    void initTestCase()
    {
        m_dir = std::make_unique<QTemporaryDir>(QCoreApplication::applicationDirPath() + "/maskitem-XXXXXX");
        QVERIFY(m_dir->isValid());
    }

    // Without a mask image the picture fills the item; with one it takes the
    // mask's alpha, stretched with it over the item. maskRect alone draws nothing.
    void drawing()
    {
        QGraphicsScene scene;
        auto *item = new ZMaskImageItem;
        scene.addItem(item);
        item->resize(40, 40);
        QCOMPARE(scenetest::countOf(render(scene, QSize(50, 50)), [](QColor c) { return c != Qt::white; }), 0);
        item->setPixmap(scenetest::solidPixmap(QSize(5, 5), Qt::blue));
        QCOMPARE(boxOf(render(scene, QSize(50, 50)), Qt::blue), QRect(0, 0, 40, 40));
        item->setMaskRect(QRect(0, 0, 30, 30));
        QCOMPARE(boxOf(render(scene, QSize(50, 50)), Qt::blue), QRect());

        item->setImagePath(saveImage("blue.png", scenetest::solidPixmap(QSize(8, 8), Qt::blue).toImage()));
        item->setMaskImage(saveImage("half.png", halfMask(QSize(20, 20))));
        QImage image = render(scene, QSize(40, 40));
        QCOMPARE(image.pixelColor(15, 39), QColor(Qt::blue));
        QCOMPARE(image.pixelColor(25, 20), QColor(Qt::white));
        const QRect blue = boxOf(image, Qt::blue);
        QVERIFY2(blue.left() == 0 && blue.right() >= 18 && blue.right() <= 20 && blue.height() == 40,
                 qPrintable(QStringLiteral("right edge %1").arg(blue.right())));
        // A new picture is cut the same way.
        item->setPixmap(scenetest::solidPixmap(QSize(3, 3), Qt::red));
        image = render(scene, QSize(40, 40));
        QCOMPARE(image.pixelColor(5, 20), QColor(Qt::red));
        QCOMPARE(image.pixelColor(25, 20), QColor(Qt::white));
    }

    // The region is the mask image's opaque part, or the last rectangle or
    // ellipse set; a mask image that does not load leaves none.
    void maskRegion()
    {
        ZMaskImageItem item;
        item.setMaskImage(saveImage("region.png", halfMask(QSize(20, 10))));
        QCOMPARE(item.maskRegion(), QRegion(0, 0, 10, 10));
        QImage opaque(12, 6, QImage::Format_RGB32); // no alpha: opaque everywhere
        opaque.fill(Qt::gray);
        item.setMaskImage(saveImage("opaque.png", opaque));
        QCOMPARE(item.maskRegion(), QRegion(0, 0, 12, 6));
        item.setMaskRect(QRect(2, 3, 4, 5));
        QCOMPARE(item.maskRegion(), QRegion(2, 3, 4, 5));
        item.setMaskEllipse(QRect(0, 0, 20, 10));
        QCOMPARE(item.maskRegion(), QRegion(QRect(0, 0, 20, 10), QRegion::Ellipse));
        item.setMaskImage(QStringLiteral("no/such/mask.png"));
        QVERIFY(item.maskRegion().isEmpty());
    }

    // With maskMouse only events inside the region are taken and reported.
    void mouseTest_data()
    {
        QTest::addColumn<QString>("shape");
        QTest::addColumn<bool>("maskMouse");
        QTest::addColumn<QPointF>("pos");
        QTest::addColumn<bool>("inside");
        QTest::newRow("rect inside") << "rect" << true << QPointF(15, 15) << true;
        QTest::newRow("rect first pixel") << "rect" << true << QPointF(10, 10) << true;
        QTest::newRow("rect last pixel") << "rect" << true << QPointF(29, 29) << true;
        QTest::newRow("rect past the edge") << "rect" << true << QPointF(30, 15) << false;
        QTest::newRow("rounds to the edge") << "rect" << true << QPointF(29.4, 15) << true;
        QTest::newRow("rounds past the edge") << "rect" << true << QPointF(29.6, 15) << false;
        QTest::newRow("rect before") << "rect" << true << QPointF(5, 15) << false;
        QTest::newRow("ellipse centre") << "ellipse" << true << QPointF(20, 20) << true;
        QTest::newRow("ellipse corner") << "ellipse" << true << QPointF(11, 11) << false;
        QTest::newRow("mouse off, inside") << "rect" << false << QPointF(15, 15) << false;
        QTest::newRow("no region") << "none" << true << QPointF(15, 15) << false;
    }
    void mouseTest()
    {
        QFETCH(QString, shape);
        QFETCH(bool, maskMouse);
        QFETCH(QPointF, pos);
        QFETCH(bool, inside);
        QGraphicsScene scene;
        auto *item = new ZMaskImageItem;
        scene.addItem(item);
        item->resize(50, 50);
        if (shape == "rect")
            item->setMaskRect(QRect(10, 10, 20, 20));
        else if (shape == "ellipse")
            item->setMaskEllipse(QRect(10, 10, 20, 20));
        item->setMaskMouse(maskMouse);
        QCOMPARE(item->acceptHoverEvents(), maskMouse);
        QList<QEvent::Type> reported;
        connect(item, &ZMaskImageItem::mouseEvent, this, [&reported](QEvent *e) { reported << e->type(); });
        const QList<QEvent::Type> hovers{QEvent::GraphicsSceneHoverEnter, QEvent::GraphicsSceneHoverMove,
                                         QEvent::GraphicsSceneHoverLeave};
        const QList<QEvent::Type> clicks{QEvent::GraphicsSceneMousePress, QEvent::GraphicsSceneMouseRelease,
                                         QEvent::GraphicsSceneMouseDoubleClick};
        for (QEvent::Type type : hovers)
            QCOMPARE(scenetest::sendHoverTo(item, type, pos), inside);
        for (QEvent::Type type : clicks)
            QCOMPARE(scenetest::sendMouseTo(item, type, pos), inside);
        QCOMPARE(reported, inside ? hovers + clicks : QList<QEvent::Type>());
    }

    // Through the scene: a press outside the region goes to the item below.
    void pressesOutsideFallThrough()
    {
        QGraphicsScene scene;
        auto *below = scene.addRect(0, 0, 60, 60);
        below->setFlag(QGraphicsItem::ItemIsSelectable); // takes presses
        auto *item = new ZMaskImageItem;
        scene.addItem(item);
        item->setZValue(1);
        item->resize(60, 60);
        item->setMaskEllipse(QRect(0, 0, 60, 60));
        item->setMaskMouse(true);
        QCOMPARE(item->acceptedMouseButtons(), Qt::LeftButton | Qt::RightButton);
        scenetest::Mouse mouse(scene);
        mouse.press(QPointF(30, 30));
        QCOMPARE(scene.mouseGrabberItem(), item);
        mouse.release(QPointF(30, 30));
        mouse.press(QPointF(2, 2));
        QCOMPARE(scene.mouseGrabberItem(), below);
        mouse.release(QPointF(2, 2));
        item->setMaskMouse(false);
        QCOMPARE(item->acceptedMouseButtons(), Qt::NoButton);
    }

    void randomPoints_data()
    {
        QTest::addColumn<QRegion>("region");
        QTest::addColumn<QSizeF>("itemSize");
        QTest::addColumn<int>("count");
        QTest::addColumn<QRegion>("allowed");
        QTest::newRow("rect at origin") << QRegion(0, 0, 10, 5) << QSizeF(50, 50) << 200 << QRegion(0, 0, 10, 5);
        QTest::newRow("ellipse at origin") << QRegion(QRect(0, 0, 30, 20), QRegion::Ellipse) << QSizeF(5, 5) << 200
                                           << QRegion(QRect(0, 0, 30, 20), QRegion::Ellipse);
        // Samples start at 0: only the part of the region inside the bounding size counts.
        QTest::newRow("offset region") << QRegion(5, 5, 10, 10) << QSizeF(50, 50) << 100 << QRegion(5, 5, 5, 5);
        QTest::newRow("no region: the item") << QRegion() << QSizeF(30.7, 20.2) << 300 << QRegion(0, 0, 31, 20);
        QTest::newRow("none asked") << QRegion(0, 0, 10, 5) << QSizeF(50, 50) << 0 << QRegion();
        QTest::newRow("negative count") << QRegion() << QSizeF(50, 50) << -4 << QRegion();
    }
    void randomPoints()
    {
        QFETCH(QRegion, region);
        QFETCH(QSizeF, itemSize);
        QFETCH(int, count);
        QFETCH(QRegion, allowed);
        ZMaskImageItem item;
        item.resize(itemSize);
        if (region.rectCount() == 1) // a rectangle through maskRect, any other through maskEllipse
            item.setMaskRect(region.boundingRect());
        else if (!region.isEmpty())
            item.setMaskEllipse(region.boundingRect());
        QList<QPoint> points{QPoint(-1, -1)};
        QVERIFY(item.getBatchRandomPoint(points, count, nullptr));
        QCOMPARE(points.size(), qMax(count, 0));
        for (const QPoint &p : points)
            QVERIFY2(allowed.contains(p), qPrintable(QStringLiteral("%1,%2").arg(p.x()).arg(p.y())));
        if (count > 50) // random, not one point over and over
            QVERIFY(QSet<QPoint>(points.begin(), points.end()).size() > 5);
    }

    // Points can be mapped to an ancestor; with no room the call answers
    // false instead of searching for ever.
    void randomPointsMappedOrWithoutRoom()
    {
        QGraphicsScene scene;
        auto *parent = new ZMaskImageItem;
        scene.addItem(parent);
        auto *item = new ZMaskImageItem(parent);
        item->setGeometry(100, 40, 10, 10);
        item->setMaskRect(QRect(0, 0, 4, 3));
        QList<QPoint> points;
        QVERIFY(item->getBatchRandomPoint(points, 30, parent));
        QCOMPARE(points.size(), 30);
        for (const QPoint &p : points)
            QVERIFY(QRect(100, 40, 4, 3).contains(p));

        ZMaskImageItem empty;
        QVERIFY(!empty.getBatchRandomPoint(points, 10, nullptr));
        QVERIFY(points.isEmpty());
        empty.resize(50, 50);
        empty.setMaskRect(QRect(100, 100, 10, 10));
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!empty.getBatchRandomPoint(points, 10, nullptr));
        QVERIFY(timer.elapsed() < 1000);
    }
};

QTEST_MAIN(tst_ZMaskImageItem)
#include "tst_zmaskimageitem.moc"
