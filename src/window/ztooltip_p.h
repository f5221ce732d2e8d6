#ifndef ZTOOLTIP_P_H
#define ZTOOLTIP_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "ztooltip.h"
#include "zfollowwindow_p.h"

class QTimer;

class ZKIT_EXPORT ZToolTipPrivate : public ZFollowWindowPrivate
{
    Z_DECLARE_PUBLIC(ZToolTip)
public:
    explicit ZToolTipPrivate(ZToolTip *q);
    ~ZToolTipPrivate() override;

    // Sees the events of every viewport: targets may enter a view after
    // they were added.
    bool watch(QObject *watched, QEvent *event);
    // The topmost target at \a pos of the viewport \a viewport, or null.
    ZWidget *targetAt(QWidget *viewport, const QPoint &pos) const;
    bool isTargetViewport(QObject *object) const;
    void hovered(ZWidget *target);
    void pruneTargets();
    void updateWatcher();
    void sizeToLabel();

    enum Phase { Idle, Waiting, Showing };

    ZToolTip::TipStyle style = ZToolTip::TextTip;
    ZToolTip::TipTrigger trigger = ZToolTip::HoverTrigger;
    QList<QPointer<ZWidget>> targets;
    int delay = 700;
    int timeout = 5000;
    Phase phase = Idle;
    QPointer<ZWidget> pending;
    QTimer *timer = nullptr;
    ZLabel *label = nullptr;
    QObject *watcher = nullptr; // the application-wide event filter while there are targets
};

#endif // ZTOOLTIP_P_H
