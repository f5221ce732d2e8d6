#ifndef ZPUSHBUTTON_H
#define ZPUSHBUTTON_H

#include "zabstractbutton.h"
#include "zframeitem.h"
#include "zimageitem.h"
#include "zlabel.h"
#include "zspacer.h"

class ZPushButtonPrivate;

/*!
 * \brief The ordinary push button: a skin frame behind a row of icon and text.
 *
 * The background is a ZFrameItem (buttonFrame, frame type GridFour) showing
 * image 0 when normal, 1 hovered, 2 pressed and 3 for a word without pointer
 * bit; images the string does not have fall back to image 0. Above it a
 * horizontal row (buttonContent) holds the icon (buttonIcon, a ZImageItem)
 * and the text (buttonText, a ZLabel), each created by its first setter and
 * lined up in the order they were first set. Children added to the button
 * (for instance by a document) join the same row. While the button is
 * pressed the row shifts by clickOffset; the button clips it.
 *
 * The text settings textColor, fontSize and bold act on the label and are
 * dropped while there is none: set text first. Since the normal state is
 * tested first, a disabled idle button keeps image 0 (its text turns grey).
 */
class ZKIT_EXPORT ZPushButton : public ZAbstractButton
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)
    Q_PROPERTY(int fontSize READ fontSize WRITE setFontSize)
    Q_PROPERTY(bool bold READ textBold WRITE setTextBold)
    Q_PROPERTY(QString iconPath READ iconPath WRITE setIconPath)
    Q_PROPERTY(QString imagePath READ imagePath WRITE setImagePath)
    Q_PROPERTY(QPoint clickOffset READ clickOffset WRITE setClickOffset)
    Q_PROPERTY(int iconSize READ iconSize WRITE setIconSize)
    Q_PROPERTY(QMargins iconMargins READ iconMargins WRITE setIconMargins)
    Q_PROPERTY(QMargins textMargins READ textMargins WRITE setTextMargins)
    Q_PROPERTY(Qt::Alignment textAlignment READ textAlignment WRITE setTextAlignment)
    Q_PROPERTY(Qt::Alignment iconAlignment READ iconAlignment WRITE setIconAlignment)
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation)
    Q_PROPERTY(QObject *buttonFrame READ buttonFrame)
    Q_PROPERTY(QObject *buttonIcon READ buttonIcon)
    Q_PROPERTY(QObject *buttonText READ buttonText)
    Q_PROPERTY(QObject *buttonContent READ buttonContent)

public:
    Q_INVOKABLE explicit ZPushButton(QGraphicsItem *parent = nullptr);
    ~ZPushButton() override;

    /*! The label's text; empty while there is no label. */
    QString text() const;
    /*! Sets the label's text, creating the label on first use; an empty text creates none. */
    void setText(const QString &text);

    /*! The icon's image path; empty while there is no icon. */
    QString iconPath() const;
    /*!
     * Sets the icon's image, creating the icon on first use; an empty path
     * creates none. A new icon takes iconSize, or the image's width while
     * iconSize is negative (0 for an image that does not load), as its width
     * (its height in a vertical row).
     */
    void setIconPath(const QString &path);

    /*! The state images of the background frame. */
    QString imagePath() const;
    void setImagePath(const QString &path);

    /*! Invalid while there is no label. */
    QColor textColor() const;
    void setTextColor(const QColor &color);
    /*! The label's font pixel size; -1 while there is no label. */
    int fontSize() const;
    void setFontSize(int pixels);
    bool textBold() const;
    void setTextBold(bool bold);
    /*! Passes \a font to the label, if there is one. */
    void setFont(const QFont &font);

    QPoint clickOffset() const;
    /*! The shift of the content row while the button is pressed. */
    void setClickOffset(const QPoint &offset);

    int iconSize() const;
    /*! The icon's extent along the row; negative takes the image's width. */
    void setIconSize(int size);
    QMargins iconMargins() const;
    /*! Image margins of the icon, the present one included. */
    void setIconMargins(const QMargins &margins);
    QMargins textMargins() const;
    void setTextMargins(const QMargins &margins);
    Qt::Alignment textAlignment() const;
    /*! Alignment of the text in the label, the present one included. */
    void setTextAlignment(Qt::Alignment alignment);
    Qt::Alignment iconAlignment() const;
    /*!
     * Alignment of the image inside the icon, the present one included. The
     * icon itself keeps its place in the row: to centre an icon alone, make
     * iconSize the button's extent.
     */
    void setIconAlignment(Qt::Alignment alignment);

    /*! The direction of the content row; Horizontal unless set. */
    Qt::Orientation orientation() const;
    /*! Values other than Horizontal and Vertical are ignored. */
    void setOrientation(Qt::Orientation orientation);

    ZFrameItem *buttonFrame() const;
    ZImageItem *buttonIcon() const;
    ZLabel *buttonText() const;
    /*! The row holding icon, text and added children. */
    ZSpacer *buttonContent() const;

    /*!
     * Fixes the button's size to that of the frame's current image. Only for
     * a button in a linear layout, and only when the image loaded.
     */
    Q_INVOKABLE void setSizeToFrameImage();
    /*!
     * Fixes the button's width to what its content needs: the label sizes
     * itself to its text and the row, with contents margins \a margins,
     * sizes itself to its children. Only for a button in a linear layout.
     */
    Q_INVOKABLE void setSizeToContent(const QMargins &margins);
    Q_INVOKABLE void setSizeToContent();

    /*! Children go into the content row. */
    void addItem(ZWidget *item) override;
    void insertItem(ZWidget *item, int index) override;
    void removeItem(ZWidget *item) override;

    void updateLayout() override;
    void updateState(ButtonStates state) override;

protected:
    ZPushButton(ZPushButtonPrivate &dd, QGraphicsItem *parent);

private:
    Z_DECLARE_PRIVATE(ZPushButton)
    Q_DISABLE_COPY(ZPushButton)
};

#endif // ZPUSHBUTTON_H
