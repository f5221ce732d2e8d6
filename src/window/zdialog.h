#ifndef ZDIALOG_H
#define ZDIALOG_H

#include "zdialogbase.h"
#include "ztitlebar.h"

class ZDialogPrivate;

/*!
 * \brief A dialog with a title bar above its content.
 *
 * The title bar (object name "titlebar") is the first item of the root
 * widget; whatever the window receives afterwards, from code or a document,
 * goes below it. Documents reach it by dotted names ("titlebar.title").
 * The style carries ZPopupWindow::CloseButton from the start, so the bar
 * shows its close button until a style without that bit is set.
 */
class ZKIT_EXPORT ZDialog : public ZDialogBase
{
    Q_OBJECT
    Q_PROPERTY(QObject *titlebar READ titlebar)

public:
    Q_INVOKABLE explicit ZDialog(QWidget *parent = nullptr);
    ~ZDialog() override;

    /*! The title bar; null once it has been deleted. */
    ZTitlebar *titlebar() const;

    /*! Brings the title bar up to date with the window's style. */
    void construct() override;

protected:
    ZDialog(ZDialogPrivate &dd, QWidget *parent);

    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    Z_DECLARE_PRIVATE(ZDialog)
    void init();
};

#endif // ZDIALOG_H
