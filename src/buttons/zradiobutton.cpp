#include "zradiobutton.h"

#include "zcreator.h"

ZRadioButton::ZRadioButton(QGraphicsItem *parent)
    : ZCheckButton(parent)
{
    setImagePath(QStringLiteral(
        ":/image/theme/radiobox_default_normal.png|:/image/theme/radiobox_default_hover.png|"
        ":/image/theme/radiobox_default_pressdown.png|:/image/theme/radiobox_default_disable.png|"
        ":/image/theme/radiobox_selected_normal.png|:/image/theme/radiobox_selected_hover.png|"
        ":/image/theme/radiobox_selected_pressdown.png|:/image/theme/radiobox_selected_disable.png"));
}

ZRadioButton::~ZRadioButton() = default;

Z_REGISTER_WIDGET(ZRadioButton);
