#ifndef ZDIALOGBASE_P_H
#define ZDIALOGBASE_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zdialogbase.h"
#include "zpopupwindow_p.h"

class QEventLoop;

class ZKIT_EXPORT ZDialogBasePrivate : public ZPopupWindowPrivate
{
    Z_DECLARE_PUBLIC(ZDialogBase)
public:
    explicit ZDialogBasePrivate(ZDialogBase *q);
    ~ZDialogBasePrivate() override;

    // Ends the modal run, if one is on, with the stored result.
    void endModal();

    QEventLoop *loop = nullptr; // the running modal loop, null when none
    int result = 0;
    bool modalRunning = false;
    // The run ended before its loop started (closed from dialogShow()).
    bool modalEnded = false;
};

#endif // ZDIALOGBASE_P_H
