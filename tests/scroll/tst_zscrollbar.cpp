// ZScrollBar: the integer geometry, the hit order, the signals, and the
// behaviour under real mouse, hover, wheel and key events sent through a
// scene, auto-repeat included.

#include <QtTest/QtTest>
#include <QtGui/QKeyEvent>

#include "scroll/scrolltestutil.h"
#include "zframeitem.h"
#include "zicon.h"
#include "zscrollbar.h"
#include "zxmlui.h"

#include <limits>

using namespace scrolltest;

Q_DECLARE_METATYPE(QStyle::SubControl)

namespace {

constexpr qreal kNaN = std::numeric_limits<qreal>::quiet_NaN();
constexpr qreal kInf = std::numeric_limits<qreal>::infinity();

ZFrameItem *part(ZScrollBar *bar, const char *name)
{
    return qobject_cast<ZFrameItem *>(bar->property(name).value<QObject *>());
}

// Records each valueChanged() with the milliseconds since the recorder was made.
struct Emissions
{
    explicit Emissions(ZScrollBar *bar)
    {
        clock.start();
        QObject::connect(bar, &ZScrollBar::valueChanged, bar,
                         [this](qreal v) { entries.append({clock.elapsed(), v}); });
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

private slots:
    void init();
    void cleanup();

    void defaults();
    void thumbLength_data();
    void thumbLength();
    void thumbPosition_data();
    void thumbPosition();
    void valueFromPosition_data();
    void valueFromPosition();
    void subControlRects_data();
    void subControlRects();
    void hitOrder_data();
    void hitOrder();

    void setValueClampsAndEmitsOnce();
    void rangeSignals();
    void badNumbersKeepTheState();

    void childrenFollowTheGeometry();
    void deferredThumbUpdate();
    void orientationSwapsDefaultImages();
    void thicknessHint();

    void lineButtonRepeats();
    void pagingStopsAtThePointer_data();
    void pagingStopsAtThePointer();
    void pagingWithoutRangeDoesNothing();
    void thumbDrag_data();
    void thumbDrag();
    void pressOnHiddenThumbPages();
    void otherButtonsAreIgnored();
    void clickableLineButtonSteps();
    void deletedWhileRepeating();

    void wheel();
    void hoverStates();
    void showFullOnHover();
    void keysAreIgnored();

    void fromXml();

private:
    ZScrollBar *makeBar(const QSizeF &size, qreal min = 0, qreal max = 100, qreal page = 10);

    QGraphicsScene *m_scene = nullptr;
};

void tst_ZScrollBar::init()
{
    m_scene = new QGraphicsScene(0, 0, 600, 400);
}

void tst_ZScrollBar::cleanup()
{
    delete m_scene;
    m_scene = nullptr;
}

ZScrollBar *tst_ZScrollBar::makeBar(const QSizeF &size, qreal min, qreal max, qreal page)
{
    auto *bar = new ZScrollBar;
    if (size.height() > size.width())
        bar->setOrientation(Qt::Vertical);
    m_scene->addItem(bar);
    bar->setPos(10, 10);
    bar->resize(size);
    bar->setRange(min, max);
    bar->setPageStep(page);
    QCoreApplication::processEvents(); // the deferred thumb update
    return bar;
}

void tst_ZScrollBar::defaults()
{
    ZScrollBar bar;
    QCOMPARE(bar.value(), 0.0);
    QCOMPARE(bar.minimum(), 0.0);
    QCOMPARE(bar.maximum(), 1.0);
    QCOMPARE(bar.singleStep(), 1.0);
    QCOMPARE(bar.pageStep(), 1.0);
    QCOMPARE(bar.orientation(), Qt::Horizontal);
    QCOMPARE(bar.buttonHeight(), 14.0);
    QCOMPARE(bar.sliderMinimumHeight(), 16.0);
    QCOMPARE(bar.frameThickness(), 15.0);
    QCOMPARE(bar.deltaFactor(), 0.0);
    QCOMPARE(bar.thumbIconOffset(), QPointF());
    QVERIFY(!bar.showFullOnHover());
    QCOMPARE(bar.pressedControl(), QStyle::SC_None);
    QCOMPARE(bar.hoverControl(), QStyle::SC_None);
    QCOMPARE(bar.hitTest(QPointF(1, 1)), ZWidget::Nothing);
    // The default skin, and the children exposed for documents.
    QVERIFY(bar.thumbImage().startsWith(":/image/theme/hscrollbar_thumb_normal.png|"));
    QCOMPARE(bar.backgroundImage(), QStringLiteral(":/image/theme/hscrollbar_bkg.png"));
    QCOMPARE(bar.thumbIcon(), QStringLiteral(":/image/theme/hscrollbar_thumbico.png"));
    auto *thumb = part(&bar, "slider");
    QVERIFY(thumb);
    QCOMPARE(thumb->frameType(), ZFrameItem::GridFour);
    QCOMPARE(thumb->frameCount(), 3);
    QVERIFY(!thumb->currentPixmap().isNull());
    QVERIFY(part(&bar, "lineAdd") && part(&bar, "lineSub"));
    QVERIFY(qobject_cast<ZIcon *>(bar.icon()));
    // Stacked above whatever draws the background.
    QVERIFY(thumb->zValue() >= 1000);
    QVERIFY(qobject_cast<ZIcon *>(bar.icon())->zValue() > thumb->zValue());
}

void tst_ZScrollBar::thumbLength_data()
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
    QTest::newRow("no range, no page") << 228 << 14.0 << 5.0 << 5.0 << 0.0 << 16.0 << 200;
    QTest::newRow("raised to the shortest") << 228 << 14.0 << 0.0 << 1000.0 << 10.0 << 16.0 << 16;
    QTest::newRow("zero page") << 228 << 14.0 << 0.0 << 100.0 << 0.0 << 16.0 << 16;
    QTest::newRow("shortest beyond the track") << 40 << 14.0 << 0.0 << 100.0 << 10.0 << 16.0 << 12;
    QTest::newRow("page far beyond range") << 228 << 14.0 << 0.0 << 10.0 << 1000.0 << 16.0 << 198;
    QTest::newRow("fractions are cut") << 228 << 14.9 << 0.5 << 100.9 << 10.9 << 16.9 << 18;
    QTest::newRow("no buttons") << 200 << 0.0 << 0.0 << 100.0 << 10.0 << 16.0 << 18;
    QTest::newRow("crossed bounds fill the track") << 228 << 14.0 << 100.0 << 0.0 << 10.0 << 16.0 << 200;
    QTest::newRow("huge range") << 228 << 14.0 << 0.0 << 1e300 << 10.0 << 16.0 << 16;
    // The page is bounded to 2^28 units: 2^28 * 200 / (2^28 + 100) is just below 200.
    QTest::newRow("huge page") << 228 << 14.0 << 0.0 << 100.0 << 1e300 << 16.0 << 199;
    QTest::newRow("negative range") << 228 << 14.0 << -100.0 << 0.0 << 10.0 << 4.0 << 18;
}

void tst_ZScrollBar::thumbLength()
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
        // The thumb item gets it, on the next turn of the event loop.
        QCoreApplication::processEvents();
        const QSizeF thumb = qobject_cast<QGraphicsWidget *>(bar.slider())->size();
        QCOMPARE(o == Qt::Horizontal ? thumb.width() : thumb.height(), qreal(expected));
    }
}

void tst_ZScrollBar::thumbPosition_data()
{
    QTest::addColumn<qreal>("min");
    QTest::addColumn<qreal>("max");
    QTest::addColumn<qreal>("page");
    QTest::addColumn<qreal>("value");
    QTest::addColumn<int>("expected");

    // Track 200, thumb 18: the thumb start travels 182 pixels after the 14 of the button.
    QTest::newRow("start") << 0.0 << 100.0 << 10.0 << 0.0 << 14;
    QTest::newRow("end") << 0.0 << 100.0 << 10.0 << 100.0 << 196;
    QTest::newRow("middle (91.5 rounds down)") << 0.0 << 100.0 << 10.0 << 50.0 << 105;
    QTest::newRow("one unit is 1.82 pixels") << 0.0 << 100.0 << 10.0 << 1.0 << 16;
    QTest::newRow("value cut to 33") << 0.0 << 100.0 << 10.0 << 33.7 << 74;
    QTest::newRow("shifted range") << 20.0 << 120.0 << 10.0 << 70.0 << 105;
    QTest::newRow("negative range") << -50.0 << 50.0 << 10.0 << 0.0 << 105;
    QTest::newRow("range wider than the track") << 0.0 << 1000.0 << 100.0 << 500.0 << 105;
    QTest::newRow("range wider, near the end") << 0.0 << 1000.0 << 100.0 << 999.0 << 196;
    QTest::newRow("no range") << 5.0 << 5.0 << 10.0 << 5.0 << 14;
}

void tst_ZScrollBar::thumbPosition()
{
    QFETCH(qreal, min);
    QFETCH(qreal, max);
    QFETCH(qreal, page);
    QFETCH(qreal, value);
    QFETCH(int, expected);

    ZScrollBar bar;
    bar.resize(228, 15);
    bar.setRange(min, max);
    bar.setPageStep(page);
    bar.setValue(value);
    QCOMPARE(bar.sliderPosition(), expected);
    QCoreApplication::processEvents();
    // The thumb item moves with the value at once.
    QCOMPARE(qobject_cast<QGraphicsWidget *>(bar.slider())->x(), qreal(expected));
}

void tst_ZScrollBar::valueFromPosition_data()
{
    QTest::addColumn<int>("pos");
    QTest::addColumn<int>("expected");

    // Range 0..100 over 182 pixels.
    QTest::newRow("before the track") << -5 << 0;
    QTest::newRow("track start") << 0 << 0;
    QTest::newRow("one pixel") << 1 << 1;
    QTest::newRow("middle") << 91 << 50;
    QTest::newRow("rounds to nearest") << 100 << 55;
    QTest::newRow("end of travel") << 182 << 100;
    QTest::newRow("beyond") << 500 << 100;
}

void tst_ZScrollBar::valueFromPosition()
{
    QFETCH(int, pos);
    QFETCH(int, expected);
    ZScrollBar bar;
    bar.resize(228, 15);
    bar.setRange(0, 100);
    bar.setPageStep(10);
    QCOMPARE(bar.sliderValueFromPosition(pos), expected);
}

void tst_ZScrollBar::subControlRects_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("control");
    QTest::addColumn<QRect>("expected"); // horizontal form

    const int c = QStyle::SC_ScrollBarSubLine;
    QTest::newRow("sub line") << 228 << c << QRect(0, 0, 14, 15);
    QTest::newRow("add line") << 228 << int(QStyle::SC_ScrollBarAddLine) << QRect(214, 0, 14, 15);
    QTest::newRow("sub page") << 228 << int(QStyle::SC_ScrollBarSubPage) << QRect(14, 0, 91, 15);
    QTest::newRow("add page covers the thumb") << 228 << int(QStyle::SC_ScrollBarAddPage) << QRect(105, 0, 109, 15);
    QTest::newRow("thumb") << 228 << int(QStyle::SC_ScrollBarSlider) << QRect(105, 0, 18, 15);
    QTest::newRow("groove") << 228 << int(QStyle::SC_ScrollBarGroove) << QRect(14, 0, 200, 15);
    QTest::newRow("first") << 228 << int(QStyle::SC_ScrollBarFirst) << QRect();
    QTest::newRow("last") << 228 << int(QStyle::SC_ScrollBarLast) << QRect();
    QTest::newRow("short bar: half each, sub") << 20 << c << QRect(0, 0, 10, 15);
    QTest::newRow("short bar: half each, add") << 20 << int(QStyle::SC_ScrollBarAddLine) << QRect(10, 0, 10, 15);
}

void tst_ZScrollBar::subControlRects()
{
    QFETCH(int, length);
    QFETCH(int, control);
    QFETCH(QRect, expected);

    ZScrollBar bar;
    bar.resize(length, 15);
    bar.setRange(0, 100);
    bar.setPageStep(10);
    bar.setValue(50);
    QCOMPARE(bar.subControlRect(QStyle::SubControl(control)), expected);

    bar.setOrientation(Qt::Vertical);
    bar.resize(15, length);
    const QRect turned = expected.isNull() ? QRect() : QRect(expected.y(), expected.x(), expected.height(), expected.width());
    QCOMPARE(bar.subControlRect(QStyle::SubControl(control)), turned);
}

void tst_ZScrollBar::hitOrder_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QStyle::SubControl>("expected");

    // Value 50: sub page 14..104, thumb 105..122, add page 105..213.
    QTest::newRow("sub line") << 228 << QPointF(5, 7) << QStyle::SC_ScrollBarSubLine;
    QTest::newRow("add line") << 228 << QPointF(220, 7) << QStyle::SC_ScrollBarAddLine;
    QTest::newRow("sub page") << 228 << QPointF(50, 7) << QStyle::SC_ScrollBarSubPage;
    QTest::newRow("last sub page pixel") << 228 << QPointF(104.9, 7) << QStyle::SC_ScrollBarSubPage;
    QTest::newRow("add page") << 228 << QPointF(200, 7) << QStyle::SC_ScrollBarAddPage;
    QTest::newRow("thumb counts as add page") << 228 << QPointF(110, 7) << QStyle::SC_ScrollBarAddPage;
    QTest::newRow("thumb start") << 228 << QPointF(105, 0) << QStyle::SC_ScrollBarAddPage;
    QTest::newRow("beyond the end") << 228 << QPointF(228, 7) << QStyle::SC_None;
    QTest::newRow("below the bar") << 228 << QPointF(50, 15) << QStyle::SC_None;
    QTest::newRow("left of the bar") << 228 << QPointF(-0.5, 7) << QStyle::SC_None;
    QTest::newRow("short bar, first half") << 20 << QPointF(9, 7) << QStyle::SC_ScrollBarSubLine;
    QTest::newRow("short bar, second half") << 20 << QPointF(10, 7) << QStyle::SC_ScrollBarAddLine;
    QTest::newRow("odd short bar, middle pixel") << 25 << QPointF(12, 7) << QStyle::SC_None;
}

void tst_ZScrollBar::hitOrder()
{
    QFETCH(int, length);
    QFETCH(QPointF, point);
    QFETCH(QStyle::SubControl, expected);

    ZScrollBar bar;
    bar.resize(length, 15);
    bar.setRange(0, 100);
    bar.setPageStep(10);
    bar.setValue(50);
    QCOMPARE(bar.subControlAt(point), expected);
    bar.setOrientation(Qt::Vertical);
    bar.resize(15, length);
    QCOMPARE(bar.subControlAt(point.transposed()), expected);
}

void tst_ZScrollBar::setValueClampsAndEmitsOnce()
{
    ZScrollBar bar;
    bar.setRange(0, 100);
    QSignalSpy spy(&bar, &ZScrollBar::valueChanged);
    bar.setValue(150);
    QCOMPARE(bar.value(), 100.0);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toReal(), 100.0);
    bar.setValue(150);
    QCOMPARE(spy.count(), 1);
    bar.setValue(-3);
    QCOMPARE(bar.value(), 0.0);
    bar.increase();
    bar.increase();
    QCOMPARE(bar.value(), 2.0);
    bar.setSingleStep(5);
    bar.decrease();
    QCOMPARE(bar.value(), 0.0); // clamped, not -3
    QCOMPARE(spy.count(), 5);
    bar.decrease();
    QCOMPARE(spy.count(), 5);
    // Crossed bounds: limited to the maximum first, then raised to the minimum.
    bar.setRange(50, 10);
    QCOMPARE(bar.value(), 50.0);
}

void tst_ZScrollBar::rangeSignals()
{
    ZScrollBar bar;
    bar.setRange(0, 100);
    bar.setValue(80);
    QSignalSpy minSpy(&bar, &ZScrollBar::minimumChanged);
    QSignalSpy maxSpy(&bar, &ZScrollBar::maximumChanged);
    QSignalSpy valueSpy(&bar, &ZScrollBar::valueChanged);

    // Only the maximum changes: it goes out under minimumChanged.
    bar.setRange(0, 50);
    QCOMPARE(minSpy.count(), 1);
    QCOMPARE(minSpy.at(0).at(0).toReal(), 50.0);
    QCOMPARE(maxSpy.count(), 0);
    QCOMPARE(bar.maximum(), 50.0);
    QCOMPARE(bar.value(), 50.0);
    QCOMPARE(valueSpy.count(), 1);

    // Both change: two minimumChanged, the minimum's first.
    bar.setRange(10, 40);
    QCOMPARE(minSpy.count(), 3);
    QCOMPARE(minSpy.at(1).at(0).toReal(), 10.0);
    QCOMPARE(minSpy.at(2).at(0).toReal(), 40.0);
    QCOMPARE(bar.value(), 40.0);

    // Nothing changes: nothing is emitted.
    bar.setRange(10, 40);
    QCOMPARE(minSpy.count(), 3);

    // The single setters emit their own signal and clamp.
    bar.setMaximum(20);
    QCOMPARE(maxSpy.count(), 1);
    QCOMPARE(maxSpy.at(0).at(0).toReal(), 20.0);
    QCOMPARE(bar.value(), 20.0);
    bar.setMinimum(15);
    QCOMPARE(minSpy.count(), 4);
    QCOMPARE(minSpy.at(3).at(0).toReal(), 15.0);
    bar.setMinimum(15);
    bar.setMaximum(20);
    QCOMPARE(minSpy.count(), 4);
    QCOMPARE(maxSpy.count(), 1);
    bar.setMinimum(30); // above the maximum: the minimum wins
    QCOMPARE(bar.value(), 30.0);
}

void tst_ZScrollBar::badNumbersKeepTheState()
{
    ZScrollBar bar;
    bar.resize(228, 15);
    bar.setRange(0, 100);
    bar.setValue(40);
    bar.setPageStep(10);
    QSignalSpy spy(&bar, &ZScrollBar::valueChanged);
    for (qreal bad : {kNaN, kInf, -kInf}) {
        bar.setValue(bad);
        bar.setMinimum(bad);
        bar.setMaximum(bad);
        bar.setRange(bad, bad);
        bar.setSingleStep(bad);
        bar.setPageStep(bad);
        bar.setDeltaFactor(bad);
        bar.setButtonHeight(bad);
        bar.setSliderMinimumHeight(bad);
        bar.setFrameThickness(bad);
        bar.setThumbIconOffset(QPointF(bad, 1));
    }
    for (qreal negative : {-1.0, -1e300}) {
        bar.setSingleStep(negative);
        bar.setPageStep(negative);
        bar.setButtonHeight(negative);
        bar.setSliderMinimumHeight(negative);
        bar.setFrameThickness(negative);
    }
    QCOMPARE(spy.count(), 0);
    QCOMPARE(bar.value(), 40.0);
    QCOMPARE(bar.minimum(), 0.0);
    QCOMPARE(bar.maximum(), 100.0);
    QCOMPARE(bar.singleStep(), 1.0);
    QCOMPARE(bar.pageStep(), 10.0);
    QCOMPARE(bar.deltaFactor(), 0.0);
    QCOMPARE(bar.buttonHeight(), 14.0);
    QCOMPARE(bar.sliderMinimumHeight(), 16.0);
    QCOMPARE(bar.frameThickness(), 15.0);
    QCOMPARE(bar.thumbIconOffset(), QPointF());
    // One bad bound of two is skipped, the other taken.
    bar.setRange(kNaN, 60);
    QCOMPARE(bar.minimum(), 0.0);
    QCOMPARE(bar.maximum(), 60.0);
    // An orientation that is no orientation is horizontal.
    bar.setProperty("orientation", 3);
    QCOMPARE(bar.orientation(), Qt::Horizontal);
    // Huge sizes and button heights give empty parts, not a crash.
    bar.setButtonHeight(1e12);
    bar.resize(1e9, 1e9);
    QCoreApplication::processEvents();
    QVERIFY(!bar.subControlRect(QStyle::SC_ScrollBarGroove).isValid());
    QCOMPARE(bar.subControlAt(QPointF(5, 5)), QStyle::SC_ScrollBarSubLine);
}

void tst_ZScrollBar::childrenFollowTheGeometry()
{
    ZScrollBar *bar = makeBar(QSizeF(228, 15));
    bar->setValue(50);
    const auto geometry = [bar](const char *name) {
        return qobject_cast<QGraphicsWidget *>(bar->property(name).value<QObject *>())->geometry();
    };
    QCOMPARE(geometry("lineSub"), QRectF(0, 0, 14, 15));
    QCOMPARE(geometry("lineAdd"), QRectF(214, 0, 14, 15));
    QCOMPARE(geometry("slider"), QRectF(105, 0, 18, 15));
    // The 5 x 4 icon centred on the thumb (in whole pixels) and shifted.
    QCOMPARE(geometry("icon"), QRectF(111, 5, 5, 4));
    bar->setThumbIconOffset(QPointF(2, -1));
    QCOMPARE(geometry("icon"), QRectF(113, 4, 5, 4));
    bar->setThumbIcon(QString());
    QVERIFY(!qobject_cast<QGraphicsItem *>(bar->icon())->isVisible());
    bar->setThumbIcon(QStringLiteral(":/image/theme/hscrollbar_thumbico.png"));
    QVERIFY(qobject_cast<ZIcon *>(bar->icon())->isVisible());

    bar->resize(100, 20);
    QCOMPARE(geometry("lineAdd"), QRectF(86, 0, 14, 20));
    QCOMPARE(geometry("slider").height(), 20.0);
    // A thumb shorter than its icon drops the icon.
    bar->setSliderMinimumHeight(3);
    bar->setRange(0, 100000);
    QCoreApplication::processEvents();
    QCOMPARE(geometry("slider").width(), 3.0);
    QVERIFY(!qobject_cast<ZIcon *>(bar->icon())->isVisible());
}

void tst_ZScrollBar::deferredThumbUpdate()
{
    ZScrollBar *bar = makeBar(QSizeF(228, 15));
    auto *thumb = qobject_cast<QGraphicsWidget *>(bar->slider());
    QCOMPARE(thumb->size().width(), 18.0);
    bar->setPageStep(100);
    bar->setPageStep(50);
    bar->setButtonHeight(4);
    QCOMPARE(bar->sliderPixels(), 220 * 50 / 150);
    // Several changes, one move: on the next turn of the event loop.
    QTRY_COMPARE(thumb->size().width(), qreal(220 * 50 / 150));
    QCOMPARE(qobject_cast<QGraphicsWidget *>(bar->lineAdd())->geometry(), QRectF(224, 0, 4, 15));
}

void tst_ZScrollBar::orientationSwapsDefaultImages()
{
    ZScrollBar bar;
    bar.setLineSubImage(QStringLiteral(":/image/theme/titleicon.png"));
    bar.setOrientation(Qt::Vertical);
    QVERIFY(bar.lineAddImage().startsWith(":/image/theme/vscrollbar_lineadd_normal.png|"));
    QVERIFY(bar.thumbImage().startsWith(":/image/theme/vscrollbar_thumb_normal.png|"));
    QCOMPARE(bar.backgroundImage(), QStringLiteral(":/image/theme/vscrollbar_bkg.png"));
    QCOMPARE(bar.thumbIcon(), QStringLiteral(":/image/theme/vscrollbar_thumbico.png"));
    // An image of the document's own stays.
    QCOMPARE(bar.lineSubImage(), QStringLiteral(":/image/theme/titleicon.png"));
    QCOMPARE(part(&bar, "slider")->pixmapSize(), QSizeF(14, 15));
    bar.setOrientation(Qt::Horizontal);
    QVERIFY(bar.lineAddImage().startsWith(":/image/theme/hscrollbar_lineadd_normal.png|"));
    QCOMPARE(part(&bar, "slider")->pixmapSize(), QSizeF(15, 14));
}

void tst_ZScrollBar::thicknessHint()
{
    ZScrollBar bar;
    QCOMPARE(bar.effectiveSizeHint(Qt::MinimumSize).height(), 15.0);
    QCOMPARE(bar.effectiveSizeHint(Qt::PreferredSize).height(), 15.0);
    QSignalSpy spy(&bar, &ZScrollBar::thicknessChanged);
    bar.setFrameThickness(20);
    bar.setFrameThickness(20);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(bar.effectiveSizeHint(Qt::PreferredSize).height(), 20.0);
    bar.setOrientation(Qt::Vertical);
    QCOMPARE(bar.effectiveSizeHint(Qt::MinimumSize).width(), 20.0);
    QCOMPARE(bar.sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
}

void tst_ZScrollBar::lineButtonRepeats()
{
    ZScrollBar *bar = makeBar(QSizeF(228, 15));
    Emissions emissions(bar);
    Mouse mouse(*m_scene);
    const QPointF addLine = bar->mapToScene(220, 7);
    QVERIFY(mouse.press(addLine));
    QCOMPARE(bar->value(), 1.0); // at once
    QCOMPARE(bar->pressedControl(), QStyle::SC_ScrollBarAddLine);
    QCOMPARE(part(bar, "lineAdd")->frameIndex(), int(ZFrameItem::Down));
    QTRY_VERIFY_WITH_TIMEOUT(emissions.entries.size() >= 4, 3000);
    mouse.release(addLine);
    const auto &e = emissions.entries;
    // 250 ms to the first repeat, then every 50 ms. A late tick makes the
    // next one early, so each repeat is checked against its due time
    // (coarse timers may fire 5% before it).
    for (int k = 1; k < 4; ++k) {
        const qint64 due = 250 + (k - 1) * 50;
        QVERIFY2(e.at(k).first - e.at(0).first >= due * 95 / 100,
                 qPrintable(QStringLiteral("repeat %1 after %2 ms").arg(k).arg(e.at(k).first - e.at(0).first)));
    }
    QCOMPARE(e.at(3).second, 4.0);
    // Released: no more steps, states back.
    const qsizetype count = e.size();
    QTest::qWait(120);
    QCOMPARE(emissions.entries.size(), count);
    QCOMPARE(bar->pressedControl(), QStyle::SC_None);
    // The pointer is still over the button.
    QCOMPARE(part(bar, "lineAdd")->frameIndex(), int(ZFrameItem::Hover));

    // The sub line steps back the same way, at once.
    mouse.press(bar->mapToScene(3, 7));
    QCOMPARE(bar->value(), qreal(count - 1));
    mouse.release(bar->mapToScene(3, 7));
}

void tst_ZScrollBar::pagingStopsAtThePointer_data()
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

void tst_ZScrollBar::pagingStopsAtThePointer()
{
    QFETCH(qreal, start);
    QFETCH(qreal, page);
    QFETCH(int, x);
    QFETCH(QList<qreal>, steps);

    ZScrollBar *bar = makeBar(QSizeF(228, 15), 0, 100, 10);
    bar->setValue(start);
    bar->setPageStep(page);
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

void tst_ZScrollBar::pagingWithoutRangeDoesNothing()
{
    ZScrollBar *bar = makeBar(QSizeF(228, 15), 5, 5, 10);
    QCOMPARE(bar->subControlRect(QStyle::SC_ScrollBarSlider), QRect(14, 0, 200, 15));
    QSignalSpy spy(bar, &ZScrollBar::valueChanged);
    Mouse mouse(*m_scene);
    m_scene->setFocusItem(nullptr);
    mouse.press(bar->mapToScene(150, 7));
    QTest::qWait(320);
    mouse.release(bar->mapToScene(150, 7));
    QCOMPARE(spy.count(), 0);
    QCOMPARE(bar->value(), 5.0);
}

void tst_ZScrollBar::thumbDrag_data()
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
    // Range 20: 20 pixels move 3.
    QTest::newRow("from minus one") << -10.0 << 10.0 << -1.0 << 20 << 2.0;
}

void tst_ZScrollBar::thumbDrag()
{
    QFETCH(qreal, min);
    QFETCH(qreal, max);
    QFETCH(qreal, start);
    QFETCH(int, dx);
    QFETCH(qreal, expected);

    ZScrollBar *bar = makeBar(QSizeF(228, 15), min, max, 10);
    bar->setValue(start);
    const QRect thumb = bar->subControlRect(QStyle::SC_ScrollBarSlider);
    const QPointF grab = bar->mapToScene(thumb.center());
    Mouse mouse(*m_scene);
    QVERIFY(mouse.press(grab));
    QCOMPARE(bar->pressedControl(), QStyle::SC_ScrollBarSlider);
    QCOMPARE(bar->value(), start); // a press on the thumb moves nothing
    QCOMPARE(part(bar, "slider")->frameIndex(), int(ZFrameItem::Down));
    mouse.move(grab + QPointF(dx / 2.0, 3));
    mouse.move(grab + QPointF(dx, 30)); // leaving the bar sideways does not matter
    const qreal factor = 200.0 / (10 + max - min);
    QCOMPARE(bar->value(), qBound(min, start + dx / factor, max));
    QVERIFY(qAbs(bar->value() - expected) < 0.5);
    mouse.move(grab);
    QCOMPARE(bar->value(), start);
    mouse.release(grab);
    QCOMPARE(bar->pressedControl(), QStyle::SC_None);
    // Released over the thumb, which is hovered now.
    QCOMPARE(part(bar, "slider")->frameIndex(), int(ZFrameItem::Hover));
    // No auto-repeat from a thumb press, and no drag after the release.
    mouse.move(grab + QPointF(50, 0));
    QCOMPARE(bar->value(), start);
}

void tst_ZScrollBar::pressOnHiddenThumbPages()
{
    // Without the thumb item on top, a press where the thumb is lands on
    // the bar, whose add page comes first in the hit order.
    ZScrollBar *bar = makeBar(QSizeF(228, 15), 0, 100, 10);
    bar->setShowFullOnHover(true);
    QVERIFY(!qobject_cast<QGraphicsItem *>(bar->slider())->isVisible());
    Mouse mouse(*m_scene);
    mouse.press(bar->mapToScene(20, 7)); // 6 into the track: value 3
    QCOMPARE(bar->pressedControl(), QStyle::SC_ScrollBarAddPage);
    QCOMPARE(bar->value(), 3.0);
    mouse.move(bar->mapToScene(120, 7));
    QCOMPARE(bar->value(), 3.0); // paging, not dragging
    mouse.release(bar->mapToScene(120, 7));
}

void tst_ZScrollBar::otherButtonsAreIgnored()
{
    ZScrollBar *bar = makeBar(QSizeF(228, 15));
    Mouse mouse(*m_scene);
    QVERIFY(!mouse.press(bar->mapToScene(220, 7), Qt::RightButton));
    QVERIFY(!mouse.press(bar->mapToScene(bar->subControlRect(QStyle::SC_ScrollBarSlider).center()), Qt::RightButton));
    QCOMPARE(bar->value(), 0.0);
    QCOMPARE(bar->pressedControl(), QStyle::SC_None);
}

void tst_ZScrollBar::clickableLineButtonSteps()
{
    // A document may make a line button clickable: then its click steps once.
    ZScrollBar *bar = makeBar(QSizeF(228, 15));
    part(bar, "lineAdd")->setAcceptClick(true);
    Mouse mouse(*m_scene);
    mouse.press(bar->mapToScene(220, 7));
    QCOMPARE(bar->value(), 0.0);
    mouse.release(bar->mapToScene(220, 7));
    QCOMPARE(bar->value(), 1.0);
    QCOMPARE(bar->pressedControl(), QStyle::SC_None);
}

void tst_ZScrollBar::deletedWhileRepeating()
{
    QPointer<ZScrollBar> bar = makeBar(QSizeF(228, 15));
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

void tst_ZScrollBar::wheel()
{
    ZScrollBar *bar = makeBar(QSizeF(228, 15));
    QSignalSpy spy(bar, &ZScrollBar::valueChanged);
    const QPointF at = bar->mapToScene(100, 7);
    // Without a factor the wheel is taken but moves nothing.
    QVERIFY(scrolltest::wheel(*m_scene, at, -120));
    QCOMPARE(bar->value(), 0.0);
    bar->setDeltaFactor(30);
    QVERIFY(scrolltest::wheel(*m_scene, at, -120));
    QCOMPARE(bar->value(), 30.0);
    scrolltest::wheel(*m_scene, at, 60);
    QCOMPARE(bar->value(), 15.0);
    scrolltest::wheel(*m_scene, at, -1200);
    QCOMPARE(bar->value(), 100.0);
    scrolltest::wheel(*m_scene, at, -120);
    QCOMPARE(spy.count(), 3);
    // Another item's wheel event, handed over.
    QGraphicsSceneWheelEvent event(QEvent::GraphicsSceneWheel);
    event.setDelta(240);
    bar->handleMouseWheelEvent(&event);
    QCOMPARE(bar->value(), 40.0);
    bar->handleMouseWheelEvent(nullptr);
}

void tst_ZScrollBar::hoverStates()
{
    ZScrollBar *bar = makeBar(QSizeF(228, 15));
    bar->setValue(50);
    hover(*m_scene, bar->mapToScene(110, 7)); // on the thumb
    QCOMPARE(bar->hoverControl(), QStyle::SC_ScrollBarSlider);
    QCOMPARE(part(bar, "slider")->frameIndex(), int(ZFrameItem::Hover));
    hover(*m_scene, bar->mapToScene(220, 7));
    QCOMPARE(bar->hoverControl(), QStyle::SC_ScrollBarAddLine);
    QCOMPARE(part(bar, "slider")->frameIndex(), int(ZFrameItem::Normal));
    QCOMPARE(part(bar, "lineAdd")->frameIndex(), int(ZFrameItem::Hover));
    hover(*m_scene, bar->mapToScene(50, 7));
    QCOMPARE(bar->hoverControl(), QStyle::SC_ScrollBarSubPage);
    QCOMPARE(part(bar, "lineAdd")->frameIndex(), int(ZFrameItem::Normal));
    hover(*m_scene, bar->mapToScene(110, 7));
    hover(*m_scene, QPointF(500, 300)); // away
    QCOMPARE(bar->hoverControl(), QStyle::SC_None);
    QCOMPARE(part(bar, "slider")->frameIndex(), int(ZFrameItem::Normal));
}

void tst_ZScrollBar::showFullOnHover()
{
    ZScrollBar *bar = makeBar(QSizeF(228, 15));
    const auto shown = [bar] {
        return qobject_cast<QGraphicsItem *>(bar->slider())->isVisible()
            && qobject_cast<QGraphicsItem *>(bar->lineAdd())->isVisible()
            && qobject_cast<QGraphicsItem *>(bar->lineSub())->isVisible();
    };
    const auto hidden = [bar] {
        return !qobject_cast<QGraphicsItem *>(bar->slider())->isVisible()
            && !qobject_cast<QGraphicsItem *>(bar->lineAdd())->isVisible()
            && !qobject_cast<QGraphicsItem *>(bar->lineSub())->isVisible()
            && !qobject_cast<QGraphicsItem *>(bar->icon())->isVisible();
    };
    QVERIFY(shown());
    bar->displayFullOnHover(false); // only under the flag
    QVERIFY(shown());
    bar->setShowFullOnHover(true);
    QVERIFY(hidden());
    hover(*m_scene, bar->mapToScene(100, 7));
    QVERIFY(shown());
    QVERIFY(qobject_cast<QGraphicsItem *>(bar->icon())->isVisible());
    hover(*m_scene, QPointF(500, 300));
    QVERIFY(hidden());
    bar->displayFullOnHover(true);
    QVERIFY(shown());
    bar->setShowFullOnHover(false);
    QVERIFY(shown());
}

void tst_ZScrollBar::keysAreIgnored()
{
    ZScrollBar *bar = makeBar(QSizeF(228, 15));
    bar->setFlag(QGraphicsItem::ItemIsFocusable);
    m_scene->setFocusItem(bar);
    for (QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent key(type, Qt::Key_Right, Qt::NoModifier);
        key.setAccepted(true);
        m_scene->sendEvent(bar, &key);
        QVERIFY(!key.isAccepted());
    }
    QCOMPARE(bar->value(), 0.0);
}

void tst_ZScrollBar::fromXml()
{
    ZWidget root;
    const QByteArray document = R"(<uitree>
  <ZScrollBar objectName="bar" orientation="Vertical" minimum="10" maximum="90" value="200"
              singleStep="5" pageStep="20" deltaFactor="12" buttonHeight="10" sliderMinimumHeight="8"
              frameThickness="12" thumbIconOffset="1,2" showFullOnHover="true"
              thumbImage=":/image/theme/vscrollbar_thumb_hover.png"
              thumbIcon=":/image/theme/titleicon.png" slider.frameType="StretchHV" lineAdd.acceptClick="true"/>
  <ZScrollBar objectName="plain" orientation="Sideways" value="nonsense"/>
</uitree>)";
    QVERIFY(ZXmlUI::widgetFromMemory(document, &root));
    auto *bar = qobject_cast<ZScrollBar *>(root.findObject(QStringLiteral("bar")));
    QVERIFY(bar);
    QCOMPARE(bar->orientation(), Qt::Vertical);
    QCOMPARE(bar->minimum(), 10.0);
    QCOMPARE(bar->maximum(), 90.0);
    QCOMPARE(bar->value(), 90.0);
    QCOMPARE(bar->singleStep(), 5.0);
    QCOMPARE(bar->pageStep(), 20.0);
    QCOMPARE(bar->deltaFactor(), 12.0);
    QCOMPARE(bar->buttonHeight(), 10.0);
    QCOMPARE(bar->sliderMinimumHeight(), 8.0);
    QCOMPARE(bar->frameThickness(), 12.0);
    QCOMPARE(bar->thumbIconOffset(), QPointF(1, 2));
    QVERIFY(bar->showFullOnHover());
    QCOMPARE(bar->thumbImage(), QStringLiteral(":/image/theme/vscrollbar_thumb_hover.png"));
    QCOMPARE(bar->thumbIcon(), QStringLiteral(":/image/theme/titleicon.png"));
    QCOMPARE(part(bar, "slider")->frameType(), ZFrameItem::StretchHV);
    QVERIFY(part(bar, "lineAdd")->acceptClick());
    QCOMPARE(bar->effectiveSizeHint(Qt::PreferredSize).width(), 12.0);

    auto *plain = qobject_cast<ZScrollBar *>(root.findObject(QStringLiteral("plain")));
    QVERIFY(plain);
    QCOMPARE(plain->orientation(), Qt::Horizontal);
    QCOMPARE(plain->value(), 0.0);
}

QTEST_MAIN(tst_ZScrollBar)
#include "tst_zscrollbar.moc"
