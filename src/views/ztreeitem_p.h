#ifndef ZTREEITEM_P_H
#define ZTREEITEM_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "ztreeitem.h"
#include "zlistitem_p.h"

class ZKIT_EXPORT ZTreeItemPrivate : public ZListItemPrivate
{
    Z_DECLARE_PUBLIC(ZTreeItem)
public:
    qint64 node = 0;
    int depth = 0;
    int indentation = 0;
    bool expanded = false;
    bool hasChildren = false;
    QPointer<ZWidget> indent;
};

#endif // ZTREEITEM_P_H
