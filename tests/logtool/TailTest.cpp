#include "LogtoolTest.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace
{

class TailTest : public LogtoolTest
{
protected:
    ~TailTest() override { std::filesystem::remove(cursorPath); }

    // What is written before each look at the logs but the first, and what the look shows.
    using Looks = std::vector<std::pair<const char*, const char*>>;

    static constexpr bool kNewSessions = true; // one begins before each look

    // Answers the messages.
    std::string Follow(const std::string& command, const Looks& looks, bool newSessions = false)
    {
        std::size_t done = 0;
        host.wait = [&] {
            EXPECT_EQ(done == 0 ? "" : looks[done - 1].second, host.output.str()) << "look " << done;
            EXPECT_EQ(0u, session.files.OpenHandles()) << "no file stays open between two looks";
            if (done == looks.size())
                return false;
            host.output.str("");
            const char* const script = looks[done++].first;
            newSessions ? PlayNew(script) : Play(script);
            return true;
        };
        Run(command);
        EXPECT_EQ(looks.size(), done);
        return host.messages.str();
    }

    std::string CursorText()
    {
        std::ifstream file(cursorPath, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    const std::string cursorPath = testing::TempDir() + "logtool_cursor." + std::to_string(::getpid());
    const std::string tail = "tail --cursor-file " + cursorPath;
};

} // namespace

// Main has a1 (number 1), a2 (2) and a3 (5) and an empty row 6; Run has b1 (3) and an empty row 4.
TEST_F(TailTest, ShowsTheLastRowsOfAllLogs)
{
    Play("'Main:a1\n' Main:a2 'Run:b1\n' 'Main:\na3\n'");
    const std::pair<const char*, const char*> cases[] = {
        {"tail", "a1\na2\nb1\na3\n"},    {"tail -n 3", "a2\nb1\na3\n"},
        {"tail -n 2", "b1\na3\n"},       {"tail -n 0", ""},
        {"tail -n 1 --log Run", "b1\n"}, {"tail --after 0", "a1\na2\nb1\na3\n"},
        {"tail --after 2", "b1\na3\n"},  {"tail --after 3", "a3\n"},
        {"tail --after 5", ""},
    };
    for (const auto& [command, expected] : cases)
        EXPECT_EQ(expected, Run(command)) << command;
}

TEST_F(TailTest, FollowsLogsThatGrow)
{
    const Looks looks = {
        {"'Main: line\na2\n'", " line\na2\n"},
        {"", ""},
        {"'Run:b1\n' 'Extra:x\n'", "b1\nx\n"}, // logs that did not exist before
        {"Main:one", ""},                      // an unfinished line waits until it has rested for a look
        {"'Main: two'", ""},
        {"", "one two"},
        {"", ""},
        {"'Main: three\nfour\n'", " three\nfour\n"},
        {"Main:five", ""},
        {"", "five"},
        {"'Run:between\n'", "\nbetween\n"},
        {"'Main: six\n'", " six\n"}, // on a line of its own
    };
    Play("'Main:a1\nunfinished'");
    EXPECT_EQ("", Follow("tail -f -n 0", looks));
}

TEST_F(TailTest, ALineEndAloneMakesNoRow)
{
    const Looks looks = {
        {"Main=one", ""},
        {"", "    1  Main     one"},
        {"Run=b", ""},
        {"", "\n    2  Run      b"},
        {"Main=two", ""}, // it ends the first line, which Run's has ended already
        {"", "\n    3  Main     two"},
        {"Main=three", "\n"},
        {"", "    4  Main     three"},
    };
    EXPECT_EQ("logtool: no rows in C:\\Logs\\\n", Follow("tail -f -n 0 --numbers", looks));
}

// As a writer that could not write in full takes them back, in rows and within one.
TEST_F(TailTest, WhatIsTakenBackIsNoNewSession)
{
    for (const auto& [size, rows, next] :
         {std::tuple{1u, 1u, "\nd"}, {3u, 2u, "\nd"}, {0u, 0u, "\nd"}, {2u, 2u, "\nd"}})
    {
        PlayNew("Main=a Main=b 'Main:\ncd\n'");
        std::string shown;
        int looks = 0;
        host.wait = [&, size = size, rows = rows] {
            shown += host.output.str();
            host.output.str("");
            ++looks;
            if (looks == 1)
            {
                session.files.SetSize(session.Path("Main.LOG"), size);
                session.files.SetSize(session.Path("Main.ROW"), rows * sizeof(CQmLogRow));
            }
            if (looks == 2)
                Play("Main=d");
            return looks < 5;
        };
        EXPECT_EQ("\n", Run("tail -f"));
        EXPECT_EQ(std::string("a\nb\ncd\n") + (next + 1), shown) << size << " bytes left";
        EXPECT_EQ("", host.messages.str());
    }
}

TEST_F(TailTest, ANewSessionIsShownFromItsBeginning)
{
    const std::string told = "logtool: a new session has begun in C:\\Logs\\\n";
    Play("'Main:old1\nold2\nold3\n'");
    const Looks shorterAndLonger = {{"'Main:new\n'", "new\n"}, {"'Main:newer\nest\n'", "newer\nest\n"}};
    EXPECT_EQ(told + told, Follow("tail -f -n 0", shorterAndLonger, kNewSessions));

    // With the same row, but a text that is shorter and another one.
    int looks = 0;
    host.wait = [&] {
        if (++looks == 1)
            session.files.SetContents(session.Path("Main.LOG"), "newer\nx");
        return looks < 4;
    };
    EXPECT_EQ("newer\nx\n" + told, Run("tail -f -n 0"));

    PlayNew("'Run:r1\n' 'Main:m1\nm2\nm3\n'");
    const Looks likeTheOldOne = {{"'Run:r1\nr2\n'", "r1\nr2\n"}}; // only the counter tells
    EXPECT_EQ(told, Follow("tail -f -n 0 --log Run", likeTheOldOne, kNewSessions));
}

// The row of a log's next line has its number long before its text, so a number alone would lose lines.
TEST_F(TailTest, WithACursorEveryLineIsShownOnce)
{
    Play("'Main:a1\n' 'Run:b1\n'");
    EXPECT_EQ("a1\nb1\n", Run(tail));
    EXPECT_EQ("3\n2 0 Main\n", CursorText());
    EXPECT_EQ("", Run(tail));
    Play("'Main:a2\npart'");
    EXPECT_EQ("a2\npart\n", Run(tail)) << "its number is below the one in the file";
    EXPECT_EQ("5\n5 4 Main\n4 0 Run\n", CursorText());
    Play("'Main:ly\n' 'Run:b2\n'");
    const std::string before = CursorText();
    host.outputState = std::ios::badbit;
    Run(tail);
    EXPECT_EQ(before, CursorText()) << "what nobody has read is shown again";
    host.outputState = std::ios::goodbit;
    EXPECT_EQ("b2\nly\n", Run(tail));

    PlayNew("'Main:new\n'");
    EXPECT_EQ("new\nlogtool: a new session has begun in C:\\Logs\\\n", Run(tail));
    EXPECT_EQ("", Run(tail));
}

TEST_F(TailTest, ABareNumberIsACursorAndAnythingElseIsDamage)
{
    Play("'Main:a\nb\nc\n'");
    std::ofstream(cursorPath) << "2 \r\n";
    EXPECT_EQ("c\n", Run(tail));
    for (const char* damage : {"", "x", "4294967296\n", "1 2\n", "1\n2 0\n", "1\n\n", "1\nx 0 Main\n"})
    {
        std::ofstream(cursorPath, std::ios::binary) << damage;
        EXPECT_EQ("logtool: " + cursorPath + ": is no cursor file\nexit 2", Run(tail)) << damage;
        EXPECT_EQ(damage, CursorText()) << "a damaged file is not overwritten";
    }
    EXPECT_TRUE(
        Run(tail + "/no/such/place").ends_with("place.new: cannot be written: Not a directory.\nexit 2"));
}
