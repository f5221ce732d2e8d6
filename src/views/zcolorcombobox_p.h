#ifndef ZCOLORCOMBOBOX_P_H
#define ZCOLORCOMBOBOX_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zcolorcombobox.h"
#include "zcomboboxwidget_p.h"

class ZKIT_EXPORT ZColorComboBoxPrivate : public ZComboBoxWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZColorComboBox)
public:
    void applyBorder();

    QPointer<ZWidget> border;
    QPointer<ZWidget> swatch;
    bool hasBorder = false;
};

#endif // ZCOLORCOMBOBOX_P_H
