#ifndef ZSEQUENTIMAGEITEM_P_H
#define ZSEQUENTIMAGEITEM_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zsequentimageitem.h"
#include "zwidget_p.h"

#include <QtGui/qpixmap.h>

class QVariantAnimation;

class ZKIT_EXPORT ZSequentImageItemPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZSequentImageItem)
public:
    void load();
    void setFrame(int index);
    // Sets up the animation for the frames, fps and loops there are now.
    void configure();
    // Runs or pauses the animation as wanted and visible ask.
    void sync();

    QString imagePath;
    QList<QPixmap> frames;
    int stripCount = 0;
    qreal fps = 10;
    int loopCount = -1;
    bool autoStart = true;
    bool autoAdjust = false;
    bool wanted = false;
    bool autoStarted = false; // wanted only because autoStart asked
    int current = -1;
    QVariantAnimation *animation = nullptr;
};

#endif // ZSEQUENTIMAGEITEM_P_H
