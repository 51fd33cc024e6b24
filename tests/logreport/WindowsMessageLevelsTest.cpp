// Levels by images and colours.
#include "tests/logreport/PlainMessages.h"

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

} // namespace
