#include "report/model/HeaderDrag.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace report
{

HeaderDrag::HeaderDrag(HeaderStrip strip, int left, const std::vector<int>& widths, int column)
    : m_strip(strip), m_edges{left}, m_column(column)
{
    for (const int width : widths)
        m_edges.push_back(m_edges.back() + width);
}

HeaderDrop HeaderDrag::DropAt(int x, int y) const
{
    // The left half of a column is the gap before it, the right half the one after it.
    std::size_t gap = 0;
    while (gap + 1 < m_edges.size() && x - m_edges[gap] >= m_edges[gap + 1] - x)
        ++gap;

    const bool isOutside = x < m_strip.left || x >= m_strip.right || y < m_strip.top || y >= m_strip.bottom;
    HeaderDrop drop = {};
    drop.result = isOutside ? DropResult::Outside : DropResult::OnHeader;
    drop.gap = static_cast<int>(gap);
    drop.moves = !isOutside && (m_column == kNoColumn || ColumnAfterDrop(drop.gap) != m_column);
    drop.x = static_cast<int>(
        std::clamp<std::int64_t>(m_edges[gap], m_strip.left, std::max(m_strip.left, m_strip.right)));
    return drop;
}

bool HeaderDrag::Begins(int pressX, int pressY, int x, int y, int distanceX, int distanceY) const
{
    const bool isFar =
        std::abs(std::int64_t{x} - pressX) > distanceX || std::abs(std::int64_t{y} - pressY) > distanceY;
    const HeaderDrop drop = DropAt(x, y);
    return isFar && (drop.moves || drop.result == DropResult::Outside);
}

int HeaderDrag::ColumnAfterDrop(int gap) const
{
    return m_column != kNoColumn && gap > m_column ? gap - 1 : gap;
}

std::vector<int> HeaderDrag::Reorder(std::vector<int> items, int gap) const
{
    const int item = items[static_cast<std::size_t>(m_column)];
    items.erase(items.begin() + m_column);
    items.insert(items.begin() + ColumnAfterDrop(gap), item);
    return items;
}

} // namespace report
