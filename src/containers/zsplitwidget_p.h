#ifndef ZSPLITWIDGET_P_H
#define ZSPLITWIDGET_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zsplitwidget.h"
#include "zwidget_p.h"

#include <QtCore/qlist.h>

class ZSplitHandle;

class ZKIT_EXPORT ZSplitWidgetPrivate : public ZWidgetPrivate
{
    Z_DECLARE_PUBLIC(ZSplitWidget)
public:
    struct Pane
    {
        ZWidget *widget;
        const QGraphicsItem *item; // to recognise a pane leaving in its destructor
        bool collapsed;
    };

    // Lengths for panes of \a ratios and \a minimums in \a room: shares by
    // ratio, panes that would fall below their minimum held at it.
    static QList<qreal> distribute(qreal room, const QList<qreal> &ratios, const QList<qreal> &minimums);

    int indexOfItem(const QGraphicsItem *item) const;
    qreal ratioAt(int index) const;
    qreal minimumAt(int index) const;
    qreal along(const QSizeF &size) const { return orientation == Qt::Horizontal ? size.width() : size.height(); }
    // Room for the panes: the length less margins and handles.
    qreal room() const;
    QRectF area() const;
    void layout();
    void handleDragged(ZSplitHandle *handle, qreal pos);
    void handleClicked(ZSplitHandle *handle);
    int indexOfHandle(const ZSplitHandle *handle) const;
    // Draws handle \a index into \a rect: the line; subclasses add marks.
    virtual void paintHandle(QPainter *painter, const QRectF &rect, int index) const;

    QList<Pane> panes;
    QList<qreal> ratios;
    QList<ZSplitHandle *> handles; // more than needed are kept hidden
    QList<qreal> lengths;          // as last laid out
    Qt::Orientation orientation = Qt::Horizontal;
    int handleWidth = 5;
    QColor handleColor = QColor(190, 190, 190);
};

// The strip between two panes: drags move the boundary, a click without a
// drag reaches ZSplitWidget::handleClicked().
class ZSplitHandle : public ZWidget
{
public:
    explicit ZSplitHandle(ZSplitWidgetPrivate *split, QGraphicsItem *parent);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;

private:
    ZSplitWidgetPrivate *split;
    qreal grab = 0; // press position inside the handle along the orientation
    QPointF pressScenePos;
    bool dragging = false;
};

#endif // ZSPLITWIDGET_P_H
