#include "logdesk/KeptSessions.h"
#include "logdesk/WindowPlace.h"

#include <gtest/gtest.h>

namespace
{

TEST(KeptSessions, TheNewestStayAndForeignFoldersAreNeverDeleted)
{
    const std::string march = logdesk::KeptFolderName({2026, 3, 31, 9, 5, 0}, {});
    EXPECT_EQ("Session 2026-03-31 09-05-00", march);
    std::vector<std::string> folders = {march};
    for (int number = 2; number <= 11; ++number)
        folders.push_back(logdesk::KeptFolderName({2026, 3, 31, 9, 5, 0}, folders));
    EXPECT_EQ(march + " (11)", folders.back());
    folders.push_back(logdesk::KeptFolderName({2025, 12, 1, 23, 59, 59}, folders));

    const std::vector<std::string> ours = folders;
    for (const char* foreign :
         {"Session", "Session 2020-01-01 00-00-00 mine", "Session 2020-01-01 00-00-00 (1)",
          "Session 2020-01-01 00-00-00 (02)", "Session 2020-01-0x 00-00-00", "Reports"})
        folders.insert(folders.begin() + 3, foreign);

    const std::vector<std::string> oldest = {ours[11], ours[0], ours[1]};
    EXPECT_EQ(oldest, logdesk::FoldersToDelete(folders, 9)) << "10 and 11 are newer than 2";
    EXPECT_EQ(12u, logdesk::FoldersToDelete(folders, 0).size());
    EXPECT_TRUE(logdesk::FoldersToDelete(folders, 12).empty());
    EXPECT_TRUE(logdesk::FoldersToDelete({}, 1).empty());
}

TEST(KeptSessions, ASessionIsItsLogsAndTheCounters)
{
    for (const char* name : {"Main.LOG", "main.row", "Log.DAT", "log.tim", "Other.Log"})
        EXPECT_TRUE(logdesk::IsSessionFile(name)) << name;
    for (const char* name : {"QmLog.LOG", "Main.txt", ".LOG", "Log", "Main.DAT"})
        EXPECT_FALSE(logdesk::IsSessionFile(name)) << name;
}

TEST(WindowPlace, AWindowIsBroughtBackOntoTheScreen)
{
    const logdesk::Place area = {100, 0, 1000, 700};
    const std::pair<logdesk::Place, logdesk::Place> cases[] = {
        {{200, 50, 500, 400}, {200, 50, 500, 400}},     // fits
        {{-50, -20, 500, 400}, {100, 0, 500, 400}},     // beyond the near edges
        {{900, 600, 500, 400}, {600, 300, 500, 400}},   // beyond the far edges
        {{0, 0, 5000, 5000}, {100, 0, 1000, 700}},      // larger than the screen
        {{300, 300, 0, -5}, {300, 300, 320, 200}},      // too small to be used
        {{-2000, 9000, 500, 400}, {100, 300, 500, 400}} // on a screen that is gone
    };
    for (const auto& [wanted, expected] : cases)
        EXPECT_EQ(expected, logdesk::BoundedPlace(wanted, area));
    EXPECT_EQ((logdesk::Place{0, 0, 200, 100}), logdesk::BoundedPlace({0, 0, 900, 640}, {0, 0, 200, 100}));

    EXPECT_EQ((logdesk::Place{150, 35, 900, 630}), logdesk::FirstPlace(area, 96));
    EXPECT_EQ((logdesk::Place{600, 360, 1800, 1280}), logdesk::FirstPlace({0, 0, 3000, 2000}, 192));

    const logdesk::Place wanted = {100, 100, 800, 600};
    const struct
    {
        std::vector<logdesk::Place> others;
        logdesk::Place place;
    } windows[] = {
        {{}, wanted},
        {{{300, 100, 800, 600}}, wanted},
        {{wanted}, {140, 140, 800, 600}},
        {{{140, 140, 9, 9}, {119, 81, 9, 9}}, {180, 180, 800, 600}},        // also one that is nearly there
        {{wanted, {140, 140, 9, 9}, {180, 180, 9, 9}}, {220, 0, 800, 600}}, // again from the top
    };
    for (const auto& [others, place] : windows)
        EXPECT_EQ(place, logdesk::CascadedPlace(wanted, others, 40, {0, 0, 1200, 800}));
}

} // namespace
