// The log text window with all rows by number: folds, pinned headers, the strip, and a tab for each log.

#include "LogTextWindow.h"

namespace
{

using MergedViewTest = LogTextWindowTest;

// The sample session in the order of its numbers.
TEST_F(MergedViewTest, ShowsAllRowsByNumberAndKeepsItsPlace)
{
    OpenSample();
    ASSERT_TRUE(text.GoTo(3, 4)); // a row of "SQL", unfolded
    const std::uint32_t number = Style(text.GetCaretRow()).time;
    const int unfolded = text.GetRowCount();
    text.ShowMerged();
    int rows = 0;
    for (const char* const log : {"Main", "Source", "SQL"})
        rows += static_cast<int>(Rows(log).size());
    ASSERT_EQ(rows, text.GetRowCount());
    for (int row = 0; row < rows; ++row)
        ASSERT_EQ(static_cast<std::uint32_t>(row + 1), Style(row).time);
    EXPECT_EQ(number, Style(text.GetCaretRow()).time);

    text.ShowMerged(1u << 2); // "Source", without that row: the one before
    EXPECT_EQ(static_cast<int>(Rows("Source").size()), text.GetRowCount());
    EXPECT_GT(number, Style(text.GetCaretRow()).time);
    text.SetShownKinds(CQmLogTextCtrl::kErrorRows);
    EXPECT_EQ(0, text.GetRowCount());
    text.SetShownKinds(CQmLogTextCtrl::kAllRows);

    ASSERT_TRUE(text.GoToErrorInLogs(true) || text.GoToErrorInLogs(false)); // of "Main": all logs come
    EXPECT_EQ(rows, text.GetRowCount());
    EXPECT_EQ(kErrorKind, Style(text.GetCaretRow()).kind);
    const std::uint32_t error = Style(text.GetCaretRow()).time;
    text.ShowMain();
    EXPECT_EQ(error, Style(text.GetCaretRow()).time);
    EXPECT_EQ(0, text.GetRowFile(text.GetCaretRow()));
    EXPECT_EQ(unfolded, text.GetRowCount()) << "what was unfolded stays so";
}

TEST_F(MergedViewTest, FoldsBlocksOfAllLogsAndShowsTheTimeOfOne)
{
    OpenSample();
    text.SetFoldsAllLogs(true);
    text.ShowMerged();
    const int rows = text.GetRowCount();
    ASSERT_TRUE(text.GoToError(true));
    int block = text.GetCaretRow(); // of the error; the header of the job around it is another row of "Main"
    while (text.GetRowFile(--block) != 0)
    {
    }
    const std::uint32_t header = Style(block).time;
    ASSERT_TRUE(text.Collapse(block));
    EXPECT_EQ(1u, text.CountHiddenErrors(block));
    EXPECT_EQ(header + static_cast<std::uint32_t>(rows - text.GetRowCount()) + 1, Style(block + 1).time);
    text.Focus(0, 0, false);
    ASSERT_TRUE(text.GoToError(true)) << "folded away";
    EXPECT_EQ(rows, text.GetRowCount());

    ASSERT_TRUE(text.ShowDuring(text.GetCaretRow()));
    EXPECT_EQ(header, Style(0).time);
    EXPECT_EQ(kErrorKind, Style(text.GetCaretRow()).kind);
    EXPECT_GT(rows, text.GetRowCount());
    text.LeaveDuring();
    EXPECT_EQ(rows, text.GetRowCount());

    QmLogWriterDefine("Run").WriteLine("after everything");
    Tick();
    EXPECT_EQ(rows + 1, text.GetRowCount());
    EXPECT_EQ(1, text.GetRowFile(rows));
    text.ShowMain();
    ASSERT_TRUE(text.GoTo(1, 0)) << "nothing leads there but the merged view";
    EXPECT_TRUE(text.IsMerged());
    EXPECT_EQ(rows, text.GetCaretRow());
}

TEST_F(MergedViewTest, PinsTheHeadersOfTheFirstRowsBlocks)
{
    OpenSample();
    text.ShowMerged();
    text.SetPinsHeaders(true);
    text.MoveWindow(0, 0, 600, 10 * text.GetRowHeight());
    text.Focus(text.GetRowCount() - 1, 0, true);
    text.Focus(20, 0, false); // below its block's headers
    const int covered = text.GetCoveredRows();
    ASSERT_LT(1, covered);
    EXPECT_GE(20 - text.GetTopRow(), covered);
    const std::uint8_t depth = Style(text.GetTopRow() + covered).indent;
    Click(WM_LBUTTONDOWN, CPoint(200, text.GetRowHeight() / 2)); // the outermost
    EXPECT_EQ(1, Style(text.GetCaretRow()).blockBegin);
    EXPECT_GE(depth + 1, Style(text.GetCaretRow()).indent + covered);
    EXPECT_GT(20, text.GetCaretRow());
}

// A lane for bookmarks, one for each log with its errors, and one for what is found.
TEST_F(MergedViewTest, TheStripShowsWhereClicksLead)
{
    Open();
    text.SetFollow(false);
    for (const char* const log : {"Main", "Run", "Main", "SQL"})
    {
        for (int line = 0; line < 50; ++line)
            QmLogWriterDefine(log).WriteLine("line");
        QmLogWriterDefine(log).BlockBegin(kErrorKind);
        QmLogWriterDefine(log).WriteLine((std::string("wrong in ") + log).c_str());
        QmLogWriterDefine(log).BlockEnd();
    }
    const std::vector<std::uint32_t> bookmarks = {20};
    text.SetBookmarks([&]() -> const std::vector<std::uint32_t>& { return bookmarks; });
    text.ShowMerged();
    text.SetShowsStrip(true);
    text.SetFindInAll(true);
    text.SetFindText("wrong in SQL");
    text.FindNext();
    Tick();
    text.Focus(0, 0, false);
    text.UpdateWindow();

    HWND strip = ::GetWindow(text, GW_CHILD); // beside the find bar, which is a dialog
    while (strip && ::GetDlgItem(strip, IDOK))
        strip = ::GetWindow(strip, GW_HWNDNEXT);
    ASSERT_NE(nullptr, strip);
    ::UpdateWindow(strip);
    CRect client;
    ::GetClientRect(strip, client);
    const QmLogColors colors = CQmLogTextCtrl::GetThemeColors(QmLogTheme::Light);
    const auto numbers = static_cast<int>(text.GetRowCount());
    const auto rowOf = [&](int number) { return (number - 1) * static_cast<int>(client.Height()) / numbers; };
    const auto pixel = [&](int lane, int number) {
        const int width = (static_cast<int>(client.Width()) - 1) / 7;
        return CClientDC(CWnd::FromHandle(strip)).GetPixel(1 + lane * width, rowOf(number) + 1);
    };
    std::vector<int> errors;
    for (int row = 0; row < numbers; ++row)
        if (Style(row).kind == kErrorKind && Style(row).blockBegin != 0)
            errors.push_back(row + 1);
    ASSERT_EQ(4u, errors.size());
    EXPECT_EQ(colors.mark, pixel(0, 20));
    const int lanes[] = {1, 2, 1, 4};
    for (std::size_t i = 0; i < errors.size(); ++i)
        for (int lane = 1; lane <= 5; ++lane)
            EXPECT_EQ(lane == lanes[i], pixel(lane, errors[i]) == pixel(lanes[0], errors[0]))
                << i << " " << lane;
    EXPECT_NE(pixel(6, 100), pixel(6, errors[3])) << "a match";
    EXPECT_NE(pixel(5, 100), pixel(5, 3)) << "the rows in view";

    const auto click = [&](int number) {
        ::SendMessage(strip, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, rowOf(number)));
        return static_cast<int>(Style(text.GetCaretRow()).time);
    };
    EXPECT_EQ(errors[1], click(errors[1]));
    EXPECT_EQ(20, click(20));
    EXPECT_NEAR(80, click(80), 1 + numbers / static_cast<int>(client.Height()));
}

TEST_F(MergedViewTest, HasATabForEveryLog)
{
    browser.SetAllTabs(true);
    OpenSample();
    EXPECT_EQ(CQmLogBrowser::kAllLogsTab, browser.GetShownTab());
    EXPECT_TRUE(text.IsMerged());
    for (const int file : {0, 3, 2, 1})
    {
        browser.ShowTab(file);
        EXPECT_EQ(file, browser.GetShownTab());
        EXPECT_TRUE(text.IsWindowVisible()) << "the page of all tabs";
        EXPECT_EQ(file != 0, text.IsMerged());
    }
    browser.ShowTab(CQmLogBrowser::kAllLogsTab);
    text.ShowMerged(6);
    browser.ShowTab(0);
    browser.ShowTab(CQmLogBrowser::kAllLogsTab);
    EXPECT_EQ(6u, text.GetShownLogs()) << "what the tab showed before";
}

} // namespace
