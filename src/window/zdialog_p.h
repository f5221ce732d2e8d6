#ifndef ZDIALOG_P_H
#define ZDIALOG_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zdialog.h"
#include "zdialogbase_p.h"

#include <QPointer>

class ZKIT_EXPORT ZDialogPrivate : public ZDialogBasePrivate
{
    Z_DECLARE_PUBLIC(ZDialog)
public:
    explicit ZDialogPrivate(ZDialog *q) : ZDialogBasePrivate(q) {}

    QPointer<ZTitlebar> titlebar;
};

#endif // ZDIALOG_P_H
