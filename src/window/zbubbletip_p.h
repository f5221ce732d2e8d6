#ifndef ZBUBBLETIP_P_H
#define ZBUBBLETIP_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zbubbletip.h"
#include "zfollowwindow_p.h"

#include <QImage>

class ZKIT_EXPORT ZBubbleTipPrivate : public ZFollowWindowPrivate
{
    Z_DECLARE_PUBLIC(ZBubbleTip)
public:
    explicit ZBubbleTipPrivate(ZBubbleTip *q);
    ~ZBubbleTipPrivate() override;

    // The band around the bubble that the shadow needs.
    QMargins band() const;
    // Moves the arrow to \a edge and the content inside the bubble.
    void setArrowEdge(Qt::Edges edge);
    // Scene margins and arrow position after a change of geometry or looks.
    void updateChrome();
    void invalidate();

    static constexpr int ArrowWidth = 14;
    static constexpr int ArrowHeight = 7;
    static constexpr int Radius = 5;

    bool shadow = true;
    qreal shadowBlur = 6;
    QPointF shadowOffset{0, 1};
    QColor backgroundColor{Qt::transparent};
    QColor brushColor{255, 255, 255};
    QColor penColor{168, 168, 168};
    Qt::Edges arrowEdge = Qt::TopEdge;
    qreal arrowCenter = -1; // along the arrow edge, window coordinates; < 0: middle
    QImage shadowCache;
};

#endif // ZBUBBLETIP_P_H
