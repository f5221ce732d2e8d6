// The tool bar: placing its children side by side or one below the other,
// and its use from documents.

#include "zcreator.h"
#include "zpopupwindow.h"
#include "zspacer.h"
#include "ztoolbar.h"
#include "zxmlui.h"

#include <QGraphicsScene>
#include <QtTest>

namespace {

ZSpacer *box(qreal w, qreal h)
{
    auto *s = new ZSpacer;
    s->setFixSize(QSizeF(w, h));
    return s;
}

} // namespace

class tst_ZToolBar : public QObject
{
    Q_OBJECT

private slots:
    void defaults()
    {
        ZToolBar bar;
        QCOMPARE(bar.layoutType(), ZWidget::HBox);
        QCOMPARE(bar.orientation(), Qt::Horizontal);
        QCOMPARE(bar.spacing(), 4);
        ZWidgetCreatorBase *creator = ZWidgetCreatorBase::find("ZToolBar");
        QVERIFY(creator);
        std::unique_ptr<ZWidget> made(creator->create(nullptr));
        QVERIFY(qobject_cast<ZToolBar *>(made.get()));
    }

    void layout_data()
    {
        QTest::addColumn<Qt::Orientation>("orientation");
        QTest::addColumn<QList<QPointF>>("positions");
        // Children 20x10, 30x20, 10x10, spacing 4, centred across the bar.
        QTest::newRow("horizontal") << Qt::Horizontal
                                    << QList<QPointF>{QPointF(0, 5), QPointF(24, 0), QPointF(58, 5)};
        QTest::newRow("vertical") << Qt::Vertical
                                  << QList<QPointF>{QPointF(5, 0), QPointF(0, 14), QPointF(10, 38)};
    }
    void layout()
    {
        QFETCH(Qt::Orientation, orientation);
        QFETCH(QList<QPointF>, positions);
        QGraphicsScene scene;
        auto *bar = new ZToolBar;
        scene.addItem(bar);
        const QList<ZSpacer *> items{box(20, 10), box(30, 20), box(10, 10)};
        for (ZSpacer *item : items)
            bar->addItem(item);
        bar->setOrientation(orientation);
        QCOMPARE(bar->orientation(), orientation);
        bar->setSizeToChild(true);
        bar->activateLayout();
        for (int i = 0; i < items.size(); ++i)
            QCOMPARE(items.at(i)->pos(), positions.at(i));
        QCOMPARE(bar->size(), orientation == Qt::Horizontal ? QSizeF(68, 20) : QSizeF(30, 48));
    }

    void insertAndAlignment()
    {
        QGraphicsScene scene;
        auto *bar = new ZToolBar;
        scene.addItem(bar);
        bar->setSpacing(2);
        ZSpacer *a = box(10, 30);
        ZSpacer *b = box(10, 10);
        ZSpacer *first = box(6, 10);
        b->setAlignment(Qt::AlignTop);
        bar->addItem(a);
        bar->addItem(b);
        bar->insertItem(first, 0);
        QCOMPARE(b->alignment(), Qt::Alignment(Qt::AlignTop)); // its own alignment stays
        QCOMPARE(a->alignment(), Qt::Alignment(Qt::AlignCenter));
        bar->setSizeToChild(true);
        bar->activateLayout();
        QCOMPARE(first->pos(), QPointF(0, 10));
        QCOMPARE(a->pos(), QPointF(8, 0));
        QCOMPARE(b->pos(), QPointF(20, 0));
        bar->addItem(nullptr); // ignored
    }

    void fromDocument()
    {
        const QByteArray doc = R"(<uitree>
  <ZPopupWindow windowStyle="Dialog" maskMargins="16,16,16,16" closeOnF4="false" fixSize="300,120">
    <ZToolBar objectName="bar" spacing="6">
      <ZSpacer objectName="one" fixSize="16,16"/>
      <ZSpacer objectName="two" fixSize="16,24"/>
    </ZToolBar>
  </ZPopupWindow>
</uitree>)";
        std::unique_ptr<ZWindow> window(ZXmlUI::windowFromMemory(doc));
        QVERIFY(window);
        auto *popup = qobject_cast<ZPopupWindow *>(window.get());
        QVERIFY(popup);
        QCOMPARE(popup->windowStyle(), ZPopupWindow::WindowStyles(ZPopupWindow::Dialog));
        QCOMPARE(popup->windowType(), Qt::Tool);
        QVERIFY(popup->quitAppOnClose());
        QVERIFY(!popup->closeOnF4());
        QCOMPARE(popup->fixSize(), QSize(300, 120));
        auto *bar = qobject_cast<ZToolBar *>(popup->rootWidget()->findObject(QStringLiteral("bar")));
        QVERIFY(bar);
        QCOMPARE(bar->spacing(), 6);
        auto *one = qobject_cast<ZWidget *>(bar->findObject(QStringLiteral("one")));
        auto *two = qobject_cast<ZWidget *>(bar->findObject(QStringLiteral("two")));
        QVERIFY(one && two);
        popup->setAttribute(Qt::WA_DeleteOnClose, false);
        popup->show();
        QVERIFY(QTest::qWaitForWindowExposed(popup));
        bar->activateLayout();
        QCOMPARE(two->pos().x() - one->pos().x(), 16.0 + 6.0);
        QCOMPARE(one->pos().y(), 4.0); // centred on the taller one
    }
};

QTEST_MAIN(tst_ZToolBar)
#include "tst_ztoolbar.moc"
