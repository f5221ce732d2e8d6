#include "zscrollarea_p.h"
#include "zcreator.h"
#include "zscrollbar.h"

#include <QtWidgets/qgraphicssceneevent.h>

#include <cmath>

namespace {

Qt::ScrollBarPolicy resolve(Qt::ScrollBarPolicy policy, bool needed)
{
    if (policy == Qt::ScrollBarAlwaysOn || policy == Qt::ScrollBarAlwaysOff)
        return policy;
    return needed ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff;
}

Qt::ScrollBarPolicy known(Qt::ScrollBarPolicy policy)
{
    return policy == Qt::ScrollBarAlwaysOn || policy == Qt::ScrollBarAlwaysOff ? policy : Qt::ScrollBarAsNeeded;
}

} // namespace

// ---------------------------------------------------------------------------
// ZScrollAreaPrivate

void ZScrollAreaPrivate::init()
{
    Z_Q(ZScrollArea);
    viewport = new ZWidget(q);
    viewport->setObjectName(QStringLiteral("viewport"));
    viewport->setFlag(QGraphicsItem::ItemClipsChildrenToShape);

    vbar = new ZScrollBar(Qt::Vertical, q);
    hbar = new ZScrollBar(Qt::Horizontal, q);
    vbar->setObjectName(QStringLiteral("vscroll"));
    hbar->setObjectName(QStringLiteral("hscroll"));
    for (ZScrollBar *bar : {vbar.data(), hbar.data()}) {
        bar->setZValue(1);
        bar->setFrameThickness(barThickness);
        bar->setSingleStep(20);
        bar->setDeltaFactor(ZScrollArea::DefaultWheelStep);
        bar->setRange(0, 0);
        bar->hide();
    }
    QObject::connect(vbar, &ZScrollBar::valueChanged, q, &ZScrollArea::on_vscroll_value_changed);
    QObject::connect(hbar, &ZScrollBar::valueChanged, q, &ZScrollArea::on_hscroll_value_changed);
    q->setFlag(QGraphicsItem::ItemClipsChildrenToShape);
}

bool ZScrollAreaPrivate::needHScrollBar(qreal viewportWidth) const
{
    if (!content)
        return false;
    // A width the area gave the content is no reason for a bar, unless the
    // content cannot shrink below it; otherwise a stretched content would
    // call for a horizontal bar as soon as a vertical one narrows the viewport.
    qreal width = content->size().width();
    if (widgetResizable && width == stretched.width())
        width = qMin(width, content->effectiveSizeHint(Qt::MinimumSize).width());
    return width > viewportWidth;
}

bool ZScrollAreaPrivate::needVScrollBar(qreal viewportHeight) const
{
    if (!content)
        return false;
    qreal height = content->size().height();
    if (widgetResizable && height == stretched.height())
        height = qMin(height, content->effectiveSizeHint(Qt::MinimumSize).height());
    return height > viewportHeight;
}

void ZScrollAreaPrivate::decidePolicies()
{
    Z_Q(const ZScrollArea);
    const QSizeF size = q->size();
    const qreal t = contentUnderBar ? 0 : barThickness;
    // A shown bar narrows the viewport, which can call for the other bar:
    // start from no bars and add until nothing changes (at most both).
    bool h = hbarPolicy == Qt::ScrollBarAlwaysOn;
    bool v = vbarPolicy == Qt::ScrollBarAlwaysOn;
    for (int round = 0; round < 3; ++round) {
        const bool nextV = resolve(vbarPolicy, needVScrollBar(size.height() - (h ? t : 0))) == Qt::ScrollBarAlwaysOn;
        const bool nextH = resolve(hbarPolicy, needHScrollBar(size.width() - (nextV ? t : 0))) == Qt::ScrollBarAlwaysOn;
        if (nextV == v && nextH == h)
            break;
        v = nextV;
        h = nextH;
    }
    hEffective = h ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff;
    vEffective = v ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff;
}

void ZScrollAreaPrivate::placeBar(ZScrollBar *bar, bool shown, const QRectF &rect, qreal page, qreal contentExtent)
{
    if (!bar)
        return;
    if (!shown) {
        bar->hide();
        bar->setGeometry(QRectF(rect.topLeft(), QSizeF(0, 0)));
        // Back at the start, so that the content returns to its place.
        bar->setRange(0, 0);
        return;
    }
    if (bar->geometry() != rect)
        bar->setGeometry(rect);
    bar->setPageStep(page);
    bar->setRange(0, qMax<qreal>(0, contentExtent - page));
    bar->show();
}

// ---------------------------------------------------------------------------
// ZScrollArea

ZScrollArea::ZScrollArea(QGraphicsItem *parent)
    : ZScrollArea(*new ZScrollAreaPrivate, parent)
{
}

ZScrollArea::ZScrollArea(ZScrollAreaPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    d_func()->init();
}

ZScrollArea::~ZScrollArea()
{
    // The content goes down with the viewport after this part of the area
    // is gone: it must not call back.
    Z_D(ZScrollArea);
    if (d->content)
        disconnect(d->content, nullptr, this, nullptr);
}

QObject *ZScrollArea::setContentWidget(QObject *object)
{
    Z_D(ZScrollArea);
    auto *widget = qobject_cast<ZWidget *>(object);
    if (!widget || widget == this || widget->isAncestorOf(this) || widget == d->viewport
        || widget == d->vbar || widget == d->hbar)
        return d->content;
    // Nor anything that owns the area: the object tree would loop.
    for (const QObject *owner = parent(); owner; owner = owner->parent()) {
        if (owner == widget)
            return d->content;
    }
    if (widget == d->content) {
        disconnect(widget, &QGraphicsWidget::geometryChanged, this, &ZScrollArea::updateScroll);
        return widget;
    }
    ZWidget *previous = d->content;
    if (previous)
        disconnect(previous, nullptr, this, nullptr);

    if (auto *oldParent = qobject_cast<ZWidget *>(widget->parentWidget()))
        oldParent->removeLayoutItem(widget);
    d->content = widget;
    widget->setParentItem(d->viewport);
    widget->setParent(d->viewport);
    connect(widget, &QGraphicsWidget::geometryChanged, this, &ZScrollArea::updateScroll);
    // A deleted content leaves nothing to scroll.
    connect(widget, &QObject::destroyed, this, [this] { updateScrollArea(); });
    d->vbar->setValue(0);
    d->hbar->setValue(0);
    widget->setPos(0, 0);
    updateScrollArea();
    resizeContent();
    return previous;
}

QObject *ZScrollArea::contentWidget() const
{
    return d_func()->content;
}

ZScrollBar *ZScrollArea::vScrollBar() const
{
    return d_func()->vbar;
}

ZScrollBar *ZScrollArea::hScrollBar() const
{
    return d_func()->hbar;
}

ZWidget *ZScrollArea::viewport() const
{
    return d_func()->viewport;
}

QPoint ZScrollArea::scrollPos() const
{
    return QPointF(hscrollPos(), vscrollPos()).toPoint();
}

qreal ZScrollArea::hscrollPos() const
{
    return d_func()->hbar ? d_func()->hbar->value() : 0;
}

qreal ZScrollArea::vscrollPos() const
{
    return d_func()->vbar ? d_func()->vbar->value() : 0;
}

void ZScrollArea::scrollTo(qreal x, qreal y)
{
    Z_D(ZScrollArea);
    if (d->hbar)
        d->hbar->setValue(x);
    if (d->vbar)
        d->vbar->setValue(y);
}

void ZScrollArea::scrollTo(const QPointF &pos)
{
    scrollTo(pos.x(), pos.y());
}

void ZScrollArea::scrollToStart(Qt::Orientations orientations)
{
    Z_D(ZScrollArea);
    if (d->hbar && orientations.testFlag(Qt::Horizontal))
        d->hbar->setValue(d->hbar->minimum());
    if (d->vbar && orientations.testFlag(Qt::Vertical))
        d->vbar->setValue(d->vbar->minimum());
}

void ZScrollArea::scrollToEnd(Qt::Orientations orientations)
{
    Z_D(ZScrollArea);
    if (d->hbar && orientations.testFlag(Qt::Horizontal))
        d->hbar->setValue(d->hbar->maximum());
    if (d->vbar && orientations.testFlag(Qt::Vertical))
        d->vbar->setValue(d->vbar->maximum());
}

bool ZScrollArea::widgetResizable() const
{
    return d_func()->widgetResizable;
}

void ZScrollArea::setWidgetResizable(bool on)
{
    Z_D(ZScrollArea);
    if (on == d->widgetResizable)
        return;
    d->widgetResizable = on;
    // Whether a bar is needed depends on it, too.
    updateScrollArea();
    resizeContent();
}

bool ZScrollArea::contentUnderBar() const
{
    return d_func()->contentUnderBar;
}

void ZScrollArea::setContentUnderBar(bool on)
{
    Z_D(ZScrollArea);
    if (on == d->contentUnderBar)
        return;
    d->contentUnderBar = on;
    updateScrollArea();
    resizeContent();
}

qreal ZScrollArea::barOpacity() const
{
    return d_func()->barOpacity;
}

void ZScrollArea::setBarOpacity(qreal opacity)
{
    Z_D(ZScrollArea);
    if (!std::isfinite(opacity))
        return;
    opacity = qBound<qreal>(0, opacity, 1);
    if (opacity == d->barOpacity)
        return;
    d->barOpacity = opacity;
    for (ZScrollBar *bar : {d->vbar.data(), d->hbar.data()}) {
        if (bar)
            bar->setOpacity(opacity);
    }
}

Qt::ScrollBarPolicy ZScrollArea::hbarPolicy() const
{
    return d_func()->hbarPolicy;
}

Qt::ScrollBarPolicy ZScrollArea::vbarPolicy() const
{
    return d_func()->vbarPolicy;
}

void ZScrollArea::setHScrollBarPolicy(Qt::ScrollBarPolicy policy)
{
    Z_D(ZScrollArea);
    policy = known(policy);
    if (policy == d->hbarPolicy)
        return;
    d->hbarPolicy = policy;
    updateScrollArea();
    resizeContent();
}

void ZScrollArea::setVScrollBarPolicy(Qt::ScrollBarPolicy policy)
{
    Z_D(ZScrollArea);
    policy = known(policy);
    if (policy == d->vbarPolicy)
        return;
    d->vbarPolicy = policy;
    updateScrollArea();
    resizeContent();
}

void ZScrollArea::setScrollBarPolicy(Qt::ScrollBarPolicy policy)
{
    setHScrollBarPolicy(policy);
    setVScrollBarPolicy(policy);
}

int ZScrollArea::barThickness() const
{
    return d_func()->barThickness;
}

void ZScrollArea::setBarThickness(int thickness)
{
    Z_D(ZScrollArea);
    if (thickness < 0 || thickness == d->barThickness)
        return;
    d->barThickness = thickness;
    // The bars ask for what they are given.
    for (ZScrollBar *bar : {d->vbar.data(), d->hbar.data()}) {
        if (bar)
            bar->setFrameThickness(thickness);
    }
    updateScrollArea();
    resizeContent();
}

bool ZScrollArea::dragContent() const
{
    return d_func()->dragContent;
}

void ZScrollArea::setDragContent(bool on)
{
    d_func()->dragContent = on;
}

Qt::ScrollBarPolicy ZScrollArea::effectiveHPolicy() const
{
    return d_func()->hEffective;
}

Qt::ScrollBarPolicy ZScrollArea::effectiveVPolicy() const
{
    return d_func()->vEffective;
}

void ZScrollArea::addItem(ZWidget *item)
{
    insertItem(item, -1);
}

void ZScrollArea::insertItem(ZWidget *item, int index)
{
    Z_D(ZScrollArea);
    if (item && !d->content) {
        setContentWidget(item);
        if (d->content == item)
            return;
    }
    ZWidget::insertItem(item, index);
}

void ZScrollArea::removeItem(ZWidget *item)
{
    Z_D(ZScrollArea);
    if (!item || item != d->content) {
        ZWidget::removeItem(item);
        return;
    }
    disconnect(item, nullptr, this, nullptr);
    d->content = nullptr;
    item->setParentItem(nullptr);
    item->setParent(nullptr);
    updateScrollArea();
}

ZWidget::DragPolicy ZScrollArea::hitTest(const QPointF &pos) const
{
    return d_func()->dragContent ? Nothing : ZWidget::hitTest(pos);
}

void ZScrollArea::updateScroll()
{
    Z_D(ZScrollArea);
    QObject *from = sender();
    if (from && from == d->content.data()) {
        // Scrolling moves the content without resizing it.
        if (d->content->size() != d->contentSize)
            updateScrollArea();
    } else {
        updateScrollArea();
    }
    resizeContent();
}

void ZScrollArea::on_vscroll_value_changed(qreal value)
{
    Z_D(ZScrollArea);
    if (d->content)
        d->content->setPos(d->content->x(), -value);
}

void ZScrollArea::on_hscroll_value_changed(qreal value)
{
    Z_D(ZScrollArea);
    if (d->content)
        d->content->setPos(-value, d->content->y());
}

void ZScrollArea::updateScrollArea()
{
    Z_D(ZScrollArea);
    if (!d->viewport)
        return;
    d->decidePolicies();
    const QSizeF size = this->size();
    const qreal t = d->barThickness;
    const bool hShown = d->hEffective == Qt::ScrollBarAlwaysOn;
    const bool vShown = d->vEffective == Qt::ScrollBarAlwaysOn;

    QRectF view(QPointF(), size);
    QRectF vrect;
    QRectF hrect;
    if (!d->contentUnderBar) {
        view.setWidth(qMax<qreal>(0, size.width() - (vShown ? t : 0)));
        view.setHeight(qMax<qreal>(0, size.height() - (hShown ? t : 0)));
        vrect = QRectF(view.right(), 0, t, view.height());
        hrect = QRectF(0, view.bottom(), view.width(), t);
    } else {
        // Over the content; the corner stays free when both are shown.
        vrect = QRectF(size.width() - t, 0, t, qMax<qreal>(0, size.height() - (hShown ? t : 0)));
        hrect = QRectF(0, size.height() - t, qMax<qreal>(0, size.width() - (vShown ? t : 0)), t);
    }
    if (d->viewport->geometry() != view)
        d->viewport->setGeometry(view);

    const QSizeF contentSize = d->content ? d->content->size() : QSizeF();
    d->contentSize = contentSize;
    d->placeBar(d->vbar, vShown, vrect, view.height(), contentSize.height());
    d->placeBar(d->hbar, hShown, hrect, view.width(), contentSize.width());
}

void ZScrollArea::resizeContent()
{
    Z_D(ZScrollArea);
    if (!d->widgetResizable || !d->content || !d->viewport) {
        d->stretched = QSizeF(-1, -1);
        return;
    }
    const bool hOff = d->hEffective == Qt::ScrollBarAlwaysOff;
    const bool vOff = d->vEffective == Qt::ScrollBarAlwaysOff;
    if (!hOff && !vOff) {
        d->stretched = QSizeF(-1, -1);
        return;
    }
    QSizeF size = d->content->size();
    if (hOff)
        size.setWidth(d->viewport->size().width());
    if (vOff)
        size.setHeight(d->viewport->size().height());
    // Remembered first: the resize calls back into the layout.
    d->stretched = QSizeF(hOff ? size.width() : -1, vOff ? size.height() : -1);
    if (size != d->content->size())
        d->content->resize(size);
    // The content's limits may have kept it from the size asked for.
    const QSizeF actual = d->content ? d->content->size() : QSizeF();
    d->stretched = QSizeF(hOff ? actual.width() : -1, vOff ? actual.height() : -1);
}

void ZScrollArea::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    ZWidget::resizeEvent(event);
    updateScrollArea();
    resizeContent();
}

void ZScrollArea::wheelEvent(QGraphicsSceneWheelEvent *event)
{
    Z_D(ZScrollArea);
    if (d->vbar && d->vEffective == Qt::ScrollBarAlwaysOn)
        d->vbar->handleMouseWheelEvent(event);
    else if (d->hbar && d->hEffective == Qt::ScrollBarAlwaysOn)
        d->hbar->handleMouseWheelEvent(event);
    else
        event->ignore();
}

void ZScrollArea::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    Z_D(ZScrollArea);
    if (!d->dragContent) {
        event->ignore();
        return;
    }
    event->accept();
    d->dragFrom = event->scenePos();
}

void ZScrollArea::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    Z_D(ZScrollArea);
    if (!d->dragContent || !(event->buttons() & Qt::LeftButton))
        return;
    // In the area's own units, whatever the view's scale.
    const QPointF delta = mapFromScene(event->scenePos()) - mapFromScene(d->dragFrom);
    d->dragFrom = event->scenePos();
    if (d->hbar)
        d->hbar->setValue(d->hbar->value() - delta.x());
    if (d->vbar)
        d->vbar->setValue(d->vbar->value() - delta.y());
}

Z_REGISTER_WIDGET(ZScrollArea);
