#include "viewtestutil.h"

#include "zcolorcombobox.h"
#include "zcommoncombobox.h"
#include "zcommonlistmodel.h"
#include "zcommonlistwidget.h"
#include "zframeitem.h"
#include "zfontcombobox.h"
#include "zlabel.h"
#include "zlistitemcreator.h"
#include "zpopuplistwindow.h"
#include "zpopupwindow.h"
#include "zxmlui.h"

#include <QtGui/QFontDatabase>
#include <QtTest/QtTest>

using namespace viewtest;

namespace {

// A real window holding one combo box at a known place.
struct Host
{
    ZPopupWindow window;
    ZComboBoxWidget *box = nullptr;

    explicit Host(ZComboBoxWidget *combo, qreal width = 120)
        : box(combo)
    {
        window.setAttribute(Qt::WA_DeleteOnClose, false);
        window.setGeometry(100, 100, 400, 300);
        window.rootWidget()->setLayoutType(ZWidget::None);
        window.rootWidget()->addItem(box);
        box->setGeometry(QRectF(20, 20, width, 24));
    }
    bool show()
    {
        window.show();
        return QTest::qWaitForWindowExposed(&window);
    }
};

QString rows(int n)
{
    QStringList parts;
    for (int i = 0; i < n; ++i)
        parts << QString("r%1").arg(i);
    return parts.join('|');
}

} // namespace

class tst_ZComboBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void construction();
    void rowsForwarded();
    void openEmptyShowsNothing();
    void listSize_data();
    void listSize();
    void buttonToggles();
    void choosingEmitsTwice();
    void setSelectIndexUpdatesFace();
    void showUpDirection();
    void abortOnInactiveUnderMouse();
    void pressElsewhereCloses();
    void colorRows();
    void colorSelection();
    void fontRows();
    void fromXml();
    void badValues();
    void popupListWindowFromXml();
};

void tst_ZComboBox::construction()
{
    ZCommonComboBox box;
    auto *button = qobject_cast<ZFrameItem *>(box.dropButton());
    QVERIFY(button);
    QCOMPARE(button->frameType(), ZFrameItem::GridFour);
    QCOMPARE(button->fixWidth(), 20.0); // the normal image's width
    QCOMPARE(box.buttonWidth(), 20);
    QVERIFY(button->imagePath().contains("comboboxbutton_normal.png:/image/theme/comboboxbutton_normal.png"));
    QCOMPARE(box.frameImage(), QString(":/image/theme/roundframe_normal.png|:/image/theme/roundframe_hover.png|"
                                       ":/image/theme/roundframe_down.png"));
    QCOMPARE(box.buttonIconPath(), QString(":/image/theme/comboboxbutton_icon.png"));
    QVERIFY(box.dropIcon());
    auto *window = qobject_cast<ZPopupListWindow *>(box.dropList());
    QVERIFY(window);
    QCOMPARE(window->direction(), ZFollowWindow::BottomLeft);
    QCOMPARE(uint(window->hideFlags().toInt()), uint(-3));
    QCOMPARE(window->target(), static_cast<ZWidget *>(&box));
    QCOMPARE(box.dropListView(), static_cast<QObject *>(window->listWidget()));
    QCOMPARE(box.dropListMaxHeight(), 80);
    QCOMPARE(box.dropListMinWidth(), 0);
    QVERIFY(!box.dropListShowUp());
    QCOMPARE(box.contentMargins(), QMargins(4, 0, 2, 0));
    QVERIFY(box.flags() & QGraphicsItem::ItemHasNoContents);
    QVERIFY(box.acceptHoverEvents());
    QCOMPARE(box.selectIndex(), -1);
}

void tst_ZComboBox::rowsForwarded()
{
    ZCommonComboBox box;
    box.addItem("a");
    box.addItem("b", QVariant(2));
    box.addItem("c", "", QVariant("x"));
    QCOMPARE(box.itemsText(), QString("a|b|c"));
    QCOMPARE(box.listCount(), 3);
    QCOMPARE(box.indexOfText("b"), 1);
    QCOMPARE(box.itemOther(1).toInt(), 2);
    QCOMPARE(box.itemOther(2).toString(), QString("x"));
    QCOMPARE(box.itemIcon(2), QString(""));
    QCOMPARE(box.itemText(9), QString());
    box.insertItem(0, "z", "icon.png", QVariant());
    QCOMPARE(box.itemsText(), QString("z|a|b|c"));
    box.removeItem("a");
    box.removeItem(0);
    QCOMPARE(box.itemsText(), QString("b|c"));
    box.setItemsText("p|q");
    QCOMPARE(box.itemsText(), QString("p|q"));
    box.removeAll();
    QCOMPARE(box.listCount(), 0);
    QCOMPARE(box.itemsText(), QString());
}

void tst_ZComboBox::openEmptyShowsNothing()
{
    auto *box = new ZCommonComboBox;
    Host host(box);
    QVERIFY(host.show());
    box->showDropList();
    QVERIFY(!box->dropListWindow()->isVisible());
    box->setItemsText("");
    box->removeAll();
    box->showDropList();
    QVERIFY(!box->dropListWindow()->isVisible());
}

void tst_ZComboBox::listSize_data()
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
    QTest::newRow("equal widths") << 1 << 200.0 << 200 << 80 << QSize(200, 22);
    QTest::newRow("larger cap") << 10 << 120.0 << 0 << 500 << QSize(120, 202);
    QTest::newRow("fractional width") << 1 << 150.7 << 0 << 80 << QSize(150, 22);
}

void tst_ZComboBox::listSize()
{
    QFETCH(int, rowCount);
    QFETCH(qreal, boxWidth);
    QFETCH(int, minWidth);
    QFETCH(int, maxHeight);
    QFETCH(QSize, expected);
    auto *box = new ZCommonComboBox;
    Host host(box, boxWidth);
    QVERIFY(host.show());
    box->setItemsText(rows(rowCount));
    box->setDropListMinWidth(minWidth);
    box->setDropListMaxHeight(maxHeight);
    box->showDropList();
    ZPopupListWindow *window = box->dropListWindow();
    QVERIFY(window->isVisible());
    QCOMPARE(window->size(), expected);
    if (qEnvironmentVariableIsSet("ZKIT_TEST_PNG_DIR")) {
        settle();
        window->grab().save(qEnvironmentVariable("ZKIT_TEST_PNG_DIR") + "/dropList-" + QTest::currentDataTag() + ".png");
        host.window.grab().save(qEnvironmentVariable("ZKIT_TEST_PNG_DIR") + "/combobox.png");
    }
    // The list sits below the box, left edges together.
    const QRect boxOnScreen = box->geometryToScreen();
    QCOMPARE(window->pos().x(), boxOnScreen.left());
    QCOMPARE(window->pos().y(), boxOnScreen.bottom() + 1);
    box->hideDropList();
    QVERIFY(!window->isVisible());
}

void tst_ZComboBox::buttonToggles()
{
    auto *box = new ZCommonComboBox;
    Host host(box);
    QVERIFY(host.show());
    box->setItemsText("a|b");
    auto *button = qobject_cast<ZFrameItem *>(box->dropButton());
    QMetaObject::invokeMethod(button, "clicked");
    QVERIFY(box->dropListWindow()->isVisible());
    QCOMPARE(button->frameIndex(), int(ZFrameItem::Down));
    QMetaObject::invokeMethod(button, "clicked");
    QVERIFY(!box->dropListWindow()->isVisible());
    QCOMPARE(button->frameIndex(), int(ZFrameItem::Normal));
}

void tst_ZComboBox::choosingEmitsTwice()
{
    auto *box = new ZCommonComboBox;
    Host host(box);
    QVERIFY(host.show());
    box->setItemsText("a|b|c");
    box->showDropList();
    ZCommonListWidget *list = box->listWidget();
    settle();
    QSignalSpy changed(box, &ZComboBoxWidget::indexChanged);
    // A press on row 1 inside the drop list's own scene.
    QGraphicsScene *scene = list->scene();
    QVERIFY(scene);
    click(*scene, list->mapToScene(QPointF(10, 30)));
    QCOMPARE(changed.count(), 2);
    QCOMPARE(changed.at(0).at(0).toInt(), 1);
    QCOMPARE(changed.at(1).at(0).toInt(), 1);
    QCOMPARE(box->selectIndex(), 1);
    QCOMPARE(qobject_cast<ZLabel *>(static_cast<ZCommonComboBox *>(box)->faceText())->text(), QString("b"));
    QTRY_VERIFY(!box->dropListWindow()->isVisible());

    // Pressing the selected row again: only the click, so one signal.
    box->showDropList();
    settle();
    changed.clear();
    click(*scene, list->mapToScene(QPointF(10, 30)));
    QCOMPARE(changed.count(), 1);
    QTRY_VERIFY(!box->dropListWindow()->isVisible());
}

void tst_ZComboBox::setSelectIndexUpdatesFace()
{
    ZCommonComboBox box;
    box.setItemsText("one|two");
    QSignalSpy changed(&box, &ZComboBoxWidget::indexChanged);
    box.setSelectIndex(1);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(box.selectIndex(), 1);
    auto *face = qobject_cast<ZLabel *>(box.faceText());
    QCOMPARE(face->text(), QString("two"));
    box.setSelectIndex(5);
    QCOMPARE(box.selectIndex(), 1);
    box.clearSelection();
    QCOMPARE(box.selectIndex(), -1);
    QCOMPARE(face->text(), QString());
    QCOMPARE(changed.count(), 1);
    box.setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QCOMPARE(face->textAlignment(), Qt::AlignRight | Qt::AlignVCenter);
}

void tst_ZComboBox::showUpDirection()
{
    auto *box = new ZCommonComboBox;
    Host host(box);
    QVERIFY(host.show());
    box->setDropListShowUp(true);
    QCOMPARE(box->dropListWindow()->direction(), ZFollowWindow::TopLeft);
    box->setItemsText("a|b");
    box->showDropList();
    QCOMPARE(box->dropListWindow()->pos().y() + box->dropListWindow()->height(), box->geometryToScreen().top());
    box->setDropListShowUp(false);
    QCOMPARE(box->dropListWindow()->direction(), ZFollowWindow::BottomLeft);
}

void tst_ZComboBox::abortOnInactiveUnderMouse()
{
    ZCommonComboBox box;
    bool aborted = false;
    QMetaObject::invokeMethod(&box, "on_aboutToHide", Q_ARG(ZFollowWindow::HideFlag, ZFollowWindow::TargetWindowInactive),
                              Q_ARG(bool *, &aborted));
    QVERIFY(!aborted); // the list is not under the mouse

    auto *shown = new ZCommonComboBox;
    Host host(shown);
    QVERIFY(host.show());
    shown->setItemsText("a|b|c");
    shown->showDropList();
    QVERIFY(QTest::qWaitForWindowExposed(shown->dropListWindow()));
    QCursor::setPos(shown->dropListWindow()->geometry().center());
    if (!shown->listWidget()->isUnderMouseEx())
        QSKIP("the platform does not move the cursor");
    QMetaObject::invokeMethod(shown, "on_aboutToHide",
                              Q_ARG(ZFollowWindow::HideFlag, ZFollowWindow::TargetWindowInactive),
                              Q_ARG(bool *, &aborted));
    QVERIFY(aborted);
    aborted = false;
    QMetaObject::invokeMethod(shown, "on_aboutToHide", Q_ARG(ZFollowWindow::HideFlag, ZFollowWindow::ClickAtOther),
                              Q_ARG(bool *, &aborted));
    QVERIFY(!aborted);
}

// A press in another window of the application closes the list.
void tst_ZComboBox::pressElsewhereCloses()
{
    auto *box = new ZCommonComboBox;
    Host host(box);
    QVERIFY(host.show());
    QWidget other;
    other.setGeometry(600, 100, 100, 100);
    other.show();
    QVERIFY(QTest::qWaitForWindowExposed(&other));
    box->setItemsText("a|b");
    box->showDropList();
    QVERIFY(box->dropListWindow()->isVisible());
    QTest::mouseClick(&other, Qt::LeftButton, {}, QPoint(50, 50));
    QTRY_VERIFY(!box->dropListWindow()->isVisible());
    // Closed, it no longer watches.
    box->showDropList();
    box->hideDropList();
    QTest::mouseClick(&other, Qt::LeftButton, {}, QPoint(50, 50));
    QVERIFY(!box->dropListWindow()->isVisible());
}

void tst_ZComboBox::colorRows()
{
    ZColorComboBox box;
    QCOMPARE(box.listCount(), 17);
    QStringList expected;
    for (int c = Qt::color0; c <= Qt::darkYellow; ++c) {
        const QString name = QColor(Qt::GlobalColor(c)).name();
        if (!expected.contains(name))
            expected << name;
    }
    QCOMPARE(box.itemsText(), expected.join('|'));
    // color0 and color1 come first; black and white repeat them and are dropped.
    QCOMPARE(box.itemText(0), QString("#ffffff"));
    QCOMPARE(box.itemText(1), QString("#000000"));
    QCOMPARE(box.indexOfText("#000000"), 1);
    QCOMPARE(box.indexOfText("#ff0000"), expected.indexOf("#ff0000"));
    QVERIFY(!box.itemsText().contains("#000000|#000000"));
    QVERIFY(box.itemColor(17) == QColor());
    QVERIFY(box.itemColor(-1) == QColor());
    QCOMPARE(box.itemColor(2), QColor(Qt::darkGray));
}

void tst_ZComboBox::colorSelection()
{
    auto *box = new ZColorComboBox;
    Host host(box);
    QVERIFY(host.show());
    QSignalSpy changed(box, &ZComboBoxWidget::indexChanged);
    box->setIndexByColor(QColor(Qt::blue));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(box->currentColor(), QColor(Qt::blue));
    box->setIndexByColor(QColor(1, 2, 3));
    box->setIndexByColor(QColor());
    QCOMPARE(box->currentColor(), QColor(Qt::blue));
    box->setHasBorder(true);
    settle();
    const QImage image = host.window.grab().toImage();
    if (qEnvironmentVariableIsSet("ZKIT_TEST_PNG_DIR"))
        image.save(qEnvironmentVariable("ZKIT_TEST_PNG_DIR") + "/zcolorcombobox.png");
    // The face's swatch shows the colour in the middle of the content area.
    const QRect face = host.window.mapFromScene(box->contentWidget()->sceneBoundingRect()).boundingRect();
    const qreal dpr = image.devicePixelRatio();
    QCOMPARE(image.pixelColor((face.center() * dpr)).rgb(), QColor(Qt::blue).rgb());

    // The drop list's rows are swatches too.
    box->showDropList();
    settle();
    ZCommonListWidget *list = box->listWidget();
    auto *item = list->visibleItem(2);
    QVERIFY(item);
    QVERIFY(item->inherits("ZColorComboBoxItem"));
    auto *swatch = qobject_cast<ZWidget *>(static_cast<ZColorComboBoxItem *>(item)->swatch());
    QCOMPARE(swatch->backgroundColor(), QColor(Qt::darkGray));
    QVERIFY(list->visibleItemCount() <= 4 + 2);
}

void tst_ZComboBox::fontRows()
{
    ZFontComboBox box;
    QStringList families = QFontDatabase::families();
    families.removeAll(QString());
    QCOMPARE(box.listCount(), families.size());
    if (families.isEmpty())
        QSKIP("no fonts installed");
    QCOMPARE(box.itemText(0), families.first());
    int widest = 0;
    for (const QString &family : families)
        widest = qMax(widest, int(std::ceil(QFontMetricsF(QFont(family, 12)).horizontalAdvance(
                                  family + QString::fromUtf8("  ABC-范例")))));
    QCOMPARE(box.dropListMinWidth(), widest);
    QVERIFY(widest > QFontMetricsF(QFont(families.first(), 12)).horizontalAdvance(families.first()));
    box.setSelectIndex(0);
    QCOMPARE(box.currentFamily(), families.first());
}

void tst_ZComboBox::fromXml()
{
    ZWidget root;
    QVERIFY(ZXmlUI::widgetFromMemory(R"(<uitree>
  <ZCommonComboBox objectName="combo" itemsText="a|b|c" index="2" dropListMaxHeight="120" dropListMinWidth="90"
                   dropListShowUp="true" contentMargins="5,1,5,1" itemMargins="2,0,2,0" textAlignment="AlignCenter"
                   buttonWidth="24" dropListView.itemHeight="30"/>
  <ZColorComboBox objectName="colors" hasBorder="true" index="3"/>
  <ZFontComboBox objectName="fonts"/>
</uitree>)", &root));
    auto *combo = qobject_cast<ZCommonComboBox *>(root.findObject("combo"));
    QVERIFY(combo);
    QCOMPARE(combo->itemsText(), QString("a|b|c"));
    QCOMPARE(combo->selectIndex(), 2);
    QCOMPARE(qobject_cast<ZLabel *>(combo->faceText())->text(), QString("c"));
    QCOMPARE(combo->dropListMaxHeight(), 120);
    QCOMPARE(combo->dropListMinWidth(), 90);
    QVERIFY(combo->dropListShowUp());
    QCOMPARE(combo->contentMargins(), QMargins(5, 1, 5, 1));
    QCOMPARE(combo->itemMargins(), QMargins(2, 0, 2, 0));
    QCOMPARE(combo->textAlignment(), Qt::AlignCenter);
    QCOMPARE(combo->buttonWidth(), 24);
    QCOMPARE(combo->listWidget()->itemHeight(), 30);

    auto *colors = qobject_cast<ZColorComboBox *>(root.findObject("colors"));
    QVERIFY(colors);
    QVERIFY(colors->hasBorder());
    QCOMPARE(colors->selectIndex(), 3);
    QVERIFY(qobject_cast<ZFontComboBox *>(root.findObject("fonts")));
}

void tst_ZComboBox::badValues()
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
    box.setSelectIndex(INT_MIN);
    QCOMPARE(box.selectIndex(), -1);
    QCOMPARE(box.itemText(INT_MAX), QString());
    QVERIFY(!box.itemOther(-3).isValid());
}

void tst_ZComboBox::popupListWindowFromXml()
{
    std::unique_ptr<ZWindow> window(ZXmlUI::windowFromMemory(R"(<uitree>
  <ZPopupListWindow borderColor="#ff0000" direction="RightTop" listView.itemsText="x|y|z" listView.itemHeight="25"/>
</uitree>)"));
    auto *popup = qobject_cast<ZPopupListWindow *>(window.get());
    QVERIFY(popup);
    QCOMPARE(popup->borderColor(), QColor(255, 0, 0));
    QCOMPARE(popup->direction(), ZFollowWindow::RightTop);
    QCOMPARE(popup->listWidget()->itemsText(), QString("x|y|z"));
    QCOMPARE(popup->listWidget()->itemsHeight(), 75);
}

QTEST_MAIN(tst_ZComboBox)
#include "tst_zcombobox.moc"
