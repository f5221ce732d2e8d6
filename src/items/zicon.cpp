#include "zicon.h"
#include "zicon_p.h"

#include "zcreator.h"
#include "zresource.h"

#include <QtCore/qcache.h>
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

// QIcon keeps its scaled pixmaps in QPixmapCache under the serial number of
// its own pixmap, so a fresh QIcon per item adds entries for every item ever
// made. Items showing the same file share one icon (keyed as the skin
// pixmaps are, so an edited file is read afresh; at most 100 files).
QIcon sharedIcon(const QString &path)
{
    static QCache<QString, QIcon> icons(100);
    const QString key = ZResource::pixmapCacheKey(path, false);
    if (key.isEmpty())
        return QIcon(ZResource::absoluteFileName(path));
    if (const QIcon *icon = icons.object(key))
        return *icon;
    const QIcon icon(ZResource::absoluteFileName(path));
    icons.insert(key, new QIcon(icon));
    return icon;
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
    setIcon(path.isEmpty() ? QIcon() : sharedIcon(path));
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
