#include "zabstractbutton.h"
#include "zabstractbutton_p.h"

#include <QtCore/qpointer.h>
#include <QtWidgets/qgraphicssceneevent.h>

// ---------------------------------------------------------------------------
// ZAbstractButtonPrivate

ZAbstractButton::ButtonStates ZAbstractButtonPrivate::next(ZAbstractButton::ButtonState pointer) const
{
    if (type == ZAbstractButton::ButtonToggle)
        return (state & ZAbstractButton::CheckMask) | pointer;
    return pointer;
}

void ZAbstractButtonPrivate::enter(ZAbstractButton::ButtonStates word)
{
    state = word;
    q_func()->updateState(word);
}

// ---------------------------------------------------------------------------
// ZAbstractButton

ZAbstractButton::ZAbstractButton(QGraphicsItem *parent, ButtonType type)
    : ZAbstractButton(*new ZAbstractButtonPrivate(type), parent)
{
}

ZAbstractButton::ZAbstractButton(ZAbstractButtonPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    setAcceptHoverEvents(true);
    setAcceptedMouseButtons(Qt::LeftButton);
    setDragPolicy(Nothing);
}

ZAbstractButton::~ZAbstractButton() = default;

ZAbstractButton::ButtonType ZAbstractButton::buttonType() const
{
    return d_func()->type;
}

ZAbstractButton::ButtonStates ZAbstractButton::state() const
{
    return d_func()->state;
}

bool ZAbstractButton::checked() const
{
    return d_func()->state.testFlag(StateChecked);
}

void ZAbstractButton::setChecked(bool checked)
{
    Z_D(ZAbstractButton);
    ButtonStates word = d->state;
    word.setFlag(StateChecked, checked);
    if (word != d->state)
        d->enter(word);
}

bool ZAbstractButton::enabled() const
{
    return !d_func()->state.testFlag(StateDisable);
}

void ZAbstractButton::setEnabled(bool enabled)
{
    Z_D(ZAbstractButton);
    ButtonStates word = d->state;
    word.setFlag(StateDisable, !enabled);
    // Stored first, so that itemChange() finds the word in step.
    d->state = word;
    QGraphicsItem::setEnabled(enabled);
    d->enter(word);
}

QVariant ZAbstractButton::itemChange(GraphicsItemChange change, const QVariant &value)
{
    const QVariant result = ZWidget::itemChange(change, value);
    if (change == ItemEnabledHasChanged) {
        // Disabled by a parent or through QGraphicsItem: keep the word honest.
        Z_D(ZAbstractButton);
        if (isEnabled() == d->state.testFlag(StateDisable)) {
            ButtonStates word = d->state;
            word.setFlag(StateDisable, !isEnabled());
            d->enter(word);
        }
    }
    return result;
}

void ZAbstractButton::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    ZWidget::resizeEvent(event);
    updateLayout();
}

void ZAbstractButton::hoverEnterEvent(QGraphicsSceneHoverEvent *event)
{
    ZWidget::hoverEnterEvent(event);
    event->accept();
    Z_D(ZAbstractButton);
    d->enter(d->next(StateHover));
}

void ZAbstractButton::hoverMoveEvent(QGraphicsSceneHoverEvent *event)
{
    ZWidget::hoverMoveEvent(event);
    event->accept();
    Z_D(ZAbstractButton);
    d->enter(d->next(StateHover));
}

void ZAbstractButton::hoverLeaveEvent(QGraphicsSceneHoverEvent *event)
{
    ZWidget::hoverLeaveEvent(event);
    event->accept();
    Z_D(ZAbstractButton);
    d->enter(d->next(StateNormal));
}

void ZAbstractButton::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    // Accepted without the base handler, so that the release comes here too.
    event->accept();
    Z_D(ZAbstractButton);
    d->enter(d->next(StatePressed));
    QPointF pt = event->pos();
    Q_EMIT pressed(pt);
}

void ZAbstractButton::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    event->accept();
    Z_D(ZAbstractButton);
    ButtonStates word = d->next(StateNormal);
    if (d->type == ButtonToggle)
        word ^= StateChecked;
    d->enter(word);
    // A receiver may delete the button on the first signal.
    const QPointer<ZAbstractButton> self(this);
    QPointF pt = event->pos();
    Q_EMIT released(pt);
    if (self)
        Q_EMIT clicked();
}
