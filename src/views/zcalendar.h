#ifndef ZCALENDAR_H
#define ZCALENDAR_H

#include "zwidget.h"

#include <QtCore/qdatetime.h>
#include <QtGui/qcolor.h>

class ZCalendarPrivate;

/*!
 * \brief A month grid for picking a date.
 *
 * A title row with the previous and next month buttons and the shown month's
 * name, a row of weekday names, and six weeks of days starting at
 * firstDayOfWeek(); days of the neighbouring months fill the first and last
 * week in a fainter colour. Today is framed, the selected date filled.
 *
 * A press on a day selects it (a day of a neighbouring month turns the page
 * to that month); the arrow keys move the selection by a day or a week, Page
 * Up and Page Down by a month, Home and End to the first and last day of the
 * month; the wheel turns pages. Dates outside minimumDate() ..
 * maximumDate() cannot be selected, and pages outside it are not shown.
 */
class ZKIT_EXPORT ZCalendar : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(QDate selectedDate READ selectedDate WRITE setSelectedDate NOTIFY selectedDateChanged)
    Q_PROPERTY(QDate today READ today WRITE setToday)
    Q_PROPERTY(QDate minimumDate READ minimumDate WRITE setMinimumDate)
    Q_PROPERTY(QDate maximumDate READ maximumDate WRITE setMaximumDate)
    Q_PROPERTY(int yearShown READ yearShown)
    Q_PROPERTY(int monthShown READ monthShown)
    Q_PROPERTY(Qt::DayOfWeek firstDayOfWeek READ firstDayOfWeek WRITE setFirstDayOfWeek)
    Q_PROPERTY(int titleHeight READ titleHeight WRITE setTitleHeight)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)
    Q_PROPERTY(QColor otherMonthColor READ otherMonthColor WRITE setOtherMonthColor)
    Q_PROPERTY(QColor selectedColor READ selectedColor WRITE setSelectedColor)
    Q_PROPERTY(QColor todayColor READ todayColor WRITE setTodayColor)
    Q_PROPERTY(QObject *previousButton READ previousButton)
    Q_PROPERTY(QObject *nextButton READ nextButton)
    Q_PROPERTY(QObject *titleLabel READ titleLabel)

public:
    enum { Weeks = 6, DaysPerWeek = 7 };

    Q_INVOKABLE explicit ZCalendar(QGraphicsItem *parent = nullptr);
    ~ZCalendar() override;

    QDate selectedDate() const;
    /*! Selects \a date and shows its month; invalid dates and dates out of range are refused. */
    void setSelectedDate(const QDate &date);
    /*! The date marked as today: the system's, unless one was set (an invalid date returns to the system's). */
    QDate today() const;
    void setToday(const QDate &date);
    QDate minimumDate() const;
    /*! Invalid dates are refused; the maximum follows when it would lie before. */
    void setMinimumDate(const QDate &date);
    QDate maximumDate() const;
    void setMaximumDate(const QDate &date);
    Qt::DayOfWeek firstDayOfWeek() const;
    /*! Values that are no weekday are refused. */
    void setFirstDayOfWeek(Qt::DayOfWeek day);
    int titleHeight() const;
    void setTitleHeight(int height);
    QColor textColor() const;
    void setTextColor(const QColor &color);
    QColor otherMonthColor() const;
    void setOtherMonthColor(const QColor &color);
    QColor selectedColor() const;
    void setSelectedColor(const QColor &color);
    QColor todayColor() const;
    void setTodayColor(const QColor &color);

    int yearShown() const;
    int monthShown() const;
    /*! Shows \a month of \a year, clamped into the date range; false for a month that is not 1 .. 12. */
    bool setCurrentPage(int year, int month);
    void showNextMonth();
    void showPreviousMonth();
    void showNextYear();
    void showPreviousYear();
    void showToday();
    void showSelectedDate();

    /*! The date of a grid cell (row 0 .. 5, column 0 .. 6) of the shown page; invalid outside. */
    QDate dateAt(int row, int column) const;
    /*! The date under \a pos (widget coordinates); invalid when no day is there. */
    QDate dateAt(const QPointF &pos) const;
    /*! Where \a date is drawn; empty when it is not on the shown page. */
    QRectF dateRect(const QDate &date) const;
    /*! The area of the day cells. */
    QRectF gridRect() const;

    /*! \a year and \a month moved by \a months, across year ends. */
    static void addMonths(int *year, int *month, int months);
    /*! The first date of the six-week grid showing \a month of \a year. */
    static QDate firstGridDate(int year, int month, Qt::DayOfWeek firstDayOfWeek);

    QObject *previousButton() const;
    QObject *nextButton() const;
    QObject *titleLabel() const;

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

Q_SIGNALS:
    void selectedDateChanged(const QDate &date);
    void currentPageChanged(int year, int month);
    void clicked(const QDate &date);
    void activated(const QDate &date);

protected:
    ZCalendar(ZCalendarPrivate &dd, QGraphicsItem *parent);

    bool event(QEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private Q_SLOTS:
    void on_previous_clicked();
    void on_next_clicked();

private:
    Z_DECLARE_PRIVATE(ZCalendar)
    Q_DISABLE_COPY(ZCalendar)
};

#endif // ZCALENDAR_H
