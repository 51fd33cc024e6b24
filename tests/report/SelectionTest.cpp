#include "report/Selection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <vector>

namespace
{

using report::Selection;

TEST(Selection, SelectsARangeAndTogglesTheOnlyRow)
{
    const struct
    {
        int first, last, row, anchor;
        bool select, toggle;
        int newFirst, newLast;
    } cases[] = {
        {0, -1, 5, 5, true, false, 5, 5},                                  // a click
        {5, 5, 2, 5, true, false, 2, 5},                                   // with Shift, upwards
        {5, 5, 7, 7, false, false, 5, 5},                                  // the focus alone moves
        {5, 5, 5, 5, false, true, 5, 5},  {5, 5, 5, 5, true, false, 5, 5}, // Space keeps the row
        {5, 5, 5, 5, true, true, 0, -1},                                   // Ctrl takes it out
        {0, -1, 5, 5, true, true, 5, 5},                                   // and brings it back
        {4, 6, 5, 5, true, true, 5, 5},                                    // of several, it stays
        {5, 5, 8, 8, true, true, 8, 8},                                    // another row: there is one range
    };
    for (const auto& test : cases)
    {
        Selection selection{-1, -1, -1, test.first, test.last};
        selection.Select(test.row, test.anchor, test.select, test.toggle);
        EXPECT_EQ(test.row, selection.focusRow);
        EXPECT_EQ(test.newFirst, selection.first) << &test - cases;
        EXPECT_EQ(test.newLast, selection.last) << &test - cases;
    }
}

TEST(Selection, IsCutToFewerRows)
{
    const struct
    {
        int rows;
        Selection before, after;
    } cases[] = {
        {9, {8, 2, 7, 4, 8}, {8, 2, 7, 4, 8}},         {6, {8, 2, 7, 4, 8}, {5, 2, 5, 4, 6}},
        {3, {8, 2, 7, 4, 8}, {2, 2, 2, 3, 3}},         {0, {8, 2, 7, 4, 8}, {-1, 2, -1, 0, 0}},
        {0, {-2, -1, -1, 0, -1}, {-2, -1, -1, 0, -1}}, // nothing stays nothing
    };
    for (const auto& test : cases)
    {
        Selection cut = test.before;
        cut.CutTo(test.rows);
        EXPECT_EQ(test.after.focusRow, cut.focusRow) << test.rows;
        EXPECT_EQ(test.after.anchor, cut.anchor) << test.rows;
        EXPECT_EQ(test.after.first, cut.first) << test.rows;
        EXPECT_EQ(test.after.last, cut.last) << test.rows;
    }
}

// Rows with names come and go; focus, anchor and selection keep to the names.
TEST(Selection, StaysWithItsRowsWhenOthersComeAndGo)
{
    struct Row
    {
        int name;
        bool selected;
    };
    std::mt19937 random(2);
    const auto below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    std::vector<Row> rows;
    int focus = -1;
    int anchor = -1;
    Selection selection;
    const auto rowNamed = [&rows](int name) {
        const auto found =
            std::find_if(rows.begin(), rows.end(), [=](const Row& row) { return row.name == name; });
        return found == rows.end() ? name : static_cast<int>(found - rows.begin());
    };
    for (int step = 0; step < 20000; ++step)
    {
        const int count = static_cast<int>(rows.size());
        const int row = below(count + 1);
        if (row < count && below(5) == 0)
        {
            const int other = selection.anchor = below(count);
            selection.Select(row, other, true, false);
            focus = rows[static_cast<std::size_t>(row)].name;
            anchor = rows[static_cast<std::size_t>(other)].name;
            for (int i = 0; i < count; ++i)
                rows[static_cast<std::size_t>(i)].selected =
                    std::min(row, other) <= i && i <= std::max(row, other);
        }
        else if (row < count && below(2) == 0)
        {
            const int name = rows[static_cast<std::size_t>(row)].name;
            rows.erase(rows.begin() + row);
            selection.RowRemoved(row, count - 1);
            const int heir = count == 1 ? -2 : rows[static_cast<std::size_t>(std::min(row, count - 2))].name;
            focus = focus == name ? heir : focus;
            anchor = anchor == name ? heir : anchor;
        }
        else if (count < 12)
        {
            const bool within = row > 0 && row < count && rows[static_cast<std::size_t>(row - 1)].selected &&
                                rows[static_cast<std::size_t>(row)].selected;
            rows.insert(rows.begin() + row, {step, within});
            selection.RowInserted(row);
        }
        ASSERT_EQ(rowNamed(focus), selection.focusRow) << "step " << step;
        ASSERT_EQ(rowNamed(anchor), selection.anchor) << "step " << step;
        for (int i = -1; i <= static_cast<int>(rows.size()); ++i)
        {
            const bool selected =
                i >= 0 && i < static_cast<int>(rows.size()) && rows[static_cast<std::size_t>(i)].selected;
            ASSERT_EQ(selected, selection.IsSelected(i)) << "step " << step << " row " << i;
        }
    }

    Selection far;
    far.Select(INT_MAX, INT_MAX, true, false);
    far.RowInserted(0);
    EXPECT_EQ(INT_MAX, far.focusRow);
}

} // namespace
