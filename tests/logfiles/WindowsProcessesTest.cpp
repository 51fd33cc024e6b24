// Several processes in one log folder: taking turns, reading beside a writer, being killed.

#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "tests/support/LogFolder.h"
#include "tests/support/MixedSteps.h"
#include "tests/support/Process.h"

#include <cstdlib>
#include <map>
#include <memory>
#include <set>

namespace
{

using WindowsProcessesTest = LogFolderTest;

// Long enough for a child that need not wait to have answered.
constexpr DWORD kMoment = 300;

bool IsTrue(const std::optional<std::string>& answer)
{
    return answer == "true";
}

TEST_F(WindowsProcessesTest, AFirstRowWaitsUntilTheOtherProcessHasClosedAll)
{
    CQmLogWriter log;
    log.SetFilePath("Main");
    ASSERT_TRUE(log.Write("one\ntwo\n")); // rows 1 to 3
    Child child;
    child.Send("write Run three");
    EXPECT_FALSE(child.Answer(kMoment));
    EXPECT_TRUE(Rows("Run").empty());

    log.Close();
    EXPECT_FALSE(child.Answer(kMoment)) << "the counters are still open here";
    QmLogWriterCloseAll();
    EXPECT_TRUE(IsTrue(child.Answer()));

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
    EXPECT_EQ("", Findings({"Main", "Run"}));
}

TEST_F(WindowsProcessesTest, ShortWritersShareOneSequence)
{
    const std::vector<std::string> logs = {"Main", "Run", "Source", "SQL", "Service"};
    constexpr unsigned kRounds = 6;
    for (unsigned round = 0; round < kRounds; ++round)
    {
        std::vector<std::unique_ptr<Child>> children;
        for (const std::string& log : logs)
        {
            children.push_back(std::make_unique<Child>());
            children.back()->Send("block " + log);
            children.back()->Send("write " + log + " caption\\nline\\n");
            children.back()->Send("end " + log);
            children.back()->EndInput();
        }
        for (const auto& child : children)
            EXPECT_EQ(0u, child->Finish()); // without having closed anything itself
        for (const auto& child : children)
        {
            for (int answers = 0; answers < 3; ++answers)
                EXPECT_TRUE(IsTrue(child->Answer()));
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
    EXPECT_EQ("", Findings(logs));
}

// Splits a text into its lines, line feeds included.
std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines(1);
    for (const char character : text)
    {
        lines.back() += character;
        if (character == '\n')
            lines.emplace_back();
    }
    return lines;
}

TEST_F(WindowsProcessesTest, AReaderFollowsALiveWriterLineByLine)
{
    constexpr unsigned kTexts = 5000;
    std::string expected;
    for (unsigned index = 0; index < kTexts; ++index)
        expected += MixedStep(1, index).text;
    // A text that begins with a line feed has no row for its first line; this one has it.
    const std::vector<std::string> lines = Lines(expected);
    ASSERT_NE('\n', expected.front());

    Child child;
    child.Send("texts Main 1 " + std::to_string(kTexts));
    CQmLogReader reader;
    reader.SetFilePath("Main");
    std::set<unsigned long> counts;
    unsigned long next = 0;
    bool ended = false;
    while (next + 1 < lines.size() && !HasFailure())
    {
        const bool last = ended; // what is not there after the writer's end is lost
        ended = ended || child.Answer(0).has_value();
        const unsigned long count = reader.GetRowCount();
        counts.insert(count);
        const char* text = nullptr;
        unsigned long length = 0;
        CQmLogRow row;
        while (next + 1 < count && reader.Read(next, text, length, row) && length == lines[next].size())
        {
            ASSERT_EQ(lines[next], std::string(text, length)) << "line " << next;
            unsigned long time = 0;
            unsigned long index = 0;
            ASSERT_TRUE(reader.Find(row.time, next % 2 == 0, time, index));
            ASSERT_EQ(next, index);
            ASSERT_EQ(row.time, time);
            ++next;
        }
        ASSERT_FALSE(last && next + 1 < lines.size()) << "line " << next << " never came, of " << count;
    }
    EXPECT_GT(counts.size(), 2u) << "the writer was not followed while it wrote";
    EXPECT_TRUE(ended || IsTrue(child.Answer()));
    EXPECT_EQ(lines.size(), reader.GetRowCount());
    EXPECT_TRUE(expected == Contents("Main.LOG"));
}

// QM_TEST_SEED repeats a run that failed.
unsigned Seed()
{
    const char* const given = std::getenv("QM_TEST_SEED");
    return given != nullptr ? static_cast<unsigned>(std::atoi(given)) : std::random_device()() % 60000;
}

TEST_F(WindowsProcessesTest, AKilledWriterLosesNothingThatWasAnswered)
{
    const unsigned seed = Seed();
    const int rounds = std::getenv("QM_TEST_LONG") != nullptr ? 200 : 15;
    std::mt19937 random(seed);
    for (int round = 0; round < rounds && !HasFailure(); ++round)
    {
        SCOPED_TRACE("round " + std::to_string(round) + " of QM_TEST_SEED=" + std::to_string(seed));
        if (round % 20 == 0)
            RemoveFiles(); // so that a long run checks small files

        const unsigned roundSeed = seed + static_cast<unsigned>(round);
        Child child;
        child.Send("mixed " + std::to_string(roundSeed));
        std::vector<unsigned> answered;
        const auto take = [&](const std::optional<std::string>& answer) {
            EXPECT_NE("false", answer.value_or(""));
            if (answer)
                answered.push_back(static_cast<unsigned>(std::stoul(*answer)));
            return answer.has_value();
        };
        const bool underWay = round % 4 != 0; // else the first steps are struck, too
        EXPECT_TRUE(!underWay || take(child.Answer()));
        ::Sleep(random() % 50);
        child.Kill();
        while (take(child.Answer(0)))
        {
        }
        EXPECT_EQ("", Damage(kMixedLogs)) << "after the kill";

        std::map<std::string, std::string> texts;
        std::map<std::string, std::size_t> found;
        for (const std::string& log : kMixedLogs)
            texts[log] = Contents(log + ".LOG");
        for (const unsigned index : answered)
        {
            const MixedStep step(roundSeed, index);
            if (step.kind != MixedStep::Kind::kText)
                continue;
            std::size_t& at = found[step.log];
            at = texts[step.log].find(step.text, at);
            ASSERT_NE(std::string::npos, at)
                << step.log << " lacks step " << index << " of " << answered.size();
        }

        Child heir;
        for (const std::string& log : kMixedLogs)
        {
            EXPECT_EQ("true", heir.Ask("write " + log + " heir\\nof round\\n"));
            EXPECT_EQ(0u, Contents(log + ".LOG").find(texts[log]));
        }
        EXPECT_EQ(0u, heir.Finish());
        EXPECT_EQ("", Damage(kMixedLogs)) << "after the next writer";
    }
    EXPECT_EQ("", Contents("QmLog.LOG"));
}

} // namespace
