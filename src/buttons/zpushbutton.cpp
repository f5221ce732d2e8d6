#include "zpushbutton.h"
#include "zpushbutton_p.h"

#include "zcreator.h"
#include "zframeitem.h"
#include "zimageitem.h"
#include "zlabel.h"
#include "zspacer.h"

#include <QtWidgets/qgraphicslinearlayout.h>

namespace {

const char kDefaultImages[] = ":/image/theme/pushbutton_normal.png|:/image/theme/pushbutton_hover.png|"
                              ":/image/theme/pushbutton_pressdown.png|:/image/theme/pushbutton_disable.png";

} // namespace

// ---------------------------------------------------------------------------
// ZPushButtonPrivate

void ZPushButtonPrivate::init()
{
    Z_Q(ZPushButton);
    // The content shifts while pressed and must not show outside the button.
    q->setFlag(QGraphicsItem::ItemClipsChildrenToShape);

    auto *f = new ZFrameItem;
    // Parented first: whether the images are tinted depends on the ancestors.
    q->addChild(f);
    f->setObjectName(QStringLiteral("PushButtonBk"));
    // The button drives the frame; a press on it must reach the button.
    f->setAcceptedMouseButtons(Qt::NoButton);
    f->setFrameSwitch(false);
    f->setFrameType(ZFrameItem::GridFour);
    f->setZValue(1.0);
    f->setImagePath(QLatin1String(kDefaultImages));
    frame = f;

    auto *row = new ZSpacer;
    row->setAcceptedMouseButtons(Qt::NoButton);
    row->setLayoutType(ZWidget::HBox);
    row->setZValue(2.0);
    q->addChild(row);
    content = row;
}

QGraphicsLinearLayout *ZPushButtonPrivate::rowLayout() const
{
    return content ? dynamic_cast<QGraphicsLinearLayout *>(content->layout()) : nullptr;
}

bool ZPushButtonPrivate::verticalRow() const
{
    const QGraphicsLinearLayout *linear = rowLayout();
    return linear && linear->orientation() == Qt::Vertical;
}

void ZPushButtonPrivate::applyIconSize()
{
    if (!icon)
        return;
    if (verticalRow())
        icon->setFixHeight(iconSize);
    else
        icon->setFixWidth(iconSize);
}

void ZPushButtonPrivate::alignLabel()
{
    if (!label)
        return;
    label->setTextAlignment(textAlignment);
}

void ZPushButtonPrivate::alignIcon()
{
    if (!icon)
        return;
    icon->setImageAlignment(iconAlignment);
}

bool ZPushButtonPrivate::inLinearLayout() const
{
    return dynamic_cast<QGraphicsLinearLayout *>(q_func()->parentLayoutItem()) != nullptr;
}

// ---------------------------------------------------------------------------
// ZPushButton

ZPushButton::ZPushButton(QGraphicsItem *parent)
    : ZPushButton(*new ZPushButtonPrivate, parent)
{
}

ZPushButton::ZPushButton(ZPushButtonPrivate &dd, QGraphicsItem *parent)
    : ZAbstractButton(dd, parent)
{
    d_func()->init();
}

ZPushButton::~ZPushButton() = default;

QString ZPushButton::text() const
{
    Z_D(const ZPushButton);
    return d->label ? d->label->text() : QString();
}

void ZPushButton::setText(const QString &text)
{
    Z_D(ZPushButton);
    if (d->label) {
        d->label->setText(text);
        return;
    }
    if (text.isEmpty() || !d->content)
        return;
    auto *label = new ZLabel(d->content);
    d->label = label;
    label->setText(text);
    label->setTextMargins(d->textMargins);
    d->content->addItem(label);
    d->alignLabel();
}

QString ZPushButton::iconPath() const
{
    Z_D(const ZPushButton);
    return d->icon ? d->icon->imagePath() : QString();
}

void ZPushButton::setIconPath(const QString &path)
{
    Z_D(ZPushButton);
    if (d->icon) {
        d->icon->setImagePath(path);
        return;
    }
    if (path.isEmpty() || !d->content)
        return;
    auto *icon = new ZImageItem(d->content);
    icon->setImagePath(path);
    d->icon = icon;
    if (d->iconSize < 0)
        d->iconSize = icon->pixmapSize().width();
    d->applyIconSize();
    icon->setImageMargins(d->iconMargins);
    d->content->addItem(icon);
    d->alignIcon();
}

QString ZPushButton::imagePath() const
{
    Z_D(const ZPushButton);
    return d->frame ? d->frame->imagePath() : QString();
}

void ZPushButton::setImagePath(const QString &path)
{
    Z_D(ZPushButton);
    if (d->frame && d->frame->imagePath() != path)
        d->frame->setImagePath(path);
}

QColor ZPushButton::textColor() const
{
    Z_D(const ZPushButton);
    return d->label ? d->label->textColor() : QColor();
}

void ZPushButton::setTextColor(const QColor &color)
{
    Z_D(ZPushButton);
    if (d->label)
        d->label->setTextColor(color);
}

int ZPushButton::fontSize() const
{
    Z_D(const ZPushButton);
    return d->label ? d->label->fontSize() : -1;
}

void ZPushButton::setFontSize(int pixels)
{
    Z_D(ZPushButton);
    if (d->label)
        d->label->setFontSize(pixels);
}

bool ZPushButton::textBold() const
{
    Z_D(const ZPushButton);
    return d->label && d->label->bold();
}

void ZPushButton::setTextBold(bool bold)
{
    Z_D(ZPushButton);
    if (d->label)
        d->label->setBold(bold);
}

void ZPushButton::setFont(const QFont &font)
{
    Z_D(ZPushButton);
    if (d->label)
        d->label->setFont(font);
}

QPoint ZPushButton::clickOffset() const
{
    return d_func()->clickOffset;
}

void ZPushButton::setClickOffset(const QPoint &offset)
{
    Z_D(ZPushButton);
    if (d->clickOffset == offset)
        return;
    d->clickOffset = offset;
    if (d->content && state().testFlag(StatePressed) && !state().testFlag(StateNormal)
        && !state().testFlag(StateHover)) {
        d->content->setPos(offset);
    }
}

int ZPushButton::iconSize() const
{
    return d_func()->iconSize;
}

void ZPushButton::setIconSize(int size)
{
    Z_D(ZPushButton);
    if (d->iconSize == size)
        return;
    d->iconSize = size;
    d->applyIconSize();
}

QMargins ZPushButton::iconMargins() const
{
    return d_func()->iconMargins;
}

void ZPushButton::setIconMargins(const QMargins &margins)
{
    Z_D(ZPushButton);
    d->iconMargins = margins;
    if (d->icon)
        d->icon->setImageMargins(margins);
}

QMargins ZPushButton::textMargins() const
{
    return d_func()->textMargins;
}

void ZPushButton::setTextMargins(const QMargins &margins)
{
    Z_D(ZPushButton);
    d->textMargins = margins;
    if (d->label)
        d->label->setTextMargins(margins);
}

Qt::Alignment ZPushButton::textAlignment() const
{
    return d_func()->textAlignment;
}

void ZPushButton::setTextAlignment(Qt::Alignment alignment)
{
    Z_D(ZPushButton);
    d->textAlignment = alignment;
    d->alignLabel();
}

Qt::Alignment ZPushButton::iconAlignment() const
{
    return d_func()->iconAlignment;
}

void ZPushButton::setIconAlignment(Qt::Alignment alignment)
{
    Z_D(ZPushButton);
    d->iconAlignment = alignment;
    d->alignIcon();
}

Qt::Orientation ZPushButton::orientation() const
{
    return d_func()->verticalRow() ? Qt::Vertical : Qt::Horizontal;
}

void ZPushButton::setOrientation(Qt::Orientation orientation)
{
    Z_D(ZPushButton);
    if (orientation != Qt::Horizontal && orientation != Qt::Vertical)
        return;
    if (QGraphicsLinearLayout *linear = d->rowLayout(); linear && linear->orientation() != orientation)
        linear->setOrientation(orientation);
}

ZFrameItem *ZPushButton::buttonFrame() const
{
    return d_func()->frame;
}

ZImageItem *ZPushButton::buttonIcon() const
{
    return d_func()->icon;
}

ZLabel *ZPushButton::buttonText() const
{
    return d_func()->label;
}

ZSpacer *ZPushButton::buttonContent() const
{
    return d_func()->content;
}

void ZPushButton::setSizeToFrameImage()
{
    Z_D(ZPushButton);
    if (!d->inLinearLayout() || !d->frame || d->frame->currentPixmap().isNull())
        return;
    setFixSize(d->frame->pixmapSize());
}

void ZPushButton::setSizeToContent(const QMargins &margins)
{
    Z_D(ZPushButton);
    if (!d->inLinearLayout() || !d->content)
        return;
    if (d->label)
        d->label->setAutoAdjust(true);
    ZSpacer *row = d->content;
    row->setMargins(margins);
    // The row's size was fixed to the button's; it has to follow its children now.
    row->clearSizeHint();
    row->setSizeToChild(true);
    setFixWidth(row->effectiveSizeHint(Qt::MinimumSize).width());
}

void ZPushButton::setSizeToContent()
{
    setSizeToContent(QMargins());
}

void ZPushButton::addItem(ZWidget *item)
{
    Z_D(ZPushButton);
    if (d->content)
        d->content->addItem(item);
}

void ZPushButton::insertItem(ZWidget *item, int index)
{
    Z_D(ZPushButton);
    if (d->content)
        d->content->insertItem(item, index);
}

void ZPushButton::removeItem(ZWidget *item)
{
    Z_D(ZPushButton);
    if (d->content)
        d->content->removeItem(item);
}

void ZPushButton::updateLayout()
{
    Z_D(ZPushButton);
    const QRectF area(QPointF(0, 0), size());
    if (d->frame)
        d->frame->setGeometry(area);
    if (d->content) {
        d->content->setFixSize(area.size());
        d->content->setGeometry(area);
    }
}

void ZPushButton::updateState(ButtonStates state)
{
    Z_D(ZPushButton);
    // First match wins: a disabled word that still has a pointer bit shows
    // that pointer state's image.
    int index = -1;
    if (state.testFlag(StateNormal)) {
        index = 0;
        if (d->content)
            d->content->setPos(0, 0);
    } else if (state.testFlag(StateHover)) {
        index = 1;
    } else if (state.testFlag(StatePressed)) {
        index = 2;
        if (d->content)
            d->content->setPos(d->clickOffset);
    } else if (state.testFlag(StateDisable)) {
        index = 3;
    }
    if (index >= 0 && d->frame)
        d->frame->setFrameIndex(index);
}

Z_REGISTER_WIDGET(ZPushButton);
