#ifndef ZSIGNALCONNECTOR_H
#define ZSIGNALCONNECTOR_H

#include "zhelper.h"

class ZSignalConnectorPrivate;

/*!
 * \brief A helper that connects a signal of its target to a slot.
 *
 * signal and slot are signatures such as "clicked()" and "accept()"; the
 * slot may also be a signal, which is then relayed. receiver is a path like
 * targetPath (empty: the root object). execute() fails when an object is
 * missing, a signature names no such member, or the arguments do not fit.
 */
class ZKIT_EXPORT ZSignalConnector : public ZHelper
{
    Q_OBJECT
    Q_PROPERTY(QString signal READ signal WRITE setSignal)
    Q_PROPERTY(QString slot READ slot WRITE setSlot)
    Q_PROPERTY(QString receiver READ receiver WRITE setReceiver)

public:
    Q_INVOKABLE explicit ZSignalConnector(QObject *parent = nullptr);
    ~ZSignalConnector() override;

    QString signal() const;
    void setSignal(const QString &signature);
    QString slot() const;
    void setSlot(const QString &signature);
    QString receiver() const;
    void setReceiver(const QString &path);

protected:
    bool doExecute() override;

private:
    Z_DECLARE_PRIVATE(ZSignalConnector)
};

#endif // ZSIGNALCONNECTOR_H
