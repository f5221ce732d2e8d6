#include "zframeitem_p.h"
#include "zcreator.h"
#include "zresource.h"
#include "ztheme.h"
#include "zutility.h"

#include <QtCore/qpointer.h>
#include <QtGui/qpainter.h>
#include <QtGui/qpixmapcache.h>
#include <QtWidgets/qgraphicssceneevent.h>

#include <cstdio>

namespace {

const char kRoundFrameDown[] = ":/image/theme/roundframe_down.png";

QString presetPath(const char *normal, const char *hover)
{
    return QLatin1String(normal) + QLatin1Char('|') + QLatin1String(hover) + QLatin1Char('|')
        + QLatin1String(kRoundFrameDown);
}

// Corner radius of the rounded colour frames.
int cornerRadius(ZFrameItem::FrameType type)
{
    return type == ZFrameItem::RoundRect ? 3 : 4 + (type - ZFrameItem::RoundRect4Pixel);
}

void drawGrid(QPainter *painter, const QRectF &target, const QPixmap &pixmap, ZFrameItem::FrameType type)
{
    if (type == ZFrameItem::GridFour)
        ZUtility::drawGridFour(painter, target, pixmap);
    else if (type == ZFrameItem::GridFrameFour)
        ZUtility::drawGridFrameFour(painter, target, pixmap);
    else
        ZUtility::drawGridNine(painter, target, pixmap);
}

// The largest frame put together in one piece, in pixels (a megabyte): the
// size of a button or a field, not of a window's background.
constexpr qint64 kMostComposedPixels = 256 * 1024;

// A grid frame is several pieces of its image; every button of a form draws
// the same ones. The pieces are put together once per image, type and size
// and then drawn whole, at the nearest device pixel. Only where that is
// what drawing the pieces gives: one device pixel per unit, no rotation or
// scaling, source-over, and a frame no smaller than its image (the pieces
// then lie side by side). Large frames are drawn piece by piece, clipped to
// what is exposed.
void drawGridComposed(QPainter *painter, const QRectF &target, const QPixmap &pixmap, ZFrameItem::FrameType type)
{
    const QRect whole = target.toRect();
    if (QRectF(whole) != target || qint64(whole.width()) * whole.height() > kMostComposedPixels
        || painter->worldTransform().type() > QTransform::TxTranslate
        || painter->compositionMode() != QPainter::CompositionMode_SourceOver
        || painter->device()->devicePixelRatio() != 1 || pixmap.devicePixelRatio() != 1
        || whole.width() < pixmap.width() || whole.height() < pixmap.height()) {
        drawGrid(painter, target, pixmap, type);
        return;
    }
    // Made on every paint: formatted at once rather than by four arg() calls.
    char text[80];
    const int length = std::snprintf(text, sizeof text, "zframe:%lld:%d:%dx%d", qlonglong(pixmap.cacheKey()),
                                     int(type), whole.width(), whole.height());
    const QString key = QString::fromLatin1(text, length);
    QPixmap composed;
    if (!QPixmapCache::find(key, &composed)) {
        composed = QPixmap(whole.size());
        composed.fill(Qt::transparent);
        QPainter piece(&composed);
        drawGrid(&piece, QRectF(QPointF(), whole.size()), pixmap, type);
        piece.end();
        QPixmapCache::insert(key, composed);
    }
    painter->drawPixmap(whole.topLeft(), composed);
}

} // namespace

// ---------------------------------------------------------------------------
// ZFrameItemPrivate

void ZFrameItemPrivate::init()
{
    q_func()->setFlag(QGraphicsItem::ItemClipsToShape);
}

void ZFrameItemPrivate::loadStates()
{
    Z_Q(ZFrameItem);
    if (!imagePath.isEmpty()) {
        pixmaps = ZResource::loadPixmaps(imagePath, q->hasTheme());
        q->update();
    } else if (!frameColor.isEmpty()) {
        loadColors();
        q->update();
    }
}

void ZFrameItemPrivate::loadColors()
{
    // Appends on purpose: documents and controls build colour lists by
    // setting frameColor more than once, and a theme change appends again.
    const bool tinted = q_func()->hasTheme();
    const QStringList parts = frameColor.split(QLatin1Char('|'));
    for (const QString &part : parts) {
        const QStringList fields = part.split(QLatin1Char(','));
        if (fields.size() < 3)
            continue;
        auto channel = [&fields](int i) { return qBound(0, fields.at(i).trimmed().toInt(), 255); };
        QColor color(channel(0), channel(1), channel(2), fields.size() > 3 ? channel(3) : 255);
        if (tinted)
            color = ZTheme::convertToThemeColor(color);
        colors.append(color);
    }
}

int ZFrameItemPrivate::shownIndex(int count) const
{
    return index >= 0 && index < count ? index : 0;
}

QByteArray ZFrameItemPrivate::checkedPropertyName() const
{
    // One name per instance, so that the flag never leaks between items
    // that share a property-setting path (skins, copies of settings).
    return QByteArrayLiteral("ZFrameItem") + QByteArray::number(reinterpret_cast<quintptr>(q_func()));
}

// ---------------------------------------------------------------------------
// ZFrameItem

ZFrameItem::ZFrameItem(QGraphicsItem *parent)
    : ZFrameItem(*new ZFrameItemPrivate, parent)
{
}

ZFrameItem::ZFrameItem(const QString &imagePath, FrameType type, QGraphicsItem *parent)
    : ZFrameItem(*new ZFrameItemPrivate, parent)
{
    setImagePath(imagePath);
    setFrameType(type);
}

ZFrameItem::ZFrameItem(ZFrameItemPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    d_func()->init();
}

ZFrameItem::~ZFrameItem() = default;

ZFrameItem::DefaultFrame ZFrameItem::defaultFrame() const
{
    return BadDefalut;
}

void ZFrameItem::setDefaultFrame(DefaultFrame frame)
{
    QString path;
    switch (frame) {
    case RoundWhite:
        path = presetPath(":/image/theme/roundframe_normal.png", ":/image/theme/roundframe_hover.png");
        break;
    case RoundTranparent:
        path = presetPath(":/image/theme/roundframe5_normal.png", ":/image/theme/roundframe5_hover.png");
        break;
    case RoundFlatTranslucent:
        path = presetPath(":/image/theme/roundframe2_normal.png", ":/image/theme/roundframe2_hover.png");
        break;
    case RoundRaiseTranslucent:
        path = presetPath(":/image/theme/roundframe3_normal.png", ":/image/theme/roundframe3_hover.png");
        break;
    case RoundSunkenTranslucent:
        path = presetPath(":/image/theme/roundframe4_normal.png", ":/image/theme/roundframe4_hover.png");
        break;
    default:
        return;
    }
    setImagePath(path);
}

QString ZFrameItem::imagePath() const
{
    return d_func()->imagePath;
}

void ZFrameItem::setImagePath(const QString &path)
{
    Z_D(ZFrameItem);
    if (d->imagePath == path)
        return;
    d->imagePath = path;
    d->loadStates();
}

QString ZFrameItem::frameColor() const
{
    return d_func()->frameColor;
}

void ZFrameItem::setFrameColor(const QString &colors)
{
    Z_D(ZFrameItem);
    if (d->frameColor == colors)
        return;
    d->frameColor = colors;
    d->loadStates();
}

ZFrameItem::FrameType ZFrameItem::frameType() const
{
    return d_func()->frameType;
}

void ZFrameItem::setFrameType(FrameType type)
{
    Z_D(ZFrameItem);
    if (d->frameType == type)
        return;
    d->frameType = type;
    update();
}

int ZFrameItem::framePixel() const
{
    return d_func()->framePixel;
}

void ZFrameItem::setFramePixel(int pixel)
{
    d_func()->framePixel = pixel;
}

bool ZFrameItem::smooth() const
{
    return d_func()->smooth;
}

void ZFrameItem::setSmooth(bool smooth)
{
    Z_D(ZFrameItem);
    if (d->smooth == smooth)
        return;
    d->smooth = smooth;
    update();
}

bool ZFrameItem::frameSwitch() const
{
    return d_func()->frameSwitch;
}

void ZFrameItem::setFrameSwitch(bool on)
{
    d_func()->frameSwitch = on;
}

bool ZFrameItem::acceptClick() const
{
    return acceptedMouseButtons() & Qt::LeftButton;
}

void ZFrameItem::setAcceptClick(bool on)
{
    setAcceptedMouseButtons(on ? Qt::LeftButton : Qt::NoButton);
}

bool ZFrameItem::acceptHover() const
{
    return acceptHoverEvents();
}

void ZFrameItem::setAcceptHover(bool on)
{
    setAcceptHoverEvents(on);
}

int ZFrameItem::frameIndex() const
{
    return d_func()->index;
}

void ZFrameItem::setFrameIndex(int index)
{
    Z_D(ZFrameItem);
    const qsizetype count = d->frameType < BitmapEnd ? d->pixmaps.size() : d->colors.size();
    if (index < 0 || index >= count)
        index = 0; // an unavailable state shows the normal look
    if (d->index == index)
        return;
    d->index = index;
    update();
}

int ZFrameItem::frameCount() const
{
    return int(d_func()->pixmaps.size());
}

void ZFrameItem::appendPixmap(const QPixmap &pixmap)
{
    d_func()->pixmaps.append(pixmap);
    update();
}

QPixmap ZFrameItem::currentPixmap() const
{
    Z_D(const ZFrameItem);
    if (d->pixmaps.isEmpty())
        return QPixmap();
    return d->pixmaps.at(d->shownIndex(int(d->pixmaps.size())));
}

QSizeF ZFrameItem::pixmapSize() const
{
    return currentPixmap().deviceIndependentSize();
}

void ZFrameItem::setFixSizeByPixmapSize()
{
    // Without an image there is no size to take; the item keeps its own.
    if (!currentPixmap().isNull())
        setFixSize(pixmapSize());
}

void ZFrameItem::setFixWidthByPixmapWidth()
{
    if (!currentPixmap().isNull())
        setFixWidth(pixmapSize().width());
}

void ZFrameItem::setFixHeightByPixmapHeight()
{
    if (!currentPixmap().isNull())
        setFixHeight(pixmapSize().height());
}

void ZFrameItem::setNormal()
{
    Z_D(ZFrameItem);
    d->requestIndex(d->stateIndex(Normal));
}

void ZFrameItem::setHover()
{
    Z_D(ZFrameItem);
    d->requestIndex(d->stateIndex(Hover));
}

void ZFrameItem::setDown()
{
    Z_D(ZFrameItem);
    d->requestIndex(d->stateIndex(Down));
}

void ZFrameItem::setSelected()
{
    Z_D(ZFrameItem);
    d->requestIndex(d->stateIndex(Selected));
}

void ZFrameItem::setDisable()
{
    Z_D(ZFrameItem);
    d->requestIndex(d->stateIndex(Disable));
}

void ZFrameItem::setChecked(bool checked)
{
    Z_D(ZFrameItem);
    setProperty(d->checkedPropertyName().constData(), checked);
    int index = d->index;
    if (index < CheckNormal && checked)
        index += 4;
    else if (index >= CheckNormal && !checked)
        index -= 4;
    setFrameIndex(index);
}

bool ZFrameItem::hasChecked() const
{
    return property(d_func()->checkedPropertyName().constData()).toBool();
}

void ZFrameItem::setFrameState(FrameState state)
{
    setChecked(state >= CheckNormal);
    setFrameIndex(state);
}

ZFrameItem::FrameState ZFrameItem::frameState() const
{
    return FrameState(d_func()->index);
}

void ZFrameItem::setEnabled(bool enabled)
{
    QGraphicsItem::setEnabled(enabled);
    if (!d_func()->frameSwitch)
        return;
    if (enabled)
        setNormal();
    else
        setDisable();
}

void ZFrameItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    Z_D(ZFrameItem);
    const QRectF r = rect();
    const FrameType type = d->frameType;
    if (type < BitmapEnd) {
        if (d->pixmaps.isEmpty())
            return;
        const QPixmap &pixmap = d->pixmaps.at(d->shownIndex(int(d->pixmaps.size())));
        switch (type) {
        case OneTopLeft: ZUtility::drawOneTopLeft(painter, r, pixmap); break;
        case OneTopRight: ZUtility::drawOneTopRight(painter, r, pixmap); break;
        case OneBotLeft: ZUtility::drawOneBotLeft(painter, r, pixmap); break;
        case OneBotRight: ZUtility::drawOneBotRight(painter, r, pixmap); break;
        case OneHCenter: ZUtility::drawOneHCenter(painter, r, pixmap); break;
        case OneVCenter: ZUtility::drawOneVCenter(painter, r, pixmap); break;
        case OneHVCenter: ZUtility::drawOneHVCenter(painter, r, pixmap); break;
        case TileH: ZUtility::drawTileH(painter, r, pixmap); break;
        case TileV: ZUtility::drawTileV(painter, r, pixmap); break;
        case TileHV: ZUtility::drawTileHV(painter, r, pixmap); break;
        case StretchH: ZUtility::drawStretchH(painter, r, pixmap, d->smooth); break;
        case StretchV: ZUtility::drawStretchV(painter, r, pixmap, d->smooth); break;
        case StretchHV: ZUtility::drawStretchHV(painter, r, pixmap, d->smooth); break;
        case StretchHTwoSize: ZUtility::drawStretchHTwoSize(painter, r, pixmap); break;
        case StretchVTwoSize: ZUtility::drawStretchVTwoSize(painter, r, pixmap); break;
        case StretchHMiddle: ZUtility::drawStretchHMiddle(painter, r, pixmap); break;
        case StretchVMiddle: ZUtility::drawStretchVMiddle(painter, r, pixmap); break;
        case GridFour:
        case GridFrameFour:
        case GridNine: drawGridComposed(painter, r, pixmap, type); break;
        default: break; // negative values: no rule
        }
    } else if (type > BitmapEnd && type < ColorFrameEnd) {
        if (d->colors.isEmpty())
            return;
        const QColor &color = d->colors.at(d->shownIndex(int(d->colors.size())));
        if (type == Rectangle)
            ZUtility::drawRectangle(painter, r, color, d->framePixel);
        else
            ZUtility::drawRoundRect(painter, r, color, d->framePixel, cornerRadius(type));
    }
}

void ZFrameItem::doThemeChange()
{
    if (hasTheme())
        d_func()->loadStates();
    ZWidget::doThemeChange();
}

void ZFrameItem::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    // Accepted without the base handler, so that the release comes here.
    event->accept();
    if (d_func()->frameSwitch)
        setDown();
    Q_EMIT pressed();
}

void ZFrameItem::mouseReleaseEvent(QGraphicsSceneMouseEvent *)
{
    if (d_func()->frameSwitch)
        setNormal();
    // A receiver may delete the item on the first signal.
    const QPointer<ZFrameItem> self(this);
    Q_EMIT released();
    if (self)
        Q_EMIT clicked();
}

// The base handlers run first: a receiver of the signals may delete the item.

void ZFrameItem::hoverEnterEvent(QGraphicsSceneHoverEvent *event)
{
    ZWidget::hoverEnterEvent(event);
    if (d_func()->frameSwitch)
        setHover();
    Q_EMIT enter();
}

void ZFrameItem::hoverMoveEvent(QGraphicsSceneHoverEvent *event)
{
    ZWidget::hoverMoveEvent(event);
    if (d_func()->frameSwitch)
        setHover();
}

void ZFrameItem::hoverLeaveEvent(QGraphicsSceneHoverEvent *event)
{
    ZWidget::hoverLeaveEvent(event);
    if (d_func()->frameSwitch)
        setNormal();
    Q_EMIT leave();
}

Z_REGISTER_WIDGET(ZFrameItem);
