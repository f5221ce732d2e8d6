#ifndef ZCOMMONCOMBOBOX_P_H
#define ZCOMMONCOMBOBOX_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zcommoncombobox.h"
#include "zcomboboxwidget_p.h"

class ZLabel;

class ZKIT_EXPORT ZCommonComboBoxPrivate : public ZComboBoxWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZCommonComboBox)
public:
    QPointer<ZLabel> label;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
};

#endif // ZCOMMONCOMBOBOX_P_H
