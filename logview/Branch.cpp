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

// A chain of children may be longer than the stack is deep: each goes without children of its own.
CQmLogBranch::~CQmLogBranch()
{
    std::vector<std::vector<CQmLogBranch>> going;
    if (!m_children.empty())
        going.push_back(std::move(m_children));
    while (!going.empty())
    {
        std::vector<CQmLogBranch> children = std::move(going.back());
        going.pop_back();
        for (CQmLogBranch& child : children)
            if (!child.m_children.empty())
                going.push_back(std::move(child.m_children));
    }
}

RowId CQmLogBranch::Translate(std::uint64_t row) const
{
    int depth = 0;
    return Translate(row, depth);
}

RowId CQmLogBranch::Translate(std::uint64_t row, int& depth) const
{
    const CQmLogBranch* branch = this;
    std::size_t index = 0;
    depth = 0;
    for (; const CQmLogBranch* const child = branch->Enter(row, index); ++depth)
        branch = child;
    return {branch->m_file, static_cast<std::uint32_t>(std::min(row, kMaxPosition))};
}

struct CQmLogBranch::Step
{
    CQmLogBranch* branch;
    std::size_t child;
};

// The way to the branch that itself shows `row`, which becomes a row of its log.
std::vector<CQmLogBranch::Step> CQmLogBranch::FindPath(std::uint64_t& row)
{
    std::vector<Step> path;
    std::size_t index = 0;
    for (CQmLogBranch* branch = this; branch->Enter(row, index); branch = &branch->m_children[index])
        path.push_back({branch, index});
    return path;
}

bool CQmLogBranch::Insert(std::uint64_t row, CQmLogBranch branch)
{
    const std::uint64_t size = branch.GetSize();
    const std::vector<Step> path = FindPath(row);
    CQmLogBranch& parent = path.empty() ? *this : path.back().branch->m_children[path.back().child];
    const std::uint64_t position = row + 1;
    const std::size_t index = parent.ChildAtPosition(position);
    const bool isFree = index == parent.m_children.size() || parent.m_children[index].m_position != position;
    if (path.size() >= kMaxDepth || (!path.empty() && branch.m_header <= parent.m_header) ||
        position > kMaxPosition || !isFree)
        return false;
    branch.m_position = static_cast<std::uint32_t>(position);
    parent.m_children.insert(parent.m_children.begin() + static_cast<std::ptrdiff_t>(index),
                             std::move(branch));
    parent.ChildrenChanged(index, parent.m_childrenSize + size);
    for (const Step& step : path)
        step.branch->ChildrenChanged(step.child + 1, step.branch->m_childrenSize + size);
    return true;
}

std::uint64_t CQmLogBranch::Remove(std::uint64_t row)
{
    const std::vector<Step> path = FindPath(row);
    CQmLogBranch& parent = path.empty() ? *this : path.back().branch->m_children[path.back().child];
    const std::size_t index = parent.ChildAtPosition(row + 1);
    if (index == parent.m_children.size() || parent.m_children[index].m_position != row + 1)
        return 0;
    const std::uint64_t size = parent.m_children[index].GetSize();
    parent.m_children.erase(parent.m_children.begin() + static_cast<std::ptrdiff_t>(index));
    parent.ChildrenChanged(index, parent.m_childrenSize - size);
    for (const Step& step : path)
        step.branch->ChildrenChanged(step.child + 1, step.branch->m_childrenSize - size);
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
