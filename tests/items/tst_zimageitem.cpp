// The picture item: placement by alignment, margins, border, fitting, scale
// and rotation; clicks, the hover glow and theme tinting.

#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsDropShadowEffect>

#include "common/scenetest.h"
#include "zcreator.h"
#include "zimageitem.h"
#include "ztheme.h"

using scenetest::boxOf;
using scenetest::solidPixmap;

namespace {

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

struct Fixture
{
    QGraphicsScene scene;
    ZImageItem *item = new ZImageItem;

    explicit Fixture(const QSizeF &size)
    {
        scene.addItem(item);
        item->resize(size);
    }
    QImage shot(const QSize &size) { return scenetest::render(scene, size); }
    QRect blue(const QSize &size) { return boxOf(shot(size), Qt::blue); }
};

bool blank(const QImage &image)
{
    return scenetest::countOf(image, [](QColor c) { return c != Qt::white; }) == 0;
}

} // namespace

class tst_ZImageItem : public QObject
{
    Q_OBJECT

private slots:
    // Every item class of this folder is known to the loader by its name.
    void registered_data()
    {
        QTest::addColumn<QByteArray>("name");
        for (const char *name : {"ZImageItem", "ZMaskImageItem", "ZIcon", "ZLabel", "ZTextItem", "ZShapeItem", "ZFrameItem",
                                 "ZAnimationItem", "ZLoadingItem", "ZSequentImageItem"})
            QTest::newRow(name) << QByteArray(name);
    }
    void registered()
    {
        QFETCH(QByteArray, name);
        ZWidgetCreatorBase *creator = ZWidgetCreatorBase::find(name);
        QVERIFY(creator);
        std::unique_ptr<ZWidget> widget(creator->create(nullptr));
        QCOMPARE(QByteArray(widget->metaObject()->className()), name);
    }

    // A 10 x 10 image in a 100 x 60 item with margins 10,4,6,8: the margin
    // rectangle spans x 10..93 and y 4..51.
    void alignment_data()
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
    void alignment()
    {
        QFETCH(int, alignment);
        QFETCH(QPoint, topLeft);
        Fixture f(QSizeF(100, 60));
        f.item->setImageMargins(QMargins(10, 4, 6, 8));
        f.item->setImageAlignment(Qt::Alignment::fromInt(alignment));
        f.item->setPixmap(solidPixmap(QSize(10, 10), Qt::red));
        QCOMPARE(boxOf(f.shot(QSize(100, 60)), Qt::red), QRect(topLeft, QSize(10, 10)));
    }

    // A border of 3 pixels: a one-pixel outline three pixels inside the margin
    // rectangle, which the image starts on. It needs both a colour and pixels.
    void border()
    {
        Fixture f(QSizeF(100, 100));
        f.item->setImageAlignment(Qt::AlignTop | Qt::AlignLeft);
        f.item->setPixmap(solidPixmap(QSize(20, 20), Qt::blue));
        f.item->setBorderPixel(3); // no colour: neither drawn nor keeping distance
        QCOMPARE(f.blue(QSize(100, 100)), QRect(0, 0, 20, 20));
        f.item->setBorderColor(Qt::red);
        QImage image = f.shot(QSize(100, 100));
        QCOMPARE(boxOf(image, Qt::red), QRect(3, 3, 94, 94));
        for (const QPoint &white : {QPoint(4, 50), QPoint(95, 50), QPoint(2, 2)})
            QCOMPARE(image.pixelColor(white), QColor(Qt::white));
        QCOMPARE(image.pixelColor(96, 50), QColor(Qt::red));
        QCOMPARE(image.pixelColor(50, 96), QColor(Qt::red));
        QCOMPARE(boxOf(image, Qt::blue), QRect(4, 4, 19, 19)); // from (3, 3), under the outline
        f.item->setImageAlignment(Qt::AlignRight | Qt::AlignBottom);
        QCOMPARE(f.blue(QSize(100, 100)), QRect(77, 77, 19, 19));
        f.item->setImageMargins(QMargins(10, 10, 10, 10));
        QCOMPARE(boxOf(f.shot(QSize(100, 100)), Qt::red), QRect(13, 13, 74, 74));

        f.item->setImageMargins(QMargins());
        f.item->setImageAlignment(Qt::AlignTop | Qt::AlignLeft);
        f.item->setBorderPixel(0); // a colour without pixels draws nothing
        image = f.shot(QSize(100, 100));
        QCOMPARE(boxOf(image, Qt::red), QRect());
        QCOMPARE(boxOf(image, Qt::blue), QRect(0, 0, 20, 20));
        f.item->setBorderPixel(4);
        f.item->setBorderColor(QColor()); // switching the colour off frees the distance
        QCOMPARE(f.blue(QSize(100, 100)), QRect(0, 0, 20, 20));
    }

    void autoAdjust_data()
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
    void autoAdjust()
    {
        QFETCH(QSize, itemSize);
        QFETCH(QMargins, margins);
        QFETCH(int, border);
        QFETCH(QSize, pixels);
        QFETCH(qreal, ratio);
        QFETCH(QSize, drawn);
        Fixture f(itemSize);
        f.item->setImageMargins(margins);
        if (border) {
            f.item->setBorderColor(Qt::red);
            f.item->setBorderPixel(border);
        }
        f.item->setScale(3);
        f.item->setAutoAdjust(true);
        f.item->setPixmap(solidPixmap(pixels, Qt::blue, ratio));
        QCOMPARE(f.blue(itemSize).size(), drawn);
    }

    void scaleAndDensePixmaps_data()
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
    void scaleAndDensePixmaps()
    {
        QFETCH(QSize, pixels);
        QFETCH(qreal, ratio);
        QFETCH(qreal, scale);
        QFETCH(QSize, logical);
        QFETCH(QRect, drawn);
        Fixture f(QSizeF(100, 100));
        f.item->setPixmap(solidPixmap(pixels, Qt::blue, ratio));
        f.item->setScale(scale);
        QCOMPARE(f.item->pixmapSize(), logical);
        QCOMPARE(f.blue(QSize(100, 100)), drawn);
    }

    // The image turns about the centre; the item itself does not (that would
    // move its children). The margins clip.
    void rotationAndClip()
    {
        Fixture f(QSizeF(100, 100));
        f.item->setPixmap(solidPixmap(QSize(60, 10), Qt::blue));
        f.item->setRotation(90);
        const QRect turned = f.blue(QSize(100, 100));
        QVERIFY2(qAbs(turned.left() - 45) <= 1 && qAbs(turned.top() - 20) <= 1 && qAbs(turned.width() - 10) <= 1
                     && qAbs(turned.height() - 60) <= 1,
                 qPrintable(QStringLiteral("%1,%2 %3x%4").arg(turned.x()).arg(turned.y()).arg(turned.width()).arg(turned.height())));
        QVERIFY(f.item->sceneTransform().isIdentity());

        f.item->setRotation(0);
        f.item->resize(50, 50);
        f.item->setImageMargins(QMargins(5, 6, 7, 8));
        f.item->setPixmap(solidPixmap(QSize(100, 100), Qt::blue));
        QCOMPARE(f.blue(QSize(50, 50)), QRect(5, 6, 38, 36));
    }

    // setPixmap forgets the path, so the same path loads again.
    void pathAndPixmap()
    {
        ZImageItem item;
        item.setImagePath(QStringLiteral(":/image/theme/maskimage.png"));
        const QSize logical = item.pixmapSize();
        QVERIFY(!logical.isEmpty());
        item.setPixmap(QPixmap());
        QVERIFY(item.imagePath().isEmpty());
        item.setImagePath(QStringLiteral(":/image/theme/maskimage.png"));
        QCOMPARE(item.pixmapSize(), logical);
    }

    void badInput()
    {
        Fixture f(QSizeF(40, 40));
        for (const QString &path : {QStringLiteral("no/such/file.png"), QString()}) {
            f.item->setImagePath(path);
            QVERIFY(f.item->pixmap().isNull());
        }
        f.item->setPixmap(solidPixmap(QSize(10, 10), Qt::blue));
        f.item->setScale(qQNaN());
        f.item->setRotation(qInf());
        QCOMPARE(f.item->scale(), 1.0);
        QCOMPARE(f.item->rotation(), 0.0);
        // Margins and borders larger than the item leave nothing to draw into.
        f.item->setImageMargins(QMargins(30, 30, 30, 30));
        f.item->setAutoAdjust(true);
        f.item->setBorderColor(Qt::red);
        f.item->setBorderPixel(100);
        QVERIFY(blank(f.shot(QSize(40, 40))));
        f.item->setImageMargins(QMargins());
        f.item->setBorderPixel(-5);
        f.item->resize(0, 0);
        QVERIFY(blank(f.shot(QSize(40, 40))));
    }

    // Press reports pressed(); release reports pressed() again and clicked();
    // released() never comes. Without acceptClick presses fall through.
    void clicks()
    {
        Fixture f(QSizeF(50, 50));
        auto *below = new Catcher(0, 0, 60, 60);
        f.scene.addItem(below);
        f.item->setZValue(1);
        f.item->setPos(10, 10);
        scenetest::Mouse mouse(f.scene);
        mouse.click(QPointF(20, 20));
        QCOMPARE(below->presses, 1);

        f.item->setAcceptClick(true);
        QSignalSpy pressed(f.item, &ZImageItem::pressed), released(f.item, &ZImageItem::released);
        QSignalSpy clicked(f.item, &ZImageItem::clicked);
        QVERIFY(mouse.press(QPointF(15, 17)));
        QCOMPARE(pressed.size(), 1);
        QCOMPARE(pressed.at(0).at(0).toPointF(), QPointF(5, 7));
        QCOMPARE(clicked.size(), 0);
        QStringList order;
        connect(f.item, &ZImageItem::pressed, this, [&order] { order << "pressed"; });
        connect(f.item, &ZImageItem::clicked, this, [&order] { order << "clicked"; });
        mouse.release(QPointF(20, 30));
        QCOMPARE(pressed.at(1).at(0).toPointF(), QPointF(10, 20));
        QCOMPARE(order, (QStringList{"pressed", "clicked"}));
        QCOMPARE(released.size(), 0);
        mouse.click(QPointF(15, 17), Qt::RightButton); // not taken
        QCOMPARE(below->presses, 2);

        f.item->setAcceptClick(false);
        mouse.click(QPointF(20, 20));
        QCOMPARE(below->presses, 3);
        QCOMPARE(pressed.size(), 2);
    }

    // With handHover a hover shows a glow in the colour of the moment, a new
    // one on each enter, around the image.
    void hoverGlow()
    {
        Fixture f(QSizeF(30, 30));
        QSignalSpy enter(f.item, &ZImageItem::enter), leave(f.item, &ZImageItem::leave);
        scenetest::sendHoverTo(f.item, QEvent::GraphicsSceneHoverEnter, QPointF(5, 5));
        QVERIFY(!f.item->graphicsEffect());
        scenetest::sendHoverTo(f.item, QEvent::GraphicsSceneHoverLeave, QPointF(5, 5));

        f.item->setEffectColor(Qt::yellow);
        f.item->setHandHover(true);
        QCOMPARE(f.item->cursor().shape(), Qt::PointingHandCursor);
        scenetest::sendHoverTo(f.item, QEvent::GraphicsSceneHoverEnter, QPointF(5, 5));
        QPointer<QGraphicsEffect> first = f.item->graphicsEffect();
        QVERIFY(first);
        f.item->setEffectColor(Qt::green);
        scenetest::sendHoverTo(f.item, QEvent::GraphicsSceneHoverEnter, QPointF(5, 5));
        QVERIFY(!first);
        auto *glow = qobject_cast<QGraphicsDropShadowEffect *>(f.item->graphicsEffect());
        QVERIFY(glow);
        QCOMPARE(glow->color(), QColor(Qt::green));
        scenetest::sendHoverTo(f.item, QEvent::GraphicsSceneHoverLeave, QPointF(5, 5));
        QVERIFY(!f.item->graphicsEffect());
        QCOMPARE(enter.size(), 3);
        QCOMPARE(leave.size(), 2);

        f.item->setPos(20, 20);
        f.item->setPixmap(solidPixmap(QSize(10, 10), Qt::blue));
        f.item->setEffectColor(Qt::red);
        scenetest::sendHoverTo(f.item, QEvent::GraphicsSceneHoverEnter, QPointF(5, 5));
        const QColor halo = f.shot(QSize(70, 70)).pixelColor(27, 35);
        QVERIFY2(halo.red() > halo.blue() && halo.green() < 250, qPrintable(halo.name()));

        f.item->setHandHover(false);
        QVERIFY(!f.item->hasCursor());
        QVERIFY(!f.item->acceptHoverEvents());
        QVERIFY(!f.item->graphicsEffect());
    }

    // A themed item shows its file tinted and reloads it on a theme change;
    // a pixmap given directly has no path and survives one.
    void themeChangeReloadsTintedImage()
    {
        QTemporaryDir dir(QCoreApplication::applicationDirPath() + "/imageitem-XXXXXX");
        QVERIFY(dir.isValid());
        QImage source(8, 8, QImage::Format_ARGB32);
        source.fill(QColor(120, 160, 90)); // mid tones: pure white and black would not tint
        QVERIFY(source.save(dir.filePath("tone.png")));
        const QString path = QDir(QCoreApplication::applicationDirPath()).relativeFilePath(dir.filePath("tone.png"));
        const QColor before = ZTheme::themeColor();
        ZTheme::setThemeColor(QColor(200, 30, 30));

        ZImageItem item, plain, direct;
        item.setThemePolicy(ZWidget::HasTheme);
        item.setImagePath(path);
        QCOMPARE(item.pixmap().toImage(), ZTheme::getPixmap(path, true, true).toImage());
        const QColor redTint = item.pixmap().toImage().pixelColor(2, 2);
        QVERIFY(redTint.red() > redTint.blue());
        ZTheme::setThemeColor(QColor(30, 30, 200));
        item.changeTheme();
        QCOMPARE(item.pixmap().toImage(), ZTheme::getPixmap(path, true, true).toImage());
        const QColor blueTint = item.pixmap().toImage().pixelColor(2, 2);
        QVERIFY(blueTint.blue() > blueTint.red());

        plain.setThemePolicy(ZWidget::NoTheme);
        plain.setImagePath(path);
        QCOMPARE(plain.pixmap().toImage().pixelColor(2, 2), QColor(120, 160, 90));
        direct.setThemePolicy(ZWidget::HasTheme);
        direct.setPixmap(solidPixmap(QSize(4, 4), Qt::blue));
        direct.changeTheme();
        QCOMPARE(direct.pixmap().toImage().pixelColor(1, 1), QColor(Qt::blue));
        ZTheme::setThemeColor(before);
    }
};

QTEST_MAIN(tst_ZImageItem)
#include "tst_zimageitem.moc"
