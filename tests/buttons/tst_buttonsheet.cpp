// Renders push, check and radio buttons in every state into one sheet
// (buttons-sheet.png beside the test) for a person to look at, and checks
// that every cell shows something, that the states look different where they
// should, and that no button draws outside its cell.

#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsScene>
#include <QtWidgets/QGraphicsSceneHoverEvent>
#include <QtWidgets/QGraphicsSimpleTextItem>

#include "buttons/buttontestutil.h"
#include "zcheckbutton.h"
#include "zpushbutton.h"
#include "zradiobutton.h"

namespace {

constexpr int kCaption = 150;
constexpr int kCellW = 130;
constexpr int kGap = 14;
constexpr int kHeader = 30;
const QColor kBackground(240, 240, 240);

enum Look { Normal, Hover, Pressed, Disabled, DisableWord, LookCount };
const char *const kLookNames[] = {"normal", "hover", "pressed", "disabled", "disable word"};

struct Row
{
    QString caption;
    int height;
    std::function<ZAbstractButton *()> make;
};

void show(QGraphicsScene &scene, ZAbstractButton *button, Look look)
{
    const QPointF inside(4, 4);
    switch (look) {
    case Normal:
        break;
    case Hover: {
        QGraphicsSceneHoverEvent e(QEvent::GraphicsSceneHoverEnter);
        e.setPos(inside);
        e.setScenePos(button->mapToScene(inside));
        scene.sendEvent(button, &e);
        break;
    }
    case Pressed: {
        QGraphicsSceneMouseEvent e(QEvent::GraphicsSceneMousePress);
        e.setPos(inside);
        e.setScenePos(button->mapToScene(inside));
        e.setButton(Qt::LeftButton);
        e.setButtons(Qt::LeftButton);
        scene.sendEvent(button, &e);
        break;
    }
    case Disabled:
        button->setEnabled(false);
        break;
    case DisableWord:
        // The disabled image shows only for a word without pointer bit.
        button->updateState(ZAbstractButton::StateDisable | (button->state() & ZAbstractButton::StateChecked));
        break;
    case LookCount:
        break;
    }
}

QList<Row> rows()
{
    const QString icon = QStringLiteral(":/image/theme/titleicon.png");
    const QString warning = QStringLiteral(":/image/theme/icon_message_warning.png");
    auto push = [](const std::function<void(ZPushButton *)> &setUp) {
        return [setUp]() -> ZAbstractButton * {
            auto *b = new ZPushButton;
            setUp(b);
            return b;
        };
    };
    auto check = [](bool radio, bool checked, const std::function<void(ZCheckButton *)> &setUp) {
        return [=]() -> ZAbstractButton * {
            ZCheckButton *b = radio ? new ZRadioButton : new ZCheckButton;
            b->setText(radio ? QStringLiteral("Radio") : QStringLiteral("Check"));
            setUp(b);
            b->setChecked(checked);
            return b;
        };
    };
    const auto none = [](ZCheckButton *) {};
    return {
        {QStringLiteral("push: text"), 28, push([](ZPushButton *b) { b->setText(QStringLiteral("OK")); })},
        {QStringLiteral("push: icon + text"), 28, push([icon](ZPushButton *b) {
             b->setIconPath(icon);
             b->setText(QStringLiteral("Save"));
         })},
        {QStringLiteral("push: text + icon"), 28, push([icon](ZPushButton *b) {
             b->setText(QStringLiteral("Next"));
             b->setIconPath(icon);
         })},
        {QStringLiteral("push: icon only"), 28, push([warning](ZPushButton *b) {
             b->setIconSize(110); // as wide as the button: the image centres
             b->setIconPath(warning);
         })},
        {QStringLiteral("push: vertical"), 56, push([warning](ZPushButton *b) {
             b->setOrientation(Qt::Vertical);
             b->setIconPath(warning);
             b->setText(QStringLiteral("Warn"));
             b->setIconMargins(QMargins(0, 4, 0, 0));
         })},
        {QStringLiteral("push: bold, coloured"), 28, push([](ZPushButton *b) {
             b->setText(QStringLiteral("Delete"));
             b->setTextBold(true);
             b->setTextColor(QColor(180, 30, 30));
             b->setFontSize(14);
         })},
        {QStringLiteral("check"), 24, check(false, false, none)},
        {QStringLiteral("check: checked"), 24, check(false, true, none)},
        {QStringLiteral("check: vertical"), 44, check(false, false, [](ZCheckButton *b) { b->setVertical(true); })},
        {QStringLiteral("check: reverse"), 24, check(false, true, [](ZCheckButton *b) { b->setReverseOrder(true); })},
        {QStringLiteral("check: margins"), 24,
         check(false, false, [](ZCheckButton *b) { b->setTextMargins(QMargins(6, 0, 0, 0)); })},
        {QStringLiteral("radio"), 24, check(true, false, none)},
        {QStringLiteral("radio: checked"), 24, check(true, true, none)},
        {QStringLiteral("radio: vertical"), 44, check(true, true, [](ZCheckButton *b) { b->setVertical(true); })},
        {QStringLiteral("radio: reverse"), 24, check(true, false, [](ZCheckButton *b) { b->setReverseOrder(true); })},
    };
}

} // namespace

class tst_ButtonSheet : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyCellShowsSomething();
    void statesLookDifferent();
    void nothingOutsideTheCells();

private:
    QGraphicsScene m_scene;
    QList<QRect> m_cells;            // per row, per look
    QList<bool> m_rowHasText;
    QImage m_sheet;
};

void tst_ButtonSheet::initTestCase()
{
    const QList<Row> all = rows();
    int y = kHeader;
    for (int look = 0; look < LookCount; ++look) {
        auto *title = m_scene.addSimpleText(QLatin1String(kLookNames[look]));
        title->setPos(kCaption + look * (kCellW + kGap), 8);
    }
    for (const Row &row : all) {
        auto *caption = m_scene.addSimpleText(row.caption);
        caption->setPos(8, y + (row.height - caption->boundingRect().height()) / 2);
        for (int look = 0; look < LookCount; ++look) {
            ZAbstractButton *button = row.make();
            m_scene.addItem(button);
            button->setThemePolicy(ZWidget::NoTheme);
            const QRect cell(kCaption + look * (kCellW + kGap), y, kCellW - 20, row.height);
            button->setPos(cell.topLeft());
            button->resize(cell.size());
            button->activateLayout();
            if (auto *push = qobject_cast<ZPushButton *>(button))
                push->buttonContent()->activateLayout();
            show(m_scene, button, Look(look));
            m_cells << cell;
        }
        m_rowHasText << !row.caption.contains(QLatin1String("icon only"));
        y += row.height + kGap;
    }
    QCoreApplication::processEvents();

    const QRectF area(0, 0, kCaption + LookCount * (kCellW + kGap), y);
    m_sheet = buttontest::render(m_scene, area, kBackground);
    const QString path = QCoreApplication::applicationDirPath() + QStringLiteral("/buttons-sheet.png");
    QVERIFY2(m_sheet.save(path), qPrintable(path));
    qInfo("sheet: %s", qPrintable(path));
}

void tst_ButtonSheet::everyCellShowsSomething()
{
    for (int i = 0; i < m_cells.size(); ++i) {
        const QImage cell = m_sheet.copy(m_cells[i]);
        int drawn = 0;
        for (int y = 0; y < cell.height(); ++y) {
            for (int x = 0; x < cell.width(); ++x)
                drawn += cell.pixelColor(x, y) != kBackground;
        }
        QVERIFY2(drawn > 40, qPrintable(QStringLiteral("cell %1 shows %2 pixels").arg(i).arg(drawn)));
    }
}

void tst_ButtonSheet::statesLookDifferent()
{
    for (int row = 0; row < m_rowHasText.size(); ++row) {
        const auto cell = [&](Look look) { return m_sheet.copy(m_cells[row * LookCount + look]); };
        const QImage normal = cell(Normal);
        QVERIFY2(cell(Hover) != normal, qPrintable(QStringLiteral("row %1 hover").arg(row)));
        QVERIFY2(cell(Pressed) != normal, qPrintable(QStringLiteral("row %1 pressed").arg(row)));
        // A disabled idle button keeps its normal image; only its text turns grey.
        if (m_rowHasText[row])
            QVERIFY2(cell(Disabled) != normal, qPrintable(QStringLiteral("row %1 disabled").arg(row)));
        QVERIFY2(cell(DisableWord) != normal, qPrintable(QStringLiteral("row %1 disable word").arg(row)));
        QVERIFY(cell(Hover) != cell(Pressed));
    }
}

void tst_ButtonSheet::nothingOutsideTheCells()
{
    QImage outside = m_sheet;
    QPainter painter(&outside);
    for (const QRect &cell : m_cells)
        painter.fillRect(cell, kBackground);
    painter.fillRect(QRect(0, 0, kCaption - 4, outside.height()), kBackground); // captions
    painter.fillRect(QRect(0, 0, outside.width(), kHeader - 4), kBackground);    // titles
    painter.end();
    int stray = 0;
    for (int y = 0; y < outside.height(); ++y) {
        for (int x = 0; x < outside.width(); ++x)
            stray += outside.pixelColor(x, y) != kBackground;
    }
    QCOMPARE(stray, 0);
}

QTEST_MAIN(tst_ButtonSheet)
#include "tst_buttonsheet.moc"
