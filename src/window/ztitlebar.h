#ifndef ZTITLEBAR_H
#define ZTITLEBAR_H

#include "zwidget.h"

class ZFrameItem;
class ZImageItem;
class ZLabel;
class ZTitlebarPrivate;

/*!
 * \brief The caption row of dialogs and framed windows.
 *
 * One horizontal row, left to right: the window icon (iconItem), the title
 * (titleText, elided at the right), the buttons given to appendButton() in
 * their order, then the minimise, maximise/restore and close buttons
 * (minButton, maxButton, closeButton). The three window buttons are frame
 * items showing their multi-state image strings (normal|hover|down) at the
 * images' own size; an empty image string hides that button, and an empty
 * iconPath (or one that loads nothing) the icon. Hidden items take no room.
 *
 * The bar acts on the window whose scene holds it. updateTitelbar() reads
 * that window: the minimise button shows when the window has minimumButton
 * on, the maximise button when it has maximumButton on (with the restore
 * images while the window is maximised), the close button when the window's
 * style carries ZPopupWindow::CloseButton. In a window that is no pop-up
 * window only the close button shows. Dialogs and framed windows call it on
 * every show and resize; after changing the style of a shown window, call it
 * yourself.
 *
 * Clicks: minimise calls the window's showMinimized(), maximise its
 * showMaximizeOrRestore(), close the window's close-button handling (a
 * dialog ends as its onCloseClick() decides, a message box with 2). With
 * iconClickExit on, a click on the icon does what the close button does.
 * A double click on the bar maximises or restores the window while
 * doubleClick is true, i.e. while the window offers the maximise button.
 * A press on the bar drags the window; a press on the window buttons does not.
 */
class ZKIT_EXPORT ZTitlebar : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(bool iconClickExit READ iconClickExit WRITE setIconClickExit)
    Q_PROPERTY(QString iconPath READ iconPath WRITE setIconPath)
    Q_PROPERTY(QString maximumPath READ maximumPath WRITE setMaximumPath)
    Q_PROPERTY(QString restorePath READ restorePath WRITE setRestorePath)
    Q_PROPERTY(QString minimumPath READ minimumPath WRITE setMinimumPath)
    Q_PROPERTY(QString closePath READ closePath WRITE setClosePath)
    Q_PROPERTY(int titlebarHeight READ titlebarHeight WRITE setTitlebarHeight)
    Q_PROPERTY(QString title READ title WRITE setTitle)
    Q_PROPERTY(QColor titleColor READ titleColor WRITE setTitleColor)
    Q_PROPERTY(bool titleBold READ titleBold WRITE setTitleBold)
    Q_PROPERTY(bool doubleClick READ doubleClick)
    Q_PROPERTY(QObject *iconItem READ iconItem)
    Q_PROPERTY(QObject *titleText READ titleText)
    Q_PROPERTY(QObject *minButton READ minButton)
    Q_PROPERTY(QObject *maxButton READ maxButton)
    Q_PROPERTY(QObject *closeButton READ closeButton)

public:
    /*! The bar's height unless set otherwise. */
    static constexpr int DefaultHeight = 28;
    /*! The tallest bar titlebarHeight gives. */
    static constexpr int MaximumHeight = 1024;

    Q_INVOKABLE explicit ZTitlebar(QGraphicsItem *parent = nullptr);
    ~ZTitlebar() override;

    bool iconClickExit() const;
    void setIconClickExit(bool on);

    QString iconPath() const;
    /*! ":/image/theme/titleicon.png" by default; empty hides the icon. */
    void setIconPath(const QString &path);
    QString maximumPath() const;
    void setMaximumPath(const QString &path);
    QString restorePath() const;
    void setRestorePath(const QString &path);
    QString minimumPath() const;
    void setMinimumPath(const QString &path);
    QString closePath() const;
    void setClosePath(const QString &path);

    /*! The bar's fixed height. */
    int titlebarHeight() const;
    /*! Fixes the bar's height; negative values are ignored, larger ones than MaximumHeight clamped. */
    void setTitlebarHeight(int height);

    QString title() const;
    /*! The caption; also the window title of the bar's window. */
    void setTitle(const QString &title);
    QColor titleColor() const;
    /*! An invalid colour draws in the palette's text colour. */
    void setTitleColor(const QColor &color);
    bool titleBold() const;
    void setTitleBold(bool bold);

    /*! Whether a double click maximises or restores: the window offers the maximise button. */
    bool doubleClick() const;

    ZImageItem *iconItem() const;
    ZLabel *titleText() const;
    ZFrameItem *minButton() const;
    ZFrameItem *maxButton() const;
    ZFrameItem *closeButton() const;

    /*!
     * Puts \a button into the row after the title and the buttons appended
     * before, left of the window buttons. The bar owns it from then on.
     * Null, or a widget already in the bar, changes nothing.
     */
    Q_INVOKABLE void appendButton(ZWidget *button);
    /*! Shows the window buttons the window offers, maximise or restore as the window is. */
    Q_INVOKABLE void updateTitelbar();

protected:
    ZTitlebar(ZTitlebarPrivate &dd, QGraphicsItem *parent);

    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;

private Q_SLOTS:
    void buttonClicked();

private:
    Z_DECLARE_PRIVATE(ZTitlebar)
    Q_DISABLE_COPY(ZTitlebar)
};

#endif // ZTITLEBAR_H
