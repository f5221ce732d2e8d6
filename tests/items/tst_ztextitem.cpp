// The rich-text item: rich or plain, text from files, following the width,
// and links under the pointer.

#include <QtTest/QtTest>
#include <QtGui/QDesktopServices>
#include <QtGui/QTextDocument>
#include <QtWidgets/QGraphicsTextItem>

#include "common/scenetest.h"
#include "ztextitem.h"

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
    void initTestCase() { QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "openUrl"); }
    void cleanupTestCase() { QDesktopServices::unsetUrlHandler(QStringLiteral("https")); }

    // Text that starts like markup is rich; anything else is shown as it is.
    void richOrPlain_data()
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
        QTest::newRow("unclosed tag stays") << "plain <b" << "plain <b";
        QTest::newRow("empty") << "" << "";
    }
    void richOrPlain()
    {
        QFETCH(QString, text);
        QFETCH(QString, shown);
        ZTextItem item;
        item.setText(text);
        QCOMPARE(item.toText(), shown);
        if (text.startsWith(QLatin1String("<b>"))) { // formatted, not just stripped
            QTextCursor cursor(item.document());
            cursor.setPosition(1);
            QCOMPARE(cursor.charFormat().fontWeight(), int(QFont::Bold));
            cursor.setPosition(7);
            QVERIFY(cursor.charFormat().fontWeight() != int(QFont::Bold));
        }
    }

    void fileText()
    {
        QTemporaryDir dir(QCoreApplication::applicationDirPath() + "/textitem-XXXXXX");
        QVERIFY(dir.isValid());
        const QDir appDir(QCoreApplication::applicationDirPath());
        const auto write = [&](const char *name, const QByteArray &bytes) {
            QFile file(dir.filePath(QLatin1String(name)));
            return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? appDir.relativeFilePath(file.fileName()) : QString();
        };
        ZTextItem item;
        item.setFilePath(write("page.html", QStringLiteral("<h1>\u00dcn\u00efc\u00f6de \u4e2d\u6587</h1>").toUtf8()));
        QCOMPARE(item.toText(), QStringLiteral("\u00dcn\u00efc\u00f6de \u4e2d\u6587"));
        item.setFilePath(write("plain.txt", "a <= b\nline two"));
        QCOMPARE(item.toText(), QStringLiteral("a <= b\nline two"));
        item.setFilePath(QStringLiteral("no/such/file.txt"));
        QCOMPARE(item.filePath(), QStringLiteral("no/such/file.txt"));
        QVERIFY(item.toText().isEmpty());
    }

    void colourAndFont()
    {
        QGraphicsScene scene;
        auto *item = new ZTextItem(QStringLiteral("MMMM"));
        scene.addItem(item);
        item->resize(200, 60);
        item->setTextColor(QColor(0, 128, 0));
        item->setFontSize(24);
        const QRect ink = scenetest::boundingBox(scenetest::render(scene, QSize(200, 60)),
                                                 [](QColor c) { return c.green() > c.red() + 40; });
        QVERIFY(ink.height() >= 14);
        item->setFontSize(0);
        QCOMPARE(item->graphicsText()->font().pixelSize(), 24);
    }

    // The text wraps at the item's width; the ideal size is asked without
    // changing it, and serves as minimum size only when asked to.
    void width()
    {
        ZTextItem item(QStringLiteral("word ").repeated(40));
        item.resize(120, 300);
        QCOMPARE(item.graphicsText()->textWidth(), 120.0);
        const qreal narrowHeight = item.graphicsText()->boundingRect().height();
        item.resize(400, 300);
        QVERIFY(item.graphicsText()->boundingRect().height() < narrowHeight);

        item.resize(150, 100);
        const QSizeF ideal = item.idealSize();
        QVERIFY(ideal.width() > 0 && ideal.height() > 0);
        QCOMPARE(item.graphicsText()->textWidth(), 150.0);
        const QSizeF narrow = item.hitTextSize(60);
        QCOMPARE(item.graphicsText()->textWidth(), 60.0);
        const QSizeF wide = item.hitTextSize(600);
        QVERIFY(narrow.height() > wide.height());
        QCOMPARE(wide.width(), 600.0);
        QVERIFY(item.effectiveSizeHint(Qt::MinimumSize) != ideal);
        item.setProperty("idealSizeAsMinimun", true);
        QCOMPARE(item.effectiveSizeHint(Qt::MinimumSize), ideal);
    }

    void links_data()
    {
        QTest::addColumn<QPoint>("pos");
        QTest::addColumn<QString>("url");
        QTest::newRow("on the link") << kOnLink << "https://zkit.invalid/a";
        QTest::newRow("on plain text") << kOnPlain << "";
        QTest::newRow("below the text") << kBelowText << "";
        QTest::newRow("left of the text") << QPoint(-30, 10) << "";
    }
    void links()
    {
        QFETCH(QPoint, pos);
        QFETCH(QString, url);
        ZTextItem item(kLinkText);
        item.resize(400, 200);
        item.setDragPolicy(ZWidget::WindowMove);
        QCOMPARE(item.urlFromPoint(pos), url);
        QCOMPARE(item.isLinkObject(pos), !url.isEmpty());
        QCOMPARE(item.cursorFromPoint(pos).isNull(), pos == kBelowText || pos.x() < 0);
        // A press on a link does not drag the window.
        if (pos == kOnLink || pos == kOnPlain)
            QCOMPARE(item.hitTest(pos), url.isEmpty() ? ZWidget::WindowMove : ZWidget::Nothing);
    }

    // A hand over links; the link under the release opens, not the one under the press.
    void pointerOnLinks()
    {
        QGraphicsScene scene;
        auto *item = new ZTextItem(kLinkText);
        scene.addItem(item);
        item->resize(400, 200);
        for (const QPoint &at : {kOnLink, kOnPlain, kOnLink}) {
            scenetest::sendHoverTo(item, QEvent::GraphicsSceneHoverMove, at);
            QCOMPARE(item->cursor().shape(), at == kOnLink ? Qt::PointingHandCursor : Qt::ArrowCursor);
        }
        m_opened.clear();
        scenetest::Mouse mouse(scene);
        QVERIFY(mouse.press(kOnPlain));
        mouse.release(kOnPlain);
        QVERIFY(m_opened.isEmpty());
        QVERIFY(mouse.press(kOnLink));
        QVERIFY(m_opened.isEmpty());
        mouse.release(kOnLink);
        QCOMPARE(m_opened, QList<QUrl>{QUrl(QStringLiteral("https://zkit.invalid/a"))});
        mouse.press(kOnLink);
        mouse.release(kOnPlain);
        QCOMPARE(m_opened.size(), 1);
    }

private:
    QList<QUrl> m_opened;
};

QTEST_MAIN(tst_ZTextItem)
#include "tst_ztextitem.moc"
