#ifndef ZFRAMEITEM_P_H
#define ZFRAMEITEM_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zframeitem.h"
#include "zwidget_p.h"

#include <QtCore/qlist.h>
#include <QtGui/qcolor.h>

class ZFrameItemPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZFrameItem)
public:
    // Common to both constructors.
    void init();
    // Reloads the images from imagePath or, when it is empty, appends the
    // colours of frameColor.
    void loadStates();
    void loadColors();
    // The entry shown: index, or 0 when index is out of range.
    int shownIndex(int count) const;
    // Requests index \a i by the state rule of setFrameIndex().
    void requestIndex(int i) { q_func()->setFrameIndex(i); }
    // The index of a plain state, moved to its checked form while checked.
    int stateIndex(int plain) const { return q_func()->hasChecked() ? plain + 4 : plain; }
    QByteArray checkedPropertyName() const;

    ZFrameItem::FrameType frameType = ZFrameItem::OneTopLeft;
    QList<QPixmap> pixmaps;
    QList<QColor> colors;
    int index = 0;
    QString imagePath;
    QString frameColor;
    int framePixel = 1;
    bool smooth = false;
    bool frameSwitch = true;
};

#endif // ZFRAMEITEM_P_H
