// What the scrolling controls paint: inside their bounds at every density,
// and moving with their value where the geometry says.

#include "common/scenetest.h"
#include "zprogressbar.h"
#include "zscrollarea.h"
#include "zscrollbar.h"
#include "zslider.h"

#include <QtTest/QtTest>

using namespace scenetest;

namespace {

const QColor kBackground(250, 250, 250);

QGraphicsWidget *make(const QString &kind, const QSizeF &size)
{
    QGraphicsWidget *item = nullptr;
    if (kind == QLatin1String("bar")) {
        auto *bar = new ZScrollBar;
        bar->setOrientation(size.height() > size.width() ? Qt::Vertical : Qt::Horizontal);
        bar->setRange(0, 100);
        bar->setPageStep(40);
        item = bar;
    } else if (kind == QLatin1String("slider")) {
        item = new ZSlider(size.height() > size.width() ? Qt::Vertical : Qt::Horizontal);
    } else if (kind == QLatin1String("progress")) {
        item = new ZProgressBar;
    } else {
        // An area whose content is larger than it: the content must be clipped.
        auto *area = new ZScrollArea;
        auto *content = new ZWidget;
        content->setBackgroundColor(QColor(40, 90, 200));
        content->resize(600, 400);
        area->setContentWidget(content);
        item = area;
    }
    item->resize(size);
    item->setPos(10, 10);
    return item;
}

void setValue(QGraphicsWidget *item, int value)
{
    item->setProperty("value", value);
    QCoreApplication::processEvents(); // the lazy layouts
}

QRect painted(const QImage &image)
{
    return boundingBox(image, [](QColor c) { return c != kBackground; });
}

} // namespace

class tst_ScrollSheet : public QObject
{
    Q_OBJECT

private slots:
    void staysInItsBounds_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QSizeF>("size");
        QTest::newRow("horizontal bar") << "bar" << QSizeF(228, 15);
        QTest::newRow("vertical bar") << "bar" << QSizeF(15, 160);
        QTest::newRow("slider") << "slider" << QSizeF(216, 16);
        QTest::newRow("progress") << "progress" << QSizeF(220, 9);
        QTest::newRow("scroll area") << "area" << QSizeF(220, 150);
    }

    void staysInItsBounds()
    {
        QFETCH(QString, kind);
        QFETCH(QSizeF, size);
        QGraphicsScene scene;
        QGraphicsWidget *item = make(kind, size);
        scene.addItem(item);
        setValue(item, 60);
        const QRectF area(0, 0, size.width() + 20, size.height() + 20);
        for (qreal ratio : {1.0, 2.0}) {
            const QImage image = render(scene, area, kBackground, ratio);
            const QRect box = painted(image);
            QVERIFY2(!box.isEmpty(), qPrintable(QString::number(ratio)));
            QVERIFY2(QRectF(QPointF(10, 10) * ratio, size * ratio).toRect().contains(box), qPrintable(QString::number(ratio)));
        }
    }

    // Between two values the paint differs only along the span the thumb or
    // fill covers at either value, and reaches both of its ends.
    void paintFollowsTheValue_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QSizeF>("size");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        // Track 200 after the 14 of a button, thumb 200 * 40 / 140 = 57: 14 .. 213.
        QTest::newRow("horizontal bar") << "bar" << QSizeF(228, 15) << 0 << 100 << 14 << 213;
        // Track 132, thumb 37: 14 .. 145.
        QTest::newRow("vertical bar") << "bar" << QSizeF(15, 160) << 0 << 100 << 14 << 145;
        QTest::newRow("slider") << "slider" << QSizeF(216, 16) << 0 << 100 << 0 << 215;
        // 37 of 220 is 81.4, rounded up.
        QTest::newRow("progress") << "progress" << QSizeF(220, 9) << 0 << 37 << 0 << 81;
    }

    void paintFollowsTheValue()
    {
        QFETCH(QString, kind);
        QFETCH(QSizeF, size);
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(int, first);
        QFETCH(int, last);
        QGraphicsScene scene;
        QGraphicsWidget *item = make(kind, size);
        scene.addItem(item);
        const QRectF area(10, 10, size.width(), size.height());
        setValue(item, from);
        const QImage a = render(scene, area, kBackground);
        setValue(item, to);
        const QImage b = render(scene, area, kBackground);
        QImage diff(a.size(), QImage::Format_ARGB32_Premultiplied);
        for (int y = 0; y < a.height(); ++y)
            for (int x = 0; x < a.width(); ++x)
                diff.setPixelColor(x, y, a.pixel(x, y) == b.pixel(x, y) ? Qt::white : Qt::black);
        const QRect changed = boxOf(diff, Qt::black);
        const bool vertical = size.height() > size.width();
        const int lo = vertical ? changed.top() : changed.left();
        const int hi = vertical ? changed.bottom() : changed.right();
        QVERIFY2(lo >= first && lo <= first + 3, qPrintable(QString::number(lo)));
        QVERIFY2(hi <= last && hi >= last - 3, qPrintable(QString::number(hi)));
    }
};

QTEST_MAIN(tst_ScrollSheet)
#include "tst_scrollsheet.moc"
