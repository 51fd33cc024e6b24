#include "report/model/HeaderDrag.h"
#include "tests/support/Random.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <gtest/gtest.h>
#include <numeric>

namespace
{

using report::DropResult;
using report::HeaderDrag;

// Every point of random headers, scrolled and partly covered, some columns without width.
TEST(HeaderDrag, LandsAtTheNearestGapAndMovesOnlyTheDraggedColumn)
{
    Random random(5);
    for (int round = 0; round < 300; ++round)
    {
        const int count = random(6);
        const int left = random(30) - 20;
        std::vector<int> widths;
        for (int i = 0; i < count; ++i)
            widths.push_back(random(3) * random(12));
        std::vector<int> edges = {left};
        for (const int width : widths)
            edges.push_back(edges.back() + width);
        const int column = random(count + 1) - 1;
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
            for (const int other : edges) // the middle of a column belongs to its right half
                EXPECT_LE(std::abs(x - edge), std::abs(x - other) - (other > edge));
            EXPECT_EQ(std::clamp(edge, 0, 40), markX);
            EXPECT_EQ(x < 0 || x >= 40 || x % 12 >= 10, !isOnHeader);
            const int pressX = x + round % 11 - 5, pressY = x % 12 + x % 7 - 3;
            const bool isFar = std::abs(x - pressX) > 3 || std::abs(x % 12 - pressY) > 2;
            EXPECT_EQ(isFar && (moves || !isOnHeader), drag.Begins(pressX, pressY, x, x % 12, 3, 2));
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

// So far off that differences overflow.
TEST(HeaderDrag, TakesAnyPoint)
{
    const HeaderDrag drag({0, 0, 100, 20}, 0, {INT_MAX, INT_MAX, INT_MAX}, 2);
    EXPECT_EQ(0, drag.DropAt(99, 10).gap);
    EXPECT_TRUE(drag.Begins(INT_MAX, INT_MAX, INT_MIN, INT_MIN, INT_MAX, INT_MAX));
}

} // namespace
