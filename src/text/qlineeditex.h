#ifndef QLINEEDITEX_H
#define QLINEEDITEX_H

#include "zglobal.h"

#include <QtWidgets/qlineedit.h>

#include <memory>

class QLineEditExPrivate;

/*!
 * \brief The editor inside ZLineEdit: a QLineEdit that reports more.
 *
 * It tells about focus changes, mouse presses, Caps Lock in password mode and
 * the Up and Down keys, and emits clicked() for every key press it handles
 * (the name is historical: it is a key signal). Key presses are accepted
 * after the standard handling, so they never travel on to the items behind.
 *
 * Its context menu is the toolkit's (see showContextMenu()). While the editor
 * lives inside a graphics proxy, a context-menu request is left to the item
 * hosting it, which decides whether a menu is offered at all.
 */
class ZKIT_EXPORT QLineEditEx : public QLineEdit
{
    Q_OBJECT
    Q_PROPERTY(bool chineseContextMenu READ chineseContextMenu WRITE setChineseContextMenu)

public:
    explicit QLineEditEx(QWidget *parent = nullptr);
    explicit QLineEditEx(const QString &text, QWidget *parent = nullptr);
    ~QLineEditEx() override;

    bool chineseContextMenu() const;
    /*! Whether the context menu speaks Chinese instead of English. */
    void setChineseContextMenu(bool on);

public Q_SLOTS:
    /*!
     * Runs the context menu at the cursor until an entry is chosen or the
     * menu is dismissed, then performs the entry: undo, redo, cut, copy,
     * paste, clear (the "Delete" entry) or select all. Read-only editors
     * offer only Copy and Select All; masked text can be neither cut nor
     * copied.
     */
    void showContextMenu();

Q_SIGNALS:
    void focusOut();
    void focusIn();
    void buttonClicked(Qt::MouseButton button);
    /*! Caps Lock was pressed while the echo mode is Password. */
    void capsLockChanged();
    /*! Up (\a bUp true) or Down was pressed. */
    void updownKeyClicked(bool bUp);
    /*! Follows every key press, after the editor has handled it. */
    void clicked(QKeyEvent *event);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    std::unique_ptr<QLineEditExPrivate> d_zptr;
    Z_DECLARE_PRIVATE(QLineEditEx)
    Q_DISABLE_COPY(QLineEditEx)
};

#endif // QLINEEDITEX_H
