#include <QtTest/QtTest>
#include <QtWidgets/QGraphicsColorizeEffect>
#include <QtWidgets/QGraphicsLinearLayout>
#include <QtWidgets/QGraphicsRectItem>
#include <QtWidgets/QGraphicsScene>
#include <QtWidgets/QGraphicsSceneContextMenuEvent>
#include <QtWidgets/QGraphicsView>

#include "zspacer.h"
#include "zwidget.h"
#include "ztheme.h"

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

QImage renderScene(QGraphicsScene &scene, const QSize &size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    scene.render(&painter, QRectF(QPointF(), size), QRectF(QPointF(), size));
    return image;
}

bool inLayoutOf(const ZWidget *parent, const ZWidget *child)
{
    const QGraphicsLayout *lay = parent->layout();
    for (int i = 0; lay && i < lay->count(); ++i) {
        if (lay->itemAt(i) == child)
            return true;
    }
    return false;
}

} // namespace

class tst_ZWidget : public QObject
{
    Q_OBJECT

private slots:
    void enumValues_data();
    void enumValues();
    void propertiesFromText_data();
    void propertiesFromText();
    void readOnlyProperties();
    void invokableConstructors();

    void attachOperations_data();
    void attachOperations();
    void attachOrder();
    void insertItemIndex();
    void addGraphicsItemNullReceiver();
    void refusesParentLoops();
    void bylayoutAndAlignment();

    void widgetFlags_data();
    void widgetFlags();
    void scenePositionSignal();

    void backgroundGradientThenColour();
    void backgroundNoBrushLeavesPalette();
    void backgroundUnsetAndInvalid();
    void backgroundStyle();
    void grayToDisable();
    void rotation_data();
    void rotation();

    void dragPolicy_data();
    void dragPolicy();
    void dragPolicyUsesHitTestPoint();

    void themePolicy_data();
    void themePolicy();
    void themeCacheClearedOnChanges();
    void changeThemeReachesParticipants();

    void findObject();
    void visibleEvent();
    void fixSize();
    void contextMenuPolicy_data();
    void contextMenuPolicy();
    void geometryMapping();
    void underMouse();
};

void tst_ZWidget::enumValues_data()
{
    QTest::addColumn<QByteArray>("enumName");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<int>("value");

    const struct {
        const char *enumName;
        const char *key;
        int value;
    } rows[] = {
        {"DragPolicy", "Nothing", 0}, {"DragPolicy", "WindowMove", 1}, {"DragPolicy", "AskParent", 2},
        {"LayoutType", "None", 0}, {"LayoutType", "VBox", 1}, {"LayoutType", "HBox", 2},
        {"LayoutType", "Flow", 3}, {"LayoutType", "Anchor", 4},
        {"AnchorPoint", "Left", Qt::AnchorLeft}, {"AnchorPoint", "HCenter", Qt::AnchorHorizontalCenter},
        {"AnchorPoint", "Right", Qt::AnchorRight}, {"AnchorPoint", "Top", Qt::AnchorTop},
        {"AnchorPoint", "VCenter", Qt::AnchorVerticalCenter}, {"AnchorPoint", "Bottom", Qt::AnchorBottom},
        {"GradientKey", "Start", 0}, {"GradientKey", "Final", 1}, {"GradientKey", "Center", 2},
        {"GradientKey", "Radius", 3}, {"GradientKey", "Angle", 4}, {"GradientKey", "Color", 5},
        {"GradientKey", "Spread", 6},
        {"SpreadKey", "Pad", 0}, {"SpreadKey", "Repeat", 1}, {"SpreadKey", "Reflect", 2},
        {"WidgetFlags", "Default", 0}, {"WidgetFlags", "Moveable", QGraphicsItem::ItemIsMovable},
        {"WidgetFlags", "ClipsToShape", QGraphicsItem::ItemClipsToShape},
        {"WidgetFlags", "ClipsChildrenToShape", QGraphicsItem::ItemClipsChildrenToShape},
        {"WidgetFlags", "IgnoresParentOpacity", QGraphicsItem::ItemIgnoresParentOpacity},
        {"WidgetFlags", "HasNoContents", QGraphicsItem::ItemHasNoContents},
        {"WidgetFlags", "ScenePosition", QGraphicsItem::ItemSendsScenePositionChanges},
        {"WidgetFlags", "All", 66649},
        {"ThemePolicy", "NoTheme", 0}, {"ThemePolicy", "ThemeWithParent", 1}, {"ThemePolicy", "HasTheme", 2},
    };
    for (const auto &row : rows)
        QTest::addRow("%s::%s", row.enumName, row.key) << QByteArray(row.enumName) << QByteArray(row.key) << row.value;
}

void tst_ZWidget::enumValues()
{
    QFETCH(QByteArray, enumName);
    QFETCH(QByteArray, key);
    QFETCH(int, value);

    const int index = ZWidget::staticMetaObject.indexOfEnumerator(enumName.constData());
    QVERIFY2(index >= 0, enumName.constData());
    bool ok = false;
    QCOMPARE(ZWidget::staticMetaObject.enumerator(index).keyToValue(key.constData(), &ok), value);
    QVERIFY(ok);
}

void tst_ZWidget::propertiesFromText_data()
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
void tst_ZWidget::propertiesFromText()
{
    QFETCH(QByteArray, property);
    QFETCH(QString, text);
    QFETCH(int, expected);

    ZWidget w;
    if (property == "backgroundStyle")
        w.setBackgroundColor(Qt::red);
    QVERIFY(w.setProperty(property.constData(), text));
    const QVariant value = w.property(property.constData());
    QCOMPARE(value.toInt(), expected);

    // A word the type does not know leaves the property as it was.
    w.setProperty(property.constData(), QStringLiteral("NoSuchKey"));
    QCOMPARE(w.property(property.constData()).toInt(), expected);
}

void tst_ZWidget::readOnlyProperties()
{
    ZWidget w;
    w.resize(30, 20);
    const QMetaObject *mo = w.metaObject();
    for (const char *name : {"width", "height", "rect", "focus"}) {
        const int index = mo->indexOfProperty(name);
        QVERIFY2(index >= 0, name);
        QVERIFY2(!mo->property(index).isWritable(), name);
    }
    QVERIFY(!w.setProperty("width", 99.0));
    QCOMPARE(w.property("width").toReal(), 30.0);
    QCOMPARE(w.property("height").toReal(), 20.0);
    QCOMPARE(w.property("rect").toRectF(), QRectF(0, 0, 30, 20));
}

void tst_ZWidget::invokableConstructors()
{
    ZWidget parent;
    for (const QMetaObject *mo : {&ZWidget::staticMetaObject, &ZSpacer::staticMetaObject}) {
        QObject *created = mo->newInstance(Q_ARG(QGraphicsItem *, &parent));
        QVERIFY2(created, mo->className());
        auto *w = qobject_cast<ZWidget *>(created);
        QVERIFY(w);
        QCOMPARE(w->parentItem(), &parent);
        QCOMPARE(created->metaObject(), mo);
    }
}

void tst_ZWidget::attachOperations_data()
{
    QTest::addColumn<QString>("attach");
    QTest::addColumn<QString>("detach");
    QTest::addColumn<bool>("objectParent");
    QTest::addColumn<bool>("graphicsParent");
    QTest::addColumn<bool>("inLayout");

    QTest::newRow("addItem") << "addItem" << "removeItem" << true << true << true;
    QTest::newRow("insertItem") << "insertItem" << "removeItem" << true << true << true;
    QTest::newRow("addChild") << "addChild" << "removeChild" << true << true << false;
    QTest::newRow("addGraphicsItem") << "addGraphicsItem" << "removeGraphicsItem" << false << true << false;
    QTest::newRow("addObjectItem") << "addObjectItem" << "removeObjectItem" << true << false << false;
    // The layout itself makes its items graphics children of its widget.
    QTest::newRow("addLayoutItem") << "addLayoutItem" << "removeLayoutItem" << false << true << true;
    QTest::newRow("insertLayoutItem") << "insertLayoutItem" << "removeLayoutItem" << false << true << true;
}

void tst_ZWidget::attachOperations()
{
    QFETCH(QString, attach);
    QFETCH(QString, detach);
    QFETCH(bool, objectParent);
    QFETCH(bool, graphicsParent);
    QFETCH(bool, inLayout);

    ZWidget parent;
    parent.setLayoutType(ZWidget::VBox);
    QPointer<ZWidget> child = new ZWidget;

    if (attach == "addItem")
        parent.addItem(child);
    else if (attach == "insertItem")
        parent.insertItem(child, 0);
    else if (attach == "addChild")
        parent.addChild(child);
    else if (attach == "addGraphicsItem")
        parent.addGraphicsItem(child);
    else if (attach == "addObjectItem")
        parent.addObjectItem(child);
    else if (attach == "addLayoutItem")
        parent.addLayoutItem(child);
    else
        parent.insertLayoutItem(child, 0);

    QCOMPARE(child->parent() == &parent, objectParent);
    QCOMPARE(child->parentItem() == &parent, graphicsParent);
    QCOMPARE(inLayoutOf(&parent, child), inLayout);
    QCOMPARE(child->bylayout(), inLayout);

    if (detach == "removeItem")
        parent.removeItem(child);
    else if (detach == "removeChild")
        parent.removeChild(child);
    else if (detach == "removeGraphicsItem")
        parent.removeGraphicsItem(child);
    else if (detach == "removeObjectItem")
        parent.removeObjectItem(child);
    else
        parent.removeLayoutItem(child);

    QVERIFY(child);
    QVERIFY(!inLayoutOf(&parent, child));
    QCOMPARE(parent.layout()->count(), 0);
    // removeLayoutItem only leaves the layout: the graphics parent the layout set stays.
    const bool keepsGraphicsParent = detach == "removeLayoutItem";
    QCOMPARE(child->parentItem() == &parent, keepsGraphicsParent);
    QVERIFY(child->parent() != &parent);
    delete child;
}

void tst_ZWidget::attachOrder()
{
    ZWidget parent;
    auto *viaAddItem = new ProbeWidget;
    parent.addItem(viaAddItem);
    QVERIFY2(viaAddItem->hadObjectParentOnReparent, "addItem sets the object parent first");

    auto *viaAddChild = new ProbeWidget;
    parent.addChild(viaAddChild);
    QVERIFY2(!viaAddChild->hadObjectParentOnReparent, "addChild sets the graphics parent first");
    QCOMPARE(viaAddChild->parent(), &parent);
}

void tst_ZWidget::insertItemIndex()
{
    ZWidget parent;
    parent.setLayoutType(ZWidget::HBox);
    auto *a = new ZWidget;
    auto *b = new ZWidget;
    auto *c = new ZWidget;
    auto *d = new ZWidget;
    parent.addItem(a);
    parent.addItem(b);
    parent.insertItem(c, 1);
    parent.insertItem(d, 42);
    const QGraphicsLayout *lay = parent.layout();
    QCOMPARE(lay->count(), 4);
    QCOMPARE(lay->itemAt(0), a);
    QCOMPARE(lay->itemAt(1), c);
    QCOMPARE(lay->itemAt(2), b);
    QCOMPARE(lay->itemAt(3), d);

    // Adding again moves rather than duplicates.
    parent.addItem(a);
    QCOMPARE(lay->count(), 4);
    QCOMPARE(lay->itemAt(3), a);
}

void tst_ZWidget::addGraphicsItemNullReceiver()
{
    QGraphicsScene scene;
    auto *parent = new ZWidget;
    scene.addItem(parent);
    auto *child = new ZWidget;
    parent->addGraphicsItem(child);
    QCOMPARE(child->parentItem(), parent);

    ZWidget::addGraphicsItem(nullptr, child);
    QCOMPARE(child->parentItem(), nullptr);
    QCOMPARE(child->scene(), &scene);
}

void tst_ZWidget::refusesParentLoops()
{
    ZWidget root;
    root.setLayoutType(ZWidget::VBox);
    auto *child = new ZWidget;
    root.addItem(child);
    auto *grandChild = new ZWidget;
    child->addItem(grandChild);

    root.addItem(&root);
    grandChild->addItem(&root);
    grandChild->addChild(child);
    grandChild->addObjectItem(&root);
    child->addLayoutItem(&root);
    ZWidget::addGraphicsItem(grandChild, child);
    root.addItem(nullptr);
    root.addLayoutItem(nullptr);
    root.removeItem(nullptr);

    QCOMPARE(root.parentItem(), nullptr);
    QCOMPARE(root.parent(), nullptr);
    QCOMPARE(child->parentItem(), &root);
    QCOMPARE(grandChild->parentItem(), child);
    QCOMPARE(root.layout()->count(), 1);
}

void tst_ZWidget::bylayoutAndAlignment()
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

    QVERIFY(child->bylayout());
    child->setBylayout(false);
    QVERIFY(!child->bylayout());
    QCOMPARE(lay->count(), 0);
    QCOMPARE(child->parentItem(), &parent);
    child->setPos(7, 9);
    parent.resize(100, 50);
    parent.activateLayout();
    QCOMPARE(child->pos(), QPointF(7, 9));

    child->setBylayout(true);
    QVERIFY(child->bylayout());
    QCOMPARE(lay->count(), 1);

    // Without a ZWidget parent there is no layout to join.
    ZWidget orphan;
    orphan.setBylayout(true);
    QVERIFY(!orphan.bylayout());
}

void tst_ZWidget::widgetFlags_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<bool>("movableBefore");

    QTest::newRow("Default") << int(ZWidget::Default) << true;
    QTest::newRow("Moveable on unmovable") << int(ZWidget::Moveable) << false;
    QTest::newRow("Moveable on movable") << int(ZWidget::Moveable) << true;
    QTest::newRow("ClipsToShape") << int(ZWidget::ClipsToShape) << false;
    QTest::newRow("ClipsChildrenToShape") << int(ZWidget::ClipsChildrenToShape) << false;
    QTest::newRow("IgnoresParentOpacity") << int(ZWidget::IgnoresParentOpacity) << true;
    QTest::newRow("HasNoContents") << int(ZWidget::HasNoContents) << false;
    QTest::newRow("ScenePosition") << int(ZWidget::ScenePosition) << false;
    QTest::newRow("two") << int(ZWidget::HasNoContents | ZWidget::ClipsToShape) << true;
    QTest::newRow("All on unmovable") << int(ZWidget::All) << false;
    QTest::newRow("All on movable") << int(ZWidget::All) << true;
}

void tst_ZWidget::widgetFlags()
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

void tst_ZWidget::scenePositionSignal()
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

void tst_ZWidget::backgroundGradientThenColour()
{
    QGraphicsScene scene;
    auto *w = new ZWidget;
    w->resize(40, 40);
    scene.addItem(w);

    QLinearGradient gradient(0, 0, 0, 1);
    gradient.setCoordinateMode(QGradient::ObjectBoundingMode);
    gradient.setColorAt(0, Qt::red);
    gradient.setColorAt(1, Qt::blue);
    // As a document sets it: a QtGradient value through the property system.
    QVERIFY(w->setProperty("backgroundGradient", QVariant::fromValue(QtGradient(gradient))));
    QCOMPARE(w->backgroundGradient(), QtGradient(gradient));
    QVERIFY(w->backgroundGradient().isValid());
    QVERIFY(!QtGradient().isValid());
    QVERIFY(QtGradient() != QtGradient(gradient));

    QImage image = renderScene(scene, QSize(40, 40));
    const QColor top = image.pixelColor(20, 1);
    const QColor bottom = image.pixelColor(20, 38);
    QVERIFY2(top.red() > 200 && top.blue() < 50, qPrintable(top.name()));
    QVERIFY2(bottom.blue() > 200 && bottom.red() < 50, qPrintable(bottom.name()));

    w->setBackgroundColor(QColor(0, 255, 0));
    QVERIFY(!w->backgroundGradient().isValid());
    image = renderScene(scene, QSize(40, 40));
    QCOMPARE(image.pixelColor(20, 1), QColor(0, 255, 0));
    QCOMPARE(image.pixelColor(20, 38), QColor(0, 255, 0));
    // Outside the widget nothing is painted.
    QGraphicsScene bigger;
    auto *small = new ZWidget;
    small->resize(10, 10);
    small->setBackgroundColor(0, 0, 255);
    bigger.addItem(small);
    image = renderScene(bigger, QSize(20, 20));
    QCOMPARE(image.pixelColor(5, 5), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(15, 15), QColor(Qt::white));
}

void tst_ZWidget::backgroundNoBrushLeavesPalette()
{
    QGraphicsScene scene;
    auto *w = new ZWidget;
    w->resize(20, 20);
    scene.addItem(w);
    const QBrush untouched = w->palette().brush(QPalette::Window);

    w->setBackgroundBrush(QBrush(Qt::red, Qt::NoBrush));
    QCOMPARE(w->palette().brush(QPalette::Window), untouched);
    QVERIFY(!w->autoFillBackground());

    w->setBackgroundColor(Qt::red);
    QCOMPARE(w->palette().brush(QPalette::Window).color(), QColor(Qt::red));
    w->setBackgroundStyle(Qt::NoBrush);
    QCOMPARE(w->backgroundStyle(), Qt::NoBrush);
    QCOMPARE(w->palette().brush(QPalette::Window).color(), QColor(Qt::red));
    QCOMPARE(w->palette().brush(QPalette::Window).style(), Qt::SolidPattern);
    QCOMPARE(renderScene(scene, QSize(20, 20)).pixelColor(10, 10), QColor(Qt::red));
}

void tst_ZWidget::backgroundUnsetAndInvalid()
{
    QGraphicsScene scene;
    auto *w = new ZWidget;
    w->resize(20, 20);
    scene.addItem(w);

    w->setBackgroundColor(Qt::red);
    QCOMPARE(renderScene(scene, QSize(20, 20)).pixelColor(10, 10), QColor(Qt::red));
    w->unsetBackgroundBrush();
    QCOMPARE(w->backgroundStyle(), Qt::NoBrush);
    QCOMPARE(renderScene(scene, QSize(20, 20)).pixelColor(10, 10), QColor(Qt::white));

    w->setBackgroundColor(Qt::red);
    w->setBackgroundColor(QColor());
    QCOMPARE(renderScene(scene, QSize(20, 20)).pixelColor(10, 10), QColor(Qt::white));

    w->setBackgroundColor(Qt::red);
    w->setBackgroundGradient(QtGradient());
    QCOMPARE(renderScene(scene, QSize(20, 20)).pixelColor(10, 10), QColor(Qt::white));

    // Through the property system too (the reset of backgroundBrush).
    w->setBackgroundColor(Qt::red);
    QVERIFY(w->metaObject()->property(w->metaObject()->indexOfProperty("backgroundBrush")).reset(w));
    QCOMPARE(renderScene(scene, QSize(20, 20)).pixelColor(10, 10), QColor(Qt::white));
}

void tst_ZWidget::backgroundStyle()
{
    ZWidget w;
    w.setBackgroundColor(Qt::blue);
    w.setBackgroundStyle(Qt::Dense4Pattern);
    QCOMPARE(w.palette().brush(QPalette::Window).style(), Qt::Dense4Pattern);
    QCOMPARE(w.palette().brush(QPalette::Window).color(), QColor(Qt::blue));

    // Gradient and texture styles cannot come from a style alone.
    w.setBackgroundStyle(Qt::LinearGradientPattern);
    w.setBackgroundStyle(Qt::TexturePattern);
    QCOMPARE(w.backgroundStyle(), Qt::Dense4Pattern);

    w.setBackgroundBrush(QBrush(Qt::green, Qt::CrossPattern));
    QCOMPARE(w.backgroundColor(), QColor(Qt::green));
    QCOMPARE(w.palette().brush(QPalette::Window).style(), Qt::CrossPattern);
}

void tst_ZWidget::grayToDisable()
{
    QGraphicsScene scene;
    auto *parent = new ZWidget;
    scene.addItem(parent);
    auto *w = new ZWidget(parent);
    w->resize(20, 20);
    w->setBackgroundColor(Qt::red);

    w->setGrayToDisable(true);
    auto *effect = qobject_cast<QGraphicsColorizeEffect *>(w->graphicsEffect());
    QVERIFY(effect);
    QVERIFY(!effect->isEnabled());
    QCOMPARE(renderScene(scene, QSize(20, 20)).pixelColor(10, 10), QColor(Qt::red));

    w->setEnabled(false);
    QVERIFY(effect->isEnabled());
    const QColor gray = renderScene(scene, QSize(20, 20)).pixelColor(10, 10);
    QVERIFY2(qAbs(gray.red() - gray.green()) < 8 && qAbs(gray.green() - gray.blue()) < 8,
             qPrintable(gray.name()));

    w->setEnabled(true);
    QVERIFY(!effect->isEnabled());
    // Disabled through the parent counts as well.
    parent->setEnabled(false);
    QVERIFY(effect->isEnabled());
    parent->setEnabled(true);
    QVERIFY(!effect->isEnabled());

    w->setGrayToDisable(false);
    QCOMPARE(w->graphicsEffect(), nullptr);
    w->setEnabled(false);
    QCOMPARE(w->graphicsEffect(), nullptr);
    QCOMPARE(renderScene(scene, QSize(20, 20)).pixelColor(10, 10), QColor(Qt::red));

    // Turned on while disabled: gray at once.
    w->setGrayToDisable(true);
    QVERIFY(w->graphicsEffect() && w->graphicsEffect()->isEnabled());
}

void tst_ZWidget::rotation_data()
{
    QTest::addColumn<qreal>("x");
    QTest::addColumn<qreal>("y");
    QTest::addColumn<qreal>("z");
    QTest::addColumn<QPointF>("origin");
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QPointF>("expected");
    QTest::addColumn<qreal>("tolerance");

    QTest::newRow("none") << 0.0 << 0.0 << 0.0 << QPointF(10, 10) << QPointF(3, 4) << QPointF(3, 4) << 1e-9;
    QTest::newRow("z 90 about origin") << 0.0 << 0.0 << 90.0 << QPointF(10, 10) << QPointF(20, 10)
                                       << QPointF(10, 20) << 1e-9;
    QTest::newRow("z 180 about origin") << 0.0 << 0.0 << 180.0 << QPointF(10, 10) << QPointF(20, 15)
                                        << QPointF(0, 5) << 1e-9;
    QTest::newRow("z keeps origin") << 0.0 << 0.0 << 37.0 << QPointF(10, 10) << QPointF(10, 10)
                                    << QPointF(10, 10) << 1e-9;
    // About the x axis the horizontal line through the origin stays, and a
    // point above it comes nearer by cos(60) = 0.5, up to the perspective.
    QTest::newRow("x 60 axis line") << 60.0 << 0.0 << 0.0 << QPointF(10, 10) << QPointF(30, 10)
                                    << QPointF(30, 10) << 1e-9;
    QTest::newRow("x 60 foreshortens") << 60.0 << 0.0 << 0.0 << QPointF(10, 10) << QPointF(10, 30)
                                       << QPointF(10, 20) << 0.5;
    QTest::newRow("y 60 foreshortens") << 0.0 << 60.0 << 0.0 << QPointF(10, 10) << QPointF(30, 10)
                                       << QPointF(20, 10) << 0.5;
}

void tst_ZWidget::rotation()
{
    QFETCH(qreal, x);
    QFETCH(qreal, y);
    QFETCH(qreal, z);
    QFETCH(QPointF, origin);
    QFETCH(QPointF, point);
    QFETCH(QPointF, expected);
    QFETCH(qreal, tolerance);

    ZWidget w;
    w.setXRotate(x);
    w.setYRotate(y);
    w.setZRotate(z);
    // The origin set last must still apply to the angles set before.
    w.setOriginPoint(origin);
    // Not-a-number angles from a document are ignored.
    w.setZRotate(qQNaN());
    w.setOriginPoint(QPointF(qInf(), 0));
    const QPointF mapped = w.mapToParent(point);
    QVERIFY2(qAbs(mapped.x() - expected.x()) <= tolerance && qAbs(mapped.y() - expected.y()) <= tolerance,
             qPrintable(QStringLiteral("(%1, %2)").arg(mapped.x()).arg(mapped.y())));
}

void tst_ZWidget::dragPolicy_data()
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

void tst_ZWidget::dragPolicy()
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
    auto *plain = new QGraphicsRectItem(0, 0, 5, 5, c);
    QCOMPARE(int(ZWidget::resolveDragPolicy(plain, QPointF())), expected);
}

void tst_ZWidget::dragPolicyUsesHitTestPoint()
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

void tst_ZWidget::themePolicy_data()
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

void tst_ZWidget::themePolicy()
{
    QFETCH(int, grandParent);
    QFETCH(int, parent);
    QFETCH(int, self);
    QFETCH(bool, expected);

    QGraphicsScene scene;
    QGraphicsItem *top = nullptr;
    const auto make = [&](int policy) {
        if (policy == -1)
            return;
        QGraphicsItem *item;
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
    };
    make(grandParent);
    make(parent);
    make(self);
    auto *w = qobject_cast<ZWidget *>(top->toGraphicsObject());
    QVERIFY(w);
    QCOMPARE(w->hasTheme(), expected);
    QCOMPARE(w->hasTheme(), expected);
}

void tst_ZWidget::themeCacheClearedOnChanges()
{
    ZWidget themed;
    themed.setThemePolicy(ZWidget::HasTheme);
    ZWidget plain;
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

void tst_ZWidget::changeThemeReachesParticipants()
{
    ProbeWidget root;
    root.setThemePolicy(ZWidget::HasTheme);
    auto *a = new ProbeWidget(&root);
    auto *b = new ProbeWidget(a);
    b->setThemePolicy(ZWidget::NoTheme);
    auto *c = new ProbeWidget(b);
    auto *plain = new QGraphicsRectItem(&root);
    auto *d = new ProbeWidget(plain);

    root.changeTheme();
    QCOMPARE(root.themeChanges, 1);
    QCOMPARE(a->themeChanges, 1);
    QCOMPARE(b->themeChanges, 0);
    QCOMPARE(c->themeChanges, 0);
    QCOMPARE(d->themeChanges, 1);

    // The base handler re-applies the background, tinted since the widget
    // takes part in theming; a widget without a theme keeps its colour.
    a->setBackgroundColor(Qt::red);
    QPalette pal = a->palette();
    pal.setBrush(QPalette::Window, Qt::green);
    a->setPalette(pal);
    a->changeTheme();
    QCOMPARE(a->themeChanges, 2);
    QCOMPARE(a->palette().brush(QPalette::Window).color(), ZTheme::convertToThemeColor(Qt::red));
    c->setBackgroundColor(QColor(10, 200, 30));
    QCOMPARE(c->palette().brush(QPalette::Window).color(), QColor(10, 200, 30));
}

void tst_ZWidget::findObject()
{
    ZWidget root;
    root.setObjectName("target");
    auto *first = new ZWidget;
    root.addItem(first);
    auto *deep = new ZWidget;
    first->addItem(deep);
    auto *deeper = new ZWidget;
    deep->addItem(deeper);
    deeper->setObjectName("target");
    auto *shallow = new ZWidget;
    root.addItem(shallow);
    shallow->setObjectName("target");
    auto *last = new ZWidget;
    root.addItem(last);
    auto *lastDeep = new ZWidget;
    last->addItem(lastDeep);
    auto *lastDeeper = new ZWidget;
    lastDeep->addItem(lastDeeper);
    lastDeeper->setObjectName("target");

    // Breadth first: the shallow one wins over deeper ones on either side of it.
    QCOMPARE(root.findObject("target"), shallow);
    QCOMPARE(first->findObject("target"), deeper);

    auto *objectOnly = new ZWidget;
    objectOnly->setObjectName("objectOnly");
    deep->addObjectItem(objectOnly);
    auto *graphicsOnly = new ZWidget;
    graphicsOnly->setObjectName("graphicsOnly");
    deep->addGraphicsItem(graphicsOnly);
    auto *plain = new QGraphicsRectItem(shallow);
    auto *underPlain = new ZWidget(plain);
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

void tst_ZWidget::visibleEvent()
{
    QGraphicsScene scene;
    auto *parent = new ZWidget;
    scene.addItem(parent);
    auto *w = new ProbeWidget(parent);
    w->visibility.clear();

    w->hide();
    w->show();
    QCOMPARE(w->visibility, QList<bool>({false, true}));
    parent->hide();
    parent->show();
    QCOMPARE(w->visibility, QList<bool>({false, true, false, true}));
}

void tst_ZWidget::fixSize()
{
    ZWidget w;
    w.setFixWidth(30);
    QCOMPARE(w.minimumWidth(), 30.0);
    QCOMPARE(w.preferredWidth(), 30.0);
    QCOMPARE(w.maximumWidth(), 30.0);
    QCOMPARE(w.size().width(), 30.0);
    QCOMPARE(w.fixHeight(), -1.0);

    QVERIFY(w.setProperty("fixSize", QSizeF(12, 14)));
    QCOMPARE(w.fixSize(), QSizeF(12, 14));
    QCOMPARE(w.effectiveSizeHint(Qt::MinimumSize), QSizeF(12, 14));
    QCOMPARE(w.effectiveSizeHint(Qt::MaximumSize), QSizeF(12, 14));
    QCOMPARE(w.size(), QSizeF(12, 14));

    // Negative releases the three hints: back to what a fresh widget has.
    const ZWidget fresh;
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

void tst_ZWidget::contextMenuPolicy_data()
{
    QTest::addColumn<int>("policy");
    QTest::addColumn<bool>("reachesBelow");
    QTest::addColumn<bool>("signalled");

    QTest::newRow("Default") << int(Qt::DefaultContextMenu) << true << false;
    QTest::newRow("NoContextMenu") << int(Qt::NoContextMenu) << true << false;
    QTest::newRow("PreventContextMenu") << int(Qt::PreventContextMenu) << false << false;
    QTest::newRow("CustomContextMenu") << int(Qt::CustomContextMenu) << false << true;
}

namespace {
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
} // namespace

void tst_ZWidget::contextMenuPolicy()
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

void tst_ZWidget::geometryMapping()
{
    QGraphicsScene scene(0, 0, 400, 300);
    auto *parent = new ZWidget;
    parent->setPos(10, 5);
    scene.addItem(parent);
    auto *w = new ZWidget(parent);
    w->setGeometry(20, 15, 50, 40);

    QCOMPARE(w->rectToScene(), QRectF(30, 20, 50, 40));
    QCOMPARE(w->view(), nullptr);
    QCOMPARE(w->viewport(), nullptr);
    QVERIFY(w->rectToView().isNull());
    QVERIFY(w->rectToScreen().isNull());

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
}

void tst_ZWidget::underMouse()
{
    QGraphicsScene scene(0, 0, 200, 200);
    auto *w = new ZWidget;
    w->setGeometry(20, 20, 30, 30);
    scene.addItem(w);
    QVERIFY(!w->isUnderMouseEx());

    QGraphicsView view(&scene);
    view.setFrameShape(QFrame::NoFrame);
    view.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    view.resize(200, 200);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));

    QCursor::setPos(view.viewport()->mapToGlobal(QPoint(30, 30)));
    if (QCursor::pos() != view.viewport()->mapToGlobal(QPoint(30, 30)))
        QSKIP("the platform does not move the cursor");
    QVERIFY(w->isUnderMouseEx());
    QCursor::setPos(view.viewport()->mapToGlobal(QPoint(100, 100)));
    QVERIFY(!w->isUnderMouseEx());
    QCursor::setPos(view.viewport()->mapToGlobal(QPoint(30, 30)));
    w->hide();
    QVERIFY(!w->isUnderMouseEx());
}

QTEST_MAIN(tst_ZWidget)
#include "tst_zwidget.moc"
