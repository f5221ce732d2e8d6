#ifndef ANIMATIONCLOCK_H
#define ANIMATIONCLOCK_H

// A clock for Qt's animation framework that only moves when a test says so:
// every QVariantAnimation/QPropertyAnimation of the process follows it while
// it is installed, and no test has to sleep.

#include <QtCore/QAbstractAnimation>
#include <QtCore/QCoreApplication>
#include <QtCore/QVariantAnimation>

class AnimationClock : public QAnimationDriver
{
public:
    AnimationClock()
    {
        install();
        // Qt falls back to the wall clock, and hands a resumed animation the
        // time it missed, whenever nothing at all runs: keep something running.
        keepAlive.setStartValue(0.0);
        keepAlive.setEndValue(1.0);
        keepAlive.setDuration(1000);
        keepAlive.setLoopCount(-1);
        keepAlive.start();
        step(0);
    }
    ~AnimationClock() override
    {
        keepAlive.stop();
        uninstall();
    }

    // Qt expects the time since the driver was (re)started.
    qint64 elapsed() const override { return now - since; }

    // Lets animations started since the last call register with the clock
    // (Qt does that on the next turns of the event loop), then moves the
    // clock on by \a ms and lets every running animation follow.
    void step(int ms)
    {
        // Registering takes two queued calls inside Qt; the first tick
        // after that only settles the new animations.
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        advance();
        now += ms;
        advance();
    }

protected:
    void start() override
    {
        since = now;
        QAnimationDriver::start();
    }

private:
    qint64 now = 0;
    qint64 since = 0;
    QVariantAnimation keepAlive;
};

#endif // ANIMATIONCLOCK_H
