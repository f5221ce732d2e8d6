#ifndef ZCOMMONTREEWIDGET_P_H
#define ZCOMMONTREEWIDGET_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zcommontreewidget.h"
#include "zcommontreemodel.h"
#include "ztreewidget_p.h"

class ZKIT_EXPORT ZCommonTreeWidgetPrivate : public ZTreeWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZCommonTreeWidget)
public:
    ZCommonTreeModel commonModel;
};

#endif // ZCOMMONTREEWIDGET_P_H
