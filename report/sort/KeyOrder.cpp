#include "report/sort/KeyOrder.h"

#include <utility>

namespace report
{

KeyOrder::KeyOrder(ReadKey read) : m_read(std::move(read)) {}

void KeyOrder::AddFurtherKey(int subitem, bool ascending)
{
    m_further.push_back({subitem, ascending});
}

void KeyOrder::RemoveFurtherKeys()
{
    m_further.clear();
}

void KeyOrder::Begin(int itemCount, bool ascending)
{
    m_keys.clear();
    m_itemCount = itemCount;
    m_ascending = ascending;
}

int KeyOrder::Compare(int item1, int subitem1, int item2, int subitem2)
{
    if (item1 == item2)
        return 0; // a sort meets the item that it compares the others with
    if (const int order = CompareCells(item1, subitem1, item2, subitem2); order != 0)
        return order;
    const int order = CompareFurther(item1, item2);
    return m_ascending ? order : -order;
}

int KeyOrder::CompareFurther(int item1, int item2)
{
    for (const FurtherKey& key : m_further)
        if (const int order = CompareCells(item1, key.subitem, item2, key.subitem); order != 0)
            return key.ascending ? order : -order;
    return item1 < item2 ? -1 : item1 > item2;
}

int KeyOrder::CompareCells(int item1, int subitem1, int item2, int subitem2)
{
    CellKey unkept1;
    CellKey unkept2;
    const std::strong_ordering order = Key(item1, subitem1, unkept1) <=> Key(item2, subitem2, unkept2);
    return order < 0 ? -1 : order > 0;
}

const CellKey& KeyOrder::Key(int item, int subitem, CellKey& unkept)
{
    if (item < 0 || item >= m_itemCount)
        return unkept = m_read(item, subitem);
    std::vector<std::optional<CellKey>>& keys = m_keys[subitem];
    keys.resize(static_cast<std::size_t>(m_itemCount));
    std::optional<CellKey>& key = keys[static_cast<std::size_t>(item)];
    if (!key)
        key = m_read(item, subitem);
    return *key;
}

} // namespace report
