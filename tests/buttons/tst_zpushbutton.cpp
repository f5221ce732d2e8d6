// The push button: frame images per state word, the content row with icon
// and text in the order first set, the press offset, the icon size rules,
// the size helpers, children in the row, and the button as documents make it.

#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsLinearLayout>

#include <cmath>

#include "common/scenetest.h"
#include "zpushbutton.h"
#include "zxmlui.h"

using scenetest::Mouse;
using States = ZAbstractButton::ButtonStates;

namespace {

const QString kIcon = QStringLiteral(":/image/theme/titleicon.png");
const QString kWarning = QStringLiteral(":/image/theme/messagebox_warning.png"); // 40 x 40
const QString kMissing = QStringLiteral(":/image/theme/no_such_icon.png");
const QString kDefaultImages = QStringLiteral(
    ":/image/theme/pushbutton_normal.png|:/image/theme/pushbutton_hover.png|"
    ":/image/theme/pushbutton_pressdown.png|:/image/theme/pushbutton_disable.png");

// Where a part of the button ends up, in button coordinates, once laid out.
QRectF placed(ZPushButton *button, QGraphicsWidget *part)
{
    button->buttonContent()->activateLayout();
    return part->mapRectToItem(button, part->rect());
}

ZPushButton *addButton(QGraphicsScene &scene, const QSizeF &size, const QString &text = QString(),
                       const QString &icon = QString())
{
    auto *button = new ZPushButton;
    scene.addItem(button);
    button->setIconPath(icon);
    button->setText(text);
    button->resize(size);
    return button;
}

} // namespace

class tst_ZPushButton : public QObject
{
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral("."))); }

    // Missing images fall back to image 0; only the pressed word shifts the row.
    void frameIndexByWord_data()
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
    void frameIndexByWord()
    {
        QFETCH(int, images);
        QFETCH(int, word);
        QFETCH(int, index);
        QFETCH(bool, shifted);
        ZPushButton button;
        button.resize(60, 24);
        button.setImagePath(kDefaultImages.section(QLatin1Char('|'), 0, images - 1));
        button.setClickOffset(QPoint(3, 2));
        button.updateState(States::fromInt(word));
        QCOMPARE(button.buttonFrame()->frameIndex(), index);
        QCOMPARE(button.buttonContent()->pos(), shifted ? QPointF(3, 2) : QPointF(0, 0));
    }

    void pressShiftsContent()
    {
        QGraphicsScene scene;
        ZPushButton *button = addButton(scene, QSizeF(90, 30), QStringLiteral("Go"), kIcon);
        button->setPos(10, 10);
        button->setClickOffset(QPoint(2, 2));
        QVERIFY(button->flags() & QGraphicsItem::ItemClipsChildrenToShape); // the shifted row stays inside
        const QRectF icon = placed(button, button->buttonIcon());
        const QRectF text = placed(button, button->buttonText());
        Mouse mouse(scene);
        mouse.move(QPointF(40, 20));
        QCOMPARE(button->buttonFrame()->frameIndex(), 1);
        mouse.press(QPointF(40, 20));
        QCOMPARE(button->buttonFrame()->frameIndex(), 2);
        QCOMPARE(placed(button, button->buttonIcon()), icon.translated(2, 2));
        QCOMPARE(placed(button, button->buttonText()), text.translated(2, 2));
        // Only the normal word resets the row: hover keeps the shift.
        button->updateState(ZAbstractButton::StateHover);
        QCOMPARE(button->buttonContent()->pos(), QPointF(2, 2));
        mouse.release(QPointF(40, 20));
        QCOMPARE(placed(button, button->buttonIcon()), icon);
        QCOMPARE(placed(button, button->buttonText()), text);
        mouse.move(QPointF(300, 300));
        QCOMPARE(button->buttonFrame()->frameIndex(), 0);
    }

    // Icon and text stand in the order first set; setting them again does not move them.
    void contentOrder_data()
    {
        QTest::addColumn<bool>("iconFirst");
        QTest::addColumn<bool>("vertical");
        QTest::newRow("icon, text") << true << false;
        QTest::newRow("text, icon") << false << false;
        QTest::newRow("icon over text") << true << true;
        QTest::newRow("text over icon") << false << true;
    }
    void contentOrder()
    {
        QFETCH(bool, iconFirst);
        QFETCH(bool, vertical);
        ZPushButton button;
        button.resize(120, 90);
        if (vertical)
            button.setOrientation(Qt::Vertical);
        for (int i = 0; i < 2; ++i) {
            if (iconFirst == (i == 0))
                button.setIconPath(kIcon);
            else
                button.setText(QStringLiteral("Text"));
        }
        button.setIconPath(kWarning);
        button.setText(QStringLiteral("Other"));
        const QRectF icon = placed(&button, button.buttonIcon());
        const QRectF text = placed(&button, button.buttonText());
        QVERIFY(!icon.isEmpty() && !text.isEmpty());
        QVERIFY(!icon.intersects(text));
        QCOMPARE(vertical ? icon.top() < text.top() : icon.left() < text.left(), iconFirst);
        QCOMPARE(button.iconPath(), kWarning);
        QCOMPARE(button.text(), QStringLiteral("Other"));
    }

    void iconSize_data()
    {
        QTest::addColumn<int>("preset"); // set before the icon; -1 leaves the default
        QTest::addColumn<bool>("vertical");
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("expected");
        QTest::newRow("image width") << -1 << false << kWarning << 40;
        QTest::newRow("image width, vertical row") << -1 << true << kWarning << 40;
        QTest::newRow("preset") << 24 << false << kWarning << 24;
        QTest::newRow("preset, vertical row") << 24 << true << kWarning << 24;
        QTest::newRow("missing image") << -1 << false << kMissing << 0;
    }
    void iconSize()
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
        QCOMPARE(button.iconSize(), expected);
        // Fixed along the row, free across it.
        ZImageItem *icon = button.buttonIcon();
        QCOMPARE(vertical ? icon->fixHeight() : icon->fixWidth(), qreal(expected));
        QCOMPARE(vertical ? icon->fixWidth() : icon->fixHeight(), qreal(-1));

        // A size set later applies; a new image keeps it.
        button.resize(100, 60);
        button.setIconSize(18);
        button.setIconPath(kIcon);
        QCOMPARE(vertical ? placed(&button, icon).height() : placed(&button, icon).width(), 18.0);
    }

    // Text settings act on the label and are dropped while there is none.
    void textSettingsNeedText()
    {
        ZPushButton button;
        button.setTextColor(QColor(200, 0, 0));
        button.setFontSize(20);
        button.setTextBold(true);
        button.setFont(QFont(QStringLiteral("Serif"), 30));
        QVERIFY(!button.textColor().isValid());
        QCOMPARE(button.fontSize(), -1);
        button.setText(QStringLiteral("Now"));
        ZLabel *label = button.buttonText();
        QVERIFY(!label->textColor().isValid()); // dropped, not remembered
        QVERIFY(!label->bold());
        QVERIFY(label->fontSize() != 20);

        button.setTextColor(QColor(200, 0, 0));
        button.setFontSize(20);
        button.setTextBold(true);
        QCOMPARE(label->textColor(), QColor(200, 0, 0));
        QCOMPARE(label->fontSize(), 20);
        QVERIFY(label->bold());
        QFont font(QStringLiteral("Serif"));
        font.setPixelSize(9);
        button.setFont(font);
        QCOMPARE(label->font().pixelSize(), 9);
    }

    // Margins and alignments are remembered for parts made later and passed
    // to the present ones.
    void marginsAndAlignments()
    {
        ZPushButton button;
        const auto set = [&](int m, Qt::Alignment text, Qt::Alignment icon) {
            button.setTextMargins(QMargins(m, 0, m, 0));
            button.setIconMargins(QMargins(0, m, 0, m));
            button.setTextAlignment(text);
            button.setIconAlignment(icon);
        };
        const auto check = [&](int m, Qt::Alignment text, Qt::Alignment icon) {
            QCOMPARE(button.buttonText()->textMargins(), QMargins(m, 0, m, 0));
            QCOMPARE(button.buttonIcon()->imageMargins(), QMargins(0, m, 0, m));
            QCOMPARE(button.buttonText()->textAlignment(), text);
            QCOMPARE(button.buttonIcon()->imageAlignment(), icon);
        };
        set(5, Qt::AlignLeft | Qt::AlignTop, Qt::AlignRight | Qt::AlignBottom);
        button.setText(QStringLiteral("Margins"));
        button.setIconPath(kIcon);
        check(5, Qt::AlignLeft | Qt::AlignTop, Qt::AlignRight | Qt::AlignBottom);
        set(7, Qt::AlignCenter, Qt::AlignLeft | Qt::AlignVCenter);
        check(7, Qt::AlignCenter, Qt::AlignLeft | Qt::AlignVCenter);
    }

    void orientationAndGeometry()
    {
        ZPushButton button;
        auto *linear = dynamic_cast<QGraphicsLinearLayout *>(button.buttonContent()->layout());
        QVERIFY(linear);
        button.setOrientation(Qt::Vertical);
        QCOMPARE(linear->orientation(), Qt::Vertical);
        button.setOrientation(Qt::Orientation(3)); // neither: ignored
        QCOMPARE(button.orientation(), Qt::Vertical);
        // Frame and row fill the button, whatever its place.
        button.setPos(30, 40);
        for (const QSizeF size : {QSizeF(77, 33), QSizeF(50, 20)}) {
            button.resize(size);
            QCOMPARE(button.buttonFrame()->geometry(), QRectF(QPointF(), size));
            QCOMPARE(button.buttonContent()->geometry(), QRectF(QPointF(), size));
        }
        // Without a linear row there is nothing to turn.
        button.buttonContent()->setLayoutType(ZWidget::Flow);
        button.setOrientation(Qt::Vertical);
        QCOMPARE(button.orientation(), Qt::Horizontal);
    }

    // Only for a button in a linear layout, and only when the image loaded.
    void sizeToFrameImage()
    {
        const QString image = QStringLiteral(":/image/theme/comboboxbutton_normal.png");
        ZPushButton loose;
        loose.resize(50, 50);
        loose.setImagePath(image);
        loose.setSizeToFrameImage();
        QCOMPARE(loose.fixSize(), QSizeF(-1, -1));

        ZWidget parent;
        parent.setLayoutType(ZWidget::HBox);
        auto *button = new ZPushButton;
        parent.addItem(button);
        button->setImagePath(image);
        button->setSizeToFrameImage();
        parent.resize(300, 100);
        parent.activateLayout();
        QCOMPARE(button->size(), QSizeF(QImage(image).size()));
        auto *broken = new ZPushButton;
        parent.addItem(broken);
        broken->setImagePath(kMissing);
        broken->setSizeToFrameImage();
        QCOMPARE(broken->fixSize(), QSizeF(-1, -1));
    }

    void sizeToContent()
    {
        ZPushButton loose;
        loose.setText(QStringLiteral("Loose"));
        loose.setSizeToContent();
        QCOMPARE(loose.fixWidth(), qreal(-1));

        ZWidget parent;
        parent.setLayoutType(ZWidget::HBox);
        auto *button = new ZPushButton;
        parent.addItem(button);
        button->setIconPath(kIcon);
        button->setText(QStringLiteral("A longer caption"));
        button->setTextMargins(QMargins(3, 0, 4, 0));
        button->setSizeToContent(QMargins(8, 2, 9, 2));
        ZLabel *label = button->buttonText();
        const qreal text = std::ceil(QFontMetricsF(label->font()).horizontalAdvance(label->text()));
        const qreal expected = 8 + QImage(kIcon).width() + text + 3 + 4 + 9;
        parent.resize(600, 60);
        parent.activateLayout();
        QCOMPARE(button->size().width(), expected);
        // Icon and text still stand inside the button.
        QVERIFY(QRectF(QPointF(), button->size()).contains(placed(button, label)));
        QVERIFY(QRectF(QPointF(), button->size()).contains(placed(button, button->buttonIcon())));
    }

    void childrenJoinTheRow()
    {
        ZPushButton button;
        button.resize(120, 30);
        button.setText(QStringLiteral("T"));
        auto *extra = new ZImageItem;
        extra->setFixWidth(20);
        button.addItem(extra);
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

    // A press on any part presses the button, and never drags the window.
    void pressOnAnyPartPressesTheButton()
    {
        QGraphicsScene scene;
        ZPushButton *button = addButton(scene, QSizeF(120, 30), QStringLiteral("Parts"), kIcon);
        QSignalSpy clicked(button, &ZAbstractButton::clicked);
        const QList<QGraphicsWidget *> parts = {button->buttonIcon(), button->buttonText(), button->buttonFrame()};
        for (QGraphicsWidget *part : parts) {
            const QPointF at = part->mapToScene(placed(button, part).width() / 2, 10);
            scenetest::click(scene, at);
            QCOMPARE(ZWidget::resolveDragPolicy(part, at), ZWidget::Nothing);
        }
        QCOMPARE(clicked.count(), parts.size());
    }

    void deletedParts()
    {
        QGraphicsScene scene;
        ZPushButton *button = addButton(scene, QSizeF(80, 24), QStringLiteral("One"), kIcon);
        delete button->buttonText();
        QCOMPARE(button->text(), QString());
        button->setTextColor(Qt::red);
        button->setText(QStringLiteral("Two")); // a new label
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
        scenetest::click(scene, QPointF(10, 10));
    }

    void badValues()
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
        for (int word : {int(ZAbstractButton::StatePressed), 0, -1})
            button.updateState(States::fromInt(word));
    }

    // Document order decides the order in the row; children join it last;
    // an invoke runs after the attributes.
    void fromXml()
    {
        const QByteArray document = R"(<uitree>
  <ZSpacer objectName="bar" layout="HBox">
    <ZPushButton objectName="iconFirst" iconPath=":/image/theme/titleicon.png" text="Save" fontSize="15"
                 imagePath=":/image/theme/roundframe_normal.png|:/image/theme/roundframe_hover.png">
      <ZImageItem objectName="badge" fixWidth="12"/>
      <x:invoke function="setSizeToContent"/>
    </ZPushButton>
    <ZPushButton objectName="textFirst" text="Open" iconPath=":/image/theme/titleicon.png" iconSize="14"
                 orientation="Vertical"/>
  </ZSpacer>
</uitree>)";
        ZWidget root;
        QVERIFY(ZXmlUI::widgetFromMemory(document, &root));
        auto *first = qobject_cast<ZPushButton *>(root.findObject(QStringLiteral("iconFirst")));
        auto *second = qobject_cast<ZPushButton *>(root.findObject(QStringLiteral("textFirst")));
        QVERIFY(first && second);
        QCOMPARE(first->fontSize(), 15); // after the text: kept
        QCOMPARE(first->buttonFrame()->frameCount(), 2);
        QVERIFY(first->buttonText()->autoAdjust());
        QVERIFY(first->fixWidth() > 0);
        QGraphicsLayout *row = first->buttonContent()->layout();
        QCOMPARE(row->count(), 3);
        QCOMPARE(row->itemAt(0), first->buttonIcon());
        QCOMPARE(row->itemAt(1), first->buttonText());
        QCOMPARE(row->itemAt(2)->graphicsItem()->toGraphicsObject()->objectName(), QStringLiteral("badge"));
        QGraphicsLayout *row2 = second->buttonContent()->layout();
        QCOMPARE(row2->itemAt(0), second->buttonText());
        QCOMPARE(row2->itemAt(1), second->buttonIcon());
        QCOMPARE(second->orientation(), Qt::Vertical);
        QCOMPARE(second->iconSize(), 14);
    }

    // Values that do not read keep the button usable.
    void garbageFromXml()
    {
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
        QVERIFY(odd && turned);
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

    // Each word shows its own default skin image in the middle of the button.
    void framePixels()
    {
        QGraphicsScene scene;
        ZPushButton *button = addButton(scene, QSizeF(60, 30));
        button->setThemePolicy(ZWidget::NoTheme);
        const QStringList images = kDefaultImages.split(QLatin1Char('|'));
        const ZAbstractButton::ButtonState words[] = {ZAbstractButton::StateNormal, ZAbstractButton::StateHover,
                                                      ZAbstractButton::StatePressed, ZAbstractButton::StateDisable};
        QSet<QRgb> seen;
        for (int i = 0; i < 4; ++i) {
            button->updateState(words[i]);
            const QImage shot = scenetest::render(scene, QSize(60, 30));
            const QImage skin = scenetest::skinImage(images[i]);
            QImage expected(1, 1, QImage::Format_ARGB32_Premultiplied);
            expected.fill(Qt::white);
            QPainter(&expected).drawImage(0, 0, skin, skin.width() / 2, skin.height() / 2, 1, 1);
            QCOMPARE(shot.pixelColor(30, 15), expected.pixelColor(0, 0));
            seen.insert(shot.pixel(30, 15));
        }
        QCOMPARE(seen.size(), 4);
    }
};

QTEST_MAIN(tst_ZPushButton)
#include "tst_zpushbutton.moc"
