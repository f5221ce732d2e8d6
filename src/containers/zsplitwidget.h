#ifndef ZSPLITWIDGET_H
#define ZSPLITWIDGET_H

#include "zwidget.h"

class ZSplitWidgetPrivate;

/*!
 * \brief Two or more panes side by side, with handles to drag between them.
 *
 * Every child is a pane; a handle handleWidth wide separates neighbours
 * (a line of handleColor in its middle). The panes share the length along
 * orientation by their ratios: relative numbers, one per pane, equal by
 * default and in documents written "2|1|1". Resizing the widget keeps the
 * ratios; dragging handle i moves the boundary between panes i and i + 1,
 * never past either pane's minimum size (effectiveSizeHint), and makes the
 * new sizes the ratios. Across the orientation every pane fills the widget.
 *
 * When even the minimums do not fit, every pane keeps its minimum and the
 * last ones run past the end, clipped by the widget.
 */
class ZKIT_EXPORT ZSplitWidget : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation)
    Q_PROPERTY(int handleWidth READ handleWidth WRITE setHandleWidth)
    Q_PROPERTY(QColor handleColor READ handleColor WRITE setHandleColor)
    Q_PROPERTY(QString ratios READ ratiosText WRITE setRatiosText)
    Q_PROPERTY(int count READ count)

public:
    Q_INVOKABLE explicit ZSplitWidget(QGraphicsItem *parent = nullptr);
    ~ZSplitWidget() override;

    Qt::Orientation orientation() const;
    void setOrientation(Qt::Orientation orientation);
    int handleWidth() const;
    /*! Clamped to 0..1000. */
    void setHandleWidth(int width);
    QColor handleColor() const;
    /*! An invalid colour draws no line. */
    void setHandleColor(const QColor &color);

    /*! The ratios as "|"-joined numbers. */
    QString ratiosText() const;
    /*!
     * Sets the ratios from "|"-joined numbers, pane by pane; parts that are no
     * finite number >= 0 count as 1. Numbers beyond the panes wait for panes
     * still to come (documents set them before the children exist).
     */
    void setRatiosText(const QString &text);
    /*! The ratio of each pane. */
    QList<qreal> ratios() const;
    void setRatios(const QList<qreal> &ratios);

    int count() const;
    Q_INVOKABLE ZWidget *widget(int index) const;
    Q_INVOKABLE int indexOf(const ZWidget *widget) const;
    /*! Handle \a index, between panes index and index + 1; null out of range. */
    Q_INVOKABLE ZWidget *handle(int index) const;
    /*! The current lengths of the panes along the orientation. */
    QList<qreal> sizes() const;
    /*!
     * Moves handle \a index so that its leading edge lies at \a pos (local
     * coordinates along the orientation), within the two panes' minimums.
     * Answers whether the handle exists.
     */
    Q_INVOKABLE bool moveHandle(int index, qreal pos);

    /*! Lays the panes out now. */
    Q_INVOKABLE void updatePanes();

    void addItem(ZWidget *item) override;
    /*! Inserts \a item as pane \a index (out of range: at the end), with an equal share. */
    void insertItem(ZWidget *item, int index) override;
    void removeItem(ZWidget *item) override;
    LayoutType layoutType() const override;
    /*! Ignored: the panes are the layout. */
    void setLayoutType(LayoutType type) override;

Q_SIGNALS:
    /*! Handle \a index was dragged to \a pos. */
    void handleMoved(int index, qreal pos);

protected:
    ZSplitWidget(ZSplitWidgetPrivate &dd, QGraphicsItem *parent);

    /*! A press and release on handle \a index without a drag. Does nothing here. */
    virtual void handleClicked(int index);

    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;
    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;

private:
    Z_DECLARE_PRIVATE(ZSplitWidget)
    Q_DISABLE_COPY(ZSplitWidget)
};

#endif // ZSPLITWIDGET_H
