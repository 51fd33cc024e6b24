// Previews of messages: how high they are, what they show, how often they are measured; and levels.
#include "tests/logreport/PlainMessages.h"

#include "qmcommon/QmWindowText.h"
#include "vkgrafic/DrawingGuards.h"

namespace
{

constexpr COLORREF kBehind = RGB(240, 240, 240);
constexpr COLORREF kWarning = RGB(200, 200, 0);
constexpr COLORREF kError = RGB(250, 0, 0);

class MessagePreview : public MessageViewerTest
{
protected:
    MessagePreview()
    {
        CClientDC dc(&viewer);
        const VkGrafic::Selected selected(dc, ::GetStockObject(ANSI_FIXED_FONT));
        TEXTMETRIC metrics = {};
        dc.GetTextMetrics(&metrics);
        line = metrics.tmHeight;
        letter = metrics.tmAveCharWidth;
    }

    int Height(int row)
    {
        int height = -1;
        EXPECT_TRUE(viewer.GetRowHeight(row, height));
        return height;
    }

    // What a row shows below its line, and a picture of it.
    CRect Preview(int row)
    {
        CRect rect;
        EXPECT_EQ(1, viewer.GetRowRect(row, -1, rect, RVRC_WHOLE));
        if (!viewer.GetHideRow())
            rect.top += viewer.GetItemHeight();
        rect.right = std::min(rect.right, LONG{ReportPicture::kWidth});
        Paint();
        picture.Take(viewer);
        return rect;
    }

    // The first column of pixels of a colour in a rectangle; -1 for none.
    int LeftOf(const CRect& rect, COLORREF color) const
    {
        for (int x = rect.left; x < rect.right; ++x)
            if (picture.Count(CRect(x, rect.top, x + 1, rect.bottom), color) > 0)
                return x - rect.left;
        return -1;
    }

    ReportPicture picture;
    int line = 0;   // pixels, like the next
    int letter = 0; // each character of the font is as wide
};

TEST_F(MessagePreview, AreAsHighAsTheirTexts)
{
    const std::pair<std::string, int> bodies[] = {
        {"one", 1}, {"", 1}, {"one\r\ntwo", 2}, {"1\n2\n3\n4", 4}, {std::string(5000, 'x'), 1}};
    for (const auto& [body, lines] : bodies)
        Add(PlainMessage(body));
    Tick();
    for (const bool lineShown : {false, true})
    {
        viewer.SetShowReport(lineShown);
        viewer.ModifyProperty(RVP_SHOWPREVIEW, 1);
        for (int row = 0; row < 5; ++row)
            EXPECT_EQ(bodies[row].second * line + (lineShown ? viewer.GetItemHeight() : 0), Height(row))
                << row;
    }
    viewer.SetPreviewLines(2);
    viewer.SetShowReport(0);
    EXPECT_EQ(3 * line, Height(3)) << "two lines and a line of points";
    EXPECT_EQ(2 * line, Height(2));
    viewer.dpi = 192;
    viewer.SendMessage(WM_DPICHANGED_AFTERPARENT);
    EXPECT_GT(Height(0), line * 3 / 2);
}

TEST_F(MessagePreview, AreShownBelowTheLineOrAlone)
{
    Add(PlainMessage("HHHH", 4));
    Add(PlainMessage("HHHH", 3, 2));
    Add(PlainMessage("HHHH", 2));
    Tick();

    // Alone: from the left edge on, 16 pixels further for each level of indentation.
    CRect rect = Preview(0);
    const int left = LeftOf(rect, kError);
    EXPECT_TRUE(left >= 0 && left < letter) << left;
    EXPECT_EQ(0, picture.Count(rect, kBehind));
    EXPECT_EQ(left + 32, LeftOf(Preview(1), kWarning));
    EXPECT_EQ(left, LeftOf(Preview(2), ::GetSysColor(COLOR_WINDOWTEXT)));

    // Below the lines: 7 pixels further right, on a background of their own unless the row is selected.
    viewer.SetShowReport(1);
    viewer.ModifyProperty(RVP_SHOWPREVIEW, 1);
    rect = Preview(0);
    EXPECT_EQ(left + 7, LeftOf(rect, kError));
    EXPECT_GT(picture.Count(rect, kBehind), rect.Width() * rect.Height() / 2);
    viewer.SelectMsg(1);
    EXPECT_EQ(0, picture.Count(Preview(0), kBehind));
    EXPECT_GT(picture.Count(Preview(1), kBehind), 0);
    EXPECT_EQ(left + 39, LeftOf(Preview(1), kWarning));

    // The control's own text is not drawn over it.
    viewer.SelectMsg(3);
    rect = Preview(0);
    const auto drawn = picture.Count(rect, kError);
    service.messages[0] = PlainMessage("HHHH H", 4);
    viewer.FlushCacheMsgData();
    Preview(0);
    EXPECT_EQ(drawn / 4, picture.Count(rect, kError) - drawn);
}

// Only what is in sight is drawn; what is cut off above shows when it is scrolled to.
TEST_F(MessagePreview, LongOnesShowTheirLines)
{
    std::string body;
    for (int i = 0; i < 3000; ++i)
        body += i % 5 == 0 ? "H\r\n" : "\r\n";
    Add(PlainMessage(body, 4));
    Tick();
    EXPECT_EQ(std::min(3001 * line, 0x7FFF), Height(0));
    const CRect rect = Preview(0);
    for (int at = 0; (at + 1) * line < 150; ++at)
    {
        const CRect one(rect.left, rect.top + at * line, rect.left + 2 * letter, rect.top + (at + 1) * line);
        EXPECT_EQ(at % 5 == 0, picture.Count(one, kError) > 0) << at;
    }
}

TEST_F(MessagePreview, OneCanScrollToTheEndOfTheWidest)
{
    const auto settle = [this] {
        Paint();
        MSG message = {};
        while (::PeekMessage(&message, viewer, 0, WM_USER + 1000, PM_REMOVE))
            ::DispatchMessage(&message);
    };
    Add(PlainMessage("short"));
    Tick();
    settle();
    EXPECT_EQ(5 * letter, viewer.GetPreviewWidth());
    viewer.SetScrollPos32(SB_HORZ, 5000, 1);
    const int none = viewer.GetScrollPos32(SB_HORZ);
    Add(PlainMessage(std::string(1000, 'x'), 1, 3));
    Tick();
    settle();
    EXPECT_EQ(1000 * letter + 48, viewer.GetPreviewWidth());
    viewer.SetScrollPos32(SB_HORZ, 5000, 1);
    EXPECT_EQ(5000, viewer.GetScrollPos32(SB_HORZ));
    EXPECT_LT(none, 600);

    // Beside lines they are as wide as the rows, and in another view they are others.
    viewer.SetShowReport(1);
    viewer.SetScrollPos32(SB_HORZ, 5000, 1);
    EXPECT_EQ(none, viewer.GetScrollPos32(SB_HORZ));
    viewer.SetShowReport(0);
    viewer.SetMsgIdRange(1, 1);
    EXPECT_EQ(0, viewer.GetPreviewWidth());
}

TEST_F(MessagePreview, AreMeasuredOnce)
{
    struct Counting : PlainMessage
    {
        using PlainMessage::PlainMessage;
        std::uint32_t GetIndent(std::uint32_t bound) const override
        {
            measured += bound == 65535;
            return PlainMessage::GetIndent(bound);
        }
        mutable int measured = 0;
    } message{"the body"};
    OneMessageService counted(message, 1000);
    viewer.SetLogMsgService(&counted);
    viewer.AddMsg(1000, nullptr);
    Tick();
    for (int row = 0; row < 1000; ++row)
        Height(row);
    const int once = message.measured;
    EXPECT_GE(once, 980);
    for (int row = 0; row < 1000; ++row)
        Height(row);
    EXPECT_EQ(once, message.measured);
    viewer.FlushCacheMsgData();
    Height(5);
    EXPECT_EQ(once + 1, message.measured);
    viewer.SetLogMsgService(nullptr);
}

TEST_F(MessagePreview, TipsShowAllLinesWherePreviewsDoNot)
{
    Add(PlainMessage("first\r\nsecond\r\n"));
    Tick();
    viewer.SetShowReport(1);
    viewer.SetItemHeight(20);
    viewer.ModifyStyle(0, RVS_TIPS);
    viewer.SetSubItemWidth(viewer.GetSubItemFromColumn(0), 100);
    ::SetForegroundWindow(parent);
    viewer.SetFocus();
    for (const bool hasPreviews : {true, false})
    {
        viewer.ModifyProperty(RVP_SHOWPREVIEW, hasPreviews);
        Paint();
        CRect cell;
        ASSERT_EQ(1, viewer.GetItemRect(0, kLogMsgBody, cell, RVRC_WHOLE));
        CPoint point(cell.left + 10, cell.top + 10);
        viewer.ClientToScreen(&point);
        ::SetCursorPos(point.x, point.y);
        viewer.ScreenToClient(&point);
        viewer.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(point.x, point.y));
        std::string shown;
        MSG message = {};
        for (const DWORD begin = ::GetTickCount(); shown.empty() && ::GetTickCount() - begin < 1000;)
        {
            if (::PeekMessage(&message, nullptr, 0, 0, PM_REMOVE))
                ::DispatchMessage(&message);
            const HWND tip = ::FindWindow("MFCReportTipCtrl", nullptr);
            if (::IsWindowVisible(tip))
                shown = QmGetWindowText(tip);
        }
        EXPECT_EQ(hasPreviews ? "" : "first\r\nsecond", shown);
    }
}

// ---- Levels, by images and colours

class MessageLevels : public MessageViewerTest
{
protected:
    static constexpr int kWidth = 200;
    static constexpr int kHeight = 400;

    // One row for each level, the column of the level alone.
    void ShowLevels(int dpi)
    {
        viewer.DestroyWindow();
        viewer.dpi = dpi;
        parent.SetWindowPos(nullptr, 0, 0, kWidth, kHeight, SWP_NOMOVE | SWP_NOZORDER);
        ASSERT_TRUE(viewer.Create(WS_CHILD, CRect(0, 0, kWidth, kHeight), &parent, 7));
        viewer.SetLogMsgService(&service);
        viewer.SetShowHeader(0);
        viewer.SetShowReport(1);
        viewer.DeactivateAllSubItems();
        viewer.ActivateSubItem(kLogMsgLevel, 0);
        viewer.SetSubItemWidth(kLogMsgLevel, 120);
        viewer.SetFollow(0);
        service.messages.clear();
        for (std::uint32_t level = 0; level <= 6; ++level)
            Add(PlainMessage("body", level));
        Tick();
        Paint();
        picture.Take(viewer);
    }
    int Count(int row, COLORREF color)
    {
        CRect rect;
        EXPECT_EQ(1, viewer.GetRowRect(row, -1, rect, RVRC_WHOLE));
        return picture.Count(CRect(0, rect.top, kWidth, rect.bottom), color);
    }

    ReportPicture picture{kWidth, kHeight};
};

TEST_F(MessageLevels, HaveImagesAndColours)
{
    constexpr COLORREF grey = RGB(128, 128, 128), blue = RGB(0, 84, 166), yellow = RGB(255, 200, 0),
                       red = RGB(216, 32, 32), dark = RGB(120, 0, 0);
    const std::vector<COLORREF> wanted[] = {{grey},        {grey},         {blue}, {yellow, kWarning},
                                            {red, kError}, {dark, kError}, {grey}};
    std::vector<int> sizes; // of the first row's image
    for (const int dpi : {96, 144, 192})
    {
        ShowLevels(dpi);
        for (int row = 0; row < 7; ++row)
            for (const COLORREF color : {grey, blue, yellow, red, dark, kWarning, kError, RGB(255, 0, 255)})
            {
                const bool isWanted = std::count(wanted[row].begin(), wanted[row].end(), color) != 0;
                EXPECT_EQ(isWanted, Count(row, color) > 0)
                    << "row " << row << ", " << color << ", at " << dpi;
            }
        sizes.push_back(Count(0, grey));
    }
    EXPECT_GT(sizes[1], 3 * sizes[0]);
    EXPECT_EQ(sizes[1], sizes[2]);
}

} // namespace
