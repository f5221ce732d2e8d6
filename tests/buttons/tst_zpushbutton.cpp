// The push button: frame images per state word, the content row with icon
// and text in the order first set, the press offset, the icon size rules,
// the size helpers, children in the row, and the button as documents make it.

#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsLinearLayout>
#include <QtWidgets/QGraphicsScene>

#include <cmath>

#include "buttons/buttontestutil.h"
#include "zframeitem.h"
#include "zimageitem.h"
#include "zlabel.h"
#include "zpushbutton.h"
#include "zspacer.h"
#include "zxmlui.h"

using buttontest::Pointer;
using States = ZAbstractButton::ButtonStates;

namespace {

const QString kIcon = QStringLiteral(":/image/theme/titleicon.png");
const QString kWarning = QStringLiteral(":/image/theme/messagebox_warning.png"); // 40 x 40
const QString kMissing = QStringLiteral(":/image/theme/no_such_icon.png");
const QString kDefaultImages = QStringLiteral(
    ":/image/theme/pushbutton_normal.png|:/image/theme/pushbutton_hover.png|"
    ":/image/theme/pushbutton_pressdown.png|:/image/theme/pushbutton_disable.png");

QSize imageSize(const QString &path)
{
    return QImage(path).size();
}

// Where a part of the button ends up, in button coordinates, once laid out.
QRectF placed(ZPushButton *button, QGraphicsWidget *part)
{
    button->buttonContent()->activateLayout();
    return part->mapRectToItem(button, part->rect());
}

qreal textWidth(ZLabel *label, const QString &text)
{
    return std::ceil(QFontMetricsF(label->font()).horizontalAdvance(text));
}

} // namespace

class tst_ZPushButton : public QObject
{
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral("."))); }

    void construction();
    void frameIndexByWord_data();
    void frameIndexByWord();
    void pressShiftsContent();
    void releaseOutside();
    void disabledIdleKeepsFirstImage();
    void contentOrder_data();
    void contentOrder();
    void iconSize_data();
    void iconSize();
    void iconSizeLater();
    void iconAloneByAlignment_data();
    void iconAloneByAlignment();
    void textSettingsNeedText();
    void marginsAndAlignments();
    void orientation();
    void updateLayoutFillsTheButton();
    void sizeToFrameImage();
    void sizeToContent();
    void childrenJoinTheRow();
    void pressOnAnyPartPressesTheButton();
    void deletedParts();
    void badValues();
    void fromXml();
    void garbageFromXml();
    void framePixels();
};

void tst_ZPushButton::construction()
{
    ZPushButton button;
    QCOMPARE(button.buttonType(), ZAbstractButton::ButtonPush);
    QVERIFY(button.flags() & QGraphicsItem::ItemClipsChildrenToShape);

    ZFrameItem *frame = button.buttonFrame();
    QVERIFY(frame);
    QCOMPARE(frame->objectName(), QStringLiteral("PushButtonBk"));
    QCOMPARE(frame->frameType(), ZFrameItem::GridFour);
    QCOMPARE(frame->zValue(), 1.0);
    QCOMPARE(frame->imagePath(), kDefaultImages);
    QCOMPARE(frame->frameCount(), 4);
    QCOMPARE(frame->frameIndex(), 0);
    QCOMPARE(frame->parentItem(), &button);
    QCOMPARE(button.imagePath(), kDefaultImages);

    ZSpacer *row = button.buttonContent();
    QVERIFY(row);
    QCOMPARE(row->parentItem(), &button);
    QCOMPARE(row->layoutType(), ZWidget::HBox);
    QCOMPARE(row->zValue(), 2.0);

    QVERIFY(!button.buttonIcon());
    QVERIFY(!button.buttonText());
    QCOMPARE(button.property("buttonIcon").value<QObject *>(), nullptr);
    QCOMPARE(button.property("buttonFrame").value<QObject *>(), frame);
    QCOMPARE(button.clickOffset(), QPoint(1, 1));
    QCOMPARE(button.iconSize(), -1);
    QCOMPARE(int(button.textAlignment()), 132);
    QCOMPARE(int(button.iconAlignment()), 132);
    QCOMPARE(button.textMargins(), QMargins());
    QCOMPARE(button.iconMargins(), QMargins());
    QCOMPARE(button.orientation(), Qt::Horizontal);
    QCOMPARE(button.text(), QString());
    QCOMPARE(button.fontSize(), -1);
}

void tst_ZPushButton::frameIndexByWord_data()
{
    QTest::addColumn<int>("images");
    QTest::addColumn<int>("word");
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("shifted");

    using B = ZAbstractButton;
    QTest::newRow("normal") << 4 << int(B::StateNormal) << 0 << false;
    QTest::newRow("hover") << 4 << int(B::StateHover) << 1 << false;
    QTest::newRow("pressed") << 4 << int(B::StatePressed) << 2 << true;
    QTest::newRow("disable alone") << 4 << int(B::StateDisable) << 3 << false;
    QTest::newRow("normal wins over disable") << 4 << int(B::StateNormal | B::StateDisable) << 0 << false;
    QTest::newRow("hover wins over disable") << 4 << int(B::StateHover | B::StateDisable) << 1 << false;
    QTest::newRow("checked changes nothing") << 4 << int(B::StatePressed | B::StateChecked) << 2 << true;
    QTest::newRow("two images, pressed") << 2 << int(B::StatePressed) << 0 << true;
    QTest::newRow("two images, hover") << 2 << int(B::StateHover) << 1 << false;
    QTest::newRow("three images, disable") << 3 << int(B::StateDisable) << 0 << false;
}

void tst_ZPushButton::frameIndexByWord()
{
    QFETCH(int, images);
    QFETCH(int, word);
    QFETCH(int, index);
    QFETCH(bool, shifted);

    ZPushButton button;
    button.resize(60, 24);
    button.setImagePath(kDefaultImages.section(QLatin1Char('|'), 0, images - 1));
    QCOMPARE(button.buttonFrame()->frameCount(), images);
    button.setClickOffset(QPoint(3, 2));
    button.updateState(States::fromInt(word));
    QCOMPARE(button.buttonFrame()->frameIndex(), index);
    QCOMPARE(button.buttonContent()->pos(), shifted ? QPointF(3, 2) : QPointF(0, 0));
}

void tst_ZPushButton::pressShiftsContent()
{
    QGraphicsScene scene;
    auto *button = new ZPushButton;
    scene.addItem(button);
    button->setPos(10, 10);
    button->setIconPath(kIcon);
    button->setText(QStringLiteral("Go"));
    button->resize(90, 30);
    button->setClickOffset(QPoint(2, 2));
    const QRectF icon = placed(button, button->buttonIcon());
    const QRectF text = placed(button, button->buttonText());

    Pointer pointer(scene);
    pointer.move(QPointF(40, 20));
    QCOMPARE(button->buttonFrame()->frameIndex(), 1);
    pointer.press(QPointF(40, 20));
    QCOMPARE(button->buttonFrame()->frameIndex(), 2);
    QCOMPARE(placed(button, button->buttonIcon()), icon.translated(2, 2));
    QCOMPARE(placed(button, button->buttonText()), text.translated(2, 2));

    // Only the normal word resets the row: hover keeps the shift.
    button->updateState(ZAbstractButton::StateHover);
    QCOMPARE(button->buttonContent()->pos(), QPointF(2, 2));

    pointer.release(QPointF(40, 20));
    QCOMPARE(placed(button, button->buttonIcon()), icon);
    QCOMPARE(placed(button, button->buttonText()), text);
    pointer.move(QPointF(300, 300));
    QCOMPARE(button->buttonFrame()->frameIndex(), 0);
}

void tst_ZPushButton::releaseOutside()
{
    QGraphicsScene scene(0, 0, 400, 300);
    auto *button = new ZPushButton;
    scene.addItem(button);
    button->resize(80, 26);
    button->setText(QStringLiteral("Away"));
    QSignalSpy clicked(button, &ZAbstractButton::clicked);
    int released = 0;
    connect(button, &ZAbstractButton::released, this, [&](QPointF &) { ++released; });

    Pointer pointer(scene);
    pointer.move(QPointF(10, 10));
    pointer.press(QPointF(10, 10));
    pointer.move(QPointF(200, 150));
    QCOMPARE(button->buttonFrame()->frameIndex(), 2);
    pointer.release(QPointF(200, 150));
    QCOMPARE(released, 1);
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(button->buttonFrame()->frameIndex(), 0);
    QCOMPARE(button->buttonContent()->pos(), QPointF(0, 0));
}

void tst_ZPushButton::disabledIdleKeepsFirstImage()
{
    ZPushButton button;
    button.setText(QStringLiteral("Off"));
    button.setEnabled(false);
    QCOMPARE(button.buttonFrame()->frameIndex(), 0);
    QCOMPARE(button.property("enable").toBool(), false);
    QVERIFY(!button.buttonText()->isEnabled()); // the label greys itself
}

void tst_ZPushButton::contentOrder_data()
{
    QTest::addColumn<bool>("iconFirst");
    QTest::addColumn<bool>("vertical");
    QTest::newRow("icon, text") << true << false;
    QTest::newRow("text, icon") << false << false;
    QTest::newRow("icon over text") << true << true;
    QTest::newRow("text over icon") << false << true;
}

void tst_ZPushButton::contentOrder()
{
    QFETCH(bool, iconFirst);
    QFETCH(bool, vertical);

    ZPushButton button;
    button.resize(120, 90);
    if (vertical)
        button.setOrientation(Qt::Vertical);
    if (iconFirst) {
        button.setIconPath(kIcon);
        button.setText(QStringLiteral("Text"));
    } else {
        button.setText(QStringLiteral("Text"));
        button.setIconPath(kIcon);
    }
    // Setting them again does not move them.
    button.setIconPath(kWarning);
    button.setText(QStringLiteral("Other"));

    const QRectF icon = placed(&button, button.buttonIcon());
    const QRectF text = placed(&button, button.buttonText());
    QVERIFY(!icon.isEmpty());
    QVERIFY(!text.isEmpty());
    QVERIFY(!icon.intersects(text));
    if (vertical)
        QCOMPARE(icon.top() < text.top(), iconFirst);
    else
        QCOMPARE(icon.left() < text.left(), iconFirst);
    QCOMPARE(button.buttonIcon()->parentItem(), button.buttonContent());
    QCOMPARE(button.buttonText()->parentItem(), button.buttonContent());
    QCOMPARE(button.iconPath(), kWarning);
    QCOMPARE(button.text(), QStringLiteral("Other"));
}

void tst_ZPushButton::iconSize_data()
{
    QTest::addColumn<int>("preset"); // set before the icon; -1 leaves the default
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("expected");

    const int width = imageSize(kWarning).width();
    QVERIFY(width > 0);
    QTest::newRow("image width") << -1 << false << kWarning << width;
    QTest::newRow("image width, vertical row") << -1 << true << kWarning << width;
    QTest::newRow("preset") << 24 << false << kWarning << 24;
    QTest::newRow("preset, vertical row") << 24 << true << kWarning << 24;
    QTest::newRow("missing image") << -1 << false << kMissing << 0;
}

void tst_ZPushButton::iconSize()
{
    QFETCH(int, preset);
    QFETCH(bool, vertical);
    QFETCH(QString, path);
    QFETCH(int, expected);

    ZPushButton button;
    if (vertical)
        button.setOrientation(Qt::Vertical);
    if (preset >= 0)
        button.setIconSize(preset);
    button.setIconPath(path);
    QVERIFY(button.buttonIcon());
    QCOMPARE(button.iconSize(), expected);
    ZImageItem *icon = button.buttonIcon();
    // Fixed along the row, free across it.
    QCOMPARE(vertical ? icon->fixHeight() : icon->fixWidth(), qreal(expected));
    QCOMPARE(vertical ? icon->fixWidth() : icon->fixHeight(), qreal(-1));
}

void tst_ZPushButton::iconSizeLater()
{
    ZPushButton button;
    button.resize(100, 40);
    button.setIconPath(kWarning);
    button.setIconSize(18);
    QCOMPARE(button.buttonIcon()->fixWidth(), 18.0);
    QCOMPARE(placed(&button, button.buttonIcon()).width(), 18.0);
    // A new image keeps the size: only a new icon takes the image's width.
    button.setIconPath(kIcon);
    QCOMPARE(button.buttonIcon()->fixWidth(), 18.0);
}

void tst_ZPushButton::iconAloneByAlignment_data()
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<QPointF>("at"); // of the 40 x 40 image in a 100 x 60 icon
    QTest::newRow("centre") << int(Qt::AlignCenter) << QPointF(30, 10);
    QTest::newRow("left") << int(Qt::AlignLeft | Qt::AlignVCenter) << QPointF(0, 10);
    QTest::newRow("bottom right") << int(Qt::AlignRight | Qt::AlignBottom) << QPointF(60, 20);
}

void tst_ZPushButton::iconAloneByAlignment()
{
    // An icon as wide as the button places its image by iconAlignment.
    QFETCH(int, alignment);
    QFETCH(QPointF, at);
    QGraphicsScene scene;
    auto *button = new ZPushButton;
    scene.addItem(button);
    button->setThemePolicy(ZWidget::NoTheme);
    button->setImagePath(QString(":/image/theme/no_such_frame.png"));
    button->resize(100, 60);
    button->setIconSize(100);
    button->setIconAlignment(Qt::Alignment::fromInt(alignment));
    button->setIconPath(kWarning);
    QCOMPARE(placed(button, button->buttonIcon()), QRectF(0, 0, 100, 60));
    const QImage shot = buttontest::render(scene, QRectF(0, 0, 100, 60));
    const QRect drawn = [&] {
        QRect box;
        for (int y = 0; y < shot.height(); ++y) {
            for (int x = 0; x < shot.width(); ++x) {
                if (shot.pixelColor(x, y) != Qt::white)
                    box |= QRect(x, y, 1, 1);
            }
        }
        return box;
    }();
    QVERIFY(QRect(at.toPoint(), QSize(40, 40)).contains(drawn));
    QVERIFY(drawn.width() > 30);
}

void tst_ZPushButton::textSettingsNeedText()
{
    ZPushButton button;
    button.setTextColor(QColor(200, 0, 0));
    button.setFontSize(20);
    button.setTextBold(true);
    button.setFont(QFont(QStringLiteral("Serif"), 30));
    QVERIFY(!button.buttonText());
    QVERIFY(!button.textColor().isValid());
    QCOMPARE(button.fontSize(), -1);
    QVERIFY(!button.textBold());

    button.setText(QStringLiteral("Now"));
    ZLabel *label = button.buttonText();
    QVERIFY(label);
    QVERIFY(!label->textColor().isValid()); // dropped, not remembered
    QVERIFY(!label->bold());
    QVERIFY(label->fontSize() != 20);

    button.setTextColor(QColor(200, 0, 0));
    button.setFontSize(20);
    button.setTextBold(true);
    QCOMPARE(label->textColor(), QColor(200, 0, 0));
    QCOMPARE(button.textColor(), QColor(200, 0, 0));
    QCOMPARE(label->fontSize(), 20);
    QCOMPARE(button.fontSize(), 20);
    QVERIFY(label->bold());
    QVERIFY(button.textBold());
    QFont font(QStringLiteral("Serif"));
    font.setPixelSize(9);
    button.setFont(font);
    QCOMPARE(label->font().pixelSize(), 9);
}

void tst_ZPushButton::marginsAndAlignments()
{
    ZPushButton button;
    button.setTextMargins(QMargins(5, 0, 6, 0));
    button.setIconMargins(QMargins(1, 2, 3, 4));
    button.setTextAlignment(Qt::AlignLeft | Qt::AlignTop);
    button.setIconAlignment(Qt::AlignRight | Qt::AlignBottom);
    button.setText(QStringLiteral("Margins"));
    button.setIconPath(kIcon);
    ZLabel *label = button.buttonText();
    ZImageItem *icon = button.buttonIcon();
    QCOMPARE(label->textMargins(), QMargins(5, 0, 6, 0));
    QCOMPARE(icon->imageMargins(), QMargins(1, 2, 3, 4));
    QCOMPARE(label->textAlignment(), Qt::AlignLeft | Qt::AlignTop);
    QCOMPARE(icon->imageAlignment(), Qt::AlignRight | Qt::AlignBottom);

    // The parts that exist follow later settings.
    button.setTextMargins(QMargins(7, 1, 7, 1));
    button.setIconMargins(QMargins(4, 3, 2, 1));
    button.setTextAlignment(Qt::AlignCenter);
    button.setIconAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    QCOMPARE(label->textMargins(), QMargins(7, 1, 7, 1));
    QCOMPARE(icon->imageMargins(), QMargins(4, 3, 2, 1));
    QCOMPARE(label->textAlignment(), Qt::AlignCenter);
    QCOMPARE(icon->imageAlignment(), Qt::AlignLeft | Qt::AlignVCenter);
    QCOMPARE(button.textMargins(), QMargins(7, 1, 7, 1));
    QCOMPARE(button.iconMargins(), QMargins(4, 3, 2, 1));
}

void tst_ZPushButton::orientation()
{
    ZPushButton button;
    auto *linear = dynamic_cast<QGraphicsLinearLayout *>(button.buttonContent()->layout());
    QVERIFY(linear);
    button.setOrientation(Qt::Vertical);
    QCOMPARE(linear->orientation(), Qt::Vertical);
    QCOMPARE(button.orientation(), Qt::Vertical);
    button.setOrientation(Qt::Orientation(3)); // neither: ignored
    QCOMPARE(button.orientation(), Qt::Vertical);
    QVERIFY(button.setProperty("orientation", QStringLiteral("Horizontal")));
    QCOMPARE(linear->orientation(), Qt::Horizontal);

    // Without a linear row there is nothing to turn.
    button.buttonContent()->setLayoutType(ZWidget::Flow);
    button.setOrientation(Qt::Vertical);
    QCOMPARE(button.orientation(), Qt::Horizontal);
}

void tst_ZPushButton::updateLayoutFillsTheButton()
{
    ZPushButton button;
    button.setPos(30, 40);
    button.resize(77, 33);
    QCOMPARE(button.buttonFrame()->geometry(), QRectF(0, 0, 77, 33));
    QCOMPARE(button.buttonContent()->geometry(), QRectF(0, 0, 77, 33));
    QCOMPARE(button.buttonContent()->fixSize(), QSizeF(77, 33));
    button.resize(50, 20);
    QCOMPARE(button.buttonFrame()->geometry(), QRectF(0, 0, 50, 20));
    QCOMPARE(button.buttonContent()->geometry(), QRectF(0, 0, 50, 20));
}

void tst_ZPushButton::sizeToFrameImage()
{
    const QString image = QStringLiteral(":/image/theme/comboboxbutton_normal.png");
    const QSize expected = imageSize(image);
    QVERIFY(!expected.isEmpty());

    // Outside a linear layout nothing happens.
    ZPushButton loose;
    loose.resize(50, 50);
    loose.setImagePath(image);
    loose.setSizeToFrameImage();
    QCOMPARE(loose.size(), QSizeF(50, 50));
    QCOMPARE(loose.fixSize(), QSizeF(-1, -1));

    ZWidget parent;
    parent.setLayoutType(ZWidget::HBox);
    auto *button = new ZPushButton;
    parent.addItem(button);
    button->setImagePath(image);
    button->setSizeToFrameImage();
    QCOMPARE(button->fixSize(), QSizeF(expected));
    parent.resize(300, 100);
    parent.activateLayout();
    QCOMPARE(button->size(), QSizeF(expected));

    // A frame image that does not load leaves the size alone.
    auto *broken = new ZPushButton;
    parent.addItem(broken);
    broken->setImagePath(kMissing);
    broken->setSizeToFrameImage();
    QCOMPARE(broken->fixSize(), QSizeF(-1, -1));
}

void tst_ZPushButton::sizeToContent()
{
    ZPushButton loose;
    loose.setText(QStringLiteral("Loose"));
    loose.resize(40, 20);
    loose.setSizeToContent();
    QCOMPARE(loose.fixWidth(), qreal(-1));
    QVERIFY(!loose.buttonText()->autoAdjust());

    ZWidget parent;
    parent.setLayoutType(ZWidget::HBox);
    auto *button = new ZPushButton;
    parent.addItem(button);
    button->setIconPath(kIcon);
    button->setText(QStringLiteral("A longer caption"));
    button->setTextMargins(QMargins(3, 0, 4, 0));
    button->setSizeToContent(QMargins(8, 2, 9, 2));
    ZLabel *label = button->buttonText();
    QVERIFY(label->autoAdjust());
    QCOMPARE(button->buttonContent()->margins(), QMargins(8, 2, 9, 2));
    const qreal expected = 8 + imageSize(kIcon).width() + textWidth(label, label->text()) + 3 + 4 + 9;
    QCOMPARE(button->fixWidth(), expected);
    parent.resize(600, 60);
    parent.activateLayout();
    QCOMPARE(button->size().width(), expected);
    // Icon and text still stand inside the button.
    QVERIFY(QRectF(QPointF(), button->size()).contains(placed(button, label)));
    QVERIFY(QRectF(QPointF(), button->size()).contains(placed(button, button->buttonIcon())));
}

void tst_ZPushButton::childrenJoinTheRow()
{
    ZPushButton button;
    button.resize(120, 30);
    button.setText(QStringLiteral("T"));
    auto *extra = new ZImageItem;
    extra->setFixWidth(20);
    button.addItem(extra);
    QCOMPARE(extra->parentItem(), button.buttonContent());
    QGraphicsLayout *row = button.buttonContent()->layout();
    QCOMPARE(row->count(), 2);
    QCOMPARE(row->itemAt(1), extra);
    QVERIFY(placed(&button, extra).left() > placed(&button, button.buttonText()).left());

    auto *first = new ZImageItem;
    button.insertItem(first, 0);
    QCOMPARE(row->itemAt(0), first);

    button.removeItem(extra);
    QCOMPARE(row->count(), 2);
    QVERIFY(!extra->parentItem());
    delete extra;
}

void tst_ZPushButton::pressOnAnyPartPressesTheButton()
{
    QGraphicsScene scene;
    auto *button = new ZPushButton;
    scene.addItem(button);
    button->setIconPath(kIcon);
    button->setText(QStringLiteral("Parts"));
    button->resize(120, 30);
    QSignalSpy clicked(button, &ZAbstractButton::clicked);
    Pointer pointer(scene);
    const QList<QGraphicsWidget *> parts = {button->buttonIcon(), button->buttonText(), button->buttonFrame()};
    for (QGraphicsWidget *part : parts) {
        const QPointF at = part->mapToScene(placed(button, part).size().width() / 2, 10);
        pointer.click(at);
        // Pressing on a part never drags the window either.
        QCOMPARE(ZWidget::resolveDragPolicy(part, at), ZWidget::Nothing);
    }
    QCOMPARE(clicked.count(), parts.size());
}

void tst_ZPushButton::deletedParts()
{
    QGraphicsScene scene;
    auto *button = new ZPushButton;
    scene.addItem(button);
    button->resize(80, 24);
    button->setText(QStringLiteral("One"));
    button->setIconPath(kIcon);

    delete button->buttonText();
    QVERIFY(!button->buttonText());
    QCOMPARE(button->text(), QString());
    button->setTextColor(Qt::red);
    button->setText(QStringLiteral("Two")); // a new label
    QVERIFY(button->buttonText());
    QCOMPARE(button->buttonText()->text(), QStringLiteral("Two"));

    delete button->buttonIcon();
    button->setIconMargins(QMargins(1, 1, 1, 1));
    button->setIconSize(10);
    QVERIFY(!button->buttonIcon());

    delete button->buttonFrame();
    delete button->buttonContent();
    button->setImagePath(kDefaultImages);
    button->setText(QStringLiteral("Three"));
    button->setIconPath(kIcon);
    button->resize(90, 30);
    button->setOrientation(Qt::Vertical);
    QCOMPARE(button->imagePath(), QString());
    QCOMPARE(button->orientation(), Qt::Horizontal);
    Pointer pointer(scene);
    pointer.click(QPointF(10, 10));
}

void tst_ZPushButton::badValues()
{
    ZPushButton button;
    button.setText(QString()); // no label for nothing
    button.setIconPath(QString());
    QVERIFY(!button.buttonText());
    QVERIFY(!button.buttonIcon());

    button.setIconSize(std::numeric_limits<int>::max());
    button.setIconPath(kIcon);
    QVERIFY(button.buttonIcon()->fixWidth() <= QWIDGETSIZE_MAX);
    button.setIconSize(-7);
    QCOMPARE(button.buttonIcon()->fixWidth(), qreal(-1)); // released
    button.setFontSize(-3);
    button.setText(QStringLiteral("x"));
    button.setFontSize(0);
    QVERIFY(button.fontSize() != 0);
    button.resize(-5, -5);
    button.resize(1e9, 1e9);
    button.resize(qQNaN(), 10);
    button.setClickOffset(QPoint(-1000000, 1000000));
    button.updateState(ZAbstractButton::StatePressed);
    button.updateState(States::fromInt(0));
    button.updateState(States::fromInt(-1));
}

void tst_ZPushButton::fromXml()
{
    const QByteArray document = R"(<uitree>
  <ZSpacer objectName="bar" layout="HBox">
    <ZPushButton objectName="iconFirst" iconPath=":/image/theme/titleicon.png" text="Save" textColor="10,20,30"
                 fontSize="15" bold="true" clickOffset="3,4" iconMargins="1,2,3,4" textMargins="5,6,7,8"
                 textAlignment="AlignLeft|AlignVCenter" iconAlignment="AlignRight|AlignVCenter"
                 imagePath=":/image/theme/roundframe_normal.png|:/image/theme/roundframe_hover.png"
                 buttonFrame.frameType="GridNine" fixHeight="30">
      <ZImageItem objectName="badge" fixWidth="12"/>
      <x:invoke function="setSizeToContent"/>
    </ZPushButton>
    <ZPushButton objectName="textFirst" text="Open" iconPath=":/image/theme/titleicon.png" iconSize="14"
                 orientation="Vertical" enable="false"/>
  </ZSpacer>
</uitree>)";
    ZWidget root;
    QVERIFY(ZXmlUI::widgetFromMemory(document, &root));
    auto *first = qobject_cast<ZPushButton *>(root.findObject(QStringLiteral("iconFirst")));
    auto *second = qobject_cast<ZPushButton *>(root.findObject(QStringLiteral("textFirst")));
    QVERIFY(first);
    QVERIFY(second);

    QCOMPARE(first->text(), QStringLiteral("Save"));
    QCOMPARE(first->textColor(), QColor(10, 20, 30));
    QCOMPARE(first->fontSize(), 15);
    QVERIFY(first->textBold());
    QCOMPARE(first->clickOffset(), QPoint(3, 4));
    QCOMPARE(first->buttonIcon()->imageMargins(), QMargins(1, 2, 3, 4));
    QCOMPARE(first->buttonText()->textMargins(), QMargins(5, 6, 7, 8));
    QCOMPARE(first->buttonText()->textAlignment(), Qt::AlignLeft | Qt::AlignVCenter);
    QCOMPARE(first->buttonIcon()->imageAlignment(), Qt::AlignRight | Qt::AlignVCenter);
    QCOMPARE(first->buttonFrame()->frameCount(), 2);
    QCOMPARE(first->buttonFrame()->frameType(), ZFrameItem::GridNine);
    QVERIFY(first->buttonText()->autoAdjust()); // the invoke ran
    QVERIFY(first->fixWidth() > 0);

    // Document order decides the order in the row; the child joins it last.
    QGraphicsLayout *row = first->buttonContent()->layout();
    QCOMPARE(row->count(), 3);
    QCOMPARE(row->itemAt(0), first->buttonIcon());
    QCOMPARE(row->itemAt(1), first->buttonText());
    QCOMPARE(row->itemAt(2)->graphicsItem()->toGraphicsObject()->objectName(), QStringLiteral("badge"));

    QGraphicsLayout *row2 = second->buttonContent()->layout();
    QCOMPARE(row2->itemAt(0), second->buttonText());
    QCOMPARE(row2->itemAt(1), second->buttonIcon());
    // The orientation came after the icon: the icon was fixed along a horizontal row.
    QCOMPARE(second->orientation(), Qt::Vertical);
    QCOMPARE(second->iconSize(), 14);
    QVERIFY(!second->enabled());
    QVERIFY(!second->isEnabled());
}

void tst_ZPushButton::garbageFromXml()
{
    // Values that do not read keep the button usable: fallbacks, no crash.
    const QByteArray document = R"(<uitree>
  <ZPushButton objectName="odd" text="Odd" orientation="17" clickOffset="x,y" iconSize="-99999999999"
               iconMargins="a,b" textAlignment="Nonsense" fontSize="NaN" imagePath="" iconPath=""
               buttonText.text="Renamed" buttonIcon.imagePath="x.png" buttonFrame.index="99"/>
  <ZPushButton objectName="turned" orientation="Diagonal" check="maybe"/>
</uitree>)";
    ZWidget root;
    QVERIFY(ZXmlUI::widgetFromMemory(document, &root));
    auto *odd = qobject_cast<ZPushButton *>(root.findObject(QStringLiteral("odd")));
    auto *turned = qobject_cast<ZPushButton *>(root.findObject(QStringLiteral("turned")));
    QVERIFY(odd);
    QVERIFY(turned);
    QCOMPARE(odd->orientation(), Qt::Horizontal);
    QCOMPARE(turned->orientation(), Qt::Horizontal);
    QCOMPARE(odd->text(), QStringLiteral("Renamed"));
    QVERIFY(!odd->buttonIcon());
    QCOMPARE(odd->buttonFrame()->frameCount(), 4); // an empty path keeps the images
    QCOMPARE(odd->buttonFrame()->frameIndex(), 0);
    odd->resize(80, 30);
    odd->updateState(ZAbstractButton::StatePressed);
    odd->updateState(ZAbstractButton::StateNormal);
}

void tst_ZPushButton::framePixels()
{
    // Each word shows its own skin image: the centre of the button takes the
    // centre colour of that image.
    QGraphicsScene scene;
    auto *button = new ZPushButton;
    scene.addItem(button);
    button->setThemePolicy(ZWidget::NoTheme);
    button->resize(60, 30);
    const QStringList images = kDefaultImages.split(QLatin1Char('|'));
    const ZAbstractButton::ButtonState words[] = {ZAbstractButton::StateNormal, ZAbstractButton::StateHover,
                                                  ZAbstractButton::StatePressed, ZAbstractButton::StateDisable};
    QSet<QRgb> seen;
    for (int i = 0; i < 4; ++i) {
        button->updateState(words[i]);
        const QImage shot = buttontest::render(scene, QRectF(0, 0, 60, 30));
        QImage skin = buttontest::skinImage(images[i]);
        QImage expected(1, 1, QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::white);
        QPainter(&expected).drawImage(0, 0, skin, skin.width() / 2, skin.height() / 2, 1, 1);
        QCOMPARE(shot.pixelColor(30, 15), expected.pixelColor(0, 0));
        seen.insert(shot.pixel(30, 15));
    }
    QCOMPARE(seen.size(), 4); // four different looks
}

QTEST_MAIN(tst_ZPushButton)
#include "tst_zpushbutton.moc"
