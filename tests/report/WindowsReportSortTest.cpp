// Sorting through the control: its virtual operations, its callback, its header's mark, and the ready-made
// orders.
#include "ReportHeaderCtrl.h"
#include "ReportSort.h"
#include "tests/report/ReportFixture.h"
#include "zemacore/WideText.h"

#include <algorithm>
#include <stdexcept>

namespace
{

class CountingReport : public TestReport
{
public:
    int compared = 0;
    int ranges = 0;
    int reads = 0;

    using TestReport::CompareItems;
    int CompareItems(int item1, int subitem1, int item2, int subitem2) override
    {
        ++compared;
        return -TestReport::CompareItems(item1, subitem1, item2, subitem2);
    }

protected:
    structITEM& GetItemStruct(int item, int subitem, unsigned int mask) override
    {
        reads += mask == RVIM_TEXT;
        return TestReport::GetItemStruct(item, subitem, mask);
    }
    void QuickSort(int subitem, int ascending, int low, int high) override
    {
        ++ranges;
        TestReport::QuickSort(subitem, ascending, low, high);
    }
    void TreeSort(int subitem, structTREEITEM* above, int ascending, int recursive) override
    {
        ++ranges;
        TestReport::TreeSort(subitem, above, ascending, recursive);
    }
};

using ReportOverriddenSort = ReportTestOf<CountingReport>;

TEST_F(ReportOverriddenSort, GoesThroughTheSubclass)
{
    for (const DWORD style : {DWORD{0}, RVS_TREE})
    {
        Show(style, {"2", "3", "1"});
        report.compared = report.ranges = report.reads = 0;
        EXPECT_EQ(1, report.SortItems(0, 1));
        EXPECT_EQ(3, report.reads) << style; // each cell once
        EXPECT_EQ("3 2 1", Rows()) << style;
        EXPECT_LE(2, report.compared) << style;
        EXPECT_LE(1, report.ranges) << style;
    }
}

class ReportSort : public ReportTest
{
protected:
    std::string Sorted(int subitem, int ascending)
    {
        EXPECT_EQ(1, report.SortItems(subitem, ascending));
        return Rows();
    }
    // The marks of the header's columns.
    std::string Marks()
    {
        std::string marks;
        for (int column = 0; column < report.GetActiveSubItemCount(); ++column)
        {
            HDITEM item = {};
            item.mask = HDI_FORMAT;
            const CReportHeaderCtrl& shown = *report.GetHeaderCtrl();
            EXPECT_TRUE(shown.GetItem(shown.GetItemOfColumn(column), &item));
            marks += item.fmt & HDF_SORTUP ? '+' : item.fmt & HDF_SORTDOWN ? '-' : '.';
        }
        return marks;
    }
};

TEST_F(ReportSort, CallbackDecidesAndTheMarkFollowsItsColumn)
{
    Show(0, {"1", "2", "3"});
    report.SetSortCallback(
        [](int item1, int subitem1, int item2, int subitem2, __int64 value) {
            EXPECT_EQ("2 2 -5000000000", Line(subitem1, subitem2, value));
            return item2 - item1;
        },
        -5000000000);
    _RVSUBITEM other;
    Follow(
        {
            {"... 1 2 3", [&] { EXPECT_EQ(0, report.ResortItems()); }},
            {"..+ 3 2 1", [&] { report.SortItems(2, 1); }},
            {"..+ 3 2 1", [&] { report.RedefineSubItem(2, &other); }},
            {".+ 3 2 1", [&] { report.DeactivateSubItem(0); }},
            {"..+ 3 2 1", [&] { report.ActivateSubItem(0, 1); }}, // c is now the last of three
            {"..+ 4 3 2 1", [&] { Fill({"4"}), report.ResortItems(); }},
            {"... 4 3 2 1", [&] { report.ClearSortSettings(), report.ResortItems(); }},
            {"..- 1 2 3 4", [&] { report.SortItems(2, 0); }},
            {"... 1 2 3 4", [&] { report.DeactivateSubItem(2), report.ActivateSubItem(2, 0); }},
            {"... 1 2 3 4", [&] { EXPECT_EQ(0, report.ResortItems()); }},
        },
        [&] { return Line(Marks(), Rows()); });
}

TEST_F(ReportSort, ShowsWhatASortHasDone)
{
    Show(RVS_TREE, {"3", "1"});
    report.SortItems(0, 0);
    report.InsertTreeItem(nullptr, TVI_SORT, "2");
    EXPECT_EQ("3 2 1", Rows()) << "in the direction of the mark";
    for (const DWORD style : {DWORD{0}, RVS_TREE})
    {
        Show(WS_VISIBLE | style, Texts(50, "1"));
        Select(49, 49);
        report.SetItemText(49, 0, "0");
        report.ScrollWindow(SB_VERT, 40);
        EXPECT_EQ("0", Sorted(0, 1).substr(0, 1));
        EXPECT_EQ(0, report.GetTopIndex()) << "the focused row is seen";
        report.UpdateWindow();
        ASSERT_FALSE(::GetUpdateRect(report, nullptr, FALSE));
        report.SetSortCallback([](int, int, int, int, __int64) -> int { throw std::runtime_error("sort"); },
                               0);
        EXPECT_THROW(report.SortItems(0, 1), std::runtime_error);
        EXPECT_TRUE(::GetUpdateRect(report, nullptr, FALSE)) << "some rows may have moved";
        report.SetSortCallback(nullptr, 0);
    }
}

// What an owner does while it is asked for an order changes neither the items nor what is sorted.
TEST_F(ReportSort, RefusesChangesFromWithin)
{
    CArray<int, int> order;
    order.SetSize(6);
    static std::function<int()> act;
    const std::function<int()> acts[] = {
        [&] { return report.InsertItem(0) + report.DeleteItem(0) + report.DeleteAllItems(); },
        [&] { return report.SortItems(0, 0) + report.ResortItems() + report.SetItemRowArray(order); },
        [&] { return report.InsertTreeItem(nullptr, nullptr) ? 1 : report.DeleteTreeItem(TVI_ROOT); },
        [&] { return report.SelectRows(0, 2, 1, 0, 0, 1), report.SelectNone() + report.AdjustFocus(0, 0); },
        [&] { return report.Expand(report.GetItemHandle(0), RVE_TOGGLE) + report.MoveDown(0); },
        [&] { return report.ModifyStyle(0, RVS_CALLBACK), report.GetRowCount() - 6; },
        [&] { return report.DestroyWindow(), 0; },
    };
    for (const DWORD style : {DWORD{0}, RVS_TREE})
    {
        for (const auto& each : acts)
        {
            Show(style, {"1", "2", "3", "4", "5", "6"});
            if (tree)
                report.InsertTreeItem(report.GetItemHandle(0), nullptr, "7"); // without a row
            Select(3, 1);
            act = each;
            report.SetSortCallback(
                [](int item1, int, int item2, int, __int64) { return act(), item2 - item1; }, 0);
            report.SortItems(0, 1);
            report.SetSortCallback(nullptr, 0);
            EXPECT_EQ("6 5 4 3 2 1 focus 2", Rows() + " focus " + std::to_string(report.GetCurrentFocus()))
                << style << ", act " << &each - acts;
        }
    }
}

TEST_F(ReportSort, ComparesRecordsByTextsThatAreNotEmpty)
{
    char empty[] = "", a[] = "a", b[] = "b";
    const std::tuple<char*, char*, unsigned, int> cases[] = {
        {a, b, 0, -1}, {b, empty, 0, 1}, {empty, nullptr, RVIM_TEXT, -1}, {empty, empty, RVIM_CHECK, 1}};
    for (const auto& [text1, text2, mask, expected] : cases)
    {
        _RVITEM item1;
        _RVITEM item2;
        item1.text = text1;
        item2.text = text2;
        item1.mask = mask;
        item2.image = item1.check = 9; // the first one's image is less, its check state greater
        EXPECT_EQ(Line(expected, -expected, 0),
                  Line(report.CompareItems(&item1, &item2), report.CompareItems(&item2, &item1),
                       report.CompareItems(&item1, &item1)));
    }
}

TEST_F(ReportSort, SorterGivesEachColumnItsOrder)
{
    Show(0, {"10", "9", "1e1", "none"});
    const char* const names[] = {"file10", "File9", "file9", "file9"};
    for (int item = 0; item < 4; ++item)
        report.SetItemText(item, 1, names[item]);
    CReportSorter sorter(report);
    sorter.SetOrder(0, CReportSorter::Order::Number);
    sorter.SetOrder(1, CReportSorter::Order::Natural);
    sorter.AddFurtherKey(1, 0);
    report.SetSortCallback(CReportSorter::Compare, reinterpret_cast<__int64>(&sorter));
    EXPECT_EQ("none 9 10 1e1", Sorted(0, 1));
    EXPECT_EQ("10 1e1 9 none", Sorted(0, 0)); // the further key does not turn round

    report.SetItemText(0, 1, "a"); // neither a later sort nor a comparison outside one knows old keys
    EXPECT_EQ("10 9 1e1 none", Sorted(1, 1));
    report.SetItemText(0, 1, "z");
    EXPECT_GT(report.CompareItems(0, 1, 1, 1), 0);
    report.SetItemText(0, 1, "a");
    EXPECT_LT(report.CompareItems(0, 1, 1, 1), 0);

    Create(RVS_CALLBACK);
    _RVFINDINFO find = {RVFI_TEXT, "x", 0, 0, 0};
    report.SetItemCount(9);
    EXPECT_EQ(0, report.FindItem(&find, 0, 5));
}

// Words of both encodings among each other, as the system compares them.
TEST_F(ReportSort, SorterComparesWordsByTheUsersLanguage)
{
    std::vector<std::string> words = {"Zug", "\u00D6l", "apfel",  "Apfel", "\u00C4pfel", "\xC4pfel",
                                      "",    "\u0416",  "\u65E5", "z",     "co-op",      "coop"};
    Show(0);
    for (const std::string& word : words)
        Fill({word.c_str()});
    CReportSorter sorter(report);
    sorter.SetOrder(0, CReportSorter::Order::Locale);
    report.SetSortCallback(CReportSorter::Compare, reinterpret_cast<__int64>(&sorter));
    std::sort(words.begin(), words.end(), [](const std::string& word1, const std::string& word2) {
        ZEMA::WideString wide1, wide2;
        ZEMA::ToWide(word1.data(), word1.size(), wide1);
        ZEMA::ToWide(word2.data(), word2.size(), wide2);
        const int order = ::CompareStringEx(LOCALE_NAME_USER_DEFAULT, 0, wide1.c_str(), -1, wide2.c_str(), -1,
                                            nullptr, nullptr, 0);
        return order != CSTR_EQUAL ? order == CSTR_LESS_THAN : word1 < word2;
    });
    std::string expected;
    for (const std::string& word : words)
        expected += (&word == words.data() ? "" : " ") + word;
    EXPECT_EQ(expected, Sorted(0, 1));
    EXPECT_NE(std::string::npos, expected.find("apfel Apfel \u00C4pfel \xC4pfel ")) << expected;
}

} // namespace
