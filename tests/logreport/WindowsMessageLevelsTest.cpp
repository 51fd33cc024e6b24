// Levels by images and colours, and messages of the service that our programs use.
#include "tests/logreport/PlainMessages.h"

#include "ReportHeaderCtrl.h"
#include "msgservice/MsgService.h"

namespace
{

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
    constexpr COLORREF warning = RGB(200, 200, 0), error = RGB(250, 0, 0);
    const std::vector<COLORREF> wanted[] = {{grey},       {grey},        {blue}, {yellow, warning},
                                            {red, error}, {dark, error}, {grey}};
    std::vector<int> sizes; // of the first row's image
    for (const int dpi : {96, 144, 192})
    {
        ShowLevels(dpi);
        for (int row = 0; row < 7; ++row)
            for (const COLORREF color : {grey, blue, yellow, red, dark, warning, error, RGB(255, 0, 255)})
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

// By the service that sorts on a thread of its own.
TEST_F(MessageLevels, AClickOnAHeaderSortsTheMessages)
{
    msgservice::MsgService real;
    for (const char* body : {"b", "c", "a"})
    {
        msgservice::MessageFields fields;
        fields.body = body;
        real.Store()->Add(fields);
    }
    real.Settle();
    real.AddViewer(viewer);
    viewer.SetShowReport(1);
    const auto bodies = [&] {
        real.Settle();
        Tick();
        std::string told;
        for (int row = 0; row < viewer.GetRowCount(); ++row)
            told += Text(row, kLogMsgBody);
        int subitem = -1;
        int ascending = -1;
        return told + (viewer.GetSortSettings(&subitem, &ascending) ? " by " + Line(subitem, ascending) : "");
    };
    EXPECT_EQ("bca", bodies());
    const HWND header = ::FindWindowEx(viewer, nullptr, WC_HEADERA, nullptr);
    const auto click = [header](int x) {
        ::SendMessage(header, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, 5));
        ::SendMessage(header, WM_LBUTTONUP, 0, MAKELPARAM(x, 5));
    };
    const int body = viewer.GetSubItemWidth(kLogMsgTimestamp) + viewer.GetSubItemWidth(kLogMsgLevel) + 20;
    click(body);
    EXPECT_EQ("abc by 3 1", bodies());
    click(body);
    EXPECT_EQ("cba by 3 0", bodies());

    const std::array<LogMsgFilter, 3> filters = {LogMsgFilter{kLogMsgBody, kLogMsgNotContain, "b", 0}};
    real.SetFilters(filters.data(), 3);
    real.Apply();
    viewer.RefreshHeader();
    EXPECT_EQ("ca by 3 0", bodies());
    CReportHeaderCtrl& columns = *viewer.GetHeaderCtrl();
    EXPECT_TRUE(columns.IsItemFiltered(columns.GetItemOfColumn(2)));
    EXPECT_FALSE(columns.IsItemFiltered(columns.GetItemOfColumn(1)));
    real.RemoveViewer(viewer);
}

} // namespace
