#include "report/model/RowMap.h"
#include "report/model/Tree.h"
#include "report/sort/DepthGuard.h"
#include "report/sort/FlatSort.h"
#include "report/sort/SortKeys.h"
#include "report/sort/TreeSort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>
#include <stdexcept>

namespace
{

using namespace report;

using Numbers = std::vector<int>;
using Comparison = std::function<int(int item1, int item2)>;

int NumberAt(const Numbers& numbers, int index)
{
    return numbers[static_cast<std::size_t>(index)];
}

Comparison ByKey(const Numbers& keys)
{
    return [&keys](int item1, int item2) { return NumberAt(keys, item1) - NumberAt(keys, item2); };
}

// Throws at the comparison of this number.
Comparison ThrowingAt(int count, Comparison compare)
{
    return [=](int item1, int item2) mutable {
        return --count < 0 ? throw std::runtime_error("compare") : compare(item1, item2);
    };
}

Comparison LyingAtRandom(unsigned seed)
{
    return [random = std::mt19937(seed)](int, int) mutable { return static_cast<int>(random() % 3) - 1; };
}

void Try(const std::function<void()>& sort)
{
    try
    {
        sort();
    }
    catch (const std::exception&)
    {
    }
}

class Rows final : public SortRows
{
public:
    Rows(std::size_t count, Comparison by) : compare(std::move(by))
    {
        Numbers items(count);
        std::iota(items.begin(), items.end(), 0);
        map.Assign(items);
    }
    int ItemAt(int row) override { return map.ItemAt(row); }
    void Swap(int row1, int row2) override { map.Swap(row1, row2); }
    int Compare(int item, int pivot) override { return compare(item, pivot); }
    void Sort(int low, int high) override
    {
        const DepthGuard guard(depth);
        deepest = std::max(deepest, depth);
        sort.Run(*this, ascending, low, high);
    }
    const Numbers& Sorted()
    {
        Sort(0, map.Count() - 1);
        return map.Items();
    }

    // What Sorted should give: the same in its shortest words.
    Numbers Recursed() const
    {
        Numbers rows = map.Items();
        Recurse(rows, 0, map.Count() - 1);
        return rows;
    }

    Comparison compare;
    RowMap map;
    bool ascending = true;
    int deepest = 0;

private:
    void Recurse(Numbers& rows, int low, int high) const
    {
        const int pivot = NumberAt(rows, (low + high) / 2);
        const auto result = [&](int row) {
            return (ascending ? 1 : -1) * compare(NumberAt(rows, row), pivot);
        };
        int i = low;
        int j = high;
        while (i <= j)
        {
            while (result(i) < 0)
                ++i;
            while (result(j) > 0)
                --j;
            if (j < i)
                break;
            std::swap(rows[static_cast<std::size_t>(i++)], rows[static_cast<std::size_t>(j--)]);
        }
        if (low < j)
            Recurse(rows, low, j);
        if (i < high)
            Recurse(rows, i, high);
    }

    int depth = 0;
    FlatSort sort;
};

// Keys that make each pivot a small one: they are chosen while a sort compares them.
Numbers WorstKeys(int count)
{
    Numbers keys(static_cast<std::size_t>(count), count);
    int smallest = 0;
    int candidate = 0;
    Rows rows(keys.size(), [&](int item1, int item2) {
        if (NumberAt(keys, item1) == count && NumberAt(keys, item2) == count)
            keys[static_cast<std::size_t>(item1 == candidate ? item1 : item2)] = smallest++;
        candidate = NumberAt(keys, item1) == count   ? item1
                    : NumberAt(keys, item2) == count ? item2
                                                     : candidate;
        return NumberAt(keys, item1) - NumberAt(keys, item2);
    });
    rows.Sorted();
    return keys;
}

TEST(FlatSort, GivesTheOrderOfTheRecursionOnAnyInput)
{
    std::mt19937 random(4);
    std::vector<Numbers> inputs = {WorstKeys(3000), Numbers(200000)};
    std::generate(inputs[1].begin(), inputs[1].end(), [&] { return static_cast<int>(random() >> 2); });
    for (const int count : {1, 2, 3, 10, 1000})
    {
        for (const int values : {1, 2, 7, count})
        {
            Numbers keys(static_cast<std::size_t>(count));
            std::generate(keys.begin(), keys.end(),
                          [&] { return static_cast<int>(random() % 10000) % values; });
            inputs.push_back(keys);
            std::sort(keys.begin(), keys.end());
            inputs.push_back(keys);
            std::reverse(keys.begin() + count / 2, keys.end()); // organ pipe
            inputs.push_back(keys);
        }
    }
    for (const Numbers& keys : inputs)
    {
        for (const bool ascending : {true, false})
        {
            const bool worst = &keys == inputs.data() && ascending;
            Rows rows(keys.size(), ByKey(keys));
            rows.ascending = ascending;
            const Numbers expected = rows.Recursed();
            ASSERT_EQ(expected, rows.Sorted()) << &keys - inputs.data();
            EXPECT_TRUE(worst ? rows.deepest == FlatSort::kMaxDepth + 1
                              : rows.deepest <= FlatSort::kMaxDepth + 1)
                << rows.deepest;
        }
    }
}

TEST(FlatSort, LosesNoRowAndSortsAgainAfterABadComparison)
{
    const Numbers keys = WorstKeys(1000);
    std::vector<Comparison> bad;
    for (unsigned seed = 0; seed < 50; ++seed)
        bad.push_back(LyingAtRandom(seed));
    for (const int count : {0, 1, 5000, 400000, 480000})
        bad.push_back(ThrowingAt(count, ByKey(keys)));
    for (const int answer : {-1, 1})
    {
        bad.push_back([=](int, int) { return answer; });
        bad.push_back([&keys, answer](int item1, int item2) { // of equal ones, too, one is less
            const int result = NumberAt(keys, item1) - NumberAt(keys, item2);
            return result != 0 ? result : answer;
        });
    }
    for (const Comparison& compare : bad)
    {
        Rows rows(keys.size(), compare);
        const Numbers items = rows.map.Items();
        Try([&] { rows.Sorted(); });
        ASSERT_TRUE(std::is_permutation(items.begin(), items.end(), rows.map.Items().begin()));
        rows.compare = ByKey(keys);
        const Numbers expected = rows.Recursed();
        ASSERT_EQ(expected, rows.Sorted()) << &compare - bad.data();
    }
}

// Items with their keys; an item's number is its place.
class Branches final : public SortTree
{
public:
    Branches(const Numbers& parents, const Numbers& keys) : items(parents.size()), compare(ByKey(keys))
    {
        for (std::size_t i = items.size(); i-- > 0;)
        {
            items[i].item = static_cast<int>(i);
            items[i].parent = parents[i] < 0 ? &root : &items[static_cast<std::size_t>(parents[i])];
            Tree::Link(items[i].parent, kTreeFirst, &items[i], true, nullptr);
        }
    }
    int Compare(_TREEITEM* item1, _TREEITEM* item2) override { return compare(item1->item, item2->item); }
    bool IsOrdered() const override { return ordered; }
    void Sort(_TREEITEM* parent) override { sort.Run(*this, parent, ascending, recursive); }
    Numbers InOrder()
    {
        Numbers order;
        Tree::Walk(&root, false, [&](_TREEITEM* item) { order.push_back(item->item); });
        return order;
    }

    // The order after an insertion into lists of children.
    Numbers Inserted()
    {
        Numbers order;
        AppendSorted(order, &root, true);
        return order;
    }

    _TREEITEM root;
    std::vector<_TREEITEM> items;
    Comparison compare;
    bool ordered = true;
    bool ascending = true;
    bool recursive = true;

private:
    void AppendSorted(Numbers& order, const _TREEITEM* parent, bool sorting)
    {
        std::vector<_TREEITEM*> list;
        for (_TREEITEM* child = parent->firstChild; child != nullptr; child = child->nextSibling)
        {
            const auto isPlace = [&](_TREEITEM* other) {
                return ascending ? Compare(child, other) <= 0 : Compare(child, other) >= 0;
            };
            list.insert(sorting ? std::find_if(list.begin(), list.end(), isPlace) : list.end(), child);
        }
        for (const _TREEITEM* child : list)
        {
            order.push_back(child->item);
            AppendSorted(order, child, sorting && recursive);
        }
    }

    TreeSort sort;
};

// Some lists are long; many keys are equal.
void MakeBranches(unsigned seed, Numbers& parents, Numbers& keys)
{
    std::mt19937 random(seed);
    for (int i = 0; i < 600; ++i)
    {
        parents.push_back(random() % 4 == 0 ? -1 : static_cast<int>(random() % 8) % (i + 1) - 1);
        keys.push_back(static_cast<int>(random() % (2 + seed * 3)));
    }
}

// In all ways, and after comparisons that lie or throw.
TEST(TreeSort, GivesTheOrderOfInsertionAndLosesNoItem)
{
    for (unsigned way = 0; way < 128; ++way)
    {
        Numbers parents;
        Numbers keys;
        MakeBranches(way % 32, parents, keys);
        Branches tree(parents, keys);
        tree.ordered = (way & 1) != 0;
        tree.ascending = (way & 2) != 0;
        tree.recursive = (way & 4) != 0;
        if (way >= 32)
        {
            tree.compare =
                way < 48 ? LyingAtRandom(way) : ThrowingAt(static_cast<int>(way * 64), ByKey(keys));
            Try([&] { tree.Sort(&tree.root); });
            Numbers items = tree.InOrder();
            std::sort(items.begin(), items.end());
            ASSERT_EQ(Rows(keys.size(), {}).map.Items(), items) << way;
            tree.compare = ByKey(keys);
        }
        const Numbers expected = tree.Inserted();
        tree.Sort(&tree.root);
        ASSERT_EQ(expected, tree.InOrder()) << way;
    }
}

TEST(SortKeys, CompareAsTheCellsDo)
{
    constexpr int kItems = 12;
    const std::string_view texts[] = {"", "a", "a\xFF", "b", "ab"};
    const auto sign = [](int number) { return (number > 0) - (number < 0); };
    std::mt19937 random(7);
    for (unsigned round = 0; round < 200; ++round)
    {
        SortKeys keys;
        std::vector<Cell> cells(kItems);
        for (int item = kItems - 1; item >= 0; --item)
        {
            Cell& cell = cells[static_cast<std::size_t>(item)];
            cell.check = static_cast<int>(random() % 3) - 1;
            cell.image = static_cast<int>(random() % 3) - 1;
            cell.hasText = random() % 8 < round % 9;
            if (cell.hasText)
                cell.text = texts[random() % 5];
            keys.Add(item, item % 2, cell);
        }
        int result = 0;
        bool ordered = true; // items that are equal compare alike with all
        for (int item1 = 0; item1 < kItems; ++item1)
        {
            for (int item2 = 0; item2 < kItems; ++item2)
            {
                const Cell& cell1 = cells[static_cast<std::size_t>(item1)];
                const Cell& cell2 = cells[static_cast<std::size_t>(item2)];
                ASSERT_TRUE(keys.Compare(item1, item1 % 2, item2, item2 % 2, result));
                ASSERT_EQ(sign(CompareCells(cell1, cell2)), sign(result));
                for (const Cell& cell : cells)
                    ordered = ordered && (result != 0 ||
                                          sign(CompareCells(cell1, cell)) == sign(CompareCells(cell2, cell)));
            }
            EXPECT_FALSE(keys.Compare(item1, item1 % 2, item1, 3, result)); // not that subitem
            EXPECT_FALSE(keys.Compare(item1, item1 % 2, item1 % 2 ? -1 : kItems, 0, result));
        }
        ASSERT_TRUE(ordered || !keys.IsOrdered());
    }
}

} // namespace
