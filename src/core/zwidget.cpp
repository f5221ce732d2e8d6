#include "zwidget.h"
#include "zcreator.h"
#include "zlinearlayout_p.h"
#include "zwidget_p.h"
#include "ztheme.h"
#include "zxmlui.h"

#include "qgraphicsflowlayout.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qmetaobject.h>
#include <QtCore/qscopedvaluerollback.h>
#include <QtCore/qset.h>
#include <QtCore/qvarlengtharray.h>
#include <QtGui/qevent.h>
#include <QtGui/qpalette.h>
#include <QtWidgets/qgraphicsanchorlayout.h>
#include <QtWidgets/qgraphicseffect.h>
#include <QtWidgets/qgraphicslinearlayout.h>
#include <QtWidgets/qgraphicsscene.h>
#include <QtWidgets/qgraphicssceneevent.h>
#include <QtWidgets/qgraphicsview.h>
#include <QtWidgets/qwidget.h>

#include <deque>
#include <utility>

namespace {

// The item flags that widgetFlags maps one to one; Moveable is not among them.
constexpr QGraphicsItem::GraphicsItemFlag kWidgetFlagBits[] = {
    QGraphicsItem::ItemHasNoContents,
    QGraphicsItem::ItemClipsChildrenToShape,
    QGraphicsItem::ItemClipsToShape,
    QGraphicsItem::ItemIgnoresParentOpacity,
    QGraphicsItem::ItemSendsScenePositionChanges,
};

ZWidget *asZWidget(QGraphicsItem *item)
{
    return item ? qobject_cast<ZWidget *>(item->toGraphicsObject()) : nullptr;
}

bool isHorizontalEdge(Qt::AnchorPoint point)
{
    return point == Qt::AnchorLeft || point == Qt::AnchorHorizontalCenter || point == Qt::AnchorRight;
}

// Refuses what would make a parent loop in either tree.
bool canAdopt(const ZWidget *parent, const ZWidget *item)
{
    if (!item || item == parent)
        return false;
    if (item->isAncestorOf(parent))
        return false;
    for (const QObject *o = parent->parent(); o; o = o->parent()) {
        if (o == item)
            return false;
    }
    return true;
}

// Calls \a visit for every ZWidget at or below \a root, parents before
// children; walked without recursion, so any depth is safe.
template<typename Visit>
void forEachZWidgetBelow(QGraphicsItem *root, Visit &&visit)
{
    QVarLengthArray<QGraphicsItem *, 32> stack{root};
    while (!stack.isEmpty()) {
        QGraphicsItem *item = stack.last();
        stack.removeLast();
        if (ZWidget *w = asZWidget(item))
            visit(w);
        const QList<QGraphicsItem *> children = item->childItems();
        for (auto it = children.crbegin(); it != children.crend(); ++it)
            stack.append(*it);
    }
}

} // namespace

// ---------------------------------------------------------------------------
// ZWidgetPrivate

ZWidgetPrivate::ZWidgetPrivate() = default;

ZWidgetPrivate::~ZWidgetPrivate() = default;

bool ZWidgetPrivate::parentLayoutKnowsHints() const
{
    Z_Q(const ZWidget);
    const auto *own = dynamic_cast<const ZLinearLayout *>(q->layout());
    const auto *outer = dynamic_cast<const ZLinearLayout *>(q->parentLayoutItem());
    // Placing the items must be the last thing that happened: a call made
    // while placing them comes from a change of its own.
    return own && outer && own->placedLast() && outer->measuredSince(own);
}

QGraphicsLinearLayout *ZWidgetPrivate::linearLayout() const
{
    return dynamic_cast<QGraphicsLinearLayout *>(q_func()->layout());
}

QGraphicsFlowLayout *ZWidgetPrivate::flowLayout() const
{
    return dynamic_cast<QGraphicsFlowLayout *>(q_func()->layout());
}

QGraphicsAnchorLayout *ZWidgetPrivate::anchorLayout() const
{
    return dynamic_cast<QGraphicsAnchorLayout *>(q_func()->layout());
}

ZWidget *ZWidgetPrivate::parentZWidget() const
{
    return asZWidget(q_func()->parentItem());
}

void ZWidgetPrivate::scheduleIdealSize()
{
    if (idealPending || !(followsWidth() || followsHeight()))
        return;
    idealPending = true;
    // A layout request is what the widget gets anyway after layout changes;
    // event() re-evaluates the size before the layout runs.
    QCoreApplication::postEvent(q_func(), new QEvent(QEvent::LayoutRequest));
}

bool ZWidgetPrivate::showVisibleAllAlong(QGraphicsWidget *widget, QGraphicsItem::GraphicsItemChange change,
                                         const QVariant &value)
{
    if (change != QGraphicsItem::ItemVisibleChange || !value.toBool() || !widget->isVisible())
        return false;
    // What QGraphicsWidget does for an item being shown, but the size hints.
    QShowEvent event;
    QCoreApplication::sendEvent(widget, &event);
    if (!widget->testAttribute(Qt::WA_Resized)) {
        widget->adjustSize();
        widget->setAttribute(Qt::WA_Resized, false);
    }
    return true;
}

void ZWidgetPrivate::childGeometryChanged(bool resized)
{
    // Box and anchor layouts notice changes of their items themselves. A None
    // widget's ideal size depends on where its children are and whether they
    // are shown; a flow layout places its items at their current size without
    // watching them, so a resized item calls for a new pass.
    ZWidget *parent = parentZWidget();
    if (!parent)
        return;
    ZWidgetPrivate *pd = parent->d_func();
    if (pd->layoutType == ZWidget::None) {
        pd->scheduleIdealSize();
    } else if (resized) {
        if (QGraphicsFlowLayout *flow = pd->flowLayout(); flow && q_func()->parentLayoutItem() == flow) {
            flow->invalidate();
            pd->scheduleIdealSize();
        }
    }
}

QSizeF ZWidgetPrivate::idealSize(Qt::SizeHint which, qreal widthConstraint) const
{
    Z_Q(const ZWidget);
    // Layouts get the contents rectangle; the widget's own margins come on top.
    qreal left, top, right, bottom;
    q->getContentsMargins(&left, &top, &right, &bottom);
    const QSizeF around(left + right, top + bottom);

    switch (layoutType) {
    case ZWidget::VBox:
    case ZWidget::HBox:
    case ZWidget::Anchor:
        if (QGraphicsLayout *lay = q->layout())
            return lay->effectiveSizeHint(Qt::PreferredSize) + around;
        break;
    case ZWidget::None:
        break;
    default:
        if (QGraphicsFlowLayout *flow = flowLayout()) {
            const qreal oneLine = flow->effectiveSizeHint(Qt::PreferredSize).width();
            qreal width = oneLine;
            if (widthConstraint >= 0) {
                width = widthConstraint - around.width();
            } else if (followsHeight() && !followsWidth()) {
                // The height follows the width alone, and the width the widget
                // is about to get is not known here (QGraphicsWidget clamps a
                // new geometry with hints asked without a width): allow every
                // height from one line to one item per line, prefer the one
                // for the present width.
                if (which == Qt::MinimumSize)
                    width = oneLine;
                else if (which == Qt::MaximumSize)
                    width = flow->effectiveSizeHint(Qt::MinimumSize).width();
                else
                    width = q->size().width() - around.width();
            }
            return QSizeF(oneLine, flow->heightForWidth(width)) + around;
        }
        break;
    }

    // No layout that places the children: measure where they are.
    qreal maxRight = 0;
    qreal maxBottom = 0;
    const QList<QGraphicsItem *> children = q->childItems();
    for (const QGraphicsItem *child : children) {
        if (!child->isVisibleTo(q))
            continue;
        const QRectF box = child->mapRectToParent(child->boundingRect());
        maxRight = qMax(maxRight, box.right());
        maxBottom = qMax(maxBottom, box.bottom());
    }
    return QSizeF(maxRight + margins.right(), maxBottom + margins.bottom());
}

void ZWidgetPrivate::updateTransform()
{
    QTransform transform;
    transform.translate(originPoint.x(), originPoint.y());
    transform.rotate(xRotate, Qt::XAxis);
    transform.rotate(yRotate, Qt::YAxis);
    transform.rotate(zRotate, Qt::ZAxis);
    transform.translate(-originPoint.x(), -originPoint.y());
    q_func()->setTransform(transform);
}

void ZWidgetPrivate::updateGrayEffect()
{
    Z_Q(ZWidget);
    if (!grayToDisable) {
        // Still ours only while installed: the item deletes a replaced effect.
        if (grayEffect)
            q->setGraphicsEffect(nullptr);
        return;
    }
    if (!grayEffect) {
        grayEffect = new QGraphicsColorizeEffect;
        grayEffect->setColor(Qt::gray);
        grayEffect->setStrength(1.0);
        q->setGraphicsEffect(grayEffect);
    }
    grayEffect->setEnabled(!q->isEnabled());
}

void ZWidgetPrivate::applySkin()
{
    ZTheme::setSkinName(q_zptr, skinName);
}

// ---------------------------------------------------------------------------
// ZWidget

ZWidget::ZWidget(QGraphicsItem *parent)
    : ZWidget(*new ZWidgetPrivate, parent)
{
}

ZWidget::ZWidget(ZWidgetPrivate &dd, QGraphicsItem *parent)
    : QGraphicsWidget(parent)
    , d_zptr(&dd)
{
    d_zptr->q_zptr = this;
}

ZWidget::~ZWidget()
{
    Z_D(ZWidget);
    if (d->removePostedEvents)
        QCoreApplication::removePostedEvents(this);
    // Children go first, the last one first and the layout before them.
    // Left to QGraphicsWidget, this widget would leave its parent with its
    // whole subtree still in place, and the font and palette of every widget
    // below it would be resolved and announced again - once per level above.
    if (QGraphicsLayout *l = layout()) {
        for (QGraphicsItem *item : childItems()) {
            if (item->isWidget() && static_cast<QGraphicsWidget *>(item)->parentLayoutItem() == l)
                static_cast<QGraphicsWidget *>(item)->setParentLayoutItem(nullptr);
        }
        // Cut off from this widget, the layout empties itself without
        // invalidating the widget and its ancestors once per item.
        l->setParentLayoutItem(nullptr);
        setLayout(nullptr);
    }
    // A child's destructor may take siblings with it: look again each time.
    while (!childItems().isEmpty())
        delete childItems().constLast();
    // Leave the parent while still a ZWidget, so that itemChange() can pass
    // over the parent change: its font and palette would be resolved and
    // announced for nothing.
    d->dying = true;
    setParentItem(nullptr);
}

void ZWidget::setData(const XMLNode *)
{
}

void ZWidget::setData(const QVariant &)
{
}

ZWidget *ZWidget::layoutWidget()
{
    return this;
}

void ZWidget::addItem(ZWidget *item)
{
    insertItem(item, -1);
}

void ZWidget::insertItem(ZWidget *item, int index)
{
    if (!canAdopt(this, item))
        return;
    item->setParent(this);
    item->setParentItem(this);
    insertLayoutItem(item, index);
}

void ZWidget::removeItem(ZWidget *item)
{
    if (!item)
        return;
    removeLayoutItem(item);
    if (item->parentItem() == this)
        item->setParentItem(nullptr);
    if (item->parent() == this)
        item->setParent(nullptr);
}

ZWidget::DragPolicy ZWidget::hitTest(const QPointF &) const
{
    return d_func()->dragPolicy;
}

void ZWidget::construct()
{
}

void ZWidget::doThemeChange()
{
    updateBackgroundBrush();
}

ZWidget::LayoutType ZWidget::layoutType() const
{
    return d_func()->layoutType;
}

void ZWidget::setLayoutType(LayoutType type)
{
    Z_D(ZWidget);
    if (d->layoutType == type && layout())
        return;
    d->layoutType = type;

    QGraphicsLayout *newLayout = nullptr;
    switch (type) {
    case VBox:
    case HBox: {
        auto *linear = new ZLinearLayout(type == VBox ? Qt::Vertical : Qt::Horizontal);
        linear->setSpacing(qMax(0, d->spacing));
        newLayout = linear;
        break;
    }
    case Anchor:
        newLayout = new QGraphicsAnchorLayout;
        break;
    default: {
        // None too: the widget keeps a flow layout that addLayoutItem() leaves empty.
        auto *flow = new QGraphicsFlowLayout;
        flow->setSpacing(false, d->itemSpacing);
        flow->setSpacing(true, d->itemSpacing);
        newLayout = flow;
        break;
    }
    }
    newLayout->setContentsMargins(d->margins.left(), d->margins.top(), d->margins.right(),
                                  d->margins.bottom());
    setLayout(newLayout);
}

void ZWidget::addChild(ZWidget *item)
{
    if (!canAdopt(this, item))
        return;
    item->setParentItem(this);
    item->setParent(this);
}

void ZWidget::addGraphicsItem(ZWidget *item)
{
    addGraphicsItem(this, item);
}

void ZWidget::addGraphicsItem(ZWidget *receiver, ZWidget *item)
{
    if (!item || (receiver && !canAdopt(receiver, item)))
        return;
    item->setParentItem(receiver);
}

void ZWidget::addObjectItem(ZWidget *item)
{
    if (canAdopt(this, item))
        item->setParent(this);
}

void ZWidget::addLayoutItem(ZWidget *item)
{
    insertLayoutItem(item, -1);
}

void ZWidget::insertLayoutItem(ZWidget *item, int index)
{
    Z_D(ZWidget);
    if (!canAdopt(this, item))
        return;
    switch (d->layoutType) {
    case None:
    case Anchor:
        break;
    case VBox:
    case HBox:
        if (QGraphicsLinearLayout *linear = d->linearLayout()) {
            linear->insertItem(index, item);
            if (const Qt::Alignment alignment = item->d_func()->alignment)
                linear->setAlignment(item, alignment);
        }
        break;
    default:
        if (QGraphicsFlowLayout *flow = d->flowLayout())
            flow->insertItem(index, item);
        break;
    }
}

void ZWidget::removeChild(ZWidget *item)
{
    if (!item)
        return;
    if (item->parentItem() == this) {
        removeLayoutItem(item);
        item->setParentItem(nullptr);
    }
    if (item->parent() == this)
        item->setParent(nullptr);
}

void ZWidget::removeGraphicsItem(ZWidget *item)
{
    if (item && item->parentItem() == this) {
        removeLayoutItem(item);
        item->setParentItem(nullptr);
    }
}

void ZWidget::removeObjectItem(ZWidget *item)
{
    if (item && item->parent() == this)
        item->setParent(nullptr);
}

void ZWidget::removeLayoutItem(ZWidget *item)
{
    QGraphicsLayout *lay = layout();
    if (!item || !lay)
        return;
    for (int i = lay->count() - 1; i >= 0; --i) {
        if (lay->itemAt(i) == item) {
            lay->removeAt(i);
            item->d_func()->anchored = false;
            return;
        }
    }
}

int ZWidget::spacing() const
{
    return d_func()->spacing;
}

void ZWidget::setSpacing(int spacing)
{
    Z_D(ZWidget);
    if (d->spacing == spacing)
        return;
    d->spacing = spacing;
    if (QGraphicsLinearLayout *linear = d->linearLayout())
        linear->setSpacing(qMax(0, spacing));
}

int ZWidget::itemSpacing() const
{
    return d_func()->itemSpacing;
}

void ZWidget::setItemSpacing(int spacing)
{
    Z_D(ZWidget);
    if (d->itemSpacing == spacing)
        return;
    d->itemSpacing = spacing;
    if (QGraphicsFlowLayout *flow = d->flowLayout()) {
        flow->setSpacing(false, spacing);
        flow->setSpacing(true, spacing);
    }
}

QMargins ZWidget::margins() const
{
    return d_func()->margins;
}

void ZWidget::setMargins(const QMargins &margins)
{
    Z_D(ZWidget);
    if (d->margins == margins)
        return;
    d->margins = margins;
    if (QGraphicsLayout *lay = layout()) {
        lay->setContentsMargins(margins.left(), margins.top(), margins.right(), margins.bottom());
    } else if (d->hintsFollowChildren) {
        updateGeometry();
        // Such a widget places its children itself, inside the margins.
        QEvent change(QEvent::ContentsRectChange);
        QCoreApplication::sendEvent(this, &change);
    }
    d->scheduleIdealSize();
}

QString ZWidget::anchor() const
{
    return d_func()->anchor;
}

void ZWidget::setAnchor(const QString &anchor)
{
    Z_D(ZWidget);
    d->anchor = anchor;

    ZWidget *parent = d->parentZWidget();
    if (!parent || !parent->layout())
        return;
    QGraphicsAnchorLayout *lay = parent->d_func()->anchorLayout();
    // Dropping the item also drops every anchor it had.
    if (d->anchored && lay)
        parent->removeLayoutItem(this);
    d->anchored = false;
    if (!lay)
        return;

    struct Edge {
        Qt::AnchorPoint point = Qt::AnchorLeft;
        int spacing = 0;
    } edges[4];
    const QMetaEnum points = QMetaEnum::fromType<AnchorPoint>();
    const QStringList items = anchor.split(QLatin1Char('|'), Qt::SkipEmptyParts);
    for (int i = 0; i < qMin(4, int(items.size())); ++i) {
        const QStringList parts = items.at(i).split(QLatin1Char(':'));
        if (parts.size() < 2)
            continue;
        bool known = false;
        const int point = points.keyToValue(parts.at(0).trimmed().toLatin1().constData(), &known);
        edges[i].point = known ? Qt::AnchorPoint(point) : Qt::AnchorLeft;
        edges[i].spacing = parts.at(1).trimmed().toInt();
    }

    const auto add = [lay](QGraphicsLayoutItem *first, Qt::AnchorPoint firstEdge,
                           QGraphicsLayoutItem *second, Qt::AnchorPoint secondEdge, int spacing) {
        // The layout refuses such an anchor too, but with a warning per widget.
        if (isHorizontalEdge(firstEdge) != isHorizontalEdge(secondEdge))
            return;
        if (QGraphicsAnchor *a = lay->addAnchor(first, firstEdge, second, secondEdge))
            a->setSpacing(spacing);
    };
    add(lay, edges[0].point, this, Qt::AnchorLeft, edges[0].spacing);
    add(lay, edges[1].point, this, Qt::AnchorTop, edges[1].spacing);
    add(this, Qt::AnchorRight, lay, edges[2].point, edges[2].spacing);
    add(this, Qt::AnchorBottom, lay, edges[3].point, edges[3].spacing);
    d->anchored = true;
}

QGraphicsLayout *ZWidget::parentLayout() const
{
    QGraphicsWidget *parent = parentWidget();
    return parent ? parent->layout() : nullptr;
}

ZWidget::LayoutType ZWidget::parentLayoutType() const
{
    ZWidget *parent = d_func()->parentZWidget();
    return parent ? parent->layoutType() : None;
}

void ZWidget::activateLayout()
{
    Z_D(ZWidget);
    if (d->idealPending)
        resetSizeHint();
    if (QGraphicsLayout *lay = layout())
        lay->activate();
}

void ZWidget::invalidateLayout()
{
    if (QGraphicsLayout *lay = layout())
        lay->invalidate();
}

qreal ZWidget::fixWidth() const
{
    return d_func()->fixWidth;
}

// NaN and negatives unset a fixed extent.
static qreal fixExtent(qreal value)
{
    return value >= 0 ? qMin(value, qreal(QWIDGETSIZE_MAX)) : -1;
}

void ZWidget::setFixWidth(qreal width)
{
    Z_D(ZWidget);
    width = fixExtent(width);
    if (d->fixWidth == width)
        return;
    d->fixWidth = width;
    d->batchHints([&] {
        setMinimumWidth(width);
        setPreferredWidth(width);
        setMaximumWidth(width);
    });
}

qreal ZWidget::fixHeight() const
{
    return d_func()->fixHeight;
}

void ZWidget::setFixHeight(qreal height)
{
    Z_D(ZWidget);
    height = fixExtent(height);
    if (d->fixHeight == height)
        return;
    d->fixHeight = height;
    d->batchHints([&] {
        setMinimumHeight(height);
        setPreferredHeight(height);
        setMaximumHeight(height);
    });
}

QSizeF ZWidget::fixSize() const
{
    return QSizeF(fixWidth(), fixHeight());
}

void ZWidget::setFixSize(const QSizeF &size)
{
    Z_D(ZWidget);
    const qreal width = fixExtent(size.width());
    const qreal height = fixExtent(size.height());
    if (d->fixWidth == width || d->fixHeight == height) {
        setFixWidth(width);
        setFixHeight(height);
        return;
    }
    // Both change: one geometry update for all six hints.
    d->fixWidth = width;
    d->fixHeight = height;
    d->batchHints([&] {
        setMinimumSize(width, height);
        setPreferredSize(width, height);
        setMaximumSize(width, height);
    });
}

bool ZWidget::sizeToChild() const
{
    return d_func()->sizeToChild;
}

void ZWidget::setSizeToChild(bool on)
{
    Z_D(ZWidget);
    if (d->sizeToChild == on)
        return;
    d->sizeToChild = on;
    resetSizeHint();
}

bool ZWidget::widthToChild() const
{
    return d_func()->widthToChild;
}

void ZWidget::setWidthToChild(bool on)
{
    Z_D(ZWidget);
    if (d->widthToChild == on)
        return;
    d->widthToChild = on;
    resetSizeHint();
}

bool ZWidget::heightToChild() const
{
    return d_func()->heightToChild;
}

void ZWidget::setHeightToChild(bool on)
{
    Z_D(ZWidget);
    if (d->heightToChild == on)
        return;
    d->heightToChild = on;
    resetSizeHint();
}

QSizeF ZWidget::calcIdealSize() const
{
    return d_func()->idealSize(Qt::PreferredSize, -1);
}

void ZWidget::resetSizeHint()
{
    Z_D(ZWidget);
    d->idealPending = false;
    // Drops the cached hints; outside a layout this also resizes the widget
    // into its new minimum and maximum.
    updateGeometry();
    if (!parentLayoutItem() && (d->followsWidth() || d->followsHeight())) {
        // Nobody else will give the widget its ideal size.
        const QSizeF ideal = calcIdealSize();
        resize(d->followsWidth() ? ideal.width() : size().width(),
               d->followsHeight() ? ideal.height() : size().height());
    }
}

void ZWidget::clearSizeHint()
{
    Z_D(ZWidget);
    d->fixWidth = -1;
    d->fixHeight = -1;
    setMinimumSize(-1, -1);
    setPreferredSize(-1, -1);
    setMaximumSize(-1, -1);
    resetSizeHint();
}

QSizeF ZWidget::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    Z_D(const ZWidget);
    QSizeF hint = QGraphicsWidget::sizeHint(which, constraint);
    const bool width = d->followsWidth();
    const bool height = d->followsHeight();
    if ((width || height) && which <= Qt::MaximumSize) {
        const QSizeF ideal = d->idealSize(which, constraint.width());
        if (width)
            hint.setWidth(ideal.width());
        if (height)
            hint.setHeight(ideal.height());
    }
    return hint;
}

void ZWidget::updateGeometry()
{
    Z_D(ZWidget);
    if (d->batchingHints)
        return;
    // QGraphicsLayout::activate() ends by telling the widget that its hints
    // may have changed, which invalidates the parent's layout: its next pass
    // measures and places every sibling again. When the parent's layout has
    // measured this widget since its own layout last changed, the hints are
    // the ones it knows.
    if (std::exchange(d->activatingLayout, false) && d->parentLayoutKnowsHints())
        return;
    QGraphicsWidget::updateGeometry();
    if (parentLayoutItem())
        return;
    if (ZWidget *parent = d_func()->parentZWidget(); parent && parent->d_func()->hintsFollowChildren)
        parent->updateGeometry();
}

QColor ZWidget::backgroundColor() const
{
    return d_func()->background.color();
}

void ZWidget::setBackgroundColor(const QColor &color)
{
    if (!color.isValid()) {
        unsetBackgroundBrush();
        return;
    }
    setBackgroundBrush(QBrush(color));
}

void ZWidget::setBackgroundColor(int r, int g, int b, int a)
{
    setBackgroundColor(QColor(r, g, b, a));
}

QtGradient ZWidget::backgroundGradient() const
{
    return d_func()->gradient;
}

void ZWidget::setBackgroundGradient(const QtGradient &gradient)
{
    if (!gradient.isValid()) {
        unsetBackgroundBrush();
        return;
    }
    setBackgroundBrush(QBrush(gradient.gradient()));
}

QBrush ZWidget::backgroundBrush() const
{
    return d_func()->background;
}

void ZWidget::setBackgroundBrush(const QBrush &brush)
{
    Z_D(ZWidget);
    if (d->background == brush)
        return;
    d->background = brush;
    d->gradient = brush.gradient() ? QtGradient(*brush.gradient()) : QtGradient();
    updateBackgroundBrush();
}

void ZWidget::unsetBackgroundBrush()
{
    Z_D(ZWidget);
    d->background = QBrush();
    d->gradient = QtGradient();
    setAutoFillBackground(false);
}

Qt::BrushStyle ZWidget::backgroundStyle() const
{
    return d_func()->background.style();
}

void ZWidget::setBackgroundStyle(Qt::BrushStyle style)
{
    Z_D(ZWidget);
    // Gradient and texture styles need their data; only a brush gives them.
    if (style < Qt::NoBrush || style > Qt::DiagCrossPattern || d->background.style() == style)
        return;
    d->background.setStyle(style);
    d->gradient = QtGradient();
    updateBackgroundBrush();
}

void ZWidget::updateBackgroundBrush()
{
    Z_D(ZWidget);
    if (d->background.style() == Qt::NoBrush)
        return;
    // A gradient is laid over the widget's own rectangle (see QtGradient).
    const QBrush brush = d->gradient.isValid() ? d->gradient.brush(rect()) : d->background;
    QPalette pal = palette();
    pal.setBrush(QPalette::Window, hasTheme() ? ZTheme::convertToThemeBrush(brush) : brush);
    setPalette(pal);
    setAutoFillBackground(true);
}

bool ZWidget::grayToDisable() const
{
    return d_func()->grayToDisable;
}

void ZWidget::setGrayToDisable(bool on)
{
    Z_D(ZWidget);
    if (d->grayToDisable == on)
        return;
    d->grayToDisable = on;
    d->updateGrayEffect();
}

void ZWidget::on_enabledChanged()
{
    Z_D(ZWidget);
    if (d->grayToDisable)
        d->updateGrayEffect();
}

qreal ZWidget::xRotate() const
{
    return d_func()->xRotate;
}

void ZWidget::setXRotate(qreal degrees)
{
    Z_D(ZWidget);
    if (d->xRotate == degrees || !qIsFinite(degrees))
        return;
    d->xRotate = degrees;
    d->updateTransform();
}

qreal ZWidget::yRotate() const
{
    return d_func()->yRotate;
}

void ZWidget::setYRotate(qreal degrees)
{
    Z_D(ZWidget);
    if (d->yRotate == degrees || !qIsFinite(degrees))
        return;
    d->yRotate = degrees;
    d->updateTransform();
}

qreal ZWidget::zRotate() const
{
    return d_func()->zRotate;
}

void ZWidget::setZRotate(qreal degrees)
{
    Z_D(ZWidget);
    if (d->zRotate == degrees || !qIsFinite(degrees))
        return;
    d->zRotate = degrees;
    d->updateTransform();
}

QPointF ZWidget::originPoint() const
{
    return d_func()->originPoint;
}

void ZWidget::setOriginPoint(const QPointF &origin)
{
    Z_D(ZWidget);
    if (d->originPoint == origin || !qIsFinite(origin.x()) || !qIsFinite(origin.y()))
        return;
    d->originPoint = origin;
    d->updateTransform();
}

bool ZWidget::content() const
{
    return d_func()->content;
}

void ZWidget::setContent(bool on)
{
    Z_D(ZWidget);
    if (d->content == on)
        return;
    d->content = on;
    update();
}

bool ZWidget::bylayout() const
{
    const QGraphicsLayoutItem *parent = parentLayoutItem();
    return parent && parent->isLayout();
}

void ZWidget::setBylayout(bool on)
{
    if (bylayout() == on)
        return;
    ZWidget *parent = d_func()->parentZWidget();
    if (!parent)
        return;
    if (on)
        parent->addLayoutItem(this);
    else
        parent->removeLayoutItem(this);
}

Qt::Alignment ZWidget::alignment() const
{
    return d_func()->alignment;
}

void ZWidget::setAlignment(Qt::Alignment alignment)
{
    Z_D(ZWidget);
    if (d->alignment == alignment)
        return;
    d->alignment = alignment;
    if (auto *linear = dynamic_cast<QGraphicsLinearLayout *>(parentLayout()))
        linear->setAlignment(this, alignment);
}

ZWidget::DragPolicy ZWidget::dragPolicy() const
{
    return d_func()->dragPolicy;
}

void ZWidget::setDragPolicy(DragPolicy policy)
{
    d_func()->dragPolicy = policy;
}

ZWidget::DragPolicy ZWidget::resolveDragPolicy(QGraphicsItem *item, const QPointF &scenePos)
{
    for (; item; item = item->parentItem()) {
        const ZWidget *w = asZWidget(item);
        if (!w)
            continue;
        switch (w->hitTest(w->mapFromScene(scenePos))) {
        case AskParent:
            continue;
        case WindowMove:
            return WindowMove;
        default:
            return Nothing;
        }
    }
    return Nothing;
}

ZWidget::WidgetFlags ZWidget::widgetFlags() const
{
    WidgetFlags result;
    const GraphicsItemFlags itemFlags = flags();
    for (GraphicsItemFlag bit : kWidgetFlagBits) {
        if (itemFlags & bit)
            result |= WidgetFlag(int(bit));
    }
    return result;
}

void ZWidget::setWidgetFlags(WidgetFlags widgetFlags)
{
    GraphicsItemFlags itemFlags = flags();
    for (GraphicsItemFlag bit : kWidgetFlagBits)
        itemFlags.setFlag(bit, widgetFlags.testFlag(WidgetFlag(int(bit))));
    setFlags(itemFlags);
}

bool ZWidget::itemPanel() const
{
    return flags() & ItemIsPanel;
}

void ZWidget::setItemPanel(bool on)
{
    setFlag(ItemIsPanel, on);
}

Qt::ContextMenuPolicy ZWidget::contextMenuPolicy() const
{
    return d_func()->contextMenuPolicy;
}

void ZWidget::setContextMenuPolicy(Qt::ContextMenuPolicy policy)
{
    d_func()->contextMenuPolicy = policy;
}

void ZWidget::setAcceptedMouseButtons(Qt::MouseButtons buttons)
{
    QGraphicsItem::setAcceptedMouseButtons(buttons);
}

ZWidget::ThemePolicy ZWidget::themePolicy() const
{
    return d_func()->themePolicy;
}

void ZWidget::setThemePolicy(ThemePolicy policy)
{
    Z_D(ZWidget);
    if (d->themePolicy == policy)
        return;
    d->themePolicy = policy;
    clearThemeCheckFlag();
}

bool ZWidget::hasTheme() const
{
    Z_D(const ZWidget);
    switch (d->themePolicy) {
    case NoTheme:
        return false;
    case ThemeWithParent:
        break;
    default:
        return true;
    }
    if (!d->themeChecked) {
        d->themeResult = false;
        for (QGraphicsItem *item = parentItem(); item; item = item->parentItem()) {
            const ZWidget *ancestor = asZWidget(item);
            if (!ancestor || ancestor->d_func()->themePolicy == ThemeWithParent)
                continue;
            d->themeResult = ancestor->d_func()->themePolicy != NoTheme;
            break;
        }
        d->themeChecked = true;
    }
    return d->themeResult;
}

void ZWidget::clearThemeCheckFlag()
{
    // Descendants that follow their parents may have cached an answer that
    // depended on this widget.
    forEachZWidgetBelow(this, [](ZWidget *w) { w->d_func()->themeChecked = false; });
}

void ZWidget::changeTheme()
{
    // Collected first: a theme change may create or delete children.
    QList<QPointer<ZWidget>> widgets;
    forEachZWidgetBelow(this, [&widgets](ZWidget *w) { widgets.append(w); });
    for (const QPointer<ZWidget> &w : std::as_const(widgets)) {
        if (w && w->hasTheme())
            w->doThemeChange();
    }
}

QString ZWidget::xmlPath() const
{
    return d_func()->xmlPath;
}

void ZWidget::setXmlPath(const QString &path)
{
    d_func()->xmlPath = path;
}

QString ZWidget::skinName() const
{
    return d_func()->skinName;
}

void ZWidget::setSkinName(const QString &name)
{
    Z_D(ZWidget);
    if (d->skinName == name)
        return;
    d->skinName = name;
    d->applySkin();
}

bool ZWidget::setPropertyEx(const char *name, const char *value)
{
    return ZXmlUI::setPropertyEx(this, name, value);
}

QObject *ZWidget::findObject(const QString &name) const
{
    if (name.isEmpty())
        return nullptr;

    // A node is an object, a graphics item or both; plain items are walked
    // through so that widgets below them are found too.
    struct Node {
        QObject *object;
        QGraphicsItem *item;
    };
    std::deque<Node> queue;
    QSet<const QObject *> seen;
    const auto enqueueChildren = [&](const Node &node) {
        if (node.object) {
            for (QObject *child : node.object->children()) {
                if (!seen.contains(child)) {
                    seen.insert(child);
                    auto *graphics = qobject_cast<QGraphicsObject *>(child);
                    queue.push_back({child, graphics});
                }
            }
        }
        if (node.item) {
            for (QGraphicsItem *child : node.item->childItems()) {
                QObject *object = child->toGraphicsObject();
                if (object && seen.contains(object))
                    continue;
                if (object)
                    seen.insert(object);
                queue.push_back({object, child});
            }
        }
    };

    auto *self = const_cast<ZWidget *>(this);
    seen.insert(self);
    enqueueChildren({self, self});
    while (!queue.empty()) {
        const Node node = queue.front();
        queue.pop_front();
        if (node.object && node.object->objectName() == name)
            return node.object;
        enqueueChildren(node);
    }
    return nullptr;
}

QGraphicsView *ZWidget::view() const
{
    QGraphicsScene *s = scene();
    if (!s)
        return nullptr;
    const QList<QGraphicsView *> views = s->views();
    return views.isEmpty() ? nullptr : views.first();
}

QWidget *ZWidget::viewport() const
{
    QGraphicsView *v = view();
    return v ? v->viewport() : nullptr;
}

QRectF ZWidget::rectToScene() const
{
    return mapRectToScene(rect());
}

QRectF ZWidget::rectToView() const
{
    QGraphicsView *v = view();
    return v ? v->viewportTransform().mapRect(rectToScene()) : QRectF();
}

QRectF ZWidget::rectToScreen() const
{
    QGraphicsView *v = view();
    if (!v)
        return QRectF();
    return rectToView().translated(v->viewport()->mapToGlobal(QPointF(0, 0)));
}

QRect ZWidget::geometryToScreen() const
{
    return rectToScreen().toRect();
}

bool ZWidget::isUnderMouseEx() const
{
    QGraphicsScene *s = scene();
    if (!s || !isVisible())
        return false;
    const QPoint global = QCursor::pos();
    const QList<QGraphicsView *> views = s->views();
    for (QGraphicsView *v : views) {
        QWidget *port = v->viewport();
        if (!port->isVisible())
            continue;
        const QPoint local = port->mapFromGlobal(global);
        if (port->rect().contains(local) && contains(mapFromScene(v->mapToScene(local))))
            return true;
    }
    return false;
}

void ZWidget::removeBadEventWhenDelete()
{
    d_func()->removePostedEvents = true;
}

void ZWidget::visibleEvent(bool)
{
}

void ZWidget::showEvent(QShowEvent *event)
{
    QGraphicsWidget::showEvent(event);
    visibleEvent(true);
}

void ZWidget::hideEvent(QHideEvent *event)
{
    QGraphicsWidget::hideEvent(event);
    visibleEvent(false);
}

QVariant ZWidget::itemChange(GraphicsItemChange change, const QVariant &value)
{
    if (ZWidgetPrivate::showVisibleAllAlong(this, change, value))
        return value;
    Z_D(ZWidget);
    if (ZWidgetPrivate::leavingOnTheWayOut(d->dying, change))
        return value;
    const QVariant result = QGraphicsWidget::itemChange(change, value);
    switch (change) {
    case ItemParentHasChanged:
        d->anchored = false;
        clearThemeCheckFlag();
        break;
    case ItemEnabledHasChanged:
        on_enabledChanged();
        break;
    case ItemScenePositionHasChanged:
        Q_EMIT scenePosition(value.toPointF());
        break;
    case ItemPositionHasChanged:
    case ItemVisibleHasChanged:
        d->childGeometryChanged(false);
        break;
    case ItemChildAddedChange:
    case ItemChildRemovedChange:
        if (d->layoutType == None)
            d->scheduleIdealSize();
        break;
    default:
        break;
    }
    return result;
}

bool ZWidget::event(QEvent *event)
{
    Z_D(ZWidget);
    if (event->type() == QEvent::LayoutRequest && d->idealPending)
        resetSizeHint();
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::GraphicsSceneResize) {
        // Either activates a layout that is not active (see updateGeometry()).
        auto *own = dynamic_cast<ZLinearLayout *>(layout());
        if (own && !own->isActivated()) {
            own->forgetPlacing();
            const QScopedValueRollback activating(d->activatingLayout, true);
            return QGraphicsWidget::event(event);
        }
    }
    return QGraphicsWidget::event(event);
}

void ZWidget::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    QGraphicsWidget::resizeEvent(event);
    Z_D(ZWidget);
    d->childGeometryChanged(true);
    // A relative gradient stretches with the widget.
    if (d->gradient.isValid() && d->gradient.isRelative())
        updateBackgroundBrush();
    // A flow widget whose height follows its children needs a new height
    // for every new width.
    if (d->layoutType == Flow && d->followsHeight() && !d->followsWidth()
        && event->oldSize().width() != event->newSize().width()) {
        d->scheduleIdealSize();
    }
}

void ZWidget::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    switch (d_func()->contextMenuPolicy) {
    case Qt::NoContextMenu:
        event->ignore();
        break;
    case Qt::PreventContextMenu:
        event->accept();
        break;
    case Qt::CustomContextMenu:
        event->accept();
        Q_EMIT customContextMenuRequested(event->pos());
        break;
    default:
        QGraphicsWidget::contextMenuEvent(event);
        break;
    }
}

Z_REGISTER_WIDGET(ZWidget);
