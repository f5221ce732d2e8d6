#include <QtTest/QtTest>

#include "items/itemtestutil.h"
#include "zmaskimageitem.h"

using namespace itemtest;

class tst_ZMaskImageItem : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void pictureWithoutMaskFillsTheItem();
    void maskImageCutsThePicture();
    void maskImageRegion();
    void regionWithoutMaskImageDrawsNothing();
    void mouseTest_data();
    void mouseTest();
    void mouseButtons();
    void pressesOutsideFallThrough();
    void randomPoints_data();
    void randomPoints();
    void randomPointsMapped();
    void randomPointsWithoutRoom();

private:
    // Writes an image under the application directory and answers its relative name.
    QString saveImage(const QString &name, const QImage &image);

    std::unique_ptr<QTemporaryDir> m_dir;
};

void tst_ZMaskImageItem::initTestCase()
{
    m_dir = std::make_unique<QTemporaryDir>(QCoreApplication::applicationDirPath() + "/maskitem-XXXXXX");
    QVERIFY(m_dir->isValid());
}

QString tst_ZMaskImageItem::saveImage(const QString &name, const QImage &image)
{
    const QString file = m_dir->filePath(name);
    if (!image.save(file))
        return QString();
    return QDir(QCoreApplication::applicationDirPath()).relativeFilePath(file);
}

// Opaque left half, transparent right half.
static QImage halfMask(const QSize &size)
{
    QImage mask(size, QImage::Format_ARGB32);
    mask.fill(Qt::transparent);
    QPainter p(&mask);
    p.fillRect(QRect(0, 0, size.width() / 2, size.height()), Qt::black);
    return mask;
}

void tst_ZMaskImageItem::pictureWithoutMaskFillsTheItem()
{
    QGraphicsScene scene;
    auto *item = new ZMaskImageItem;
    scene.addItem(item);
    item->resize(40, 20);
    const QImage nothing = render(scene, QSize(50, 30));
    QCOMPARE(countOf(nothing, [](QColor c) { return c != Qt::white; }), 0);

    item->setPixmap(solidPixmap(QSize(5, 5), Qt::blue));
    const QImage image = render(scene, QSize(50, 30));
    QCOMPARE(boxOf(image, Qt::blue), QRect(0, 0, 40, 20));
}

void tst_ZMaskImageItem::maskImageCutsThePicture()
{
    const QString mask = saveImage("half.png", halfMask(QSize(20, 20)));
    QImage picture(8, 8, QImage::Format_ARGB32);
    picture.fill(Qt::blue);
    const QString path = saveImage("blue.png", picture);

    QGraphicsScene scene;
    auto *item = new ZMaskImageItem;
    scene.addItem(item);
    item->resize(40, 40);
    item->setImagePath(path);
    item->setMaskImage(mask);
    QCOMPARE(item->imagePath(), path);
    QCOMPARE(item->maskImage(), mask);

    const QImage image = render(scene, QSize(40, 40));
    // The picture takes the mask's alpha and is stretched with it over the item.
    QCOMPARE(image.pixelColor(5, 20), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(15, 39), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(25, 20), QColor(Qt::white));
    QCOMPARE(image.pixelColor(39, 0), QColor(Qt::white));
    const QRect blue = boxOf(image, Qt::blue);
    QVERIFY2(blue.left() == 0 && blue.right() >= 18 && blue.right() <= 20 && blue.height() == 40,
             qPrintable(QStringLiteral("right edge %1").arg(blue.right())));

    // A new picture is cut the same way.
    item->setPixmap(solidPixmap(QSize(3, 3), Qt::red));
    const QImage red = render(scene, QSize(40, 40));
    QCOMPARE(red.pixelColor(5, 20), QColor(Qt::red));
    QCOMPARE(red.pixelColor(25, 20), QColor(Qt::white));
}

void tst_ZMaskImageItem::maskImageRegion()
{
    ZMaskImageItem item;
    item.setMaskImage(saveImage("region.png", halfMask(QSize(20, 10))));
    QCOMPARE(item.maskRegion(), QRegion(0, 0, 10, 10));

    // A mask without an alpha channel is opaque everywhere.
    QImage opaque(12, 6, QImage::Format_RGB32);
    opaque.fill(Qt::gray);
    item.setMaskImage(saveImage("opaque.png", opaque));
    QCOMPARE(item.maskRegion(), QRegion(0, 0, 12, 6));

    item.setMaskRect(QRect(2, 3, 4, 5));
    QCOMPARE(item.maskRegion(), QRegion(2, 3, 4, 5));
    QCOMPARE(item.maskRect(), QRect(2, 3, 4, 5));
    item.setMaskEllipse(QRect(0, 0, 20, 10));
    QCOMPARE(item.maskRegion(), QRegion(QRect(0, 0, 20, 10), QRegion::Ellipse));
    QCOMPARE(item.maskEllipse(), QRect(0, 0, 20, 10));
    QCOMPARE(item.maskRect(), QRect(2, 3, 4, 5));

    item.setMaskImage(QStringLiteral("no/such/mask.png"));
    QVERIFY(item.maskRegion().isEmpty());
    QCOMPARE(item.maskImage(), QStringLiteral("no/such/mask.png"));
}

// maskRect and maskEllipse only shape the mouse test: without a mask image nothing is drawn.
void tst_ZMaskImageItem::regionWithoutMaskImageDrawsNothing()
{
    QGraphicsScene scene;
    auto *item = new ZMaskImageItem;
    scene.addItem(item);
    item->resize(30, 30);
    item->setPixmap(solidPixmap(QSize(5, 5), Qt::blue));
    item->setMaskRect(QRect(0, 0, 30, 30));
    QCOMPARE(countOf(render(scene, QSize(30, 30)), [](QColor c) { return c != Qt::white; }), 0);
}

void tst_ZMaskImageItem::mouseTest_data()
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

void tst_ZMaskImageItem::mouseTest()
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

    QList<QEvent::Type> reported;
    connect(item, &ZMaskImageItem::mouseEvent, this, [&reported](QEvent *e) { reported << e->type(); });

    const QList<QEvent::Type> hovers{QEvent::GraphicsSceneHoverEnter, QEvent::GraphicsSceneHoverMove,
                                     QEvent::GraphicsSceneHoverLeave};
    const QList<QEvent::Type> clicks{QEvent::GraphicsSceneMousePress, QEvent::GraphicsSceneMouseRelease,
                                     QEvent::GraphicsSceneMouseDoubleClick};
    for (QEvent::Type type : hovers)
        QCOMPARE(sendHover(scene, item, type, pos), inside);
    for (QEvent::Type type : clicks)
        QCOMPARE(sendMouseTo(scene, item, type, pos), inside);
    QCOMPARE(reported, inside ? hovers + clicks : QList<QEvent::Type>());
}

void tst_ZMaskImageItem::mouseButtons()
{
    ZMaskImageItem item;
    QCOMPARE(item.acceptedMouseButtons(), Qt::NoButton);
    QVERIFY(!item.acceptHoverEvents());
    item.setMaskMouse(true);
    QCOMPARE(item.acceptedMouseButtons(), Qt::LeftButton | Qt::RightButton);
    QVERIFY(item.acceptHoverEvents());
    item.setMaskMouse(false);
    QCOMPARE(item.acceptedMouseButtons(), Qt::NoButton);
    QVERIFY(!item.acceptHoverEvents());
}

// Through the scene: a press outside the region goes to the item below.
void tst_ZMaskImageItem::pressesOutsideFallThrough()
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
    // The scene adds hover events of its own; count the button events.
    int buttons = 0;
    connect(item, &ZMaskImageItem::mouseEvent, this, [&buttons](QEvent *e) {
        buttons += e->type() == QEvent::GraphicsSceneMousePress || e->type() == QEvent::GraphicsSceneMouseRelease;
    });

    sendMouse(scene, QEvent::GraphicsSceneMousePress, QPointF(30, 30));
    QCOMPARE(scene.mouseGrabberItem(), item);
    sendMouse(scene, QEvent::GraphicsSceneMouseRelease, QPointF(30, 30));
    QCOMPARE(buttons, 2);

    sendMouse(scene, QEvent::GraphicsSceneMousePress, QPointF(2, 2));
    QCOMPARE(scene.mouseGrabberItem(), below);
    sendMouse(scene, QEvent::GraphicsSceneMouseRelease, QPointF(2, 2));
    QCOMPARE(buttons, 2);
}

void tst_ZMaskImageItem::randomPoints_data()
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

void tst_ZMaskImageItem::randomPoints()
{
    QFETCH(QRegion, region);
    QFETCH(QSizeF, itemSize);
    QFETCH(int, count);
    QFETCH(QRegion, allowed);

    ZMaskImageItem item;
    item.resize(itemSize);
    if (!region.isEmpty()) {
        // A rectangle region through maskRect, any other through maskEllipse.
        if (region.rectCount() == 1)
            item.setMaskRect(region.boundingRect());
        else
            item.setMaskEllipse(region.boundingRect());
    }
    QList<QPoint> points{QPoint(-1, -1)};
    QVERIFY(item.getBatchRandomPoint(points, count, nullptr));
    QCOMPARE(points.size(), qMax(count, 0));
    QSet<QPoint> distinct;
    for (const QPoint &p : points) {
        QVERIFY2(allowed.contains(p), qPrintable(QStringLiteral("%1,%2").arg(p.x()).arg(p.y())));
        distinct.insert(p);
    }
    // Random, not one point over and over.
    if (count > 50)
        QVERIFY(distinct.size() > 5);
}

void tst_ZMaskImageItem::randomPointsMapped()
{
    QGraphicsScene scene;
    auto *parent = new ZMaskImageItem;
    scene.addItem(parent);
    auto *item = new ZMaskImageItem(parent);
    item->setPos(100, 40);
    item->resize(10, 10);
    item->setMaskRect(QRect(0, 0, 4, 3));

    QList<QPoint> points;
    QVERIFY(item->getBatchRandomPoint(points, 30, parent));
    QCOMPARE(points.size(), 30);
    for (const QPoint &p : points)
        QVERIFY(QRect(100, 40, 4, 3).contains(p));
}

void tst_ZMaskImageItem::randomPointsWithoutRoom()
{
    ZMaskImageItem item;
    QList<QPoint> points{QPoint(1, 1)};
    // No region and an empty item.
    QVERIFY(!item.getBatchRandomPoint(points, 10, nullptr));
    QVERIFY(points.isEmpty());

    // A region none of whose points lies in the sample space answers false
    // instead of searching for ever.
    item.resize(50, 50);
    item.setMaskRect(QRect(100, 100, 10, 10));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!item.getBatchRandomPoint(points, 10, nullptr));
    QVERIFY(timer.elapsed() < 1000);
}

QTEST_MAIN(tst_ZMaskImageItem)
#include "tst_zmaskimageitem.moc"
