// Which item each row shows, and which row shows an item.
#pragma once

#include <vector>

namespace report
{

// Rows are counted from 0. Every item has at most one row; in a tree some have none.
class RowMap
{
public:
    int Count() const { return static_cast<int>(m_items.size()); }
    const std::vector<int>& Items() const { return m_items; } // by row

    // Invalid argument outside the rows.
    int ItemAt(int row) const;

    // -2 when no row shows the item. O(1), but for the first call after a change. Numbers in the array that
    // are no item, below 0 or from `itemCount` on, are not found.
    int RowOf(int item, int itemCount);

    // A new last row. Rows are not looked up again when items are appended in their order.
    void Append(int item);
    void Clear();
    void Swap(int row1, int row2); // invalid argument outside the rows

    // Any numbers; of several rows that show the same item, the last is found.
    void Assign(std::vector<int> items);

    // Item numbers from `item` on move up by one, and a row for the new `item` comes in before `row` (0 to
    // Count(); else invalid argument). O(Count()): at the end, Append does the same.
    void InsertItem(int item, int row);

    // The rows of a sorted list of items without duplicates go, and the other items are renumbered to close
    // the gaps.
    void RemoveItems(const std::vector<int>& items);

private:
    void Note(int row); // in m_rows

    std::vector<int> m_items; // by row
    std::vector<int> m_rows;  // by item: right for as many items as it has, and none after most changes
};

} // namespace report
