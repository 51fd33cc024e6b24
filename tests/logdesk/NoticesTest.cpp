#include "logdesk/Notices.h"

#include <gtest/gtest.h>

#include <sstream>

namespace
{

using logdesk::LogCounts;

// The notices as one text.
std::string Told(const std::vector<LogCounts>& logs, const std::vector<std::string>& foreign = {},
                 const std::string& wanted = "", std::uint32_t steps = 0)
{
    std::string told;
    for (const std::string& notice :
         logdesk::Notices({"C:\\Logs", true, logs, foreign, wanted, true, steps, 7}))
        told += notice + '\n';
    return told;
}

TEST(Notices, TellWhyRowsAreNotSeen)
{
    const LogCounts main = {"Main", 5, 0, 0};
    const LogCounts empty = {"Main", 0, 0, 0};
    const LogCounts run = {"Run", 3, 0, 0};
    const LogCounts noRun = {"Run", 0, 0, 0};
    const LogCounts early = {"Run", 9, 6, 1};
    const struct
    {
        std::string told;
        const char* expected; // its beginnings, line by line
    } cases[] = {
        {Told({main, run}), ""},
        {Told({empty, noRun}), "There are no logs in C:\\Logs yet."},
        {Told({empty, {"Run", 1, 1, 0}}), "Main has no rows"},
        {Told({main, early}),
         "Not in this view, because they are older than the first row of Main: 6 rows of Run."},
        {Told({main, {"Run", 9, 0, 9}}), ""},
        {Told({main, noRun}, {"Build"}), "Build is among the messages only: the log text shows Main and Run"},
        {Told({empty, noRun}, {"Build"}), "Build is among the messages only"},
        {Told({empty, run}, {"A", "B C"}), "Main has no rows\nA and B C are among the messages only"},
        {Told({main, run}, {"a", "b", "c", "d", "e", "f"}), "a, b, c, d and 2 more are among"},
        // A log that the user named comes first.
        {Told({main, run}, {"A", "Build"}, "build"), "Build and A are among"},
        {Told({empty, run}, {"A", "Build"}, "build"), "Build and A are among\nMain has no rows"},
        {Told({main, run}, {}, "run"), ""},
        {Told({main, noRun}, {"A"}, "Run"), "Run has no rows\nA is among"},
        {Told({empty, noRun}, {}, "notes"), "notes has no rows: its index, notes.ROW, is missing or empty."},
        {Told({main, {"Run", 4, 0, 4}}, {}, "Run"), "Run begins after the last row of Main"},
        {Told({main, {"Run", 4, 0, 3}}, {}, "Run"), ""},
        {Told({main}, {"A"}, "", 1), "A is among\nThe clock was set back at number 7: later rows"},
        {Told({main}, {}, "", 3), "The clock was set back at number 7 and 2 more times: later rows"},
    };
    for (const auto& [told, expected] : cases)
    {
        std::istringstream lines(told);
        std::istringstream beginnings(expected);
        std::string line;
        for (std::string beginning; std::getline(beginnings, beginning);)
            EXPECT_TRUE(std::getline(lines, line) && line.starts_with(beginning)) << told;
        EXPECT_FALSE(std::getline(lines, line)) << told;
    }
}

TEST(Notices, ALogIsKnownByItsFiles)
{
    const std::pair<const char*, const char*> cases[] = {
        {"Run.LOG", "Run"}, {"run.row", "run"}, {"My Log.Row", "My Log"}, {"Log.DAT", ""}, {"QmLog.LOG", ""},
        {"Main.txt", ""},   {".LOG", ""},       {"x.rowdata", ""},
    };
    for (const auto& [file, log] : cases)
        EXPECT_EQ(log, logdesk::LogOfFile(file)) << file;
}

} // namespace
