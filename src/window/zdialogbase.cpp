#include "zdialogbase_p.h"

#include "zcreator.h"
#include "zwidget.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QHideEvent>
#include <QPointer>
#include <QTimer>

ZDialogBasePrivate::ZDialogBasePrivate(ZDialogBase *q)
    : ZPopupWindowPrivate(q)
{
}

ZDialogBasePrivate::~ZDialogBasePrivate() = default;

void ZDialogBasePrivate::endModal()
{
    if (!modalRunning || modalEnded)
        return;
    modalEnded = true;
    if (loop)
        loop->exit(result);
    loop = nullptr;
}

// --- ZDialogBase -------------------------------------------------------------

ZDialogBase::ZDialogBase(QWidget *parent)
    : ZPopupWindow(*new ZDialogBasePrivate(this), parent)
{
}

ZDialogBase::ZDialogBase(ZDialogBasePrivate &dd, QWidget *parent)
    : ZPopupWindow(dd, parent)
{
}

ZDialogBase::~ZDialogBase()
{
    // Deleted during its run: the caller of doModal() gets the result so far.
    d_func()->endModal();
}

int ZDialogBase::doModal(ZWidget *center, bool activate, bool deleteAfter)
{
    Z_D(ZDialogBase);
    if (d->modalRunning)
        return -1;
    QPointer<ZDialogBase> guard(this);
    QPointer<ZWidget> centerGuard(center);

    construct();
    setAttribute(Qt::WA_DeleteOnClose, false);
    setAttribute(Qt::WA_ShowModal, true);
    setWindowModality(Qt::WindowModal);

    QEventLoop loop;
    d->result = 0;
    d->modalRunning = true;
    d->modalEnded = false;
    d->loop = &loop;

    if (centerGuard)
        moveCenter(centerGuard.data(), false);
    else if (!testAttribute(Qt::WA_Moved))
        moveCenter(static_cast<ZWidget *>(nullptr), false);
    show();
    if (guard)
        emit dialogShow();
    if (guard && activate) {
        activateWindow();
    }
    // A receiver of dialogShow() may have ended (or deleted) the dialog
    // already; the loop would then wait for nothing.
    int code = 0;
    if (guard && !d->modalEnded)
        code = loop.exec();
    if (!guard)
        return code;

    // The loop also ends when the application quits: the answer is then
    // whatever the dialog holds.
    code = d->result;
    d->loop = nullptr;
    d->modalRunning = false;
    setAttribute(Qt::WA_ShowModal, false);
    setWindowModality(Qt::NonModal);
    hide();
    if (deleteAfter)
        QMetaObject::invokeMethod(this, &QObject::deleteLater, Qt::QueuedConnection);
    return code;
}

bool ZDialogBase::isModalRunning() const
{
    return d_func()->modalRunning;
}

int ZDialogBase::result() const
{
    return d_func()->result;
}

bool ZDialogBase::accepted() const
{
    return d_func()->result == Accepted;
}

bool ZDialogBase::rejected() const
{
    return d_func()->result == Rejected;
}

void ZDialogBase::endDialog(int result)
{
    done(result);
}

void ZDialogBase::setAccepted()
{
    done(Accepted);
}

void ZDialogBase::setRejected()
{
    done(Rejected);
}

void ZDialogBase::done(int result)
{
    d_func()->result = result;
    close();
}

void ZDialogBase::exit()
{
    const QObject *from = sender();
    bool isNumber = false;
    const int code = from ? from->objectName().toInt(&isNumber) : 0;
    if (isNumber)
        done(code);
    else
        onCloseClick();
}

void ZDialogBase::closeEvent(QCloseEvent *event)
{
    ZPopupWindow::closeEvent(event);
    if (event->isAccepted())
        d_func()->endModal();
}

void ZDialogBase::hideEvent(QHideEvent *event)
{
    ZPopupWindow::hideEvent(event);
    if (!d_func()->modalRunning || event->spontaneous())
        return;
    // Hidden by code without closing: the run ends too, or it would wait for
    // a window nobody sees. Flag changes hide and show again at once, so
    // look once the current event is done.
    QTimer::singleShot(0, this, [this] {
        Z_D(ZDialogBase);
        if (!isVisible())
            d->endModal();
    });
}

Z_REGISTER_WINDOW(ZDialogBase);
