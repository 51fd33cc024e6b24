// The report control used as a person uses it: keys, mouse and wheel through the system, which finds the
// window, keeps the key states and makes double clicks.
#include "ReportSubItemListCtrl.h"
#include "tests/report/ReportFixture.h"

namespace
{

class ReportRealInput : public ReportTest
{
protected:
    void ShowNumbers(DWORD style, int items)
    {
        Show(style | WS_VISIBLE);
        for (int item = 0; item < items; ++item)
            Fill({std::to_string(item * 37 % 100).c_str()});
        ::SetWindowPos(parent, HWND_TOPMOST, 100, 100, 500, 300, SWP_SHOWWINDOW);
        ::SetForegroundWindow(parent);
        report.SetFocus();
        Settle();
        CRect row;
        report.GetRowRect(report.GetTopIndex(), -1, row, RVRC_WHOLE);
        top = row.top;
    }

    // Has the system do what it has been given, and all that follows from it.
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
            ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
        }
    }
    static void Give(BYTE key, DWORD flags = 0) { ::keybd_event(key, 0, flags, 0), Settle(); }
    static void GiveMouse(DWORD flags, int x = 0, int y = 0, int data = 0)
    {
        ::mouse_event(flags, static_cast<DWORD>(x), static_cast<DWORD>(y), static_cast<DWORD>(data), 0);
        Settle();
    }
    static void Press(BYTE key) { Give(key), Give(key, KEYEVENTF_KEYUP); }
    static void Press(BYTE key, BYTE with) { Give(with), Press(key), Give(with, KEYEVENTF_KEYUP); }
    // Client pixels of a window, by default the control.
    void Move(int x, int y, CWnd* wnd = nullptr)
    {
        CPoint point(x, y);
        (wnd ? wnd : &report)->ClientToScreen(&point);
        GiveMouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE,
                  (point.x * 65536 + 32768) / ::GetSystemMetrics(SM_CXSCREEN),
                  (point.y * 65536 + 32768) / ::GetSystemMetrics(SM_CYSCREEN));
    }
    void ClickAt(int x, int y, int times = 1)
    {
        for (Move(x, y); times > 0; --times)
            GiveMouse(MOUSEEVENTF_LEFTDOWN), GiveMouse(MOUSEEVENTF_LEFTUP);
    }
    void Drag(int fromX, int fromY, int toX, int toY, CWnd* from = nullptr)
    {
        Move(fromX, fromY, from);
        GiveMouse(MOUSEEVENTF_LEFTDOWN);
        Move((fromX + toX) / 2, (fromY + toY) / 2, from);
        Move(toX, toY);
        GiveMouse(MOUSEEVENTF_LEFTUP);
    }

    int top = 0; // of the first row
};

TEST_F(ReportRealInput, KeysMouseAndWheelComeToTheRows)
{
    ShowNumbers(RVS_TREE, 60);
    report.InsertTreeItem(report.GetItemHandle(0), nullptr, "child");
    ASSERT_EQ(report.m_hWnd, ::GetFocus());
    Follow(
        {
            {"2 to 3 focus 3,-1 top 0", [&] { ClickAt(30, top + 45), Press(VK_DOWN, VK_SHIFT); }},
            {"2 to 3 focus 2,-1 top 0", [&] { Press(VK_UP, VK_CONTROL); }},
            {"3 to 3 focus 2,-1 top 0", [&] { Press(VK_SPACE, VK_CONTROL); }},
            {"1 to 5 focus 5,-1 top 0", [&] { Drag(30, top + 30, 30, top + 105); }},
            {"5 to 5 focus 5,-1 top 0", [&] { ClickAt(30, top + 105); }},
            {"5 to 5 focus 5,-1 top 3", [&] { GiveMouse(MOUSEEVENTF_WHEEL, 0, 0, -WHEEL_DELTA); }},
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
    ShowNumbers(RVS_DRAGCOLUMNS, 5); // 0 37 74 11 48
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
