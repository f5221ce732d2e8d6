#ifndef ZSCROLLBAR_P_H
#define ZSCROLLBAR_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zscrollbar.h"
#include "zwidget_p.h"

#include <QtCore/qbasictimer.h>
#include <QtCore/qpointer.h>

class ZFrameItem;
class ZIcon;

class ZScrollBarPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZScrollBar)
public:
    void init(Qt::Orientation orientation);

    bool vertical() const { return orientation == Qt::Vertical; }
    // Length along and thickness across the bar, in whole pixels.
    int length() const;
    int thickness() const;
    int buttonPixels() const;
    // The track between the line buttons: length - 2 * buttonPixels().
    int maxLength() const;
    // A rectangle given along/across the bar, turned for vertical bars.
    QRect oriented(int along, int across, int alongSize, int acrossSize) const;
    // The coordinate of \a pos along the bar.
    qreal along(const QPointF &pos) const { return vertical() ? pos.y() : pos.x(); }

    void resetLayout();
    void updateSliderPosition();
    void scheduleLayout();
    void performSubControlAction(QStyle::SubControl control);
    // The press handling of the bar; \a control is already hit-tested.
    void press(QStyle::SubControl control, const QPointF &pos);
    void drag(const QPointF &pos);
    void release();
    void setHoverControl(QStyle::SubControl control);
    void applyPartStates();
    void showParts(bool show);
    bool repeating() const { return startRepeatTimer.isActive() || repeatTimer.isActive(); }
    // Sets the value, clamped, without the finiteness check of the slot.
    void moveTo(double v);
    // Swaps default images when the orientation changes.
    void followOrientation(Qt::Orientation previous);

    double value = 0;
    double minimum = 0;
    double maximum = 1;
    double singleStep = 1;
    double pageStep = 1;
    Qt::Orientation orientation = Qt::Horizontal;
    double buttonHeight = 14;
    double sliderMinimumHeight = 16;
    double frameThickness = 15;
    double dragStartValue = -1;
    double pageTarget = 0;
    double deltaFactor = 0;
    QStyle::SubControl hoverControl = QStyle::SC_None;
    QStyle::SubControl pressedControl = QStyle::SC_None;
    QStyle::SubControl repeatAction = QStyle::SC_None;
    int initialDelay = 250;
    int repeatInterval = 50;
    QBasicTimer startRepeatTimer;
    QBasicTimer repeatTimer;
    QBasicTimer layoutTimer;
    QPointF thumbIconOffset;
    QPointer<ZFrameItem> slider;
    QPointer<ZIcon> icon;
    QPointer<ZFrameItem> lineAdd;
    QPointer<ZFrameItem> lineSub;
    QPointer<ZFrameItem> background;
    bool showFullOnHover = false;

    // Where the drag's press was, along the bar.
    qreal pressAlong = 0;
    QString thumbIconPath;
    bool hovered = false;
};

#endif // ZSCROLLBAR_P_H
