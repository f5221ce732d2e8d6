#include "viewtestutil.h"

#include "zcalendar.h"
#include "zlabel.h"
#include "zpushbutton.h"
#include "zxmlui.h"

#include <QtGui/QKeyEvent>
#include <QtTest/QtTest>

#include <climits>

using namespace viewtest;

namespace {

void key(QGraphicsScene &scene, int k)
{
    QKeyEvent press(QEvent::KeyPress, k, Qt::NoModifier);
    QCoreApplication::sendEvent(&scene, &press);
}

QPointF centreOf(QGraphicsItem *item)
{
    return item->mapToScene(item->boundingRect().center());
}

} // namespace

class tst_ZCalendar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void addMonths_data();
    void addMonths();
    void firstGridDate_data();
    void firstGridDate();
    void gridCoversMonth_data();
    void gridCoversMonth();
    void buttonsTurnPagesAcrossYears();
    void clickSelects();
    void clickOnNeighbourMonth();
    void keyboard_data();
    void keyboard();
    void wheelTurnsPages();
    void range();
    void todayAndSelectionDrawn();
    void badInput();
    void fromXml();

private:
    QGraphicsScene *m_scene = nullptr;
    ZCalendar *m_calendar = nullptr;
};

void tst_ZCalendar::init()
{
    m_scene = new QGraphicsScene(0, 0, 300, 260);
    m_calendar = new ZCalendar;
    m_scene->addItem(m_calendar);
    m_calendar->resize(280, 240);
    m_calendar->setToday(QDate(2026, 12, 15));
    m_calendar->setCurrentPage(2026, 12);
}

void tst_ZCalendar::cleanup()
{
    delete m_scene;
    m_scene = nullptr;
    m_calendar = nullptr;
}

void tst_ZCalendar::addMonths_data()
{
    QTest::addColumn<int>("year");
    QTest::addColumn<int>("month");
    QTest::addColumn<int>("months");
    QTest::addColumn<int>("toYear");
    QTest::addColumn<int>("toMonth");
    QTest::newRow("next month, same year") << 2026 << 5 << 1 << 2026 << 6;
    QTest::newRow("December to January") << 2026 << 12 << 1 << 2027 << 1;
    QTest::newRow("January to December") << 2027 << 1 << -1 << 2026 << 12;
    QTest::newRow("fourteen ahead") << 2026 << 11 << 14 << 2028 << 1;
    QTest::newRow("a year back from December") << 2026 << 12 << -12 << 2025 << 12;
    QTest::newRow("thirteen back from January") << 2026 << 1 << -13 << 2024 << 12;
    QTest::newRow("twenty-seven back") << 2026 << 3 << -27 << 2023 << 12;
    QTest::newRow("nothing") << 2026 << 6 << 0 << 2026 << 6;
    QTest::newRow("exactly ten years") << 2000 << 2 << 120 << 2010 << 2;
    QTest::newRow("into year zero") << 1 << 1 << -1 << 0 << 12;
    QTest::newRow("negative years count down") << 5 << 1 << -100 << -4 << 9;
    QTest::newRow("from a negative year") << -1 << 12 << 1 << 0 << 1;
    QTest::newRow("the largest step") << 2026 << 1 << INT_MAX << 2026 + INT_MAX / 12 << 1 + INT_MAX % 12;
    QTest::newRow("the smallest step") << 2026 << 1 << INT_MIN << 2026 - 178956971 << 5;
}

void tst_ZCalendar::addMonths()
{
    QFETCH(int, year);
    QFETCH(int, month);
    QFETCH(int, months);
    QFETCH(int, toYear);
    QFETCH(int, toMonth);
    int y = year, m = month;
    ZCalendar::addMonths(&y, &m, months);
    QCOMPARE(y, toYear);
    QCOMPARE(m, toMonth);
    // Going back undoes it (INT_MIN has no opposite).
    if (months != INT_MIN) {
        ZCalendar::addMonths(&y, &m, -months);
        QCOMPARE(y, year);
        QCOMPARE(m, month);
    }
}

void tst_ZCalendar::firstGridDate_data()
{
    QTest::addColumn<QDate>("month");
    QTest::addColumn<int>("first");
    QTest::addColumn<QDate>("start");
    // 1 January 2027 is a Friday, 1 February 2021 a Monday, 1 March 2026 a Sunday.
    QTest::newRow("Jan 2027, Monday") << QDate(2027, 1, 1) << int(Qt::Monday) << QDate(2026, 12, 28);
    QTest::newRow("Jan 2027, Sunday") << QDate(2027, 1, 1) << int(Qt::Sunday) << QDate(2026, 12, 27);
    QTest::newRow("Jan 2027, Friday") << QDate(2027, 1, 1) << int(Qt::Friday) << QDate(2027, 1, 1);
    QTest::newRow("Jan 2027, Saturday") << QDate(2027, 1, 1) << int(Qt::Saturday) << QDate(2026, 12, 26);
    QTest::newRow("Feb 2021 starts on the first day") << QDate(2021, 2, 1) << int(Qt::Monday) << QDate(2021, 2, 1);
    QTest::newRow("Mar 2026, Monday") << QDate(2026, 3, 1) << int(Qt::Monday) << QDate(2026, 2, 23);
    QTest::newRow("Mar 2026, Sunday") << QDate(2026, 3, 1) << int(Qt::Sunday) << QDate(2026, 3, 1);
}

void tst_ZCalendar::firstGridDate()
{
    QFETCH(QDate, month);
    QFETCH(int, first);
    QFETCH(QDate, start);
    QCOMPARE(ZCalendar::firstGridDate(month.year(), month.month(), Qt::DayOfWeek(first)), start);
    QCOMPARE(start.dayOfWeek(), first);
    m_calendar->setFirstDayOfWeek(Qt::DayOfWeek(first));
    m_calendar->setCurrentPage(month.year(), month.month());
    QCOMPARE(m_calendar->dateAt(0, 0), start);
    QCOMPARE(m_calendar->dateAt(5, 6), start.addDays(41));
}

// Every page holds its whole month, once, in order, in six weeks.
void tst_ZCalendar::gridCoversMonth_data()
{
    QTest::addColumn<int>("year");
    for (int year : {2024, 2026, 2100})
        QTest::newRow(qPrintable(QString::number(year))) << year;
}

void tst_ZCalendar::gridCoversMonth()
{
    QFETCH(int, year);
    for (int first = Qt::Monday; first <= Qt::Sunday; ++first) {
        m_calendar->setFirstDayOfWeek(Qt::DayOfWeek(first));
        for (int month = 1; month <= 12; ++month) {
            QVERIFY(m_calendar->setCurrentPage(year, month));
            QList<QDate> days;
            for (int r = 0; r < ZCalendar::Weeks; ++r)
                for (int c = 0; c < ZCalendar::DaysPerWeek; ++c)
                    days << m_calendar->dateAt(r, c);
            for (int i = 1; i < days.size(); ++i)
                QCOMPARE(days.at(i - 1).addDays(1), days.at(i));
            const QDate firstDay(year, month, 1);
            QVERIFY(days.contains(firstDay));
            QVERIFY(days.contains(QDate(year, month, firstDay.daysInMonth())));
            QCOMPARE(days.first().dayOfWeek(), first);
            QVERIFY(days.first() <= firstDay && days.first() > firstDay.addDays(-7));
            // Each day's rectangle hit-tests back to it.
            for (const QDate &d : {firstDay, QDate(year, month, 15)}) {
                const QRectF rect = m_calendar->dateRect(d);
                QVERIFY(!rect.isEmpty());
                QCOMPARE(m_calendar->dateAt(rect.center()), d);
            }
        }
    }
}

void tst_ZCalendar::buttonsTurnPagesAcrossYears()
{
    auto *next = qobject_cast<ZPushButton *>(m_calendar->nextButton());
    auto *previous = qobject_cast<ZPushButton *>(m_calendar->previousButton());
    auto *title = qobject_cast<ZLabel *>(m_calendar->titleLabel());
    QVERIFY(next && previous && title);
    QSignalSpy pages(m_calendar, &ZCalendar::currentPageChanged);
    QSignalSpy selected(m_calendar, &ZCalendar::selectedDateChanged);
    click(*m_scene, centreOf(next));
    QCOMPARE(m_calendar->yearShown(), 2027);
    QCOMPARE(m_calendar->monthShown(), 1);
    QCOMPARE(pages.count(), 1);
    QCOMPARE(pages.at(0).at(0).toInt(), 2027);
    QCOMPARE(pages.at(0).at(1).toInt(), 1);
    QCOMPARE(title->text(), QLocale().toString(QDate(2027, 1, 1), "MMMM yyyy"));
    click(*m_scene, centreOf(previous));
    click(*m_scene, centreOf(previous));
    QCOMPARE(m_calendar->yearShown(), 2026);
    QCOMPARE(m_calendar->monthShown(), 11);
    QCOMPARE(pages.count(), 3);
    // Turning pages selects nothing.
    QCOMPARE(selected.count(), 0);
    m_calendar->showNextYear();
    QCOMPARE(m_calendar->yearShown(), 2027);
    QCOMPARE(m_calendar->monthShown(), 11);
    m_calendar->showPreviousYear();
    m_calendar->showPreviousYear();
    QCOMPARE(m_calendar->yearShown(), 2025);
    m_calendar->showToday();
    QCOMPARE(m_calendar->yearShown(), 2026);
    QCOMPARE(m_calendar->monthShown(), 12);
}

void tst_ZCalendar::clickSelects()
{
    QSignalSpy selected(m_calendar, &ZCalendar::selectedDateChanged);
    QSignalSpy clicked(m_calendar, &ZCalendar::clicked);
    const QDate day(2026, 12, 24);
    click(*m_scene, m_calendar->mapToScene(m_calendar->dateRect(day).center()));
    QCOMPARE(m_calendar->selectedDate(), day);
    QCOMPARE(selected.count(), 1);
    QCOMPARE(selected.at(0).at(0).toDate(), day);
    QCOMPARE(clicked.count(), 1);
    click(*m_scene, m_calendar->mapToScene(m_calendar->dateRect(day).center()));
    QCOMPARE(selected.count(), 1);
    QCOMPARE(clicked.count(), 2);
    // The title row and weekday names are no days.
    click(*m_scene, m_calendar->mapToScene(QPointF(140, m_calendar->gridRect().top() - 5)));
    QCOMPARE(m_calendar->selectedDate(), day);
    QSignalSpy activated(m_calendar, &ZCalendar::activated);
    mouse(*m_scene, QEvent::GraphicsSceneMouseDoubleClick, m_calendar->mapToScene(m_calendar->dateRect(day).center()));
    QCOMPARE(activated.count(), 1);
}

void tst_ZCalendar::clickOnNeighbourMonth()
{
    m_calendar->setFirstDayOfWeek(Qt::Monday);
    m_calendar->setCurrentPage(2027, 1);
    // The first cell of January 2027 is 28 December 2026.
    QSignalSpy pages(m_calendar, &ZCalendar::currentPageChanged);
    click(*m_scene, m_calendar->mapToScene(m_calendar->dateRect(QDate(2026, 12, 28)).center()));
    QCOMPARE(m_calendar->selectedDate(), QDate(2026, 12, 28));
    QCOMPARE(m_calendar->yearShown(), 2026);
    QCOMPARE(m_calendar->monthShown(), 12);
    QCOMPARE(pages.count(), 1);
    // And the last cells of December 2026 are in January 2027.
    click(*m_scene, m_calendar->mapToScene(m_calendar->dateRect(QDate(2027, 1, 3)).center()));
    QCOMPARE(m_calendar->selectedDate(), QDate(2027, 1, 3));
    QCOMPARE(m_calendar->yearShown(), 2027);
}

void tst_ZCalendar::keyboard_data()
{
    QTest::addColumn<QDate>("from");
    QTest::addColumn<int>("key");
    QTest::addColumn<QDate>("to");
    QTest::newRow("right over the year end") << QDate(2026, 12, 31) << int(Qt::Key_Right) << QDate(2027, 1, 1);
    QTest::newRow("left over the year end") << QDate(2027, 1, 1) << int(Qt::Key_Left) << QDate(2026, 12, 31);
    QTest::newRow("up a week into last year") << QDate(2027, 1, 3) << int(Qt::Key_Up) << QDate(2026, 12, 27);
    QTest::newRow("down a week into next year") << QDate(2026, 12, 28) << int(Qt::Key_Down) << QDate(2027, 1, 4);
    QTest::newRow("page down keeps the day") << QDate(2026, 12, 15) << int(Qt::Key_PageDown) << QDate(2027, 1, 15);
    QTest::newRow("page down to a short month") << QDate(2027, 1, 31) << int(Qt::Key_PageDown) << QDate(2027, 2, 28);
    QTest::newRow("page up to a leap February") << QDate(2028, 3, 30) << int(Qt::Key_PageUp) << QDate(2028, 2, 29);
    QTest::newRow("page up over the year end") << QDate(2027, 1, 31) << int(Qt::Key_PageUp) << QDate(2026, 12, 31);
    QTest::newRow("home") << QDate(2026, 12, 15) << int(Qt::Key_Home) << QDate(2026, 12, 1);
    QTest::newRow("end") << QDate(2027, 2, 3) << int(Qt::Key_End) << QDate(2027, 2, 28);
}

void tst_ZCalendar::keyboard()
{
    QFETCH(QDate, from);
    QFETCH(int, key);
    QFETCH(QDate, to);
    QEvent activate(QEvent::WindowActivate);
    QCoreApplication::sendEvent(m_scene, &activate);
    m_calendar->setFocus();
    QVERIFY(m_calendar->hasFocus());
    m_calendar->setSelectedDate(from);
    QSignalSpy selected(m_calendar, &ZCalendar::selectedDateChanged);
    ::key(*m_scene, key);
    QCOMPARE(m_calendar->selectedDate(), to);
    QCOMPARE(selected.count(), 1);
    QCOMPARE(m_calendar->yearShown(), to.year());
    QCOMPARE(m_calendar->monthShown(), to.month());
}

void tst_ZCalendar::wheelTurnsPages()
{
    wheel(*m_scene, m_calendar->mapToScene(m_calendar->gridRect().center()), -120);
    QCOMPARE(m_calendar->yearShown(), 2027);
    QCOMPARE(m_calendar->monthShown(), 1);
    wheel(*m_scene, m_calendar->mapToScene(m_calendar->gridRect().center()), 120);
    wheel(*m_scene, m_calendar->mapToScene(m_calendar->gridRect().center()), 120);
    QCOMPARE(m_calendar->yearShown(), 2026);
    QCOMPARE(m_calendar->monthShown(), 11);
}

void tst_ZCalendar::range()
{
    m_calendar->setMinimumDate(QDate(2026, 12, 10));
    m_calendar->setMaximumDate(QDate(2027, 1, 20));
    auto *next = qobject_cast<ZPushButton *>(m_calendar->nextButton());
    auto *previous = qobject_cast<ZPushButton *>(m_calendar->previousButton());
    QVERIFY(!previous->isEnabled());
    QVERIFY(next->isEnabled());
    m_calendar->showPreviousMonth();
    QCOMPARE(m_calendar->monthShown(), 12);
    QVERIFY(m_calendar->setCurrentPage(2030, 5));
    QCOMPARE(m_calendar->yearShown(), 2027);
    QCOMPARE(m_calendar->monthShown(), 1);
    QVERIFY(!next->isEnabled());
    QVERIFY(previous->isEnabled());
    m_calendar->setSelectedDate(QDate(2027, 2, 1));
    QVERIFY(!m_calendar->selectedDate().isValid());
    m_calendar->setSelectedDate(QDate(2027, 1, 20));
    QCOMPARE(m_calendar->selectedDate(), QDate(2027, 1, 20));
    // Keys stop at the ends.
    QEvent activate(QEvent::WindowActivate);
    QCoreApplication::sendEvent(m_scene, &activate);
    m_calendar->setFocus();
    key(*m_scene, Qt::Key_Right);
    QCOMPARE(m_calendar->selectedDate(), QDate(2027, 1, 20));
    // A click on a day past the end selects nothing.
    click(*m_scene, m_calendar->mapToScene(m_calendar->dateRect(QDate(2027, 1, 25)).center()));
    QCOMPARE(m_calendar->selectedDate(), QDate(2027, 1, 20));
    // Narrowing the range moves the selection inside it.
    QSignalSpy selected(m_calendar, &ZCalendar::selectedDateChanged);
    m_calendar->setMaximumDate(QDate(2027, 1, 5));
    QCOMPARE(m_calendar->selectedDate(), QDate(2027, 1, 5));
    QCOMPARE(selected.count(), 1);
    // A minimum after the maximum takes the maximum along.
    m_calendar->setMinimumDate(QDate(2028, 1, 1));
    QCOMPARE(m_calendar->maximumDate(), QDate(2028, 1, 1));
    QCOMPARE(m_calendar->selectedDate(), QDate(2028, 1, 1));
}

void tst_ZCalendar::todayAndSelectionDrawn()
{
    m_calendar->setBackgroundColor(Qt::white);
    m_calendar->setTodayColor(QColor(255, 0, 0));
    m_calendar->setSelectedColor(QColor(0, 0, 255));
    m_calendar->setSelectedDate(QDate(2026, 12, 3));
    const QImage image = render(*m_scene, QSize(300, 260));
    image.save("/tmp/zkit-tree-calendar.png");
    auto count = [&image](const QRectF &rect, const QColor &color) {
        int n = 0;
        const QRect r = rect.toRect();
        for (int y = r.top(); y <= r.bottom(); ++y)
            for (int x = r.left(); x <= r.right(); ++x)
                n += QColor(image.pixel(x, y)) == color ? 1 : 0;
        return n;
    };
    const QRectF today = m_calendar->mapRectToScene(m_calendar->dateRect(QDate(2026, 12, 15)));
    const QRectF chosen = m_calendar->mapRectToScene(m_calendar->dateRect(QDate(2026, 12, 3)));
    const QRectF plain = m_calendar->mapRectToScene(m_calendar->dateRect(QDate(2026, 12, 16)));
    QVERIFY(count(today, QColor(255, 0, 0)) > 20);
    QCOMPARE(count(plain, QColor(255, 0, 0)), 0);
    QVERIFY(count(chosen, QColor(0, 0, 255)) > chosen.width() * chosen.height() / 2);
    QCOMPARE(count(plain, QColor(0, 0, 255)), 0);
    // The next month's page has no today.
    m_calendar->showNextMonth();
    const QImage next = render(*m_scene, QSize(300, 260));
    int red = 0;
    for (int y = 0; y < next.height(); ++y)
        for (int x = 0; x < next.width(); ++x)
            red += QColor(next.pixel(x, y)) == QColor(255, 0, 0) ? 1 : 0;
    QCOMPARE(red, 0);
}

void tst_ZCalendar::badInput()
{
    QVERIFY(!m_calendar->setCurrentPage(2026, 13));
    QVERIFY(!m_calendar->setCurrentPage(2026, 0));
    QCOMPARE(m_calendar->monthShown(), 12);
    QVERIFY(m_calendar->setCurrentPage(INT_MAX, 12));
    QCOMPARE(m_calendar->yearShown(), 9999);
    QVERIFY(m_calendar->setCurrentPage(INT_MIN, 1));
    QCOMPARE(m_calendar->yearShown(), 100);
    m_calendar->setFirstDayOfWeek(Qt::DayOfWeek(9));
    QCOMPARE(m_calendar->firstDayOfWeek(), Qt::Monday);
    m_calendar->setFirstDayOfWeek(Qt::DayOfWeek(0));
    QCOMPARE(m_calendar->firstDayOfWeek(), Qt::Monday);
    m_calendar->setSelectedDate(QDate());
    QVERIFY(!m_calendar->selectedDate().isValid());
    m_calendar->setMinimumDate(QDate());
    QCOMPARE(m_calendar->minimumDate(), QDate(100, 1, 1));
    QCOMPARE(m_calendar->dateAt(6, 0), QDate());
    QCOMPARE(m_calendar->dateAt(0, -1), QDate());
    QCOMPARE(m_calendar->dateAt(QPointF(-5, -5)), QDate());
    QCOMPARE(m_calendar->dateRect(QDate(1990, 1, 1)), QRectF());
    QCOMPARE(ZCalendar::firstGridDate(2026, 13, Qt::Monday), QDate());
    ZCalendar::addMonths(nullptr, nullptr, 3);
    int y = 2026, m = 99;
    ZCalendar::addMonths(&y, &m, 1);
    QCOMPARE(m, 1);
    QCOMPARE(y, 2027);
    m_calendar->setTitleHeight(1 << 30);
    m_calendar->setToday(QDate());
    QCOMPARE(m_calendar->today(), QDate::currentDate());
    render(*m_scene, QSize(300, 260));
    m_calendar->resize(0, 0);
    render(*m_scene, QSize(300, 260));
    QCOMPARE(m_calendar->dateAt(QPointF(0, 0)), QDate());
}

void tst_ZCalendar::fromXml()
{
    ZWidget root;
    QVERIFY(ZXmlUI::widgetFromMemory(R"(<uitree>
  <ZCalendar objectName="calendar" today="2026-02-14" selectedDate="2026-03-05" firstDayOfWeek="Sunday"
             titleHeight="30" todayColor="#00ff00" previousButton.text="Back"/>
</uitree>)", &root));
    auto *calendar = qobject_cast<ZCalendar *>(root.findObject("calendar"));
    QVERIFY(calendar);
    QCOMPARE(calendar->today(), QDate(2026, 2, 14));
    QCOMPARE(calendar->selectedDate(), QDate(2026, 3, 5));
    QCOMPARE(calendar->monthShown(), 3);
    QCOMPARE(calendar->firstDayOfWeek(), Qt::Sunday);
    QCOMPARE(calendar->titleHeight(), 30);
    QCOMPARE(calendar->todayColor(), QColor(0, 255, 0));
    QCOMPARE(qobject_cast<ZPushButton *>(calendar->previousButton())->text(), QString("Back"));
}

QTEST_MAIN(tst_ZCalendar)
#include "tst_zcalendar.moc"
