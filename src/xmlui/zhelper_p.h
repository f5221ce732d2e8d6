#ifndef ZHELPER_P_H
#define ZHELPER_P_H

//
// Private to zkit: not part of the public API, may change without notice.
//

#include "zhelper.h"

#include <QtCore/qpointer.h>

class ZKIT_EXPORT ZHelperPrivate
{
    Z_DECLARE_PUBLIC(ZHelper)
public:
    virtual ~ZHelperPrivate() = default;

    ZHelper *q_zptr = nullptr;
    QString targetPath;
    QString errorString;
    QPointer<QObject> root;
    QPointer<QObject> target;
};

#endif // ZHELPER_P_H
