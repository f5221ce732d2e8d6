#ifndef ZXMLUI_P_H
#define ZXMLUI_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zxmlui.h"

#include <QtCore/qnamespace.h>

class QObject;

// What the loader shares with the helper objects.
namespace ZXmlUIPrivate {

// The connect words: "auto", "direct", "queue"; anything else (null too) is automatic.
Qt::ConnectionType connectionType(const char *word);

// The object registered under \a name by objectArgument during the running
// (or last) load; null when none.
QObject *namedObject(const QString &name);

// Connects \a signal of \a sender to \a slot of \a receiver (normalised here),
// checking first that both exist and fit so that a failure comes back in
// \a error instead of on the console. With \a slotMayBeSignal the receiving
// member may also be a signal.
bool connectChecked(QObject *sender, const QByteArray &signal, QObject *receiver, const QByteArray &slot,
                    Qt::ConnectionType type, bool slotMayBeSignal, QString *error);

// Calls \a method of \a target with arguments written "type(value),...":
// at most ten, up to the first empty piece; pointers to QObject classes name
// registered objects, other types are converted from the text and must read.
bool invoke(QObject *target, const QByteArray &method, const QByteArray &arguments, Qt::ConnectionType type,
            QString *error);

} // namespace ZXmlUIPrivate

#endif // ZXMLUI_P_H
