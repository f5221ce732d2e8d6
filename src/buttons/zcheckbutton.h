#ifndef ZCHECKBUTTON_H
#define ZCHECKBUTTON_H

#include "zabstractbutton.h"
#include "zframeitem.h"
#include "zlabel.h"

class ZCheckButtonPrivate;

/*!
 * \brief A check box: a state-image box followed by an optional text.
 *
 * Box (frame, a ZFrameItem drawing its image at natural size, centred) and
 * text (label, created by the first setText()) stand in the button's own
 * box layout, horizontal unless vertical is set. A click toggles the checked
 * state; the checked and disabled bits survive hover and press. The box shows
 * images 0 to 3 (normal, hover, pressed, disabled) unchecked and 4 to 7
 * checked.
 *
 * imagePath accepts short forms of the eight-image string: two images
 * (unchecked|checked), three (normal|hover|checked) and six (normal|hover|
 * pressed|checked normal|checked hover|checked pressed) are expanded, any
 * other count is used as given.
 */
class ZKIT_EXPORT ZCheckButton : public ZAbstractButton
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(int imageWidth READ imageWidth WRITE setImageWidth)
    Q_PROPERTY(QString imagePath READ imagePath WRITE setImagePath)
    Q_PROPERTY(bool autoAdjust READ autoAdjust WRITE setAutoAdjust)
    Q_PROPERTY(QMargins textMargin READ textMargins WRITE setTextMargins)
    Q_PROPERTY(bool vertical READ vertical WRITE setVertical)
    Q_PROPERTY(bool reverse READ reverseOrder WRITE setReverseOrder)
    Q_PROPERTY(QObject *label READ label)
    Q_PROPERTY(QObject *frame READ frame)

public:
    Q_INVOKABLE explicit ZCheckButton(QGraphicsItem *parent = nullptr);
    ~ZCheckButton() override;

    /*! Expands a short image string to the eight-state form (see the class description). */
    static QString expandImagePath(const QString &path);

    /*! The label's text; empty while there is no label. */
    QString text() const;
    /*! Sets the label's text, creating the label after the box on first use; an empty text creates none. */
    void setText(const QString &text);

    /*! The box's image string, as expanded. */
    QString imagePath() const;
    void setImagePath(const QString &path);

    /*! The box's fixed width; -1 when it has none. */
    int imageWidth() const;
    /*! Fixes the box's width; a negative width releases it. */
    void setImageWidth(int width);

    bool autoAdjust() const;
    /*!
     * Sizes the label to its text (also a label created later), fixes the
     * box to its image's width and lets the button's width follow its
     * children while \a on.
     */
    void setAutoAdjust(bool on);

    QMargins textMargins() const;
    /*! Text margins of the label, the present one included. */
    void setTextMargins(const QMargins &margins);

    bool vertical() const;
    /*! Stacks box and text vertically instead of side by side. */
    void setVertical(bool vertical);

    /*! Always false: see setReverseOrder(). */
    bool reverseOrder() const;
    /*!
     * Moves the first item of the row to its end, so the box goes behind the
     * text. The argument is not looked at: every call moves one item, so a
     * second call brings the box back in front.
     */
    void setReverseOrder(bool reverse);

    ZFrameItem *frame() const;
    ZLabel *label() const;

    void updateLayout() override;
    void updateState(ButtonStates state) override;

protected:
    ZCheckButton(ZCheckButtonPrivate &dd, QGraphicsItem *parent);

private:
    Z_DECLARE_PRIVATE(ZCheckButton)
    Q_DISABLE_COPY(ZCheckButton)
};

#endif // ZCHECKBUTTON_H
