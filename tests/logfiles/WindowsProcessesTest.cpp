// Several processes in one log folder: taking turns, reading beside a writer, being killed.

#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "tests/support/LogFolder.h"
#include "tests/support/LongRun.h"
#include "tests/support/MixedSteps.h"
#include "tests/support/Process.h"
#include "tests/support/Verify.h"

#include <filesystem>
#include <set>
#include <sstream>
#include <thread>

namespace
{

using WindowsProcessesTest = LogFolderTest;

// Long enough for a child that need not wait to have answered.
constexpr DWORD kMoment = 300;

TEST_F(WindowsProcessesTest, AFirstRowWaitsUntilTheOtherProcessHasClosedAll)
{
    CQmLogWriter log;
    log.SetFilePath("Main");
    ASSERT_TRUE(log.Write("one\ntwo\n")); // rows 1 to 3
    Child child;
    child.Send("write Run three");
    EXPECT_EQ("", child.Answer(kMoment));
    EXPECT_TRUE(Rows("Run").empty());

    log.Close();
    EXPECT_EQ("", child.Answer(kMoment)) << "the counters are still open here";
    QmLogWriterCloseAll();
    EXPECT_EQ("true", child.Answer());

    // Now the child has them, and a log that is open there is refused here.
    CQmLogWriter other;
    other.SetFilePath("Run");
    EXPECT_FALSE(other.Write("not mine"));
    EXPECT_NE(std::string::npos, Contents("QmLog.LOG").find("CQmLogWriter::Write().CreateFileWrite(Log)"));
    EXPECT_EQ(4, QmLogGlobalTimeGet()); // asking is always allowed

    EXPECT_EQ("true", child.Ask("close"));
    EXPECT_TRUE(log.Write("five\n"));
    EXPECT_EQ(5u, Rows("Main").back().time);
    EXPECT_EQ("three", Contents("Run.LOG"));
    EXPECT_EQ("", Damage({"Main", "Run"}));
}

TEST_F(WindowsProcessesTest, ShortWritersShareOneSequence)
{
    const std::vector<std::string> logs = {"Main", "Run", "Source", "SQL"};
    constexpr unsigned kRounds = 6;
    for (unsigned round = 0; round < kRounds; ++round)
    {
        Child children[4];
        for (const char* const command : {"block ", "write ", "end ", "close "})
        {
            for (std::size_t i = 0; i < logs.size(); ++i)
                children[i].Send(command + logs[i] + " caption|line|");
        }
        for (Child& child : children)
        {
            for (int answers = 0; answers < 4; ++answers)
                ASSERT_EQ("true", child.Answer());
        }
    }

    std::set<std::uint32_t> numbers;
    for (const std::string& log : logs)
    {
        ASSERT_EQ(3 * kRounds, Rows(log).size());
        for (const CQmLogRow& row : Rows(log))
            EXPECT_TRUE(numbers.insert(row.time).second) << log << " repeats " << row.time;
    }
    EXPECT_EQ(3 * kRounds * logs.size(), *numbers.rbegin());
    EXPECT_EQ(std::string("\0\0\0\0", 4), Contents("Log.DAT").substr(4)) << "blocks were closed";
    EXPECT_EQ("", Damage(logs));
}

TEST_F(WindowsProcessesTest, ProcessesThatTakeTurnsAtOneLogLoseNoRow)
{
    constexpr unsigned kTurns = 150;
    Child children[3];
    const std::string names[] = {"a", "b", "c"};
    for (std::size_t i = 0; i < std::size(children); ++i)
        children[i].Send("turns Main " + std::to_string(kTurns) + " " + names[i]);
    for (Child& child : children)
        EXPECT_EQ("true", child.Answer());

    std::istringstream lines(Contents("Main.LOG"));
    unsigned left[] = {kTurns, kTurns, kTurns};
    for (std::string line; std::getline(lines, line);)
    {
        ASSERT_TRUE(line.size() > 2 && line[0] >= 'a' && line[0] <= 'c') << "'" << line << "'";
        EXPECT_EQ(std::to_string(left[line[0] - 'a']--), line.substr(2));
    }
    EXPECT_EQ(0u, left[0] + left[1] + left[2]);
    EXPECT_EQ(3 * kTurns, Rows("Main").size());
    EXPECT_TRUE(FindingsOf(Path(""), {"Main"}).empty());
}

// All of them open the counters at once: one succeeds, and the others must notice.
TEST_F(WindowsProcessesTest, ThreadsOfAProcessShareOneSequence)
{
    constexpr int kTexts = 200;
    const std::vector<std::string> logs = {"Main", "Run", "Source", "SQL"};
    std::vector<std::thread> threads;
    for (const std::string& name : logs)
    {
        threads.emplace_back([&name] {
            CQmLogWriter log;
            log.SetFilePath(name.c_str());
            for (int text = 0; text < kTexts; ++text)
            {
                QmLogBlock block(log, kDetailKind, "caption");
                EXPECT_TRUE(log.Write("\none\ntwo"));
                QmLogGlobalTimeGet();
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    QmLogWriterCloseAll();
    EXPECT_EQ(static_cast<int>(logs.size()) * kTexts * 3, QmLogGlobalTimeGet());
    EXPECT_TRUE(FindingsOf(Path(""), logs).empty());
    EXPECT_EQ(std::string("\0\0\0\0", 4), Contents("Log.DAT").substr(4)) << "blocks were closed";
    EXPECT_EQ("", Contents("QmLog.LOG"));
}

TEST_F(WindowsProcessesTest, AReaderFollowsALiveWriterLineByLine)
{
    constexpr unsigned kTexts = 5000;
    std::string expected;
    for (unsigned index = 0; index < kTexts; ++index)
        expected += MixedStep(1, index).text;
    // A text that begins with a line feed has no row for its first line; this one has it.
    ASSERT_NE('\n', expected.front());

    Child child;
    child.Send("texts Main " + std::to_string(kTexts));
    CQmLogReader reader;
    reader.SetFilePath("Main");
    std::set<unsigned long> counts;
    unsigned long next = 0; // the line that is to come, and where it begins
    std::size_t begin = 0;
    bool ended = false;
    for (std::size_t end; (end = expected.find('\n', begin)) != std::string::npos;)
    {
        const bool last = ended; // what is not there after the writer's end is lost
        ended = ended || !child.Answer(0).empty() || !child.IsRunning();
        counts.insert(reader.GetRowCount());
        const std::string line = expected.substr(begin, end + 1 - begin);
        const char* text = nullptr;
        unsigned long length = 0;
        CQmLogRow row;
        if (next + 1 >= *counts.rbegin() || !reader.Read(next, text, length, row) || length < line.size())
        {
            ASSERT_FALSE(last) << "line " << next << " never came, of " << *counts.rbegin();
            continue;
        }
        ASSERT_EQ(line, std::string(text, length)) << "line " << next;
        unsigned long time = 0;
        unsigned long index = 0;
        ASSERT_TRUE(reader.Find(row.time, next % 2 == 0, time, index));
        ASSERT_EQ(next, index);
        ++next;
        begin = end + 1;
    }
    EXPECT_GT(counts.size(), 2u) << "the writer was not followed while it wrote";
    EXPECT_TRUE(ended || child.Answer() == "true");
    EXPECT_EQ(next + 1, reader.GetRowCount());
    EXPECT_TRUE(expected == Contents("Main.LOG"));
}

TEST_F(WindowsProcessesTest, AKilledWriterLosesNothingThatWasAnswered)
{
    const unsigned first = FirstSeed();
    const unsigned rounds = Rounds(15u, 200u);
    int kills = 0;
    for (unsigned round = 0; round < rounds && !HasFailure(); ++round)
    {
        const unsigned roundSeed = first + round;
        SCOPED_TRACE(SeedText(roundSeed));
        std::mt19937 random(roundSeed);
        if (round % 20 == 0)
        {
            for (const auto& file : std::filesystem::directory_iterator(Path("")))
                std::filesystem::remove(file); // so that a long run checks small files
        }

        Child child;
        child.Send("mixed " + std::to_string(roundSeed));
        std::string answered = round % 4 != 0 ? child.Answer() : ""; // else the first steps are struck, too
        EXPECT_EQ(round % 4 == 0, answered.empty());
        ::Sleep(random() % 50);
        child.Kill();
        for (std::string answer; !(answer = child.Answer(0)).empty();)
            answered = answer;
        EXPECT_NE("false", answered);
        EXPECT_EQ("", Damage(kMixedLogs)) << "after the kill";

        Child heir;
        for (const std::string& log : kMixedLogs)
        {
            const std::string text = Contents(log + ".LOG");
            std::size_t at = 0;
            for (int index = 0; !answered.empty() && index <= std::atoi(answered.c_str()); ++index)
            {
                const MixedStep step(roundSeed, static_cast<unsigned>(index));
                if (step.kind != MixedStep::Kind::Text || step.log != log)
                    continue;
                at = text.find(step.text, at);
                ASSERT_NE(std::string::npos, at) << log << " lacks step " << index << " of " << answered;
            }
            EXPECT_EQ("true", heir.Ask("write " + log + " heir|of round|"));
            EXPECT_TRUE(Contents(log + ".LOG").starts_with(text));
        }
        EXPECT_EQ(0u, heir.Finish());
        EXPECT_EQ("", Damage(kMixedLogs)) << "after the next writer";
        EXPECT_EQ("", Contents("QmLog.LOG"));
        ++kills;
    }
    Figure("kills", kills);
}

} // namespace
