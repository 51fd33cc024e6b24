// Tips over texts that are cut off, by the real pointer and the pixels that are seen.
#include "qmcommon/QmWindowText.h"
#include "tests/report/ReportFixture.h"
#include "tests/report/ReportPicture.h"
#include "tests/support/NothingLeft.h"

namespace
{

constexpr char kLong[] = "a text that is longer than its column";
constexpr int kTextX = 6; // where a text begins in its cell
constexpr int kBorderX = 4;
constexpr int kBorderY = 2;

constexpr UINT kHover = 60; // milliseconds, so that tests need not wait for long

class ReportTip : public ReportTest
{
protected:
    ReportTip()
    {
        ::SystemParametersInfo(SPI_GETMOUSEHOVERTIME, 0, &hover, 0);
        SetHover(kHover);
    }
    ~ReportTip() override { SetHover(hover); }

    static void SetHover(UINT time) { ::SystemParametersInfo(SPI_SETMOUSEHOVERTIME, time, nullptr, 0); }

    // Ten rows, the first three with long texts.
    void ShowTexts(DWORD style = 0)
    {
        Texts texts(10, "x");
        texts[0] = texts[1] = texts[2] = kLong;
        Show(style | WS_VISIBLE | RVS_NOHEADER | RVS_TIPS, texts);
        Away();
        UseSystem();
    }

    void Away() { PointAt(400, 250); }

    // The pointer goes to a point of the control.
    void PointAt(int x, int y)
    {
        usesSystem = true;
        Mouse(WM_MOUSEMOVE, x, y, 0);
    }

    HWND TipWindow() const
    {
        const HWND tip = ::FindWindow("MFCReportTipCtrl", nullptr);
        return ::IsWindowVisible(tip) ? tip : nullptr;
    }

    bool Shows(bool wanted = true, int milliseconds = 1500)
    {
        const DWORD begin = ::GetTickCount();
        while ((TipWindow() != nullptr) != wanted && ::GetTickCount() - begin < DWORD(milliseconds))
            Settle();
        return (TipWindow() != nullptr) == wanted;
    }

    bool ShowsNone() { return Shows(false); }

    std::string Text() const { return TipWindow() ? QmGetWindowText(TipWindow()) : "none"; }

    UINT hover = 0; // the user's

    // Of the tip, within the control's client area.
    CRect Place() const
    {
        CRect rect;
        ::GetWindowRect(TipWindow(), rect);
        report.ScreenToClient(rect);
        return rect;
    }
};

TEST_F(ReportTip, LooksAsTheCell)
{
    struct
    {
        DWORD style;
        std::function<void()> prepare;
        int row;
        int x; // where the text begins
        COLORREF background;
    } const cases[] = {
        {0, [] {}, 1, kTextX, ::GetSysColor(COLOR_WINDOW)},
        {0, [&] { report.SetItemState(1, RVIS_BOLD, RVIS_BOLD); }, 1, kTextX, ::GetSysColor(COLOR_WINDOW)},
        {0, [&] { Select(1, 1); }, 1, kTextX, ::GetSysColor(COLOR_HIGHLIGHT)},
        {RVS_CELLFOCUS, [&] { Select(1, 1), report.AdjustFocus(1, 0); }, 1, kTextX,
         ::GetSysColor(COLOR_WINDOW)},
        {0, [&] { report.SetColors(1, 0, 1); }, 1, kTextX, RGB(250, 250, 0)},
        {RVS_ALTERNATEROWS, [] {}, 1, kTextX, RGB(200, 0, 0)},
        {RVS_TREE, [] {}, 1, kTextX + kItemHeight, ::GetSysColor(COLOR_WINDOW)},
        {RVS_TREE,
         [&] {
             report.SetItemText(1, 0, (std::string(kLong) + kLong).c_str());
             report.SetTreeSubItem(report.GetItemHandle(1), 0);
         },
         1, kTextX + kItemHeight, ::GetSysColor(COLOR_WINDOW)},
        {0, [&] { report.SetItemCheck(1, 0, 1); }, 1, kTextX + 8 + 6, ::GetSysColor(COLOR_WINDOW)},
        {0,
         [&] {
             report.SetItemText(1, 0,
                                "\xFC"
                                "ber den Rand hinaus");
         },
         1, kTextX, ::GetSysColor(COLOR_WINDOW)},
        {0, [&] { report.SetItemText(1, 0, "first\nsecond line"); }, 1, kTextX, ::GetSysColor(COLOR_WINDOW)},
    };
    for (const auto& each : cases)
    {
        ShowTexts(each.style);
        report.DeleteAllColors();
        report.InsertColor(0, RGB(200, 0, 0));
        report.InsertColor(1, RGB(250, 250, 0));
        each.prepare();
        report.SetSubItemWidth(0, 80);
        Redraw();
        const int y = each.row * kItemHeight;
        ReportPicture cell;
        cell.Take(report);
        PointAt(each.x + 10, y + 10);
        ASSERT_TRUE(Shows()) << &each - cases;
        EXPECT_EQ(each.x - kBorderX, Place().left) << &each - cases;
        ReportPicture tip;
        tip.Take(TipWindow());
        int different = 0;
        for (int dx = 0; dx < 12; ++dx)
            for (int dy = kBorderY; dy < Place().Height() && dy < kItemHeight - 5; ++dy)
                different += cell.At(each.x + dx, Place().top + dy) != tip.At(kBorderX + dx, dy);
        EXPECT_EQ(0, different) << &each - cases;
        EXPECT_EQ(each.background, tip.At(kBorderX - 2, 4)) << &each - cases;
        Away();
        ASSERT_TRUE(ShowsNone());
    }
}

TEST_F(ReportTip, ShowsWholeTextsOfCellsThatCutThem)
{
    ShowTexts(RVS_FIXEDROW);
    report.SetItemText(-1, 0, "the fixed row has one, too");
    report.SetItemText(3, 1, "wide");
    report.SetItemText(4, 2, std::string(65535, 'w').c_str());
    report.SetItemText(5, 0, "two\r\nlines\n");
    report.SetItemText(6, 0, nullptr);
    report.SetSubItemWidth(0, 60);
    report.ModifyStyle(0, RVS_HORIZONTALGRID);
    const int fixed = 10;
    const auto y = [&](int row) {
        CRect rect;
        report.GetRowRect(row, 0, rect, RVRC_WHOLE);
        return rect.top + 10;
    };
    const std::tuple<int, int, std::string> cases[] = {
        {10, fixed, "the fixed row has one, too"},
        {10, y(0), kLong},
        {70, y(3), "none"},
        {10, y(3), "none"},
        {10, y(5), "two\r\nlines"},
        {10, y(6), "none"},
        {2, y(0), "none"},
    };
    for (const auto& [x, at, text] : cases)
    {
        PointAt(x, at);
        EXPECT_EQ(text != "none", Shows(true, text == "none" ? 3 * kHover : 1500)) << text << x << ' ' << at;
        EXPECT_EQ(text, Text()) << x << ' ' << at;
    }
    const DWORD begin = ::GetTickCount();
    PointAt(120, y(4));
    ASSERT_TRUE(Shows());
    EXPECT_LT(::GetTickCount() - begin, 1000u);
    EXPECT_EQ("...", Text().substr(Text().size() - 3));
    CRect screen;
    ::SystemParametersInfo(SPI_GETWORKAREA, 0, screen, 0);
    CRect tip;
    ::GetWindowRect(TipWindow(), tip);
    CRect both;
    both.UnionRect(screen, tip);
    EXPECT_TRUE(both == screen);
}

TEST_F(ReportTip, FollowsAtOnce)
{
    SetHover(300);
    ShowTexts();
    const DWORD begin = ::GetTickCount();
    PointAt(10, 10);
    ASSERT_TRUE(Shows());
    EXPECT_LE(290u, ::GetTickCount() - begin) << "the system's hover time";
    PointAt(10, 30);
    EXPECT_EQ(kItemHeight, Place().top / kItemHeight * kItemHeight) << "at once";
    EXPECT_NE(nullptr, TipWindow());
    PointAt(10, 70);
    EXPECT_EQ(nullptr, TipWindow()) << "a text that is seen whole";
}

TEST_F(ReportTip, IsGoneAfter)
{
    const std::function<void()> ends[] = {
        [&] { PointAt(10, 70); },
        [&] { PointAt(10, 250); }, // below the control
        [&] { Key(VK_SHIFT); },
        [&] { Key(VK_DOWN); },
        [&] { SystemMouse(MOUSEEVENTF_WHEEL, -120); },
        [&] { Mouse(WM_RBUTTONDOWN, 10, 30); },
        [&] { ::SetFocus(parent); },
        [&] { report.Layout(300, 200); },
        [&] { report.ScrollWindow(SB_VERT, 1); },
        [&] { report.SetItemText(5, 0, "other"); },
        [&] { report.SortItems(0, 0); },
        [&] { report.ModifyStyle(RVS_TIPS, 0); },
        [&] { report.EnableWindow(FALSE); },
        [&] { report.ShowWindow(SW_HIDE); },
        [&] { parent.ShowWindow(SW_HIDE); },
        [&] { report.DeleteAllItems(); },
        [&] { report.SetSubItemWidth(0, 299); },
        [&] { report.edits = true, static_cast<CReportCtrl&>(report).BeginEdit(2, 0, 1); },
        [&] { ::ShowWindow(TipWindow(), SW_HIDE); },
        [&] { ::SetCapture(parent), Settle(), ::ReleaseCapture(); },
        [&] { report.DestroyWindow(); },
    };
    for (const auto& end : ends)
    {
        ShowTexts();
        PointAt(10, 30);
        ASSERT_TRUE(Shows()) << &end - ends;
        end();
        EXPECT_TRUE(Shows(false, 300)) << &end - ends;
        EXPECT_EQ(nullptr, ::GetCapture()) << &end - ends;
        report.EnableWindow(TRUE);
    }
    for (int rest = 3; rest > 0; --rest) // it stays away from what has been clicked
    {
        ShowTexts();
        PointAt(10, 30);
        ASSERT_TRUE(Shows());
        Click(10, 30);
        EXPECT_EQ(1, report.GetCurrentFocus()) << "through the tip";
        PointAt(12 + rest, 31);
        EXPECT_FALSE(Shows(true, 3 * kHover));
    }
}

TEST_F(ReportTip, IsNotShown)
{
    const std::function<void()> reasons[] = {
        [&] { report.ModifyStyle(RVS_TIPS, 0); },
        [&] { ::SetFocus(parent); },
        [&] { report.edits = true, static_cast<CReportCtrl&>(report).BeginEdit(2, 0, 1); },
        [&] { report.adjustTip = [](_RVITEM& item) { item.text = nullptr; }; },
        [&] { report.adjustTip = [](_RVITEM& item) { item.text = const_cast<char*>("x"); }; },
    };
    for (const auto& reason : reasons)
    {
        ShowTexts();
        reason();
        PointAt(10, 30);
        EXPECT_FALSE(Shows(true, 3 * kHover)) << &reason - reasons;
        report.adjustTip = [](_RVITEM&) {};
    }
    ShowTexts();
    report.adjustTip = [](_RVITEM& item) { item.text = const_cast<char*>("another, and a long one"); };
    PointAt(10, 30);
    EXPECT_TRUE(Shows());
    EXPECT_EQ("another, and a long one", Text());
}

// What an owner shows is asked for when the pointer comes to another cell, and not for each move.
TEST_F(ReportTip, AsksTheOwnerOnceForACell)
{
    SetHover(800);
    ShowTexts();
    report.ModifyStyle(0, RVS_CALLBACK);
    std::string text = kLong;
    int asked = 0;
    report.load = [&](_RVITEM& item) -> __int64 {
        ++asked;
        item.mask = RVIM_TEXT;
        item.text = text.data();
        return 0;
    };
    report.SetItemCount(10);
    report.UpdateWindow();
    PointAt(10, 30);
    const int first = asked;
    for (int x = 11; x < 40; ++x)
        PointAt(x, 32);
    EXPECT_EQ(first, asked);
    ASSERT_TRUE(Shows());
    const int shown = asked;
    for (int x = 11; x < 40; ++x)
        PointAt(x, 33);
    EXPECT_EQ(shown, asked);
    text = "what has come in its place, as long";
    report.RedrawItems(1, RVI_NONE);
    for (const DWORD begin = ::GetTickCount(); Text() != text && ::GetTickCount() - begin < 1000;)
        Settle();
    EXPECT_EQ(text, Text());
    text = "short";
    report.RedrawItems(1, RVI_NONE);
    EXPECT_TRUE(ShowsNone());
}

TEST_F(ReportTip, BearsWhatTheOwnerDoesMeanwhile)
{
    const std::function<void()> acts[] = {
        [&] { report.DestroyWindow(); },
        [&] { report.DeleteItem(1); },
        [&] { report.DeleteAllItems(); },
        [&] { report.UndefineAllSubItems(); },
        [&] { report.ModifyStyle(RVS_TIPS, 0); },
        [&] { ::SetFocus(parent); },
        [&] { report.ScrollWindow(SB_VERT, 1); },
        [&] { report.SendMessage(WM_SETFONT, 0, TRUE); },
        [&] { parent.ShowWindow(SW_HIDE); },
        [&] { PointAt(10, 70), Shows(true, 3 * kHover); }, // a loop of its own
    };
    for (const bool isCallback : {false, true})
        for (const auto& act : acts)
        {
            ShowTexts();
            bool isArmed = false;
            const auto once = [&] {
                if (std::exchange(isArmed, false))
                    act();
            };
            std::string text = kLong;
            report.load = [&](_RVITEM& item) -> __int64 {
                once();
                item.mask = RVIM_TEXT;
                item.text = text.data();
                return 0;
            };
            report.adjustTip = [&](_RVITEM&) { once(); };
            if (isCallback)
                report.ModifyStyle(0, RVS_CALLBACK), report.SetItemCount(10), report.UpdateWindow();
            isArmed = true;
            PointAt(10, 30);
            const bool shown = Shows(true, 3 * kHover);
            EXPECT_FALSE(shown && !isCallback) << &act - acts;
            EXPECT_FALSE(isArmed) << &act - acts;
            EXPECT_TRUE(report.m_hWnd || !TipWindow());
            report.adjustTip = [](_RVITEM&) {};
        }
}

TEST_F(ReportTip, LeavesNothingBehind)
{
    ShowTexts();
    PointAt(10, 30);
    ASSERT_TRUE(Shows());
    const int rounds = 10 * LongRounds();
    int row = 1;
    ExpectNothingLeft(
        [&] {
            row = 3 - row;
            report.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(10, row * kItemHeight + 10));
            EXPECT_NE(nullptr, TipWindow());
        },
        rounds);
    ExpectNothingLeft(
        [this] {
            ShowTexts();
            PointAt(10, 30);
            EXPECT_TRUE(Shows());
            report.DestroyWindow();
        },
        8);
}

} // namespace
