#include "LogtoolTest.h"

#include "host/logtool/CursorFile.h"
#include "host/logtool/Follower.h"

#include <filesystem>
#include <fstream>

namespace
{

class TailTest : public LogtoolTest
{
protected:
    ~TailTest() override { std::filesystem::remove(cursorPath); }

    // What one look at the logs shows.
    std::string Poll()
    {
        shown.str("");
        follower.Poll();
        EXPECT_EQ(0u, session.files.OpenHandles()) << "no file stays open between two looks";
        return shown.str();
    }

    std::string CursorText()
    {
        std::ifstream file(cursorPath, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::string cursorPath =
        (std::filesystem::temp_directory_path() /
         ("logtool_cursor_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
          testing::UnitTest::GetInstance()->current_test_info()->name()))
            .string();
    std::ostringstream shown;
    std::ostringstream messages;
    const std::vector<std::string> logs = {"Main", "Run"};
    logtool::TextOutput text{shown, logtool::TextStyle(), logs};
    logtool::Follower follower{logs, text, messages};
};

} // namespace

// Main has a1 (number 1), a2 (2) and a3 (5) and an empty row 6; Run has b1 (3) and an empty row 4.
TEST_F(TailTest, ShowsTheLastRowsOfAllLogs)
{
    Write("Main", "a1\n");
    Write("Main", "a2");
    Write("Run", "b1\n");
    Write("Main", "\na3\n");
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{}, "a1\na2\nb1\na3\n"},
        {{"-n", "2"}, "b1\na3\n"},
        {{"-n", "3"}, "a2\nb1\na3\n"},
        {{"-n", "0"}, ""},
        {{"--after", "0"}, "a1\na2\nb1\na3\n"},
        {{"--after", "2"}, "b1\na3\n"},
        {{"--after", "3"}, "a3\n"},
        {{"--after", "5"}, ""},
        {{"--after", "4294967295"}, ""},
        {{"-n", "1", "--log", "Run"}, "b1\n"},
    };
    for (const auto& [options, expected] : cases)
    {
        std::vector<std::string> words = {"tail"};
        words.insert(words.end(), options.begin(), options.end());
        EXPECT_EQ(expected, Run(words)) << testing::PrintToString(options);
    }
}

TEST_F(TailTest, FollowsLogsThatGrow)
{
    Write("Main", "a1\n");
    EXPECT_EQ("a1\n", Poll());
    EXPECT_EQ("", Poll());
    Write("Run", "b1\n");
    EXPECT_EQ("b1\n", Poll()) << "a log that did not exist before";
    Write("Main", "a2\na3\n");
    Write("Run", "b2\n");
    EXPECT_EQ("a2\nb2\na3\n", Poll());
    EXPECT_EQ("", messages.str());
}

TEST_F(TailTest, AnUnfinishedLineIsShownAfterAQuietLookAndContinued)
{
    Poll();
    Write("Main", "one");
    EXPECT_EQ("", Poll());
    Write("Main", " two");
    EXPECT_EQ("", Poll()) << "it still grows";
    EXPECT_EQ("one two", Poll());
    EXPECT_EQ("", Poll());
    Write("Main", " three\nfour\n");
    EXPECT_EQ(" three\nfour\n", Poll());

    Write("Main", "five");
    Poll();
    EXPECT_EQ("five", Poll());
    Write("Run", "between\n");
    EXPECT_EQ("\nbetween\n", Poll());
    Write("Main", " six\n");
    EXPECT_EQ(" six\n", Poll()) << "on a line of its own";
}

TEST_F(TailTest, StartsBehindWhatIsThere)
{
    Write("Main", "a1\nunfinished");
    Write("Run", "b1\n");
    follower.StartAtLast(0);
    EXPECT_EQ("", Poll());
    Write("Main", " line\na2\n");
    Write("Run", "b2\n");
    EXPECT_EQ(" line\nb2\na2\n", Poll());
}

TEST_F(TailTest, ANewSessionIsShownFromItsBeginning)
{
    Write("Main", "old1\nold2\nold3\n");
    Poll();
    DeleteAll();
    Write("Main", "new\n");
    EXPECT_EQ("new\n", Poll());
    EXPECT_EQ("logtool: a new session has begun\n", messages.str());

    // One that has outgrown the old one before anybody looked.
    DeleteAll();
    Write("Main", "newer1\nnewer2\nnewer3\n");
    EXPECT_EQ("newer1\nnewer2\nnewer3\n", Poll());

    EXPECT_EQ("logtool: a new session has begun\nlogtool: a new session has begun\n", messages.str());
}

TEST_F(TailTest, TheCounterTellsANewSessionWhoseLogBeginsAlike)
{
    logtool::Follower run({"Run"}, text, messages);
    Write("Run", "r1\n");
    Write("Main", "m1\nm2\nm3\n");
    run.Poll();
    DeleteAll();
    Write("Run", "r1\nr2\n");
    shown.str("");
    run.Poll();
    EXPECT_EQ("r1\nr2\n", shown.str());
}

TEST_F(TailTest, TheCommandFollowsNewLogsUntilTheUserEndsIt)
{
    Write("Main", "m\n");
    int looks = 0;
    host.wait = [&] {
        if (looks == 0)
            Write("Extra", "x\n");
        return ++looks < 3;
    };
    EXPECT_EQ("m\nx\n", Run({"tail", "-f"}));
    EXPECT_EQ(3, looks);
    EXPECT_EQ(logtool::kDone, exitCode);
}

// The row of a log's next line has its number long before its text, so a number alone would lose lines.
TEST_F(TailTest, WithACursorEveryLineIsShownOnce)
{
    const std::vector<std::string> tail = {"tail", "--cursor-file", cursorPath};
    Write("Main", "a1\n");
    Write("Run", "b1\n");
    EXPECT_EQ("a1\nb1\n", Run(tail));
    EXPECT_EQ("3\n2 0 Main\n", CursorText());
    EXPECT_EQ("", Run(tail));
    Write("Main", "a2\npart");
    EXPECT_EQ("a2\npart", Run(tail)) << "its number is below the one in the file";
    EXPECT_EQ("5\n4 0 Run\n5 4 Main\n", [&] {
        // The order of logs is that of the session: Main stands first.
        std::string text = CursorText();
        return text == "5\n5 4 Main\n4 0 Run\n" ? std::string("5\n4 0 Run\n5 4 Main\n") : text;
    }());
    Write("Main", "ly\n");
    Write("Run", "b2\n");
    EXPECT_EQ("b2\nly\n", Run(tail));
    EXPECT_EQ("", Run(tail));
    EXPECT_FALSE(std::filesystem::exists(cursorPath + ".new"));
}

TEST_F(TailTest, ACursorOfAnEarlierSessionStartsTheNewOneAtItsBeginning)
{
    const std::vector<std::string> tail = {"tail", "--cursor-file", cursorPath};
    Write("Main", "a\nb\nc\nd\n");
    Run(tail);
    DeleteAll();
    Write("Main", "new\n");
    EXPECT_EQ("new\n", Run(tail));
    EXPECT_EQ("logtool: a new session has begun\n", host.messages.str());
    EXPECT_EQ("", Run(tail));
    EXPECT_EQ("", host.messages.str());
}

TEST_F(TailTest, ABareNumberIsACursorAndAnythingElseIsDamage)
{
    Write("Main", "a\nb\nc\n");
    std::ofstream(cursorPath) << "2\r\n";
    EXPECT_EQ("c\n", Run({"tail", "--cursor-file", cursorPath}));

    for (const char* damage :
         {"", "x", "-1\n", "4294967296\n", "1 2\n", "1\n2\n", "1\n2 0\n", "1\n\n", "1\nx 0 Main\n"})
    {
        std::ofstream(cursorPath, std::ios::binary) << damage;
        Run({"tail", "--cursor-file", cursorPath});
        EXPECT_EQ(logtool::kMisuse, exitCode) << damage;
        EXPECT_EQ(damage, CursorText()) << "a damaged file is not overwritten";
    }
    Run({"tail", "--cursor-file", cursorPath + "/no/such/place"});
    EXPECT_EQ(logtool::kMisuse, exitCode);
}

TEST_F(TailTest, TheCursorStaysWhenTheOutputFails)
{
    const std::vector<std::string> tail = {"tail", "--cursor-file", cursorPath};
    Write("Main", "a\n");
    Run(tail);
    const std::string before = CursorText();
    Write("Main", "b\n");
    MemoryHost closed(session);
    closed.output.setstate(std::ios::badbit);
    EXPECT_EQ(logtool::kMisuse, logtool::Run(tail, closed));
    EXPECT_EQ(before, CursorText());
}
