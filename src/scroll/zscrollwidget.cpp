#include "zscrollwidget_p.h"
#include "zcreator.h"

#include <QtCore/qcoreevent.h>

// ---------------------------------------------------------------------------
// ZScrollWidgetPrivate

void ZScrollWidgetPrivate::init()
{
    Z_Q(ZScrollWidget);
    inner = new ZWidget;
    inner->setObjectName(QStringLiteral("content"));
    q->setContentWidget(inner);
    QObject::connect(viewport, &QGraphicsWidget::geometryChanged, q, [this] { scheduleSizeFix(); });
}

void ZScrollWidgetPrivate::scheduleSizeFix()
{
    if (!sizeTimer.isActive())
        sizeTimer.start(0, q_func());
}

// ---------------------------------------------------------------------------
// ZScrollWidget

ZScrollWidget::ZScrollWidget(QGraphicsItem *parent)
    : ZScrollWidget(*new ZScrollWidgetPrivate, parent)
{
}

ZScrollWidget::ZScrollWidget(ZScrollWidgetPrivate &dd, QGraphicsItem *parent)
    : ZScrollArea(dd, parent)
{
    d_func()->init();
}

ZScrollWidget::~ZScrollWidget()
{
    Z_D(ZScrollWidget);
    if (d->viewport)
        disconnect(d->viewport, nullptr, this, nullptr);
}

ZWidget *ZScrollWidget::layoutWidget()
{
    Z_D(ZScrollWidget);
    return d->inner ? d->inner.data() : this;
}

void ZScrollWidget::addItem(ZWidget *item)
{
    insertItem(item, -1);
}

void ZScrollWidget::insertItem(ZWidget *item, int index)
{
    Z_D(ZScrollWidget);
    if (d->inner)
        d->inner->insertItem(item, index);
    else
        ZWidget::insertItem(item, index);
}

void ZScrollWidget::removeItem(ZWidget *item)
{
    Z_D(ZScrollWidget);
    if (d->inner && item && item->parentItem() == d->inner)
        d->inner->removeItem(item);
    else
        ZScrollArea::removeItem(item);
}

ZWidget::LayoutType ZScrollWidget::layoutType() const
{
    Z_D(const ZScrollWidget);
    return d->inner ? d->inner->layoutType() : ZWidget::layoutType();
}

void ZScrollWidget::setLayoutType(LayoutType type)
{
    Z_D(ZScrollWidget);
    if (!d->inner)
        return;
    d->inner->setLayoutType(type);
    if (type == VBox) {
        setHScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        d->inner->setHeightToChild(true);
    } else if (type == HBox) {
        setVScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        d->inner->setWidthToChild(true);
    }
    d->scheduleSizeFix();
}

QMargins ZScrollWidget::margins() const
{
    Z_D(const ZScrollWidget);
    return d->inner ? d->inner->margins() : ZWidget::margins();
}

void ZScrollWidget::setMargins(const QMargins &margins)
{
    if (ZWidget *inner = d_func()->inner)
        inner->setMargins(margins);
}

int ZScrollWidget::spacing() const
{
    Z_D(const ZScrollWidget);
    return d->inner ? d->inner->spacing() : ZWidget::spacing();
}

void ZScrollWidget::setSpacing(int spacing)
{
    if (ZWidget *inner = d_func()->inner)
        inner->setSpacing(spacing);
}

int ZScrollWidget::itemSpacing() const
{
    Z_D(const ZScrollWidget);
    return d->inner ? d->inner->itemSpacing() : ZWidget::itemSpacing();
}

void ZScrollWidget::setItemSpacing(int spacing)
{
    if (ZWidget *inner = d_func()->inner)
        inner->setItemSpacing(spacing);
}

void ZScrollWidget::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    ZScrollArea::resizeEvent(event);
    d_func()->scheduleSizeFix();
}

void ZScrollWidget::timerEvent(QTimerEvent *event)
{
    Z_D(ZScrollWidget);
    if (event->timerId() != d->sizeTimer.timerId()) {
        ZScrollArea::timerEvent(event);
        return;
    }
    d->sizeTimer.stop();
    if (!d->inner || !d->viewport)
        return;
    if (d->inner->layoutType() == VBox) {
        d->inner->setFixWidth(d->viewport->size().width());
        d->inner->setFixHeight(-1);
    } else {
        d->inner->setFixHeight(d->viewport->size().height());
        d->inner->setFixWidth(-1);
    }
}

Z_REGISTER_WIDGET(ZScrollWidget);
