// The report control under keys, mouse and scroll bars: that messages reach the rules, and what the parent
// has to say about them.
#include "tests/report/ReportFixture.h"
#include "tests/support/Keys.h"

namespace
{

using ReportInput = ReportTest;

TEST_F(ReportInput, KeysAndClicksReachTheRules)
{
    ShowRows(0, 100);
    UseSystem();
    Follow(
        {
            {"0 to 0 focus 0,-1 top 0", [&] { Key(VK_DOWN); }},
            {"10 to 10 focus 10,-1 top 1", [&] { Key(VK_NEXT); }},
            {"20 to 20 focus 20,-1 top 11", [&] { report.PageDown(); }},
            {"10 to 10 focus 10,-1 top 10", [&] { report.PageUp(); }},
            {"10 to 99 focus 99,-1 top 90", [&] { Key(VK_END, {VK_SHIFT}); }},
            {"0 to 0 focus 0,-1 top 0", [&] { Key(VK_HOME); }},
            {"0 to 6 focus 6,-1 top 0", [&] { Click(20, 6 * kItemHeight + 5, MK_SHIFT); }},
            {"0 to 4 focus 5,-1 top 0", [&] { Click(20, 5 * kItemHeight + 5, MK_CONTROL); }},
            {"2 to 2 focus 2,-1 top 0", [&] { Mouse(WM_RBUTTONDOWN, 20, 45, MK_RBUTTON); }},
            {"2 to 2 focus 2,-1 top 3", [&] { SystemMouse(MOUSEEVENTF_WHEEL, -WHEEL_DELTA); }},
            {"4 to 8 focus 8,-1 top 3",
             [&] {
                 Mouse(WM_LBUTTONDOWN, 20, 25), Mouse(WM_MOUSEMOVE, 20, 105), Mouse(WM_LBUTTONUP, 20, 105);
             }},
            {"4 to 8 focus 9,-1 top 3", [&] { Key(VK_DOWN, {VK_CONTROL}); }},
            {"4 to 9 focus 9,-1 top 3", [&] { Key(VK_SPACE, {VK_CONTROL}); }},
            {"0 to 99 focus 0,-1 top 0", [&] { report.ScrollWindow(SB_VERT, 0), report.SelectAll(); }},
            {"0 to -1 focus 0,-1 top 0", [&] { report.SelectNone(); }},
            {"0 to 0 focus 0,0 top 0",
             [&] { report.ModifyStyle(0, RVS_CELLFOCUS | RVS_SINGLESELECT), Click(20, 5); }},
            {"4 to 4 focus 4,1 top 0", [&] { Click(60, 4 * kItemHeight + 5, MK_SHIFT); }},
            {"4 to 4 focus 4,2 top 0", [&] { Key(VK_RIGHT); }},
            {"4 to 4 focus 4,1 top 0", [&] { report.DeactivateSubItem(0); }},
            {"4 to 4 focus 4,0 top 0", [&] { Format(0, RVSF_NOCELLFOCUS), Key(VK_LEFT); }},
            {"4 to 4 focus 4,2 top 0", [&] { report.ActivateSubItem(0, 1), Key(VK_RIGHT); }},
            {"4 to 4 focus 4,-1 top 0", [&] { report.ModifyStyle(RVS_CELLFOCUS, 0); }},
        },
        [&] { return State(); });

    ShowRows(RVS_TREE, 2);
    _TREEITEM* const top = report.GetItemHandle(0);
    report.InsertTreeItem(report.InsertTreeItem(top, nullptr, "c"), nullptr, "d");
    Follow(
        {
            {"3", [&] { Click(kItemHeight / 2, kItemHeight / 2); }}, // its box
            {"2", [&] { Mouse(WM_LBUTTONDBLCLK, kItemHeight / 2, kItemHeight / 2); }},
            {"4", [&] { Key(VK_MULTIPLY); }},
            {"2", [&] { Key(VK_SUBTRACT); }},
            {"4", [&] { Key(VK_ADD); }},
        },
        [&] { return std::to_string(report.GetRowCount()); });

    // A row that one cell spans is there without any column.
    ShowRows(RVS_TREE | RVS_CELLFOCUS, 2);
    report.SetTreeSubItem(report.GetItemHandle(1), 0);
    report.DeactivateAllSubItems();
    Click(60, kItemHeight + 5);
    EXPECT_EQ("1 to 1 focus 1,-1 top 0", State());
    for (const auto& [height, y] : {std::pair(kItemHeight, 40), {150, 200}}) // the bottom that is seen
    {
        report.SetItemHeight(height);
        CPoint below(0, y);
        report.ClientToScreen(&below);
        Key(VK_APPS);
        EXPECT_EQ(below, parent.menuPoint) << height;
    }
    EXPECT_EQ(LRESULT{DLGC_WANTARROWS | DLGC_WANTCHARS}, report.SendMessage(WM_GETDLGCODE));
}

TEST_F(ReportInput, ParentIsAskedFirst)
{
    ShowRows(RVS_TREE | RVS_CELLFOCUS, 5);
    report.SetItemData(3, 77);
    Select(1, 1);
    _NMREPORTVIEW asked = {};
    parent.takes = true;
    parent.answer = [&](NMHDR& notified) {
        asked = reinterpret_cast<_NMREPORTVIEW&>(notified);
        return parent.takes;
    };
    ::SetFocus(parent);
    Follow( // item, subitem, key or buttons, point, data
        {
            {Line(RVN_ITEMCLICK, RVHT_ONITEMTEXT, "3 1 5 60 65 77 focused"),
             [&] { Click(60, 65, MK_SHIFT); }},
            {Line(RVN_ITEMDBLCLICK, RVHT_NOWHERE, "-2 -1 1 60 190 0 not"),
             [&] { Mouse(WM_LBUTTONDBLCLK, 60, 190); }},
            {Line(RVN_ITEMRCLICK, RVHT_ONITEMTEXT, "0 1 2 60 5 0 focused"),
             [&] { Mouse(WM_RBUTTONDOWN, 60, 5, MK_RBUTTON); }},
            {Line(RVN_KEYDOWN, "0 1 -1 40 0 0 0 not"), [&] { Key(VK_DOWN); }},
        },
        [&] {
            EXPECT_EQ("1 to 1 focus 1,-1 top 0", State());
            EXPECT_EQ(asked.item < 0 ? nullptr : report.GetItemHandle(asked.item), asked.treeItem);
            const bool isFocused = ::SetFocus(parent) == report.m_hWnd;
            return Line(asked.hdr.code, asked.flags, asked.item, asked.subitem, asked.keys, asked.point.x,
                        asked.point.y, asked.itemData, isFocused ? "focused" : "not");
        });
    parent.takes = false;
    Key(VK_DOWN);
    EXPECT_EQ("2 to 2 focus 2,-1 top 0", State());
    report.ModifyProperty(RVP_NOTIFYMASK, ~std::int64_t{2}); // no clicks: as if the parent had answered 0
    parent.takes = true;
    Click(60, 5);
    EXPECT_EQ("0 to 0 focus 0,1 top 0", State());
    report.DeactivateSubItem(0);
    parent.takes = false;
    Key(VK_RIGHT);
    Key(VK_LEFT);
    EXPECT_EQ(2, asked.subitem) << "of the second column";
    Key(VK_RIGHT);
    ::SendMessage(header, HDM_DELETEITEM, 1, 0); // without the control's knowledge
    Key(VK_DOWN);
    EXPECT_EQ(-1, asked.subitem);
    const int focus = report.GetCurrentFocus();
    parent.answer = [&](NMHDR&) { return report.DestroyWindow(), 0; };
    Key(VK_DOWN);
    EXPECT_EQ(focus, report.GetCurrentFocus()) << "a key moves nothing in a window that it has closed";
}

TEST_F(ReportInput, KeysThatTheOwnerHasSwitchedOn)
{
    Show(WS_VISIBLE | RVS_TREE, {"b", "\xC3\xA4z", "c"});
    report.InsertTreeItem(report.GetItemHandle(0), nullptr, "child\t1");
    report.SetItemText(1, 1, "x");
    CRect row;
    report.GetRowRect(0, -1, row, RVRC_WHOLE);
    EXPECT_EQ(0, report.ModifyProperty(RVP_KEYS, RVK_ALL + 1));
    EXPECT_EQ(1, report.ModifyProperty(RVP_KEYS, RVK_ALL));
    const std::vector<int> both = {VK_CONTROL, VK_SHIFT};
    const auto control = [this](int key) { Key(key, {VK_CONTROL}); };
    Follow(
        {
            {"abc 50 50 0 of 3", [&] { Key(VK_DOWN); }},
            {"abc 50 50 0 of 4", [&] { Key(VK_RIGHT); }},
            {"abc 50 50 0 of 3", [&] { Mouse(WM_LBUTTONDBLCLK, 60, row.top + 5); }},
            {"abc 50 50 0 of 4", [&] { Mouse(WM_LBUTTONDBLCLK, 60, row.top + 5); }},
            {"abc 50 50 0 of 4",
             [&] { report.SetItemCheck(0, 0, 1), Mouse(WM_LBUTTONDBLCLK, 30, row.top + 10); }},
            {"abc 50 50 2 of 4", [&] { Type(0xC4); }}, // a capital
            {"abc 50 50 1 of 4", [&] { Key(VK_UP); }},
            {"abc 50 50 0 of 4", [&] { Key(VK_LEFT); }},
            {"bac 50 50 0 of 4", [&] { control(VK_RIGHT), Key(VK_RIGHT, both); }},
            {"bac 50 50 0 of 4", [&] { parent.takes = true, Key(VK_RIGHT, both), parent.takes = false; }},
            {"bac 58 50 0 of 4", [&] { control(VK_ADD); }},
            {"baca+ 58 50 0 of 4", [&] { Key(VK_SPACE, both); }},
            {"aca+ 66 50 0 of 4",
             [&] { report.DeactivateSubItem(1), control(VK_ADD); }}, // the mark has gone along
            {"baca+ 58 50 0 of 4",
             [&] {
                 report.ActivateSubItem(1, 0), report.ModifyProperty(RVP_MARGIN, 6), control(VK_SUBTRACT);
             }},
            {"baa+ 58 58 0 of 4", [&] { control(VK_LEFT), report.DeactivateSubItem(2), control(VK_ADD); }},
            {"baca+ 58 58 0 of 4", [&] { report.ActivateSubItem(2, 2); }},
            {"baca+ 58 58 1 of 4",
             [&] { report.ModifyStyle(0, RVS_SINGLESELECT), Key(VK_DOWN), control('A'); }},
        },
        [&] {
            return Line(Columns() + SortMark(), report.GetSubItemWidth(0), report.GetSubItemWidth(1),
                        report.GetCurrentFocus(), "of", report.GetRowCount());
        });
    EXPECT_EQ("1 to 1 focus 1,-1 top 0", State());
    control(VK_RIGHT), control(VK_MULTIPLY); // fits it
    EXPECT_NE(58, report.GetSubItemWidth(0));
    EXPECT_EQ(RVN_COLUMNCHANGED, parent.codes.back());
    report.ModifyStyle(RVS_SINGLESELECT, 0);
    control('A'), control('C');
    EXPECT_EQ("\tb\t\r\n\tchild 1\t\r\n\tc\t\r\nx\t\xC3\xA4z\t\r\n", ClipboardText(report, CF_UNICODETEXT));
}

TEST_F(ReportInput, DragSelectsAndScrolls)
{
    ShowRows(0, 100);
    ::SetCursorPos(0, 0);
    const auto timer = [&] { report.SendMessage(WM_TIMER, 1); };
    const auto end = [&] { Mouse(WM_LBUTTONUP, 20, -1), Mouse(WM_MOUSEMOVE, 20, 105, 0), timer(); };
    Hold({VK_LBUTTON}, true);
    Follow(
        {
            {"2 to 2 focus 2,-1 top 0", [&] { Mouse(WM_LBUTTONDOWN, 20, 45); }},
            {"2 to 5 focus 5,-1 top 0", [&] { Mouse(WM_MOUSEMOVE, 20, 105); }},
            {"2 to 10 focus 10,-1 top 1", [&] { Mouse(WM_MOUSEMOVE, 20, 500); }},
            {"2 to 12 focus 12,-1 top 3", [&] { timer(), timer(); }},
            {"2 to 2 focus 2,-1 top 2", [&] { Mouse(WM_MOUSEMOVE, 20, -1); }},
            {"2 to 2 focus 2,-1 top 2", end},
            {"2 to 4 focus 4,-1 top 2", [&] { Mouse(WM_LBUTTONDOWN, 20, 45, MK_LBUTTON | MK_SHIFT); }},
            {"2 to 2 focus 2,-1 top 2", [&] { Mouse(WM_MOUSEMOVE, 20, 5); }},
            {"2 to 2 focus 2,-1 top 2", end},
            {"4 to 4 focus 4,-1 top 2", [&] { Mouse(WM_LBUTTONDOWN, 20, 45, MK_LBUTTON | MK_CONTROL); }},
            {"4 to 4 focus 4,-1 top 2", [&] { Mouse(WM_MOUSEMOVE, 20, 145); }}, // which drags nothing
        },
        [&] { return State(); });
    Hold({VK_LBUTTON}, false);
    EXPECT_EQ(nullptr, ::GetCapture());
}

TEST_F(ReportInput, BarsScroll)
{
    ShowRows(0, 100);
    const auto thumb = [&](WPARAM code, int row) {
        ::SetScrollPos(report, SB_VERT, row, FALSE), report.SendMessage(WM_VSCROLL, code);
        return report.SendMessage(WM_VSCROLL, SB_LINEDOWN);
    };
    const auto removeLast = [&] { return report.DeleteItem(report.GetItemCount() - 1); };
    Follow(
        {
            {"99 10 5", [&] { report.ScrollWindow(SB_VERT, 5); }},
            {"99 10 6", [&] { report.SendMessage(WM_VSCROLL, SB_LINEDOWN); }},
            {"99 10 6", [&] { report.SendMessage(WM_VSCROLL, SB_ENDSCROLL); }},
            {"99 10 90", [&] { report.SendMessage(WM_VSCROLL, SB_BOTTOM); }},
            {"99 8 90", [&] { report.SetItemHeight(25); }},
            {"99 10 90", [&] { report.SetItemHeight(kItemHeight); }},
            {"97 10 88", [&] { removeLast(), removeLast(); }}, // what is shown moves with the end
            {"97 10 3", [&] { report.EnsureVisible(3, 2); }},
            {"97 10 3", [&] { EXPECT_EQ(0, report.EnsureVisible(98, 0)); }},
            {"97 10 88",
             [&] { report.ScrollWindow(SB_VERT, 98), report.SendMessage(WM_VSCROLL, SB_PAGEUP); }},
            {"97 10 31", [&] { thumb(SB_THUMBTRACK, 30); }},
            {"97 10 51", [&] { thumb(SB_THUMBPOSITION, 50); }},
        },
        [&] {
            report.UpdateWindow();
            SCROLLINFO info = {};
            EXPECT_TRUE(report.GetScrollInfo(SB_VERT, &info));
            return Line(info.nMax, info.nPage, info.nPos);
        });

    report.SetSubItemWidth(2, 400); // of 500 in all
    report.UpdateWindow();
    report.SendMessage(WM_HSCROLL, SB_RIGHT);
    const int end = report.GetScrollPos32(SB_HORZ);
    EXPECT_LT(150, end);
    Follow(
        {
            {Line(end), [&] { Key(VK_RIGHT); }},
            {Line(end - 300 / 8 + 2), [&] { Key(VK_LEFT); }}, // a part of what is seen beside the bar
            {"100", [&] { report.EnsureVisibleColumn(2); }},  // wider than the view: its left edge
        },
        [&] { return Line(report.GetScrollPos32(SB_HORZ)); });

    ShowRows(RVS_TREE, 1);
    _TREEITEM* const top = report.GetItemHandle(0);
    for (int child = 0; child < 50; ++child)
        report.InsertTreeItem(top, nullptr, "x");
    report.Expand(top, RVE_EXPAND);
    report.SendMessage(WM_VSCROLL, SB_BOTTOM);
    report.Expand(top, RVE_COLLAPSE);
    EXPECT_EQ("1 1", Line(report.GetRowCount(), report.GetTopIndex())) << "not painted yet";
    report.UpdateWindow();
    EXPECT_EQ(0, report.GetTopIndex());
}

TEST_F(ReportInput, WheelTurnsRowsAndColumns)
{
    const auto turn = [this](unsigned lines, UINT message, int delta) {
        report.wheelLines = lines;
        report.SendMessage(WM_SETTINGCHANGE);
        report.SendMessage(message, MAKEWPARAM(0, delta));
        const char* const codes[] = {"up ", "down ", "page up ", "page "};
        std::string posted;
        for (MSG told; ::PeekMessage(&told, report, WM_VSCROLL, WM_VSCROLL, PM_REMOVE);)
            posted += codes[told.wParam];
        return posted + std::to_string(report.GetScrollPos32(SB_HORZ));
    };
    Define({"a"});
    report.SetSubItemWidth(0, 1000);
    std::string posted;
    for (const auto& [lines, delta] :
         {std::pair(3u, 120), {3, 60}, {3, 30}, {3, -120}, {WHEEL_PAGESCROLL, -240}})
        posted += turn(lines, WM_MOUSEWHEEL, delta) + ", ";
    EXPECT_EQ("up up up 0, up 0, 0, down down down 0, page page 0, ", posted);
    const std::string right = turn(2, WM_MOUSEHWHEEL, 240);
    EXPECT_GT(std::stoi(right), 0);
    EXPECT_EQ(std::stoi(right) / 2, std::stoi(turn(2, WM_MOUSEHWHEEL, -120)));
}

TEST_F(ReportInput, ACellOfTheFixedRowIsEdited)
{
    Show(RVS_FIXEDROW | RVS_NOHEADER, {"1"});
    std::string told;
    report.moment = [&](std::string_view kind) {
        told += kind.starts_with("edit") ? std::string(kind) + ' ' : "";
    };
    Click(20, 10);
    Click(20, 10);
    Type('q');
    parent.takes = true;
    Type('r'); // which the owner has taken
    EXPECT_EQ("edit -1 0 1 edit -1 0 113 ", told);
}

} // namespace
