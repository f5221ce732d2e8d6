#include "zabstracttablemodel.h"

ZAbstractTableModel::ZAbstractTableModel(QObject *parent)
    : QObject(parent)
{
}

ZAbstractTableModel::~ZAbstractTableModel() = default;

ZAbstractTableModel::CellData ZAbstractTableModel::headerData(int column) const
{
    Q_UNUSED(column);
    return CellData();
}

bool ZAbstractTableModel::setData(int row, int column, const CellData &data)
{
    Q_UNUSED(row);
    Q_UNUSED(column);
    Q_UNUSED(data);
    return false;
}
