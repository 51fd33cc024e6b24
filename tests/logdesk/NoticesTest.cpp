#include "logdesk/Notices.h"

#include <gtest/gtest.h>

#include <sstream>

namespace
{

using logdesk::FolderState;
using logdesk::LogCounts;

// The notices as one text.
std::string Told(std::vector<LogCounts> logs, const std::vector<std::string>& foreign = {},
                 const std::string& wanted = "")
{
    FolderState state;
    state.folder = "C:\\Logs";
    state.logtool = "logtool";
    for (const char* name : {"Main", "Run", "SQL"})
        state.logs.push_back({name, 0, 0, 0});
    for (const LogCounts& log : logs)
        for (LogCounts& shown : state.logs)
            if (shown.name == log.name)
                shown = log;
    state.mainNumber = 7;
    state.foreign = foreign;
    state.wanted = wanted;
    std::string told;
    for (const std::string& notice : Notices(state))
        told += notice + '\n';
    return told;
}

TEST(Notices, TellWhyRowsAreNotSeen)
{
    const LogCounts main = {"Main", 5, 0, 0};
    const LogCounts run = {"Run", 3, 0, 0};
    const struct
    {
        std::string told;
        const char* expected; // its beginnings, line by line
    } cases[] = {
        {Told({main, run}), ""},
        {Told({}), "There are no logs in C:\\Logs yet."},
        {Told({{"Run", 1, 1, 0}, {"SQL", 2, 2, 0}}), "Main has no rows"},
        {Told({main, {"Run", 9, 6, 1}}),
         "Not shown, because they are older than the first row of Main: 6 rows of Run."},
        {Told({main, {"Run", 9, 0, 9}}), ""},
        {Told({main}, {"Build"}), "Build is not shown: LogDesk shows Main, Run and SQL."},
        {Told({}, {"Build"}), "Build is not shown"},
        {Told({run}, {"A", "B C"}), "Main has no rows\nA and B C are not shown"},
        {Told({main}, {"a", "b", "c", "d", "e", "f"}), "a, b, c, d and 2 more are not shown"},
        // A log that the user named comes first.
        {Told({main}, {"A", "Build"}, "build"), "Build and A are not shown"},
        {Told({run}, {"A", "Build"}, "build"), "Build and A are not shown\nMain has no rows"},
        {Told({main, run}, {}, "run"), ""},
        {Told({main}, {"A"}, "Run"), "Run has no rows\nA is not shown"},
        {Told({}, {}, "notes"), "notes has no rows: its index, notes.ROW, is missing or empty."},
        {Told({main, {"Run", 4, 0, 4}}, {}, "Run"), "Run begins after the last row of Main"},
        {Told({main, {"Run", 4, 0, 3}}, {}, "Run"), ""},
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
    EXPECT_NE(std::string::npos, Told({main}, {"Build"}).find("To read it: logtool cat --log Build\n"));
    EXPECT_NE(std::string::npos, Told({main}, {"B C", "D"}).find("logtool cat --log \"B C\"\n"));
    EXPECT_NE(std::string::npos, Told({main, {"Run", 9, 6, 1}}).find("logtool cat --to 6\n"));
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
