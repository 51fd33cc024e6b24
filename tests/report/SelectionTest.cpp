// Focus and selection compared with a plain model, in which each row is selected or not.
#include "report/model/Selection.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace
{

using namespace report;

std::set<int> Between(int row, int other)
{
    std::set<int> rows;
    for (int each = std::min(row, other); each <= std::max(row, other); ++each)
        rows.insert(each);
    return rows;
}

// The rows that are selected after `row` was taken out: one of the two parts.
std::set<int> Without(const std::set<int>& old, int row, int anchor)
{
    const std::set<int> above(old.begin(), old.find(row));
    const std::set<int> below(old.upper_bound(row), old.end());
    if (above.size() != below.size())
        return above.size() > below.size() ? above : below;
    return below.contains(anchor) ? below : above;
}

std::set<int> Expected(const Selection& old, int row, int other, SelectMode mode, bool isSingle)
{
    std::set<int> rows = Between(old.first, old.last);
    if (old.first > old.last)
        rows.clear();
    if (mode == SelectMode::None)
        return rows;
    if (mode == SelectMode::Toggle && rows.contains(row))
        return isSingle ? std::set<int>() : Without(rows, row, old.anchor);
    const std::set<int> chosen = Between(row, isSingle ? row : other);
    if (mode == SelectMode::Alone || isSingle)
        return chosen;
    rows.insert(chosen.begin(), chosen.end());
    const bool hasGap = *rows.rbegin() - *rows.begin() >= static_cast<int>(rows.size());
    return hasGap ? chosen : rows;
}

TEST(Selection, IsOneRangeThatRowsAreAddedToAndTakenOutOf)
{
    Random below(3);
    Selection selection;
    for (int step = 0; step < 20000; ++step)
    {
        const Selection old = selection;
        const int row = below(9);
        const int other = below(9);
        const auto mode = static_cast<SelectMode>(below(4));
        const bool isSingle = below(9) == 0;
        const std::set<int> expected = Expected(old, row, other, mode, isSingle);
        selection.Select(row, other, mode, isSingle);
        SCOPED_TRACE(testing::Message() << old.first << " to " << old.last << " anchor " << old.anchor
                                        << ", row " << row << ", mode " << static_cast<int>(mode));
        ASSERT_EQ(expected.empty() ? 0 : *expected.begin(), selection.first);
        ASSERT_EQ(expected.empty() ? -1 : *expected.rbegin(), selection.last);
        ASSERT_EQ(row, selection.focusRow);
        selection.anchor = below(9);
        selection.focusColumn = below(3) - 1;

        // The rows that look different now, and no others at the ends.
        std::set<int> changed;
        for (int each = 0; each < 9; ++each)
            if (old.IsSelected(each) != selection.IsSelected(each))
                changed.insert(each);
        if (old.focusRow != selection.focusRow || old.focusColumn != selection.focusColumn)
            changed.insert({old.focusRow, selection.focusRow});
        const RowRange rows = ChangedRows(old, selection);
        ASSERT_EQ(changed.empty(), rows.first > rows.last);
        if (!changed.empty())
            ASSERT_EQ((RowRange{*changed.begin(), *changed.rbegin()}), rows);
    }
}

} // namespace
