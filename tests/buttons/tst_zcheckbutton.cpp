// Check and radio buttons: the short image strings, the box image for each
// state word, toggling by real clicks, and the row of box and text
// (vertical, reversed, sized to its content), also as documents make them.

#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsLinearLayout>
#include <QtWidgets/QGraphicsScene>

#include <cmath>

#include "buttons/buttontestutil.h"
#include "zcheckbutton.h"
#include "zframeitem.h"
#include "zlabel.h"
#include "zradiobutton.h"
#include "zxmlui.h"

using buttontest::Pointer;
using States = ZAbstractButton::ButtonStates;

namespace {

QString theme(const char *name)
{
    return QStringLiteral(":/image/theme/%1.png").arg(QLatin1String(name));
}

const QString kCheckImages = QStringList{theme("checkbox_default_normal"),    theme("checkbox_default_hover"),
                                         theme("checkbox_default_pressdown"), theme("checkbox_default_disable"),
                                         theme("checkbox_selected_normal"),   theme("checkbox_selected_hover"),
                                         theme("checkbox_selected_pressdown"), theme("checkbox_selected_disable")}
                                 .join(QLatin1Char('|'));
const QString kRadioImages = QString(kCheckImages).replace(QLatin1String("checkbox_"), QLatin1String("radiobox_"));

QRectF placed(ZCheckButton *button, QGraphicsWidget *part)
{
    button->activateLayout();
    return part->mapRectToItem(button, part->rect());
}

QGraphicsLinearLayout *row(ZCheckButton *button)
{
    return dynamic_cast<QGraphicsLinearLayout *>(button->layout());
}

} // namespace

class tst_ZCheckButton : public QObject
{
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral("."))); }

    void construction();
    void radioDefaults();
    void expansion_data();
    void expansion();
    void indexByWord_data();
    void indexByWord();
    void shortStringsByState_data();
    void shortStringsByState();
    void clicksToggle();
    void disabledKeepsChecked();
    void text();
    void vertical();
    void reverse_data();
    void reverse();
    void autoAdjust();
    void imageWidth();
    void boxPixels();
    void deletedParts();
    void fromXml();
};

void tst_ZCheckButton::construction()
{
    ZCheckButton button;
    QCOMPARE(button.buttonType(), ZAbstractButton::ButtonToggle);
    QVERIFY(button.flags() & QGraphicsItem::ItemHasNoContents);
    ZFrameItem *box = button.frame();
    QVERIFY(box);
    QCOMPARE(box->imagePath(), kCheckImages);
    QCOMPARE(button.imagePath(), kCheckImages);
    QCOMPARE(box->frameCount(), 8);
    QCOMPARE(box->frameType(), ZFrameItem::OneHVCenter);
    QCOMPARE(box->fixWidth(), qreal(QImage(theme("checkbox_default_normal")).width()));
    QCOMPARE(button.imageWidth(), int(box->fixWidth()));
    QCOMPARE(button.layoutType(), ZWidget::HBox);
    QVERIFY(row(&button));
    QCOMPARE(row(&button)->count(), 1);
    QCOMPARE(row(&button)->itemAt(0), box);
    QVERIFY(!button.label());
    QCOMPARE(button.property("frame").value<QObject *>(), box);
    QCOMPARE(button.property("label").value<QObject *>(), nullptr);
    QVERIFY(!button.vertical());
    QVERIFY(!button.reverseOrder());
    QVERIFY(!button.autoAdjust());
    QCOMPARE(box->frameIndex(), 0);
}

void tst_ZCheckButton::radioDefaults()
{
    ZRadioButton radio;
    QCOMPARE(radio.imagePath(), kRadioImages);
    QCOMPARE(radio.frame()->frameCount(), 8);
    QCOMPARE(radio.buttonType(), ZAbstractButton::ButtonToggle);
    QVERIFY(qobject_cast<ZCheckButton *>(&radio));
    // Alone it toggles like a check box.
    QGraphicsScene scene;
    auto *lone = new ZRadioButton;
    scene.addItem(lone);
    lone->resize(20, 20);
    Pointer pointer(scene);
    pointer.click(QPointF(10, 10));
    QVERIFY(lone->checked());
    pointer.click(QPointF(10, 10));
    QVERIFY(!lone->checked());
}

void tst_ZCheckButton::expansion_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("expected");
    QTest::newRow("two") << "a|b" << "a|a|a|a|b|b|b|b";
    QTest::newRow("three") << "a|b|c" << "a|b|b|a|c|c|c|c";
    QTest::newRow("six") << "a|b|c|d|e|f" << "a|b|c|c|d|e|f|f";
    QTest::newRow("one") << "a" << "a";
    QTest::newRow("four") << "a|b|c|d" << "a|b|c|d";
    QTest::newRow("five") << "a|b|c|d|e" << "a|b|c|d|e";
    QTest::newRow("seven") << "a|b|c|d|e|f|g" << "a|b|c|d|e|f|g";
    QTest::newRow("eight") << "1|2|3|4|5|6|7|8" << "1|2|3|4|5|6|7|8";
    QTest::newRow("nine") << "1|2|3|4|5|6|7|8|9" << "1|2|3|4|5|6|7|8|9";
    QTest::newRow("empty parts count") << "|b" << "||||b|b|b|b";
    QTest::newRow("placeholders stay text") << "%2|%1" << "%2|%2|%2|%2|%1|%1|%1|%1";
}

void tst_ZCheckButton::expansion()
{
    QFETCH(QString, given);
    QFETCH(QString, expected);
    QCOMPARE(ZCheckButton::expandImagePath(given), expected);
    ZCheckButton button;
    button.setImagePath(given);
    QCOMPARE(button.imagePath(), expected);
}

void tst_ZCheckButton::indexByWord_data()
{
    QTest::addColumn<int>("word");
    QTest::addColumn<int>("index");
    using B = ZAbstractButton;
    QTest::newRow("normal") << int(B::StateNormal) << 0;
    QTest::newRow("hover") << int(B::StateHover) << 1;
    QTest::newRow("pressed") << int(B::StatePressed) << 2;
    QTest::newRow("disable alone") << int(B::StateDisable) << 3;
    QTest::newRow("normal wins over disable") << int(B::StateNormal | B::StateDisable) << 0;
    QTest::newRow("checked normal") << int(B::StateChecked | B::StateNormal) << 4;
    QTest::newRow("checked hover") << int(B::StateChecked | B::StateHover) << 5;
    QTest::newRow("checked pressed") << int(B::StateChecked | B::StatePressed) << 6;
    QTest::newRow("checked disable alone") << int(B::StateChecked | B::StateDisable) << 7;
    QTest::newRow("checked normal disabled") << int(B::StateChecked | B::StateNormal | B::StateDisable) << 4;
}

void tst_ZCheckButton::indexByWord()
{
    QFETCH(int, word);
    QFETCH(int, index);
    ZCheckButton button;
    // From every starting index, checked or not, the word alone decides.
    for (int from : {0, 2, 5, 7}) {
        button.frame()->setFrameState(ZFrameItem::FrameState(from));
        button.updateState(States::fromInt(word));
        QCOMPARE(button.frame()->frameIndex(), index);
    }
}

void tst_ZCheckButton::shortStringsByState_data()
{
    QTest::addColumn<QString>("images");
    QTest::addColumn<QList<int>>("shown"); // image shown in states 0..7, as an index into images

    const QString n = theme("checkbox_default_normal"), h = theme("checkbox_default_hover");
    const QString c = theme("checkbox_selected_normal"), d = theme("checkbox_default_pressdown");
    QTest::newRow("two") << QStringList{n, c}.join('|') << QList<int>{0, 0, 0, 0, 1, 1, 1, 1};
    QTest::newRow("three") << QStringList{n, h, c}.join('|') << QList<int>{0, 1, 1, 0, 2, 2, 2, 2};
    // Four images have no checked half: a checked box falls back to image 0.
    QTest::newRow("four") << QStringList{n, h, d, c}.join('|') << QList<int>{0, 1, 2, 3, 0, 0, 0, 0};
}

void tst_ZCheckButton::shortStringsByState()
{
    QFETCH(QString, images);
    QFETCH(QList<int>, shown);
    const QStringList parts = images.split('|');
    ZCheckButton button;
    button.setThemePolicy(ZWidget::NoTheme);
    button.setImagePath(images);
    const ZAbstractButton::ButtonState pointer[] = {ZAbstractButton::StateNormal, ZAbstractButton::StateHover,
                                                    ZAbstractButton::StatePressed, ZAbstractButton::StateDisable};
    for (int state = 0; state < 8; ++state) {
        States word(pointer[state % 4]);
        word.setFlag(ZAbstractButton::StateChecked, state >= 4);
        button.updateState(word);
        const QImage got = button.frame()->currentPixmap().toImage().convertToFormat(QImage::Format_ARGB32);
        const QImage want = QImage(parts[shown[state]]).convertToFormat(QImage::Format_ARGB32);
        QVERIFY2(got == want, qPrintable(QStringLiteral("state %1").arg(state)));
    }
}

void tst_ZCheckButton::clicksToggle()
{
    QGraphicsScene scene(0, 0, 300, 200);
    auto *button = new ZCheckButton;
    scene.addItem(button);
    button->setPos(10, 10);
    button->setText(QStringLiteral("Remember me"));
    button->resize(140, 24);
    QSignalSpy clicked(button, &ZAbstractButton::clicked);
    Pointer pointer(scene);

    pointer.move(QPointF(60, 20)); // over the text: still the button
    QCOMPARE(button->frame()->frameIndex(), 1);
    pointer.press(QPointF(60, 20));
    QCOMPARE(button->frame()->frameIndex(), 2);
    pointer.release(QPointF(60, 20));
    QVERIFY(button->checked());
    QCOMPARE(button->frame()->frameIndex(), 5); // released, then hovered: checked hover
    pointer.move(QPointF(250, 150));
    QCOMPARE(button->frame()->frameIndex(), 4);

    // A press that ends outside toggles all the same.
    pointer.move(QPointF(15, 20));
    pointer.press(QPointF(15, 20));
    QCOMPARE(button->frame()->frameIndex(), 6);
    pointer.move(QPointF(250, 150));
    pointer.release(QPointF(250, 150));
    QVERIFY(!button->checked());
    QCOMPARE(button->frame()->frameIndex(), 0);
    QCOMPARE(clicked.count(), 2);
}

void tst_ZCheckButton::disabledKeepsChecked()
{
    QGraphicsScene scene;
    auto *button = new ZCheckButton;
    scene.addItem(button);
    button->resize(60, 20);
    button->setChecked(true);
    QCOMPARE(button->frame()->frameIndex(), 4);
    button->setEnabled(false);
    QVERIFY(button->checked());
    QCOMPARE(button->frame()->frameIndex(), 4); // the normal bit is tested first
    Pointer pointer(scene);
    pointer.click(QPointF(8, 10));
    QVERIFY(button->checked());
    button->setEnabled(true);
    pointer.click(QPointF(8, 10));
    QVERIFY(!button->checked());
}

void tst_ZCheckButton::text()
{
    ZCheckButton button;
    button.setText(QString());
    QVERIFY(!button.label());
    button.setTextMargins(QMargins(6, 0, 2, 0));
    button.setText(QStringLiteral("Label"));
    ZLabel *label = button.label();
    QVERIFY(label);
    QCOMPARE(label->text(), QStringLiteral("Label"));
    QCOMPARE(label->textMargins(), QMargins(6, 0, 2, 0));
    QCOMPARE(row(&button)->count(), 2);
    QCOMPARE(row(&button)->itemAt(1), label);
    button.setText(QStringLiteral("Again"));
    QCOMPARE(button.label(), label);
    QCOMPARE(button.text(), QStringLiteral("Again"));
    button.setTextMargins(QMargins(1, 1, 1, 1));
    QCOMPARE(label->textMargins(), QMargins(1, 1, 1, 1));
    QCOMPARE(button.textMargins(), QMargins(1, 1, 1, 1));
    button.setText(QString()); // an existing label just empties
    QCOMPARE(button.label(), label);
    QCOMPARE(label->text(), QString());
}

void tst_ZCheckButton::vertical()
{
    ZCheckButton button;
    button.setText(QStringLiteral("Below"));
    button.resize(80, 60);
    button.setVertical(true);
    QVERIFY(button.vertical());
    QCOMPARE(row(&button)->orientation(), Qt::Vertical);
    QRectF box = placed(&button, button.frame());
    QRectF text = placed(&button, button.label());
    QVERIFY(box.bottom() <= text.top());
    button.setVertical(false);
    QVERIFY(!button.vertical());
    box = placed(&button, button.frame());
    text = placed(&button, button.label());
    QVERIFY(box.right() <= text.left());

    // Without a box layout there is nothing to turn.
    button.setLayoutType(ZWidget::Flow);
    button.setVertical(true);
    QVERIFY(!button.vertical());
}

void tst_ZCheckButton::reverse_data()
{
    QTest::addColumn<QList<QVariant>>("values");
    QTest::addColumn<bool>("boxFirst");
    QTest::newRow("once") << QList<QVariant>{true} << false;
    QTest::newRow("false rotates too") << QList<QVariant>{false} << false;
    QTest::newRow("twice") << QList<QVariant>{true, true} << true;
    QTest::newRow("three times") << QList<QVariant>{true, false, true} << false;
}

void tst_ZCheckButton::reverse()
{
    QFETCH(QList<QVariant>, values);
    QFETCH(bool, boxFirst);
    ZCheckButton button;
    button.setText(QStringLiteral("Text"));
    button.resize(100, 24);
    for (const QVariant &value : values)
        QVERIFY(button.setProperty("reverse", value));
    QVERIFY(!button.property("reverse").toBool());
    QCOMPARE(row(&button)->itemAt(0) == button.frame(), boxFirst);
    const QRectF box = placed(&button, button.frame());
    const QRectF text = placed(&button, button.label());
    QCOMPARE(box.left() < text.left(), boxFirst);

    // A box alone has nothing to swap with.
    ZCheckButton alone;
    alone.setReverseOrder(true);
    QCOMPARE(row(&alone)->count(), 1);
}

void tst_ZCheckButton::autoAdjust()
{
    ZCheckButton button;
    button.setImageWidth(40);
    button.setAutoAdjust(true); // before the label: the label takes it on when made
    QVERIFY(button.autoAdjust());
    const int boxWidth = QImage(theme("checkbox_default_normal")).width();
    QCOMPARE(button.imageWidth(), boxWidth);
    button.setTextMargins(QMargins(4, 0, 5, 0));
    button.setText(QStringLiteral("Sized to its text"));
    QVERIFY(button.label()->autoAdjust());
    QVERIFY(button.widthToChild());
    const qreal textWidth = std::ceil(QFontMetricsF(button.label()->font()).horizontalAdvance(button.text()));
    button.activateLayout();
    button.resetSizeHint();
    QCOMPARE(button.size().width(), boxWidth + textWidth + 4 + 5);

    button.setAutoAdjust(false);
    QVERIFY(!button.label()->autoAdjust());
    QVERIFY(!button.widthToChild());
}

void tst_ZCheckButton::imageWidth()
{
    ZCheckButton button;
    button.setImageWidth(30);
    QCOMPARE(button.imageWidth(), 30);
    QCOMPARE(button.frame()->fixWidth(), 30.0);
    button.resize(100, 20);
    QCOMPARE(placed(&button, button.frame()).width(), 30.0);
    button.setImageWidth(-4);
    QCOMPARE(button.imageWidth(), -1);
    button.setImageWidth(std::numeric_limits<int>::max());
    QVERIFY(button.imageWidth() > 0);
}

void tst_ZCheckButton::boxPixels()
{
    // The box image is drawn at its natural size in the middle of the box.
    QGraphicsScene scene;
    auto *button = new ZCheckButton;
    scene.addItem(button);
    button->setThemePolicy(ZWidget::NoTheme);
    button->setText(QStringLiteral("Pixels"));
    button->resize(100, 40);
    button->activateLayout();
    const QRectF box = placed(button, button->frame());
    const QImage skin = buttontest::skinImage(theme("checkbox_default_normal"));
    const QImage checkedSkin = buttontest::skinImage(theme("checkbox_selected_normal"));
    QCOMPARE(box.width(), qreal(skin.width()));

    const QPoint origin(int(box.center().x() - skin.width() / 2.0), int(box.center().y() - skin.height() / 2.0));
    const auto matches = [&](const QImage &shot, const QImage &image) {
        QImage expected(image.size(), QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::white);
        QPainter(&expected).drawImage(0, 0, image);
        return shot.copy(QRect(origin, image.size())) == expected;
    };
    QVERIFY(matches(buttontest::render(scene, QRectF(0, 0, 100, 40)), skin));
    button->setChecked(true);
    QVERIFY(matches(buttontest::render(scene, QRectF(0, 0, 100, 40)), checkedSkin));
}

void tst_ZCheckButton::deletedParts()
{
    QGraphicsScene scene;
    auto *button = new ZCheckButton;
    scene.addItem(button);
    button->setText(QStringLiteral("Gone"));
    button->resize(80, 20);
    delete button->label();
    QVERIFY(!button->label());
    button->setText(QStringLiteral("Back"));
    QVERIFY(button->label());
    delete button->frame();
    QVERIFY(!button->frame());
    QCOMPARE(button->imagePath(), QString());
    QCOMPARE(button->imageWidth(), -1);
    button->setImagePath(QStringLiteral("a|b"));
    button->setImageWidth(20);
    button->setAutoAdjust(true);
    button->setReverseOrder(true);
    Pointer pointer(scene);
    pointer.click(QPointF(10, 10));
    QVERIFY(button->checked());
}

void tst_ZCheckButton::fromXml()
{
    const QByteArray document = R"(<uitree>
  <ZCheckButton objectName="check" textMargin="3,0,3,0" text="Agree" check="true" vertical="true"
                imagePath=":/image/theme/checkbox_default_normal.png|:/image/theme/checkbox_selected_normal.png"
                imageWidth="22" label.textColor="#102030" frame.frameType="OneTopLeft"/>
  <ZRadioButton objectName="radio" text="Pick" autoAdjust="true" reverse="true" enabled="false"/>
  <ZCheckButton objectName="bad" imageWidth="oops" text=""/>
</uitree>)";
    ZWidget root;
    QVERIFY(ZXmlUI::widgetFromMemory(document, &root));
    auto *check = qobject_cast<ZCheckButton *>(root.findObject(QStringLiteral("check")));
    auto *radio = qobject_cast<ZRadioButton *>(root.findObject(QStringLiteral("radio")));
    auto *bad = qobject_cast<ZCheckButton *>(root.findObject(QStringLiteral("bad")));
    QVERIFY(check);
    QVERIFY(radio);
    QVERIFY(bad);

    QCOMPARE(check->text(), QStringLiteral("Agree"));
    QCOMPARE(check->label()->textMargins(), QMargins(3, 0, 3, 0));
    QVERIFY(check->checked());
    QCOMPARE(check->frame()->frameIndex(), 4);
    QVERIFY(check->vertical());
    QCOMPARE(check->frame()->frameCount(), 8);
    QCOMPARE(check->imagePath().count(QLatin1String("checkbox_selected_normal")), 4);
    QCOMPARE(check->imageWidth(), 22);
    QCOMPARE(check->label()->textColor(), QColor(0x10, 0x20, 0x30));
    QCOMPARE(check->frame()->frameType(), ZFrameItem::OneTopLeft);

    QVERIFY(radio->label()->autoAdjust());
    QVERIFY(radio->widthToChild());
    QCOMPARE(row(radio)->itemAt(0), radio->label());
    QVERIFY(!radio->enabled());

    QVERIFY(!bad->label());
    QCOMPARE(bad->imageWidth(), QImage(theme("checkbox_default_normal")).width()); // not a number: unchanged
}

QTEST_MAIN(tst_ZCheckButton)
#include "tst_zcheckbutton.moc"
