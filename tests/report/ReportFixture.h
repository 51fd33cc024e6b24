// A report control in a parent that records what it is told.
#pragma once

#include "ReportCtrl.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

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

template <class Report> class ReportTestOf : public testing::Test
{
protected:
    ReportTestOf() { Create(); }

    // Another window; items and subitems stay.
    void Create(DWORD style = 0)
    {
        report.DestroyWindow();
        report.Create(WS_CHILD | style, CRect(0, 0, 300, 200), &parent, 7);
        tree = (style & RVS_TREE) != 0;
    }

    // Defines subitems with these captions, each shown in a column of 50 pixels.
    void Define(std::initializer_list<const char*> captions)
    {
        for (const char* caption : captions)
        {
            _RVSUBITEM definition;
            definition.width = 50;
            definition.text = caption;
            const int subitem = report.DefineSubItem(report.GetSubItemCount(), &definition);
            report.ActivateSubItem(subitem, -1);
        }
    }

    // Further items with these texts, at the end of the list or the root.
    void Fill(std::initializer_list<const char*> texts)
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

    // The first subitem's texts in the order of the rows.
    std::string Rows()
    {
        std::string rows;
        for (int row = 0; row < report.GetRowCount(); ++row)
            rows += std::string(row ? " " : "") + report.GetItemText(report.GetItemFromRow(row), 0).c_str();
        return rows;
    }

    std::string Selected()
    {
        int first = 0;
        int last = 0;
        report.GetSelectedRows(&first, &last);
        return std::to_string(first) + " to " + std::to_string(last);
    }

    _RVITEM Read(int item, int subitem, unsigned mask = RVIM_TEXT | RVIM_STATE)
    {
        _RVITEM read;
        read.item = item;
        read.subitem = subitem;
        read.mask = mask;
        read.text = text;
        read.textMax = sizeof(text);
        EXPECT_EQ(1, report.GetItem(&read));
        return read;
    }

    ReportParent parent;
    Report report;
    bool tree = false;
    char text[256] = "";
};

using ReportTest = ReportTestOf<TestReport>;
