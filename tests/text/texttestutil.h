#ifndef TEXTTESTUTIL_H
#define TEXTTESTUTIL_H

// The text-input suites' own helpers: a scene with the keyboard focus, and a
// probe that looks into the modal context menu while it is open.

#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtGui/QAction>
#include <QtGui/QClipboard>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QGraphicsScene>
#include <QtWidgets/QGraphicsSceneContextMenuEvent>
#include <QtWidgets/QGraphicsWidget>
#include <QtWidgets/QMenu>

namespace texttest {

// A scene that believes its window is active, so that items take focus and
// proxied widgets get real focus events, with an item to move the focus to.
class ActiveScene : public QGraphicsScene
{
public:
    ActiveScene()
    {
        QEvent activate(QEvent::WindowActivate);
        QCoreApplication::sendEvent(this, &activate);
        elsewhere = new QGraphicsWidget;
        elsewhere->setFlag(QGraphicsItem::ItemIsFocusable);
        elsewhere->setGeometry(0, 200, 10, 10);
        addItem(elsewhere);
    }

    void focusElsewhere() { elsewhere->setFocus(Qt::MouseFocusReason); }

    QGraphicsWidget *elsewhere = nullptr;
};

// One entry of a menu as it was shown.
struct MenuEntry
{
    QString text;
    bool visible = false;
    bool enabled = false;
    bool separator = false;
};

// Armed before something opens a modal menu: once the menu is up it records
// the entries, then chooses the entry whose text starts with \a pick (by
// keyboard, as a user would) or, with an empty \a pick, dismisses the menu.
class MenuProbe
{
public:
    explicit MenuProbe(const QString &pick = QString()) : m_pick(pick)
    {
        QTimer::singleShot(0, [this] { look(); });
    }

    bool sawMenu = false;
    QList<MenuEntry> entries;

    QStringList texts() const // of the entries that are no separators
    {
        QStringList out;
        for (const MenuEntry &e : entries) {
            if (!e.separator)
                out << e.text;
        }
        return out;
    }
private:
    void look()
    {
        QPointer<QMenu> menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu)
            return;
        sawMenu = true;
        QAction *chosen = nullptr;
        const QList<QAction *> actions = menu->actions();
        for (QAction *a : actions) {
            entries.append({a->text(), a->isVisible(), a->isEnabled(), a->isSeparator()});
            if (!chosen && !m_pick.isEmpty() && !a->isSeparator() && a->text().startsWith(m_pick))
                chosen = a;
        }
        if (chosen) {
            menu->setActiveAction(chosen);
            QTest::keyClick(menu, Qt::Key_Return);
        }
        // Never leave the test hanging in the menu.
        if (menu && menu->isVisible())
            menu->close();
    }

    QString m_pick;
};

// A right click's context-menu request at the middle of \a item, through its scene.
inline void requestContextMenu(QGraphicsItem *item)
{
    QGraphicsSceneContextMenuEvent event(QEvent::GraphicsSceneContextMenu);
    const QPointF at = item->mapToScene(item->boundingRect().center());
    event.setScenePos(at);
    event.setScreenPos(at.toPoint());
    event.setReason(QGraphicsSceneContextMenuEvent::Mouse);
    QCoreApplication::sendEvent(item->scene(), &event);
}

} // namespace texttest

#endif // TEXTTESTUTIL_H
