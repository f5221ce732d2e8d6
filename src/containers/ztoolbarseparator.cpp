#include "ztoolbarseparator.h"

#include "zcreator.h"
#include "ztheme.h"
#include "ztoolbar.h"
#include "zwidget_p.h"

#include <QtGui/qpainter.h>

class ZToolBarSeparatorPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZToolBarSeparator)
public:
    QColor color = QColor(180, 180, 180);
    QString imagePath;
    QPixmap pixmap;
    int extent = 9;
    int lineMargin = 3;
};

ZToolBarSeparator::ZToolBarSeparator(QGraphicsItem *parent)
    : ZWidget(*new ZToolBarSeparatorPrivate, parent)
{
    setAcceptedMouseButtons(Qt::NoButton);
}

ZToolBarSeparator::~ZToolBarSeparator() = default;

QColor ZToolBarSeparator::color() const
{
    return d_func()->color;
}

void ZToolBarSeparator::setColor(const QColor &color)
{
    Z_D(ZToolBarSeparator);
    if (d->color == color)
        return;
    d->color = color;
    update();
}

QString ZToolBarSeparator::imagePath() const
{
    return d_func()->imagePath;
}

void ZToolBarSeparator::setImagePath(const QString &path)
{
    Z_D(ZToolBarSeparator);
    if (d->imagePath == path)
        return;
    d->imagePath = path;
    d->pixmap = path.isEmpty() ? QPixmap() : ZTheme::getPixmap(path, hasTheme(), true);
    update();
}

int ZToolBarSeparator::extent() const
{
    return d_func()->extent;
}

void ZToolBarSeparator::setExtent(int extent)
{
    Z_D(ZToolBarSeparator);
    extent = qBound(1, extent, 1000);
    if (d->extent == extent)
        return;
    d->extent = extent;
    updateGeometry();
}

int ZToolBarSeparator::lineMargin() const
{
    return d_func()->lineMargin;
}

void ZToolBarSeparator::setLineMargin(int margin)
{
    Z_D(ZToolBarSeparator);
    margin = qBound(0, margin, 1000);
    if (d->lineMargin == margin)
        return;
    d->lineMargin = margin;
    update();
}

Qt::Orientation ZToolBarSeparator::lineOrientation() const
{
    const auto *bar = qobject_cast<const ZToolBar *>(parentWidget());
    return bar && bar->orientation() == Qt::Vertical ? Qt::Horizontal : Qt::Vertical;
}

void ZToolBarSeparator::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    ZWidget::paint(painter, option, widget);
    Z_D(ZToolBarSeparator);
    const QRectF r = rect();
    const bool vertical = lineOrientation() == Qt::Vertical;
    const int m = d->lineMargin;
    if (!d->pixmap.isNull()) {
        const qreal thick = d->pixmap.deviceIndependentSize().height();
        if (vertical) {
            const qreal length = r.height() - 2 * m;
            if (length <= 0)
                return;
            painter->save();
            // The skin image is a horizontal line: turn it upright.
            painter->translate(std::round(r.center().x() - thick / 2) + thick, r.top() + m);
            painter->rotate(90);
            painter->drawPixmap(QRectF(0, 0, length, thick), d->pixmap, d->pixmap.rect());
            painter->restore();
        } else {
            const QRectF target(r.left() + m, std::round(r.center().y() - thick / 2), r.width() - 2 * m, thick);
            if (target.width() > 0)
                painter->drawPixmap(target, d->pixmap, d->pixmap.rect());
        }
        return;
    }
    if (!d->color.isValid())
        return;
    const QColor c = hasTheme() ? ZTheme::convertToThemeColor(d->color) : d->color;
    const QRectF line = vertical ? QRectF(std::floor(r.center().x()), r.top() + m, 1, r.height() - 2 * m)
                                 : QRectF(r.left() + m, std::floor(r.center().y()), r.width() - 2 * m, 1);
    if (line.width() > 0 && line.height() > 0)
        painter->fillRect(line, c);
}

void ZToolBarSeparator::doThemeChange()
{
    ZWidget::doThemeChange();
    Z_D(ZToolBarSeparator);
    if (!d->imagePath.isEmpty())
        d->pixmap = ZTheme::getPixmap(d->imagePath, hasTheme(), true);
    update();
}

QSizeF ZToolBarSeparator::sizeHint(Qt::SizeHint which, const QSizeF &constraint) const
{
    Z_D(const ZToolBarSeparator);
    const QSizeF hint = ZWidget::sizeHint(which, constraint);
    if (which > Qt::MaximumSize)
        return hint;
    // Exactly extent along the bar, so that a long bar does not widen it;
    // across, whatever the bar gives.
    qreal across = 0;
    if (which == Qt::PreferredSize)
        across = 16;
    else if (which == Qt::MaximumSize)
        across = lineOrientation() == Qt::Vertical ? hint.height() : hint.width();
    return lineOrientation() == Qt::Vertical ? QSizeF(d->extent, across) : QSizeF(across, d->extent);
}

Z_REGISTER_WIDGET(ZToolBarSeparator);
