// What owners do to a report control that they should not, and how much they put into it.
#include "tests/report/ReportFixture.h"

#include "tests/support/NothingLeft.h"

#include <climits>

namespace
{

using ReportHostile = ReportTest;

TEST_F(ReportHostile, PutsUpWithAnyOrderOfRows)
{
    Show(0, {"1", "2", "3"});
    Select(0, 0);
    const auto put = [this](std::initializer_list<int> items) {
        CArray<int, int> order;
        for (const int item : items)
            order.Add(item);
        const int done = report.SetItemRowArray(order);
        return Line(done, report.GetCurrentFocus());
    };
    EXPECT_EQ("0 0", put({0, 1}));
    EXPECT_EQ("1 -2", put({99, 1, 1}));
    EXPECT_THROW(Select(0, 0), CInvalidArgException*);
    Select(2, 2);
    EXPECT_EQ("1 2", put({2, 1, 1}));
    EXPECT_EQ(1, report.DeleteItem(1)); // which has two rows
    EXPECT_EQ("3 0", Line(Rows(), report.GetCurrentFocus()));
}

TEST_F(ReportHostile, TakesOtherStylesWhileItHasItems)
{
    Show(0, {"1", "2", "3"});
    Select(2, 1);
    report.ModifyStyle(0, RVS_TREE);
    ASSERT_TRUE(report.InsertTreeItem(nullptr, nullptr, "4"));
    EXPECT_EQ("4", Rows()); // the others are in no tree
    EXPECT_EQ("0 to -1 focus -2,-1 top 0", State());

    report.ModifyStyle(RVS_TREE, RVS_CALLBACK);
    report.SetItemCount(1000);
    Select(900, 800);
    report.ModifyStyle(RVS_CALLBACK, 0);
    EXPECT_EQ("0 to -1 focus -2,-1 top 0", State());
    EXPECT_EQ("1 2 3 4", Rows());

    // So does another window of the same object, which begins without columns, sort mark and focus, also
    // where the rows have yet to be made again.
    report.SortItems(1, 0);
    Select(1, 0);
    const std::pair<DWORD, int> windows[] = {
        {0, 4}, {RVS_TREE, 1}, {RVS_TREE, 2}, {RVS_CALLBACK, 1000}, {RVS_TREEALTERNATE, 3}, {0, 7}};
    for (const auto& [style, rows] : windows)
    {
        Create(style);
        report.ActivateSubItem(0, 0);
        report.ActivateSubItem(1, 1);
        EXPECT_EQ(Line("ab", rows, "0 to -1 focus -2,-1 top 0"),
                  Line(Columns() + SortMark(), report.GetRowCount(), State()));
        for (int item = 0; item < 7; ++item)
            EXPECT_EQ(0u, report.GetItemState(item) & RVIS_FOCUSED) << style;
        Select(0, 0);
        report.InsertTreeItem(nullptr, TVI_FIRST, "0"); // of a tree
    }
}

TEST_F(ReportHostile, TakesFewerItemsWhileItAsksForOne)
{
    int questions = 0;
    report.load = [&](_RVITEM& item) -> __int64 {
        item.mask = RVIM_PREVIEWHEIGHT;
        item.previewHeight = 9;
        if (--questions == 0)
            report.SetItemCount(2);
        return 0;
    };
    const std::function<void()> events[] = {
        [&] { Click(60, 4 * kItemHeight); },
        [&] { Click(10, 4 * kItemHeight, MK_SHIFT); },
        [&] { Mouse(WM_RBUTTONDOWN, 60, 4 * kItemHeight); },
        [&] { Key(VK_DOWN); },
        [&] { Key(VK_NEXT); },
        [&] { Key(VK_END, {VK_SHIFT}); },
        [&] { Key(VK_PRIOR); },
        [&] { report.PageDown(); },
        [&] { report.ScrollWindow(SB_VERT, 29), report.SetItemHeight(kItemHeight), Redraw(); },
    };
    Show(WS_VISIBLE | RVS_CALLBACK | RVS_CELLFOCUS);
    for (const auto& event : events)
    {
        for (int nth = 1; nth <= 15 && questions <= 0; ++nth)
        {
            questions = 0;
            report.SetItemCount(30);
            Select(4, 4);
            report.AdjustFocus(4, 0);
            questions = nth;
            event();
            EXPECT_LE(report.GetTopIndex(), report.GetRowCount());
            ASSERT_FALSE(HasFailure()) << "event " << &event - events << ", question " << nth;
        }
        questions = 0;
    }
}

TEST_F(ReportHostile, AnswersNumbersAtTheLimits)
{
    Show(WS_VISIBLE | RVS_TREE | RVS_HORIZONTALGRID | RVS_VERTICALGRID | RVS_EXTENDGRID, {"1"});
    _TREEITEM* const item = report.GetItemHandle(0);
    Select(0, 0);
    _RVSUBITEM definition;
    _RVFINDINFO find = {RVFI_IMAGE | RVFI_WRAP, nullptr, 99, 0, 0};
    _RVITEM cell;
    cell.mask = RVIM_IMAGE;
    char text[9] = "";
    int n = 0;
    const std::function<__int64()> actions[] = {
        [&] { return cell.item = n, cell.subitem = 0, report.GetItem(&cell) + report.SetItem(&cell); },
        [&] { return cell.item = 0, cell.subitem = n, report.GetItem(&cell) + report.SetItem(&cell); },
        [&] { return report.SetItemText(n, 0, "x") + report.SetItemText(0, n, "x"); },
        [&] { return report.GetItemText(n, 0, text, 9) + report.GetItemText(0, n, text, 9); },
        [&] { return report.GetItemText(0, 0, text, std::min(n, 0)); },
        [&] { return report.GetItemData(n) + report.SetItemData(n, 1); },
        [&] { return static_cast<int>(report.GetItemString(n, ';').GetLength()) - 3; }, // empty cells
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
        [&] { return report.Layout(n, n), 0; },
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
    report.SetSubItemWidth(0, INT_MAX);
    report.SetSubItemWidth(1, INT_MAX);
    for (const auto& [size, height] : {std::pair(0, 0), {1, 1}, {3000, 10}, {300, 20}})
    {
        report.SetWindowPos(nullptr, 0, 0, size, size, SWP_NOMOVE);
        report.SetItemHeight(height);
        report.ScrollWindow(SB_HORZ, INT_MAX);
        EXPECT_LE(0, report.GetScrollPos32(SB_HORZ));
        Redraw();
    }
    EXPECT_EQ("abc 1 0", Line(Columns(), Rows(), report.GetCurrentFocus()));

    // The handle of the root wherever a tree item is taken.
    EXPECT_EQ(Line(RVI_NONE, 0, 1, 0, 0),
              Line(report.GetItemIndex(TVI_ROOT), report.InsertTreeItem(nullptr, TVI_ROOT, "x") != nullptr,
                   report.IsChild(TVI_ROOT, item), report.IsDescendent(item, TVI_ROOT),
                   report.Expand(TVI_ROOT, RVE_TOGGLE)));
    report.SetTreeSubItem(TVI_ROOT, 1);
    report.GetVisibleAncestor(TVI_ROOT);
    report.SetTreeFocus(TVI_ROOT);
}

// In a fraction of a second each: none takes the square of it.
TEST_F(ReportHostile, HoldsDeepTreesAndManyRows)
{
    constexpr int kLevels = 100000;
    Create(RVS_TREE);
    Define({"a"});
    std::vector<_TREEITEM*> chain = {nullptr};
    for (int level = 0; level < kLevels; ++level)
        chain.push_back(report.InsertTreeItem(chain.back(), nullptr, "x"));
    for (std::size_t level = kLevels; level > 0; --level)
        report.Expand(chain[level], RVE_EXPAND);
    EXPECT_EQ(Line(kLevels, kLevels), Line(report.GetRowCount(), report.GetItemCount(TVI_ROOT, 1)));
    Select(kLevels - 1, 0);
    for (int sibling = 0; sibling < 1000; ++sibling)
        report.InsertTreeItem(chain.back(), nullptr, sibling % 2 ? "a" : "b"); // among so many rows
    EXPECT_EQ(1, report.SortItems(0, 1));
    EXPECT_EQ(kLevels - 1, report.GetCurrentFocus());
    EXPECT_EQ(1, report.DeleteTreeItem(chain[2]));
    EXPECT_EQ(1, report.GetRowCount());

    Create();
    Fill(Texts(300000, "x"));
    EXPECT_EQ(299999, report.GetRowFromItem(299999));
}

TEST_F(ReportHostile, LeavesNothingBehind)
{
    ExpectNothingLeft([this] { // windows and drags
        report.DeleteAllColors();
        Show(WS_VISIBLE);
        report.InsertColor(0, 1);
        report.SetBkImage("no such file");
        report.SortItems(1, 0);
        MouseOnHeader(WM_LBUTTONDOWN, 25);
        for (const int x : {70, 130, 200, 130})
        {
            MouseOnHeader(WM_MOUSEMOVE, x, x == 200 ? 100 : kHeaderY);
            ::RedrawWindow(header, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
            ::UpdateWindow(::FindWindow("MFCFHDragWnd", nullptr));
        }
        MouseOnHeader(WM_LBUTTONUP, 130);
        EXPECT_EQ("bca", Columns());
    });
    Show(WS_VISIBLE | RVS_HORIZONTALGRID | RVS_TREE | RVS_ALTERNATEROWS | RVS_FIXEDROW, Texts(4, "x"));
    report.SetItemCheck(1, 1, 3);
    report.SetItemState(2, RVIS_BOLD, RVIS_BOLD);
    report.InsertColor(0, 1);
    ExpectNothingLeft([this] { // paints
        report.ModifyStyle(RVS_VERTICALGRID, report.GetStyle() & RVS_VERTICALGRID ? 0 : RVS_VERTICALGRID);
        report.SetColor(0, report.GetColor(0) + 1);
        report.SendMessage(WM_SYSCOLORCHANGE);
        report.SendMessage(WM_SETFONT, 0, TRUE);
        Redraw();
    });
}

} // namespace
