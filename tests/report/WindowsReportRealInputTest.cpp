// The report control used as a person uses it: keys, mouse and wheel through the system, which finds the
// window, keeps the key states and makes double clicks.
#include "ReportSubItemListCtrl.h"
#include "tests/report/ReportFixture.h"

namespace
{

class ReportRealInput : public ReportTest
{
protected:
    void ShowRows(DWORD style, int items)
    {
        Show(style | WS_VISIBLE);
        for (int item = 0; item < items; ++item)
            Fill({std::to_string(item * 37 % 100).c_str()});
        ::SetWindowPos(parent, HWND_TOPMOST, 100, 100, 500, 300, SWP_SHOWWINDOW);
        ::SetForegroundWindow(parent);
        report.SetFocus();
        Feed({});
        CRect row;
        report.GetRowRect(report.GetTopIndex(), -1, row, RVRC_WHOLE);
        top = row.top;
    }

    // Has the system do it, and all that follows from it.
    static void Feed(std::vector<INPUT> inputs)
    {
        MSG message = {};
        std::size_t done = 0;
        for (int rest = 3; rest > 0; --rest)
        {
            if (rest == 1 && done < inputs.size())
            {
                ASSERT_EQ(1u, ::SendInput(1, &inputs[done++], sizeof(INPUT)));
                rest = 3;
            }
            for (; ::PeekMessage(&message, nullptr, 0, 0, PM_REMOVE); rest = 3)
            {
                ::TranslateMessage(&message);
                ::DispatchMessage(&message);
            }
            ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
        }
    }
    static INPUT KeyInput(WORD key, bool down)
    {
        INPUT input = {};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.dwFlags = down ? 0 : KEYEVENTF_KEYUP;
        return input;
    }
    static INPUT MouseInput(DWORD flags, LONG dx = 0, LONG dy = 0, DWORD data = 0)
    {
        INPUT input = {};
        input.type = INPUT_MOUSE;
        input.mi = {dx, dy, data, flags, 0, 0};
        return input;
    }
    static void Press(WORD key) { Feed({KeyInput(key, true), KeyInput(key, false)}); }
    static void Press(WORD key, WORD with)
    {
        Feed({KeyInput(with, true), KeyInput(key, true), KeyInput(key, false), KeyInput(with, false)});
    }
    // Client pixels of a window, by default the control.
    void Move(int x, int y, CWnd* wnd = nullptr)
    {
        CPoint point(x, y);
        (wnd ? wnd : &report)->ClientToScreen(&point);
        Feed({MouseInput(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE,
                         (point.x * 65536 + 32768) / ::GetSystemMetrics(SM_CXSCREEN),
                         (point.y * 65536 + 32768) / ::GetSystemMetrics(SM_CYSCREEN))});
    }
    void ClickAt(int x, int y, int times = 1)
    {
        Move(x, y);
        while (times-- > 0)
            Feed({MouseInput(MOUSEEVENTF_LEFTDOWN), MouseInput(MOUSEEVENTF_LEFTUP)});
    }
    void Drag(int fromX, int fromY, int toX, int toY, CWnd* from = nullptr)
    {
        Move(fromX, fromY, from);
        Feed({MouseInput(MOUSEEVENTF_LEFTDOWN)});
        Move((fromX + toX) / 2, (fromY + toY) / 2, from);
        Move(toX, toY);
        Feed({MouseInput(MOUSEEVENTF_LEFTUP)});
    }

    int top = 0; // of the first row
};

TEST_F(ReportRealInput, KeysMouseAndWheelComeToTheRows)
{
    ShowRows(RVS_TREE, 60);
    report.InsertTreeItem(report.GetItemHandle(0), nullptr, "child");
    ASSERT_EQ(report.m_hWnd, ::GetFocus());
    Follow(
        {
            {"2 to 3 focus 3,-1 top 0", [&] { ClickAt(30, top + 45), Press(VK_DOWN, VK_SHIFT); }},
            {"2 to 3 focus 2,-1 top 0", [&] { Press(VK_UP, VK_CONTROL); }},
            {"3 to 3 focus 2,-1 top 0", [&] { Press(VK_SPACE, VK_CONTROL); }},
            {"1 to 5 focus 5,-1 top 0", [&] { Drag(30, top + 30, 30, top + 105); }},
            {"5 to 5 focus 5,-1 top 3",
             [&] {
                 ClickAt(30, top + 105), Feed({MouseInput(MOUSEEVENTF_WHEEL, 0, 0, DWORD(-WHEEL_DELTA))});
             }},
        },
        [&] { return State(); });
    Press(VK_HOME);
    ClickAt(kItemHeight / 2, top + 5); // the box
    EXPECT_EQ(61, report.GetRowCount());
    Press(VK_SUBTRACT);
    ClickAt(kItemHeight / 2, top + 5, 2); // each of two quick clicks counts
    EXPECT_EQ(60, report.GetRowCount());
    report.ModifyProperty(RVP_KEYS, RVK_ALL);
    Press('7'); // 37 is in row 1, 74 in row 2
    EXPECT_EQ("2 to 2 focus 2,-1 top 0", State());
    Press(VK_APPS);
    EXPECT_NE(0, parent.menuPoint.x + parent.menuPoint.y);
}

TEST_F(ReportRealInput, ColumnsAreSortedFittedAndMoved)
{
    ShowRows(RVS_DRAGCOLUMNS, 5); // 0 37 74 11 48
    CReportSubItemListCtrl list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE, CRect(320, 0, 450, 200), &parent, 9));
    report.SetReportSubItemListCtrl(&list);
    const int y = top / 2;
    ClickAt(30, y, 2);
    EXPECT_EQ("74 48 37 11 0", Rows()) << "sorted by both clicks";
    Drag(kColumnWidth - 1, y, kColumnWidth + 39, y); // its divider
    EXPECT_EQ(kColumnWidth + 40, report.GetSubItemWidth(0));
    ClickAt(kColumnWidth + 39, y, 2);
    EXPECT_GT(kColumnWidth, report.GetSubItemWidth(0));
    report.SetSubItemWidth(0, kColumnWidth);
    Follow(
        {
            {"bca", [&] { Drag(20, y, 3 * kColumnWidth - 10, y); }},
            {"ca", [&] { Drag(20, y, 20, 150); }},
            {"cba", [&] { Drag(10, 5, kColumnWidth + 10, y, &list); }}, // between the two
        },
        [&] { return Columns(); });
}

} // namespace
