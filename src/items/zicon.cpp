#include "zicon.h"
#include "zicon_p.h"

#include "zcreator.h"
#include "zresource.h"

#include <QtGui/qpainter.h>

namespace {

QIcon::Mode iconMode(ZIcon::Mode mode)
{
    switch (mode) {
    case ZIcon::Disabled: return QIcon::Disabled;
    case ZIcon::Active: return QIcon::Active;
    case ZIcon::Selected: return QIcon::Selected;
    default: return QIcon::Normal;
    }
}

QIcon::State iconState(ZIcon::State state)
{
    return state == ZIcon::Off ? QIcon::Off : QIcon::On;
}

} // namespace

ZIcon::ZIcon(QGraphicsItem *parent)
    : ZIcon(*new ZIconPrivate, parent)
{
}

ZIcon::ZIcon(ZIconPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
}

ZIcon::~ZIcon() = default;

QString ZIcon::iconPath() const
{
    return d_func()->icon.name();
}

void ZIcon::setIconPath(const QString &path)
{
    setIcon(path.isEmpty() ? QIcon() : QIcon(ZResource::absoluteFileName(path)));
}

QIcon ZIcon::icon() const
{
    return d_func()->icon;
}

void ZIcon::setIcon(const QIcon &icon)
{
    Z_D(ZIcon);
    if (d->icon.cacheKey() == icon.cacheKey())
        return;
    d->icon = icon;
    update();
}

ZIcon::Mode ZIcon::mode() const
{
    return d_func()->mode;
}

void ZIcon::setMode(Mode mode)
{
    Z_D(ZIcon);
    if (d->mode == mode)
        return;
    d->mode = mode;
    update();
}

ZIcon::State ZIcon::state() const
{
    return d_func()->state;
}

void ZIcon::setState(State state)
{
    Z_D(ZIcon);
    if (d->state == state)
        return;
    d->state = state;
    update();
}

Qt::Alignment ZIcon::iconAlignment() const
{
    return d_func()->iconAlignment;
}

void ZIcon::setIconAlignment(Qt::Alignment alignment)
{
    Z_D(ZIcon);
    if (d->iconAlignment == alignment)
        return;
    d->iconAlignment = alignment;
    update();
}

QSize ZIcon::actualSize(const QSize &size, Mode mode, State state) const
{
    return d_func()->icon.actualSize(size, iconMode(mode), iconState(state));
}

void ZIcon::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    ZWidget::paint(painter, option, widget);
    Z_D(ZIcon);
    if (d->icon.isNull())
        return;
    d->icon.paint(painter, rect().toRect(), d->iconAlignment, iconMode(d->mode), iconState(d->state));
}

Z_REGISTER_WIDGET(ZIcon);
