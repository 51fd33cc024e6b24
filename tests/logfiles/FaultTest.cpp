// Failing system calls: every call of a session in turn, once and for ever, and disks of every size.

#include "QmLogReader.h"
#include "QmLogVerify.h"
#include "QmLogWriter.h"
#include "logfiles/Counters.h"
#include "tests/logfiles/ReferenceLog.h"
#include "tests/support/MemorySession.h"

#include <gtest/gtest.h>

#include <functional>

namespace
{

using ZEMA::Fault;

// The entries of "QmLog.LOG": message and system text, a line each; the layout of each entry is checked.
std::vector<std::string> Reports(const MemorySession& session)
{
    std::string text = session.Text("QmLog");
    for (std::size_t i = 2; i + 5 < text.size(); ++i)
    {
        if (text[i] == ':' && text[i + 3] == ':')
            text.replace(i - 2, 8, "hh:mm:ss"); // one session may run across a second
    }
    std::vector<std::string> reports;
    for (std::size_t at = 0; at < text.size();)
    {
        // "\n<date, 24 characters>\n\n<message>[\n<system text>\r\n]"
        if (text.size() - at < 27)
            break; // cut off by a full disk
        EXPECT_TRUE(text[at] == '\n' && text[at + 25] == '\n' && text[at + 26] == '\n') << text.substr(at);
        at += 27;
        const std::size_t next = std::min(text.find("\r\n", at), text.size());
        reports.push_back(text.substr(at, next - at));
        at = next + 2;
    }
    return reports;
}

// What a session did: answers, everything on disk but the dates, and whether it came to wait for ever.
struct Outcome
{
    std::vector<bool> answers;
    std::vector<std::string> reports;
    std::vector<std::string> files;
    bool endless = false;

    bool operator==(const Outcome&) const = default;
};

const char* const kFiles[] = {"Main.LOG", "Main.ROW", "SQL.LOG", "SQL.ROW", "Log.DAT"};

Outcome Finish(const MemorySession& session, Outcome outcome)
{
    outcome.reports = Reports(session);
    for (const char* file : kFiles)
        outcome.files.push_back(session.files.Contents(session.Path(file)));
    return outcome;
}

// A script runs against both: `Log` is a pair of writers with Write, BlockBegin, BlockEnd and Close.
struct LibraryLogs
{
    LibraryLogs()
    {
        main.SetFilePath("Main");
        sql.SetFilePath("SQL");
    }
    bool Write(bool toMain, const char* text) { return (toMain ? main : sql).Write(text); }
    void BlockBegin(std::uint32_t kind) { main.BlockBegin(static_cast<QmLogBlockKind>(kind)); }
    void BlockEnd() { main.BlockEnd(); }
    void Close()
    {
        main.Close();
        sql.Close();
        logfiles::CloseCounters();
    }

    CQmLogWriter main;
    CQmLogWriter sql;
};

struct ReferenceLogs
{
    bool Write(bool toMain, const char* text) { return (toMain ? main : sql).Write(text); }
    void BlockBegin(std::uint32_t kind) { main.BlockBegin(kind); }
    void BlockEnd() { main.BlockEnd(); }
    void Close()
    {
        main.Close();
        sql.Close();
        counters.Close();
    }

    ReferenceCounters counters{"C:\\Logs\\"};
    ReferenceWriter main{"C:\\Logs\\", "Main", counters};
    ReferenceWriter sql{"C:\\Logs\\", "SQL", counters};
};

// At most one row a call: the library makes the same system calls as the reference.
template <typename Logs> void SingleRows(Logs& logs, std::vector<bool>& answers)
{
    answers.push_back(logs.Write(true, ""));
    answers.push_back(logs.Write(true, "\n<one>"));
    logs.BlockBegin(2);
    answers.push_back(logs.Write(true, "<two>"));
    answers.push_back(logs.Write(false, "<three>"));
    logs.BlockEnd();
    answers.push_back(logs.Write(true, "<four>"));
    logs.Close();
    answers.push_back(logs.Write(false, "\n<five>"));
    answers.push_back(logs.Write(true, "\n<six>"));
}

template <typename Logs> void ManyRows(Logs& logs, std::vector<bool>& answers)
{
    answers.push_back(logs.Write(true, "<one>\n\nx\n"));
    logs.BlockBegin(1);
    answers.push_back(logs.Write(true, "<two>\ny\nz\n"));
    answers.push_back(logs.Write(false, "<three>\n\n\n\n"));
    logs.BlockEnd();
    answers.push_back(logs.Write(true, "<four>\n"));
}

const char* const kTokens[] = {"", "<one>", "<two>", "<three>", "<four>", "<five>", "<six>"};

template <typename Logs>
Outcome RunScript(const std::function<void(Logs&, std::vector<bool>&)>& script,
                  const std::function<void(MemorySession&)>& prepare, unsigned long* calls = nullptr)
{
    MemorySession session;
    Outcome outcome;
    prepare(session);
    {
        Logs logs;
        try
        {
            script(logs, outcome.answers);
        }
        catch (const ZEMA::EndlessWait&)
        {
            outcome.endless = true;
        }
        if (calls != nullptr)
            *calls = session.files.CallCount();
        session.files.ClearFault();
        outcome = Finish(session, outcome);
        session.files.CloseAllHandles(); // as the end of the process does
    }
    return outcome;
}

void ExpectNothingLost(const Outcome& outcome, const char* const* tokens, const std::string& what)
{
    const std::string text = outcome.files[0] + outcome.files[2];
    for (std::size_t i = 0; i < outcome.answers.size(); ++i)
        EXPECT_TRUE(!outcome.answers[i] || text.find(tokens[i]) != std::string::npos) << tokens[i] << what;
    EXPECT_EQ(0u, outcome.files[1].size() % 20) << what;
    EXPECT_EQ(0u, outcome.files[3].size() % 20) << what;
}

const auto kNothing = [](MemorySession&) {};

std::string Describe(const ZEMA::ScriptedFault& fault)
{
    return " at call " + std::to_string(fault.call) + ", fault " +
           std::to_string(static_cast<int>(fault.fault)) + (fault.forever ? ", for ever" : ", once");
}

TEST(Faults, EveryCallOfAWriterFailsAsInTheReference)
{
    unsigned long calls = 0;
    RunScript<ReferenceLogs>(SingleRows<ReferenceLogs>, kNothing, &calls);
    ASSERT_GT(calls, 60u);
    for (unsigned long call = 1; call <= calls; ++call)
    {
        for (const Fault kind : {Fault::kFail, Fault::kShortWrite, Fault::kNullHandle, Fault::kInvalidHandle})
        {
            for (const bool forever : {false, true})
            {
                const ZEMA::ScriptedFault fault = {call, kind, forever};
                const auto prepare = [&](MemorySession& session) { session.files.SetFault(fault); };
                const Outcome expected = RunScript<ReferenceLogs>(SingleRows<ReferenceLogs>, prepare);
                const Outcome outcome = RunScript<LibraryLogs>(SingleRows<LibraryLogs>, prepare);
                EXPECT_EQ(expected.answers, outcome.answers) << Describe(fault);
                EXPECT_EQ(expected.reports, outcome.reports) << Describe(fault);
                EXPECT_EQ(expected.files, outcome.files) << Describe(fault);
                EXPECT_EQ(expected.endless, outcome.endless) << Describe(fault);
                ExpectNothingLost(outcome, kTokens, Describe(fault));
            }
        }
    }
}

// Rows that go out together fall back to one by one: what is not reported has made no difference.
TEST(Faults, RowsWrittenTogetherAreLostOneByOneOrNotAtAll)
{
    const Outcome whole = RunScript<ReferenceLogs>(ManyRows<ReferenceLogs>, kNothing);
    unsigned long calls = 0;
    EXPECT_EQ(whole, RunScript<LibraryLogs>(ManyRows<LibraryLogs>, kNothing, &calls));
    int absorbed = 0;
    for (unsigned long call = 1; call <= calls; ++call)
    {
        for (const Fault kind : {Fault::kFail, Fault::kShortWrite})
        {
            const ZEMA::ScriptedFault fault = {call, kind, false};
            const Outcome outcome = RunScript<LibraryLogs>(
                ManyRows<LibraryLogs>, [&](MemorySession& session) { session.files.SetFault(fault); });
            if (outcome.reports.empty() && !outcome.endless)
            {
                EXPECT_EQ(whole, outcome) << Describe(fault);
                ++absorbed;
            }
            const char* const tokens[] = {"<one>", "<two>", "<three>", "<four>"};
            ExpectNothingLost(outcome, tokens, Describe(fault));
        }
    }
    EXPECT_GT(absorbed, static_cast<int>(calls)) << "most short writes strike calls that do not write";
}

TEST(Faults, ADiskOfAnySizeFillsAsInTheReference)
{
    for (std::uint64_t space = 0; space < 700; ++space)
    {
        const auto prepare = [space](MemorySession& session) { session.files.SetFreeSpace(space); };
        const Outcome expected = RunScript<ReferenceLogs>(ManyRows<ReferenceLogs>, prepare);
        const Outcome outcome = RunScript<LibraryLogs>(ManyRows<LibraryLogs>, prepare);
        ASSERT_EQ(expected.answers, outcome.answers) << space << " bytes";
        ASSERT_EQ(expected.files, outcome.files) << space << " bytes";
        ASSERT_EQ(0u, outcome.files[1].size() % 20) << space << " bytes";
    }
}

// A reader's or a counter's operation with its calls numbered from the moment the fault is set.
struct CallCase
{
    unsigned long call;
    const char* name;   // of the call that fails
    const char* report; // null: none
    int answer;
};

TEST(Faults, CountersReportWithTheirFixedTexts)
{
    constexpr const char* kReadRow =
        "CQmLogReader::ReadRow().SetFilePointer()"; // names another operation on purpose
    std::uint32_t first = 0;
    struct
    {
        const char* name;
        std::function<int()> run; // on counters that stand at time 5, depth 7
        std::vector<CallCase> cases;
    } const operations[] = {
        {"time get",
         [] { return QmLogGlobalTimeGet(); },
         {{2, "Seek", "GlobalTimeGet().SetFilePointer()", 0},
          {3, "Read", "GlobalTimeGet.ReadFile", 0},
          {4, "Unlock", nullptr, 5}}},
        {"indent get",
         [] { return logfiles::GlobalIndentGet(); },
         {{2, "Seek", "GlobalIndentGet().SetFilePointer()", 0},
          {3, "Read", "GlobalIndentGet.ReadFile", 0},
          {4, "Unlock", nullptr, 7}}},
        {"time increment",
         [&] {
             return logfiles::GlobalTimeTake(3, first) == 3 ? int(first) : -int(first);
         }, // negative: one number only
         {{2, "Seek", kReadRow, 0},
          {3, "Read", "GlobalTimeIncrement.ReadFile", -1},
          {4, "Seek", kReadRow, 0},
          {5, "Write", nullptr, -6},
          {6, "Unlock", nullptr, 6}}},
        {"time increment by one",
         [&] { return logfiles::GlobalTimeTake(1, first) == 1 ? int(first) : -1; },
         {{2, "Seek", kReadRow, 0},
          {3, "Read", "GlobalTimeIncrement.ReadFile", 1},
          {4, "Seek", kReadRow, 0},
          {5, "Write", "GlobalTimeIncrement.WriteFile", 6},
          {6, "Unlock", nullptr, 6}}},
        {"indent increment",
         [] { return logfiles::GlobalIndentIncrement(); },
         {{2, "Seek", kReadRow, 0},
          {3, "Read", "GlobalIndentIncrement.ReadFile", 1},
          {4, "Seek", "GlobalIndentIncrement().SetFilePointer()", 0},
          {5, "Write", "GlobalIndentIncrement.WriteFile", 8},
          {6, "Unlock", nullptr, 8}}},
        {"indent decrement",
         [] { return logfiles::GlobalIndentDecrement(); },
         {{2, "Seek", "GlobalIndentDecrement().SetFilePointer()", 0},
          {3, "Read", "GlobalIndentDecrement.ReadFile", 255},
          {4, "Seek", "GlobalIndentDecrement().SetFilePointer()", 0},
          {5, "Write", "GlobalTimeDecrement.WriteFile", 6},
          {6, "Unlock", nullptr, 6}}},
    };
    for (const auto& [name, run, cases] : operations)
    {
        for (const CallCase& c : cases)
        {
            MemorySession session;
            session.files.SetContents(session.Path("Log.DAT"), std::string("\5\0\0\0\7\0\0\0", 8));
            QmLogGlobalTimeGet();
            logfiles::GlobalIndentIncrement(); // both handles are open now
            logfiles::GlobalIndentDecrement();
            session.files.ForgetCalls();
            session.files.SetFault({c.call, Fault::kFail});
            EXPECT_EQ(c.answer, run()) << name << ", " << c.name;
            EXPECT_EQ(c.name, session.files.Calls()[c.call - 1]) << name;
            const std::vector<std::string> expected =
                c.report != nullptr ? std::vector<std::string>{std::string(c.report) + "\nError 5."}
                                    : std::vector<std::string>();
            EXPECT_EQ(expected, Reports(session)) << name << ", " << c.name;

            // A failed seek keeps the lock, and even the failing process waits for ever; so does a failed
            // unlock.
            const bool locked = std::string(c.name) != "Read" && std::string(c.name) != "Write";
            if (locked)
                EXPECT_THROW(run(), ZEMA::EndlessWait) << name << ", " << c.name;
            else
                EXPECT_NO_THROW(run()) << name << ", " << c.name;
            QmLogWriterCloseAll();
            EXPECT_NO_THROW(run()) << name << ", " << c.name << ": closing frees the lock";
        }
    }
}

TEST(Faults, AProcessWaitsForTheLockAndForTheOpen)
{
    MemorySession session;
    const std::string path = session.Path("Log.DAT");
    std::uint32_t first = 0;
    EXPECT_EQ(1u, logfiles::GlobalTimeTake(1, first));
    EXPECT_EQ(1u, first);
    logfiles::CloseCounters();

    // Another process has the file open for update: this one waits to open it, but may query.
    const HANDLE other =
        session.files.Create(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, OPEN_ALWAYS, 0);
    EXPECT_THROW(logfiles::GlobalTimeTake(1, first), ZEMA::EndlessWait);
    EXPECT_EQ(1, QmLogGlobalTimeGet());
    session.files.Lock(other, 0, ~0ull);
    EXPECT_THROW(QmLogGlobalTimeGet(), ZEMA::EndlessWait);
    session.files.Close(other);
    EXPECT_EQ(1, QmLogGlobalTimeGet());

    // A file shorter than its record reads as zeros for what is missing.
    logfiles::CloseCounters();
    session.files.SetContents(path, "\x01\x02");
    EXPECT_EQ(0x201, QmLogGlobalTimeGet());
    EXPECT_EQ(1, logfiles::GlobalIndentIncrement());
}

TEST(Faults, ReadersReportEachFailingCall)
{
    struct
    {
        unsigned long row;
        std::vector<CallCase> cases; // answer: the length read, or -1 for false
    } const reads[] = {
        {0, // a line with a successor
         {{1, "Create C:\\Logs\\Main.ROW", "CQmLogReader::ReadRow().CreateFileRead(Row)", -1},
          {2, "Seek", "CQmLogReader::ReadRow().SetFilePointer()", -1},
          {3, "Read", "CQmLogReader::ReadRow().ReadFile()", -1},
          {4, "Create C:\\Logs\\Main.LOG", "CQmLogReader::Read().CreateFileRead(Log)", -1},
          {5, "Seek", "CQmLogReader::Read().SetFilePointer()", -1},
          {6, "GetSize C:\\Logs\\Main.LOG", nullptr, 0}, // the line counts as empty
          {7, "Read", "CQmLogReader::Read().ReadFile()", -1}}},
        {1, // the last line
         {{4, "GetSize C:\\Logs\\Main.LOG", nullptr, 0}, {8, "Read", "CQmLogReader::Read().ReadFile()", -1}}},
        {2, {{3, "Read", "CQmLogReader::ReadRow().ReadFile()", -1}}},
    };
    for (const auto& [index, cases] : reads)
    {
        for (const CallCase& c : cases)
        {
            MemorySession session;
            CQmLogWriter log;
            log.SetFilePath("Main");
            log.Write("a\nb");
            CQmLogReader reader;
            reader.SetFilePath("Main");
            session.files.ForgetCalls();
            session.files.SetFault({c.call, Fault::kFail});
            const char* text = nullptr;
            unsigned long length = 0;
            CQmLogRow row;
            EXPECT_EQ(c.answer, reader.Read(index, text, length, row) ? static_cast<int>(length) : -1)
                << c.name;
            ASSERT_GE(session.files.Calls().size(), c.call);
            EXPECT_EQ(c.name, session.files.Calls()[c.call - 1]);
            const std::vector<std::string> expected =
                c.report != nullptr ? std::vector<std::string>{std::string(c.report) + "\nError 5."}
                                    : std::vector<std::string>();
            EXPECT_EQ(expected, Reports(session)) << c.name;
            EXPECT_EQ(index < 2, reader.Read(index, text, length, row))
                << c.name << ": the next call tries again";
        }
    }
}

TEST(Faults, HandlesThatDoNotCloseAreReported)
{
    MemorySession session;
    {
        CQmLogWriter writer;
        writer.SetFilePath("Main");
        writer.Write("a\n");
        session.files.SetFault({session.files.CallCount() + 1, Fault::kFail, true});
        EXPECT_TRUE(writer.Close());
        session.files.ClearFault();
        session.files.CloseAllHandles();
        QmLogWriterCloseAll();
        writer.Write("b\n");
        CQmLogReader reader;
        reader.SetFilePath("Main");
        const char* text = nullptr;
        unsigned long length = 0;
        CQmLogRow row;
        EXPECT_TRUE(reader.Read(0, text, length, row));
        session.files.CloseAllHandles(); // under their feet: both destructors fail now
    }
    const std::vector<std::string> expected = {"CQmLogReader::~CQmLogReader().CloseHandle(Log)\nError 6.",
                                               "CQmLogReader::~CQmLogReader().CloseHandle(Row)\nError 6.",
                                               "CQmLogWriter::~CQmLogWriter().CloseHandle(Log)\nError 6.",
                                               "CQmLogWriter::~CQmLogWriter().CloseHandle(Row)\nError 6."};
    EXPECT_EQ(expected, Reports(session)) << "the reports of Close itself failed with everything else";
    QmLogWriterCloseAll();
}

} // namespace
