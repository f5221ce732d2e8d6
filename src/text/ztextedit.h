#ifndef ZTEXTEDIT_H
#define ZTEXTEDIT_H

#include "zwidget.h"

class QTextEdit;
class ZScrollBar;
class ZTextEditPrivate;

/*!
 * \brief A multi-line rich text field drawn over a skinned frame.
 *
 * The editing is a QTextEdit (see realTextEdit()) hosted in a graphics proxy;
 * behind it an optional ZFrameItem shows the skin (":/image/theme/lineedit.png"
 * unless frameImage says otherwise). The editor's own scroll bars stay hidden:
 * skinned ZScrollBars beside the text take their place and follow the
 * editor's range, page and value, and moving them scrolls the text. A bar
 * shows only while there is something to scroll.
 *
 * Text comes and goes as plain text (plainText) or as HTML (html). The right
 * click offers the same editing menu as ZLineEdit, in English or Chinese.
 *
 * setEdit() and setLabel() switch, as for ZLineEdit, between a framed,
 * focusable field and read-only, frameless, click-through text that lets the
 * window be dragged.
 */
class ZKIT_EXPORT ZTextEdit : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(bool readOnly READ isReadOnly WRITE setReadOnly)
    Q_PROPERTY(QString plainText READ plainText WRITE setPlainText NOTIFY textChanged)
    Q_PROPERTY(QString html READ html WRITE setHtml NOTIFY textChanged)
    Q_PROPERTY(QString placeholderText READ placeholderText WRITE setPlaceholderText)
    Q_PROPERTY(bool acceptRichText READ acceptRichText WRITE setAcceptRichText)
    Q_PROPERTY(bool lineWrap READ lineWrap WRITE setLineWrap)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)
    Q_PROPERTY(int fontSize READ fontSize WRITE setFontSize)
    Q_PROPERTY(qreal documentMargin READ documentMargin WRITE setDocumentMargin)
    Q_PROPERTY(bool hasFrame READ hasFrame WRITE setFrame)
    Q_PROPERTY(QString frameImage READ frameImage WRITE setFrameImage)
    Q_PROPERTY(bool hasContextMenu READ hasContextMenu WRITE setContextMenu)
    Q_PROPERTY(bool chineseContextMenu READ chineseContextMenu WRITE setChineseContextMenu)
    Q_PROPERTY(int barThickness READ barThickness WRITE setBarThickness)
    Q_PROPERTY(QObject *edit READ realTextEdit)
    Q_PROPERTY(QObject *frame READ frame)
    Q_PROPERTY(QObject *vscroll READ verticalScrollBar)
    Q_PROPERTY(QObject *hscroll READ horizontalScrollBar)

public:
    static constexpr int DefaultBarThickness = 14;

    Q_INVOKABLE explicit ZTextEdit(QGraphicsItem *parent = nullptr);
    ~ZTextEdit() override;

    /*! The QTextEdit doing the editing. */
    QObject *realTextEdit() const;
    /*! The skinned frame behind the editor; null until a frame was asked for. */
    QObject *frame() const;
    ZScrollBar *verticalScrollBar() const;
    ZScrollBar *horizontalScrollBar() const;

    bool isReadOnly() const;
    void setReadOnly(bool on);

    QString plainText() const;
    void setPlainText(const QString &text);
    QString html() const;
    void setHtml(const QString &html);
    QString placeholderText() const;
    void setPlaceholderText(const QString &text);
    /*! Appends a paragraph (rich text when it looks like it) at the end. */
    void append(const QString &text);
    bool acceptRichText() const;
    /*! Whether pasted and dropped text keeps its formatting. */
    void setAcceptRichText(bool on);
    bool lineWrap() const;
    /*! Wraps lines at the editor's width (the default), or scrolls sideways. */
    void setLineWrap(bool on);

    QColor textColor() const;
    /*! Colour of text without a colour of its own; invalid colours are ignored. */
    void setTextColor(const QColor &color);
    /*! Pixel size of the editor's font; -1 for a font sized in points. */
    int fontSize() const;
    /*! Values below 1 are ignored. */
    void setFontSize(int pixels);
    qreal documentMargin() const;
    /*! Room between the frame and the text; negative or non-finite values are ignored. */
    void setDocumentMargin(qreal margin);

    bool hasFrame() const;
    /*! Shows the frame, creating it with frameImage (the default skin when empty), or hides it. */
    void setFrame(bool on);
    QString frameImage() const;
    /*! Images of the frame, drawn as a four-part grid; an empty path is ignored. */
    void setFrameImage(const QString &path);

    bool hasContextMenu() const;
    /*! Whether a right click offers the editing menu. */
    void setContextMenu(bool on);
    bool chineseContextMenu() const;
    void setChineseContextMenu(bool on);

    int barThickness() const;
    /*! Width of the vertical bar and height of the horizontal one; negative values are ignored. */
    void setBarThickness(int thickness);

    /*! Field mode: editable, framed, white, takes the focus, mouse buttons reach the editor. */
    void setEdit();
    /*! Label mode: read-only, frameless, transparent; presses go to the parent (window drag). */
    void setLabel();

public Q_SLOTS:
    void clear();
    /*!
     * Runs the editing menu at the cursor and performs the entry chosen.
     * Read-only text offers only Copy and Select All.
     */
    void showContextMenu();

Q_SIGNALS:
    void textChanged();
    void selectionChanged();
    void cursorPositionChanged();

protected:
    ZTextEdit(ZTextEditPrivate &dd, QGraphicsItem *parent);

    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;

private:
    Z_DECLARE_PRIVATE(ZTextEdit)
    Q_DISABLE_COPY(ZTextEdit)
};

#endif // ZTEXTEDIT_H
