#ifndef ZPROGRESSBAR_P_H
#define ZPROGRESSBAR_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zprogressbar.h"
#include "zwidget_p.h"

#include <QtCore/qpointer.h>

class ZFrameItem;
class ZLabel;

class ZProgressBarPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZProgressBar)
public:
    void init();
    void layoutProgress();
    void updateText();
    bool vertical() const { return orientation == Qt::Vertical; }

    QPointer<ZFrameItem> frame;
    QPointer<ZFrameItem> progress;
    QPointer<ZLabel> label;
    int minimum = 0;
    int maximum = 100;
    int value = 0;
    bool textVisible = false;
    int numberTextStyle = ZProgressBar::Percent;
    int minSize = 0;
    Qt::Orientation orientation = Qt::Horizontal;
};

#endif // ZPROGRESSBAR_P_H
