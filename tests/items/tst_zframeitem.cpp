#include <functional>

#include <QtGui/QPainter>
#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsScene>
#include <QtWidgets/QGraphicsSceneMouseEvent>
#include <QtWidgets/QStyleOptionGraphicsItem>

#include "zcreator.h"
#include "zframeitem.h"
#include "ztheme.h"
#include "zutility.h"

namespace {

const QString kPush = QStringLiteral(":/image/theme/pushbutton_normal.png");
const QString kHover = QStringLiteral(":/image/theme/pushbutton_hover.png");
const QString kMissing = QStringLiteral(":/image/theme/no_such_image.png");

class FrameItem : public ZFrameItem
{
public:
    using ZFrameItem::ZFrameItem;
    using ZFrameItem::doThemeChange;
};

// Every logical pixel its own colour.
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

QPixmap solidPixmap(QSize size, const QColor &color, int ratio = 1)
{
    QPixmap pixmap(size * ratio);
    pixmap.fill(color);
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

void fillStates(ZFrameItem &item, int count)
{
    for (int i = 0; i < count; ++i)
        item.appendPixmap(solidPixmap(QSize(4, 4), QColor(i * 30, 0, 0)));
}

QImage canvas(QSize size, int ratio = 1)
{
    QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    return image;
}

QImage render(QGraphicsScene &scene, QSize size, int ratio = 1)
{
    QImage image = canvas(size, ratio);
    QPainter painter(&image);
    scene.render(&painter, QRectF(QPointF(), size), QRectF(QPointF(), size));
    return image;
}

// Equal as drawn: premultiplied channels within rounding.
bool sameColor(const QColor &a, const QColor &b)
{
    const QRgb pa = qPremultiply(a.rgba()), pb = qPremultiply(b.rgba());
    return qAbs(qRed(pa) - qRed(pb)) <= 2 && qAbs(qGreen(pa) - qGreen(pb)) <= 2
        && qAbs(qBlue(pa) - qBlue(pb)) <= 2 && qAbs(qAlpha(pa) - qAlpha(pb)) <= 1;
}

// The state colours as the item shows them: every index it accepts is one
// colour, drawn as the top line of a Rectangle frame.
QList<QColor> shownColors(ZFrameItem &item)
{
    item.setFrameType(ZFrameItem::Rectangle);
    item.setFramePixel(1);
    item.resize(20, 10);
    QList<QColor> colors;
    QStyleOptionGraphicsItem option;
    for (int i = 0; i < 64; ++i) {
        item.setFrameIndex(i);
        if (item.frameIndex() != i)
            break;
        QImage image = canvas(QSize(20, 10));
        QPainter painter(&image);
        item.paint(&painter, &option);
        if (i == 0 && image.pixelColor(10, 1).alpha() == 0)
            break; // nothing drawn: no colours
        colors << image.pixelColor(10, 1);
    }
    return colors;
}

bool sameColors(const QList<QColor> &shown, const QString &expected)
{
    const QStringList parts = expected.split(QLatin1Char('|'), Qt::SkipEmptyParts);
    if (shown.size() != parts.size())
        return false;
    for (int i = 0; i < parts.size(); ++i) {
        const QStringList f = parts[i].split(QLatin1Char(','));
        if (!sameColor(shown[i], QColor(f[0].toInt(), f[1].toInt(), f[2].toInt(), f[3].toInt())))
            return false;
    }
    return true;
}

void sendMouse(QGraphicsScene &scene, QEvent::Type type, const QPointF &pos, Qt::MouseButton button = Qt::LeftButton)
{
    QGraphicsSceneMouseEvent event(type);
    event.setScenePos(pos);
    event.setScreenPos(pos.toPoint());
    event.setButtonDownScenePos(button, pos);
    event.setButton(type == QEvent::GraphicsSceneMouseMove ? Qt::NoButton : button);
    event.setButtons(type == QEvent::GraphicsSceneMousePress ? Qt::MouseButtons(button) : Qt::NoButton);
    QCoreApplication::sendEvent(&scene, &event);
}

} // namespace

class tst_ZFrameItem : public QObject
{
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral("."))); }
    void cleanup() { ZTheme::setThemeIndex(0); }

    void vocabulary();
    void defaults();
    void imageStates_data();
    void imageStates();
    void colorStates_data();
    void colorStates();
    void imagePathWins();
    void theme();
    void indexRule_data();
    void indexRule();
    void repaintOnlyOnChange();
    void states_data();
    void states();
    void checkedPerInstance();
    void mouseAndHover_data();
    void mouseAndHover();
    void clickNotAccepted();
    void enabled_data();
    void enabled();
    void defaultFrames_data();
    void defaultFrames();
    void pixmapSize_data();
    void pixmapSize();
    void paintByType_data();
    void paintByType();
    void skinSheet();
};

// The names and numbers are the XML vocabulary.
void tst_ZFrameItem::vocabulary()
{
    auto keys = [](const char *name) {
        const QMetaObject &mo = ZFrameItem::staticMetaObject;
        const QMetaEnum e = mo.enumerator(mo.indexOfEnumerator(name));
        QStringList out;
        for (int i = 0; i < e.keyCount(); ++i)
            out << QStringLiteral("%1=%2").arg(QLatin1String(e.key(i))).arg(e.value(i));
        return out.join(QLatin1Char(' '));
    };
    QCOMPARE(keys("FrameType"),
             "OneTopLeft=0 OneTopRight=1 OneBotLeft=2 OneBotRight=3 OneHCenter=4 OneVCenter=5 OneHVCenter=6 "
             "TileH=7 TileV=8 TileHV=9 StretchH=10 StretchV=11 StretchVTwoSize=12 StretchVMiddle=13 StretchHV=14 "
             "StretchHTwoSize=15 StretchHMiddle=16 GridFour=17 GridFrameFour=18 GridNine=19 BitmapEnd=20 "
             "Rectangle=21 RoundRect=22 RoundRect4Pixel=23 RoundRect5Pixel=24 RoundRect6Pixel=25 "
             "RoundRect7Pixel=26 ColorFrameEnd=27");
    QCOMPARE(keys("DefaultFrame"), "BadDefalut=0 RoundWhite=1 RoundTranparent=2 RoundFlatTranslucent=3 "
                                   "RoundRaiseTranslucent=4 RoundSunkenTranslucent=5 RectWhite=6");
    QCOMPARE(keys("FrameState"), "Normal=0 Hover=1 Down=2 Selected=2 Disable=3 CheckNormal=4 CheckHover=5 "
                                 "CheckDown=6 CheckSelected=6 CheckDisable=7 StateMax=8");

    // Set by name, as the loader does.
    ZFrameItem item;
    fillStates(item, 8);
    QVERIFY(item.setProperty("frameType", QStringLiteral("GridNine")));
    QCOMPARE(item.frameType(), ZFrameItem::GridNine);
    QVERIFY(item.setProperty("frameState", QStringLiteral("CheckHover")));
    QCOMPARE(item.frameIndex(), 5);
    QVERIFY(item.hasChecked());
    QVERIFY(!item.setProperty("count", 3));
}

void tst_ZFrameItem::defaults()
{
    ZFrameItem item;
    QCOMPARE(item.frameType(), ZFrameItem::OneTopLeft);
    QCOMPARE(item.frameIndex(), 0);
    QCOMPARE(item.frameCount(), 0);
    QCOMPARE(item.framePixel(), 1);
    QVERIFY(!item.smooth());
    QVERIFY(item.frameSwitch());
    QVERIFY(!item.hasChecked());
    QVERIFY(item.acceptClick());
    QVERIFY(!item.acceptHover());
    QVERIFY(item.flags() & QGraphicsItem::ItemClipsToShape);
    QVERIFY(item.currentPixmap().isNull());

    ZFrameItem loaded(kPush + QLatin1Char('|') + kHover, ZFrameItem::GridNine);
    QVERIFY(loaded.flags() & QGraphicsItem::ItemClipsToShape);
    QCOMPARE(loaded.frameType(), ZFrameItem::GridNine);
    QCOMPARE(loaded.property("count").toInt(), 2);

    ZWidgetCreatorBase *creator = ZWidgetCreatorBase::find("ZFrameItem");
    QVERIFY(creator);
    std::unique_ptr<ZWidget> created(creator->create(nullptr));
    QVERIFY(qobject_cast<ZFrameItem *>(created.get()));
}

void tst_ZFrameItem::imageStates_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("loaded"); // per index: 1 image, 0 null pixmap

    QTest::newRow("two") << kPush + "|" + kHover << "11";
    QTest::newRow("missing keeps its index") << kPush + "|" + kMissing + "|" + kHover << "101";
    QTest::newRow("empty parts kept") << "|" + kPush + "||" << "0100";
    QTest::newRow("not found") << "no/such/file.png" << "0";
    QTest::newRow("absolute name") << "/tmp/x.png" << "0";
}

void tst_ZFrameItem::imageStates()
{
    QFETCH(QString, path);
    QFETCH(QString, loaded);

    ZFrameItem item;
    item.setThemePolicy(ZWidget::NoTheme);
    item.setImagePath(path);
    QCOMPARE(item.imagePath(), path);
    QCOMPARE(item.frameCount(), int(loaded.size()));
    for (int i = 0; i < loaded.size(); ++i) {
        item.setFrameIndex(i);
        const QPixmap shown = item.currentPixmap();
        QCOMPARE(!shown.isNull(), loaded.at(i) == QLatin1Char('1'));
        if (!shown.isNull())
            QCOMPARE(shown.toImage(), ZTheme::getPixmap(path.section('|', i, i), false, true).toImage());
    }
    item.setImagePath(kHover); // replaces every image
    QCOMPARE(item.frameCount(), 1);
}

void tst_ZFrameItem::colorStates_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("then"); // set afterwards
    QTest::addColumn<QString>("expected");

    QTest::newRow("white, translucent grey") << "255,255,255|200,200,200,128" << "" << "255,255,255,255|200,200,200,128";
    QTest::newRow("short parts skipped") << "1,2|10,20,30,40|5" << "" << "10,20,30,40";
    QTest::newRow("empty parts skipped") << "|10,20,30||40,50,60|" << "" << "10,20,30,255|40,50,60,255";
    QTest::newRow("not a number reads 0") << "red,20,x1|7,8,9,half" << "" << "0,20,0,255|7,8,9,0";
    QTest::newRow("spaces, extra fields") << " 10 , 20 ,30,40,50" << "" << "10,20,30,40";
    QTest::newRow("out of range clamped") << "300,-5,128,999" << "" << "255,0,128,255";
    QTest::newRow("garbage") << "#ff0000||" << "" << "";
    // Appended, never replaced; the same string again is no change.
    QTest::newRow("appended") << "255,0,0" << "0,255,0|0,0,255" << "255,0,0,255|0,255,0,255|0,0,255,255";
    QTest::newRow("same again") << "255,0,0" << "255,0,0" << "255,0,0,255";
}

void tst_ZFrameItem::colorStates()
{
    QFETCH(QString, first);
    QFETCH(QString, then);
    QFETCH(QString, expected);

    ZFrameItem item;
    item.setThemePolicy(ZWidget::NoTheme);
    item.setFrameColor(first);
    if (!then.isEmpty())
        item.setFrameColor(then);
    QCOMPARE(item.frameColor(), then.isEmpty() ? first : then);
    QCOMPARE(item.frameCount(), 0); // counts images only
    const QList<QColor> shown = shownColors(item);
    QStringList got;
    for (const QColor &c : shown)
        got << QStringLiteral("%1,%2,%3,%4").arg(c.red()).arg(c.green()).arg(c.blue()).arg(c.alpha());
    QVERIFY2(sameColors(shown, expected), qPrintable(got.join('|')));
}

// With an image path the colour list is never loaded; colour types draw nothing.
void tst_ZFrameItem::imagePathWins()
{
    QGraphicsScene scene;
    auto *item = new ZFrameItem;
    scene.addItem(item);
    item->setFrameType(ZFrameItem::Rectangle);
    item->setImagePath(kPush);
    item->setFrameColor(QStringLiteral("255,0,0|0,255,0"));
    item->resize(30, 20);
    item->setFrameIndex(1);
    QCOMPARE(item->frameIndex(), 0);
    QCOMPARE(render(scene, QSize(40, 30)), canvas(QSize(40, 30)));
}

// Themed items show tinted images and colours and reload them on a theme
// change (colours are appended again); others keep what they have.
void tst_ZFrameItem::theme()
{
    const QImage plainImage = ZTheme::getPixmap(kPush, false, true).toImage();
    FrameItem themed, colored, plain;
    themed.setThemePolicy(ZWidget::HasTheme);
    themed.setImagePath(kPush);
    colored.setThemePolicy(ZWidget::HasTheme);
    colored.setFrameColor(QStringLiteral("40,160,90,200"));
    plain.setThemePolicy(ZWidget::NoTheme);
    plain.setFrameColor(QStringLiteral("40,160,90,200"));
    QCOMPARE(themed.currentPixmap().toImage(), ZTheme::getPixmap(kPush, true, true).toImage());
    QVERIFY(themed.currentPixmap().toImage() != plainImage);
    const QColor tinted = ZTheme::convertToThemeColor(QColor(40, 160, 90, 200));
    QVERIFY(!sameColor(tinted, QColor(40, 160, 90, 200)));
    QVERIFY(sameColor(shownColors(colored).value(0), tinted));

    ZTheme::setThemeIndex(8);
    const QImage retinted = ZTheme::getPixmap(kPush, true, true).toImage();
    QVERIFY(retinted != themed.currentPixmap().toImage());
    themed.changeTheme();
    QCOMPARE(themed.currentPixmap().toImage(), retinted);
    colored.doThemeChange();
    const QList<QColor> shown = shownColors(colored);
    QCOMPARE(shown.size(), 2);
    QVERIFY(sameColor(shown[0], tinted));
    QVERIFY(sameColor(shown[1], ZTheme::convertToThemeColor(QColor(40, 160, 90, 200))));
    plain.doThemeChange();
    QCOMPARE(shownColors(plain).size(), 1);
}

void tst_ZFrameItem::indexRule_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("images");
    QTest::addColumn<int>("colors");
    QTest::addColumn<int>("request");
    QTest::addColumn<int>("expected");

    const int image = ZFrameItem::GridNine, color = ZFrameItem::Rectangle;
    QTest::newRow("in range") << image << 4 << 0 << 3 << 3;
    QTest::newRow("last") << image << 8 << 0 << 7 << 7;
    QTest::newRow("one past the end") << image << 4 << 0 << 4 << 0;
    QTest::newRow("negative") << image << 4 << 0 << -1 << 0;
    QTest::newRow("huge") << image << 4 << 0 << (1 << 30) << 0;
    QTest::newRow("image types count images") << image << 2 << 6 << 5 << 0;
    QTest::newRow("colour types count colours") << color << 2 << 6 << 5 << 5;
    QTest::newRow("too few colours") << color << 6 << 2 << 5 << 0;
    QTest::newRow("marker counts colours") << int(ZFrameItem::BitmapEnd) << 1 << 3 << 2 << 2;
    QTest::newRow("negative type counts images") << -1 << 3 << 0 << 2 << 2;
}

void tst_ZFrameItem::indexRule()
{
    QFETCH(int, type);
    QFETCH(int, images);
    QFETCH(int, colors);
    QFETCH(int, request);
    QFETCH(int, expected);

    ZFrameItem item;
    item.setThemePolicy(ZWidget::NoTheme);
    fillStates(item, images);
    item.setFrameColor(QStringList(colors, QStringLiteral("1,2,3")).join(QLatin1Char('|')));
    item.setFrameType(ZFrameItem::FrameType(type));
    item.setFrameIndex(1);
    QCOMPARE(item.frameIndex(), 1);
    item.setFrameIndex(request);
    QCOMPARE(item.frameIndex(), expected);
}

// Setters repaint only when something changes (framePixel never does).
void tst_ZFrameItem::repaintOnlyOnChange()
{
    QGraphicsScene scene;
    auto *item = new ZFrameItem;
    scene.addItem(item);
    item->resize(20, 20);
    fillStates(*item, 3);
    QSignalSpy changed(&scene, &QGraphicsScene::changed);
    auto repaints = [&](const std::function<void()> &change) {
        QCoreApplication::processEvents();
        changed.clear();
        change();
        QCoreApplication::processEvents();
        return !changed.isEmpty();
    };
    for (int i = 0; i < 2; ++i) { // the second time nothing changes
        QCOMPARE(repaints([&] { item->setFrameIndex(2); }), i == 0);
        QCOMPARE(repaints([&] { item->setFrameIndex(9); }), i == 0); // back to 0
        QCOMPARE(repaints([&] { item->setFrameType(ZFrameItem::GridNine); }), i == 0);
        QCOMPARE(repaints([&] { item->setSmooth(true); }), i == 0);
        QCOMPARE(repaints([&] { item->setImagePath(kPush); }), i == 0);
    }
    QVERIFY(!repaints([&] { item->setFramePixel(4); }));
    QVERIFY(repaints([&] { item->appendPixmap(QPixmap()); }));
}

void tst_ZFrameItem::states_data()
{
    QTest::addColumn<int>("images");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<int>("start");
    QTest::addColumn<QByteArray>("op");
    QTest::addColumn<int>("expected");
    QTest::addColumn<bool>("checkedAfter");

    const std::pair<const char *, int> shortcuts[] = {
        {"normal", 0}, {"hover", 1}, {"down", 2}, {"selected", 2}, {"disable", 3}};
    for (const auto &s : shortcuts) {
        QTest::addRow("%s", s.first) << 8 << false << 1 << QByteArray(s.first) << s.second << false;
        QTest::addRow("%s checked", s.first) << 8 << true << 5 << QByteArray(s.first) << s.second + 4 << true;
        QTest::addRow("%s checked, four images", s.first) << 4 << true << 0 << QByteArray(s.first) << 0 << true;
    }
    QTest::newRow("check hover") << 8 << false << 1 << QByteArray("check") << 5 << true;
    QTest::newRow("check hover, six images") << 6 << false << 1 << QByteArray("check") << 5 << true;
    QTest::newRow("check hover, five images") << 5 << false << 1 << QByteArray("check") << 0 << true;
    QTest::newRow("uncheck down") << 8 << true << 6 << QByteArray("uncheck") << 2 << false;
    QTest::newRow("check again") << 8 << true << 6 << QByteArray("check") << 6 << true;
    QTest::newRow("uncheck again") << 8 << false << 2 << QByteArray("uncheck") << 2 << false;
    QTest::newRow("state Disable, two images") << 2 << false << 1 << QByteArray("state3") << 0 << false;
    QTest::newRow("state CheckHover") << 8 << false << 1 << QByteArray("state5") << 5 << true;
    QTest::newRow("state Hover when checked") << 8 << true << 4 << QByteArray("state1") << 1 << false;
    QTest::newRow("state StateMax") << 8 << false << 1 << QByteArray("state8") << 0 << true;
    QTest::newRow("state -3") << 8 << true << 4 << QByteArray("state-3") << 0 << false;
}

// The shortcuts pick the checked half while checked; checking moves the index by 4.
void tst_ZFrameItem::states()
{
    QFETCH(int, images);
    QFETCH(bool, checked);
    QFETCH(int, start);
    QFETCH(QByteArray, op);
    QFETCH(int, expected);
    QFETCH(bool, checkedAfter);

    ZFrameItem item;
    fillStates(item, images);
    item.setChecked(checked);
    item.setFrameIndex(start);
    QCOMPARE(item.frameIndex(), start);
    if (op == "normal")
        item.setNormal();
    else if (op == "hover")
        item.setHover();
    else if (op == "down")
        item.setDown();
    else if (op == "selected")
        item.setSelected();
    else if (op == "disable")
        item.setDisable();
    else if (op.startsWith("state"))
        item.setFrameState(ZFrameItem::FrameState(op.mid(5).toInt()));
    else
        item.setChecked(op == "check");
    QCOMPARE(item.frameIndex(), expected);
    QCOMPARE(int(item.frameState()), expected);
    QCOMPARE(item.hasChecked(), checkedAfter);
}

// The flag is a dynamic property named after the instance's address.
void tst_ZFrameItem::checkedPerInstance()
{
    ZFrameItem a, b;
    fillStates(a, 8);
    fillStates(b, 8);
    a.setChecked(true);
    QVERIFY(!b.hasChecked());
    const QByteArray nameA = "ZFrameItem" + QByteArray::number(reinterpret_cast<quintptr>(&a));
    const QByteArray nameB = "ZFrameItem" + QByteArray::number(reinterpret_cast<quintptr>(&b));
    QCOMPARE(a.dynamicPropertyNames(), QList<QByteArray>{nameA});
    QVERIFY(b.dynamicPropertyNames().isEmpty());
    b.setProperty(nameB.constData(), true);
    QVERIFY(b.hasChecked());
    b.setDown();
    QCOMPARE(b.frameIndex(), 6);
}

void tst_ZFrameItem::mouseAndHover_data()
{
    QTest::addColumn<bool>("frameSwitch");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<int>("hover");
    QTest::addColumn<int>("down");
    QTest::addColumn<int>("normal");

    QTest::newRow("switching") << true << false << 1 << 2 << 0;
    QTest::newRow("switching, checked") << true << true << 5 << 6 << 4;
    QTest::newRow("not switching") << false << false << 3 << 3 << 3;
    QTest::newRow("not switching, checked") << false << true << 7 << 7 << 7;
}

void tst_ZFrameItem::mouseAndHover()
{
    QFETCH(bool, frameSwitch);
    QFETCH(bool, checked);
    QFETCH(int, hover);
    QFETCH(int, down);
    QFETCH(int, normal);

    QGraphicsScene scene(0, 0, 200, 100);
    auto *item = new ZFrameItem;
    scene.addItem(item);
    item->setPos(10, 10);
    item->resize(50, 20);
    fillStates(*item, 8);
    item->setAcceptHover(true);
    item->setFrameSwitch(frameSwitch);
    item->setFrameIndex(3);
    item->setChecked(checked);
    const int start = item->frameIndex();
    QSignalSpy enter(item, &ZFrameItem::enter), leave(item, &ZFrameItem::leave);
    QStringList order;
    connect(item, &ZFrameItem::pressed, this, [&order] { order << "pressed"; });
    connect(item, &ZFrameItem::released, this, [&order] { order << "released"; });
    connect(item, &ZFrameItem::clicked, this, [&order] { order << "clicked"; });

    sendMouse(scene, QEvent::GraphicsSceneMouseMove, QPointF(20, 20));
    QCOMPARE(enter.size(), 1);
    QCOMPARE(item->frameIndex(), hover);
    item->setFrameIndex(start);
    sendMouse(scene, QEvent::GraphicsSceneMouseMove, QPointF(25, 22)); // moving inside: hover again
    QCOMPARE(item->frameIndex(), hover);
    QCOMPARE(enter.size(), 1);

    sendMouse(scene, QEvent::GraphicsSceneMousePress, QPointF(25, 22));
    QCOMPARE(order, QStringList{"pressed"});
    QCOMPARE(item->frameIndex(), down);
    sendMouse(scene, QEvent::GraphicsSceneMouseRelease, QPointF(150, 80)); // outside: still a click
    QCOMPARE(order, QStringList({"pressed", "released", "clicked"}));
    QCOMPARE(item->frameIndex(), normal);

    // In and out again (the scene may have sent a leave on the release already).
    sendMouse(scene, QEvent::GraphicsSceneMouseMove, QPointF(20, 20));
    const qsizetype left = leave.size();
    QCOMPARE(enter.size(), left + 1);
    item->setFrameIndex(start);
    sendMouse(scene, QEvent::GraphicsSceneMouseMove, QPointF(150, 80));
    QCOMPARE(leave.size(), left + 1);
    QCOMPARE(item->frameIndex(), normal);
}

void tst_ZFrameItem::clickNotAccepted()
{
    QGraphicsScene scene(0, 0, 100, 100);
    auto *item = new ZFrameItem;
    scene.addItem(item);
    item->resize(50, 50);
    fillStates(*item, 4);
    item->setAcceptClick(false);
    QVERIFY(!item->acceptClick());
    QSignalSpy pressed(item, &ZFrameItem::pressed), clicked(item, &ZFrameItem::clicked);
    sendMouse(scene, QEvent::GraphicsSceneMousePress, QPointF(10, 10));
    sendMouse(scene, QEvent::GraphicsSceneMouseRelease, QPointF(10, 10));
    QCOMPARE(pressed.size() + clicked.size(), 0);
    QCOMPARE(item->frameIndex(), 0);

    item->setAcceptClick(true);
    sendMouse(scene, QEvent::GraphicsSceneMousePress, QPointF(10, 10), Qt::RightButton);
    QCOMPARE(pressed.size(), 0);
    sendMouse(scene, QEvent::GraphicsSceneMousePress, QPointF(10, 10));
    QCOMPARE(pressed.size(), 1);
}

void tst_ZFrameItem::enabled_data()
{
    QTest::addColumn<bool>("frameSwitch");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<bool>("byProperty"); // as a document sets "enabled"
    QTest::addColumn<int>("disabled");
    QTest::addColumn<int>("enabled");

    for (bool byProperty : {false, true}) {
        const char *how = byProperty ? "property" : "setter";
        QTest::addRow("%s", how) << true << false << byProperty << 3 << 0;
        QTest::addRow("%s, checked", how) << true << true << byProperty << 7 << 4;
        QTest::addRow("%s, not switching", how) << false << false << byProperty << 1 << 1;
    }
}

void tst_ZFrameItem::enabled()
{
    QFETCH(bool, frameSwitch);
    QFETCH(bool, checked);
    QFETCH(bool, byProperty);
    QFETCH(int, disabled);
    QFETCH(int, enabled);

    ZFrameItem item;
    fillStates(item, 8);
    item.setFrameSwitch(frameSwitch);
    item.setFrameIndex(1);
    item.setChecked(checked);
    for (bool on : {false, true}) {
        if (byProperty)
            QVERIFY(item.setProperty("enabled", on));
        else
            item.setEnabled(on);
        QCOMPARE(item.isEnabled(), on);
        QCOMPARE(item.frameIndex(), on ? enabled : disabled);
    }
}

void tst_ZFrameItem::defaultFrames_data()
{
    QTest::addColumn<int>("frame");
    QTest::addColumn<QString>("path"); // empty: unchanged

    const char *names[] = {"roundframe", "roundframe5", "roundframe2", "roundframe3", "roundframe4"};
    for (int i = 0; i < 5; ++i) {
        QTest::addRow("%s", QMetaEnum::fromType<ZFrameItem::DefaultFrame>().valueToKey(i + 1))
            << i + 1
            << QStringLiteral(":/image/theme/%1_normal.png|:/image/theme/%1_hover.png|:/image/theme/roundframe_down.png")
                   .arg(QLatin1String(names[i]));
    }
    QTest::newRow("BadDefalut") << int(ZFrameItem::BadDefalut) << QString();
    QTest::newRow("RectWhite") << int(ZFrameItem::RectWhite) << QString();
    QTest::newRow("unknown") << 42 << QString();
}

void tst_ZFrameItem::defaultFrames()
{
    QFETCH(int, frame);
    QFETCH(QString, path);

    ZFrameItem item(kPush, ZFrameItem::StretchHV);
    item.setDefaultFrame(ZFrameItem::DefaultFrame(frame));
    QCOMPARE(item.defaultFrame(), ZFrameItem::BadDefalut);
    QCOMPARE(item.frameType(), ZFrameItem::StretchHV);
    QCOMPARE(item.imagePath(), path.isEmpty() ? kPush : path);
    QCOMPARE(item.frameCount(), path.isEmpty() ? 1 : 3);
    for (int i = 0; i < item.frameCount(); ++i) {
        item.setFrameIndex(i);
        QVERIFY(!item.currentPixmap().isNull());
    }
}

void tst_ZFrameItem::pixmapSize_data()
{
    QTest::addColumn<int>("ratio");
    QTest::newRow("@1x") << 1;
    QTest::newRow("@2x") << 2;
}

// Sizes are logical; an index left beyond the images after a reload shows image 0.
void tst_ZFrameItem::pixmapSize()
{
    QFETCH(int, ratio);

    ZFrameItem item;
    item.setFixSizeByPixmapSize(); // no image: nothing to take
    QCOMPARE(item.fixSize(), QSizeF(-1, -1));
    item.appendPixmap(solidPixmap(QSize(12, 8), Qt::red, ratio));
    item.appendPixmap(solidPixmap(QSize(30, 20), Qt::blue, ratio));
    QCOMPARE(item.pixmapSize(), QSizeF(12, 8));
    item.setFixWidthByPixmapWidth();
    QCOMPARE(item.fixSize(), QSizeF(12, -1));
    item.setFrameIndex(1);
    item.setFixHeightByPixmapHeight();
    QCOMPARE(item.fixSize(), QSizeF(12, 20));
    item.setFixSizeByPixmapSize();
    QCOMPARE(item.fixSize(), QSizeF(30, 20));

    item.setThemePolicy(ZWidget::NoTheme);
    item.setImagePath(kHover + QLatin1Char('|') + kPush); // replaces both
    item.setImagePath(kHover);
    QCOMPARE(item.frameIndex(), 1);
    QCOMPARE(item.currentPixmap().toImage(), ZTheme::getPixmap(kHover, false, true).toImage());
}

void tst_ZFrameItem::paintByType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("smooth");
    QTest::addColumn<int>("ratio");

    const QMetaEnum types = QMetaEnum::fromType<ZFrameItem::FrameType>();
    for (int ratio : {1, 2}) {
        for (int i = 0; i < types.keyCount(); ++i)
            QTest::addRow("%s @%dx", types.key(i), ratio) << types.value(i) << false << ratio;
        for (int type : {ZFrameItem::StretchH, ZFrameItem::StretchV, ZFrameItem::StretchHV})
            QTest::addRow("%s smooth @%dx", types.valueToKey(type), ratio) << type << true << ratio;
        QTest::addRow("-1 @%dx", ratio) << -1 << false << ratio;
        QTest::addRow("99 @%dx", ratio) << 99 << false << ratio;
    }
}

// Each type draws by its rule, from the current image or colour, clipped to
// the item; the two markers and unknown types draw nothing.
void tst_ZFrameItem::paintByType()
{
    QFETCH(int, type);
    QFETCH(bool, smooth);
    QFETCH(int, ratio);

    using Draw = std::function<void(QPainter *, const QRectF &, const QPixmap &)>;
    auto round = [](int radius) {
        return Draw([radius](QPainter *p, const QRectF &r, const QPixmap &) {
            ZUtility::drawRoundRect(p, r, QColor(200, 30, 60), 2, radius);
        });
    };
    const QMap<int, Draw> rules = {
        {ZFrameItem::OneTopLeft, ZUtility::drawOneTopLeft}, {ZFrameItem::OneTopRight, ZUtility::drawOneTopRight},
        {ZFrameItem::OneBotLeft, ZUtility::drawOneBotLeft}, {ZFrameItem::OneBotRight, ZUtility::drawOneBotRight},
        {ZFrameItem::OneHCenter, ZUtility::drawOneHCenter}, {ZFrameItem::OneVCenter, ZUtility::drawOneVCenter},
        {ZFrameItem::OneHVCenter, ZUtility::drawOneHVCenter}, {ZFrameItem::TileH, ZUtility::drawTileH},
        {ZFrameItem::TileV, ZUtility::drawTileV}, {ZFrameItem::TileHV, ZUtility::drawTileHV},
        {ZFrameItem::StretchH, [smooth](auto p, auto r, auto m) { ZUtility::drawStretchH(p, r, m, smooth); }},
        {ZFrameItem::StretchV, [smooth](auto p, auto r, auto m) { ZUtility::drawStretchV(p, r, m, smooth); }},
        {ZFrameItem::StretchHV, [smooth](auto p, auto r, auto m) { ZUtility::drawStretchHV(p, r, m, smooth); }},
        {ZFrameItem::StretchHTwoSize, ZUtility::drawStretchHTwoSize},
        {ZFrameItem::StretchVTwoSize, ZUtility::drawStretchVTwoSize},
        {ZFrameItem::StretchHMiddle, ZUtility::drawStretchHMiddle},
        {ZFrameItem::StretchVMiddle, ZUtility::drawStretchVMiddle},
        {ZFrameItem::GridFour, ZUtility::drawGridFour}, {ZFrameItem::GridFrameFour, ZUtility::drawGridFrameFour},
        {ZFrameItem::GridNine, ZUtility::drawGridNine},
        {ZFrameItem::Rectangle, [](auto p, auto r, auto) { ZUtility::drawRectangle(p, r, QColor(200, 30, 60), 2); }},
        {ZFrameItem::RoundRect, round(3)}, {ZFrameItem::RoundRect4Pixel, round(4)},
        {ZFrameItem::RoundRect5Pixel, round(5)}, {ZFrameItem::RoundRect6Pixel, round(6)},
        {ZFrameItem::RoundRect7Pixel, round(7)},
    };

    const QPixmap pixmap = labelledPixmap(QSize(9, 7), ratio);
    const QRectF itemRect(10, 8, 60, 30);
    QGraphicsScene scene;
    auto *item = new ZFrameItem;
    scene.addItem(item);
    item->setThemePolicy(ZWidget::NoTheme);
    item->setPos(itemRect.topLeft());
    item->resize(itemRect.size());
    item->appendPixmap(solidPixmap(QSize(9, 7), Qt::green, ratio));
    item->appendPixmap(pixmap);
    item->setFrameColor(QStringLiteral("0,255,0|200,30,60"));
    item->setFramePixel(2);
    item->setSmooth(smooth);
    item->setFrameType(ZFrameItem::FrameType(type));
    item->setFrameIndex(1);

    const QSize size(90, 50);
    QImage expected = canvas(size, ratio);
    if (rules.contains(type)) {
        QPainter painter(&expected);
        painter.setClipRect(itemRect);
        painter.translate(itemRect.topLeft());
        rules[type](&painter, QRectF(QPointF(), itemRect.size()), pixmap);
    }
    QCOMPARE(render(scene, size, ratio), expected);
    QCOMPARE(expected != canvas(size, ratio), rules.contains(type));
}

// Every frame type drawn from real skin images at a few sizes, at 1x and at
// 2x from the @2x files, written next to the test binary for a look. The 2x
// sheet must show the same as the 1x one, only sharper.
void tst_ZFrameItem::skinSheet()
{
    const QStringList skins = {"pushbutton_normal", "roundframe_normal", "lineedit", "hscrollbar_thumb_normal"};
    const QList<QSize> sizes = {QSize(24, 18), QSize(64, 30), QSize(120, 44)};
    const int label = 120, gap = 8, rowHeight = 52, cellsWidth = 232;
    const QMetaEnum types = QMetaEnum::fromType<ZFrameItem::FrameType>();
    const QSize sheetSize(label + int(skins.size()) * (cellsWidth + gap), 24 + types.keyCount() * rowHeight);

    QList<QRect> imageCells;
    QImage sheets[2];
    for (int ratio : {1, 2}) {
        QGraphicsScene scene;
        for (int row = 0; row < types.keyCount(); ++row) {
            for (int s = 0; s < skins.size(); ++s) {
                QPixmap pixmap(QStringLiteral(":/image/theme/%1%2.png").arg(skins[s], ratio == 2 ? "@2x" : ""));
                QVERIFY(!pixmap.isNull());
                pixmap.setDevicePixelRatio(ratio);
                QPoint at(label + s * (cellsWidth + gap), 24 + row * rowHeight);
                for (int i = 0; i < sizes.size(); ++i) {
                    auto *item = new ZFrameItem;
                    scene.addItem(item);
                    item->setThemePolicy(ZWidget::NoTheme);
                    item->setPos(at);
                    item->resize(sizes[i]);
                    item->appendPixmap(pixmap);
                    item->setFrameColor(QStringLiteral("40,90,200"));
                    item->setFramePixel(i == 2 ? 2 : 1);
                    item->setFrameType(ZFrameItem::FrameType(types.value(row)));
                    if (ratio == 1 && types.value(row) < ZFrameItem::BitmapEnd)
                        imageCells << QRect(at, sizes[i]);
                    at.rx() += sizes[i].width() + gap;
                }
            }
        }
        QImage &sheet = sheets[ratio - 1];
        sheet = QImage(sheetSize * ratio, QImage::Format_ARGB32_Premultiplied);
        sheet.setDevicePixelRatio(ratio);
        QImage checker(16, 16, QImage::Format_RGB32); // shows where the images are transparent
        for (int i = 0; i < 256; ++i)
            checker.setPixelColor(i % 16, i / 16, (i % 16 < 8) == (i / 16 < 8) ? QColor(214, 214, 214) : QColor(236, 236, 236));
        QPainter painter(&sheet);
        painter.fillRect(QRect(QPoint(), sheetSize), QBrush(checker));
        scene.render(&painter, QRectF(QPointF(), sheetSize), QRectF(QPointF(), sheetSize));
        for (int row = 0; row < types.keyCount(); ++row)
            painter.drawText(QRect(4, 24 + row * rowHeight, label, 44), Qt::AlignVCenter, types.key(row));
        for (int s = 0; s < skins.size(); ++s)
            painter.drawText(QRect(label + s * (cellsWidth + gap), 2, cellsWidth, 20), Qt::AlignVCenter, skins[s]);
        painter.end();
        const QString path = QCoreApplication::applicationDirPath() + QStringLiteral("/zframeitem-sheet@%1x.png").arg(ratio);
        QVERIFY2(sheet.save(path), qPrintable(path));
    }

    // Compared per logical pixel (2 x 2 averaged). The @2x files are drawn
    // anew, not scaled, so small differences remain; a wrongly cut or placed
    // piece differs by far more.
    for (const QRect &cell : std::as_const(imageCells)) {
        double sum = 0;
        for (int y = cell.top(); y <= cell.bottom(); ++y) {
            for (int x = cell.left(); x <= cell.right(); ++x) {
                const QRgb q = sheets[0].pixel(x, y);
                const QRgb d[4] = {sheets[1].pixel(2 * x, 2 * y), sheets[1].pixel(2 * x + 1, 2 * y),
                                   sheets[1].pixel(2 * x, 2 * y + 1), sheets[1].pixel(2 * x + 1, 2 * y + 1)};
                for (int shift : {16, 8, 0}) {
                    auto channel = [shift](QRgb p) { return int(p >> shift) & 0xff; };
                    sum += qAbs((channel(d[0]) + channel(d[1]) + channel(d[2]) + channel(d[3])) / 4 - channel(q));
                }
            }
        }
        const double mean = sum / (3 * cell.width() * cell.height());
        QVERIFY2(mean < 6, qPrintable(QStringLiteral("cell at %1,%2 differs by %3").arg(cell.x()).arg(cell.y()).arg(mean)));
    }
}

QTEST_MAIN(tst_ZFrameItem)
#include "tst_zframeitem.moc"
