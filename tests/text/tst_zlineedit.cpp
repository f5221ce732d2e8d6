// The line edit: validators and what leaving the field says about them, the
// field and label modes, the frame, the auto width, the context menu and its
// enabling rules, bad values.

#include "qlineeditex.h"
#include "zframeitem.h"
#include "zlineedit.h"
#include "zpushbutton.h"
#include "zspacer.h"
#include "zxmlui.h"

#include "common/dialogtestutil.h"
#include "common/scenetest.h"
#include "texttestutil.h"

#include <QtGui/QValidator>
#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsProxyWidget>

#include <memory>

using texttest::MenuProbe;

namespace {

// Never satisfied, and of no kind the line edit knows.
class PickyValidator : public QValidator
{
public:
    using QValidator::QValidator;
    State validate(QString &, int &) const override { return Intermediate; }
};

// A line edit in an active scene.
struct Field
{
    Field() : edit(*new ZLineEdit)
    {
        scene.addItem(&edit);
        edit.resize(160, 24);
    }
    // Enters the field and leaves it again; the check runs from the event loop.
    void visit()
    {
        edit.setFocus(true);
        scene.focusElsewhere();
        QCoreApplication::processEvents();
    }
    QLineEditEx *editor() const { return qobject_cast<QLineEditEx *>(edit.realLineEdit()); }
    QGraphicsProxyWidget *proxy() const { return editor()->graphicsProxyWidget(); }
    ZFrameItem *frame() const { return qobject_cast<ZFrameItem *>(edit.frame()); }
    int validatorCount() const { return int(editor()->findChildren<QValidator *>().size()); }
    // The menu's entries, Undo Redo Cut Copy Paste Delete SelectAll, as "1" or
    // "0" for visible, and for enabled "-" when hidden.
    QPair<QString, QString> menuStates(bool separator)
    {
        MenuProbe probe;
        texttest::requestContextMenu(&edit);
        if (!probe.sawMenu)
            return {};
        QString visible, enabled;
        for (const texttest::MenuEntry &e : std::as_const(probe.entries)) {
            if (e.separator) {
                visible += e.visible == separator ? QString() : QStringLiteral("!");
                continue;
            }
            visible += QLatin1Char(e.visible ? '1' : '0');
            enabled += QLatin1Char(!e.visible ? '-' : e.enabled ? '1' : '0');
        }
        return {visible, enabled};
    }

    texttest::ActiveScene scene; // owns the field
    ZLineEdit &edit;
};

} // namespace

class tst_ZLineEdit : public QObject
{
    Q_OBJECT

private slots:
    void init() { QGuiApplication::clipboard()->clear(); }

    // One validator at a time; the same kind again keeps the object (only a
    // real range changes its decimals); a foreign one is replaced, not deleted.
    void validators()
    {
        Field f;
        QCOMPARE(f.edit.intValidator(), QSize(-1, -1));
        f.edit.setIntValidator(QSize(1, 100));
        f.edit.setRegExpValidator(QStringLiteral("[a-z]+"));
        QCOMPARE(f.edit.intValidator(), QSize(-1, -1));
        f.edit.setDoubleValidator(QSizeF(1, 2));
        QCOMPARE(f.edit.regExpValidator(), QString());
        QCOMPARE(f.validatorCount(), 1);
        auto *real = qobject_cast<const QDoubleValidator *>(f.editor()->validator());
        QCOMPARE(real->decimals(), 5);
        f.edit.setDoubleValidator(QSizeF(3, 4));
        QCOMPARE(f.editor()->validator(), real);
        QCOMPARE(real->decimals(), 0);
        f.edit.setDoubleValidator(QSizeF(qQNaN(), 5));
        f.edit.setDoubleValidator(QSizeF(0, qInf()));
        QCOMPARE(f.edit.doubleValidator(), QSizeF(3, 4));
        f.edit.setIntValidator(QSize(1, 10));
        const QValidator *integer = f.editor()->validator();
        f.edit.setIntValidator(QSize(-5, 5));
        QCOMPARE(f.editor()->validator(), integer);
        QCOMPARE(f.edit.intValidator(), QSize(-5, 5));
        QCOMPARE(f.edit.doubleValidator(), QSizeF(-1, -1));
        f.edit.setRegExpValidator(QStringLiteral("a+"));
        const QValidator *pattern = f.editor()->validator();
        f.edit.setRegExpValidator(QStringLiteral("b+"));
        QCOMPARE(f.editor()->validator(), pattern);
        QCOMPARE(f.validatorCount(), 1);
        // The expression matches the whole text, case-sensitively; a broken one accepts nothing.
        const QList<QPair<QString, int>> matches{{"abc", QValidator::Acceptable}, {"abc1", QValidator::Invalid},
                                                 {"ABC", QValidator::Invalid}, {"ab1", QValidator::Invalid}};
        f.edit.setRegExpValidator(QStringLiteral("[a-z]+"));
        for (auto [text, state] : matches) {
            int pos = 0;
            QCOMPARE(int(f.editor()->validator()->validate(text, pos)), state);
        }
        f.edit.setRegExpValidator(QStringLiteral("["));
        QString x = QStringLiteral("x");
        int pos = 0;
        QCOMPARE(f.editor()->validator()->validate(x, pos), QValidator::Invalid);
        auto foreign = std::make_unique<QIntValidator>(0, 9);
        f.editor()->setValidator(foreign.get());
        QCOMPARE(f.edit.intValidator(), QSize(0, 9));
        f.edit.setRegExpValidator(QStringLiteral("x"));
        QCOMPARE(foreign->top(), 9); // still alive (ASan would say otherwise)
    }

    void focusOutMessage_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("setting");
        QTest::addColumn<QString>("tip");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message"); // empty: no box
        QTest::newRow("int below") << "int" << "1,100" << "" << "0" << "输入[1-100]区间的整数";
        QTest::newRow("int fine") << "int" << "1,100" << "" << "50" << "";
        QTest::newRow("int negative range") << "int" << "-5,5" << "" << "-" << "输入[-5-5]区间的整数";
        QTest::newRow("empty text never checked") << "int" << "1,100" << "" << "" << "";
        QTest::newRow("real above") << "double" << "0.5,9.5" << "" << "10" << "输入[0.5-9.5]区间的浮点数";
        QTest::newRow("real g format") << "double" << "0.0000001,1234567" << "" << "x" << "输入[1e-07-1.23457e+06]区间的浮点数";
        QTest::newRow("pattern") << "regexp" << "[a-z]+" << "" << "ABC" << "输入的合法的格式：[a-z]+";
        QTest::newRow("other kind") << "other" << "" << "" << "x" << "输入的字符不符合要求，请检查。";
        QTest::newRow("tip for int") << "int" << "1,100" << "Between 1 and 100" << "0" << "Between 1 and 100";
        QTest::newRow("tip for other") << "other" << "" << "Never" << "a" << "Never";
        QTest::newRow("tip, text fine") << "int" << "1,100" << "Between" << "7" << "";
        QTest::newRow("no validator") << "none" << "" << "Tip" << "anything" << "";
    }

    // Leaving the field with a text the validator does not accept shows one
    // box; nothing is rejected and the focus is not pulled back.
    void focusOutMessage()
    {
        QFETCH(QString, kind);
        QFETCH(QString, setting);
        QFETCH(QString, tip);
        QFETCH(QString, text);
        QFETCH(QString, message);
        Field f;
        // Real ranges as a document gives them, so the conversion is exercised too.
        if (kind == QLatin1String("int"))
            f.edit.setIntValidator(QSize(setting.section(',', 0, 0).toInt(), setting.section(',', 1, 1).toInt()));
        else if (kind == QLatin1String("double"))
            QVERIFY(ZXmlUI::setPropertyEx(&f.edit, "doubleValidator", setting.toUtf8().constData()));
        else if (kind == QLatin1String("regexp"))
            f.edit.setRegExpValidator(setting);
        else if (kind == QLatin1String("other"))
            f.editor()->setValidator(new PickyValidator(f.editor()));
        f.edit.setValidatorTip(tip);
        f.edit.setText(text);
        QStringList boxes;
        dialogtest::MessageBoxWatcher watcher([&boxes](ZMessageBox *box) {
            boxes << box->title() << box->button(0)->text();
            boxes << QString::number(box->button(1)->isVisible() + box->button(2)->isVisible());
            box->done(1);
        });
        f.visit();
        QCOMPARE(watcher.texts, message.isEmpty() ? QStringList() : QStringList{message});
        if (!message.isEmpty())
            QCOMPARE(boxes, (QStringList{QStringLiteral("提示"), QStringLiteral("确认"), "0"}));
        QCOMPARE(f.edit.text(), text);
        QVERIFY(!f.edit.focus());
    }

    // The text is remembered before it is checked: only a changed text is told about again.
    void focusOutOnlyForChangedText()
    {
        Field f;
        f.edit.setIntValidator(QSize(1, 100));
        dialogtest::MessageBoxWatcher watcher([](ZMessageBox *box) { box->done(1); });
        f.edit.setFocus(true);
        QTest::keyClick(f.editor(), Qt::Key_0);
        f.scene.focusElsewhere();
        QTRY_COMPARE(watcher.texts, QStringList{QStringLiteral("输入[1-100]区间的整数")});
        f.visit();
        QCOMPARE(watcher.texts.size(), 1);
        for (const char *text : {"500", "0"}) { // "0" differs from the last one checked
            f.edit.setText(QString::fromLatin1(text));
            f.visit();
        }
        QCOMPARE(watcher.texts.size(), 3);
        f.edit.setText(QStringLiteral("5"));
        f.visit();
        f.visit();
        QCOMPARE(watcher.texts.size(), 3);
    }

    void deletedDuringMessageBox()
    {
        Field f;
        QPointer<ZLineEdit> edit = &f.edit;
        f.edit.setIntValidator(QSize(1, 2));
        f.edit.setText(QStringLiteral("9"));
        dialogtest::MessageBoxWatcher watcher([&](ZMessageBox *box) {
            delete edit.data();
            box->done(1);
        });
        edit->setFocus(true);
        f.scene.focusElsewhere();
        QTRY_COMPARE(watcher.texts.size(), 1);
        QVERIFY(!edit);
    }

    // A field being deleted takes its editor's proxy out without announcing a
    // new parent, font or palette to it.
    void quietTeardown()
    {
        Field f;
        auto *editor = qobject_cast<QWidget *>(f.edit.realLineEdit());
        QVERIFY(editor && editor->graphicsProxyWidget());
        struct Counter : QObject
        {
            int changes = 0;
            bool eventFilter(QObject *, QEvent *event) override
            {
                const QEvent::Type t = event->type();
                changes += t == QEvent::ParentAboutToChange || t == QEvent::ParentChange
                    || t == QEvent::FontChange || t == QEvent::PaletteChange;
                return false;
            }
        } counter;
        editor->graphicsProxyWidget()->installEventFilter(&counter);
        delete &f.edit;
        QCOMPARE(counter.changes, 0);
    }

    // A label is read-only, unframed and takes no presses; the field takes
    // left and right presses. Only a label lets the window be dragged by it.
    void modes()
    {
        Field f;
        const QPointF at = f.edit.mapToScene(QPointF(30, 12));
        QSignalSpy buttons(f.editor(), &QLineEditEx::buttonClicked);
        f.edit.setLabel();
        QVERIFY(f.edit.isReadOnly());
        QVERIFY(!f.proxy()->acceptHoverEvents());
        QCOMPARE(f.edit.backgroundColor(), QColor(0, 0, 0, 0));
        QVERIFY(!f.edit.hasFrame() && !f.edit.focus());
        scenetest::click(f.scene, at);
        QCOMPARE(buttons.count(), 0);
        f.edit.setEdit();
        QVERIFY(!f.edit.isReadOnly());
        QVERIFY(f.proxy()->acceptHoverEvents());
        QCOMPARE(f.edit.backgroundColor(), QColor(255, 255, 255, 255));
        QVERIFY(f.edit.hasFrame() && f.frame()->isVisible() && f.edit.focus());
        for (Qt::MouseButton b : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
            scenetest::click(f.scene, at, b);
        QCOMPARE(buttons.count(), 2);
        QCOMPARE(buttons.at(1).at(0).value<Qt::MouseButton>(), Qt::RightButton);
        // The label takes nothing: the focus stays where it is.
        f.edit.setLabel();
        QVERIFY(f.edit.focus());
        QVERIFY(!f.frame()->isVisible());
        auto *parent = new ZSpacer;
        parent->setDragPolicy(ZWidget::WindowMove);
        f.scene.addItem(parent);
        f.edit.setParentItem(parent);
        QCOMPARE(ZWidget::resolveDragPolicy(&f.edit, f.edit.mapToScene(QPointF(20, 10))), ZWidget::WindowMove);
        f.edit.setEdit();
        QCOMPARE(ZWidget::resolveDragPolicy(&f.edit, f.edit.mapToScene(QPointF(20, 10))), ZWidget::Nothing);
    }

    // The field passes on its editor's signals to whoever listens, however
    // they connect, once per change even with several listeners.
    void signalsPassedOn()
    {
        Field f;
        f.edit.setFocus(true);
        QSignalSpy clicked(&f.edit, &ZLineEdit::clicked);
        QSignalSpy changed(&f.edit, &ZLineEdit::textChanged);
        QSignalSpy edited(&f.edit, &ZLineEdit::textEdited);
        QSignalSpy moved(&f.edit, &ZLineEdit::cursorPositionChanged);
        QSignalSpy returned(&f.edit, &ZLineEdit::returnPressed);
        QSignalSpy finished(&f.edit, &ZLineEdit::editingFinished);
        QSignalSpy selected(&f.edit, &ZLineEdit::selectionChanged);
        QSignalSpy changedByName(&f.edit, SIGNAL(textChanged(QString)));
        QStringList texts;
        QObject::connect(&f.edit, &ZLineEdit::textChanged, [&texts](const QString &t) { texts << t; });

        f.edit.setText(QStringLiteral("ab"));
        QTest::keyClick(f.editor(), Qt::Key_C);
        f.editor()->selectAll();
        QTest::keyClick(f.editor(), Qt::Key_Return);

        QCOMPARE(texts, QStringList({"ab", "abc"}));
        QCOMPARE(changed.count(), 2);
        QCOMPARE(changedByName.count(), 2);
        QCOMPARE(edited.count(), 1);
        QCOMPARE(edited.at(0).at(0).toString(), QStringLiteral("abc"));
        QCOMPARE(moved.count(), 2);
        QCOMPARE(moved.at(1), QVariantList({2, 3}));
        QCOMPARE(clicked.count(), 2);
        QCOMPARE(returned.count(), 1);
        QCOMPARE(finished.count(), 1);
        QCOMPARE(selected.count(), 1);
    }

    // A field nobody has reached yet keeps its editor hidden, without a native
    // window, and draws exactly as it will once shown; whatever reaches it
    // shows the editor, and the first event already does its work.
    void dormantEditor_data()
    {
        QTest::addColumn<QString>("trigger");
        for (const char *trigger : {"hover", "press", "double click", "Tab", "setFocus"})
            QTest::newRow(trigger) << QString::fromLatin1(trigger);
    }

    void dormantEditor()
    {
        QFETCH(QString, trigger);
        Field f;
        f.edit.setFrame(true);
        f.edit.setTextColor(QColor(200, 0, 0));
        f.edit.setFontSize(15);
        f.edit.setText(QStringLiteral("Dormant 123"));
        scenetest::settle();
        const QSize size(170, 30);
        const QImage before = scenetest::render(f.scene, size);
        QVERIFY(!f.editor()->isVisible() && !f.editor()->windowHandle());
        // Hiding and showing the field leaves it dormant.
        f.edit.hide();
        f.edit.show();
        QVERIFY(!f.editor()->isVisible());
        QVERIFY(scenetest::countOf(before, [](QColor c) { return c.red() > 150 && c.green() < 80; }) > 20);

        const QPointF inside = f.edit.mapToScene(QPointF(6, 12));
        scenetest::Mouse mouse(f.scene);
        if (trigger == QLatin1String("hover")) {
            scenetest::sendHoverTo(f.proxy(), QEvent::GraphicsSceneHoverEnter, QPointF(6, 12));
        } else if (trigger == QLatin1String("press")) {
            mouse.click(inside);
        } else if (trigger == QLatin1String("double click")) {
            mouse.doubleClick(inside);
        } else if (trigger == QLatin1String("Tab")) {
            f.scene.focusElsewhere();
            scenetest::key(f.scene, Qt::Key_Tab);
        } else {
            f.edit.setFocus(true);
        }
        QVERIFY(f.editor()->isVisible());
        if (trigger == QLatin1String("hover"))
            QCOMPARE(scenetest::render(f.scene, size), before);
        else if (trigger == QLatin1String("press"))
            QCOMPARE(f.editor()->cursorPosition(), 0);
        else if (trigger == QLatin1String("double click"))
            QCOMPARE(f.editor()->selectedText(), QStringLiteral("Dormant"));
        else
            QVERIFY(f.edit.focus());
        // Shown, the editor follows the field as a hosted widget does.
        f.edit.hide();
        QVERIFY(!f.editor()->isVisible());
        f.edit.show();
        QVERIFY(f.editor()->isVisible());
    }

    // The frame comes on demand, follows the size, lies under the editor, and
    // keeps a chosen image while hidden; an image alone shows it.
    void frame()
    {
        Field f;
        QVERIFY(!f.edit.frame());
        f.edit.setFrameImage(QString());
        QVERIFY(!f.edit.frame());
        f.edit.setFrame(true);
        ZFrameItem *frame = f.frame();
        QCOMPARE(f.edit.frameImage(), QStringLiteral(":/image/theme/lineedit.png"));
        f.edit.resize(200, 30);
        QCOMPARE(frame->geometry(), QRectF(0, 0, 200, 30));
        QCOMPARE(f.proxy()->geometry(), QRectF(0, 0, 200, 30));
        const QList<QGraphicsItem *> under = f.scene.items(f.edit.mapToScene(QPointF(100, 15)));
        QVERIFY(under.indexOf(f.proxy()) >= 0 && under.indexOf(f.proxy()) < under.indexOf(frame));
        f.edit.setFrameImage(QStringLiteral(":/image/theme/lineeditframe.png"));
        QCOMPARE(f.edit.frame(), frame);
        f.edit.setFrame(false);
        QVERIFY(!f.edit.hasFrame() && !frame->isVisible());
        f.edit.setFrame(true);
        QCOMPARE(f.edit.frameImage(), QStringLiteral(":/image/theme/lineeditframe.png"));
        Field g;
        g.edit.setFrameImage(QStringLiteral(":/image/theme/lineeditframe.png"));
        QVERIFY(g.edit.hasFrame() && g.frame()->isVisible());
    }

    void adjustText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("fontSize");
        QTest::newRow("word") << "hello" << 12;
        QTest::newRow("empty") << "" << 12;
        QTest::newRow("chinese") << "提示确认" << 16;
    }

    // The field fixes its width to the text's.
    void adjustText()
    {
        QFETCH(QString, text);
        QFETCH(int, fontSize);
        Field f;
        f.edit.setFontSize(fontSize);
        QVERIFY(ZXmlUI::setPropertyEx(&f.edit, "adjustText", text.toUtf8().constData()));
        QCOMPARE(f.edit.text(), text);
        QFont font = QApplication::font();
        font.setPixelSize(fontSize);
        const QFontMetrics fm(font);
        const int expected = fm.horizontalAdvance(text) + 2 * fm.leading();
        QCOMPARE(f.edit.contentSize(), QSize(expected, fm.height()));
        QCOMPARE(f.edit.fixWidth(), qreal(expected));
        QCOMPARE(f.edit.size().width(), qreal(expected));
    }

    void badValuesKeepState()
    {
        Field f;
        f.edit.setMaxLength(10);
        f.edit.setMaxLength(-3);
        QCOMPARE(f.edit.maxLength(), 10);
        f.edit.setMode(QLineEdit::Password);
        f.edit.setMode(QLineEdit::EchoMode(99));
        f.edit.setMode(QLineEdit::EchoMode(-1));
        QCOMPARE(f.edit.mode(), QLineEdit::Password);
        f.edit.setFontSize(15);
        f.edit.setFontSize(0);
        f.edit.setFontSize(-20);
        QCOMPARE(f.edit.fontSize(), 15);
        f.edit.setTextColor(QColor(1, 2, 3));
        f.edit.setTextColor(QColor());
        QCOMPARE(f.edit.textColor(), QColor(1, 2, 3));
        QVERIFY(!ZXmlUI::setPropertyEx(&f.edit, "frame.index", "1")); // no frame yet
        QVERIFY(!ZXmlUI::setPropertyEx(&f.edit, "nonsense.deeper", "1"));
        f.edit.resize(-10, -10);
        f.edit.resize(1e9, 1e9);
        f.edit.setAdjustText(QString(5000, QLatin1Char('w')));
        QVERIFY(f.edit.fixWidth() > 0);
    }

    void menuTexts_data()
    {
        QTest::addColumn<bool>("chinese");
        QTest::addColumn<QStringList>("texts");
        auto english = [](const char *text, QKeySequence::StandardKey key) {
            return QString::fromLatin1(text) + QLatin1Char('\t') + QKeySequence(key).toString(QKeySequence::NativeText);
        };
        QTest::newRow("english") << false
                                 << QStringList{english("&Undo", QKeySequence::Undo), english("&Redo", QKeySequence::Redo),
                                                english("Cu&t", QKeySequence::Cut), english("&Copy", QKeySequence::Copy),
                                                english("&Paste", QKeySequence::Paste), QStringLiteral("Delete"),
                                                english("Select All", QKeySequence::SelectAll)};
        QTest::newRow("chinese") << true << QStringList{"撤销", "重复", "剪切", "复制", "粘贴", "清空", "选择全部"};
    }

    void menuTexts()
    {
        QFETCH(bool, chinese);
        QFETCH(QStringList, texts);
        Field f;
        f.editor()->setChineseContextMenu(chinese);
        MenuProbe probe;
        texttest::requestContextMenu(&f.edit);
        QCOMPARE(probe.texts(), texts);
        // One separator, after Redo.
        QCOMPARE(probe.entries.size(), 8);
        QVERIFY(probe.entries.at(2).separator);
        // Turned off, the field offers no menu.
        f.edit.setContextMenu(false);
        MenuProbe none;
        texttest::requestContextMenu(&f.edit);
        QTest::qWait(20);
        QVERIFY(!none.sawMenu);
    }

    void menuRules_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("readOnly");
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("selStart"); // -1: no selection, -2: everything
        QTest::addColumn<QString>("clipboard");
        QTest::addColumn<QString>("typed"); // inserted as the user would, for undo
        QTest::addColumn<QString>("visible");
        QTest::addColumn<QString>("enabled");
        const int normal = QLineEdit::Normal;
        QTest::newRow("empty field") << "" << false << normal << -1 << "" << "" << "1111110" << "000000-";
        QTest::newRow("empty, clipboard full") << "" << false << normal << -1 << "clip" << "" << "1111110" << "000010-";
        QTest::newRow("text, no selection") << "hello" << false << normal << -1 << "clip" << "" << "1111111" << "0000101";
        QTest::newRow("part selected") << "hello" << false << normal << 1 << "" << "" << "1111111" << "0011011";
        QTest::newRow("all selected") << "hello" << false << normal << -2 << "clip" << "" << "1111110" << "001111-";
        QTest::newRow("password, part selected") << "hello" << false << int(QLineEdit::Password) << 1 << "clip" << ""
                                                 << "1111111" << "0000111";
        QTest::newRow("no-echo, part selected") << "hello" << false << int(QLineEdit::NoEcho) << 1 << "" << ""
                                                << "1111111" << "0000011";
        QTest::newRow("read-only, part selected") << "hello" << true << normal << 1 << "clip" << "" << "0001001" << "---1--1";
        QTest::newRow("read-only, all selected") << "hello" << true << normal << -2 << "" << "" << "0001000" << "---1---";
        QTest::newRow("read-only, empty") << "" << true << normal << -1 << "" << "" << "0001000" << "---0---";
        QTest::newRow("typed: undo") << "" << false << normal << -1 << "" << "ab" << "1111111" << "1000001";
    }

    // Which entries show and which are enabled; the separator shows unless read-only.
    void menuRules()
    {
        QFETCH(QString, text);
        QFETCH(bool, readOnly);
        QFETCH(int, mode);
        QFETCH(int, selStart);
        QFETCH(QString, clipboard);
        QFETCH(QString, typed);
        QFETCH(QString, visible);
        QFETCH(QString, enabled);
        Field f;
        f.edit.setText(text);
        f.edit.setMode(QLineEdit::EchoMode(mode));
        if (!typed.isEmpty())
            f.edit.insert(typed);
        f.edit.setReadOnly(readOnly);
        if (selStart == -2)
            f.editor()->selectAll();
        else if (selStart >= 0)
            f.editor()->setSelection(selStart, 2);
        if (!clipboard.isEmpty())
            QGuiApplication::clipboard()->setText(clipboard);
        QCOMPARE(f.menuStates(!readOnly), qMakePair(visible, enabled));
    }

    void menuActions_data()
    {
        QTest::addColumn<bool>("chinese");
        QTest::addColumn<QString>("pick");
        QTest::addColumn<QString>("expectedText");
        QTest::addColumn<QString>("expectedClipboard");
        QTest::addColumn<QString>("expectedSelection");
        // Each starts from "hello" with "el" selected, "clip" on the clipboard, after typing "!" at the end.
        QTest::newRow("undo") << false << "&Undo" << "hello" << "clip" << "";
        QTest::newRow("cut") << false << "Cu&t" << "hlo!" << "el" << "";
        QTest::newRow("copy") << false << "&Copy" << "hello!" << "el" << "el";
        QTest::newRow("paste") << false << "&Paste" << "hcliplo!" << "clip" << "";
        QTest::newRow("delete clears everything") << false << "Delete" << "" << "clip" << "";
        QTest::newRow("select all") << false << "Select All" << "hello!" << "clip" << "hello!";
        QTest::newRow("chinese delete") << true << "清空" << "" << "clip" << "";
        QTest::newRow("dismissed") << false << "" << "hello!" << "clip" << "el";
    }

    void menuActions()
    {
        QFETCH(bool, chinese);
        QFETCH(QString, pick);
        QFETCH(QString, expectedText);
        QFETCH(QString, expectedClipboard);
        QFETCH(QString, expectedSelection);
        Field f;
        f.editor()->setChineseContextMenu(chinese);
        f.edit.setText(QStringLiteral("hello"));
        f.editor()->end(false);
        f.edit.insert(QStringLiteral("!"));
        f.editor()->setSelection(1, 2);
        QGuiApplication::clipboard()->setText(QStringLiteral("clip"));
        MenuProbe probe(pick);
        texttest::requestContextMenu(&f.edit);
        QVERIFY(probe.sawMenu);
        QCOMPARE(f.edit.text(), expectedText);
        QCOMPARE(QGuiApplication::clipboard()->text(), expectedClipboard);
        QCOMPARE(f.editor()->selectedText(), expectedSelection);
    }

    void fieldDeletedWhileMenuOpen()
    {
        Field f;
        QPointer<ZLineEdit> edit = &f.edit;
        f.edit.setText(QStringLiteral("hello"));
        bool sawMenu = false;
        QTimer::singleShot(0, [&] {
            QMenu *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            sawMenu = menu != nullptr;
            delete edit.data();
            if (menu) {
                menu->setActiveAction(menu->actions().constLast());
                QTest::keyClick(menu, Qt::Key_Return);
            }
        });
        texttest::requestContextMenu(edit);
        QVERIFY(sawMenu);
        QVERIFY(!edit);
    }
};

QTEST_MAIN(tst_ZLineEdit)
#include "tst_zlineedit.moc"
