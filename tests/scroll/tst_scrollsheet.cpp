// Renders the scrolling controls in several states into scroll-sheet.png
// (and a dense scroll-sheet@2x.png) beside the test, for a person to look
// at, and checks what a look would: every control shows, a thumb moves with
// its value, a progress part grows with its value, and nothing spills out
// of its cell.

#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsSimpleTextItem>

#include "scroll/scrolltestutil.h"
#include "zframeitem.h"
#include "zlabel.h"
#include "zprogressbar.h"
#include "zscrollarea.h"
#include "zscrollbar.h"
#include "zscrollwidget.h"
#include "zslider.h"

using namespace scrolltest;

namespace {

constexpr int kCaption = 150;
constexpr int kCellW = 240;
constexpr int kCellH = 170;
constexpr int kGap = 16;
constexpr int kColumns = 4;
constexpr int kRows = 4;
const QColor kBackground(250, 250, 250);

QRect cellRect(int row, int column)
{
    return QRect(kCaption + column * (kCellW + kGap), kGap + row * (kCellH + kGap), kCellW, kCellH);
}

QRect sheetRect()
{
    return QRect(0, 0, kCaption + kColumns * (kCellW + kGap), kGap + kRows * (kCellH + kGap));
}

bool differs(const QImage &image, const QRect &area, const QColor &background)
{
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (image.pixelColor(x, y) != background)
                return true;
        }
    }
    return false;
}

// Columns (or rows) where two renders of one area differ.
QList<int> differingLines(const QImage &a, const QImage &b, const QRect &area, Qt::Orientation along)
{
    QList<int> lines;
    const bool vertical = along == Qt::Vertical;
    const int first = vertical ? area.top() : area.left();
    const int last = vertical ? area.bottom() : area.right();
    for (int i = first; i <= last; ++i) {
        bool diff = false;
        const int acrossFirst = vertical ? area.left() : area.top();
        const int acrossLast = vertical ? area.right() : area.bottom();
        for (int j = acrossFirst; j <= acrossLast && !diff; ++j)
            diff = vertical ? a.pixel(j, i) != b.pixel(j, i) : a.pixel(i, j) != b.pixel(i, j);
        if (diff)
            lines.append(i);
    }
    return lines;
}

} // namespace

class tst_ScrollSheet : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyControlShows();
    void thumbsFollowTheirValues();
    void progressGrowsWithItsValue();
    void nothingSpillsIntoTheGaps();
    void denseSheetKeepsTheLayout();

private:
    template<typename T>
    T *place(int row, int column, const QPointF &offset, const QSizeF &size);
    void caption(int row, const QString &text);
    void build();

    QGraphicsScene m_scene;
    QList<QPair<QGraphicsWidget *, QRect>> m_controls; // each with its cell
    ZScrollBar *m_hbars[3] = {};
    ZScrollBar *m_vbars[3] = {};
    ZProgressBar *m_progress[3] = {};
    QImage m_sheet;
};

template<typename T>
T *tst_ScrollSheet::place(int row, int column, const QPointF &offset, const QSizeF &size)
{
    auto *item = new T;
    m_scene.addItem(item);
    const QRect cell = cellRect(row, column);
    item->setPos(cell.topLeft() + offset);
    item->resize(size);
    m_controls.append({item, cell});
    return item;
}

void tst_ScrollSheet::caption(int row, const QString &text)
{
    auto *item = m_scene.addSimpleText(text);
    item->setPos(8, cellRect(row, 0).top() + 4);
}

void tst_ScrollSheet::build()
{
    m_scene.setSceneRect(sheetRect());
    m_scene.addRect(sheetRect(), Qt::NoPen, kBackground)->setZValue(-10);

    // Row 0: horizontal bars at three values, 15 thick (the default) and 14;
    // a hovered one and one whose thumb is held.
    caption(0, QStringLiteral("scroll bars:\nhorizontal 0 / 30 / 100,\nthickness 15 and 14,\nvertical 0 / 50 / 100,\nhover, thumb held"));
    const qreal values[3] = {0, 30, 100};
    for (int i = 0; i < 3; ++i) {
        auto *bar = place<ZScrollBar>(0, 0, QPointF(5, 8 + i * 26), QSizeF(230, 15));
        bar->setRange(0, 100);
        bar->setPageStep(20);
        bar->setValue(values[i]);
        m_hbars[i] = bar;
        auto *thin = place<ZScrollBar>(0, 1, QPointF(5, 8 + i * 26), QSizeF(230, 14));
        thin->setFrameThickness(14);
        thin->setRange(0, 100);
        thin->setPageStep(20);
        thin->setValue(values[i]);
    }
    for (int i = 0; i < 3; ++i) {
        auto *bar = place<ZScrollBar>(0, 2, QPointF(20 + i * 40, 5), QSizeF(15, 160));
        bar->setOrientation(Qt::Vertical);
        bar->setRange(0, 100);
        bar->setPageStep(40);
        bar->setValue(i * 50);
        m_vbars[i] = bar;
    }
    auto *hovered = place<ZScrollBar>(0, 3, QPointF(5, 8), QSizeF(230, 15));
    hovered->setRange(0, 100);
    hovered->setPageStep(20);
    hovered->setValue(50);
    auto *held = place<ZScrollBar>(0, 3, QPointF(5, 40), QSizeF(230, 15));
    held->setRange(0, 100);
    held->setPageStep(20);
    held->setValue(50);
    auto *hiddenParts = place<ZScrollBar>(0, 3, QPointF(5, 72), QSizeF(230, 15));
    hiddenParts->setRange(0, 100);
    hiddenParts->setShowFullOnHover(true);
    auto *vHovered = place<ZScrollBar>(0, 3, QPointF(20, 100), QSizeF(15, 65));
    vHovered->setOrientation(Qt::Vertical);

    // Row 1: a scroll area with content and both bars, one with the bars
    // over the content, and a scroll widget holding labels.
    caption(1, QStringLiteral("scroll areas:\nboth bars, scrolled;\ncontentUnderBar, half\nopaque; VBox widget"));
    auto *area = place<ZScrollArea>(1, 0, QPointF(10, 10), QSizeF(220, 150));
    auto *areaUnder = place<ZScrollArea>(1, 1, QPointF(10, 10), QSizeF(220, 150));
    for (ZScrollArea *a : {area, areaUnder}) {
        auto *content = new ZWidget;
        content->resize(400, 300);
        content->setBackgroundGradient(QtGradient::fromString(
            QStringLiteral("Start:0,0|Final:1,1|Color:0:#cfe3ff|Color:1:#ffe0c2")));
        for (int i = 0; i < 6; ++i) {
            auto *label = new ZLabel(content);
            label->setText(QStringLiteral("content line %1").arg(i + 1));
            label->setPos(12 + i * 20, 12 + i * 45);
            label->resize(150, 20);
        }
        a->setContentWidget(content);
        a->scrollTo(40, 30);
    }
    areaUnder->setContentUnderBar(true);
    areaUnder->setBarOpacity(0.6);
    auto *list = place<ZScrollWidget>(1, 2, QPointF(10, 10), QSizeF(220, 150));
    list->setLayoutType(ZWidget::VBox);
    list->setMargins(QMargins(6, 6, 6, 6));
    list->setSpacing(4);
    for (int i = 0; i < 9; ++i) {
        auto *label = new ZLabel;
        label->setText(QStringLiteral("row %1 of a VBox scroll widget").arg(i + 1));
        label->setFixHeight(18);
        label->setBackgroundColor(i % 2 ? QColor(235, 240, 250) : QColor(255, 255, 255));
        list->addItem(label);
    }

    // Row 2: sliders.
    caption(2, QStringLiteral("sliders:\nhorizontal 0 / 40 / 100,\nhovered thumb;\nvertical 30 / 80"));
    const qreal sliderValues[3] = {0, 40, 100};
    for (int i = 0; i < 3; ++i) {
        auto *slider = place<ZSlider>(2, 0, QPointF(10, 10 + i * 30), QSizeF(220, 16));
        slider->setValue(sliderValues[i]);
    }
    auto *hoverSlider = place<ZSlider>(2, 1, QPointF(10, 10), QSizeF(220, 16));
    hoverSlider->setValue(60);
    for (int i = 0; i < 2; ++i) {
        auto *slider = place<ZSlider>(2, 2, QPointF(30 + i * 50, 10), QSizeF(16, 150));
        slider->setOrientation(Qt::Vertical);
        slider->setValue(i ? 80 : 30);
    }

    // Row 3: progress bars, each text style, vertical ones.
    caption(3, QStringLiteral("progress bars:\n0 / 5 / 37 / 100, plain;\ntext styles 0, 1, 2;\nvertical, minSize 9"));
    const int progressValues[4] = {0, 5, 37, 100};
    for (int i = 0; i < 4; ++i) {
        auto *bar = place<ZProgressBar>(3, 0, QPointF(10, 10 + i * 24), QSizeF(220, 9));
        bar->setValue(progressValues[i]);
        if (i < 3)
            m_progress[i] = bar;
    }
    for (int style = 0; style < 3; ++style) {
        auto *bar = place<ZProgressBar>(3, 1, QPointF(10, 10 + style * 30), QSizeF(220, 20));
        bar->setValue(37);
        bar->setNumberTextStyle(style);
        bar->setTextVisible(true);
    }
    for (int i = 0; i < 3; ++i) {
        auto *bar = place<ZProgressBar>(3, 2, QPointF(20 + i * 40, 10), QSizeF(9, 150));
        bar->setOrientation(Qt::Vertical);
        bar->setValue(progressValues[i + 1]);
        bar->setMinSize(9);
    }

    // The held thumb is pressed through the scene. A scene hovers one item
    // at a time, and a press hovers what it presses, so the two hover looks
    // are set on the thumbs directly.
    qobject_cast<ZFrameItem *>(hoverSlider->thumb())->setHover();
    qobject_cast<ZFrameItem *>(hovered->slider())->setHover();
    Mouse mouse(m_scene);
    mouse.press(held->mapToScene(held->subControlRect(QStyle::SC_ScrollBarSlider).center()));
    // The lazy layouts run.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

void tst_ScrollSheet::initTestCase()
{
    build();
    m_sheet = render(m_scene, sheetRect(), 1, kBackground);
    const QString base = QCoreApplication::applicationDirPath() + QStringLiteral("/scroll-sheet");
    QVERIFY(m_sheet.save(base + QStringLiteral(".png")));
    QVERIFY(render(m_scene, sheetRect(), 2, kBackground).save(base + QStringLiteral("@2x.png")));
}

void tst_ScrollSheet::everyControlShows()
{
    for (const auto &[control, cell] : std::as_const(m_controls)) {
        const QRect r = control->sceneBoundingRect().toRect() & m_sheet.rect();
        QVERIFY2(differs(m_sheet, r, kBackground), control->metaObject()->className());
    }
}

void tst_ScrollSheet::thumbsFollowTheirValues()
{
    // Between value 0 and 30, the bars differ only where the thumb was and
    // went; between 0 and 100 the changes reach the far end of the track.
    const QRect first = m_hbars[0]->sceneBoundingRect().toRect();
    const QImage a = m_sheet.copy(first);
    const QImage b = m_sheet.copy(m_hbars[1]->sceneBoundingRect().toRect());
    const QImage c = m_sheet.copy(m_hbars[2]->sceneBoundingRect().toRect());
    const QRect local(QPoint(), first.size());
    const QList<int> to30 = differingLines(a, b, local, Qt::Horizontal);
    const QList<int> to100 = differingLines(a, c, local, Qt::Horizontal);
    QVERIFY(!to30.isEmpty());
    QVERIFY(!to100.isEmpty());
    // The line buttons stay put.
    QVERIFY(to30.first() >= 14 && to100.first() >= 14);
    QVERIFY(to100.last() < first.width() - 14);
    QVERIFY(to100.last() > to30.last());
    // The thumb at 100 ends where the track ends.
    const QRect thumb = m_hbars[2]->subControlRect(QStyle::SC_ScrollBarSlider);
    QCOMPARE(thumb.right(), first.width() - 15);

    const QImage v0 = m_sheet.copy(m_vbars[0]->sceneBoundingRect().toRect());
    const QImage v2 = m_sheet.copy(m_vbars[2]->sceneBoundingRect().toRect());
    const QList<int> down = differingLines(v0, v2, QRect(QPoint(), v0.size()), Qt::Vertical);
    QVERIFY(!down.isEmpty());
    QVERIFY(down.last() > v0.height() / 2);
}

void tst_ScrollSheet::progressGrowsWithItsValue()
{
    // Bars at 0, 5 and 37: the painted part reaches further each time.
    int previous = -1;
    for (ZProgressBar *bar : m_progress) {
        const QRect r = bar->sceneBoundingRect().toRect();
        const QImage zero = m_sheet.copy(m_progress[0]->sceneBoundingRect().toRect());
        const QImage image = m_sheet.copy(r);
        const QList<int> lines = differingLines(zero, image, QRect(QPoint(), image.size()), Qt::Horizontal);
        const int reach = lines.isEmpty() ? -1 : lines.last();
        QVERIFY2(reach >= previous, qPrintable(QString::number(reach)));
        if (bar != m_progress[0])
            QVERIFY(reach > previous);
        previous = reach;
    }
    QVERIFY(previous > 220 * 37 / 100 - 3 && previous < 220 * 37 / 100 + 3);
}

void tst_ScrollSheet::nothingSpillsIntoTheGaps()
{
    QImage gaps = m_sheet;
    QPainter painter(&gaps);
    for (int row = 0; row < kRows; ++row) {
        for (int column = 0; column < kColumns; ++column)
            painter.fillRect(cellRect(row, column), kBackground);
    }
    painter.fillRect(QRect(0, 0, kCaption, gaps.height()), kBackground);
    painter.end();
    QVERIFY(!differs(gaps, gaps.rect(), kBackground));
}

void tst_ScrollSheet::denseSheetKeepsTheLayout()
{
    // At twice the density every control sits where it sits at 1x.
    const QImage dense = render(m_scene, sheetRect(), 2, kBackground);
    const QImage scaled = dense.scaled(m_sheet.size(), Qt::IgnoreAspectRatio, Qt::FastTransformation);
    for (const auto &[control, cell] : std::as_const(m_controls)) {
        const QRect r = control->sceneBoundingRect().toRect() & m_sheet.rect();
        QVERIFY(differs(scaled, r, kBackground));
    }
}

QTEST_MAIN(tst_ScrollSheet)
#include "tst_scrollsheet.moc"
