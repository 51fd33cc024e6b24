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
        Show(style | WS_VISIBLE | RVS_NOHEADER | RVS_TIPS,
             {kLong, kLong, kLong, "x", "x", "x", "x", "x", "x", "x"});
        PointAt(400, 250);
        UseSystem();
    }

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
    std::string Text() const { return TipWindow() ? QmGetWindowText(TipWindow()) : "none"; }

    // Waits for it, and whether it has come.
    static bool Comes(const std::function<bool()>& what, DWORD milliseconds = 1500)
    {
        for (const DWORD begin = ::GetTickCount(); !what() && ::GetTickCount() - begin < milliseconds;)
            Settle();
        return what();
    }
    bool Shows(DWORD milliseconds = 1500)
    {
        return Comes([this] { return TipWindow() != nullptr; }, milliseconds);
    }
    bool IsGone()
    {
        return Comes([this] { return TipWindow() == nullptr; }, 300);
    }

    UINT hover = 0; // the user's
};

TEST_F(ReportTip, LooksAsTheCell)
{
    const COLORREF plain = ::GetSysColor(COLOR_WINDOW);
    struct
    {
        DWORD style;
        std::function<void()> prepare;
        int x; // where the text begins
        COLORREF background;
    } const cases[] = {
        {0, [&] { report.SetItemState(1, RVIS_BOLD, RVIS_BOLD); }, kTextX, plain},
        {0, [&] { Select(1, 1); }, kTextX, ::GetSysColor(COLOR_HIGHLIGHT)},
        {RVS_CELLFOCUS, [&] { Select(1, 1), report.AdjustFocus(1, 0); }, kTextX, plain},
        {0, [&] { report.SetColors(1, 0, 1); }, kTextX, RGB(250, 250, 0)},
        {RVS_ALTERNATEROWS, [] {}, kTextX, RGB(200, 0, 0)},
        {RVS_TREE, [] {}, kTextX + kItemHeight, plain},
        {RVS_TREE, [&] { report.SetTreeSubItem(report.GetItemHandle(1), 1); }, kTextX + kItemHeight, plain},
        {0, [&] { report.SetItemCheck(1, 0, 1); }, kTextX + 8 + 6, plain},
        {0, [&] { report.SetItemText(1, 0, "gr\xFC\xDF, and all the rest"); }, kTextX, plain},
        {0, [&] { report.SetItemText(1, 0, "a first line\nsecond"); }, kTextX, plain},
    };
    for (const auto& each : cases)
    {
        ShowTexts(each.style);
        report.DeleteAllColors();
        report.InsertColor(0, RGB(200, 0, 0));
        report.InsertColor(1, RGB(250, 250, 0));
        report.SetItemText(1, 1, (std::string(kLong) + kLong).c_str());
        each.prepare();
        report.SetSubItemWidth(0, 80);
        Redraw();
        ReportPicture cell;
        cell.Take(report);
        PointAt(each.x + 10, kItemHeight + 10);
        ASSERT_TRUE(Shows()) << &each - cases;
        const CRect place = PlaceOf(TipWindow(), report);
        EXPECT_EQ(each.x - kBorderX, place.left) << &each - cases;
        ReportPicture tip;
        tip.Take(TipWindow());
        int different = 0;
        for (int x = 0; x < 30; ++x)
            for (int y = kBorderY; y < kItemHeight - 5; ++y)
                different += cell.At(each.x + x, place.top + y) != tip.At(kBorderX + x, y);
        EXPECT_EQ(0, different) << &each - cases;
        EXPECT_EQ(each.background, tip.At(kBorderX - 2, 4)) << &each - cases;
    }
}

TEST_F(ReportTip, ShowsWholeTextsOfCellsThatCutThem)
{
    SetHover(300);
    ShowTexts(RVS_FIXEDROW);
    report.SetItemText(-1, 0, "the fixed row has one, too");
    report.SetItemText(3, 1, "wide");
    report.SetItemText(4, 2, std::string(65535, 'w').c_str());
    report.SetItemText(5, 0, "two\r\nlines\n");
    report.SetItemText(6, 0, nullptr);
    const auto pointTo = [this](int row, int x) {
        CRect rect;
        report.GetRowRect(row, 0, rect, RVRC_WHOLE);
        PointAt(x, rect.top + 10);
    };
    DWORD begin = ::GetTickCount();
    pointTo(0, 10);
    ASSERT_TRUE(Shows());
    EXPECT_LE(290u, ::GetTickCount() - begin) << "the system's hover time";
    // The next ones show at once.
    const std::tuple<int, int, std::string> cases[] = {
        {0, 10, kLong},  {1, 10, kLong},  {-1, 10, "the fixed row has one, too"},
        {3, 60, "none"}, {3, 10, "none"}, {5, 10, "two\r\nlines"},
        {6, 10, "none"}, {0, 2, "none"}};
    for (const auto& [row, x, text] : cases)
    {
        pointTo(row, x);
        EXPECT_EQ(text, Text()) << row << ' ' << x;
    }
    begin = ::GetTickCount();
    pointTo(4, 110);
    ASSERT_TRUE(Shows());
    EXPECT_LT(::GetTickCount() - begin, 1000u);
    EXPECT_EQ("...", Text().substr(Text().size() - 3));
    CRect screen;
    CRect both;
    ::SystemParametersInfo(SPI_GETWORKAREA, 0, screen, 0);
    both.UnionRect(screen, PlaceOf(TipWindow()));
    EXPECT_TRUE(both == screen);
}

TEST_F(ReportTip, IsGoneAfter)
{
    const std::function<void()> ends[] = {
        [&] { PointAt(10, 70); },
        [&] { PointAt(10, 250); }, // below the control
        [&] { Key(VK_SHIFT); },
        [&] { SystemMouse(MOUSEEVENTF_WHEEL, -120); },
        [&] { Mouse(WM_RBUTTONDOWN, 10, 30); },
        [&] { ::SetFocus(parent); },
        [&] { report.Layout(300, 200); },
        [&] { report.ScrollWindow(SB_VERT, 1); },
        [&] { report.SetItemText(5, 0, "other"); },
        [&] { report.SortItems(0, 0); },
        [&] { report.ModifyStyle(RVS_TIPS, 0); },
        [&] { report.EnableWindow(FALSE); },
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
        EXPECT_TRUE(IsGone()) << &end - ends;
        EXPECT_EQ(nullptr, ::GetCapture()) << &end - ends;
        report.EnableWindow(TRUE);
    }
    ShowTexts();
    PointAt(10, 30);
    ASSERT_TRUE(Shows());
    Click(10, 30);
    EXPECT_EQ(1, report.GetCurrentFocus()) << "through the tip";
    PointAt(12, 31);
    EXPECT_FALSE(Shows(3 * kHover)) << "again over what has been clicked";
}

TEST_F(ReportTip, IsUpToStylesFocusAndSubclass)
{
    const auto answer = [this](const char* text) {
        report.adjustTip = [text](_RVITEM& item) { item.text = const_cast<char*>(text); };
    };
    const std::pair<std::function<void()>, std::string> cases[] = {
        {[&] { report.ModifyStyle(RVS_TIPS, 0); }, "none"},
        {[&] { ::SetFocus(parent); }, "none"},
        {[&] { report.edits = true, static_cast<CReportCtrl&>(report).BeginEdit(2, 0, 1); }, "none"},
        {[&] { answer(nullptr); }, "none"},
        {[&] { answer("x"); }, "none"},
        {[&] { answer("another one that is long"); }, "another one that is long"},
    };
    for (const auto& [prepare, text] : cases)
    {
        ShowTexts();
        prepare();
        PointAt(10, 30);
        Shows(3 * kHover);
        EXPECT_EQ(text, Text());
    }
}

// What an owner shows is asked for when the pointer comes to another cell, and not for each move.
TEST_F(ReportTip, AsksTheOwnerOnceForACell)
{
    SetHover(600);
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
    for (const bool shows : {false, true})
    {
        EXPECT_TRUE(!shows || Shows());
        const int before = asked;
        for (int x = 11; x < 40; x += 6)
            PointAt(x, 32);
        EXPECT_EQ(before, asked);
    }
    for (const char* other : {"what has come in its place, as long", "short"})
    {
        text = other;
        report.RedrawItems(1, RVI_NONE);
        EXPECT_TRUE(Comes([&] { return Text() == (text == "short" ? "none" : text); }));
    }
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
        [&] { ::SetCapture(parent); },
        [&] { PointAt(10, 70), Shows(3 * kHover); }, // a loop of its own
    };
    for (const bool isCallback : {false, true})
        for (const auto& act : acts)
        {
            ShowTexts();
            std::string text = kLong;
            std::function<void()> once = [] {};
            report.load = [&](_RVITEM& item) -> __int64 {
                std::exchange(once, [] {})();
                item.mask = RVIM_TEXT;
                item.text = text.data();
                return 0;
            };
            report.adjustTip = [&](_RVITEM&) { std::exchange(once, [] {})(); };
            if (isCallback)
                report.ModifyStyle(0, RVS_CALLBACK), report.SetItemCount(10), report.UpdateWindow();
            bool isDone = false;
            once = [&] { isDone = true, act(); };
            PointAt(10, 30);
            EXPECT_FALSE(Shows(3 * kHover) && !isCallback) << &act - acts;
            EXPECT_TRUE(isDone && (report.m_hWnd || !TipWindow())) << &act - acts;
            report.adjustTip = [](_RVITEM&) {};
            ::ReleaseCapture();
        }
}

TEST_F(ReportTip, LeavesNothingBehind)
{
    ShowTexts();
    PointAt(10, 30);
    ASSERT_TRUE(Shows());
    int row = 1;
    const auto showNext = [&] {
        row = 3 - row;
        report.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(10, row * kItemHeight + 10));
        EXPECT_NE(nullptr, TipWindow());
    };
    ExpectNothingLeft(showNext, 10 * LeakRounds());
    const auto showFirst = [&] {
        ShowTexts();
        PointAt(10, 30);
        EXPECT_TRUE(Shows());
    };
    ExpectNothingLeft(showFirst, 8);
}

} // namespace
