#include "common/scenetest.h"

#include "zcalendar.h"
#include "zlabel.h"
#include "zpushbutton.h"

#include <QtTest/QtTest>

#include <climits>

using namespace scenetest;

class tst_ZCalendar : public QObject
{
    Q_OBJECT

    QPointF centreOf(const QDate &day) const { return m_calendar->mapToScene(m_calendar->dateRect(day).center()); }
    void key(int k) { scenetest::key(*m_scene, k); }
    void focus()
    {
        QEvent activate(QEvent::WindowActivate);
        QCoreApplication::sendEvent(m_scene, &activate);
        m_calendar->setFocus();
        QVERIFY(m_calendar->hasFocus());
    }

    QGraphicsScene *m_scene = nullptr;
    ZCalendar *m_calendar = nullptr;

private Q_SLOTS:
    void init()
    {
        m_scene = new QGraphicsScene(0, 0, 300, 260);
        m_calendar = new ZCalendar;
        m_scene->addItem(m_calendar);
        m_calendar->resize(280, 240);
        m_calendar->setToday(QDate(2026, 12, 15));
        m_calendar->setCurrentPage(2026, 12);
    }

    void cleanup()
    {
        delete m_scene;
        m_scene = nullptr;
        m_calendar = nullptr;
    }

    void addMonths_data()
    {
        QTest::addColumn<int>("year");
        QTest::addColumn<int>("month");
        QTest::addColumn<int>("months");
        QTest::addColumn<int>("toYear");
        QTest::addColumn<int>("toMonth");
        QTest::newRow("December to January") << 2026 << 12 << 1 << 2027 << 1;
        QTest::newRow("fourteen ahead") << 2026 << 11 << 14 << 2028 << 1;
        QTest::newRow("thirteen back from January") << 2026 << 1 << -13 << 2024 << 12;
        QTest::newRow("into year zero") << 1 << 1 << -1 << 0 << 12;
        QTest::newRow("negative years count down") << 5 << 1 << -100 << -4 << 9;
        QTest::newRow("from a negative year") << -1 << 12 << 1 << 0 << 1;
        QTest::newRow("the largest step") << 2026 << 1 << INT_MAX << 2026 + INT_MAX / 12 << 1 + INT_MAX % 12;
        QTest::newRow("the smallest step") << 2026 << 1 << INT_MIN << 2026 - 178956971 << 5;
    }

    void addMonths()
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

    // Every page holds its whole month in order, starting on the first weekday,
    // and each day's rectangle hit-tests back to it.
    void gridCoversMonth()
    {
        for (int year : {2024, 2026, 2100}) {
            for (int first = Qt::Monday; first <= Qt::Sunday; ++first) {
                m_calendar->setFirstDayOfWeek(Qt::DayOfWeek(first));
                for (int month = 1; month <= 12; ++month) {
                    QVERIFY(m_calendar->setCurrentPage(year, month));
                    const QDate firstDay(year, month, 1);
                    const QDate start = m_calendar->dateAt(0, 0);
                    QCOMPARE(ZCalendar::firstGridDate(year, month, Qt::DayOfWeek(first)), start);
                    QCOMPARE(start.dayOfWeek(), first);
                    QVERIFY(start <= firstDay && start > firstDay.addDays(-7));
                    for (int i = 0; i < ZCalendar::Weeks * ZCalendar::DaysPerWeek; ++i)
                        QCOMPARE(m_calendar->dateAt(i / ZCalendar::DaysPerWeek, i % ZCalendar::DaysPerWeek),
                                 start.addDays(i));
                    QVERIFY(start.addDays(41) >= QDate(year, month, firstDay.daysInMonth()));
                    for (const QDate &d : {firstDay, QDate(year, month, 15)})
                        QCOMPARE(m_calendar->dateAt(m_calendar->dateRect(d).center()), d);
                }
            }
        }
    }

    // The arrow buttons, the wheel and the slots turn pages across years; turning selects nothing.
    void pageTurning()
    {
        auto *next = qobject_cast<ZPushButton *>(m_calendar->nextButton());
        auto *previous = qobject_cast<ZPushButton *>(m_calendar->previousButton());
        auto *title = qobject_cast<ZLabel *>(m_calendar->titleLabel());
        QVERIFY(next && previous && title);
        QSignalSpy pages(m_calendar, &ZCalendar::currentPageChanged);
        QSignalSpy selected(m_calendar, &ZCalendar::selectedDateChanged);
        auto page = [this] { return QPoint(m_calendar->yearShown(), m_calendar->monthShown()); };
        click(*m_scene, next->mapToScene(next->boundingRect().center()));
        QCOMPARE(page(), QPoint(2027, 1));
        QCOMPARE(pages.count(), 1);
        QCOMPARE(pages.at(0), (QVariantList{2027, 1}));
        QCOMPARE(title->text(), QLocale().toString(QDate(2027, 1, 1), "MMMM yyyy"));
        click(*m_scene, previous->mapToScene(previous->boundingRect().center()));
        click(*m_scene, previous->mapToScene(previous->boundingRect().center()));
        QCOMPARE(page(), QPoint(2026, 11));
        const QPointF grid = m_calendar->mapToScene(m_calendar->gridRect().center());
        wheel(*m_scene, grid, -120);
        wheel(*m_scene, grid, -120);
        QCOMPARE(page(), QPoint(2027, 1));
        wheel(*m_scene, grid, 120);
        QCOMPARE(page(), QPoint(2026, 12));
        QCOMPARE(pages.count(), 6);
        m_calendar->showNextYear();
        m_calendar->showPreviousYear();
        m_calendar->showPreviousYear();
        QCOMPARE(page(), QPoint(2025, 12));
        m_calendar->showToday();
        QCOMPARE(page(), QPoint(2026, 12));
        QCOMPARE(selected.count(), 0);
    }

    void clickSelects()
    {
        QSignalSpy selected(m_calendar, &ZCalendar::selectedDateChanged);
        QSignalSpy clicked(m_calendar, &ZCalendar::clicked);
        QSignalSpy activated(m_calendar, &ZCalendar::activated);
        const QDate day(2026, 12, 24);
        click(*m_scene, centreOf(day));
        QCOMPARE(m_calendar->selectedDate(), day);
        QCOMPARE(selected.count(), 1);
        QCOMPARE(selected.at(0).at(0).toDate(), day);
        click(*m_scene, centreOf(day));
        QCOMPARE(selected.count(), 1);
        QCOMPARE(clicked.count(), 2);
        Mouse(*m_scene).doubleClick(centreOf(day));
        QCOMPARE(activated.count(), 1);
        // The title row and weekday names are no days.
        click(*m_scene, m_calendar->mapToScene(QPointF(140, m_calendar->gridRect().top() - 5)));
        QCOMPARE(m_calendar->selectedDate(), day);

        // A day of the neighbouring month shown on the page selects it and turns there.
        m_calendar->setFirstDayOfWeek(Qt::Monday);
        m_calendar->setCurrentPage(2027, 1);
        QSignalSpy pages(m_calendar, &ZCalendar::currentPageChanged);
        click(*m_scene, centreOf(QDate(2026, 12, 28)));
        QCOMPARE(m_calendar->selectedDate(), QDate(2026, 12, 28));
        QCOMPARE(m_calendar->monthShown(), 12);
        QCOMPARE(pages.count(), 1);
        click(*m_scene, centreOf(QDate(2027, 1, 3)));
        QCOMPARE(m_calendar->selectedDate(), QDate(2027, 1, 3));
        QCOMPARE(m_calendar->yearShown(), 2027);
    }

    void keyboard_data()
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

    void keyboard()
    {
        QFETCH(QDate, from);
        QFETCH(int, key);
        QFETCH(QDate, to);
        focus();
        m_calendar->setSelectedDate(from);
        QSignalSpy selected(m_calendar, &ZCalendar::selectedDateChanged);
        this->key(key);
        QCOMPARE(m_calendar->selectedDate(), to);
        QCOMPARE(selected.count(), 1);
        QCOMPARE(m_calendar->yearShown(), to.year());
        QCOMPARE(m_calendar->monthShown(), to.month());
    }

    void range()
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
        // Keys and clicks stop at the ends.
        focus();
        key(Qt::Key_Right);
        QCOMPARE(m_calendar->selectedDate(), QDate(2027, 1, 20));
        click(*m_scene, centreOf(QDate(2027, 1, 25)));
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

    void todayAndSelectionDrawn()
    {
        const QColor red(255, 0, 0), blue(0, 0, 255);
        m_calendar->setBackgroundColor(Qt::white);
        m_calendar->setTodayColor(red);
        m_calendar->setSelectedColor(blue);
        m_calendar->setSelectedDate(QDate(2026, 12, 3));
        const QImage image = render(*m_scene, QSize(300, 260));
        auto count = [&image, this](const QDate &day, const QColor &color) {
            const QRect cell = m_calendar->mapRectToScene(m_calendar->dateRect(day)).toRect();
            return countOf(image.copy(cell), [color](QColor c) { return c == color; });
        };
        QVERIFY(count(QDate(2026, 12, 15), red) > 20);
        const QRectF chosen = m_calendar->dateRect(QDate(2026, 12, 3));
        QVERIFY(count(QDate(2026, 12, 3), blue) > chosen.width() * chosen.height() / 2);
        QCOMPARE(count(QDate(2026, 12, 16), red) + count(QDate(2026, 12, 16), blue), 0);
        // The next month's page has no today.
        m_calendar->showNextMonth();
        QVERIFY(boxOf(render(*m_scene, QSize(300, 260)), red).isEmpty());
    }

    void badInput()
    {
        QVERIFY(!m_calendar->setCurrentPage(2026, 13));
        QVERIFY(!m_calendar->setCurrentPage(2026, 0));
        QCOMPARE(m_calendar->monthShown(), 12);
        QVERIFY(m_calendar->setCurrentPage(INT_MAX, 12));
        QCOMPARE(m_calendar->yearShown(), 9999);
        QVERIFY(m_calendar->setCurrentPage(INT_MIN, 1));
        QCOMPARE(m_calendar->yearShown(), 100);
        m_calendar->setFirstDayOfWeek(Qt::DayOfWeek(9));
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
        QCOMPARE(QPoint(y, m), QPoint(2027, 1));
        m_calendar->setTitleHeight(1 << 30);
        m_calendar->setToday(QDate());
        QCOMPARE(m_calendar->today(), QDate::currentDate());
        render(*m_scene, QSize(300, 260));
        m_calendar->resize(0, 0);
        render(*m_scene, QSize(300, 260));
        QCOMPARE(m_calendar->dateAt(QPointF(0, 0)), QDate());
    }
};


QTEST_MAIN(tst_ZCalendar)
#include "tst_zcalendar.moc"
