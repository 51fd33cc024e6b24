#include "report/model/HeaderDrag.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

namespace
{

using report::DropResult;
using report::HeaderDrag;

// Every point of random headers, scrolled and partly covered, some columns without width.
TEST(HeaderDrag, LandsAtTheNearestGapAndMovesOnlyTheDraggedColumn)
{
    std::mt19937 random(5);
    for (int round = 0; round < 300; ++round)
    {
        const int count = static_cast<int>(random() % 6);
        const int left = static_cast<int>(random() % 30) - 20;
        std::vector<int> widths;
        for (int i = 0; i < count; ++i)
            widths.push_back(static_cast<int>(random() % 3 * (random() % 12)));
        std::vector<int> edges = {left};
        for (const int width : widths)
            edges.push_back(edges.back() + width);
        const int column = static_cast<int>(random() % static_cast<unsigned>(count + 1)) - 1;
        const HeaderDrag drag({0, 0, 40, 10}, left, widths, column);
        std::vector<int> items(static_cast<std::size_t>(count));
        std::iota(items.begin(), items.end(), 0);

        for (int x = -25; x < 70; ++x)
        {
            const auto [result, moves, gap, markX] = drag.DropAt(x, x % 12);
            const bool isOnHeader = result == DropResult::OnHeader;
            SCOPED_TRACE(testing::Message() << "round " << round << ", x " << x << ", gap " << gap);
            ASSERT_TRUE(gap >= 0 && gap <= count);
            const int edge = edges[static_cast<std::size_t>(gap)];
            for (const int other : edges)
                EXPECT_LE(std::abs(x - edge), std::abs(x - other));
            EXPECT_EQ(std::clamp(edge, 0, 40), markX);
            EXPECT_EQ(x < 0 || x >= 40 || x % 12 >= 10, !isOnHeader);
            if (column == HeaderDrag::kNoColumn)
            {
                EXPECT_EQ(isOnHeader, moves);
                EXPECT_EQ(gap, drag.ColumnAfterDrop(gap));
                continue;
            }
            std::vector<int> order = drag.Reorder(items, gap);
            EXPECT_EQ(isOnHeader && order != items, moves);
            EXPECT_EQ(column, order[static_cast<std::size_t>(drag.ColumnAfterDrop(gap))]);
            EXPECT_EQ(gap - (gap > column), drag.ColumnAfterDrop(gap));
            order.erase(std::find(order.begin(), order.end(), column));
            EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
        }
    }
}

TEST(HeaderDrag, BeginsOnlyFarFromThePressAndAtAnotherPlace)
{
    const HeaderDrag drag({0, 0, 100, 20}, 0, {20, 20, 20}, 1);
    const std::tuple<int, int, bool> cases[] = {
        {49, 10, false}, // the left half of the next column is the gap behind the dragged one
        {50, 10, true},  // its right half
        {9, 10, true},   {10, 10, false}, {38, 19, false}, // within the strip
        {38, 20, true},                                    // below it
    };
    for (const auto& [x, y, begins] : cases)
        EXPECT_EQ(begins, drag.Begins(30, 10, x, y, 4, 4)) << x << ", " << y;
    const HeaderDrag wide({0, 0, 100, 20}, 0, {INT_MAX, INT_MAX, INT_MAX}, 2);
    EXPECT_EQ(0, wide.DropAt(99, 10).gap);
    EXPECT_FALSE(drag.Begins(30, 18, 31, 21, 4, 4)); // off the strip, but not far
    EXPECT_TRUE(drag.Begins(30, 18, 31, 23, 4, 4));
    EXPECT_FALSE(drag.Begins(46, 10, 50, 10, 4, 4)); // exactly as far as a click may wobble
    EXPECT_TRUE(drag.Begins(INT_MAX, INT_MAX, INT_MIN, INT_MIN, INT_MAX, INT_MAX));
}

} // namespace
