#include "report/DepthGuard.h"
#include "report/FlatSort.h"
#include "report/RowMap.h"
#include "report/SortKeys.h"
#include "report/Tree.h"
#include "report/TreeSort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>
#include <set>
#include <stdexcept>

namespace
{

using namespace report;

using Numbers = std::vector<int>;
using Comparison = std::function<int(int item1, int item2)>;

int At(const Numbers& numbers, int index)
{
    return numbers[static_cast<std::size_t>(index)];
}

Comparison ByKey(const Numbers& keys)
{
    return [&keys](int item1, int item2) { return At(keys, item1) - At(keys, item2); };
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

    Comparison compare;
    RowMap map;
    bool ascending = true;
    int deepest = 0;

private:
    int depth = 0;
    FlatSort sort;
};

void QuickSort(Numbers& row, const Comparison& compare, bool ascending, int low, int high)
{
    const int pivot = At(row, (low + high) / 2);
    const auto result = [&](int at) { return (ascending ? 1 : -1) * compare(At(row, at), pivot); };
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
        std::swap(row[static_cast<std::size_t>(i++)], row[static_cast<std::size_t>(j--)]);
    }
    if (low < j)
        QuickSort(row, compare, ascending, low, j);
    if (i < high)
        QuickSort(row, compare, ascending, i, high);
}

// Keys that make each pivot a small one: they are chosen while a sort compares them.
Numbers WorstKeys(int count)
{
    Numbers keys(static_cast<std::size_t>(count), count);
    int smallest = 0;
    int candidate = 0;
    Rows rows(keys.size(), [&](int item1, int item2) {
        if (At(keys, item1) == count && At(keys, item2) == count)
            keys[static_cast<std::size_t>(item1 == candidate ? item1 : item2)] = smallest++;
        candidate = At(keys, item1) == count ? item1 : At(keys, item2) == count ? item2 : candidate;
        return At(keys, item1) - At(keys, item2);
    });
    rows.Sorted();
    return keys;
}

TEST(FlatSort, GivesTheOrderOfTheRecursionOnAnyInput)
{
    std::mt19937 random(4);
    std::vector<Numbers> inputs = {WorstKeys(3000)};
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
            Rows rows(keys.size(), ByKey(keys));
            Numbers expected = rows.map.Items();
            QuickSort(expected, rows.compare, ascending, 0, static_cast<int>(keys.size()) - 1);
            rows.ascending = ascending;
            ASSERT_EQ(expected, rows.Sorted()) << &keys - inputs.data();
            EXPECT_LE(rows.deepest, FlatSort::kMaxDepth + 1);
            if (&keys == inputs.data() && ascending)
            {
                EXPECT_EQ(FlatSort::kMaxDepth + 1, rows.deepest) << "these keys are bad enough";
            }
        }
    }
}

TEST(FlatSort, SortsAMillionRows)
{
    std::mt19937 random(5);
    Numbers keys(1000000);
    std::generate(keys.begin(), keys.end(), [&] { return static_cast<int>(random() >> 1); });
    Rows rows(keys.size(), [&](int item1, int item2) {
        return (At(keys, item1) > At(keys, item2)) - (At(keys, item1) < At(keys, item2));
    });
    const Numbers& sorted = rows.Sorted();
    EXPECT_TRUE(std::is_sorted(sorted.begin(), sorted.end(),
                               [&](int item1, int item2) { return At(keys, item1) < At(keys, item2); }));
}

TEST(FlatSort, LosesNoRowAndSortsAgainAfterABadComparison)
{
    const Numbers keys = WorstKeys(1000);
    std::vector<Comparison> bad;
    for (unsigned seed = 0; seed < 100; ++seed)
        bad.push_back(LyingAtRandom(seed));
    for (const int count : {0, 1, 5000, 400000, 480000})
        bad.push_back(ThrowingAt(count, ByKey(keys)));
    for (const int answer : {-1, 1})
    {
        bad.push_back([=](int, int) { return answer; });
        bad.push_back([&keys, answer](int item1, int item2) { // of equal ones, too, one is less
            const int result = At(keys, item1) - At(keys, item2);
            return result != 0 ? result : answer;
        });
    }
    for (const Comparison& compare : bad)
    {
        Rows rows(keys.size(), compare);
        Numbers items = rows.map.Items();
        try
        {
            rows.Sorted();
        }
        catch (const std::exception&)
        {
        }
        ASSERT_TRUE(std::is_permutation(items.begin(), items.end(), rows.map.Items().begin()));
        rows.compare = ByKey(keys);
        items = rows.map.Items();
        QuickSort(items, rows.compare, true, 0, rows.map.Count() - 1);
        ASSERT_EQ(items, rows.Sorted()) << &compare - bad.data();
    }
}

using Items = std::vector<_TREEITEM*>;

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
    void Sort(_TREEITEM* parent) override
    {
        const DepthGuard guard(depth);
        deepest = std::max(deepest, depth);
        sort.Run(*this, parent, ascending, recursive);
    }
    Numbers InOrder()
    {
        Numbers order;
        Tree::Walk(&root, false, [&](_TREEITEM* item) { order.push_back(item->item); });
        return order;
    }

    // The order after an insertion into lists of children.
    void AppendSorted(Numbers& order, const _TREEITEM* parent, bool sorting)
    {
        Items list;
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

    _TREEITEM root;
    std::vector<_TREEITEM> items;
    Comparison compare;
    bool ordered = true;
    bool ascending = true;
    bool recursive = true;
    int deepest = 0;

private:
    int depth = 0;
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

TEST(TreeSort, GivesTheOrderOfInsertionWhateverTheWay)
{
    for (unsigned way = 0; way < 32; ++way)
    {
        Numbers parents;
        Numbers keys;
        MakeBranches(way, parents, keys);
        Branches tree(parents, keys);
        tree.ordered = (way & 1) != 0;
        tree.ascending = (way & 2) != 0;
        tree.recursive = (way & 4) != 0;
        Numbers expected;
        tree.AppendSorted(expected, &tree.root, true);
        tree.Sort(&tree.root);
        ASSERT_EQ(expected, tree.InOrder()) << way;
    }
}

TEST(TreeSort, LosesNoItemAndSortsAgainAfterABadComparison)
{
    Numbers parents;
    Numbers keys;
    MakeBranches(6, parents, keys);
    for (int way = 0; way < 100; ++way)
    {
        Branches tree(parents, keys);
        tree.ordered = way % 2 == 0;
        tree.compare =
            way < 10 ? LyingAtRandom(static_cast<unsigned>(way)) : ThrowingAt(way * way, ByKey(keys));
        try
        {
            tree.Sort(&tree.root);
        }
        catch (const std::runtime_error&)
        {
        }
        const Numbers items = tree.InOrder();
        ASSERT_EQ(keys.size(), items.size());
        ASSERT_EQ(keys.size(), std::set<int>(items.begin(), items.end()).size());
        tree.compare = ByKey(keys);
        Numbers expected;
        tree.AppendSorted(expected, &tree.root, true);
        tree.Sort(&tree.root);
        ASSERT_EQ(expected, tree.InOrder()) << way;
    }
}

// Each level is a leaf and the item that carries the next level, which belongs in front of it.
TEST(TreeSort, SortsADeepTreeOnLittleStack)
{
    constexpr int kLevels = 100000;
    Numbers parents;
    Numbers keys;
    Numbers expected;
    for (int level = 0; level < kLevels; ++level)
    {
        parents.insert(parents.end(), {2 * level - 1, 2 * level - 1});
        keys.insert(keys.end(), {2, 1});
        expected.push_back(2 * level + 1);
    }
    for (int level = kLevels; level-- > 0;)
        expected.push_back(2 * level);
    Branches tree(parents, keys);
    tree.Sort(&tree.root);
    EXPECT_EQ(expected, tree.InOrder());
    EXPECT_EQ(TreeSort::kMaxDepth + 1, tree.deepest);
}

TEST(SortKeys, CompareAsTheCellsDo)
{
    const std::string_view texts[] = {"", "a", "a\xFF", "b", "ab"};
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round)
    {
        SortKeys keys;
        std::vector<Cell> cells(12);
        bool ordered = true;
        for (int item = 11; item >= 0; --item)
        {
            Cell& cell = cells[static_cast<std::size_t>(item)];
            cell.check = static_cast<int>(random() % 3) - 1;
            cell.image = static_cast<int>(random() % 3) - 1;
            cell.hasText = random() % 8 < static_cast<unsigned>(round) % 9;
            if (cell.hasText)
                cell.text = texts[random() % 5];
            keys.Add(item, item % 2, cell);
        }
        const auto sign = [](int number) { return (number > 0) - (number < 0); };
        for (int item1 = -1; item1 <= 12; ++item1)
        {
            for (int item2 = -1; item2 <= 12; ++item2)
            {
                int result = 0;
                const bool known = item1 >= 0 && item1 < 12 && item2 >= 0 && item2 < 12;
                ASSERT_EQ(known, keys.Compare(item1, item1 & 1, item2, item2 & 1, result));
                ASSERT_FALSE(keys.Compare(item1, item1 & 1, item2, 3, result));
                if (!known)
                    continue;
                const Cell& cell1 = cells[static_cast<std::size_t>(item1)];
                const Cell& cell2 = cells[static_cast<std::size_t>(item2)];
                ASSERT_EQ(sign(CompareCells(cell1, cell2)), sign(result));
                for (const Cell& cell : cells) // equal ones compare alike
                {
                    ordered = ordered && (result != 0 ||
                                          sign(CompareCells(cell1, cell)) == sign(CompareCells(cell2, cell)));
                }
            }
        }
        ASSERT_TRUE(ordered || !keys.IsOrdered());
    }
}

} // namespace
