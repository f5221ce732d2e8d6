// The state-image item: loading images and colours, the index and state
// rules, mouse and hover, the theme, and each frame type's drawing rule.

#include <functional>
#include <map>

#include <QtTest/QtTest>
#include <QtWidgets/QStyleOptionGraphicsItem>

#include "common/scenetest.h"
#include "zframeitem.h"
#include "ztheme.h"
#include "zutility.h"

using scenetest::solidPixmap;

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

} // namespace

class tst_ZFrameItem : public QObject
{
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral("."))); }
    void cleanup() { ZTheme::setThemeIndex(0); }

    // A part that loads nothing keeps its index with a null pixmap.
    void imageStates_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("loaded"); // per index: 1 image, 0 null pixmap
        QTest::newRow("two") << kPush + "|" + kHover << "11";
        QTest::newRow("missing keeps its index") << kPush + "|" + kMissing + "|" + kHover << "101";
        QTest::newRow("empty parts kept") << "|" + kPush + "||" << "0100";
        QTest::newRow("not found") << "no/such/file.png" << "0";
        QTest::newRow("absolute name") << "/tmp/x.png" << "0";
    }
    void imageStates()
    {
        QFETCH(QString, path);
        QFETCH(QString, loaded);
        ZFrameItem item;
        item.setThemePolicy(ZWidget::NoTheme);
        item.setImagePath(path);
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

    void colorStates_data()
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
    void colorStates()
    {
        QFETCH(QString, first);
        QFETCH(QString, then);
        QFETCH(QString, expected);
        ZFrameItem item;
        item.setThemePolicy(ZWidget::NoTheme);
        item.setFrameColor(first);
        if (!then.isEmpty())
            item.setFrameColor(then);
        QCOMPARE(item.frameCount(), 0); // counts images only
        const QList<QColor> shown = shownColors(item);
        QStringList got, want = expected.split(QLatin1Char('|'), Qt::SkipEmptyParts);
        for (const QColor &c : shown)
            got << QStringLiteral("%1,%2,%3,%4").arg(c.red()).arg(c.green()).arg(c.blue()).arg(c.alpha());
        QCOMPARE(shown.size(), want.size());
        for (int i = 0; i < want.size(); ++i) {
            const QStringList f = want[i].split(QLatin1Char(','));
            QVERIFY2(sameColor(shown[i], QColor(f[0].toInt(), f[1].toInt(), f[2].toInt(), f[3].toInt())),
                     qPrintable(got.join('|')));
        }
    }

    // With an image path the colour list is never loaded; colour types draw nothing.
    void imagePathWins()
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
        QCOMPARE(scenetest::render(scene, QSize(40, 30), Qt::transparent), canvas(QSize(40, 30)));
    }

    // Themed items show tinted images and colours and reload them on a theme
    // change (colours are appended again); others keep what they have.
    void theme()
    {
        FrameItem themed, colored, plain;
        themed.setThemePolicy(ZWidget::HasTheme);
        themed.setImagePath(kPush);
        colored.setThemePolicy(ZWidget::HasTheme);
        colored.setFrameColor(QStringLiteral("40,160,90,200"));
        plain.setThemePolicy(ZWidget::NoTheme);
        plain.setFrameColor(QStringLiteral("40,160,90,200"));
        QCOMPARE(themed.currentPixmap().toImage(), ZTheme::getPixmap(kPush, true, true).toImage());
        QVERIFY(themed.currentPixmap().toImage() != ZTheme::getPixmap(kPush, false, true).toImage());
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

    // An index beyond what the frame type draws from shows the first one.
    void indexRule_data()
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
    void indexRule()
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

    // The shortcuts pick the checked half while checked; checking moves the index by 4.
    void states_data()
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
        // Enabling moves the index too, also through the property documents set.
        QTest::newRow("disabled") << 8 << false << 1 << QByteArray("disabled") << 3 << false;
        QTest::newRow("disabled checked") << 8 << true << 5 << QByteArray("disabled") << 7 << true;
        QTest::newRow("disabled by property") << 8 << false << 1 << QByteArray("disabled property") << 3 << false;
        QTest::newRow("enabled again") << 8 << false << 1 << QByteArray("enabled again") << 0 << false;
        QTest::newRow("enabled again checked") << 8 << true << 5 << QByteArray("enabled again") << 4 << true;
        QTest::newRow("enabled by property") << 8 << false << 1 << QByteArray("enabled property") << 0 << false;
    }
    void states()
    {
        QFETCH(int, images);
        QFETCH(bool, checked);
        QFETCH(int, start);
        QFETCH(QByteArray, op);
        QFETCH(int, expected);
        QFETCH(bool, checkedAfter);
        ZFrameItem item, other;
        fillStates(item, images);
        fillStates(other, 8);
        item.setChecked(checked);
        item.setFrameIndex(start);
        QCOMPARE(item.frameIndex(), start);
        const std::map<QByteArray, std::function<void()>> ops = {
            {"normal", [&] { item.setNormal(); }}, {"hover", [&] { item.setHover(); }},
            {"down", [&] { item.setDown(); }}, {"selected", [&] { item.setSelected(); }},
            {"disable", [&] { item.setDisable(); }}, {"check", [&] { item.setChecked(true); }},
            {"uncheck", [&] { item.setChecked(false); }}, {"disabled", [&] { item.setEnabled(false); }},
            {"disabled property", [&] { item.setProperty("enabled", false); }},
            {"enabled again", [&] { item.setEnabled(false), item.setEnabled(true); }},
            {"enabled property", [&] { item.setEnabled(false), item.setProperty("enabled", true); }}};
        if (op.startsWith("state"))
            item.setFrameState(ZFrameItem::FrameState(op.mid(5).toInt()));
        else
            ops.at(op)();
        QCOMPARE(item.frameIndex(), expected);
        QCOMPARE(item.hasChecked(), checkedAfter);
        QVERIFY(!other.hasChecked()); // per item
    }

    void mouseAndHover_data()
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
    void mouseAndHover()
    {
        QFETCH(bool, frameSwitch);
        QFETCH(bool, checked);
        QFETCH(int, hover);
        QFETCH(int, down);
        QFETCH(int, normal);
        QGraphicsScene scene(0, 0, 200, 100);
        auto *item = new ZFrameItem;
        scene.addItem(item);
        item->setGeometry(10, 10, 50, 20);
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

        scenetest::Mouse mouse(scene);
        mouse.move(QPointF(20, 20));
        QCOMPARE(enter.size(), 1);
        QCOMPARE(item->frameIndex(), hover);
        item->setFrameIndex(start);
        mouse.move(QPointF(25, 22)); // moving inside: hover again
        QCOMPARE(item->frameIndex(), hover);
        QCOMPARE(enter.size(), 1);
        mouse.press(QPointF(25, 22));
        QCOMPARE(order, QStringList{"pressed"});
        QCOMPARE(item->frameIndex(), down);
        mouse.release(QPointF(150, 80)); // outside: still a click
        QCOMPARE(order, QStringList({"pressed", "released", "clicked"}));
        QCOMPARE(item->frameIndex(), normal);

        // In and out again (the scene may have sent a leave on the release already).
        mouse.move(QPointF(20, 20));
        const qsizetype left = leave.size();
        QCOMPARE(enter.size(), left + 1);
        item->setFrameIndex(start);
        mouse.move(QPointF(150, 80));
        QCOMPARE(leave.size(), left + 1);
        QCOMPARE(item->frameIndex(), normal);
        item->setEnabled(false);
        QCOMPARE(item->frameIndex(), frameSwitch ? (checked ? 7 : 3) : normal);
    }

    void clickNotAccepted()
    {
        QGraphicsScene scene(0, 0, 100, 100);
        auto *item = new ZFrameItem;
        scene.addItem(item);
        item->resize(50, 50);
        fillStates(*item, 4);
        item->setAcceptClick(false);
        QSignalSpy pressed(item, &ZFrameItem::pressed), clicked(item, &ZFrameItem::clicked);
        scenetest::Mouse mouse(scene);
        mouse.click(QPointF(10, 10));
        QCOMPARE(pressed.size() + clicked.size(), 0);
        QCOMPARE(item->frameIndex(), 0);
        item->setAcceptClick(true);
        mouse.click(QPointF(10, 10), Qt::RightButton);
        QCOMPARE(pressed.size(), 0);
        mouse.press(QPointF(10, 10));
        QCOMPARE(pressed.size(), 1);
    }

    // Presets set the skin's normal|hover|down images by name; the others change nothing.
    void defaultFrames_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<QString>("path"); // empty: unchanged
        const char *names[] = {"roundframe", "roundframe5", "roundframe2", "roundframe3", "roundframe4"};
        for (int i = 0; i < 5; ++i) {
            const char *key = QMetaEnum::fromType<ZFrameItem::DefaultFrame>().valueToKey(i + 1);
            QTest::newRow(key) << QByteArray(key)
                << QStringLiteral(":/image/theme/%1_normal.png|:/image/theme/%1_hover.png|:/image/theme/roundframe_down.png")
                       .arg(QLatin1String(names[i]));
        }
        QTest::newRow("BadDefalut") << QByteArray("BadDefalut") << QString();
        QTest::newRow("RectWhite") << QByteArray("RectWhite") << QString();
        QTest::newRow("unknown") << QByteArray("42") << QString();
    }
    void defaultFrames()
    {
        QFETCH(QByteArray, frame);
        QFETCH(QString, path);
        ZFrameItem item(kPush, ZFrameItem::StretchHV);
        const QMetaEnum e = QMetaEnum::fromType<ZFrameItem::DefaultFrame>();
        item.setDefaultFrame(ZFrameItem::DefaultFrame(frame == "42" ? 42 : e.keyToValue(frame.constData())));
        QCOMPARE(item.defaultFrame(), ZFrameItem::BadDefalut);
        QCOMPARE(item.frameType(), ZFrameItem::StretchHV);
        QCOMPARE(item.imagePath(), path.isEmpty() ? kPush : path);
        QCOMPARE(item.frameCount(), path.isEmpty() ? 1 : 3);
        for (int i = 0; i < item.frameCount(); ++i) {
            item.setFrameIndex(i);
            QVERIFY(!item.currentPixmap().isNull());
        }
    }

    // Sizes are logical; an index left beyond the images after a reload shows image 0.
    void pixmapSize()
    {
        for (int ratio : {1, 2}) {
            ZFrameItem item;
            item.setFixSizeByPixmapSize(); // no image: nothing to take
            QCOMPARE(item.fixSize(), QSizeF(-1, -1));
            item.appendPixmap(solidPixmap(QSize(12, 8) * ratio, Qt::red, ratio));
            item.appendPixmap(solidPixmap(QSize(30, 20) * ratio, Qt::blue, ratio));
            QCOMPARE(item.pixmapSize(), QSizeF(12, 8));
            item.setFixWidthByPixmapWidth();
            QCOMPARE(item.fixSize(), QSizeF(12, -1));
            item.setFrameIndex(1);
            item.setFixHeightByPixmapHeight();
            QCOMPARE(item.fixSize(), QSizeF(12, 20));
            item.setFixSizeByPixmapSize();
            QCOMPARE(item.fixSize(), QSizeF(30, 20));
        }
        ZFrameItem item;
        item.setThemePolicy(ZWidget::NoTheme);
        item.setImagePath(kHover + QLatin1Char('|') + kPush);
        item.setFrameIndex(1);
        item.setImagePath(kHover); // replaces both
        QCOMPARE(item.frameIndex(), 1);
        QCOMPARE(item.currentPixmap().toImage(), ZTheme::getPixmap(kHover, false, true).toImage());
    }

    void paintByType_data()
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
    void paintByType()
    {
        QFETCH(int, type);
        QFETCH(bool, smooth);
        QFETCH(int, ratio);
        using Draw = std::function<void(QPainter *, const QRectF &, const QPixmap &)>;
        const auto round = [](int radius) {
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
        item->setGeometry(itemRect);
        item->appendPixmap(solidPixmap(QSize(9, 7) * ratio, Qt::green, ratio));
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
        QCOMPARE(scenetest::render(scene, QRectF(QPointF(), size), Qt::transparent, ratio), expected);
        QCOMPARE(expected != canvas(size, ratio), rules.contains(type));
    }

    void gridsDrawnWhole_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QRectF>("geometry");
        QTest::addColumn<qreal>("opacity");
        for (int type : {ZFrameItem::GridFour, ZFrameItem::GridFrameFour, ZFrameItem::GridNine}) {
            const char *name = QMetaEnum::fromType<ZFrameItem::FrameType>().valueToKey(type);
            QTest::addRow("%s wide", name) << type << QRectF(3, 4, 60, 30) << 1.0;
            QTest::addRow("%s image size, half opaque", name) << type << QRectF(7, 2, 9, 7) << 0.5;
            QTest::addRow("%s between pixels", name) << type << QRectF(3.4, 4.6, 60, 30) << 1.0;
            QTest::addRow("%s smaller than the image", name) << type << QRectF(5, 5, 6, 4) << 1.0;
        }
    }
    // A grid frame looks the same whether its pieces are drawn one by one or
    // put together once and drawn whole (at the nearest pixel), also from
    // the second item of a size on and with a translucent image.
    void gridsDrawnWhole()
    {
        QFETCH(int, type);
        QFETCH(QRectF, geometry);
        QFETCH(qreal, opacity);
        const QMap<int, std::function<void(QPainter *, const QRectF &, const QPixmap &)>> rules = {
            {ZFrameItem::GridFour, ZUtility::drawGridFour},
            {ZFrameItem::GridFrameFour, ZUtility::drawGridFrameFour},
            {ZFrameItem::GridNine, ZUtility::drawGridNine},
        };
        QImage translucent = labelledPixmap(QSize(9, 7), 1).toImage().convertToFormat(QImage::Format_ARGB32);
        for (int y = 0; y < translucent.height(); ++y) {
            for (int x = 0; x < translucent.width(); ++x) {
                QColor c = translucent.pixelColor(x, y);
                c.setAlpha(60 + 20 * ((x + y) % 10));
                translucent.setPixelColor(x, y, c);
            }
        }
        const QPixmap pixmap = QPixmap::fromImage(translucent);

        // Two of one size, then a wider one.
        const auto placed = [&geometry](int i) { return geometry.adjusted(0, 40 * i, i == 2 ? 12 : 0, 40 * i); };
        QGraphicsScene scene;
        for (int i = 0; i < 3; ++i) {
            auto *item = new ZFrameItem;
            scene.addItem(item);
            item->setThemePolicy(ZWidget::NoTheme);
            item->appendPixmap(pixmap);
            item->setFrameType(ZFrameItem::FrameType(type));
            item->setGeometry(placed(i));
            item->setOpacity(opacity);
        }
        const QSize size(90, 120);
        QImage expected = canvas(size);
        expected.fill(QColor(30, 90, 200));
        for (int i = 0; i < 3; ++i) {
            QPainter painter(&expected);
            const QRectF at(placed(i).topLeft().toPoint(), placed(i).size());
            painter.setClipRect(at);
            painter.translate(at.topLeft());
            painter.setOpacity(opacity);
            rules[type](&painter, QRectF(QPointF(), at.size()), pixmap);
        }
        QCOMPARE(scenetest::render(scene, QRectF(QPointF(), size), QColor(30, 90, 200)), expected);
    }
};

QTEST_MAIN(tst_ZFrameItem)
#include "tst_zframeitem.moc"
