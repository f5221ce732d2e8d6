#ifndef ZSCROLLBAR_H
#define ZSCROLLBAR_H

#include "zwidget.h"

#include <QtWidgets/qstyle.h>

class QGraphicsSceneWheelEvent;
class ZScrollBarPrivate;

/*!
 * \brief A skinned scroll bar over a floating-point range.
 *
 * The bar is drawn by child items: a background over the whole bar, two line
 * buttons at the ends and a thumb (with an optional icon on it) in the track
 * between them. Value and thumb map onto each other with integer pixel
 * arithmetic: the thumb is pageStep / (range + pageStep) of the track, never
 * shorter than sliderMinimumHeight, and sits where QStyle's round-to-nearest
 * mapping puts the integer value.
 *
 * A press on a line button or a page area steps once, again after 250 ms and
 * then every 50 ms while the button is held; paging stops at the value under
 * the pointer. Dragging the thumb moves the value in proportion to the
 * groove. The wheel moves by deltaFactor per notch (0, the default, leaves
 * the bar still: the owner sets it).
 *
 * Presses that reach the bar itself are hit-tested in the order of
 * QStyle::SubControl (add line, sub line, add page, sub page, first, last,
 * thumb, groove). The add page starts at the thumb's start and so covers the
 * thumb: a press there pages. The thumb item lies above the bar and takes the
 * presses on itself, so a visible thumb is dragged; the line buttons and the
 * background let presses through to the bar.
 *
 * While an image string is the embedded skin's default for the orientation,
 * it follows orientation changes.
 */
class ZKIT_EXPORT ZScrollBar : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(qreal value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(qreal minimum READ minimum WRITE setMinimum NOTIFY minimumChanged)
    Q_PROPERTY(qreal maximum READ maximum WRITE setMaximum NOTIFY maximumChanged)
    Q_PROPERTY(qreal singleStep READ singleStep WRITE setSingleStep)
    Q_PROPERTY(qreal pageStep READ pageStep WRITE setPageStep)
    Q_PROPERTY(qreal deltaFactor READ deltaFactor WRITE setDeltaFactor)
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation)
    Q_PROPERTY(qreal buttonHeight READ buttonHeight WRITE setButtonHeight)
    Q_PROPERTY(qreal sliderMinimumHeight READ sliderMinimumHeight WRITE setSliderMinimumHeight)
    Q_PROPERTY(QString lineAddImage READ lineAddImage WRITE setLineAddImage)
    Q_PROPERTY(QString lineSubImage READ lineSubImage WRITE setLineSubImage)
    Q_PROPERTY(QString thumbImage READ thumbImage WRITE setThumbImage)
    Q_PROPERTY(QString thumbIcon READ thumbIcon WRITE setThumbIcon)
    Q_PROPERTY(QPointF thumbIconOffset READ thumbIconOffset WRITE setThumbIconOffset)
    Q_PROPERTY(QString backgroundImage READ backgroundImage WRITE setBackgroundImage)
    Q_PROPERTY(qreal frameThickness READ frameThickness WRITE setFrameThickness NOTIFY thicknessChanged)
    Q_PROPERTY(bool showFullOnHover READ showFullOnHover WRITE setShowFullOnHover)
    Q_PROPERTY(QObject *lineAdd READ lineAdd)
    Q_PROPERTY(QObject *lineSub READ lineSub)
    Q_PROPERTY(QObject *icon READ icon)
    Q_PROPERTY(QObject *slider READ slider)

public:
    Q_INVOKABLE explicit ZScrollBar(QGraphicsItem *parent = nullptr);
    explicit ZScrollBar(Qt::Orientation orientation, QGraphicsItem *parent = nullptr);
    ~ZScrollBar() override;

    qreal value() const;
    qreal minimum() const;
    /*!
     * Sets the lower bound; on a change emits minimumChanged(), clamps the
     * value into the range and moves the thumb. Values that are not finite
     * are ignored, as by every qreal setter of the bar.
     */
    void setMinimum(qreal minimum);
    qreal maximum() const;
    /*! As setMinimum() for the upper bound, emitting maximumChanged(). */
    void setMaximum(qreal maximum);
    /*!
     * Sets both bounds. Each bound that changes emits minimumChanged(), the
     * maximum's new value included: listeners of the pair watch one signal.
     * When either changed, the value is clamped and the thumb moved.
     */
    void setRange(qreal minimum, qreal maximum);

    qreal singleStep() const;
    /*! The line step; negative values are ignored. */
    void setSingleStep(qreal step);
    qreal pageStep() const;
    /*! The page step, which is also the visible extent that sizes the thumb; negative values are ignored. */
    void setPageStep(qreal step);
    qreal deltaFactor() const;
    /*! The value moved by one wheel notch (a delta of 120). */
    void setDeltaFactor(qreal factor);

    Qt::Orientation orientation() const;
    /*! Lays the children out again; any value but Qt::Vertical means horizontal. */
    void setOrientation(Qt::Orientation orientation);

    qreal buttonHeight() const;
    /*! Extent of each line button along the bar; negative values are ignored. */
    void setButtonHeight(qreal height);
    qreal sliderMinimumHeight() const;
    /*! The shortest thumb; negative values are ignored. */
    void setSliderMinimumHeight(qreal height);
    qreal frameThickness() const;
    /*!
     * The thickness across the bar that its minimum and preferred size hints
     * ask for; emits thicknessChanged() on a change. Negative values are ignored.
     */
    void setFrameThickness(qreal thickness);

    QString lineAddImage() const;
    void setLineAddImage(const QString &images);
    QString lineSubImage() const;
    void setLineSubImage(const QString &images);
    QString thumbImage() const;
    void setThumbImage(const QString &images);
    QString backgroundImage() const;
    void setBackgroundImage(const QString &images);
    QString thumbIcon() const;
    /*! The icon drawn on the thumb, at its own size; an empty path shows none. */
    void setThumbIcon(const QString &path);
    QPointF thumbIconOffset() const;
    /*! Shift of the thumb icon from the thumb's centre. */
    void setThumbIconOffset(const QPointF &offset);

    bool showFullOnHover() const;
    /*!
     * Shows the line buttons and the thumb only while the pointer is over
     * the bar. Takes effect at once: turning it on away from the pointer
     * hides them, turning it off shows them.
     */
    void setShowFullOnHover(bool on);
    /*! Shows or hides the line buttons and the thumb; does nothing unless showFullOnHover is on. */
    void displayFullOnHover(bool show);

    QObject *lineAdd() const;
    QObject *lineSub() const;
    QObject *icon() const;
    QObject *slider() const;

    // Geometry, in the bar's coordinates with integer pixels.

    /*! The thumb's length along the bar. */
    int sliderPixels() const;
    /*! The thumb's start along the bar, line button included. */
    int sliderPosition() const;
    /*! The value, in whole units, that the thumb start \a pos (measured from the track's start) stands for. */
    int sliderValueFromPosition(int pos) const;
    /*! The rectangle of \a control; an invalid rectangle for controls the bar does not have. */
    QRect subControlRect(QStyle::SubControl control) const;
    /*! The first sub-control, in QStyle::SubControl order, whose rectangle holds \a pos; SC_None for none. */
    QStyle::SubControl subControlAt(const QPointF &pos) const;
    /*! The part a held button presses, or SC_None. */
    QStyle::SubControl pressedControl() const;
    /*! The part under the pointer, or SC_None. */
    QStyle::SubControl hoverControl() const;

    /*! A press on the bar never moves the window. */
    DragPolicy hitTest(const QPointF &pos) const override;

public Q_SLOTS:
    /*! Clamps \a value into [minimum, maximum] and emits valueChanged() when that changes the value. */
    void setValue(qreal value);
    /*! One line step up. */
    void increase();
    /*! One line step down. */
    void decrease();
    /*! Runs the bar's wheel handling for an event that reached another item (a scroll area). */
    void handleMouseWheelEvent(QGraphicsSceneWheelEvent *event);

Q_SIGNALS:
    void valueChanged(qreal value);
    void minimumChanged(qreal minimum);
    void maximumChanged(qreal maximum);
    void thicknessChanged();

protected:
    ZScrollBar(ZScrollBarPrivate &dd, QGraphicsItem *parent);

    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    bool sceneEventFilter(QGraphicsItem *watched, QEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void hoverEnterEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent *event) override;
    void wheelEvent(QGraphicsSceneWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;

private Q_SLOTS:
    void on_linebutton_clicked();
    void on_value_changed(qreal value);

private:
    Z_DECLARE_PRIVATE(ZScrollBar)
    Q_DISABLE_COPY(ZScrollBar)
};

#endif // ZSCROLLBAR_H
