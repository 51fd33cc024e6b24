// Owners that act at a bad moment: each act from within each notification and callback of each event.
#include "tests/report/ReportFixture.h"
#include "tests/support/LongRun.h"

#include <iterator>
#include <set>

namespace
{

using Act = std::pair<const char*, std::function<void()>>;

class ReportMoments : public ReportTest
{
protected:
    ReportMoments()
    {
        parent.answer = [this](NMHDR& told) {
            report.moment(std::to_string(static_cast<int>(told.code)));
            return 0;
        };
        report.load = [](_RVITEM& item) {
            item.mask = RVIM_TEXT | RVIM_STATE | RVIM_PREVIEWHEIGHT;
            item.previewHeight = 9;
            std::snprintf(item.text, static_cast<std::size_t>(item.textMax), "%c", 'a' + item.item % 26);
            return 0;
        };
    }

    // Has it done, and tells of the moments in it; of drawing only where that is what is done.
    void Do(const Act& event, const std::function<void(std::string_view)>& tell)
    {
        const bool isPaint = event.first == std::string_view("paint");
        report.moment = [&](std::string_view kind) {
            kind = kind.substr(0, kind.find(' '));
            if (isPaint || (kind != "background" && kind != "row" && kind != "item"))
                tell(kind);
        };
        EXPECT_NO_THROW(event.second());
        report.moment = [](std::string_view) {};
    }

    // Six rows, the first of a tree expanded, with the focus on a cell of the third.
    void Begin(DWORD style)
    {
        mode = style;
        report.ModifyProperty(RVP_KEYS, RVK_ALL);
        Show(style | RVS_CELLFOCUS | RVS_DRAGCOLUMNS,
             style & RVS_CALLBACK ? Texts() : Texts{"f", "e", "d", "c", "b", "a"});
        if (style & RVS_CALLBACK)
            report.SetItemCount(6);
        if (tree)
        {
            report.InsertTreeItem(report.GetItemHandle(0), nullptr, "child");
            report.Expand(report.GetItemHandle(0), RVE_EXPAND);
        }
        else if (!(style & RVS_CALLBACK))
        {
            report.SetItemPreview(1, "preview", 9);
            report.SetItemState(2, RVIS_OWNERDRAWN, RVIS_OWNERDRAWN);
        }
        Select(2, 1);
        report.AdjustFocus(2, 1);
        report.ShowWindow(SW_SHOW); // painted once
        report.UpdateWindow();
    }

    // What is there can be used.
    void ExpectUsable()
    {
        ExpectInOrder(report, true);
        EXPECT_FALSE(::FindWindow("MFCFHDragWnd", nullptr) || ::FindWindow("MFCFHDropWnd", nullptr));
        EXPECT_EQ(nullptr, ::GetCapture());
        if (!report.m_hWnd)
            return;
        Redraw();
        Click(60, 3 * kItemHeight);
        Key(VK_UP);
        Key(VK_NEXT);
    }

    DWORD mode = 0;
};

TEST_F(ReportMoments, NothingBreaksWhateverAnOwnerDoesThen)
{
    const int y = 3 * kItemHeight; // in the third row, whatever the header's height
    const Act events[] = {
        {"click", [&] { Click(60, y); }},
        {"shift click", [&] { Click(10, 2 * y, MK_SHIFT); }},
        {"box", [&] { Click(kItemHeight / 2, kItemHeight + 10); }},
        {"double click", [&] { Mouse(WM_LBUTTONDBLCLK, 60, kItemHeight + 15); }},
        {"right click", [&] { Mouse(WM_RBUTTONDOWN, 60, 2 * y); }},
        {"down", [&] { Key(VK_DOWN); }},
        {"page", [&] { Key(VK_NEXT); }},
        {"end", [&] { Key(VK_END); }},
        {"space", [&] { Key(VK_SPACE, {VK_CONTROL}); }},
        {"right", [&] { Key(VK_RIGHT); }},
        {"expand", [&] { Key(VK_ADD); }},
        {"multiply", [&] { Key(VK_MULTIPLY, {VK_CONTROL}); }},
        {"wider", [&] { Key(VK_ADD, {VK_CONTROL}); }},
        {"all", [&] { Key('A', {VK_CONTROL}); }},
        {"type", [&] { Type('b'); }},
        {"sort", [&] { report.SortItems(0, 1); }},
        {"insert sorted", [&] { report.InsertTreeItem(nullptr, TVI_SORT, "bb"); }},
        {"width", [&] { report.SetSubItemWidth(0, 70); }},
        {"header click", [&] { ClickHeader(25); }},
        {"divider", [&] { DragHeader(50, 80); }},
        {"fit", [&] { ClickHeader(50, WM_LBUTTONDBLCLK); }},
        {"column", [&] { DragHeader(25, 130); }},
        {"header right click", [&] { MouseOnHeader(WM_RBUTTONUP, 25, 5); }},
        {"paint", [&] { Redraw(); }},
        {"scroll", [&] { report.SendMessage(WM_VSCROLL, SB_PAGEDOWN), report.EnsureVisible(5, 0); }},
        {"line", [&] { report.GetItemString(2, ';'), report.GetItemText(2, 1); }},
    };
    const Act* present = nullptr; // event
    const Act acts[] = {
        {"destroy", [&] { report.DestroyWindow(); }},
        {"delete all", [&] { report.DeleteAllItems(), report.SetItemCount(0); }},
        {"delete", [&] { report.DeleteItem(0), report.SetItemCount(2); }},
        {"undefine", [&] { report.UndefineAllSubItems(); }},
        {"hide", [&] { report.DeactivateSubItem(0); }},
        {"insert", [&] { report.InsertItem(0, "new"), report.SetItemCount(9); }},
        {"sort", [&] { report.SortItems(0, 0); }},
        {"paint", [&] { Redraw(); }},
        {"fold", [&] { report.Expand(report.GetNextItem(TVI_ROOT, RVGN_CHILD), RVE_TOGGLE); }},
        {"list", [&] { report.ModifyStyle(RVS_TREE | RVS_CALLBACK | RVS_CELLFOCUS, 0); }},
        {"tree", [&] { report.ModifyStyle(0, RVS_TREE); }},
        {"callback", [&] { report.ModifyStyle(0, RVS_CALLBACK); }},
        {"again", [&] { present->second(); }},
        {"click", [&] { Click(10, y); }},
        {"font", [&] { report.SendMessage(WM_SETFONT), report.SetItemHeight(30); }},
        {"create", [&] { Create(mode | WS_VISIBLE); }},
        {"create list", [&] { Create((mode & ~(RVS_TREE | RVS_CALLBACK)) | WS_VISIBLE); }},
        {"create tree", [&] { Create((mode & ~RVS_CALLBACK) | RVS_TREE | WS_VISIBLE); }},
    };
    // The long run has all scenes; of each moment the short one has a fifth of the acts, and the next one
    // others.
    const unsigned step = Rounds(5u, 1u);
    static_assert(std::size(acts) % 5 != 0);
    unsigned scene = 0;
    std::set<std::string> kinds;
    for (const DWORD style : {DWORD{0}, RVS_TREE, RVS_CALLBACK})
    {
        for (const Act& event : events)
        {
            present = &event;
            std::set<std::string> moments;
            Begin(style);
            Do(event, [&](std::string_view kind) { moments.emplace(kind); });
            kinds.insert(moments.begin(), moments.end());
            for (const char* kind : {"record", "load"}) // which answer for what they have done to the items
                moments.erase(kind);
            for (const std::string& moment : moments)
            {
                for (const auto& [name, act] : acts)
                {
                    if (scene++ % step != 0)
                        continue;
                    SCOPED_TRACE(Line("style", style, event.first, "in", moment, name));
                    Begin(style);
                    bool done = false;
                    Do(event, [&](std::string_view kind) {
                        if (kind == moment && !std::exchange(done, true))
                            act();
                    });
                    EXPECT_TRUE(done);
                    ExpectUsable();
                }
            }
        }
    }
    EXPECT_EQ((std::set<std::string>{"-2049", "-2050",  "-2053", "-2054",      "-2059",    "-2060",
                                     "-2061", "-2063",  "-2066", "background", "callback", "compare",
                                     "drag",  "drop",   "edit",  "item",       "load",     "preview",
                                     "quick", "record", "row",   "select",     "tree"}),
              kinds);
}

} // namespace
