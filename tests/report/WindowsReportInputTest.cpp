// The report control under keys, mouse and scroll bars: that messages reach the rules, and what the parent
// has to say about them.
#include "tests/report/ReportFixture.h"

#include <random>

namespace
{

constexpr int kItemHeight = 20;

class ReportInput : public ReportTest
{
protected:
    void Show(DWORD style, int items)
    {
        report.UndefineAllSubItems();
        report.DeleteAllItems();
        Create(style | WS_VISIBLE | RVS_NOHEADER); // 10 rows of 300 pixels
        parent.ShowWindow(SW_SHOWNOACTIVATE);
        report.SetItemHeight(kItemHeight);
        Define({"a", "b", "c"});
        for (int item = 0; item < items; ++item)
            Fill({"x"});
        report.UpdateWindow();
        parent.codes.clear();
    }
    void Key(UINT key) { report.SendMessage(WM_KEYDOWN, key); }
    void Mouse(UINT message, int x, int y, WPARAM flags = 0)
    {
        report.SendMessage(message, flags, MAKELPARAM(x, y));
    }
    void Click(int x, int y, WPARAM flags = 0)
    {
        Mouse(WM_LBUTTONDOWN, x, y, MK_LBUTTON | flags);
        Mouse(WM_LBUTTONUP, x, y, flags);
    }
    std::string State()
    {
        return Selected() + " focus " + std::to_string(report.GetCurrentFocus()) + ',' +
               std::to_string(report.GetCurrentFocusColumn()) + " top " +
               std::to_string(report.GetTopIndex());
    }
    // What the window shows.
    std::vector<DWORD> Pixels()
    {
        constexpr int kWidth = 300, kHeight = 200;
        BITMAPINFO info = {};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), kWidth, kHeight, 1, 32, 0, 0, 0, 0, 0, 0};
        std::vector<DWORD> pixels(kWidth * kHeight);
        CClientDC dc(&report);
        CDC memory;
        memory.CreateCompatibleDC(&dc);
        CBitmap bitmap;
        bitmap.CreateCompatibleBitmap(&dc, kWidth, kHeight);
        {
            const auto old = ::SelectObject(memory, bitmap.GetSafeHandle());
            memory.BitBlt(0, 0, kWidth, kHeight, &dc, 0, 0, SRCCOPY);
            ::SelectObject(memory, old);
        }
        EXPECT_NE(0, ::GetDIBits(memory, bitmap, 0, kHeight, pixels.data(), &info, DIB_RGB_COLORS));
        return pixels;
    }
    static int Posted(UINT message)
    {
        MSG posted = {};
        int count = 0;
        while (::PeekMessage(&posted, nullptr, message, message, PM_REMOVE))
            count += posted.wParam <= SB_LINEDOWN ? 1 : 100;
        return count;
    }
};

TEST_F(ReportInput, KeysAndClicksReachTheRules)
{
    Show(0, 100);
    const std::tuple<const char*, std::function<void()>> steps[] = {
        {"0 to 0 focus 0,-1 top 0", [&] { Key(VK_DOWN); }},
        {"10 to 10 focus 10,-1 top 1", [&] { Key(VK_NEXT); }},
        {"20 to 20 focus 20,-1 top 11", [&] { report.PageDown(); }},
        {"10 to 10 focus 10,-1 top 10", [&] { Key(VK_PRIOR); }},
        {"99 to 99 focus 99,-1 top 90", [&] { Key(VK_END); }},
        {"0 to 0 focus 0,-1 top 0", [&] { Key(VK_HOME); }},
        {"0 to 6 focus 6,-1 top 0", [&] { Click(20, 6 * kItemHeight + 5, MK_SHIFT); }},
        {"0 to 4 focus 5,-1 top 0", [&] { Click(20, 5 * kItemHeight + 5, MK_CONTROL); }},
        {"0 to 5 focus 5,-1 top 0", [&] { Click(20, 5 * kItemHeight + 5, MK_CONTROL); }},
        {"2 to 2 focus 2,-1 top 0", [&] { Mouse(WM_RBUTTONDOWN, 20, 2 * kItemHeight, MK_RBUTTON); }},
        {"0 to 99 focus 0,-1 top 0", [&] { report.SelectAll(); }},
        {"0 to 0 focus 0,0 top 0",
         [&] { report.ModifyStyle(0, RVS_CELLFOCUS | RVS_SINGLESELECT), Click(20, 5); }},
        {"4 to 4 focus 4,1 top 0", [&] { Click(60, 4 * kItemHeight + 5, MK_SHIFT); }},
        {"4 to 4 focus 4,-1 top 0", [&] { report.ModifyStyle(RVS_CELLFOCUS, 0); }},
    };
    for (const auto& [expected, act] : steps)
    {
        act();
        EXPECT_EQ(expected, State());
        const int focus = report.GetCurrentFocus();
        EXPECT_TRUE((report.Struct(focus).state & RVIS_FOCUSED) && !report.Struct((focus + 1) % 100).state);
    }
    Show(RVS_TREE, 2);
    _TREEITEM* const top = report.GetItemHandle(0);
    report.InsertTreeItem(report.InsertTreeItem(top, nullptr, "c"), nullptr, "d");
    const std::pair<int, std::function<void()>> folds[] = {
        {3, [&] { Click(kItemHeight / 2, kItemHeight / 2); }}, // its box
        {2, [&] { Mouse(WM_LBUTTONDBLCLK, kItemHeight / 2, kItemHeight / 2); }},
        {4, [&] { Key(VK_MULTIPLY); }},
        {2, [&] { Key(VK_SUBTRACT); }},
        {4, [&] { Key(VK_ADD); }},
    };
    for (const auto& [rows, act] : folds)
    {
        act();
        EXPECT_EQ(rows, report.GetRowCount());
    }
}

TEST_F(ReportInput, WhatHasChangedIsPainted)
{
    Show(RVS_CELLFOCUS | RVS_TREE, 8);
    report.SetFocus();
    std::mt19937 random(7);
    const auto below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    const UINT keys[] = {VK_UP, VK_DOWN, VK_LEFT, VK_RIGHT, VK_SPACE, VK_HOME, VK_END};
    const WPARAM modifiers[] = {0, 0, MK_SHIFT, MK_CONTROL};
    for (int step = 0; step < 200; ++step)
    {
        const int what = below(20);
        if (what < 9)
            Key(keys[below(static_cast<int>(std::size(keys)))]);
        else if (what < 18) // on cells, right of them and below them
            Click(below(300), below(200), modifiers[below(4)]);
        else if (what == 18)
            report.SetTreeFocus(report.GetItemHandle(below(8)));
        else
            report.GetTreeFocus();
        report.UpdateWindow();
        const std::vector<DWORD> shown = Pixels();
        report.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        ASSERT_TRUE(shown == Pixels()) << "step " << step << ": " << what << ", " << State();
    }
}

TEST_F(ReportInput, ParentIsAskedFirst)
{
    Show(RVS_TREE | RVS_CELLFOCUS, 5);
    report.SelectRows(1, 1, 1, 0, 0, 0);
    _NMREPORTVIEW asked = {};
    LRESULT answer = 1;
    parent.answer = [&](NMHDR& header) {
        asked = reinterpret_cast<_NMREPORTVIEW&>(header);
        return answer;
    };
    Click(60, 3 * kItemHeight + 5, MK_SHIFT);
    EXPECT_EQ("1 to 1 focus 1,-1 top 0", State());
    EXPECT_EQ(RVN_ITEMCLICK, asked.hdr.code);
    EXPECT_EQ(3, asked.item);
    EXPECT_EQ(1, asked.subitem);
    EXPECT_EQ(RVHT_ONITEMTEXT, asked.flags);
    EXPECT_EQ(UINT{MK_LBUTTON | MK_SHIFT}, asked.keys);
    EXPECT_EQ(report.GetItemHandle(3), asked.treeItem);
    Mouse(WM_LBUTTONDBLCLK, 60, 190);
    EXPECT_EQ(RVN_ITEMDBLCLICK, asked.hdr.code);
    EXPECT_EQ(RVI_NONE, asked.item);
    Mouse(WM_RBUTTONDOWN, 60, 5);
    EXPECT_EQ(RVN_ITEMRCLICK, asked.hdr.code);
    Key(VK_DOWN);
    EXPECT_EQ(RVN_KEYDOWN, asked.hdr.code);
    EXPECT_EQ(UINT{VK_DOWN}, asked.keys);
    EXPECT_EQ(1, asked.item);
    EXPECT_EQ(-1, asked.subitem);
    EXPECT_EQ("1 to 1 focus 1,-1 top 0", State());
    answer = 0;
    Key(VK_DOWN);
    EXPECT_EQ("2 to 2 focus 2,-1 top 0", State());
    report.ModifyProperty(RVP_NOTIFYMASK,
                          ~static_cast<__int64>(2)); // no clicks: as if the parent had answered 0
    answer = 1;
    Click(60, 5);
    EXPECT_EQ("0 to 0 focus 0,1 top 0", State());
}

TEST_F(ReportInput, ARowThatOneCellSpansIsClickedWithoutAnyColumn)
{
    Show(RVS_TREE | RVS_CELLFOCUS, 2);
    report.SetTreeSubItem(report.GetItemHandle(1), 0);
    report.DeactivateAllSubItems();
    Click(60, kItemHeight + 5);
    EXPECT_EQ("1 to 1 focus 1,-1 top 0", State());
}

TEST_F(ReportInput, KeysThatTheOwnerHasSwitchedOn)
{
    Show(RVS_TREE, 0);
    Fill({"b", "\xC3\xA4z", "c"});
    report.InsertTreeItem(report.GetItemHandle(0), nullptr, "child\t1");
    report.SetItemText(1, 1, "x");
    const auto control = [this](UINT key, bool shift = false) {
        BYTE keys[256] = {};
        keys[VK_CONTROL] = 0x80;
        keys[VK_SHIFT] = shift ? 0x80 : 0;
        ::SetKeyboardState(keys);
        Key(key);
        keys[VK_CONTROL] = keys[VK_SHIFT] = 0;
        ::SetKeyboardState(keys);
    };
    EXPECT_EQ(0, report.ModifyProperty(RVP_KEYS, RVK_ALL + 1));
    EXPECT_EQ(1, report.ModifyProperty(RVP_KEYS, RVK_ALL));
    Key(VK_DOWN);
    Key(VK_RIGHT);
    EXPECT_EQ(4, report.GetRowCount());
    Mouse(WM_LBUTTONDBLCLK, 60, 5);
    EXPECT_EQ(3, report.GetRowCount());
    Mouse(WM_LBUTTONDBLCLK, 60, 5);
    for (const UINT byte : {0xC3u, 0x84u}) // a capital
    {
        Key('Q');
        report.SendMessage(WM_CHAR, byte);
    }
    EXPECT_EQ("2 to 2 focus 2,-1 top 0", State());
    Key(VK_UP);
    Key(VK_LEFT);
    EXPECT_EQ("0 to 0 focus 0,-1 top 0", State());

    control(VK_RIGHT);
    control(VK_RIGHT, true); // "b a c"
    control(VK_ADD);
    EXPECT_EQ(1, report.GetColumnFromSubItem(0));
    EXPECT_EQ(58, report.GetSubItemWidth(0));
    EXPECT_EQ(std::vector<UINT>{RVN_COLUMNCHANGED},
              std::vector<UINT>(parent.codes.end() - 1, parent.codes.end()));
    control(VK_SPACE, true);
    int subitem = -1;
    int ascending = 0;
    EXPECT_TRUE(report.GetSortSettings(&subitem, &ascending) && subitem == 0 && ascending);
    report.DeactivateSubItem(1); // what is marked goes along
    control(VK_MULTIPLY);
    EXPECT_NE(58, report.GetSubItemWidth(0));
    report.ActivateSubItem(1, 0);

    control('A');
    control('C');
    ASSERT_TRUE(::OpenClipboard(report));
    EXPECT_EQ(std::wstring(L"\tb\t\r\n\tchild 1\t\r\n\tc\t\r\nx\t\u00E4z\t\r\n"),
              static_cast<const wchar_t*>(::GlobalLock(::GetClipboardData(CF_UNICODETEXT))));
    ::CloseClipboard();
}

TEST_F(ReportInput, DragSelectsAndScrolls)
{
    Show(0, 100);
    ::SetCursorPos(0, 0);
    BYTE keys[256] = {};
    keys[VK_LBUTTON] = 0x80;
    ::SetKeyboardState(keys);
    Mouse(WM_LBUTTONDOWN, 20, 2 * kItemHeight + 5, MK_LBUTTON);
    Mouse(WM_MOUSEMOVE, 20, 5 * kItemHeight + 5, MK_LBUTTON);
    EXPECT_EQ("2 to 5 focus 5,-1 top 0", State());
    Mouse(WM_MOUSEMOVE, 20, 500, MK_LBUTTON);
    EXPECT_EQ("2 to 10 focus 10,-1 top 1", State());
    report.SendMessage(WM_TIMER, 1);
    report.SendMessage(WM_TIMER, 1);
    EXPECT_EQ("2 to 12 focus 12,-1 top 3", State());
    Mouse(WM_MOUSEMOVE, 20, -1, MK_LBUTTON);
    EXPECT_EQ("2 to 2 focus 2,-1 top 2", State());
    keys[VK_LBUTTON] = 0;
    ::SetKeyboardState(keys);
    Mouse(WM_LBUTTONUP, 20, -1);
    EXPECT_EQ(nullptr, ::GetCapture());
    Mouse(WM_MOUSEMOVE, 20, 5 * kItemHeight, 0);
    report.SendMessage(WM_TIMER, 1);
    EXPECT_EQ("2 to 2 focus 2,-1 top 2", State());
}

TEST_F(ReportInput, BarsAndWheelScroll)
{
    Show(0, 100);
    const std::tuple<WPARAM, int, int> cases[] = {
        {SB_LINEDOWN, 5, 6}, {SB_LINEUP, 5, 4},    {SB_PAGEDOWN, 5, 14}, {SB_PAGEUP, 25, 16},
        {SB_TOP, 5, 0},      {SB_ENDSCROLL, 7, 7}, {SB_BOTTOM, 5, 90}};
    for (const auto& [code, from, to] : cases)
    {
        report.ScrollWindow(SB_VERT, from);
        report.SendMessage(WM_VSCROLL, code);
        EXPECT_EQ(to, report.GetTopIndex()) << code;
    }
    report.RedrawWindow();
    SCROLLINFO info = {};
    ASSERT_TRUE(report.GetScrollInfo(SB_VERT, &info));
    EXPECT_TRUE(info.nMax == 99 && info.nPage == 10 && info.nPos == 90);
    for (int item = 99; item >= 20; --item) // what is shown moves with the end
        report.DeleteItem(item);
    report.RedrawWindow();
    EXPECT_EQ(10, report.GetTopIndex());
    EXPECT_EQ(1, report.EnsureVisible(3, 2));
    EXPECT_EQ(3, report.GetTopIndex());
    EXPECT_EQ(0, report.EnsureVisible(20, 0));

    report.SetSubItemWidth(2, 400); // of 500 in all
    report.RedrawWindow();
    report.SendMessage(WM_HSCROLL, SB_RIGHT);
    const int end = report.GetScrollPos32(SB_HORZ);
    EXPECT_LT(150, end);
    Key(VK_RIGHT);
    EXPECT_EQ(end, report.GetScrollPos32(SB_HORZ));
    Key(VK_LEFT);
    EXPECT_EQ(end - 300 / 8 + 2, report.GetScrollPos32(SB_HORZ));
    report.EnsureVisibleColumn(2); // wider than the view: its left edge
    EXPECT_EQ(100, report.GetScrollPos32(SB_HORZ));

    class Wheel : public TestReport
    {
    public:
        unsigned lines = 3;
        unsigned GetMouseScrollLines() override { return lines; }
    } wheel;
    wheel.Create(WS_CHILD, CRect(0, 0, 100, 100), &parent, 9);
    const std::tuple<unsigned, int, int> turns[] = {
        {3, 120, 3}, {3, 60, 1}, {3, 30, 0}, {3, -120, 3}, {WHEEL_PAGESCROLL, -240, 200}}; // 100 for a page
    for (const auto& [lines, delta, posted] : turns)
    {
        wheel.lines = lines;
        wheel.SendMessage(WM_SETTINGCHANGE);
        Posted(WM_VSCROLL);
        wheel.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, delta));
        EXPECT_EQ(posted, Posted(WM_VSCROLL)) << lines << ' ' << delta;
    }
}

TEST_F(ReportInput, TheMenuKeyAsksForAMenuBelowTheFocusedRow)
{
    Show(0, 5);
    report.SelectRows(1, 1, 1, 0, 0, 0);
    CRect row;
    report.GetRowRect(1, -1, row, RVRC_WHOLE);
    CPoint below(row.left, row.bottom);
    report.ClientToScreen(&below);
    report.SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(report.m_hWnd), MAKELPARAM(-1, -1));
    EXPECT_EQ(below, parent.menuPoint);
    EXPECT_EQ(LRESULT{DLGC_WANTARROWS | DLGC_WANTCHARS}, report.SendMessage(WM_GETDLGCODE));
}

TEST_F(ReportInput, ACellOfTheFixedRowIsEdited)
{
    class Edited : public TestReport
    {
    public:
        std::string edits;
        int BeginEdit(int row, int column, unsigned key) override
        {
            edits += std::to_string(row) + ',' + std::to_string(column) + ' ' + std::to_string(key) + ' ';
            return 1;
        }
    } edited;
    edited.Create(WS_CHILD | RVS_FIXEDROW | RVS_NOHEADER, CRect(0, 0, 300, 200), &parent, 9);
    _RVSUBITEM definition;
    edited.ActivateSubItem(edited.DefineSubItem(0, &definition), -1);
    edited.SetItemHeight(kItemHeight);
    for (int i = 0; i < 2; ++i)
        edited.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 10));
    edited.SendMessage(WM_KEYDOWN, 'Q');
    edited.SendMessage(WM_CHAR, 'q');
    EXPECT_EQ("-1,0 1 -1,0 113 ", edited.edits);
}

} // namespace
