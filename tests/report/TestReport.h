// A report control that tells of the calls it gets, and a parent that records what it is told.
#pragma once

#include "ReportCtrl.h"
#include "tests/support/Line.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

// A window's place on the screen, or in the client area of another one.
inline CRect PlaceOf(HWND hwnd, HWND in = nullptr)
{
    CRect place;
    ::GetWindowRect(hwnd, place);
    ::MapWindowPoints(nullptr, in, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

// The parent: answers notifications, and remembers them.
class ReportParent : public CWnd
{
public:
    ReportParent() { CreateEx(0, nullptr, "", WS_POPUP, 0, 0, 300, 200, nullptr, nullptr); }

    std::vector<UINT> codes;
    std::function<LRESULT(NMHDR&)> answer = [this](NMHDR&) { return takes; };
    bool takes = false; // what it is told
    CPoint menuPoint;   // of the last context menu asked for

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_CONTEXTMENU)
            menuPoint = CPoint(lParam);
        return CWnd::WindowProc(message, wParam, lParam);
    }
    BOOL OnNotify(WPARAM, LPARAM lParam, LRESULT* result) override
    {
        NMHDR& header = *reinterpret_cast<NMHDR*>(lParam);
        if (static_cast<int>(header.code) > -2048)
            return FALSE; // the header's own
        codes.push_back(header.code);
        *result = answer(header);
        return TRUE;
    }
};

// The control with its extension points in reach. It tells of moments at which somebody else's code runs.
class TestReport : public CReportCtrl
{
public:
    using CReportCtrl::CreatePalette;
    using CReportCtrl::DrawCtrl;
    using CReportCtrl::GetTreeFocus;
    using CReportCtrl::GetVisibleAncestor;
    using CReportCtrl::Notify;
    using CReportCtrl::SetState;
    using CReportCtrl::SetTreeFocus;

    std::function<void(std::string_view)> moment = [](std::string_view) {};
    std::function<__int64(_RVITEM&)> load = [](_RVITEM&) { return 0; }; // what callback mode answers
    std::function<__int64(_NMRVITEMDRAW&)> drawPreview = [](_NMRVITEMDRAW&) { return 0; };
    std::function<void(_RVITEM&)> adjustTip = [](_RVITEM&) {};
    bool refusesDrags = false;
    int hides = -1; // the subitem whose column goes when it changes
    int dpi = 0;    // and the wheel's lines: those of the system, if 0
    unsigned wheelLines = 0;
    bool edits = false; // cells, else it only tells that it was to

    structITEM& Struct(int item) { return CReportCtrl::GetItemStruct(item, -1, 0); }
    void SetColors(int item, int text, int background)
    {
        _RVITEM change = {.mask = RVIM_TEXTCOLOR | RVIM_BACKGROUNDCOLOR,
                          .item = item,
                          .textColor = text,
                          .backgroundColor = background};
        SetItem(&change);
    }
    int GetResolution() override { return dpi ? dpi : CReportCtrl::GetResolution(); }
    void SelectRows(int row, int anchor, int select, int add, int toggle, int redraw) override
    {
        CReportCtrl::SelectRows(row, anchor, select, add, toggle, redraw);
        moment("select");
    }
    using CReportCtrl::CompareItems;
    int CompareItems(int item1, int subitem1, int item2, int subitem2) override
    {
        moment("compare");
        return CReportCtrl::CompareItems(item1, subitem1, item2, subitem2);
    }

protected:
    structITEM& GetItemStruct(int item, int subitem, unsigned mask) override
    {
        moment("record");
        return CReportCtrl::GetItemStruct(item, subitem, mask);
    }
    int LoadItemData(structITEM* record, int item, int subitem, unsigned mask) override
    {
        moment("load");
        return CReportCtrl::LoadItemData(record, item, subitem, mask);
    }
    void QuickSort(int subitem, int ascending, int low, int high) override
    {
        moment("quick");
        CReportCtrl::QuickSort(subitem, ascending, low, high);
    }
    void TreeSort(int subitem, structTREEITEM* above, int ascending, int recursive) override
    {
        moment("tree");
        CReportCtrl::TreeSort(subitem, above, ascending, recursive);
    }
    unsigned GetMouseScrollLines() override
    {
        return wheelLines ? wheelLines : CReportCtrl::GetMouseScrollLines();
    }
    int BeginEdit(int row, int column, unsigned key) override
    {
        moment("edit " + Line(row, column, key));
        return edits ? CReportCtrl::BeginEdit(row, column, key) : 0;
    }
    void DrawItem(CDC* dc, CRect rect, _RVITEM* item) override
    {
        moment(item->state & RVIS_SELECTED ? "item selected" : "item");
        CReportCtrl::DrawItem(dc, rect, item);
    }
    void DrawRow(CDC* dc, CRect row, CRect clip, int number, _RVITEM* item, int odd, int fixed) override
    {
        moment(fixed ? "row fixed" : odd ? "row odd" : "row even");
        CReportCtrl::DrawRow(dc, row, clip, number, item, odd, fixed);
    }
    void DrawBkgnd(CDC* dc, CRect rect, unsigned long color) override
    {
        moment("background");
        CReportCtrl::DrawBkgnd(dc, rect, color);
    }
    __int64 OnRvnItemCallbackBypass(_NMREPORTVIEW* notification) override
    {
        moment("callback");
        return load(reinterpret_cast<_NMRVITEMCALLBACK*>(notification)->item);
    }
    void AdjustTip(_RVITEM* item) override { adjustTip(*item); }
    __int64 OnRvnItemDrawPreviewBypass(_NMREPORTVIEW* notification) override
    {
        moment("preview");
        return drawPreview(*reinterpret_cast<_NMRVITEMDRAW*>(notification));
    }
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override
    {
        const UINT code = reinterpret_cast<NMHDR*>(lParam)->code;
        if (code == HDN_BEGINDRAG || code == HDN_ENDDRAG)
            moment(code == HDN_BEGINDRAG ? "drag" : "drop");
        *result = refusesDrags && code == HDN_BEGINDRAG;
        const BOOL handled = *result || CReportCtrl::OnNotify(wParam, lParam, result);
        if (code == HDN_ITEMCHANGEDA || code == HDN_ITEMCHANGEDW)
            DeactivateSubItem(std::exchange(hides, -1));
        return handled;
    }
};

// Whatever was done to a control: focus and selection are on rows that there are, and rows and items know
// each other. One can scroll just beyond the rows, fewer items of an owner leave the one beyond them
// selected, and a selection may begin at the fixed row.
inline void ExpectInOrder(CReportCtrl& control, bool hasOwnersItems)
{
    const int rows = control.GetRowCount();
    const int focus = control.GetCurrentFocus();
    int first = 0;
    int last = -1;
    control.GetSelectedRows(&first, &last);
    const int end = hasOwnersItems ? rows + 1 : rows; // or had, before its style changed
    EXPECT_TRUE(focus >= RVI_NONE && focus < rows) << focus << " of " << rows;
    EXPECT_TRUE(last < first || (first >= -1 && last < end)) << first << " to " << last << " of " << rows;
    EXPECT_TRUE(control.GetTopIndex() >= 0 && control.GetTopIndex() <= rows) << rows;
    EXPECT_TRUE(!control.m_hWnd ||
                control.GetCurrentFocusColumn() < std::max(control.GetActiveSubItemCount(), 1));
    for (int row = 0; row < rows && !testing::Test::HasFailure(); ++row)
        EXPECT_EQ(row, control.GetRowFromItem(control.GetItemFromRow(row)));
}
