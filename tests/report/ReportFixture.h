// A report control in a parent that records what it is told, and what a user does to it.
#pragma once

#include "ReportCtrl.h"

#include <commctrl.h>
#include <functional>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

constexpr int kItemHeight = 20; // of the rows that Show makes, like the next
constexpr int kColumnWidth = 50;

// Values with a blank between them.
template <typename... Values> std::string Line(const Values&... values)
{
    std::ostringstream line;
    int count = 0;
    ((line << (count++ ? " " : "") << values), ...);
    return line.str();
}

// The parent: answers notifications, and remembers them.
class ReportParent : public CWnd
{
public:
    ReportParent() { CreateEx(0, nullptr, "", WS_POPUP, 0, 0, 300, 200, nullptr, nullptr); }

    std::vector<UINT> codes;
    std::function<LRESULT(NMHDR&)> answer;
    CPoint menuPoint; // of the last context menu asked for

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
        *result = answer ? answer(header) : 0;
        return TRUE;
    }
};

// The control with its extension points in reach.
class TestReport : public CReportCtrl
{
public:
    using CReportCtrl::BuildTree;
    using CReportCtrl::CreatePalette;
    using CReportCtrl::GetTreeFocus;
    using CReportCtrl::GetVisibleAncestor;
    using CReportCtrl::InsertTree;
    using CReportCtrl::Notify;
    using CReportCtrl::NotifyHdr;
    using CReportCtrl::SetState;
    using CReportCtrl::SetTreeFocus;

    structITEM& Struct(int item) { return CReportCtrl::GetItemStruct(item, -1, 0); }

    // What callback mode answers.
    std::function<__int64(_RVITEM&)> load;

protected:
    __int64 OnRvnItemCallbackBypass(_NMREPORTVIEW* notification) override
    {
        return load ? load(reinterpret_cast<_NMRVITEMCALLBACK*>(notification)->item) : 0;
    }
};

// Keys that are down for as long as it lives.
class Held
{
public:
    Held(std::initializer_list<int> keys)
    {
        BYTE states[256] = {};
        for (const int key : keys)
            states[key] = 0x80;
        ::SetKeyboardState(states);
    }
    ~Held()
    {
        BYTE none[256] = {};
        ::SetKeyboardState(none);
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
};

template <class Report> class ReportTestOf : public testing::Test
{
protected:
    using Texts = std::vector<const char*>;

    ReportTestOf() { Create(); }

    // Another window; items and subitems stay.
    void Create(DWORD style = 0)
    {
        report.DestroyWindow();
        report.Create(WS_CHILD | style, CRect(0, 0, 300, 200), &parent, 7);
        tree = (style & RVS_TREE) != 0;
    }

    // Begins again with the columns a, b and c, and with items of these texts.
    void Show(DWORD style, const Texts& texts = {})
    {
        report.UndefineAllSubItems();
        report.ModifyStyle(RVS_CALLBACK | RVS_TREE, 0);
        report.DeleteAllItems();
        Create(style);
        parent.ShowWindow(SW_SHOWNOACTIVATE);
        report.SetItemHeight(style & RVS_HORIZONTALGRID ? kItemHeight + 1 : kItemHeight);
        Define({"a", "b", "c"});
        Fill(texts);
        report.UpdateWindow();
        header = ::FindWindowEx(report, nullptr, WC_HEADERA, nullptr);
        parent.codes.clear();
    }

    // Defines subitems with these captions, each shown in a column.
    void Define(const Texts& captions)
    {
        for (const char* caption : captions)
        {
            _RVSUBITEM definition;
            definition.width = kColumnWidth;
            definition.text = caption;
            const int subitem = report.DefineSubItem(report.GetSubItemCount(), &definition);
            report.ActivateSubItem(subitem, -1);
        }
    }

    // Further items with these texts, at the end of the list or the root.
    void Fill(const Texts& texts)
    {
        for (const char* each : texts)
        {
            if (tree)
                report.InsertTreeItem(nullptr, nullptr, each);
            else
                report.InsertItem(report.GetItemCount(), each);
        }
    }

    void Select(int row, int anchor) { report.SelectRows(row, anchor, 1, 0, 0, 0); }

    // ---- What a user does

    void Key(UINT key, std::initializer_list<int> with = {})
    {
        const Held held(with);
        report.SendMessage(WM_KEYDOWN, key);
    }
    static void Send(HWND hwnd, UINT message, int x, int y, WPARAM flags = MK_LBUTTON)
    {
        ::SendMessage(hwnd, message, flags, MAKELPARAM(x, y));
    }
    void Mouse(UINT message, int x, int y, WPARAM flags = MK_LBUTTON) { Send(report, message, x, y, flags); }
    void Click(int x, int y, WPARAM flags = 0)
    {
        Mouse(WM_LBUTTONDOWN, x, y, MK_LBUTTON | flags);
        Mouse(WM_LBUTTONUP, x, y, flags);
    }
    // Presses the header at the first point, moves to the others and lets go at the last one.
    void DragHeader(std::initializer_list<CPoint> points)
    {
        Send(header, WM_LBUTTONDOWN, points.begin()->x, points.begin()->y);
        for (const CPoint* point = points.begin() + 1; point != points.end(); ++point)
            Send(header, WM_MOUSEMOVE, point->x, point->y);
        Send(header, WM_LBUTTONUP, points.end()[-1].x, points.end()[-1].y);
    }
    void ClickHeader(int x) { DragHeader({CPoint(x, 5)}); }
    void Redraw() { report.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW); }

    // ---- What is to be seen then

    struct Step
    {
        std::string expected;
        std::function<void()> act;
    };
    // Does one after the other, and compares what `tell` answers then.
    template <typename Tell> void Follow(std::initializer_list<Step> steps, const Tell& tell)
    {
        for (const Step& step : steps)
        {
            step.act();
            EXPECT_EQ(step.expected, tell()) << "step " << &step - steps.begin();
        }
    }

    // The first subitem's texts in the order of the rows.
    std::string Rows()
    {
        std::string rows;
        for (int row = 0; row < report.GetRowCount(); ++row)
            rows += std::string(row ? " " : "") + report.GetItemText(report.GetItemFromRow(row), 0).c_str();
        return rows;
    }

    // The columns' subitems as letters.
    std::string Columns()
    {
        std::string columns;
        for (int column = 0; column < report.GetActiveSubItemCount(); ++column)
            columns += static_cast<char>('a' + report.GetSubItemFromColumn(column));
        return columns;
    }

    // The subitem that is sorted by as a letter, and + or -.
    std::string SortMark()
    {
        int subitem = 0;
        int ascending = 0;
        if (!report.GetSortSettings(&subitem, &ascending))
            return "";
        return std::string(1, static_cast<char>('a' + subitem)) + (ascending ? '+' : '-');
    }

    std::string Selected()
    {
        int first = 0;
        int last = 0;
        report.GetSelectedRows(&first, &last);
        return std::to_string(first) + " to " + std::to_string(last);
    }

    // Of selection, focus and position.
    std::string State()
    {
        return Selected() + " focus " + std::to_string(report.GetCurrentFocus()) + ',' +
               std::to_string(report.GetCurrentFocusColumn()) + " top " +
               std::to_string(report.GetTopIndex());
    }

    ReportParent parent;
    Report report;
    bool tree = false;
    HWND header = nullptr;
};

using ReportTest = ReportTestOf<TestReport>;
