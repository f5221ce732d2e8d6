#ifndef ZTHEMECHANGEEVENT_H
#define ZTHEMECHANGEEVENT_H

#include "zglobal.h"

#include <QEvent>

/*!
 * Posted to every top-level widget when the theme colour or index changes.
 * Its type number is registered once per process.
 */
class ZKIT_EXPORT ZThemeChangeEvent : public QEvent
{
public:
    ZThemeChangeEvent();
    ~ZThemeChangeEvent() override;

    /// The registered event type shared by all theme-change events.
    static QEvent::Type eventType();
};

#endif // ZTHEMECHANGEEVENT_H
