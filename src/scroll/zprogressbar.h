#ifndef ZPROGRESSBAR_H
#define ZPROGRESSBAR_H

#include "zwidget.h"

class ZProgressBarPrivate;

/*!
 * \brief A skinned integer progress bar: a frame image and a progress image over it.
 *
 * The progress part covers (value - minimum) / (maximum - minimum) of the
 * bar, from the left when horizontal and from the bottom when vertical,
 * rounded to whole pixels; above the minimum it is never shorter than
 * minSize (nor longer than the bar), at the minimum it is hidden. With
 * textVisible the bar shows a number centred over it in the style
 * numberTextStyle names.
 *
 * A new bar is 210 x 9 at (0, 0); that is also its preferred size.
 */
class ZKIT_EXPORT ZProgressBar : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(int minimum READ minimum WRITE setMinimum)
    Q_PROPERTY(int maximum READ maximum WRITE setMaximum)
    Q_PROPERTY(int value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(bool textVisible READ isTextVisible WRITE setTextVisible)
    Q_PROPERTY(QString frameImage READ frameImage WRITE setFrameImage)
    Q_PROPERTY(QString progressImage READ progressImage WRITE setProgressImage)
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation)
    Q_PROPERTY(int numberTextStyle READ numberTextStyle WRITE setNumberTextStyle)
    Q_PROPERTY(int minSize READ minSize WRITE setMinSize)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)
    Q_PROPERTY(QString text READ text)
    Q_PROPERTY(QObject *frame READ frame)
    Q_PROPERTY(QObject *progress READ progress)

public:
    /*! The values of numberTextStyle; other numbers show no text. */
    enum NumberTextStyle : int {
        NoNumber = 0,       // nothing
        ValueOfMaximum = 1, // "37/100"
        Percent = 2         // "37%"
    };
    Q_ENUM(NumberTextStyle)

    Q_INVOKABLE explicit ZProgressBar(QGraphicsItem *parent = nullptr);
    explicit ZProgressBar(Qt::Orientation orientation, QGraphicsItem *parent = nullptr);
    ~ZProgressBar() override;

    int minimum() const;
    void setMinimum(int minimum);
    int maximum() const;
    void setMaximum(int maximum);
    /*!
     * Sets both bounds; a maximum below the minimum becomes the minimum. The
     * value is clamped into the new range (emitting valueChanged() when that
     * moves it).
     */
    void setRange(int minimum, int maximum);
    int value() const;

    bool isTextVisible() const;
    void setTextVisible(bool visible);
    int numberTextStyle() const;
    void setNumberTextStyle(int style);
    /*! The text for the present value and style, shown or not. */
    QString text() const;
    QColor textColor() const;
    /*! An invalid colour draws in the palette's text colour. */
    void setTextColor(const QColor &color);

    QString frameImage() const;
    void setFrameImage(const QString &images);
    QString progressImage() const;
    void setProgressImage(const QString &images);

    Qt::Orientation orientation() const;
    /*! Any value but Qt::Vertical means horizontal. */
    void setOrientation(Qt::Orientation orientation);
    int minSize() const;
    /*! Shortest progress part above the minimum; negative values count as 0. */
    void setMinSize(int pixels);

    QObject *frame() const;
    QObject *progress() const;

public Q_SLOTS:
    /*! Clamps \a value into the range; emits valueChanged() when the value changes. */
    void setValue(int value);

Q_SIGNALS:
    void valueChanged(int value);

protected:
    ZProgressBar(ZProgressBarPrivate &dd, QGraphicsItem *parent);

    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;

private:
    Z_DECLARE_PRIVATE(ZProgressBar)
    Q_DISABLE_COPY(ZProgressBar)
};

#endif // ZPROGRESSBAR_H
