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
#include <map>
#include <random>
#include <sstream>
#include <stdexcept>

namespace
{

// A line feed written by hand, which gets no row.
void AppendLineFeed(const MemorySession& session)
{
    const HANDLE text = ZEMA_CreateFile(session.Path("Main.LOG").c_str(), GENERIC_WRITE, 0, nullptr,
                                        OPEN_EXISTING, 0, nullptr);
    std::uint64_t end = 0;
    ZEMA::FileCalls().Seek(text, 0, FILE_END, end);
    EXPECT_TRUE(logfiles::AppendOrNothing(text, end, "\n", 1));
    ZEMA::FileCalls().Close(text);
}

// Steps with '|' between them: "write TEXT" and "line TEXT", by another writer with "other-" before them,
// "error", "plain" and "enclosing" for the block that begins, "end", "close", "clear" and "by-hand".
void Play(const MemorySession& session, CQmLogWriter& log, const std::string& script)
{
    std::istringstream steps(script);
    for (std::string step; std::getline(steps, step, '|');)
    {
        const std::string word = step.substr(0, step.find(' '));
        const std::string text = step.substr(std::min(step.size(), word.size() + 1));
        const std::map<std::string, std::function<bool()>> words = {
            {"write", [&] { return log.Write(text.c_str()); }},
            {"line", [&] { return log.WriteLine(text.c_str()); }},
            {"other-write", [&] { return WriterOf("Main").Write(text.c_str()); }},
            {"other-line", [&] { return WriterOf("Main").WriteLine(text.c_str()); }},
            {"error", [&] { return log.BlockBegin(kErrorKind); }},
            {"plain", [&] { return log.BlockBegin(kPlainKind); }},
            {"enclosing", [&] { return log.BlockBegin(kEnclosingKind); }},
            {"end", [&] { return log.BlockEnd(); }},
            {"close", [&] { return log.Close(); }},
            {"clear", [&] { return log.Clear(), true; }},
            {"by-hand", [&] { return AppendLineFeed(session), true; }},
        };
        EXPECT_TRUE(words.at(word)()) << script << ": " << step;
    }
}

TEST(Writer, BeginsRowsAtLinesAndLinesWithTheirLineFeeds)
{
    const struct
    {
        const char* script;
        const char* text;
        const char* rows;
    } cases[] = {
        {"write ", "", "0!"},
        {"write a\nb", "a\nb", "0! 2!"},
        {"write \na", "\na", "1!"},
        {"write a\nb\n", "a\nb\n", "0! 2! 4"},
        {"write \n\n", "\n\n", "1! 2"},
        {"error|write a|enclosing|write b\n|end|write c|end|write d|end", "\na\nb\nc\nd",
         "1@1.2! 3@2.2! 5@2.2 7!"}, // the outer level ends its first line only at the end
        {"line a", "a", "0!"},
        {"line a|line b", "a\nb", "0! 2!"},
        {"write a\n|line b", "a\nb", "0! 2!"},
        {"other-write a\n|line b|close|other-line c", "a\nb\nc", "0! 2! 4!"},
        {"line \n\na\r\n|line |line \n|line b\n\n", "a\nb", "0! 2!"}, // line ends around a line are dropped
        {"line a\n\nb|line c", "a\n\nb\nc", "0! 2! 3 5"},
        {"line a|error|write b|line c|write c|end|line d", "a\nb\ncc\nd", "0! 2@1.2! 4@1.2 7!"},
        {"error|line a|end|write b", "\na\nb", "1@1.2! 3!"}, // a line as a caption
        {"error|write a\n|end|line b|plain|write c\n|end|close|other-line d", "\na\n\nb\nc\n\nd",
         "1@1.2! 3@1.2 4! 6@1.0! 8@1.0 9!"},                               // not in a block that has ended
        {"line ab|close|clear|other-write x\n|line c", "x\nc", "0!#2 2!"}, // begun again by another
        {"write a|close|by-hand|line b", "a\n\nb", "0! 3!"},               // after a line without a row
        {"error|write a|end|close|other-write \nb\n|line c|write d", "\na\nb\ncd", "1@1.2! 3! 5"}, // due once
    };
    for (const auto& [script, text, rows] : cases)
    {
        MemorySession session;
        CQmLogWriter log = WriterOf("Main");
        Play(session, log, script);
        EXPECT_EQ(text, session.Text("Main")) << script;
        EXPECT_EQ(rows, session.Rows("Main")) << script;
    }
}

TEST(Writer, ALineCostsNoMoreCallsThanItsText)
{
    MemorySession session;
    CQmLogWriter log = WriterOf("Main");
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
    CQmLogWriter log = WriterOf("Source.txt");
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
    CQmLogWriter log = WriterOf("Main");
    std::string expected;
    for (const int width : {0, 1, 504, 505, 506, 507, 508, 100000})
    {
        EXPECT_TRUE(log.WriteFormat("%*s|%d\n", width, "", width));
        expected += std::string(static_cast<std::size_t>(width), ' ') + "|" + std::to_string(width) + "\n";
    }
    EXPECT_TRUE(log.WriteLine(nullptr));
    EXPECT_EQ(expected, session.Text("Main"));
}

TEST(Writer, ABlockGuardClosesOnEveryWayOut)
{
    MemorySession session;
    CQmLogWriter log = WriterOf("Main");
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
    CQmLogWriter log = WriterOf("Main");
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
    using namespace std::string_literals;
    session.files.SetContents(session.Path("Log.DAT"), "\xFE\xFF\xFF\xFF\xFF" + "abc"s);
    CQmLogWriter log = WriterOf("Main");
    log.Write("a\nb\nc");
    log.BlockBegin(kPlainKind);
    EXPECT_EQ("0!#4294967295 2! 4 6!", session.Rows("Main")); // the next number is 0
    EXPECT_EQ(255, logfiles::GlobalIndentDecrement());
    EXPECT_EQ("\2\0\0\0\xFF"s + "abc", session.files.Contents(session.Path("Log.DAT")))
        << "what is reserved stays";
}

TEST(Writer, ReachesTo4GiBAndNotFurther)
{
    MemorySession session;
    for (const std::uint64_t size : {0x7FFFFFFFull, 0x80000000ull, 0xFFFFFFFAull})
    {
        const std::string name = "Log" + std::to_string(size);
        session.files.SetSize(session.Path(name + ".LOG"), size);
        CQmLogWriter log = WriterOf(name.c_str());
        EXPECT_TRUE(log.Write("\nabc"));
        EXPECT_EQ(std::to_string(size + 1) + '!', session.Rows(name).substr(0, session.Rows(name).find('#')));
        EXPECT_EQ("abc", LineOf(name.c_str(), 0));
    }

    CQmLogWriter log = WriterOf("Log4294967290"); // one byte below the limit by now
    EXPECT_FALSE(log.Write("\nx"));
    EXPECT_NE(std::string::npos, session.Text("QmLog").find("CQmLogWriter::Write().WriteFile()"));
    EXPECT_EQ("4294967291!#3", session.Rows("Log4294967290"));
    EXPECT_TRUE(log.Write("x"));
}

TEST(Writer, WritesOverARecordThatAKilledWriterLeftUnfinished)
{
    MemorySession session;
    WriterOf("Main").Write("a\n");
    const std::string rowPath = session.Path("Main.ROW");
    const std::string whole = session.files.Contents(rowPath);
    session.files.SetContents(rowPath, whole + "unfinished");
    WriterOf("Main").Write("b\n");
    EXPECT_EQ("0! 2! 4!", session.Rows("Main"));
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
        CQmLogWriter log = WriterOf("Before");
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
    EXPECT_FALSE(WriterOf("Main").Write("x"));
    session.manager.folder.clear();
    EXPECT_FALSE(QmLogMakeFilePath("Log.DAT", path));
    CQmLogWriter homeless = WriterOf("Main");
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
            writers.push_back(WriterOf(name));
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
                const auto kind = static_cast<QmLogBlockKind>(pick(5) == 4 ? 0xFFFFFFFF : pick(4));
                references[at].BlockBegin(kind);
                ASSERT_TRUE(writers[at].BlockBegin(kind));
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
    CQmLogWriter log = WriterOf("Main");
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
