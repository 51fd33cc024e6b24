#include "report/sort/SortKeys.h"

namespace report
{

void SortKeys::Add(int item, int subitem, const Cell& cell)
{
    const std::size_t index = static_cast<std::size_t>(item);
    if (index >= m_keys.size())
        m_keys.resize(index + 1);
    Key& key = m_keys[index];
    key = {subitem, cell.check, cell.image, -1, m_texts.size()};
    if (cell.hasText)
    {
        key.length = static_cast<int>(cell.text.size());
        m_texts += cell.text;
    }
    m_emptyText = m_emptyText || key.length == 0;
    m_noText = m_noText || !cell.hasText;
}

const SortKeys::Key* SortKeys::Find(int item, int subitem) const
{
    if (item < 0 || static_cast<std::size_t>(item) >= m_keys.size())
        return nullptr;
    const Key& key = m_keys[static_cast<std::size_t>(item)];
    return key.subitem == subitem && subitem != kNotAdded ? &key : nullptr;
}

Cell SortKeys::CellOf(const Key& key) const
{
    Cell cell;
    cell.check = key.check;
    cell.image = key.image;
    cell.hasText = key.length >= 0;
    if (cell.hasText)
        cell.text = {m_texts.data() + key.text, static_cast<std::size_t>(key.length)};
    return cell;
}

bool SortKeys::Compare(int item1, int subitem1, int item2, int subitem2, int& result) const
{
    const Key* key1 = Find(item1, subitem1);
    const Key* key2 = Find(item2, subitem2);
    if (!key1 || !key2)
        return false;
    result = CompareCells(CellOf(*key1), CellOf(*key2));
    return true;
}

} // namespace report
