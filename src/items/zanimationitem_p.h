#ifndef ZANIMATIONITEM_P_H
#define ZANIMATIONITEM_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zanimationitem.h"
#include "zwidget_p.h"

class ZKIT_EXPORT ZAnimationItemPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZAnimationItem)
public:
    void sync();

    QString imagePath;
    QMovie *movie = nullptr;
    bool playing = false;
    bool autoStarted = false; // playing only because autoStart asked
    bool autoStart = true;
    bool autoAdjust = false;
    bool valid = false;
};

#endif // ZANIMATIONITEM_P_H
