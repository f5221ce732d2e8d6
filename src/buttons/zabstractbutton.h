#ifndef ZABSTRACTBUTTON_H
#define ZABSTRACTBUTTON_H

#include "zwidget.h"

class ZAbstractButtonPrivate;

/*!
 * \brief The state machine behind every clickable control.
 *
 * The button keeps a state word: the low byte holds the pointer state (one of
 * StateNormal, StateHover, StatePressed), the high byte (CheckMask) the
 * lasting bits StateChecked and StateDisable. Hover and mouse events move the
 * word by the button's type and hand every new word to updateState(), which
 * the concrete button turns into a look:
 *
 * | event        | ButtonToggle                               | ButtonPush     |
 * |--------------|--------------------------------------------|----------------|
 * | hover enter  | lasting bits + StateHover                  | StateHover     |
 * | hover move   | lasting bits + StateHover                  | StateHover     |
 * | hover leave  | lasting bits + StateNormal                 | StateNormal    |
 * | press        | lasting bits + StatePressed                | StatePressed   |
 * | release      | (lasting bits + StateNormal) ^ StateChecked | StateNormal   |
 *
 * updateState() runs on every such event, also when the word stays the same;
 * then press emits pressed() and release emits released() and clicked(). A
 * release counts wherever the pointer is: a press that ends outside the
 * button still clicks it.
 *
 * Buttons accept hover events and the left mouse button only, and their drag
 * policy is Nothing, so pressing a button never drags its window.
 */
class ZKIT_EXPORT ZAbstractButton : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(bool check READ checked WRITE setChecked)
    Q_PROPERTY(bool enable READ enabled WRITE setEnabled)
    // Re-declared so that documents setting "enabled" move the state word too.
    Q_PROPERTY(bool enabled READ enabled WRITE setEnabled NOTIFY enabledChanged)
    Q_PROPERTY(ButtonType buttonType READ buttonType)
    Q_PROPERTY(ButtonStates state READ state)

public:
    /*! How events move the state word (see the class description). */
    enum ButtonType : int { ButtonToggle = 0, ButtonPush = 1 };
    Q_ENUM(ButtonType)

    enum ButtonState : int {
        StateNormal = 0x1,
        StateHover = 0x2,
        StatePressed = 0x4,
        StateChecked = 0x100,
        StateDisable = 0x200,
        CheckMask = 0xFF00
    };
    Q_DECLARE_FLAGS(ButtonStates, ButtonState)
    Q_FLAG(ButtonStates)

    ZAbstractButton(QGraphicsItem *parent, ButtonType type);
    ~ZAbstractButton() override;

    /*! The type given at construction. */
    ButtonType buttonType() const;
    /*! The current state word. */
    ButtonStates state() const;

    bool checked() const;
    /*! Sets or clears StateChecked; updateState() runs only when the word changes. */
    void setChecked(bool checked);

    /*! True while StateDisable is clear. */
    bool enabled() const;
    /*!
     * Clears (\a enabled) or sets StateDisable, enables or disables the item
     * and always runs updateState(). The word also follows when the item is
     * disabled another way, for instance through its parent.
     */
    void setEnabled(bool enabled);

    /*! Places the button's parts for its current size; runs on every resize. */
    virtual void updateLayout() = 0;
    /*! Shows the look for \a state, the word the button has just taken. */
    virtual void updateState(ButtonStates state) = 0;

Q_SIGNALS:
    /*! A press, at \a pt in item coordinates. */
    void pressed(QPointF &pt);
    /*! A release, at \a pt in item coordinates; clicked() follows. */
    void released(QPointF &pt);
    void clicked();

protected:
    ZAbstractButton(ZAbstractButtonPrivate &dd, QGraphicsItem *parent);

    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void hoverEnterEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;

private:
    Z_DECLARE_PRIVATE(ZAbstractButton)
    Q_DISABLE_COPY(ZAbstractButton)
};

Q_DECLARE_OPERATORS_FOR_FLAGS(ZAbstractButton::ButtonStates)

#endif // ZABSTRACTBUTTON_H
