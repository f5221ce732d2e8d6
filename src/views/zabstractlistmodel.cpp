#include "zabstractlistmodel.h"

ZAbstractListModel::ZAbstractListModel(QObject *parent)
    : QObject(parent)
{
    // By-name connections look the parameter type up by its name.
    qRegisterMetaType<QList<Qt::ItemDataRole>>("QList<Qt::ItemDataRole>");
}

ZAbstractListModel::~ZAbstractListModel() = default;

bool ZAbstractListModel::setData(int index, const QMap<Qt::ItemDataRole, QVariant> &data)
{
    Q_UNUSED(index);
    Q_UNUSED(data);
    return false;
}

bool ZAbstractListModel::setAction(int index, const QVariant &action, QVariant &result)
{
    Q_UNUSED(index);
    Q_UNUSED(action);
    Q_UNUSED(result);
    return false;
}
