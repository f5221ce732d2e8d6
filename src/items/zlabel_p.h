#ifndef ZLABEL_P_H
#define ZLABEL_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zlabel.h"
#include "zwidget_p.h"

#include <QtCore/qpointer.h>

class QGraphicsDropShadowEffect;

class ZKIT_EXPORT ZLabelPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZLabel)
public:
    // Elides or sizes after any change of text, font, margins, alignment or size.
    void updateDisplayText();
    void installShadow();
    void applyFont(const QFont &font);
    void setUnderline(bool on);

    QString text;
    QString displayText;
    int textAlignment = Qt::AlignLeft | Qt::AlignVCenter;
    QMargins textMargins;
    QColor textColor;
    Qt::TextElideMode elide = Qt::ElideNone;
    bool autoAdjust = false;
    bool click = false;
    bool underlineOnHover = false;
    bool handCursorOnHover = false;
    bool shadow = false;
    QPointer<QGraphicsDropShadowEffect> shadowEffect;
    QString link;
    QColor shadowColor = QColor(Qt::gray);
    QPointF shadowOffset;
    qreal shadowBlurRadius = 1.0;
    bool antialiase = false;
};

#endif // ZLABEL_P_H
