#include "ztabitem.h"
#include "ztabitem_p.h"

#include "zcreator.h"
#include "zframeitem.h"

#include <QtGui/qfontmetrics.h>
#include <QtGui/qpainter.h>
#include <QtWidgets/qgraphicssceneevent.h>

namespace {

constexpr QSizeF CloseSize(16, 12);
constexpr qreal CloseGap = 4;

} // namespace

const char *const ZTabItem::DefaultImagePath =
    ":/image/theme/tabframe_unselect.png|:/image/theme/tabframe_hover.png|"
    ":/image/theme/tabframe_select.png|:/image/theme/tabframe_disable.png";

void ZTabItemPrivate::init(const QString &initialText)
{
    Z_Q(ZTabItem);
    text = initialText;
    frame = new ZFrameItem(q);
    frame->setImagePath(QString::fromLatin1(ZTabItem::DefaultImagePath));
    frame->setFrameType(ZFrameItem::GridNine);
    frame->setAcceptClick(false);
    frame->setAcceptedMouseButtons(Qt::NoButton);
    // Under the text the tab paints itself.
    frame->setFlag(QGraphicsItem::ItemStacksBehindParent, true);

    close = new ZFrameItem(q);
    close->setImagePath(QStringLiteral(":/image/theme/frameclose_normal.png|:/image/theme/frameclose_hover.png|"
                                       ":/image/theme/frameclose_down.png"));
    close->setFrameType(ZFrameItem::StretchHV);
    close->setSmooth(true);
    close->setFrameSwitch(true);
    close->setAcceptHover(true);
    close->setFixSize(CloseSize);
    close->setVisible(false);
    QObject::connect(close, &ZFrameItem::clicked, q, [q] {
        if (q->isEnabled() && q->closable())
            Q_EMIT q->closeClicked();
    });

    page = new ZWidget;
    page->setParent(q);
    page->setLayoutType(ZWidget::VBox);

    q->setAcceptHoverEvents(true);
    q->setAcceptedMouseButtons(Qt::LeftButton);
    q->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    updateFrame();
}

void ZTabItemPrivate::updateFrame()
{
    Z_Q(ZTabItem);
    int state = ZFrameItem::Normal;
    if (!q->isEnabled())
        state = ZFrameItem::Disable;
    else if (selected)
        state = ZFrameItem::Selected;
    else if (hovered)
        state = ZFrameItem::Hover;
    frame->setFrameIndex(state);
}

QRectF ZTabItemPrivate::textRect() const
{
    const ZTabItem *q = q_func();
    QRectF r = q->rect().adjusted(padding, 0, -padding, 0);
    if (closable)
        r.setRight(r.right() - CloseSize.width() - CloseGap);
    return r;
}

ZTabItem::ZTabItem(QGraphicsItem *parent)
    : ZTabItem(QString(), parent)
{
}

ZTabItem::ZTabItem(const QString &text, QGraphicsItem *parent)
    : ZWidget(*new ZTabItemPrivate, parent)
{
    d_func()->init(text);
}

ZTabItem::~ZTabItem()
{
    // The page may live in another widget's stack by now.
    delete d_func()->page.data();
}

QString ZTabItem::text() const
{
    return d_func()->text;
}

void ZTabItem::setText(const QString &text)
{
    Z_D(ZTabItem);
    if (d->text == text)
        return;
    d->text = text;
    updateGeometry();
    update();
}

QColor ZTabItem::textColor() const
{
    return d_func()->textColor;
}

void ZTabItem::setTextColor(const QColor &color)
{
    Z_D(ZTabItem);
    if (!color.isValid() || d->textColor == color)
        return;
    d->textColor = color;
    update();
}

QString ZTabItem::imagePath() const
{
    return d_func()->frame->imagePath();
}

void ZTabItem::setImagePath(const QString &path)
{
    Z_D(ZTabItem);
    d->frame->setImagePath(path);
    d->updateFrame();
}

int ZTabItem::padding() const
{
    return d_func()->padding;
}

void ZTabItem::setPadding(int padding)
{
    Z_D(ZTabItem);
    padding = qBound(0, padding, 1000);
    if (d->padding == padding)
        return;
    d->padding = padding;
    updateGeometry();
    update();
}

bool ZTabItem::closable() const
{
    return d_func()->closable;
}

void ZTabItem::setClosable(bool on)
{
    Z_D(ZTabItem);
    if (d->closable == on)
        return;
    d->closable = on;
    d->close->setVisible(on);
    updateGeometry();
    update();
}

bool ZTabItem::isSelected() const
{
    return d_func()->selected;
}

void ZTabItem::setSelected(bool selected)
{
    Z_D(ZTabItem);
    if (d->selected == selected)
        return;
    d->selected = selected;
    d->updateFrame();
}

ZWidget *ZTabItem::page() const
{
    return d_func()->page;
}

void ZTabItem::setPage(ZWidget *page)
{
    Z_D(ZTabItem);
    if (d->page == page)
        return;
    delete d->page.data();
    d->page = page;
    if (page && !page->parent())
        page->setParent(this);
}

ZFrameItem *ZTabItem::tabFrame() const
{
    return d_func()->frame;
}

ZFrameItem *ZTabItem::closeButton() const
{
    return d_func()->close;
}

ZWidget *ZTabItem::layoutWidget()
{
    Z_D(ZTabItem);
    return d->page ? d->page.data() : this;
}

void ZTabItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    ZWidget::paint(painter, option, widget);
    Z_D(ZTabItem);
    const QRectF r = d->textRect();
    if (d->text.isEmpty() || r.width() <= 0)
        return;
    painter->setFont(font());
    QColor color = d->textColor;
    if (!isEnabled())
        color.setAlpha(color.alpha() / 2);
    painter->setPen(color);
    const QString shown = QFontMetricsF(font()).elidedText(d->text, Qt::ElideRight, r.width());
    painter->drawText(r, Qt::AlignCenter | Qt::TextSingleLine, shown);
}

QSizeF ZTabItem::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    Z_D(const ZTabItem);
    QSizeF hint = ZWidget::sizeHint(which, constraint);
    if (which != Qt::MinimumSize && which != Qt::PreferredSize)
        return hint;
    const QFontMetricsF metrics(font());
    qreal width = 2 * d->padding;
    if (which == Qt::PreferredSize)
        width += std::ceil(metrics.horizontalAdvance(d->text));
    if (d->closable)
        width += CloseSize.width() + CloseGap;
    const qreal height = std::ceil(metrics.height()) + 8;
    return QSizeF(width, which == Qt::PreferredSize ? height : qMin(height, hint.height()));
}

void ZTabItem::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    ZWidget::resizeEvent(event);
    Z_D(ZTabItem);
    const QSizeF size = event->newSize();
    d->frame->setGeometry(QRectF(QPointF(), size));
    d->close->setPos(size.width() - d->padding / 2.0 - CloseSize.width(),
                     std::round((size.height() - CloseSize.height()) / 2));
}

QVariant ZTabItem::itemChange(GraphicsItemChange change, const QVariant &value)
{
    if (change == ItemEnabledHasChanged)
        d_func()->updateFrame();
    return ZWidget::itemChange(change, value);
}

void ZTabItem::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    event->accept();
    Q_EMIT activated();
}

void ZTabItem::hoverEnterEvent(QGraphicsSceneHoverEvent *event)
{
    ZWidget::hoverEnterEvent(event);
    Z_D(ZTabItem);
    d->hovered = true;
    d->updateFrame();
}

void ZTabItem::hoverLeaveEvent(QGraphicsSceneHoverEvent *event)
{
    ZWidget::hoverLeaveEvent(event);
    Z_D(ZTabItem);
    d->hovered = false;
    d->updateFrame();
}

Z_REGISTER_WIDGET(ZTabItem);
