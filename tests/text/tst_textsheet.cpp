// Renders the text-input controls into /tmp/zkit-text-*.png for a person to
// look at, and checks what a look would: the field's frame shows in field
// mode and not as a label, typed text shows and a password hides it, a
// disabled field is drawn differently, a theme tints the frame, and the text
// edit's skinned bar appears beside its text.

#include "qlineeditex.h"
#include "zhotkey.h"
#include "zlineedit.h"
#include "zscrollbar.h"
#include "ztextedit.h"
#include "ztheme.h"

#include <QtGui/QPainter>
#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsScene>

namespace {

const QColor kBackground(236, 238, 241);

// The item alone, on the sheet background, at \a scale.
QImage render(QGraphicsWidget *item, qreal scale = 1)
{
    QGraphicsScene *scene = item->scene();
    const QRectF source = item->mapRectToScene(item->rect());
    QImage image((source.size() * scale).toSize() + QSize(8, 8) * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(kBackground);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    scene->render(&p, QRectF(QPointF(4, 4), source.size()), source);
    p.end();
    return image;
}

// Pixels of \a area (in logical units of \a image) that differ from \a colour by more than a little.
int differingPixels(const QImage &image, const QRect &area, const QColor &colour)
{
    int count = 0;
    const qreal s = image.devicePixelRatio();
    for (int y = int(area.top() * s); y <= int(area.bottom() * s); ++y) {
        for (int x = int(area.left() * s); x <= int(area.right() * s); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (qAbs(c.red() - colour.red()) + qAbs(c.green() - colour.green()) + qAbs(c.blue() - colour.blue()) > 24)
                ++count;
        }
    }
    return count;
}

// Stacks the images with their captions into one sheet.
QImage sheet(const QList<QPair<QString, QImage>> &rows)
{
    int width = 0;
    int height = 8;
    for (const auto &row : rows) {
        width = qMax(width, 130 + int(row.second.width() / row.second.devicePixelRatio()));
        height += int(row.second.height() / row.second.devicePixelRatio()) + 8;
    }
    QImage out(QSize(width + 8, height), QImage::Format_ARGB32_Premultiplied);
    out.fill(kBackground);
    QPainter p(&out);
    int y = 8;
    for (const auto &row : rows) {
        const int h = int(row.second.height() / row.second.devicePixelRatio());
        p.setPen(QColor(60, 60, 60));
        p.drawText(QRect(8, y, 120, h), Qt::AlignVCenter | Qt::AlignLeft, row.first);
        p.drawImage(QPointF(130, y), row.second);
        y += h + 8;
    }
    return out;
}

} // namespace

class tst_TextSheet : public QObject
{
    Q_OBJECT

private slots:
    void lineEdits()
    {
        QGraphicsScene scene;
        auto make = [&](const QString &text) {
            auto *field = new ZLineEdit;
            scene.addItem(field);
            field->setPos(0, scene.itemsBoundingRect().bottom() + 20);
            field->resize(220, 26);
            field->setTextMargins(QMargins(6, 0, 6, 0));
            field->setText(text);
            return field;
        };

        ZLineEdit *edit = make(QStringLiteral("Hello, zkit"));
        edit->setEdit();
        edit->setFocus(false);
        ZLineEdit *label = make(QStringLiteral("Hello, zkit"));
        label->setLabel();
        ZLineEdit *password = make(QStringLiteral("Hello, zkit"));
        password->setEdit();
        password->setFocus(false);
        password->setMode(QLineEdit::Password);
        ZLineEdit *disabled = make(QStringLiteral("Hello, zkit"));
        disabled->setEdit();
        disabled->setFocus(false);
        disabled->setEnabled(false);
        ZLineEdit *chinese = make(QStringLiteral("输入[1-100]区间的整数"));
        chinese->setEdit();
        chinese->setFocus(false);
        chinese->setTextColor(QColor(30, 90, 180));

        const QImage editImage = render(edit);
        const QImage labelImage = render(label);
        const QImage passwordImage = render(password);
        const QImage disabledImage = render(disabled);
        const QImage chineseImage = render(chinese);

        const QColor before = ZTheme::themeColor();
        ZTheme::setThemeColor(QColor(200, 40, 40));
        ZLineEdit *themed = make(QStringLiteral("Themed frame"));
        themed->setThemePolicy(ZWidget::HasTheme);
        themed->setEdit();
        themed->setFocus(false);
        themed->changeTheme();
        const QImage themedImage = render(themed);
        const QImage themed2x = render(themed, 2);
        ZTheme::setThemeColor(before);

        QVERIFY(sheet({{QStringLiteral("edit mode"), editImage},
                       {QStringLiteral("label mode"), labelImage},
                       {QStringLiteral("password"), passwordImage},
                       {QStringLiteral("disabled"), disabledImage},
                       {QStringLiteral("text colour"), chineseImage},
                       {QStringLiteral("theme colour"), themedImage},
                       {QStringLiteral("theme colour @2x"), themed2x}})
                    .save(QStringLiteral("/tmp/zkit-text-lineedit.png")));
        QVERIFY(themed2x.save(QStringLiteral("/tmp/zkit-text-lineedit@2x.png")));

        // The field's frame: a border line down its left edge that the label lacks.
        const QRect leftEdge(4, 10, 1, 8);
        QVERIFY(differingPixels(editImage, leftEdge, kBackground) > 0);
        QCOMPARE(differingPixels(labelImage, leftEdge, kBackground), 0);
        // Inside: white in field mode, the background as a label; text in both.
        QCOMPARE(editImage.pixelColor(200, 6), QColor(Qt::white));
        QCOMPARE(labelImage.pixelColor(200, 6), kBackground);
        const QRect textArea(10, 8, 70, 14);
        QVERIFY(differingPixels(editImage, textArea, Qt::white) > 20);
        QVERIFY(differingPixels(labelImage, textArea, kBackground) > 20);
        // A password shows something else than the letters, and disabled text looks different.
        QVERIFY(passwordImage != editImage);
        QVERIFY(differingPixels(passwordImage, textArea, Qt::white) > 5);
        QVERIFY(disabledImage != editImage);
        // The theme tints the frame's border towards red.
        const QColor plainBorder = editImage.pixelColor(4, 16);
        const QColor tinted = themedImage.pixelColor(4, 16);
        QVERIFY(plainBorder != tinted);
        QVERIFY(tinted.red() > tinted.blue());
    }

    void hotkey()
    {
        QGraphicsScene scene;
        auto *field = new ZHotkey;
        scene.addItem(field);
        field->resize(180, 26);
        const QImage initial = render(field);
        QTest::keyClick(qobject_cast<QLineEditEx *>(qobject_cast<ZLineEdit *>(field->lineEdit())->realLineEdit()),
                        Qt::Key_F5, Qt::ControlModifier | Qt::AltModifier);
        const QImage chosen = render(field);
        QVERIFY(sheet({{QStringLiteral("hot key"), initial}, {QStringLiteral("Ctrl+Alt+F5"), chosen}})
                    .save(QStringLiteral("/tmp/zkit-text-hotkey.png")));
        QVERIFY(initial != chosen);
        QVERIFY(differingPixels(chosen, QRect(4, 10, 1, 8), kBackground) > 0);
        // "Ctrl + Alt + F5" is wider than "Hotkey".
        QVERIFY(differingPixels(chosen, QRect(70, 8, 40, 14), Qt::white)
                > differingPixels(initial, QRect(70, 8, 40, 14), Qt::white));
    }

    void textEdit()
    {
        QGraphicsScene scene;
        auto *edit = new ZTextEdit;
        scene.addItem(edit);
        edit->resize(260, 120);
        edit->setEdit();
        QStringList lines;
        for (int i = 1; i <= 20; ++i)
            lines << QStringLiteral("<p>Line %1 with <b>bold</b> and <span style=\"color:#c03030\">red</span> words</p>").arg(i);
        edit->setHtml(lines.join(QString()));
        const QImage top = render(edit);
        edit->verticalScrollBar()->setValue(edit->verticalScrollBar()->maximum());
        const QImage bottom = render(edit);

        auto *label = new ZTextEdit;
        scene.addItem(label);
        label->setPos(0, 200);
        label->resize(260, 50);
        label->setLabel();
        label->setPlainText(QStringLiteral("A read-only note, drawn as a label."));
        const QImage labelImage = render(label);

        QVERIFY(sheet({{QStringLiteral("text edit"), top},
                       {QStringLiteral("scrolled down"), bottom},
                       {QStringLiteral("label mode"), labelImage}})
                    .save(QStringLiteral("/tmp/zkit-text-textedit.png")));

        // The bar shows at the right, inside the frame, and the text moved.
        QVERIFY(edit->verticalScrollBar()->isVisible());
        const QRect barArea(4 + 260 - 14, 30, 12, 60);
        QVERIFY(differingPixels(top, barArea, Qt::white) > 50);
        QVERIFY(top != bottom);
        QVERIFY(differingPixels(labelImage, QRect(8, 8, 100, 12), kBackground) > 20);
    }
};

QTEST_MAIN(tst_TextSheet)
#include "tst_textsheet.moc"
