#include "report/ItemStore.h"
#include "report/CellCodec.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <vector>

namespace
{

TEST(ItemStore, ItemsAndTreeItemsMoveLikeAnArray)
{
    std::mt19937 random(1);
    const auto below = [&](std::size_t end) { return static_cast<int>(random() % end); };
    report::ItemStore store;
    std::vector<report::Item*> model; // items stay where they are in memory
    for (int round = 0; round < 2000; ++round)
    {
        const int at = below(model.size() + 1);
        if (below(8) != 0)
        {
            model.insert(model.begin() + at, &store.Insert(at, 2));
            if (below(2) == 0)
                EXPECT_EQ(model[static_cast<std::size_t>(at)]->treeItem = &store.CreateTreeItem(at),
                          store.At(at).treeItem);
        }
        else
        {
            std::vector<int> removed;
            std::vector<report::Item*> kept;
            const int oneIn = 1 + below(9);
            for (int i = 0; i < store.Count(); ++i)
            {
                if (i >= at && below(static_cast<std::size_t>(oneIn)) == 0)
                    removed.push_back(i);
                else
                    kept.push_back(&store.At(i));
            }
            store.Remove(removed);
            model = kept;
        }
        ASSERT_EQ(static_cast<int>(model.size()), store.Count());
        for (int i = 0; i < store.Count(); ++i)
        {
            ASSERT_EQ(model[static_cast<std::size_t>(i)], &store.At(i));
            if (store.At(i).treeItem)
                ASSERT_EQ(i, store.At(i).treeItem->item);
        }
    }
    for (const int outside : {-2, store.Count()})
        EXPECT_THROW(store.At(outside), std::invalid_argument) << outside;
    EXPECT_THROW(store.Remove({0, store.Count()}), std::invalid_argument);
    EXPECT_THROW(store.Insert(-1, 0), std::invalid_argument);
}

TEST(ItemStore, FieldsComeAndGoInEveryItem)
{
    report::ItemStore store;
    store.InsertField(0);
    store.Insert(0, 1);
    const auto check = [&](int item, int field) {
        return report::ReadCell(store.At(item).cells, field).check;
    };
    for (const int item : {-1, 0})
        report::WriteCell(store.At(item).cells, 0, {-1, -1, 5, -1, false, {}});

    store.InsertField(0);
    for (const int item : {-1, 0})
        EXPECT_EQ(std::make_pair(-1, 5), std::make_pair(check(item, 0), check(item, 1))) << item;
    store.RemoveField(0);
    for (const int item : {-1, 0})
        EXPECT_EQ(std::make_pair(5, -1), std::make_pair(check(item, 0), check(item, 1))) << item;
}

} // namespace
