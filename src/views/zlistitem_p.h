#ifndef ZLISTITEM_P_H
#define ZLISTITEM_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zlistitem.h"
#include "zwidget_p.h"

#include <QtCore/qpointer.h>

class ZKIT_EXPORT ZListItemPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZListItem)
public:
    QPointer<ZListWidget> view;
    int row = -1;
    bool hovered = false;
    QMap<Qt::ItemDataRole, QVariant> data;
    QPointer<ZLabel> label;
    QPointer<ZImageItem> icon;
};

#endif // ZLISTITEM_P_H
