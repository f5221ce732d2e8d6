#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsDropShadowEffect>

#include "items/itemtestutil.h"
#include "zcreator.h"
#include "zimageitem.h"
#include "ztheme.h"

using namespace itemtest;

namespace {

const QString kSkinImage = QStringLiteral(":/image/theme/maskimage.png");

// Accepts every left press, to see what the item above lets through.
class Catcher : public QGraphicsRectItem
{
public:
    using QGraphicsRectItem::QGraphicsRectItem;
    int presses = 0;

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override
    {
        ++presses;
        event->accept();
    }
};

} // namespace

class tst_ZImageItem : public QObject
{
    Q_OBJECT

private slots:
    void registered_data();
    void registered();
    void alignment_data();
    void alignment();
    void borderInsetAndOutline();
    void borderNeedsColourAndPixel();
    void autoAdjust_data();
    void autoAdjust();
    void scaleAndDensePixmaps_data();
    void scaleAndDensePixmaps();
    void rotationTurnsAboutTheCentre();
    void clipToMargins();
    void pathAndPixmap();
    void badInput();
    void clicks();
    void clicksOffLetPressesThrough();
    void hoverGlow();
    void themeChangeReloadsTintedImage();
};

// Every item class of this folder is known to the loader by its name.
void tst_ZImageItem::registered_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : {"ZImageItem", "ZMaskImageItem", "ZIcon", "ZLabel", "ZTextItem", "ZShapeItem"})
        QTest::newRow(name) << QByteArray(name);
}

void tst_ZImageItem::registered()
{
    QFETCH(QByteArray, name);
    ZWidgetCreatorBase *creator = ZWidgetCreatorBase::find(name);
    QVERIFY(creator);
    std::unique_ptr<ZWidget> widget(creator->create(nullptr));
    QVERIFY(widget);
    QCOMPARE(QByteArray(widget->metaObject()->className()), name);
}

// A 10 x 10 image in a 100 x 60 item with margins 10,4,6,8: the margin
// rectangle spans x 10..93 and y 4..51.
void tst_ZImageItem::alignment_data()
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<QPoint>("topLeft");

    const int L = Qt::AlignLeft, R = Qt::AlignRight, H = Qt::AlignHCenter;
    const int T = Qt::AlignTop, B = Qt::AlignBottom, V = Qt::AlignVCenter;
    const int left = 10, right = 84, hmid = 47, top = 4, bottom = 42, vmid = 23;

    QTest::newRow("centre") << (H | V) << QPoint(hmid, vmid);
    QTest::newRow("left middle") << (L | V) << QPoint(left, vmid);
    QTest::newRow("right middle") << (R | V) << QPoint(right, vmid);
    QTest::newRow("bottom centre") << (B | H) << QPoint(hmid, bottom);
    QTest::newRow("top centre") << (T | H) << QPoint(hmid, top);
    QTest::newRow("top left") << (T | L) << QPoint(left, top);
    QTest::newRow("top right") << (T | R) << QPoint(right, top);
    QTest::newRow("bottom left") << (B | L) << QPoint(left, bottom);
    QTest::newRow("bottom right") << (B | R) << QPoint(right, bottom);
    QTest::newRow("left alone") << L << QPoint(left, top);
    QTest::newRow("right alone") << R << QPoint(right, top);
    QTest::newRow("bottom alone") << B << QPoint(left, bottom);
    QTest::newRow("hcentre alone") << H << QPoint(hmid, top);
    QTest::newRow("vcentre alone") << V << QPoint(left, vmid);
    QTest::newRow("top alone centres") << T << QPoint(hmid, vmid);
    QTest::newRow("nothing centres") << 0 << QPoint(hmid, vmid);
    // Earlier rows of the rule win over later ones.
    QTest::newRow("left+right+vcentre") << (L | R | V) << QPoint(left, vmid);
    QTest::newRow("left+bottom+hcentre") << (L | B | H) << QPoint(hmid, bottom);
    QTest::newRow("top+bottom+right") << (T | B | R) << QPoint(right, top);
    QTest::newRow("top+bottom") << (T | B) << QPoint(left, bottom);
    QTest::newRow("justify") << int(Qt::AlignJustify) << QPoint(hmid, vmid);
}

void tst_ZImageItem::alignment()
{
    QFETCH(int, alignment);
    QFETCH(QPoint, topLeft);

    QGraphicsScene scene;
    auto *item = new ZImageItem;
    scene.addItem(item);
    item->resize(100, 60);
    item->setImageMargins(QMargins(10, 4, 6, 8));
    item->setImageAlignment(Qt::Alignment::fromInt(alignment));
    item->setPixmap(solidPixmap(QSize(10, 10), Qt::red));

    const QImage image = render(scene, QSize(100, 60));
    QCOMPARE(boxOf(image, Qt::red), QRect(topLeft, QSize(10, 10)));
}

// borderPixel 3 in red: a one-pixel outline three pixels inside the margin
// rectangle, and a top-left image starts on it at (3, 3).
void tst_ZImageItem::borderInsetAndOutline()
{
    QGraphicsScene scene;
    auto *item = new ZImageItem;
    scene.addItem(item);
    item->resize(100, 100);
    item->setBorderColor(Qt::red);
    item->setBorderPixel(3);
    item->setImageAlignment(Qt::AlignTop | Qt::AlignLeft);
    item->setPixmap(solidPixmap(QSize(20, 20), Qt::blue));

    QImage image = render(scene, QSize(100, 100));
    QCOMPARE(boxOf(image, Qt::red), QRect(3, 3, 94, 94));
    QCOMPARE(image.pixelColor(3, 50), QColor(Qt::red));
    QCOMPARE(image.pixelColor(4, 50), QColor(Qt::white));
    QCOMPARE(image.pixelColor(96, 50), QColor(Qt::red));
    QCOMPARE(image.pixelColor(95, 50), QColor(Qt::white));
    QCOMPARE(image.pixelColor(50, 96), QColor(Qt::red));
    QCOMPARE(image.pixelColor(2, 2), QColor(Qt::white));
    // The image starts at (3, 3), under the outline.
    QCOMPARE(image.pixelColor(3, 3), QColor(Qt::red));
    QCOMPARE(boxOf(image, Qt::blue), QRect(4, 4, 19, 19));

    // The right edge keeps the same distance.
    item->setImageAlignment(Qt::AlignRight | Qt::AlignBottom);
    image = render(scene, QSize(100, 100));
    QCOMPARE(boxOf(image, Qt::blue), QRect(77, 77, 19, 19));

    // Inside margins the outline moves with the margin rectangle.
    item->setImageMargins(QMargins(10, 10, 10, 10));
    image = render(scene, QSize(100, 100));
    QCOMPARE(boxOf(image, Qt::red), QRect(13, 13, 74, 74));
}

void tst_ZImageItem::borderNeedsColourAndPixel()
{
    QGraphicsScene scene;
    auto *item = new ZImageItem;
    scene.addItem(item);
    item->resize(50, 50);
    item->setImageAlignment(Qt::AlignTop | Qt::AlignLeft);
    item->setPixmap(solidPixmap(QSize(10, 10), Qt::blue));

    // A border pixel without a colour neither draws nor keeps distance.
    item->setBorderPixel(3);
    QImage image = render(scene, QSize(50, 50));
    QCOMPARE(boxOf(image, Qt::blue), QRect(0, 0, 10, 10));
    QCOMPARE(countOf(image, [](QColor c) { return c != Qt::white && c != Qt::blue; }), 0);

    // A colour without border pixels draws nothing either.
    item->setBorderPixel(0);
    item->setBorderColor(Qt::red);
    image = render(scene, QSize(50, 50));
    QCOMPARE(boxOf(image, Qt::red), QRect());
    QCOMPARE(boxOf(image, Qt::blue), QRect(0, 0, 10, 10));

    // Switching the colour off again frees the distance.
    item->setBorderPixel(4);
    image = render(scene, QSize(50, 50));
    QCOMPARE(boxOf(image, Qt::blue).topLeft(), QPoint(5, 5));
    item->setBorderColor(QColor());
    image = render(scene, QSize(50, 50));
    QCOMPARE(boxOf(image, Qt::blue), QRect(0, 0, 10, 10));
}

void tst_ZImageItem::autoAdjust_data()
{
    QTest::addColumn<QSize>("itemSize");
    QTest::addColumn<QMargins>("margins");
    QTest::addColumn<int>("border");
    QTest::addColumn<QSize>("pixels");
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<QSize>("drawn");

    QTest::newRow("tall image, square item") << QSize(100, 100) << QMargins() << 0 << QSize(10, 20) << 1.0 << QSize(50, 100);
    QTest::newRow("wide image") << QSize(100, 100) << QMargins() << 0 << QSize(40, 10) << 1.0 << QSize(100, 25);
    QTest::newRow("large image shrinks") << QSize(100, 100) << QMargins() << 0 << QSize(200, 100) << 1.0 << QSize(100, 50);
    // 45 x 90, less the first and last rows, which the outline covers.
    QTest::newRow("inside border") << QSize(100, 100) << QMargins() << 5 << QSize(10, 20) << 1.0 << QSize(45, 88);
    QTest::newRow("inside margins") << QSize(100, 100) << QMargins(10, 10, 10, 10) << 0 << QSize(10, 20) << 1.0 << QSize(40, 80);
    QTest::newRow("uneven margins") << QSize(120, 80) << QMargins(0, 20, 40, 0) << 0 << QSize(30, 30) << 1.0 << QSize(60, 60);
    QTest::newRow("dense pixmap by logical size") << QSize(100, 100) << QMargins() << 0 << QSize(20, 40) << 2.0 << QSize(50, 100);
    QTest::newRow("scale is ignored") << QSize(60, 30) << QMargins() << 0 << QSize(10, 10) << 1.0 << QSize(30, 30);
}

void tst_ZImageItem::autoAdjust()
{
    QFETCH(QSize, itemSize);
    QFETCH(QMargins, margins);
    QFETCH(int, border);
    QFETCH(QSize, pixels);
    QFETCH(qreal, ratio);
    QFETCH(QSize, drawn);

    QGraphicsScene scene;
    auto *item = new ZImageItem;
    scene.addItem(item);
    item->resize(itemSize);
    item->setImageMargins(margins);
    if (border) {
        item->setBorderColor(Qt::red);
        item->setBorderPixel(border);
    }
    item->setScale(3);
    item->setAutoAdjust(true);
    item->setPixmap(solidPixmap(pixels, Qt::blue, ratio));

    const QImage image = render(scene, itemSize);
    QCOMPARE(boxOf(image, Qt::blue).size(), drawn);
}

void tst_ZImageItem::scaleAndDensePixmaps_data()
{
    QTest::addColumn<QSize>("pixels");
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<qreal>("scale");
    QTest::addColumn<QSize>("logical");
    QTest::addColumn<QRect>("drawn");

    QTest::newRow("plain") << QSize(10, 10) << 1.0 << 1.0 << QSize(10, 10) << QRect(45, 45, 10, 10);
    QTest::newRow("dense, same size") << QSize(20, 20) << 2.0 << 1.0 << QSize(10, 10) << QRect(45, 45, 10, 10);
    QTest::newRow("scaled up") << QSize(10, 10) << 1.0 << 2.5 << QSize(10, 10) << QRect(38, 38, 25, 25);
    QTest::newRow("dense scaled") << QSize(40, 20) << 2.0 << 3.0 << QSize(20, 10) << QRect(20, 35, 60, 30);
    QTest::newRow("scaled down") << QSize(40, 40) << 1.0 << 0.5 << QSize(40, 40) << QRect(40, 40, 20, 20);
    QTest::newRow("zero scale draws nothing") << QSize(10, 10) << 1.0 << 0.0 << QSize(10, 10) << QRect();
    QTest::newRow("negative scale draws nothing") << QSize(10, 10) << 1.0 << -1.0 << QSize(10, 10) << QRect();
}

void tst_ZImageItem::scaleAndDensePixmaps()
{
    QFETCH(QSize, pixels);
    QFETCH(qreal, ratio);
    QFETCH(qreal, scale);
    QFETCH(QSize, logical);
    QFETCH(QRect, drawn);

    QGraphicsScene scene;
    auto *item = new ZImageItem;
    scene.addItem(item);
    item->resize(100, 100);
    item->setPixmap(solidPixmap(pixels, Qt::blue, ratio));
    item->setScale(scale);
    QCOMPARE(item->pixmapSize(), logical);
    QCOMPARE(item->property("pixmapSize").toSize(), logical);
    QCOMPARE(boxOf(render(scene, QSize(100, 100)), Qt::blue), drawn);
}

void tst_ZImageItem::rotationTurnsAboutTheCentre()
{
    QGraphicsScene scene;
    auto *item = new ZImageItem;
    scene.addItem(item);
    item->resize(100, 100);
    item->setPixmap(solidPixmap(QSize(60, 10), Qt::blue));

    QCOMPARE(boxOf(render(scene, QSize(100, 100)), Qt::blue), QRect(20, 45, 60, 10));
    item->setRotation(90);
    QCOMPARE(item->rotation(), 90.0);
    const QRect turned = boxOf(render(scene, QSize(100, 100)), Qt::blue);
    QVERIFY2(qAbs(turned.left() - 45) <= 1 && qAbs(turned.top() - 20) <= 1 && qAbs(turned.width() - 10) <= 1
                 && qAbs(turned.height() - 60) <= 1,
             qPrintable(QStringLiteral("%1,%2 %3x%4").arg(turned.x()).arg(turned.y()).arg(turned.width()).arg(turned.height())));
    // The item itself is not turned: that would move its children.
    QCOMPARE(item->QGraphicsItem::rotation(), 0.0);
    QVERIFY(item->sceneTransform().isIdentity());
}

// The margins clip: an image larger than the margin rectangle is cut at its edges.
void tst_ZImageItem::clipToMargins()
{
    QGraphicsScene scene;
    auto *item = new ZImageItem;
    scene.addItem(item);
    item->resize(50, 50);
    item->setImageMargins(QMargins(5, 6, 7, 8));
    item->setPixmap(solidPixmap(QSize(100, 100), Qt::blue));
    QCOMPARE(boxOf(render(scene, QSize(50, 50)), Qt::blue), QRect(5, 6, 38, 36));
}

void tst_ZImageItem::pathAndPixmap()
{
    ZImageItem item;
    item.setImagePath(kSkinImage);
    QCOMPARE(item.imagePath(), kSkinImage);
    QVERIFY(!item.pixmap().isNull());
    const QSize logical = item.pixmapSize();
    QVERIFY(!logical.isEmpty());

    // setPixmap forgets the path, so the same path loads again.
    item.setPixmap(QPixmap());
    QVERIFY(item.imagePath().isEmpty());
    QVERIFY(item.pixmap().isNull());
    item.setImagePath(kSkinImage);
    QVERIFY(!item.pixmap().isNull());
    QCOMPARE(item.pixmapSize(), logical);
}

void tst_ZImageItem::badInput()
{
    QGraphicsScene scene;
    auto *item = new ZImageItem;
    scene.addItem(item);
    item->resize(40, 40);

    item->setImagePath(QStringLiteral("no/such/file.png"));
    QVERIFY(item->pixmap().isNull());
    item->setImagePath(QString());
    QVERIFY(item->pixmap().isNull());

    item->setPixmap(solidPixmap(QSize(10, 10), Qt::blue));
    const qreal nan = std::numeric_limits<qreal>::quiet_NaN();
    item->setScale(nan);
    item->setRotation(std::numeric_limits<qreal>::infinity());
    QCOMPARE(item->scale(), 1.0);
    QCOMPARE(item->rotation(), 0.0);

    // Margins and borders larger than the item leave nothing to draw into.
    item->setImageMargins(QMargins(30, 30, 30, 30));
    item->setAutoAdjust(true);
    item->setBorderColor(Qt::red);
    item->setBorderPixel(100);
    QImage image = render(scene, QSize(40, 40));
    QCOMPARE(countOf(image, [](QColor c) { return c != Qt::white; }), 0);

    // A zero-sized item draws nothing and does not fail.
    item->setImageMargins(QMargins());
    item->setBorderPixel(-5);
    item->resize(0, 0);
    image = render(scene, QSize(40, 40));
    QCOMPARE(countOf(image, [](QColor c) { return c != Qt::white; }), 0);
}

// Press reports pressed(); release reports pressed() again and clicked(); released() never comes.
void tst_ZImageItem::clicks()
{
    QGraphicsScene scene;
    auto *item = new ZImageItem;
    scene.addItem(item);
    item->resize(40, 40);
    item->setPos(10, 10);
    item->setAcceptClick(true);
    QCOMPARE(item->acceptedMouseButtons(), Qt::LeftButton);

    QSignalSpy pressed(item, &ZImageItem::pressed);
    QSignalSpy released(item, &ZImageItem::released);
    QSignalSpy clicked(item, &ZImageItem::clicked);

    QVERIFY(sendMouse(scene, QEvent::GraphicsSceneMousePress, QPointF(15, 17)));
    QCOMPARE(pressed.size(), 1);
    QCOMPARE(pressed.at(0).at(0).toPointF(), QPointF(5, 7));
    QCOMPARE(clicked.size(), 0);

    QList<QString> order;
    connect(item, &ZImageItem::pressed, this, [&order] { order << "pressed"; });
    connect(item, &ZImageItem::clicked, this, [&order] { order << "clicked"; });
    sendMouse(scene, QEvent::GraphicsSceneMouseRelease, QPointF(20, 30));
    QCOMPARE(pressed.size(), 2);
    QCOMPARE(pressed.at(1).at(0).toPointF(), QPointF(10, 20));
    QCOMPARE(clicked.size(), 1);
    QCOMPARE(released.size(), 0);
    QCOMPARE(order, (QList<QString>{"pressed", "clicked"}));

    // Right button presses are not taken.
    QVERIFY(!sendMouse(scene, QEvent::GraphicsSceneMousePress, QPointF(15, 17), Qt::RightButton));
    QCOMPARE(pressed.size(), 2);
}

void tst_ZImageItem::clicksOffLetPressesThrough()
{
    QGraphicsScene scene;
    auto *below = new Catcher(0, 0, 50, 50);
    scene.addItem(below);
    auto *item = new ZImageItem;
    scene.addItem(item);
    item->resize(50, 50);
    item->setZValue(1);
    QSignalSpy pressed(item, &ZImageItem::pressed);

    sendMouse(scene, QEvent::GraphicsSceneMousePress, QPointF(20, 20));
    sendMouse(scene, QEvent::GraphicsSceneMouseRelease, QPointF(20, 20));
    QCOMPARE(below->presses, 1);

    item->setAcceptClick(true);
    sendMouse(scene, QEvent::GraphicsSceneMousePress, QPointF(20, 20));
    sendMouse(scene, QEvent::GraphicsSceneMouseRelease, QPointF(20, 20));
    QCOMPARE(below->presses, 1);
    QCOMPARE(pressed.size(), 2);

    item->setAcceptClick(false);
    QCOMPARE(item->acceptedMouseButtons(), Qt::NoButton);
    sendMouse(scene, QEvent::GraphicsSceneMousePress, QPointF(20, 20));
    sendMouse(scene, QEvent::GraphicsSceneMouseRelease, QPointF(20, 20));
    QCOMPARE(below->presses, 2);
    QCOMPARE(pressed.size(), 2);
}

void tst_ZImageItem::hoverGlow()
{
    QGraphicsScene scene;
    auto *item = new ZImageItem;
    scene.addItem(item);
    item->resize(30, 30);
    QSignalSpy enter(item, &ZImageItem::enter);
    QSignalSpy leave(item, &ZImageItem::leave);

    // Without handHover a hover changes nothing.
    sendHover(scene, item, QEvent::GraphicsSceneHoverEnter, QPointF(5, 5));
    QVERIFY(!item->graphicsEffect());
    sendHover(scene, item, QEvent::GraphicsSceneHoverLeave, QPointF(5, 5));

    item->setEffectColor(Qt::yellow);
    item->setHandHover(true);
    QVERIFY(item->acceptHoverEvents());
    QVERIFY(item->hasCursor());
    QCOMPARE(item->cursor().shape(), Qt::PointingHandCursor);

    sendHover(scene, item, QEvent::GraphicsSceneHoverEnter, QPointF(5, 5));
    auto *glow = qobject_cast<QGraphicsDropShadowEffect *>(item->graphicsEffect());
    QVERIFY(glow);
    QCOMPARE(glow->blurRadius(), 12.0);
    QCOMPARE(glow->offset(), QPointF(0, 0));
    QCOMPARE(glow->color(), QColor(Qt::yellow));

    // A second enter brings a new effect, in the colour of the moment.
    QPointer<QGraphicsEffect> first = glow;
    item->setEffectColor(Qt::green);
    sendHover(scene, item, QEvent::GraphicsSceneHoverEnter, QPointF(5, 5));
    QVERIFY(!first);
    glow = qobject_cast<QGraphicsDropShadowEffect *>(item->graphicsEffect());
    QVERIFY(glow);
    QCOMPARE(glow->color(), QColor(Qt::green));

    sendHover(scene, item, QEvent::GraphicsSceneHoverLeave, QPointF(5, 5));
    QVERIFY(!item->graphicsEffect());
    QCOMPARE(enter.size(), 3);
    QCOMPARE(leave.size(), 2);

    // The glow shows around the image, in the effect colour.
    item->setPos(20, 20);
    item->setPixmap(solidPixmap(QSize(10, 10), Qt::blue));
    item->setEffectColor(Qt::red);
    sendHover(scene, item, QEvent::GraphicsSceneHoverEnter, QPointF(5, 5));
    const QImage image = render(scene, QSize(70, 70));
    const QColor halo = image.pixelColor(27, 35);
    QVERIFY2(halo.red() > halo.blue() && halo.green() < 250, qPrintable(halo.name()));

    item->setHandHover(false);
    QVERIFY(!item->hasCursor());
    QVERIFY(!item->acceptHoverEvents());
    QVERIFY(!item->graphicsEffect());
}

void tst_ZImageItem::themeChangeReloadsTintedImage()
{
    // A file of mid tones: pure white and black would not tint.
    QTemporaryDir dir(QCoreApplication::applicationDirPath() + "/imageitem-XXXXXX");
    QVERIFY(dir.isValid());
    QImage source(8, 8, QImage::Format_ARGB32);
    source.fill(QColor(120, 160, 90));
    QVERIFY(source.save(dir.filePath("tone.png")));
    const QString path = QDir(QCoreApplication::applicationDirPath()).relativeFilePath(dir.filePath("tone.png"));

    const QColor before = ZTheme::themeColor();
    ZTheme::setThemeColor(QColor(200, 30, 30));

    ZImageItem item;
    item.setThemePolicy(ZWidget::HasTheme);
    item.setImagePath(path);
    QVERIFY(!item.pixmap().isNull());
    QCOMPARE(item.pixmap().toImage(), ZTheme::getPixmap(path, true, true).toImage());
    const QColor redTint = item.pixmap().toImage().pixelColor(2, 2);
    QVERIFY(redTint != QColor(120, 160, 90));

    ZTheme::setThemeColor(QColor(30, 30, 200));
    item.changeTheme();
    const QColor blueTint = item.pixmap().toImage().pixelColor(2, 2);
    QCOMPARE(item.pixmap().toImage(), ZTheme::getPixmap(path, true, true).toImage());
    QVERIFY(blueTint.blue() > blueTint.red());
    QVERIFY(redTint.red() > redTint.blue());

    // Without a theme the plain image.
    ZImageItem plain;
    plain.setThemePolicy(ZWidget::NoTheme);
    plain.setImagePath(path);
    QCOMPARE(plain.pixmap().toImage().pixelColor(2, 2), QColor(120, 160, 90));

    // A pixmap given directly has no path and survives a theme change.
    ZImageItem direct;
    direct.setThemePolicy(ZWidget::HasTheme);
    direct.setPixmap(solidPixmap(QSize(4, 4), Qt::blue));
    direct.changeTheme();
    QVERIFY(!direct.pixmap().isNull());
    QCOMPARE(direct.pixmap().toImage().pixelColor(1, 1), QColor(Qt::blue));

    ZTheme::setThemeColor(before);
}

QTEST_MAIN(tst_ZImageItem)
#include "tst_zimageitem.moc"
