#include "zslider_p.h"
#include "zcreator.h"
#include "zframeitem.h"

#include <QtCore/qcoreevent.h>
#include <QtCore/qmath.h>
#include <QtWidgets/qgraphicssceneevent.h>

#include <cmath>

namespace {

enum Part { ThumbPart, FramePart, SelectPart };

QString defaultImage(Part part, Qt::Orientation orientation)
{
    const bool vertical = orientation == Qt::Vertical;
    switch (part) {
    case ThumbPart: {
        const QString base = vertical ? QStringLiteral(":/image/theme/vsliderthumb_")
                                      : QStringLiteral(":/image/theme/hsliderthumb_");
        return base + QLatin1String("normal.png|") + base + QLatin1String("hover.png|") + base
            + QLatin1String("down.png");
    }
    case FramePart:
        return vertical ? QStringLiteral(":/image/theme/vslider_bkg.png")
                        : QStringLiteral(":/image/theme/hslider_bkg.png");
    case SelectPart:
        return QStringLiteral(":/image/theme/slider_select.png");
    }
    return QString();
}

void place(QGraphicsWidget *item, const QRectF &rect)
{
    if (!item)
        return;
    const QRectF r(rect.topLeft(), rect.size().expandedTo(QSizeF(0, 0)));
    if (item->geometry() != r)
        item->setGeometry(r);
}

// The preferred length of a slider that nothing else sizes.
constexpr qreal kPreferredLength = 100;

} // namespace

// ---------------------------------------------------------------------------
// ZSliderPrivate

void ZSliderPrivate::init()
{
    Z_Q(ZSlider);
    q->setAcceptedMouseButtons(Qt::LeftButton);
    q->setAcceptHoverEvents(true);

    frame = new ZFrameItem(defaultImage(FramePart, orientation), ZFrameItem::GridFour, q);
    select = new ZFrameItem(defaultImage(SelectPart, orientation), ZFrameItem::GridFour, q);
    thumb = new ZFrameItem(defaultImage(ThumbPart, orientation), ZFrameItem::GridFour, q);
    frame->setObjectName(QStringLiteral("frame"));
    select->setObjectName(QStringLiteral("select"));
    thumb->setObjectName(QStringLiteral("thumb"));
    for (ZFrameItem *item : {frame.data(), select.data(), thumb.data()})
        item->setAcceptClick(false); // the slider takes the presses
    select->setZValue(1);
    thumb->setZValue(2);
    q->setSizePolicy(QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed));
}

bool ZSliderPrivate::_setValue(double r)
{
    if (!(r >= 0))
        r = 0;
    else if (r > 1)
        r = 1;
    if (qFuzzyCompare(r, ratio) || (qFuzzyIsNull(r) && qFuzzyIsNull(ratio)))
        return false;
    ratio = r;
    scheduleLayout();
    Q_EMIT q_func()->valueChanged(minimum + (maximum - minimum) * r);
    return true;
}

void ZSliderPrivate::scheduleLayout()
{
    if (!layoutTimer.isActive())
        layoutTimer.start(0, q_func());
}

QSizeF ZSliderPrivate::effectiveThumbSize() const
{
    if (!thumbSize.isEmpty() || !thumb)
        return thumbSize;
    return thumb->pixmapSize();
}

double ZSliderPrivate::usableLength() const
{
    Z_Q(const ZSlider);
    const QSizeF size = q->size();
    const QSizeF t = effectiveThumbSize();
    return vertical() ? qMax<qreal>(0, size.height() - qMax<qreal>(0, t.height()))
                      : qMax<qreal>(0, size.width() - qMax<qreal>(0, t.width()));
}

double ZSliderPrivate::ratioAt(double start) const
{
    const double usable = usableLength();
    return usable > 0 ? start / usable : 0;
}

void ZSliderPrivate::_relayout()
{
    Z_Q(ZSlider);
    layoutTimer.stop();
    const QSizeF size = q->size();
    if (size.isEmpty())
        return;
    if (thumbSize.isEmpty() && thumb)
        thumbSize = thumb->pixmapSize();
    const QRectF t = q->thumbRect();
    // The groove is as thick as its image, at most as thick as the slider.
    const QSizeF image = frame ? frame->pixmapSize() : QSizeF();
    if (vertical()) {
        const qreal w = image.width() > 0 ? qMin(image.width(), size.width()) : size.width();
        const qreal x = qFloor((size.width() - w) / 2);
        place(frame, QRectF(x, 0, w, size.height()));
        place(select, QRectF(x, 0, w, t.center().y()));
    } else {
        const qreal h = image.height() > 0 ? qMin(image.height(), size.height()) : size.height();
        const qreal y = qFloor((size.height() - h) / 2);
        place(frame, QRectF(0, y, size.width(), h));
        place(select, QRectF(0, y, t.center().x(), h));
    }
    place(thumb, t);
    // At the start nothing is selected; the select image would peek out
    // around a round thumb.
    if (select)
        select->setVisible(ratio > 0);
}

void ZSliderPrivate::followOrientation(Qt::Orientation previous)
{
    const auto follow = [previous, this](ZFrameItem *item, Part part) {
        if (item && item->imagePath() == defaultImage(part, previous))
            item->setImagePath(defaultImage(part, orientation));
    };
    follow(thumb, ThumbPart);
    follow(frame, FramePart);
    follow(select, SelectPart);
}

// ---------------------------------------------------------------------------
// ZSlider

ZSlider::ZSlider(QGraphicsItem *parent)
    : ZSlider(*new ZSliderPrivate, parent)
{
}

ZSlider::ZSlider(Qt::Orientation orientation, QGraphicsItem *parent)
    : ZSlider(*new ZSliderPrivate, parent)
{
    setOrientation(orientation);
}

ZSlider::ZSlider(ZSliderPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    d_func()->init();
}

ZSlider::~ZSlider() = default;

QString ZSlider::thumbImage() const
{
    return d_func()->thumb ? d_func()->thumb->imagePath() : QString();
}

void ZSlider::setThumbImage(const QString &images)
{
    Z_D(ZSlider);
    if (d->thumb && d->thumb->imagePath() != images) {
        d->thumb->setImagePath(images);
        d->scheduleLayout();
    }
}

QString ZSlider::frameImage() const
{
    return d_func()->frame ? d_func()->frame->imagePath() : QString();
}

void ZSlider::setFrameImage(const QString &images)
{
    Z_D(ZSlider);
    if (d->frame && d->frame->imagePath() != images) {
        d->frame->setImagePath(images);
        d->scheduleLayout();
    }
}

QString ZSlider::selectImage() const
{
    return d_func()->select ? d_func()->select->imagePath() : QString();
}

void ZSlider::setSelectImage(const QString &images)
{
    Z_D(ZSlider);
    if (d->select && d->select->imagePath() != images) {
        d->select->setImagePath(images);
        d->scheduleLayout();
    }
}

Qt::Orientation ZSlider::orientation() const
{
    return d_func()->orientation;
}

void ZSlider::setOrientation(Qt::Orientation orientation)
{
    Z_D(ZSlider);
    const Qt::Orientation o = orientation == Qt::Vertical ? Qt::Vertical : Qt::Horizontal;
    if (o == d->orientation)
        return;
    const Qt::Orientation previous = d->orientation;
    d->orientation = o;
    d->followOrientation(previous);
    setSizePolicy(d->vertical() ? QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred)
                                : QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed));
    updateGeometry();
    d->scheduleLayout();
}

QSizeF ZSlider::thumbSize() const
{
    return d_func()->thumbSize;
}

void ZSlider::setThumbSize(const QSizeF &size)
{
    Z_D(ZSlider);
    if (!std::isfinite(size.width()) || !std::isfinite(size.height()) || size == d->thumbSize)
        return;
    d->thumbSize = size;
    updateGeometry();
    d->scheduleLayout();
}

qreal ZSlider::value() const
{
    Z_D(const ZSlider);
    return d->minimum + (d->maximum - d->minimum) * d->ratio;
}

qreal ZSlider::ratio() const
{
    return d_func()->ratio;
}

void ZSlider::setValue(qreal value)
{
    Z_D(ZSlider);
    if (!std::isfinite(value))
        return;
    value = qMax(d->minimum, qMin(value, d->maximum));
    const double span = d->maximum - d->minimum;
    d->_setValue(span > 0 ? (value - d->minimum) / span : 0);
}

QSizeF ZSlider::range() const
{
    Z_D(const ZSlider);
    return QSizeF(d->minimum, d->maximum);
}

void ZSlider::setRange(const QSizeF &range)
{
    setRange(range.width(), range.height());
}

void ZSlider::setRange(qreal minimum, qreal maximum)
{
    Z_D(ZSlider);
    // The ratio, and so the thumb, stays.
    if (std::isfinite(minimum))
        d->minimum = minimum;
    if (std::isfinite(maximum))
        d->maximum = maximum;
}

qreal ZSlider::minimum() const
{
    return d_func()->minimum;
}

void ZSlider::setMinimum(qreal minimum)
{
    setRange(minimum, d_func()->maximum);
}

qreal ZSlider::maximum() const
{
    return d_func()->maximum;
}

void ZSlider::setMaximum(qreal maximum)
{
    setRange(d_func()->minimum, maximum);
}

QObject *ZSlider::thumb() const
{
    return d_func()->thumb;
}

QObject *ZSlider::frame() const
{
    return d_func()->frame;
}

QObject *ZSlider::select() const
{
    return d_func()->select;
}

QRectF ZSlider::thumbRect() const
{
    Z_D(const ZSlider);
    const QSizeF size = this->size();
    const QSizeF t = d->effectiveThumbSize().expandedTo(QSizeF(0, 0));
    // Whole pixels keep the images sharp.
    const qreal start = qRound(d->ratio * d->usableLength());
    if (d->vertical())
        return QRectF(qFloor((size.width() - t.width()) / 2), start, t.width(), t.height());
    return QRectF(start, qFloor((size.height() - t.height()) / 2), t.width(), t.height());
}

ZWidget::DragPolicy ZSlider::hitTest(const QPointF &) const
{
    return Nothing;
}

QSizeF ZSlider::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    Z_D(const ZSlider);
    QSizeF hint = ZWidget::sizeHint(which, constraint);
    if (which != Qt::MinimumSize && which != Qt::PreferredSize)
        return hint;
    QSizeF across = d->effectiveThumbSize().expandedTo(QSizeF(0, 0));
    if (d->frame)
        across = across.expandedTo(d->frame->pixmapSize());
    const qreal length = which == Qt::PreferredSize ? qMax(kPreferredLength, d->vertical() ? across.height() : across.width())
                                                   : (d->vertical() ? across.height() : across.width());
    return d->vertical() ? QSizeF(across.width(), length) : QSizeF(length, across.height());
}

void ZSlider::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    ZWidget::resizeEvent(event);
    d_func()->_relayout();
}

void ZSlider::timerEvent(QTimerEvent *event)
{
    Z_D(ZSlider);
    if (event->timerId() == d->layoutTimer.timerId())
        d->_relayout();
    else
        ZWidget::timerEvent(event);
}

void ZSlider::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    Z_D(ZSlider);
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    event->accept();
    const QRectF t = thumbRect();
    if (t.contains(event->pos())) {
        d->dragging = true;
        d->pressOffset = event->pos() - t.topLeft();
        if (d->thumb)
            d->thumb->setDown();
        return;
    }
    if (d->thumb)
        d->thumb->setNormal();
    const QSizeF ts = d->effectiveThumbSize();
    d->_setValue(d->ratioAt(d->along(event->pos()) - (d->vertical() ? ts.height() : ts.width()) / 2));
}

void ZSlider::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    Z_D(ZSlider);
    if (d->dragging)
        d->_setValue(d->ratioAt(d->along(event->pos()) - d->along(d->pressOffset)));
}

void ZSlider::mouseReleaseEvent(QGraphicsSceneMouseEvent *)
{
    Z_D(ZSlider);
    d->dragging = false;
    if (d->thumb)
        d->thumb->setNormal();
    Q_EMIT mouseRelease();
}

void ZSlider::hoverMoveEvent(QGraphicsSceneHoverEvent *event)
{
    Z_D(ZSlider);
    ZWidget::hoverMoveEvent(event);
    if (!d->thumb || d->dragging)
        return;
    if (thumbRect().contains(event->pos()))
        d->thumb->setHover();
    else
        d->thumb->setNormal();
}

void ZSlider::hoverLeaveEvent(QGraphicsSceneHoverEvent *event)
{
    Z_D(ZSlider);
    ZWidget::hoverLeaveEvent(event);
    if (d->thumb && !d->dragging)
        d->thumb->setNormal();
}

Z_REGISTER_WIDGET(ZSlider);
