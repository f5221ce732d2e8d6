#ifndef ZEDITMENU_P_H
#define ZEDITMENU_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zglobal.h"

class ZMenu;

/*
 * The editing context menu that every text editor of the toolkit offers:
 * Undo, Redo, separator, Cut, Copy, Paste, Delete, Select All, in English or
 * in Chinese. Which entries show and which are enabled depend only on the
 * editor's state, handed over as a State; the editor runs the menu and acts
 * on the entry chosen, so the building lives in one place.
 */
class ZEditMenu
{
public:
    // Stored in each action's data(); None for the separator and for "nothing chosen".
    enum Entry : int { None = 0, Undo, Redo, Cut, Copy, Paste, Delete, SelectAll };

    struct State
    {
        bool readOnly = false;
        bool undoAvailable = false;
        bool redoAvailable = false;
        bool hasSelection = false;
        // False while the text is masked: a password must not reach the clipboard.
        bool copyAllowed = true;
        bool hasText = false;
        bool wholeTextSelected = false;
    };

    // Fills \a menu with the entries for \a state. English texts are
    // translated in \a context (the editor class's, so that Qt's own
    // translations apply) and carry the platform's shortcut text after a tab.
    static void populate(ZMenu *menu, const State &state, bool chinese, const char *context);

    // Shows the menu at the cursor and waits; the entry chosen, or None.
    static Entry exec(const State &state, bool chinese, const char *context);

private:
    ZEditMenu() = delete;
};

#endif // ZEDITMENU_P_H
