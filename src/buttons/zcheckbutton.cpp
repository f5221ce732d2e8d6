#include "zcheckbutton.h"
#include "zcheckbutton_p.h"

#include "zcreator.h"
#include "zframeitem.h"
#include "zlabel.h"

#include <QtWidgets/qgraphicslinearlayout.h>

namespace {

const char kDefaultImages[] =
    ":/image/theme/checkbox_default_normal.png|:/image/theme/checkbox_default_hover.png|"
    ":/image/theme/checkbox_default_pressdown.png|:/image/theme/checkbox_default_disable.png|"
    ":/image/theme/checkbox_selected_normal.png|:/image/theme/checkbox_selected_hover.png|"
    ":/image/theme/checkbox_selected_pressdown.png|:/image/theme/checkbox_selected_disable.png";

} // namespace

// ---------------------------------------------------------------------------
// ZCheckButtonPrivate

void ZCheckButtonPrivate::init()
{
    Z_Q(ZCheckButton);
    q->setFlag(QGraphicsItem::ItemHasNoContents);

    q->setLayoutType(ZWidget::HBox);
    auto *box = new ZFrameItem;
    // Parented first: whether the images are tinted depends on the ancestors.
    q->ZWidget::addItem(box);
    // The button drives the box; a press on it must reach the button.
    box->setAcceptedMouseButtons(Qt::NoButton);
    box->setFrameSwitch(false);
    box->setImagePath(QLatin1String(kDefaultImages));
    box->setFrameType(ZFrameItem::OneHVCenter);
    frame = box;
    fitBoxToImage();
}

QGraphicsLinearLayout *ZCheckButtonPrivate::rowLayout() const
{
    return dynamic_cast<QGraphicsLinearLayout *>(q_func()->layout());
}

void ZCheckButtonPrivate::fitBoxToImage()
{
    if (frame && !frame->currentPixmap().isNull())
        frame->setFixWidth(frame->pixmapSize().width());
}

// ---------------------------------------------------------------------------
// ZCheckButton

ZCheckButton::ZCheckButton(QGraphicsItem *parent)
    : ZCheckButton(*new ZCheckButtonPrivate, parent)
{
}

ZCheckButton::ZCheckButton(ZCheckButtonPrivate &dd, QGraphicsItem *parent)
    : ZAbstractButton(dd, parent)
{
    d_func()->init();
}

ZCheckButton::~ZCheckButton() = default;

QString ZCheckButton::expandImagePath(const QString &path)
{
    const QStringList parts = path.split(QLatin1Char('|'));
    switch (parts.size()) {
    case 2:
        return QStringLiteral("%1|%1|%1|%1|%2|%2|%2|%2").arg(parts[0], parts[1]);
    case 3:
        return QStringLiteral("%1|%2|%2|%1|%3|%3|%3|%3").arg(parts[0], parts[1], parts[2]);
    case 6:
        return QStringLiteral("%1|%2|%3|%3|%4|%5|%6|%6")
            .arg(parts[0], parts[1], parts[2], parts[3], parts[4], parts[5]);
    default:
        return path;
    }
}

QString ZCheckButton::text() const
{
    Z_D(const ZCheckButton);
    return d->label ? d->label->text() : QString();
}

void ZCheckButton::setText(const QString &text)
{
    Z_D(ZCheckButton);
    if (d->label) {
        d->label->setText(text);
        return;
    }
    if (text.isEmpty())
        return;
    auto *label = new ZLabel(this);
    label->setTextMargins(d->textMargins);
    label->setText(text);
    ZWidget::addItem(label);
    if (d->autoAdjust)
        label->setAutoAdjust(true);
    d->label = label;
}

QString ZCheckButton::imagePath() const
{
    Z_D(const ZCheckButton);
    return d->frame ? d->frame->imagePath() : QString();
}

void ZCheckButton::setImagePath(const QString &path)
{
    Z_D(ZCheckButton);
    if (d->frame)
        d->frame->setImagePath(expandImagePath(path));
}

int ZCheckButton::imageWidth() const
{
    Z_D(const ZCheckButton);
    return d->frame ? int(d->frame->fixWidth()) : -1;
}

void ZCheckButton::setImageWidth(int width)
{
    Z_D(ZCheckButton);
    if (d->frame)
        d->frame->setFixWidth(width);
}

bool ZCheckButton::autoAdjust() const
{
    return d_func()->autoAdjust;
}

void ZCheckButton::setAutoAdjust(bool on)
{
    Z_D(ZCheckButton);
    d->autoAdjust = on;
    if (d->label)
        d->label->setAutoAdjust(on);
    d->fitBoxToImage();
    setWidthToChild(on);
}

QMargins ZCheckButton::textMargins() const
{
    return d_func()->textMargins;
}

void ZCheckButton::setTextMargins(const QMargins &margins)
{
    Z_D(ZCheckButton);
    d->textMargins = margins;
    if (d->label)
        d->label->setTextMargins(margins);
}

bool ZCheckButton::vertical() const
{
    const QGraphicsLinearLayout *linear = d_func()->rowLayout();
    return linear && linear->orientation() == Qt::Vertical;
}

void ZCheckButton::setVertical(bool vertical)
{
    const Qt::Orientation orientation = vertical ? Qt::Vertical : Qt::Horizontal;
    if (QGraphicsLinearLayout *linear = d_func()->rowLayout(); linear && linear->orientation() != orientation)
        linear->setOrientation(orientation);
}

bool ZCheckButton::reverseOrder() const
{
    return false;
}

void ZCheckButton::setReverseOrder(bool)
{
    QGraphicsLinearLayout *linear = d_func()->rowLayout();
    if (!linear || linear->count() < 2)
        return;
    QGraphicsLayoutItem *first = linear->itemAt(0);
    linear->removeAt(0);
    linear->addItem(first);
}

ZFrameItem *ZCheckButton::frame() const
{
    return d_func()->frame;
}

ZLabel *ZCheckButton::label() const
{
    return d_func()->label;
}

void ZCheckButton::updateLayout()
{
    // The box layout places box and text.
}

void ZCheckButton::updateState(ButtonStates state)
{
    Z_D(ZCheckButton);
    ZFrameItem *box = d->frame;
    if (!box)
        return;
    box->setChecked(state.testFlag(StateChecked));
    if (state.testFlag(StateNormal))
        box->setNormal();
    else if (state.testFlag(StateHover))
        box->setHover();
    else if (state.testFlag(StatePressed))
        box->setDown();
    else if (state.testFlag(StateDisable))
        box->setDisable();
}

Z_REGISTER_WIDGET(ZCheckButton);
