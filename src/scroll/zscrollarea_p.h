#ifndef ZSCROLLAREA_P_H
#define ZSCROLLAREA_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zscrollarea.h"
#include "zwidget_p.h"

#include <QtCore/qpointer.h>

class ZScrollAreaPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZScrollArea)
public:
    void init();
    bool needHScrollBar(qreal viewportWidth) const;
    bool needVScrollBar(qreal viewportHeight) const;
    // Decides both effective policies for the area's present size.
    void decidePolicies();
    void placeBar(ZScrollBar *bar, bool shown, const QRectF &rect, qreal page, qreal contentExtent);

    QPointer<ZScrollBar> hbar;
    QPointer<ZScrollBar> vbar;
    QPointer<ZWidget> viewport;
    QPointer<ZWidget> content;
    Qt::ScrollBarPolicy hbarPolicy = Qt::ScrollBarAsNeeded;
    Qt::ScrollBarPolicy vbarPolicy = Qt::ScrollBarAsNeeded;
    bool contentUnderBar = false;
    QSizeF contentSize;
    bool widgetResizable = false;
    bool dragContent = false;
    int barThickness = ZScrollArea::DefaultBarThickness;
    qreal barOpacity = 1;

    // The policies in force after the last decision.
    Qt::ScrollBarPolicy hEffective = Qt::ScrollBarAlwaysOff;
    Qt::ScrollBarPolicy vEffective = Qt::ScrollBarAlwaysOff;
    QPointF dragFrom;
    // The content's size along the axes the area stretched it, -1 elsewhere.
    QSizeF stretched = QSizeF(-1, -1);
};

#endif // ZSCROLLAREA_P_H
