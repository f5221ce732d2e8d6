#ifndef ZABSTRACTBUTTON_P_H
#define ZABSTRACTBUTTON_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zabstractbutton.h"
#include "zwidget_p.h"

class ZKIT_EXPORT ZAbstractButtonPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZAbstractButton)
public:
    explicit ZAbstractButtonPrivate(ZAbstractButton::ButtonType type) : type(type) {}

    // The word an event leads to: toggle buttons keep their lasting bits,
    // push buttons start afresh.
    ZAbstractButton::ButtonStates next(ZAbstractButton::ButtonState pointer) const;
    // Stores \a word and hands it to updateState(), changed or not.
    void enter(ZAbstractButton::ButtonStates word);

    const ZAbstractButton::ButtonType type;
    ZAbstractButton::ButtonStates state = ZAbstractButton::StateNormal;
};

#endif // ZABSTRACTBUTTON_P_H
