#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsAnchorLayout>
#include <QtWidgets/QGraphicsLinearLayout>
#include <QtWidgets/QGraphicsScene>
#include <QtWidgets/QProxyStyle>

#include "qgraphicsflowlayout.h"
#include "zlayerwidget.h"
#include "zwidget.h"

using Sizes = QList<QSizeF>;
using Rects = QList<QRectF>;

namespace {

ZWidget *fixedWidget(const QSizeF &size, ZWidget *parent = nullptr)
{
    auto *w = new ZWidget;
    w->setFixSize(size);
    if (parent)
        parent->addItem(w);
    return w;
}

class SpacingStyle : public QProxyStyle
{
public:
    SpacingStyle(int horizontal, int vertical)
        : m_horizontal(horizontal)
        , m_vertical(vertical)
    {
    }
    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override
    {
        if (metric == PM_LayoutHorizontalSpacing)
            return m_horizontal;
        if (metric == PM_LayoutVerticalSpacing)
            return m_vertical;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }

private:
    int m_horizontal;
    int m_vertical;
};

struct ShowCounter : QObject
{
    int shows = 0;
    bool eventFilter(QObject *, QEvent *event) override
    {
        shows += event->type() == QEvent::Show;
        return false;
    }
};

} // namespace

class tst_ZLayouts : public QObject
{
    Q_OBJECT

private slots:
    void installedLayout_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<bool>("childInLayout");
        QTest::newRow("None") << int(ZWidget::None) << "flow" << false;
        QTest::newRow("VBox") << int(ZWidget::VBox) << "vertical" << true;
        QTest::newRow("HBox") << int(ZWidget::HBox) << "horizontal" << true;
        QTest::newRow("Flow") << int(ZWidget::Flow) << "flow" << true;
        QTest::newRow("Anchor") << int(ZWidget::Anchor) << "anchor" << false;
        QTest::newRow("out of range") << 9 << "flow" << true;
    }
    void installedLayout()
    {
        QFETCH(int, type);
        QFETCH(QString, kind);
        QFETCH(bool, childInLayout);
        ZWidget w;
        QCOMPARE(w.layout(), nullptr);
        // Without a layout nothing joins one.
        auto *early = fixedWidget(QSizeF(5, 5), &w);
        QVERIFY(!early->bylayout());
        w.setLayoutType(ZWidget::LayoutType(type));
        QCOMPARE(int(w.layoutType()), type);
        QGraphicsLayout *lay = w.layout();
        QVERIFY(lay);
        if (kind == "flow") {
            QVERIFY(dynamic_cast<QGraphicsFlowLayout *>(lay));
        } else if (kind == "anchor") {
            QVERIFY(dynamic_cast<QGraphicsAnchorLayout *>(lay));
        } else {
            auto *linear = dynamic_cast<QGraphicsLinearLayout *>(lay);
            QVERIFY(linear);
            QCOMPARE(linear->orientation(), kind == "vertical" ? Qt::Vertical : Qt::Horizontal);
        }
        // Members of the replaced layout are not carried over.
        QCOMPARE(lay->count(), 0);
        auto *child = fixedWidget(QSizeF(5, 5), &w);
        QCOMPARE(child->bylayout(), childInLayout);
        QCOMPARE(lay->count(), childInLayout ? 1 : 0);
        QCOMPARE(child->parentItem(), &w);
        // The same type again keeps the layout.
        w.setLayoutType(ZWidget::LayoutType(type));
        QCOMPARE(w.layout(), lay);
    }

    void noneKeepsPositions()
    {
        ZWidget parent;
        parent.setLayoutType(ZWidget::None);
        parent.setMargins(QMargins(8, 8, 8, 8));
        auto *placed = fixedWidget(QSizeF(10, 10));
        placed->setPos(30, 40);
        parent.addItem(placed);
        auto *later = fixedWidget(QSizeF(10, 10), &parent);
        later->setPos(3, 4);
        parent.resize(100, 100);
        parent.activateLayout();
        QCoreApplication::processEvents();
        QCOMPARE(placed->pos(), QPointF(30, 40));
        QCOMPARE(later->pos(), QPointF(3, 4));
        QCOMPARE(parent.layout()->count(), 0);
        // The same children under a flow layout are placed by it.
        parent.setLayoutType(ZWidget::Flow);
        parent.setItemSpacing(0);
        parent.addLayoutItem(placed);
        parent.addLayoutItem(later);
        parent.activateLayout();
        QCOMPARE(placed->pos(), QPointF(8, 8));
        QCOMPARE(later->pos(), QPointF(18, 8));
    }

    void settingsFollowLayoutChanges()
    {
        ZWidget w;
        w.setMargins(QMargins(1, 2, 3, 4));
        w.setSpacing(7);
        w.setItemSpacing(5);
        qreal l, t, r, b;
        w.setLayoutType(ZWidget::VBox);
        auto *linear = static_cast<QGraphicsLinearLayout *>(w.layout());
        linear->getContentsMargins(&l, &t, &r, &b);
        QCOMPARE(QMarginsF(l, t, r, b), QMarginsF(1, 2, 3, 4));
        QCOMPARE(linear->spacing(), 7.0);
        w.setSpacing(9);
        QCOMPARE(linear->spacing(), 9.0);
        w.setSpacing(-3);
        QCOMPARE(linear->spacing(), 0.0);
        QCOMPARE(w.spacing(), -3);
        w.setLayoutType(ZWidget::Flow);
        auto *flow = static_cast<QGraphicsFlowLayout *>(w.layout());
        flow->getContentsMargins(&l, &t, &r, &b);
        QCOMPARE(QMarginsF(l, t, r, b), QMarginsF(1, 2, 3, 4));
        QCOMPARE(flow->spacing(false), 5.0);
        QCOMPARE(flow->spacing(true), 5.0);
        w.setItemSpacing(11);
        QCOMPARE(flow->spacing(false), 11.0);
        QCOMPARE(flow->spacing(true), 11.0);
        w.setMargins(QMargins(6, 7, 8, 9));
        w.setLayoutType(ZWidget::Anchor);
        w.layout()->getContentsMargins(&l, &t, &r, &b);
        QCOMPARE(QMarginsF(l, t, r, b), QMarginsF(6, 7, 8, 9));
        w.setLayoutType(ZWidget::HBox);
        QCOMPARE(static_cast<QGraphicsLinearLayout *>(w.layout())->spacing(), 0.0);
        w.setSpacing(2);
        w.setLayoutType(ZWidget::Flow);
        QCOMPARE(static_cast<QGraphicsFlowLayout *>(w.layout())->spacing(false), 11.0);
    }

    void flowGeometry_data()
    {
        QTest::addColumn<qreal>("width");
        QTest::addColumn<QMargins>("margins");
        QTest::addColumn<int>("spacing");
        QTest::addColumn<Sizes>("sizes");
        QTest::addColumn<Rects>("expected");
        QTest::addColumn<qreal>("height");
        QTest::newRow("one line") << 100.0 << QMargins() << 5 << Sizes{{20, 10}, {30, 20}, {10, 5}}
                                  << Rects{{0, 0, 20, 10}, {25, 0, 30, 20}, {60, 0, 10, 5}} << 20.0;
        QTest::newRow("wraps inside margins") << 60.0 << QMargins(5, 6, 7, 8) << 4
                                              << Sizes{{20, 10}, {20, 15}, {20, 10}}
                                              << Rects{{5, 6, 20, 10}, {29, 6, 20, 15}, {5, 25, 20, 10}} << 43.0;

        // The spacing after the last item of a line does not count.
        QTest::newRow("exact fit") << 50.0 << QMargins() << 10 << Sizes{{20, 10}, {20, 10}, {20, 10}}
                                   << Rects{{0, 0, 20, 10}, {30, 0, 20, 10}, {0, 20, 20, 10}} << 30.0;
        QTest::newRow("wide items stand alone") << 50.0 << QMargins() << 5
                                                << Sizes{{80, 10}, {20, 12}, {90, 8}, {10, 10}}
                                                << Rects{{0, 0, 80, 10}, {0, 15, 20, 12}, {0, 32, 90, 8},
                                                         {0, 45, 10, 10}}
                                                << 55.0;
        QTest::newRow("wide first with margins") << 30.0 << QMargins(2, 2, 2, 2) << 0 << Sizes{{50, 5}, {5, 5}}
                                                 << Rects{{2, 2, 50, 5}, {2, 7, 5, 5}} << 14.0;
        QTest::newRow("empty") << 10.0 << QMargins(1, 2, 3, 4) << 0 << Sizes{} << Rects{} << 6.0;
    }
    void flowGeometry()
    {
        QFETCH(qreal, width);
        QFETCH(QMargins, margins);
        QFETCH(int, spacing);
        QFETCH(Sizes, sizes);
        QFETCH(Rects, expected);
        QFETCH(qreal, height);
        ZWidget parent;
        parent.setLayoutType(ZWidget::Flow);
        parent.setMargins(margins);
        parent.setItemSpacing(spacing);
        QList<ZWidget *> children;
        for (const QSizeF &size : sizes)
            children.append(fixedWidget(size, &parent));
        parent.resize(width, 300);
        parent.activateLayout();
        for (int i = 0; i < children.size(); ++i)
            QCOMPARE(children.at(i)->geometry(), expected.at(i));
        auto *flow = static_cast<QGraphicsFlowLayout *>(parent.layout());
        QCOMPARE(flow->heightForWidth(width), height);
    }

    void flowSizeHints()
    {
        QGraphicsWidget host;
        auto *flow = new QGraphicsFlowLayout;
        host.setLayout(flow);
        flow->setContentsMargins(QMargins(1, 2, 3, 4));
        flow->setSpacing(false, 5);
        flow->setSpacing(true, 5);
        for (const QSizeF size : {QSizeF(20, 10), QSizeF(30, 20)}) {
            auto *item = new QGraphicsWidget;
            item->resize(size);
            flow->addItem(item);
        }
        // Unconstrained: everything on one line, the widest item as the minimum.
        QCOMPARE(flow->effectiveSizeHint(Qt::PreferredSize), QSizeF(59, 26));
        QCOMPARE(flow->effectiveSizeHint(Qt::MinimumSize), QSizeF(34, 26));
        QVERIFY(flow->effectiveSizeHint(Qt::MaximumSize).width() >= QWIDGETSIZE_MAX);
        // With a width: the height needed at that width.
        QCOMPARE(flow->effectiveSizeHint(Qt::PreferredSize, QSizeF(40, -1)), QSizeF(40, 41));
        QCOMPARE(flow->effectiveSizeHint(Qt::MinimumSize, QSizeF(40, -1)).height(), 41.0);
        QCOMPARE(flow->effectiveSizeHint(Qt::PreferredSize, QSizeF(40, 99)), QSizeF(40, 99));
        // The preferred width must really fit on one line despite rounding.
        QGraphicsWidget fractional;
        auto *flow2 = new QGraphicsFlowLayout;
        fractional.setLayout(flow2);
        flow2->setContentsMargins(0, 0, 0, 0);
        flow2->setSpacing(false, 6);
        flow2->setSpacing(true, 6);
        for (int i = 0; i < 2; ++i) {
            auto *item = new QGraphicsWidget;
            item->resize(10.6, 5);
            flow2->addItem(item);
        }
        const qreal oneLine = flow2->effectiveSizeHint(Qt::PreferredSize).width();
        QCOMPARE(flow2->heightForWidth(oneLine), 5.0);
        QCOMPARE(flow2->heightForWidth(oneLine - 1), 16.0);
    }

    // Unset spacings come from the style of the widget the layout is on.
    void flowSmartSpacing()
    {
        SpacingStyle first(13, 17);
        SpacingStyle second(3, 4);
        QGraphicsScene scene;
        auto *host = new QGraphicsWidget;
        scene.addItem(host);
        host->setStyle(&first);
        auto *flow = new QGraphicsFlowLayout;
        host->setLayout(flow);
        flow->setContentsMargins(0, 0, 0, 0);
        QList<QGraphicsWidget *> items;
        for (int i = 0; i < 3; ++i) {
            auto *item = new QGraphicsWidget;
            item->resize(10, 10);
            flow->addItem(item);
            items.append(item);
        }
        QCOMPARE(flow->spacing(false), 13.0);
        QCOMPARE(flow->spacing(true), 17.0);
        host->resize(40, 100);
        flow->activate();
        QCOMPARE(items.at(1)->pos(), QPointF(23, 0));
        QCOMPARE(items.at(2)->pos(), QPointF(0, 27));
        // A new style reaches a layout that has already been laid out.
        host->setStyle(&second);
        QCOMPARE(flow->spacing(false), 3.0);
        QCOMPARE(flow->spacing(true), 4.0);
        flow->setSpacing(false, 2);
        QCOMPARE(flow->spacing(false), 2.0);
        QCOMPARE(flow->spacing(true), 4.0);
        host->setStyle(nullptr);
    }

    void flowItemManagement()
    {
        QGraphicsWidget host;
        auto *flow = new QGraphicsFlowLayout;
        host.setLayout(flow);
        auto *a = new QGraphicsWidget;
        auto *b = new QGraphicsWidget;
        auto *c = new QGraphicsWidget;
        flow->addItem(a);
        flow->addItem(b);
        flow->insertItem(0, c);
        QCOMPARE(flow->count(), 3);
        QCOMPARE(flow->itemAt(0), c);
        QCOMPARE(flow->itemAt(1), a);
        QCOMPARE(flow->itemAt(2), b);
        QCOMPARE(flow->itemAt(3), nullptr);
        QCOMPARE(flow->itemAt(-1), nullptr);
        QCOMPARE(a->parentItem(), &host);
        QCOMPARE(a->parentLayoutItem(), flow);
        // Adding again moves; null and the layout itself are refused.
        flow->addItem(c);
        flow->addItem(nullptr);
        flow->addItem(flow);
        QCOMPARE(flow->count(), 3);
        QCOMPARE(flow->indexOf(c), 2);
        flow->removeAt(-1);
        flow->removeAt(3);
        QCOMPARE(flow->count(), 3);
        flow->removeAt(0);
        QCOMPARE(flow->count(), 2);
        QCOMPARE(a->parentLayoutItem(), nullptr);
        QCOMPARE(a->parentItem(), &host);
        flow->removeItem(a);
        QCOMPARE(flow->count(), 2);
        flow->removeItem(c);
        QCOMPARE(flow->count(), 1);
        QCOMPARE(flow->indexOf(c), -1);
        // A deleted item leaves the layout by itself.
        delete b;
        QCOMPARE(flow->count(), 0);
        // Items survive their layout.
        flow->addItem(a);
        flow->addItem(c);
        host.setLayout(nullptr);
        QCOMPARE(a->parentLayoutItem(), nullptr);
        QCOMPARE(c->parentLayoutItem(), nullptr);
        QCOMPARE(a->parentItem(), &host);
    }

    void flowInLinearLayout()
    {
        ZWidget column;
        column.setLayoutType(ZWidget::VBox);
        auto *flowBox = new ZWidget;
        column.addItem(flowBox);
        flowBox->setLayoutType(ZWidget::Flow);
        flowBox->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        for (int i = 0; i < 3; ++i)
            fixedWidget(QSizeF(25, 10), flowBox);
        auto *below = fixedWidget(QSizeF(10, 10), &column);
        QCOMPARE(flowBox->effectiveSizeHint(Qt::PreferredSize), QSizeF(75, 10));
        QCOMPARE(flowBox->effectiveSizeHint(Qt::PreferredSize, QSizeF(60, -1)).height(), 20.0);
        QCOMPARE(flowBox->effectiveSizeHint(Qt::MinimumSize, QSizeF(60, -1)).height(), 20.0);
        column.resize(60, 100);
        column.activateLayout();
        QCOMPARE(flowBox->geometry(), QRectF(0, 0, 60, 20));
        QCOMPARE(below->pos(), QPointF(0, 20));
        // heightToChild instead of a fixed policy: the height for the width the column gives.
        ZWidget column2;
        column2.setLayoutType(ZWidget::VBox);
        auto *tags = new ZWidget;
        column2.addItem(tags);
        tags->setLayoutType(ZWidget::Flow);
        tags->setHeightToChild(true);
        for (int i = 0; i < 3; ++i)
            fixedWidget(QSizeF(25, 10), tags);
        auto *below2 = fixedWidget(QSizeF(10, 10), &column2);
        // Takes the spare height, which the column would otherwise spread between its rows.
        auto *filler = new ZWidget;
        filler->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
        column2.addItem(filler);
        column2.resize(55, 100);
        column2.activateLayout();
        QCOMPARE(tags->geometry(), QRectF(0, 0, 55, 20));
        QCOMPARE(below2->pos(), QPointF(0, 20));
        column2.resize(40, 100);
        column2.activateLayout();
        QCOMPARE(tags->geometry(), QRectF(0, 0, 40, 30));
        QCOMPARE(below2->pos(), QPointF(0, 30));
    }

    void anchorGeometry_data()
    {
        QTest::addColumn<QString>("anchor");
        QTest::addColumn<QMargins>("margins");
        QTest::addColumn<QRectF>("expected");
        QTest::newRow("10 inside every edge") << "Left:10|Top:10|Right:10|Bottom:10" << QMargins()
                                              << QRectF(10, 10, 180, 80);
        QTest::newRow("different spacings") << "Left:10|Top:20|Right:30|Bottom:40" << QMargins()
                                            << QRectF(10, 20, 160, 40);
        QTest::newRow("inside the margins") << "Left:0|Top:0|Right:0|Bottom:0" << QMargins(5, 6, 7, 8)
                                            << QRectF(5, 6, 188, 86);
        QTest::newRow("blanks and empty items") << "|| Left : 10 |Top:10||Right:10|Bottom:10|"
                                                << QMargins() << QRectF(10, 10, 180, 80);
        QTest::newRow("centre lines") << "HCenter:0|VCenter:0|Right:0|Bottom:0" << QMargins()
                                      << QRectF(100, 50, 100, 50);
    }
    void anchorGeometry()
    {
        QFETCH(QString, anchor);
        QFETCH(QMargins, margins);
        QFETCH(QRectF, expected);
        ZWidget parent;
        parent.setLayoutType(ZWidget::Anchor);
        parent.setMargins(margins);
        auto *child = new ZWidget;
        child->setPreferredSize(50, 30);
        parent.addItem(child);
        child->setAnchor(anchor);
        parent.resize(200, 100);
        parent.activateLayout();
        QCOMPARE(child->geometry(), expected);
    }

    void anchorEdges_data()
    {
        // Per edge of the child (left, top, right, bottom): the parent edge it is
        // anchored to and the spacing, or -1 for no anchor.
        QTest::addColumn<QString>("anchor");
        QTest::addColumn<QList<int>>("points");
        QTest::addColumn<QList<int>>("spacings");
        const int L = Qt::AnchorLeft, H = Qt::AnchorHorizontalCenter, R = Qt::AnchorRight;
        const int T = Qt::AnchorTop, V = Qt::AnchorVerticalCenter, B = Qt::AnchorBottom;
        QTest::newRow("all four") << "Left:1|Top:2|Right:3|Bottom:4" << QList<int>{L, T, R, B}
                                  << QList<int>{1, 2, 3, 4};
        QTest::newRow("centres") << "HCenter:5|VCenter:6|HCenter:7|VCenter:8" << QList<int>{H, V, H, V}
                                 << QList<int>{5, 6, 7, 8};

        // Top:5 lands in the left slot: Top against Left is refused, the empty
        // slots mean Left 0, which only the right edge can take.
        QTest::newRow("Top:5 alone") << "Top:5" << QList<int>{-1, -1, L, -1} << QList<int>{-1, -1, 0, -1};
        QTest::newRow("empty") << "" << QList<int>{L, -1, L, -1} << QList<int>{0, -1, 0, -1};
        QTest::newRow("item without colon keeps its slot") << "Left|Top:5" << QList<int>{L, T, L, -1}
                                                            << QList<int>{0, 5, 0, -1};
        QTest::newRow("unknown name counts as Left") << "Middle:7|Top:3" << QList<int>{L, T, L, -1}
                                                      << QList<int>{7, 3, 0, -1};
        QTest::newRow("bad spacing is 0") << "Left:x|Top:2.5" << QList<int>{L, T, L, -1}
                                          << QList<int>{0, 0, 0, -1};
        QTest::newRow("fifth item ignored") << "Left:1|Top:2|Right:3|Bottom:4|Left:99" << QList<int>{L, T, R, B}
                                            << QList<int>{1, 2, 3, 4};
        QTest::newRow("names are case-sensitive") << "left:4|Top:1" << QList<int>{L, T, L, -1}
                                                  << QList<int>{4, 1, 0, -1};
        QTest::newRow("vertical for horizontal") << "Bottom:1|Right:2|Top:3|Left:4"
                                                 << QList<int>{-1, -1, -1, -1} << QList<int>{-1, -1, -1, -1};
    }
    void anchorEdges()
    {
        QFETCH(QString, anchor);
        QFETCH(QList<int>, points);
        QFETCH(QList<int>, spacings);
        ZWidget parent;
        parent.setLayoutType(ZWidget::Anchor);
        auto *child = new ZWidget;
        parent.addItem(child);
        child->setAnchor(anchor);
        QCOMPARE(child->anchor(), anchor);
        auto *lay = static_cast<QGraphicsAnchorLayout *>(parent.layout());
        const Qt::AnchorPoint ownEdges[] = {Qt::AnchorLeft, Qt::AnchorTop, Qt::AnchorRight, Qt::AnchorBottom};
        const Qt::AnchorPoint allEdges[] = {Qt::AnchorLeft, Qt::AnchorHorizontalCenter, Qt::AnchorRight,
                                            Qt::AnchorTop, Qt::AnchorVerticalCenter, Qt::AnchorBottom};
        for (int slot = 0; slot < 4; ++slot) {
            for (Qt::AnchorPoint edge : allEdges) {
                // Left and top edges hang from the layout, right and bottom lead to it.
                QGraphicsAnchor *a = slot < 2 ? lay->anchor(lay, edge, child, ownEdges[slot])
                                              : lay->anchor(child, ownEdges[slot], lay, edge);
                const bool wanted = points.at(slot) == edge;
                QVERIFY2(bool(a) == wanted, qPrintable(QStringLiteral("slot %1 edge %2").arg(slot).arg(edge)));
                if (a)
                    QCOMPARE(a->spacing(), qreal(spacings.at(slot)));
            }
        }
    }

    void anchorTwice()
    {
        ZWidget parent;
        parent.setLayoutType(ZWidget::Anchor);
        auto *child = new ZWidget;
        child->setPreferredSize(50, 30);
        parent.addItem(child);
        auto *lay = static_cast<QGraphicsAnchorLayout *>(parent.layout());
        child->setAnchor("Left:10|Top:10|Right:10|Bottom:10");
        child->setAnchor("Left:10|Top:10|Right:10|Bottom:10");
        QCOMPARE(lay->count(), 1);
        child->setAnchor("HCenter:0|VCenter:0|Right:20|Bottom:20");
        QCOMPARE(lay->count(), 1);
        QCOMPARE(lay->anchor(lay, Qt::AnchorLeft, child, Qt::AnchorLeft), nullptr);
        QVERIFY(lay->anchor(lay, Qt::AnchorHorizontalCenter, child, Qt::AnchorLeft));
        parent.resize(200, 100);
        parent.activateLayout();
        QCOMPARE(child->geometry(), QRectF(100, 50, 80, 30));
        // Through the property system, as a document sets it.
        QVERIFY(child->setProperty("anchor", QStringLiteral("Left:1|Top:1|Right:1|Bottom:1")));
        QCOMPARE(lay->count(), 1);
        parent.activateLayout();
        QCOMPARE(child->geometry(), QRectF(1, 1, 198, 98));
        // Taken out of the layout, the widget anchors afresh.
        parent.removeLayoutItem(child);
        QCOMPARE(lay->count(), 0);
        child->setAnchor("Left:2|Top:2|Right:2|Bottom:2");
        QCOMPARE(lay->count(), 1);
    }

    void anchorOutsideAnchorLayout()
    {
        ZWidget orphan;
        orphan.setAnchor("Left:10|Top:10|Right:10|Bottom:10");
        QCOMPARE(orphan.anchor(), QStringLiteral("Left:10|Top:10|Right:10|Bottom:10"));
        ZWidget noLayout;
        auto *child = new ZWidget;
        noLayout.addItem(child);
        child->setAnchor("Left:10");
        QCOMPARE(noLayout.layout(), nullptr);
        ZWidget box;
        box.setLayoutType(ZWidget::VBox);
        auto *member = new ZWidget;
        box.addItem(member);
        member->setAnchor("Left:10|Top:10|Right:10|Bottom:10");
        QCOMPARE(box.layout()->count(), 1);
        QVERIFY(member->bylayout());
    }

    void sizeToChild_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<Sizes>("sizes");
        QTest::addColumn<Rects>("placed"); // positions for None, anchors unused
        QTest::addColumn<QSizeF>("ideal");
        const Sizes two = {{20, 10}, {30, 15}};
        // Margins 1,2,3,4 and spacing 5 in every row.
        QTest::newRow("VBox") << int(ZWidget::VBox) << two << Rects{} << QSizeF(1 + 30 + 3, 2 + 10 + 5 + 15 + 4);
        QTest::newRow("HBox") << int(ZWidget::HBox) << two << Rects{} << QSizeF(1 + 20 + 5 + 30 + 3, 2 + 15 + 4);
        QTest::newRow("Flow") << int(ZWidget::Flow) << two << Rects{} << QSizeF(1 + 20 + 5 + 30 + 3, 2 + 15 + 4);
        QTest::newRow("None") << int(ZWidget::None) << two << Rects{{10, 5, 0, 0}, {40, 30, 0, 0}}
                              << QSizeF(40 + 30 + 3, 30 + 15 + 4);
        QTest::newRow("Anchor") << int(ZWidget::Anchor) << Sizes{{20, 10}} << Rects{}
                                << QSizeF(1 + 10 + 20 + 10 + 3, 2 + 10 + 10 + 10 + 4);
    }
    void sizeToChild()
    {
        QFETCH(int, type);
        QFETCH(Sizes, sizes);
        QFETCH(Rects, placed);
        QFETCH(QSizeF, ideal);
        for (const char *which : {"sizeToChild", "widthToChild", "heightToChild"}) {
            ZWidget parent;
            parent.setLayoutType(ZWidget::LayoutType(type));
            parent.setMargins(QMargins(1, 2, 3, 4));
            parent.setSpacing(5);
            parent.setItemSpacing(5);
            for (int i = 0; i < sizes.size(); ++i) {
                ZWidget *child = fixedWidget(sizes.at(i), &parent);
                if (i < placed.size())
                    child->setPos(placed.at(i).topLeft());
                if (type == ZWidget::Anchor)
                    child->setAnchor("Left:10|Top:10|Right:10|Bottom:10");
            }
            QCoreApplication::processEvents();
            QCOMPARE(parent.calcIdealSize(), ideal);
            parent.resize(500, 400);
            const QSizeF before = parent.size();
            QVERIFY(parent.setProperty(which, true));
            const bool width = qstrcmp(which, "heightToChild") != 0;
            const bool height = qstrcmp(which, "widthToChild") != 0;
            const QSizeF expected(width ? ideal.width() : before.width(), height ? ideal.height() : before.height());
            QVERIFY2(parent.size() == expected, which);
            if (width) {
                QCOMPARE(parent.effectiveSizeHint(Qt::MinimumSize).width(), ideal.width());
                QCOMPARE(parent.effectiveSizeHint(Qt::MaximumSize).width(), ideal.width());
            }
            // An explicit fixed size still wins; clearing it gives the children back the say.
            parent.setFixSize(QSizeF(77, 66));
            QCOMPARE(parent.size(), QSizeF(77, 66));
            parent.clearSizeHint();
            QVERIFY(parent.property(which).toBool());
            if (width)
                QCOMPARE(parent.size().width(), ideal.width());
            if (height)
                QCOMPARE(parent.size().height(), ideal.height());
        }
    }

    void sizeToChildInParentLayout()
    {
        ZWidget row;
        row.setLayoutType(ZWidget::HBox);
        auto *toolbar = new ZWidget;
        row.addItem(toolbar);
        toolbar->setLayoutType(ZWidget::HBox);
        toolbar->setSizeToChild(true);
        fixedWidget(QSizeF(20, 10), toolbar);
        fixedWidget(QSizeF(30, 10), toolbar);
        auto *filler = new ZWidget;
        row.addItem(filler);
        row.resize(300, 50);
        row.activateLayout();
        QCOMPARE(toolbar->size(), QSizeF(50, 10));
        QCOMPARE(filler->geometry().left(), 50.0);
        // A new child widens it on the next pass.
        fixedWidget(QSizeF(15, 12), toolbar);
        QCoreApplication::processEvents();
        row.activateLayout();
        QCOMPARE(toolbar->size(), QSizeF(65, 12));
        QCOMPARE(filler->geometry().left(), 65.0);
    }

    void idealFollowsChildren()
    {
        ZWidget parent;
        parent.setLayoutType(ZWidget::None);
        parent.setSizeToChild(true);
        QCOMPARE(parent.size(), QSizeF(0, 0));
        auto *child = fixedWidget(QSizeF(20, 10), &parent);
        QCoreApplication::processEvents();
        QCOMPARE(parent.size(), QSizeF(20, 10));
        child->setPos(30, 5);
        QCoreApplication::processEvents();
        QCOMPARE(parent.size(), QSizeF(50, 15));
        child->setFixSize(QSizeF(40, 40));
        QCoreApplication::processEvents();
        QCOMPARE(parent.size(), QSizeF(70, 45));
        auto *other = fixedWidget(QSizeF(5, 5));
        other->setPos(100, 0);
        parent.addChild(other);
        QCoreApplication::processEvents();
        QCOMPARE(parent.size(), QSizeF(105, 45));
        other->hide();
        QCoreApplication::processEvents();
        QCOMPARE(parent.size(), QSizeF(70, 45));
        delete child;
        QCoreApplication::processEvents();
        QCOMPARE(parent.size(), QSizeF(0, 0));
        // Flow: sizes of the items count, positions do not.
        ZWidget flowBox;
        flowBox.setLayoutType(ZWidget::Flow);
        flowBox.setWidthToChild(true);
        auto *item = fixedWidget(QSizeF(10, 10), &flowBox);
        fixedWidget(QSizeF(10, 10), &flowBox);
        QCoreApplication::processEvents();
        QCOMPARE(flowBox.size().width(), 20.0);
        item->setFixWidth(25);
        QCoreApplication::processEvents();
        QCOMPARE(flowBox.size().width(), 35.0);
        // Flow with heightToChild: the height the width needs.
        ZWidget box;
        box.setLayoutType(ZWidget::Flow);
        box.setHeightToChild(true);
        for (int i = 0; i < 3; ++i)
            fixedWidget(QSizeF(25, 10), &box);
        for (const QSizeF size : {QSizeF(60, 20), QSizeF(80, 10), QSizeF(30, 30)}) {
            box.resize(size.width(), box.size().height());
            QCoreApplication::processEvents();
            QCOMPARE(box.size(), size);
        }
    }

    // A window laid out before the scene polishes its items (a shown window
    // is sized before the event loop runs) keeps its layout: polishing
    // announces items visible all along, which changes no size. Items still
    // get their show event, and genuinely shown items still count again.
    void polishKeepsLayout()
    {
        QGraphicsScene scene;
        auto *column = new ZWidget;
        column->setLayoutType(ZWidget::VBox);
        scene.addItem(column);
        QList<ZWidget *> rows;
        for (int i = 0; i < 3; ++i) {
            auto *row = new ZWidget;
            row->setLayoutType(ZWidget::HBox);
            column->addItem(row);
            fixedWidget(QSizeF(20, 10), row);
            fixedWidget(QSizeF(30, 10), row);
            rows << row;
        }
        ShowCounter shown;
        rows.at(1)->installEventFilter(&shown);
        column->resize(100, 40);
        column->activateLayout();
        QVERIFY(column->layout()->isActivated() && rows.at(0)->layout()->isActivated());
        QCoreApplication::processEvents();
        QCOMPARE(shown.shows, 1);
        QVERIFY(column->layout()->isActivated());
        for (ZWidget *row : std::as_const(rows))
            QVERIFY(row->layout()->isActivated());

        rows.at(1)->hide();
        QCoreApplication::processEvents();
        QCOMPARE(rows.at(2)->geometry().top(), 10.0);
        rows.at(1)->show();
        QCoreApplication::processEvents();
        QCOMPARE(rows.at(2)->geometry().top(), 20.0);
    }

    // Box layouts nested in box layouts are laid out in one pass: a row
    // activated while its column places it does not send the column round
    // again. A row whose hints change after the column measured it still
    // reaches the column, whether or not the column is placed again first.
    void nestedBoxesOnePass_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<QSizeF>("columnSize"); // after the change
        QTest::addColumn<Rects>("rows");
        const Rects unchanged{{0, 0, 50, 10}, {0, 10, 50, 10}, {0, 20, 50, 10}};
        QTest::newRow("none") << QString() << QSizeF(50, 30) << unchanged;
        QTest::newRow("taller item") << "taller" << QSizeF(50, 40)
                                     << Rects{{0, 0, 50, 20}, {0, 20, 50, 10}, {0, 30, 50, 10}};
        QTest::newRow("taller item, column placed before the row")
            << "taller, resize" << QSizeF(50, 40) << Rects{{0, 0, 50, 20}, {0, 20, 50, 10}, {0, 30, 50, 10}};
        QTest::newRow("item added") << "added" << QSizeF(80, 30)
                                    << Rects{{0, 0, 50, 10}, {0, 10, 80, 10}, {0, 20, 50, 10}};
    }
    void nestedBoxesOnePass()
    {
        QFETCH(QString, change);
        QFETCH(QSizeF, columnSize);
        QFETCH(Rects, rows);
        QGraphicsScene scene;
        auto *column = new ZWidget;
        column->setLayoutType(ZWidget::VBox);
        scene.addItem(column);
        QList<ZWidget *> row;
        QList<ZWidget *> first;
        for (int i = 0; i < 3; ++i) {
            row << new ZWidget;
            row.last()->setLayoutType(ZWidget::HBox);
            column->addItem(row.last());
            first << fixedWidget(QSizeF(20, 10), row.last());
            fixedWidget(QSizeF(30, 10), row.last());
        }
        column->resize(50, 30);
        QVERIFY(column->layout()->isActivated());
        for (ZWidget *r : std::as_const(row))
            QVERIFY(r->layout()->isActivated());
        QCOMPARE(row.at(2)->geometry(), QRectF(0, 20, 50, 10));

        if (change.contains(QLatin1String("taller")))
            first.at(0)->setFixHeight(20);
        if (change.contains(QLatin1String("resize")))
            column->resize(50, 40);
        if (change == QLatin1String("added"))
            fixedWidget(QSizeF(30, 10), row.at(1));
        // A change climbs one level per turn of the event loop.
        QTRY_COMPARE(column->size(), columnSize);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(row.at(i)->geometry(), rows.at(i));
        QVERIFY(column->layout()->isActivated());
    }

    // A layer widget sizes itself after its layers without a layout between
    // them: a layer's new hints and the widget's margins reach its own, and
    // new margins reach the layers.
    void layerHintsFollowLayers()
    {
        QGraphicsScene scene;
        auto *layers = new ZLayerWidget;
        scene.addItem(layers);
        auto *layer = fixedWidget(QSizeF(20, 10));
        layers->addItem(layer);
        QCoreApplication::processEvents();
        QCOMPARE(layers->effectiveSizeHint(Qt::MinimumSize), QSizeF(20, 10));
        layer->setFixSize(QSizeF(40, 30));
        QCOMPARE(layers->effectiveSizeHint(Qt::MinimumSize), QSizeF(40, 30));
        layers->setMargins(QMargins(1, 2, 3, 4));
        QCOMPARE(layers->effectiveSizeHint(Qt::PreferredSize), QSizeF(44, 36));

        // Its size staying put, new margins still move the layers inside them.
        layers->setFixSize(QSizeF(100, 80));
        auto *filling = new ZWidget;
        layers->addItem(filling);
        QCOMPARE(filling->geometry(), QRectF(1, 2, 96, 74));
        layers->setMargins(QMargins(5, 6, 7, 8));
        QCOMPARE(filling->geometry(), QRectF(5, 6, 88, 66));
    }
};

QTEST_MAIN(tst_ZLayouts)
#include "tst_zlayouts.moc"
