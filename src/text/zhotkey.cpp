#include "zhotkey.h"
#include "zhotkey_p.h"

#include "qlineeditex.h"
#include "zcreator.h"
#include "zlineedit.h"

#include <QtGui/qevent.h>

Z_REGISTER_WIDGET(ZHotkey);

namespace {

// Windows native modifier bits, as key events carry them there.
constexpr quint32 kNativeShift = 0x11;
constexpr quint32 kNativeControl = 0x22;
constexpr quint32 kNativeAlt = 0x44;

constexpr quint32 kBackspace = 8;
constexpr quint32 kSpace = 32;
constexpr quint32 kDelete = 46;

struct KeyCode
{
    int key;
    quint32 code;
};

// Qt keys to virtual-key codes, apart from letters, digits and F keys.
// Shifted symbols are those of a US layout, where they share a key.
const KeyCode kKeys[] = {
    {Qt::Key_Backspace, 8},
    {Qt::Key_Tab, 9},
    {Qt::Key_Backtab, 9},
    {Qt::Key_Clear, 12},
    {Qt::Key_Return, 13},
    {Qt::Key_Enter, 13},
    {Qt::Key_Shift, 16},
    {Qt::Key_Control, 17},
    {Qt::Key_Alt, 18},
    {Qt::Key_Pause, 19},
    {Qt::Key_CapsLock, 20},
    {Qt::Key_Escape, 27},
    {Qt::Key_Space, 32},
    {Qt::Key_PageUp, 33},
    {Qt::Key_PageDown, 34},
    {Qt::Key_End, 35},
    {Qt::Key_Home, 36},
    {Qt::Key_Left, 37},
    {Qt::Key_Up, 38},
    {Qt::Key_Right, 39},
    {Qt::Key_Down, 40},
    {Qt::Key_Print, 44},
    {Qt::Key_Insert, 45},
    {Qt::Key_Delete, 46},
    {Qt::Key_Meta, 91},
    {Qt::Key_Menu, 93},
    {Qt::Key_NumLock, 144},
    {Qt::Key_ScrollLock, 145},
    {Qt::Key_Semicolon, 186},
    {Qt::Key_Colon, 186},
    {Qt::Key_Equal, 187},
    {Qt::Key_Plus, 187},
    {Qt::Key_Comma, 188},
    {Qt::Key_Less, 188},
    {Qt::Key_Minus, 189},
    {Qt::Key_Underscore, 189},
    {Qt::Key_Period, 190},
    {Qt::Key_Greater, 190},
    {Qt::Key_Slash, 191},
    {Qt::Key_Question, 191},
    {Qt::Key_QuoteLeft, 192},
    {Qt::Key_AsciiTilde, 192},
    {Qt::Key_BracketLeft, 219},
    {Qt::Key_BraceLeft, 219},
    {Qt::Key_Backslash, 220},
    {Qt::Key_Bar, 220},
    {Qt::Key_BracketRight, 221},
    {Qt::Key_BraceRight, 221},
    {Qt::Key_Apostrophe, 222},
    {Qt::Key_QuoteDbl, 222},
    {Qt::Key_Exclam, '1'},
    {Qt::Key_At, '2'},
    {Qt::Key_NumberSign, '3'},
    {Qt::Key_Dollar, '4'},
    {Qt::Key_Percent, '5'},
    {Qt::Key_AsciiCircum, '6'},
    {Qt::Key_Ampersand, '7'},
    {Qt::Key_Asterisk, '8'},
    {Qt::Key_ParenLeft, '9'},
    {Qt::Key_ParenRight, '0'},
};

// Keys of the numeric keypad.
const KeyCode kKeypadKeys[] = {
    {Qt::Key_Asterisk, 106},
    {Qt::Key_Plus, 107},
    {Qt::Key_Minus, 109},
    {Qt::Key_Period, 110},
    {Qt::Key_Comma, 110},
    {Qt::Key_Slash, 111},
};

struct KeyName
{
    quint32 code;
    const char *name;
};

const KeyName kNames[] = {
    {8, "Backspace"},  {20, "Caps Lock"}, {32, "Space"},   {33, "PageUp"},  {34, "PageDown"},
    {35, "End"},       {36, "Home"},      {37, "Left"},    {38, "Up"},      {39, "Right"},
    {40, "Down"},      {45, "Insert"},    {46, "Delete"},  {106, "Num*"},   {107, "Num+"},
    {109, "Num-"},     {110, "Num."},     {111, "Num/"},   {144, "Num Lock"}, {186, ";"},
    {187, "="},        {188, ","},        {189, "-"},      {190, "."},      {191, "/"},
    {192, "`"},        {219, "["},        {220, "\\"},     {221, "]"},      {222, "'"},
};

// Appends \a name to a " + "-joined list.
void appendName(QString &text, const char *name)
{
    if (!text.isEmpty())
        text += QLatin1String(" + ");
    text += QLatin1String(name);
}

} // namespace

// ---------------------------------------------------------------------------
// ZHotkeyPrivate

void ZHotkeyPrivate::init()
{
    Z_Q(ZHotkey);
    lineEdit = new ZLineEdit(q);
    lineEdit->setObjectName(QStringLiteral("edit"));
    lineEdit->setFrame(true);
    lineEdit->setTextMargins(QMargins(4, 0, 4, 0));
    lineEdit->setText(ZHotkey::tr("Hotkey"));
    editor = static_cast<QLineEditEx *>(lineEdit->realLineEdit());
    editor->installEventFilter(q);
    q->setDragPolicy(ZWidget::Nothing);
    QObject::connect(editor, &QLineEditEx::focusOut, q, &ZHotkey::focusOut);
}

// ---------------------------------------------------------------------------
// ZHotkey

ZHotkey::ZHotkey(QGraphicsItem *parent)
    : ZHotkey(*new ZHotkeyPrivate, parent)
{
}

ZHotkey::ZHotkey(ZHotkeyPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    d_func()->init();
}

ZHotkey::~ZHotkey()
{
    // The line edit goes after this object, with the graphics children.
    Z_D(ZHotkey);
    d->editor->removeEventFilter(this);
    QObject::disconnect(d->editor, nullptr, this, nullptr);
}

QObject *ZHotkey::lineEdit() const
{
    return d_func()->lineEdit;
}

void ZHotkey::setHotkey(quint32 nativeModifiers, quint32 virtualKey)
{
    Z_D(ZHotkey);
    quint32 modifier = modifierToVirtualKey(nativeModifiers);
    quint32 key = virtualKey;
    if (key == kSpace) {
        key = 0;
    } else if (key == kBackspace || key == kDelete) {
        key = 0;
        modifier = 0;
    }

    QString text = _getModifierKeyName(modifier);
    if (!text.isEmpty())
        text += QLatin1String(" + ");
    const QString keyName = getVirtualKeyName(key);
    if (keyName.isEmpty())
        key = 0;
    text += keyName;
    if (text.isEmpty())
        text = tr("N/A");

    d->modifier = modifier;
    d->virtualKey = key;
    d->text = text;
    d->lineEdit->setText(text);
}

void ZHotkey::getHotkey(quint32 &modifier, quint32 &virtualKey) const
{
    Z_D(const ZHotkey);
    modifier = d->modifier;
    virtualKey = d->virtualKey;
}

QString ZHotkey::getHotkey() const
{
    return d_func()->text;
}

void ZHotkey::setHotKey(const QString &text)
{
    Z_D(ZHotkey);
    d->text = text;
    d->lineEdit->setText(text);
}

bool ZHotkey::isHotKeyEnabled() const
{
    return d_func()->enabled;
}

void ZHotkey::setEnableHotKey(bool on)
{
    d_func()->enabled = on;
}

void ZHotkey::setFocus()
{
    d_func()->lineEdit->setFocus(true);
}

QString ZHotkey::backgroundImage() const
{
    return d_func()->lineEdit->frameImage();
}

void ZHotkey::setBackgroundImage(const QString &path)
{
    d_func()->lineEdit->setFrameImage(path);
}

QString ZHotkey::getModifierKeyName(quint32 modifier)
{
    QString text;
    if (modifier & 1)
        appendName(text, "Shift");
    if (modifier & 2)
        appendName(text, "Ctrl");
    if (modifier & 4)
        appendName(text, "Alt");
    return text;
}

QString ZHotkey::_getModifierKeyName(quint32 modifier) const
{
    QString text;
    if (modifier & Ctrl)
        appendName(text, "Ctrl");
    if (modifier & Alt)
        appendName(text, "Alt");
    if (modifier & Shift)
        appendName(text, "Shift");
    return text;
}

QString ZHotkey::getVirtualKeyName(quint32 virtualKey)
{
    if ((virtualKey >= '0' && virtualKey <= '9') || (virtualKey >= 'A' && virtualKey <= 'Z'))
        return QString(QChar(char16_t(virtualKey)));
    if (virtualKey >= 96 && virtualKey <= 105)
        return QStringLiteral("Num%1").arg(virtualKey - 96);
    if (virtualKey >= 112 && virtualKey <= 123)
        return QStringLiteral("F%1").arg(virtualKey - 111);
    for (const KeyName &k : kNames) {
        if (k.code == virtualKey)
            return QLatin1String(k.name);
    }
    return QString();
}

quint32 ZHotkey::nativeModifiersFromQt(Qt::KeyboardModifiers modifiers)
{
    quint32 native = 0;
    if (modifiers & Qt::ShiftModifier)
        native |= 0x01;
    if (modifiers & Qt::ControlModifier)
        native |= 0x02;
    if (modifiers & Qt::AltModifier)
        native |= 0x04;
    return native;
}

quint32 ZHotkey::virtualKeyFromQt(int key, Qt::KeyboardModifiers modifiers)
{
    const bool keypad = modifiers & Qt::KeypadModifier;
    if (key >= Qt::Key_0 && key <= Qt::Key_9)
        return keypad ? quint32(96 + key - Qt::Key_0) : quint32(key);
    if (key >= Qt::Key_A && key <= Qt::Key_Z)
        return quint32(key);
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return quint32(112 + key - Qt::Key_F1);
    if (keypad) {
        for (const KeyCode &k : kKeypadKeys) {
            if (k.key == key)
                return k.code;
        }
    }
    for (const KeyCode &k : kKeys) {
        if (k.key == key)
            return k.code;
    }
    return 0;
}

quint32 ZHotkey::modifierToVirtualKey(quint32 nativeModifiers)
{
    quint32 modifier = 0;
    if (nativeModifiers & kNativeControl)
        modifier |= Ctrl;
    if (nativeModifiers & kNativeAlt)
        modifier |= Alt;
    if (nativeModifiers & kNativeShift)
        modifier |= Shift;
    return modifier;
}

quint32 ZHotkey::virtualKeyToModifier(quint32 modifier)
{
    quint32 other = 0;
    if (modifier & 1)
        other |= 2;
    if (modifier & 4)
        other |= 1;
    if (modifier & 2)
        other |= 4;
    return other;
}

bool ZHotkey::eventFilter(QObject *watched, QEvent *event)
{
    Z_D(ZHotkey);
    if (watched != d->editor || !d->enabled)
        return ZWidget::eventFilter(watched, event);
    if (event->type() == QEvent::ShortcutOverride) {
        // Every combination is the field's, none a window's shortcut.
        event->accept();
        return true;
    }
    if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        // A modifier key counts as held while it is pressed, whichever state
        // the platform reports with its own press.
        Qt::KeyboardModifiers modifiers = key->modifiers();
        if (key->key() == Qt::Key_Control)
            modifiers |= Qt::ControlModifier;
        else if (key->key() == Qt::Key_Alt)
            modifiers |= Qt::AltModifier;
        else if (key->key() == Qt::Key_Shift)
            modifiers |= Qt::ShiftModifier;
        setHotkey(nativeModifiersFromQt(modifiers), virtualKeyFromQt(key->key(), modifiers));
        emit hotkeyChanged(d->modifier, d->virtualKey);
        return true;
    }
    return ZWidget::eventFilter(watched, event);
}

QSizeF ZHotkey::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    QSizeF hint = ZWidget::sizeHint(which, constraint);
    if (which == Qt::PreferredSize)
        hint = hint.expandedTo(d_func()->lineEdit->effectiveSizeHint(Qt::PreferredSize));
    return hint;
}

void ZHotkey::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    ZWidget::resizeEvent(event);
    d_func()->lineEdit->setGeometry(rect());
}
