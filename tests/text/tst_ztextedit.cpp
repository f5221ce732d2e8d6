// The rich text edit: plain and HTML round trips, the field and label modes,
// the shared editing menu with its enabling rules, and the skinned scroll
// bars following the editor's own both ways.

#include "zframeitem.h"
#include "zscrollbar.h"
#include "zspacer.h"
#include "ztextedit.h"
#include "zxmlui.h"

#include "texttestutil.h"
#include "window/dialogtestutil.h"

#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsProxyWidget>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTextEdit>

using texttest::ActiveScene;
using texttest::MenuProbe;

namespace {

struct TextField
{
    TextField()
        : edit(*new ZTextEdit)
    {
        scene.addItem(&edit);
        edit.resize(200, 100);
    }

    QTextEdit *editor() const { return qobject_cast<QTextEdit *>(edit.realTextEdit()); }
    QGraphicsProxyWidget *proxy() const { return editor()->graphicsProxyWidget(); }
    void select(int from, int to)
    {
        QTextCursor c = editor()->textCursor();
        c.setPosition(from);
        c.setPosition(to, QTextCursor::KeepAnchor);
        editor()->setTextCursor(c);
    }

    ActiveScene scene; // owns the field
    ZTextEdit &edit;
};

QString lines(int count)
{
    QStringList out;
    for (int i = 0; i < count; ++i)
        out << QStringLiteral("line %1").arg(i);
    return out.join(QLatin1Char('\n'));
}

} // namespace

class tst_ZTextEdit : public QObject
{
    Q_OBJECT

private slots:
    void init() { QGuiApplication::clipboard()->clear(); }

    void plainRoundTrip_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << "";
        QTest::newRow("one line") << "one line";
        QTest::newRow("lines") << "first\nsecond\n\nfourth";
        QTest::newRow("markup stays text") << "<b>not bold</b> &amp;";
        QTest::newRow("chinese") << "提示：确认";
        QTest::newRow("spaces and tabs") << "  a\tb  ";
    }

    void plainRoundTrip()
    {
        QFETCH(QString, text);
        TextField f;
        QSignalSpy changed(&f.edit, &ZTextEdit::textChanged);
        QVERIFY(ZXmlUI::setPropertyEx(&f.edit, "plainText", text.toUtf8().constData()));
        QCOMPARE(f.edit.plainText(), text);
        QVERIFY(changed.count() >= 1);

        // Through HTML and back the text is the same.
        TextField g;
        g.edit.setHtml(f.edit.html());
        QCOMPARE(g.edit.plainText(), text);
    }

    void htmlRoundTrip_data()
    {
        QTest::addColumn<QString>("html");
        QTest::addColumn<QString>("plain");
        QTest::addColumn<int>("boldAt"); // a position inside bold text, or -1
        QTest::newRow("bold") << "<b>bold</b> plain" << "bold plain" << 2;
        QTest::newRow("paragraphs") << "<p>one</p><p>two</p>" << "one\ntwo" << -1;
        QTest::newRow("entities") << "a &lt; b &amp; c" << "a < b & c" << -1;
        QTest::newRow("nested") << "x<span style=\"font-weight:700\">yz</span>" << "xyz" << 2;
        QTest::newRow("broken markup") << "<b>open <i>never closed" << "open never closed" << 1;
    }

    void htmlRoundTrip()
    {
        QFETCH(QString, html);
        QFETCH(QString, plain);
        QFETCH(int, boldAt);
        TextField f;
        f.edit.setHtml(html);
        QCOMPARE(f.edit.plainText(), plain);

        TextField g;
        QVERIFY(g.edit.setProperty("html", f.edit.html()));
        QCOMPARE(g.edit.plainText(), plain);
        if (boldAt >= 0) {
            QTextCursor c(g.editor()->document());
            c.setPosition(boldAt + 1);
            QCOMPARE(c.charFormat().fontWeight(), int(QFont::Bold));
        }
        QTextCursor start(g.editor()->document());
        start.setPosition(1);
        QCOMPARE(start.charFormat().fontWeight() == QFont::Bold, html.startsWith(QLatin1String("<b>")));
    }

    void appendAndClear()
    {
        TextField f;
        f.edit.setPlainText(QStringLiteral("a"));
        f.edit.append(QStringLiteral("b"));
        QCOMPARE(f.edit.plainText(), QStringLiteral("a\nb"));
        f.edit.clear();
        QCOMPARE(f.edit.plainText(), QString());
    }

    void modes()
    {
        TextField f;
        f.edit.setLabel();
        QVERIFY(f.edit.isReadOnly());
        QCOMPARE(f.proxy()->acceptedMouseButtons(), Qt::MouseButtons());
        QCOMPARE(f.edit.dragPolicy(), ZWidget::AskParent);
        QCOMPARE(f.edit.backgroundColor(), QColor(0, 0, 0, 0));
        QVERIFY(!f.edit.hasFrame());
        // Still selectable as text.
        QVERIFY(f.editor()->textInteractionFlags() & Qt::TextSelectableByMouse);

        f.edit.setEdit();
        QVERIFY(!f.edit.isReadOnly());
        QCOMPARE(f.editor()->textInteractionFlags(), Qt::TextEditorInteraction);
        QCOMPARE(f.proxy()->acceptedMouseButtons(), Qt::LeftButton | Qt::RightButton);
        QCOMPARE(f.edit.dragPolicy(), ZWidget::Nothing);
        QCOMPARE(f.edit.backgroundColor(), QColor(255, 255, 255, 255));
        QVERIFY(f.edit.hasFrame());
        QCOMPARE(f.edit.frameImage(), QStringLiteral(":/image/theme/lineedit.png"));
        QCOMPARE(qobject_cast<ZFrameItem *>(f.edit.frame())->frameType(), ZFrameItem::GridFour);
        QVERIFY(f.editor()->hasFocus());

        // Typing reaches the document in field mode.
        QTest::keyClicks(f.editor(), QStringLiteral("hi"));
        QCOMPARE(f.edit.plainText(), QStringLiteral("hi"));
    }

    void badValues()
    {
        TextField f;
        f.edit.setFontSize(13);
        f.edit.setFontSize(0);
        QCOMPARE(f.edit.fontSize(), 13);
        f.edit.setDocumentMargin(6);
        f.edit.setDocumentMargin(-1);
        f.edit.setDocumentMargin(qQNaN());
        QCOMPARE(f.edit.documentMargin(), 6.0);
        f.edit.setTextColor(QColor(9, 8, 7));
        f.edit.setTextColor(QColor());
        QCOMPARE(f.edit.textColor(), QColor(9, 8, 7));
        f.edit.setBarThickness(-4);
        QCOMPARE(f.edit.barThickness(), int(ZTextEdit::DefaultBarThickness));
        f.edit.setFrameImage(QString());
        QVERIFY(!f.edit.frame());
        f.edit.resize(0, 0);
        f.edit.setPlainText(lines(50));
        f.edit.resize(3, 3);
        f.edit.resize(200, 100);
        QVERIFY(f.edit.verticalScrollBar()->isVisible());
    }

    // ---- menu ---------------------------------------------------------------

    // Visible and enabled per entry, in the order Undo Redo Cut Copy Paste Delete SelectAll;
    // "-" for the enabled state of a hidden entry.
    void menuRules_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("readOnly");
        QTest::addColumn<int>("from"); // -1: no selection
        QTest::addColumn<int>("to");
        QTest::addColumn<QString>("clipboard");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("visible");
        QTest::addColumn<QString>("enabled");

        QTest::newRow("empty") << "" << false << -1 << 0 << "" << "" << "1111110" << "000000-";
        QTest::newRow("text, clipboard") << "hello" << false << -1 << 0 << "c" << "" << "1111111" << "0000101";
        QTest::newRow("part selected") << "hello" << false << 1 << 3 << "" << "" << "1111111" << "0011011";
        QTest::newRow("all selected") << "hello" << false << 0 << 5 << "c" << "" << "1111110" << "001111-";
        QTest::newRow("all of two lines") << "ab\ncd" << false << 0 << 5 << "" << "" << "1111110" << "001101-";
        QTest::newRow("first line only") << "ab\ncd" << false << 0 << 2 << "" << "" << "1111111" << "0011011";
        QTest::newRow("read-only part") << "hello" << true << 1 << 3 << "c" << "" << "0001001" << "---1--1";
        QTest::newRow("typed") << "" << false << -1 << 0 << "" << "xy" << "1111111" << "1000001";
    }

    void menuRules()
    {
        QFETCH(QString, text);
        QFETCH(bool, readOnly);
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(QString, clipboard);
        QFETCH(QString, typed);
        QFETCH(QString, visible);
        QFETCH(QString, enabled);

        TextField f;
        f.edit.setPlainText(text);
        if (!typed.isEmpty())
            f.editor()->insertPlainText(typed);
        f.edit.setReadOnly(readOnly);
        if (from >= 0)
            f.select(from, to);
        if (!clipboard.isEmpty())
            QGuiApplication::clipboard()->setText(clipboard);

        MenuProbe probe;
        texttest::requestContextMenu(&f.edit);
        QVERIFY(probe.sawMenu);
        QString seenVisible;
        QString seenEnabled;
        for (const texttest::MenuEntry &e : std::as_const(probe.entries)) {
            if (e.separator) {
                QCOMPARE(e.visible, !readOnly);
                continue;
            }
            seenVisible += e.visible ? QLatin1Char('1') : QLatin1Char('0');
            seenEnabled += !e.visible ? QLatin1Char('-') : e.enabled ? QLatin1Char('1') : QLatin1Char('0');
        }
        QCOMPARE(seenVisible, visible);
        QCOMPARE(seenEnabled, enabled);
    }

    // The same entries as the line edit's, in both languages.
    void menuTexts()
    {
        TextField f;
        MenuProbe english;
        texttest::requestContextMenu(&f.edit);
        QCOMPARE(english.texts().size(), 7);
        QCOMPARE(english.texts().at(0),
                 QStringLiteral("&Undo\t") + QKeySequence(QKeySequence::Undo).toString(QKeySequence::NativeText));
        QCOMPARE(english.texts().at(5), QStringLiteral("Delete"));

        QVERIFY(ZXmlUI::setPropertyEx(&f.edit, "chineseContextMenu", "true"));
        MenuProbe chinese;
        texttest::requestContextMenu(&f.edit);
        QCOMPARE(chinese.texts(), (QStringList{QStringLiteral("撤销"), QStringLiteral("重复"), QStringLiteral("剪切"),
                                               QStringLiteral("复制"), QStringLiteral("粘贴"), QStringLiteral("清空"),
                                               QStringLiteral("选择全部")}));

        f.edit.setContextMenu(false);
        MenuProbe none;
        texttest::requestContextMenu(&f.edit);
        QTest::qWait(20);
        QVERIFY(!none.sawMenu);
    }

    void menuActions_data()
    {
        QTest::addColumn<QString>("pick");
        QTest::addColumn<QString>("expectedText");
        QTest::addColumn<QString>("expectedClipboard");
        // From "hello\nworld" with "ello" selected and "clip" on the clipboard.
        QTest::newRow("cut") << "Cu&t" << "h\nworld" << "ello";
        QTest::newRow("copy") << "&Copy" << "hello\nworld" << "ello";
        QTest::newRow("paste") << "&Paste" << "hclip\nworld" << "clip";
        QTest::newRow("delete clears everything") << "Delete" << "" << "clip";
        QTest::newRow("chinese delete") << "清空" << "" << "clip";
        QTest::newRow("dismissed") << "" << "hello\nworld" << "clip";
    }

    void menuActions()
    {
        QFETCH(QString, pick);
        QFETCH(QString, expectedText);
        QFETCH(QString, expectedClipboard);
        TextField f;
        f.edit.setChineseContextMenu(!pick.isEmpty() && pick.at(0).unicode() > 0x7f);
        f.edit.setPlainText(QStringLiteral("hello\nworld"));
        f.select(1, 5);
        QGuiApplication::clipboard()->setText(QStringLiteral("clip"));
        MenuProbe probe(pick);
        texttest::requestContextMenu(&f.edit);
        QVERIFY(probe.sawMenu);
        QCOMPARE(f.edit.plainText(), expectedText);
        QCOMPARE(QGuiApplication::clipboard()->text(), expectedClipboard);
    }

    void menuSelectAllAndUndo()
    {
        TextField f;
        f.edit.setPlainText(QStringLiteral("ab\ncd"));
        MenuProbe all(QStringLiteral("Select All"));
        texttest::requestContextMenu(&f.edit);
        QCOMPARE(f.editor()->textCursor().selectedText(), QStringLiteral("ab") + QChar(QChar::ParagraphSeparator) + "cd");

        f.editor()->moveCursor(QTextCursor::End);
        f.editor()->insertPlainText(QStringLiteral("!"));
        MenuProbe undo(QStringLiteral("&Undo"));
        texttest::requestContextMenu(&f.edit);
        QCOMPARE(f.edit.plainText(), QStringLiteral("ab\ncd"));
        MenuProbe redo(QStringLiteral("&Redo"));
        texttest::requestContextMenu(&f.edit);
        QCOMPARE(f.edit.plainText(), QStringLiteral("ab\ncd!"));
    }

    // ---- scroll bars --------------------------------------------------------

    void barsFollowEditor()
    {
        TextField f;
        f.edit.setFrame(true);
        ZScrollBar *bar = f.edit.verticalScrollBar();
        QScrollBar *native = f.editor()->verticalScrollBar();
        QVERIFY(!bar->isVisible());
        QVERIFY(!native->isVisible());
        QCOMPARE(f.proxy()->geometry().width(), 200.0);

        f.edit.setPlainText(lines(60));
        QVERIFY(native->maximum() > 0);
        QVERIFY(bar->isVisible());
        QVERIFY(!native->isVisible());
        QCOMPARE(bar->maximum(), qreal(native->maximum()));
        QCOMPARE(bar->minimum(), qreal(native->minimum()));
        QCOMPARE(bar->pageStep(), qreal(native->pageStep()));
        QCOMPARE(bar->singleStep(), qreal(native->singleStep()));
        // Inside the frame's border, beside the text.
        const int t = ZTextEdit::DefaultBarThickness;
        QCOMPARE(bar->geometry(), QRectF(199 - t, 1, t, 98));
        QCOMPARE(f.proxy()->geometry().width(), qreal(199 - t));

        native->setValue(native->maximum() / 2);
        QCOMPARE(bar->value(), qreal(native->maximum() / 2));

        bar->setValue(bar->maximum());
        QCOMPARE(native->value(), native->maximum());
        bar->setValue(7.6);
        QCOMPARE(native->value(), 8);

        // The bar's page follows the height of the text.
        const int page = native->pageStep();
        f.edit.resize(200, 60);
        QVERIFY(native->pageStep() < page);
        QCOMPARE(bar->pageStep(), qreal(native->pageStep()));
        QCOMPARE(bar->maximum(), qreal(native->maximum()));

        // Nothing left to scroll: the bar goes, the text takes the width again.
        f.edit.setPlainText(QStringLiteral("short"));
        QVERIFY(!bar->isVisible());
        QCOMPARE(f.proxy()->geometry().width(), 200.0);
    }

    // A click on the bar's down button scrolls the text.
    void clickOnBarScrollsText()
    {
        TextField f;
        f.edit.setPlainText(lines(60));
        ZScrollBar *bar = f.edit.verticalScrollBar();
        QScrollBar *native = f.editor()->verticalScrollBar();
        auto *down = qobject_cast<QGraphicsItem *>(qobject_cast<QGraphicsObject *>(bar->lineAdd()));
        QVERIFY(down);
        const QPointF at = down->mapToScene(down->boundingRect().center());
        dialogtest::sendMouse(&f.scene, QEvent::GraphicsSceneMousePress, at);
        dialogtest::sendMouse(&f.scene, QEvent::GraphicsSceneMouseRelease, at);
        QVERIFY(native->value() > 0);
        QCOMPARE(bar->value(), qreal(native->value()));
    }

    void horizontalBarWithoutWrap()
    {
        TextField f;
        ZScrollBar *hbar = f.edit.horizontalScrollBar();
        f.edit.setPlainText(QString(300, QLatin1Char('w')));
        QVERIFY(!hbar->isVisible());
        QVERIFY(ZXmlUI::setPropertyEx(&f.edit, "lineWrap", "false"));
        QVERIFY(!f.edit.lineWrap());
        QVERIFY(hbar->isVisible());
        QScrollBar *native = f.editor()->horizontalScrollBar();
        QCOMPARE(hbar->maximum(), qreal(native->maximum()));
        hbar->setValue(hbar->maximum());
        QCOMPARE(native->value(), native->maximum());
        f.edit.setLineWrap(true);
        QVERIFY(!hbar->isVisible());
    }

    void fromXml()
    {
        ZSpacer root;
        QVERIFY(ZXmlUI::widgetFromMemory(R"(<uitree>
  <ZTextEdit objectName="notes" fixSize="220,90" hasFrame="true" plainText="one&#10;two" fontSize="13"
             chineseContextMenu="true" barThickness="10" vscroll.deltaFactor="12"/>
  <ZTextEdit objectName="rich" html="&lt;b&gt;bold&lt;/b&gt; text" readOnly="true" lineWrap="false"/>
</uitree>)", &root));
        auto *notes = qobject_cast<ZTextEdit *>(root.findObject(QStringLiteral("notes")));
        auto *rich = qobject_cast<ZTextEdit *>(root.findObject(QStringLiteral("rich")));
        QVERIFY(notes && rich);
        QCOMPARE(notes->plainText(), QStringLiteral("one\ntwo"));
        QVERIFY(notes->hasFrame());
        QCOMPARE(notes->fontSize(), 13);
        QVERIFY(notes->chineseContextMenu());
        QCOMPARE(notes->barThickness(), 10);
        QCOMPARE(notes->verticalScrollBar()->deltaFactor(), 12.0);
        QCOMPARE(rich->plainText(), QStringLiteral("bold text"));
        QVERIFY(rich->isReadOnly());
        QVERIFY(!rich->lineWrap());
    }
};

QTEST_MAIN(tst_ZTextEdit)
#include "tst_ztextedit.moc"
