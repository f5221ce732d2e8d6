#include "ztextitem.h"
#include "ztextitem_p.h"

#include "zcreator.h"
#include "zresource.h"

#include <QtCore/qurl.h>
#include <QtGui/qabstracttextdocumentlayout.h>
#include <QtGui/qdesktopservices.h>
#include <QtGui/qtextdocument.h>
#include <QtGui/qtextobject.h>
#include <QtWidgets/qgraphicssceneevent.h>
#include <QtWidgets/qgraphicsitem.h>

void ZTextItemPrivate::init()
{
    Z_Q(ZTextItem);
    // The inner item only draws; links and cursors are handled here.
    q->setFlag(QGraphicsItem::ItemHasNoContents);
    q->setFlag(QGraphicsItem::ItemClipsChildrenToShape);
    q->setAcceptedMouseButtons(Qt::LeftButton);
    q->setAcceptHoverEvents(true);

    text = new QGraphicsTextItem(q);
    text->setOpenExternalLinks(false);
    text->setTextInteractionFlags(Qt::NoTextInteraction);
    text->setAcceptedMouseButtons(Qt::NoButton);
    text->setAcceptHoverEvents(false);
}

ZTextItem::ZTextItem(QGraphicsItem *parent)
    : ZTextItem(*new ZTextItemPrivate, parent)
{
}

ZTextItem::ZTextItem(const QString &text, QGraphicsItem *parent)
    : ZTextItem(parent)
{
    setText(text);
}

ZTextItem::ZTextItem(ZTextItemPrivate &dd, QGraphicsItem *parent)
    : ZWidget(dd, parent)
{
    d_func()->init();
}

ZTextItem::~ZTextItem() = default;

void ZTextItem::setText(const QString &text)
{
    Z_D(ZTextItem);
    if (Qt::mightBeRichText(text))
        d->text->setHtml(text);
    else
        d->text->setPlainText(text);
    if (d->idealSizeAsMinimum)
        updateGeometry();
}

QString ZTextItem::toHtml() const
{
    return d_func()->text->toHtml();
}

QString ZTextItem::toText() const
{
    return d_func()->text->toPlainText();
}

QString ZTextItem::filePath() const
{
    return d_func()->filePath;
}

void ZTextItem::setFilePath(const QString &path)
{
    Z_D(ZTextItem);
    d->filePath = path;
    setText(QString::fromUtf8(ZResource::loadRawData(path)));
}

QColor ZTextItem::textColor() const
{
    return d_func()->text->defaultTextColor();
}

void ZTextItem::setTextColor(const QColor &color)
{
    Z_D(ZTextItem);
    if (d->text->defaultTextColor() == color)
        return;
    d->text->setDefaultTextColor(color);
}

int ZTextItem::fontSize() const
{
    return d_func()->text->font().pixelSize();
}

void ZTextItem::setFontSize(int pixels)
{
    Z_D(ZTextItem);
    QFont font = d->text->font();
    if (pixels < 1 || font.pixelSize() == pixels)
        return;
    font.setPixelSize(pixels);
    d->text->setFont(font);
    if (d->idealSizeAsMinimum)
        updateGeometry();
}

QTextDocument *ZTextItem::document() const
{
    return d_func()->text->document();
}

QTextCursor ZTextItem::textCursor() const
{
    return d_func()->text->textCursor();
}

QGraphicsTextItem *ZTextItem::graphicsText() const
{
    return d_func()->text;
}

QSizeF ZTextItem::idealSize() const
{
    QGraphicsTextItem *text = d_func()->text;
    // adjustSize() picks a width of its own; the text shown keeps following the item.
    const qreal width = text->textWidth();
    text->adjustSize();
    const QSizeF size = text->boundingRect().size();
    text->setTextWidth(width);
    return size;
}

QSizeF ZTextItem::hitTextSize(int width)
{
    QGraphicsTextItem *text = d_func()->text;
    text->setTextWidth(width);
    return text->boundingRect().size();
}

bool ZTextItem::idealSizeAsMinimum() const
{
    return d_func()->idealSizeAsMinimum;
}

void ZTextItem::setIdealSizeAsMinimum(bool on)
{
    Z_D(ZTextItem);
    if (d->idealSizeAsMinimum == on)
        return;
    d->idealSizeAsMinimum = on;
    updateGeometry();
}

int ZTextItem::documentPosition(const QPointF &pos) const
{
    const QGraphicsTextItem *text = d_func()->text;
    const QTextDocument *doc = text->document();
    const int position = doc->documentLayout()->hitTest(text->mapFromParent(pos), Qt::ExactHit);
    if (position < 0)
        return -1;
    return qMin(position, doc->characterCount() - 1);
}

QTextCursor ZTextItem::cursorFromPoint(const QPoint &pos) const
{
    const int position = documentPosition(pos);
    if (position < 0)
        return QTextCursor();
    QTextCursor cursor(document());
    cursor.setPosition(position);
    return cursor;
}

QString ZTextItem::urlFromPoint(const QPoint &pos) const
{
    const int position = documentPosition(pos);
    if (position < 0)
        return QString();
    // The format of the character at the position, not of the one before it.
    const QTextBlock block = document()->findBlock(position);
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        if (fragment.contains(position))
            return fragment.charFormat().anchorHref();
    }
    return QString();
}

bool ZTextItem::isLinkObject(const QPoint &pos) const
{
    return !urlFromPoint(pos).isEmpty();
}

ZWidget::DragPolicy ZTextItem::hitTest(const QPointF &pos) const
{
    if (isLinkObject(pos.toPoint()))
        return Nothing;
    return ZWidget::hitTest(pos);
}

QSizeF ZTextItem::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    if (which == Qt::MinimumSize && d_func()->idealSizeAsMinimum)
        return idealSize();
    return ZWidget::sizeHint(which, constraint);
}

void ZTextItem::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    ZWidget::resizeEvent(event);
    Z_D(ZTextItem);
    d->text->setPos(0, 0);
    d->text->setTextWidth(event->newSize().width());
}

void ZTextItem::hoverMoveEvent(QGraphicsSceneHoverEvent *event)
{
    setCursor(isLinkObject(event->pos().toPoint()) ? Qt::PointingHandCursor : Qt::ArrowCursor);
    ZWidget::hoverMoveEvent(event);
}

void ZTextItem::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    // Taken so that the release comes here.
    event->accept();
}

void ZTextItem::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    const QString url = urlFromPoint(event->pos().toPoint());
    if (!url.isEmpty())
        QDesktopServices::openUrl(QUrl(url));
}

Z_REGISTER_WIDGET(ZTextItem);
