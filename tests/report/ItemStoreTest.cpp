#include "report/model/ItemStore.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <vector>

namespace
{

TEST(ItemStore, ItemsAndTreeItemsMoveLikeAnArray)
{
    std::mt19937 random(1);
    const auto below = [&](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    report::ItemStore store;
    std::vector<report::Item*> model; // items stay where they are in memory
    for (int round = 0; round < 2000; ++round)
    {
        const int at = below(store.Count() + 1);
        if (below(8) != 0)
        {
            model.insert(model.begin() + at, &store.Insert(at, 2));
            if (below(2) == 0)
                store.CreateTreeItem(at);
        }
        else
        {
            std::vector<int> removed;
            for (int i = at; i < store.Count(); i += 1 + below(9))
                removed.push_back(i);
            store.Remove(removed);
            for (auto item = removed.rbegin(); item != removed.rend(); ++item)
                model.erase(model.begin() + *item);
        }
        ASSERT_EQ(static_cast<int>(model.size()), store.Count());
        for (int i = 0; i < store.Count(); ++i)
        {
            ASSERT_EQ(model[static_cast<std::size_t>(i)], &store.At(i));
            ASSERT_EQ(i, store.At(i).treeItem ? store.At(i).treeItem->item : i);
        }
    }
    EXPECT_THROW(store.At(-2), std::invalid_argument);
    EXPECT_THROW(store.At(store.Count()), std::invalid_argument);
    EXPECT_THROW(store.Remove({0, store.Count()}), std::invalid_argument);
    EXPECT_THROW(store.Insert(store.Count() + 1, 0), std::invalid_argument);
}

} // namespace
