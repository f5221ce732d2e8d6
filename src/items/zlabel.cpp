#include "zlabel.h"
#include "zlabel_p.h"

#include "zcreator.h"
#include "ztheme.h"

#include <QtCore/qurl.h>
#include <QtGui/qdesktopservices.h>
#include <QtGui/qfontmetrics.h>
#include <QtGui/qpainter.h>
#include <QtWidgets/qgraphicseffect.h>
#include <QtWidgets/qgraphicssceneevent.h>

#include <cmath>

void ZLabelPrivate::updateDisplayText()
{
    Z_Q(ZLabel);
    const QFont font = q->font();
    if (!autoAdjust) {
        const QRectF r = q->rect().marginsRemoved(QMarginsF(textMargins));
        const int width = int(r.width());
        if (textAlignment & Qt::TextWordWrap)
            displayText = text;
        else if (textAlignment & Qt::AlignLeft)
            displayText = QFontMetrics(font).elidedText(text, elide, width);
        else if (textAlignment & Qt::AlignHCenter)
            displayText = text; // centred text is clipped, never elided
        else if (textAlignment & Qt::AlignRight)
            displayText = QFontMetrics(font).elidedText(text, elide, width);
        return;
    }

    displayText = text;
    const qreal w = std::ceil(QFontMetricsF(font).horizontalAdvance(text)) + textMargins.left() + textMargins.right();
    if (!q->parentLayout())
        q->resize(w, q->size().height());
    else if (q->preferredWidth() != w)
        q->setFixWidth(w);
}

void ZLabelPrivate::installShadow()
{
    Z_Q(ZLabel);
    auto *effect = new QGraphicsDropShadowEffect(q);
    effect->setBlurRadius(shadowBlurRadius);
    effect->setColor(shadowColor);
    effect->setOffset(shadowOffset);
    shadowEffect = effect;
    q->setGraphicsEffect(effect);
}

void ZLabelPrivate::applyFont(const QFont &font)
{
    Z_Q(ZLabel);
    q->setFont(font);
    // A widget not yet polished is not told about its own font change.
    updateDisplayText();
    q->update();
}

void ZLabelPrivate::setUnderline(bool on)
{
    Z_Q(ZLabel);
    QFont font = q->font();
    if (font.underline() == on)
        return;
    font.setUnderline(on);
    q->setFont(font);
}

ZLabel::ZLabel(QGraphicsItem *parent)
    : ZLabel(*new ZLabelPrivate, parent)
{
}

ZLabel::ZLabel(ZLabelPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
}

ZLabel::~ZLabel() = default;

QString ZLabel::text() const
{
    return d_func()->text;
}

void ZLabel::setText(const QString &text)
{
    Z_D(ZLabel);
    if (d->text == text)
        return;
    d->text = text;
    d->updateDisplayText();
    update();
}

QString ZLabel::displayText() const
{
    return d_func()->displayText;
}

bool ZLabel::autoAdjust() const
{
    return d_func()->autoAdjust;
}

void ZLabel::setAutoAdjust(bool on)
{
    Z_D(ZLabel);
    if (d->autoAdjust == on)
        return;
    d->autoAdjust = on;
    d->updateDisplayText();
    update();
}

Qt::Alignment ZLabel::textAlignment() const
{
    return Qt::Alignment::fromInt(d_func()->textAlignment);
}

void ZLabel::setTextAlignment(Qt::Alignment alignment)
{
    Z_D(ZLabel);
    if (d->textAlignment == int(alignment.toInt()))
        return;
    d->textAlignment = int(alignment.toInt());
    d->updateDisplayText();
    update();
}

bool ZLabel::wordWrap() const
{
    return d_func()->textAlignment & Qt::TextWordWrap;
}

void ZLabel::setWordWrap(bool on)
{
    Z_D(ZLabel);
    if (wordWrap() == on)
        return;
    if (on)
        d->textAlignment |= Qt::TextWordWrap;
    else
        d->textAlignment &= ~Qt::TextWordWrap;
    d->updateDisplayText();
    update();
}

Qt::TextElideMode ZLabel::textElidedMode() const
{
    return d_func()->elide;
}

void ZLabel::setTextElidedMode(Qt::TextElideMode mode)
{
    Z_D(ZLabel);
    if (d->elide == mode)
        return;
    d->elide = mode;
    d->updateDisplayText();
    update();
}

QMargins ZLabel::textMargins() const
{
    return d_func()->textMargins;
}

void ZLabel::setTextMargins(const QMargins &margins)
{
    Z_D(ZLabel);
    if (d->textMargins == margins)
        return;
    d->textMargins = margins;
    d->updateDisplayText();
    update();
}

QColor ZLabel::textColor() const
{
    return d_func()->textColor;
}

void ZLabel::setTextColor(const QColor &color)
{
    Z_D(ZLabel);
    if (d->textColor == color)
        return;
    d->textColor = color;
    update();
}

int ZLabel::fontSize() const
{
    return font().pixelSize();
}

void ZLabel::setFontSize(int pixels)
{
    if (pixels < 1 || font().pixelSize() == pixels)
        return;
    QFont f = font();
    f.setPixelSize(pixels);
    d_func()->applyFont(f);
}

bool ZLabel::bold() const
{
    return font().bold();
}

void ZLabel::setBold(bool on)
{
    if (font().bold() == on)
        return;
    QFont f = font();
    f.setBold(on);
    d_func()->applyFont(f);
}

QString ZLabel::fontName() const
{
    return font().family();
}

void ZLabel::setFontName(const QString &family)
{
    if (family.isEmpty() || font().family() == family)
        return;
    QFont f = font();
    f.setFamily(family);
    d_func()->applyFont(f);
}

bool ZLabel::antialiase() const
{
    return d_func()->antialiase;
}

void ZLabel::setAntialiase(bool on)
{
    Z_D(ZLabel);
    if (d->antialiase == on)
        return;
    d->antialiase = on;
    update();
}

bool ZLabel::acceptClick() const
{
    return d_func()->click;
}

void ZLabel::setAcceptClick(bool on)
{
    d_func()->click = on;
}

QString ZLabel::linkUrl() const
{
    return d_func()->link;
}

void ZLabel::setLinkUrl(const QString &url)
{
    d_func()->link = url;
}

bool ZLabel::underlineOnHover() const
{
    return d_func()->underlineOnHover;
}

void ZLabel::setUnderlineOnHover(bool on)
{
    Z_D(ZLabel);
    if (d->underlineOnHover == on)
        return;
    d->underlineOnHover = on;
    setAcceptHoverEvents(on);
    if (!on)
        d->setUnderline(false);
}

bool ZLabel::handCursorOnHover() const
{
    return d_func()->handCursorOnHover;
}

void ZLabel::setHandCursorOnHover(bool on)
{
    d_func()->handCursorOnHover = on;
}

bool ZLabel::dropShadow() const
{
    return d_func()->shadow;
}

void ZLabel::setDropShadow(bool on)
{
    Z_D(ZLabel);
    if (d->shadow == on)
        return;
    d->shadow = on;
    if (on)
        d->installShadow();
    else
        setGraphicsEffect(nullptr);
}

QColor ZLabel::shadowColor() const
{
    return d_func()->shadowColor;
}

void ZLabel::setShadowColor(const QColor &color)
{
    d_func()->shadowColor = color;
}

QPointF ZLabel::shadowOffset() const
{
    return d_func()->shadowOffset;
}

void ZLabel::setShadowOffset(const QPointF &offset)
{
    d_func()->shadowOffset = offset;
}

qreal ZLabel::shadowBlurRadius() const
{
    return d_func()->shadowBlurRadius;
}

void ZLabel::setShadowBlurRadius(qreal radius)
{
    if (std::isfinite(radius))
        d_func()->shadowBlurRadius = radius;
}

void ZLabel::construct()
{
    ZWidget::construct();
    Z_D(ZLabel);
    if (d->shadow && isEnabled())
        d->installShadow();
}

void ZLabel::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    ZWidget::paint(painter, option, widget);
    Z_D(ZLabel);
    const QRectF r = rect().marginsRemoved(QMarginsF(d->textMargins));
    QColor color = d->textColor.isValid() ? d->textColor : palette().color(QPalette::WindowText);
    if (hasTheme())
        color = ZTheme::convertToThemeColor(color);

    painter->save();
    painter->setRenderHint(QPainter::TextAntialiasing, d->antialiase);
    painter->setFont(font());
    painter->setPen(color);
    painter->drawText(r, d->textAlignment | Qt::TextSingleLine, d->displayText);
    painter->restore();
}

void ZLabel::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    ZWidget::resizeEvent(event);
    d_func()->updateDisplayText();
}

void ZLabel::changeEvent(QEvent *event)
{
    ZWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        d_func()->updateDisplayText();
        update();
    }
}

QVariant ZLabel::itemChange(GraphicsItemChange change, const QVariant &value)
{
    const QVariant result = ZWidget::itemChange(change, value);
    if (change == ItemParentHasChanged && d_func()->autoAdjust) {
        // In or out of a layout decides whether the width is fixed or just set.
        d_func()->updateDisplayText();
    } else if (change == ItemEnabledHasChanged) {
        Z_D(ZLabel);
        if (!isEnabled()) {
            auto *grey = new QGraphicsColorizeEffect;
            grey->setColor(Qt::gray);
            setGraphicsEffect(grey);
        } else if (d->shadow) {
            d->installShadow();
        }
        // Enabled again without a shadow: the grey stays on purpose.
    }
    return result;
}

void ZLabel::hoverMoveEvent(QGraphicsSceneHoverEvent *event)
{
    Z_D(ZLabel);
    if (d->underlineOnHover)
        d->setUnderline(true);
    if (d->handCursorOnHover)
        setCursor(Qt::PointingHandCursor);
    ZWidget::hoverMoveEvent(event);
}

void ZLabel::hoverLeaveEvent(QGraphicsSceneHoverEvent *event)
{
    Z_D(ZLabel);
    if (d->underlineOnHover)
        d->setUnderline(false);
    if (d->handCursorOnHover)
        unsetCursor();
    ZWidget::hoverLeaveEvent(event);
}

void ZLabel::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    event->setAccepted(d_func()->click);
}

void ZLabel::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    event->setAccepted(d_func()->click);
}

void ZLabel::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    Z_D(ZLabel);
    if (!d->click) {
        event->ignore();
        return;
    }
    event->accept();
    if (!d->link.isEmpty())
        QDesktopServices::openUrl(QUrl::fromUserInput(d->link));
    Q_EMIT clicked();
}

Z_REGISTER_WIDGET(ZLabel);
