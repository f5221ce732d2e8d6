#ifndef ZMENU_H
#define ZMENU_H

#include "zglobal.h"

#include <QMenu>

class ZAction;
class ZMenuStyle;

/*!
 * \brief A pop-up menu drawn with the menu skin images (see ZMenuStyle).
 *
 * Entries are ZActions (or any QAction); a ZAction's shortcut text is shown
 * right-aligned. execAtCursor() shows the menu at the mouse cursor and
 * returns once an entry was chosen (that entry) or the menu was dismissed
 * (null).
 */
class ZKIT_EXPORT ZMenu : public QMenu
{
    Q_OBJECT
public:
    explicit ZMenu(QWidget *parent = nullptr);
    explicit ZMenu(const QString &title, QWidget *parent = nullptr);
    ~ZMenu() override;

    /*! Appends a new ZAction owned by the menu. */
    ZAction *addMenuAction(const QString &text, const QString &shortcutText = QString());
    /*! Appends a submenu of the same look, owned by the menu. */
    ZMenu *addSubMenu(const QString &title);
    /*! Modal: shows the menu at the cursor; the chosen action, or null when dismissed. */
    QAction *execAtCursor();

    /*! The style all menus share; made on first use, owned by the application. */
    static ZMenuStyle *menuStyle();

protected:
    void initStyleOption(QStyleOptionMenuItem *option, const QAction *action) const override;
};

#endif // ZMENU_H
