#include "LogtoolTest.h"

#include "host/logtool/LogStream.h"

#include <random>

using logtool::LogEntry;
using logtool::LogStream;

TEST_F(LogtoolTest, MergesRandomSessionsAsASortWould)
{
    std::mt19937 random(7);
    const std::vector<std::string> logs = {"Main", "Run", "Source"};
    for (int round = 0; round < 20; ++round)
    {
        DeleteAll();
        for (int step = 0; step < 40; ++step)
            Log(logs[random() % 3]).Write(std::vector{"a\n", "b\nc\n", "part", "\n"}[random() % 4]);
        Close();

        std::map<std::uint32_t, std::string> sorted; // by sequence number
        for (const std::string& name : logs)
        {
            CQmLogReader reader;
            reader.SetFilePath(name.c_str());
            const char* text = nullptr;
            unsigned long length = 0;
            CQmLogRow row;
            for (unsigned long i = 0; reader.GetRowCount() > i && reader.Read(i, text, length, row); ++i)
                if (length > 0)
                    sorted[row.time] = std::string(text, length);
        }
        const auto from = static_cast<std::uint32_t>(random() % 20);
        LogStream stream(logs, LogStream::Content::kText);
        stream.SetRange(from, 40);
        LogEntry entry;
        for (auto row = sorted.lower_bound(from); row != sorted.upper_bound(40); ++row)
        {
            ASSERT_TRUE(stream.Next(entry));
            EXPECT_EQ(row->first, entry.row.time);
            EXPECT_EQ(row->second, entry.text);
        }
        EXPECT_FALSE(stream.Next(entry));
        EXPECT_EQ(0u, stream.Unreadable());
    }
}

TEST_F(LogtoolTest, CatIndentsAndKeepsTheBytesOffATerminal)
{
    Write("Main", "one\x1b[2J\x85\r\n%s%n");
    Block("Main", kErrorKind, "caption\n\tdeep");
    EXPECT_EQ("one\x1b[2J\x85\r\n%s%n\n  caption\n  \tdeep", Run({"cat"}));
    EndBlock("Main");
    Write("Run", "no line feed");
    EXPECT_EQ("one\x1b[2J\x85\r\n%s%n\n  caption\n  \tdeep\nno line feed", Run({"cat"}));
    EXPECT_EQ(logtool::kDone, exitCode);
}

TEST_F(LogtoolTest, ATerminalGetsColoursAndNoControlCharacters)
{
    Write("Main", "one\x1b[2J\x85\x7f\xe4\ttab\r");
    Block("Main", kErrorKind, "bad\x07");
    Block("Main", kNoticeKind, "look");
    host.terminal = true;
    EXPECT_EQ("one\\x1b[2J\\x85\\x7f\xe4\ttab\n  \x1b[31mbad\\x07\x1b[0m\n    \x1b[33mlook\x1b[0m",
              Run({"cat"}));
    host.colours = false;
    EXPECT_EQ("  bad\\x07\n", Run({"cat", "--kind", "2"}));
}

TEST_F(LogtoolTest, NumbersAreAlignedBeforeEachRow)
{
    Write("Main", "a\n");
    Write("Service", "b\n");
    EXPECT_EQ("    1  Main     a\n    3  Service  b\n", Run({"cat", "--numbers"}));
}

// Ten rows in Main: "r1" with number 1 to "r10" with number 10; r4 and r8 are alike.
TEST_F(LogtoolTest, FiltersWithContext)
{
    for (int i = 1; i <= 10; ++i)
        Write("Main", "r" + std::to_string(i) + (i % 4 == 0 ? " hit\n" : "\n"));

    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"--grep", "hit"}, "r4 hit\nr8 hit\n"},
        {{"--grep", "HIT"}, ""},
        {{"--grep", "hit", "-A", "1"}, "r4 hit\nr5\n--\nr8 hit\nr9\n"},
        {{"--grep", "hit", "-B", "1"}, "r3\nr4 hit\n--\nr7\nr8 hit\n"},
        {{"--grep", "hit", "-A", "1", "-B", "2"}, "r2\nr3\nr4 hit\nr5\nr6\nr7\nr8 hit\nr9\n"}, // they touch
        {{"--grep", "hit", "-A", "9"}, "r4 hit\nr5\nr6\nr7\nr8 hit\nr9\nr10\n"},
        {{"--grep", "hit", "-B", "2", "--from", "4"}, "r4 hit\n--\nr6\nr7\nr8 hit\n"},
        {{"--from", "9"}, "r9\nr10\n"},
        {{"--from", "10", "--to", "10"}, "r10\n"},
        {{"--to", "1"}, "r1\n"},
        {{"--from", "11"}, ""},
        {{"--kind", "plain", "--to", "2"}, "r1\nr2\n"},
        {{"--kind", "7"}, ""},
        {{"--log", "main", "--log", "Main", "--to", "1"}, "r1\n"},
        {{"--log", "Run"}, ""},
    };
    for (const auto& [options, expected] : cases)
    {
        std::vector<std::string> words = {"cat"};
        words.insert(words.end(), options.begin(), options.end());
        EXPECT_EQ(expected, Run(words)) << testing::PrintToString(options);
        EXPECT_EQ(logtool::kDone, exitCode);
    }
}

TEST_F(LogtoolTest, LogsBesideTheFiveAreShownToo)
{
    Write("Extra", "more\n");
    EXPECT_EQ("more\n", Run({"cat"}));
}

TEST_F(LogtoolTest, RowsThatCannotBeReadAreSkippedAndTold)
{
    Write("Main", "a\nb\nc\n");
    Write("Run", "fine\n");
    std::string rows = session.files.Contents("C:\\Logs\\Main.ROW");
    rows[20 + 3] = '\x70'; // row 1 lies far behind the end of the text
    session.files.SetContents("C:\\Logs\\Main.ROW", rows);
    EXPECT_EQ("a\nb\nc\nc\nfine\n", Run({"cat"}));
    EXPECT_EQ(logtool::kFoundFaults, exitCode);
    EXPECT_EQ("logtool: 1 row cannot be read, see logtool verify\n", host.messages.str());

    session.files.Delete("C:\\Logs\\Main.LOG");
    EXPECT_EQ("fine\n", Run({"cat"}));
    EXPECT_EQ(logtool::kFoundFaults, exitCode);
}

TEST_F(LogtoolTest, NoDamageOfTheIndexStopsACommand)
{
    std::mt19937 random(11);
    Write("Main", "a\nb\n");
    Block("Main", kErrorKind, "caption\ntext");
    Write("Run", "a\nb\nc\n");
    const std::string whole = session.files.Contents("C:\\Logs\\Main.ROW");
    for (int round = 0; round < 300; ++round)
    {
        std::string rows = whole;
        for (int i = 0; i < 4; ++i)
            rows[random() % rows.size()] = static_cast<char>(random());
        rows.resize(rows.size() - random() % 30);
        session.files.SetContents("C:\\Logs\\Main.ROW", rows);
        for (const char* command : {"cat", "tail", "tree", "errors", "verify"})
        {
            Run({command});
            EXPECT_NE(logtool::kMisuse, exitCode) << command;
        }
    }
}
