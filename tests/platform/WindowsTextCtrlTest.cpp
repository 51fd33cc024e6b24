#include "qmtextctrl/QmTextCtrl.h"
#include "qmtextctrl/QmTextCtrlEntries.h"

#include "tests/support/Keys.h"
#include "tests/support/NothingLeft.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <vector>

namespace
{
constexpr COLORREF kRed = RGB(255, 0, 0);

class TestText : public CQmTextCtrl
{
public:
    ~TestText() override { DestroyWindow(); }

    int GetRowCount() override { return static_cast<int>(rows.size()); }
    int GetColumnCount() override { return 200; }
    int GetRowColumnCount(int row) override { return static_cast<int>(Text(row).size()); }
    int GetRowLeft(int) override { return 16; }

    void DrawRow(CDC& dc, int x, int y, int row) override
    {
        drawn.push_back(row);
        const COLORREF color = GetDrawColor(kRed);
        dc.FillSolidRect(x + 2, y + 2, 2, 2, color);
        dc.FillSolidRect(x + 6 + row % 30, y, 3, 3, color);
        dc.FillSolidRect(x - 9, y + GetRowHeight() - 4, 4, 8, row == GetCaretRow() ? kRed : RGB(0, 0, 255));
    }
    void PrepareRows(int first, int count) override { prepared = {first, count}; }
    bool Find(int row, int& column, const char* text, bool& found) override
    {
        ++finds;
        const std::size_t place = Text(row).find(text, static_cast<std::size_t>(column));
        found = place != std::string::npos;
        column = found ? static_cast<int>(place) : column;
        return Text(row) != "unreadable";
    }
    void OnTextMenu(CPoint point) override
    {
        menuPoint = point;
        if (onMenu)
            onMenu();
    }
    void OnUserScroll() override
    {
        ++userScrolls;
        if (onUserScroll)
            onUserScroll();
    }
    int GetMarginWidth() override { return marginWidth; }
    void DrawMargin(CDC& dc, const CRect& margin, int row) override
    {
        dc.FillSolidRect(margin, RGB(0, row, 0));
    }
    int GetRowsAbove(int row) override { return std::min(row % 10, above); }
    void DrawCover(CDC& dc, const CRect& area, int covered) override
    {
        dc.FillSolidRect(area, RGB(0, 0, 100 + covered));
    }
    bool OnCoverClick(int line, CPoint) override
    {
        coverClick = line;
        return true;
    }
    bool GetTipText(int row, std::string& line) override
    {
        line = Text(row);
        return true;
    }
    const std::string& Text(int row) const { return rows.at(static_cast<std::size_t>(row)); }

    std::vector<std::string> rows = std::vector<std::string>(100, "some text");
    std::vector<int> drawn;
    std::pair<int, int> prepared;
    int finds = 0;
    int userScrolls = 0;
    int marginWidth = 0;
    int above = 0;
    int coverClick = -1;
    CPoint menuPoint;
    std::function<void()> onMenu, onUserScroll;
};

// A visible frame with a text window of ten rows and 30 columns, and two pixels more each.
class TextCtrlTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(frame.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, 800, 600,
                                   nullptr, nullptr));
        ASSERT_TRUE(text->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &frame, 1));
        height = text->GetRowHeight();
        width = text->GetColumnWidth();
        CRect client;
        text->GetClientRect(client);
        text->MoveWindow(0, 0, 400 - client.Width() + 30 * width + 2,
                         300 - client.Height() + 10 * height + 2);
        ::SetFocus(*text);
        Paint();
    }
    std::vector<int> Paint()
    {
        text->drawn.clear();
        text->UpdateWindow();
        return text->drawn;
    }
    void Press(UINT key, BYTE modifier = 0)
    {
        const HeldKey held(modifier);
        text->SendMessage(WM_KEYDOWN, key, 1);
    }
    // In the middle of a cell.
    LPARAM At(int row, int column) const
    {
        const int x = 16 + column * width + 1;
        return MAKELPARAM(x, (row - text->GetTopRow()) * height + height / 2);
    }
    // The pointer, long enough for a tip.
    void RestOn(int row)
    {
        CPoint point(At(row, 3));
        text->SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(point.x, point.y));
        text->ClientToScreen(&point);
        ::SetCursorPos(point.x, point.y);
        text->SendMessage(WM_TIMER, 2);
    }
    std::vector<int> Selection() const
    {
        return {text->GetSelectionBeginRow(), text->GetSelectionBeginColumn(), text->GetSelectionEndRow(),
                text->GetSelectionEndColumn()};
    }
    COLORREF Pixel(int row, int column, int dx = 0) const
    {
        const CClientDC dc(text.get());
        return dc.GetPixel(16 + column * width + dx, (row - text->GetTopRow()) * height + 2);
    }
    std::vector<BYTE> Pixels() const
    {
        CRect client;
        text->GetClientRect(client);
        std::vector<BYTE> pixels(static_cast<std::size_t>(client.Width() * client.Height()) * 4);
        CClientDC dc(text.get());
        CBitmap bitmap;
        CDC memory;
        memory.CreateCompatibleDC(&dc);
        bitmap.CreateCompatibleBitmap(&dc, client.Width(), client.Height());
        memory.SelectObject(&bitmap);
        memory.BitBlt(0, 0, client.Width(), client.Height(), &dc, 0, 0, SRCCOPY);
        ::GetBitmapBits(bitmap, static_cast<LONG>(pixels.size()), pixels.data());
        return pixels;
    }
    bool PreTranslate(HWND hwnd, UINT key) const
    {
        MSG message = KeyMessage(hwnd, key);
        return CWnd::WalkPreTranslateTree(*text, &message);
    }

    CWnd frame;
    std::unique_ptr<TestText> text = std::make_unique<TestText>();
    int height = 0;
    int width = 0;
};

CPoint CaretPlace()
{
    CPoint place;
    ::GetCaretPos(&place);
    return place;
}

TEST_F(TextCtrlTest, KeysMoveTheCaretThatTheSystemShows)
{
    Press(VK_DOWN);
    Press(VK_END);
    EXPECT_EQ((std::vector{1, 9, 1, 9}), Selection());
    EXPECT_EQ(CPoint(16 + 9 * width, height), CaretPlace());
    Press(VK_UP, VK_SHIFT);
    EXPECT_EQ((std::vector{0, 9, 1, 9}), Selection());
    Press(VK_END, VK_CONTROL);
    EXPECT_EQ(99, text->GetCaretRow());
    EXPECT_EQ(90, text->GetTopRow());
    EXPECT_TRUE(text->IsAtEnd());
    EXPECT_EQ(90, text->GetScrollPos(SB_VERT));
    EXPECT_EQ(1, text->userScrolls);
    EXPECT_EQ(CPoint(16 + 9 * width, 9 * height), CaretPlace());
}

TEST_F(TextCtrlTest, WheelAndScrollBarsScrollAndLeaveTheCaret)
{
    UINT lines = 0;
    ::SystemParametersInfo(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    text->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -120));
    EXPECT_EQ(static_cast<int>(lines), text->GetTopRow());
    text->SendMessage(WM_VSCROLL, SB_PAGEDOWN);
    EXPECT_EQ(static_cast<int>(lines) + 10, text->GetTopRow());
    text->SendMessage(WM_HSCROLL, SB_LINEDOWN);
    text->SendMessage(WM_HSCROLL, SB_PAGEDOWN);
    EXPECT_EQ(31 * width + 2, text->GetScrollPos(SB_HORZ));
    EXPECT_EQ(4, text->userScrolls);
    EXPECT_EQ(0, text->GetCaretRow());
}

TEST_F(TextCtrlTest, DraggingSelectsAndScrollsUntilTheCaptureGoes)
{
    text->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, At(2, 3));
    text->SendMessage(WM_MOUSEMOVE, MK_LBUTTON, At(4, 5));
    EXPECT_EQ((std::vector{2, 3, 4, 5}), Selection());
    text->SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(0, 12 * height));
    text->SendMessage(WM_TIMER, 1);
    EXPECT_EQ(2, text->GetTopRow());
    EXPECT_EQ(1, text->userScrolls);
    ::ReleaseCapture();
    text->SendMessage(WM_TIMER, 1);
    text->SendMessage(WM_MOUSEMOVE, 0, At(3, 3));
    EXPECT_EQ(2, text->GetTopRow());
    EXPECT_EQ(12, text->GetCaretRow());
}

TEST_F(TextCtrlTest, DrawsWhatIsInvalidAndTheRowAboveForItsMarks)
{
    EXPECT_TRUE(Paint().empty());
    ::InvalidateRect(*text, CRect(0, 3 * height, 5, 5 * height), FALSE);
    EXPECT_EQ((std::vector{2, 3, 4}), Paint());
    EXPECT_EQ(std::make_pair(2, 3), text->prepared);
    text->SendMessage(WM_VSCROLL, SB_LINEDOWN);
    EXPECT_GE(3U, Paint().size());
    EXPECT_EQ(kRed, Pixel(7, 0, 2));
    text->Invalidate();
    EXPECT_EQ(12U, Paint().size()); // ten rows, the begun one, the one above
}

TEST_F(TextCtrlTest, PartialRepaintsLeaveWhatAFullOneDraws)
{
    constexpr UINT keys[] = {VK_UP, VK_DOWN, VK_LEFT, VK_RIGHT, VK_PRIOR, VK_NEXT, VK_HOME, VK_END};
    constexpr BYTE modifiers[] = {0, VK_SHIFT, VK_CONTROL};
    ::DestroyCaret();
    CFont high, low;
    LOGFONT logFont = {};
    logFont.lfHeight = 19;
    ASSERT_TRUE(high.CreateFontIndirect(&logFont));
    CWnd strip;
    ASSERT_TRUE(strip.CreateEx(0, AfxRegisterWndClass(0), "", WS_CHILD, 0, 0, 0, 0, *text, nullptr));
    logFont.lfHeight = 12;
    ASSERT_TRUE(low.CreateFontIndirect(&logFont));
    std::mt19937 random(1);
    for (int step = 0; step < 200; ++step)
    {
        Press(keys[random() % 8], modifiers[random() % 3]);
        if (step % 3 == 0)
            text->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, step % 2 == 0 ? -120 : 120));
        if (step % 5 == 0)
            text->SendMessage(WM_HSCROLL, step % 2 == 0 ? SB_LINEDOWN : SB_LINEUP);
        if (step % 4 == 0)
            text->MoveWindow(0, 0, 100 + static_cast<int>(random() % 300), static_cast<int>(random() % 300));
        if (step % 7 == 0)
            step % 2 == 0 ? text->FindInput() : text->CloseFind();
        if (step % 11 == 0)
            text->SetFont(step % 2 == 0 ? &high : &low);
        if (step % 17 == 0)
        {
            text->marginWidth = static_cast<int>(random() % 3) * 20;
            text->above = static_cast<int>(random() % 4);
            text->SetStrip(step % 2 == 0 ? &strip : nullptr, 15);
        }
        if (step % 13 == 0)
            text->rows.resize(10 + random() % 60, "other text");
        if (step % 13 == 0)
            text->OnRowsChanged();
        if (random() % 3 == 0)
            continue; // what is invalid is scrolled before it is painted
        Paint();
        const std::vector<BYTE> partial = Pixels();
        text->Invalidate();
        Paint();
        ASSERT_TRUE(partial == Pixels()) << "step " << step;
    }
}

TEST_F(TextCtrlTest, MarginStripAndCoverStayBesideTheText)
{
    const auto pixel = [this](int x, int y) {
        Paint();
        const CClientDC dc(text.get());
        return dc.GetPixel(x, y);
    };
    CWnd strip;
    ASSERT_TRUE(
        strip.CreateEx(0, AfxRegisterWndClass(0), "", WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, *text, nullptr));
    text->SetStrip(&strip, 12);
    text->FindInput();
    CRect client, place;
    text->GetClientRect(client);
    strip.GetWindowRect(place);
    EXPECT_EQ(12, place.Width());
    EXPECT_GT(client.Height() - height, place.Height()) << "not beside the find bar";
    text->CloseFind();
    strip.GetWindowRect(place);
    EXPECT_EQ(client.Height(), place.Height());

    text->marginWidth = 40;
    text->MetricsChanged();
    text->SendMessage(WM_HSCROLL, SB_LINERIGHT);
    text->SendMessage(WM_VSCROLL, SB_LINEDOWN);
    EXPECT_EQ(RGB(0, 3, 0), pixel(39, 2 * height + 5));
    EXPECT_TRUE(text->IsInMargin(CPoint(39, 5)));
    EXPECT_FALSE(text->IsInMargin(CPoint(40, 5)));
    text->SetFocus();
    text->Focus(3, 0, false);
    text->SendMessage(WM_HSCROLL, SB_PAGERIGHT);
    EXPECT_GT(0, CaretPlace().y) << "no caret in the margin";

    text->above = 2;
    text->Reload();
    text->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -120));
    ASSERT_EQ(3, text->GetTopRow());
    EXPECT_EQ(RGB(0, 0, 102), pixel(5, 2 * height - 1));
    EXPECT_EQ(RGB(0, 5, 0), pixel(5, 2 * height));
    text->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(60, height + 1));
    EXPECT_EQ(1, text->coverClick);
    EXPECT_EQ(0, text->GetCaretRow());
    EXPECT_NE(text->m_hWnd, ::GetCapture());
    EXPECT_EQ(-1, text->GetCoveredLine(CPoint(60, 2 * height)));
}

TEST_F(TextCtrlTest, HasColoursOfItsOwnAndTellsOfZoom)
{
    const QmTextColors colors = {RGB(1, 2, 3), RGB(250, 250, 250), RGB(40, 0, 40),
                                 kRed,         RGB(0, 40, 40),     kRed};
    text->SetTextColors(&colors);
    text->Focus(3, 0, false);
    text->Select(3, 4);
    Paint();
    EXPECT_EQ(colors.selection, Pixel(3, 3));
    EXPECT_EQ(colors.window, Pixel(3, 4));
    EXPECT_EQ(colors.text, text->GetDrawColor(RGB(0, 0, 0))) << "black could not be read";
    ::SetFocus(frame);
    Paint();
    EXPECT_EQ(colors.inactiveSelection, Pixel(3, 3));
    text->SetTextColors(nullptr);
    Paint();
    EXPECT_EQ(::GetSysColor(COLOR_WINDOW), Pixel(3, 4));

    const auto wheel = [this](int flags, int delta) {
        text->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(flags, delta));
        return text->GetTopRow();
    };
    EXPECT_LT(0, wheel(MK_CONTROL, -120)) << "the wheel scrolls while nobody zooms";
    std::vector<int> steps;
    text->SetZoom([&](int by) { steps.push_back(by); });
    const int top = text->GetTopRow();
    for (const int delta : {120, -60, -60, -240})
        EXPECT_EQ(top, wheel(MK_CONTROL, delta));
    for (const UINT key : {VK_OEM_PLUS, VK_SUBTRACT, static_cast<int>('0')})
        Press(key, VK_CONTROL);
    Press(VK_OEM_PLUS);
    EXPECT_EQ((std::vector{1, -1, -2, 1, -1, 0}), steps);
    EXPECT_LT(wheel(0, 120), top);
}

BOOL CALLBACK CountTip(HWND hwnd, LPARAM counted)
{
    const bool isTip =
        ::IsWindowVisible(hwnd) && (::GetWindowLong(hwnd, GWL_EXSTYLE) & WS_EX_TOOLWINDOW) != 0;
    *reinterpret_cast<int*>(counted) += isTip ? 1 : 0;
    return TRUE;
}

int TipCount()
{
    int count = 0;
    ::EnumThreadWindows(::GetCurrentThreadId(), CountTip, reinterpret_cast<LPARAM>(&count));
    return count;
}

TEST_F(TextCtrlTest, TipsShowLinesThatDoNotFit)
{
    text->rows[2] = std::string(5000, 'x');
    const auto rest = [this](int row) {
        RestOn(row);
        return TipCount();
    };
    EXPECT_EQ(0, rest(2)) << "off by default";
    text->SetLineTips(true);
    EXPECT_EQ(0, rest(1)) << "fits";
    EXPECT_EQ(1, rest(2));
    text->SendMessage(WM_TIMER, 2);
    EXPECT_EQ(1, TipCount()) << "as long as the pointer rests";
    EXPECT_EQ(0, rest(3));
    const std::pair<UINT, WPARAM> ends[] = {
        {WM_KEYDOWN, VK_SHIFT}, {WM_LBUTTONDOWN, 0}, {WM_RBUTTONDOWN, 0}, {WM_VSCROLL, SB_BOTTOM}};
    for (const auto& [message, wParam] : ends)
    {
        text->Focus(0, 0, false);
        ::ReleaseCapture();
        EXPECT_EQ(1, rest(2)) << message;
        text->SendMessage(message, wParam, message == WM_VSCROLL ? 0 : At(2, 3));
        EXPECT_EQ(0, TipCount()) << message;
    }
    ::ReleaseCapture();
    text->Focus(0, 0, false);
    EXPECT_EQ(1, rest(2));
    ::SetCursorPos(700, 590);
    text->SendMessage(WM_TIMER, 2);
    EXPECT_EQ(0, TipCount()) << "the pointer has gone";
}

TEST_F(TextCtrlTest, SelectedCellsHaveTheSelectionsColours)
{
    text->Focus(2, 0, false);
    Paint();
    text->Select(3, 4);
    EXPECT_EQ((std::vector{1, 2, 2, 3, 3, 4}), Paint());
    EXPECT_EQ(::GetSysColor(COLOR_HIGHLIGHT), Pixel(2, 8));
    EXPECT_EQ(::GetSysColor(COLOR_WINDOW), Pixel(2, 9));
    EXPECT_EQ(::GetSysColor(COLOR_HIGHLIGHT), Pixel(3, 3));
    EXPECT_EQ(::GetSysColor(COLOR_WINDOW), Pixel(3, 4));
    EXPECT_EQ(::GetSysColor(COLOR_HIGHLIGHTTEXT), Pixel(3, 0, 2));
    EXPECT_EQ(kRed, Pixel(4, 0, 2));
    text->FindInput();
    Paint();
    EXPECT_EQ(::GetSysColor(COLOR_HIGHLIGHT), Pixel(3, 3)) << "what is found can be seen";
    const HWND bar = ::GetParent(::GetFocus());
    for (const HWND before : {::GetFocus(), ::GetDlgItem(bar, IDOK), text->m_hWnd})
    {
        ::SetFocus(before);
        Paint();
        EXPECT_EQ(::GetSysColor(COLOR_HIGHLIGHT), Pixel(3, 3));
        ::SetFocus(frame);
        Paint();
        EXPECT_EQ(::GetSysColor(COLOR_BTNFACE), Pixel(3, 3));
    }
    EXPECT_EQ(::GetSysColor(COLOR_BTNTEXT), Pixel(3, 0, 2));
    EXPECT_EQ(text->GetDrawColor(::GetSysColor(COLOR_WINDOW)), ::GetSysColor(COLOR_WINDOWTEXT));
}

TEST_F(TextCtrlTest, FindBarFindsAroundTheEnd)
{
    text->rows[3] = "unreadable";
    text->rows[50] = "AB AB";
    text->rows[80] = "x AB";
    CQmTextCtrlEntryFindNext next(text.get());
    EXPECT_FALSE(next.IsEnabled());
    CQmTextCtrlEntryFindInput(text.get()).Execute();
    const HWND edit = ::GetFocus();
    const HWND bar = ::GetParent(edit);
    ASSERT_EQ(static_cast<HWND>(*text), ::GetParent(bar));
    ::SendMessage(edit, WM_CHAR, 'a', 1);
    ::SendMessage(edit, WM_CHAR, 'b', 1);
    EXPECT_TRUE(next.IsEnabled());

    EXPECT_TRUE(PreTranslate(edit, VK_RETURN));
    EXPECT_EQ((std::vector{50, 0, 50, 2}), Selection());
    EXPECT_EQ(51, text->finds);
    EXPECT_EQ(50, text->GetTopRow());
    next.Execute();
    EXPECT_EQ((std::vector{50, 3, 50, 5}), Selection());
    EXPECT_TRUE(PreTranslate(edit, VK_F3));
    EXPECT_EQ((std::vector{80, 2, 80, 4}), Selection());
    next.Execute();
    EXPECT_EQ((std::vector{50, 0, 50, 2}), Selection());
    {
        const HeldKey held(VK_SHIFT);
        PreTranslate(edit, VK_RETURN);
        PreTranslate(edit, VK_F3);
    }
    EXPECT_EQ((std::vector{50, 3, 50, 5}), Selection());

    ::SetWindowText(edit, "absent");
    text->finds = 0;
    EXPECT_FALSE(text->FindNext());
    EXPECT_FALSE(text->FindPrevious());
    EXPECT_EQ(202, text->finds); // each row once, the first one's other part again
    text->rows[51] = std::string(3000000, 'A');
    text->SetFindText("A");
    text->Focus(51, 2000000, false);
    text->finds = 0;
    EXPECT_TRUE(text->FindPrevious());
    EXPECT_EQ(1999999, text->GetCaretColumn());
    EXPECT_GT(30, text->finds) << "each one may read the whole row";
    text->rows[51] = "";
    text->SetFindText("ABSENT");
    text->Focus(50, 3, false);
    text->Select(50, 5);
    EXPECT_EQ((std::vector{50, 3, 50, 5}), Selection());

    Press(VK_END, VK_CONTROL);
    CRect barRect;
    ::GetClientRect(bar, barRect);
    EXPECT_EQ(99 - (10 * height + 2 - barRect.Height()) / height + 1, text->GetTopRow());
    EXPECT_TRUE(PreTranslate(edit, VK_ESCAPE));
    EXPECT_EQ(static_cast<HWND>(*text), ::GetFocus());
    EXPECT_FALSE(::IsWindowVisible(bar));
    EXPECT_EQ(90, text->GetTopRow());
}

TEST_F(TextCtrlTest, MenuComesAtThePointOrTheCaret)
{
    text->Focus(1, 0, false);
    text->Select(2, 5);
    text->SendMessage(WM_RBUTTONDOWN, 0, At(2, 4));
    EXPECT_EQ((std::vector{1, 0, 2, 5}), Selection());
    text->SendMessage(WM_RBUTTONDOWN, 0, At(5, 4));
    EXPECT_EQ((std::vector{5, 4, 5, 4}), Selection());
    const auto window = reinterpret_cast<WPARAM>(static_cast<HWND>(*text));
    text->SendMessage(WM_CONTEXTMENU, window, MAKELPARAM(20, 30));
    EXPECT_EQ(CPoint(20, 30), text->menuPoint);
    text->SendMessage(WM_CONTEXTMENU, window, MAKELPARAM(-1, -1));
    EXPECT_EQ(CPoint(16 + 4 * width, 6 * height), text->menuPoint);
}

TEST_F(TextCtrlTest, EndsInItsOwnMenuAndScroll)
{
    const HWND hwnd = *text;
    text->onMenu = [this] { text.reset(); };
    ::SendMessage(hwnd, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(hwnd), MAKELPARAM(20, 30));
    EXPECT_FALSE(::IsWindow(hwnd));

    text = std::make_unique<TestText>();
    ASSERT_TRUE(text->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &frame, 1));
    text->FindInput();
    text->CloseFind();
    text->onUserScroll = [this] { text.reset(); };
    text->SendMessage(WM_LBUTTONDOWN, 0, At(0, 0));
    text->SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(0, 1000));
    text->SendMessage(WM_TIMER, 1);
    EXPECT_EQ(nullptr, text);
    EXPECT_EQ(nullptr, ::GetCapture());
}

TEST_F(TextCtrlTest, LeavesNothingBehind)
{
    ExpectNothingLeft([this] {
        text = std::make_unique<TestText>();
        ASSERT_TRUE(text->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &frame, 1));
        text->FindInput();
        text->SelectAll();
        Paint();
        text->SetLineTips(true);
        text->rows[2] = std::string(5000, 'x');
        RestOn(2);
    });
}
} // namespace
