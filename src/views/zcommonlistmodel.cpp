#include "zcommonlistmodel.h"

#include <QtCore/qstringlist.h>

#include <vector>

using RowData = QMap<Qt::ItemDataRole, QVariant>;

namespace {
// A row keeps its text apart from the other roles: a text-only row then
// costs no allocation of its own (the text is shared with the caller), so a
// million rows fill in a blink. data() puts the map together.
struct Row
{
    QString text;
    RowData extra;
};
} // namespace

class ZCommonListModelPrivate
{
public:
    std::vector<Row> rows;
    int batchStart = -1;
    int batchCount = 0;
    bool batch = false;
};

ZCommonListModel::ZCommonListModel(QObject *parent)
    : ZAbstractListModel(parent)
    , d(new ZCommonListModelPrivate)
{
}

ZCommonListModel::~ZCommonListModel() = default;

int ZCommonListModel::count() const
{
    return int(d->rows.size());
}

QMap<Qt::ItemDataRole, QVariant> ZCommonListModel::data(int index) const
{
    if (index < 0 || index >= count())
        return RowData();
    const Row &row = d->rows[size_t(index)];
    RowData map = row.extra;
    map.insert(Qt::DisplayRole, row.text);
    return map;
}

void ZCommonListModel::insertRow(int index, const QString &text, RowData &&extra)
{
    index = qBound(0, index, count());
    d->rows.insert(d->rows.begin() + index, Row{text, std::move(extra)});
    if (d->batch) {
        if (d->batchStart < 0)
            d->batchStart = index;
        ++d->batchCount;
    } else {
        Q_EMIT itemsInserted(index, 1);
    }
}

void ZCommonListModel::addItem(const QString &text)
{
    insertRow(count(), text, RowData());
}

void ZCommonListModel::addItem(const QString &text, const QVariant &data)
{
    RowData extra;
    if (data.isValid())
        extra.insert(UserValueRole, data);
    insertRow(count(), text, std::move(extra));
}

void ZCommonListModel::addItem(const QString &text, const QString &icon, const QVariant &data)
{
    insertItem(count(), text, icon, data);
}

void ZCommonListModel::insertItem(int index, const QString &text, const QString &icon, const QVariant &data)
{
    RowData extra;
    // Only an empty icon is stored; see the class description.
    if (icon.isEmpty())
        extra.insert(Qt::DecorationRole, QString(""));
    if (data.isValid())
        extra.insert(UserValueRole, data);
    insertRow(index, text, std::move(extra));
}

void ZCommonListModel::removeItem(int index)
{
    if (index < 0 || index >= count())
        return;
    d->rows.erase(d->rows.begin() + index);
    Q_EMIT itemsRemoved(index, 1);
}

void ZCommonListModel::removeItem(const QString &text)
{
    for (size_t i = 0; i < d->rows.size(); ++i) {
        if (d->rows[i].text == text) {
            removeItem(int(i));
            return;
        }
    }
}

void ZCommonListModel::removeAll()
{
    d->rows.clear();
    Q_EMIT modelReset();
}

void ZCommonListModel::batchInsert()
{
    d->batch = true;
    d->batchCount = 0;
    d->batchStart = -1;
}

int ZCommonListModel::batchCommit()
{
    d->batch = false;
    const int n = d->batchCount;
    if (n >= 1)
        Q_EMIT itemsInserted(d->batchStart, n);
    d->batchCount = 0;
    d->batchStart = -1;
    return n;
}

bool ZCommonListModel::inBatch() const
{
    return d->batch;
}

void ZCommonListModel::setItemsText(const QString &text)
{
    d->rows.clear();
    const QStringList parts = text.split(QLatin1Char('|'), Qt::KeepEmptyParts, Qt::CaseSensitive);
    d->rows.reserve(size_t(parts.size()));
    for (const QString &part : parts)
        d->rows.push_back(Row{part, RowData()});
    Q_EMIT modelReset();
}

QString ZCommonListModel::itemsText() const
{
    QString text;
    for (size_t i = 0; i < d->rows.size(); ++i) {
        if (i)
            text += QLatin1Char('|');
        text += d->rows[i].text;
    }
    return text;
}
