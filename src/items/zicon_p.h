#ifndef ZICON_P_H
#define ZICON_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zicon.h"
#include "zwidget_p.h"

class ZKIT_EXPORT ZIconPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZIcon)
public:
    QIcon icon;
    ZIcon::Mode mode = ZIcon::Normal;
    ZIcon::State state = ZIcon::Off;
    Qt::Alignment iconAlignment = Qt::AlignCenter;
};

#endif // ZICON_P_H
