#ifndef ZACTION_H
#define ZACTION_H

#include "zglobal.h"

#include <QAction>
#include <memory>

class ZActionPrivate;

/*!
 * \brief An entry of a ZMenu: a QAction with a shortcut text of its own.
 *
 * The shortcut text is shown right-aligned in the menu. It is only a text:
 * it can name a key that some other part of the application handles, and it
 * registers no shortcut, and it is shown instead of the action's real
 * shortcut. Without one, the menu shows the real shortcut as for any QAction;
 * a tab in the action's text (Qt's own way) goes before both.
 */
class ZKIT_EXPORT ZAction : public QAction
{
    Q_OBJECT
    Q_PROPERTY(QString shortcutText READ shortcutText WRITE setShortcutText)

public:
    explicit ZAction(QObject *parent = nullptr);
    explicit ZAction(const QString &text, QObject *parent = nullptr);
    ZAction(const QString &text, const QString &shortcutText, QObject *parent = nullptr);
    ~ZAction() override;

    QString shortcutText() const;
    /*! Tells the menus showing the action to lay out again. */
    void setShortcutText(const QString &text);

private:
    std::unique_ptr<ZActionPrivate> d_zptr;
    Z_DECLARE_PRIVATE(ZAction)
};

#endif // ZACTION_H
