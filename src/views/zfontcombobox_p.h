#ifndef ZFONTCOMBOBOX_P_H
#define ZFONTCOMBOBOX_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zfontcombobox.h"
#include "zcomboboxwidget_p.h"

class ZLabel;

class ZKIT_EXPORT ZFontComboBoxPrivate : public ZComboBoxWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZFontComboBox)
public:
    QPointer<ZLabel> label;
};

#endif // ZFONTCOMBOBOX_P_H
