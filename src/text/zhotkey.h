#ifndef ZHOTKEY_H
#define ZHOTKEY_H

#include "zwidget.h"

class ZHotkeyPrivate;
class ZLineEdit;

/*!
 * \brief A field in which the user presses the key combination of a hot key.
 *
 * The combination shows as text in a ZLineEdit, modifier names and the key
 * name joined by " + " ("Ctrl + Alt + F5"), and is reported as a modifier
 * set (1 Ctrl, 2 Alt, 4 Shift) and a Windows virtual-key code. The numbers
 * are the same on every platform: key events are translated through a fixed
 * table (see virtualKeyFromQt()).
 *
 * Backspace and Delete clear the field ("N/A", both numbers 0); Space is no
 * key of its own, so Ctrl+Space keeps the Ctrl and no key. A key without a
 * name in the table (Escape, Tab, F13, a lone modifier, ...) leaves the key 0.
 *
 * While the field is disabled with setEnableHotKey(false), keys reach the
 * editor as ordinary typing.
 */
class ZKIT_EXPORT ZHotkey : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(QString backgroundImage READ backgroundImage WRITE setBackgroundImage)
    Q_PROPERTY(bool enableHotKey READ isHotKeyEnabled WRITE setEnableHotKey)
    Q_PROPERTY(QObject *edit READ lineEdit)

public:
    /*! Bits of the modifier set. */
    enum Modifier : int { Ctrl = 1, Alt = 2, Shift = 4 };
    Q_ENUM(Modifier)

    Q_INVOKABLE explicit ZHotkey(QGraphicsItem *parent = nullptr);
    ~ZHotkey() override;

    /*! The line edit showing the combination. */
    QObject *lineEdit() const;

    /*!
     * Takes a combination: \a nativeModifiers in the bits key events carry on
     * Windows (0x22 Control, 0x44 Alt, 0x11 Shift, left and right), \a
     * virtualKey a virtual-key code. Shows and stores the text; emits nothing.
     */
    void setHotkey(quint32 nativeModifiers, quint32 virtualKey);
    /*! The modifier set and virtual key of the last combination. */
    void getHotkey(quint32 &modifier, quint32 &virtualKey) const;
    /*! The text shown. */
    QString getHotkey() const;
    /*! Shows \a text as it stands; the numbers stay. */
    void setHotKey(const QString &text);

    bool isHotKeyEnabled() const;
    /*! Whether key presses pick the combination (the default) or are typed. */
    void setEnableHotKey(bool on);
    /*! Gives the editor the keyboard focus. */
    void setFocus();

    QString backgroundImage() const;
    /*! The frame images of the field; an empty path is ignored. */
    void setBackgroundImage(const QString &path);

    /*!
     * Names in the other encoding of modifier sets (1 Shift, 2 Ctrl, 4 Alt),
     * joined by " + " in that order.
     */
    static QString getModifierKeyName(quint32 modifier);
    /*! "A", "7", "F5", "Num*", "PageUp", ... ; empty for codes without a name. */
    static QString getVirtualKeyName(quint32 virtualKey);

    /*! The Windows native modifier bits for Qt modifiers (left-hand keys). */
    static quint32 nativeModifiersFromQt(Qt::KeyboardModifiers modifiers);
    /*!
     * The Windows virtual-key code of a Qt key; keypad keys are told apart by
     * Qt::KeypadModifier, and shifted symbols of a US layout give the code of
     * their key. 0 for keys without a code.
     */
    static quint32 virtualKeyFromQt(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

Q_SIGNALS:
    /*! A key press chose a combination. */
    void hotkeyChanged(quint32 modifierKey, quint32 virtualKey);
    void focusOut();

protected:
    ZHotkey(ZHotkeyPrivate &dd, QGraphicsItem *parent);

    /*! Names of a modifier set: "Ctrl", "Alt", "Shift" joined by " + ". */
    QString _getModifierKeyName(quint32 modifier) const;

    bool eventFilter(QObject *watched, QEvent *event) override;
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;

private:
    // Native modifier bits to the modifier set.
    static quint32 modifierToVirtualKey(quint32 nativeModifiers);
    // The modifier set to the encoding of getModifierKeyName().
    static quint32 virtualKeyToModifier(quint32 modifier);

    Z_DECLARE_PRIVATE(ZHotkey)
    Q_DISABLE_COPY(ZHotkey)
    friend class tst_ZHotkey;
};

#endif // ZHOTKEY_H
