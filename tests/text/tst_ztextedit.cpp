// The rich text edit: the field and label modes, what it hands the shared
// editing menu and does with its choice, and the skinned scroll bars
// following the editor's own both ways.

#include "zscrollbar.h"
#include "ztextedit.h"
#include "zxmlui.h"

#include "common/scenetest.h"
#include "texttestutil.h"

#include <QtGui/QTextCursor>
#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsProxyWidget>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTextEdit>

using texttest::MenuProbe;

namespace {

struct TextField
{
    TextField() : edit(*new ZTextEdit)
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
    void lines(int count)
    {
        QStringList out;
        for (int i = 0; i < count; ++i)
            out << QStringLiteral("line %1").arg(i);
        edit.setPlainText(out.join(QLatin1Char('\n')));
    }

    texttest::ActiveScene scene; // owns the field
    ZTextEdit &edit;
};

} // namespace

class tst_ZTextEdit : public QObject
{
    Q_OBJECT

private slots:
    void init() { QGuiApplication::clipboard()->clear(); }

    // A label is read-only but selectable; the field takes typing. (The mode
    // switch itself is the line edit's, tested there.)
    void modes()
    {
        TextField f;
        f.edit.setPlainText(QStringLiteral("<b>not bold</b>"));
        QCOMPARE(f.edit.plainText(), QStringLiteral("<b>not bold</b>"));
        f.edit.setLabel();
        QVERIFY(f.edit.isReadOnly());
        QCOMPARE(f.proxy()->acceptedMouseButtons(), Qt::MouseButtons());
        QVERIFY(!f.edit.hasFrame());
        QVERIFY(f.editor()->textInteractionFlags() & Qt::TextSelectableByMouse);
        f.edit.setEdit();
        QVERIFY(!f.edit.isReadOnly());
        QCOMPARE(f.editor()->textInteractionFlags(), Qt::TextEditorInteraction);
        QVERIFY(f.edit.hasFrame());
        QCOMPARE(f.edit.frameImage(), QStringLiteral(":/image/theme/lineedit.png"));
        QVERIFY(f.editor()->hasFocus());
        f.edit.clear();
        QTest::keyClicks(f.editor(), QStringLiteral("hi"));
        QCOMPARE(f.edit.plainText(), QStringLiteral("hi"));
        f.edit.setHtml(QStringLiteral("<b>bold</b> plain"));
        QCOMPARE(f.edit.plainText(), QStringLiteral("bold plain"));
        QVERIFY(f.edit.html().contains(QLatin1String("font-weight:700")));
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
        f.lines(50);
        f.edit.resize(3, 3);
        f.edit.resize(200, 100);
        QVERIFY(f.edit.verticalScrollBar()->isVisible());
    }

    // The editor's state as the menu sees it (entries Undo Redo Cut Copy
    // Paste Delete SelectAll; "-" for the enabled state of a hidden one).
    void menuRules_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("readOnly");
        QTest::addColumn<int>("from"); // -1: no selection
        QTest::addColumn<int>("to");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("visible");
        QTest::addColumn<QString>("enabled");
        QTest::newRow("empty") << "" << false << -1 << 0 << "" << "1111110" << "000000-";
        QTest::newRow("all of two lines") << "ab\ncd" << false << 0 << 5 << "" << "1111110" << "001101-";
        QTest::newRow("first line only") << "ab\ncd" << false << 0 << 2 << "" << "1111111" << "0011011";
        QTest::newRow("read-only part") << "hello" << true << 1 << 3 << "" << "0001001" << "---1--1";
        QTest::newRow("typed") << "" << false << -1 << 0 << "xy" << "1111111" << "1000001";
    }

    void menuRules()
    {
        QFETCH(QString, text);
        QFETCH(bool, readOnly);
        QFETCH(int, from);
        QFETCH(int, to);
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
        MenuProbe probe;
        texttest::requestContextMenu(&f.edit);
        QVERIFY(probe.sawMenu);
        QString seenVisible, seenEnabled;
        for (const texttest::MenuEntry &e : std::as_const(probe.entries)) {
            if (e.separator)
                continue;
            seenVisible += QLatin1Char(e.visible ? '1' : '0');
            seenEnabled += QLatin1Char(!e.visible ? '-' : e.enabled ? '1' : '0');
        }
        QCOMPARE(seenVisible, visible);
        QCOMPARE(seenEnabled, enabled);
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
        QTest::newRow("delete clears everything") << "清空" << "" << "clip";
        QTest::newRow("dismissed") << "" << "hello\nworld" << "clip";
    }

    void menuActions()
    {
        QFETCH(QString, pick);
        QFETCH(QString, expectedText);
        QFETCH(QString, expectedClipboard);
        TextField f;
        QVERIFY(ZXmlUI::setPropertyEx(&f.edit, "chineseContextMenu", pick == QStringLiteral("清空") ? "true" : "false"));
        f.edit.setPlainText(QStringLiteral("hello\nworld"));
        f.select(1, 5);
        QGuiApplication::clipboard()->setText(QStringLiteral("clip"));
        MenuProbe probe(pick);
        texttest::requestContextMenu(&f.edit);
        QVERIFY(probe.sawMenu);
        QCOMPARE(f.edit.plainText(), expectedText);
        QCOMPARE(QGuiApplication::clipboard()->text(), expectedClipboard);
    }

    void menuSelectAllUndoRedo()
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
        f.edit.setContextMenu(false);
        MenuProbe none;
        texttest::requestContextMenu(&f.edit);
        QTest::qWait(20);
        QVERIFY(!none.sawMenu);
    }

    // The skinned bar mirrors the editor's, sits inside the frame's border
    // beside the text, and goes with nothing to scroll.
    void barsFollowEditor()
    {
        TextField f;
        f.edit.setFrame(true);
        ZScrollBar *bar = f.edit.verticalScrollBar();
        QScrollBar *native = f.editor()->verticalScrollBar();
        QVERIFY(!bar->isVisible());
        f.lines(60);
        QVERIFY(bar->isVisible() && !native->isVisible());
        auto same = [&] {
            return bar->maximum() == native->maximum() && bar->minimum() == native->minimum()
                && bar->pageStep() == native->pageStep() && bar->singleStep() == native->singleStep();
        };
        QVERIFY(same());
        const int t = ZTextEdit::DefaultBarThickness;
        QCOMPARE(bar->geometry(), QRectF(199 - t, 1, t, 98));
        QCOMPARE(f.proxy()->geometry().width(), qreal(199 - t));
        native->setValue(native->maximum() / 2);
        QCOMPARE(bar->value(), qreal(native->maximum() / 2));
        bar->setValue(7.6);
        QCOMPARE(native->value(), 8);
        const int page = native->pageStep();
        f.edit.resize(200, 60);
        QVERIFY(native->pageStep() < page);
        QVERIFY(same());
        // A click on the down button scrolls the text.
        auto *down = qobject_cast<QGraphicsObject *>(bar->lineAdd());
        bar->setValue(0);
        scenetest::click(f.scene, down->mapToScene(down->boundingRect().center()));
        QVERIFY(native->value() > 0);
        QCOMPARE(bar->value(), qreal(native->value()));
        f.edit.setPlainText(QStringLiteral("short"));
        QVERIFY(!bar->isVisible());
        QCOMPARE(f.proxy()->geometry().width(), 200.0);
    }

    // A text field nobody has reached yet keeps its editor hidden, without a
    // native window, its bars following the text all the same, and draws as
    // it will once shown; the pointer, a wheel turn or focus reach it.
    void dormantEditor_data()
    {
        QTest::addColumn<QString>("trigger");
        for (const char *trigger : {"hover", "press", "wheel", "focus"})
            QTest::newRow(trigger) << QString::fromLatin1(trigger);
    }
    void dormantEditor()
    {
        QFETCH(QString, trigger);
        TextField f;
        f.edit.setFrame(true);
        f.lines(60);
        scenetest::settle();
        QVERIFY(!f.editor()->isVisible() && !f.editor()->windowHandle());
        ZScrollBar *bar = f.edit.verticalScrollBar();
        QVERIFY(bar->isVisible() && bar->maximum() > 0);
        const QImage before = scenetest::render(f.scene, QSize(200, 100));
        QVERIFY(scenetest::countOf(before, [](QColor c) { return c.value() < 100; }) > 50); // text

        const QPointF inside = f.edit.mapToScene(QPointF(20, 8));
        if (trigger == QLatin1String("hover")) {
            scenetest::sendHoverTo(f.proxy(), QEvent::GraphicsSceneHoverEnter, QPointF(20, 8));
            QVERIFY(f.editor()->isVisible());
            QCOMPARE(scenetest::render(f.scene, QSize(200, 100)), before);
        } else if (trigger == QLatin1String("press")) {
            scenetest::click(f.scene, inside);
            QVERIFY(f.editor()->isVisible());
            QCOMPARE(f.editor()->textCursor().blockNumber(), 0);
        } else if (trigger == QLatin1String("wheel")) {
            scenetest::wheel(f.scene, inside, -120);
            QVERIFY(bar->value() > 0);
            QCOMPARE(bar->value(), qreal(f.editor()->verticalScrollBar()->value()));
        } else {
            f.proxy()->setFocus();
            QVERIFY(f.editor()->isVisible() && f.proxy()->hasFocus());
        }
    }

    void horizontalBarWithoutWrap()
    {
        TextField f;
        ZScrollBar *hbar = f.edit.horizontalScrollBar();
        f.edit.setPlainText(QString(300, QLatin1Char('w')));
        QVERIFY(!hbar->isVisible());
        f.edit.setLineWrap(false);
        QVERIFY(hbar->isVisible());
        QScrollBar *native = f.editor()->horizontalScrollBar();
        QCOMPARE(hbar->maximum(), qreal(native->maximum()));
        hbar->setValue(hbar->maximum());
        QCOMPARE(native->value(), native->maximum());
        f.edit.setLineWrap(true);
        QVERIFY(!hbar->isVisible());
    }
};

QTEST_MAIN(tst_ZTextEdit)
#include "tst_ztextedit.moc"
