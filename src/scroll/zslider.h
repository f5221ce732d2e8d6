#ifndef ZSLIDER_H
#define ZSLIDER_H

#include "zwidget.h"

class ZSliderPrivate;

/*!
 * \brief A skinned slider over a floating-point range.
 *
 * Three frame items draw it: the groove across the whole length, the select
 * image over the groove from the start to the thumb's centre (hidden at the
 * start), and the thumb, which travels over the length less its own. The position is kept as a
 * ratio between 0 and 1, so a new range keeps the thumb where it is and
 * scales the value. Horizontal sliders start at the left, vertical ones at
 * the top.
 *
 * The images are laid out lazily, on the event-loop turn after a change, so
 * that any number of changes in one turn cost one layout.
 *
 * A press on the thumb drags it, keeping the point that was grabbed under
 * the pointer; a press elsewhere moves the thumb's centre to the pointer.
 * Every release emits mouseRelease().
 */
class ZKIT_EXPORT ZSlider : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(QString thumbImage READ thumbImage WRITE setThumbImage)
    Q_PROPERTY(QString frameImage READ frameImage WRITE setFrameImage)
    Q_PROPERTY(QString selectImage READ selectImage WRITE setSelectImage)
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation)
    Q_PROPERTY(QSizeF thumbSize READ thumbSize WRITE setThumbSize)
    Q_PROPERTY(qreal value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(QSizeF range READ range WRITE setRange)
    Q_PROPERTY(qreal minimum READ minimum WRITE setMinimum)
    Q_PROPERTY(qreal maximum READ maximum WRITE setMaximum)
    Q_PROPERTY(qreal ratio READ ratio)
    Q_PROPERTY(QObject *thumb READ thumb)
    Q_PROPERTY(QObject *frame READ frame)
    Q_PROPERTY(QObject *select READ select)

public:
    Q_INVOKABLE explicit ZSlider(QGraphicsItem *parent = nullptr);
    explicit ZSlider(Qt::Orientation orientation, QGraphicsItem *parent = nullptr);
    ~ZSlider() override;

    QString thumbImage() const;
    /*! The thumb's normal|hover|down images. */
    void setThumbImage(const QString &images);
    QString frameImage() const;
    /*! The groove image, drawn by the four-corner cut. */
    void setFrameImage(const QString &images);
    QString selectImage() const;
    /*! The image of the part before the thumb, drawn like the groove. */
    void setSelectImage(const QString &images);

    Qt::Orientation orientation() const;
    /*! Any value but Qt::Vertical means horizontal. */
    void setOrientation(Qt::Orientation orientation);
    QSizeF thumbSize() const;
    /*! The thumb's size; an empty size takes the thumb image's at the next layout. */
    void setThumbSize(const QSizeF &size);

    /*! minimum + (maximum - minimum) * ratio. */
    qreal value() const;
    /*! The position between 0 and 1. */
    qreal ratio() const;
    QSizeF range() const;
    /*! Width is the minimum, height the maximum; the ratio is kept, so the value scales. */
    void setRange(const QSizeF &range);
    void setRange(qreal minimum, qreal maximum);
    qreal minimum() const;
    void setMinimum(qreal minimum);
    qreal maximum() const;
    void setMaximum(qreal maximum);

    QObject *thumb() const;
    QObject *frame() const;
    QObject *select() const;

    /*! The thumb's rectangle for the present ratio, before the lazy layout has placed it. */
    QRectF thumbRect() const;

    /*! A press on the slider never moves the window. */
    DragPolicy hitTest(const QPointF &pos) const override;

public Q_SLOTS:
    /*!
     * Clamps \a value into [minimum, maximum] and moves the thumb there,
     * emitting valueChanged() when the position changes. With minimum equal
     * to maximum the thumb goes to the start. Values that are not finite
     * are ignored.
     */
    void setValue(qreal value);

Q_SIGNALS:
    void valueChanged(qreal value);
    void mouseRelease();

protected:
    ZSlider(ZSliderPrivate &dd, QGraphicsItem *parent);

    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent *event) override;

private:
    Z_DECLARE_PRIVATE(ZSlider)
    Q_DISABLE_COPY(ZSlider)
};

#endif // ZSLIDER_H
