// The layer widget: children stacked on each other, each filling it.

#include "zlayerwidget.h"

#include <QGraphicsScene>
#include <QtTest>

class tst_ZLayerWidget : public QObject
{
    Q_OBJECT

    QGraphicsScene m_scene;
    ZLayerWidget *m_layers = nullptr;
    QList<ZWidget *> m_children;

private slots:
    void init()
    {
        m_layers = new ZLayerWidget;
        m_scene.addItem(m_layers);
        m_children = {new ZWidget, new ZWidget, new ZWidget};
        for (ZWidget *w : std::as_const(m_children))
            m_layers->addItem(w);
    }
    void cleanup() { m_scene.clear(); }

    void layersFillTheWidget()
    {
        m_children.at(1)->setFixSize(QSizeF(10, 10));
        m_layers->setMargins(QMargins(2, 3, 4, 5));
        m_layers->setGeometry(QRectF(10, 10, 100, 60));
        QCOMPARE(m_children.at(0)->geometry(), QRectF(2, 3, 94, 52));
        QCOMPARE(m_children.at(2)->geometry(), QRectF(2, 3, 94, 52));
        // A fixed-size layer keeps its size, at the corner.
        QCOMPARE(m_children.at(1)->geometry(), QRectF(2, 3, 10, 10));
        m_layers->resize(50, 40);
        QCOMPARE(m_children.at(2)->geometry(), QRectF(2, 3, 44, 32));
        // No smaller than its largest layer's minimum.
        m_layers->resize(3, 3);
        QCOMPARE(m_layers->size(), QSizeF(16, 18));
        // Nothing but the margins: empty layers.
        m_children.at(1)->clearSizeHint();
        m_layers->resize(3, 3);
        QCOMPARE(m_layers->size(), QSizeF(6, 8));
        QCOMPARE(m_children.at(0)->geometry(), QRectF(2, 3, 0, 0));
        // The layers are the layout.
        m_layers->setLayoutType(ZWidget::VBox);
        QCOMPARE(m_layers->layoutType(), ZWidget::None);
    }

    void orderAndStacking()
    {
        ZWidget *a = m_children.at(0), *b = m_children.at(1), *first = new ZWidget, *last = new ZWidget;
        delete m_children.at(2);
        m_layers->resize(40, 40);
        m_layers->insertItem(first, 0);
        m_layers->insertItem(last, 99); // out of range: appended
        m_layers->insertItem(a, 3);     // already a layer: stays
        const QList<ZWidget *> expected{first, a, b, last};
        QCOMPARE(m_layers->count(), 4);
        for (int i = 0; i < expected.size(); ++i)
            QVERIFY(m_layers->widget(i) == expected.at(i) && m_layers->indexOf(expected.at(i)) == i);
        QVERIFY(!m_layers->widget(-1) && !m_layers->widget(4) && m_layers->indexOf(nullptr) == -1);
        // The last layer is on top, the inserted one at the bottom.
        QCOMPARE(m_scene.items(QPointF(20, 20), Qt::IntersectsItemShape, Qt::DescendingOrder),
                 (QList<QGraphicsItem *>{last, b, a, first, m_layers}));
    }

    void refusedAndLeaving()
    {
        auto *inner = new ZLayerWidget;
        m_layers->addItem(inner);
        inner->addItem(nullptr);
        inner->addItem(inner);
        inner->addItem(m_layers); // an ancestor
        QCOMPARE(inner->count(), 0);
        QCOMPARE(m_layers->parentItem(), nullptr);
        delete inner;
        m_layers->removeItem(m_children.at(0));
        QCOMPARE(m_layers->count(), 2);
        QVERIFY(!m_children.at(0)->parentItem() && !m_children.at(0)->parent());
        delete m_children.at(0);
        delete m_children.at(1); // deleted by someone else
        auto *elsewhere = new ZWidget;
        m_scene.addItem(elsewhere);
        m_children.at(2)->setParentItem(elsewhere); // moved by someone else
        QCOMPARE(m_layers->count(), 0);
        m_layers->removeItem(m_children.at(2)); // no longer a layer: untouched
        QCOMPARE(m_children.at(2)->parentItem(), elsewhere);
    }

    void sizeFollowsLargestLayer()
    {
        m_layers->setMargins(QMargins(1, 1, 1, 1));
        delete m_children.at(2);
        m_children.at(0)->setMinimumSize(10, 30);
        m_children.at(0)->setPreferredSize(50, 40);
        m_children.at(1)->setMinimumSize(20, 5);
        m_children.at(1)->setPreferredSize(30, 60);
        QCoreApplication::processEvents();
        QCOMPARE(m_layers->effectiveSizeHint(Qt::MinimumSize), QSizeF(22, 32));
        QCOMPARE(m_layers->effectiveSizeHint(Qt::PreferredSize), QSizeF(52, 62));
        delete m_children.at(1);
        QCOMPARE(m_layers->effectiveSizeHint(Qt::PreferredSize), QSizeF(52, 42));
        // Explicit hints still win.
        m_layers->setFixWidth(15);
        QCOMPARE(m_layers->effectiveSizeHint(Qt::PreferredSize).width(), 15.0);
    }
};

QTEST_MAIN(tst_ZLayerWidget)
#include "tst_zlayerwidget.moc"
