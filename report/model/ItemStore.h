// The stored items of a report control, and its default item.
#pragma once

#include "ReportItem.h"

#include <memory>
#include <vector>

namespace report
{

// Items are counted from 0; -1 is the default item. Any other number is an invalid argument. References to
// items stay valid until the item is removed.
class ItemStore
{
public:
    int Count() const { return static_cast<int>(m_items.size()); }
    Item& At(int item);

    // Inserts an item with `fields` undefined cells before `item` (0 to Count()); later items move up by one,
    // and the numbers in their tree items with them. std::bad_alloc leaves everything as it was.
    Item& Insert(int item, int fields);

    // Removes the items of a sorted list without duplicates; the others keep their order, and the numbers in
    // their tree items follow. The tree must have let go of the removed ones.
    void Remove(const std::vector<int>& items);
    void Remove(int item); // needs no memory
    void RemoveAll();

    // A tree item for a stored item that has none, owned by the store and freed with the item.
    _TREEITEM& CreateTreeItem(int item);

    // A new undefined cell before `field`, or cell `field` gone, in every item and the default one.
    // InsertField does all or, with std::bad_alloc, nothing; only cells that an item lacked before `field`
    // may then be there, undefined.
    void InsertField(int field);
    void RemoveField(int field);

private:
    struct Stored
    {
        Item item;
        std::unique_ptr<_TREEITEM> treeItem; // null when there is none, or the owner of the data made it
    };

    void Renumber(int first);

    std::vector<std::unique_ptr<Stored>> m_items;
    Item m_default;
};

} // namespace report
