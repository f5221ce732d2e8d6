#ifndef ZSCROLLWIDGET_P_H
#define ZSCROLLWIDGET_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zscrollarea_p.h"
#include "zscrollwidget.h"

#include <QtCore/qbasictimer.h>

class ZScrollWidgetPrivate : public ZScrollAreaPrivate
{
    Z_DECLARE_PUBLIC(ZScrollWidget)
public:
    void init();
    void scheduleSizeFix();

    QPointer<ZWidget> inner;
    // Fixes the content's size to the viewport after the layout pass that
    // changed the viewport, not inside it.
    QBasicTimer sizeTimer;
};

#endif // ZSCROLLWIDGET_P_H
