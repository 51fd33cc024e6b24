#include "report/model/ItemStore.h"

#include "report/model/CellCodec.h"
#include "report/model/InvalidArgument.h"

#include <utility>

namespace report
{

Item& ItemStore::At(int item)
{
    if (item == RVI_DEFAULT)
        return m_default;
    if (item < 0 || item >= Count())
        ThrowInvalidArgument();
    return m_items[static_cast<std::size_t>(item)]->item;
}

Item& ItemStore::Insert(int item, int fields)
{
    if (item < 0 || item > Count())
        ThrowInvalidArgument();
    auto stored = std::make_unique<Stored>();
    Item& inserted = stored->item;
    ResetCells(inserted.cells, fields);
    m_items.insert(m_items.begin() + item, std::move(stored));
    Renumber(item + 1);
    return inserted;
}

void ItemStore::Remove(const std::vector<int>& items)
{
    if (items.empty())
        return;
    if (items.front() < 0 || items.back() >= Count())
        ThrowInvalidArgument();

    auto removed = items.begin();
    auto kept = m_items.begin() + items.front();
    for (int item = items.front(); item < Count(); ++item)
    {
        if (removed != items.end() && *removed == item)
            ++removed;
        else
            *kept++ = std::move(m_items[static_cast<std::size_t>(item)]);
    }
    m_items.erase(kept, m_items.end());
    Renumber(items.front());
}

void ItemStore::Remove(int item)
{
    m_items.erase(m_items.begin() + item);
    Renumber(item);
}

void ItemStore::RemoveAll()
{
    m_items.clear();
}

_TREEITEM& ItemStore::CreateTreeItem(int item)
{
    if (item < 0 || item >= Count())
        ThrowInvalidArgument();
    Stored& stored = *m_items[static_cast<std::size_t>(item)];
    stored.treeItem = std::make_unique<_TREEITEM>();
    stored.treeItem->item = item;
    stored.item.treeItem = stored.treeItem.get();
    return *stored.treeItem;
}

void ItemStore::InsertField(int field)
{
    int item = RVI_DEFAULT;
    try
    {
        for (; item < Count(); ++item)
            InsertCell(At(item).cells, field);
    }
    catch (...)
    {
        while (--item >= RVI_DEFAULT)
            RemoveCell(At(item).cells, field);
        throw;
    }
}

void ItemStore::RemoveField(int field)
{
    for (int item = RVI_DEFAULT; item < Count(); ++item)
        RemoveCell(At(item).cells, field);
}

// Tells the tree items from `first` on where their items are now.
void ItemStore::Renumber(int first)
{
    for (int item = first; item < Count(); ++item)
    {
        if (_TREEITEM* const treeItem = At(item).treeItem)
            treeItem->item = item;
    }
}

} // namespace report
