// Check and radio buttons: the short image strings, the box image for each
// state word, toggling by real clicks, and the row of box and text
// (vertical, reversed, sized to its content).

#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsLinearLayout>

#include <cmath>

#include "common/scenetest.h"
#include "zcheckbutton.h"
#include "zradiobutton.h"

using scenetest::Mouse;
using States = ZAbstractButton::ButtonStates;

namespace {

QString theme(const char *name)
{
    return QStringLiteral(":/image/theme/%1.png").arg(QLatin1String(name));
}

QRectF placed(ZCheckButton *button, QGraphicsWidget *part)
{
    button->activateLayout();
    return part->mapRectToItem(button, part->rect());
}

QGraphicsLinearLayout *row(ZCheckButton *button)
{
    return dynamic_cast<QGraphicsLinearLayout *>(button->layout());
}

ZCheckButton *addButton(QGraphicsScene &scene, const QSizeF &size, const QString &text = QString())
{
    auto *button = new ZCheckButton;
    scene.addItem(button);
    button->setText(text);
    button->resize(size);
    return button;
}

} // namespace

class tst_ZCheckButton : public QObject
{
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral("."))); }

    // The eight skin images, unchecked then checked, for both kinds.
    void defaultImages()
    {
        QStringList images;
        for (const char *kind : {"default", "selected"}) {
            for (const char *state : {"normal", "hover", "pressdown", "disable"})
                images << QStringLiteral(":/image/theme/checkbox_%1_%2.png").arg(QLatin1String(kind), QLatin1String(state));
        }
        ZCheckButton check;
        ZRadioButton radio;
        QCOMPARE(check.imagePath(), images.join(QLatin1Char('|')));
        QCOMPARE(radio.imagePath(), images.join(QLatin1Char('|')).replace(QLatin1String("checkbox_"), QLatin1String("radiobox_")));
        QCOMPARE(check.frame()->frameCount(), 8);
        QCOMPARE(check.imageWidth(), QImage(theme("checkbox_default_normal")).width());
    }

    void expansion_data()
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
    void expansion()
    {
        QFETCH(QString, given);
        QFETCH(QString, expected);
        QCOMPARE(ZCheckButton::expandImagePath(given), expected);
        ZCheckButton button;
        button.setImagePath(given);
        QCOMPARE(button.imagePath(), expected);
    }

    void indexByWord_data()
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
    void indexByWord()
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

    void shortStringsByState_data()
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
    void shortStringsByState()
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
            QVERIFY2(got == QImage(parts[shown[state]]).convertToFormat(QImage::Format_ARGB32),
                     qPrintable(QStringLiteral("state %1").arg(state)));
        }
    }

    void clicksToggle()
    {
        QGraphicsScene scene(0, 0, 300, 200);
        ZCheckButton *button = addButton(scene, QSizeF(140, 24), QStringLiteral("Remember me"));
        button->setPos(10, 10);
        QSignalSpy clicked(button, &ZAbstractButton::clicked);
        const auto index = [button] { return button->frame()->frameIndex(); };
        Mouse mouse(scene);
        mouse.move(QPointF(60, 20)); // over the text: still the button
        QCOMPARE(index(), 1);
        mouse.press(QPointF(60, 20));
        QCOMPARE(index(), 2);
        mouse.release(QPointF(60, 20));
        QVERIFY(button->checked());
        QCOMPARE(index(), 5); // released, then hovered: checked hover
        mouse.move(QPointF(250, 150));
        QCOMPARE(index(), 4);
        mouse.click(QPointF(15, 20)); // on the box
        QVERIFY(!button->checked());
        QCOMPARE(clicked.count(), 2);
    }

    // The label comes with the first text and keeps margins set before it.
    void text()
    {
        ZCheckButton button;
        button.setText(QString());
        QVERIFY(!button.label());
        button.setTextMargins(QMargins(6, 0, 2, 0));
        button.setText(QStringLiteral("Label"));
        ZLabel *label = button.label();
        QVERIFY(label);
        QCOMPARE(label->textMargins(), QMargins(6, 0, 2, 0));
        QCOMPARE(row(&button)->count(), 2);
        QCOMPARE(row(&button)->itemAt(1), label);
        button.setText(QStringLiteral("Again"));
        QCOMPARE(button.label(), label);
        QCOMPARE(button.text(), QStringLiteral("Again"));
        button.setTextMargins(QMargins(1, 1, 1, 1));
        QCOMPARE(label->textMargins(), QMargins(1, 1, 1, 1));
        button.setText(QString()); // an existing label just empties
        QCOMPARE(button.label(), label);
        QCOMPARE(label->text(), QString());
    }

    void vertical()
    {
        ZCheckButton button;
        button.setText(QStringLiteral("Below"));
        button.resize(80, 60);
        button.setVertical(true);
        QVERIFY(button.vertical());
        QVERIFY(placed(&button, button.frame()).bottom() <= placed(&button, button.label()).top());
        button.setVertical(false);
        QVERIFY(!button.vertical());
        QVERIFY(placed(&button, button.frame()).right() <= placed(&button, button.label()).left());
        // Without a box layout there is nothing to turn.
        button.setLayoutType(ZWidget::Flow);
        button.setVertical(true);
        QVERIFY(!button.vertical());
    }

    // Every call moves one item to the end, whatever its argument.
    void reverse_data()
    {
        QTest::addColumn<QList<QVariant>>("values");
        QTest::addColumn<bool>("boxFirst");
        QTest::newRow("once") << QList<QVariant>{true} << false;
        QTest::newRow("false rotates too") << QList<QVariant>{false} << false;
        QTest::newRow("twice") << QList<QVariant>{true, true} << true;
        QTest::newRow("three times") << QList<QVariant>{true, false, true} << false;
    }
    void reverse()
    {
        QFETCH(QList<QVariant>, values);
        QFETCH(bool, boxFirst);
        ZCheckButton button;
        button.setText(QStringLiteral("Text"));
        button.resize(100, 24);
        for (const QVariant &value : values)
            QVERIFY(button.setProperty("reverse", value));
        QVERIFY(!button.property("reverse").toBool());
        QCOMPARE(placed(&button, button.frame()).left() < placed(&button, button.label()).left(), boxFirst);
        // A box alone has nothing to swap with.
        ZCheckButton alone;
        alone.setReverseOrder(true);
        QCOMPARE(row(&alone)->count(), 1);
    }

    void autoAdjust()
    {
        ZCheckButton button;
        button.setImageWidth(40);
        button.setAutoAdjust(true); // before the label: the label takes it on when made
        const int boxWidth = QImage(theme("checkbox_default_normal")).width();
        QCOMPARE(button.imageWidth(), boxWidth);
        button.setTextMargins(QMargins(4, 0, 5, 0));
        button.setText(QStringLiteral("Sized to its text"));
        QVERIFY(button.label()->autoAdjust());
        const qreal textWidth = std::ceil(QFontMetricsF(button.label()->font()).horizontalAdvance(button.text()));
        button.activateLayout();
        button.resetSizeHint();
        QCOMPARE(button.size().width(), boxWidth + textWidth + 4 + 5);
        button.setAutoAdjust(false);
        QVERIFY(!button.label()->autoAdjust());
        QVERIFY(!button.widthToChild());
    }

    void imageWidth()
    {
        ZCheckButton button;
        button.setImageWidth(30);
        button.resize(100, 20);
        QCOMPARE(placed(&button, button.frame()).width(), 30.0);
        button.setImageWidth(-4);
        QCOMPARE(button.imageWidth(), -1);
        button.setImageWidth(std::numeric_limits<int>::max());
        QVERIFY(button.imageWidth() > 0);
    }

    // The box image is drawn at its natural size in the middle of the box.
    void boxPixels()
    {
        QGraphicsScene scene;
        ZCheckButton *button = addButton(scene, QSizeF(100, 40), QStringLiteral("Pixels"));
        button->setThemePolicy(ZWidget::NoTheme);
        const QRectF box = placed(button, button->frame());
        const auto matches = [&](const char *name) {
            const QImage image = scenetest::skinImage(theme(name));
            QImage expected(image.size(), QImage::Format_ARGB32_Premultiplied);
            expected.fill(Qt::white);
            QPainter(&expected).drawImage(0, 0, image);
            const QPoint origin(int(box.center().x() - image.width() / 2.0), int(box.center().y() - image.height() / 2.0));
            return scenetest::render(scene, QRectF(0, 0, 100, 40)).copy(QRect(origin, image.size())) == expected;
        };
        QCOMPARE(box.width(), qreal(scenetest::skinImage(theme("checkbox_default_normal")).width()));
        QVERIFY(matches("checkbox_default_normal"));
        button->setChecked(true);
        QVERIFY(matches("checkbox_selected_normal"));
    }

    void deletedParts()
    {
        QGraphicsScene scene;
        ZCheckButton *button = addButton(scene, QSizeF(80, 20), QStringLiteral("Gone"));
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
        Mouse(scene).click(QPointF(10, 10));
        QVERIFY(button->checked());
    }
};

QTEST_MAIN(tst_ZCheckButton)
#include "tst_zcheckbutton.moc"
