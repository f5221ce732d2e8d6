#include "zprogressbar_p.h"
#include "zcreator.h"
#include "zframeitem.h"
#include "zlabel.h"

#include <QtCore/qmath.h>

namespace {

const char kHorizontalFrame[] = ":/image/theme/hslider_bkg.png";
const char kVerticalFrame[] = ":/image/theme/vslider_bkg.png";
const char kProgress[] = ":/image/theme/slider_select.png";

QString defaultFrame(Qt::Orientation orientation)
{
    return QLatin1String(orientation == Qt::Vertical ? kVerticalFrame : kHorizontalFrame);
}

void place(QGraphicsWidget *item, const QRectF &rect)
{
    if (item && item->geometry() != rect)
        item->setGeometry(rect);
}

} // namespace

// ---------------------------------------------------------------------------
// ZProgressBarPrivate

void ZProgressBarPrivate::init()
{
    Z_Q(ZProgressBar);
    frame = new ZFrameItem(defaultFrame(orientation), ZFrameItem::GridFour, q);
    progress = new ZFrameItem(QLatin1String(kProgress), ZFrameItem::GridFour, q);
    frame->setObjectName(QStringLiteral("frame"));
    progress->setObjectName(QStringLiteral("progress"));
    frame->setAcceptClick(false);
    progress->setAcceptClick(false);
    progress->setZValue(1);

    label = new ZLabel(q);
    label->setObjectName(QStringLiteral("text"));
    label->setTextAlignment(Qt::AlignCenter);
    label->setAcceptedMouseButtons(Qt::NoButton);
    label->setZValue(2);
    label->hide();

    q->setSizePolicy(QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed));
    q->setGeometry(QRectF(0, 0, 210, 9));
    updateText();
}

void ZProgressBarPrivate::layoutProgress()
{
    Z_Q(ZProgressBar);
    const QSizeF size = q->size();
    const qreal length = vertical() ? size.height() : size.width();
    // In double: the span of two ints can exceed an int.
    const double span = double(maximum) - double(minimum);
    const double fraction = span > 0 ? (double(value) - double(minimum)) / span : 0;
    qreal fill = qRound(fraction * length);
    if (value > minimum)
        fill = qMax<qreal>(fill, minSize);
    fill = qBound<qreal>(0, fill, length);
    if (progress) {
        progress->setVisible(fill > 0);
        place(progress, vertical() ? QRectF(0, size.height() - fill, size.width(), fill)
                                   : QRectF(0, 0, fill, size.height()));
    }
    if (label)
        place(label, QRectF(QPointF(), size));
}

void ZProgressBarPrivate::updateText()
{
    Z_Q(ZProgressBar);
    if (!label)
        return;
    const QString text = q->text();
    label->setText(text);
    label->setVisible(textVisible && !text.isEmpty());
}

// ---------------------------------------------------------------------------
// ZProgressBar

ZProgressBar::ZProgressBar(QGraphicsItem *parent)
    : ZProgressBar(*new ZProgressBarPrivate, parent)
{
}

ZProgressBar::ZProgressBar(Qt::Orientation orientation, QGraphicsItem *parent)
    : ZProgressBar(*new ZProgressBarPrivate, parent)
{
    setOrientation(orientation);
}

ZProgressBar::ZProgressBar(ZProgressBarPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    d_func()->init();
}

ZProgressBar::~ZProgressBar() = default;

int ZProgressBar::minimum() const
{
    return d_func()->minimum;
}

void ZProgressBar::setMinimum(int minimum)
{
    setRange(minimum, qMax(minimum, d_func()->maximum));
}

int ZProgressBar::maximum() const
{
    return d_func()->maximum;
}

void ZProgressBar::setMaximum(int maximum)
{
    setRange(qMin(d_func()->minimum, maximum), maximum);
}

void ZProgressBar::setRange(int minimum, int maximum)
{
    Z_D(ZProgressBar);
    maximum = qMax(minimum, maximum);
    if (minimum == d->minimum && maximum == d->maximum)
        return;
    d->minimum = minimum;
    d->maximum = maximum;
    const int clamped = qBound(minimum, d->value, maximum);
    if (clamped != d->value) {
        setValue(clamped);
        return;
    }
    d->layoutProgress();
    d->updateText();
}

int ZProgressBar::value() const
{
    return d_func()->value;
}

void ZProgressBar::setValue(int value)
{
    Z_D(ZProgressBar);
    value = qBound(d->minimum, value, d->maximum);
    if (value == d->value)
        return;
    d->value = value;
    d->layoutProgress();
    d->updateText();
    Q_EMIT valueChanged(value);
}

bool ZProgressBar::isTextVisible() const
{
    return d_func()->textVisible;
}

void ZProgressBar::setTextVisible(bool visible)
{
    Z_D(ZProgressBar);
    if (visible == d->textVisible)
        return;
    d->textVisible = visible;
    d->updateText();
}

int ZProgressBar::numberTextStyle() const
{
    return d_func()->numberTextStyle;
}

void ZProgressBar::setNumberTextStyle(int style)
{
    Z_D(ZProgressBar);
    if (style == d->numberTextStyle)
        return;
    d->numberTextStyle = style;
    d->updateText();
}

QString ZProgressBar::text() const
{
    Z_D(const ZProgressBar);
    switch (d->numberTextStyle) {
    case ValueOfMaximum:
        return QString::number(d->value) + QLatin1Char('/') + QString::number(d->maximum);
    case Percent: {
        const double span = double(d->maximum) - double(d->minimum);
        const int percent = span > 0 ? int((double(d->value) - double(d->minimum)) * 100 / span) : 0;
        return QString::number(percent) + QLatin1Char('%');
    }
    default:
        return QString();
    }
}

QColor ZProgressBar::textColor() const
{
    Z_D(const ZProgressBar);
    return d->label ? d->label->textColor() : QColor();
}

void ZProgressBar::setTextColor(const QColor &color)
{
    if (ZLabel *label = d_func()->label)
        label->setTextColor(color);
}

QString ZProgressBar::frameImage() const
{
    return d_func()->frame ? d_func()->frame->imagePath() : QString();
}

void ZProgressBar::setFrameImage(const QString &images)
{
    if (ZFrameItem *item = d_func()->frame)
        item->setImagePath(images);
}

QString ZProgressBar::progressImage() const
{
    return d_func()->progress ? d_func()->progress->imagePath() : QString();
}

void ZProgressBar::setProgressImage(const QString &images)
{
    if (ZFrameItem *item = d_func()->progress)
        item->setImagePath(images);
}

Qt::Orientation ZProgressBar::orientation() const
{
    return d_func()->orientation;
}

void ZProgressBar::setOrientation(Qt::Orientation orientation)
{
    Z_D(ZProgressBar);
    const Qt::Orientation o = orientation == Qt::Vertical ? Qt::Vertical : Qt::Horizontal;
    if (o == d->orientation)
        return;
    const Qt::Orientation previous = d->orientation;
    d->orientation = o;
    if (d->frame && d->frame->imagePath() == defaultFrame(previous))
        d->frame->setImagePath(defaultFrame(o));
    setSizePolicy(d->vertical() ? QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred)
                                : QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed));
    updateGeometry();
    d->layoutProgress();
}

int ZProgressBar::minSize() const
{
    return d_func()->minSize;
}

void ZProgressBar::setMinSize(int pixels)
{
    Z_D(ZProgressBar);
    pixels = qMax(0, pixels);
    if (pixels == d->minSize)
        return;
    d->minSize = pixels;
    d->layoutProgress();
}

QObject *ZProgressBar::frame() const
{
    return d_func()->frame;
}

QObject *ZProgressBar::progress() const
{
    return d_func()->progress;
}

QSizeF ZProgressBar::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    Z_D(const ZProgressBar);
    if (which != Qt::PreferredSize)
        return ZWidget::sizeHint(which, constraint);
    return d->vertical() ? QSizeF(9, 210) : QSizeF(210, 9);
}

void ZProgressBar::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    Z_D(ZProgressBar);
    ZWidget::resizeEvent(event);
    place(d->frame, QRectF(QPointF(), size()));
    d->layoutProgress();
}

Z_REGISTER_WIDGET(ZProgressBar);
