#ifndef ZFRAMEWINDOW_P_H
#define ZFRAMEWINDOW_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zframewindow.h"
#include "zpopupwindow_p.h"

#include <QPointer>

class ZKIT_EXPORT ZFrameWindowPrivate : public ZPopupWindowPrivate
{
    Z_DECLARE_PUBLIC(ZFrameWindow)
public:
    explicit ZFrameWindowPrivate(ZFrameWindow *q) : ZPopupWindowPrivate(q) {}

    QPointer<ZTitlebar> titlebar;
};

#endif // ZFRAMEWINDOW_P_H
