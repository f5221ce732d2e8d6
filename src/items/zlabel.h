#ifndef ZLABEL_H
#define ZLABEL_H

#include "zwidget.h"

class ZLabelPrivate;

/*!
 * \brief A one-line (optionally wrapped) caption.
 *
 * The label draws its text itself inside textMargins. Left- and
 * right-aligned text is elided to the width available by the elide mode;
 * centred text is never elided (the painter clips it). With autoAdjust the
 * label takes the width of its text instead: outside a layout it resizes
 * itself, inside one it fixes its width.
 *
 * With click on, a release emits clicked() and opens link. The label can
 * underline itself and show a pointing hand while hovered, carry a drop
 * shadow, and turns grey when disabled. The grey stays after it is enabled
 * again unless the label has a shadow, which then comes back instead.
 */
class ZKIT_EXPORT ZLabel : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(bool autoAdjust READ autoAdjust WRITE setAutoAdjust)
    Q_PROPERTY(QString link READ linkUrl WRITE setLinkUrl)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)
    Q_PROPERTY(int fontSize READ fontSize WRITE setFontSize)
    Q_PROPERTY(bool click READ acceptClick WRITE setAcceptClick)
    Q_PROPERTY(bool underlineOnHover READ underlineOnHover WRITE setUnderlineOnHover)
    Q_PROPERTY(bool handCursorOnHover READ handCursorOnHover WRITE setHandCursorOnHover)
    Q_PROPERTY(bool bold READ bold WRITE setBold)
    Q_PROPERTY(bool shadow READ dropShadow WRITE setDropShadow)
    Q_PROPERTY(Qt::Alignment textAlignment READ textAlignment WRITE setTextAlignment)
    Q_PROPERTY(Qt::TextElideMode elide READ textElidedMode WRITE setTextElidedMode)
    Q_PROPERTY(bool wordWrap READ wordWrap WRITE setWordWrap)
    Q_PROPERTY(QColor shadowColor READ shadowColor WRITE setShadowColor)
    Q_PROPERTY(QPointF shadowOffset READ shadowOffset WRITE setShadowOffset)
    Q_PROPERTY(qreal shadowBlurRadius READ shadowBlurRadius WRITE setShadowBlurRadius)
    Q_PROPERTY(QMargins textMargins READ textMargins WRITE setTextMargins)
    Q_PROPERTY(QString fontName READ fontName WRITE setFontName)
    Q_PROPERTY(bool antialiase READ antialiase WRITE setAntialiase)

public:
    Q_INVOKABLE explicit ZLabel(QGraphicsItem *parent = nullptr);
    ~ZLabel() override;

    QString text() const;
    void setText(const QString &text);
    /*! The text as drawn: elided, or the whole text. */
    QString displayText() const;

    bool autoAdjust() const;
    /*! Sizes the label's width to its text plus the left and right margins. */
    void setAutoAdjust(bool on);

    /*!
     * Alignment flags, plus Qt::TextWordWrap when wrapping. Setting it
     * replaces both, so set wordWrap after it.
     */
    Qt::Alignment textAlignment() const;
    void setTextAlignment(Qt::Alignment alignment);
    bool wordWrap() const;
    void setWordWrap(bool on);
    Qt::TextElideMode textElidedMode() const;
    void setTextElidedMode(Qt::TextElideMode mode);
    QMargins textMargins() const;
    void setTextMargins(const QMargins &margins);

    QColor textColor() const;
    /*! An invalid colour draws in the palette's text colour. */
    void setTextColor(const QColor &color);
    /*! The font's pixel size; -1 for a font sized in points. */
    int fontSize() const;
    /*! Pixel size of the font; values below 1 are ignored. */
    void setFontSize(int pixels);
    bool bold() const;
    void setBold(bool on);
    QString fontName() const;
    /*! The font family; an empty name is ignored. */
    void setFontName(const QString &family);
    bool antialiase() const;
    void setAntialiase(bool on);

    bool acceptClick() const;
    /*! Accepts presses, emits clicked() on release and opens linkUrl(). */
    void setAcceptClick(bool on);
    QString linkUrl() const;
    void setLinkUrl(const QString &url);
    bool underlineOnHover() const;
    /*! Underlines the text while hovered; the label takes hover events exactly when on. */
    void setUnderlineOnHover(bool on);
    bool handCursorOnHover() const;
    /*! Pointing-hand cursor while hovered; needs hover events (underlineOnHover, or the caller's). */
    void setHandCursorOnHover(bool on);

    bool dropShadow() const;
    /*! Puts a new drop shadow of the current colour, offset and blur radius on the label, or removes it. */
    void setDropShadow(bool on);
    QColor shadowColor() const;
    /*! Takes effect when the shadow is next switched on (or the label constructed). */
    void setShadowColor(const QColor &color);
    QPointF shadowOffset() const;
    void setShadowOffset(const QPointF &offset);
    qreal shadowBlurRadius() const;
    void setShadowBlurRadius(qreal radius);

    /*! Applies the shadow attributes, which documents may give after the shadow itself. */
    void construct() override;

Q_SIGNALS:
    void clicked();
    /*! Declared for compatibility; the label never emits it. */
    void editFinished();

protected:
    ZLabel(ZLabelPrivate &dd, QGraphicsItem *parent);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;

private:
    Z_DECLARE_PRIVATE(ZLabel)
    Q_DISABLE_COPY(ZLabel)
};

#endif // ZLABEL_H
