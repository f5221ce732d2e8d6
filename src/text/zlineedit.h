#ifndef ZLINEEDIT_H
#define ZLINEEDIT_H

#include "zwidget.h"

#include <QtWidgets/qlineedit.h>

class QKeyEvent;
class QLineEditEx;
class ZLineEditPrivate;

/*!
 * \brief A single-line text field drawn over a skinned frame.
 *
 * The editing itself is a QLineEditEx (see realLineEdit()) hosted in a
 * graphics proxy that covers the widget; behind it lies an optional
 * ZFrameItem with the field's skin (":/image/theme/lineedit.png" unless
 * frameImage says otherwise). The editor paints no background of its own,
 * so the widget's background and frame show through.
 *
 * Validators come from documents as ranges or a pattern: intValidator
 * "1,100", doubleValidator "0.5,9.5" or regExpValidator "[a-z]+". The field
 * holds at most one; setting one of another kind replaces the previous.
 * Re-setting the real range keeps the validator but drops its decimals to 0,
 * while a newly made one allows 5.
 *
 * Nothing typed is ever rejected on leaving the field: when the text changed
 * since the last check and the validator does not accept it, a message box
 * (title "提示", one button "确认") says what the field takes, validatorTip if
 * set, otherwise a message per validator kind. The check runs from the event
 * loop right after the focus has gone, not inside the focus change, so the
 * modal box cannot pull the field away under the scene's feet.
 *
 * A right click offers the editing menu (see QLineEditEx::showContextMenu())
 * unless hasContextMenu is off; the request is then left to the items
 * beneath in either case.
 *
 * setEdit() and setLabel() switch between a framed, focusable field and a
 * read-only, frameless, click-through text that lets the window be dragged.
 */
class ZKIT_EXPORT ZLineEdit : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(bool readOnly READ isReadOnly WRITE setReadOnly)
    Q_PROPERTY(bool focus READ focus WRITE setFocus)
    Q_PROPERTY(QString styleSheet READ styleSheet WRITE setStyleSheet)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)
    Q_PROPERTY(int fontSize READ fontSize WRITE setFontSize)
    Q_PROPERTY(QString adjustText READ text WRITE setAdjustText)
    Q_PROPERTY(int maxLength READ maxLength WRITE setMaxLength)
    Q_PROPERTY(QLineEdit::EchoMode mode READ mode WRITE setMode)
    Q_PROPERTY(Qt::Alignment textAlignment READ textAlignment WRITE setTextAlignment)
    Q_PROPERTY(QMargins textMargins READ textMargins WRITE setTextMargins)
    Q_PROPERTY(bool hasFrame READ hasFrame WRITE setFrame)
    Q_PROPERTY(QString frameImage READ frameImage WRITE setFrameImage)
    Q_PROPERTY(QString inputMask READ inputMask WRITE setInputMask)
    Q_PROPERTY(QSize intValidator READ intValidator WRITE setIntValidator)
    Q_PROPERTY(QSizeF doubleValidator READ doubleValidator WRITE setDoubleValidator)
    Q_PROPERTY(QString regExpValidator READ regExpValidator WRITE setRegExpValidator)
    Q_PROPERTY(QString validatorTip READ validatorTip WRITE setValidatorTip)
    Q_PROPERTY(bool hasContextMenu READ hasContextMenu WRITE setContextMenu)
    Q_PROPERTY(QObject *edit READ realLineEdit)
    Q_PROPERTY(QObject *frame READ frame)

public:
    Q_INVOKABLE explicit ZLineEdit(QGraphicsItem *parent = nullptr);
    ~ZLineEdit() override;

    /*! The QLineEditEx doing the editing. */
    QObject *realLineEdit() const;
    /*! The skinned frame behind the editor; null until a frame was asked for. */
    QObject *frame() const;

    bool isReadOnly() const;
    void setReadOnly(bool on);
    /*! Whether the editor has the keyboard focus. */
    bool focus() const;
    /*! Gives the editor the focus, or takes it away. */
    void setFocus(bool on);
    using QGraphicsWidget::setFocus;
    QString styleSheet() const;
    void setStyleSheet(const QString &sheet);

    QString text() const;
    void setText(const QString &text);
    /*! Inserts at the cursor, replacing the selection, as typing would. */
    void insert(const QString &text);
    /*! Whether the text was edited since it was last set. */
    bool modified() const;
    /*!
     * Sets the text and fixes the widget's width to contentSize(), so the
     * field is exactly as wide as the text.
     */
    void setAdjustText(const QString &text);
    /*! The text's width plus twice the font's leading, by the font's height. */
    QSize contentSize() const;

    QColor textColor() const;
    /*! Colour of the text (the editor palette's Text role); invalid colours are ignored. */
    void setTextColor(const QColor &color);
    /*! Pixel size of the editor's font; -1 for a font sized in points. */
    int fontSize() const;
    /*! Values below 1 are ignored. */
    void setFontSize(int pixels);
    /*! The editor's font (hides QGraphicsWidget::font(), which the editor does not use). */
    QFont font() const;
    void setFont(const QFont &font);

    int maxLength() const;
    /*! Negative lengths are ignored. */
    void setMaxLength(int length);
    QLineEdit::EchoMode mode() const;
    /*! Values that are no echo mode are ignored. */
    void setMode(QLineEdit::EchoMode mode);
    Qt::Alignment textAlignment() const;
    void setTextAlignment(Qt::Alignment alignment);
    QMargins textMargins() const;
    void setTextMargins(const QMargins &margins);
    QString inputMask() const;
    void setInputMask(const QString &mask);

    bool hasFrame() const;
    /*!
     * Shows the frame, creating it with frameImage (the default skin when
     * that is empty), or hides it.
     */
    void setFrame(bool on);
    QString frameImage() const;
    /*! Images of the frame, drawn as a four-part grid; an empty path is ignored. */
    void setFrameImage(const QString &path);

    /*! (bottom, top) of the integer validator; (-1, -1) when the validator is of another kind or missing. */
    QSize intValidator() const;
    /*!
     * Accepts integers from width() to height(). An integer validator there
     * already gets the new range; any other is replaced.
     */
    void setIntValidator(const QSize &range);
    /*! (bottom, top) of the real validator; (-1, -1) when the validator is of another kind or missing. */
    QSizeF doubleValidator() const;
    /*!
     * Accepts real numbers from width() to height(). A new validator allows
     * 5 decimals; re-setting the range of the one there sets 0 decimals.
     * Ranges with a part that is not finite are ignored.
     */
    void setDoubleValidator(const QSizeF &range);
    /*! The pattern of the regular-expression validator, or an empty string. */
    QString regExpValidator() const;
    /*!
     * Accepts text the case-sensitive expression \a pattern matches as a
     * whole. An expression validator there gets the new pattern; any other is
     * replaced.
     */
    void setRegExpValidator(const QString &pattern);
    QString validatorTip() const;
    /*! Shown on leaving the field instead of the built-in message, for every kind of validator. */
    void setValidatorTip(const QString &tip);

    bool hasContextMenu() const;
    /*! Whether a right click offers the editing menu. */
    void setContextMenu(bool on);

    /*! Field mode: editable, framed, white, takes the focus, mouse buttons reach the editor. */
    void setEdit();
    /*! Label mode: read-only, frameless, transparent; presses go to the parent (window drag). */
    void setLabel();

Q_SIGNALS:
    /*! Every key press the editor handled (see QLineEditEx::clicked()). */
    void clicked(QKeyEvent *event);
    void textChanged(const QString &text);
    void textEdited(const QString &text);
    void cursorPositionChanged(int oldPos, int newPos);
    void returnPressed();
    void editingFinished();
    void selectionChanged();

protected:
    ZLineEdit(ZLineEditPrivate &dd, QGraphicsItem *parent);

    QSizeF sizeHint(Qt::SizeHint which, const QSizeF &constraint = QSizeF()) const override;
    void resizeEvent(QGraphicsSceneResizeEvent *event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;
    void connectNotify(const QMetaMethod &signal) override;

private Q_SLOTS:
    void on_edit_focusOut();

private:
    Z_DECLARE_PRIVATE(ZLineEdit)
    Q_DISABLE_COPY(ZLineEdit)
};

#endif // ZLINEEDIT_H
