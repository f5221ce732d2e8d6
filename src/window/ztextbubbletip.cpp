#include "ztextbubbletip_p.h"
#include "zcreator.h"
#include "zlabel.h"
#include "ztextitem.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QMouseEvent>
#include <QTimer>

#include <cmath>

ZTextBubbleTipPrivate::ZTextBubbleTipPrivate(ZTextBubbleTip *q)
    : ZBubbleTipPrivate(q)
{
}

ZTextBubbleTipPrivate::~ZTextBubbleTipPrivate() = default;

void ZTextBubbleTipPrivate::updateContent()
{
    Z_Q(ZTextBubbleTip);
    const bool wrap = textWidth > 0;
    ZWidget *active = wrap ? static_cast<ZWidget *>(textItem) : static_cast<ZWidget *>(label);
    ZWidget *idle = wrap ? static_cast<ZWidget *>(label) : static_cast<ZWidget *>(textItem);
    idle->setBylayout(false);
    idle->hide();
    active->setBylayout(true);
    active->show();

    QSizeF content;
    if (wrap) {
        textItem->setText(text);
        content = textItem->hitTextSize(textWidth);
    } else {
        label->setText(text);
        const QFontMetricsF fm(label->font());
        content = QSizeF(std::ceil(fm.horizontalAdvance(text)) + 1, std::ceil(fm.height()));
    }
    active->setFixSize(content);

    const QMargins rm = q->rootWidget()->margins();
    const QMargins sm = q->sceneMargins();
    q->resize(int(std::ceil(content.width())) + rm.left() + rm.right() + sm.left() + sm.right(),
              int(std::ceil(content.height())) + rm.top() + rm.bottom() + sm.top() + sm.bottom());
}

void ZTextBubbleTipPrivate::restartCountdown()
{
    Z_Q(ZTextBubbleTip);
    elapseTimer->stop();
    if (elapseTime > 0 && q->isVisible())
        elapseTimer->start(elapseTime);
}

ZTextBubbleTip::ZTextBubbleTip(QWidget *parent)
    : ZBubbleTip(*new ZTextBubbleTipPrivate(this), parent)
{
    Z_D(ZTextBubbleTip);
    ZWidget *root = rootWidget();
    root->setMargins(QMargins(10, 6, 10, 6));

    d->label = new ZLabel;
    d->label->setObjectName(QStringLiteral("label"));
    d->label->setTextColor(QColor(51, 51, 51));
    root->addItem(d->label);

    d->textItem = new ZTextItem;
    d->textItem->setObjectName(QStringLiteral("text"));
    d->textItem->setTextColor(QColor(51, 51, 51));
    root->addItem(d->textItem);

    d->elapseTimer = new QTimer(this);
    d->elapseTimer->setSingleShot(true);
    connect(d->elapseTimer, &QTimer::timeout, this, &ZTextBubbleTip::on_elapse_timeout);

    d->updateContent();
}

ZTextBubbleTip::~ZTextBubbleTip() = default;

QString ZTextBubbleTip::text() const
{
    return d_func()->text;
}

void ZTextBubbleTip::setText(const QString &text)
{
    Z_D(ZTextBubbleTip);
    if (d->text == text)
        return;
    d->text = text;
    adjustToText();
}

int ZTextBubbleTip::textWidth() const
{
    return d_func()->textWidth;
}

void ZTextBubbleTip::setTextWidth(int width)
{
    Z_D(ZTextBubbleTip);
    width = std::max(0, width);
    if (d->textWidth == width)
        return;
    d->textWidth = width;
    adjustToText();
}

int ZTextBubbleTip::elapseTime() const
{
    return d_func()->elapseTime;
}

void ZTextBubbleTip::setElapseTime(int msec)
{
    Z_D(ZTextBubbleTip);
    d->elapseTime = std::max(0, msec);
    d->restartCountdown();
}

Qt::Orientation ZTextBubbleTip::orientation() const
{
    return d_func()->orientation;
}

void ZTextBubbleTip::setOrientation(Qt::Orientation orientation)
{
    Z_D(ZTextBubbleTip);
    if (orientation != Qt::Horizontal && orientation != Qt::Vertical)
        return;
    d->orientation = orientation;
    setDirection(orientation == Qt::Horizontal ? RightCenter : BottomCenter);
    adjustToText();
}

ZTextItem *ZTextBubbleTip::textObject() const
{
    return d_func()->textItem;
}

ZLabel *ZTextBubbleTip::labelObject() const
{
    return d_func()->label;
}

void ZTextBubbleTip::adjustToText()
{
    d_func()->updateContent();
    if (isVisible())
        resetGeometry();
}

void ZTextBubbleTip::setVisible(bool visible)
{
    if (visible && !isVisible())
        d_func()->updateContent();
    ZBubbleTip::setVisible(visible);
}

void ZTextBubbleTip::on_clicked()
{
    emit clicked();
}

void ZTextBubbleTip::on_elapse_timeout()
{
    hide();
}

bool ZTextBubbleTip::event(QEvent *event)
{
    Z_D(ZTextBubbleTip);
    // The countdown waits while the mouse is over the tip.
    if (event->type() == QEvent::Enter)
        d->elapseTimer->stop();
    else if (event->type() == QEvent::Leave)
        d->restartCountdown();
    return ZBubbleTip::event(event);
}

void ZTextBubbleTip::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        on_clicked();
    ZBubbleTip::mousePressEvent(event);
}

void ZTextBubbleTip::showEvent(QShowEvent *event)
{
    ZBubbleTip::showEvent(event);
    d_func()->restartCountdown();
}

void ZTextBubbleTip::hideEvent(QHideEvent *event)
{
    d_func()->elapseTimer->stop();
    ZBubbleTip::hideEvent(event);
}

Z_REGISTER_WINDOW(ZTextBubbleTip);
