// How the window's height is shared, which files are remembered, and what is told for a while.
#include "logdesk/OpenedFile.h"
#include "logdesk/PaneSplit.h"
#include "logdesk/RecentFiles.h"
#include "logdesk/ToldLines.h"

#include <gtest/gtest.h>

namespace
{

using logdesk::Pane;
using logdesk::PaneSplit;
using Heights = PaneSplit::Heights;

TEST(PaneSplit, ThePlaceOfTheBarIsAShareOfTheHeight)
{
    PaneSplit split;
    split.MoveBar(150, 606);
    EXPECT_EQ((Heights{150, 6, 450}), split.LayOut(606));
    EXPECT_EQ((Heights{300, 6, 900}), split.LayOut(1206));
    const std::pair<int, Heights> moves[] = {
        {-500, {60, 6, 540}}, // the least of both panes
        {20, {60, 6, 540}},   //
        {61, {61, 6, 539}},   //
        {539, {539, 6, 61}},  //
        {5000, {540, 6, 60}}, //
    };
    for (const auto& [y, heights] : moves)
    {
        split.MoveBar(y, 606);
        EXPECT_EQ(heights, split.LayOut(606)) << y;
    }
    for (int y = 60; y <= 540; ++y)
    {
        split.MoveBar(y, 606);
        ASSERT_EQ(y, split.LayOut(606).logText) << "the bar stays under the mouse";
    }
    EXPECT_EQ((Heights{40, 6, 40}), split.LayOut(86)) << "no room for both";
    EXPECT_EQ((Heights{0, 3, 0}), split.LayOut(3));
    EXPECT_EQ((Heights{0, 0, 0}), split.LayOut(-20));
    split.SetShare(0);
    EXPECT_EQ(1, split.Share());
    split.SetShare(5000);
    EXPECT_EQ(999, split.Share());
}

TEST(PaneSplit, OnePaneAtLeastShows)
{
    PaneSplit split;
    split.Show(Pane::LogText, false);
    EXPECT_EQ((Heights{0, 0, 500}), split.LayOut(500));
    split.Show(Pane::Messages, false);
    EXPECT_EQ((Heights{500, 0, 0}), split.LayOut(500));
    split.Show(Pane::Messages, true);
    EXPECT_EQ((Heights{247, 6, 247}), split.LayOut(500));
}

TEST(RecentFiles, TheLastOpenedComesFirstAndOnce)
{
    logdesk::RecentFiles files({"a", "", "b", "A", "c"});
    EXPECT_EQ((std::vector<std::string>{"a", "b", "c"}), files.Paths());
    files.Add("B");
    EXPECT_EQ((std::vector<std::string>{"B", "a", "c"}), files.Paths());
    files.Remove("C");
    for (int i = 0; i < 20; ++i)
        files.Add(std::to_string(i));
    ASSERT_EQ(10u, files.Paths().size());
    EXPECT_EQ("19", files.Paths().front());
    EXPECT_EQ("10", files.Paths().back());

    EXPECT_EQ("&1 C:\\a && b.log", logdesk::RecentCaption(0, "C:\\a & b.log"));
    EXPECT_EQ("1&0 x", logdesk::RecentCaption(9, "x"));
    EXPECT_EQ("C:\\a && b", logdesk::RecentSessionCaption("C:\\a & b"));
    const std::string caption = logdesk::RecentCaption(1, "C:\\" + std::string(16, 'x') + "\xC3\xA4" +
                                                              std::string(99, 'y') + "\\app.log");
    EXPECT_EQ("&2 C:\\" + std::string(16, 'x') + "..." + std::string(52, 'y') + "\\app.log", caption);
}

TEST(ToldLines, LeaveWhenTheirTimeIsOverOrThereIsNoRoom)
{
    using Lines = std::vector<std::string>;
    logdesk::ToldLines told;
    told.Add("a\n\nb\n", 10, 5);
    told.Add("c", 12, 5);
    told.Add("a", 13, 5);
    EXPECT_EQ((Lines{"b", "c", "a"}), told.Lines(14));
    EXPECT_EQ((Lines{"c", "a"}), told.Lines(15));
    told.Add("d\ne\n", 15, 5);
    EXPECT_EQ((Lines{"a", "d", "e"}), told.Lines(15));
    EXPECT_EQ((Lines{"d", "e"}), told.Lines(18));
}

TEST(OpenedFile, AnIndexOrALogBesideOneBelongsToASession)
{
    const auto exists = [](const std::string& path) { return path == "C:\\x\\Run.ROW"; };
    for (const char* const path : {"C:\\x\\Run.LOG", "C:\\x\\Run.log", "C:\\y\\Any.row"})
        EXPECT_TRUE(logdesk::BelongsToSession(path, exists)) << path;
    for (const char* const path :
         {"C:\\y\\Run.LOG", "C:\\x\\app.txt", "C:\\x\\QmLog.LOG", "C:\\x\\.LOG", "log"})
        EXPECT_FALSE(logdesk::BelongsToSession(path, exists)) << path;

    EXPECT_EQ("\"C:\\a b\\LogDesk.exe\" \"D:\\x y.log\"",
              logdesk::CommandLineOf("C:\\a b\\LogDesk.exe", "D:\\x y.log"));
    EXPECT_EQ("\"d\" \"C:\\\\\"", logdesk::CommandLineOf("d", "C:\\")) << "the backslash ends no quote";
}

} // namespace
