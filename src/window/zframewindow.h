#ifndef ZFRAMEWINDOW_H
#define ZFRAMEWINDOW_H

#include "zpopupwindow.h"
#include "ztitlebar.h"

class ZFrameWindowPrivate;

/*!
 * \brief A pop-up window with a title bar that is no dialog: no result, no
 * modal run.
 *
 * As in ZDialog, the title bar (object name "titlebar") is the first item of
 * the root widget and all other content goes below it, and the style carries
 * ZPopupWindow::CloseButton from the start. Give the window the Window style
 * (or minimumButton and maximumButton) for the other two window buttons.
 */
class ZKIT_EXPORT ZFrameWindow : public ZPopupWindow
{
    Q_OBJECT
    Q_PROPERTY(QObject *titlebar READ titlebar)

public:
    Q_INVOKABLE explicit ZFrameWindow(QWidget *parent = nullptr);
    ~ZFrameWindow() override;

    /*! The title bar; null once it has been deleted. */
    ZTitlebar *titlebar() const;

    /*! Brings the title bar up to date with the window's style. */
    void construct() override;

protected:
    ZFrameWindow(ZFrameWindowPrivate &dd, QWidget *parent);

    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    Z_DECLARE_PRIVATE(ZFrameWindow)
    void init();
};

#endif // ZFRAMEWINDOW_H
