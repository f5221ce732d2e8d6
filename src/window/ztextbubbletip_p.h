#ifndef ZTEXTBUBBLETIP_P_H
#define ZTEXTBUBBLETIP_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "ztextbubbletip.h"
#include "zbubbletip_p.h"

class QTimer;

class ZKIT_EXPORT ZTextBubbleTipPrivate : public ZBubbleTipPrivate
{
    Z_DECLARE_PUBLIC(ZTextBubbleTip)
public:
    explicit ZTextBubbleTipPrivate(ZTextBubbleTip *q);
    ~ZTextBubbleTipPrivate() override;

    // Puts the label or the text item into the layout and sizes it.
    void updateContent();
    void restartCountdown();

    ZLabel *label = nullptr;
    ZTextItem *textItem = nullptr;
    QString text;
    int textWidth = 0;
    int elapseTime = 0;
    Qt::Orientation orientation = Qt::Vertical;
    QTimer *elapseTimer = nullptr;
};

#endif // ZTEXTBUBBLETIP_P_H
