#ifndef ZSPACER_H
#define ZSPACER_H

#include "zwidget.h"

/*!
 * \brief A plain ZWidget: an empty area, or a box that holds children
 * through its layout.
 */
class ZKIT_EXPORT ZSpacer : public ZWidget
{
    Q_OBJECT
public:
    Q_INVOKABLE explicit ZSpacer(QGraphicsItem *parent = nullptr);
    ~ZSpacer() override;
};

#endif // ZSPACER_H
