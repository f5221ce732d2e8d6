// The colour picker: lazy images, picking by press and drag, the theme link.

#include "zcolortable.h"
#include "ztheme.h"

#include "common/scenetest.h"

#include <QSignalSpy>
#include <QtTest>

class tst_ZColorTable : public QObject
{
    Q_OBJECT

private slots:
    // The area depends on the saturation only, the strip on hue and
    // lightness only: each is rebuilt exactly when its inputs change. A huge
    // picker keeps small images (they are scaled when painted).
    void images()
    {
        QGraphicsScene scene;
        auto *table = new ZColorTable;
        scene.addItem(table);
        table->resize(220, 120);
        table->setColor(QColor(200, 100, 100)); // hue 0
        const qint64 field = table->fieldImage().cacheKey(), strip = table->stripImage().cacheKey();
        QCOMPARE(table->fieldImage().size(), table->fieldRect().size().toSize());
        table->setColor(QColor(100, 200, 100)); // hue only: 120, same S and L
        QCOMPARE(table->fieldImage().cacheKey(), field);
        QVERIFY(table->stripImage().cacheKey() != strip);
        const qint64 strip2 = table->stripImage().cacheKey();
        table->setColor(QColor(130, 170, 130)); // saturation only
        QVERIFY(table->fieldImage().cacheKey() != field);
        QCOMPARE(table->stripImage().cacheKey(), strip2);

        QElapsedTimer timer;
        timer.start();
        table->resize(1e7, 1e6);
        QImage out(64, 64, QImage::Format_ARGB32);
        out.fill(Qt::transparent);
        QPainter painter(&out);
        scene.render(&painter, QRectF(0, 0, 64, 64), QRectF(0, 0, 1000, 1000));
        painter.end();
        QVERIFY(timer.elapsed() < 2000);
        QVERIFY(table->fieldImage().width() <= 512 && table->fieldImage().height() <= 512);
        QVERIFY(table->stripImage().height() <= 512);
        QVERIFY(out.pixel(32, 32) != 0);
    }

    // The area shows hue across and lightness down, the strip saturation;
    // dragging beyond the area clamps to its edge.
    void pickByPressAndDrag()
    {
        QGraphicsScene scene;
        auto *table = new ZColorTable;
        scene.addItem(table);
        table->resize(380, 100);
        table->setColor(QColor::fromHsl(0, 255, 128));
        const QImage img = table->fieldImage();
        QVERIFY(img.pixelColor(img.width() / 2, 0).lightness() > 240);
        QVERIFY(img.pixelColor(img.width() / 2, img.height() - 1).lightness() < 15);
        QVERIFY(qAbs(img.pixelColor(img.width() / 3, img.height() / 2).hslHue() - 120) <= 3);
        QSignalSpy changed(table, &ZColorTable::colorChanged);
        table->setColor(QColor::fromHsl(0, 255, 128)); // no change
        table->setColor(QColor());                     // ignored
        QCOMPARE(changed.count(), 0);

        const QRectF field = table->fieldRect();
        const qreal third = field.left() + field.width() / 3, twoThirds = field.left() + field.width() * 2 / 3;
        scenetest::Mouse mouse(scene);
        mouse.press(QPointF(third, field.center().y()));
        QVERIFY(qAbs(table->color().hslHue() - 120) <= 2);
        QVERIFY(qAbs(table->color().lightness() - 128) <= 3);
        mouse.move(QPointF(twoThirds, field.center().y()));
        QVERIFY(qAbs(table->color().hslHue() - 240) <= 2);
        mouse.move(QPointF(twoThirds, -50));
        QCOMPARE(table->color(), QColor(Qt::white));
        mouse.release(QPointF(twoThirds, -50));
        QCOMPARE(changed.count(), 3);

        table->setColor(QColor::fromHsl(240, 255, 128));
        const QPointF stripBottom(table->stripRect().center().x(), table->stripRect().bottom() - 0.5);
        mouse.click(stripBottom);
        QVERIFY(table->color().hslSaturation() <= 3);
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
