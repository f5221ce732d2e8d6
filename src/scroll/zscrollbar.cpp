#include "zscrollbar_p.h"
#include "zcreator.h"
#include "zframeitem.h"
#include "zicon.h"

#include <QtCore/qcoreevent.h>
#include <QtCore/qmath.h>
#include <QtGui/qevent.h>
#include <QtWidgets/qgraphicssceneevent.h>

#include <cmath>

namespace {

enum Part { LineAddPart, LineSubPart, ThumbPart, BackgroundPart, IconPart };

QString defaultImage(Part part, Qt::Orientation orientation)
{
    const QString prefix = orientation == Qt::Vertical ? QStringLiteral(":/image/theme/vscrollbar_")
                                                       : QStringLiteral(":/image/theme/hscrollbar_");
    const auto states = [&prefix](const char *name) {
        const QString base = prefix + QLatin1String(name);
        return base + QLatin1String("_normal.png|") + base + QLatin1String("_hover.png|") + base
            + QLatin1String("_down.png");
    };
    switch (part) {
    case LineAddPart: return states("lineadd");
    case LineSubPart: return states("linesub");
    case ThumbPart: return states("thumb");
    case BackgroundPart: return prefix + QLatin1String("bkg.png");
    case IconPart: return prefix + QLatin1String("thumbico.png");
    }
    return QString();
}

// Whole pixels or units of a double: the integer part, bounded so that sums
// and products stay inside 64 bits; NaN counts as 0.
int integral(double v)
{
    constexpr double bound = 1 << 28;
    if (!(v == v))
        return 0;
    return int(qBound(-bound, v, bound));
}

bool usable(double v)
{
    return std::isfinite(v);
}

// A rectangle for a child item: sizes below zero become zero.
QRectF itemRect(const QRect &r)
{
    return QRectF(r.x(), r.y(), qMax(0, r.width()), qMax(0, r.height()));
}

void place(QGraphicsWidget *item, const QRectF &rect)
{
    if (item && item->geometry() != rect)
        item->setGeometry(rect);
}

} // namespace

// ---------------------------------------------------------------------------
// ZScrollBarPrivate

void ZScrollBarPrivate::init(Qt::Orientation o)
{
    Z_Q(ZScrollBar);
    orientation = o;
    q->setAcceptedMouseButtons(Qt::LeftButton);
    q->setAcceptHoverEvents(true);
    // Presses on the thumb item are the bar's thumb presses.
    q->setFiltersChildEvents(true);

    background = new ZFrameItem(defaultImage(BackgroundPart, o), ZFrameItem::GridFour, q);
    lineSub = new ZFrameItem(defaultImage(LineSubPart, o), ZFrameItem::OneHVCenter, q);
    lineAdd = new ZFrameItem(defaultImage(LineAddPart, o), ZFrameItem::OneHVCenter, q);
    slider = new ZFrameItem(defaultImage(ThumbPart, o), ZFrameItem::GridFour, q);
    icon = new ZIcon(q);
    thumbIconPath = defaultImage(IconPart, o);
    icon->setIconPath(thumbIconPath);

    background->setObjectName(QStringLiteral("background"));
    lineSub->setObjectName(QStringLiteral("lineSub"));
    lineAdd->setObjectName(QStringLiteral("lineAdd"));
    slider->setObjectName(QStringLiteral("slider"));
    icon->setObjectName(QStringLiteral("icon"));

    // The bar hit-tests presses on the buttons and the track itself, so that
    // it can repeat them; these items only show states.
    background->setAcceptClick(false);
    lineSub->setAcceptClick(false);
    lineAdd->setAcceptClick(false);
    icon->setAcceptedMouseButtons(Qt::NoButton);

    lineSub->setZValue(1000);
    lineAdd->setZValue(1000);
    slider->setZValue(1000);
    icon->setZValue(2000);

    QObject::connect(lineAdd, &ZFrameItem::clicked, q, &ZScrollBar::on_linebutton_clicked);
    QObject::connect(lineSub, &ZFrameItem::clicked, q, &ZScrollBar::on_linebutton_clicked);
    QObject::connect(q, &ZScrollBar::valueChanged, q, &ZScrollBar::on_value_changed);

    q->setSizePolicy(vertical() ? QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred)
                                : QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed));
    resetLayout();
}

int ZScrollBarPrivate::length() const
{
    const QSizeF s = q_func()->size();
    return integral(vertical() ? s.height() : s.width());
}

int ZScrollBarPrivate::thickness() const
{
    const QSizeF s = q_func()->size();
    return integral(vertical() ? s.width() : s.height());
}

int ZScrollBarPrivate::buttonPixels() const
{
    return integral(buttonHeight);
}

int ZScrollBarPrivate::maxLength() const
{
    return length() - 2 * buttonPixels();
}

QRect ZScrollBarPrivate::oriented(int along, int across, int alongSize, int acrossSize) const
{
    return vertical() ? QRect(across, along, acrossSize, alongSize) : QRect(along, across, alongSize, acrossSize);
}

void ZScrollBarPrivate::resetLayout()
{
    Z_Q(ZScrollBar);
    place(lineAdd, itemRect(q->subControlRect(QStyle::SC_ScrollBarAddLine)));
    place(lineSub, itemRect(q->subControlRect(QStyle::SC_ScrollBarSubLine)));
    place(background, QRectF(QPointF(), q->size()));
    updateSliderPosition();
}

void ZScrollBarPrivate::updateSliderPosition()
{
    Z_Q(ZScrollBar);
    const QRect thumb = q->subControlRect(QStyle::SC_ScrollBarSlider);
    place(slider, itemRect(thumb));
    if (!icon)
        return;
    const QSize size = icon->icon().isNull()
        ? QSize()
        : icon->actualSize(QSize(1024, 1024), ZIcon::Normal, ZIcon::On);
    const QPointF topLeft(thumb.x() + (thumb.width() - size.width()) / 2,
                          thumb.y() + (thumb.height() - size.height()) / 2);
    place(icon, QRectF(topLeft + thumbIconOffset, QSizeF(size)));
    // An icon longer than the thumb would hang over the track.
    const bool fits = !size.isEmpty() && size.width() <= thumb.width() && size.height() <= thumb.height();
    icon->setVisible(fits && (!slider || slider->isVisible()));
}

void ZScrollBarPrivate::scheduleLayout()
{
    if (!layoutTimer.isActive())
        layoutTimer.start(0, q_func());
}

void ZScrollBarPrivate::moveTo(double v)
{
    // Limited to the maximum first, then raised to the minimum: with the
    // bounds crossed the minimum wins.
    v = qMax(minimum, qMin(v, maximum));
    if (v == value)
        return;
    value = v;
    Q_EMIT q_func()->valueChanged(v);
}

void ZScrollBarPrivate::performSubControlAction(QStyle::SubControl control)
{
    switch (control) {
    case QStyle::SC_ScrollBarAddLine:
        moveTo(value + singleStep);
        break;
    case QStyle::SC_ScrollBarSubLine:
        moveTo(value - singleStep);
        break;
    case QStyle::SC_ScrollBarAddPage: {
        double v = value + pageStep;
        if (v > pageTarget) {
            // Paging stops under the pointer, and never turns back.
            v = qMax(value, pageTarget);
            repeatAction = QStyle::SC_None;
        }
        moveTo(v);
        break;
    }
    case QStyle::SC_ScrollBarSubPage: {
        double v = value - pageStep;
        if (v < pageTarget) {
            v = qMin(value, pageTarget);
            repeatAction = QStyle::SC_None;
        }
        moveTo(v);
        break;
    }
    case QStyle::SC_ScrollBarSlider:
        dragStartValue = value;
        break;
    default:
        dragStartValue = -1;
        break;
    }
}

void ZScrollBarPrivate::press(QStyle::SubControl control, const QPointF &pos)
{
    Z_Q(ZScrollBar);
    pressedControl = control;
    dragStartValue = -1;
    pressAlong = along(pos);
    if (control == QStyle::SC_ScrollBarAddPage || control == QStyle::SC_ScrollBarSubPage)
        pageTarget = q->sliderValueFromPosition(qFloor(pressAlong) - buttonPixels());
    repeatAction = control;
    // A receiver of valueChanged() may delete the bar.
    const QPointer<ZScrollBar> self(q);
    performSubControlAction(control);
    if (!self)
        return;
    if (control != QStyle::SC_ScrollBarSlider && !repeating())
        startRepeatTimer.start(initialDelay, q);
    applyPartStates();
}

void ZScrollBarPrivate::drag(const QPointF &pos)
{
    if (pressedControl != QStyle::SC_ScrollBarSlider || repeating())
        return;
    const QRect groove = q_func()->subControlRect(QStyle::SC_ScrollBarGroove);
    const double grooveLength = vertical() ? groove.height() : groove.width();
    const double factor = grooveLength / (pageStep + maximum - minimum);
    if (!(factor > 0) || !usable(factor))
        return;
    moveTo(dragStartValue + (along(pos) - pressAlong) / factor);
}

void ZScrollBarPrivate::release()
{
    startRepeatTimer.stop();
    repeatTimer.stop();
    pressedControl = QStyle::SC_None;
    repeatAction = QStyle::SC_None;
    applyPartStates();
}

void ZScrollBarPrivate::setHoverControl(QStyle::SubControl control)
{
    if (hoverControl == control)
        return;
    hoverControl = control;
    applyPartStates();
}

void ZScrollBarPrivate::applyPartStates()
{
    const auto show = [this](ZFrameItem *item, QStyle::SubControl control) {
        if (!item)
            return;
        if (pressedControl == control)
            item->setDown();
        else if (hoverControl == control && pressedControl == QStyle::SC_None)
            item->setHover();
        else
            item->setNormal();
    };
    show(lineAdd, QStyle::SC_ScrollBarAddLine);
    show(lineSub, QStyle::SC_ScrollBarSubLine);
    show(slider, QStyle::SC_ScrollBarSlider);
}

void ZScrollBarPrivate::showParts(bool show)
{
    for (ZFrameItem *item : {lineAdd.data(), lineSub.data(), slider.data()}) {
        if (item)
            item->setVisible(show);
    }
    updateSliderPosition();
}

void ZScrollBarPrivate::followOrientation(Qt::Orientation previous)
{
    const auto follow = [previous, this](ZFrameItem *item, Part part) {
        if (item && item->imagePath() == defaultImage(part, previous))
            item->setImagePath(defaultImage(part, orientation));
    };
    follow(lineAdd, LineAddPart);
    follow(lineSub, LineSubPart);
    follow(slider, ThumbPart);
    follow(background, BackgroundPart);
    if (thumbIconPath == defaultImage(IconPart, previous))
        q_func()->setThumbIcon(defaultImage(IconPart, orientation));
}

// ---------------------------------------------------------------------------
// ZScrollBar

ZScrollBar::ZScrollBar(QGraphicsItem *parent)
    : ZScrollBar(*new ZScrollBarPrivate, parent)
{
}

ZScrollBar::ZScrollBar(Qt::Orientation orientation, QGraphicsItem *parent)
    : ZScrollBar(*new ZScrollBarPrivate, parent)
{
    setOrientation(orientation);
}

ZScrollBar::ZScrollBar(ZScrollBarPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    d_func()->init(Qt::Horizontal);
}

ZScrollBar::~ZScrollBar() = default;

qreal ZScrollBar::value() const
{
    return d_func()->value;
}

void ZScrollBar::setValue(qreal value)
{
    if (usable(value))
        d_func()->moveTo(value);
}

void ZScrollBar::increase()
{
    Z_D(ZScrollBar);
    d->moveTo(d->value + d->singleStep);
}

void ZScrollBar::decrease()
{
    Z_D(ZScrollBar);
    d->moveTo(d->value - d->singleStep);
}

qreal ZScrollBar::minimum() const
{
    return d_func()->minimum;
}

void ZScrollBar::setMinimum(qreal minimum)
{
    Z_D(ZScrollBar);
    if (!usable(minimum) || minimum == d->minimum)
        return;
    d->minimum = minimum;
    const QPointer<ZScrollBar> self(this);
    Q_EMIT minimumChanged(minimum);
    if (!self)
        return;
    d->moveTo(d->value);
    if (self)
        d->updateSliderPosition();
}

qreal ZScrollBar::maximum() const
{
    return d_func()->maximum;
}

void ZScrollBar::setMaximum(qreal maximum)
{
    Z_D(ZScrollBar);
    if (!usable(maximum) || maximum == d->maximum)
        return;
    d->maximum = maximum;
    const QPointer<ZScrollBar> self(this);
    Q_EMIT maximumChanged(maximum);
    if (!self)
        return;
    d->moveTo(d->value);
    if (self)
        d->updateSliderPosition();
}

void ZScrollBar::setRange(qreal minimum, qreal maximum)
{
    Z_D(ZScrollBar);
    const bool minimumChanges = usable(minimum) && minimum != d->minimum;
    const bool maximumChanges = usable(maximum) && maximum != d->maximum;
    if (!minimumChanges && !maximumChanges)
        return;
    if (minimumChanges)
        d->minimum = minimum;
    if (maximumChanges)
        d->maximum = maximum;
    const QPointer<ZScrollBar> self(this);
    if (minimumChanges)
        Q_EMIT minimumChanged(minimum);
    if (maximumChanges && self)
        Q_EMIT minimumChanged(maximum);
    if (!self)
        return;
    d->moveTo(d->value);
    if (self)
        d->updateSliderPosition();
}

qreal ZScrollBar::singleStep() const
{
    return d_func()->singleStep;
}

void ZScrollBar::setSingleStep(qreal step)
{
    if (usable(step) && step >= 0)
        d_func()->singleStep = step;
}

qreal ZScrollBar::pageStep() const
{
    return d_func()->pageStep;
}

void ZScrollBar::setPageStep(qreal step)
{
    Z_D(ZScrollBar);
    if (!usable(step) || step < 0 || step == d->pageStep)
        return;
    d->pageStep = step;
    // The thumb's length follows; several changes in a row cost one move.
    d->scheduleLayout();
}

qreal ZScrollBar::deltaFactor() const
{
    return d_func()->deltaFactor;
}

void ZScrollBar::setDeltaFactor(qreal factor)
{
    if (usable(factor))
        d_func()->deltaFactor = factor;
}

Qt::Orientation ZScrollBar::orientation() const
{
    return d_func()->orientation;
}

void ZScrollBar::setOrientation(Qt::Orientation orientation)
{
    Z_D(ZScrollBar);
    const Qt::Orientation o = orientation == Qt::Vertical ? Qt::Vertical : Qt::Horizontal;
    if (o == d->orientation)
        return;
    const Qt::Orientation previous = d->orientation;
    d->orientation = o;
    d->followOrientation(previous);
    setSizePolicy(d->vertical() ? QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred)
                                : QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed));
    updateGeometry();
    d->resetLayout();
}

qreal ZScrollBar::buttonHeight() const
{
    return d_func()->buttonHeight;
}

void ZScrollBar::setButtonHeight(qreal height)
{
    Z_D(ZScrollBar);
    if (!usable(height) || height < 0 || height == d->buttonHeight)
        return;
    d->buttonHeight = height;
    d->scheduleLayout();
}

qreal ZScrollBar::sliderMinimumHeight() const
{
    return d_func()->sliderMinimumHeight;
}

void ZScrollBar::setSliderMinimumHeight(qreal height)
{
    Z_D(ZScrollBar);
    if (!usable(height) || height < 0 || height == d->sliderMinimumHeight)
        return;
    d->sliderMinimumHeight = height;
    d->scheduleLayout();
}

qreal ZScrollBar::frameThickness() const
{
    return d_func()->frameThickness;
}

void ZScrollBar::setFrameThickness(qreal thickness)
{
    Z_D(ZScrollBar);
    if (!usable(thickness) || thickness < 0 || thickness == d->frameThickness)
        return;
    d->frameThickness = thickness;
    updateGeometry();
    Q_EMIT thicknessChanged();
}

QString ZScrollBar::lineAddImage() const
{
    return d_func()->lineAdd ? d_func()->lineAdd->imagePath() : QString();
}

void ZScrollBar::setLineAddImage(const QString &images)
{
    if (ZFrameItem *item = d_func()->lineAdd)
        item->setImagePath(images);
}

QString ZScrollBar::lineSubImage() const
{
    return d_func()->lineSub ? d_func()->lineSub->imagePath() : QString();
}

void ZScrollBar::setLineSubImage(const QString &images)
{
    if (ZFrameItem *item = d_func()->lineSub)
        item->setImagePath(images);
}

QString ZScrollBar::thumbImage() const
{
    return d_func()->slider ? d_func()->slider->imagePath() : QString();
}

void ZScrollBar::setThumbImage(const QString &images)
{
    if (ZFrameItem *item = d_func()->slider)
        item->setImagePath(images);
}

QString ZScrollBar::backgroundImage() const
{
    return d_func()->background ? d_func()->background->imagePath() : QString();
}

void ZScrollBar::setBackgroundImage(const QString &images)
{
    if (ZFrameItem *item = d_func()->background)
        item->setImagePath(images);
}

QString ZScrollBar::thumbIcon() const
{
    return d_func()->thumbIconPath;
}

void ZScrollBar::setThumbIcon(const QString &path)
{
    Z_D(ZScrollBar);
    if (path == d->thumbIconPath)
        return;
    d->thumbIconPath = path;
    if (d->icon)
        d->icon->setIconPath(path);
    d->updateSliderPosition();
}

QPointF ZScrollBar::thumbIconOffset() const
{
    return d_func()->thumbIconOffset;
}

void ZScrollBar::setThumbIconOffset(const QPointF &offset)
{
    Z_D(ZScrollBar);
    if (!usable(offset.x()) || !usable(offset.y()) || offset == d->thumbIconOffset)
        return;
    d->thumbIconOffset = offset;
    d->updateSliderPosition();
}

bool ZScrollBar::showFullOnHover() const
{
    return d_func()->showFullOnHover;
}

void ZScrollBar::setShowFullOnHover(bool on)
{
    Z_D(ZScrollBar);
    if (on == d->showFullOnHover)
        return;
    d->showFullOnHover = on;
    d->showParts(!on || d->hovered);
}

void ZScrollBar::displayFullOnHover(bool show)
{
    Z_D(ZScrollBar);
    if (d->showFullOnHover)
        d->showParts(show);
}

QObject *ZScrollBar::lineAdd() const
{
    return d_func()->lineAdd;
}

QObject *ZScrollBar::lineSub() const
{
    return d_func()->lineSub;
}

QObject *ZScrollBar::icon() const
{
    return d_func()->icon;
}

QObject *ZScrollBar::slider() const
{
    return d_func()->slider;
}

int ZScrollBar::sliderPixels() const
{
    Z_D(const ZScrollBar);
    const int maxlen = d->maxLength();
    if (d->minimum == d->maximum)
        return maxlen;
    const qint64 range = integral(d->maximum - d->minimum);
    const qint64 page = integral(d->pageStep);
    // Crossed bounds can leave nothing to divide by: the thumb fills the track.
    qint64 length = range + page > 0 ? page * maxlen / (range + page) : maxlen;
    length = qMax<qint64>(length, integral(d->sliderMinimumHeight));
    return int(qMin<qint64>(length, maxlen));
}

int ZScrollBar::sliderPosition() const
{
    Z_D(const ZScrollBar);
    const int span = d->maxLength() - sliderPixels();
    return d->buttonPixels()
        + QStyle::sliderPositionFromValue(integral(d->minimum), integral(d->maximum), integral(d->value), span);
}

int ZScrollBar::sliderValueFromPosition(int pos) const
{
    Z_D(const ZScrollBar);
    const int span = d->maxLength() - sliderPixels();
    return QStyle::sliderValueFromPosition(integral(d->minimum), integral(d->maximum), pos, span);
}

QRect ZScrollBar::subControlRect(QStyle::SubControl control) const
{
    Z_D(const ZScrollBar);
    const int length = d->length();
    const int thick = d->thickness();
    const int b = d->buttonPixels();
    const int end = qMin(b, length / 2);
    switch (control) {
    case QStyle::SC_ScrollBarSubLine:
        return d->oriented(0, 0, end, thick);
    case QStyle::SC_ScrollBarAddLine:
        return d->oriented(length - end, 0, end, thick);
    case QStyle::SC_ScrollBarSubPage: {
        const int pos = sliderPosition();
        return d->oriented(b, 0, pos - b, thick);
    }
    case QStyle::SC_ScrollBarAddPage: {
        const int pos = sliderPosition();
        return d->oriented(pos, 0, d->maxLength() - pos + b, thick);
    }
    case QStyle::SC_ScrollBarSlider:
        return d->oriented(sliderPosition(), 0, sliderPixels(), thick);
    case QStyle::SC_ScrollBarGroove:
        return d->oriented(b, 0, length - 2 * b, thick);
    default:
        return QRect();
    }
}

QStyle::SubControl ZScrollBar::subControlAt(const QPointF &pos) const
{
    const QPoint p(qFloor(pos.x()), qFloor(pos.y()));
    for (uint control = QStyle::SC_ScrollBarAddLine; control <= QStyle::SC_ScrollBarGroove; control <<= 1) {
        const QRect r = subControlRect(QStyle::SubControl(control));
        if (r.isValid() && r.contains(p))
            return QStyle::SubControl(control);
    }
    return QStyle::SC_None;
}

QStyle::SubControl ZScrollBar::pressedControl() const
{
    return d_func()->pressedControl;
}

QStyle::SubControl ZScrollBar::hoverControl() const
{
    return d_func()->hoverControl;
}

ZWidget::DragPolicy ZScrollBar::hitTest(const QPointF &) const
{
    return Nothing;
}

void ZScrollBar::handleMouseWheelEvent(QGraphicsSceneWheelEvent *event)
{
    if (event)
        wheelEvent(event);
}

QSizeF ZScrollBar::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    Z_D(const ZScrollBar);
    QSizeF hint = ZWidget::sizeHint(which, constraint);
    if (which == Qt::MinimumSize || which == Qt::PreferredSize) {
        if (d->vertical())
            hint.setWidth(d->frameThickness);
        else
            hint.setHeight(d->frameThickness);
    }
    return hint;
}

void ZScrollBar::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    ZWidget::resizeEvent(event);
    d_func()->resetLayout();
}

void ZScrollBar::timerEvent(QTimerEvent *event)
{
    Z_D(ZScrollBar);
    const int id = event->timerId();
    if (id == d->startRepeatTimer.timerId()) {
        d->startRepeatTimer.stop();
        if (d->repeatAction != QStyle::SC_None)
            d->repeatTimer.start(d->repeatInterval, this);
    } else if (id == d->repeatTimer.timerId()) {
        const QPointer<ZScrollBar> self(this);
        d->performSubControlAction(d->repeatAction);
        // Paging that reached the pointer has nothing left to repeat.
        if (self && d->repeatAction == QStyle::SC_None)
            d->repeatTimer.stop();
    } else if (id == d->layoutTimer.timerId()) {
        d->layoutTimer.stop();
        d->resetLayout();
    } else {
        ZWidget::timerEvent(event);
    }
}

bool ZScrollBar::sceneEventFilter(QGraphicsItem *watched, QEvent *event)
{
    Z_D(ZScrollBar);
    if (!d->slider || watched != d->slider.data())
        return ZWidget::sceneEventFilter(watched, event);
    switch (event->type()) {
    case QEvent::GraphicsSceneMousePress: {
        auto *e = static_cast<QGraphicsSceneMouseEvent *>(event);
        if (e->button() != Qt::LeftButton) {
            e->ignore();
            return true;
        }
        e->accept();
        d->press(QStyle::SC_ScrollBarSlider, mapFromScene(e->scenePos()));
        return true;
    }
    case QEvent::GraphicsSceneMouseMove:
        d->drag(mapFromScene(static_cast<QGraphicsSceneMouseEvent *>(event)->scenePos()));
        return true;
    case QEvent::GraphicsSceneMouseRelease:
        d->release();
        return true;
    case QEvent::GraphicsSceneMouseDoubleClick:
        // A double click is a second press.
        d->press(QStyle::SC_ScrollBarSlider,
                 mapFromScene(static_cast<QGraphicsSceneMouseEvent *>(event)->scenePos()));
        return true;
    default:
        return false;
    }
}

void ZScrollBar::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    event->accept();
    d_func()->press(subControlAt(event->pos()), event->pos());
}

void ZScrollBar::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    d_func()->drag(event->pos());
}

void ZScrollBar::mouseReleaseEvent(QGraphicsSceneMouseEvent *)
{
    d_func()->release();
}

void ZScrollBar::hoverEnterEvent(QGraphicsSceneHoverEvent *event)
{
    Z_D(ZScrollBar);
    ZWidget::hoverEnterEvent(event);
    d->hovered = true;
    if (d->showFullOnHover)
        d->showParts(true);
    hoverMoveEvent(event);
}

void ZScrollBar::hoverMoveEvent(QGraphicsSceneHoverEvent *event)
{
    Z_D(ZScrollBar);
    // The thumb item lies above the add page that covers it.
    const QPoint p(qFloor(event->pos().x()), qFloor(event->pos().y()));
    const bool onThumb = d->slider && d->slider->isVisible()
        && subControlRect(QStyle::SC_ScrollBarSlider).contains(p);
    d->setHoverControl(onThumb ? QStyle::SC_ScrollBarSlider : subControlAt(event->pos()));
}

void ZScrollBar::hoverLeaveEvent(QGraphicsSceneHoverEvent *event)
{
    Z_D(ZScrollBar);
    ZWidget::hoverLeaveEvent(event);
    d->hovered = false;
    d->setHoverControl(QStyle::SC_None);
    if (d->showFullOnHover)
        d->showParts(false);
}

void ZScrollBar::wheelEvent(QGraphicsSceneWheelEvent *event)
{
    Z_D(ZScrollBar);
    // Taken even when it moves nothing, so that it does not reach the
    // owner, which would hand it back.
    event->accept();
    const double v = d->value - event->delta() * d->deltaFactor / 120.0;
    if (usable(v))
        d->moveTo(v);
}

void ZScrollBar::keyPressEvent(QKeyEvent *event)
{
    event->ignore();
}

void ZScrollBar::keyReleaseEvent(QKeyEvent *event)
{
    event->ignore();
}

void ZScrollBar::on_linebutton_clicked()
{
    Z_D(ZScrollBar);
    QObject *button = sender();
    if (button && button == d->lineAdd.data())
        increase();
    else if (button && button == d->lineSub.data())
        decrease();
}

void ZScrollBar::on_value_changed(qreal)
{
    d_func()->updateSliderPosition();
}

Z_REGISTER_WIDGET(ZScrollBar);
