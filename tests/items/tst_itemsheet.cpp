// Renders every image, text and shape item in a few configurations into one
// sheet (items-sheet.png and a dense items-sheet@2x.png beside the test),
// for a person to look at, and checks that each cell shows something and
// that no item draws over its neighbours.

#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsSimpleTextItem>

#include "items/itemtestutil.h"
#include "qtgradient.h"
#include "zicon.h"
#include "zimageitem.h"
#include "zlabel.h"
#include "zmaskimageitem.h"
#include "zresource.h"
#include "zshapeitem.h"
#include "ztextitem.h"

using namespace itemtest;

namespace {

constexpr int kCaption = 130;
constexpr int kCellW = 150;
constexpr int kCellH = 90;
constexpr int kGap = 24; // room for glows and shadows
constexpr int kColumns = 6;
constexpr int kRows = 6;
const QColor kBackground(246, 246, 246);

const QString kWarning = QStringLiteral(":/image/theme/messagebox_warning.png");
const QString kQuestion = QStringLiteral(":/image/theme/messagebox_question.png");
const QString kMask = QStringLiteral(":/image/theme/maskimage.png");
const QString kTitleIcon = QStringLiteral(":/image/theme/titleicon.png");
const QString kChecker = QStringLiteral(":/image/theme/checkbox_selected_normal.png");

QRect cellRect(int row, int column)
{
    return QRect(kCaption + column * (kCellW + kGap), kGap + row * (kCellH + kGap), kCellW, kCellH);
}

} // namespace

class tst_ItemSheet : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyCellShowsSomething();
    void nothingSpillsIntoTheGaps();
    void denseSheetKeepsTheLayout();
    void cleanupTestCase();

private:
    template<typename T>
    T *place(int row, int column);
    void build();
    QImage renderSheet(qreal ratio);

    QGraphicsScene m_scene;
    QSet<QPair<int, int>> m_used;
    QSet<QPair<int, int>> m_effects; // cells whose item carries a glow or shadow
    QImage m_sheet;
};

template<typename T>
T *tst_ItemSheet::place(int row, int column)
{
    auto *item = new T;
    m_scene.addItem(item);
    const QRect cell = cellRect(row, column);
    item->setPos(cell.topLeft());
    item->resize(cell.size());
    m_used.insert({row, column});
    return item;
}

void tst_ItemSheet::build()
{
    const char *captions[kRows] = {"ZImageItem", "ZMaskImageItem", "ZIcon", "ZLabel", "ZTextItem", "ZShapeItem"};
    for (int row = 0; row < kRows; ++row) {
        auto *caption = m_scene.addSimpleText(QString::fromLatin1(captions[row]));
        caption->setPos(8, cellRect(row, 0).top() + kCellH / 2 - 8);
    }

    // Image items.
    auto *image = place<ZImageItem>(0, 0);
    image->setImagePath(kWarning);
    image = place<ZImageItem>(0, 1);
    image->setImagePath(kQuestion);
    image->setAutoAdjust(true);
    image->setBorderColor(QColor(200, 40, 40));
    image->setBorderPixel(3);
    image = place<ZImageItem>(0, 2);
    image->setImagePath(kWarning);
    image->setImageAlignment(Qt::AlignTop | Qt::AlignLeft);
    image->setImageMargins(QMargins(10, 10, 10, 10));
    image->setScale(1.5);
    image = place<ZImageItem>(0, 3);
    image->setImagePath(kTitleIcon);
    image->setScale(3);
    image->setRotation(30);
    image->setBorderColor(QColor(40, 120, 200));
    image->setBorderPixel(6);
    image = place<ZImageItem>(0, 4);
    image->setImagePath(kWarning);
    image->setImageAlignment(Qt::AlignBottom | Qt::AlignRight);
    image->setHandHover(true);
    image->setEffectColor(QColor(255, 160, 0));
    sendHover(m_scene, image, QEvent::GraphicsSceneHoverEnter, QPointF(10, 10));
    m_effects.insert({0, 4});

    // Mask items: plain, cut by the skin mask, cut by a round mask of our own.
    auto *mask = place<ZMaskImageItem>(1, 0);
    mask->setImagePath(kQuestion);
    // The mask items at the mask's size, as they are meant to be used.
    mask = place<ZMaskImageItem>(1, 1);
    mask->resize(40, 40);
    mask->setImagePath(kQuestion);
    mask->setMaskImage(kMask);
    mask = place<ZMaskImageItem>(1, 2);
    mask->resize(80, 80);
    mask->setPixmap(ZResource::loadPixmap(kWarning));
    mask->setMaskImage(kMask);

    // Icons: modes and alignments.
    const QIcon icon(kWarning);
    const ZIcon::Mode modes[] = {ZIcon::Normal, ZIcon::Disabled, ZIcon::Active, ZIcon::Selected};
    for (int i = 0; i < 4; ++i) {
        auto *z = place<ZIcon>(2, i);
        z->setIcon(icon);
        z->setMode(modes[i]);
    }
    auto *corner = place<ZIcon>(2, 4);
    corner->setIcon(icon);
    corner->setIconAlignment(Qt::AlignTop | Qt::AlignRight);

    // Labels.
    const QString sentence = QStringLiteral("The quick brown fox jumps over the lazy dog");
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    auto label = [&](int column) {
        auto *l = place<ZLabel>(3, column);
        l->setFont(font);
        l->setText(sentence);
        return l;
    };
    ZLabel *l = label(0);
    l->setTextElidedMode(Qt::ElideRight);
    l = label(1);
    l->setTextAlignment(Qt::AlignCenter);
    l->setTextColor(QColor(30, 90, 170));
    l = label(2);
    l->setTextAlignment(Qt::AlignRight | Qt::AlignBottom);
    l->setTextElidedMode(Qt::ElideLeft);
    l->setTextMargins(QMargins(4, 4, 4, 4));
    l = label(3);
    l->setWordWrap(true);
    l->setBold(true);
    l = label(4);
    l->setText(QStringLiteral("Disabled, grey"));
    l->setTextColor(Qt::red);
    l->setEnabled(false);
    l = label(5);
    l->setText(QStringLiteral("Shadow"));
    l->setFontSize(26);
    l->setTextAlignment(Qt::AlignCenter);
    l->setTextColor(QColor(40, 40, 40));
    l->setShadowColor(QColor(0, 120, 255));
    l->setShadowOffset(QPointF(3, 3));
    l->setShadowBlurRadius(4);
    l->setDropShadow(true);
    m_effects.insert({3, 5});

    // Text items.
    auto *text = place<ZTextItem>(4, 0);
    text->setText(QStringLiteral("<b>Bold</b>, <i>italic</i> and a <a href=\"https://zkit.invalid\">link</a>."));
    text = place<ZTextItem>(4, 1);
    text->setText(QStringLiteral("Plain <notatag> text stays as it is."));
    text = place<ZTextItem>(4, 2);
    text->setText(sentence + QLatin1Char(' ') + sentence);
    text->setTextColor(QColor(0, 110, 60));
    text->setFontSize(15);

    // Shapes.
    auto shape = [&](int column, ZShapeItem::Shape kind) {
        auto *s = place<ZShapeItem>(5, column);
        s->setDrawShape(kind);
        s->setSmooth(true);
        s->setPenColor(QColor(20, 20, 80));
        s->setPenWidth(2);
        s->setBrushColor(QColor(120, 180, 240));
        return s;
    };
    shape(0, ZShapeItem::Rect);
    ZShapeItem *s = shape(1, ZShapeItem::RoundRect);
    s->setRoundPixel(16);
    s->setGradientBrush(QtGradient::fromString(
        QStringLiteral("Start:0,0|Final:1,1|Color:0:#ffcc00|Color:1:#cc3300")));
    s = shape(2, ZShapeItem::Ellipse);
    s->setGradientBrush(QtGradient::fromString(
        QStringLiteral("Center:0.5,0.5|Radius:0.5|Color:0:#ffffff|Color:1:#2060c0")));
    s = shape(3, ZShapeItem::Pie);
    s->setFanAngle(QSize(30 * 16, 300 * 16));
    s->setPenStyle(Qt::DashLine);
    s = shape(4, ZShapeItem::Chord);
    s->setFanAngle(QSize(0, 180 * 16));
    s->setBrushStyle(Qt::DiagCrossPattern);
    s = shape(5, ZShapeItem::RoundRect);
    s->setRoundPixel(10);
    s->setShapeMargins(QMargins(10, 10, 10, 10));
    s->setTextureBrush(kChecker);
}

QImage tst_ItemSheet::renderSheet(qreal ratio)
{
    const QSize logical(kCaption + kColumns * (kCellW + kGap), kGap + kRows * (kCellH + kGap));
    QImage image(logical * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(kBackground);
    QPainter painter(&image);
    m_scene.render(&painter, QRectF(QPointF(), logical), QRectF(QPointF(), logical));
    return image;
}

void tst_ItemSheet::initTestCase()
{
    build();
    m_sheet = renderSheet(1);
    // Run with QT_SCALE_FACTOR=2 the skin's @2x files are used: a sheet of its own.
    const QString base = QCoreApplication::applicationDirPath()
        + (qApp->devicePixelRatio() >= 2 ? QLatin1String("/items-sheet-dense-skin") : QLatin1String("/items-sheet"));
    QVERIFY(m_sheet.save(base + ".png"));
    QVERIFY(renderSheet(2).save(base + "@2x.png"));
}

void tst_ItemSheet::everyCellShowsSomething()
{
    for (const auto &cell : std::as_const(m_used)) {
        const QImage part = m_sheet.copy(cellRect(cell.first, cell.second));
        const int ink = countOf(part, [](QColor c) { return c != kBackground; });
        QVERIFY2(ink > 30, qPrintable(QStringLiteral("cell %1,%2 is empty").arg(cell.first).arg(cell.second)));
    }
}

void tst_ItemSheet::nothingSpillsIntoTheGaps()
{
    // The band around each plain cell stays background, but for a pixel of
    // glyph overhang; glows and shadows may spill.
    for (const auto &cell : std::as_const(m_used)) {
        if (m_effects.contains(cell))
            continue;
        const QRect inner = cellRect(cell.first, cell.second);
        const QRect outer = inner.adjusted(-kGap / 2 + 1, -kGap / 2 + 1, kGap / 2 - 1, kGap / 2 - 1);
        for (int y = outer.top(); y <= outer.bottom(); ++y) {
            for (int x = outer.left(); x <= outer.right(); ++x) {
                if (inner.adjusted(-1, -1, 1, 1).contains(x, y))
                    continue;
                QVERIFY2(m_sheet.pixelColor(x, y) == kBackground,
                         qPrintable(QStringLiteral("cell %1,%2 spills at %3,%4")
                                        .arg(cell.first).arg(cell.second).arg(x).arg(y)));
            }
        }
    }
}

// Dense output draws every item at the same logical place and size.
void tst_ItemSheet::denseSheetKeepsTheLayout()
{
    const QImage dense = renderSheet(2);
    const QImage halved = dense.scaled(m_sheet.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    for (const auto &cell : std::as_const(m_used)) {
        const QRect r = cellRect(cell.first, cell.second);
        const QRect a = boundingBox(m_sheet.copy(r), [](QColor c) { return qGray(c.rgb()) < 200; });
        const QRect b = boundingBox(halved.copy(r), [](QColor c) { return qGray(c.rgb()) < 200; });
        if (a.isNull())
            continue;
        QVERIFY2(qAbs(a.left() - b.left()) <= 3 && qAbs(a.right() - b.right()) <= 3 && qAbs(a.top() - b.top()) <= 3
                     && qAbs(a.bottom() - b.bottom()) <= 3,
                 qPrintable(QStringLiteral("cell %1,%2 moves").arg(cell.first).arg(cell.second)));
    }
}

void tst_ItemSheet::cleanupTestCase()
{
    m_scene.clear();
}

QTEST_MAIN(tst_ItemSheet)
#include "tst_itemsheet.moc"
