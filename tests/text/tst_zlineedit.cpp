// The line edit: validators and what leaving the field says about them, the
// field and label modes, the frame, the auto width, the context menus and
// their enabling rules, forwarded signals, bad values and documents.

#include "qlineeditex.h"
#include "zframeitem.h"
#include "zlineedit.h"
#include "zpushbutton.h"
#include "zspacer.h"
#include "zxmlui.h"

#include "texttestutil.h"
#include "window/dialogtestutil.h"

#include <QtGui/QRegularExpressionValidator>
#include <QtGui/QValidator>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsProxyWidget>

#include <memory>

using texttest::ActiveScene;
using texttest::MenuProbe;

namespace {

// Never satisfied, and of no kind the line edit knows.
class PickyValidator : public QValidator
{
public:
    using QValidator::QValidator;
    State validate(QString &, int &) const override { return Intermediate; }
};

// A line edit in an active scene, and what the message boxes it opened said.
struct Field
{
    Field()
        : edit(*new ZLineEdit)
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
    QGraphicsProxyWidget *proxy() const { return qobject_cast<QGraphicsProxyWidget *>(editor()->graphicsProxyWidget()); }
    int validatorCount() const { return editor()->findChildren<QValidator *>().size(); }

    ActiveScene scene; // owns the field
    ZLineEdit &edit;
};

// Records title, text and buttons of every box and answers it.
struct BoxRecorder
{
    QStringList titles;
    QStringList buttonTexts;
    QList<bool> othersHidden;
    dialogtest::MessageBoxWatcher watcher{[this](ZMessageBox *box) {
        titles << box->title();
        buttonTexts << (box->button(0) ? box->button(0)->text() : QString());
        othersHidden << (box->button(1) && !box->button(1)->isVisible() && box->button(2)
                         && !box->button(2)->isVisible());
        box->done(1);
    }};
};

} // namespace

class tst_ZLineEdit : public QObject
{
    Q_OBJECT

private slots:
    void init() { QGuiApplication::clipboard()->clear(); }

    // ---- validators -------------------------------------------------------

    void validatorKinds()
    {
        Field f;
        QCOMPARE(f.edit.intValidator(), QSize(-1, -1));
        QCOMPARE(f.edit.doubleValidator(), QSizeF(-1, -1));
        QCOMPARE(f.edit.regExpValidator(), QString());

        f.edit.setIntValidator(QSize(1, 100));
        QCOMPARE(f.edit.intValidator(), QSize(1, 100));
        QCOMPARE(f.edit.doubleValidator(), QSizeF(-1, -1));
        QCOMPARE(f.edit.regExpValidator(), QString());

        f.edit.setRegExpValidator(QStringLiteral("[a-z]+"));
        QCOMPARE(f.edit.intValidator(), QSize(-1, -1));
        QCOMPARE(f.edit.regExpValidator(), QStringLiteral("[a-z]+"));
        QCOMPARE(f.validatorCount(), 1);

        f.edit.setDoubleValidator(QSizeF(0.5, 9.5));
        QCOMPARE(f.edit.doubleValidator(), QSizeF(0.5, 9.5));
        QCOMPARE(f.edit.regExpValidator(), QString());
        QCOMPARE(f.validatorCount(), 1);

        f.edit.setIntValidator(QSize(-5, 5));
        QCOMPARE(f.edit.intValidator(), QSize(-5, 5));
        QCOMPARE(f.edit.doubleValidator(), QSizeF(-1, -1));
        QCOMPARE(f.validatorCount(), 1);
    }

    // The same kind again keeps the object; only the real range changes its decimals.
    void sameKindKeepsValidator()
    {
        Field f;
        f.edit.setDoubleValidator(QSizeF(1, 2));
        auto *first = qobject_cast<const QDoubleValidator *>(f.editor()->validator());
        QVERIFY(first);
        QCOMPARE(first->decimals(), 5);
        f.edit.setDoubleValidator(QSizeF(3, 4));
        QCOMPARE(f.editor()->validator(), first);
        QCOMPARE(first->decimals(), 0);
        QCOMPARE(f.edit.doubleValidator(), QSizeF(3, 4));
        QCOMPARE(f.validatorCount(), 1);

        f.edit.setIntValidator(QSize(1, 10));
        const QValidator *intOne = f.editor()->validator();
        f.edit.setIntValidator(QSize(20, 30));
        QCOMPARE(f.editor()->validator(), intOne);
        QCOMPARE(f.edit.intValidator(), QSize(20, 30));

        f.edit.setRegExpValidator(QStringLiteral("a+"));
        const QValidator *reOne = f.editor()->validator();
        f.edit.setRegExpValidator(QStringLiteral("b+"));
        QCOMPARE(f.editor()->validator(), reOne);
        QCOMPARE(f.edit.regExpValidator(), QStringLiteral("b+"));
        QCOMPARE(f.validatorCount(), 1);
    }

    // The expression matches the whole text, case-sensitively, and bad patterns do no harm.
    void regExpMatching_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("state");
        QTest::newRow("whole") << "[a-z]+" << "abc" << int(QValidator::Acceptable);
        QTest::newRow("only part") << "[a-z]+" << "abc1" << int(QValidator::Invalid);
        QTest::newRow("case") << "[a-z]+" << "ABC" << int(QValidator::Invalid);
        QTest::newRow("partial") << "\\d{3}" << "12" << int(QValidator::Intermediate);
        QTest::newRow("broken pattern") << "[" << "x" << int(QValidator::Invalid);
    }

    void regExpMatching()
    {
        QFETCH(QString, pattern);
        QFETCH(QString, text);
        QFETCH(int, state);
        Field f;
        f.edit.setRegExpValidator(pattern);
        QCOMPARE(f.edit.regExpValidator(), pattern);
        int pos = 0;
        QCOMPARE(int(f.editor()->validator()->validate(text, pos)), state);
    }

    void nonFiniteRealRangeIgnored()
    {
        Field f;
        f.edit.setDoubleValidator(QSizeF(1, 2));
        f.edit.setDoubleValidator(QSizeF(qQNaN(), 5));
        f.edit.setDoubleValidator(QSizeF(0, qInf()));
        QCOMPARE(f.edit.doubleValidator(), QSizeF(1, 2));
        QCOMPARE(qobject_cast<const QDoubleValidator *>(f.editor()->validator())->decimals(), 5);
    }

    // A validator the application put on the editor is replaced but not deleted.
    void foreignValidatorSurvives()
    {
        Field f;
        auto foreign = std::make_unique<QIntValidator>(0, 9);
        f.editor()->setValidator(foreign.get());
        QCOMPARE(f.edit.intValidator(), QSize(0, 9));
        f.edit.setRegExpValidator(QStringLiteral("x"));
        QCOMPARE(f.edit.regExpValidator(), QStringLiteral("x"));
        QCOMPARE(foreign->top(), 9); // still alive (ASan would say otherwise)
    }

    // ---- leaving the field --------------------------------------------------

    void focusOutMessage_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("setting");
        QTest::addColumn<QString>("tip");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message"); // empty: no box

        QTest::newRow("int below") << "int" << "1,100" << "" << "0" << "输入[1-100]区间的整数";
        QTest::newRow("int above") << "int" << "1,100" << "" << "101" << "输入[1-100]区间的整数";
        QTest::newRow("int fine") << "int" << "1,100" << "" << "50" << "";
        QTest::newRow("int negative range") << "int" << "-5,5" << "" << "-" << "输入[-5-5]区间的整数";
        QTest::newRow("empty text never checked") << "int" << "1,100" << "" << "" << "";
        QTest::newRow("real above") << "double" << "0.5,9.5" << "" << "10" << "输入[0.5-9.5]区间的浮点数";
        QTest::newRow("real g format")
            << "double" << "0.0000001,1234567" << "" << "x" << "输入[1e-07-1.23457e+06]区间的浮点数";
        QTest::newRow("real fine") << "double" << "0.5,9.5" << "" << "2.25" << "";
        QTest::newRow("pattern") << "regexp" << "[a-z]+" << "" << "ABC" << "输入的合法的格式：[a-z]+";
        QTest::newRow("pattern partial") << "regexp" << "\\d{3}" << "" << "12" << "输入的合法的格式：\\d{3}";
        QTest::newRow("pattern fine") << "regexp" << "[a-z]+" << "" << "abc" << "";
        QTest::newRow("other kind") << "other" << "" << "" << "x" << "输入的字符不符合要求，请检查。";
        QTest::newRow("tip for int") << "int" << "1,100" << "Between 1 and 100" << "0" << "Between 1 and 100";
        QTest::newRow("tip for real") << "double" << "0,1" << "A fraction" << "7" << "A fraction";
        QTest::newRow("tip for pattern") << "regexp" << "\\d+" << "Digits" << "a" << "Digits";
        QTest::newRow("tip for other") << "other" << "" << "Never" << "a" << "Never";
        QTest::newRow("tip, text fine") << "int" << "1,100" << "Between" << "7" << "";
        QTest::newRow("no validator") << "none" << "" << "Tip" << "anything" << "";
    }

    void focusOutMessage()
    {
        QFETCH(QString, kind);
        QFETCH(QString, setting);
        QFETCH(QString, tip);
        QFETCH(QString, text);
        QFETCH(QString, message);

        Field f;
        // Real ranges as a document sets them, so the conversion is exercised
        // too; integer ranges from code, as documents cannot give negative sizes.
        if (kind == QLatin1String("int"))
            f.edit.setIntValidator(QSize(setting.section(QLatin1Char(','), 0, 0).toInt(),
                                         setting.section(QLatin1Char(','), 1, 1).toInt()));
        else if (kind == QLatin1String("double"))
            QVERIFY(ZXmlUI::setPropertyEx(&f.edit, "doubleValidator", setting.toUtf8().constData()));
        else if (kind == QLatin1String("regexp"))
            f.edit.setRegExpValidator(setting);
        else if (kind == QLatin1String("other"))
            f.editor()->setValidator(new PickyValidator(f.editor()));
        f.edit.setValidatorTip(tip);
        f.edit.setText(text);

        BoxRecorder boxes;
        f.visit();

        if (message.isEmpty()) {
            QCOMPARE(boxes.watcher.texts, QStringList());
        } else {
            QCOMPARE(boxes.watcher.texts, QStringList{message});
            QCOMPARE(boxes.titles, QStringList{QStringLiteral("提示")});
            QCOMPARE(boxes.buttonTexts, QStringList{QStringLiteral("确认")});
            QCOMPARE(boxes.othersHidden, QList<bool>{true});
        }
        // Nothing is rejected, and the focus is not pulled back.
        QCOMPARE(f.edit.text(), text);
        QVERIFY(!f.edit.focus());
    }

    // The text is remembered before it is checked: only a changed text is told about again.
    void focusOutOnlyForChangedText()
    {
        Field f;
        f.edit.setIntValidator(QSize(1, 100));
        BoxRecorder boxes;

        auto *editor = f.editor();
        f.edit.setFocus(true);
        QTest::keyClick(editor, Qt::Key_0);
        QCOMPARE(f.edit.text(), QStringLiteral("0"));
        f.scene.focusElsewhere();
        QTRY_COMPARE(boxes.watcher.texts, QStringList{QStringLiteral("输入[1-100]区间的整数")});

        f.visit();
        QCOMPARE(boxes.watcher.texts.size(), 1);

        f.edit.setText(QStringLiteral("500"));
        f.visit();
        QCOMPARE(boxes.watcher.texts.size(), 2);

        // Back to a text already told about once: it differs from the last one checked.
        f.edit.setText(QStringLiteral("0"));
        f.visit();
        QCOMPARE(boxes.watcher.texts.size(), 3);

        // A good text is remembered too.
        f.edit.setText(QStringLiteral("5"));
        f.visit();
        f.visit();
        QCOMPARE(boxes.watcher.texts.size(), 3);
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

    // ---- modes --------------------------------------------------------------

    void modes()
    {
        Field f;
        f.edit.setLabel();
        QVERIFY(f.edit.isReadOnly());
        QCOMPARE(f.proxy()->acceptedMouseButtons(), Qt::MouseButtons());
        QVERIFY(!f.proxy()->acceptHoverEvents());
        QCOMPARE(f.edit.dragPolicy(), ZWidget::AskParent);
        QCOMPARE(f.edit.backgroundColor(), QColor(0, 0, 0, 0));
        QVERIFY(!f.edit.hasFrame());
        QVERIFY(!f.edit.focus());

        f.edit.setEdit();
        QVERIFY(!f.edit.isReadOnly());
        QCOMPARE(f.proxy()->acceptedMouseButtons(), Qt::LeftButton | Qt::RightButton);
        QVERIFY(f.proxy()->acceptHoverEvents());
        QCOMPARE(f.edit.dragPolicy(), ZWidget::Nothing);
        QCOMPARE(f.edit.backgroundColor(), QColor(255, 255, 255, 255));
        QVERIFY(f.edit.hasFrame());
        QVERIFY(qobject_cast<ZFrameItem *>(f.edit.frame())->isVisible());
        QVERIFY(f.edit.focus());

        // The label takes nothing: the focus stays where it is.
        f.edit.setLabel();
        QVERIFY(f.edit.focus());
        QVERIFY(!qobject_cast<ZFrameItem *>(f.edit.frame())->isVisible());
    }

    // Presses reach the editor in field mode only.
    void pressesByMode()
    {
        Field f;
        QSignalSpy buttons(f.editor(), &QLineEditEx::buttonClicked);
        const QPointF at = f.edit.mapToScene(QPointF(30, 12));

        f.edit.setLabel();
        dialogtest::sendMouse(&f.scene, QEvent::GraphicsSceneMousePress, at, Qt::LeftButton);
        dialogtest::sendMouse(&f.scene, QEvent::GraphicsSceneMouseRelease, at, Qt::LeftButton);
        QCOMPARE(buttons.count(), 0);

        f.edit.setEdit();
        for (Qt::MouseButton b : {Qt::LeftButton, Qt::RightButton}) {
            dialogtest::sendMouse(&f.scene, QEvent::GraphicsSceneMousePress, at, b);
            dialogtest::sendMouse(&f.scene, QEvent::GraphicsSceneMouseRelease, at, b);
        }
        dialogtest::sendMouse(&f.scene, QEvent::GraphicsSceneMousePress, at, Qt::MiddleButton);
        dialogtest::sendMouse(&f.scene, QEvent::GraphicsSceneMouseRelease, at, Qt::MiddleButton);
        QCOMPARE(buttons.count(), 2);
        QCOMPARE(buttons.at(0).at(0).value<Qt::MouseButton>(), Qt::LeftButton);
        QCOMPARE(buttons.at(1).at(0).value<Qt::MouseButton>(), Qt::RightButton);
    }

    // In label mode a press on the text drags the window; in field mode it does not.
    void labelLetsWindowDrag()
    {
        Field f;
        auto *parent = new ZSpacer;
        parent->setDragPolicy(ZWidget::WindowMove);
        f.scene.addItem(parent);
        f.edit.setParentItem(parent);
        const QPointF inside = f.edit.mapToScene(QPointF(20, 10));

        f.edit.setLabel();
        QCOMPARE(ZWidget::resolveDragPolicy(&f.edit, inside), ZWidget::WindowMove);
        f.edit.setEdit();
        QCOMPARE(ZWidget::resolveDragPolicy(&f.edit, inside), ZWidget::Nothing);
    }

    // ---- frame --------------------------------------------------------------

    void frame()
    {
        Field f;
        QVERIFY(!f.edit.frame());
        QVERIFY(!f.edit.hasFrame());
        f.edit.setFrameImage(QString());
        QVERIFY(!f.edit.frame());

        f.edit.setFrame(true);
        auto *frame = qobject_cast<ZFrameItem *>(f.edit.frame());
        QVERIFY(frame);
        QCOMPARE(f.edit.frameImage(), QStringLiteral(":/image/theme/lineedit.png"));
        QCOMPARE(frame->frameType(), ZFrameItem::GridFour);
        QCOMPARE(frame->geometry(), f.edit.rect());

        f.edit.resize(200, 30);
        QCOMPARE(frame->geometry(), QRectF(0, 0, 200, 30));
        QCOMPARE(f.proxy()->geometry(), QRectF(0, 0, 200, 30));

        // The editor lies above the frame.
        const QList<QGraphicsItem *> under = f.scene.items(f.edit.mapToScene(QPointF(100, 15)));
        QVERIFY(under.indexOf(f.proxy()) >= 0);
        QVERIFY(under.indexOf(f.proxy()) < under.indexOf(frame));

        f.edit.setFrameImage(QStringLiteral(":/image/theme/lineeditframe.png"));
        QCOMPARE(f.edit.frame(), frame);
        f.edit.setFrame(false);
        QVERIFY(!f.edit.hasFrame());
        QVERIFY(!frame->isVisible());
        f.edit.setFrame(true);
        QCOMPARE(f.edit.frameImage(), QStringLiteral(":/image/theme/lineeditframe.png"));
        QVERIFY(frame->isVisible());
    }

    void frameImageAloneShowsFrame()
    {
        Field f;
        f.edit.setFrameImage(QStringLiteral(":/image/theme/lineeditframe.png"));
        QVERIFY(f.edit.hasFrame());
        QVERIFY(qobject_cast<ZFrameItem *>(f.edit.frame())->isVisible());
    }

    // ---- text and looks -----------------------------------------------------

    void adjustText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("fontSize");
        QTest::newRow("word") << "hello" << 12;
        QTest::newRow("longer") << "hello, wide world" << 12;
        QTest::newRow("empty") << "" << 12;
        QTest::newRow("big font") << "hello" << 30;
        QTest::newRow("chinese") << "提示确认" << 16;
    }

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

    void adjustTextGrowsWithText()
    {
        Field f;
        f.edit.setAdjustText(QStringLiteral("ab"));
        const qreal narrow = f.edit.fixWidth();
        f.edit.setAdjustText(QStringLiteral("abababab"));
        QVERIFY(f.edit.fixWidth() > narrow);
    }

    // Each property lands on the editor.
    void propertiesReachEditor()
    {
        Field f;
        QLineEditEx *e = f.editor();
        struct Row { const char *name; const char *text; };
        const Row rows[] = {
            {"readOnly", "true"},     {"text", "abc"},         {"textColor", "#ff0000"},
            {"fontSize", "17"},       {"maxLength", "5"},      {"mode", "Password"},
            {"textAlignment", "AlignRight"}, {"textMargins", "3,1,4,2"},
            {"validatorTip", "tip"}, {"hasContextMenu", "false"},
            {"edit.chineseContextMenu", "true"},
        };
        for (const Row &r : rows)
            QVERIFY2(ZXmlUI::setPropertyEx(&f.edit, r.name, r.text), r.name);
        QVERIFY(e->isReadOnly());
        QCOMPARE(e->maxLength(), 5);
        QCOMPARE(e->echoMode(), QLineEdit::Password);
        QCOMPARE(e->alignment(), Qt::AlignRight);
        QCOMPARE(e->textMargins(), QMargins(3, 1, 4, 2));

        QCOMPARE(e->palette().color(QPalette::Text), QColor(255, 0, 0));
        QCOMPARE(e->font().pixelSize(), 17);
        QVERIFY(e->chineseContextMenu());
        QCOMPARE(f.edit.validatorTip(), QStringLiteral("tip"));
        QVERIFY(!f.edit.hasContextMenu());
        QCOMPARE(f.edit.property("mode").toInt(), int(QLineEdit::Password));
        QCOMPARE(e->text(), QStringLiteral("abc"));

        // A mask cuts the text to what it admits (and sets the length).
        QVERIFY(ZXmlUI::setPropertyEx(&f.edit, "inputMask", "999"));
        QCOMPARE(e->inputMask(), QStringLiteral("999"));
        QCOMPARE(f.edit.inputMask(), QStringLiteral("999"));
        QCOMPARE(e->text(), QString());

        QVERIFY(ZXmlUI::setPropertyEx(&f.edit, "styleSheet", "color: blue"));
        QCOMPARE(e->styleSheet(), QStringLiteral("color: blue"));
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

    // ---- forwarded signals --------------------------------------------------

    void signalsForwarded()
    {
        Field f;
        QLineEditEx *e = f.editor();
        QSignalSpy changed(&f.edit, &ZLineEdit::textChanged);
        QSignalSpy edited(&f.edit, &ZLineEdit::textEdited);
        QSignalSpy cursor(&f.edit, &ZLineEdit::cursorPositionChanged);
        QSignalSpy returned(&f.edit, &ZLineEdit::returnPressed);
        QSignalSpy finished(&f.edit, &ZLineEdit::editingFinished);
        QSignalSpy selection(&f.edit, &ZLineEdit::selectionChanged);
        QSignalSpy keys(&f.edit, &ZLineEdit::clicked);

        f.edit.setText(QStringLiteral("set"));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(edited.count(), 0);

        f.edit.setFocus(true);
        QTest::keyClicks(e, QStringLiteral("ab"));
        QCOMPARE(f.edit.text(), QStringLiteral("setab"));
        QCOMPARE(edited.count(), 2);
        QCOMPARE(edited.last().at(0).toString(), QStringLiteral("setab"));
        QCOMPARE(cursor.last().at(0).toInt(), 4);
        QCOMPARE(cursor.last().at(1).toInt(), 5);
        QTest::keyClick(e, Qt::Key_Left, Qt::ShiftModifier);
        QVERIFY(selection.count() >= 1);
        QTest::keyClick(e, Qt::Key_Return);
        QCOMPARE(returned.count(), 1);
        QCOMPARE(finished.count(), 1);
        // a, b, then Shift and Left (QTest presses the modifier first), Return.
        QCOMPARE(keys.count(), 5);
        QVERIFY(f.edit.modified());

        f.edit.insert(QStringLiteral("Z"));
        QCOMPARE(f.edit.text(), QStringLiteral("setaZ"));
    }

    // ---- context menu -------------------------------------------------------

    void menuTexts_data()
    {
        QTest::addColumn<bool>("chinese");
        QTest::addColumn<QStringList>("texts");
        auto english = [](const char *text, QKeySequence::StandardKey key) {
            return QString::fromLatin1(text) + QLatin1Char('\t') + QKeySequence(key).toString(QKeySequence::NativeText);
        };
        QTest::newRow("english") << false
                                 << QStringList{english("&Undo", QKeySequence::Undo),
                                                english("&Redo", QKeySequence::Redo),
                                                english("Cu&t", QKeySequence::Cut),
                                                english("&Copy", QKeySequence::Copy),
                                                english("&Paste", QKeySequence::Paste),
                                                QStringLiteral("Delete"),
                                                english("Select All", QKeySequence::SelectAll)};
        QTest::newRow("chinese") << true
                                 << QStringList{QStringLiteral("撤销"), QStringLiteral("重复"), QStringLiteral("剪切"),
                                                QStringLiteral("复制"), QStringLiteral("粘贴"), QStringLiteral("清空"),
                                                QStringLiteral("选择全部")};
    }

    void menuTexts()
    {
        QFETCH(bool, chinese);
        QFETCH(QStringList, texts);
        Field f;
        f.editor()->setChineseContextMenu(chinese);
        MenuProbe probe;
        texttest::requestContextMenu(&f.edit);
        QVERIFY(probe.sawMenu);
        QCOMPARE(probe.texts(), texts);
        // One separator, after Redo.
        QCOMPARE(probe.entries.size(), 8);
        QVERIFY(probe.entries.at(2).separator);
    }

    // Visible and enabled per entry, in the order Undo Redo Cut Copy Paste Delete SelectAll;
    // "-" for the enabled state of a hidden entry.
    void menuRules_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("readOnly");
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("selStart"); // -1: no selection, -2: everything
        QTest::addColumn<int>("selLength");
        QTest::addColumn<QString>("clipboard");
        QTest::addColumn<QString>("typed"); // inserted as the user would, for undo
        QTest::addColumn<QString>("visible");
        QTest::addColumn<QString>("enabled");
        QTest::addColumn<bool>("separator");

        const int normal = QLineEdit::Normal;
        QTest::newRow("empty field") << "" << false << normal << -1 << 0 << "" << "" << "1111110" << "000000-" << true;
        QTest::newRow("empty, clipboard full")
            << "" << false << normal << -1 << 0 << "clip" << "" << "1111110" << "000010-" << true;
        QTest::newRow("text, no selection")
            << "hello" << false << normal << -1 << 0 << "clip" << "" << "1111111" << "0000101" << true;
        QTest::newRow("part selected")
            << "hello" << false << normal << 1 << 2 << "" << "" << "1111111" << "0011011" << true;
        QTest::newRow("all selected")
            << "hello" << false << normal << -2 << 0 << "clip" << "" << "1111110" << "001111-" << true;
        QTest::newRow("password, part selected")
            << "hello" << false << int(QLineEdit::Password) << 1 << 2 << "clip" << "" << "1111111" << "0000111"
            << true;
        QTest::newRow("no-echo, part selected")
            << "hello" << false << int(QLineEdit::NoEcho) << 1 << 2 << "" << "" << "1111111" << "0000011" << true;
        QTest::newRow("read-only, part selected")
            << "hello" << true << normal << 1 << 2 << "clip" << "" << "0001001" << "---1--1" << false;
        QTest::newRow("read-only, all selected")
            << "hello" << true << normal << -2 << 0 << "" << "" << "0001000" << "---1---" << false;
        QTest::newRow("read-only, empty") << "" << true << normal << -1 << 0 << "" << "" << "0001000" << "---0---"
                                          << false;
        QTest::newRow("typed: undo") << "" << false << normal << -1 << 0 << "" << "ab" << "1111111" << "1000001"
                                     << true;
    }

    void menuRules()
    {
        QFETCH(QString, text);
        QFETCH(bool, readOnly);
        QFETCH(int, mode);
        QFETCH(int, selStart);
        QFETCH(int, selLength);
        QFETCH(QString, clipboard);
        QFETCH(QString, typed);
        QFETCH(QString, visible);
        QFETCH(QString, enabled);
        QFETCH(bool, separator);

        Field f;
        f.edit.setText(text);
        f.edit.setMode(QLineEdit::EchoMode(mode));
        if (!typed.isEmpty())
            f.edit.insert(typed);
        f.edit.setReadOnly(readOnly);
        if (selStart == -2)
            f.editor()->selectAll();
        else if (selStart >= 0)
            f.editor()->setSelection(selStart, selLength);
        if (!clipboard.isEmpty())
            QGuiApplication::clipboard()->setText(clipboard);

        MenuProbe probe;
        texttest::requestContextMenu(&f.edit);
        QVERIFY(probe.sawMenu);
        QString seenVisible;
        QString seenEnabled;
        for (const texttest::MenuEntry &e : std::as_const(probe.entries)) {
            if (e.separator) {
                QCOMPARE(e.visible, separator);
                continue;
            }
            seenVisible += e.visible ? QLatin1Char('1') : QLatin1Char('0');
            // A hidden entry reads as disabled whatever it was given: not compared.
            seenEnabled += !e.visible ? QLatin1Char('-') : e.enabled ? QLatin1Char('1') : QLatin1Char('0');
        }
        QCOMPARE(seenVisible, visible);
        QCOMPARE(seenEnabled, enabled);
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
        QTest::newRow("chinese cut") << true << "剪切" << "hlo!" << "el" << "";
        QTest::newRow("chinese delete") << true << "清空" << "" << "clip" << "";
        QTest::newRow("chinese select all") << true << "选择全部" << "hello!" << "clip" << "hello!";
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

    // ---- documents ----------------------------------------------------------

    void fromXml()
    {
        ZSpacer root;
        QVERIFY(ZXmlUI::widgetFromMemory(R"(<uitree>
  <ZLineEdit objectName="age" text="42" intValidator="1,120" validatorTip="An age" maxLength="3"
             hasFrame="true" textMargins="4,0,4,0" fontSize="14" mode="Normal"/>
  <ZLineEdit objectName="price" doubleValidator="0.5,99.5" frameImage=":/image/theme/lineeditframe.png"
             frame.smooth="true"/>
  <ZLineEdit objectName="code" regExpValidator="[A-Z]{3}" mode="Password" hasContextMenu="false"
             edit.chineseContextMenu="true" textAlignment="AlignHCenter|AlignVCenter"/>
</uitree>)", &root));
        auto *age = qobject_cast<ZLineEdit *>(root.findObject(QStringLiteral("age")));
        auto *price = qobject_cast<ZLineEdit *>(root.findObject(QStringLiteral("price")));
        auto *code = qobject_cast<ZLineEdit *>(root.findObject(QStringLiteral("code")));
        QVERIFY(age && price && code);
        QCOMPARE(age->text(), QStringLiteral("42"));
        QCOMPARE(age->intValidator(), QSize(1, 120));
        QCOMPARE(age->validatorTip(), QStringLiteral("An age"));
        QCOMPARE(age->maxLength(), 3);
        QVERIFY(age->hasFrame());
        QCOMPARE(age->frameImage(), QStringLiteral(":/image/theme/lineedit.png"));
        QCOMPARE(age->textMargins(), QMargins(4, 0, 4, 0));
        QCOMPARE(age->fontSize(), 14);
        QCOMPARE(price->doubleValidator(), QSizeF(0.5, 99.5));
        QCOMPARE(price->frameImage(), QStringLiteral(":/image/theme/lineeditframe.png"));
        QVERIFY(qobject_cast<ZFrameItem *>(price->frame())->smooth());
        QCOMPARE(code->regExpValidator(), QStringLiteral("[A-Z]{3}"));
        QCOMPARE(code->mode(), QLineEdit::Password);
        QVERIFY(!code->hasContextMenu());
        QVERIFY(qobject_cast<QLineEditEx *>(code->realLineEdit())->chineseContextMenu());
        QCOMPARE(code->textAlignment(), Qt::AlignHCenter | Qt::AlignVCenter);
    }
};

QTEST_MAIN(tst_ZLineEdit)
#include "tst_zlineedit.moc"
