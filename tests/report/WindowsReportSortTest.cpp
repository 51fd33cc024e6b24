// Sorting and finding through the control: what its subclasses override, callbacks, and the ready-made
// orders.
#include "ReportSort.h"
#include "tests/report/ReportFixture.h"

#include "report/header/ReportHeaderCtrl.h"

#include <algorithm>
#include <map>
#include <random>

namespace
{

class CountingReport : public TestReport
{
public:
    bool reversed = false;
    int compared = 0;
    int ranges = 0;
    std::map<std::pair<int, int>, int> reads; // by item and subitem

    using TestReport::CompareItems;
    int CompareItems(int item1, int subitem1, int item2, int subitem2) override
    {
        ++compared;
        const int result = TestReport::CompareItems(item1, subitem1, item2, subitem2);
        return reversed ? -result : result;
    }

protected:
    structITEM& GetItemStruct(int item, int subitem, unsigned int mask) override
    {
        if (mask == RVIM_TEXT)
            ++reads[{item, subitem}];
        return TestReport::GetItemStruct(item, subitem, mask);
    }
    void QuickSort(int subitem, int ascending, int low, int high) override
    {
        ++ranges;
        TestReport::QuickSort(subitem, ascending, low, high);
    }
    void TreeSort(int subitem, structTREEITEM* parent, int ascending, int recursive) override
    {
        ++ranges;
        TestReport::TreeSort(subitem, parent, ascending, recursive);
    }
};

class ReportSort : public ReportTestOf<CountingReport>
{
protected:
    // The rows after a sort, which reads no cell twice.
    std::string Sorted(int subitem, int ascending)
    {
        report.reads.clear();
        EXPECT_EQ(1, report.SortItems(subitem, ascending));
        reads = report.reads.size();
        for (const auto& [cell, times] : report.reads)
            EXPECT_EQ(1, times) << "item " << cell.first << ", subitem " << cell.second;
        return Rows();
    }

    std::size_t reads = 0; // by the last sort
};

TEST_F(ReportSort, GoesThroughTheOverridesWithCellsOfAllKinds)
{
    const struct
    {
        const char* text;
        int image, check;
    } kinds[] = {{nullptr, -1, -1}, {nullptr, 1, -1}, {nullptr, 7, -1}, {nullptr, 5, 0}, {nullptr, 2, 3},
                 {"B", -1, 1},      {"a", 3, -1},     {"ab", -1, -1},   {"\xE9", -1, -1}}; // in their order
    constexpr int kItems = 200;
    std::mt19937 random(3);
    Define({"a", "b"});
    for (const DWORD style : {DWORD{0}, RVS_TREE})
    {
        report.UndefineAllSubItems();
        report.DeleteAllItems();
        Create(style);
        Define({"a", "b"});
        for (int item = 0; item < kItems; ++item)
        {
            Fill({nullptr});
            const bool own =
                tree && random() % 4 == 0; // some tree items are sorted by a subitem of their own
            if (own)
                report.SetTreeSubItem(report.GetItemHandle(item), 1);
            const unsigned kind = random() % static_cast<unsigned>(std::size(kinds));
            report.SetItemText(item, own, kinds[kind].text);
            report.SetItemImage(item, own, kinds[kind].image);
            report.SetItemCheck(item, own, kinds[kind].check);
            report.SetItemData(item, kind);
        }
        for (const auto& [reversed, ascending] : {std::pair(false, 1), {false, 0}, {true, 1}, {true, 0}})
        {
            report.reversed = reversed;
            report.compared = report.ranges = 0;
            Sorted(0, ascending);
            EXPECT_EQ(static_cast<std::size_t>(kItems), reads);
            EXPECT_GE(report.compared, kItems - 1);
            EXPECT_GE(report.ranges, tree ? 1 : kItems / 4);
            std::vector<unsigned long> sorted;
            for (int row = 0; row < report.GetRowCount(); ++row)
                sorted.push_back(report.GetItemData(report.GetItemFromRow(row)));
            if (reversed == (ascending != 0))
                std::reverse(sorted.begin(), sorted.end());
            EXPECT_TRUE(std::is_sorted(sorted.begin(), sorted.end())) << tree << reversed << ascending;
        }
    }
}

// A range of several rows stays where it is: its items are no neighbours any more.
TEST_F(ReportSort, OneSelectedRowGoesWithItsItem)
{
    for (const DWORD style : {DWORD{0}, RVS_TREE})
    {
        report.UndefineAllSubItems();
        report.DeleteAllItems();
        Create(style);
        Define({"a"});
        Fill({"1", "2", "3", "4"});
        Select(0, 0);
        EXPECT_EQ("4 3 2 1", Sorted(0, 0));
        EXPECT_EQ("3 to 3", Selected()) << style;
        EXPECT_EQ(3, report.GetCurrentFocus()) << style;
        Select(3, 2);
        EXPECT_EQ("1 2 3 4", Sorted(0, 1));
        EXPECT_EQ("2 to 3", Selected()) << style;
        EXPECT_EQ(0, report.GetCurrentFocus()) << style;
    }
}

TEST_F(ReportSort, CallbackDecidesAndTheMarkFollowsItsColumn)
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
    EXPECT_EQ("3 2 1", Sorted(2, 1));
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

TEST_F(ReportSort, ComparesRecordsByTextsThatAreNotEmpty)
{
    char empty[] = "", a[] = "a", b[] = "b";
    struct Record
    {
        char* text;
        unsigned mask;
        int image, check;
    };
    const std::tuple<Record, Record, int> cases[] = {
        {{a, 0, 9, 9}, {b, 0, 1, 1}, -1},
        {{a, 0, 1, 1}, {empty, RVIM_TEXT, 9, 9}, 1},
        {{empty, RVIM_TEXT, 1, 9}, {nullptr, 0, 2, 1}, -1}, // by image: no check bit
        {{empty, RVIM_CHECK, 1, 9}, {empty, 0, 2, 1}, 1},
        {{nullptr, RVIM_CHECK, 1, 3}, {nullptr, RVIM_CHECK, 2, 3}, 0},
    };
    const auto item = [](const Record& record) {
        _RVITEM made;
        made.text = record.text;
        made.mask = record.mask;
        made.image = record.image;
        made.check = record.check;
        return made;
    };
    for (const auto& each : cases)
    {
        _RVITEM item1 = item(std::get<0>(each));
        _RVITEM item2 = item(std::get<1>(each));
        EXPECT_EQ(std::get<2>(each), report.CompareItems(&item1, &item2)) << &each - cases;
        EXPECT_EQ(-std::get<2>(each), report.CompareItems(&item2, &item1)) << &each - cases;
    }
}

TEST_F(ReportSort, SorterGivesEachColumnItsOrder)
{
    const char* const cells[][3] = {{"10", "21.11.2026", "file10"},
                                    {"9", "1/12/2026", "File9"},
                                    {"1e1", "2026-11-20", "file9"},
                                    {"none", "2026-11-20 12:00", "file9"},
                                    {"1,000", "2025-12-31", "f"}};
    Define({"number", "date", "name"});
    for (const auto& texts : cells)
    {
        Fill({texts[0]});
        for (int subitem = 1; subitem < 3; ++subitem)
            report.SetItemText(report.GetItemCount() - 1, subitem, texts[subitem]);
    }
    CReportSorter sorter(report);
    sorter.SetOrder(0, CReportSorter::Order::kNumber);
    sorter.SetOrder(1, CReportSorter::Order::kDateDayFirst);
    sorter.SetOrder(2, CReportSorter::Order::kNatural);
    sorter.AddFurtherKey(1, 0);
    report.SetSortCallback(CReportSorter::Compare, reinterpret_cast<__int64>(&sorter));

    EXPECT_EQ("1,000 1e1 none 10 9", Sorted(1, 1));
    EXPECT_EQ("none 9 10 1e1 1,000", Sorted(0, 1));
    EXPECT_EQ("1,000 10 1e1 9 none", Sorted(0, 0)); // the further key does not turn round
    EXPECT_EQ("1,000 9 none 1e1 10", Sorted(2, 1));
    EXPECT_EQ(8u, reads); // the further key only of the three that are equal

    report.SetItemText(0, 2, "a"); // neither a later sort nor a comparison outside one knows old keys
    EXPECT_EQ("10 1,000 9 none 1e1", Sorted(2, 1));
    report.SetItemText(0, 2, "z");
    EXPECT_GT(report.CompareItems(0, 2, 4, 2), 0);
}

TEST_F(ReportSort, FindsByTheCellsOfASubItemFromTheDefaultItemOn)
{
    Define({"a", "b"});
    Fill({"x", "y", "x"});
    report.SetItemText(-1, 1, "fixed");
    report.SetItemImage(2, 1, 3);
    _RVFINDINFO find = {RVFI_TEXT | RVFI_WRAP, "x", 0, 0, 0};
    EXPECT_EQ(2, report.FindItem(&find, 0, 0));
    EXPECT_EQ(0, report.FindItem(&find, 0, 2));
    find.text = "fixed";
    EXPECT_EQ(-1, report.FindItem(&find, 1, 2));
    _RVFINDINFO image = {RVFI_IMAGE, nullptr, 3, 0, 0};
    EXPECT_EQ(2, report.FindItem(&image, 1, -1));
    EXPECT_EQ(-2, report.FindItem(&image, 0, -1));
    Create(RVS_CALLBACK);
    report.SetItemCount(9);
    EXPECT_EQ(0, report.FindItem(&find, 0, 5));
}

} // namespace
