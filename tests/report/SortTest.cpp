// The order of rows and of tree items, in long lists, in deep trees and after bad comparisons.
#include "report/sort/DepthGuard.h"
#include "tests/report/ModelControl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>
#include <stdexcept>

namespace
{

using Numbers = std::vector<int>;
using Comparison = std::function<int(int item1, int item2)>;

int NumberAt(const Numbers& numbers, int index)
{
    return numbers[static_cast<std::size_t>(index)];
}

// Keys that are `tolerance` apart are equal, which is no order.
Comparison ByKey(const Numbers& keys, int tolerance = 0)
{
    return [&keys, tolerance](int item1, int item2) {
        const int difference = NumberAt(keys, item1) - NumberAt(keys, item2);
        return difference > tolerance ? 1 : difference < -tolerance ? -1 : 0;
    };
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

Numbers UpTo(std::size_t count)
{
    Numbers numbers(count);
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

// ---- Rows

class SortedRows : public ModelControl
{
public:
    explicit SortedRows(std::size_t count) : items(UpTo(count))
    {
        for (const int item : items)
            rows.InsertItem(item);
    }
    const Numbers& Sorted(int ascending = 1)
    {
        rows.SetOrder(items);
        QuickSort(0, ascending, 0, rows.Count() - 1);
        return rows.Map().Items();
    }
    void QuickSort(int subitem, int ascending, int low, int high) override
    {
        const report::DepthGuard guard(m_depth);
        deepest = std::max(deepest, m_depth);
        ModelControl::QuickSort(subitem, ascending, low, high);
    }

    const Numbers items;
    int deepest = 0;

private:
    int m_depth = 0;
};

// What a sort should give, in its shortest words.
void Recurse(Numbers& rows, int low, int high, const Comparison& compare)
{
    const int pivot = NumberAt(rows, (low + high) / 2);
    int i = low;
    int j = high;
    while (i <= j)
    {
        while (compare(NumberAt(rows, i), pivot) < 0)
            ++i;
        while (compare(NumberAt(rows, j), pivot) > 0)
            --j;
        if (i <= j)
            std::swap(rows[static_cast<std::size_t>(i++)], rows[static_cast<std::size_t>(j--)]);
    }
    if (low < j)
        Recurse(rows, low, j, compare);
    if (i < high)
        Recurse(rows, i, high, compare);
}

Numbers Recursed(const Numbers& keys, int ascending = 1)
{
    Numbers rows = UpTo(keys.size());
    const Comparison compare = ByKey(keys);
    const Comparison reverse = [&compare](int item1, int item2) { return compare(item2, item1); };
    Recurse(rows, 0, static_cast<int>(keys.size()) - 1, ascending ? compare : reverse);
    return rows;
}

// Keys that make each pivot the smallest or the greatest of its range, in turn. It goes to an end of it.
Numbers WorstKeys(std::size_t count)
{
    Numbers keys(count);
    Numbers items = UpTo(count);
    std::size_t low = 0;
    for (std::size_t high = count; low < high;)
    {
        const std::size_t middle = (low + high - 1) / 2;
        const std::size_t place = (high - low) % 2 != 0 ? low++ : --high;
        std::swap(items[place], items[middle]);
        keys[static_cast<std::size_t>(items[place])] = static_cast<int>(place);
    }
    return keys;
}

TEST(FlatSort, GivesTheOrderOfTheRecursionOnAnyInput)
{
    std::mt19937 random(4);
    std::vector<Numbers> inputs = {WorstKeys(1000)};
    for (const int count : {1, 2, 3, 10, 5000})
    {
        for (const int values : {1, 2, 7, count})
        {
            Numbers keys(static_cast<std::size_t>(count));
            std::generate(keys.begin(), keys.end(), [&] { return static_cast<int>(random() >> 1) % values; });
            inputs.push_back(keys);
            std::sort(keys.begin(), keys.end());
            std::reverse(keys.begin() + count / 2, keys.end()); // organ pipe
            inputs.push_back(keys);
        }
    }
    for (const Numbers& keys : inputs)
    {
        SortedRows rows(keys.size());
        rows.compare = ByKey(keys);
        for (const int ascending : {0, 1})
            ASSERT_EQ(Recursed(keys, ascending), rows.Sorted(ascending)) << &keys - inputs.data();
        const int most = report::FlatSort::kMaxDepth + 1;
        EXPECT_TRUE(&keys == inputs.data() ? rows.deepest == most : rows.deepest <= most) << rows.deepest;
    }
}

TEST(FlatSort, LosesNoRowAndSortsAgainAfterABadComparison)
{
    const Numbers keys = WorstKeys(500);
    const Numbers sorted = Recursed(keys);
    std::vector<Comparison> bad;
    for (unsigned seed = 0; seed < 20; ++seed)
        bad.push_back(LyingAtRandom(seed));
    for (const int count : {0, 1, 5000, 100000, 120000})
        bad.push_back(ThrowingAt(count, ByKey(keys)));
    for (const int answer : {-1, 1})
    {
        bad.push_back([=](int, int) { return answer; });
        bad.push_back([compare = ByKey(keys), answer](int item1, int item2) {
            const int result = compare(item1, item2); // of equal ones, too, one is less
            return result != 0 ? result : answer;
        });
    }
    SortedRows rows(keys.size());
    for (const Comparison& compare : bad)
    {
        rows.compare = compare;
        rows.rows.SetOrder(rows.items);
        rows.rows.Focus(7, -1);
        Try([&] { rows.sorting.Sort(0, 1); });
        EXPECT_EQ(7, rows.rows.ItemAt(rows.rows.FocusedRow()));
        const Numbers& left = rows.rows.Map().Items();
        ASSERT_TRUE(std::is_permutation(left.begin(), left.end(), rows.items.begin(), rows.items.end()));
        rows.compare = ByKey(keys);
        ASSERT_EQ(sorted, rows.Sorted()) << &compare - bad.data();
    }
}

// ---- Trees

enum class By
{
    Texts,
    Cells, // of any contents: these have no order
    Override,
    Callback,
    OrderedCallback
};

// Some lists are long, some branches deep; many keys are equal.
class SortedTree : public ModelControl
{
public:
    SortedTree(unsigned seed, By way)
    {
        Define(1);
        rows.SetMode(false, true);
        std::mt19937 random(seed);
        std::vector<_TREEITEM*> made = {report::kTreeRoot};
        for (int item = 0; item < 600; ++item)
        {
            keys.push_back(static_cast<int>(random() % (2 + seed * 3)));
            const std::string text = std::to_string(1000 + keys.back());
            const bool goesDeeper = seed % 4 == 0 && item < 300;
            _TREEITEM* const parent =
                goesDeeper ? made.back() : made[random() % std::min(made.size(), size_t{8})];
            made.push_back(rows.InsertTreeItem(parent, report::kTreeLast, text.c_str(), 0, true));
            if (way == By::Cells)
                SetCell(made.back()->item, random);
        }
        // What tells that items which are nearly equal are equal has no order either.
        ResetComparison(way == By::Override || way == By::Callback ? 10 : 0);
        if (way == By::Override)
            compare = [this](int item1, int item2) { return by(item1, item2); };
        if (way == By::Callback || way == By::OrderedCallback)
            sorting.SetCallback(
                [](int item1, int, int item2, int, std::int64_t tree) {
                    return reinterpret_cast<SortedTree*>(tree)->by(item1, item2);
                },
                reinterpret_cast<std::intptr_t>(this), way == By::OrderedCallback);
    }
    void ResetComparison(int tolerance) { by = ByKey(keys, tolerance); }
    Numbers InOrder()
    {
        Numbers order;
        report::Tree::Walk(rows.GetTree().Root(), false,
                           [&](const _TREEITEM* item) { order.push_back(item->item); });
        return order;
    }

    // The order after an insertion into lists of children.
    void AppendInserted(Numbers& order, const _TREEITEM* parent, bool ascending, bool recursive)
    {
        std::vector<_TREEITEM*> list;
        for (_TREEITEM* child = parent->firstChild; child; child = child->nextSibling)
        {
            const auto isPlace = [&](const _TREEITEM* other) {
                const int result = CompareItems(child->item, 0, other->item, 0);
                return ascending ? result <= 0 : result >= 0;
            };
            const bool isSorted = recursive || !parent->parent;
            list.insert(isSorted ? std::find_if(list.begin(), list.end(), isPlace) : list.end(), child);
        }
        for (const _TREEITEM* child : list)
        {
            order.push_back(child->item);
            AppendInserted(order, child, ascending, recursive);
        }
    }

    Numbers keys;
    Comparison by;

private:
    void SetCell(int item, std::mt19937& random)
    {
        char texts[][3] = {"", "a", "a\xFF", "b", "ab"};
        _RVITEM change = {.mask = RVIM_TEXT | RVIM_CHECK | RVIM_IMAGE,
                          .item = item,
                          .text = random() % 2 != 0 ? texts[random() % 5] : nullptr,
                          .image = static_cast<int>(random() % 3) - 1,
                          .check = static_cast<int>(random() % 3) - 1};
        items.Write(change);
    }
};

TEST(TreeSort, GivesTheOrderOfInsertionAndLosesNoItem)
{
    for (unsigned round = 0; round < 120; ++round)
    {
        SCOPED_TRACE(round);
        const auto way = static_cast<By>(round % 5);
        const bool ascending = round % 2 != 0;
        const bool recursive = round % 3 != 0;
        SortedTree tree(round % 32, way);
        const auto sort = [&] {
            if (recursive)
                tree.sorting.Sort(0, ascending);
            else
                tree.TreeSort(0, report::kTreeRoot, ascending, 0); // as a subclass does: without keys
        };
        if (round >= 40)
        {
            tree.by = round < 60 ? LyingAtRandom(round) : ThrowingAt(static_cast<int>(round * 64), tree.by);
            tree.rows.Focus(3, -1);
            const int focused = tree.rows.ItemAt(3);
            Try(sort);
            EXPECT_EQ(focused, tree.rows.ItemAt(tree.rows.FocusedRow()));
            Numbers items = tree.InOrder();
            std::sort(items.begin(), items.end());
            ASSERT_EQ(UpTo(600), items);
            tree.ResetComparison(0);
        }
        Numbers expected;
        tree.AppendInserted(expected, tree.rows.GetTree().Root(), ascending, recursive);
        sort();
        ASSERT_EQ(expected, tree.InOrder());
        EXPECT_EQ(0u, tree.sorting.Number());
    }
}

// Keys are read once, those of a tree item from its own subitem.
TEST(Sorting, ReadsEachCellOnce)
{
    for (const bool isTree : {false, true})
    {
        constexpr int kItems = 100;
        ModelControl control;
        control.Define(2);
        control.rows.SetMode(false, isTree);
        for (int item = 0; item < kItems; ++item)
        {
            if (isTree)
                control.rows.InsertTreeItem(nullptr, nullptr, nullptr, 0, true)->subitem = 1;
            else
                control.rows.InsertItem(item);
            control.SetText(item, isTree ? 1 : 0, std::to_string(item * 37 % 101));
        }
        control.rows.Count();
        control.masks.clear();
        control.sorting.Sort(0, 1);
        EXPECT_LE(control.masks.size(), 3u * kItems) << "and twice to make the rows";

        const int other = isTree ? 0 : 1; // of which no keys are read
        control.compare = [&](int item1, int item2) {
            EXPECT_FALSE(control.rows.Select(0, 0, report::SelectMode::Alone, false)) << "while it sorts";
            EXPECT_EQ(0, control.sorting.Compare(item1, other, item2, other));
            EXPECT_EQ(0, control.sorting.Compare(-1, other, kItems, 1 - other));
            EXPECT_LT(0, control.sorting.Compare(item1, 1 - other, -1, 1 - other));
            return 0;
        };
        control.sorting.Sort(0, 1);
    }
}

} // namespace
