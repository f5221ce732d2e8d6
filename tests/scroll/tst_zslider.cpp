// ZSlider: value and range rules, the lazy layout, and presses, drags and
// hover through a scene.

#include "common/scenetest.h"
#include "zframeitem.h"
#include "zslider.h"

#include <QtTest/QtTest>

#include <limits>

using namespace scenetest;

namespace {

ZFrameItem *part(ZSlider *slider, const char *name)
{
    return qobject_cast<ZFrameItem *>(slider->property(name).value<QObject *>());
}

QRectF geometryOf(QObject *item)
{
    return qobject_cast<QGraphicsWidget *>(item)->geometry();
}

} // namespace

// Thumb 16 x 16 on a slider 216 long: the thumb travels 200.
class tst_ZSlider : public QObject
{
    Q_OBJECT

    QGraphicsScene *m_scene = nullptr;

    ZSlider *makeSlider(const QSizeF &size = QSizeF(216, 16))
    {
        auto *slider = new ZSlider(size.height() > size.width() ? Qt::Vertical : Qt::Horizontal);
        m_scene->addItem(slider);
        slider->setPos(10, 10);
        slider->resize(size);
        return slider;
    }

private slots:
    void init() { m_scene = new QGraphicsScene(0, 0, 400, 400); }
    void cleanup() { delete m_scene; }

    // Clamped, announced once, and positions within 1e-10 are the same.
    void setValue()
    {
        ZSlider *slider = makeSlider();
        QSignalSpy spy(slider, &ZSlider::valueChanged);
        slider->setValue(150);
        slider->setValue(100);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).toReal(), 100.0);
        QCOMPARE(slider->ratio(), 1.0);
        slider->setValue(50);
        slider->setValue(50 + 1e-11);
        slider->setValue(-20);
        slider->setValue(1e-14);
        QCOMPARE(spy.count(), 3);
        QCOMPARE(slider->value(), 0.0);
        slider->setValue(0.001);
        QCOMPARE(spy.count(), 4);
    }

    // A new range keeps the thumb where it is, silently; the next move reports in it.
    void newRangeKeepsThePosition()
    {
        ZSlider *slider = makeSlider();
        slider->setValue(50);
        QCoreApplication::processEvents();
        const QRectF before = geometryOf(slider->thumb());
        QSignalSpy spy(slider, &ZSlider::valueChanged);
        slider->setRange(QSizeF(0, 10));
        QCOMPARE(slider->value(), 5.0);
        QCoreApplication::processEvents();
        QCOMPARE(geometryOf(slider->thumb()), before);
        slider->setMinimum(-10);
        QCOMPARE(slider->value(), 0.0);
        slider->setMaximum(30);
        QCOMPARE(slider->value(), 10.0);
        QCOMPARE(spy.count(), 0);
        slider->setValue(20);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(slider->ratio(), 0.75);
        // An empty or crossed range means the start.
        slider->setRange(5, 5);
        slider->setValue(80);
        QCOMPARE(slider->ratio(), 0.0);
        QCOMPARE(slider->value(), 5.0);
        slider->setRange(10, 0);
        slider->setValue(50);
        QCOMPARE(slider->ratio(), 0.0);
    }

    void badNumbersAreIgnored()
    {
        ZSlider slider;
        slider.setValue(40);
        QSignalSpy spy(&slider, &ZSlider::valueChanged);
        for (qreal bad : {std::numeric_limits<qreal>::quiet_NaN(), qInf(), -qInf()}) {
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

    void geometry_data()
    {
        QTest::addColumn<QSizeF>("size");
        QTest::addColumn<QSizeF>("thumbSize");
        QTest::addColumn<qreal>("value");
        QTest::addColumn<QRectF>("thumb");
        QTest::addColumn<QRectF>("select");
        QTest::addColumn<QRectF>("frame");
        // Groove image 9 x 5 (5 x 9 upright).
        const QSizeF s(216, 16);
        const QRectF frame(0, 5, 216, 5);
        QTest::newRow("start") << s << QSizeF() << 0.0 << QRectF(0, 0, 16, 16) << QRectF(0, 5, 8, 5) << frame;
        QTest::newRow("middle") << s << QSizeF() << 50.0 << QRectF(100, 0, 16, 16) << QRectF(0, 5, 108, 5) << frame;
        QTest::newRow("end") << s << QSizeF() << 100.0 << QRectF(200, 0, 16, 16) << QRectF(0, 5, 208, 5) << frame;
        QTest::newRow("rounded to pixels") << s << QSizeF() << 33.3 << QRectF(67, 0, 16, 16) << QRectF(0, 5, 75, 5) << frame;
        QTest::newRow("taller than the thumb") << QSizeF(216, 30) << QSizeF() << 0.0 << QRectF(0, 7, 16, 16)
                                               << QRectF(0, 12, 8, 5) << QRectF(0, 12, 216, 5);
        QTest::newRow("own thumb size") << s << QSizeF(20, 10) << 50.0 << QRectF(98, 3, 20, 10) << QRectF(0, 5, 108, 5) << frame;
        QTest::newRow("upright") << QSizeF(16, 216) << QSizeF() << 25.0 << QRectF(0, 50, 16, 16) << QRectF(5, 0, 5, 58)
                                 << QRectF(5, 0, 5, 216);
        // A slider is never smaller than its thumb; as small as that, the thumb stays.
        QTest::newRow("no room to travel") << QSizeF(10, 10) << QSizeF() << 70.0 << QRectF(0, 0, 16, 16)
                                           << QRectF(0, 5, 8, 5) << QRectF(0, 5, 16, 5);
    }

    // The thumb's place is known at once; the items go there on the next turn.
    void geometry()
    {
        QFETCH(QSizeF, size);
        QFETCH(QSizeF, thumbSize);
        QFETCH(qreal, value);
        QFETCH(QRectF, thumb);
        QFETCH(QRectF, select);
        QFETCH(QRectF, frame);
        ZSlider *slider = makeSlider(size);
        QCoreApplication::processEvents();
        const QRectF before = geometryOf(slider->thumb());
        if (!thumbSize.isEmpty())
            slider->setThumbSize(thumbSize);
        slider->setValue(value);
        QCOMPARE(slider->thumbRect(), thumb);
        QCOMPARE(geometryOf(slider->thumb()), before);
        QCoreApplication::processEvents();
        QCOMPARE(geometryOf(slider->thumb()), thumb);
        QCOMPARE(geometryOf(slider->select()), select);
        QCOMPARE(qobject_cast<QGraphicsWidget *>(slider->select())->isVisible(), slider->ratio() > 0);
        QCOMPARE(geometryOf(slider->frame()), frame);
    }

    // A new slider lays out once at its minimum size: from then on the thumb
    // keeps that size whatever the image, until an empty size asks again.
    void thumbSizeComesFromTheImage()
    {
        ZSlider slider;
        QCOMPARE(slider.size(), QSizeF(16, 16));
        slider.resize(200, 40);
        slider.setThumbImage(QStringLiteral(":/image/theme/messagebox_warning.png"));
        QCoreApplication::processEvents();
        QCOMPARE(slider.thumbSize(), QSizeF(16, 16));
        slider.setThumbSize(QSizeF());
        QCOMPARE(slider.thumbRect().size(), QSizeF(40, 40));
        QCoreApplication::processEvents();
        QCOMPARE(geometryOf(slider.thumb()).size(), QSizeF(40, 40));
    }

    // The thumb's centre jumps under a press on the groove; no drag follows.
    void pressOnTheGrooveJumps()
    {
        ZSlider *slider = makeSlider();
        QSignalSpy values(slider, &ZSlider::valueChanged);
        QSignalSpy released(slider, &ZSlider::mouseRelease);
        Mouse mouse(*m_scene);
        QVERIFY(mouse.press(slider->mapToScene(150, 8))); // (150 - 8) / 200
        QCOMPARE(slider->value(), 71.0);
        QCOMPARE(part(slider, "thumb")->frameIndex(), int(ZFrameItem::Normal));
        mouse.move(slider->mapToScene(30, 8));
        mouse.release(slider->mapToScene(30, 8));
        QCOMPARE(slider->value(), 71.0);
        QCOMPARE(values.count(), 1);
        QCOMPARE(released.count(), 1);
        mouse.click(slider->mapToScene(2, 8));
        QCOMPARE(slider->value(), 0.0);
        mouse.click(slider->mapToScene(215, 8));
        QCOMPARE(slider->value(), 100.0);
        QVERIFY(!mouse.press(slider->mapToScene(100, 8), Qt::RightButton));
    }

    void dragKeepsTheGrip_data()
    {
        QTest::addColumn<int>("orientation");
        QTest::addColumn<QList<int>>("moves");
        QTest::addColumn<QList<qreal>>("values");
        // Grabbed 4 pixels into the thumb at 100: the thumb starts 4 before the pointer.
        const int h = Qt::Horizontal;
        QTest::newRow("there and back") << h << QList<int>{54, 104} << QList<qreal>{25, 50};
        QTest::newRow("beyond both ends") << h << QList<int>{400, -100} << QList<qreal>{100, 0};
        QTest::newRow("upright") << int(Qt::Vertical) << QList<int>{24} << QList<qreal>{10};
    }

    void dragKeepsTheGrip()
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
        Mouse mouse(*m_scene);
        QVERIFY(mouse.press(at(104)));
        QCOMPARE(slider->value(), 50.0); // grabbing moves nothing
        QCOMPARE(part(slider, "thumb")->frameIndex(), int(ZFrameItem::Down));
        for (int i = 0; i < moves.size(); ++i) {
            mouse.move(at(moves.at(i)));
            QCOMPARE(slider->value(), values.at(i));
        }
        mouse.release(at(moves.last()));
        QVERIFY(part(slider, "thumb")->frameIndex() != int(ZFrameItem::Down));
        mouse.move(at(0));
        QCOMPARE(slider->value(), values.last());
    }

    void hoverAndImages()
    {
        ZSlider *slider = makeSlider();
        slider->setValue(50);
        Mouse mouse(*m_scene);
        mouse.move(slider->mapToScene(108, 8));
        QCOMPARE(part(slider, "thumb")->frameIndex(), int(ZFrameItem::Hover));
        mouse.move(slider->mapToScene(20, 8));
        QCOMPARE(part(slider, "thumb")->frameIndex(), int(ZFrameItem::Normal));
        mouse.move(slider->mapToScene(108, 8));
        mouse.move(QPointF(380, 380));
        QCOMPARE(part(slider, "thumb")->frameIndex(), int(ZFrameItem::Normal));
        // The default images follow the orientation; an image of the document's own stays.
        slider->setSelectImage(QStringLiteral(":/image/theme/titleicon.png"));
        slider->setOrientation(Qt::Vertical);
        QVERIFY(slider->thumbImage().startsWith(":/image/theme/vsliderthumb_normal.png|"));
        QCOMPARE(slider->frameImage(), QStringLiteral(":/image/theme/vslider_bkg.png"));
        QCOMPARE(slider->selectImage(), QStringLiteral(":/image/theme/titleicon.png"));
        QCOMPARE(slider->effectiveSizeHint(Qt::PreferredSize), QSizeF(16, 100));
    }
};

QTEST_MAIN(tst_ZSlider)
#include "tst_zslider.moc"
