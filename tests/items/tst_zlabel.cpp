#include <QtTest/QtTest>
#include <QtGui/QDesktopServices>
#include <QtWidgets/QGraphicsColorizeEffect>
#include <QtWidgets/QGraphicsDropShadowEffect>
#include <QtWidgets/QGraphicsLinearLayout>

#include "items/itemtestutil.h"
#include "zlabel.h"
#include "ztheme.h"

using namespace itemtest;

namespace {

const QString kLong = QStringLiteral("The quick brown fox jumps over the lazy dog");
const QChar kEllipsis(0x2026);

QFont testFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(14);
    return font;
}

int textWidth(const QFont &font, const QString &text)
{
    return int(std::ceil(QFontMetricsF(font).horizontalAdvance(text)));
}

} // namespace

class tst_ZLabel : public QObject
{
    Q_OBJECT

public slots:
    // Stands in for the desktop's URL handler.
    void openUrl(const QUrl &url) { m_opened << url; }

private slots:
    void initTestCase();
    void cleanupTestCase();
    void initialState();
    void displayText_data();
    void displayText();
    void displayTextFollowsChanges();
    void unalignedTextKeepsTheOldDisplayText();
    void wordWrapFlag();
    void painting_data();
    void painting();
    void themedTextColour();
    void repaintsOnlyOnChange();
    void autoAdjustOutsideLayout();
    void autoAdjustInLayout();
    void autoAdjustToInheritedFont();
    void clicksAndLinks();
    void hoverUnderlineAndCursor();
    void dropShadow();
    void shadowAttributesAfterShadow();
    void greyWhenDisabled();
    void badInput();

private:
    QList<QUrl> m_opened;
};

void tst_ZLabel::initTestCase()
{
    QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "openUrl");
}

void tst_ZLabel::cleanupTestCase()
{
    QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
}

// The defaults that decide how a label without attributes behaves.
void tst_ZLabel::initialState()
{
    ZLabel label;
    QCOMPARE(int(label.textAlignment()), 0x81);
    QCOMPARE(label.textElidedMode(), Qt::ElideNone);
    QVERIFY(!label.acceptHoverEvents());
}

// Rows: alignment, elide mode, label width, margins; what the display text must be.
void tst_ZLabel::displayText_data()
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<int>("elide");
    QTest::addColumn<int>("width");
    QTest::addColumn<QMargins>("margins");
    QTest::addColumn<QString>("expect"); // whole, right, left, middle

    const int left = Qt::AlignLeft | Qt::AlignVCenter;
    const int right = Qt::AlignRight | Qt::AlignVCenter;
    const int centre = Qt::AlignCenter;
    QTest::newRow("left, fits") << left << int(Qt::ElideRight) << 1000 << QMargins() << "whole";
    QTest::newRow("left, elide right") << left << int(Qt::ElideRight) << 100 << QMargins() << "right";
    QTest::newRow("left, elide left") << left << int(Qt::ElideLeft) << 100 << QMargins() << "left";
    QTest::newRow("left, elide middle") << left << int(Qt::ElideMiddle) << 100 << QMargins() << "middle";
    QTest::newRow("left, no elide mode") << left << int(Qt::ElideNone) << 100 << QMargins() << "whole";
    QTest::newRow("right, elide right") << right << int(Qt::ElideRight) << 100 << QMargins() << "right";
    QTest::newRow("right, elide left") << right << int(Qt::ElideLeft) << 100 << QMargins() << "left";
    QTest::newRow("centre is never elided") << centre << int(Qt::ElideRight) << 100 << QMargins() << "whole";
    QTest::newRow("hcentre+left elides") << (centre | Qt::AlignLeft) << int(Qt::ElideRight) << 100 << QMargins() << "right";
    QTest::newRow("margins narrow it") << left << int(Qt::ElideRight) << 1000 << QMargins(500, 0, 420, 0) << "right";
    QTest::newRow("wrap is never elided") << (left | Qt::TextWordWrap) << int(Qt::ElideRight) << 100 << QMargins() << "whole";
}

void tst_ZLabel::displayText()
{
    QFETCH(int, alignment);
    QFETCH(int, elide);
    QFETCH(int, width);
    QFETCH(QMargins, margins);
    QFETCH(QString, expect);

    ZLabel label;
    label.setFont(testFont());
    label.resize(width, 20);
    label.setTextMargins(margins);
    label.setTextAlignment(Qt::Alignment::fromInt(alignment));
    label.setTextElidedMode(Qt::TextElideMode(elide));
    label.setText(kLong);

    const QString shown = label.displayText();
    QCOMPARE(label.text(), kLong);
    if (expect == "whole") {
        QCOMPARE(shown, kLong);
        return;
    }
    QVERIFY(shown.size() < kLong.size());
    QVERIFY(textWidth(testFont(), shown) <= width - margins.left() - margins.right());
    if (expect == "right") {
        QVERIFY(shown.endsWith(kEllipsis));
        QVERIFY(kLong.startsWith(shown.chopped(1)));
    } else if (expect == "left") {
        QVERIFY(shown.startsWith(kEllipsis));
        QVERIFY(kLong.endsWith(shown.mid(1)));
    } else {
        const int dots = shown.indexOf(kEllipsis);
        QVERIFY(dots > 0 && dots < shown.size() - 1);
        QVERIFY(kLong.startsWith(shown.left(dots)));
        QVERIFY(kLong.endsWith(shown.mid(dots + 1)));
    }
}

void tst_ZLabel::displayTextFollowsChanges()
{
    ZLabel label;
    label.setFont(testFont());
    label.setTextElidedMode(Qt::ElideRight);
    label.resize(1000, 20);
    label.setText(kLong);
    QCOMPARE(label.displayText(), kLong);

    label.resize(80, 20);
    QVERIFY(label.displayText().endsWith(kEllipsis));
    label.resize(1000, 20);
    QCOMPARE(label.displayText(), kLong);

    // A bigger font no longer fits.
    const int fits = textWidth(testFont(), kLong) + 2;
    label.resize(fits, 20);
    QCOMPARE(label.displayText(), kLong);
    label.setFontSize(30);
    QCOMPARE(label.fontSize(), 30);
    QVERIFY(label.displayText().endsWith(kEllipsis));
    label.setFontSize(14);
    QCOMPARE(label.displayText(), kLong);
    label.setBold(true);
    QVERIFY(label.bold());
    QVERIFY(label.displayText().endsWith(kEllipsis));
    label.setBold(false);
    QCOMPARE(label.displayText(), kLong);

    label.setTextMargins(QMargins(0, 0, 40, 0));
    QVERIFY(label.displayText().endsWith(kEllipsis));
    label.setTextMargins(QMargins());
    label.setTextElidedMode(Qt::ElideNone);
    label.resize(50, 20);
    QCOMPARE(label.displayText(), kLong);
    label.setTextElidedMode(Qt::ElideLeft);
    QVERIFY(label.displayText().startsWith(kEllipsis));
    label.setTextAlignment(Qt::AlignCenter);
    QCOMPARE(label.displayText(), kLong);
}

// Without a horizontal flag the rule leaves the display text as it was.
void tst_ZLabel::unalignedTextKeepsTheOldDisplayText()
{
    ZLabel label;
    label.resize(500, 20);
    label.setText(QStringLiteral("first"));
    label.setTextAlignment(Qt::AlignVCenter);
    label.setText(QStringLiteral("second"));
    QCOMPARE(label.displayText(), QStringLiteral("first"));
    label.setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QCOMPARE(label.displayText(), QStringLiteral("second"));
}

void tst_ZLabel::wordWrapFlag()
{
    ZLabel label;
    label.setWordWrap(true);
    QVERIFY(label.wordWrap());
    QCOMPARE(int(label.textAlignment()), 0x81 | Qt::TextWordWrap);
    label.setWordWrap(false);
    QCOMPARE(int(label.textAlignment()), 0x81);
    label.setWordWrap(true);
    // The alignment carries the flag: setting it anew replaces both.
    label.setTextAlignment(Qt::AlignCenter);
    QVERIFY(!label.wordWrap());
}

// Where ink lands: left text is cut at the margin rectangle, centred text
// overflowing both sides is clipped on both, wrapped text takes several lines.
void tst_ZLabel::painting_data()
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<int>("elide");
    QTest::addColumn<QMargins>("margins");
    QTest::addColumn<QRect>("inkWithin");
    QTest::addColumn<int>("minInkWidth");
    QTest::addColumn<int>("minInkHeight");

    const int left = Qt::AlignLeft | Qt::AlignVCenter;
    QTest::newRow("cut without marks") << left << int(Qt::ElideNone) << QMargins() << QRect(0, 0, 120, 40) << 110 << 8;
    QTest::newRow("elided") << left << int(Qt::ElideRight) << QMargins() << QRect(0, 0, 120, 40) << 80 << 8;
    QTest::newRow("inside margins") << left << int(Qt::ElideNone) << QMargins(20, 0, 30, 0) << QRect(20, 0, 70, 40) << 60 << 8;
    QTest::newRow("centre clipped both sides") << int(Qt::AlignCenter) << int(Qt::ElideRight) << QMargins()
                                               << QRect(0, 0, 120, 40) << 110 << 8;
    QTest::newRow("wrapped") << (left | Qt::TextWordWrap) << int(Qt::ElideRight) << QMargins() << QRect(0, 0, 120, 40)
                             << 80 << 20;
}

void tst_ZLabel::painting()
{
    QFETCH(int, alignment);
    QFETCH(int, elide);
    QFETCH(QMargins, margins);
    QFETCH(QRect, inkWithin);
    QFETCH(int, minInkWidth);
    QFETCH(int, minInkHeight);

    QGraphicsScene scene;
    auto *label = new ZLabel;
    scene.addItem(label);
    label->setFont(testFont());
    label->resize(120, 40);
    label->setTextColor(Qt::black);
    label->setTextMargins(margins);
    label->setTextAlignment(Qt::Alignment::fromInt(alignment));
    label->setTextElidedMode(Qt::TextElideMode(elide));
    label->setText(kLong);

    const QImage image = render(scene, QSize(200, 60));
    const QRect ink = boundingBox(image, [](QColor c) { return c.lightness() < 160; });
    QVERIFY(!ink.isNull());
    QVERIFY2(inkWithin.contains(ink),
             qPrintable(QStringLiteral("%1,%2 %3x%4").arg(ink.x()).arg(ink.y()).arg(ink.width()).arg(ink.height())));
    QVERIFY(ink.width() >= minInkWidth);
    QVERIFY(ink.height() >= minInkHeight);
}

void tst_ZLabel::themedTextColour()
{
    const QColor before = ZTheme::themeColor();
    ZTheme::setThemeColor(QColor(40, 90, 200));

    QGraphicsScene scene;
    auto *label = new ZLabel;
    scene.addItem(label);
    QFont font = testFont();
    font.setPixelSize(30);
    font.setBold(true);
    label->setFont(font);
    label->resize(100, 40);
    label->setText(QStringLiteral("MM"));
    const QColor colour(200, 120, 60);
    label->setTextColor(colour);

    const auto hasColour = [&scene](const QColor &c) {
        return countOf(render(scene, QSize(100, 40)), [c](QColor p) { return p == c; }) > 20;
    };
    label->setThemePolicy(ZWidget::NoTheme);
    QVERIFY(hasColour(colour));
    label->setThemePolicy(ZWidget::HasTheme);
    label->clearThemeCheckFlag();
    const QColor themed = ZTheme::convertToThemeColor(colour);
    QVERIFY(themed != colour);
    QVERIFY(hasColour(themed));
    QVERIFY(!hasColour(colour));

    ZTheme::setThemeColor(before);
}

void tst_ZLabel::repaintsOnlyOnChange()
{
    QGraphicsScene scene;
    auto *label = new ZLabel;
    scene.addItem(label);
    label->resize(100, 20);
    label->setText(QStringLiteral("x"));
    label->setTextColor(Qt::red);
    QCoreApplication::processEvents();

    QSignalSpy changed(&scene, &QGraphicsScene::changed);
    label->setTextColor(Qt::red);
    label->setText(QStringLiteral("x"));
    label->setTextAlignment(label->textAlignment());
    QCoreApplication::processEvents();
    QCOMPARE(changed.size(), 0);

    label->setTextColor(Qt::blue);
    QCoreApplication::processEvents();
    QCOMPARE(changed.size(), 1);
}

void tst_ZLabel::autoAdjustOutsideLayout()
{
    ZLabel label;
    label.setFont(testFont());
    label.resize(10, 24);
    label.setTextMargins(QMargins(3, 0, 5, 0));
    label.setAutoAdjust(true);
    label.setText(QStringLiteral("short"));
    QCOMPARE(label.size(), QSizeF(textWidth(testFont(), "short") + 8, 24));

    label.setText(kLong);
    QCOMPARE(label.size().width(), qreal(textWidth(testFont(), kLong) + 8));
    QCOMPARE(label.displayText(), kLong);

    label.setText(QStringLiteral("a"));
    QCOMPARE(label.size().width(), qreal(textWidth(testFont(), "a") + 8));
    QCOMPARE(label.size().height(), 24.0);

    // The font counts too.
    label.setFontSize(28);
    QFont big = testFont();
    big.setPixelSize(28);
    QCOMPARE(label.size().width(), qreal(textWidth(big, "a") + 8));
}

void tst_ZLabel::autoAdjustInLayout()
{
    QGraphicsScene scene;
    auto *parent = new ZWidget;
    scene.addItem(parent);
    parent->setLayoutType(ZWidget::HBox);
    auto *label = new ZLabel;
    label->setFont(testFont());
    parent->addItem(label);
    label->setTextMargins(QMargins(2, 0, 2, 0));
    label->setAutoAdjust(true);
    label->setText(QStringLiteral("hello"));

    const qreal w = textWidth(testFont(), "hello") + 4;
    QCOMPARE(label->fixWidth(), w);
    QCOMPARE(label->minimumWidth(), w);
    QCOMPARE(label->maximumWidth(), w);
    parent->activateLayout();
    QCOMPARE(label->size().width(), w);

    label->setText(kLong);
    const qreal longer = textWidth(testFont(), kLong) + 4;
    QCOMPARE(label->fixWidth(), longer);
    parent->activateLayout();
    QCOMPARE(label->size().width(), longer);

    // A label sized before it joins a layout fixes its width when it does.
    auto *late = new ZLabel;
    late->setFont(testFont());
    late->setAutoAdjust(true);
    late->setText(QStringLiteral("late"));
    QCOMPARE(late->fixWidth(), -1.0);
    parent->addItem(late);
    QCOMPARE(late->fixWidth(), qreal(textWidth(testFont(), "late")));
}

void tst_ZLabel::autoAdjustToInheritedFont()
{
    QGraphicsScene scene;
    QFont big = testFont();
    big.setPixelSize(30);
    scene.setFont(big);
    auto *label = new ZLabel;
    label->setAutoAdjust(true);
    label->setText(QStringLiteral("font"));
    scene.addItem(label);
    QCoreApplication::processEvents(); // polishes
    QCOMPARE(label->size().width(), qreal(textWidth(big, "font")));
}

void tst_ZLabel::clicksAndLinks()
{
    QGraphicsScene scene;
    auto *label = new ZLabel;
    scene.addItem(label);
    label->resize(80, 20);
    label->setText(QStringLiteral("link"));
    label->setLinkUrl(QStringLiteral("https://zkit.invalid/page"));
    QSignalSpy clicked(label, &ZLabel::clicked);
    m_opened.clear();

    // Without click the press is not taken, so no release comes.
    QVERIFY(!sendMouseTo(scene, label, QEvent::GraphicsSceneMousePress, QPointF(5, 5)));
    QVERIFY(!sendMouseTo(scene, label, QEvent::GraphicsSceneMouseDoubleClick, QPointF(5, 5)));
    QVERIFY(!sendMouse(scene, QEvent::GraphicsSceneMousePress, QPointF(5, 5)));
    sendMouse(scene, QEvent::GraphicsSceneMouseRelease, QPointF(5, 5));
    QCOMPARE(clicked.size(), 0);
    QVERIFY(m_opened.isEmpty());

    label->setAcceptClick(true);
    QVERIFY(sendMouse(scene, QEvent::GraphicsSceneMousePress, QPointF(5, 5)));
    QCOMPARE(clicked.size(), 0);
    sendMouse(scene, QEvent::GraphicsSceneMouseRelease, QPointF(5, 5));
    QCOMPARE(clicked.size(), 1);
    QCOMPARE(m_opened, QList<QUrl>{QUrl(QStringLiteral("https://zkit.invalid/page"))});
    QVERIFY(sendMouseTo(scene, label, QEvent::GraphicsSceneMouseDoubleClick, QPointF(5, 5)));

    // No link: clicked() alone.
    label->setLinkUrl(QString());
    sendMouse(scene, QEvent::GraphicsSceneMousePress, QPointF(5, 5));
    sendMouse(scene, QEvent::GraphicsSceneMouseRelease, QPointF(5, 5));
    QCOMPARE(clicked.size(), 2);
    QCOMPARE(m_opened.size(), 1);
}

void tst_ZLabel::hoverUnderlineAndCursor()
{
    QGraphicsScene scene;
    auto *label = new ZLabel;
    scene.addItem(label);
    label->resize(80, 20);

    label->setHandCursorOnHover(true);
    QVERIFY(!label->acceptHoverEvents());
    label->setUnderlineOnHover(true);
    QVERIFY(label->acceptHoverEvents());

    sendHover(scene, label, QEvent::GraphicsSceneHoverEnter, QPointF(5, 5));
    sendHover(scene, label, QEvent::GraphicsSceneHoverMove, QPointF(6, 5));
    QVERIFY(label->font().underline());
    QVERIFY(label->hasCursor());
    QCOMPARE(label->cursor().shape(), Qt::PointingHandCursor);

    sendHover(scene, label, QEvent::GraphicsSceneHoverLeave, QPointF(90, 5));
    QVERIFY(!label->font().underline());
    QVERIFY(!label->hasCursor());

    // Only what is switched on changes.
    label->setHandCursorOnHover(false);
    label->setCursor(Qt::IBeamCursor);
    sendHover(scene, label, QEvent::GraphicsSceneHoverMove, QPointF(6, 5));
    QVERIFY(label->font().underline());
    QCOMPARE(label->cursor().shape(), Qt::IBeamCursor);
    sendHover(scene, label, QEvent::GraphicsSceneHoverLeave, QPointF(90, 5));
    QCOMPARE(label->cursor().shape(), Qt::IBeamCursor);

    label->setUnderlineOnHover(false);
    QVERIFY(!label->acceptHoverEvents());
    sendHover(scene, label, QEvent::GraphicsSceneHoverMove, QPointF(6, 5));
    QVERIFY(!label->font().underline());
}

void tst_ZLabel::dropShadow()
{
    ZLabel label;
    label.setShadowColor(Qt::red);
    label.setShadowOffset(QPointF(2, 3));
    label.setShadowBlurRadius(4);
    label.setDropShadow(true);
    QVERIFY(label.dropShadow());
    auto *shadow = qobject_cast<QGraphicsDropShadowEffect *>(label.graphicsEffect());
    QVERIFY(shadow);
    QCOMPARE(shadow->color(), QColor(Qt::red));
    QCOMPARE(shadow->offset(), QPointF(2, 3));
    QCOMPARE(shadow->blurRadius(), 4.0);
    QCOMPARE(shadow->parent(), &label);

    // New values wait for the next time the shadow is switched on.
    label.setShadowColor(Qt::blue);
    QCOMPARE(shadow->color(), QColor(Qt::red));
    label.setDropShadow(false);
    QVERIFY(!label.dropShadow());
    QVERIFY(!label.graphicsEffect());
    label.setDropShadow(true);
    shadow = qobject_cast<QGraphicsDropShadowEffect *>(label.graphicsEffect());
    QVERIFY(shadow);
    QCOMPARE(shadow->color(), QColor(Qt::blue));
}

// Documents may give the shadow before its colour; construct() applies what is set by then.
void tst_ZLabel::shadowAttributesAfterShadow()
{
    ZLabel label;
    label.setProperty("shadow", true);
    label.setProperty("shadowColor", QColor(Qt::green));
    label.setProperty("shadowBlurRadius", 6.0);
    label.construct();
    auto *shadow = qobject_cast<QGraphicsDropShadowEffect *>(label.graphicsEffect());
    QVERIFY(shadow);
    QCOMPARE(shadow->color(), QColor(Qt::green));
    QCOMPARE(shadow->blurRadius(), 6.0);
}

void tst_ZLabel::greyWhenDisabled()
{
    QGraphicsScene scene;
    auto *label = new ZLabel;
    scene.addItem(label);
    QFont font = testFont();
    font.setPixelSize(30);
    font.setBold(true);
    label->setFont(font);
    label->resize(100, 40);
    label->setText(QStringLiteral("MM"));
    label->setTextColor(Qt::red);
    const auto reddish = [](QColor c) { return c.red() > 150 && c.green() < 100 && c.blue() < 100; };
    QVERIFY(countOf(render(scene, QSize(100, 40)), reddish) > 20);

    label->setEnabled(false);
    auto *grey = qobject_cast<QGraphicsColorizeEffect *>(label->graphicsEffect());
    QVERIFY(grey);
    QCOMPARE(grey->color(), QColor(Qt::gray));
    QCOMPARE(countOf(render(scene, QSize(100, 40)), reddish), 0);

    // Without a shadow the grey stays after enabling.
    label->setEnabled(true);
    QVERIFY(label->isEnabled());
    QVERIFY(qobject_cast<QGraphicsColorizeEffect *>(label->graphicsEffect()));
    QCOMPARE(countOf(render(scene, QSize(100, 40)), reddish), 0);

    // With a shadow, disabling replaces it and enabling brings a fresh one.
    label->setShadowColor(Qt::blue);
    label->setDropShadow(false);
    label->setDropShadow(true);
    label->setEnabled(false);
    QVERIFY(qobject_cast<QGraphicsColorizeEffect *>(label->graphicsEffect()));
    label->setShadowColor(Qt::green);
    label->setEnabled(true);
    auto *shadow = qobject_cast<QGraphicsDropShadowEffect *>(label->graphicsEffect());
    QVERIFY(shadow);
    QCOMPARE(shadow->color(), QColor(Qt::green));
    QVERIFY(countOf(render(scene, QSize(100, 40)), reddish) > 20);

    // Disabling through the parent greys the label too.
    auto *parent = new ZWidget;
    scene.addItem(parent);
    label->setParentItem(parent);
    parent->setEnabled(false);
    QVERIFY(qobject_cast<QGraphicsColorizeEffect *>(label->graphicsEffect()));
}

void tst_ZLabel::badInput()
{
    ZLabel label;
    const QFont before = label.font();
    label.setFontSize(0);
    label.setFontSize(-3);
    label.setFontName(QString());
    QCOMPARE(label.font(), before);
    label.setShadowBlurRadius(std::numeric_limits<qreal>::quiet_NaN());
    QCOMPARE(label.shadowBlurRadius(), 1.0);

    // Huge texts, empty and negative widths.
    label.setTextElidedMode(Qt::ElideRight);
    label.resize(0, 0);
    label.setTextMargins(QMargins(50, 0, 50, 0));
    const QString huge(200000, QLatin1Char('x'));
    label.setText(huge);
    QVERIFY(label.displayText().size() <= 1);
    label.setText(QString());
    QVERIFY(label.displayText().isEmpty());

    label.setTextMargins(QMargins());
    label.setAutoAdjust(true);
    label.setText(huge);
    QVERIFY(label.size().width() > 0);
    QVERIFY(qIsFinite(label.size().width()));
}

QTEST_MAIN(tst_ZLabel)
#include "tst_zlabel.moc"
