// ZWidget: attaching children, flags, backgrounds, rotation, the drag and
// theme policies along the parent chain, finding objects, size hints and
// mapping to the view.

#include "zspacer.h"
#include "ztheme.h"
#include "zwidget.h"

#include "common/scenetest.h"

#include <QtGui/QVector3D>
#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsColorizeEffect>
#include <QtWidgets/QGraphicsLinearLayout>
#include <QtWidgets/QGraphicsRectItem>
#include <QtWidgets/QGraphicsSceneContextMenuEvent>
#include <QtWidgets/QGraphicsView>

#include <functional>

namespace {

// Records the hooks the base class calls.
class ProbeWidget : public ZWidget
{
public:
    using ZWidget::ZWidget;
    QList<bool> visibility;
    int themeChanges = 0;
    bool hadObjectParentOnReparent = false;

protected:
    void visibleEvent(bool visible) override { visibility.append(visible); }
    void doThemeChange() override
    {
        ++themeChanges;
        ZWidget::doThemeChange();
    }
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override
    {
        if (change == ItemParentChange && value.value<QGraphicsItem *>())
            hadObjectParentOnReparent = parent() != nullptr;
        return ZWidget::itemChange(change, value);
    }
};

// Drags the window from its right half only, like a text control would.
class HalfDragWidget : public ZWidget
{
public:
    using ZWidget::ZWidget;
    DragPolicy hitTest(const QPointF &pos) const override
    {
        return pos.x() >= size().width() / 2 ? WindowMove : Nothing;
    }
};

class MenuCatcher : public QGraphicsRectItem
{
public:
    using QGraphicsRectItem::QGraphicsRectItem;
    int menus = 0;

protected:
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override
    {
        ++menus;
        event->accept();
    }
};

bool inLayoutOf(const ZWidget *parent, const ZWidget *child)
{
    const QGraphicsLayout *lay = parent->layout();
    for (int i = 0; lay && i < lay->count(); ++i) {
        if (lay->itemAt(i) == child)
            return true;
    }
    return false;
}

// Counts the events of the kinds that announce a new parent, font or palette.
struct ChangeCounter : QObject
{
    int changes = 0;
    bool eventFilter(QObject *, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::ParentAboutToChange:
        case QEvent::ParentChange:
        case QEvent::FontChange:
        case QEvent::PaletteChange:
            ++changes;
            break;
        default:
            break;
        }
        return false;
    }
};

// A widget of \a size alone in a scene, and what it paints at its middle.
struct Painted
{
    QGraphicsScene scene;
    ZWidget *w = new ZWidget;
    explicit Painted(const QSizeF &size = QSizeF(20, 20))
    {
        w->resize(size);
        scene.addItem(w);
    }
    QColor middle() { return scenetest::render(scene, w->size().toSize()).pixelColor(10, 10); }
};

} // namespace

class tst_ZWidget : public QObject
{
    Q_OBJECT

private slots:
    void propertiesFromText_data()
    {
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("expected");
        QTest::newRow("layout") << QByteArray("layout") << "HBox" << int(ZWidget::HBox);
        QTest::newRow("dragPolicy") << QByteArray("dragPolicy") << "WindowMove" << int(ZWidget::WindowMove);
        QTest::newRow("themePolicy") << QByteArray("themePolicy") << "NoTheme" << int(ZWidget::NoTheme);
        QTest::newRow("widgetFlags") << QByteArray("widgetFlags") << "ClipsToShape|HasNoContents"
                                     << int(ZWidget::ClipsToShape | ZWidget::HasNoContents);
        QTest::newRow("alignment") << QByteArray("alignment") << "AlignLeft|AlignVCenter"
                                   << int(Qt::AlignLeft | Qt::AlignVCenter);
        QTest::newRow("backgroundStyle") << QByteArray("backgroundStyle") << "Dense4Pattern"
                                         << int(Qt::Dense4Pattern);
        QTest::newRow("contextMenuPolicy") << QByteArray("contextMenuPolicy") << "CustomContextMenu"
                                           << int(Qt::CustomContextMenu);
    }
    // Documents set every attribute as text; the keys must reach the setters.
    void propertiesFromText()
    {
        QFETCH(QByteArray, property);
        QFETCH(QString, text);
        QFETCH(int, expected);
        ZWidget w;
        if (property == "backgroundStyle")
            w.setBackgroundColor(Qt::red);
        QVERIFY(w.setProperty(property.constData(), text));
        QCOMPARE(w.property(property.constData()).toInt(), expected);
        // A word the type does not know leaves the property as it was.
        w.setProperty(property.constData(), QStringLiteral("NoSuchKey"));
        QCOMPARE(w.property(property.constData()).toInt(), expected);
    }

    void attachOperations_data()
    {
        QTest::addColumn<QString>("attach");
        QTest::addColumn<bool>("objectParent");
        QTest::addColumn<bool>("graphicsParent");
        QTest::addColumn<bool>("inLayout");
        QTest::newRow("addItem") << "addItem" << true << true << true;
        QTest::newRow("insertItem") << "insertItem" << true << true << true;
        QTest::newRow("addChild") << "addChild" << true << true << false;
        QTest::newRow("addGraphicsItem") << "addGraphicsItem" << false << true << false;
        QTest::newRow("addObjectItem") << "addObjectItem" << true << false << false;

        // The layout itself makes its items graphics children of its widget.
        QTest::newRow("addLayoutItem") << "addLayoutItem" << false << true << true;
        QTest::newRow("insertLayoutItem") << "insertLayoutItem" << false << true << true;
    }
    void attachOperations()
    {
        QFETCH(QString, attach);
        QFETCH(bool, objectParent);
        QFETCH(bool, graphicsParent);
        QFETCH(bool, inLayout);
        ZWidget parent;
        parent.setLayoutType(ZWidget::VBox);
        QPointer<ZWidget> child = new ZWidget;
        const QHash<QString, std::function<void()>> attachers{
            {"addItem", [&] { parent.addItem(child); }},
            {"insertItem", [&] { parent.insertItem(child, 0); }},
            {"addChild", [&] { parent.addChild(child); }},
            {"addGraphicsItem", [&] { parent.addGraphicsItem(child); }},
            {"addObjectItem", [&] { parent.addObjectItem(child); }},
            {"addLayoutItem", [&] { parent.addLayoutItem(child); }},
            {"insertLayoutItem", [&] { parent.insertLayoutItem(child, 0); }},
        };
        attachers.value(attach)();
        QCOMPARE(child->parent() == &parent, objectParent);
        QCOMPARE(child->parentItem() == &parent, graphicsParent);
        QCOMPARE(inLayoutOf(&parent, child), inLayout);
        QCOMPARE(child->bylayout(), inLayout);
        // Each attach has its detach.
        const QString detach = QString(attach).replace(QLatin1String("insert"), QLatin1String("add"));
        if (detach == QLatin1String("addItem"))
            parent.removeItem(child);
        else if (detach == QLatin1String("addChild"))
            parent.removeChild(child);
        else if (detach == QLatin1String("addGraphicsItem"))
            parent.removeGraphicsItem(child);
        else if (detach == QLatin1String("addObjectItem"))
            parent.removeObjectItem(child);
        else
            parent.removeLayoutItem(child);
        QVERIFY(child);
        QCOMPARE(parent.layout()->count(), 0);
        // removeLayoutItem only leaves the layout: the graphics parent the layout set stays.
        QCOMPARE(child->parentItem() == &parent, detach == QLatin1String("addLayoutItem"));
        QVERIFY(child->parent() != &parent);
        delete child;
    }

    void attachOrderAndIndex()
    {
        ZWidget parent;
        auto *viaAddItem = new ProbeWidget;
        parent.addItem(viaAddItem);
        QVERIFY2(viaAddItem->hadObjectParentOnReparent, "addItem sets the object parent first");
        auto *viaAddChild = new ProbeWidget;
        parent.addChild(viaAddChild);
        QVERIFY2(!viaAddChild->hadObjectParentOnReparent, "addChild sets the graphics parent first");
        ZWidget row;
        row.setLayoutType(ZWidget::HBox);
        auto *a = new ZWidget, *b = new ZWidget, *c = new ZWidget, *d = new ZWidget;
        row.addItem(a);
        row.addItem(b);
        row.insertItem(c, 1);
        row.insertItem(d, 42);
        const QGraphicsLayout *lay = row.layout();
        QCOMPARE(lay->count(), 4);
        QVERIFY(lay->itemAt(0) == a && lay->itemAt(1) == c && lay->itemAt(2) == b && lay->itemAt(3) == d);
        // Adding again moves rather than duplicates.
        row.addItem(a);
        QCOMPARE(lay->count(), 4);
        QCOMPARE(lay->itemAt(3), a);
    }

    void refusesBadParents()
    {
        QGraphicsScene scene;
        auto *root = new ZWidget;
        scene.addItem(root);
        root->setLayoutType(ZWidget::VBox);
        auto *child = new ZWidget;
        root->addItem(child);
        auto *grandChild = new ZWidget;
        child->addItem(grandChild);
        root->addItem(root);
        grandChild->addItem(root);
        grandChild->addChild(child);
        grandChild->addObjectItem(root);
        child->addLayoutItem(root);
        ZWidget::addGraphicsItem(grandChild, child);
        root->addItem(nullptr);
        root->addLayoutItem(nullptr);
        root->removeItem(nullptr);
        QVERIFY(!root->parentItem() && !root->parent());
        QCOMPARE(child->parentItem(), root);
        QCOMPARE(grandChild->parentItem(), child);
        QCOMPARE(root->layout()->count(), 1);
        // A null receiver takes the item out to the top of the scene.
        ZWidget::addGraphicsItem(nullptr, grandChild);
        QCOMPARE(grandChild->parentItem(), nullptr);
        QCOMPARE(grandChild->scene(), &scene);
    }

    void bylayoutAndAlignment()
    {
        ZWidget parent;
        parent.setLayoutType(ZWidget::HBox);
        auto *child = new ZWidget;
        child->setAlignment(Qt::AlignBottom);
        parent.addItem(child);
        auto *lay = static_cast<QGraphicsLinearLayout *>(parent.layout());
        QCOMPARE(lay->alignment(child), Qt::AlignBottom);
        child->setAlignment(Qt::AlignTop | Qt::AlignRight);
        QCOMPARE(lay->alignment(child), Qt::AlignTop | Qt::AlignRight);
        child->setBylayout(false);
        QVERIFY(!child->bylayout());
        QCOMPARE(lay->count(), 0);
        QCOMPARE(child->parentItem(), &parent);
        child->setPos(7, 9);
        parent.resize(100, 50);
        parent.activateLayout();
        QCOMPARE(child->pos(), QPointF(7, 9));
        child->setBylayout(true);
        QCOMPARE(lay->count(), 1);
        QCOMPARE(child->parentLayoutType(), ZWidget::HBox);
        // Without a ZWidget parent there is no layout to join.
        ZWidget orphan;
        orphan.setBylayout(true);
        QVERIFY(!orphan.bylayout());
        QCOMPARE(orphan.parentLayoutType(), ZWidget::None);
    }

    void widgetFlags_data()
    {
        QTest::addColumn<int>("flags");
        QTest::addColumn<bool>("movableBefore");
        QTest::newRow("Default") << int(ZWidget::Default) << true;
        QTest::newRow("Moveable on unmovable") << int(ZWidget::Moveable) << false;
        QTest::newRow("Moveable on movable") << int(ZWidget::Moveable) << true;
        QTest::newRow("two") << int(ZWidget::HasNoContents | ZWidget::ClipsToShape) << true;
        QTest::newRow("All on unmovable") << int(ZWidget::All) << false;
        QTest::newRow("All on movable") << int(ZWidget::All) << true;
    }
    // The five item flags follow the widget flags; Moveable is never touched.
    void widgetFlags()
    {
        QFETCH(int, flags);
        QFETCH(bool, movableBefore);
        const QGraphicsItem::GraphicsItemFlag five[] = {
            QGraphicsItem::ItemHasNoContents, QGraphicsItem::ItemClipsChildrenToShape,
            QGraphicsItem::ItemClipsToShape, QGraphicsItem::ItemIgnoresParentOpacity,
            QGraphicsItem::ItemSendsScenePositionChanges,
        };
        ZWidget w;
        // Start from the opposite of the request so that every bit has to move.
        for (auto bit : five)
            w.setFlag(bit, !(flags & bit));
        w.setFlag(QGraphicsItem::ItemIsMovable, movableBefore);
        w.setFlag(QGraphicsItem::ItemIsFocusable, true);
        w.setWidgetFlags(ZWidget::WidgetFlags(flags));
        for (auto bit : five)
            QCOMPARE(bool(w.flags() & bit), bool(flags & bit));
        QCOMPARE(bool(w.flags() & QGraphicsItem::ItemIsMovable), movableBefore);
        QVERIFY(w.flags() & QGraphicsItem::ItemIsFocusable);
        QCOMPARE(int(w.widgetFlags()), flags & ~int(ZWidget::Moveable));
    }

    void scenePositionSignal()
    {
        QGraphicsScene scene;
        auto *parent = new ZWidget;
        scene.addItem(parent);
        auto *child = new ZWidget(parent);
        child->setPos(5, 5);
        QSignalSpy spy(child, &ZWidget::scenePosition);
        parent->setPos(10, 0);
        QCOMPARE(spy.count(), 0);
        child->setWidgetFlags(ZWidget::ScenePosition);
        parent->setPos(20, 30);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).toPointF(), QPointF(25, 35));
    }

    void backgroundGradientThenColour()
    {
        Painted p(QSizeF(40, 40));
        QLinearGradient gradient(0, 0, 0, 1);
        gradient.setCoordinateMode(QGradient::ObjectBoundingMode);
        gradient.setColorAt(0, Qt::red);
        gradient.setColorAt(1, Qt::blue);
        // As a document sets it: a QtGradient value through the property system.
        QVERIFY(p.w->setProperty("backgroundGradient", QVariant::fromValue(QtGradient(gradient))));
        QCOMPARE(p.w->backgroundGradient(), QtGradient(gradient));
        QVERIFY(!QtGradient().isValid());
        QImage image = scenetest::render(p.scene, QSize(40, 40));
        const QColor top = image.pixelColor(20, 1), bottom = image.pixelColor(20, 38);
        QVERIFY2(top.red() > 200 && top.blue() < 50, qPrintable(top.name()));
        QVERIFY2(bottom.blue() > 200 && bottom.red() < 50, qPrintable(bottom.name()));
        p.w->setBackgroundColor(QColor(0, 255, 0));
        QVERIFY(!p.w->backgroundGradient().isValid());
        image = scenetest::render(p.scene, QSize(50, 50));
        QCOMPARE(image.pixelColor(20, 1), QColor(0, 255, 0));
        QCOMPARE(image.pixelColor(20, 38), QColor(0, 255, 0));
        QCOMPARE(image.pixelColor(45, 45), QColor(Qt::white)); // nothing outside the widget
    }

    void backgroundUnsetAndInvalid()
    {
        Painted p;
        const QBrush untouched = p.w->palette().brush(QPalette::Window);
        p.w->setBackgroundBrush(QBrush(Qt::red, Qt::NoBrush));
        QCOMPARE(p.w->palette().brush(QPalette::Window), untouched);
        QVERIFY(!p.w->autoFillBackground());
        // A NoBrush style keeps the colour painted.
        p.w->setBackgroundColor(Qt::red);
        p.w->setBackgroundStyle(Qt::NoBrush);
        QCOMPARE(p.w->palette().brush(QPalette::Window).style(), Qt::SolidPattern);
        QCOMPARE(p.middle(), QColor(Qt::red));
        p.w->unsetBackgroundBrush();
        QCOMPARE(p.w->backgroundStyle(), Qt::NoBrush);
        QCOMPARE(p.middle(), QColor(Qt::white));
        p.w->setBackgroundColor(Qt::red);
        p.w->setBackgroundColor(QColor());
        QCOMPARE(p.middle(), QColor(Qt::white));
        p.w->setBackgroundColor(Qt::red);
        p.w->setBackgroundGradient(QtGradient());
        QCOMPARE(p.middle(), QColor(Qt::white));
        // Through the property system too (the reset of backgroundBrush).
        p.w->setBackgroundColor(Qt::red);
        QVERIFY(p.w->metaObject()->property(p.w->metaObject()->indexOfProperty("backgroundBrush")).reset(p.w));
        QCOMPARE(p.middle(), QColor(Qt::white));
    }

    void backgroundStyle()
    {
        ZWidget w;
        w.setBackgroundColor(Qt::blue);
        w.setBackgroundStyle(Qt::Dense4Pattern);
        QCOMPARE(w.palette().brush(QPalette::Window), QBrush(Qt::blue, Qt::Dense4Pattern));
        // Gradient and texture styles cannot come from a style alone.
        w.setBackgroundStyle(Qt::LinearGradientPattern);
        w.setBackgroundStyle(Qt::TexturePattern);
        QCOMPARE(w.backgroundStyle(), Qt::Dense4Pattern);
        w.setBackgroundBrush(QBrush(Qt::green, Qt::CrossPattern));
        QCOMPARE(w.backgroundColor(), QColor(Qt::green));
        QCOMPARE(w.palette().brush(QPalette::Window).style(), Qt::CrossPattern);
    }

    void grayToDisable()
    {
        Painted p;
        auto *w = new ZWidget(p.w);
        w->resize(20, 20);
        w->setBackgroundColor(Qt::red);
        w->setGrayToDisable(true);
        auto *effect = qobject_cast<QGraphicsColorizeEffect *>(w->graphicsEffect());
        QVERIFY(effect && !effect->isEnabled());
        QCOMPARE(p.middle(), QColor(Qt::red));
        w->setEnabled(false);
        QVERIFY(effect->isEnabled());
        const QColor gray = p.middle();
        QVERIFY2(qAbs(gray.red() - gray.green()) < 8 && qAbs(gray.green() - gray.blue()) < 8, qPrintable(gray.name()));
        w->setEnabled(true);
        QVERIFY(!effect->isEnabled());
        // Disabled through the parent counts as well.
        p.w->setEnabled(false);
        QVERIFY(effect->isEnabled());
        p.w->setEnabled(true);
        QVERIFY(!effect->isEnabled());
        w->setGrayToDisable(false);
        w->setEnabled(false);
        QCOMPARE(w->graphicsEffect(), nullptr);
        QCOMPARE(p.middle(), QColor(Qt::red));
        // Turned on while disabled: gray at once.
        w->setGrayToDisable(true);
        QVERIFY(w->graphicsEffect() && w->graphicsEffect()->isEnabled());
    }

    void rotation_data()
    {
        QTest::addColumn<QVector3D>("angles");
        QTest::addColumn<QPointF>("point");
        QTest::addColumn<QPointF>("expected");
        QTest::addColumn<qreal>("tolerance");
        // All about the origin (10, 10).
        QTest::newRow("none") << QVector3D() << QPointF(3, 4) << QPointF(3, 4) << 1e-9;
        QTest::newRow("z 90") << QVector3D(0, 0, 90) << QPointF(20, 10) << QPointF(10, 20) << 1e-9;
        QTest::newRow("z 180") << QVector3D(0, 0, 180) << QPointF(20, 15) << QPointF(0, 5) << 1e-9;
        QTest::newRow("z keeps origin") << QVector3D(0, 0, 37) << QPointF(10, 10) << QPointF(10, 10) << 1e-9;

        // About the x axis the horizontal line through the origin stays, and a
        // point above it comes nearer by cos(60) = 0.5, up to the perspective.
        QTest::newRow("x 60 axis line") << QVector3D(60, 0, 0) << QPointF(30, 10) << QPointF(30, 10) << 1e-9;
        QTest::newRow("x 60 foreshortens") << QVector3D(60, 0, 0) << QPointF(10, 30) << QPointF(10, 20) << 0.5;
        QTest::newRow("y 60 foreshortens") << QVector3D(0, 60, 0) << QPointF(30, 10) << QPointF(20, 10) << 0.5;
    }
    void rotation()
    {
        QFETCH(QVector3D, angles);
        QFETCH(QPointF, point);
        QFETCH(QPointF, expected);
        QFETCH(qreal, tolerance);
        ZWidget w;
        w.setXRotate(angles.x());
        w.setYRotate(angles.y());
        w.setZRotate(angles.z());
        // The origin set last must still apply to the angles set before.
        w.setOriginPoint(QPointF(10, 10));
        // Not-a-number angles from a document are ignored.
        w.setZRotate(qQNaN());
        w.setOriginPoint(QPointF(qInf(), 0));
        const QPointF mapped = w.mapToParent(point);
        QVERIFY2(qAbs(mapped.x() - expected.x()) <= tolerance && qAbs(mapped.y() - expected.y()) <= tolerance,
                 qPrintable(QStringLiteral("(%1, %2)").arg(mapped.x()).arg(mapped.y())));
    }

    void dragPolicy_data()
    {
        QTest::addColumn<int>("grandParent");
        QTest::addColumn<int>("parent");
        QTest::addColumn<int>("child");
        QTest::addColumn<int>("expected");
        const int N = ZWidget::Nothing, M = ZWidget::WindowMove, A = ZWidget::AskParent;
        QTest::newRow("own WindowMove") << N << N << M << M;
        QTest::newRow("own Nothing under WindowMove") << M << M << N << N;
        QTest::newRow("AskParent under WindowMove") << N << M << A << M;
        QTest::newRow("AskParent twice up") << M << A << A << M;
        QTest::newRow("AskParent to the top") << A << A << A << N;
        QTest::newRow("AskParent stops at Nothing") << M << N << A << N;
        QTest::newRow("unknown value") << M << M << 7 << N;
    }
    void dragPolicy()
    {
        QFETCH(int, grandParent);
        QFETCH(int, parent);
        QFETCH(int, child);
        QFETCH(int, expected);
        QGraphicsScene scene;
        auto *g = new ZWidget;
        scene.addItem(g);
        auto *p = new ZWidget(g);
        auto *c = new ZWidget(p);
        g->setDragPolicy(ZWidget::DragPolicy(grandParent));
        p->setDragPolicy(ZWidget::DragPolicy(parent));
        c->setDragPolicy(ZWidget::DragPolicy(child));
        QCOMPARE(int(ZWidget::resolveDragPolicy(c, QPointF())), expected);
        // A non-ZWidget item asks its nearest ZWidget ancestor.
        QCOMPARE(int(ZWidget::resolveDragPolicy(new QGraphicsRectItem(0, 0, 5, 5, c), QPointF())), expected);
    }

    void dragPolicyUsesHitTestPoint()
    {
        QGraphicsScene scene;
        auto *root = new ZWidget;
        root->setDragPolicy(ZWidget::Nothing);
        scene.addItem(root);
        auto *half = new HalfDragWidget(root);
        half->setGeometry(100, 0, 40, 10);
        auto *inner = new ZWidget(half);
        inner->setDragPolicy(ZWidget::AskParent);
        // Scene x 110 is local 10 (left half), 130 is local 30 (right half).
        QCOMPARE(ZWidget::resolveDragPolicy(inner, QPointF(110, 5)), ZWidget::Nothing);
        QCOMPARE(ZWidget::resolveDragPolicy(inner, QPointF(130, 5)), ZWidget::WindowMove);
        QCOMPARE(ZWidget::resolveDragPolicy(nullptr, QPointF()), ZWidget::Nothing);
    }

    void themePolicy_data()
    {
        // -1: no such ancestor; -2: a plain graphics item in its place.
        QTest::addColumn<int>("grandParent");
        QTest::addColumn<int>("parent");
        QTest::addColumn<int>("self");
        QTest::addColumn<bool>("expected");
        const int N = ZWidget::NoTheme, P = ZWidget::ThemeWithParent, H = ZWidget::HasTheme;
        QTest::newRow("HasTheme alone") << -1 << -1 << H << true;
        QTest::newRow("NoTheme under HasTheme") << H << H << N << false;
        QTest::newRow("with parent, no ancestor") << -1 << -1 << P << false;
        QTest::newRow("with parent, with parent, HasTheme") << H << P << P << true;
        QTest::newRow("with parent, NoTheme, HasTheme") << H << N << P << false;
        QTest::newRow("with parent, HasTheme, NoTheme") << N << H << P << true;
        QTest::newRow("with parent all the way up") << P << P << P << false;
        QTest::newRow("plain item in between") << H << -2 << P << true;
        QTest::newRow("unknown value counts as HasTheme") << -1 << -1 << 9 << true;
        QTest::newRow("unknown ancestor value counts as HasTheme") << -1 << 9 << P << true;
    }
    void themePolicy()
    {
        QFETCH(int, grandParent);
        QFETCH(int, parent);
        QFETCH(int, self);
        QFETCH(bool, expected);
        QGraphicsScene scene;
        QGraphicsItem *top = nullptr;
        for (int policy : {grandParent, parent, self}) {
            if (policy == -1)
                continue;
            QGraphicsItem *item = nullptr;
            if (policy == -2) {
                item = new QGraphicsRectItem(top);
            } else {
                auto *w = new ZWidget(top);
                w->setThemePolicy(ZWidget::ThemePolicy(policy));
                item = w;
            }
            if (!top)
                scene.addItem(item);
            top = item;
        }
        auto *w = qobject_cast<ZWidget *>(top->toGraphicsObject());
        QCOMPARE(w->hasTheme(), expected);
        QCOMPARE(w->hasTheme(), expected); // the cached answer too
    }

    void themeCacheClearedOnChanges()
    {
        ZWidget themed, plain;
        themed.setThemePolicy(ZWidget::HasTheme);
        plain.setThemePolicy(ZWidget::NoTheme);
        auto *middle = new ZWidget(&themed);
        auto *leaf = new ZWidget(middle);
        QVERIFY(leaf->hasTheme());
        // A policy change up the chain reaches the cached answer below.
        middle->setThemePolicy(ZWidget::NoTheme);
        QVERIFY(!leaf->hasTheme());
        middle->setThemePolicy(ZWidget::ThemeWithParent);
        QVERIFY(leaf->hasTheme());
        // So does moving the subtree.
        middle->setParentItem(&plain);
        QVERIFY(!leaf->hasTheme());
        themed.addItem(middle);
        QVERIFY(leaf->hasTheme());
        leaf->setParentItem(nullptr);
        QVERIFY(!leaf->hasTheme());
        delete leaf;
    }

    void changeThemeReachesParticipants()
    {
        ProbeWidget root;
        root.setThemePolicy(ZWidget::HasTheme);
        auto *a = new ProbeWidget(&root);
        auto *b = new ProbeWidget(a);
        b->setThemePolicy(ZWidget::NoTheme);
        auto *c = new ProbeWidget(b);
        auto *d = new ProbeWidget(new QGraphicsRectItem(&root));
        root.changeTheme();
        QCOMPARE((QList<int>{root.themeChanges, a->themeChanges, b->themeChanges, c->themeChanges, d->themeChanges}),
                 (QList<int>{1, 1, 0, 0, 1}));
        // The base handler re-applies the background, tinted since the widget
        // takes part in theming; a widget without a theme keeps its colour.
        a->setBackgroundColor(Qt::red);
        QPalette pal = a->palette();
        pal.setBrush(QPalette::Window, Qt::green);
        a->setPalette(pal);
        a->changeTheme();
        QCOMPARE(a->palette().brush(QPalette::Window).color(), ZTheme::convertToThemeColor(Qt::red));
        c->setBackgroundColor(QColor(10, 200, 30));
        QCOMPARE(c->palette().brush(QPalette::Window).color(), QColor(10, 200, 30));
    }

    void findObject()
    {
        ZWidget root;
        root.setObjectName("target");
        const auto add = [](ZWidget *parent, const char *name = "") {
            auto *w = new ZWidget;
            parent->addItem(w);
            w->setObjectName(QString::fromLatin1(name));
            return w;
        };
        ZWidget *first = add(&root), *deep = add(first), *deeper = add(deep, "target");
        ZWidget *shallow = add(&root, "target");
        add(add(add(&root)), "target");
        // Breadth first: the shallow one wins over deeper ones on either side of it.
        QCOMPARE(root.findObject("target"), shallow);
        QCOMPARE(first->findObject("target"), deeper);
        auto *objectOnly = new ZWidget;
        objectOnly->setObjectName("objectOnly");
        deep->addObjectItem(objectOnly);
        auto *graphicsOnly = new ZWidget;
        graphicsOnly->setObjectName("graphicsOnly");
        deep->addGraphicsItem(graphicsOnly);
        auto *underPlain = new ZWidget(new QGraphicsRectItem(shallow));
        underPlain->setObjectName("underPlain");
        auto *timer = new QTimer(first);
        timer->setObjectName("timer");
        QCOMPARE(root.findObject("objectOnly"), objectOnly);
        QCOMPARE(root.findObject("graphicsOnly"), graphicsOnly);
        QCOMPARE(root.findObject("underPlain"), underPlain);
        QCOMPARE(root.findObject("timer"), timer);
        QCOMPARE(root.findObject("missing"), nullptr);
        QCOMPARE(root.findObject(QString()), nullptr);
        QCOMPARE(shallow->findObject("target"), nullptr);
    }

    // A tree being deleted takes its widgets apart without announcing a new
    // parent, font or palette to any of them, at any depth; a living widget
    // moved to another parent still hears of it.
    void quietTeardown_data()
    {
        QTest::addColumn<int>("deleted"); // depth of the widget deleted: 0 the top
        QTest::newRow("whole tree") << 0;
        QTest::newRow("subtree") << 1;
    }
    void quietTeardown()
    {
        QFETCH(int, deleted);
        QGraphicsScene scene;
        auto *top = new ZWidget;
        top->setFont(QFont(QStringLiteral("Sans"), 17));
        scene.addItem(top);
        QList<ZWidget *> chain{top};
        for (int i = 0; i < 3; ++i) {
            auto *w = new ZWidget;
            chain.last()->addItem(w);
            new ZWidget(w); // a sibling below each level
            chain << w;
        }
        ChangeCounter counter;
        for (ZWidget *w : std::as_const(chain))
            w->installEventFilter(&counter);
        delete chain.at(deleted);
        QCOMPARE(counter.changes, 0);
        if (deleted == 0)
            return;
        auto *moved = new ZWidget(chain.at(0));
        moved->installEventFilter(&counter);
        moved->setParentItem(nullptr);
        QVERIFY(counter.changes >= 2);
    }

    void visibleEvent()
    {
        QGraphicsScene scene;
        auto *parent = new ZWidget;
        scene.addItem(parent);
        auto *w = new ProbeWidget(parent);
        w->visibility.clear();
        w->hide();
        w->show();
        parent->hide();
        parent->show();
        QCOMPARE(w->visibility, QList<bool>({false, true, false, true}));
    }

    void fixSize()
    {
        ZWidget w;
        const ZWidget fresh;
        w.setFixWidth(30);
        QCOMPARE(w.minimumWidth(), 30.0);
        QCOMPARE(w.preferredWidth(), 30.0);
        QCOMPARE(w.maximumWidth(), 30.0);
        QCOMPARE(w.size().width(), 30.0);
        QVERIFY(w.setProperty("fixSize", QSizeF(12, 14)));
        QCOMPARE(w.effectiveSizeHint(Qt::MinimumSize), QSizeF(12, 14));
        QCOMPARE(w.effectiveSizeHint(Qt::MaximumSize), QSizeF(12, 14));
        QCOMPARE(w.size(), QSizeF(12, 14));
        // Negative releases the three hints: back to what a fresh widget has.
        w.setFixHeight(-5);
        QCOMPARE(w.fixHeight(), -1.0);
        for (Qt::SizeHint which : {Qt::MinimumSize, Qt::PreferredSize, Qt::MaximumSize})
            QCOMPARE(w.effectiveSizeHint(which).height(), fresh.effectiveSizeHint(which).height());
        QCOMPARE(w.effectiveSizeHint(Qt::MaximumSize).width(), 12.0);
        // Garbage from a document unsets rather than poisoning the layout.
        QVERIFY(w.setProperty("fixWidth", QStringLiteral("nan")));
        QCOMPARE(w.fixWidth(), -1.0);
        QCOMPARE(w.effectiveSizeHint(Qt::MinimumSize).width(), fresh.effectiveSizeHint(Qt::MinimumSize).width());
        w.setMinimumWidth(3);
        w.setPreferredHeight(33);
        w.clearSizeHint();
        QCOMPARE(w.fixSize(), QSizeF(-1, -1));
        for (Qt::SizeHint which : {Qt::MinimumSize, Qt::PreferredSize, Qt::MaximumSize})
            QCOMPARE(w.effectiveSizeHint(which), fresh.effectiveSizeHint(which));
    }

    void contextMenuPolicy_data()
    {
        QTest::addColumn<int>("policy");
        QTest::addColumn<bool>("reachesBelow");
        QTest::addColumn<bool>("signalled");
        QTest::newRow("Default") << int(Qt::DefaultContextMenu) << true << false;
        QTest::newRow("NoContextMenu") << int(Qt::NoContextMenu) << true << false;
        QTest::newRow("PreventContextMenu") << int(Qt::PreventContextMenu) << false << false;
        QTest::newRow("CustomContextMenu") << int(Qt::CustomContextMenu) << false << true;
    }
    void contextMenuPolicy()
    {
        QFETCH(int, policy);
        QFETCH(bool, reachesBelow);
        QFETCH(bool, signalled);
        QGraphicsScene scene;
        auto *below = new MenuCatcher(0, 0, 50, 50);
        scene.addItem(below);
        auto *w = new ZWidget;
        w->setGeometry(10, 10, 20, 20);
        w->setZValue(1);
        scene.addItem(w);
        w->setContextMenuPolicy(Qt::ContextMenuPolicy(policy));
        QSignalSpy spy(w, &ZWidget::customContextMenuRequested);
        QGraphicsSceneContextMenuEvent event(QEvent::GraphicsSceneContextMenu);
        event.setScenePos(QPointF(15, 17));
        QCoreApplication::sendEvent(&scene, &event);
        QCOMPARE(below->menus == 1, reachesBelow);
        QCOMPARE(spy.count() == 1, signalled);
        if (signalled)
            QCOMPARE(spy.at(0).at(0).toPointF(), QPointF(5, 7));
    }

    void geometryMapping()
    {
        QGraphicsScene scene(0, 0, 400, 300);
        auto *parent = new ZWidget;
        parent->setPos(10, 5);
        scene.addItem(parent);
        auto *w = new ZWidget(parent);
        w->setGeometry(20, 15, 50, 40);
        QCOMPARE(w->rectToScene(), QRectF(30, 20, 50, 40));
        QVERIFY(!w->view() && !w->viewport() && w->rectToView().isNull() && w->rectToScreen().isNull());
        QGraphicsView view(&scene);
        view.setFrameShape(QFrame::NoFrame);
        view.setAlignment(Qt::AlignLeft | Qt::AlignTop);
        view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view.setGeometry(100, 50, 800, 600);
        view.scale(2, 2);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QCOMPARE(w->view(), &view);
        QCOMPARE(w->viewport(), view.viewport());
        QCOMPARE(w->rectToView(), QRectF(60, 40, 100, 80));
        const QPointF origin = view.viewport()->mapToGlobal(QPointF(0, 0));
        QCOMPARE(w->rectToScreen(), QRectF(origin + QPointF(60, 40), QSizeF(100, 80)));
        QCOMPARE(w->geometryToScreen(), w->rectToScreen().toRect());
        // Under the mouse only where the cursor is, and only while shown.
        const QPoint over = view.viewport()->mapToGlobal(QPoint(70, 50));
        QCursor::setPos(over);
        if (QCursor::pos() != over)
            QSKIP("the platform does not move the cursor");
        QVERIFY(w->isUnderMouseEx());
        QCursor::setPos(view.viewport()->mapToGlobal(QPoint(300, 300)));
        QVERIFY(!w->isUnderMouseEx());
        QCursor::setPos(over);
        w->hide();
        QVERIFY(!w->isUnderMouseEx());
    }
};

QTEST_MAIN(tst_ZWidget)
#include "tst_zwidget.moc"
