#include "report/RowMap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <stdexcept>

namespace
{

using report::RowMap;

int LastRowOf(const std::vector<int>& items, int item, int itemCount)
{
    for (int row = static_cast<int>(items.size()) - 1; item >= 0 && item < itemCount && row >= 0; --row)
    {
        if (items[static_cast<std::size_t>(row)] == item)
            return row;
    }
    return -2;
}

// A list that is filled, sorted, given numbers that are no items, and emptied, against plain searches.
TEST(RowMap, AgreesWithASearchAfterAnyChange)
{
    std::mt19937 random(1);
    const auto below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    RowMap map;
    std::vector<int> items;
    int itemCount = 0;
    for (int step = 0; step < 20000; ++step)
    {
        const int rows = static_cast<int>(items.size());
        const int choice = below(100);
        if (choice < 40)
        {
            map.Append(itemCount);
            items.push_back(itemCount++);
        }
        else if (choice < 60)
        {
            const int item = below(++itemCount);
            const int row = below(rows + 1);
            map.InsertItem(item, row);
            for (int& number : items)
                number += number >= item && number != INT_MAX;
            items.insert(items.begin() + row, item);
        }
        else if (choice < 75)
        {
            std::vector<int> removed;
            for (int item = 0; item < itemCount; ++item)
            {
                if (below(4) == 0)
                    removed.push_back(item);
            }
            map.RemoveItems(removed);
            const auto isRemoved = [&](int item) {
                return std::count(removed.begin(), removed.end(), item) > 0;
            };
            items.erase(std::remove_if(items.begin(), items.end(), isRemoved), items.end());
            for (int& number : items)
            {
                number -= static_cast<int>(
                    std::count_if(removed.begin(), removed.end(), [&](int item) { return item < number; }));
            }
            itemCount -= static_cast<int>(removed.size());
        }
        else if (choice < 90 && rows > 0)
        {
            const int row1 = below(rows);
            const int row2 = below(rows);
            map.Swap(row1, row2);
            std::swap(items[static_cast<std::size_t>(row1)], items[static_cast<std::size_t>(row2)]);
        }
        else if (choice < 95)
        {
            for (int& item : items)
                item = below(8) == 0 ? (below(2) == 0 ? INT_MAX : -1 - below(3)) : below(itemCount + 3);
            map.Assign(items);
        }
        else if (choice == 99)
        {
            map.Clear();
            items.clear();
        }

        ASSERT_EQ(items, map.Items()) << "step " << step;
        for (int item = below(itemCount + 2) - 1; item < itemCount + 2 && below(8) != 0; ++item)
        {
            ASSERT_EQ(LastRowOf(items, item, itemCount), map.RowOf(item, itemCount)) << step << " " << item;
        }
    }
    EXPECT_THROW(map.ItemAt(-1), std::invalid_argument);
    EXPECT_THROW(map.ItemAt(map.Count()), std::invalid_argument);
    EXPECT_THROW(map.Swap(0, map.Count()), std::invalid_argument);
    EXPECT_THROW(map.InsertItem(0, map.Count() + 1), std::invalid_argument);
}

} // namespace
