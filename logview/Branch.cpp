#include "logview/Branch.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace logview
{

namespace
{
constexpr std::uint64_t kMaxPosition = std::numeric_limits<std::uint32_t>::max();
}

CQmLogBranch::CQmLogBranch(RowId first, std::uint32_t count, std::uint32_t header)
    : m_row(first.row), m_file(first.file), m_count(count), m_header(header)
{
}

RowId CQmLogBranch::Translate(std::uint64_t row) const
{
    const CQmLogBranch* branch = this;
    std::size_t index = 0;
    while (const CQmLogBranch* const child = branch->Enter(row, index))
        branch = child;
    return {branch->m_file, static_cast<std::uint32_t>(std::min(row, kMaxPosition))};
}

bool CQmLogBranch::Insert(std::uint64_t row, CQmLogBranch branch, int depth)
{
    const std::uint64_t size = branch.GetSize();
    std::size_t index = 0;
    if (Enter(row, index))
    {
        CQmLogBranch& child = m_children[index];
        if (depth >= kMaxDepth || branch.m_header <= child.m_header ||
            !child.Insert(row, std::move(branch), depth + 1))
            return false;
        ChildrenChanged(index + 1, m_childrenSize + size);
        return true;
    }

    const std::uint64_t position = row + 1;
    index = ChildAtPosition(position);
    if (position > kMaxPosition || (index < m_children.size() && m_children[index].m_position == position))
        return false;
    branch.m_position = static_cast<std::uint32_t>(position);
    m_children.insert(m_children.begin() + static_cast<std::ptrdiff_t>(index), std::move(branch));
    ChildrenChanged(index, m_childrenSize + size);
    return true;
}

std::uint64_t CQmLogBranch::Remove(std::uint64_t row)
{
    std::size_t index = 0;
    std::uint64_t size = 0;
    if (Enter(row, index))
    {
        size = m_children[index].Remove(row);
        ChildrenChanged(index + 1, m_childrenSize - size);
        return size;
    }
    index = ChildAtPosition(row + 1);
    if (index == m_children.size() || m_children[index].m_position != row + 1)
        return 0;
    size = m_children[index].GetSize();
    m_children.erase(m_children.begin() + static_cast<std::ptrdiff_t>(index));
    ChildrenChanged(index, m_childrenSize - size);
    return size;
}

// Where a child begins in the coordinates that count the rows of its elder siblings along.
std::uint64_t CQmLogBranch::GetStart(std::size_t child) const
{
    return m_children[child].m_position + m_children[child].m_before;
}

// The child that shows `row`, and its index; `row` becomes the child's. Null when this branch itself shows
// it: `row` becomes a row of its log.
const CQmLogBranch* CQmLogBranch::Enter(std::uint64_t& row, std::size_t& index) const
{
    while (m_known < m_children.size() && (m_known == 0 || GetStart(m_known - 1) <= row))
    {
        if (m_known > 0)
        {
            const CQmLogBranch& elder = m_children[m_known - 1];
            m_children[m_known].m_before = elder.m_before + elder.GetSize();
        }
        else
            m_children[0].m_before = 0;
        ++m_known;
    }

    // Children that begin at or before `row`: in a walk that unfolds, all that are known.
    std::size_t low = m_known > 0 && GetStart(m_known - 1) <= row ? m_known : 0;
    for (std::size_t high = m_known; low < high;)
    {
        const std::size_t middle = low + (high - low) / 2;
        if (GetStart(middle) <= row)
            low = middle + 1;
        else
            high = middle;
    }
    if (low == 0)
        return nullptr;

    index = low - 1;
    const CQmLogBranch& child = m_children[index];
    const std::uint64_t within = row - GetStart(index);
    if (within < child.GetSize())
    {
        row = within + child.m_row;
        return &child;
    }
    row -= child.m_before + child.GetSize();
    return nullptr;
}

// The first child at or after `position`.
std::size_t CQmLogBranch::ChildAtPosition(std::uint64_t position) const
{
    const auto found =
        std::lower_bound(m_children.begin(), m_children.end(), position,
                         [](const CQmLogBranch& child, std::uint64_t at) { return child.m_position < at; });
    return static_cast<std::size_t>(found - m_children.begin());
}

// The sizes of the first `known` children are what they were.
void CQmLogBranch::ChildrenChanged(std::size_t known, std::uint64_t size)
{
    m_known = std::min(m_known, static_cast<std::uint32_t>(known));
    m_childrenSize = size;
}

} // namespace logview
