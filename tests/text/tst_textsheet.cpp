// What the text controls paint: the field's frame and white inside in field
// mode only, text that shows (and a password that hides it), a disabled look,
// the theme's tint on the frame, the hot key's text, the text edit's bar.

#include "common/scenetest.h"
#include "qlineeditex.h"
#include "zhotkey.h"
#include "zlineedit.h"
#include "zscrollbar.h"
#include "ztextedit.h"
#include "ztheme.h"

#include <QtTest/QtTest>

namespace {

const QColor kBackground(236, 238, 241);

// The item alone on the background, 4 units around it.
QImage shot(QGraphicsWidget *item)
{
    return scenetest::render(*item->scene(), item->sceneBoundingRect().adjusted(-4, -4, 4, 4), kBackground);
}

// Pixels of \a area that differ from \a colour by more than a little.
int differing(const QImage &image, const QRect &area, const QColor &colour)
{
    return scenetest::countOf(image.copy(area), [colour](QColor c) {
        return qAbs(c.red() - colour.red()) + qAbs(c.green() - colour.green()) + qAbs(c.blue() - colour.blue()) > 24;
    });
}

} // namespace

class tst_TextSheet : public QObject
{
    Q_OBJECT

private slots:
    void lineEdits()
    {
        QGraphicsScene scene;
        auto make = [&](bool edit) {
            auto *field = new ZLineEdit;
            scene.addItem(field);
            field->setPos(0, scene.itemsBoundingRect().bottom() + 20);
            field->resize(220, 26);
            field->setTextMargins(QMargins(6, 0, 6, 0));
            field->setText(QStringLiteral("Hello, zkit"));
            if (edit) {
                field->setEdit();
                field->setFocus(false);
            } else {
                field->setLabel();
            }
            return field;
        };
        const QImage edit = shot(make(true));
        const QImage label = shot(make(false));
        ZLineEdit *password = make(true);
        password->setMode(QLineEdit::Password);
        ZLineEdit *disabled = make(true);
        disabled->setEnabled(false);
        const QColor before = ZTheme::themeColor();
        ZTheme::setThemeColor(QColor(200, 40, 40));
        ZLineEdit *themed = make(true);
        themed->setThemePolicy(ZWidget::HasTheme);
        themed->changeTheme();
        const QImage tinted = shot(themed);
        ZTheme::setThemeColor(before);

        // The frame's border down the left edge, white inside, in field mode only.
        const QRect leftEdge(4, 10, 1, 8);
        QVERIFY(differing(edit, leftEdge, kBackground) > 0);
        QCOMPARE(differing(label, leftEdge, kBackground), 0);
        QCOMPARE(edit.pixelColor(200, 6), QColor(Qt::white));
        QCOMPARE(label.pixelColor(200, 6), kBackground);
        const QRect textArea(10, 8, 70, 14);
        QVERIFY(differing(edit, textArea, Qt::white) > 20);
        QVERIFY(differing(label, textArea, kBackground) > 20);
        const QImage hidden = shot(password);
        QVERIFY(hidden != edit);
        QVERIFY(differing(hidden, textArea, Qt::white) > 5);
        QVERIFY(shot(disabled) != edit);
        // The theme tints the frame's border towards red.
        QVERIFY(tinted.pixelColor(4, 16) != edit.pixelColor(4, 16));
        QVERIFY(tinted.pixelColor(4, 16).red() > tinted.pixelColor(4, 16).blue());
    }

    // "Ctrl + Alt + F5" reaches further than "Hotkey".
    void hotkey()
    {
        QGraphicsScene scene;
        auto *field = new ZHotkey;
        scene.addItem(field);
        field->resize(180, 26);
        const QImage initial = shot(field);
        QTest::keyClick(qobject_cast<QLineEditEx *>(qobject_cast<ZLineEdit *>(field->lineEdit())->realLineEdit()),
                        Qt::Key_F5, Qt::ControlModifier | Qt::AltModifier);
        const QImage chosen = shot(field);
        QVERIFY(differing(chosen, QRect(4, 10, 1, 8), kBackground) > 0);
        QVERIFY(differing(chosen, QRect(70, 8, 40, 14), Qt::white) > differing(initial, QRect(70, 8, 40, 14), Qt::white));
    }

    // The bar shows at the right inside the frame, and scrolling moves the text.
    void textEdit()
    {
        QGraphicsScene scene;
        auto *edit = new ZTextEdit;
        scene.addItem(edit);
        edit->resize(260, 120);
        edit->setEdit();
        QStringList lines;
        for (int i = 1; i <= 20; ++i)
            lines << QStringLiteral("<p>Line %1 with <b>bold</b> words</p>").arg(i);
        edit->setHtml(lines.join(QString()));
        const QImage top = shot(edit);
        edit->verticalScrollBar()->setValue(edit->verticalScrollBar()->maximum());
        QVERIFY(differing(top, QRect(4 + 260 - 14, 30, 12, 60), Qt::white) > 50);
        QVERIFY(shot(edit) != top);
        auto *label = new ZTextEdit;
        scene.addItem(label);
        label->setPos(0, 200);
        label->resize(260, 50);
        label->setLabel();
        label->setPlainText(QStringLiteral("A read-only note, drawn as a label."));
        QVERIFY(differing(shot(label), QRect(8, 8, 100, 12), kBackground) > 20);
    }
};

QTEST_MAIN(tst_TextSheet)
#include "tst_textsheet.moc"
