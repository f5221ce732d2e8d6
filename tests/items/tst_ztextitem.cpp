#include <QtTest/QtTest>
#include <QtGui/QDesktopServices>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtWidgets/QGraphicsTextItem>

#include "items/itemtestutil.h"
#include "ztextitem.h"

using namespace itemtest;

namespace {

const QString kLinkText = QStringLiteral("<a href=\"https://zkit.invalid/a\">linklinklink</a> plainplainplain");
const QPoint kOnLink(20, 10);
const QPoint kOnPlain(150, 10);
const QPoint kBelowText(20, 150);

} // namespace

class tst_ZTextItem : public QObject
{
    Q_OBJECT

public slots:
    void openUrl(const QUrl &url) { m_opened << url; }

private slots:
    void initTestCase();
    void cleanupTestCase();
    void setup();
    void richOrPlain_data();
    void richOrPlain();
    void richTextIsFormatted();
    void fileText();
    void colourAndFont();
    void followsWidth();
    void idealSize();
    void links_data();
    void links();
    void hoverCursor();
    void releaseOpensLink();
    void pressOnLinkDoesNotDrag();

private:
    QList<QUrl> m_opened;
};

void tst_ZTextItem::initTestCase()
{
    QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "openUrl");
}

void tst_ZTextItem::cleanupTestCase()
{
    QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
}

void tst_ZTextItem::setup()
{
    ZTextItem item;
    QVERIFY(item.flags() & QGraphicsItem::ItemHasNoContents);
    QVERIFY(item.flags() & QGraphicsItem::ItemClipsChildrenToShape);
    QCOMPARE(item.acceptedMouseButtons(), Qt::LeftButton);
    QVERIFY(item.acceptHoverEvents());

    QGraphicsTextItem *inner = item.graphicsText();
    QVERIFY(inner);
    QCOMPARE(inner->parentItem(), &item);
    QCOMPARE(item.property("edit").value<QObject *>(), inner);
    QVERIFY(!inner->openExternalLinks());
    QCOMPARE(inner->textInteractionFlags(), Qt::NoTextInteraction);
    QCOMPARE(inner->acceptedMouseButtons(), Qt::NoButton);
    QVERIFY(!inner->acceptHoverEvents());
    QCOMPARE(item.document(), inner->document());
    QVERIFY(!item.idealSizeAsMinimum());

    ZTextItem withText(QStringLiteral("hello"));
    QCOMPARE(withText.toText(), QStringLiteral("hello"));
}

void tst_ZTextItem::richOrPlain_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");

    QTest::newRow("bold tag") << "<b>bold</b> text" << "bold text";
    QTest::newRow("tag after words") << "x <i>y</i>" << "x y";
    QTest::newRow("escaped angle") << "&lt;tag&gt;" << "<tag>";
    QTest::newRow("document") << "<html><body><p>para</p></body></html>" << "para";
    QTest::newRow("comparison") << "1 < 2" << "1 < 2";
    QTest::newRow("unknown tag stays") << "<notatag>hi</notatag>" << "<notatag>hi</notatag>";
    QTest::newRow("tag after line break stays") << "first\n<b>x</b>" << "first\n<b>x</b>";
    QTest::newRow("empty") << "" << "";
}

void tst_ZTextItem::richOrPlain()
{
    QFETCH(QString, text);
    QFETCH(QString, shown);
    ZTextItem item;
    item.setText(text);
    QCOMPARE(item.toText(), shown);
    QCOMPARE(item.property("text").toString(), shown);
}

void tst_ZTextItem::richTextIsFormatted()
{
    ZTextItem item;
    item.setText(QStringLiteral("<b>bold</b> and <a href=\"https://zkit.invalid/\">link</a>"));
    const QTextBlock block = item.document()->firstBlock();
    QTextCursor cursor(item.document());
    cursor.setPosition(1);
    QCOMPARE(cursor.charFormat().fontWeight(), int(QFont::Bold));
    cursor.setPosition(7);
    QVERIFY(cursor.charFormat().fontWeight() != int(QFont::Bold));
    QVERIFY(block.text().startsWith(QStringLiteral("bold and link")));
    QVERIFY(item.toHtml().contains(QStringLiteral("https://zkit.invalid/")));

    // The same text shown plain keeps its tags.
    item.setText(QStringLiteral("plain <b"));
    QCOMPARE(item.toText(), QStringLiteral("plain <b"));
}

void tst_ZTextItem::fileText()
{
    QTemporaryDir dir(QCoreApplication::applicationDirPath() + "/textitem-XXXXXX");
    QVERIFY(dir.isValid());
    QFile file(dir.filePath("page.html"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QStringLiteral("<h1>\u00dcn\u00efc\u00f6de \u4e2d\u6587</h1>").toUtf8());
    file.close();
    QFile plain(dir.filePath("plain.txt"));
    QVERIFY(plain.open(QIODevice::WriteOnly));
    plain.write("a <= b\nline two");
    plain.close();
    const QDir appDir(QCoreApplication::applicationDirPath());

    ZTextItem item;
    const QString path = appDir.relativeFilePath(file.fileName());
    item.setFilePath(path);
    QCOMPARE(item.filePath(), path);
    QCOMPARE(item.toText(), QStringLiteral("\u00dcn\u00efc\u00f6de \u4e2d\u6587"));

    item.setProperty("file", appDir.relativeFilePath(plain.fileName()));
    QCOMPARE(item.toText(), QStringLiteral("a <= b\nline two"));

    item.setFilePath(QStringLiteral("no/such/file.txt"));
    QCOMPARE(item.filePath(), QStringLiteral("no/such/file.txt"));
    QVERIFY(item.toText().isEmpty());
}

void tst_ZTextItem::colourAndFont()
{
    QGraphicsScene scene;
    auto *item = new ZTextItem(QStringLiteral("MMMM"));
    scene.addItem(item);
    item->resize(200, 60);
    item->setTextColor(QColor(0, 128, 0));
    item->setFontSize(24);
    QCOMPARE(item->textColor(), QColor(0, 128, 0));
    QCOMPARE(item->graphicsText()->defaultTextColor(), QColor(0, 128, 0));
    QCOMPARE(item->fontSize(), 24);
    QCOMPARE(item->graphicsText()->font().pixelSize(), 24);

    const QImage image = render(scene, QSize(200, 60));
    const QRect ink = boundingBox(image, [](QColor c) { return c.green() > c.red() + 40; });
    QVERIFY(!ink.isNull());
    QVERIFY(ink.height() >= 14);

    item->setFontSize(0);
    QCOMPARE(item->fontSize(), 24);
}

void tst_ZTextItem::followsWidth()
{
    ZTextItem item(QStringLiteral("word ").repeated(40));
    item.resize(120, 300);
    QCOMPARE(item.graphicsText()->textWidth(), 120.0);
    QCOMPARE(item.graphicsText()->pos(), QPointF(0, 0));
    const qreal narrowHeight = item.graphicsText()->boundingRect().height();
    item.resize(400, 300);
    QCOMPARE(item.graphicsText()->textWidth(), 400.0);
    QVERIFY(item.graphicsText()->boundingRect().height() < narrowHeight);
}

void tst_ZTextItem::idealSize()
{
    ZTextItem item(QStringLiteral("word ").repeated(40));
    item.resize(150, 100);

    const QSizeF ideal = item.idealSize();
    QVERIFY(ideal.width() > 0 && ideal.height() > 0);
    // Asking does not change the width shown.
    QCOMPARE(item.graphicsText()->textWidth(), 150.0);
    QCOMPARE(item.idealSize(), ideal);

    const QSizeF narrow = item.hitTextSize(60);
    QCOMPARE(item.graphicsText()->textWidth(), 60.0);
    const QSizeF wide = item.hitTextSize(600);
    QVERIFY(narrow.height() > wide.height());
    QCOMPARE(wide.width(), 600.0);

    // As minimum size hint, only when asked to.
    QVERIFY(item.effectiveSizeHint(Qt::MinimumSize) != ideal);
    item.setProperty("idealSizeAsMinimun", true);
    QVERIFY(item.idealSizeAsMinimum());
    QCOMPARE(item.effectiveSizeHint(Qt::MinimumSize), ideal);
}

void tst_ZTextItem::links_data()
{
    QTest::addColumn<QPoint>("pos");
    QTest::addColumn<QString>("url");
    QTest::newRow("on the link") << kOnLink << "https://zkit.invalid/a";
    QTest::newRow("on plain text") << kOnPlain << "";
    QTest::newRow("below the text") << kBelowText << "";
    QTest::newRow("left of the text") << QPoint(-30, 10) << "";
}

void tst_ZTextItem::links()
{
    QFETCH(QPoint, pos);
    QFETCH(QString, url);
    ZTextItem item(kLinkText);
    item.resize(400, 200);
    QCOMPARE(item.urlFromPoint(pos), url);
    QCOMPARE(item.isLinkObject(pos), !url.isEmpty());
    QCOMPARE(item.cursorFromPoint(pos).isNull(), pos == kBelowText || pos.x() < 0);
}

void tst_ZTextItem::hoverCursor()
{
    QGraphicsScene scene;
    auto *item = new ZTextItem(kLinkText);
    scene.addItem(item);
    item->resize(400, 200);
    sendHover(scene, item, QEvent::GraphicsSceneHoverMove, kOnLink);
    QCOMPARE(item->cursor().shape(), Qt::PointingHandCursor);
    sendHover(scene, item, QEvent::GraphicsSceneHoverMove, kOnPlain);
    QCOMPARE(item->cursor().shape(), Qt::ArrowCursor);
    sendHover(scene, item, QEvent::GraphicsSceneHoverMove, kOnLink);
    QCOMPARE(item->cursor().shape(), Qt::PointingHandCursor);
}

void tst_ZTextItem::releaseOpensLink()
{
    QGraphicsScene scene;
    auto *item = new ZTextItem(kLinkText);
    scene.addItem(item);
    item->resize(400, 200);
    m_opened.clear();

    QVERIFY(sendMouse(scene, QEvent::GraphicsSceneMousePress, kOnPlain));
    sendMouse(scene, QEvent::GraphicsSceneMouseRelease, kOnPlain);
    QVERIFY(m_opened.isEmpty());

    QVERIFY(sendMouse(scene, QEvent::GraphicsSceneMousePress, kOnLink));
    QVERIFY(m_opened.isEmpty());
    sendMouse(scene, QEvent::GraphicsSceneMouseRelease, kOnLink);
    QCOMPARE(m_opened, QList<QUrl>{QUrl(QStringLiteral("https://zkit.invalid/a"))});

    // The link under the release counts, not the one under the press.
    sendMouse(scene, QEvent::GraphicsSceneMousePress, kOnLink);
    sendMouse(scene, QEvent::GraphicsSceneMouseRelease, kOnPlain);
    QCOMPARE(m_opened.size(), 1);
}

void tst_ZTextItem::pressOnLinkDoesNotDrag()
{
    ZTextItem item(kLinkText);
    item.resize(400, 200);
    item.setDragPolicy(ZWidget::WindowMove);
    QCOMPARE(item.hitTest(kOnLink), ZWidget::Nothing);
    QCOMPARE(item.hitTest(kOnPlain), ZWidget::WindowMove);
}

QTEST_MAIN(tst_ZTextItem)
#include "tst_ztextitem.moc"
