// The report control used as a person uses it: keys, mouse and wheel through the system, which finds the
// window, keeps the key states and makes double clicks.
#include "ReportSubItemListCtrl.h"
#include "tests/report/ReportFixture.h"

#include <commctrl.h>

namespace
{

constexpr int kItemHeight = 20;
constexpr int kColumnWidth = 80;

class ReportRealInput : public ReportTest
{
protected:
    void Show(DWORD style, int items)
    {
        Create(style | WS_VISIBLE);
        report.SetItemHeight(kItemHeight);
        for (const char* caption : {"a", "b", "c"})
        {
            _RVSUBITEM definition;
            definition.width = kColumnWidth;
            definition.text = caption;
            report.ActivateSubItem(report.DefineSubItem(report.GetSubItemCount(), &definition), -1);
        }
        for (int item = 0; item < items; ++item)
            Fill({std::to_string(item * 37 % 100).c_str()});
        ::SetWindowPos(parent, HWND_TOPMOST, 100, 100, 500, 300, SWP_SHOWWINDOW);
        ::SetForegroundWindow(parent);
        report.SetFocus();
        Pump();
        headerHeight = report.GetHeaderCtrl() ? TopOfRows() : 0;
    }
    int TopOfRows()
    {
        CRect row;
        report.GetRowRect(report.GetTopIndex(), -1, row, RVRC_WHOLE);
        return row.top;
    }

    static void Pump()
    {
        MSG message = {};
        for (int rest = 3; rest > 0; --rest)
        {
            while (::PeekMessage(&message, nullptr, 0, 0, PM_REMOVE))
            {
                ::TranslateMessage(&message);
                ::DispatchMessage(&message);
                rest = 3;
            }
            ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
        }
    }
    static void Send(const INPUT& input)
    {
        INPUT copy = input;
        ASSERT_EQ(1u, ::SendInput(1, &copy, sizeof(copy)));
        Pump();
    }
    static void Key(WORD key, bool down)
    {
        INPUT input = {};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.dwFlags = down ? 0 : KEYEVENTF_KEYUP;
        Send(input);
    }
    static void Press(WORD key, WORD modifier = 0)
    {
        if (modifier)
            Key(modifier, true);
        Key(key, true);
        Key(key, false);
        if (modifier)
            Key(modifier, false);
    }
    static void Mouse(DWORD flags, DWORD data = 0)
    {
        INPUT input = {};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = flags;
        input.mi.mouseData = data;
        Send(input);
    }
    // Client pixels of a window, by default the control.
    void Move(int x, int y, CWnd* wnd = nullptr)
    {
        CPoint point(x, y);
        (wnd ? wnd : &report)->ClientToScreen(&point);
        INPUT input = {};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
        input.mi.dx = (point.x * 65536 + 32768) / ::GetSystemMetrics(SM_CXSCREEN);
        input.mi.dy = (point.y * 65536 + 32768) / ::GetSystemMetrics(SM_CYSCREEN);
        Send(input);
    }
    void Click(int x, int y, int times = 1)
    {
        Move(x, y);
        for (int i = 0; i < times; ++i)
        {
            Mouse(MOUSEEVENTF_LEFTDOWN);
            Mouse(MOUSEEVENTF_LEFTUP);
        }
    }
    void Drag(int fromX, int fromY, int toX, int toY, CWnd* from = nullptr)
    {
        Move(fromX, fromY, from);
        Mouse(MOUSEEVENTF_LEFTDOWN);
        Move((fromX + toX) / 2, (fromY + toY) / 2, from);
        Move(toX, toY);
        Mouse(MOUSEEVENTF_LEFTUP);
    }
    void ClickRow(int row, int x = 30) { Click(x, headerHeight + row * kItemHeight + 5); }

    std::string State() { return Selected() + " focus " + std::to_string(report.GetCurrentFocus()); }
    std::string Columns()
    {
        std::string columns;
        for (int column = 0; column < report.GetActiveSubItemCount(); ++column)
            columns += static_cast<char>('a' + report.GetSubItemFromColumn(column));
        return columns;
    }

    int headerHeight = 0;
};

TEST_F(ReportRealInput, KeysMouseAndWheelComeToTheRows)
{
    Show(RVS_TREE, 60);
    report.InsertTreeItem(report.GetItemHandle(0), nullptr, "child");
    Pump();
    ASSERT_EQ(report.m_hWnd, ::GetFocus());
    ClickRow(2);
    Press(VK_DOWN, VK_SHIFT);
    EXPECT_EQ("2 to 3 focus 3", State());
    Press(VK_UP, VK_CONTROL);
    EXPECT_EQ("2 to 3 focus 2", State());
    Press(VK_SPACE, VK_CONTROL);
    EXPECT_EQ("3 to 3 focus 2", State());
    Press(VK_END);
    const int top = report.GetTopIndex();
    Mouse(MOUSEEVENTF_WHEEL, WHEEL_DELTA); // over the rows
    EXPECT_EQ(top - 3, report.GetTopIndex());
    Press(VK_HOME);
    Drag(30, headerHeight + 30, 30, headerHeight + 5 * kItemHeight + 5);
    EXPECT_EQ("1 to 5 focus 5", State());
    ClickRow(0, kItemHeight / 2); // the box
    EXPECT_EQ(61, report.GetRowCount());
    Press(VK_SUBTRACT);
    Click(kItemHeight / 2, headerHeight + 5, 2); // each of two quick clicks counts
    EXPECT_EQ(60, report.GetRowCount());
    report.ModifyProperty(RVP_KEYS, RVK_ALL);
    Press('7'); // 37 is in row 1, 74 in row 2
    EXPECT_EQ("2 to 2 focus 2", State());
    Press(VK_APPS);
    EXPECT_NE(0, parent.menuPoint.x + parent.menuPoint.y);
}

TEST_F(ReportRealInput, ColumnsAreSortedFittedAndMoved)
{
    Show(RVS_DRAGCOLUMNS, 5); // 0 37 74 11 48
    CReportSubItemListCtrl list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE, CRect(320, 0, 450, 200), &parent, 9));
    report.SetReportSubItemListCtrl(&list);
    Pump();
    const int y = headerHeight / 2;
    Click(30, y, 2);
    EXPECT_EQ("74 48 37 11 0", Rows()) << "sorted by both clicks";
    Drag(kColumnWidth - 1, y, kColumnWidth + 39, y); // its divider
    EXPECT_EQ(kColumnWidth + 40, report.GetSubItemWidth(0));
    Click(kColumnWidth + 39, y, 2);
    EXPECT_GT(kColumnWidth, report.GetSubItemWidth(0));
    report.SetSubItemWidth(0, kColumnWidth);

    Drag(20, y, 3 * kColumnWidth - 10, y);
    EXPECT_EQ("bca", Columns());
    Drag(20, y, 20, 150);
    EXPECT_EQ("ca", Columns());
    Drag(10, 5, kColumnWidth + 10, y, &list); // between the two
    EXPECT_EQ("cba", Columns());
    Move(20, y);
    Mouse(MOUSEEVENTF_LEFTDOWN);
    Move(20, 100);
    Move(20, 150);
    Press(VK_ESCAPE);
    Mouse(MOUSEEVENTF_LEFTUP);
    EXPECT_EQ("cba", Columns());
}

} // namespace
