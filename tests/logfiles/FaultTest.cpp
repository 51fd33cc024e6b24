// Failing system calls: every call of a session in turn, once and for ever, and disks of every size.

#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "logfiles/Counters.h"
#include "logfiles/Registry.h"
#include "tests/logfiles/ReferenceLog.h"
#include "tests/support/MemorySession.h"
#include "tests/support/Verify.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <utility>

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

// The entries of an error log without the system's words, each with a bar after it.
std::string Messages(const std::string& text)
{
    std::istringstream lines(text);
    std::string messages;
    std::string line;
    while (std::getline(lines, line))
        messages += line.find("()") != std::string::npos ? line + "|" : "";
    return messages;
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

// A script runs against both: the library's writers and those of the reference.
template <typename Writer, typename Counters> struct Logs
{
    bool Write(bool toMain, const char* text) { return (toMain ? main : sql).Write(text); }
    void Close()
    {
        main.Close();
        sql.Close();
        counters.Close();
    }

    Counters counters{"C:\\Logs\\"};
    Writer main{"C:\\Logs\\", "Main", counters};
    Writer sql{"C:\\Logs\\", "SQL", counters};
};
using ReferenceLogs = Logs<ReferenceWriter, ReferenceCounters>;

struct LibraryCounters
{
    explicit LibraryCounters(const char*) {}
    void Close() { logfiles::CloseCounters(); }
};

struct LibraryWriter : CQmLogWriter
{
    LibraryWriter(const char*, const char* name, LibraryCounters&) { SetFilePath(name); }
};
using LibraryLogs = Logs<LibraryWriter, LibraryCounters>;

// At most one row a call: the library makes the same system calls as the reference.
template <typename Logs> void SingleRows(Logs& logs, std::vector<bool>& answers)
{
    answers.push_back(logs.Write(true, ""));
    answers.push_back(logs.Write(true, "\n<one>"));
    logs.main.BlockBegin(kErrorKind);
    answers.push_back(logs.Write(true, "<two>"));
    answers.push_back(logs.Write(false, "<three>"));
    logs.main.BlockEnd();
    answers.push_back(logs.Write(true, "<four>"));
    logs.Close();
    answers.push_back(logs.Write(false, "\n<five>"));
    answers.push_back(logs.Write(true, "\n<six>"));
}

template <typename Logs> void ManyRows(Logs& logs, std::vector<bool>& answers)
{
    answers.push_back(logs.Write(true, "<one>\n\nx\n"));
    logs.main.BlockBegin(kDetailKind);
    answers.push_back(logs.Write(true, "<two>\ny\nz\n"));
    answers.push_back(logs.Write(false, "<three>\n\n\n\n"));
    logs.main.BlockEnd();
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
        for (const Fault kind : {Fault::Fail, Fault::ShortWrite, Fault::NullHandle, Fault::InvalidHandle})
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
        for (const Fault kind : {Fault::Fail, Fault::ShortWrite})
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

        // What a full disk leaves is whole, but for the rows that are counted.
        MemorySession session;
        prepare(session);
        LibraryLogs logs;
        std::vector<bool> answers;
        ManyRows(logs, answers);
        logs.Close();
        bool damaged = false;
        for (const Finding& finding : FindingsOf("C:\\Logs", {"Main", "SQL"}))
            damaged = damaged || (QmLogIsDamage(finding.kind) && !finding.file.starts_with("Log"));
        ASSERT_EQ(damaged, logs.main.GetLostRowCount() + logs.sql.GetLostRowCount() > 0) << space << " bytes";
    }
}

TEST(Faults, RowsThatCannotBeWrittenAreCountedAndReportedOnceACall)
{
    MemorySession session;
    const HANDLE index =
        session.files.Create(session.Path("Main.ROW").c_str(), GENERIC_READ, FILE_SHARE_READ, OPEN_ALWAYS, 0);
    CQmLogWriter log = WriterOf("Main");
    EXPECT_TRUE(log.Write("a\nb\nc\n"));
    session.files.SetLastError(ERROR_SUCCESS);
    EXPECT_TRUE(log.Write("d\ne"));
    EXPECT_EQ(5u, log.GetLostRowCount());
    const std::vector<std::string> refused(2, "CQmLogWriter::WriteRow().CreateFileWrite(Row)\nError " +
                                                  std::to_string(ERROR_SHARING_VIOLATION) + ".");
    EXPECT_EQ(refused, Reports(session)) << "each with what the opening was refused for";

    session.files.Close(index);

    session.files.SetSize(session.Path("Full.ROW"), 0xFFFFFFFF / 20 * 20);
    CQmLogWriter full = WriterOf("Full");
    EXPECT_TRUE(full.Write("a\nb\n"));
    EXPECT_EQ(3u, full.GetLostRowCount());
    EXPECT_EQ("CQmLogWriter::WriteRow().WriteFile()\nError 223.", Reports(session).back());
    EXPECT_EQ(3u, Reports(session).size());
}

// Whenever the text is free the index is, and the index of a process that has ended is waited for.
TEST(Faults, ProcessesThatTakeTurnsLoseNoRow)
{
    MemorySession session;
    HANDLE late = nullptr;
    const auto canOpen = [&](const char* file) {
        const HANDLE handle = session.files.Create(session.Path(file).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                                   OPEN_EXISTING, 0);
        session.files.Close(handle);
        return handle != INVALID_HANDLE_VALUE;
    };
    int tries = 0;
    session.files.onCall = [&](const std::string& call) {
        if (late == nullptr)
            EXPECT_TRUE(!canOpen("Main.LOG") || canOpen("Main.ROW")) << call;
        else if (call.ends_with("Main.ROW") && ++tries == 2)
            session.files.Close(std::exchange(late, nullptr));
    };
    CQmLogWriter& log = QmLogWriterDefine("Main");
    EXPECT_TRUE(log.Write("a\n"));
    QmLogWriterCloseAll();
    late = session.files.Create(session.Path("Main.ROW").c_str(), GENERIC_WRITE, FILE_SHARE_READ, OPEN_ALWAYS,
                                0);
    EXPECT_TRUE(log.Write("b\n"));
    EXPECT_EQ(nullptr, late);
    EXPECT_EQ(0u, log.GetLostRowCount());
    QmLogWriterCloseAll();
    session.files.onCall = nullptr;
}

TEST(Faults, EachRefusalLeavesOneEntry)
{
    MemorySession session;
    session.manager.folder = "C:\\Refusals\\";
    const auto repeat = [](const std::function<void()>& refuse) {
        refuse();
        refuse();
    };
    CQmLogWriter log;
    const std::string longName(300, 'n');
    repeat([&] { log.SetFilePath(longName.c_str()); });
    CQmLogReader reader;
    repeat([&] { reader.SetFilePath(""); });
    logfiles::Registry<CQmLogWriter> writers("Define()");
    for (const char* name : {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10"})
        writers.Define(name);
    repeat([&] { writers.Define("Eleventh").Write("text"); });
    log.SetFilePath("Deep");
    for (int depth = 0; depth < CQmLogWriter::kMaxDepth; ++depth)
        log.BlockBegin(kPlainKind);
    repeat([&] { EXPECT_FALSE(log.BlockBegin(kPlainKind)); });
    EXPECT_EQ("CQmLogWriter::SetFilePath(): the name is empty, or too long with the log folder: " +
                  longName.substr(0, 260) +
                  "|CQmLogReader::SetFilePath(): the name is empty, or too long with the log folder: |"
                  "Define(): no room for an eleventh log: Eleventh|"
                  "CQmLogWriter::BlockBegin(): no room for a 255th open block: Deep|",
              Messages(session.Text("QmLog")));

    session.manager.folder.clear();
    session.manager.fallback = "C:\\Fallback\\";
    repeat([&] { log.SetFilePath("Homeless"); });
    EXPECT_EQ("CQmLogWriter::SetFilePath(): there is no log folder, or it cannot be made: Homeless|",
              Messages(session.files.Contents("C:\\Fallback\\QmLog.LOG")));
    log.Close();
    QmLogWriterCloseAll();
}

std::vector<std::string> ReportOf(const std::string& message)
{
    return message.empty() ? std::vector<std::string>() : std::vector{message + "\nError 5."};
}

TEST(Faults, CountersReportWithTheirFixedTexts)
{
    const std::string up = "CQmLogReader::ReadRow().SetFilePointer()"; // deliberately not its own name
    std::uint32_t first = 0;
    const auto takeThree = [&first] { // below 0: one only
        return logfiles::GlobalTimeTake(3, first) == 3 ? int(first) : -int(first);
    };
    // On counters that stand at time 5 and depth 7. The first call is the lock; what each of the others
    // reports when it fails, and what the operation answers then. Updates by one are compared with the
    // reference.
    struct
    {
        const char* name;
        std::function<int()> run;
        std::vector<std::string> calls, reports;
        std::vector<int> answers;
    } const cases[] = {
        {"time get",
         QmLogGlobalTimeGet,
         {"Seek", "Read", "Unlock"},
         {"GlobalTimeGet().SetFilePointer()", "GlobalTimeGet.ReadFile", ""},
         {0, 0, 5}},
        {"indent get",
         logfiles::GlobalIndentGet,
         {"Seek", "Read", "Unlock"},
         {"GlobalIndentGet().SetFilePointer()", "GlobalIndentGet.ReadFile", ""},
         {0, 0, 7}},
        {"three time increments",
         takeThree,
         {"Seek", "Read", "Seek", "Write", "Unlock"},
         {up, "GlobalTimeIncrement.ReadFile", up, "", ""},
         {0, -1, 0, -6, 6}},
    };
    for (const auto& c : cases)
    {
        for (std::size_t at = 0; at < c.calls.size(); ++at)
        {
            SCOPED_TRACE(std::string(c.name) + ", call " + std::to_string(at + 2));
            MemorySession session;
            session.files.SetContents(session.Path("Log.DAT"), std::string("\5\0\0\0\7\0\0\0", 8));
            QmLogGlobalTimeGet();
            logfiles::GlobalIndentIncrement(); // both handles are open now
            logfiles::GlobalIndentDecrement();
            session.files.ForgetCalls();
            session.files.SetFault({static_cast<unsigned long>(at + 2), Fault::Fail});
            EXPECT_EQ(c.answers[at], c.run());
            EXPECT_EQ(c.calls[at], session.files.Calls()[at + 1]);
            EXPECT_EQ(ReportOf(c.reports[at]), Reports(session));

            // After a failed seek or unlock the lock stays, and even the failing process waits for ever.
            if (c.calls[at] == "Seek" || c.calls[at] == "Unlock")
                EXPECT_THROW(c.run(), ZEMA::EndlessWait);
            QmLogWriterCloseAll();
            EXPECT_NO_THROW(c.run()) << "closing frees the lock";
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
    const struct
    {
        unsigned long row;
        unsigned long call; // the one that fails, counted from 1
        const char* name;
        const char* report; // empty for none
        int answer;         // the length read, or -1 for false
    } cases[] = {
        {0, 1, "Create C:\\Logs\\Main.ROW", "CQmLogReader::ReadRow().CreateFileRead(Row)", -1},
        {0, 2, "Seek", "CQmLogReader::ReadRow().SetFilePointer()", -1},
        {0, 3, "Read", "CQmLogReader::ReadRow().ReadFile()", -1},
        {0, 4, "Create C:\\Logs\\Main.LOG", "CQmLogReader::Read().CreateFileRead(Log)", -1},
        {0, 5, "Seek", "CQmLogReader::Read().SetFilePointer()", -1},
        {0, 6, "GetSize C:\\Logs\\Main.LOG", "", 0}, // the line counts as empty
        {0, 7, "Read", "CQmLogReader::Read().ReadFile()", -1},
        {1, 4, "GetSize C:\\Logs\\Main.LOG", "", 0},
        {1, 8, "Read", "CQmLogReader::Read().ReadFile()", -1},
        {2, 3, "Read", "CQmLogReader::ReadRow().ReadFile()", -1}, // a row that does not exist
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE("row " + std::to_string(c.row) + ", call " + std::to_string(c.call));
        MemorySession session;
        CQmLogWriter log = WriterOf("Main");
        log.Write("a\nb");
        CQmLogReader reader;
        reader.SetFilePath("Main");
        session.files.ForgetCalls();
        session.files.SetFault({c.call, Fault::Fail});
        const char* text = nullptr;
        unsigned long length = 0;
        CQmLogRow row;
        EXPECT_EQ(c.answer, reader.Read(c.row, text, length, row) ? static_cast<int>(length) : -1);
        ASSERT_GE(session.files.Calls().size(), c.call);
        EXPECT_EQ(c.name, session.files.Calls()[c.call - 1]);
        EXPECT_EQ(ReportOf(c.report), Reports(session));
        EXPECT_EQ(c.row < 2, reader.Read(c.row, text, length, row)) << "the next call tries again";
    }
}

TEST(Faults, AreNotToldInAFolderThatIsOnlyLookedAt)
{
    MemorySession session;
    CQmLogWriter log = WriterOf("Main");
    log.Write("a\nb");
    for (const bool tell : {false, true})
    {
        CQmLogReader reader;
        reader.SetFilePath("Main");
        session.files.ForgetCalls();
        session.files.SetFault({3, Fault::Fail});
        QmLogTellErrors(tell);
        const char* text = nullptr;
        unsigned long length = 0;
        CQmLogRow row;
        EXPECT_FALSE(reader.Read(0, text, length, row));
        EXPECT_EQ(tell, session.files.Exists(session.Path("QmLog.LOG")));
    }
}

TEST(Faults, HandlesThatDoNotCloseAreReported)
{
    MemorySession session;
    {
        CQmLogWriter writer = WriterOf("Main");
        writer.Write("a\n");
        session.files.SetFault({session.files.CallCount() + 1, Fault::Fail, true});
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
