// What a user does to a report control, and what is to be seen then.
#pragma once

#include "tests/report/TestReport.h"

#include <commctrl.h>
#include <gtest/gtest.h>
#include <map>
#include <random>

constexpr int kItemHeight = 20; // of the rows that Show makes, like the next
constexpr int kColumnWidth = 50;
constexpr int kHeaderY = 5; // within the header

class ReportTest : public testing::Test
{
protected:
    using Texts = std::vector<const char*>;

    ReportTest() { Create(); }

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
        report.ModifyStyle(RVS_CALLBACK | RVS_TREE, 0);
        report.DestroyWindow();
        report.DeleteAllItems();
        report.UndefineAllSubItems();
        Create(style);
        parent.ShowWindow(SW_SHOWNOACTIVATE);
        report.SetItemHeight(style & RVS_HORIZONTALGRID ? kItemHeight + 1 : kItemHeight);
        Define({"a", "b", "c"});
        Fill(texts);
        report.UpdateWindow();
        header = ::FindWindowEx(report, nullptr, WC_HEADERA, nullptr);
        parent.codes.clear();
    }

    // Rows that fill a window of ten, without a header.
    void ShowRows(DWORD style, std::size_t items)
    {
        Show(style | WS_VISIBLE | RVS_NOHEADER, Texts(items, "x"));
    }

    // Defines subitems with these captions, each shown in a column.
    void Define(const Texts& captions)
    {
        for (const char* caption : captions)
        {
            _RVSUBITEM definition = {.width = kColumnWidth, .text = caption};
            const int subitem = report.DefineSubItem(report.GetSubItemCount(), &definition);
            report.ActivateSubItem(subitem, -1);
        }
    }

    void Format(int subitem, unsigned format)
    {
        _RVSUBITEM definition;
        report.GetSubItem(subitem, &definition);
        definition.format = format;
        report.RedefineSubItem(subitem, &definition);
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

    // From now on the system does it: it finds the window, keeps the key states and makes double clicks.
    void UseSystem()
    {
        usesSystem = true;
        ::SetWindowPos(parent, HWND_TOPMOST, 100, 100, 500, 300, SWP_SHOWWINDOW);
        ::SetForegroundWindow(parent);
        report.SetFocus();
        Settle();
    }
    // Dispatches what the system makes of it.
    static void Settle()
    {
        MSG message = {};
        for (int rest = 2; rest > 0; --rest)
        {
            for (; ::PeekMessage(&message, nullptr, 0, 0, PM_REMOVE); rest = 2)
            {
                ::TranslateMessage(&message);
                ::DispatchMessage(&message);
            }
            ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 1, QS_ALLINPUT);
        }
    }
    static void SystemMouse(DWORD flags, int data = 0)
    {
        ::mouse_event(flags, 0, 0, static_cast<DWORD>(data), 0);
        Settle();
    }
    // Presses or releases keys; without the system they only count as pressed.
    void Hold(const std::vector<int>& keys, bool down)
    {
        BYTE states[256] = {};
        for (const int key : keys)
        {
            states[key] = down ? 0x80 : 0;
            if (usesSystem)
                ::keybd_event(static_cast<BYTE>(key), 0, down ? 0 : KEYEVENTF_KEYUP, 0);
        }
        if (usesSystem)
            Settle();
        else if (!keys.empty())
            ::SetKeyboardState(states);
    }
    void Key(int key, const std::vector<int>& with = {})
    {
        Hold(with, true);
        if (usesSystem)
            Hold({key}, true), Hold({key}, false);
        else
            report.SendMessage(WM_KEYDOWN, static_cast<WPARAM>(key));
        Hold(with, false);
    }
    void Type(WPARAM character) { Key('Q'), ::SendMessageW(report, WM_CHAR, character, 0); }
    void Send(HWND hwnd, UINT message, int x, int y, WPARAM flags = MK_LBUTTON)
    {
        if (!usesSystem)
        {
            ::SendMessage(hwnd, message, flags, MAKELPARAM(x, y));
            return;
        }
        POINT point = {x, y};
        ::ClientToScreen(hwnd, &point);
        ::SetCursorPos(point.x, point.y);
        const std::map<UINT, DWORD> events = {
            {WM_MOUSEMOVE, MOUSEEVENTF_MOVE},
            {WM_LBUTTONDOWN, MOUSEEVENTF_LEFTDOWN},
            {WM_LBUTTONUP, MOUSEEVENTF_LEFTUP},
            {WM_LBUTTONDBLCLK, MOUSEEVENTF_LEFTDOWN | MOUSEEVENTF_LEFTUP}, // after a click there
            {WM_RBUTTONDOWN, MOUSEEVENTF_RIGHTDOWN | MOUSEEVENTF_RIGHTUP}};
        std::vector<int> keys;
        if (flags & (MK_SHIFT | MK_CONTROL))
            keys = {flags & MK_SHIFT ? VK_SHIFT : VK_CONTROL};
        Hold(keys, true);
        SystemMouse(events.at(message));
        Hold(keys, false);
    }
    void Mouse(UINT message, int x, int y, WPARAM flags = MK_LBUTTON) { Send(report, message, x, y, flags); }
    void Click(int x, int y, WPARAM flags = 0)
    {
        Mouse(WM_LBUTTONDOWN, x, y, MK_LBUTTON | flags);
        Mouse(WM_LBUTTONUP, x, y, flags);
    }
    void MouseOnHeader(UINT message, int x, int y = kHeaderY) { Send(header, message, x, y); }
    void ClickHeader(int x, UINT press = WM_LBUTTONDOWN)
    {
        MouseOnHeader(press, x);
        MouseOnHeader(WM_LBUTTONUP, x);
    }
    void DragHeader(int from, int to, int y = kHeaderY)
    {
        MouseOnHeader(WM_LBUTTONDOWN, from);
        MouseOnHeader(WM_MOUSEMOVE, to, y);
        MouseOnHeader(WM_LBUTTONUP, to, y);
    }
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

    // Of selection, focus and position.
    std::string State()
    {
        int first = 0;
        int last = 0;
        report.GetSelectedRows(&first, &last);
        const std::string column = "," + std::to_string(report.GetCurrentFocusColumn());
        return Line(first, "to", last, "focus", std::to_string(report.GetCurrentFocus()) + column, "top",
                    report.GetTopIndex());
    }

    // A random number below the limit, the same ones in each run.
    int Below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

    ReportParent parent;
    TestReport report;
    bool tree = false;
    bool usesSystem = false;
    HWND header = nullptr;
    std::minstd_rand random{7};
};
