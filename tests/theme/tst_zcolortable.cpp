// The colour picker: lazy images, picking by press and drag, the theme link.

#include "zcolortable.h"
#include "ztheme.h"

#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QSignalSpy>
#include <QtTest>

class tst_ZColorTable : public QObject
{
    Q_OBJECT

    static void sendMouse(QGraphicsScene &scene, QEvent::Type type, const QPointF &pos)
    {
        QGraphicsSceneMouseEvent event(type);
        event.setScenePos(pos);
        event.setPos(pos);
        event.setButton(type == QEvent::GraphicsSceneMouseMove ? Qt::NoButton : Qt::LeftButton);
        event.setButtons(type == QEvent::GraphicsSceneMouseRelease ? Qt::NoButton : Qt::LeftButton);
        QCoreApplication::sendEvent(&scene, &event);
    }

private slots:
    // The area depends on the saturation only, the strip on hue and
    // lightness only: each is rebuilt exactly when its inputs change.
    void imagesAreRebuiltOnlyWhenTheirInputsChange()
    {
        ZColorTable table;
        table.resize(220, 120);
        // Colours built so that hue, saturation and lightness are exact.
        table.setColor(QColor(200, 100, 100)); // hue 0
        QCOMPARE(table.color(), QColor(200, 100, 100));
        const qint64 field = table.fieldImage().cacheKey();
        const qint64 strip = table.stripImage().cacheKey();
        QVERIFY(!table.fieldImage().isNull());
        QCOMPARE(table.fieldImage().size(), table.fieldRect().size().toSize());

        table.setColor(QColor(100, 200, 100)); // hue only: 120, same S and L
        QCOMPARE(table.fieldImage().cacheKey(), field);
        QVERIFY(table.stripImage().cacheKey() != strip);

        const qint64 strip2 = table.stripImage().cacheKey();
        table.setColor(QColor(130, 170, 130)); // saturation only
        QVERIFY(table.fieldImage().cacheKey() != field);
        QCOMPARE(table.stripImage().cacheKey(), strip2);
    }

    // A huge picker keeps small images (they are scaled when painted).
    void hugeSizesStayCheap()
    {
        QGraphicsScene scene;
        auto *table = new ZColorTable;
        scene.addItem(table);
        QElapsedTimer timer;
        timer.start();
        table->resize(1e7, 1e6);
        table->setColor(QColor(10, 120, 200));
        QImage out(64, 64, QImage::Format_ARGB32);
        QPainter painter(&out);
        scene.render(&painter, QRectF(0, 0, 64, 64), QRectF(0, 0, 1000, 1000));
        painter.end();
        QVERIFY(timer.elapsed() < 2000);
        QVERIFY(table->fieldImage().width() <= 512 && table->fieldImage().height() <= 512);
        QVERIFY(table->stripImage().height() <= 512);
        QVERIFY(out.pixel(32, 32) != 0);
    }

    void fieldShowsHueAcrossAndLightnessDown()
    {
        ZColorTable table;
        table.resize(380, 120);
        table.setColor(QColor::fromHsl(0, 255, 128));
        const QImage field = table.fieldImage();
        const QColor top = field.pixelColor(field.width() / 2, 0);
        const QColor bottom = field.pixelColor(field.width() / 2, field.height() - 1);
        QVERIFY(top.lightness() > 240);
        QVERIFY(bottom.lightness() < 15);
        const QColor mid = field.pixelColor(field.width() / 3, field.height() / 2);
        QVERIFY(qAbs(mid.hslHue() - 120) <= 3);
    }

    void pickByPressAndDrag()
    {
        QGraphicsScene scene;
        auto *table = new ZColorTable;
        scene.addItem(table);
        table->resize(380, 100);
        table->setColor(QColor::fromHsl(0, 255, 128));
        QSignalSpy changed(table, &ZColorTable::colorChanged);

        const QRectF field = table->fieldRect();
        sendMouse(scene, QEvent::GraphicsSceneMousePress, QPointF(field.left() + field.width() / 3, field.center().y()));
        QCOMPARE(changed.count(), 1);
        QVERIFY(qAbs(table->color().hslHue() - 120) <= 2);
        QVERIFY(qAbs(table->color().lightness() - 128) <= 3);

        sendMouse(scene, QEvent::GraphicsSceneMouseMove, QPointF(field.left() + field.width() * 2 / 3, field.center().y()));
        QCOMPARE(changed.count(), 2);
        QVERIFY(qAbs(table->color().hslHue() - 240) <= 2);
        // Dragging beyond the area clamps to its edge.
        sendMouse(scene, QEvent::GraphicsSceneMouseMove, QPointF(field.left() + field.width() * 2 / 3, -50));
        QCOMPARE(table->color(), QColor(Qt::white));
        sendMouse(scene, QEvent::GraphicsSceneMouseRelease, QPointF(field.left() + field.width() * 2 / 3, -50));
        QCOMPARE(changed.count(), 3);

        // The strip sets the saturation.
        table->setColor(QColor::fromHsl(240, 255, 128));
        const QRectF strip = table->stripRect();
        sendMouse(scene, QEvent::GraphicsSceneMousePress, QPointF(strip.center().x(), strip.bottom() - 0.5));
        sendMouse(scene, QEvent::GraphicsSceneMouseRelease, QPointF(strip.center().x(), strip.bottom() - 0.5));
        QVERIFY(table->color().hslSaturation() <= 3);
    }

    void setColorEmitsOnChangeOnly()
    {
        ZColorTable table;
        QSignalSpy changed(&table, &ZColorTable::colorChanged);
        table.setColor(QColor(10, 120, 200));
        table.setColor(QColor(10, 120, 200));
        table.setColor(QColor());
        QCOMPARE(changed.count(), 1);
        QCOMPARE(table.color(), QColor(10, 120, 200));
    }

    void connectToTheme()
    {
        ZColorTable table;
        table.connectToTheme();
        table.connectToTheme(); // once only
        table.setColor(QColor(0x16, 0xc5, 0x16));
        QCOMPARE(ZTheme::themeColor(), QColor(0x16, 0xc5, 0x16));
        QCOMPARE(ZTheme::themeIndex(), 6);
    }
};

QTEST_MAIN(tst_ZColorTable)
#include "tst_zcolortable.moc"
