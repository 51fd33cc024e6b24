// Owners that act at a bad moment: each act from within each notification and callback of each event.
#include "tests/report/ReportFixture.h"

#include <map>
#include <set>

namespace
{

constexpr int kItemHeight = 20;

// Tells of every moment at which somebody else's code runs.
class MomentReport : public TestReport
{
public:
    std::function<void(const std::string&)> moment;

    void Tell(const std::string& kind) const
    {
        if (moment)
            moment(kind);
    }
    void SelectRows(int row, int anchor, int select, int add, int toggle, int redraw) override
    {
        Tell("select");
        if (std::max(row, anchor) < GetRowCount())
            TestReport::SelectRows(row, anchor, select, add, toggle, redraw);
    }
    int CompareItems(int item1, int subitem1, int item2, int subitem2) override
    {
        Tell("compare");
        return TestReport::CompareItems(item1, subitem1, item2, subitem2);
    }

protected:
    int BeginEdit(int, int, unsigned) override
    {
        Tell("edit");
        return 0;
    }
    __int64 OnRvnItemCallbackBypass(_NMREPORTVIEW* notification) override
    {
        Tell("callback");
        _RVITEM& item = reinterpret_cast<_NMRVITEMCALLBACK*>(notification)->item;
        item.mask = RVIM_TEXT | RVIM_STATE | RVIM_PREVIEWHEIGHT;
        item.previewHeight = 9;
        std::snprintf(item.text, static_cast<std::size_t>(item.textMax), "%c", 'a' + item.item % 26);
        return 0;
    }
    __int64 OnRvnItemDrawPreviewBypass(_NMREPORTVIEW*) override
    {
        Tell("preview");
        return 0;
    }
};

class ReportMoments : public ReportTestOf<MomentReport>
{
protected:
    ReportMoments()
    {
        parent.ShowWindow(SW_SHOWNOACTIVATE);
        parent.answer = [this](NMHDR& header) {
            report.Tell(std::to_string(static_cast<int>(header.code)));
            return 0;
        };
    }

    // Six rows, the first of a tree expanded, with the focus on a cell of the third.
    void Show(DWORD style)
    {
        report.moment = nullptr;
        report.UndefineAllSubItems();
        report.ModifyStyle(RVS_CALLBACK | RVS_TREE, 0);
        report.DeleteAllItems();
        Create(style | WS_VISIBLE | RVS_CELLFOCUS | RVS_DRAGCOLUMNS);
        report.ModifyProperty(RVP_KEYS, RVK_ALL);
        report.SetItemHeight(kItemHeight);
        Define({"a", "b", "c"});
        if (style & RVS_CALLBACK)
            report.SetItemCount(6);
        else
            Fill({"f", "e", "d", "c", "b", "a"});
        if (tree)
        {
            report.InsertTreeItem(report.GetItemHandle(0), nullptr, "child");
            report.Expand(report.GetItemHandle(0), RVE_EXPAND);
        }
        else if (!(style & RVS_CALLBACK))
        {
            report.Struct(1).previewText = "preview";
            report.Struct(1).previewHeight = 9;
            report.Struct(2).state |= RVIS_OWNERDRAWN;
        }
        report.SelectRows(2, 1, 1, 0, 0, 0);
        report.AdjustFocus(2, 1);
        report.UpdateWindow();
    }

    static void Send(HWND hwnd, UINT message, WPARAM wParam, int x = 0, int y = 0)
    {
        ::SendMessage(hwnd, message, wParam, MAKELPARAM(x, y));
    }
    void Mouse(UINT message, int x, int y, WPARAM flags = MK_LBUTTON) { Send(report, message, flags, x, y); }
    void Key(UINT key, BYTE control = 0)
    {
        BYTE keys[256] = {};
        keys[VK_CONTROL] = control;
        ::SetKeyboardState(keys);
        Send(report, WM_KEYDOWN, key);
        keys[VK_CONTROL] = 0;
        ::SetKeyboardState(keys);
    }
    void Header(std::initializer_list<UINT> messages, int x, int toX)
    {
        const HWND header = ::FindWindowEx(report, nullptr, WC_HEADERA, nullptr);
        for (const UINT message : messages)
            Send(header, message, MK_LBUTTON, message == messages.begin()[0] ? x : toX, 5);
    }
    void Paint() { report.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW); }

    // What is there can be used.
    void ExpectUsable()
    {
        report.moment = nullptr;
        const int rows = report.GetRowCount();
        EXPECT_LT(report.GetCurrentFocus(), std::max(rows, 1));
        int first = 0;
        int last = 0;
        report.GetSelectedRows(&first, &last);
        EXPECT_TRUE(first >= 0 && last >= -1 && last <= rows) << Selected();
        for (int row = 0; row < rows; ++row)
            EXPECT_EQ(row, report.GetRowFromItem(report.GetItemFromRow(row)));
        if (!report.m_hWnd)
            return;
        EXPECT_LT(report.GetCurrentFocusColumn(), std::max(report.GetActiveSubItemCount(), 1));
        Paint();
        Mouse(WM_LBUTTONDOWN, 60, 3 * kItemHeight);
        Key(VK_UP);
        Key(VK_NEXT);
    }
};

TEST_F(ReportMoments, NothingBreaksWhateverAnOwnerDoesThen)
{
    using Act = std::pair<const char*, std::function<void()>>;
    const int y = 3 * kItemHeight; // in the third row, whatever the header's height
    const Act events[] = {
        {"click", [&] { Mouse(WM_LBUTTONDOWN, 60, y); }},
        {"shift click", [&] { Mouse(WM_LBUTTONDOWN, 10, 2 * y, MK_LBUTTON | MK_SHIFT); }},
        {"box", [&] { Mouse(WM_LBUTTONDOWN, kItemHeight / 2, kItemHeight + 10); }},
        {"double click", [&] { Mouse(WM_LBUTTONDBLCLK, 60, kItemHeight + 15); }},
        {"right click", [&] { Mouse(WM_RBUTTONDOWN, 60, 2 * y); }},
        {"down", [&] { Key(VK_DOWN); }},
        {"page", [&] { Key(VK_NEXT); }},
        {"end", [&] { Key(VK_END); }},
        {"space", [&] { Key(VK_SPACE, 0x80); }},
        {"right", [&] { Key(VK_RIGHT); }},
        {"expand", [&] { Key(VK_ADD); }},
        {"multiply", [&] { Key(VK_MULTIPLY, 0x80); }},
        {"wider", [&] { Key(VK_ADD, 0x80); }},
        {"all", [&] { Key('A', 0x80); }},
        {"type", [&] { Key('B'), Send(report, WM_CHAR, 'b'); }},
        {"sort", [&] { report.SortItems(0, 1); }},
        {"insert sorted", [&] { report.InsertTreeItem(nullptr, TVI_SORT, "bb"); }},
        {"width", [&] { report.SetSubItemWidth(0, 70); }},
        {"header click",
         [&] {
             Header({WM_LBUTTONDOWN, WM_LBUTTONUP}, 25, 25);
         }},
        {"divider",
         [&] {
             Header({WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP}, 50, 80);
         }},
        {"fit", [&] { Header({WM_LBUTTONDBLCLK}, 50, 50); }},
        {"column",
         [&] {
             Header({WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP}, 25, 130);
         }},
        {"header right click", [&] { Header({WM_RBUTTONUP}, 25, 25); }},
        {"paint", [&] { Paint(); }},
        {"scroll", [&] { Send(report, WM_VSCROLL, SB_PAGEDOWN), report.EnsureVisible(5, 0); }},
        {"line", [&] { report.GetItemString(2, ';'), report.GetItemText(2, 1); }},
    };
    const std::function<void()>* present = nullptr; // event
    const Act acts[] = {
        {"destroy", [&] { report.DestroyWindow(); }},
        {"delete all", [&] { report.DeleteAllItems(), report.SetItemCount(0); }},
        {"delete", [&] { report.DeleteItem(0), report.SetItemCount(2); }},
        {"undefine", [&] { report.UndefineAllSubItems(); }},
        {"hide", [&] { report.DeactivateSubItem(0); }},
        {"insert", [&] { report.InsertItem(0, "new"), report.SetItemCount(9); }},
        {"sort", [&] { report.SortItems(0, 0); }},
        {"paint", [&] { Paint(); }},
        {"fold", [&] { report.Expand(report.GetNextItem(TVI_ROOT, RVGN_CHILD), RVE_TOGGLE); }},
        {"list", [&] { report.ModifyStyle(RVS_TREE | RVS_CALLBACK | RVS_CELLFOCUS, 0); }},
        {"tree", [&] { report.ModifyStyle(0, RVS_TREE); }},
        {"callback", [&] { report.ModifyStyle(0, RVS_CALLBACK); }},
        {"again", [&] { (*present)(); }},
        {"click", [&] { Mouse(WM_LBUTTONDOWN, 10, y); }},
    };
    std::set<std::string> kinds;
    for (const DWORD style : {DWORD{0}, RVS_TREE, RVS_CALLBACK})
    {
        for (const auto& [eventName, event] : events)
        {
            present = &event;
            std::set<std::string> moments;
            Show(style);
            report.moment = [&](const std::string& kind) { moments.insert(kind); };
            event();
            kinds.insert(moments.begin(), moments.end());
            for (const std::string& moment : moments)
            {
                for (const auto& [actName, act] : acts)
                {
                    SCOPED_TRACE(testing::Message() << "style " << style << ", " << eventName << ", in "
                                                    << moment << ": " << actName);
                    Show(style);
                    bool done = false;
                    report.moment = [&](const std::string& kind) {
                        if (kind == moment && !std::exchange(done, true))
                            act();
                    };
                    EXPECT_NO_THROW(event());
                    EXPECT_TRUE(done);
                    ExpectUsable();
                }
            }
        }
    }
    EXPECT_EQ((std::set<std::string>{"-2049", "-2050", "-2053", "-2054", "-2059", "-2060", "-2061", "-2063",
                                     "-2066", "callback", "compare", "edit", "preview", "select"}),
              kinds);
}

} // namespace
