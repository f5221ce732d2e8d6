#include "zeditmenu_p.h"

#include "zaction.h"
#include "zmenu.h"

#include <QtCore/qcoreapplication.h>
#include <QtGui/qclipboard.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qkeysequence.h>

namespace {

struct EntryText
{
    ZEditMenu::Entry entry;
    const char *english;
    const char *chinese;
    QKeySequence::StandardKey key;
};

// In menu order; the separator goes after Redo.
const EntryText kEntries[] = {
    {ZEditMenu::Undo, QT_TRANSLATE_NOOP("QLineEdit", "&Undo"), "撤销", QKeySequence::Undo},
    {ZEditMenu::Redo, QT_TRANSLATE_NOOP("QLineEdit", "&Redo"), "重复", QKeySequence::Redo},
    {ZEditMenu::Cut, QT_TRANSLATE_NOOP("QLineEdit", "Cu&t"), "剪切", QKeySequence::Cut},
    {ZEditMenu::Copy, QT_TRANSLATE_NOOP("QLineEdit", "&Copy"), "复制", QKeySequence::Copy},
    {ZEditMenu::Paste, QT_TRANSLATE_NOOP("QLineEdit", "&Paste"), "粘贴", QKeySequence::Paste},
    {ZEditMenu::Delete, QT_TRANSLATE_NOOP("QLineEdit", "Delete"), "清空", QKeySequence::UnknownKey},
    {ZEditMenu::SelectAll, QT_TRANSLATE_NOOP("QLineEdit", "Select All"), "选择全部", QKeySequence::SelectAll},
};

QString entryText(const EntryText &e, bool chinese, const char *context)
{
    if (chinese)
        return QString::fromUtf8(e.chinese);
    QString text = QCoreApplication::translate(context, e.english);
    if (e.key != QKeySequence::UnknownKey) {
        const QString keys = QKeySequence(e.key).toString(QKeySequence::NativeText);
        if (!keys.isEmpty())
            text += QLatin1Char('\t') + keys;
    }
    return text;
}

} // namespace

void ZEditMenu::populate(ZMenu *menu, const State &s, bool chinese, const char *context)
{
    if (!menu)
        return;
    const QClipboard *clipboard = QGuiApplication::clipboard();
    const bool canPaste = clipboard && !clipboard->text().isEmpty();
    const bool canCopy = s.hasSelection && s.copyAllowed;

    for (const EntryText &e : kEntries) {
        bool shown = !s.readOnly;
        bool enabled = false;
        switch (e.entry) {
        case Undo:
            enabled = s.undoAvailable;
            break;
        case Redo:
            enabled = s.redoAvailable;
            break;
        case Cut:
            enabled = canCopy;
            break;
        case Copy:
            shown = true;
            enabled = canCopy;
            break;
        case Paste:
            enabled = canPaste;
            break;
        case Delete:
            // Enabled by a selection, yet it clears everything: kept as users know it.
            enabled = s.hasText && s.hasSelection;
            break;
        case SelectAll:
            shown = !s.wholeTextSelected;
            enabled = s.hasText;
            break;
        case None:
            break;
        }
        ZAction *action = menu->addMenuAction(entryText(e, chinese, context));
        action->setData(int(e.entry));
        action->setVisible(shown);
        action->setEnabled(enabled);
        if (e.entry == Redo) {
            QAction *separator = menu->addSeparator();
            separator->setData(int(None));
            separator->setVisible(!s.readOnly);
        }
    }
}

ZEditMenu::Entry ZEditMenu::exec(const State &state, bool chinese, const char *context)
{
    // No parent: a menu parented to a widget inside a graphics proxy would be
    // embedded into the scene instead of popping up as a window.
    ZMenu menu;
    populate(&menu, state, chinese, context);
    const QAction *chosen = menu.execAtCursor();
    if (!chosen)
        return None;
    const int entry = chosen->data().toInt();
    return (entry >= Undo && entry <= SelectAll) ? Entry(entry) : None;
}
