// The layer widget: children stacked on each other, each filling it.

#include "zlayerwidget.h"
#include "zxmlui.h"

#include <QGraphicsScene>
#include <QtTest>

class tst_ZLayerWidget : public QObject
{
    Q_OBJECT

private slots:
    void layersFillTheWidget()
    {
        QGraphicsScene scene;
        auto *layers = new ZLayerWidget;
        scene.addItem(layers);
        layers->setMargins(QMargins(2, 3, 4, 5));
        layers->setGeometry(QRectF(10, 10, 100, 60));
        auto *a = new ZWidget;
        auto *b = new ZWidget;
        layers->addItem(a);
        layers->addItem(b);
        QCOMPARE(a->geometry(), QRectF(2, 3, 94, 52));
        QCOMPARE(b->geometry(), QRectF(2, 3, 94, 52));
        layers->resize(50, 40);
        QCOMPARE(a->geometry(), QRectF(2, 3, 44, 32));
        QCOMPARE(b->geometry(), a->geometry());
        // Smaller than the margins: empty, not negative.
        layers->resize(3, 3);
        QCOMPARE(b->size(), QSizeF(0, 0));
    }

    void orderAndStacking()
    {
        QGraphicsScene scene;
        auto *layers = new ZLayerWidget;
        scene.addItem(layers);
        layers->resize(40, 40);
        auto *a = new ZWidget;
        auto *b = new ZWidget;
        auto *c = new ZWidget;
        auto *d = new ZWidget;
        layers->addItem(a);
        layers->addItem(b);
        layers->insertItem(c, 0);
        layers->insertItem(d, 99); // out of range: appended
        layers->insertItem(a, 3);  // already a layer: stays
        QCOMPARE(layers->count(), 4);
        const QList<ZWidget *> expected{c, a, b, d};
        for (int i = 0; i < expected.size(); ++i) {
            QCOMPARE(layers->widget(i), expected.at(i));
            QCOMPARE(layers->indexOf(expected.at(i)), i);
        }
        QCOMPARE(layers->widget(-1), nullptr);
        QCOMPARE(layers->widget(4), nullptr);
        QCOMPARE(layers->indexOf(nullptr), -1);
        // The last layer is on top, the inserted one at the bottom.
        const QList<QGraphicsItem *> hits = scene.items(QPointF(20, 20), Qt::IntersectsItemShape, Qt::DescendingOrder);
        QCOMPARE(hits.size(), 5);
        QCOMPARE(hits.at(0), static_cast<QGraphicsItem *>(d));
        QCOMPARE(hits.at(1), static_cast<QGraphicsItem *>(b));
        QCOMPARE(hits.at(2), static_cast<QGraphicsItem *>(a));
        QCOMPARE(hits.at(3), static_cast<QGraphicsItem *>(c));
    }

    void refusedItems()
    {
        QGraphicsScene scene;
        auto *outer = new ZLayerWidget;
        scene.addItem(outer);
        auto *inner = new ZLayerWidget;
        outer->addItem(inner);
        inner->addItem(nullptr);
        inner->addItem(inner);
        inner->addItem(outer); // an ancestor
        QCOMPARE(inner->count(), 0);
        QCOMPARE(outer->count(), 1);
        QCOMPARE(outer->parentItem(), nullptr);
    }

    void layersLeave()
    {
        QGraphicsScene scene;
        auto *layers = new ZLayerWidget;
        scene.addItem(layers);
        auto *elsewhere = new ZWidget;
        scene.addItem(elsewhere);
        QPointer<ZWidget> a = new ZWidget;
        auto *b = new ZWidget;
        auto *c = new ZWidget;
        auto *d = new ZWidget;
        for (ZWidget *w : {a.data(), b, c, d})
            layers->addItem(w);

        layers->removeItem(a);
        QCOMPARE(layers->count(), 3);
        QCOMPARE(a->parentItem(), nullptr);
        QCOMPARE(a->parent(), nullptr);
        delete a.data();

        delete c; // deleted by someone else
        QCOMPARE(layers->count(), 2);
        d->setParentItem(elsewhere); // moved by someone else
        QCOMPARE(layers->count(), 1);
        QCOMPARE(layers->widget(0), b);

        layers->removeItem(d); // no longer a layer: untouched
        QCOMPARE(d->parentItem(), elsewhere);
    }

    void sizeFollowsLargestLayer()
    {
        QGraphicsScene scene;
        auto *layers = new ZLayerWidget;
        scene.addItem(layers);
        layers->setMargins(QMargins(1, 1, 1, 1));
        auto *a = new ZWidget;
        a->setMinimumSize(10, 30);
        a->setPreferredSize(50, 40);
        auto *b = new ZWidget;
        b->setMinimumSize(20, 5);
        b->setPreferredSize(30, 60);
        layers->addItem(a);
        layers->addItem(b);
        QCOMPARE(layers->effectiveSizeHint(Qt::MinimumSize), QSizeF(22, 32));
        QCOMPARE(layers->effectiveSizeHint(Qt::PreferredSize), QSizeF(52, 62));
        delete b;
        QCOMPARE(layers->effectiveSizeHint(Qt::PreferredSize), QSizeF(52, 42));
        // Explicit hints still win.
        layers->setFixWidth(15);
        QCOMPARE(layers->effectiveSizeHint(Qt::PreferredSize).width(), 15.0);
    }

    void fromDocument()
    {
        QGraphicsScene scene;
        auto *root = new ZWidget;
        scene.addItem(root);
        const QByteArray doc = R"(<uitree>
  <ZLayerWidget objectName="layers" layout="VBox" margins="4,4,4,4">
    <ZWidget objectName="a"/>
    <ZWidget objectName="b" fixSize="10,10"/>
  </ZLayerWidget>
</uitree>)";
        QVERIFY(ZXmlUI::widgetFromMemory(doc, root));
        auto *layers = qobject_cast<ZLayerWidget *>(root->findObject(QStringLiteral("layers")));
        QVERIFY(layers);
        QCOMPARE(layers->count(), 2);
        QCOMPARE(layers->layoutType(), ZWidget::None);
        QCOMPARE(layers->widget(0)->objectName(), QStringLiteral("a"));
        layers->resize(100, 50);
        QCOMPARE(layers->widget(0)->geometry(), QRectF(4, 4, 92, 42));
        // A fixed-size layer keeps its size, placed at the corner.
        QCOMPARE(layers->widget(1)->geometry(), QRectF(4, 4, 10, 10));
    }
};

QTEST_MAIN(tst_ZLayerWidget)
#include "tst_zlayerwidget.moc"
