#ifndef ZRADIOBUTTON_H
#define ZRADIOBUTTON_H

#include "zcheckbutton.h"

/*!
 * \brief A check button with round images.
 *
 * On its own it toggles like a check box; inside a ZButtonGroup a click
 * always leaves it checked and clears the other radio buttons of the group.
 */
class ZKIT_EXPORT ZRadioButton : public ZCheckButton
{
    Q_OBJECT
public:
    Q_INVOKABLE explicit ZRadioButton(QGraphicsItem *parent = nullptr);
    ~ZRadioButton() override;

private:
    Q_DISABLE_COPY(ZRadioButton)
};

#endif // ZRADIOBUTTON_H
