#include "zsignalconnector.h"
#include "zhelper_p.h"

#include "zcreator.h"
#include "zxmlui_p.h"

class ZSignalConnectorPrivate : public ZHelperPrivate
{
public:
    QString signal;
    QString slot;
    QString receiver;
};

ZSignalConnector::ZSignalConnector(QObject *parent)
    : ZHelper(*new ZSignalConnectorPrivate, parent)
{
}

ZSignalConnector::~ZSignalConnector() = default;

QString ZSignalConnector::signal() const
{
    return d_func()->signal;
}

void ZSignalConnector::setSignal(const QString &signature)
{
    d_func()->signal = signature;
}

QString ZSignalConnector::slot() const
{
    return d_func()->slot;
}

void ZSignalConnector::setSlot(const QString &signature)
{
    d_func()->slot = signature;
}

QString ZSignalConnector::receiver() const
{
    return d_func()->receiver;
}

void ZSignalConnector::setReceiver(const QString &path)
{
    d_func()->receiver = path;
}

bool ZSignalConnector::doExecute()
{
    if (!ZHelper::doExecute())
        return false;
    Z_D(ZSignalConnector);
    QObject *sender = target();
    QObject *receiver = resolve(d->receiver);
    if (!receiver) {
        setErrorString(QStringLiteral("receiver \"%1\" names no object").arg(d->receiver));
        return false;
    }

    QString error;
    if (!ZXmlUIPrivate::connectChecked(sender, d->signal.toUtf8(), receiver, d->slot.toUtf8(), Qt::AutoConnection,
                                       true, &error)) {
        setErrorString(error);
        return false;
    }
    return true;
}

Z_REGISTER_HELPER(ZSignalConnector);
