#include "report/sort/FlatSort.h"

#include "report/model/InvalidArgument.h"
#include "report/sort/DepthGuard.h"

#include <cstdint>

namespace report
{

namespace
{

// Brings the rows that belong before the pivot in front of those after it. The rows from `low` to `last`
// and from `next` to `high` remain to be sorted.
void Partition(SortRows& rows, bool ascending, int low, int high, int& last, int& next)
{
    const auto compare = [&rows, ascending](int row, int pivot) {
        const int result = rows.Compare(rows.ItemAt(row), pivot);
        return ascending ? result : (result < 0) - (result > 0);
    };
    const int pivot = rows.ItemAt(static_cast<int>((std::int64_t{low} + high) / 2));
    next = low;
    last = high;
    while (next <= last)
    {
        while (compare(next, pivot) < 0)
            ++next;
        while (compare(last, pivot) > 0)
            --last;
        if (last < next)
            return;
        if (next != last)
            rows.Swap(next, last);
        ++next;
        --last;
    }
}

} // namespace

void FlatSort::Run(SortRows& rows, bool ascending, int low, int high)
{
    const DepthGuard guard(m_depth);
    int last = high;
    int next = low;
    Partition(rows, ascending, low, high, last, next);
    // The pivot does not equal itself: the same range would come again for ever.
    if ((next == low || last == high) && low < high)
        ThrowInvalidArgument();

    if (m_depth < kMaxDepth)
    {
        if (low < last)
            rows.Sort(low, last);
        if (next < high)
            rows.Sort(next, high);
        return;
    }
    if (m_depth == kMaxDepth)
        m_list.clear(); // a comparison may have thrown
    if (next < high)
        m_list.emplace_back(next, high);
    if (low < last)
        m_list.emplace_back(low, last);
    while (m_depth == kMaxDepth && !m_list.empty())
    {
        const auto [first, end] = m_list.back();
        m_list.pop_back();
        rows.Sort(first, end);
    }
}

} // namespace report
