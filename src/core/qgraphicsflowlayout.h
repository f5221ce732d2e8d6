#ifndef QGRAPHICSFLOWLAYOUT_H
#define QGRAPHICSFLOWLAYOUT_H

#include "zglobal.h"

#include <QtCore/qmargins.h>
#include <QtWidgets/qgraphicslayout.h>
#include <QtWidgets/qstyle.h>

#include <memory>

class QGraphicsFlowLayoutPrivate;

/*!
 * \brief Places items left to right in lines, wrapping to the next line when
 * the right edge is reached.
 *
 * Unlike the box layouts, the flow layout never resizes its items: each item
 * keeps its current size and is only moved. A line wraps only when it already
 * holds an item, so an item wider than the layout stands alone on its line.
 *
 * Items are not watched: when one changes size, invalidate() the layout
 * (ZWidget does so for its ZWidget children). The layout reports
 * height-for-width, so box layouts give it the height its lines need at the
 * width they allot.
 *
 * Spacing is kept separately for the horizontal gap between items and the
 * vertical gap between lines. A negative spacing (the default) takes the
 * style's layout spacing (QStyle::PM_LayoutHorizontalSpacing and
 * PM_LayoutVerticalSpacing) of the owning widget, or of the application when
 * the layout has no widget yet, or 0 without any style.
 */
class ZKIT_EXPORT QGraphicsFlowLayout : public QGraphicsLayout
{
public:
    explicit QGraphicsFlowLayout(QGraphicsLayoutItem *parent = nullptr);
    ~QGraphicsFlowLayout() override;

    /*! Appends \a item; an item already in the layout moves to the end. */
    void addItem(QGraphicsLayoutItem *item);
    /*! Inserts \a item before \a index (appends when \a index is out of range). */
    void insertItem(int index, QGraphicsLayoutItem *item);
    /*! Takes \a item out of the layout; the item is not deleted. */
    void removeItem(QGraphicsLayoutItem *item);
    /*! Index of \a item, or -1. */
    int indexOf(const QGraphicsLayoutItem *item) const;

    int count() const override;
    QGraphicsLayoutItem *itemAt(int index) const override;
    /*! Takes the item at \a index out of the layout without deleting it. */
    void removeAt(int index) override;

    /*! Sets the gap between lines (\a vertical) or between items on a line. */
    void setSpacing(bool vertical, qreal spacing);
    /*! The gap in effect: the value set, or the style's default when negative. */
    qreal spacing(bool vertical) const;

    using QGraphicsLayout::setContentsMargins;
    void setContentsMargins(const QMargins &margins);

    /*! Height needed to flow every item into width \a width, margins included. */
    qreal heightForWidth(qreal width) const;

    void setGeometry(const QRectF &rect) override;
    void invalidate() override;
    void widgetEvent(QEvent *event) override;

protected:
    /*!
     * Without a width constraint the preferred size puts every item on one
     * line and the minimum width is that of the widest item; with a width
     * constraint the height is the one needed at that width. The maximum is
     * unbounded.
     */
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;

private:
    qreal doLayout(const QRectF &rect, bool apply) const;
    qreal smartSpacing(QStyle::PixelMetric metric) const;

    std::unique_ptr<QGraphicsFlowLayoutPrivate> d_zptr;
    Z_DECLARE_PRIVATE(QGraphicsFlowLayout)
};

#endif // QGRAPHICSFLOWLAYOUT_H
