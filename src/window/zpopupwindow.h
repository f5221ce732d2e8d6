#ifndef ZPOPUPWINDOW_H
#define ZPOPUPWINDOW_H

#include "zwindow.h"

#include <QColor>
#include <QMargins>
#include <QRect>
#include <QSize>
#include <QString>

class ZPopupWindowPrivate;

/*!
 * \brief A frameless top-level window that draws its own frame, shadow and
 * background from skin images.
 *
 * The window is painted in three layers: the background (backgroundImage
 * stretched, or backgroundColor, which follows the theme) cut to the shape of
 * the mask image; the scene's items; and the frame image on top. Mask and
 * frame image are both cut in nine parts by maskMargins: the corners keep
 * their size, the edges and the middle stretch. The defaults are the embedded
 * skin's ":/image/theme/maskimage.png" and ":/image/theme/frameimage.png",
 * whose corner pieces are 16 pixels, so maskMargins defaults to 16 on every
 * side.
 *
 * Frame margins. resetFrame() derives them from the images: on each side, the
 * number of fully transparent pixel rows (or columns) of the mask image
 * counted from that edge, at most that side's mask margin (the band must lie
 * in the corner piece, which is drawn unscaled). Without a mask image the
 * frame image is measured the same way; without either, and with hasFrame
 * off, they are 0. For the embedded skin this is its 9-pixel shadow band.
 * The frame margins are the part of the window outside the visible frame:
 * hit-testing, maximising and moveCenter() measure the window without them.
 * New windows take them as their sceneMargins, so content starts inside the
 * visible frame; documents may set other scene margins.
 *
 * A translucent window (the default) shows its shadow band through alpha;
 * an opaque one is cut to the mask image's shape instead.
 *
 * Moving and resizing: with dragWindow on, a left press on the resize border
 * (see frameHitTest()) of a resizable window resizes it, and a press on a
 * point whose widget answers ZWidget::WindowMove moves it, both through the
 * window system where it offers that and by following the mouse otherwise.
 * A maximised window does neither. showMaximized() places the window by
 * maximizedGeometry(), so its shadow band and border lie off the screen.
 *
 * Keys: Escape calls onEscPressed() and goes no further (the scene's focus
 * item never sees it); Return and Enter call onEnterPressed() and then go to
 * the scene. With closeOnF4 off, close requests from the window system
 * (Alt+F4, the task bar) are ignored; close() from code still closes.
 *
 * Pop-up windows are deleted when closed (Qt::WA_DeleteOnClose, through
 * ZWindow::close()).
 */
class ZKIT_EXPORT ZPopupWindow : public ZWindow
{
    Q_OBJECT
    Q_PROPERTY(WindowStyles windowStyle READ windowStyle WRITE setWindowStyle)
    Q_PROPERTY(bool dragWindow READ dragWindow WRITE setDragWindow)
    Q_PROPERTY(bool quitAppOnClose READ quitAppOnClose WRITE setQuitAppOnClose)
    Q_PROPERTY(bool closeOnEscape READ closeOnEscape WRITE setCloseOnEscape)
    Q_PROPERTY(bool closeOnF4 READ closeOnF4 WRITE setCloseOnF4)
    Q_PROPERTY(bool toolWindow READ toolWindow WRITE setToolWindow)
    Q_PROPERTY(bool maximumButton READ maximumButton WRITE setMaximumButton)
    Q_PROPERTY(bool minimumButton READ minimumButton WRITE setMinimumButton)
    Q_PROPERTY(bool systemMenu READ systemMenu WRITE setSystemMenu)
    Q_PROPERTY(bool translucent READ translucent WRITE setTranslucent)
    Q_PROPERTY(bool resizable READ resizable WRITE setResizable)
    Q_PROPERTY(bool hasFrame READ hasFrame WRITE setHasFrame)
    Q_PROPERTY(QSize frameSize READ frameSize WRITE setFrameSize)
    Q_PROPERTY(QSize minimumSize READ minimumSize WRITE setMinimumSize)
    Q_PROPERTY(QSize maximumSize READ maximumSize WRITE setMaximumSize)
    Q_PROPERTY(QSize fixSize READ fixSize WRITE setFixSize)
    Q_PROPERTY(QString maskImage READ maskImage WRITE setMaskImage)
    Q_PROPERTY(int borderPixel READ borderPixel WRITE setBorderPixel)
    Q_PROPERTY(QMargins maskMargins READ maskMargins WRITE setMaskMargins)
    Q_PROPERTY(QString frameImage READ frameImage WRITE setFrameImage)
    Q_PROPERTY(QString backgroundImage READ backgroundImage WRITE setBackgroundImage)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)

public:
    /*! Window kinds; combine the capability bits or take a preset. */
    enum WindowStyle : int {
        Null = 0,
        Resizable = 1,
        CloseButton = 2,
        MinButton = 4,
        MaxButton = 8,
        AppWindow = 16,
        ToolWindow = 32,
        SystemMenu = 64,
        NoFrame = 128,
        Window = 79,     // Resizable | CloseButton | MinButton | MaxButton | SystemMenu
        Dialog = 18,     // CloseButton | AppWindow
        MainWindow = 95  // Window | AppWindow
    };
    Q_DECLARE_FLAGS(WindowStyles, WindowStyle)
    Q_FLAG(WindowStyles)

    /*! The answers of frameHitTest(). */
    enum HitArea : int {
        Nowhere = 0,
        Client = 1,
        Caption = 2,
        LeftEdge = 10,
        RightEdge = 11,
        TopEdge = 12,
        TopLeftCorner = 13,
        TopRightCorner = 14,
        BottomEdge = 15,
        BottomLeftCorner = 16,
        BottomRightCorner = 17
    };
    Q_ENUM(HitArea)

    Q_INVOKABLE explicit ZPopupWindow(QWidget *parent = nullptr);
    ~ZPopupWindow() override;

    void construct() override;

    /*!
     * Applies a style: resizable, maximumButton and minimumButton from their
     * bits; quitAppOnClose from AppWindow; hasFrame from NoFrame. The window
     * type is Qt::Tool when ToolWindow is set or SystemMenu is clear, else
     * Qt::Window, with the system-menu hint exactly when SystemMenu is set.
     * CloseButton only travels along (the title bar reads it).
     */
    void setWindowStyle(WindowStyles style);
    /*! The style as last set, with the bits the single setters changed since. */
    WindowStyles windowStyle() const;

    bool dragWindow() const;
    /*! Off: no moving and no resizing by the mouse. */
    void setDragWindow(bool on);
    bool quitAppOnClose() const;
    /*! Closing the window quits the application when it is the last (Qt::WA_QuitOnClose). */
    void setQuitAppOnClose(bool on);
    bool closeOnEscape() const;
    void setCloseOnEscape(bool on);
    bool closeOnF4() const;
    /*! Off: close requests from the window system are ignored. */
    void setCloseOnF4(bool on);
    bool toolWindow() const;
    /*! Window type Qt::Tool when on, Qt::Window when off. */
    void setToolWindow(bool on);
    bool systemMenu() const;
    /*! On: type Qt::Window with the system-menu hint; off: no hint, type Qt::Tool. */
    void setSystemMenu(bool on);
    bool maximumButton() const;
    /*!
     * On adds Qt::WindowMaximizeButtonHint to the native window (now and on
     * every show); the hint is never taken away again. The widget's own flags
     * do not carry it: there Qt would trade the frameless hint for it.
     */
    void setMaximumButton(bool on);
    bool minimumButton() const;
    /*! As setMaximumButton(), with Qt::WindowMinimizeButtonHint. */
    void setMinimumButton(bool on);
    bool translucent() const;
    /*! Qt::WA_TranslucentBackground; rebuilds the window shape. */
    void setTranslucent(bool on);
    bool resizable() const;
    void setResizable(bool on);
    bool hasFrame() const;
    /*! Off: no frame, no mask, no frame margins; the background fills the window. */
    void setHasFrame(bool on);

    /*! The window's size, frame margins included. */
    QSize frameSize() const;
    void setFrameSize(const QSize &size);
    /*! As set; invalid (the default) means none. */
    QSize minimumSize() const;
    /*! Also the widget's minimum size; an invalid size removes the limit. */
    void setMinimumSize(const QSize &size);
    void setMinimumSize(int width, int height) { setMinimumSize(QSize(width, height)); }
    QSize maximumSize() const;
    /*! Also the widget's maximum size; an invalid size removes the limit. */
    void setMaximumSize(const QSize &size);
    void setMaximumSize(int width, int height) { setMaximumSize(QSize(width, height)); }
    /*! The size when minimum and maximum size are equal and valid, else invalid. */
    QSize fixSize() const;
    /*! Sets both the minimum and the maximum size. */
    void setFixSize(const QSize &size);

    QString maskImage() const;
    void setMaskImage(const QString &path);
    QString frameImage() const;
    void setFrameImage(const QString &path);
    QMargins maskMargins() const;
    /*! Nine-part margins of mask and frame image; negative parts count as 0. */
    void setMaskMargins(const QMargins &margins);
    int borderPixel() const;
    /*! Width of the resize border inside the frame margins; negative counts as 0. */
    void setBorderPixel(int pixels);
    QString backgroundImage() const;
    /*! Stretched over the window, cut to the mask; replaces the colour while it loads. */
    void setBackgroundImage(const QString &path);
    QColor backgroundColor() const;
    /*! Replaced by the theme colour on every theme change. */
    void setBackgroundColor(const QColor &color);

    /*! The transparent band around the visible frame, from resetFrame(). */
    QMargins frameMargins() const;
    /*! Whether showMaximized() placed the window (and showNormal() has not undone it). */
    bool isWindowMaximized() const;

    /*!
     * Frame hit-testing, a pure function. \a windowRect and \a pos are in the
     * same coordinates. R is \a windowRect less \a frameMargins and B the
     * border. Not resizable, or maximised: Client. Otherwise, first hit wins:
     * the corners are 2B squares inside R (TopLeftCorner, TopRightCorner,
     * BottomLeftCorner, BottomRightCorner); then TopEdge, B high, from
     * R.left + B over R.width - 2B; LeftEdge, B wide, from R.top + B over
     * R.height - 3B; RightEdge, B wide, from R.top + B over R.height - 2B;
     * BottomEdge, B high, from R.left + B over R.width - 2B; else Client.
     * The corners are twice the border so diagonal resizing is easy to grab;
     * the left edge stops a border short of the right one, kept as it always
     * was.
     */
    static HitArea frameHitTest(const QRect &windowRect, const QMargins &frameMargins, int borderPixel,
                                bool resizable, bool maximized, const QPoint &pos);
    /*! The window edges a hit area resizes; none for Client, Caption and Nowhere. */
    static Qt::Edges edgesForHitArea(HitArea area);
    /*!
     * Where a maximised window goes: the work area grown by the border and
     * the frame margins on each side, so only the visible client part covers
     * the work area. Each dimension is clamped to \a maximumSize where that
     * is positive.
     */
    static QRect maximizedGeometry(const QRect &workArea, const QMargins &frameMargins, int borderPixel,
                                   const QSize &maximumSize);
    /*!
     * The smallest size a resize may reach: 5 times the left and right frame
     * margins wide and 3 times the top and bottom ones high, each raised to
     * \a minimumSize where that is positive.
     */
    static QSize minimumTrackSize(const QMargins &frameMargins, const QSize &minimumSize);
    /*!
     * The top-left position that centres the visible part (the window less
     * \a frameMargins) on \a center and keeps it inside \a area; a part
     * larger than \a area keeps its top-left corner at the area's.
     */
    static QPoint centeredPosition(const QSize &windowSize, const QMargins &frameMargins, const QPoint &center,
                                   const QRect &area);

    /*! Centres the window on the window of \a center, or on its screen when there is none. */
    Q_INVOKABLE void moveCenter(ZWidget *center);
    /*!
     * As moveCenter(ZWidget*); with \a deferred the move waits for the next
     * event-loop turn, after layouts have settled. A widget destroyed in the
     * meantime cancels it.
     */
    Q_INVOKABLE void moveCenter(ZWidget *center, bool deferred);
    /*! Centres the visible part on \a pt, inside the available area of the screen at \a pt. */
    Q_INVOKABLE void moveCenter(QPoint pt);
    /*! Rebuilds the frame and repaints; runs on every show. */
    Q_INVOKABLE void updateRequest();
    /*! Reloads frame and mask images, derives the frame margins, rebuilds the shape. */
    Q_INVOKABLE void resetFrame();

public Q_SLOTS:
    void showNormal() override;
    void showMaximized() override;
    void showMaximizeOrRestore() override;

Q_SIGNALS:
    void enterPressed(Qt::KeyboardModifiers modifiers);

protected:
    ZPopupWindow(ZPopupWindowPrivate &dd, QWidget *parent);

    /*! Escape: closes the window when closeOnEscape is on. */
    virtual void onEscPressed(Qt::KeyboardModifiers modifiers);
    /*! Return or Enter: emits enterPressed(). */
    virtual void onEnterPressed(Qt::KeyboardModifiers modifiers);

    void themeChange(ZThemeChangeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void drawBackground(QPainter *painter, const QRectF &rect) override;
    void drawForeground(QPainter *painter, const QRectF &rect) override;

protected Q_SLOTS:
    virtual void onCloseClick();

private:
    Z_DECLARE_PRIVATE(ZPopupWindow)
    void init();
};

Q_DECLARE_OPERATORS_FOR_FLAGS(ZPopupWindow::WindowStyles)

#endif // ZPOPUPWINDOW_H
