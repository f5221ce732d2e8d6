#ifndef ZCALENDAR_P_H
#define ZCALENDAR_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zcalendar.h"
#include "zwidget_p.h"

#include <QtCore/qpointer.h>

class ZLabel;
class ZPushButton;

class ZKIT_EXPORT ZCalendarPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZCalendar)
public:
    void init();
    void placeChildren();
    void updateTitle();
    // Selects \a date, held inside the range; emits when it changes.
    void select(QDate date);

    QDate selected;
    QDate todayOverride;
    QDate minimum = QDate(100, 1, 1);
    QDate maximum = QDate(9999, 12, 31);
    int year = 2000;
    int month = 1;
    Qt::DayOfWeek first = Qt::Monday;
    int titleHeight = 26;
    QColor textColor = QColor(0, 0, 0);
    QColor otherMonthColor = QColor(160, 160, 160);
    QColor selectedColor = QColor(250, 250, 176);
    QColor todayColor = QColor(215, 60, 60);
    QPointer<ZPushButton> previous;
    QPointer<ZPushButton> next;
    QPointer<ZLabel> title;
};

#endif // ZCALENDAR_P_H
