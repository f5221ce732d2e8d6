// ZSlider: the ratio, the lazy layout and its arithmetic, and presses,
// drags, releases and hover sent through a scene.

#include <QtTest/QtTest>

#include "scroll/scrolltestutil.h"
#include "zframeitem.h"
#include "zslider.h"
#include "zxmlui.h"

#include <limits>

using namespace scrolltest;

namespace {

ZFrameItem *part(ZSlider *slider, const char *name)
{
    return qobject_cast<ZFrameItem *>(slider->property(name).value<QObject *>());
}

} // namespace

class tst_ZSlider : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void defaults();
    void setValueClampsAndEmitsOnce();
    void fuzzyEqualPositionsEmitNothing();
    void newRangeKeepsThePosition();
    void emptyRangeMeansTheStart();
    void badNumbersAreIgnored();
    void layoutIsLazy();
    void geometry_data();
    void geometry();
    void thumbSizeComesFromTheImage();
    void pressOnTheGrooveJumps();
    void dragKeepsTheGrip_data();
    void dragKeepsTheGrip();
    void hoverStates();
    void orientationSwapsDefaultImages();
    void fromXml();

private:
    ZSlider *makeSlider(const QSizeF &size);

    QGraphicsScene *m_scene = nullptr;
};

void tst_ZSlider::init()
{
    m_scene = new QGraphicsScene(0, 0, 400, 400);
}

void tst_ZSlider::cleanup()
{
    delete m_scene;
    m_scene = nullptr;
}

ZSlider *tst_ZSlider::makeSlider(const QSizeF &size)
{
    auto *slider = new ZSlider(size.height() > size.width() ? Qt::Vertical : Qt::Horizontal);
    m_scene->addItem(slider);
    slider->setPos(10, 10);
    slider->resize(size);
    return slider;
}

void tst_ZSlider::defaults()
{
    ZSlider slider;
    QCOMPARE(slider.range(), QSizeF(0, 100));
    QCOMPARE(slider.value(), 0.0);
    QCOMPARE(slider.orientation(), Qt::Horizontal);
    QCOMPARE(slider.hitTest(QPointF()), ZWidget::Nothing);
    QVERIFY(slider.thumbImage().startsWith(":/image/theme/hsliderthumb_normal.png|"));
    QCOMPARE(slider.frameImage(), QStringLiteral(":/image/theme/hslider_bkg.png"));
    QCOMPARE(slider.selectImage(), QStringLiteral(":/image/theme/slider_select.png"));
    QCOMPARE(part(&slider, "thumb")->frameCount(), 3);
    // Thick enough for the thumb, long enough to use.
    QCOMPARE(slider.effectiveSizeHint(Qt::MinimumSize), QSizeF(16, 16));
    QCOMPARE(slider.effectiveSizeHint(Qt::PreferredSize), QSizeF(100, 16));
}

void tst_ZSlider::setValueClampsAndEmitsOnce()
{
    ZSlider *slider = makeSlider(QSizeF(216, 16));
    QSignalSpy spy(slider, &ZSlider::valueChanged);
    slider->setValue(150);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toReal(), 100.0);
    QCOMPARE(slider->ratio(), 1.0);
    slider->setValue(150);
    slider->setValue(100);
    QCOMPARE(spy.count(), 1);
    QTRY_COMPARE(qobject_cast<QGraphicsWidget *>(slider->thumb())->x(), 200.0);
    slider->setValue(-20);
    QCOMPARE(spy.count(), 2);
    QCOMPARE(slider->value(), 0.0);
}

void tst_ZSlider::fuzzyEqualPositionsEmitNothing()
{
    ZSlider slider;
    slider.setValue(50);
    QSignalSpy spy(&slider, &ZSlider::valueChanged);
    slider.setValue(50 + 1e-11);
    slider.setValue(50);
    QCOMPARE(spy.count(), 0);
    slider.setValue(0);
    slider.setValue(1e-14);
    QCOMPARE(spy.count(), 1);
    slider.setValue(0.001);
    QCOMPARE(spy.count(), 2);
}

void tst_ZSlider::newRangeKeepsThePosition()
{
    ZSlider *slider = makeSlider(QSizeF(216, 16));
    slider->setValue(50);
    QCoreApplication::processEvents();
    const QRectF before = qobject_cast<QGraphicsWidget *>(slider->thumb())->geometry();
    QSignalSpy spy(slider, &ZSlider::valueChanged);
    slider->setRange(QSizeF(0, 10));
    QCOMPARE(slider->value(), 5.0);
    QCOMPARE(slider->minimum(), 0.0);
    QCOMPARE(slider->maximum(), 10.0);
    QCOMPARE(spy.count(), 0);
    QCoreApplication::processEvents();
    QCOMPARE(qobject_cast<QGraphicsWidget *>(slider->thumb())->geometry(), before);
    slider->setMinimum(-10);
    QCOMPARE(slider->value(), 0.0);
    slider->setMaximum(30);
    QCOMPARE(slider->value(), 10.0);
    // The next move reports in the new range.
    slider->setValue(20);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toReal(), 20.0);
    QCOMPARE(slider->ratio(), 0.75);
}

void tst_ZSlider::emptyRangeMeansTheStart()
{
    ZSlider *slider = makeSlider(QSizeF(216, 16));
    slider->setValue(60);
    slider->setRange(5, 5);
    slider->setValue(80);
    QCOMPARE(slider->ratio(), 0.0);
    QCOMPARE(slider->value(), 5.0);
    QCOMPARE(slider->thumbRect().x(), 0.0);
    // Crossed bounds: the minimum wins, at the start.
    slider->setRange(10, 0);
    slider->setValue(50);
    QCOMPARE(slider->ratio(), 0.0);
}

void tst_ZSlider::badNumbersAreIgnored()
{
    ZSlider slider;
    slider.setValue(40);
    QSignalSpy spy(&slider, &ZSlider::valueChanged);
    const qreal nan = std::numeric_limits<qreal>::quiet_NaN();
    const qreal inf = std::numeric_limits<qreal>::infinity();
    for (qreal bad : {nan, inf, -inf}) {
        slider.setValue(bad);
        slider.setRange(bad, bad);
        slider.setThumbSize(QSizeF(bad, 4));
    }
    QCOMPARE(spy.count(), 0);
    QCOMPARE(slider.value(), 40.0);
    QCOMPARE(slider.range(), QSizeF(0, 100));
    QCOMPARE(slider.thumbSize(), QSizeF(16, 16));
    slider.setProperty("orientation", 0);
    QCOMPARE(slider.orientation(), Qt::Horizontal);
    // A thumb larger than the slider leaves no travel, and no division by it.
    slider.resize(10, 16);
    slider.setThumbSize(QSizeF(1e9, 1e9));
    QCOMPARE(slider.thumbRect().x(), 0.0);
    QCoreApplication::processEvents();
}

void tst_ZSlider::layoutIsLazy()
{
    ZSlider *slider = makeSlider(QSizeF(216, 16));
    QCoreApplication::processEvents();
    auto *thumb = qobject_cast<QGraphicsWidget *>(slider->thumb());
    QCOMPARE(thumb->x(), 0.0);
    slider->setValue(25);
    slider->setValue(50);
    // The thumb's place is known at once, the item goes there on the next turn.
    QCOMPARE(slider->thumbRect().x(), 100.0);
    QCOMPARE(thumb->x(), 0.0);
    QTRY_COMPARE(thumb->x(), 100.0);
    QCOMPARE(qobject_cast<QGraphicsWidget *>(slider->select())->size().width(), 108.0);
}

void tst_ZSlider::geometry_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QSizeF>("thumbSize");
    QTest::addColumn<qreal>("value");
    QTest::addColumn<QRectF>("thumb");
    QTest::addColumn<QRectF>("select");
    QTest::addColumn<QRectF>("frame");

    // Thumb 16 x 16, groove image 9 x 5 (5 x 9 upright): the thumb travels 200.
    QTest::newRow("start") << QSizeF(216, 16) << QSizeF() << 0.0 << QRectF(0, 0, 16, 16) << QRectF(0, 5, 8, 5)
                           << QRectF(0, 5, 216, 5);
    QTest::newRow("middle") << QSizeF(216, 16) << QSizeF() << 50.0 << QRectF(100, 0, 16, 16)
                            << QRectF(0, 5, 108, 5) << QRectF(0, 5, 216, 5);
    QTest::newRow("end") << QSizeF(216, 16) << QSizeF() << 100.0 << QRectF(200, 0, 16, 16) << QRectF(0, 5, 208, 5)
                         << QRectF(0, 5, 216, 5);
    QTest::newRow("rounded to pixels") << QSizeF(216, 16) << QSizeF() << 33.3 << QRectF(67, 0, 16, 16)
                                       << QRectF(0, 5, 75, 5) << QRectF(0, 5, 216, 5);
    QTest::newRow("taller than the thumb") << QSizeF(216, 30) << QSizeF() << 0.0 << QRectF(0, 7, 16, 16)
                                           << QRectF(0, 12, 8, 5) << QRectF(0, 12, 216, 5);
    QTest::newRow("own thumb size") << QSizeF(216, 16) << QSizeF(20, 10) << 50.0 << QRectF(98, 3, 20, 10)
                                    << QRectF(0, 5, 108, 5) << QRectF(0, 5, 216, 5);
    QTest::newRow("upright") << QSizeF(16, 216) << QSizeF() << 25.0 << QRectF(0, 50, 16, 16) << QRectF(5, 0, 5, 58)
                             << QRectF(5, 0, 5, 216);
    // A slider is never smaller than its thumb; as small as that, the thumb stays.
    QTest::newRow("no room to travel") << QSizeF(10, 10) << QSizeF() << 70.0 << QRectF(0, 0, 16, 16)
                                       << QRectF(0, 5, 8, 5) << QRectF(0, 5, 16, 5);
}

void tst_ZSlider::geometry()
{
    QFETCH(QSizeF, size);
    QFETCH(QSizeF, thumbSize);
    QFETCH(qreal, value);
    QFETCH(QRectF, thumb);
    QFETCH(QRectF, select);
    QFETCH(QRectF, frame);

    ZSlider *slider = makeSlider(size);
    if (!thumbSize.isEmpty())
        slider->setThumbSize(thumbSize);
    slider->setValue(value);
    QCOMPARE(slider->thumbRect(), thumb);
    QCoreApplication::processEvents();
    QCOMPARE(qobject_cast<QGraphicsWidget *>(slider->thumb())->geometry(), thumb);
    QCOMPARE(qobject_cast<QGraphicsWidget *>(slider->select())->geometry(), select);
    QCOMPARE(qobject_cast<QGraphicsWidget *>(slider->select())->isVisible(), slider->ratio() > 0);
    QCOMPARE(qobject_cast<QGraphicsWidget *>(slider->frame())->geometry(), frame);
}

void tst_ZSlider::thumbSizeComesFromTheImage()
{
    // A new slider takes its minimum size, and with it lays out once: the
    // thumb's size is the thumb image's from then on, whatever the image.
    ZSlider slider;
    QCOMPARE(slider.size(), QSizeF(16, 16));
    QCOMPARE(slider.thumbSize(), QSizeF(16, 16));
    slider.resize(200, 40);
    slider.setThumbImage(QStringLiteral(":/image/theme/messagebox_warning.png"));
    QCoreApplication::processEvents();
    QCOMPARE(slider.thumbSize(), QSizeF(16, 16));
    QCOMPARE(qobject_cast<QGraphicsWidget *>(slider.thumb())->size(), QSizeF(16, 16));
    // An empty size asks for the image's again.
    slider.setThumbSize(QSizeF());
    QCOMPARE(slider.thumbRect().size(), QSizeF(40, 40));
    QCoreApplication::processEvents();
    QCOMPARE(slider.thumbSize(), QSizeF(40, 40));
    QCOMPARE(qobject_cast<QGraphicsWidget *>(slider.thumb())->size(), QSizeF(40, 40));
}

void tst_ZSlider::pressOnTheGrooveJumps()
{
    ZSlider *slider = makeSlider(QSizeF(216, 16));
    QSignalSpy values(slider, &ZSlider::valueChanged);
    QSignalSpy released(slider, &ZSlider::mouseRelease);
    Mouse mouse(*m_scene);
    // The thumb's centre goes under the pointer: (150 - 8) / 200.
    QVERIFY(mouse.press(slider->mapToScene(150, 8)));
    QCOMPARE(values.count(), 1);
    QCOMPARE(slider->value(), 71.0);
    QCOMPARE(part(slider, "thumb")->frameIndex(), int(ZFrameItem::Normal));
    // Not a drag.
    mouse.move(slider->mapToScene(30, 8));
    QCOMPARE(slider->value(), 71.0);
    mouse.release(slider->mapToScene(30, 8));
    QCOMPARE(released.count(), 1);
    QCOMPARE(values.count(), 1);
    // Near the ends the position stops at 0 and 1.
    mouse.press(slider->mapToScene(2, 8));
    QCOMPARE(slider->value(), 0.0);
    mouse.release(slider->mapToScene(2, 8));
    mouse.press(slider->mapToScene(215, 8));
    QCOMPARE(slider->value(), 100.0);
    mouse.release(slider->mapToScene(215, 8));
    QCOMPARE(released.count(), 3);
    QVERIFY(!mouse.press(slider->mapToScene(100, 8), Qt::RightButton));
}

void tst_ZSlider::dragKeepsTheGrip_data()
{
    QTest::addColumn<int>("orientation");
    QTest::addColumn<QList<int>>("moves");
    QTest::addColumn<QList<qreal>>("values");

    // Grabbed 4 pixels into the thumb at 100: the thumb starts 4 before the pointer.
    const int h = Qt::Horizontal;
    QTest::newRow("forward") << h << QList<int>{154} << QList<qreal>{75};
    QTest::newRow("there and back") << h << QList<int>{54, 104} << QList<qreal>{25, 50};
    QTest::newRow("beyond both ends") << h << QList<int>{400, -100} << QList<qreal>{100, 0};
    QTest::newRow("upright") << int(Qt::Vertical) << QList<int>{24} << QList<qreal>{10};
}

void tst_ZSlider::dragKeepsTheGrip()
{
    QFETCH(int, orientation);
    QFETCH(QList<int>, moves);
    QFETCH(QList<qreal>, values);

    const bool vertical = orientation == Qt::Vertical;
    ZSlider *slider = makeSlider(vertical ? QSizeF(16, 216) : QSizeF(216, 16));
    slider->setValue(50);
    const auto at = [vertical, slider](int along) {
        return slider->mapToScene(vertical ? QPointF(8, along) : QPointF(along, 8));
    };
    QSignalSpy released(slider, &ZSlider::mouseRelease);
    Mouse mouse(*m_scene);
    QVERIFY(mouse.press(at(104)));
    QCOMPARE(slider->value(), 50.0); // grabbing moves nothing
    QCOMPARE(part(slider, "thumb")->frameIndex(), int(ZFrameItem::Down));
    for (int i = 0; i < moves.size(); ++i) {
        mouse.move(at(moves.at(i)));
        QCOMPARE(slider->value(), values.at(i));
    }
    mouse.release(at(moves.last()));
    QCOMPARE(released.count(), 1);
    QVERIFY(part(slider, "thumb")->frameIndex() != int(ZFrameItem::Down));
    const qreal last = slider->value();
    mouse.move(at(0));
    QCOMPARE(slider->value(), last);
}

void tst_ZSlider::hoverStates()
{
    ZSlider *slider = makeSlider(QSizeF(216, 16));
    slider->setValue(50);
    hover(*m_scene, slider->mapToScene(108, 8));
    QCOMPARE(part(slider, "thumb")->frameIndex(), int(ZFrameItem::Hover));
    hover(*m_scene, slider->mapToScene(20, 8));
    QCOMPARE(part(slider, "thumb")->frameIndex(), int(ZFrameItem::Normal));
    hover(*m_scene, slider->mapToScene(108, 8));
    hover(*m_scene, QPointF(380, 380));
    QCOMPARE(part(slider, "thumb")->frameIndex(), int(ZFrameItem::Normal));
}

void tst_ZSlider::orientationSwapsDefaultImages()
{
    ZSlider slider;
    slider.setSelectImage(QStringLiteral(":/image/theme/titleicon.png"));
    slider.setOrientation(Qt::Vertical);
    QVERIFY(slider.thumbImage().startsWith(":/image/theme/vsliderthumb_normal.png|"));
    QCOMPARE(slider.frameImage(), QStringLiteral(":/image/theme/vslider_bkg.png"));
    QCOMPARE(slider.selectImage(), QStringLiteral(":/image/theme/titleicon.png"));
    QCOMPARE(slider.effectiveSizeHint(Qt::PreferredSize), QSizeF(16, 100));
    QCOMPARE(slider.sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
}

void tst_ZSlider::fromXml()
{
    ZWidget root;
    const QByteArray document = R"(<uitree>
  <ZSlider objectName="slider" orientation="Vertical" range="10,20" value="15" thumbSize="12,12"
           thumbImage=":/image/theme/hsliderthumb_hover.png" frameImage=":/image/theme/lineedit.png"
           selectImage=":/image/theme/menuhover.png" thumb.frameType="StretchHV"/>
  <ZSlider objectName="bounds" minimum="-5" maximum="5" value="nonsense"/>
</uitree>)";
    QVERIFY(ZXmlUI::widgetFromMemory(document, &root));
    auto *slider = qobject_cast<ZSlider *>(root.findObject(QStringLiteral("slider")));
    QVERIFY(slider);
    QCOMPARE(slider->orientation(), Qt::Vertical);
    QCOMPARE(slider->range(), QSizeF(10, 20));
    QCOMPARE(slider->value(), 15.0);
    QCOMPARE(slider->ratio(), 0.5);
    QCOMPARE(slider->thumbSize(), QSizeF(12, 12));
    QCOMPARE(slider->thumbImage(), QStringLiteral(":/image/theme/hsliderthumb_hover.png"));
    QCOMPARE(slider->frameImage(), QStringLiteral(":/image/theme/lineedit.png"));
    QCOMPARE(slider->selectImage(), QStringLiteral(":/image/theme/menuhover.png"));
    QCOMPARE(part(slider, "thumb")->frameType(), ZFrameItem::StretchHV);
    auto *bounds = qobject_cast<ZSlider *>(root.findObject(QStringLiteral("bounds")));
    QCOMPARE(bounds->minimum(), -5.0);
    QCOMPARE(bounds->maximum(), 5.0);
    QCOMPARE(bounds->value(), -5.0);
}

QTEST_MAIN(tst_ZSlider)
#include "tst_zslider.moc"
