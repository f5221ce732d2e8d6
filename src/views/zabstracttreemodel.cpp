#include "zabstracttreemodel.h"
#include "zabstractlistmodel.h"

ZAbstractTreeModel::ItemCall::~ItemCall() = default;

ZAbstractTreeModel::ZAbstractTreeModel(QObject *parent)
    : QObject(parent)
{
    qRegisterMetaType<QList<qint64>>("QList<qint64>");
    qRegisterMetaType<QList<Qt::ItemDataRole>>("QList<Qt::ItemDataRole>");
}

ZAbstractTreeModel::~ZAbstractTreeModel() = default;

bool ZAbstractTreeModel::setData(qint64 id, const QMap<Qt::ItemDataRole, QVariant> &data)
{
    Q_UNUSED(id);
    Q_UNUSED(data);
    return false;
}

bool ZAbstractTreeModel::setAction(int action, const QVariant &param, QVariant &result)
{
    Q_UNUSED(action);
    Q_UNUSED(param);
    Q_UNUSED(result);
    return false;
}
