#include "zcalendar.h"
#include "zcalendar_p.h"

#include "zcreator.h"
#include "zlabel.h"
#include "zpushbutton.h"

#include <QtCore/qlocale.h>
#include <QtGui/qevent.h>
#include <QtGui/qpainter.h>
#include <QtWidgets/qgraphicssceneevent.h>

#include <climits>
#include <cmath>

Z_REGISTER_WIDGET(ZCalendar);

namespace {

constexpr int WeekdayRowHeight = 20;
constexpr int MaxTitleHeight = 1024;

// Months counted from year 0, so that page comparisons are plain numbers.
qint64 monthIndex(int year, int month)
{
    return qint64(year) * 12 + (month - 1);
}

} // namespace


void ZCalendarPrivate::init()
{
    Z_Q(ZCalendar);
    q->setFlag(QGraphicsItem::ItemIsFocusable, true);
    q->setFocusPolicy(Qt::StrongFocus);
    q->setAcceptedMouseButtons(Qt::LeftButton | Qt::RightButton);
    q->setBackgroundColor(QColor(255, 255, 255));
    previous = new ZPushButton(q);
    previous->setObjectName(QStringLiteral("previous"));
    previous->setText(QStringLiteral("<"));
    next = new ZPushButton(q);
    next->setObjectName(QStringLiteral("next"));
    next->setText(QStringLiteral(">"));
    title = new ZLabel(q);
    title->setObjectName(QStringLiteral("title"));
    title->setTextAlignment(Qt::AlignCenter);
    QObject::connect(previous.data(), SIGNAL(clicked()), q, SLOT(on_previous_clicked()));
    QObject::connect(next.data(), SIGNAL(clicked()), q, SLOT(on_next_clicked()));
    const QDate now = q->today();
    if (now.isValid()) {
        year = now.year();
        month = now.month();
    }
    updateTitle();
}

void ZCalendarPrivate::placeChildren()
{
    Z_Q(ZCalendar);
    const QSizeF size = q->size();
    const qreal h = qMin<qreal>(titleHeight, size.height());
    const qreal side = qMax<qreal>(0, h - 4);
    const bool shown = side > 0;
    for (ZPushButton *button : {previous.data(), next.data()}) {
        if (!button)
            continue;
        button->setVisible(shown);
        button->setFixSize(QSizeF(side, side));
    }
    if (previous)
        previous->setGeometry(QRectF(2, 2, side, side));
    if (next)
        next->setGeometry(QRectF(qMax<qreal>(0, size.width() - side - 2), 2, side, side));
    if (title) {
        title->setVisible(shown);
        const QRectF rect(side + 4, 0, qMax<qreal>(0, size.width() - 2 * side - 8), h);
        title->setFixSize(rect.size());
        title->setGeometry(rect);
    }
}

void ZCalendarPrivate::updateTitle()
{
    Z_Q(ZCalendar);
    if (title)
        title->setText(QLocale().toString(QDate(year, month, 1), QStringLiteral("MMMM yyyy")));
    if (previous)
        previous->setEnabled(monthIndex(year, month) > monthIndex(minimum.year(), minimum.month()));
    if (next)
        next->setEnabled(monthIndex(year, month) < monthIndex(maximum.year(), maximum.month()));
    q->update();
}

void ZCalendarPrivate::select(QDate date)
{
    Z_Q(ZCalendar);
    if (!date.isValid())
        return;
    date = qBound(minimum, date, maximum);
    q->setCurrentPage(date.year(), date.month());
    if (date == selected)
        return;
    selected = date;
    q->update();
    Q_EMIT q->selectedDateChanged(date);
}

ZCalendar::ZCalendar(QGraphicsItem *parent)
    : ZCalendar(*new ZCalendarPrivate, parent)
{
}

ZCalendar::ZCalendar(ZCalendarPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    dd.init();
}

ZCalendar::~ZCalendar() = default;

QDate ZCalendar::selectedDate() const
{
    return d_func()->selected;
}

void ZCalendar::setSelectedDate(const QDate &date)
{
    Z_D(ZCalendar);
    if (!date.isValid() || date < d->minimum || date > d->maximum)
        return;
    d->select(date);
}

QDate ZCalendar::today() const
{
    Z_D(const ZCalendar);
    return d->todayOverride.isValid() ? d->todayOverride : QDate::currentDate();
}

void ZCalendar::setToday(const QDate &date)
{
    Z_D(ZCalendar);
    if (d->todayOverride == date)
        return;
    d->todayOverride = date;
    update();
}

QDate ZCalendar::minimumDate() const
{
    return d_func()->minimum;
}

void ZCalendar::setMinimumDate(const QDate &date)
{
    Z_D(ZCalendar);
    if (!date.isValid() || date == d->minimum)
        return;
    d->minimum = date;
    if (d->maximum < date)
        d->maximum = date;
    if (d->selected.isValid() && d->selected < date)
        d->select(date);
    setCurrentPage(d->year, d->month);
    d->updateTitle();
}

QDate ZCalendar::maximumDate() const
{
    return d_func()->maximum;
}

void ZCalendar::setMaximumDate(const QDate &date)
{
    Z_D(ZCalendar);
    if (!date.isValid() || date == d->maximum)
        return;
    d->maximum = date;
    if (d->minimum > date)
        d->minimum = date;
    if (d->selected.isValid() && d->selected > date)
        d->select(date);
    setCurrentPage(d->year, d->month);
    d->updateTitle();
}

Qt::DayOfWeek ZCalendar::firstDayOfWeek() const
{
    return d_func()->first;
}

void ZCalendar::setFirstDayOfWeek(Qt::DayOfWeek day)
{
    Z_D(ZCalendar);
    const int value = int(day);
    if (value < Qt::Monday || value > Qt::Sunday || day == d->first)
        return;
    d->first = day;
    update();
}

int ZCalendar::titleHeight() const
{
    return d_func()->titleHeight;
}

void ZCalendar::setTitleHeight(int height)
{
    Z_D(ZCalendar);
    height = qBound(0, height, MaxTitleHeight);
    if (d->titleHeight == height)
        return;
    d->titleHeight = height;
    d->placeChildren();
    update();
}

QColor ZCalendar::textColor() const
{
    return d_func()->textColor;
}

void ZCalendar::setTextColor(const QColor &color)
{
    Z_D(ZCalendar);
    if (d->textColor == color)
        return;
    d->textColor = color;
    update();
}

QColor ZCalendar::otherMonthColor() const
{
    return d_func()->otherMonthColor;
}

void ZCalendar::setOtherMonthColor(const QColor &color)
{
    Z_D(ZCalendar);
    if (d->otherMonthColor == color)
        return;
    d->otherMonthColor = color;
    update();
}

QColor ZCalendar::selectedColor() const
{
    return d_func()->selectedColor;
}

void ZCalendar::setSelectedColor(const QColor &color)
{
    Z_D(ZCalendar);
    if (d->selectedColor == color)
        return;
    d->selectedColor = color;
    update();
}

QColor ZCalendar::todayColor() const
{
    return d_func()->todayColor;
}

void ZCalendar::setTodayColor(const QColor &color)
{
    Z_D(ZCalendar);
    if (d->todayColor == color)
        return;
    d->todayColor = color;
    update();
}

int ZCalendar::yearShown() const
{
    return d_func()->year;
}

int ZCalendar::monthShown() const
{
    return d_func()->month;
}

bool ZCalendar::setCurrentPage(int year, int month)
{
    Z_D(ZCalendar);
    if (month < 1 || month > 12)
        return false;
    const qint64 lowest = monthIndex(d->minimum.year(), d->minimum.month());
    const qint64 highest = monthIndex(d->maximum.year(), d->maximum.month());
    const qint64 index = qBound(lowest, monthIndex(year, month), highest);
    const int y = int(index >= 0 ? index / 12 : (index - 11) / 12);
    const int m = int(index - qint64(y) * 12) + 1;
    if (y == d->year && m == d->month)
        return true;
    d->year = y;
    d->month = m;
    d->updateTitle();
    Q_EMIT currentPageChanged(y, m);
    return true;
}

void ZCalendar::showNextMonth()
{
    Z_D(ZCalendar);
    int y = d->year, m = d->month;
    addMonths(&y, &m, 1);
    setCurrentPage(y, m);
}

void ZCalendar::showPreviousMonth()
{
    Z_D(ZCalendar);
    int y = d->year, m = d->month;
    addMonths(&y, &m, -1);
    setCurrentPage(y, m);
}

void ZCalendar::showNextYear()
{
    Z_D(ZCalendar);
    int y = d->year, m = d->month;
    addMonths(&y, &m, 12);
    setCurrentPage(y, m);
}

void ZCalendar::showPreviousYear()
{
    Z_D(ZCalendar);
    int y = d->year, m = d->month;
    addMonths(&y, &m, -12);
    setCurrentPage(y, m);
}

void ZCalendar::showToday()
{
    const QDate now = today();
    if (now.isValid())
        setCurrentPage(now.year(), now.month());
}

void ZCalendar::showSelectedDate()
{
    Z_D(ZCalendar);
    if (d->selected.isValid())
        setCurrentPage(d->selected.year(), d->selected.month());
}

QDate ZCalendar::dateAt(int row, int column) const
{
    Z_D(const ZCalendar);
    if (row < 0 || row >= Weeks || column < 0 || column >= DaysPerWeek)
        return QDate();
    const QDate start = firstGridDate(d->year, d->month, d->first);
    return start.isValid() ? start.addDays(row * DaysPerWeek + column) : QDate();
}

QDate ZCalendar::dateAt(const QPointF &pos) const
{
    const QRectF grid = gridRect();
    if (grid.isEmpty() || !grid.contains(pos))
        return QDate();
    const int column = int((pos.x() - grid.left()) * DaysPerWeek / grid.width());
    const int row = int((pos.y() - grid.top()) * Weeks / grid.height());
    return dateAt(qMin(row, Weeks - 1), qMin(column, DaysPerWeek - 1));
}

QRectF ZCalendar::dateRect(const QDate &date) const
{
    Z_D(const ZCalendar);
    const QDate start = firstGridDate(d->year, d->month, d->first);
    if (!date.isValid() || !start.isValid())
        return QRectF();
    const qint64 offset = start.daysTo(date);
    if (offset < 0 || offset >= Weeks * DaysPerWeek)
        return QRectF();
    const QRectF grid = gridRect();
    const qreal w = grid.width() / DaysPerWeek;
    const qreal h = grid.height() / Weeks;
    return QRectF(grid.left() + qreal(offset % DaysPerWeek) * w, grid.top() + qreal(offset / DaysPerWeek) * h, w, h);
}

QRectF ZCalendar::gridRect() const
{
    Z_D(const ZCalendar);
    const QSizeF size = this->size();
    const qreal top = qMin<qreal>(size.height(), d->titleHeight + WeekdayRowHeight);
    return QRectF(0, top, size.width(), size.height() - top);
}

void ZCalendar::addMonths(int *year, int *month, int months)
{
    if (!year || !month)
        return;
    const int m = qBound(1, *month, 12);
    const qint64 index = monthIndex(*year, m) + months;
    // Floor division: month indexes below zero belong to negative years.
    qint64 y = index >= 0 ? index / 12 : (index - 11) / 12;
    const int newMonth = int(index - y * 12) + 1;
    if (y > INT_MAX || y < INT_MIN) {
        y = y > INT_MAX ? INT_MAX : INT_MIN;
        *month = y > 0 ? 12 : 1;
    } else {
        *month = newMonth;
    }
    *year = int(y);
}

QDate ZCalendar::firstGridDate(int year, int month, Qt::DayOfWeek firstDayOfWeek)
{
    const QDate first(year, month, 1);
    const int day = int(firstDayOfWeek);
    if (!first.isValid() || day < Qt::Monday || day > Qt::Sunday)
        return QDate();
    const int back = (first.dayOfWeek() - day + DaysPerWeek) % DaysPerWeek;
    return first.addDays(-back);
}

QObject *ZCalendar::previousButton() const
{
    return d_func()->previous.data();
}

QObject *ZCalendar::nextButton() const
{
    return d_func()->next.data();
}

QObject *ZCalendar::titleLabel() const
{
    return d_func()->title.data();
}

void ZCalendar::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    Q_UNUSED(option);
    Q_UNUSED(widget);
    Z_D(ZCalendar);
    const QRectF grid = gridRect();
    if (grid.width() <= 0 || grid.height() <= 0)
        return;
    const qreal w = grid.width() / DaysPerWeek;
    const QLocale locale;
    painter->save();
    QFont font = painter->font();
    painter->setPen(d->otherMonthColor);
    for (int c = 0; c < DaysPerWeek; ++c) {
        const int day = (int(d->first) - 1 + c) % DaysPerWeek + 1;
        const QRectF rect(grid.left() + c * w, grid.top() - WeekdayRowHeight, w, WeekdayRowHeight);
        painter->drawText(rect, Qt::AlignCenter, locale.dayName(day, QLocale::ShortFormat));
    }
    const QDate now = today();
    for (int r = 0; r < Weeks; ++r) {
        for (int c = 0; c < DaysPerWeek; ++c) {
            const QDate date = dateAt(r, c);
            const QRectF rect = dateRect(date);
            if (!date.isValid() || rect.isEmpty())
                continue;
            const bool inRange = date >= d->minimum && date <= d->maximum;
            if (date == d->selected)
                painter->fillRect(rect.adjusted(1, 1, -1, -1), d->selectedColor);
            if (date == now) {
                painter->setPen(QPen(d->todayColor, 1));
                painter->drawRect(rect.adjusted(1.5, 1.5, -1.5, -1.5));
            }
            font.setBold(date == now);
            painter->setFont(font);
            painter->setPen(date.month() == d->month && inRange ? d->textColor : d->otherMonthColor);
            painter->drawText(rect, Qt::AlignCenter, QString::number(date.day()));
        }
    }
    painter->restore();
}

bool ZCalendar::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::GraphicsSceneResize:
        d_func()->placeChildren();
        break;
    case QEvent::GraphicsSceneWheel: {
        const int delta = static_cast<QGraphicsSceneWheelEvent *>(event)->delta();
        if (delta > 0)
            showPreviousMonth();
        else if (delta < 0)
            showNextMonth();
        event->accept();
        return true;
    }
    default:
        break;
    }
    return ZWidget::event(event);
}

void ZCalendar::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    event->accept();
    setFocus(Qt::MouseFocusReason);
    const QDate date = dateAt(event->pos());
    if (!date.isValid() || date < minimumDate() || date > maximumDate())
        return;
    setSelectedDate(date);
    Q_EMIT clicked(date);
}

void ZCalendar::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    event->accept();
    const QDate date = dateAt(event->pos());
    if (date.isValid() && date == selectedDate())
        Q_EMIT activated(date);
}

void ZCalendar::keyPressEvent(QKeyEvent *event)
{
    Z_D(ZCalendar);
    QDate from = d->selected;
    if (!from.isValid()) {
        const QDate now = today();
        from = now.isValid() && now.year() == d->year && now.month() == d->month ? now : QDate(d->year, d->month, 1);
    }
    QDate to;
    switch (event->key()) {
    case Qt::Key_Left:
        to = from.addDays(-1);
        break;
    case Qt::Key_Right:
        to = from.addDays(1);
        break;
    case Qt::Key_Up:
        to = from.addDays(-DaysPerWeek);
        break;
    case Qt::Key_Down:
        to = from.addDays(DaysPerWeek);
        break;
    case Qt::Key_PageUp:
        to = from.addMonths(-1);
        break;
    case Qt::Key_PageDown:
        to = from.addMonths(1);
        break;
    case Qt::Key_Home:
        to = QDate(from.year(), from.month(), 1);
        break;
    case Qt::Key_End:
        to = QDate(from.year(), from.month(), from.daysInMonth());
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (d->selected.isValid())
            Q_EMIT activated(d->selected);
        event->accept();
        return;
    default:
        ZWidget::keyPressEvent(event);
        return;
    }
    d->select(to);
    event->accept();
}

void ZCalendar::on_previous_clicked()
{
    showPreviousMonth();
}

void ZCalendar::on_next_clicked()
{
    showNextMonth();
}
