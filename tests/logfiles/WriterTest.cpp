// Writing: rows, blocks, limits, and equality with the reference.

#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "logfiles/Append.h"
#include "logfiles/Counters.h"
#include "logfiles/Registry.h"
#include "tests/logfiles/ReferenceLog.h"
#include "tests/support/MemorySession.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <stdexcept>

namespace
{

CQmLogWriter Writer(const char* name)
{
    CQmLogWriter writer;
    writer.SetFilePath(name);
    return writer;
}

TEST(Writer, RowsFollowTheLineFeeds)
{
    struct
    {
        const char* text;
        const char* rows;
    } const cases[] = {
        {"", "0 indent 0 kind 0 begin, 1\n"},
        {"a\nb", "0 indent 0 kind 0 begin, 1\n2 indent 0 kind 0 begin, 2\n"},
        {"\na", "1 indent 0 kind 0 begin, 1\n"},
        {"a\nb\n", "0 indent 0 kind 0 begin, 1\n2 indent 0 kind 0 begin, 2\n4 indent 0 kind 0, 3\n"},
        {"\n\n", "1 indent 0 kind 0 begin, 1\n2 indent 0 kind 0, 2\n"},
    };
    for (const auto& [text, rows] : cases)
    {
        MemorySession session;
        CQmLogWriter log = Writer("Main");
        EXPECT_TRUE(log.Write(text)) << text;
        EXPECT_EQ(text, session.Text("Main"));
        EXPECT_EQ(rows, session.Rows("Main", true)) << text;
    }
}

TEST(Writer, TextAfterABlockBelongsToTheEnclosingBlock)
{
    MemorySession session;
    CQmLogWriter log = Writer("Main");
    EXPECT_TRUE(log.BlockBegin(kErrorKind));
    log.Write("a");
    EXPECT_TRUE(log.BlockBegin(kEnclosingKind)); // an error block as well
    log.Write("b\n");
    EXPECT_TRUE(log.BlockEnd()); // behind a line feed: no further one
    log.Write("c");
    EXPECT_TRUE(log.BlockEnd());
    log.Write("d");

    EXPECT_EQ("\na\nb\nc\nd", session.Text("Main"));
    EXPECT_EQ("1 indent 1 kind 2 begin\n"
              "3 indent 2 kind 2 begin\n"
              "5 indent 2 kind 2\n"
              "7 indent 0 kind 0 begin\n", // the outer level ends its first line only here
              session.Rows("Main"));
    EXPECT_TRUE(log.BlockEnd()) << "without an open block";
    EXPECT_EQ(0, logfiles::GlobalIndentGet());
}

// A line as a viewer shows it: indented by its depth, without its line feed.
std::vector<std::string> Lines(const char* name)
{
    CQmLogReader reader;
    reader.SetFilePath(name);
    std::vector<std::string> lines;
    const char* text = nullptr;
    unsigned long length = 0;
    CQmLogRow row;
    for (unsigned long index = 0; reader.Read(index, text, length, row); ++index)
    {
        const std::string line(text, length);
        lines.push_back(std::string(row.indent, ' ') + line.substr(0, line.find('\n')));
    }
    return lines;
}

TEST(Writer, ALineBeginsWithItsLineFeedWhereTextPrecedesIt)
{
    using Log = CQmLogWriter;
    struct
    {
        const char* name;
        std::function<void(Log&)> write;
        const char* text;
        const char* rows;
    } const cases[] = {
        {"on an empty log", [](Log& log) { log.WriteLine("a"); }, "a", "0 indent 0 kind 0 begin, 1\n"},
        {"behind a line", [](Log& log) { log.WriteLine("a"), log.WriteLine("b"); }, "a\nb",
         "0 indent 0 kind 0 begin, 1\n2 indent 0 kind 0 begin, 2\n"},
        {"behind a text that ended its line", [](Log& log) { log.Write("a\n"), log.WriteLine("b"); }, "a\nb",
         "0 indent 0 kind 0 begin, 1\n2 indent 0 kind 0 begin, 2\n"},
        {"of another writer",
         [](Log& log) {
             Writer("Main").Write("a\n");
             log.WriteLine("b");
             log.Close();
             Writer("Main").WriteLine("c");
         },
         "a\nb\nc", "0 indent 0 kind 0 begin, 1\n2 indent 0 kind 0 begin, 2\n4 indent 0 kind 0 begin, 3\n"},
        {"line ends are dropped",
         [](Log& log) {
             log.WriteLine("\n\na\r\n"), log.WriteLine(""), log.WriteLine("\n"), log.WriteLine(nullptr),
                 log.WriteLine("b\n\n");
         },
         "a\nb", "0 indent 0 kind 0 begin, 1\n2 indent 0 kind 0 begin, 2\n"},
        {"several at once", [](Log& log) { log.WriteLine("a\n\nb"), log.WriteLineFormat("%c", 'c'); },
         "a\n\nb\nc",
         "0 indent 0 kind 0 begin, 1\n2 indent 0 kind 0 begin, 2\n3 indent 0 kind 0, 3\n5 indent 0 kind 0, "
         "4\n"},
        {"around a block",
         [](Log& log) {
             log.WriteLine("a");
             {
                 QmLogBlock block(log, kErrorKind, "b");
                 log.WriteLine("c");
                 log.WriteFormat("%s", "c");
             }
             log.WriteLine("d");
         },
         "a\nb\ncc\nd",
         "0 indent 0 kind 0 begin, 1\n2 indent 1 kind 2 begin, 2\n4 indent 1 kind 2, 3\n"
         "7 indent 0 kind 0 begin, 4\n"},
        {"as a block's caption",
         [](Log& log) { log.BlockBegin(kErrorKind), log.WriteLine("a"), log.BlockEnd(), log.Write("b"); },
         "\na\nb", "1 indent 1 kind 2 begin, 1\n3 indent 0 kind 0 begin, 2\n"},
        {"not in a block that has ended",
         [](Log& log) {
             log.BlockBegin(kErrorKind), log.Write("a\n"), log.BlockEnd(), log.WriteLine("b");
             log.BlockBegin(kPlainKind), log.Write("c\n"), log.BlockEnd();
             log.Close(), Writer("Main").WriteLine("d");
         },
         "\na\n\nb\nc\n\nd",
         "1 indent 1 kind 2 begin, 1\n3 indent 1 kind 2, 2\n4 indent 0 kind 0 begin, 3\n"
         "6 indent 1 kind 0 begin, 4\n8 indent 1 kind 0, 5\n9 indent 0 kind 0 begin, 6\n"},
        {"on a log that another has begun again",
         [](Log& log) {
             log.WriteLine("ab"), log.Close(), log.Clear();
             Writer("Main").Write("x\n");
             log.WriteLine("c");
         },
         "x\nc", "0 indent 0 kind 0 begin, 2\n2 indent 0 kind 0 begin, 3\n"},
        {"behind a line that has no row",
         [](Log& log) {
             log.Write("a"), log.Close();
             const HANDLE text =
                 ZEMA_CreateFile("C:\\Logs\\Main.LOG", GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
             std::uint64_t end = 0;
             ZEMA::FileCalls().Seek(text, 0, FILE_END, end);
             logfiles::AppendOrNothing(text, end, "\n", 1);
             ZEMA::FileCalls().Close(text);
             log.WriteLine("b");
         },
         "a\n\nb", "0 indent 0 kind 0 begin, 1\n3 indent 0 kind 0 begin, 2\n"},
        {"a line feed that is due goes once",
         [](Log& log) {
             log.BlockBegin(kErrorKind), log.Write("a"), log.BlockEnd(), log.Close();
             Writer("Main").Write("\nb\n");
             log.WriteLine("c"), log.Write("d");
         },
         "\na\nb\ncd", "1 indent 1 kind 2 begin, 1\n3 indent 0 kind 0 begin, 2\n5 indent 0 kind 0, 3\n"},
    };
    for (const auto& [name, write, text, rows] : cases)
    {
        MemorySession session;
        CQmLogWriter log = Writer("Main");
        write(log);
        EXPECT_EQ(text, session.Text("Main")) << name;
        EXPECT_EQ(rows, session.Rows("Main", true)) << name;
    }
}

// Whatever opens, closes and takes turns: every line is a row at its depth, and no other row arises.
TEST(Writer, LinesAndBlocksLeaveNoBlankRow)
{
    for (unsigned seed = 1; seed <= 200; ++seed)
    {
        MemorySession session;
        std::mt19937 random(seed);
        CQmLogWriter log = Writer("Main");
        std::vector<std::string> expected;
        std::size_t depth = 0;
        for (int step = 0; step < 30; ++step)
        {
            const std::string text = std::to_string(step) + (random() % 9 == 0 ? std::string(600, 'x') : "");
            switch (random() % 6)
            {
            case 0:
                ++depth;
                log.BlockBegin(kDetailKind);
                log.Write(text.c_str());
                break;
            case 1:
                log.BlockEnd();
                depth -= depth > 0 ? 1 : 0;
                continue;
            case 2:
                log.Close();
                continue;
            case 3:
                log.Close();
                Writer("Main").WriteLine(text.c_str());
                expected.push_back(text);
                continue;
            case 4:
                log.WriteLineFormat("%s\n", text.c_str());
                break;
            default:
                log.WriteLine(text.c_str());
            }
            expected.push_back(std::string(depth, ' ') + text);
        }
        ASSERT_EQ(expected, Lines("Main")) << "seed " << seed;
        ASSERT_EQ(expected.size(), session.Time()) << "each line takes a number and nothing else does";
    }
}

TEST(Writer, ALineCostsNoMoreCallsThanItsText)
{
    MemorySession session;
    CQmLogWriter log = Writer("Main");
    log.WriteLine("first");
    session.files.ForgetCalls();
    log.Write("\nsecond");
    const std::vector<std::string> calls = session.files.Calls();
    session.files.ForgetCalls();
    log.WriteLine("third");
    EXPECT_EQ(calls, session.files.Calls());
}

TEST(Writer, KeepsEveryByteAndReopensAfterClose)
{
    MemorySession session;
    std::string text = "\r\n\t%s%n";
    for (int c = 1; c < 256; ++c)
        text += static_cast<char>(c);
    CQmLogWriter log = Writer("Source.txt");
    EXPECT_STREQ("Source.txt", log.GetFilePath());
    EXPECT_TRUE(log.Write(text.c_str()));
    EXPECT_TRUE(log.Close());
    EXPECT_EQ(0u, session.files.OpenHandles() - 1) << "only the counters stay open";
    EXPECT_TRUE(log.Write("more"));
    EXPECT_EQ(text + "more", session.Text("Source"));

    log.Clear();
    EXPECT_TRUE(session.files.Exists(session.Path("Source.LOG"))) << "an open file is not deleted";
    log.Close();
    log.Clear();
    EXPECT_FALSE(session.files.Exists(session.Path("Source.LOG")));
    EXPECT_FALSE(session.files.Exists(session.Path("Source.ROW")));
}

TEST(Writer, FormatsTextOfAnyLength)
{
    MemorySession session;
    CQmLogWriter log = Writer("Main");
    std::string expected;
    for (const int width : {0, 1, 504, 505, 506, 507, 508, 100000})
    {
        EXPECT_TRUE(log.WriteFormat("%*s|%d\n", width, "", width));
        expected += std::string(static_cast<std::size_t>(width), ' ') + "|" + std::to_string(width) + "\n";
    }
    EXPECT_EQ(expected, session.Text("Main"));
}

TEST(Writer, ABlockGuardClosesOnEveryWayOut)
{
    MemorySession session;
    CQmLogWriter log = Writer("Main");
    EXPECT_THROW(
        {
            QmLogBlock outer(log, kNoticeKind, "outer");
            QmLogBlock inner(log, kEnclosingKind, nullptr);
            log.Write("in");
            throw std::runtime_error("out");
        },
        std::runtime_error);
    log.Write("end");
    EXPECT_EQ("\nouter\nin\nend", session.Text("Main"));
    EXPECT_EQ(0, logfiles::GlobalIndentGet());
}

TEST(Writer, Opens254BlocksAndRefusesMore)
{
    MemorySession session;
    CQmLogWriter log = Writer("Main");
    for (int depth = 1; depth <= 254; ++depth)
        ASSERT_TRUE(log.BlockBegin(kPlainKind)) << depth;
    EXPECT_FALSE(log.BlockBegin(kPlainKind));
    QmLogBlock refused(log, kErrorKind, "caption");
    EXPECT_EQ(254, logfiles::GlobalIndentGet());
    EXPECT_EQ(254u, session.Text("Main").size());
    for (int depth = 254; depth >= 1; --depth)
        ASSERT_TRUE(log.BlockEnd()) << depth;
    EXPECT_EQ(0, logfiles::GlobalIndentGet());
}

TEST(Writer, NumbersAndDepthWrap)
{
    MemorySession session;
    session.files.SetContents(session.Path("Log.DAT"), std::string("\xFE\xFF\xFF\xFF\xFF"
                                                                   "abc"));
    CQmLogWriter log = Writer("Main");
    log.Write("a\nb\nc");
    log.BlockBegin(kPlainKind);
    EXPECT_EQ("0 indent 0 kind 0 begin, 4294967295\n2 indent 0 kind 0 begin, 0\n4 indent 0 kind 0, 1\n"
              "6 indent 0 kind 0 begin, 2\n",
              session.Rows("Main", true));
    EXPECT_EQ(255, logfiles::GlobalIndentDecrement());
    EXPECT_EQ(std::string("\2\0\0\0\xFF"
                          "abc",
                          8),
              session.files.Contents(session.Path("Log.DAT")))
        << "the reserved bytes stay";
}

TEST(Writer, ReachesTo4GiBAndNotFurther)
{
    MemorySession session;
    for (const std::uint64_t size : {0x7FFFFFFFull, 0x80000000ull, 0xFFFFFFFAull})
    {
        const std::string name = "Log" + std::to_string(size);
        session.files.SetSize(session.Path(name + ".LOG"), size);
        CQmLogWriter log = Writer(name.c_str());
        EXPECT_TRUE(log.Write("\nabc"));
        EXPECT_EQ(std::to_string(size + 1) + " indent 0 kind 0 begin\n", session.Rows(name));
        CQmLogReader reader;
        reader.SetFilePath(name.c_str());
        const char* text = nullptr;
        unsigned long length = 0;
        CQmLogRow row;
        ASSERT_TRUE(reader.Read(0, text, length, row));
        EXPECT_STREQ("abc", text);
    }

    CQmLogWriter log = Writer("Log4294967290"); // one byte below the limit by now
    EXPECT_FALSE(log.Write("\nx"));
    EXPECT_NE(std::string::npos, session.Text("QmLog").find("CQmLogWriter::Write().WriteFile()"));
    EXPECT_EQ("4294967291 indent 0 kind 0 begin\n", session.Rows("Log4294967290"));
    EXPECT_TRUE(log.Write("x"));

    // An index that has reached the limit takes no row, but the text goes on.
    session.files.SetSize(session.Path("Full.ROW"), 0xFFFFFFFF / 20 * 20);
    CQmLogWriter full = Writer("Full");
    EXPECT_TRUE(full.Write("a\nb\n"));
    std::uint64_t rowSize = 0;
    session.files.GetSize(session.Path("Full.ROW").c_str(), rowSize);
    EXPECT_EQ(0xFFFFFFFFu / 20 * 20, rowSize);
}

TEST(Writer, WritesOverARecordThatAKilledWriterLeftUnfinished)
{
    MemorySession session;
    Writer("Main").Write("a\n");
    const std::string rowPath = session.Path("Main.ROW");
    const std::string whole = session.files.Contents(rowPath);
    session.files.SetContents(rowPath, whole + "unfinished");
    Writer("Main").Write("b\n");
    EXPECT_EQ("0 indent 0 kind 0 begin\n2 indent 0 kind 0 begin\n4 indent 0 kind 0 begin\n",
              session.Rows("Main"));
    EXPECT_EQ(60u, session.files.Contents(rowPath).size());
}

TEST(Writer, NamesThatDoNotFitAreRefused)
{
    MemorySession session;
    const std::string longest(260 - std::string("C:\\Logs\\.LOG").size() - 1, 'n');
    struct
    {
        std::string name;
        bool accepted;
    } const cases[] = {{longest, true},
                       {longest + "n", false},
                       {std::string(5000, 'n'), false},
                       {"", false},
                       {"sub\\Main", true}};
    for (const auto& [name, accepted] : cases)
    {
        CQmLogWriter log = Writer("Before");
        log.SetFilePath(name.c_str());
        EXPECT_EQ(accepted ? name : "", log.GetFilePath());
        EXPECT_EQ(accepted, log.Write("text")) << name.size();
        EXPECT_EQ(accepted, log.BlockBegin(kPlainKind));
        EXPECT_TRUE(log.BlockEnd());
        EXPECT_EQ(accepted ? "text\n" : "", session.Text(accepted ? name : "Before"));
    }
    EXPECT_EQ("text\n", session.files.Contents("C:\\Logs\\sub\\Main.LOG"));
}

TEST(Writer, PathsNeedAManagerAndAFolder)
{
    MemorySession session;
    char path[260] = "untouched";
    EXPECT_TRUE(QmLogMakeFilePath("Log.DAT", path));
    EXPECT_STREQ("C:\\Logs\\Log.DAT", path);
    EXPECT_TRUE(QmLogMakeFilePath("D:sub\\x.y.z", path));
    EXPECT_STREQ("D:C:\\Logs\\sub\\x.y.z", path) << "a drive comes from the name";

    std::strcpy(path, "untouched");
    const std::string subfolder = std::string(260 - std::strlen("C:\\Logs\\") - 1, 's') + "\\";
    EXPECT_FALSE(QmLogMakeFilePath((subfolder + "x").c_str(), path)) << "no room for the terminator";
    session.manager.folder = std::string(255, 'f');
    EXPECT_FALSE(QmLogMakeFilePath("Log.DAT", path));
    EXPECT_EQ(0, QmLogGlobalTimeGet()) << "without a path there is nothing to wait for";
    EXPECT_FALSE(Writer("Main").Write("x"));
    session.manager.folder.clear();
    EXPECT_FALSE(QmLogMakeFilePath("Log.DAT", path));
    CQmLogWriter homeless = Writer("Main");
    EXPECT_STREQ("Main", homeless.GetFilePath());
    EXPECT_FALSE(homeless.Write("x"));
    EXPECT_FALSE(homeless.BlockBegin(kPlainKind));
    EXPECT_TRUE(session.files.Paths().empty()) << "nothing goes to the current folder";
    session.manager.hasAccess = false;
    EXPECT_FALSE(QmLogMakeFilePath("Log.DAT", path));
    AppDataManager::SetAppDataManager(nullptr);
    EXPECT_FALSE(QmLogMakeFilePath("Log.DAT", path));
    EXPECT_STREQ("untouched", path);
}

TEST(Registry, KnowsTenNamesByteForByte)
{
    MemorySession session;
    logfiles::Registry<CQmLogWriter> writers("Define");
    EXPECT_EQ(&writers.Define("Main"), &writers.Define("Main"));
    EXPECT_NE(&writers.Define("Main"), &writers.Define("main"));
    EXPECT_FALSE(writers.Define(nullptr).Write("x"));
    EXPECT_FALSE(writers.Define(std::string(300, 'x').c_str()).Write("x")) << "a refused name takes no room";
    for (const char* name : {"3", "4", "5", "6", "7", "8", "9", "10"})
        EXPECT_TRUE(writers.Define(name).Write("x"));
    CQmLogWriter& eleventh = writers.Define("11");
    EXPECT_FALSE(eleventh.Write("x"));
    EXPECT_FALSE(eleventh.BlockBegin(kPlainKind));
    EXPECT_STREQ("", eleventh.GetFilePath());
    EXPECT_EQ("10", std::string(writers.Define("10").GetFilePath()));
    EXPECT_EQ(10, writers.end() - writers.begin());
}

// Random sessions on several logs leave the same bytes as one row at a time does.
TEST(Writer, EqualsTheReferenceOnRandomSessions)
{
    for (unsigned seed = 1; seed <= 300; ++seed)
    {
        MemorySession session;
        std::mt19937 random(seed);
        const auto pick = [&](unsigned count) { return static_cast<unsigned>(random() % count); };
        ReferenceCounters counters("C:\\Ref\\");
        std::vector<CQmLogWriter> writers;
        std::vector<ReferenceWriter> references;
        std::vector<int> depths(3, 0);
        for (const char* name : {"Main", "SQL", "Run"})
        {
            writers.push_back(Writer(name));
            references.emplace_back("C:\\Ref\\", name, counters);
        }
        for (int step = 0; step < 40; ++step)
        {
            const std::size_t at = pick(3);
            const unsigned action = pick(10);
            if (action < 5)
            {
                std::string text;
                for (unsigned length = pick(8) == 0 ? pick(300) : pick(6); length > 0; --length)
                    text += "\nab\n"[pick(4)];
                ASSERT_EQ(references[at].Write(text), writers[at].Write(text.c_str()));
            }
            else if (action < 7 && depths[at] < 8)
            {
                const std::uint32_t kind = pick(5) == 4 ? 0xFFFFFFFF : pick(4);
                references[at].BlockBegin(kind);
                ASSERT_TRUE(writers[at].BlockBegin(static_cast<QmLogBlockKind>(kind)));
                ++depths[at];
            }
            else if (action < 9 && depths[at] > 0)
            {
                references[at].BlockEnd();
                ASSERT_TRUE(writers[at].BlockEnd());
                --depths[at];
            }
            else if (action == 9)
            {
                references[at].Close();
                writers[at].Close();
            }
        }
        for (const char* file :
             {"Main.LOG", "Main.ROW", "SQL.LOG", "SQL.ROW", "Run.LOG", "Run.ROW", "Log.DAT"})
            ASSERT_EQ(session.files.Contents(std::string("C:\\Ref\\") + file),
                      session.files.Contents(session.Path(file)))
                << file << ", seed " << seed;
        for (ReferenceWriter& reference : references)
            reference.Close();
        counters.Close();
    }
}

TEST(Writer, OneLockCycleAndOneRowWriteForAllLinesOfAText)
{
    MemorySession session;
    CQmLogWriter log = Writer("Main");
    log.Write("first\n");
    for (const int lines : {0, 1, 2, 31, 32, 33, 5000})
    {
        std::string text = "x";
        for (int i = 0; i < lines; ++i)
            text += "\nline";
        session.files.ForgetCalls();
        EXPECT_TRUE(log.Write(text.c_str()));
        const std::vector<std::string> calls = session.files.Calls();
        const std::vector<std::string> expected =
            lines == 0 ? std::vector<std::string>{"Seek", "Write"}
                       : std::vector<std::string>{"Seek",  "Lock",   "Seek", "Read",  "Seek",
                                                  "Write", "Unlock", "Seek", "Write", "Write"};
        EXPECT_EQ(expected, calls) << lines;
    }
}

} // namespace
