#ifndef ZDIALOGBASE_H
#define ZDIALOGBASE_H

#include "zpopupwindow.h"

class ZDialogBasePrivate;

/*!
 * \brief A pop-up window with a result code and a modal run.
 *
 * doModal() shows the dialog modally and returns once it has closed, with
 * its result: 1 accepted, 0 rejected, or whatever was passed to done().
 * Anything that closes the dialog ends the run: done(), setAccepted(),
 * setRejected(), the exit() slot, Escape (closeOnEscape), the title bar's
 * close button, close(). A close that is aborted (ZWindow::abortCloseWindow(),
 * or a window-system request with closeOnF4 off) does not end it. Deleting
 * the dialog during the run ends the run with the result it had.
 *
 * The result starts at 0 and every doModal() starts from 0 again, so a dialog
 * that is closed without an answer reads as rejected.
 */
class ZKIT_EXPORT ZDialogBase : public ZPopupWindow
{
    Q_OBJECT
    Q_PROPERTY(int result READ result)

public:
    /*! The two named results; done() takes any other number too. */
    enum DialogCode : int { Rejected = 0, Accepted = 1 };
    Q_ENUM(DialogCode)

    Q_INVOKABLE explicit ZDialogBase(QWidget *parent = nullptr);
    ~ZDialogBase() override;

    /*!
     * Shows the dialog modally (Qt::WindowModal) and returns its result once
     * it has closed:
     * 1. runs construct(), clears Qt::WA_DeleteOnClose, sets Qt::WA_ShowModal;
     * 2. centres the dialog on \a center's window; a null \a center centres
     *    it on the screen, unless it has been moved already (then it stays
     *    where it is); shows it, emits dialogShow() and, with \a activate,
     *    activates it;
     * 3. runs a local event loop until the dialog closes;
     * 4. drops the modality and hides the dialog;
     * 5. with \a deleteAfter, deletes it once the caller's event is done.
     *
     * A call while the dialog is already in its modal run returns -1 at
     * once and changes nothing.
     */
    int doModal(ZWidget *center = nullptr, bool activate = true, bool deleteAfter = false);
    /*! Whether doModal() is running for this dialog. */
    bool isModalRunning() const;

    int result() const;
    /*! result() == 1 */
    bool accepted() const;
    /*! result() == 0 */
    bool rejected() const;
    /*! Same as done(). */
    void endDialog(int result);

public Q_SLOTS:
    /*! done(1) */
    void setAccepted();
    /*! done(0) */
    void setRejected();
    /*! Stores \a result and closes the dialog (the virtual close()). */
    virtual void done(int result);

Q_SIGNALS:
    /*! doModal() has shown the dialog. */
    void dialogShow();

protected:
    ZDialogBase(ZDialogBasePrivate &dd, QWidget *parent);

    void closeEvent(QCloseEvent *event) override;
    void hideEvent(QHideEvent *event) override;

protected Q_SLOTS:
    /*!
     * Connected to a signal, ends the dialog with the sender's objectName
     * read as a number: a button named "5" ends it with 5. Called directly,
     * or by a sender whose name is no number, it ends the dialog as its
     * close button would (onCloseClick()).
     */
    void exit();

private:
    Z_DECLARE_PRIVATE(ZDialogBase)
};

#endif // ZDIALOGBASE_H
