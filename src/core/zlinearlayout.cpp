#include "zlinearlayout_p.h"

quint64 ZLinearLayout::clock = 0;

ZLinearLayout::ZLinearLayout(Qt::Orientation orientation)
    : QGraphicsLinearLayout(orientation)
{
}

void ZLinearLayout::invalidate()
{
    invalidatedAt = ++clock;
    measuredAt = 0;
    QGraphicsLinearLayout::invalidate();
}

void ZLinearLayout::setGeometry(const QRectF &rect)
{
    noteMeasured();
    QGraphicsLinearLayout::setGeometry(rect);
    placedAt = ++clock;
}

QSizeF ZLinearLayout::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    noteMeasured();
    return QGraphicsLinearLayout::sizeHint(which, constraint);
}

bool ZLinearLayout::measuredSince(const ZLinearLayout *inner) const
{
    return measuredAt > inner->invalidatedAt;
}

bool ZLinearLayout::placedLast() const
{
    return placedAt != 0 && placedAt == clock;
}

void ZLinearLayout::noteMeasured() const
{
    if (measuredAt == 0)
        measuredAt = ++clock;
}
