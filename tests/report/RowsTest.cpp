// Which item each row shows, and where focus and selection go when rows come and go.
#include "report/model/RowMap.h"
#include "report/model/Selection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <stdexcept>
#include <vector>

namespace
{

using report::RowMap;
using report::Selection;

class Rows : public testing::Test
{
protected:
    int Below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

private:
    std::mt19937 m_random{1};
};

// A list that is filled, sorted, given numbers that are no items, and emptied, against plain searches.
TEST_F(Rows, ShowTheItemsThatASearchFinds)
{
    RowMap map;
    std::vector<int> items; // by row
    int itemCount = 0;
    const auto lastRowOf = [&](int item) {
        const auto found = std::find(items.rbegin(), items.rend(), item);
        const bool shown = item >= 0 && item < itemCount && found != items.rend();
        return shown ? static_cast<int>(items.rend() - found) - 1 : -2;
    };
    for (int step = 0; step < 20000; ++step)
    {
        const int rows = map.Count();
        const int choice = Below(100);
        if (choice < 40)
        {
            map.Append(itemCount);
            items.push_back(itemCount++);
        }
        else if (choice < 60)
        {
            const int item = Below(++itemCount);
            const int row = Below(rows + 1);
            map.InsertItem(item, row);
            for (int& number : items)
                number += number >= item && number != INT_MAX;
            items.insert(items.begin() + row, item);
        }
        else if (choice < 75)
        {
            std::vector<int> removed;
            for (int item = Below(4); item < itemCount; item += 1 + Below(6))
                removed.push_back(item);
            map.RemoveItems(removed);
            std::erase_if(items, [&](int item) { return std::count(removed.begin(), removed.end(), item); });
            for (int& item : items)
                item -= static_cast<int>(std::lower_bound(removed.begin(), removed.end(), item) -
                                         removed.begin());
            itemCount -= static_cast<int>(removed.size());
        }
        else if (choice < 90 && rows > 0)
        {
            const int row1 = Below(rows);
            const int row2 = Below(rows);
            map.Swap(row1, row2);
            std::swap(items[static_cast<std::size_t>(row1)], items[static_cast<std::size_t>(row2)]);
        }
        else if (choice < 95)
        {
            for (int& item : items)
                item = Below(8) == 0 ? (Below(2) == 0 ? INT_MAX : -1 - Below(3)) : Below(itemCount + 3);
            map.Assign(items);
        }
        else if (choice == 99)
        {
            map.Clear();
            items.clear();
        }
        ASSERT_EQ(items, map.Items()) << "step " << step;
        for (int item = Below(itemCount + 2) - 1; item < itemCount + 2 && Below(8) != 0; ++item)
        {
            ASSERT_EQ(lastRowOf(item), map.RowOf(item, itemCount)) << step << ' ' << item;
        }
    }
    EXPECT_THROW(map.ItemAt(-1), std::invalid_argument);
    EXPECT_THROW(map.ItemAt(map.Count()), std::invalid_argument);
    EXPECT_THROW(map.Swap(0, map.Count()), std::invalid_argument);
    EXPECT_THROW(map.InsertItem(0, map.Count() + 1), std::invalid_argument);
}

// Rows with names come and go; focus, anchor and selection keep to the names.
TEST_F(Rows, KeepFocusAndSelectionWhenOthersComeAndGo)
{
    struct Row
    {
        int name;
        bool selected;
    };
    std::vector<Row> rows;
    const auto at = [&rows](int row) -> Row& { return rows[static_cast<std::size_t>(row)]; };
    int focus = -1;
    int anchor = -1;
    Selection selection;
    const auto rowNamed = [&rows](int name) {
        const auto isNamed = [=](const Row& row) { return row.name == name; };
        const auto found = std::find_if(rows.begin(), rows.end(), isNamed);
        return found == rows.end() ? name : static_cast<int>(found - rows.begin());
    };
    for (int step = 0; step < 20000; ++step)
    {
        const int count = static_cast<int>(rows.size());
        const int row = Below(count + 1);
        if (row < count && Below(4) == 0)
        {
            const int other = selection.anchor = Below(2) == 0 ? row : Below(count);
            const bool select = Below(4) != 0;
            const bool toggle = Below(2) != 0;
            selection.Select(row, other, select, toggle);
            focus = at(row).name;
            anchor = at(other).name;
            const auto selected =
                std::count_if(rows.begin(), rows.end(), [](Row each) { return each.selected; });
            const bool none = toggle && selected == 1 && at(row).selected;
            for (int i = 0; select && i < count; ++i)
                at(i).selected = !none && std::min(row, other) <= i && i <= std::max(row, other);
        }
        else if (row < count && Below(2) == 0)
        {
            const int name = at(row).name;
            rows.erase(rows.begin() + row);
            selection.RowRemoved(row, count - 1);
            const int heir = count == 1 ? -2 : at(std::min(row, count - 2)).name;
            focus = focus == name ? heir : focus;
            anchor = anchor == name ? heir : anchor;
        }
        else if (count < 12)
        {
            const bool within = row > 0 && row < count && at(row - 1).selected && at(row).selected;
            rows.insert(rows.begin() + row, {step, within});
            selection.RowInserted(row);
        }
        ASSERT_EQ(rowNamed(focus), selection.focusRow) << "step " << step;
        ASSERT_EQ(rowNamed(anchor), selection.anchor) << "step " << step;
        for (int i = -1; i <= static_cast<int>(rows.size()); ++i)
        {
            const bool selected = i >= 0 && i < static_cast<int>(rows.size()) && at(i).selected;
            ASSERT_EQ(selected, selection.IsSelected(i)) << "step " << step << " row " << i;
        }
    }
    selection.Select(INT_MAX, INT_MAX, true, false);
    selection.RowInserted(0);
    EXPECT_EQ(INT_MAX, selection.focusRow);
}

} // namespace
