#ifndef ZCOMMONLISTWIDGET_P_H
#define ZCOMMONLISTWIDGET_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zcommonlistwidget.h"
#include "zcommonlistmodel.h"
#include "zlistwidget_p.h"

class ZKIT_EXPORT ZCommonListWidgetPrivate : public ZListWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZCommonListWidget)
public:
    ZCommonListModel commonModel;
};

#endif // ZCOMMONLISTWIDGET_P_H
