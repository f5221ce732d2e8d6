#ifndef ZTOOLTIP_H
#define ZTOOLTIP_H

#include "zfollowwindow.h"

class ZLabel;
class ZToolTipPrivate;

/*!
 * \brief A tip that appears for any of a set of target widgets.
 *
 * Targets are added with addTarget(). How the tip is brought up is its
 * trigger:
 * - HoverTrigger (default): the mouse rests on a target for delay()
 *   milliseconds (700 by default). Moving on to another target while the tip
 *   shows switches at once; leaving the targets, pressing a button or
 *   turning the wheel hides the tip.
 * - ClickTrigger: a press on a target shows the tip for it, a second press on
 *   the same target hides it.
 * - ManualTrigger: only showTip() does.
 * A shown tip hides after timeout() milliseconds (5000 by default; 0 keeps it
 * up) and when its target is hidden.
 *
 * A TextTip shows the target's toolTip text in its label (a target without
 * one shows no tip); a CustomTip shows whatever the application put into its
 * root widget. textTipInstance() is the one text tip of the application that
 * every widget can use.
 */
class ZKIT_EXPORT ZToolTip : public ZFollowWindow
{
    Q_OBJECT
    Q_PROPERTY(TipTrigger trigger READ trigger WRITE setTrigger)
    Q_PROPERTY(int delay READ delay WRITE setDelay)
    Q_PROPERTY(int timeout READ timeout WRITE setTimeout)

public:
    enum TipStyle : int { TextTip = 0, CustomTip = 1 };
    Q_ENUM(TipStyle)
    enum TipTrigger : int { HoverTrigger = 0, ClickTrigger = 1, ManualTrigger = 2 };
    Q_ENUM(TipTrigger)

    Q_INVOKABLE explicit ZToolTip(QWidget *parent = nullptr);
    explicit ZToolTip(TipStyle style, QWidget *parent = nullptr);
    ~ZToolTip() override;

    TipStyle tipStyle() const;

    /*! Adds \a target once (and makes it accept hover events); null is ignored. */
    void addTarget(ZWidget *target);
    void removeTarget(ZWidget *target);
    void removeAllTarget();
    /*! The targets still alive, in the order added. */
    QList<ZWidget *> targets() const;

    TipTrigger trigger() const;
    /*! Unknown values are ignored. */
    void setTrigger(TipTrigger trigger);
    int delay() const;
    /*! Negative counts as 0. */
    void setDelay(int msec);
    int timeout() const;
    /*! Negative counts as 0 (no time-out). */
    void setTimeout(int msec);

    /*! Shows the tip for \a target (which need not be one of the targets) now. */
    void showTip(ZWidget *target);
    void hideTip();

    /*! The label of a TextTip; null for a CustomTip. */
    ZLabel *label() const;

    /*! The application's shared text tip, made on first use; null without an application object. */
    static ZToolTip *textTipInstance();

protected:
    void drawBackground(QPainter *painter, const QRectF &rect) override;

private Q_SLOTS:
    void on_tipTimeout();

private:
    Z_DECLARE_PRIVATE(ZToolTip)
    void init(TipStyle style);
};

#endif // ZTOOLTIP_H
