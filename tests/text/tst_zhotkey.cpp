// The hot-key field: combinations pressed on the real editor, the key-name
// table, both modifier encodings, the clearing keys, the enable switch.

#include "qlineeditex.h"
#include "zhotkey.h"
#include "zlineedit.h"

#include <QtGui/QKeyEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

namespace {

QLineEditEx *editorOf(const ZHotkey &field)
{
    auto *line = qobject_cast<ZLineEdit *>(field.lineEdit());
    return line ? qobject_cast<QLineEditEx *>(line->realLineEdit()) : nullptr;
}

QSet<QString> nameSet(const QString &joined)
{
    QSet<QString> out;
    for (const QString &part : joined.split(QStringLiteral(" + "), Qt::SkipEmptyParts))
        out.insert(part);
    return out;
}

} // namespace

class tst_ZHotkey : public QObject
{
    Q_OBJECT

private slots:
    void pressed_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QString>("text");
        QTest::addColumn<uint>("modifier");
        QTest::addColumn<uint>("virtualKey");

        const int ctrl = Qt::ControlModifier;
        const int alt = Qt::AltModifier;
        const int shift = Qt::ShiftModifier;
        const int keypad = Qt::KeypadModifier;
        QTest::newRow("ctrl+alt+f5") << int(Qt::Key_F5) << (ctrl | alt) << "Ctrl + Alt + F5" << 3u << 116u;
        QTest::newRow("all modifiers, z")
            << int(Qt::Key_Z) << (ctrl | alt | shift) << "Ctrl + Alt + Shift + Z" << 7u << 90u;
        QTest::newRow("shift+a") << int(Qt::Key_A) << shift << "Shift + A" << 4u << 65u;
        QTest::newRow("plain f1") << int(Qt::Key_F1) << 0 << "F1" << 0u << 112u;
        QTest::newRow("f12") << int(Qt::Key_F12) << 0 << "F12" << 0u << 123u;
        QTest::newRow("backspace clears") << int(Qt::Key_Backspace) << 0 << "N/A" << 0u << 0u;
        QTest::newRow("ctrl+backspace clears") << int(Qt::Key_Backspace) << ctrl << "N/A" << 0u << 0u;
        QTest::newRow("shift+delete clears") << int(Qt::Key_Delete) << shift << "N/A" << 0u << 0u;
        QTest::newRow("ctrl+space") << int(Qt::Key_Space) << ctrl << "Ctrl + " << 1u << 0u;
        QTest::newRow("space alone") << int(Qt::Key_Space) << 0 << "N/A" << 0u << 0u;
        QTest::newRow("escape has no name") << int(Qt::Key_Escape) << 0 << "N/A" << 0u << 0u;
        QTest::newRow("f13 has no name") << int(Qt::Key_F13) << alt << "Alt + " << 2u << 0u;
        QTest::newRow("keypad 0") << int(Qt::Key_0) << keypad << "Num0" << 0u << 96u;
        QTest::newRow("keypad *") << int(Qt::Key_Asterisk) << keypad << "Num*" << 0u << 106u;
        QTest::newRow("keypad +") << int(Qt::Key_Plus) << (keypad | ctrl) << "Ctrl + Num+" << 1u << 107u;
        QTest::newRow("keypad /") << int(Qt::Key_Slash) << keypad << "Num/" << 0u << 111u;
        QTest::newRow("shifted 8 is the 8 key") << int(Qt::Key_Asterisk) << shift << "Shift + 8" << 4u << 56u;
        QTest::newRow("alt+[") << int(Qt::Key_BracketLeft) << alt << "Alt + [" << 2u << 219u;
        QTest::newRow("backslash") << int(Qt::Key_Backslash) << ctrl << "Ctrl + \\" << 1u << 220u;
        QTest::newRow("semicolon") << int(Qt::Key_Semicolon) << 0 << ";" << 0u << 186u;
        QTest::newRow("apostrophe") << int(Qt::Key_Apostrophe) << 0 << "'" << 0u << 222u;
        QTest::newRow("plus is the = key") << int(Qt::Key_Plus) << shift << "Shift + =" << 4u << 187u;
        QTest::newRow("home") << int(Qt::Key_Home) << 0 << "Home" << 0u << 36u;
        QTest::newRow("left") << int(Qt::Key_Left) << 0 << "Left" << 0u << 37u;
        QTest::newRow("caps lock") << int(Qt::Key_CapsLock) << 0 << "Caps Lock" << 0u << 20u;
        QTest::newRow("num lock") << int(Qt::Key_NumLock) << 0 << "Num Lock" << 0u << 144u;
        QTest::newRow("lone ctrl") << int(Qt::Key_Control) << 0 << "Ctrl + " << 1u << 0u;
        QTest::newRow("lone shift") << int(Qt::Key_Shift) << 0 << "Shift + " << 4u << 0u;
        QTest::newRow("alt after ctrl") << int(Qt::Key_Alt) << ctrl << "Ctrl + Alt + " << 3u << 0u;
    }

    void pressed()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(QString, text);
        QFETCH(uint, modifier);
        QFETCH(uint, virtualKey);

        ZHotkey field;
        QSignalSpy spy(&field, &ZHotkey::hotkeyChanged);
        QTest::keyClick(editorOf(field), Qt::Key(key), Qt::KeyboardModifiers(modifiers));

        // As on a keyboard, each modifier key is pressed (and announced) first.
        int presses = 1;
        for (int m : {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier})
            presses += (modifiers & m) ? 1 : 0;
        QCOMPARE(spy.count(), presses);
        QCOMPARE(spy.last().at(0).toUInt(), modifier);
        QCOMPARE(spy.last().at(1).toUInt(), virtualKey);
        QCOMPARE(field.getHotkey(), text);
        QCOMPARE(editorOf(field)->text(), text);
        quint32 m = 99;
        quint32 k = 99;
        field.getHotkey(m, k);
        QCOMPARE(m, modifier);
        QCOMPARE(k, virtualKey);
    }

    // A new combination replaces the previous one, also a cleared field.
    void sequence()
    {
        ZHotkey field;
        QLineEditEx *editor = editorOf(field);
        QCOMPARE(editor->text(), QStringLiteral("Hotkey"));
        QTest::keyClick(editor, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(field.getHotkey(), QStringLiteral("Ctrl + S"));
        QTest::keyClick(editor, Qt::Key_Delete);
        QCOMPARE(field.getHotkey(), QStringLiteral("N/A"));
        QTest::keyClick(editor, Qt::Key_F2, Qt::AltModifier | Qt::ShiftModifier);
        QCOMPARE(field.getHotkey(), QStringLiteral("Alt + Shift + F2"));
    }

    // The native bits of Windows key events: left and right keys alike.
    void setHotkeyNative_data()
    {
        QTest::addColumn<uint>("native");
        QTest::addColumn<uint>("key");
        QTest::addColumn<QString>("text");
        QTest::addColumn<uint>("modifier");
        QTest::addColumn<uint>("virtualKey");
        QTest::newRow("left ctrl") << 0x02u << 65u << "Ctrl + A" << 1u << 65u;
        QTest::newRow("right ctrl") << 0x20u << 65u << "Ctrl + A" << 1u << 65u;
        QTest::newRow("left alt") << 0x04u << 65u << "Alt + A" << 2u << 65u;
        QTest::newRow("right alt") << 0x40u << 65u << "Alt + A" << 2u << 65u;
        QTest::newRow("left shift") << 0x01u << 65u << "Shift + A" << 4u << 65u;
        QTest::newRow("right shift") << 0x10u << 65u << "Shift + A" << 4u << 65u;
        QTest::newRow("both ctrls, right alt") << 0x62u << 116u << "Ctrl + Alt + F5" << 3u << 116u;
        QTest::newRow("meta bits count for nothing") << 0x88u << 65u << "A" << 0u << 65u;
        QTest::newRow("unnamed code") << 0x02u << 255u << "Ctrl + " << 1u << 0u;
        QTest::newRow("huge code") << 0u << 0xFFFFFFFFu << "N/A" << 0u << 0u;
        QTest::newRow("space keeps modifiers") << 0x11u << 32u << "Shift + " << 4u << 0u;
        QTest::newRow("backspace drops them") << 0x77u << 8u << "N/A" << 0u << 0u;
        QTest::newRow("delete drops them") << 0x22u << 46u << "N/A" << 0u << 0u;
        QTest::newRow("nothing") << 0u << 0u << "N/A" << 0u << 0u;
    }

    void setHotkeyNative()
    {
        QFETCH(uint, native);
        QFETCH(uint, key);
        QFETCH(QString, text);
        QFETCH(uint, modifier);
        QFETCH(uint, virtualKey);
        ZHotkey field;
        QSignalSpy spy(&field, &ZHotkey::hotkeyChanged);
        field.setHotkey(native, key);
        QCOMPARE(spy.count(), 0); // only key presses announce
        QCOMPARE(field.getHotkey(), text);
        quint32 m = 99;
        quint32 k = 99;
        field.getHotkey(m, k);
        QCOMPARE(m, modifier);
        QCOMPARE(k, virtualKey);
    }

    void virtualKeyNames_data()
    {
        QTest::addColumn<uint>("code");
        QTest::addColumn<QString>("name");
        // The ends of each named range, the gaps between them, and names no press above reaches.
        const struct { uint code; const char *name; } rows[] = {
            {0, ""},          {7, ""},          {8, "Backspace"}, {9, ""},          {19, ""},
            {21, ""},         {31, ""},         {32, "Space"},    {33, "PageUp"},   {35, "End"},
            {38, "Up"},       {40, "Down"},     {41, ""},         {44, ""},         {46, "Delete"},
            {47, ""},         {48, "0"},        {57, "9"},        {58, ""},         {64, ""},
            {77, "M"},        {91, ""},         {95, ""},         {105, "Num9"},    {108, ""},
            {124, ""},        {143, ""},        {145, ""},        {185, ""},        {188, ","},
            {191, "/"},       {193, ""},        {218, ""},        {221, "]"},       {223, ""},
            {34, "PageDown"}, {45, "Insert"},   {109, "Num-"},    {110, "Num."},    {192, "`"},
            {0x141, ""},      {0xFFFFFFFF, ""},
        };
        for (const auto &r : rows)
            QTest::newRow(qPrintable(QString::number(r.code))) << r.code << QString::fromLatin1(r.name);
    }

    void virtualKeyNames()
    {
        QFETCH(uint, code);
        QFETCH(QString, name);
        QCOMPARE(ZHotkey::getVirtualKeyName(code), name);
    }

    // The field's own encoding (1 Ctrl, 2 Alt, 4 Shift) and the static's (1 Shift, 2 Ctrl, 4 Alt).
    void modifierNames_data()
    {
        QTest::addColumn<uint>("bits");
        QTest::addColumn<QString>("own");
        QTest::addColumn<QString>("other");
        QTest::newRow("0") << 0u << "" << "";
        QTest::newRow("1") << 1u << "Ctrl" << "Shift";
        QTest::newRow("2") << 2u << "Alt" << "Ctrl";
        QTest::newRow("3") << 3u << "Ctrl + Alt" << "Shift + Ctrl";
        QTest::newRow("4") << 4u << "Shift" << "Alt";
        QTest::newRow("5") << 5u << "Ctrl + Shift" << "Shift + Alt";
        QTest::newRow("6") << 6u << "Alt + Shift" << "Ctrl + Alt";
        QTest::newRow("7") << 7u << "Ctrl + Alt + Shift" << "Shift + Ctrl + Alt";
        QTest::newRow("high bits ignored") << 0xF8u << "" << "";
    }

    void modifierNames()
    {
        QFETCH(uint, bits);
        QFETCH(QString, own);
        QFETCH(QString, other);
        ZHotkey field;
        QCOMPARE(field._getModifierKeyName(bits), own);
        QCOMPARE(ZHotkey::getModifierKeyName(bits), other);
        // Converted to the other encoding, a set names the same keys.
        QCOMPARE(nameSet(ZHotkey::getModifierKeyName(ZHotkey::virtualKeyToModifier(bits))), nameSet(own));
    }

    void enableSwitch()
    {
        ZHotkey field;
        QLineEditEx *editor = editorOf(field);
        QSignalSpy spy(&field, &ZHotkey::hotkeyChanged);

        field.setEnableHotKey(false);
        editor->setText(QString());
        QTest::keyClicks(editor, QStringLiteral("ab"));
        QTest::keyClick(editor, Qt::Key_F5, Qt::ControlModifier);
        QCOMPARE(editor->text(), QStringLiteral("ab"));
        QCOMPARE(spy.count(), 0);
        QKeyEvent override(QEvent::ShortcutOverride, Qt::Key_S, Qt::ControlModifier);
        override.ignore();
        QCoreApplication::sendEvent(editor, &override);
        QVERIFY(!override.isAccepted());

        field.setEnableHotKey(true);
        QTest::keyClick(editor, Qt::Key_F5, Qt::ControlModifier);
        QCOMPARE(editor->text(), QStringLiteral("Ctrl + F5"));
        QCOMPARE(spy.count(), 2); // Ctrl, then F5
        // Window shortcuts do not steal combinations from the field.
        QKeyEvent again(QEvent::ShortcutOverride, Qt::Key_S, Qt::ControlModifier);
        again.ignore();
        QCoreApplication::sendEvent(editor, &again);
        QVERIFY(again.isAccepted());
    }

    void setHotKeyText()
    {
        ZHotkey field;
        field.setHotkey(0x02, 'Q');
        field.setHotKey(QStringLiteral("Custom"));
        QCOMPARE(field.getHotkey(), QStringLiteral("Custom"));
        QCOMPARE(editorOf(field)->text(), QStringLiteral("Custom"));
        quint32 m = 0;
        quint32 k = 0;
        field.getHotkey(m, k);
        QCOMPARE(m, 1u);
        QCOMPARE(k, quint32('Q'));
    }

    // An empty background falls back to the default frame image.
    void emptyBackground()
    {
        ZHotkey field;
        auto *line = qobject_cast<ZLineEdit *>(field.lineEdit());
        field.setBackgroundImage(QString());
        QCOMPARE(field.backgroundImage(), QStringLiteral(":/image/theme/lineedit.png"));
        QCOMPARE(line->frameImage(), QStringLiteral(":/image/theme/lineedit.png"));
    }
};

QTEST_MAIN(tst_ZHotkey)
#include "tst_zhotkey.moc"
