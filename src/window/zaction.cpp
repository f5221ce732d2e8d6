#include "zaction.h"

#include <QActionEvent>
#include <QCoreApplication>

class ZActionPrivate
{
public:
    QString shortcutText;
};

ZAction::ZAction(QObject *parent)
    : QAction(parent)
    , d_zptr(new ZActionPrivate)
{
}

ZAction::ZAction(const QString &text, QObject *parent)
    : QAction(text, parent)
    , d_zptr(new ZActionPrivate)
{
}

ZAction::ZAction(const QString &text, const QString &shortcutText, QObject *parent)
    : ZAction(text, parent)
{
    d_func()->shortcutText = shortcutText;
}

ZAction::~ZAction() = default;

QString ZAction::shortcutText() const
{
    return d_func()->shortcutText;
}

void ZAction::setShortcutText(const QString &text)
{
    Z_D(ZAction);
    if (d->shortcutText == text)
        return;
    d->shortcutText = text;
    // QAction tells its widgets only about changes of its own properties.
    const QObjectList objects = associatedObjects();
    for (QObject *object : objects) {
        QActionEvent event(QEvent::ActionChanged, this);
        QCoreApplication::sendEvent(object, &event);
    }
    emit changed();
}
