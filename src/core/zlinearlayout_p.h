#ifndef ZLINEARLAYOUT_P_H
#define ZLINEARLAYOUT_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zglobal.h"

#include <QtWidgets/qgraphicslinearlayout.h>

/*
 * The box layout of VBox and HBox widgets: a QGraphicsLinearLayout that
 * remembers, on one clock shared by all of them, when it was last
 * invalidated, when it last measured its items after that, and when it last
 * placed them. With that a widget can tell that its parent's layout already
 * measured it as it is now (see ZWidget::updateGeometry()).
 */
class ZKIT_EXPORT ZLinearLayout : public QGraphicsLinearLayout
{
public:
    explicit ZLinearLayout(Qt::Orientation orientation);

    void invalidate() override;
    void setGeometry(const QRectF &rect) override;
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;

    // Whether this layout measured its items after \a inner was last
    // invalidated: it then knows the size hints inner's widget has now.
    bool measuredSince(const ZLinearLayout *inner) const;
    // Whether placing the items was the last thing that happened on the clock.
    bool placedLast() const;
    // Forgets the last placing, before a new one.
    void forgetPlacing() { placedAt = 0; }

private:
    void noteMeasured() const;

    static quint64 clock;
    quint64 invalidatedAt = 0;
    quint64 placedAt = 0;
    mutable quint64 measuredAt = 0; // 0: not since the last invalidation
};

#endif // ZLINEARLAYOUT_P_H
