// A second fault while the first is being recovered from: what one writer left behind is left again by the
// next.

#include "logfiles/Counters.h"
#include "tests/support/LongRun.h"
#include "tests/support/MemorySession.h"
#include "tests/support/Verify.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <set>

namespace
{

using ZEMA::Fault;

constexpr ZEMA::ScriptedFault kNoFault = {};
const std::vector<std::string> kLogs = {"Main", "SQL"};

// The log folder after a process has ended, and what it and those before it were answered with true.
struct Aftermath
{
    std::map<std::string, std::string> files;                 // contents by path
    std::map<std::string, std::vector<std::string>> answered; // texts by log
    bool isReported = false; // whether the last process has told of a loss: that it had one is no fault then
    std::vector<std::string> calls; // of the last process

    std::string TextOf(const std::string& log) const
    {
        const auto found = files.find("C:\\Logs\\" + log + ".LOG");
        return found != files.end() ? found->second : "";
    }
};

// A process with two writers that begins with what an earlier one left, and ends of its fault or of itself.
class Process
{
public:
    Process(const Aftermath& before, const std::string& name, const ZEMA::ScriptedFault& fault)
        : m_name(name), m_after(before)
    {
        for (const auto& [path, bytes] : before.files)
            m_session.files.SetContents(path, bytes);
        CQmLogWriter main = WriterOf("Main");
        CQmLogWriter sql = WriterOf("SQL");
        m_session.files.SetFault(fault);
        try
        {
            Work(main, sql);
        }
        catch (const ZEMA::ProcessKilled&)
        {
        }
        catch (const ZEMA::EndlessWait&)
        {
        }
        m_after.calls = m_session.files.Calls();
        m_after.isReported = main.GetLostRowCount() + sql.GetLostRowCount() > 0 ||
                             m_session.Text("QmLog").size() > before.TextOf("QmLog").size();
        m_session.files.ClearFault();
        m_session.files.CloseAllHandles();
        logfiles::CloseCounters();
        for (const std::string& path : m_session.files.Paths())
            m_after.files[path] = m_session.files.Contents(path);
    }

    const Aftermath& After() const { return m_after; }

    // Whether verification finds something for the next process to put right.
    bool IsUnfinished() const { return !FindingsOf("C:\\Logs", kLogs).empty(); }

    // What verification finds and what has been lost of the answered texts, a line each.
    std::string Damage() const
    {
        std::string damage;
        for (const Finding& finding : FindingsOf("C:\\Logs", kLogs))
        {
            if (QmLogIsDamage(finding.kind))
                damage += finding.file + " row " + std::to_string(finding.row) + ": " + finding.reason + "\n";
        }
        for (const auto& [log, texts] : m_after.answered)
        {
            std::size_t at = 0;
            for (const std::string& text : texts)
            {
                at = m_session.Text(log).find(text, at);
                if (at == std::string::npos)
                    return damage + log + " lacks " + text + " or has it too early";
            }
        }
        return damage;
    }

private:
    void Write(CQmLogWriter& log, const std::string& text)
    {
        if (log.Write(text.c_str()))
            m_after.answered[log.GetFilePath()].push_back(text);
    }

    void Work(CQmLogWriter& main, CQmLogWriter& sql)
    {
        Write(main, m_name + "1\n" + m_name + "of many\n\nlines");
        main.BlockBegin(kErrorKind);
        Write(sql, m_name + "2");
        Write(main, m_name + "3\n");
        Write(main, m_name + "4\nlong enough to reach beyond the rows of a write that was killed\n");
        main.BlockEnd();
        Write(sql, "\n" + m_name + "5\n");
        main.Close();
        Write(main, m_name + "6");
    }

    std::string m_name;
    MemorySession m_session;
    Aftermath m_after;
};

// Each call in turn is the one at which a process is killed, or which fails, or which writes a part.
template <typename Visit> void ForEachFault(const std::vector<std::string>& calls, Visit visit)
{
    for (unsigned long call = 1; call <= calls.size(); ++call)
    {
        visit(ZEMA::ScriptedFault{call, Fault::Kill});
        visit(ZEMA::ScriptedFault{call, Fault::Fail});
        if (calls[call - 1] == "Write")
            visit(ZEMA::ScriptedFault{call, Fault::ShortWrite});
    }
}

std::string DescribeFault(const ZEMA::ScriptedFault& fault)
{
    return "fault " + std::to_string(static_cast<int>(fault.fault)) + (fault.forever ? " for ever" : "") +
           " at call " + std::to_string(fault.call);
}

TEST(Recovery, MayItselfBeKilledOrFailAtAnyCall)
{
    const Aftermath plain = Process({}, "plain", kNoFault).After();
    std::set<std::map<std::string, std::string>> states;
    std::vector<Aftermath> starts;
    ForEachFault(plain.calls, [&](ZEMA::ScriptedFault fault) {
        for (const bool forever : {false, true})
        {
            fault.forever = forever && fault.fault != Fault::Kill;
            const Process first(plain, "first", fault);
            if (first.After().isReported)
                continue;
            EXPECT_EQ("", first.Damage()) << "first: " << DescribeFault(fault);
            if (states.insert(first.After().files).second && (IsLongRun() || first.IsUnfinished()))
                starts.push_back(first.After());
        }
    });
    EXPECT_GT(states.size(), 20u);

    // The short run has the states that need a recovery, and of each a part of the second faults.
    const unsigned step = Rounds(3u, 1u);
    unsigned pair = 0;
    int recoveries = 0;
    for (const Aftermath& start : starts)
    {
        ForEachFault(Process(start, "second", kNoFault).After().calls, [&](const ZEMA::ScriptedFault& fault) {
            if (HasFailure() || pair++ % step != 0)
                return;
            std::optional<Process> second(std::in_place, start, "second", fault);
            const Aftermath left = second->After();
            if (left.isReported)
                return;
            EXPECT_EQ("", second->Damage()) << "second: " << DescribeFault(fault);
            second.reset();
            const Process third(left, "third", kNoFault);
            EXPECT_EQ("", third.Damage()) << "third, after " << DescribeFault(fault);
            EXPECT_FALSE(third.After().isReported);
            ++recoveries;
        });
    }
    Figure("states that a first fault leaves", static_cast<long long>(starts.size()));
    Figure("second faults", recoveries);
}

} // namespace
