// Storms at the report control in each of its modes, with parents that act whenever they are told.
#include "qmcommon/QmWindowText.h"
#include "tests/report/TestReport.h"
#include "tests/support/Storm.h"

#include "ReportHeaderCtrl.h"

#include <commctrl.h>
#include <numeric>

namespace
{

constexpr const char* kChoices[] = {"one", "two", ""};
constexpr DWORD kModes = RVS_CALLBACK | RVS_TREEMASK;

// A control, its parent and what a storm does to them.
class StormedReport
{
public:
    StormedReport(Storm& random, DWORD style, bool isEdited)
        : storm(random), mode(style), edits(isEdited), report(std::make_unique<TestReport>())
    {
        parent.ShowWindow(SW_SHOWNOACTIVATE);
        parent.answer = [this](NMHDR&) -> LRESULT {
            MayAct(4);
            return storm.OneIn(10);
        };
        Open();
    }

    void Run(int steps)
    {
        while (storm.Next(steps))
        {
            parent.codes.clear();
            if (!report->m_hWnd && !storm.OneIn(3))
                Open();
            else if (storm.OneIn(10) && (report->GetRowCount() < 5 || report->GetActiveSubItemCount() == 0))
                Fill();
            else if (storm.OneIn(4))
                Act(acts);
            else
                storm.Send(Target());
            if (storm.OneIn(5))
                Storm::Pump();
            if (storm.OneIn(10))
                ExpectConsistent();
        }
    }

private:
    void Open()
    {
        if (!report || storm.OneIn(5))
            report = std::make_unique<TestReport>();
        TestReport& made = *report;
        made.edits = edits;
        made.moment = [this](std::string_view kind) {
            kind = kind.substr(0, kind.find(' '));
            // The others draw, or answer for an item.
            for (const char* const each :
                 {"select", "callback", "compare", "edit", "drag", "drop", "quick", "tree"})
                if (kind == each)
                    MayAct(60);
        };
        made.load = [this](_RVITEM& item) -> __int64 {
            item.mask = static_cast<std::uint32_t>(storm(0x400)) & ~RVIM_TREELEVEL;
            item.mask |= RVIM_TEXT;
            item.previewHeight = storm(40);
            std::snprintf(item.text, static_cast<std::size_t>(item.textMax), "%d, %d", item.item,
                          item.subitem);
            return storm.OneIn(20);
        };
        made.Create(WS_CHILD | WS_VISIBLE | mode | Styles(), CRect(0, 0, 50 + storm(300), storm(250)),
                    &parent, 7);
        made.ModifyProperty(RVP_KEYS, RVK_ALL);
        made.ModifyProperty(RVP_EDITING, edits ? RVED_ALL : 0);
        made.SetItemHeight(5 + storm(20));
        Fill();
    }

    void Fill()
    {
        for (int column = 0; column < 4; ++column)
            Define(report->GetSubItemCount());
        for (int column = 0; column < 4; ++column)
            report->ActivateSubItem(column, -1);
        report->SetItemCount(storm(100));
        for (int i = storm(30); i > 0; --i)
            Insert();
    }

    DWORD Styles() { return static_cast<DWORD>(storm(0x4000)) & ~kModes; }

    void Define(int subitem)
    {
        if (report->GetSubItemCount() >= 8)
            return;
        _RVSUBITEM definition = {.format = static_cast<std::uint32_t>(storm(4)) |
                                           (storm.OneIn(9) ? RVSF_NOCELLFOCUS : 0),
                                 .width = storm(100),
                                 .text = "caption"};
        report->DefineSubItem(subitem, &definition);
    }

    // An item that can be told from all others, by its data and its preview.
    void Insert()
    {
        int item = -1;
        if (report->GetStyle() & RVS_TREEMASK)
        {
            _TREEITEM* const before[] = {nullptr, TVI_FIRST, TVI_LAST, TVI_SORT};
            item = report->GetItemIndex(report->InsertTreeItem(Tree(), before[storm(4)], Text()));
        }
        else
            item = report->InsertItem(Item(), Text());
        if (item < 0)
            return;
        ++tags;
        report->SetItemData(item, tags);
        report->SetItemPreview(item, std::to_string(tags).c_str(), storm.OneIn(3) ? storm(30) : 0,
                               storm(3) - 1);
        report->SetItemText(item, 1, Text());
        if (storm.OneIn(4))
            report->SetItemState(item, RVIS_OWNERDRAWN, RVIS_OWNERDRAWN);
    }

    const char* Text()
    {
        static const std::vector<const char*> texts = {
            "",         "a",  "banana", "a text that is longer than its column", "two\nlines", "\xFF\x80",
            "\xC3\xA4", "12", "-7"};
        return storm.OneIn(10) ? nullptr : storm.Of(texts);
    }
    int Item() { return storm.Near(report->GetItemCount()); }
    int Row() { return storm.Near(report->GetRowCount()); }
    int SubItem() { return storm.Near(report->GetSubItemCount()); }
    int Column() { return storm.Near(report->GetActiveSubItemCount()); }
    _TREEITEM* Tree()
    {
        const int count = report->GetItemCount();
        return count == 0 || storm.OneIn(5) ? nullptr : report->GetItemHandle(storm(count));
    }

    unsigned __int64 PropertyId()
    {
        return storm.Of(std::vector<unsigned __int64>{1, 2, 4, 6, 9, 10, 11, 12, 256, 257, 258, 259, 260});
    }
    void Edit() // by a call of the base's: the test's own only tells
    {
        static_cast<CReportCtrl&>(*report).BeginEdit(Row(), Column(), static_cast<unsigned>(storm(128)));
    }
    void Cut(int rows)
    {
        while (report->GetRowCount() > rows && report->DeleteItem(report->GetItemFromRow(rows)))
        {
        }
    }
    void Shuffle()
    {
        CArray<int, int>& order = *report->GetItemRowArray();
        for (int i = 0; i + 1 < order.GetSize(); ++i)
            std::swap(order[i], order[i + 1 + storm(order.GetSize() - i - 1)]);
        report->SetItemRowArray(order);
    }

    // Mostly the control, else one of its children.
    HWND Target()
    {
        if (!report->m_hWnd)
            return parent.m_hWnd;
        const HWND focus = ::GetFocus();
        if (storm.OneIn(3) && ::IsChild(*report, focus))
            return focus;
        const HWND header = ::FindWindowEx(*report, nullptr, WC_HEADERA, nullptr);
        return header && storm.OneIn(5) ? header : report->m_hWnd;
    }

    void MayAct(int oneIn)
    {
        if (depth < 3 && storm.OneIn(oneIn))
            Act(storm.OneIn(2) ? cruelties : acts);
    }

    void Act(const std::vector<StormAct>& chosen)
    {
        ++depth;
        try
        {
            storm.Do(chosen);
        }
        catch (CInvalidArgException* exception)
        {
            exception->Delete();
        }
        --depth;
    }

    void ExpectConsistent()
    {
        TestReport& control = *report;
        ExpectInOrder(control, (mode & RVS_CALLBACK) != 0);
        const int rows = control.GetRowCount();
        const int items = control.GetItemCount();
        const int focus = control.GetCurrentFocus();
        const bool stores = !(control.GetStyle() & RVS_CALLBACK) && control.m_hWnd;
        for (int row = 0; row < rows && stores && !testing::Test::HasFailure(); ++row)
        {
            const int item = control.GetItemFromRow(row);
            ASSERT_TRUE(item >= 0 && item < items)
                << "row " << row << " shows item " << item << " of " << items;
            EXPECT_EQ(row == focus, (control.GetItemState(item) & RVIS_FOCUSED) != 0) << "row " << row;
            char preview[20] = "";
            _RVITEM read = {
                .mask = RVIM_TEXT, .item = item, .subitem = -1, .text = preview, .textMax = sizeof(preview)};
            EXPECT_EQ(1, control.GetItem(&read));
            EXPECT_EQ(std::to_string(control.GetItemData(item)), preview) << "item " << item;
        }
        if (!control.m_hWnd)
            return;
        const int columns = control.GetActiveSubItemCount();
        for (int column = 0; column < columns; ++column)
            EXPECT_EQ(column, control.GetColumnFromSubItem(control.GetSubItemFromColumn(column)));
        EXPECT_EQ(columns, Header_GetItemCount(control.GetHeaderCtrl()->m_hWnd));
    }

    Storm& storm;
    DWORD mode;
    bool edits;
    int depth = 0;
    unsigned long tags = 0;
    ReportParent parent;
    std::unique_ptr<TestReport> report;
    // What a parent should not do at such a moment.
    const std::vector<StormAct> cruelties = {
        {8, "cut", [this] { Cut(storm(report->GetRowCount() + 1)); }},
        {1, "delete all", [this] { report->DeleteAllItems(); }},
        {8, "count", [this] { report->SetItemCount(storm(report->GetItemCount() + 1)); }},
        {2, "collapse", [this] { report->Expand(Tree(), RVE_COLLAPSE); }},
        {2, "sort", [this] { report->SortItems(0, storm(2)); }},
        {1, "undefine", [this] { report->UndefineSubItem(0); }},
        {1, "undefine all", [this] { report->UndefineAllSubItems(); }},
        {2, "deactivate", [this] { report->DeactivateSubItem(SubItem()); }},
        {2, "end edit", [this] { report->EndEdit(storm(2), nullptr); }},
        {2, "focus", [this] { ::SetFocus(parent); }},
        {2, "destroy", [this] { report->DestroyWindow(); }},
    };
    const std::vector<StormAct> acts = {
        {24, "insert", [this] { Insert(); }},
        {8, "delete", [this] { report->DeleteItem(Item()); }},
        {4, "delete tree", [this] { report->DeleteTreeItem(storm.OneIn(30) ? TVI_ROOT : Tree()); }},
        {1, "delete all", [this] { report->DeleteAllItems(); }},
        {16, "text", [this] { report->SetItemText(Item(), SubItem(), Text()); }},
        {4, "image", [this] { report->SetItemImage(Item(), SubItem(), storm(4) - 1); }},
        {4, "check", [this] { report->SetItemCheck(Item(), SubItem(), storm(4) - 1); }},
        {4, "state", [this] { report->SetItemState(Item(), static_cast<unsigned>(storm(0x80)), 0x9C); }},
        {4, "count", [this] { report->SetItemCount(storm(200)); }},
        {8, "sort", [this] { report->SortItems(SubItem(), storm(2)); }},
        {4, "sort again", [this] { report->ResortItems(); }},
        {2, "no sort mark", [this] { report->ClearSortSettings(); }},
        {4, "sort mark", [this] { report->SetSortSettings(SubItem(), 1); }},
        {16, "expand", [this] { report->Expand(Tree(), static_cast<unsigned>(1 + storm(3))); }},
        {4, "tree subitem", [this] { report->SetTreeSubItem(report->GetItemHandle(Item()), SubItem()); }},
        {4, "tree focus", [this] { report->SetTreeFocus(Tree()); }},
        {16, "select", [this] { report->SelectRows(Row(), Row(), storm(2), storm(2), storm(2), storm(2)); }},
        {2, "select all", [this] { report->SelectAll(); }},
        {2, "select none", [this] { report->SelectNone(); }},
        {16, "focus cell", [this] { report->AdjustFocus(Row(), Column()); }},
        {2, "up", [this] { report->MoveUp(Row()); }},
        {2, "down", [this] { report->MoveDown(Row()); }},
        {4, "order", [this] { Shuffle(); }},
        {4, "show row", [this] { report->EnsureVisible(Item(), 0); }},
        {4, "show column", [this] { report->EnsureVisibleColumn(Column()); }},
        {4, "scroll", [this] { report->ScrollWindow(storm(2), storm.Near(400)); }},
        {4, "item height", [this] { report->SetItemHeight(storm.Near(40)); }},
        {4, "previews", [this] { report->SetShowReport(!storm.OneIn(3)); }},
        {4, "lines", [this] { report->SetHideRow(storm.OneIn(3)); }},
        {4, "show header", [this] { report->SetShowHeader(!storm.OneIn(3)); }},
        {4, "style", [this] { report->ModifyStyle(Styles(), Styles() & Styles()); }},
        {1, "mode", [this] { report->ModifyStyle(kModes, storm.OneIn(3) ? 0 : mode); }},
        {4, "property", [this] { report->ModifyProperty(PropertyId(), storm.OneIn(2) ? storm(16) : -1); }},
        {4, "define", [this] { Define(SubItem()); }},
        {2, "undefine", [this] { report->UndefineSubItem(SubItem()); }},
        {1, "undefine all", [this] { report->UndefineAllSubItems(); }},
        {20, "activate", [this] { report->ActivateSubItem(SubItem(), Column()); }},
        {2, "deactivate", [this] { report->DeactivateSubItem(SubItem()); }},
        {1, "deactivate all", [this] { report->DeactivateAllSubItems(); }},
        {4, "width", [this] { report->SetSubItemWidth(SubItem(), storm.Near(200)); }},
        {2, "colour", [this] { report->InsertColor(storm(4), 0xFF00); }},
        {4, "colours", [this] { report->SetColors(Item(), storm(5) - 1, storm(5) - 1); }},
        {2, "no colours", [this] { report->DeleteAllColors(); }},
        {24, "edit", [this] { Edit(); }},
        {12, "end edit", [this] { report->EndEdit(storm(2), nullptr); }},
        {4, "choices", [this] { report->SetSubItemChoices(SubItem(), kChoices, storm(4)); }},
        {24, "type",
         [this] { ::SendMessageW(::GetFocus(), WM_CHAR, static_cast<WPARAM>(' ' + storm(300)), 1); }},
        {2, "string", [this] { report->GetItemString(Item(), ';'); }},
        {2, "measure", [this] { report->MeasureItem(Item(), SubItem(), CRect(), storm(2)); }},
        {2, "cell rect", [this] { report->GetItemRect(Item(), SubItem(), CRect(), RVRC_WHOLE); }},
        {2, "row rect", [this] { report->GetRowRect(Row(), Column(), CRect(), RVRC_EDIT); }},
        {1, "copy", [this] { report->CopySelection(); }},
        {4, "preview width", [this] { report->SetPreviewWidth(storm.Near(500)); }},
        {4, "resolution", [this] { report->dpi = 48 * (1 + storm(5)); }},
        {4, "redraw", [this] { report->SetRedraw(!storm.OneIn(4)); }},
        {12, "paint", [this] { report->RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW); }},
        {4, "size", [this] { report->SetWindowPos(nullptr, 0, 0, storm(400), storm(300), SWP_NOZORDER); }},
        {4, "enable", [this] { ::EnableWindow(report->m_hWnd, !storm.OneIn(3)); }},
        {4, "show", [this] { ::ShowWindow(report->m_hWnd, storm.OneIn(4) ? SW_HIDE : SW_SHOW); }},
        {4, "focus", [this] { ::SetFocus(storm.OneIn(3) ? parent.m_hWnd : report->m_hWnd); }},
        {4, "pump", [] { Storm::Pump(); }},
        {24, "message", [this] { storm.Send(Target()); }},
        {16, "drag", [this] { storm.Drag(Target()); }},
        {1, "close", [this] { report->SendMessage(WM_CLOSE); }},
        {2, "destroy", [this] { report->DestroyWindow(); }},
    };
};

class ReportStorm : public testing::Test
{
protected:
    static void Blow(DWORD style, bool edits = false)
    {
        RunStorm(3000, 80000,
                 [&](Storm& storm, int steps) { StormedReport(storm, style, edits).Run(steps); });
    }
};

TEST_F(ReportStorm, List)
{
    Blow(0);
}

TEST_F(ReportStorm, Callback)
{
    Blow(RVS_CALLBACK);
}

TEST_F(ReportStorm, Tree)
{
    Blow(RVS_TREE);
}

TEST_F(ReportStorm, EditedList)
{
    Blow(RVS_CELLFOCUS | RVS_TIPS, true);
}

TEST_F(ReportStorm, EditedTree)
{
    Blow(RVS_TREE | RVS_CELLFOCUS | RVS_TIPS, true);
}

} // namespace
