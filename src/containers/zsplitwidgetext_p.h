#ifndef ZSPLITWIDGETEXT_P_H
#define ZSPLITWIDGETEXT_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zsplitwidget_p.h"
#include "zsplitwidgetext.h"

class ZKIT_EXPORT ZSplitWidgetExtPrivate : public ZSplitWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZSplitWidgetExt)
public:
    void paintHandle(QPainter *painter, const QRectF &rect, int index) const override;

    ZSplitWidgetExt::CollapseSide side = ZSplitWidgetExt::Before;
};

#endif // ZSPLITWIDGETEXT_P_H
