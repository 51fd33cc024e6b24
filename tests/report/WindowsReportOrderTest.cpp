// Sorting and finding through the report control, with what its subclasses override.
#include "tests/report/ReportFixture.h"

#include "report/ReportHeaderCtrl.h"
#include "report/Tree.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <map>
#include <random>

namespace
{

struct Kind
{
    const char* text;
    int image;
    int check;
};
const Kind kKinds[] = {{nullptr, -1, -1}, {nullptr, 1, -1}, {nullptr, 7, -1}, {nullptr, 5, 0},
                       {nullptr, 2, 3},   {"", 1, -1},      {"", -1, 4},      {"a", 3, -1},
                       {"B", -1, 1},      {"\xE9", -1, -1}};

int Sign(int number)
{
    return (number > 0) - (number < 0);
}

int CompareKinds(int kind1, int kind2)
{
    const Kind& a = kKinds[kind1];
    const Kind& b = kKinds[kind2];
    if (a.text || b.text)
        return Sign(std::strcmp(a.text ? a.text : "", b.text ? b.text : ""));
    return a.check < 0 && b.check < 0 ? Sign(a.image - b.image) : Sign(a.check - b.check);
}

// Item numbers only: what the rows are, in the words of the rule.
using Compare = std::function<int(int item1, int item2)>;

void QuickSort(std::vector<int>& rows, const Compare& compare, int sign, int low, int high)
{
    const auto at = [&rows](int row) -> int& { return rows.at(static_cast<std::size_t>(row)); };
    const int pivot = at((low + high) / 2);
    int i = low;
    int j = high;
    while (i <= j)
    {
        while (sign * compare(at(i), pivot) < 0)
            ++i;
        while (sign * compare(at(j), pivot) > 0)
            --j;
        if (j < i)
            break;
        std::swap(at(i++), at(j--));
    }
    if (low < j)
        QuickSort(rows, compare, sign, low, j);
    if (i < high)
        QuickSort(rows, compare, sign, i, high);
}

std::vector<int> InsertionSort(const std::vector<int>& items, const Compare& compare, int sign)
{
    std::vector<int> sorted;
    for (const int item : items)
        sorted.insert(std::find_if(sorted.begin(), sorted.end(),
                                   [&](int other) { return sign * compare(item, other) <= 0; }),
                      item);
    return sorted;
}

class CountingReport : public TestReport
{
public:
    bool reversed = false;
    int compared = 0;
    int ranges = 0;
    std::map<int, int> fetched;

    int CompareItems(int item1, int subitem1, int item2, int subitem2) override
    {
        ++compared;
        const int result = TestReport::CompareItems(item1, subitem1, item2, subitem2);
        return reversed ? -result : result;
    }
    using TestReport::CompareItems;

protected:
    structITEM& GetItemStruct(int item, int subitem, unsigned int mask) override
    {
        fetched[item] += mask == RVIM_TEXT;
        return TestReport::GetItemStruct(item, subitem, mask);
    }
    void QuickSort(int subitem, int ascending, int low, int high) override
    {
        ranges += low < high;
        TestReport::QuickSort(subitem, ascending, low, high);
    }
    void TreeSort(int subitem, structTREEITEM* parent, int ascending, int recursive) override
    {
        ++ranges;
        TestReport::TreeSort(subitem, parent, ascending, recursive);
    }
};

class ReportOrder : public ReportTest
{
protected:
    void CreateCounting(DWORD style)
    {
        counting.DestroyWindow();
        ASSERT_TRUE(counting.Create(WS_CHILD | style, CRect(0, 0, 300, 200), &parent, 8));
        for (int subitem = counting.GetSubItemCount(); subitem < 2; ++subitem)
        {
            _RVSUBITEM definition;
            counting.DefineSubItem(subitem, &definition);
        }
        counting.ActivateSubItem(0, 0);
    }

    // Gives the last item a cell.
    void Add(int kind, int subitem)
    {
        const int item = counting.GetItemCount() - 1;
        counting.SetItemText(item, subitem, kKinds[kind].text);
        counting.SetItemImage(item, subitem, kKinds[kind].image);
        counting.SetItemCheck(item, subitem, kKinds[kind].check);
    }

    std::vector<int> Order()
    {
        std::vector<int> order;
        for (int row = 0; row < counting.GetRowCount(); ++row)
            order.push_back(counting.GetItemFromRow(row));
        return order;
    }

    CountingReport counting;
    std::mt19937 random{3};
};

TEST_F(ReportOrder, SortsCellsOfAllKinds)
{
    for (const bool tree : {false, true})
    {
        for (const int count : {1, 2, 9, 200})
        {
            CreateCounting(tree ? RVS_TREE : 0);
            counting.DeleteAllItems();
            std::vector<int> kinds, order;
            for (int item = 0; item < count; ++item)
            {
                // Some tree items are sorted by a subitem of their own.
                const bool own = tree && random() % 4 == 0;
                _TREEITEM* made = tree ? counting.InsertTreeItem(nullptr, nullptr) : nullptr;
                if (!tree)
                    counting.InsertItem(item);
                if (own)
                    counting.SetTreeSubItem(made, 1);
                kinds.push_back(static_cast<int>(random() % std::size(kKinds)));
                order.push_back(item);
                Add(kinds.back(), own ? 1 : 0);
            }
            for (int round = 0; round < 4; ++round)
            {
                const int sign = round % 2 ? -1 : 1;
                counting.reversed = round > 1;
                const Compare compare = [&](int item1, int item2) {
                    const int result = CompareKinds(kinds.at(static_cast<std::size_t>(item1)),
                                                    kinds.at(static_cast<std::size_t>(item2)));
                    return counting.reversed ? -result : result;
                };
                if (tree)
                    order = InsertionSort(order, compare, sign);
                else
                    QuickSort(order, compare, sign, 0, count - 1);
                counting.fetched.clear();
                counting.compared = counting.ranges = 0;
                ASSERT_EQ(1, counting.SortItems(0, sign > 0));
                ASSERT_EQ(order, Order()) << tree << ' ' << count << ' ' << round;
                EXPECT_GE(counting.compared, count - 1); // all go through the override
                EXPECT_GE(counting.ranges, tree || count < 2 ? 0 : count / 4);
                for (const auto& [item, times] : counting.fetched)
                    EXPECT_EQ(1, times) << "cell of item " << item;
            }
        }
    }
}

TEST_F(ReportOrder, CallbackDecidesAndTheMarkFollowsItsColumn)
{
    Define({"a", "b", "c"});
    Fill({"1", "2", "3"});
    report.SetSortCallback(
        [](int item1, int subitem1, int item2, int subitem2, __int64 value) {
            EXPECT_EQ(2, subitem1);
            EXPECT_EQ(2, subitem2);
            EXPECT_EQ(-5000000000, value);
            return item2 - item1;
        },
        -5000000000);
    EXPECT_EQ(0, report.ResortItems());
    EXPECT_EQ(1, report.SortItems(2, 1));
    EXPECT_EQ("3 2 1", Rows());
    EXPECT_EQ(1, report.DeactivateSubItem(0));
    EXPECT_EQ(1, report.ActivateSubItem(0, 1)); // c is now the last of three
    Fill({"4"});
    EXPECT_EQ(1, report.ResortItems());
    EXPECT_EQ("4 3 2 1", Rows());
    HDITEM mark = {};
    mark.mask = HDI_FORMAT;
    const HWND header = report.GetHeaderCtrl()->m_hWnd;
    for (int column = 0; column < 3; ++column)
    {
        const LRESULT index = ::SendMessage(header, HDM_ORDERTOINDEX, static_cast<WPARAM>(column), 0);
        ASSERT_TRUE(Header_GetItem(header, index, &mark));
        EXPECT_EQ(column == 2 ? HDF_SORTUP : 0, mark.fmt & (HDF_SORTUP | HDF_SORTDOWN)) << column;
    }
    EXPECT_EQ(1, report.DeactivateSubItem(2));
    EXPECT_EQ(0, report.ActivateSubItem(2, 0));
    EXPECT_EQ(0, report.ResortItems());
}

TEST_F(ReportOrder, ComparesRecordsByTextsThatAreNotEmpty)
{
    char empty[] = "", a[] = "a", b[] = "b";
    const auto record = [](char* string, unsigned mask, int image, int check) {
        _RVITEM item;
        item.text = string;
        item.mask = mask;
        item.image = image;
        item.check = check;
        return item;
    };
    const std::tuple<_RVITEM, _RVITEM, int> cases[] = {
        {record(a, 0, 9, 9), record(b, 0, 1, 1), -1},
        {record(a, 0, 1, 1), record(empty, RVIM_TEXT, 9, 9), 1},
        {record(empty, RVIM_TEXT, 1, 9), record(nullptr, 0, 2, 1), -1}, // by image: no check bit
        {record(empty, RVIM_CHECK, 1, 9), record(empty, 0, 2, 1), 1},
        {record(nullptr, RVIM_CHECK, 1, 3), record(nullptr, RVIM_CHECK, 2, 3), 0},
    };
    for (auto [item1, item2, expected] : cases)
    {
        EXPECT_EQ(expected, counting.CompareItems(&item1, &item2)) << &expected - &std::get<2>(cases[0]);
        EXPECT_EQ(-expected, counting.CompareItems(&item2, &item1));
    }
}

TEST_F(ReportOrder, FindsWhatMeetsAllCriteria)
{
    Define({"a"});
    Fill({"abc", "ab", "", "b"});
    report.InsertItem(4); // no text
    report.SetItemImage(1, 0, 3);
    report.SetItemCheck(3, 0, 2);
    report.SetItemData(4, 9);
    report.SetItemText(-1, 0, "fixed");
    constexpr unsigned kPrefix = RVFI_TEXT | RVFI_PREFIX;
    struct
    {
        unsigned flags;
        const char* text;
        int start;
        int expected;
    } const cases[] = {
        {RVFI_TEXT, "ab", -1, 1},
        {RVFI_TEXT, "AB", -1, -2},
        {RVFI_TEXT, "", -1, 2},
        {kPrefix, "ab", -1, 0},
        {kPrefix, "ab", 0, 1},
        {kPrefix, "ab", 1, -2},
        {kPrefix | RVFI_WRAP, "ab", 1, 0},
        {kPrefix | RVFI_BACKWARD, "ab", 4, 1},
        {kPrefix | RVFI_BACKWARD | RVFI_WRAP, "b", 3, -2}, // not at the start itself
        {kPrefix, "", 2, 3},
        {kPrefix, "", 3, -2}, // needs some text
        {kPrefix | RVFI_WRAP, "", 3, -1},
        {RVFI_TEXT | RVFI_WRAP, "fixed", 2, -1},
        {RVFI_TEXT | RVFI_BACKWARD, "fixed", 2, -1},
        {RVFI_TEXT, "fixed", -2, -1},
        {RVFI_IMAGE, nullptr, -1, 1},
        {RVFI_IMAGE | RVFI_TEXT, "ab", -1, 1},
        {RVFI_IMAGE | RVFI_CHECK, nullptr, -1, -2},
        {RVFI_CHECK | RVFI_BACKWARD, nullptr, 5, 3},
        {RVFI_ITEMDATA, nullptr, -1, 4},
        {0, nullptr, INT_MAX, -2},
        {RVFI_WRAP, nullptr, INT_MAX, -1},
        {RVFI_BACKWARD, nullptr, INT_MIN, -2},
        {RVFI_BACKWARD | RVFI_WRAP, nullptr, INT_MIN, 4},
    };
    for (const auto& each : cases)
    {
        _RVFINDINFO info = {each.flags, each.text, 3, 2, 9};
        EXPECT_EQ(each.expected, report.FindItem(&info, 0, each.start)) << &each - cases;
    }
    Create(RVS_CALLBACK);
    report.SetItemCount(9);
    _RVFINDINFO info;
    EXPECT_EQ(0, report.FindItem(&info, 0, 5));
}

} // namespace
