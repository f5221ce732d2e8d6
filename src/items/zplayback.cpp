#include "zplayback_p.h"

#include <QtCore/qabstractanimation.h>

void ZPlayback::sync(QAbstractAnimation *animation, bool wanted, bool canPlay, const std::function<int()> &startTime)
{
    const bool run = wanted && canPlay;
    switch (animation->state()) {
    case QAbstractAnimation::Running:
        if (!wanted)
            animation->stop();
        else if (!run)
            animation->pause();
        break;
    case QAbstractAnimation::Paused:
        if (run)
            animation->resume();
        else if (!wanted)
            animation->stop();
        break;
    case QAbstractAnimation::Stopped:
        if (run) {
            // start() reports the start value first: the time is taken before.
            const int time = startTime();
            animation->start();
            animation->setCurrentTime(time);
        }
        break;
    }
}
