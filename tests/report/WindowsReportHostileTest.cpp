// What owners do to a report control that they should not, and how much they put into it.
#include "tests/report/ReportFixture.h"

#include "report/model/Tree.h"
#include "tests/support/NothingLeft.h"

#include <algorithm>
#include <climits>
#include <random>
#include <stdexcept>

namespace
{

using Action = std::function<int()>;

int CallAction(int, int, int, int, __int64 value)
{
    return (*reinterpret_cast<const Action*>(value))();
}

class ReportHostile : public ReportTest
{
protected:
    // The focused item's text, when this item alone says that it is focused.
    std::string Focused()
    {
        std::string focused;
        for (int item = 0; item < report.GetItemCount(); ++item)
            if (report.Struct(item).state & RVIS_FOCUSED)
                focused += report.GetItemText(item, 0).c_str();
        const int row = report.GetCurrentFocus();
        const int item = row < 0 ? row : report.GetItemFromRow(row);
        return item >= 0 && focused == report.GetItemText(item, 0).c_str() ? focused : "?" + focused;
    }
};

TEST_F(ReportHostile, SurvivesAnySortCallback)
{
    std::mt19937 random(5);
    CArray<int, int> order;
    order.SetSize(6);
    const Action actions[] = {
        [&] { return static_cast<int>(random() % 3) - 1; },
        [] { return 1; },
        [] { return -1; },
        [&] { return random() % 8 ? 1 : throw std::runtime_error("compare"); },
        []() -> int { throw std::runtime_error("compare"); },
        []() -> int { AfxThrowInvalidArgException(); },
        [&] { return report.InsertItem(0) + report.DeleteItem(0) + report.DeleteAllItems() + 1; },
        [&] { return report.SortItems(0, 0) + report.ResortItems() + report.SetItemRowArray(order); },
        [&] {
            return report.InsertTreeItem(nullptr, nullptr) ? 1 : report.DeleteTreeItem(report::kTreeRoot);
        },
        [&] { return report.SelectRows(0, 2, 1, 0, 0, 1), 1; },
        [&] { return report.Expand(report.GetItemHandle(0), RVE_TOGGLE), report.GetRowCount(); },
        [&] { return report.ModifyStyle(0, RVS_CELLFOCUS), report.UndefineSubItem(1), -1; },
        [&] { return report.DestroyWindow(), 1; },
    };
    for (const DWORD style : {DWORD{0}, RVS_TREE})
    {
        for (const Action& action : actions)
        {
            SCOPED_TRACE(&action - actions);
            Create(style);
            report.UndefineAllSubItems();
            report.DeleteAllItems();
            Define({"a", "b"});
            Fill({"1", "2", "3", "4", "5", "6"});
            if (tree)
                report.InsertTreeItem(report.GetItemHandle(0), nullptr, "7"); // without a row
            Select(3, 1);
            report.SetSortCallback(CallAction, reinterpret_cast<__int64>(&action));
            for (int i = 0; i < 3; ++i)
            {
                try
                {
                    report.SortItems(0, i);
                }
                catch (const std::runtime_error&)
                {
                }
                catch (CInvalidArgException*)
                {
                }
            }
            report.SetSortCallback(nullptr, 0);
            EXPECT_EQ("4", Focused());
            std::string rows = Rows();
            std::sort(rows.begin(), rows.end());
            EXPECT_EQ("     123456", rows);
            EXPECT_EQ(report.m_hWnd ? 1 : 0, report.SortItems(0, 1));
            EXPECT_EQ("4", Focused());
            if (report.m_hWnd)
            {
                EXPECT_EQ("1 2 3 4 5 6", Rows());
            }
        }
    }
}

TEST_F(ReportHostile, ShowsWhatASortThatThrewHasDone)
{
    parent.ShowWindow(SW_SHOW);
    const Action fail = []() -> int { throw std::runtime_error("compare"); };
    for (const DWORD style : {DWORD{0}, RVS_TREE})
    {
        Create(WS_VISIBLE | style);
        Define({"a"});
        Fill({"1", "2"});
        report.UpdateWindow();
        ASSERT_FALSE(::GetUpdateRect(report, nullptr, FALSE));
        report.SetSortCallback(CallAction, reinterpret_cast<__int64>(&fail));
        EXPECT_THROW(report.SortItems(0, 1), std::runtime_error);
        EXPECT_TRUE(::GetUpdateRect(report, nullptr, FALSE)) << style;
        report.UndefineAllSubItems();
    }
}

TEST_F(ReportHostile, KeepsNothingOfItemsThatWent)
{
    Create(RVS_TREE);
    Define({"a"});
    Fill({"1", "2", "3"});
    Select(2, 1);
    EXPECT_EQ("1 to 2", Selected());
    Fill({"4"});
    report.DeleteAllItems(); // before anyone asks for the rows
    Fill({"5", "6"});
    EXPECT_EQ("5 6", Rows());
    EXPECT_EQ("0 to -1", Selected());
    EXPECT_EQ(RVI_NONE, report.GetCurrentFocus());
}

TEST_F(ReportHostile, PutsUpWithAnyOrderOfRows)
{
    Define({"a"});
    Fill({"1", "2", "3"});
    Select(0, 0);
    CArray<int, int> order;
    order.SetSize(2);
    EXPECT_EQ(0, report.SetItemRowArray(order));
    order.SetSize(3);
    order[0] = 99;
    order[1] = order[2] = 1;
    EXPECT_EQ(1, report.SetItemRowArray(order));
    EXPECT_EQ(RVI_NONE, report.GetCurrentFocus());
    EXPECT_EQ(0u, report.Struct(0).state);
    EXPECT_THROW(Select(0, 0), CInvalidArgException*);
    Select(2, 2);
    EXPECT_EQ("2", Focused());
    order[0] = 2;
    EXPECT_EQ(1, report.SetItemRowArray(order));
    EXPECT_EQ("2", Focused());
    EXPECT_EQ(1, report.DeleteItem(1)); // which has two rows
    EXPECT_EQ("3", Rows());
    EXPECT_EQ("3", Focused());
}

TEST_F(ReportHostile, TakesOtherStylesWhileItHasItems)
{
    Define({"a"});
    Fill({"1", "2", "3"});
    Select(2, 1);
    report.ModifyStyle(0, RVS_TREE);
    ASSERT_TRUE(report.InsertTreeItem(nullptr, nullptr, "4"));
    EXPECT_EQ("4", Rows()); // the others are in no tree
    EXPECT_EQ(RVI_NONE, report.GetCurrentFocus());
    EXPECT_EQ("0 to -1", Selected());

    report.ModifyStyle(RVS_TREE, RVS_CALLBACK);
    report.SetItemCount(1000);
    Select(900, 800);
    report.ModifyStyle(RVS_CALLBACK, 0);
    EXPECT_LT(report.GetCurrentFocus(), 1);
    EXPECT_EQ("0 to -1", Selected());
    EXPECT_EQ("1 2 3 4", Rows());

    // So does another window of the same object.
    const std::pair<DWORD, int> windows[] = {{RVS_TREE, 1}, {RVS_CALLBACK, 1000}, {RVS_TREE, 1}, {0, 4}};
    for (const auto& [style, rows] : windows)
    {
        Create(style);
        EXPECT_EQ(rows, report.GetRowCount()) << style;
    }
}

TEST_F(ReportHostile, AnswersNumbersAtTheLimits)
{
    Create(RVS_TREE);
    Define({"a", "b"});
    _TREEITEM* const item = report.InsertTreeItem(nullptr, nullptr, "1");
    Select(0, 0);
    _RVSUBITEM definition;
    _RVFINDINFO find = {RVFI_IMAGE | RVFI_WRAP, nullptr, 99, 0, 0};
    _RVITEM cell;
    cell.mask = RVIM_IMAGE;
    int n = 0;
    const std::function<__int64()> actions[] = {
        [&] { return cell.item = n, cell.subitem = 0, report.GetItem(&cell) + report.SetItem(&cell); },
        [&] { return cell.item = 0, cell.subitem = n, report.GetItem(&cell) + report.SetItem(&cell); },
        [&] { return report.SetItemText(n, 0, "x") + report.SetItemText(0, n, "x"); },
        [&] { return report.GetItemText(n, 0, text, 9) + report.GetItemText(0, n, text, 9); },
        [&] { return report.GetItemText(0, 0, text, std::min(n, 0)); },
        [&] { return report.GetItemData(n) + report.SetItemData(n, 1); },
        [&] { return static_cast<int>(report.GetItemString(n, ';').GetLength()) - 2; }, // empty cells
        [&] { return report.DeleteItem(n); },
        [&] { return report.GetItemHandle(n) != nullptr; },
        [&] { return report.GetRowFromItem(n) + 2; },
        [&] { return report.GetItemFromRow(n); },
        [&] { return report.UndefineSubItem(n) + report.DeactivateSubItem(n) + report.IsActiveSubItem(n); },
        [&] { return report.ActivateSubItem(n, n) + report.GetColumnFromSubItem(n) + 2; },
        [&] { return report.GetSubItemFromColumn(n) + 1; },
        [&] { return report.DefineSubItem(n, &definition) + report.RedefineSubItem(n, &definition); },
        [&] { return report.GetSubItemWidth(n) + report.SetSubItemWidth(n, 5); },
        [&] {
            return report.SortItems(n, 1) + report.CompareItems(n, 0, n, 0) + report.CompareItems(0, n, 0, n);
        },
        [&] { return report.FindItem(&find, n, 0) + report.FindItem(&find, 0, n) + 4; },
        [&] { return Select(n, 0), 0; },
        [&] { return Select(0, n), 0; },
        [&] { return report.SetState(n, RVIS_BOLD, RVIS_BOLD), 0; },
        [&] { return report.Struct(n).state; },
        [&] { return report.Expand(item, static_cast<unsigned>(n)); },
        [&] { return report.GetNextItem(item, static_cast<unsigned>(n)) != nullptr; },
        [&] { return report.ModifyProperty(static_cast<unsigned __int64>(n), 0); },
        [&] { return report.SetColor(n, 1) + static_cast<int>(report.GetColor(n)) + report.DeleteColor(n); },
        [&] { return report.InsertColor(std::min(n, -1), 1); },
        [&] { return report.RedrawRows(n, n, 1), report.RedrawItems(n, n), report.ScrollWindow(n, n), 0; },
        [&] { return report.GetScrollPos32(n) > 400; },
        [&] { return report.Notify(RVN_KEYDOWN, n, n, 0, 0); },
    };
    for (const auto& action : actions)
    {
        for (const int number : {INT_MIN, INT_MIN + 1, -1000, INT_MAX - 1, INT_MAX})
        {
            n = number;
            try
            {
                EXPECT_EQ(0, action()) << &action - actions << ", " << n;
            }
            catch (CInvalidArgException*)
            {
            }
        }
    }
    for (const int size : {INT_MIN, INT_MAX, 200})
        report.Layout(size, size);
    report.SetSubItemWidth(0, INT_MAX);
    report.SetSubItemWidth(1, INT_MAX);
    report.ScrollWindow(SB_HORZ, INT_MAX);
    EXPECT_LE(0, report.GetScrollPos32(SB_HORZ));
    EXPECT_EQ("1", Rows());
    EXPECT_EQ("1", Focused());
    EXPECT_EQ(2, report.GetActiveSubItemCount());

    // The handle of the root wherever a tree item is taken.
    _TREEITEM* const root = report::kTreeRoot;
    EXPECT_EQ(RVI_NONE, report.GetItemIndex(root));
    EXPECT_EQ(nullptr, report.InsertTreeItem(nullptr, root, "x"));
    EXPECT_EQ(nullptr, report.GetNextItem(root, RVGN_PREVIOUS));
    EXPECT_EQ(nullptr, report.GetNextItem(root, RVGN_NEXT));
    EXPECT_EQ(1, report.IsChild(root, item));
    EXPECT_EQ(0, report.IsDescendent(item, root));
    EXPECT_EQ(0, report.Expand(root, RVE_TOGGLE));
    report.SetTreeSubItem(root, 1);
    report.GetVisibleAncestor(root);
    report.SetTreeFocus(root);
}

class OwnLoading : public TestReport
{
public:
    using Load = std::function<int(structITEM*, int item, int subitem, unsigned mask)>;
    Load loading;
    Load base = [this](auto... arguments) { return TestReport::LoadItemData(arguments...); };

protected:
    int LoadItemData(structITEM* record, int item, int subitem, unsigned int mask) override
    {
        return loading(record, item, subitem, mask);
    }
};

using ReportLoading = ReportTestOf<OwnLoading>;

TEST_F(ReportLoading, ASubclassMayChangeWhatIsLoaded)
{
    Create(RVS_CALLBACK);
    Define({"a", "b"});
    report.SetItemCount(5);
    report.load = [](_RVITEM& item) -> __int64 {
        item.text[0] = static_cast<char>('a' + item.item);
        item.text[1] = static_cast<char>('0' + item.subitem);
        return 0;
    };
    const auto texts = [this] {
        return std::string(report.GetItemText(2, 0).c_str()) + ' ' + report.GetItemText(2, 1).c_str();
    };
    report.loading = [this](auto* record, int item, int subitem, unsigned mask) {
        const int loaded = report.base(record, item, subitem, mask);
        record->previewText = "own preview";
        return loaded;
    };
    EXPECT_EQ("c0 c1", texts());
    EXPECT_STREQ("own preview", report.GetItemText(2, -1).c_str());
    report.loading = [this](auto* record, int item, int, unsigned mask) {
        return report.base(record, item, 0, mask) && report.base(record, item, 1, mask); // all of them
    };
    EXPECT_EQ("c0 c1", texts());
    report.loading = [this](auto* record, int item, int subitem, unsigned mask) {
        const int loaded = report.base(record, item, subitem, mask);
        record->cells = "\x01-1,-1,-1,-1,1\x02x\x07\x01-1,-1,-1,-1,2\x02yz\x07";
        return loaded;
    };
    EXPECT_EQ("x yz", texts());
    report.loading = [](auto...) -> int { throw std::runtime_error("load"); };
    EXPECT_THROW(texts(), std::runtime_error);
    report.loading = [](auto...) { return 0; };
    EXPECT_EQ(" ", texts());
}

// What this process has used: unlike the time of day it is the same on a busy machine.
double ProcessorSeconds()
{
    FILETIME created;
    FILETIME ended;
    ULARGE_INTEGER system;
    ULARGE_INTEGER user;
    ::GetProcessTimes(::GetCurrentProcess(), &created, &ended, reinterpret_cast<FILETIME*>(&system),
                      reinterpret_cast<FILETIME*>(&user));
    return static_cast<double>(system.QuadPart + user.QuadPart) / 1e7;
}

TEST_F(ReportHostile, HoldsDeepTreesAndManyRows)
{
    constexpr int kLevels = 100000;
    Create(RVS_TREE);
    Define({"a"});
    const double start = ProcessorSeconds();
    _TREEITEM* item = nullptr;
    std::vector<_TREEITEM*> chain;
    for (int level = 0; level < kLevels; ++level)
        chain.push_back(item = report.InsertTreeItem(item, nullptr, "x"));
    for (int level = kLevels; level-- > 0;)
        report.Expand(chain[static_cast<std::size_t>(level)], RVE_EXPAND);
    EXPECT_EQ(kLevels, report.GetRowCount());
    EXPECT_EQ(kLevels, report.GetItemCount(report::kTreeRoot, 1));
    report.SelectRows(kLevels - 1, 0, 1, 0, 0, 0);
    for (int sibling = 0; sibling < 1000; ++sibling)
        report.InsertTreeItem(item, nullptr, sibling % 2 ? "a" : "b"); // among so many rows
    EXPECT_EQ(1, report.SortItems(0, 1));
    EXPECT_EQ(kLevels - 1, report.GetCurrentFocus());
    EXPECT_EQ(1, report.DeleteTreeItem(chain[1]));
    EXPECT_EQ(1, report.GetItemCount());

    for (int row = 0; row < kLevels; ++row)
        report.InsertTreeItem(nullptr, nullptr, "x");
    EXPECT_EQ(kLevels + 1, report.GetRowCount());

    Create();
    report.DeleteAllItems();
    for (int row = 0; row < 1000000; ++row)
        report.InsertItem(row, "x");
    EXPECT_EQ(999999, report.GetRowFromItem(999999));
    report.DeleteAllItems();
    EXPECT_GT(20, ProcessorSeconds() - start); // each a fraction of a second, and none the square of it
}

TEST_F(ReportHostile, KeepsColours)
{
    EXPECT_EQ(2, report.InsertColor(2, 0x30)); // black before it
    EXPECT_EQ(0, report.InsertColor(0, 0x10));
    EXPECT_EQ(0, report.SetColor(4, 1));
    EXPECT_EQ(1, report.SetColor(1, 0x20));
    EXPECT_EQ(0, report.DeleteColor(4));
    EXPECT_EQ(1, report.DeleteColor(2));
    const COLORREF expected[] = {0x10, 0x20, 0x30, 0};
    for (int index = 0; index < 4; ++index)
        EXPECT_EQ(expected[index], report.GetColor(index)) << index;
}

TEST_F(ReportHostile, LivesThroughManyWindows)
{
    ExpectNothingLeft([this] {
        report.UndefineAllSubItems();
        report.DeleteAllColors();
        Create();
        Define({"a", "b"});
        report.InsertColor(0, 1);
        report.SetColor(0, 2);
        report.SetBkImage("no such file");
        report.SortItems(1, 0);
    });

    // Another window of the same object begins without columns, sort mark and focus, but has the items.
    Fill({"1", "2"});
    report.SortItems(1, 0);
    Select(1, 0);
    Create();
    EXPECT_EQ(0, report.GetActiveSubItemCount());
    report.ActivateSubItem(0, 0);
    report.ActivateSubItem(1, 1);
    EXPECT_EQ(0, report.ResortItems());
    EXPECT_EQ(2, report.GetRowCount());
    EXPECT_EQ(RVI_NONE, report.GetCurrentFocus());
    EXPECT_EQ("0 to -1", Selected());
    EXPECT_EQ(0u, report.Struct(1).state & RVIS_FOCUSED);
}

} // namespace
