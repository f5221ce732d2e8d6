// The caption: which text is shown (elided or whole) and where its ink
// lands, sizing to the text, clicks and links, hover, shadow and grey.

#include <QtTest/QtTest>
#include <QtGui/QDesktopServices>
#include <QtWidgets/QGraphicsColorizeEffect>
#include <QtWidgets/QGraphicsDropShadowEffect>

#include "common/scenetest.h"
#include "zlabel.h"
#include "ztheme.h"
#include "zxmlui.h"

using scenetest::countOf;

namespace {

const QString kLong = QStringLiteral("The quick brown fox jumps over the lazy dog");
const QChar kEllipsis(0x2026);

QFont testFont(int pixels = 14, bool bold = false)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

int textWidth(const QFont &font, const QString &text)
{
    return int(std::ceil(QFontMetricsF(font).horizontalAdvance(text)));
}

struct Fixture
{
    QGraphicsScene scene;
    ZLabel *label = new ZLabel;

    Fixture(const QSizeF &size, const QFont &font = testFont())
    {
        scene.addItem(label);
        label->setFont(font);
        label->resize(size);
    }
    QImage shot() { return scenetest::render(scene, label->size().toSize()); }
};

} // namespace

class tst_ZLabel : public QObject
{
    Q_OBJECT

public slots:
    // Stands in for the desktop's URL handler.
    void openUrl(const QUrl &url) { m_opened << url; }

private slots:
    void initTestCase() { QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "openUrl"); }
    void cleanupTestCase() { QDesktopServices::unsetUrlHandler(QStringLiteral("https")); }

    // Rows: alignment, elide mode, label width, margins; what the display text must be.
    void displayText_data()
    {
        QTest::addColumn<int>("alignment");
        QTest::addColumn<int>("elide");
        QTest::addColumn<int>("width");
        QTest::addColumn<QMargins>("margins");
        QTest::addColumn<QString>("expect"); // whole, right, left, middle
        const int left = Qt::AlignLeft | Qt::AlignVCenter, right = Qt::AlignRight | Qt::AlignVCenter;
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
    void displayText()
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
        if (expect == "whole") {
            QCOMPARE(shown, kLong);
            return;
        }
        QVERIFY(shown.size() < kLong.size());
        QVERIFY(textWidth(testFont(), shown) <= width - margins.left() - margins.right());
        const int dots = shown.indexOf(kEllipsis);
        const int at = expect == "right" ? shown.size() - 1 : expect == "left" ? 0 : dots;
        QCOMPARE(dots, at);
        if (expect == "middle")
            QVERIFY(dots > 0 && dots < shown.size() - 1);
        QVERIFY(kLong.startsWith(shown.left(dots)));
        QVERIFY(kLong.endsWith(shown.mid(dots + 1)));
    }

    // The display text is worked out again whenever one of its inputs changes.
    void displayTextFollowsChanges()
    {
        ZLabel label;
        label.setFont(testFont());
        label.setTextElidedMode(Qt::ElideRight);
        label.resize(1000, 20);
        label.setText(kLong);
        const auto elided = [&label] { return label.displayText().contains(kEllipsis); };
        QVERIFY(!elided());
        label.resize(80, 20);
        QVERIFY(elided());
        label.resize(textWidth(testFont(), kLong) + 2, 20);
        QVERIFY(!elided());
        label.setFontSize(30);
        QVERIFY(elided());
        label.setFontSize(14);
        QVERIFY(!elided());
        label.setBold(true);
        QVERIFY(elided());
        label.setBold(false);
        label.setTextMargins(QMargins(0, 0, 40, 0));
        QVERIFY(elided());
        label.setTextMargins(QMargins());
        label.resize(50, 20);
        label.setTextElidedMode(Qt::ElideNone);
        QCOMPARE(label.displayText(), kLong);
        label.setTextElidedMode(Qt::ElideLeft);
        QVERIFY(label.displayText().startsWith(kEllipsis));
        label.setTextAlignment(Qt::AlignCenter);
        QCOMPARE(label.displayText(), kLong);
    }

    // Without a horizontal flag the rule leaves the display text as it was;
    // the alignment carries the wrap flag, so a new alignment replaces both.
    void alignmentFlags()
    {
        ZLabel label;
        label.resize(500, 20);
        label.setText(QStringLiteral("first"));
        label.setTextAlignment(Qt::AlignVCenter);
        label.setText(QStringLiteral("second"));
        QCOMPARE(label.displayText(), QStringLiteral("first"));
        label.setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        QCOMPARE(label.displayText(), QStringLiteral("second"));
        label.setWordWrap(true);
        QCOMPARE(int(label.textAlignment()), int(Qt::AlignRight | Qt::AlignVCenter) | Qt::TextWordWrap);
        label.setWordWrap(false);
        QCOMPARE(label.textAlignment(), Qt::AlignRight | Qt::AlignVCenter);
        label.setWordWrap(true);
        label.setTextAlignment(Qt::AlignCenter);
        QVERIFY(!label.wordWrap());
    }

    // Where ink lands: left text is cut at the margin rectangle, centred text
    // overflowing both sides is clipped on both, wrapped text takes several lines.
    void painting_data()
    {
        QTest::addColumn<int>("alignment");
        QTest::addColumn<int>("elide");
        QTest::addColumn<QMargins>("margins");
        QTest::addColumn<QRect>("inkWithin");
        QTest::addColumn<QSize>("minInk");
        const int left = Qt::AlignLeft | Qt::AlignVCenter;
        const QRect all(0, 0, 120, 40);
        QTest::newRow("cut without marks") << left << int(Qt::ElideNone) << QMargins() << all << QSize(110, 8);
        QTest::newRow("elided") << left << int(Qt::ElideRight) << QMargins() << all << QSize(80, 8);
        QTest::newRow("inside margins") << left << int(Qt::ElideNone) << QMargins(20, 0, 30, 0) << QRect(20, 0, 70, 40) << QSize(60, 8);
        QTest::newRow("centre clipped both sides") << int(Qt::AlignCenter) << int(Qt::ElideRight) << QMargins() << all << QSize(110, 8);
        QTest::newRow("wrapped") << (left | Qt::TextWordWrap) << int(Qt::ElideRight) << QMargins() << all << QSize(80, 20);
    }
    void painting()
    {
        QFETCH(int, alignment);
        QFETCH(int, elide);
        QFETCH(QMargins, margins);
        QFETCH(QRect, inkWithin);
        QFETCH(QSize, minInk);
        Fixture f(QSizeF(120, 40));
        f.label->setTextColor(Qt::black);
        f.label->setTextMargins(margins);
        f.label->setTextAlignment(Qt::Alignment::fromInt(alignment));
        f.label->setTextElidedMode(Qt::TextElideMode(elide));
        f.label->setText(kLong);
        const QRect ink = scenetest::boundingBox(scenetest::render(f.scene, QSize(200, 60)),
                                                 [](QColor c) { return c.lightness() < 160; });
        QVERIFY2(inkWithin.contains(ink) && ink.width() >= minInk.width() && ink.height() >= minInk.height(),
                 qPrintable(QStringLiteral("%1,%2 %3x%4").arg(ink.x()).arg(ink.y()).arg(ink.width()).arg(ink.height())));
    }

    // A themed label paints the tinted text colour.
    void themedTextColour()
    {
        const QColor before = ZTheme::themeColor();
        ZTheme::setThemeColor(QColor(40, 90, 200));
        Fixture f(QSizeF(100, 40), testFont(30, true));
        f.label->setText(QStringLiteral("MM"));
        const QColor colour(200, 120, 60), themed = ZTheme::convertToThemeColor(colour);
        f.label->setTextColor(colour);
        const auto shows = [&](const QColor &c) { return countOf(f.shot(), [c](QColor p) { return p == c; }) > 20; };
        f.label->setThemePolicy(ZWidget::NoTheme);
        QVERIFY(shows(colour));
        f.label->setThemePolicy(ZWidget::HasTheme);
        f.label->clearThemeCheckFlag();
        QVERIFY(themed != colour);
        QVERIFY(shows(themed));
        QVERIFY(!shows(colour));
        ZTheme::setThemeColor(before);
    }

    // The width of the text plus margins: outside a layout the label resizes
    // itself, inside one it fixes its width (also when it joins one later).
    void autoAdjust()
    {
        ZLabel label;
        label.setFont(testFont());
        label.resize(10, 24);
        label.setTextMargins(QMargins(3, 0, 5, 0));
        label.setAutoAdjust(true);
        for (const QString &text : {QStringLiteral("short"), kLong, QStringLiteral("a")}) {
            label.setText(text);
            QCOMPARE(label.size(), QSizeF(textWidth(testFont(), text) + 8, 24));
            QCOMPARE(label.displayText(), text);
        }
        label.setFontSize(28);
        QCOMPARE(label.size().width(), qreal(textWidth(testFont(28), "a") + 8));

        QGraphicsScene scene;
        auto *parent = new ZWidget;
        scene.addItem(parent);
        parent->setLayoutType(ZWidget::HBox);
        auto *inLayout = new ZLabel;
        inLayout->setFont(testFont());
        parent->addItem(inLayout);
        inLayout->setTextMargins(QMargins(2, 0, 2, 0));
        inLayout->setAutoAdjust(true);
        for (const QString &text : {QStringLiteral("hello"), kLong}) {
            inLayout->setText(text);
            QCOMPARE(inLayout->fixWidth(), qreal(textWidth(testFont(), text) + 4));
            parent->activateLayout();
            QCOMPARE(inLayout->size().width(), qreal(textWidth(testFont(), text) + 4));
        }
        auto *late = new ZLabel;
        late->setFont(testFont());
        late->setAutoAdjust(true);
        late->setText(QStringLiteral("late"));
        QCOMPARE(late->fixWidth(), -1.0);
        parent->addItem(late);
        QCOMPARE(late->fixWidth(), qreal(textWidth(testFont(), "late")));

        // The font inherited from the scene counts once the label is polished.
        QFont big = testFont(30);
        scene.setFont(big);
        auto *inherits = new ZLabel;
        inherits->setAutoAdjust(true);
        inherits->setText(QStringLiteral("font"));
        scene.addItem(inherits);
        scenetest::settle();
        QCOMPARE(inherits->size().width(), qreal(textWidth(big, "font")));
    }

    // Without click the press is not taken; with it a release emits clicked()
    // and opens the link, if there is one.
    void clicksAndLinks()
    {
        Fixture f(QSizeF(80, 20));
        f.label->setText(QStringLiteral("link"));
        f.label->setLinkUrl(QStringLiteral("https://zkit.invalid/page"));
        QSignalSpy clicked(f.label, &ZLabel::clicked);
        m_opened.clear();
        scenetest::Mouse mouse(f.scene);
        QVERIFY(!scenetest::sendMouseTo(f.label, QEvent::GraphicsSceneMouseDoubleClick, QPointF(5, 5)));
        QVERIFY(!mouse.press(QPointF(5, 5)));
        mouse.release(QPointF(5, 5));
        QCOMPARE(clicked.size(), 0);

        f.label->setAcceptClick(true);
        QVERIFY(mouse.press(QPointF(5, 5)));
        QCOMPARE(clicked.size(), 0);
        mouse.release(QPointF(5, 5));
        QCOMPARE(clicked.size(), 1);
        QCOMPARE(m_opened, QList<QUrl>{QUrl(QStringLiteral("https://zkit.invalid/page"))});
        QVERIFY(scenetest::sendMouseTo(f.label, QEvent::GraphicsSceneMouseDoubleClick, QPointF(5, 5)));
        f.label->setLinkUrl(QString());
        mouse.click(QPointF(5, 5));
        QCOMPARE(clicked.size(), 2);
        QCOMPARE(m_opened.size(), 1);
    }

    // Hover underlines and shows a hand, each only while switched on.
    void hoverUnderlineAndCursor()
    {
        Fixture f(QSizeF(80, 20));
        ZLabel *label = f.label;
        label->setHandCursorOnHover(true);
        QVERIFY(!label->acceptHoverEvents()); // the underline switches hover on
        label->setUnderlineOnHover(true);
        scenetest::sendHoverTo(label, QEvent::GraphicsSceneHoverEnter, QPointF(5, 5));
        scenetest::sendHoverTo(label, QEvent::GraphicsSceneHoverMove, QPointF(6, 5));
        QVERIFY(label->font().underline());
        QCOMPARE(label->cursor().shape(), Qt::PointingHandCursor);
        scenetest::sendHoverTo(label, QEvent::GraphicsSceneHoverLeave, QPointF(90, 5));
        QVERIFY(!label->font().underline());
        QVERIFY(!label->hasCursor());

        label->setHandCursorOnHover(false);
        label->setCursor(Qt::IBeamCursor);
        scenetest::sendHoverTo(label, QEvent::GraphicsSceneHoverMove, QPointF(6, 5));
        QVERIFY(label->font().underline());
        scenetest::sendHoverTo(label, QEvent::GraphicsSceneHoverLeave, QPointF(90, 5));
        QCOMPARE(label->cursor().shape(), Qt::IBeamCursor);
        label->setUnderlineOnHover(false);
        QVERIFY(!label->acceptHoverEvents());
    }

    // New shadow values wait for the next time the shadow is switched on;
    // documents may give the shadow before its colour.
    void dropShadow()
    {
        ZLabel label;
        label.setShadowColor(Qt::red);
        label.setShadowOffset(QPointF(2, 3));
        label.setDropShadow(true);
        auto *shadow = qobject_cast<QGraphicsDropShadowEffect *>(label.graphicsEffect());
        QVERIFY(shadow);
        QCOMPARE(shadow->color(), QColor(Qt::red));
        QCOMPARE(shadow->offset(), QPointF(2, 3));
        label.setShadowColor(Qt::blue);
        QCOMPARE(shadow->color(), QColor(Qt::red));
        label.setDropShadow(false);
        QVERIFY(!label.graphicsEffect());
        label.setDropShadow(true);
        QCOMPARE(qobject_cast<QGraphicsDropShadowEffect *>(label.graphicsEffect())->color(), QColor(Qt::blue));

        ZWidget root;
        QVERIFY(ZXmlUI::widgetFromMemory(
            "<uitree><ZLabel objectName='s' text='x' shadow='true' shadowColor='#00ff00' shadowBlurRadius='5'/></uitree>", &root));
        shadow = qobject_cast<QGraphicsDropShadowEffect *>(qobject_cast<ZLabel *>(root.findObject("s"))->graphicsEffect());
        QVERIFY(shadow);
        QCOMPARE(shadow->color(), QColor(Qt::green));
        QCOMPARE(shadow->blurRadius(), 5.0);
    }

    // Grey while disabled; the grey stays after enabling unless there is a
    // shadow, which then comes back fresh.
    void greyWhenDisabled()
    {
        Fixture f(QSizeF(100, 40), testFont(30, true));
        f.label->setText(QStringLiteral("MM"));
        f.label->setTextColor(Qt::red);
        const auto red = [&f] { return countOf(f.shot(), [](QColor c) { return c.red() > 150 && c.green() < 100 && c.blue() < 100; }); };
        QVERIFY(red() > 20);
        f.label->setEnabled(false);
        QCOMPARE(red(), 0);
        f.label->setEnabled(true);
        QVERIFY(qobject_cast<QGraphicsColorizeEffect *>(f.label->graphicsEffect()));
        QCOMPARE(red(), 0);

        f.label->setShadowColor(Qt::blue);
        f.label->setDropShadow(false);
        f.label->setDropShadow(true);
        f.label->setEnabled(false);
        QVERIFY(qobject_cast<QGraphicsColorizeEffect *>(f.label->graphicsEffect()));
        f.label->setShadowColor(Qt::green);
        f.label->setEnabled(true);
        auto *shadow = qobject_cast<QGraphicsDropShadowEffect *>(f.label->graphicsEffect());
        QVERIFY(shadow);
        QCOMPARE(shadow->color(), QColor(Qt::green));
        QVERIFY(red() > 20);

        // Disabling through the parent greys the label too.
        auto *parent = new ZWidget;
        f.scene.addItem(parent);
        f.label->setParentItem(parent);
        parent->setEnabled(false);
        QVERIFY(qobject_cast<QGraphicsColorizeEffect *>(f.label->graphicsEffect()));
    }

    void badInput()
    {
        ZLabel label;
        const QFont before = label.font();
        label.setFontSize(0);
        label.setFontSize(-3);
        label.setFontName(QString());
        QCOMPARE(label.font(), before);
        label.setShadowBlurRadius(qQNaN());
        QCOMPARE(label.shadowBlurRadius(), 1.0);
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
        QVERIFY(label.size().width() > 0 && qIsFinite(label.size().width()));
    }

private:
    QList<QUrl> m_opened;
};

QTEST_MAIN(tst_ZLabel)
#include "tst_zlabel.moc"
