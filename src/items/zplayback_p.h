#ifndef ZPLAYBACK_P_H
#define ZPLAYBACK_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include <functional>

class QAbstractAnimation;

namespace ZPlayback {

// Brings the animation of an animated item to the state the item asks for:
// running while wanted and able to play (shown, in a scene, something to
// draw), paused while wanted but unable to, stopped once no longer wanted.
// A stopped animation that may play starts at startTime(), taken before it
// starts: the place of what the item shows now.
void sync(QAbstractAnimation *animation, bool wanted, bool canPlay, const std::function<int()> &startTime);

} // namespace ZPlayback

#endif // ZPLAYBACK_P_H
