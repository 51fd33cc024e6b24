// Several processes in one log folder: taking turns, reading beside a writer, being killed.

#include "QmLogReader.h"
#include "QmLogTimes.h"
#include "QmLogWriter.h"
#include "tests/support/Line.h"
#include "tests/support/LogFolder.h"
#include "tests/support/LongRun.h"
#include "tests/support/MixedSteps.h"
#include "tests/support/Process.h"
#include "tests/support/Verify.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <thread>

namespace
{

using WindowsProcessesTest = LogFolderTest;

// Long enough for a child that need not wait to have answered.
constexpr DWORD kMoment = 300;

// Children that start while it lives have their clocks on.
struct ClocksOn
{
    ClocksOn() { ::SetEnvironmentVariableA("QM_LOG_TIMES", "1"); }
    ~ClocksOn() { ::SetEnvironmentVariableA("QM_LOG_TIMES", nullptr); }
};

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
    const ClocksOn clocks;
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
    CQmLogTimes times;
    EXPECT_TRUE(times.SetFolder(Path("").c_str()));
    EXPECT_EQ(3 * kTurns, times.GetSampleCount()) << "one for each process that begins";
    EXPECT_TRUE(FindingsOf(Path(""), {"Main"}).empty());
}

// All of them open the counters at once: one succeeds, and the others must notice.
TEST_F(WindowsProcessesTest, ThreadsOfAProcessShareOneSequence)
{
    constexpr int kTexts = 200;
    const std::vector<std::string> logs = {"Main", "Run", "Source", "SQL"};
    std::vector<std::thread> threads;
    QmLogSetTimes(true);
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
    QmLogSetTimes(false);
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

// One log as sessions leave it whose blocks are closed, and a writer of it.
struct PlainLog
{
    std::string text;
    std::vector<std::string> rows; // offset, and depth of its block
};

struct PlainWriter
{
    void Write(PlainLog& log, const std::string& text)
    {
        if (isDue && text[0] != '\n')
            Append(log, "\n");
        isDue = false;
        Append(log, text);
    }

    void WriteLine(PlainLog& log, const std::string& text)
    {
        const bool isFresh =
            log.text.empty() || (log.text.back() == '\n' && log.rows.back() == Line(log.text.size(), depth));
        isDue = false;
        Append(log, (isFresh ? "" : "\n") + text.substr(0, text.find_last_not_of('\n') + 1));
    }

    void Append(PlainLog& log, const std::string& text)
    {
        if (log.text.empty() && text[0] != '\n')
            log.rows.push_back(Line(0, depth));
        for (const char character : text)
        {
            log.text += character;
            if (character == '\n')
                log.rows.push_back(Line(log.text.size(), depth));
        }
        last = text.back();
    }

    int depth = 0;
    bool isDue = false; // a line feed
    char last = 0;
};

// Each session opens the log, writes and closes, in another process or by another writer of this one.
TEST_F(WindowsProcessesTest, SessionsInTurnsGoOnWhereTheOthersEnded)
{
    constexpr std::size_t kProcesses = 4;
    constexpr std::size_t kWriters = 6; // those after the processes are of this one
    const unsigned seed = FirstSeed();
    SCOPED_TRACE(SeedText(seed));
    std::mt19937 random(seed);
    std::unique_ptr<Child> children[kProcesses];
    CQmLogWriter here[kWriters];
    PlainWriter plain[kWriters];
    PlainLog log;
    const int sessions = Rounds(60, 500);
    for (int session = 0; session < sessions && !HasFailure(); ++session)
    {
        const std::size_t who = random() % kWriters;
        CQmLogWriter& writer = here[who];
        if (random() % 8 == 0 || *writer.GetFilePath() == '\0') // another one takes its part
        {
            writer = CQmLogWriter();
            writer.SetFilePath("Main");
            plain[who] = {};
            if (who < kProcesses)
                children[who] = std::make_unique<Child>();
        }
        Child* const child = who < kProcesses ? children[who].get() : nullptr;
        for (unsigned texts = 1 + random() % 3; texts > 0; --texts)
        {
            const std::string text = std::to_string(session) + (random() % 2 ? "\n" : "\npart");
            const bool isLine = random() % 2 == 0;
            const bool isBlock = random() % 4 == 0;
            if (isBlock)
            {
                EXPECT_TRUE(child ? child->Ask("block Main") == "true" : writer.BlockBegin(kNoticeKind));
                plain[who].depth = 1;
                plain[who].Write(log, "\n");
            }
            std::string sent = text;
            std::replace(sent.begin(), sent.end(), '\n', '|');
            EXPECT_TRUE(child    ? child->Ask((isLine ? "line Main " : "write Main ") + sent) == "true"
                        : isLine ? writer.WriteLine(text.c_str())
                                 : writer.Write(text.c_str()));
            isLine ? plain[who].WriteLine(log, text) : plain[who].Write(log, text);
            if (isBlock)
            {
                EXPECT_TRUE(child ? child->Ask("end Main") == "true" : writer.BlockEnd());
                plain[who].depth = 0;
                plain[who].isDue = plain[who].isDue || plain[who].last != '\n';
            }
        }
        EXPECT_TRUE(child ? child->Ask("close") == "true" : writer.Close());
        QmLogWriterCloseAll();
    }
    EXPECT_EQ(log.text, Contents("Main.LOG"));
    std::vector<std::string> rows;
    for (const CQmLogRow& row : Rows("Main"))
    {
        rows.push_back(Line(row.offset, +row.indent));
        EXPECT_EQ(rows.size(), row.time);
    }
    EXPECT_EQ(log.rows, rows);
    EXPECT_TRUE(FindingsOf(Path(""), {"Main"}).empty());
    EXPECT_EQ("", Contents("QmLog.LOG"));
    Figure("sessions", sessions);
}

// While one process is stopped within the counters' lock, others read and wait, and nobody has lost anything.
TEST_F(WindowsProcessesTest, AStoppedHolderOfTheLockIsWaitedFor)
{
    Child writer;
    ASSERT_EQ("true", writer.Ask("write Main one|"));
    struct CloseFile
    {
        void operator()(HANDLE file) const { ::CloseHandle(file); }
    };
    const std::unique_ptr<void, CloseFile> counters(::CreateFileA(Path("Log.DAT").c_str(), GENERIC_READ,
                                                                  FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                                                  OPEN_EXISTING, 0, nullptr));
    for (const bool isKilled : {false, true})
    {
        // Most of the time it has the lock, but it may be stopped anywhere.
        Child holder;
        holder.Send("count");
        for (int stops = 0;; ++stops)
        {
            ASSERT_LT(stops, 5000) << "it is never stopped within the lock";
            ::Sleep(1);
            holder.Suspend();
            if (!::LockFile(counters.get(), 0, 0, MAXDWORD, MAXDWORD))
                break;
            ::UnlockFile(counters.get(), 0, 0, MAXDWORD, MAXDWORD);
            holder.Resume();
        }
        writer.Send("write Main two|");
        EXPECT_EQ("", writer.Answer(kMoment)) << "it waits";
        CQmLogReader reader;
        reader.SetFilePath("Main");
        const char* text = nullptr;
        unsigned long length = 0;
        CQmLogRow row;
        ASSERT_TRUE(reader.Read(0, text, length, row));
        EXPECT_STREQ("one\n", text);
        EXPECT_EQ("", Damage({"Main"}));

        isKilled ? holder.Kill() : holder.Resume();
        EXPECT_EQ("true", writer.Answer());
    }
    EXPECT_EQ("one\ntwo\ntwo\n", Contents("Main.LOG"));
    EXPECT_EQ(0u, writer.Finish());
    EXPECT_EQ(4, QmLogGlobalTimeGet());
    EXPECT_TRUE(FindingsOf(Path(""), {"Main"}).empty());
    EXPECT_EQ("", Contents("QmLog.LOG"));
}

// A process that writes the same logs as others.
struct Sharer
{
    explicit Sharer(unsigned stepSeed) : seed(stepSeed) { child->Send("share " + std::to_string(seed)); }

    // Whether it has done a step since it was last asked.
    bool GoesOn()
    {
        const int before = done;
        for (std::string answer; !(answer = child->Answer(0)).empty();)
            done = std::stoi(answer);
        return done > before;
    }

    std::unique_ptr<Child> child = std::make_unique<Child>();
    unsigned seed;
    int done = -1; // the last step that it has answered
};

class SharedLogsTest : public LogFolderTest
{
protected:
    ClocksOn m_clocks;

    void ExpectNoDamage(const char* when) { EXPECT_EQ("", Damage(kMixedLogs)) << when; }

    // All that is not stopped goes on, each within a minute.
    void ExpectGoingOn(std::vector<Sharer>& sharers)
    {
        for (Sharer& sharer : sharers)
        {
            const ULONGLONG begin = ::GetTickCount64();
            while (!sharer.GoesOn())
            {
                ASSERT_LT(::GetTickCount64() - begin, 60'000u) << "a process hangs";
                ::Sleep(1);
            }
        }
    }

    // Every text of a step that was answered is in its log, in the order of the steps.
    void ExpectTexts(const Sharer& sharer, const std::map<std::string, std::string>& texts)
    {
        std::map<std::string, std::size_t> at;
        for (int index = 0; index <= sharer.done; ++index)
        {
            const MixedStep step(sharer.seed, static_cast<unsigned>(index));
            if (step.kind != MixedStep::Kind::Text)
                continue;
            at[step.log] = texts.at(step.log).find(step.text, at[step.log]);
            ASSERT_NE(std::string::npos, at[step.log]) << step.log << " lacks step " << index;
        }
    }
};

// Four processes share three logs; one after the other is killed or stopped, at any moment.
TEST_F(SharedLogsTest, LoseNothingThatWasAnsweredToKillsAndStops)
{
    constexpr int kRoundKills = 20;
    constexpr unsigned kSeedsOfRound = 100;
    const unsigned seed = FirstSeed() * kSeedsOfRound;
    const int kills = Rounds(15, 500);
    int killed = 0;
    int stopped = 0;
    long long steps = 0;
    for (unsigned round = 0; killed < kills && !HasFailure(); ++round)
    {
        const unsigned roundSeed = seed / kSeedsOfRound + round;
        SCOPED_TRACE(SeedText(roundSeed));
        std::mt19937 random(roundSeed);
        for (const auto& file : std::filesystem::directory_iterator(Path("")))
            std::filesystem::remove(file); // so that small files are checked

        unsigned nextSeed = roundSeed * kSeedsOfRound;
        std::vector<Sharer> sharers;
        std::vector<Sharer> ended;
        for (int i = 0; i < 4; ++i)
            sharers.emplace_back(nextSeed++);
        for (const int until = std::min(kills, killed + kRoundKills) - 4; killed < until && !HasFailure();)
        {
            Sharer& struck = sharers[random() % sharers.size()];
            ::Sleep(random() % 40);
            const unsigned what = random() % 4;
            if (what < 2)
            {
                struck.child->Suspend();
                ::Sleep(random() % 20);
                ExpectNoDamage("while one is stopped");
                ++stopped;
            }
            if (what == 0)
            {
                struck.child->Resume();
                continue;
            }
            struck.child->Kill();
            struck.GoesOn();
            ++killed;
            ExpectNoDamage("after a kill");
            ended.push_back(std::move(struck));
            struck = Sharer(nextSeed++);
            if (random() % 4 != 0) // else the next may be struck in its first steps
                ExpectGoingOn(sharers);
        }
        ExpectGoingOn(sharers);
        for (Sharer& sharer : sharers)
        {
            sharer.child->Kill();
            sharer.GoesOn();
            ++killed;
            ExpectNoDamage("after a kill");
        }
        std::move(sharers.begin(), sharers.end(), std::back_inserter(ended));

        std::map<std::string, std::string> texts;
        for (const std::string& log : kMixedLogs)
            texts[log] = Contents(log + ".LOG");
        for (const Sharer& sharer : ended)
        {
            ExpectTexts(sharer, texts);
            steps += sharer.done + 1;
        }
        // A text that another process writes is refused, and reported; of rows nothing is.
        EXPECT_EQ(std::string::npos, Contents("QmLog.LOG").find("WriteRow()"));
    }
    Figure("kills", killed);
    Figure("stops", stopped);
    Figure("steps", steps);
}

} // namespace
