#ifndef ZWINDOW_H
#define ZWINDOW_H

#include "zglobal.h"

#include <QGraphicsView>
#include <QMargins>
#include <memory>

class ZWidget;
class ZWindowPrivate;
class ZThemeChangeEvent;

/*!
 * Host of every top-level surface: a QGraphicsView owning one scene whose
 * single top-level item is the root widget (a ZSpacer with a vertical
 * layout). The root is kept exactly as large as the view less the scene
 * margins, so layouts inside it behave as in an ordinary widget.
 *
 * A bare ZWindow is a child widget; subclasses (pop-up windows, dialogs) or
 * setRealWindow() make it a window of its own.
 */
class ZKIT_EXPORT ZWindow : public QGraphicsView
{
    Q_OBJECT
    Q_PROPERTY(QMargins sceneMargins READ sceneMargins WRITE setSceneMargins)
    Q_PROPERTY(int fontSize READ fontSize WRITE setFontSize)
    Q_PROPERTY(QString fontName READ fontName WRITE setFontName)
    Q_PROPERTY(bool bold READ bold WRITE setBold)
    Q_PROPERTY(QString skinName READ skinName WRITE setSkinName)

public:
    Q_INVOKABLE explicit ZWindow(QWidget *parent = nullptr);
    ~ZWindow() override;

    /// The widget that holds everything put into the window.
    virtual ZWidget *rootWidget();

    /// Called once after the window's document has been loaded; re-themes.
    virtual void construct();

    QMargins sceneMargins() const;
    void setSceneMargins(const QMargins &margins);

    int fontSize() const;
    void setFontSize(int pixelSize);
    QString fontName() const;
    void setFontName(const QString &family);
    bool bold() const;
    void setBold(bool bold);
    /// Sets the font on the window and its scene, so every widget follows.
    void setFont(const QFont &font);

    QString skinName() const;
    void setSkinName(const QString &name);

    /// The size the window needs for its content, scene margins included.
    QSizeF calcWindowPreferSize();

    /// Makes the window native (or not); it stays without Qt::Window.
    void setRealWindow(bool on);
    /// Deletes the window when the application is about to quit.
    void setAutoDeleteWhenAppQuit(bool on);
    /// Called from a receiver of aboutToClose(): the window stays open.
    void abortCloseWindow();
    /// Makes close() a plain widget close, without the window's own steps.
    void skipMyCloseExecution();

public Q_SLOTS:
    virtual bool close();
    virtual void showNormal();
    virtual void showMaximized();
    virtual void showMinimized();
    virtual void showMaximizeOrRestore();

Q_SIGNALS:
    void visibleChanged();
    void aboutToClose();
    void resized();
    void posChanged();

protected:
    ZWindow(ZWindowPrivate &dd, QWidget *parent);

    /// Re-themes every ZWidget of the scene that takes part in theming.
    void doThemeChange();
    virtual void themeChange(ZThemeChangeEvent *event);

    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

    std::unique_ptr<ZWindowPrivate> d_zptr;

private Q_SLOTS:
    void on_aboutToQuit();
    void on_viewport_update_bugfix();

private:
    Z_DECLARE_PRIVATE(ZWindow)
    void init();
    void layoutRoot();
};

#endif // ZWINDOW_H
