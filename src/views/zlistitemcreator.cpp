#include "zlistitemcreator.h"

#include "zlistitem.h"

ZListItemCreator::~ZListItemCreator() = default;

void ZListItemCreator::release(ZListItem *item)
{
    if (item)
        m_pool.append(item);
}

int ZListItemCreator::poolSize() const
{
    int n = 0;
    for (const auto &item : m_pool)
        n += item ? 1 : 0;
    return n;
}

ZListItem *ZListItemCreator::takePooled(ZListWidget *view)
{
    for (qsizetype i = m_pool.size() - 1; i >= 0; --i) {
        ZListItem *item = m_pool.at(i);
        if (!item) {
            m_pool.removeAt(i);
            continue;
        }
        // An item belongs to the view that made it.
        if (item->listView() == view) {
            m_pool.removeAt(i);
            return item;
        }
    }
    return nullptr;
}
