#ifndef ZSLIDER_P_H
#define ZSLIDER_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zslider.h"
#include "zwidget_p.h"

#include <QtCore/qbasictimer.h>
#include <QtCore/qpointer.h>

class ZFrameItem;

class ZSliderPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZSlider)
public:
    void init();
    // Moves the position to \a r; false when it stays where it is.
    bool _setValue(double r);
    void _relayout();
    void scheduleLayout();
    bool vertical() const { return orientation == Qt::Vertical; }
    // The thumb's size as laid out: thumbSize, or the thumb image's while it is empty.
    QSizeF effectiveThumbSize() const;
    double along(const QPointF &pos) const { return vertical() ? pos.y() : pos.x(); }
    // Length the thumb travels.
    double usableLength() const;
    // The ratio that puts the thumb's start at \a start.
    double ratioAt(double start) const;
    void followOrientation(Qt::Orientation previous);

    QPointer<ZFrameItem> thumb;
    QPointer<ZFrameItem> frame;
    QPointer<ZFrameItem> select;
    double ratio = 0;
    bool dragging = false;
    QPointF pressOffset;
    QSizeF thumbSize;
    double minimum = 0;
    double maximum = 100;
    Qt::Orientation orientation = Qt::Horizontal;
    QBasicTimer layoutTimer;
};

#endif // ZSLIDER_P_H
