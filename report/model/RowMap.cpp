#include "report/model/RowMap.h"

#include "report/model/InvalidArgument.h"
#include "report/model/Selection.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace report
{

int RowMap::ItemAt(int row) const
{
    if (row < 0 || row >= Count())
        ThrowInvalidArgument();
    return m_items[static_cast<std::size_t>(row)];
}

int RowMap::RowOf(int item, int itemCount)
{
    if (item < 0 || item >= itemCount || m_items.empty())
        return kNoRow;
    if (static_cast<std::size_t>(item) >= m_rows.size())
    {
        m_rows.assign(static_cast<std::size_t>(itemCount), kNoRow);
        for (int row = 0; row < Count(); ++row)
            Note(row);
    }
    return m_rows[static_cast<std::size_t>(item)];
}

void RowMap::Note(int row)
{
    const int item = m_items[static_cast<std::size_t>(row)];
    if (item >= 0 && static_cast<std::size_t>(item) < m_rows.size())
        m_rows[static_cast<std::size_t>(item)] = row;
}

void RowMap::Append(int item)
{
    // A list that is filled item by item, and asked for each one's row, keeps what it knows.
    if (item >= 0 && static_cast<std::size_t>(item) == m_rows.size())
        m_rows.push_back(kNoRow);
    m_items.push_back(item);
    Note(Count() - 1);
}

void RowMap::Clear()
{
    m_items.clear();
    m_rows.clear();
}

void RowMap::Swap(int row1, int row2)
{
    if (std::min(row1, row2) < 0 || std::max(row1, row2) >= Count())
        ThrowInvalidArgument();
    std::swap(m_items[static_cast<std::size_t>(row1)], m_items[static_cast<std::size_t>(row2)]);
    m_rows.clear();
}

void RowMap::Assign(std::vector<int> items)
{
    m_items = std::move(items);
    m_rows.clear();
}

void RowMap::InsertItem(int item, int row)
{
    if (row < 0 || row > Count())
        ThrowInvalidArgument();
    m_items.insert(m_items.begin() + row, item);
    m_rows.clear();
    for (int& number : m_items)
    {
        if (number >= item && number < std::numeric_limits<int>::max())
            ++number;
    }
    m_items[static_cast<std::size_t>(row)] = item;
}

void RowMap::RemoveItems(const std::vector<int>& items)
{
    m_rows.clear();
    std::size_t kept = 0;
    for (const int item : m_items)
    {
        const auto place = std::lower_bound(items.begin(), items.end(), item);
        if (place == items.end() || *place != item)
            m_items[kept++] = item - static_cast<int>(place - items.begin());
    }
    m_items.resize(kept);
}

} // namespace report
