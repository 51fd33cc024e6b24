// The order of items by several keys, against stable sorts by one key after the other.
#include "report/sort/KeyOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

namespace report
{
namespace
{

TEST(KeyOrder, SortsAsStableSortsByEachKeyDoInEitherDirection)
{
    constexpr int kItems = 300;
    constexpr int kSubItems = 3;
    std::mt19937 random(1);
    std::vector<std::vector<CellKey>> cells(kItems);
    for (std::vector<CellKey>& item : cells)
        for (int subitem = 0; subitem < kSubItems; ++subitem)
            item.push_back(
                random() % 8 == 0
                    ? KeyWithoutText(static_cast<int>(random() % 3) - 1, static_cast<int>(random() % 2))
                    : NumberKey(std::vector{"1", "1.0", "-2", "x", "", "7"}[random() % 6], '.'));
    const auto at = [&](int item, int subitem) -> const CellKey& {
        return cells[static_cast<std::size_t>(item)][static_cast<std::size_t>(subitem)];
    };

    int reads = 0;
    KeyOrder order([&](int item, int subitem) {
        ++reads;
        return at(item, subitem);
    });
    order.AddFurtherKey(2, false);
    order.AddFurtherKey(0, true);

    for (const int kept : {kItems, kItems / 2, 0})
        for (const bool ascending : {true, false})
        {
            std::vector<int> expected(kItems);
            std::iota(expected.begin(), expected.end(), 0);
            std::vector<int> items = expected;
            const auto sortStably = [&](int subitem, bool up) {
                std::stable_sort(expected.begin(), expected.end(), [&](int a, int b) {
                    return up ? at(a, subitem) < at(b, subitem) : at(b, subitem) < at(a, subitem);
                });
            };
            sortStably(0, true);
            sortStably(2, false);
            sortStably(1, ascending);

            std::shuffle(items.begin(), items.end(), random);
            reads = 0;
            order.Begin(kept, ascending);
            std::sort(items.begin(), items.end(), [&](int a, int b) {
                const int result = order.Compare(a, 1, b, 1);
                return ascending ? result < 0 : result > 0;
            });
            EXPECT_EQ(expected, items);
            EXPECT_GE(reads, kItems); // nothing is left of the sort before
            if (kept == kItems)
            {
                EXPECT_LE(reads, kItems * kSubItems);
            }
        }
}

} // namespace
} // namespace report
