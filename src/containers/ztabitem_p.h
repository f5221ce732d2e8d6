#ifndef ZTABITEM_P_H
#define ZTABITEM_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "ztabitem.h"
#include "zwidget_p.h"

#include <QtCore/qpointer.h>

class ZKIT_EXPORT ZTabItemPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZTabItem)
public:
    void init(const QString &text);
    void updateFrame();
    // The header less the paddings and the close button.
    QRectF textRect() const;

    QString text;
    QColor textColor = QColor(40, 40, 40);
    int padding = 12;
    bool closable = false;
    bool selected = false;
    bool hovered = false;
    ZFrameItem *frame = nullptr;
    ZFrameItem *close = nullptr;
    QPointer<ZWidget> page;
};

#endif // ZTABITEM_P_H
