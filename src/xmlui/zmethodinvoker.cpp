#include "zmethodinvoker.h"

#include "zcreator.h"
#include "zxmlui_p.h"

#include <QtCore/qvariant.h>

ZMethodInvoker::ZMethodInvoker(QObject *parent)
    : ZHelper(parent)
{
}

ZMethodInvoker::~ZMethodInvoker() = default;

bool ZMethodInvoker::doExecute()
{
    if (!ZHelper::doExecute())
        return false;
    const QByteArray method = property("method").toString().toUtf8();
    if (method.isEmpty()) {
        setErrorString(QStringLiteral("no method given"));
        return false;
    }
    const QByteArray arguments = property("arguments").toString().toUtf8();
    const QByteArray connect = property("connect").toString().toUtf8();
    QString error;
    const bool ok = ZXmlUIPrivate::invoke(target(), method, arguments,
                                          ZXmlUIPrivate::connectionType(connect.constData()), &error);
    if (!ok)
        setErrorString(error);
    return ok;
}

Z_REGISTER_HELPER(ZMethodInvoker);
