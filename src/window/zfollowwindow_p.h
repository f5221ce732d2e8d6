#ifndef ZFOLLOWWINDOW_P_H
#define ZFOLLOWWINDOW_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zfollowwindow.h"
#include "zwindow_p.h"

#include <QPointer>

class ZKIT_EXPORT ZFollowWindowPrivate : public ZWindowPrivate
{
    Z_DECLARE_PUBLIC(ZFollowWindow)
public:
    explicit ZFollowWindowPrivate(ZFollowWindow *q);
    ~ZFollowWindowPrivate() override;

    // Watches the target's viewport and window (again after the target
    // entered a view, or a different one).
    void hookTarget();
    void unhookTarget();
    // Asks the receivers of aboutToHide() and hides (queued) unless aborted.
    void requestHide(ZFollowWindow::HideFlag flag);
    void hideQueued();

    QPointer<ZWidget> target;
    ZFollowWindow::Direction direction = ZFollowWindow::BottomLeft;
    ZFollowWindow::Direction placedDirection = ZFollowWindow::BottomLeft;
    ZFollowWindow::HideFlags hideFlags;
    QPointF offset;
    QRectF placedTarget; // the target's screen rectangle at the last placement
    bool translucent = false;
    QPointer<QWidget> hookedViewport;
    QPointer<QWidget> hookedWindow;
};

#endif // ZFOLLOWWINDOW_P_H
