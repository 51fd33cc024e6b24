// Icons by name, and buttons that show them.
#include "qmcommon/QmButtonXP.h"
#include "qmcommon/QmIcon.h"
#include "tests/report/ReportPicture.h"
#include "tests/report/TestReport.h"
#include "tests/support/NothingLeft.h"

#include <commctrl.h>

namespace
{

TEST(QmIcon, IsFoundByName)
{
    for (const char* const name :
         {"Clear", "Copy", "FileOpen", "FileSave", "Find", "Info", "Refresh", "SelectAll", "setup",
          "DisplayNext.ico", "displayprevious.ICO", "ReportFieldChooser.ico"})
        for (const int size : {16, 32})
        {
            const HICON icon = QmLoadIcon(name, size);
            ICONINFO info = {};
            EXPECT_TRUE(::GetIconInfo(icon, &info)) << name;
            BITMAP bitmap = {};
            ::GetObject(info.hbmColor, sizeof(bitmap), &bitmap);
            EXPECT_EQ(size, bitmap.bmWidth);
            ::DeleteObject(info.hbmColor);
            ::DeleteObject(info.hbmMask);
            ::DestroyIcon(icon);
        }
    EXPECT_EQ(nullptr, QmLoadIcon("Missing.ico", 16));
    EXPECT_EQ(nullptr, QmLoadIcon(nullptr, 16));
}

TEST(QmButton, ShowsIconTextAndTip)
{
    const COLORREF text = ::GetSysColor(COLOR_BTNTEXT);
    const COLORREF blue = RGB(0x2A, 0x7A, 0xCC);
    ReportParent parent;
    parent.ShowWindow(SW_SHOWNOACTIVATE);
    ReportPicture picture(100, 24);
    ExpectNothingLeft([&] {
        CQmButtonXP button;
        ASSERT_TRUE(
            button.Create("&Next", WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON, CRect(0, 0, 100, 24), &parent, 1));
        EXPECT_TRUE(button.SetImage("DisplayNext.ico"));
        button.SetTip("Next message");
        const auto paint = [&] { button.UpdateWindow(), picture.Take(button); };
        // Icon and text together are in the middle: a few pixels at the sides show neither.
        const CRect inside(4, 4, 96, 20), left(4, 4, 10, 20), right(90, 4, 96, 20);
        ExpectScenes(picture, paint,
                     {{[] {}, {Some(inside, blue), Some(inside, text), None(left, blue), None(right, text)}},
                      {[&] { button.SetState(TRUE); }, {Some(inside, blue), Some(inside, text)}},
                      {[&] { button.SetState(FALSE), button.SetButtonStyle(BS_DEFPUSHBUTTON); },
                       {Some(CRect(0, 0, 100, 1), ::GetSysColor(COLOR_WINDOWFRAME)), Some(inside, blue)}},
                      {[&] { button.EnableWindow(FALSE); }, {None(inside, blue), None(inside, text)}},
                      {[&] { button.EnableWindow(TRUE), button.SetWindowText(""); },
                       {Some(inside, blue), None(inside, text)}},
                      {[&] { EXPECT_FALSE(button.SetImage("Missing.ico")); }, {None(inside, blue)}}});
        const HWND tip = ::FindWindow(TOOLTIPS_CLASS, nullptr);
        EXPECT_EQ(1, ::SendMessage(tip, TTM_GETTOOLCOUNT, 0, 0));
    });
}

} // namespace
