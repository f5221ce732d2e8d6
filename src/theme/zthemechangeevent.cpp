#include "zthemechangeevent.h"

ZThemeChangeEvent::ZThemeChangeEvent()
    : QEvent(eventType())
{
}

ZThemeChangeEvent::~ZThemeChangeEvent() = default;

QEvent::Type ZThemeChangeEvent::eventType()
{
    static const QEvent::Type type = QEvent::Type(QEvent::registerEventType());
    return type;
}
