#include "qlineeditex.h"

#include "zeditmenu_p.h"

#include <QtCore/qpointer.h>
#include <QtGui/qevent.h>

class QLineEditExPrivate
{
public:
    bool chineseContextMenu = false;
};

QLineEditEx::QLineEditEx(QWidget *parent)
    : QLineEdit(parent)
    , d_zptr(new QLineEditExPrivate)
{
}

QLineEditEx::QLineEditEx(const QString &text, QWidget *parent)
    : QLineEdit(text, parent)
    , d_zptr(new QLineEditExPrivate)
{
}

QLineEditEx::~QLineEditEx() = default;

bool QLineEditEx::chineseContextMenu() const
{
    return d_func()->chineseContextMenu;
}

void QLineEditEx::setChineseContextMenu(bool on)
{
    d_func()->chineseContextMenu = on;
}

void QLineEditEx::showContextMenu()
{
    ZEditMenu::State state;
    state.readOnly = isReadOnly();
    state.undoAvailable = isUndoAvailable();
    state.redoAvailable = isRedoAvailable();
    state.hasSelection = hasSelectedText();
    state.copyAllowed = echoMode() == QLineEdit::Normal;
    state.hasText = !text().isEmpty();
    state.wholeTextSelected = selectedText() == text();

    // The menu runs an event loop of its own, in which anything may happen
    // to the editor.
    const QPointer<QLineEditEx> guard(this);
    const ZEditMenu::Entry entry = ZEditMenu::exec(state, chineseContextMenu(), "QLineEdit");
    if (!guard)
        return;
    switch (entry) {
    case ZEditMenu::Undo:
        undo();
        break;
    case ZEditMenu::Redo:
        redo();
        break;
    case ZEditMenu::Cut:
        cut();
        break;
    case ZEditMenu::Copy:
        copy();
        break;
    case ZEditMenu::Paste:
        paste();
        break;
    case ZEditMenu::Delete:
        clear();
        break;
    case ZEditMenu::SelectAll:
        selectAll();
        break;
    case ZEditMenu::None:
        break;
    }
}

void QLineEditEx::keyPressEvent(QKeyEvent *event)
{
    QLineEdit::keyPressEvent(event);
    if (echoMode() == QLineEdit::Password && event->key() == Qt::Key_CapsLock)
        emit capsLockChanged();
    else if (event->key() == Qt::Key_Up)
        emit updownKeyClicked(true);
    else if (event->key() == Qt::Key_Down)
        emit updownKeyClicked(false);
    event->accept();
    emit clicked(event);
}

void QLineEditEx::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    emit focusIn();
}

void QLineEditEx::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    emit focusOut();
}

void QLineEditEx::mousePressEvent(QMouseEvent *event)
{
    const Qt::MouseButton button = event->button();
    QLineEdit::mousePressEvent(event);
    emit buttonClicked(button);
}

void QLineEditEx::contextMenuEvent(QContextMenuEvent *event)
{
    if (window()->graphicsProxyWidget()) {
        event->ignore();
        return;
    }
    event->accept();
    showContextMenu();
}
