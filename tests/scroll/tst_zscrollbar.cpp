// ZScrollBar: the integer geometry, the hit order, the signals, and mouse,
// hover and wheel events sent through a scene, auto-repeat included.

#include "common/scenetest.h"
#include "zframeitem.h"
#include "zicon.h"
#include "zscrollbar.h"

#include <QtGui/QKeyEvent>
#include <QtTest/QtTest>

#include <limits>

using namespace scenetest;

Q_DECLARE_METATYPE(QStyle::SubControl)

namespace {

constexpr qreal kNaN = std::numeric_limits<qreal>::quiet_NaN();
constexpr qreal kInf = std::numeric_limits<qreal>::infinity();

ZFrameItem *part(ZScrollBar *bar, const char *name)
{
    return qobject_cast<ZFrameItem *>(bar->property(name).value<QObject *>());
}

QRectF geometryOf(ZScrollBar *bar, const char *name)
{
    return qobject_cast<QGraphicsWidget *>(bar->property(name).value<QObject *>())->geometry();
}

// A bar 228 long, 15 thick: buttons of 14 leave a track of 200.
void setUp(ZScrollBar &bar, int length = 228, qreal min = 0, qreal max = 100, qreal page = 10)
{
    bar.resize(length, 15);
    bar.setRange(min, max);
    bar.setPageStep(page);
}

// Each valueChanged() with the milliseconds since the recorder was made.
struct Emissions
{
    explicit Emissions(ZScrollBar *bar)
    {
        clock.start();
        QObject::connect(bar, &ZScrollBar::valueChanged, bar, [this](qreal v) { entries.append({clock.elapsed(), v}); });
    }
    QList<qreal> values() const
    {
        QList<qreal> result;
        for (const auto &e : entries)
            result.append(e.second);
        return result;
    }
    QElapsedTimer clock;
    QList<QPair<qint64, qreal>> entries;
};

} // namespace

class tst_ZScrollBar : public QObject
{
    Q_OBJECT

    QGraphicsScene *m_scene = nullptr;

    ZScrollBar *makeBar(qreal min = 0, qreal max = 100, qreal page = 10)
    {
        auto *bar = new ZScrollBar;
        m_scene->addItem(bar);
        bar->setPos(10, 10);
        setUp(*bar, 228, min, max, page);
        QCoreApplication::processEvents(); // the deferred thumb update
        return bar;
    }

private slots:
    void init() { m_scene = new QGraphicsScene(0, 0, 600, 400); }
    void cleanup() { delete m_scene; }

    void thumbLength_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<qreal>("button");
        QTest::addColumn<qreal>("min");
        QTest::addColumn<qreal>("max");
        QTest::addColumn<qreal>("page");
        QTest::addColumn<qreal>("shortest");
        QTest::addColumn<int>("expected");
        // Track 200: 200 * 10 / 110 = 18.
        QTest::newRow("page share of the track") << 228 << 14.0 << 0.0 << 100.0 << 10.0 << 16.0 << 18;
        QTest::newRow("page equal to range") << 228 << 14.0 << 0.0 << 100.0 << 100.0 << 16.0 << 100;
        QTest::newRow("no range fills the track") << 228 << 14.0 << 5.0 << 5.0 << 10.0 << 16.0 << 200;
        QTest::newRow("raised to the shortest") << 228 << 14.0 << 0.0 << 1000.0 << 10.0 << 16.0 << 16;
        QTest::newRow("shortest beyond the track") << 40 << 14.0 << 0.0 << 100.0 << 10.0 << 16.0 << 12;
        QTest::newRow("fractions are cut") << 228 << 14.9 << 0.5 << 100.9 << 10.9 << 16.9 << 18;
        QTest::newRow("crossed bounds fill the track") << 228 << 14.0 << 100.0 << 0.0 << 10.0 << 16.0 << 200;
        QTest::newRow("huge range") << 228 << 14.0 << 0.0 << 1e300 << 10.0 << 16.0 << 16;
        // The page is bounded to 2^28 units: 2^28 * 200 / (2^28 + 100) is just below 200.
        QTest::newRow("huge page") << 228 << 14.0 << 0.0 << 100.0 << 1e300 << 16.0 << 199;
    }

    void thumbLength()
    {
        QFETCH(int, length);
        QFETCH(qreal, button);
        QFETCH(qreal, min);
        QFETCH(qreal, max);
        QFETCH(qreal, page);
        QFETCH(qreal, shortest);
        QFETCH(int, expected);
        for (Qt::Orientation o : {Qt::Horizontal, Qt::Vertical}) {
            ZScrollBar bar;
            bar.setOrientation(o);
            bar.resize(o == Qt::Horizontal ? QSizeF(length, 15) : QSizeF(15, length));
            bar.setButtonHeight(button);
            bar.setSliderMinimumHeight(shortest);
            bar.setRange(min, max);
            bar.setPageStep(page);
            QCOMPARE(bar.sliderPixels(), expected);
            // The thumb item gets it on the next turn of the event loop.
            QCoreApplication::processEvents();
            const QSizeF thumb = qobject_cast<QGraphicsWidget *>(bar.slider())->size();
            QCOMPARE(o == Qt::Horizontal ? thumb.width() : thumb.height(), qreal(expected));
        }
    }

    void thumbPosition_data()
    {
        QTest::addColumn<qreal>("min");
        QTest::addColumn<qreal>("max");
        QTest::addColumn<qreal>("value");
        QTest::addColumn<int>("expected");
        // Track 200, thumb 18: the thumb start travels 182 pixels after the 14 of the button.
        QTest::newRow("start") << 0.0 << 100.0 << 0.0 << 14;
        QTest::newRow("end") << 0.0 << 100.0 << 100.0 << 196;
        QTest::newRow("middle (91.5 rounds down)") << 0.0 << 100.0 << 50.0 << 105;
        QTest::newRow("value cut to 33") << 0.0 << 100.0 << 33.7 << 74;
        QTest::newRow("negative range") << -50.0 << 50.0 << 0.0 << 105;
        QTest::newRow("no range") << 5.0 << 5.0 << 5.0 << 14;
    }

    void thumbPosition()
    {
        QFETCH(qreal, min);
        QFETCH(qreal, max);
        QFETCH(qreal, value);
        QFETCH(int, expected);
        ZScrollBar bar;
        setUp(bar, 228, min, max);
        bar.setValue(value);
        QCOMPARE(bar.sliderPosition(), expected);
        QCoreApplication::processEvents();
        QCOMPARE(qobject_cast<QGraphicsWidget *>(bar.slider())->x(), qreal(expected));
        // Range 0..100 over 182 pixels, rounded to the nearest, clamped.
        if (min == 0 && max == 100) {
            const QList<QPair<int, int>> values{{-5, 0}, {1, 1}, {100, 55}, {182, 100}, {500, 100}};
            for (const auto &[pos, v] : values)
                QCOMPARE(bar.sliderValueFromPosition(pos), v);
        }
    }

    void subControlRects_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<int>("control");
        QTest::addColumn<QRect>("expected"); // horizontal form
        QTest::newRow("sub line") << 228 << int(QStyle::SC_ScrollBarSubLine) << QRect(0, 0, 14, 15);
        QTest::newRow("add line") << 228 << int(QStyle::SC_ScrollBarAddLine) << QRect(214, 0, 14, 15);
        QTest::newRow("sub page") << 228 << int(QStyle::SC_ScrollBarSubPage) << QRect(14, 0, 91, 15);
        QTest::newRow("add page covers the thumb") << 228 << int(QStyle::SC_ScrollBarAddPage) << QRect(105, 0, 109, 15);
        QTest::newRow("thumb") << 228 << int(QStyle::SC_ScrollBarSlider) << QRect(105, 0, 18, 15);
        QTest::newRow("groove") << 228 << int(QStyle::SC_ScrollBarGroove) << QRect(14, 0, 200, 15);
        QTest::newRow("first") << 228 << int(QStyle::SC_ScrollBarFirst) << QRect();
        QTest::newRow("short bar: half each") << 20 << int(QStyle::SC_ScrollBarAddLine) << QRect(10, 0, 10, 15);
    }

    void subControlRects()
    {
        QFETCH(int, length);
        QFETCH(int, control);
        QFETCH(QRect, expected);
        ZScrollBar bar;
        setUp(bar, length);
        bar.setValue(50);
        QCOMPARE(bar.subControlRect(QStyle::SubControl(control)), expected);
        bar.setOrientation(Qt::Vertical);
        bar.resize(15, length);
        const QRect turned = expected.isNull() ? QRect() : QRect(expected.y(), expected.x(), expected.height(), expected.width());
        QCOMPARE(bar.subControlRect(QStyle::SubControl(control)), turned);
    }

    void hitOrder_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<QPointF>("point");
        QTest::addColumn<QStyle::SubControl>("expected");
        // Value 50: sub page 14..104, thumb 105..122, add page 105..213.
        QTest::newRow("last sub page pixel") << 228 << QPointF(104.9, 7) << QStyle::SC_ScrollBarSubPage;
        QTest::newRow("thumb counts as add page") << 228 << QPointF(110, 7) << QStyle::SC_ScrollBarAddPage;
        QTest::newRow("beyond the end") << 228 << QPointF(228, 7) << QStyle::SC_None;
        QTest::newRow("below the bar") << 228 << QPointF(50, 15) << QStyle::SC_None;
        QTest::newRow("left of the bar") << 228 << QPointF(-0.5, 7) << QStyle::SC_None;
        QTest::newRow("short bar, second half") << 20 << QPointF(10, 7) << QStyle::SC_ScrollBarAddLine;
        QTest::newRow("odd short bar, middle pixel") << 25 << QPointF(12, 7) << QStyle::SC_None;
    }

    void hitOrder()
    {
        QFETCH(int, length);
        QFETCH(QPointF, point);
        QFETCH(QStyle::SubControl, expected);
        ZScrollBar bar;
        setUp(bar, length);
        bar.setValue(50);
        QCOMPARE(bar.subControlAt(point), expected);
        bar.setOrientation(Qt::Vertical);
        bar.resize(15, length);
        QCOMPARE(bar.subControlAt(point.transposed()), expected);
    }

    // Values are clamped and announced once; a changed maximum goes out under
    // minimumChanged when set with setRange, the minimum's first.
    void valueAndRangeSignals()
    {
        ZScrollBar bar;
        bar.setRange(0, 100);
        QSignalSpy spy(&bar, &ZScrollBar::valueChanged);
        QSignalSpy minSpy(&bar, &ZScrollBar::minimumChanged);
        QSignalSpy maxSpy(&bar, &ZScrollBar::maximumChanged);
        bar.setValue(150);
        bar.setValue(150);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).toReal(), 100.0);
        bar.setValue(-3);
        bar.increase();
        bar.increase();
        QCOMPARE(bar.value(), 2.0);
        bar.setSingleStep(5);
        bar.decrease();
        bar.decrease();
        QCOMPARE(bar.value(), 0.0);
        QCOMPARE(spy.count(), 5);
        bar.setValue(80);
        spy.clear();
        bar.setRange(0, 50);
        QCOMPARE(minSpy.count(), 1);
        QCOMPARE(minSpy.at(0).at(0).toReal(), 50.0);
        QCOMPARE(maxSpy.count(), 0);
        QCOMPARE(spy.count(), 1);
        bar.setRange(10, 40);
        bar.setRange(10, 40);
        QCOMPARE(minSpy.count(), 3);
        QCOMPARE(minSpy.at(1).at(0).toReal(), 10.0);
        QCOMPARE(minSpy.at(2).at(0).toReal(), 40.0);
        QCOMPARE(bar.value(), 40.0);
        bar.setMaximum(20);
        bar.setMaximum(20);
        QCOMPARE(maxSpy.count(), 1);
        QCOMPARE(bar.value(), 20.0);
        bar.setMinimum(30); // above the maximum: the minimum wins
        QCOMPARE(bar.value(), 30.0);
        // Crossed bounds: limited to the maximum first, then raised to the minimum.
        bar.setRange(50, 10);
        QCOMPARE(bar.value(), 50.0);
    }

    void badNumbersKeepTheState()
    {
        ZScrollBar bar;
        setUp(bar);
        bar.setValue(40);
        QSignalSpy spy(&bar, &ZScrollBar::valueChanged);
        for (qreal bad : {kNaN, kInf, -kInf}) {
            bar.setValue(bad);
            bar.setRange(bad, bad);
            bar.setDeltaFactor(bad);
            bar.setThumbIconOffset(QPointF(bad, 1));
        }
        for (qreal bad : {kNaN, kInf, -kInf, -1.0, -1e300}) {
            bar.setSingleStep(bad);
            bar.setPageStep(bad);
            bar.setButtonHeight(bad);
            bar.setSliderMinimumHeight(bad);
            bar.setFrameThickness(bad);
        }
        QCOMPARE(spy.count(), 0);
        QCOMPARE(bar.value(), 40.0);
        QCOMPARE(QPointF(bar.minimum(), bar.maximum()), QPointF(0, 100));
        QCOMPARE(QPointF(bar.singleStep(), bar.pageStep()), QPointF(1, 10));
        QCOMPARE(bar.deltaFactor(), 0.0);
        QCOMPARE(QPointF(bar.buttonHeight(), bar.sliderMinimumHeight()), QPointF(14, 16));
        QCOMPARE(bar.frameThickness(), 15.0);
        QCOMPARE(bar.thumbIconOffset(), QPointF());
        // One bad bound of two is skipped, the other taken.
        bar.setRange(kNaN, 60);
        QCOMPARE(QPointF(bar.minimum(), bar.maximum()), QPointF(0, 60));
        bar.setProperty("orientation", 3);
        QCOMPARE(bar.orientation(), Qt::Horizontal);
        // Huge sizes and button heights give empty parts, not a crash.
        bar.setButtonHeight(1e12);
        bar.resize(1e9, 1e9);
        QCoreApplication::processEvents();
        QVERIFY(!bar.subControlRect(QStyle::SC_ScrollBarGroove).isValid());
        QCOMPARE(bar.subControlAt(QPointF(5, 5)), QStyle::SC_ScrollBarSubLine);
    }

    // The parts follow the bar's geometry, the thumb on the next turn, and the
    // icon sits centred on the thumb unless the thumb is too short for it.
    void childrenFollowTheGeometry()
    {
        ZScrollBar *bar = makeBar();
        bar->setValue(50);
        QCOMPARE(geometryOf(bar, "lineAdd"), QRectF(214, 0, 14, 15));
        QCOMPARE(geometryOf(bar, "slider"), QRectF(105, 0, 18, 15));
        QCOMPARE(geometryOf(bar, "icon"), QRectF(111, 5, 5, 4));
        bar->setThumbIconOffset(QPointF(2, -1));
        QCOMPARE(geometryOf(bar, "icon"), QRectF(113, 4, 5, 4));
        bar->setThumbIcon(QString());
        QVERIFY(!qobject_cast<QGraphicsItem *>(bar->icon())->isVisible());
        bar->setThumbIcon(QStringLiteral(":/image/theme/hscrollbar_thumbico.png"));
        bar->setPageStep(100);
        bar->setPageStep(50);
        bar->setButtonHeight(4);
        QCOMPARE(bar->sliderPixels(), 220 * 50 / 150);
        QCOMPARE(geometryOf(bar, "slider").width(), 18.0);
        QTRY_COMPARE(geometryOf(bar, "slider").width(), qreal(220 * 50 / 150));
        QCOMPARE(geometryOf(bar, "lineAdd"), QRectF(224, 0, 4, 15));
        QVERIFY(qobject_cast<ZIcon *>(bar->icon())->isVisible());
        bar->resize(100, 20);
        QCOMPARE(geometryOf(bar, "lineAdd"), QRectF(96, 0, 4, 20));
        bar->setSliderMinimumHeight(3);
        bar->setRange(0, 100000);
        QCoreApplication::processEvents();
        QCOMPARE(geometryOf(bar, "slider").width(), 3.0);
        QVERIFY(!qobject_cast<ZIcon *>(bar->icon())->isVisible());
    }

    // The default images follow the orientation; an image of the document's own stays.
    void orientationAndThickness()
    {
        ZScrollBar bar;
        bar.setLineSubImage(QStringLiteral(":/image/theme/titleicon.png"));
        bar.setOrientation(Qt::Vertical);
        QVERIFY(bar.lineAddImage().startsWith(":/image/theme/vscrollbar_lineadd_normal.png|"));
        QCOMPARE(bar.backgroundImage(), QStringLiteral(":/image/theme/vscrollbar_bkg.png"));
        QCOMPARE(bar.lineSubImage(), QStringLiteral(":/image/theme/titleicon.png"));
        QCOMPARE(part(&bar, "slider")->pixmapSize(), QSizeF(14, 15));
        bar.setOrientation(Qt::Horizontal);
        QVERIFY(bar.thumbImage().startsWith(":/image/theme/hscrollbar_thumb_normal.png|"));
        QCOMPARE(part(&bar, "slider")->pixmapSize(), QSizeF(15, 14));
        // The thickness is the size hint across the bar.
        bar.setFrameThickness(20);
        QCOMPARE(bar.effectiveSizeHint(Qt::PreferredSize).height(), 20.0);
        bar.setOrientation(Qt::Vertical);
        QCOMPARE(bar.effectiveSizeHint(Qt::MinimumSize).width(), 20.0);
    }

    // A line button steps at once, after 250 ms again, then every 50 ms.
    void lineButtonRepeats()
    {
        ZScrollBar *bar = makeBar();
        Emissions emissions(bar);
        Mouse mouse(*m_scene);
        const QPointF addLine = bar->mapToScene(220, 7);
        QVERIFY(mouse.press(addLine));
        QCOMPARE(bar->value(), 1.0);
        QCOMPARE(bar->pressedControl(), QStyle::SC_ScrollBarAddLine);
        QCOMPARE(part(bar, "lineAdd")->frameIndex(), int(ZFrameItem::Down));
        QTRY_VERIFY_WITH_TIMEOUT(emissions.entries.size() >= 4, 3000);
        mouse.release(addLine);
        const auto &e = emissions.entries;
        // A late tick makes the next one early, so each repeat is checked
        // against its due time (coarse timers may fire 5% before it).
        for (int k = 1; k < 4; ++k)
            QVERIFY2(e.at(k).first - e.at(0).first >= (250 + (k - 1) * 50) * 95 / 100, qPrintable(QString::number(k)));
        QCOMPARE(e.at(3).second, 4.0);
        const qsizetype count = e.size();
        QTest::qWait(120);
        QCOMPARE(emissions.entries.size(), count);
        QCOMPARE(bar->pressedControl(), QStyle::SC_None);
        QCOMPARE(part(bar, "lineAdd")->frameIndex(), int(ZFrameItem::Hover)); // still under the pointer
        mouse.press(bar->mapToScene(3, 7));
        QCOMPARE(bar->value(), qreal(count - 1));
        mouse.release(bar->mapToScene(3, 7));
    }

    void pagingStopsAtThePointer_data()
    {
        QTest::addColumn<qreal>("start");
        QTest::addColumn<qreal>("page");
        QTest::addColumn<int>("x");
        QTest::addColumn<QList<qreal>>("steps");
        // Pixel 114 is 100 into the track: value round(100 * 100 / 182) = 55.
        QTest::newRow("add page") << 0.0 << 10.0 << 114 << QList<qreal>{10, 20, 30, 40, 50, 55};
        // Page 25 makes the thumb 40 long: pixel 64 is 50 of 160 into the track, value 31.
        QTest::newRow("sub page") << 100.0 << 25.0 << 64 << QList<qreal>{75, 50, 31};
        // At 60 the thumb starts at 123, where the value is 60 already.
        QTest::newRow("at the thumb's start") << 60.0 << 10.0 << 123 << QList<qreal>{};
    }

    void pagingStopsAtThePointer()
    {
        QFETCH(qreal, start);
        QFETCH(qreal, page);
        QFETCH(int, x);
        QFETCH(QList<qreal>, steps);
        ZScrollBar *bar = makeBar(0, 100, page);
        bar->setValue(start);
        QCoreApplication::processEvents();
        Emissions emissions(bar);
        Mouse mouse(*m_scene);
        mouse.press(bar->mapToScene(x, 7));
        if (!steps.isEmpty()) {
            QCOMPARE(emissions.values().size(), 1); // the first step at once
            QTRY_COMPARE_WITH_TIMEOUT(bar->value(), steps.last(), 3000);
        }
        QTest::qWait(150);
        QCOMPARE(emissions.values(), steps);
        if (steps.size() > 1)
            QVERIFY(emissions.entries.at(1).first - emissions.entries.at(0).first >= 237);
        mouse.release(bar->mapToScene(x, 7));
    }

    void thumbDrag_data()
    {
        QTest::addColumn<qreal>("min");
        QTest::addColumn<qreal>("max");
        QTest::addColumn<qreal>("start");
        QTest::addColumn<int>("dx");
        QTest::addColumn<qreal>("expected");
        // Groove 200 over page + range 110: 20 pixels move 11.
        QTest::newRow("forward") << 0.0 << 100.0 << 0.0 << 20 << 11.0;
        QTest::newRow("clamped at the end") << 0.0 << 100.0 << 0.0 << 400 << 100.0;
        QTest::newRow("backward") << 0.0 << 100.0 << 50.0 << -40 << 28.0;
        QTest::newRow("from minus one") << -10.0 << 10.0 << -1.0 << 20 << 2.0;
    }

    void thumbDrag()
    {
        QFETCH(qreal, min);
        QFETCH(qreal, max);
        QFETCH(qreal, start);
        QFETCH(int, dx);
        QFETCH(qreal, expected);
        ZScrollBar *bar = makeBar(min, max);
        bar->setValue(start);
        const QPointF grab = bar->mapToScene(bar->subControlRect(QStyle::SC_ScrollBarSlider).center());
        Mouse mouse(*m_scene);
        QVERIFY(mouse.press(grab));
        QCOMPARE(bar->pressedControl(), QStyle::SC_ScrollBarSlider);
        QCOMPARE(bar->value(), start); // a press on the thumb moves nothing
        QCOMPARE(part(bar, "slider")->frameIndex(), int(ZFrameItem::Down));
        mouse.move(grab + QPointF(dx / 2.0, 3));
        mouse.move(grab + QPointF(dx, 30)); // leaving the bar sideways does not matter
        QCOMPARE(bar->value(), qBound(min, start + dx * (10 + max - min) / 200.0, max));
        QVERIFY(qAbs(bar->value() - expected) < 0.5);
        mouse.move(grab);
        QCOMPARE(bar->value(), start);
        mouse.release(grab);
        QCOMPARE(part(bar, "slider")->frameIndex(), int(ZFrameItem::Hover));
        // No auto-repeat from a thumb press, and no drag after the release.
        mouse.move(grab + QPointF(50, 0));
        QCOMPARE(bar->value(), start);
    }

    // Right presses, keys, and paging without a range change nothing.
    void ignoredInput()
    {
        ZScrollBar *bar = makeBar();
        Mouse mouse(*m_scene);
        QVERIFY(!mouse.press(bar->mapToScene(220, 7), Qt::RightButton));
        QVERIFY(!mouse.press(bar->mapToScene(110, 7), Qt::RightButton));
        QCOMPARE(bar->pressedControl(), QStyle::SC_None);
        bar->setFlag(QGraphicsItem::ItemIsFocusable);
        m_scene->setFocusItem(bar);
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier);
        m_scene->sendEvent(bar, &key);
        QVERIFY(!key.isAccepted());
        bar->setRange(5, 5);
        QSignalSpy spy(bar, &ZScrollBar::valueChanged);
        mouse.press(bar->mapToScene(150, 7));
        QTest::qWait(320);
        mouse.release(bar->mapToScene(150, 7));
        QCOMPARE(spy.count(), 0);
        QCOMPARE(bar->value(), 5.0);
    }

    // A line button a document made clickable steps once, on its click.
    void clickableLineButtonSteps()
    {
        ZScrollBar *bar = makeBar();
        part(bar, "lineAdd")->setAcceptClick(true);
        Mouse mouse(*m_scene);
        mouse.press(bar->mapToScene(220, 7));
        QCOMPARE(bar->value(), 0.0);
        mouse.release(bar->mapToScene(220, 7));
        QCOMPARE(bar->value(), 1.0);
        QCOMPARE(bar->pressedControl(), QStyle::SC_None);
    }

    void deletedWhileRepeating()
    {
        QPointer<ZScrollBar> bar = makeBar();
        connect(bar.data(), &ZScrollBar::valueChanged, this, [&bar](qreal v) {
            if (v >= 2)
                delete bar.data();
        });
        Mouse mouse(*m_scene);
        mouse.press(QPointF(10 + 220, 17));
        QTRY_VERIFY_WITH_TIMEOUT(!bar, 2000);
        mouse.move(QPointF(10 + 100, 17));
        mouse.release(QPointF(10 + 100, 17));
    }

    // The wheel moves by deltaFactor per notch, taken even without a factor.
    void wheel()
    {
        ZScrollBar *bar = makeBar();
        QSignalSpy spy(bar, &ZScrollBar::valueChanged);
        const QPointF at = bar->mapToScene(100, 7);
        QVERIFY(scenetest::wheel(*m_scene, at, -120));
        QCOMPARE(bar->value(), 0.0);
        bar->setDeltaFactor(30);
        scenetest::wheel(*m_scene, at, -120);
        QCOMPARE(bar->value(), 30.0);
        scenetest::wheel(*m_scene, at, 60);
        QCOMPARE(bar->value(), 15.0);
        scenetest::wheel(*m_scene, at, -1200);
        scenetest::wheel(*m_scene, at, -120);
        QCOMPARE(bar->value(), 100.0);
        QCOMPARE(spy.count(), 3);
        // Another item's wheel event, handed over.
        QGraphicsSceneWheelEvent event(QEvent::GraphicsSceneWheel);
        event.setDelta(240);
        bar->handleMouseWheelEvent(&event);
        QCOMPARE(bar->value(), 40.0);
        bar->handleMouseWheelEvent(nullptr);
    }

    void hoverStates()
    {
        ZScrollBar *bar = makeBar();
        bar->setValue(50);
        Mouse mouse(*m_scene);
        mouse.move(bar->mapToScene(110, 7)); // on the thumb
        QCOMPARE(bar->hoverControl(), QStyle::SC_ScrollBarSlider);
        QCOMPARE(part(bar, "slider")->frameIndex(), int(ZFrameItem::Hover));
        mouse.move(bar->mapToScene(220, 7));
        QCOMPARE(bar->hoverControl(), QStyle::SC_ScrollBarAddLine);
        QCOMPARE(part(bar, "slider")->frameIndex(), int(ZFrameItem::Normal));
        QCOMPARE(part(bar, "lineAdd")->frameIndex(), int(ZFrameItem::Hover));
        mouse.move(bar->mapToScene(50, 7));
        QCOMPARE(bar->hoverControl(), QStyle::SC_ScrollBarSubPage);
        QCOMPARE(part(bar, "lineAdd")->frameIndex(), int(ZFrameItem::Normal));
        mouse.move(bar->mapToScene(110, 7));
        mouse.move(QPointF(500, 300));
        QCOMPARE(bar->hoverControl(), QStyle::SC_None);
        QCOMPARE(part(bar, "slider")->frameIndex(), int(ZFrameItem::Normal));
    }

    // With showFullOnHover the parts show only under the pointer; a press
    // where the hidden thumb is pages, as the add page comes first in the hit order.
    void showFullOnHover()
    {
        ZScrollBar *bar = makeBar();
        const auto shown = [bar](bool all) {
            for (QObject *o : {bar->slider(), bar->lineAdd(), bar->lineSub(), bar->icon()})
                if (qobject_cast<QGraphicsObject *>(o)->isVisible() != all)
                    return false;
            return true;
        };
        bar->displayFullOnHover(false); // only under the flag
        QVERIFY(shown(true));
        bar->setShowFullOnHover(true);
        QVERIFY(shown(false));
        Mouse mouse(*m_scene);
        mouse.move(bar->mapToScene(100, 7));
        QVERIFY(shown(true));
        mouse.move(QPointF(500, 300));
        QVERIFY(shown(false));
        mouse.press(bar->mapToScene(20, 7)); // 6 into the track: value 3
        QCOMPARE(bar->pressedControl(), QStyle::SC_ScrollBarAddPage);
        QCOMPARE(bar->value(), 3.0);
        mouse.move(bar->mapToScene(120, 7));
        QCOMPARE(bar->value(), 3.0); // paging, not dragging
        mouse.release(bar->mapToScene(120, 7));
        bar->setShowFullOnHover(false);
        QVERIFY(shown(true));
    }
};

QTEST_MAIN(tst_ZScrollBar)
#include "tst_zscrollbar.moc"
