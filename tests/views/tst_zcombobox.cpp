#include "common/scenetest.h"

#include "zcolorcombobox.h"
#include "zcommoncombobox.h"
#include "zcommonlistwidget.h"
#include "zframeitem.h"
#include "zfontcombobox.h"
#include "zlabel.h"
#include "zpopuplistwindow.h"
#include "zpopupwindow.h"

#include <QtGui/QFontDatabase>
#include <QtTest/QtTest>

using namespace scenetest;

namespace {

// A shown window holding one combo box at a known place.
struct Host
{
    ZPopupWindow window;
    ZComboBoxWidget *box = nullptr;

    explicit Host(ZComboBoxWidget *combo, qreal width = 120, const QString &items = QString())
        : box(combo)
    {
        window.setAttribute(Qt::WA_DeleteOnClose, false);
        window.setGeometry(100, 100, 400, 300);
        window.rootWidget()->setLayoutType(ZWidget::None);
        window.rootWidget()->addItem(box);
        box->setGeometry(QRectF(20, 20, width, 24));
        if (!items.isEmpty())
            box->setItemsText(items);
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            qWarning("the combo box window did not show");
    }
    ZPopupListWindow *list() const { return box->dropListWindow(); }
};

ZLabel *face(ZComboBoxWidget *box)
{
    return qobject_cast<ZLabel *>(static_cast<ZCommonComboBox *>(box)->faceText());
}

} // namespace

class tst_ZComboBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listSize_data()
    {
        QTest::addColumn<int>("rowCount");
        QTest::addColumn<qreal>("boxWidth");
        QTest::addColumn<int>("minWidth");
        QTest::addColumn<int>("maxHeight");
        QTest::addColumn<QSize>("expected");
        QTest::newRow("ten rows capped") << 10 << 120.0 << 0 << 80 << QSize(120, 80);
        QTest::newRow("two rows") << 2 << 120.0 << 0 << 80 << QSize(120, 42);
        QTest::newRow("min width wins") << 3 << 120.0 << 200 << 80 << QSize(200, 62);
        QTest::newRow("box width wins") << 3 << 250.0 << 200 << 80 << QSize(250, 62);
        QTest::newRow("larger cap") << 10 << 120.0 << 0 << 500 << QSize(120, 202);
        QTest::newRow("fractional width") << 1 << 150.7 << 0 << 80 << QSize(150, 22);
    }

    void listSize()
    {
        QFETCH(int, rowCount);
        QFETCH(qreal, boxWidth);
        QFETCH(int, minWidth);
        QFETCH(int, maxHeight);
        QFETCH(QSize, expected);
        QStringList rows;
        for (int i = 0; i < rowCount; ++i)
            rows << QString("r%1").arg(i);
        auto *box = new ZCommonComboBox;
        Host host(box, boxWidth, rows.join('|'));
        box->setDropListMinWidth(minWidth);
        box->setDropListMaxHeight(maxHeight);
        box->showDropList();
        QVERIFY(host.list()->isVisible());
        QCOMPARE(host.list()->size(), expected);
        // Below the box, left edges together; above it when asked.
        const QRect boxOnScreen = box->geometryToScreen();
        QCOMPARE(host.list()->pos(), QPoint(boxOnScreen.left(), boxOnScreen.bottom() + 1));
        box->hideDropList();
        box->setDropListShowUp(true);
        QCOMPARE(host.list()->direction(), ZFollowWindow::TopLeft);
        box->showDropList();
        if (expected.height() < boxOnScreen.top()) // room above the box
            QCOMPARE(host.list()->pos().y() + host.list()->height(), boxOnScreen.top());
    }

    // The drop button toggles the list; a press in another window closes it;
    // an empty box opens nothing.
    void openAndClose()
    {
        auto *box = new ZCommonComboBox;
        Host host(box);
        box->showDropList();
        QVERIFY(!host.list()->isVisible());
        box->setItemsText("a|b");
        auto *button = qobject_cast<ZFrameItem *>(box->dropButton());
        QMetaObject::invokeMethod(button, "clicked");
        QVERIFY(host.list()->isVisible());
        QCOMPARE(button->frameIndex(), int(ZFrameItem::Down));
        QMetaObject::invokeMethod(button, "clicked");
        QVERIFY(!host.list()->isVisible());
        QCOMPARE(button->frameIndex(), int(ZFrameItem::Normal));

        QWidget other;
        other.setGeometry(600, 100, 100, 100);
        other.show();
        QVERIFY(QTest::qWaitForWindowExposed(&other));
        box->showDropList();
        QTest::mouseClick(&other, Qt::LeftButton, {}, QPoint(50, 50));
        QTRY_VERIFY(!host.list()->isVisible());
        // Closed, it no longer watches.
        box->showDropList();
        box->hideDropList();
        QTest::mouseClick(&other, Qt::LeftButton, {}, QPoint(50, 50));
        QVERIFY(!host.list()->isVisible());
    }

    // A press on a new row reports the selection change and the click; on the
    // selected row only the click.
    void choosingEmitsTwice()
    {
        auto *box = new ZCommonComboBox;
        Host host(box, 120, "a|b|c");
        QSignalSpy changed(box, &ZComboBoxWidget::indexChanged);
        ZCommonListWidget *list = box->listWidget();
        for (int expected : {2, 1}) {
            box->showDropList();
            settle();
            click(*list->scene(), list->mapToScene(QPointF(10, 30)));
            QCOMPARE(changed.count(), expected);
            QCOMPARE(changed.last().at(0).toInt(), 1);
            QCOMPARE(box->selectIndex(), 1);
            QCOMPARE(face(box)->text(), QString("b"));
            QTRY_VERIFY(!host.list()->isVisible());
            changed.clear();
        }
    }

    void selectIndex()
    {
        ZCommonComboBox box;
        box.setItemsText("one|two");
        QSignalSpy changed(&box, &ZComboBoxWidget::indexChanged);
        box.setSelectIndex(1);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(face(&box)->text(), QString("two"));
        box.setSelectIndex(5);
        box.setSelectIndex(INT_MIN);
        QCOMPARE(box.selectIndex(), 1);
        box.clearSelection();
        QCOMPARE(box.selectIndex(), -1);
        QCOMPARE(face(&box)->text(), QString());
        QCOMPARE(changed.count(), 1);
    }

    // Losing the window's activation does not close a list the pointer is over.
    void abortOnInactiveUnderMouse()
    {
        auto *box = new ZCommonComboBox;
        Host host(box, 120, "a|b|c");
        // Every reason to hide except a press on the list itself.
        QCOMPARE(uint(host.list()->hideFlags().toInt()), ~uint(ZFollowWindow::ClickAtMySelf));
        auto aborts = [box](ZFollowWindow::HideFlag flag) {
            bool aborted = false;
            QMetaObject::invokeMethod(box, "on_aboutToHide", Q_ARG(ZFollowWindow::HideFlag, flag), Q_ARG(bool *, &aborted));
            return aborted;
        };
        QVERIFY(!aborts(ZFollowWindow::TargetWindowInactive));
        box->showDropList();
        QVERIFY(QTest::qWaitForWindowExposed(host.list()));
        QCursor::setPos(host.list()->geometry().center());
        if (!box->listWidget()->isUnderMouseEx())
            QSKIP("the platform does not move the cursor");
        QVERIFY(aborts(ZFollowWindow::TargetWindowInactive));
        QVERIFY(!aborts(ZFollowWindow::ClickAtOther));
    }

    // The Qt colours once each, color0 and color1 first, white and black not again.
    void colorRows()
    {
        ZColorComboBox box;
        QCOMPARE(box.itemsText(), QString("#ffffff|#000000|#808080|#a0a0a4|#c0c0c0|#ff0000|#00ff00|#0000ff|#00ffff|"
                                          "#ff00ff|#ffff00|#800000|#008000|#000080|#008080|#800080|#808000"));
        QCOMPARE(box.itemColor(2), QColor(Qt::darkGray));
        QVERIFY(box.itemColor(17) == QColor());
        QVERIFY(box.itemColor(-1) == QColor());
    }

    void colorSelection()
    {
        auto *box = new ZColorComboBox;
        Host host(box);
        QSignalSpy changed(box, &ZComboBoxWidget::indexChanged);
        box->setIndexByColor(QColor(Qt::blue));
        box->setIndexByColor(QColor(1, 2, 3));
        box->setIndexByColor(QColor());
        QCOMPARE(changed.count(), 1);
        QCOMPARE(box->currentColor(), QColor(Qt::blue));
        box->setHasBorder(true);
        settle();
        // The face's swatch shows the colour.
        const QImage image = host.window.grab().toImage();
        const QRect swatch = host.window.mapFromScene(box->contentWidget()->sceneBoundingRect()).boundingRect();
        QCOMPARE(image.pixelColor(swatch.center() * image.devicePixelRatio()).rgb(), QColor(Qt::blue).rgb());
        // The drop list's rows are swatches too.
        box->showDropList();
        settle();
        auto *row = static_cast<ZColorComboBoxItem *>(box->listWidget()->visibleItem(2));
        QVERIFY(row && row->inherits("ZColorComboBoxItem"));
        QCOMPARE(qobject_cast<ZWidget *>(row->swatch())->backgroundColor(), QColor(Qt::darkGray));
    }

    // One row per installed family.
    void fontRows()
    {
        ZFontComboBox box;
        QStringList families = QFontDatabase::families();
        families.removeAll(QString());
        QCOMPARE(box.listCount(), families.size());
        if (families.isEmpty())
            QSKIP("no fonts installed");
        QCOMPARE(box.itemText(0), families.first());
        // Wide enough for a family's name written in it.
        QVERIFY(box.dropListMinWidth() >= QFontMetrics(QFont(families.first(), 12)).horizontalAdvance(families.first()));
        box.setSelectIndex(0);
        QCOMPARE(box.currentFamily(), families.first());
    }

    void badValues()
    {
        ZCommonComboBox box;
        box.setDropListMaxHeight(-10);
        box.setDropListMinWidth(-10);
        QCOMPARE(box.dropListMaxHeight(), 0);
        QCOMPARE(box.dropListMinWidth(), 0);
        box.setButtonWidth(-4);
        QCOMPARE(box.buttonWidth(), 20);
        box.removeItem(-1);
        box.removeItem(100);
        box.removeItem(QString());
        QCOMPARE(box.itemText(INT_MAX), QString());
        QVERIFY(!box.itemOther(-3).isValid());
    }
};


QTEST_MAIN(tst_ZComboBox)
#include "tst_zcombobox.moc"
