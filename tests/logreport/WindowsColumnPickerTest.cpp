// The column picker, driven by mouse and keys.
#include "ReportHeaderCtrl.h"
#include "tests/logreport/LogDialogDriver.h"
#include "tests/logreport/PlainMessages.h"
#include "tests/support/Keys.h"
#include "tests/support/NothingLeft.h"

namespace
{

class ColumnPicker : public MessageViewerTest
{
protected:
    ColumnPicker()
    {
        viewer.SetSavesState(false);
        viewer.ShowWindow(SW_SHOW);
        viewer.SetShowReport(1);
        viewer.DeactivateSubItem(kLogMsgBody);
    }

    static HWND Picker() { return ::FindWindow("#32770", "Column Picker"); }
    static HWND List() { return ::GetDlgItem(Picker(), 2003); }
    static LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return ::SendMessage(List(), message, wParam, lParam);
    }

    // The fields that have columns, and the entries of the list by their data.
    std::string Columns(CReportCtrlLog& log)
    {
        std::string columns;
        for (int column = 0; column < log.GetActiveSubItemCount(); ++column)
            columns += std::to_string(log.GetSubItemFromColumn(column)) + " ";
        columns += "|";
        for (LRESULT entry = 0; entry < Send(LB_GETCOUNT); ++entry)
        {
            char text[50] = "";
            const LRESULT field = Send(LB_GETITEMDATA, static_cast<WPARAM>(entry));
            Send(LB_GETTEXT, static_cast<WPARAM>(entry), reinterpret_cast<LPARAM>(text));
            EXPECT_STREQ(LogMsgDataKindText(static_cast<std::int32_t>(field)), text);
            columns += " " + std::to_string(field);
        }
        return columns;
    }

    static void Press(WPARAM key)
    {
        ::PostMessage(List(), WM_KEYDOWN, key, 1);
        PumpMessages();
    }

    // The mouse at a point of a window.
    static void Mouse(HWND window, POINT point, DWORD flags)
    {
        ::ClientToScreen(window, &point);
        INPUT input = {};
        input.type = INPUT_MOUSE;
        input.mi.dx = (point.x * 65536 + 32768) / ::GetSystemMetrics(SM_CXSCREEN);
        input.mi.dy = (point.y * 65536 + 32768) / ::GetSystemMetrics(SM_CYSCREEN);
        input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE | flags;
        EXPECT_EQ(1u, ::SendInput(1, &input, sizeof(input)));
        PumpMessages();
    }
};

TEST_F(ColumnPicker, AddsAndTakesAwayColumns)
{
    viewer.PickColumns();
    ASSERT_TRUE(::IsWindowVisible(Picker()));
    EXPECT_EQ("125 135", SizeOf(Picker()));
    ::SetWindowPos(Picker(), HWND_TOP, 20, 300, 0, 0, SWP_NOSIZE);
    const std::pair<std::function<void()>, const char*> steps[] = {
        {[] {}, "0 1 | 2 3 4 5 6 7 8 9 10 11 12"},
        {[] { Send(WM_LBUTTONDBLCLK, 0, MAKELPARAM(5, 3)); }, "0 1 2 | 3 4 5 6 7 8 9 10 11 12"},
        {[] {
             EXPECT_EQ(0, Send(LB_GETCURSEL));
             Send(LB_SETCURSEL, 1), Press(VK_RETURN);
         },
         "0 1 2 4 | 3 5 6 7 8 9 10 11 12"},
        {[] { Press(VK_DELETE); }, "0 1 2 | 3 4 5 6 7 8 9 10 11 12"},
        {[] { Press(VK_RETURN); }, "0 1 2 4 | 3 5 6 7 8 9 10 11 12"}, // what was taken away is chosen
        {[] { Send(WM_KEYDOWN, VK_DELETE), Send(WM_KEYDOWN, VK_DELETE); }, "0 1 | 2 3 4 5 6 7 8 9 10 11 12"},
        {[] { Send(WM_KEYDOWN, VK_RETURN); }, "0 1 2 | 3 4 5 6 7 8 9 10 11 12"},
        {[this] { viewer.ActivateSubItem(kLogMsgWho, 0); }, "11 0 1 2 | 3 4 5 6 7 8 9 10 12"},
        {[this] {
             Mouse(List(), {5, 3}, MOUSEEVENTF_LEFTDOWN);
             Mouse(List(), {30, 30}, 0);
             Mouse(*viewer.GetHeaderCtrl(), {2, 5}, 0);
             Mouse(*viewer.GetHeaderCtrl(), {2, 5}, MOUSEEVENTF_LEFTUP);
         },
         "3 11 0 1 2 | 4 5 6 7 8 9 10 12"},
        {[] {
             for (int i = 0; i < 9; ++i)
                 Press(VK_DELETE);
         },
         "3 | 0 1 2 4 5 6 7 8 9 10 11 12"}, // one stays
    };
    for (const auto& [act, columns] : steps)
    {
        act();
        EXPECT_EQ(columns, Columns(viewer)) << &act - &steps[0].first;
    }
}

TEST_F(ColumnPicker, IsOneForTheProcess)
{
    viewer.PickColumns();
    const HWND picker = Picker();
    Press(VK_ESCAPE);
    EXPECT_FALSE(::IsWindowVisible(picker));
    {
        TestViewer other;
        ASSERT_TRUE(other.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 200, 100), &parent, 8));
        other.SetSavesState(false);
        other.PickColumns();
        EXPECT_TRUE(::IsWindowVisible(picker));
        EXPECT_EQ(picker, Picker());
        EXPECT_EQ("0 1 | 2 3 4 5 6 7 8 9 10 11 12", Columns(viewer)) << "it stays with the first";
        ::SendMessage(picker, WM_CLOSE, 0, 0);
        PumpMessages();
        EXPECT_FALSE(::IsWindowVisible(picker));
        viewer.DestroyWindow();
        EXPECT_FALSE(::IsWindow(picker));
        other.PickColumns();
        EXPECT_EQ("0 1 3 | 2 4 5 6 7 8 9 10 11 12", Columns(other));
    }
    EXPECT_EQ(nullptr, Picker()) << "gone with a control that is deleted";
    ReportParent frame;
    TestViewer third;
    ASSERT_TRUE(third.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 200, 100), &frame, 8));
    third.SetSavesState(false);
    third.PickColumns();
    EXPECT_EQ(frame.m_hWnd, ::GetWindow(Picker(), GW_OWNER));
    frame.DestroyWindow();
    EXPECT_EQ(nullptr, Picker());
    ExpectNothingLeft(
        [this] {
            viewer.DestroyWindow();
            Create();
            viewer.SetSavesState(false);
            viewer.PickColumns();
        },
        LeakRounds());
}

} // namespace
