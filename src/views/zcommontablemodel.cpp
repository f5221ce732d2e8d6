#include "zcommontablemodel.h"

#include <climits>

namespace {
// Keeps a document's "columnCount=2000000000" from allocating the world.
constexpr int MaxColumns = 4096;

QList<ZAbstractTableModel::CellData> cellsFor(const QStringList &texts, int columns)
{
    QList<ZAbstractTableModel::CellData> cells;
    cells.reserve(columns);
    for (int c = 0; c < columns; ++c) {
        ZAbstractTableModel::CellData cell;
        cell.insert(Qt::DisplayRole, c < texts.size() ? texts.at(c) : QString());
        cells.append(cell);
    }
    return cells;
}
} // namespace

ZCommonTableModel::ZCommonTableModel(QObject *parent)
    : ZAbstractTableModel(parent)
{
}

ZCommonTableModel::~ZCommonTableModel() = default;

int ZCommonTableModel::rowCount() const
{
    return int(m_rows.size());
}

int ZCommonTableModel::columnCount() const
{
    return m_columns;
}

ZAbstractTableModel::CellData ZCommonTableModel::data(int row, int column) const
{
    if (row < 0 || row >= m_rows.size() || column < 0 || column >= m_columns)
        return CellData();
    return m_rows.at(row).value(column);
}

ZAbstractTableModel::CellData ZCommonTableModel::headerData(int column) const
{
    CellData cell;
    if (column >= 0 && column < m_columns)
        cell.insert(Qt::DisplayRole, m_header.value(column));
    return cell;
}

bool ZCommonTableModel::setData(int row, int column, const CellData &data)
{
    if (row < 0 || row >= m_rows.size() || column < 0 || column >= m_columns)
        return false;
    CellData &cell = m_rows[row][column];
    if (cell == data)
        return true;
    cell = data;
    Q_EMIT cellsChanged(row, column, 1, 1);
    return true;
}

void ZCommonTableModel::widen(int columns)
{
    columns = qBound(0, columns, MaxColumns);
    if (columns <= m_columns)
        return;
    const int old = m_columns;
    m_columns = columns;
    for (auto &row : m_rows)
        while (row.size() < columns)
            row.append(CellData{{Qt::DisplayRole, QString()}});
    Q_EMIT columnsInserted(old, columns - old);
}

void ZCommonTableModel::setColumnCount(int count)
{
    count = qBound(0, count, MaxColumns);
    if (count == m_columns)
        return;
    if (count > m_columns) {
        widen(count);
        return;
    }
    const int old = m_columns;
    m_columns = count;
    for (auto &row : m_rows)
        row.resize(count);
    if (m_header.size() > count)
        m_header.resize(count);
    Q_EMIT columnsRemoved(count, old - count);
}

void ZCommonTableModel::setHeaderLabels(const QStringList &labels)
{
    if (labels == m_header)
        return;
    m_header = labels.mid(0, MaxColumns);
    if (m_header.size() != m_columns) {
        if (m_header.size() > m_columns)
            widen(int(m_header.size()));
        else
            setColumnCount(int(m_header.size()));
    }
    Q_EMIT headerChanged();
}

QStringList ZCommonTableModel::headerLabels() const
{
    return m_header;
}

QString ZCommonTableModel::headerText() const
{
    return m_header.join(QLatin1Char('|'));
}

void ZCommonTableModel::setHeaderText(const QString &text)
{
    setHeaderLabels(text.isEmpty() ? QStringList() : text.split(QLatin1Char('|')));
}

int ZCommonTableModel::addRow(const QStringList &texts)
{
    return insertRow(rowCount(), texts);
}

int ZCommonTableModel::insertRow(int row, const QStringList &texts)
{
    if (m_rows.size() >= INT_MAX - 1)
        return -1;
    row = qBound(0, row, rowCount());
    if (texts.size() > m_columns)
        widen(int(texts.size()));
    m_rows.insert(row, cellsFor(texts, m_columns));
    if (m_batch) {
        if (m_batchStart < 0)
            m_batchStart = row;
        ++m_batchCount;
    } else {
        Q_EMIT rowsInserted(row, 1);
    }
    return row;
}

bool ZCommonTableModel::removeRow(int row)
{
    if (row < 0 || row >= m_rows.size())
        return false;
    m_rows.removeAt(row);
    Q_EMIT rowsRemoved(row, 1);
    return true;
}

void ZCommonTableModel::removeAll()
{
    m_rows.clear();
    Q_EMIT modelReset();
}

bool ZCommonTableModel::setCellText(int row, int column, const QString &text)
{
    CellData cell = data(row, column);
    cell.insert(Qt::DisplayRole, text);
    return setData(row, column, cell);
}

QString ZCommonTableModel::cellText(int row, int column) const
{
    return data(row, column).value(Qt::DisplayRole).toString();
}

void ZCommonTableModel::batchInsert()
{
    m_batch = true;
    m_batchStart = -1;
    m_batchCount = 0;
}

int ZCommonTableModel::batchCommit()
{
    m_batch = false;
    const int n = m_batchCount;
    if (n > 0)
        Q_EMIT rowsInserted(m_batchStart, n);
    m_batchStart = -1;
    m_batchCount = 0;
    return n;
}
