#ifndef ZFOLLOWWINDOW_H
#define ZFOLLOWWINDOW_H

#include "zwindow.h"

#include <QPointF>
#include <QRectF>

class ZFollowWindowPrivate;

/*!
 * \brief A frameless top-level window attached to a target widget in another
 * window: it places itself next to the target and hides on chosen events.
 *
 * Placement. The window is put on the side of the target that direction()
 * names and aligned as the second word says, then moved by posOffset(), in
 * screen coordinates (T is the target's rectangle, W and H the window's
 * visible size, right and bottom being x + width and y + height):
 *
 * | direction    | left                | top                 |
 * |--------------|---------------------|---------------------|
 * | TopLeft      | T.left              | T.top - H           |
 * | TopCenter    | T.centerX - W / 2   | T.top - H           |
 * | TopRight     | T.right - W         | T.top - H           |
 * | BottomLeft   | T.left              | T.bottom            |
 * | BottomCenter | T.centerX - W / 2   | T.bottom            |
 * | BottomRight  | T.right - W         | T.bottom            |
 * | LeftTop      | T.left - W          | T.top               |
 * | LeftCenter   | T.left - W          | T.centerY - H / 2   |
 * | LeftBottom   | T.left - W          | T.bottom - H        |
 * | RightTop     | T.right             | T.top               |
 * | RightCenter  | T.right             | T.centerY - H / 2   |
 * | RightBottom  | T.right             | T.bottom - H        |
 * | UnderCursor  | as BottomLeft, with the cursor as a zero-size T |
 * | Custom       | T.left              | T.top               |
 *
 * Where the window would leave the work area (the available geometry of the
 * target's screen) on the side it was put, it goes to the opposite side
 * instead, with the offset mirrored across, as long as it fits there; along
 * the side it is shifted back into the work area. Custom is neither flipped
 * nor shifted. See placement().
 *
 * Hiding. The window watches the target's viewport and window and its own
 * viewport. On each event of the table, while the window is visible and the
 * flag is set, aboutToHide() is emitted with a pointer to an abort flag
 * (false); unless a receiver sets it, the window hides through a queued call,
 * so the event is finished first. The event is never consumed.
 *
 * | where            | event                                    | flag                  |
 * |------------------|------------------------------------------|-----------------------|
 * | target's view    | mouse press on the target                | ClickAtTarget         |
 * | target's view    | mouse press elsewhere in the view        | ClickAtOther          |
 * | target's window  | move                                     | TargetWindowMoving    |
 * | target's window  | resize                                   | TargetWindowResize    |
 * | target's window  | deactivation                             | TargetWindowInactive  |
 * | own view         | mouse press                              | ClickAtMySelf         |
 * | own window       | deactivation                             | MySelfWindowActiveToInactive |
 *
 * The last row is enabled by any hideFlags value of 128 or more, not by the
 * bit alone. When the target becomes invisible and HideAsTargetHidden is set,
 * the window hides (queued) without aboutToHide().
 *
 * While visible, the window follows the target when the target's window moves
 * or the target reports a new scene position.
 */
class ZKIT_EXPORT ZFollowWindow : public ZWindow
{
    Q_OBJECT
    Q_PROPERTY(Direction direction READ direction WRITE setDirection)
    Q_PROPERTY(HideFlags hideFlags READ hideFlags WRITE setHideFlags)
    Q_PROPERTY(QPointF offset READ posOffset WRITE setPosOffset)
    Q_PROPERTY(bool translucent READ translucent WRITE setTranslucent)

public:
    enum Direction : int {
        TopLeft = 0,
        TopCenter = 1,
        TopRight = 2,
        BottomLeft = 3,
        BottomCenter = 4,
        BottomRight = 5,
        LeftTop = 6,
        LeftCenter = 7,
        LeftBottom = 8,
        RightTop = 9,
        RightCenter = 10,
        RightBottom = 11,
        UnderCursor = 12,
        Custom = 13
    };
    Q_ENUM(Direction)

    enum HideFlag : unsigned int {
        NotDefine = 0,
        ClickAtTarget = 1,
        ClickAtMySelf = 2,
        ClickAtOther = 4,
        TargetWindowInactive = 8,
        TargetWindowResize = 16,
        TargetWindowMoving = 32,
        HideAsTargetHidden = 64,
        MySelfWindowActiveToInactive = 128,
        AlwaysHide = 4294967295u
    };
    Q_DECLARE_FLAGS(HideFlags, HideFlag)
    Q_FLAG(HideFlags)

    Q_INVOKABLE explicit ZFollowWindow(QWidget *parent = nullptr);
    ~ZFollowWindow() override;

    /*! The widget the window follows; null when none was set or it was destroyed. */
    ZWidget *target() const;
    void setTarget(ZWidget *target);

    Direction direction() const;
    /*! Values outside the enumeration are ignored. */
    void setDirection(Direction direction);
    /*! The side actually taken at the last placement, after flipping (UnderCursor reports BottomLeft or TopLeft). */
    Direction placedDirection() const;

    HideFlags hideFlags() const;
    void setHideFlags(HideFlags flags);

    QPointF posOffset() const;
    void setPosOffset(const QPointF &offset);
    void setPosOffset(int x, int y);

    void setWindowSize(const QSize &size);
    void setWindowSize(int width, int height);

    bool translucent() const;
    /*! Qt::WA_TranslucentBackground: the window paints its own shape. */
    void setTranslucent(bool on);

    /*! Sizes the window to what its content needs, then places it. */
    void adjustGeometry();
    /*!
     * Places the window: nothing without a target (or one outside any view);
     * otherwise aboutToAdjust() is emitted, and unless a receiver set its
     * handled flag the window moves to placement().
     */
    virtual void resetGeometry();

    /*!
     * The top-left corner of a rectangle of \a size placed by \a direction
     * next to \a target and moved by \a offset, flipped and shifted to stay in
     * \a workArea (an invalid area keeps everything). \a used receives the
     * side taken.
     */
    static QPoint placement(Direction direction, const QRectF &target, const QSize &size, const QPointF &offset,
                            const QRect &workArea, Direction *used = nullptr);

    void setVisible(bool visible) override;

Q_SIGNALS:
    void aboutToShow();
    void aboutToHide(ZFollowWindow::HideFlag flag, bool *pbAborted);
    void aboutToAdjust(QWidget *w, bool *pbHandled);

public Q_SLOTS:
    void on_scenePosition(QPointF pt);
    void on_posChanged();
    void on_visibleChanged();

protected:
    ZFollowWindow(ZFollowWindowPrivate &dd, QWidget *parent);

    /*!
     * The transparent band around the part that is to touch the target
     * (a shadow); placement measures the window without it. None here.
     */
    virtual QMargins placementMargins() const;
    /*! Called after setDirection() changed the direction. Does nothing here. */
    virtual void directionChanged(Direction direction);

    bool eventFilter(QObject *watched, QEvent *event) override;
    bool event(QEvent *event) override;

private:
    Z_DECLARE_PRIVATE(ZFollowWindow)
    void init();
};

Q_DECLARE_OPERATORS_FOR_FLAGS(ZFollowWindow::HideFlags)

#endif // ZFOLLOWWINDOW_H
