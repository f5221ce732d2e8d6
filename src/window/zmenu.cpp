#include "zmenu.h"
#include "zaction.h"
#include "zmenustyle.h"

#include <QApplication>
#include <QCursor>
#include <QPointer>
#include <QStyleOptionMenuItem>

ZMenu::ZMenu(QWidget *parent)
    : QMenu(parent)
{
    if (ZMenuStyle *style = menuStyle())
        setStyle(style);
}

ZMenu::ZMenu(const QString &title, QWidget *parent)
    : ZMenu(parent)
{
    setTitle(title);
}

ZMenu::~ZMenu() = default;

ZAction *ZMenu::addMenuAction(const QString &text, const QString &shortcutText)
{
    auto *action = new ZAction(text, shortcutText, this);
    addAction(action);
    return action;
}

ZMenu *ZMenu::addSubMenu(const QString &title)
{
    auto *menu = new ZMenu(title, this);
    addMenu(menu);
    return menu;
}

QAction *ZMenu::execAtCursor()
{
    return exec(QCursor::pos());
}

ZMenuStyle *ZMenu::menuStyle()
{
    // Widgets refer to their style until their very end, so the style must
    // outlive every menu: it belongs to the application.
    static QPointer<ZMenuStyle> style;
    if (!style && qApp) {
        style = new ZMenuStyle;
        style->setParent(qApp);
    }
    return style;
}

void ZMenu::initStyleOption(QStyleOptionMenuItem *option, const QAction *action) const
{
    QMenu::initStyleOption(option, action);
    // A shortcut text of the action's own goes before its real shortcut; a
    // tab in the action's text goes before both.
    const auto *zaction = qobject_cast<const ZAction *>(action);
    if (zaction && !zaction->shortcutText().isEmpty() && !action->text().contains(QLatin1Char('\t')))
        option->text = action->text() + QLatin1Char('\t') + zaction->shortcutText();
}
