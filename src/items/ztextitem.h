#ifndef ZTEXTITEM_H
#define ZTEXTITEM_H

#include "zwidget.h"

#include <QtGui/qtextcursor.h>

class QGraphicsTextItem;
class QTextDocument;
class ZTextItemPrivate;

/*!
 * \brief Rich or plain text, from a string or a file, following the item's width.
 *
 * Text that Qt::mightBeRichText() takes for HTML is shown formatted, any
 * other text as it stands. The text wraps at the item's width; clicking a
 * hyperlink opens it with the desktop's URL handler, and the cursor turns
 * into a pointing hand over links.
 */
class ZKIT_EXPORT ZTextItem : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ toText WRITE setText)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)
    Q_PROPERTY(int fontSize READ fontSize WRITE setFontSize)
    Q_PROPERTY(QString file READ filePath WRITE setFilePath)
    Q_PROPERTY(bool idealSizeAsMinimun READ idealSizeAsMinimum WRITE setIdealSizeAsMinimum)
    Q_PROPERTY(QObject *edit READ graphicsText)

public:
    Q_INVOKABLE explicit ZTextItem(QGraphicsItem *parent = nullptr);
    explicit ZTextItem(const QString &text, QGraphicsItem *parent = nullptr);
    ~ZTextItem() override;

    /*! Shows \a text as HTML when it looks like rich text, else as plain text. */
    void setText(const QString &text);
    QString toHtml() const;
    /*! The text without markup. */
    QString toText() const;

    QString filePath() const;
    /*! Shows the UTF-8 text of the file \a path, as setText() would; a missing file shows nothing. */
    void setFilePath(const QString &path);

    QColor textColor() const;
    void setTextColor(const QColor &color);
    /*! Pixel size of the text's font; -1 for a font sized in points. */
    int fontSize() const;
    /*! Values below 1 are ignored. */
    void setFontSize(int pixels);

    QTextDocument *document() const;
    QTextCursor textCursor() const;
    QGraphicsTextItem *graphicsText() const;

    /*! The size the text takes at a width of its own choosing; the width shown is not changed. */
    QSizeF idealSize() const;
    /*! Sets the text width to \a width and answers the text's size at it. */
    QSizeF hitTextSize(int width);

    bool idealSizeAsMinimum() const;
    /*! Makes idealSize() the minimum size hint. */
    void setIdealSizeAsMinimum(bool on);

    /*! A cursor at the character under \a pos (item coordinates); null where there is no text. */
    QTextCursor cursorFromPoint(const QPoint &pos) const;
    /*! The target of the hyperlink under \a pos, or an empty string. */
    QString urlFromPoint(const QPoint &pos) const;
    bool isLinkObject(const QPoint &pos) const;

    /*! Nothing over a hyperlink, so that a click on it does not drag the window; else the base answer. */
    DragPolicy hitTest(const QPointF &pos) const override;

protected:
    ZTextItem(ZTextItemPrivate &dd, QGraphicsItem *parent);

    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;

private:
    // The document position under \a pos, -1 outside the text.
    int documentPosition(const QPointF &pos) const;

    Z_DECLARE_PRIVATE(ZTextItem)
    Q_DISABLE_COPY(ZTextItem)
};

#endif // ZTEXTITEM_H
