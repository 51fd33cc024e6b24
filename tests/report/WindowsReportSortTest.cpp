// Sorting through the control: its virtual operations, its callback, its header's mark, and the ready-made
// orders.
#include "ReportHeaderCtrl.h"
#include "ReportSort.h"
#include "tests/report/ReportFixture.h"

#include <stdexcept>

namespace
{

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
    Follow(
        {
            {"... 1 2 3", [&] { EXPECT_EQ(0, report.ResortItems()); }},
            {"..+ 3 2 1", [&] { report.SortItems(2, 1); }},
            {"..+ 3 2 1", [&] { Format(2, HDF_RIGHT); }},
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
    act = [&] {
        report.SelectRows(0, 2, 1, 0, 0, 1);
        report.SetTreeFocus(report.GetItemHandle(5));
        return (report.GetTreeFocus() != nullptr) + report.InsertItem(0) + report.DeleteItem(0) +
               report.DeleteAllItems() + report.SortItems(0, 0) + report.ResortItems() +
               report.SetItemRowArray(order) + report.DeleteTreeItem(TVI_ROOT) +
               (report.InsertTreeItem(nullptr, nullptr) != nullptr) + report.SelectNone() +
               report.AdjustFocus(0, 0) + report.Expand(report.GetItemHandle(0), RVE_TOGGLE) +
               report.MoveDown(0) + report.ModifyStyle(0, RVS_CALLBACK);
    };
    for (const DWORD style : {DWORD{0}, RVS_TREE})
    {
        Show(style, {"1", "2", "3", "4", "5", "6"});
        if (tree)
            report.InsertTreeItem(report.GetItemHandle(0), nullptr, "7"); // without a row
        Select(3, 1);
        report.SetSortCallback(
            [](int item1, int, int item2, int, __int64) {
                EXPECT_EQ(-1, act()); // of the item that is not inserted
                return item2 - item1;
            },
            0);
        report.SortItems(0, 1);
        report.SetSortCallback(nullptr, 0);
        EXPECT_EQ("6 5 4 3 2 1 focus 2", Line(Rows(), "focus", report.GetCurrentFocus())) << style;
        EXPECT_TRUE(report.GetItemState(3) & RVIS_FOCUSED);
        EXPECT_FALSE(report.GetItemState(5) & RVIS_FOCUSED);
    }
}

TEST_F(ReportSort, ComparesRecordsByTextsThatAreNotEmpty)
{
    char empty[] = "", a[] = "a", b[] = "b";
    _RVITEM item1;
    _RVITEM item2;
    item2.image = item1.check = 9; // the first one's image is less, its check state greater
    for (const auto& [text1, text2, mask, expected] : {std::tuple(a, b, 0u, -1),
                                                       {b, empty, 0, 1},
                                                       {empty, nullptr, RVIM_TEXT, -1},
                                                       {empty, empty, RVIM_CHECK, 1}})
    {
        item1.text = text1;
        item2.text = text2;
        item1.mask = mask;
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
}

// Words of both encodings among each other, as the system compares them.
TEST_F(ReportSort, SorterComparesWordsByTheUsersLanguage)
{
    Show(0,
         {"Zug", "\u00D6l", "apfel", "Apfel", "\u00C4pfel", "\xC4pfel", "", "\u0416", "\u65E5", "z", "coop"});
    CReportSorter sorter(report);
    sorter.SetOrder(0, CReportSorter::Order::Locale);
    report.SetSortCallback(CReportSorter::Compare, reinterpret_cast<__int64>(&sorter));
    EXPECT_EQ(" apfel Apfel \u00C4pfel \xC4pfel coop \u00D6l z Zug \u0416 \u65E5", Sorted(0, 1));
}

} // namespace
