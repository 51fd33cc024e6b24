// The command "export": rows in forms that other tools read.
#include "logtool/Commands.h"
#include "logtool/ExportCursor.h"
#include "logtool/ExportForm.h"
#include "logtool/ExportOutput.h"
#include "logtool/ExportText.h"
#include "sessionwalk/FollowedWalk.h"

#include <algorithm>
#include <ostream>

namespace logtool
{

namespace
{

using sessionwalk::FollowedWalk;
using sessionwalk::SessionWalk;
using sessionwalk::WalkChoice;
using sessionwalk::WalkedRow;

constexpr std::size_t kExportPiece = 64 * 1024;
constexpr std::size_t kRowsAtOnce = 50'000; // between two commits
constexpr unsigned kFirstPause = 5;         // looks at the logs, of a fifth of a second each
constexpr unsigned kLongestPause = 300;
constexpr unsigned kTries = 5; // of an export that does not follow

// The last part of the folder's name.
std::string FolderTitle()
{
    std::string folder = LogFolder();
    while (folder.ends_with('\\') || folder.ends_with('/'))
        folder.pop_back();
    return folder.substr(folder.find_last_of("\\/:") + 1);
}

// From one committed state to the next. After an exception it has to be made again of the state given.
class FollowedExport : private sessionwalk::WalkedRows
{
public:
    FollowedExport(const WalkChoice& choice, const ExportCursor& cursor, ExportForm& form,
                   const ExportSource& source, ExportOutput& output, Host& host)
        : m_cursor(cursor), m_form(form), m_source(source), m_output(output), m_host(host),
          m_logs(choice.logs),
          m_isOtherSession(cursor.begun && IsOtherSession(cursor.mark, m_logs, cursor.position.number)),
          m_walk(Choice(choice), *this)
    {
        if (!cursor.begun)
        {
            m_form.Begin(m_buffer);
            return;
        }
        m_form.Resume(cursor.state);
        if (m_isOtherSession)
            SessionBegun();
        else
            m_walk.StartAtCursor(cursor.position);
    }

    // Exports what there is, a stretch at a time. Answers whether there is another state.
    bool Step(const std::vector<std::string>& newLogs)
    {
        m_walk.AddLogs(newLogs);
        for (const std::string& log : newLogs)
            if (std::find(m_logs.begin(), m_logs.end(), log) == m_logs.end())
                m_logs.push_back(log);
        if (!m_walk.Poll(kRowsAtOnce) && m_cursor.begun)
            return false;
        Commit();
        return true;
    }

    bool HasMore() const { return m_walk.HasMore(); }

    const ExportCursor& State() const { return m_cursor; }

private:
    // What was asked for as numbers of a session is not meant for those that follow it.
    WalkChoice Choice(WalkChoice choice) const
    {
        choice.from = m_isOtherSession || m_cursor.ordinal > 1 ? 0 : choice.from;
        return choice;
    }

    void Row(const WalkedRow& row) override
    {
        m_form.Row(row, m_buffer);
        if (m_buffer.Size() >= kExportPiece)
            Flush();
    }

    void SessionBegun() override
    {
        m_host.Messages() << "logtool: a new session has begun in " << LogFolder() << std::endl;
        m_source.ordinal = ++m_cursor.ordinal;
        m_form.SetSource(m_source, m_buffer);
    }

    void Flush()
    {
        m_output.Write(m_buffer.Bytes());
        m_buffer.Clear();
    }

    void Commit()
    {
        Flush();
        m_output.Commit();
        m_cursor.begun = true;
        m_cursor.length = m_output.Length();
        m_cursor.state = m_form.State();
        m_cursor.position = m_walk.Position();
        m_cursor.mark = SessionMark(m_logs, m_cursor.position.number);
    }

    ExportCursor m_cursor;
    ExportForm& m_form;
    ExportSource m_source;
    ExportOutput& m_output;
    Host& m_host;
    std::vector<std::string> m_logs;
    ExportBuffer m_buffer;
    bool m_isOtherSession; // than the one of the cursor
    FollowedWalk m_walk;
};

class Export : public Command
{
public:
    Export()
        : Command({"export", "writes rows in a form that other tools read",
                   "Writes each row with its session, machine, log, number, time, depth, kind and text,\n"
                   "and the numbers of the headers of its block and of the block around it:\n"
                   "  jsonl   a JSON object on a line\n"
                   "  csv     RFC 4180; the first line names the fields\n"
                   "  trace   for trace viewers: slices for blocks, a track a log\n"
                   "  syslog  RFC 5424, to a file or with --to-tcp to a receiver\n"
                   "With a cursor file the next call goes on where this one has ended, however it has\n"
                   "ended: what a killed one has left in the output file is taken away first.\n",
                   "logtool export --format jsonl --output rows.jsonl --follow --cursor-file rows.cursor"})
    {
        Line().AddText("--format", "FORMAT", m_format, "jsonl, csv, trace or syslog");
        AddLogOption();
        Line().AddNumber("--from", "N", m_from, "begin with sequence number N");
        Line().AddNumber("--to", "N", m_to, "end with sequence number N");
        Line().AddText("--output", "FILE", m_output, "write FILE instead of the standard output");
        Line().AddText("--to-tcp", "HOST:PORT", m_address,
                       "send syslog messages there, the length of each before it (RFC 6587)");
        Line().AddFlag("--follow", m_follow, "go on with new rows as they come, until Ctrl+C");
        Line().AddText("--cursor-file", "FILE", m_cursorFile,
                       "go on behind the rows that the last call wrote");
        Line().AddText("--session", "NAME", m_session, "the session's name instead of the folder's");
        Line().AddText("--machine", "NAME", m_machine, "the machine's name instead of its own");
    }

private:
    int Run(Host& host) override;
    void CheckOptions() const;
    ExportSource Source(std::uint32_t ordinal, Host& host) const;
    std::unique_ptr<ExportForm> MakeForm(const ExportSource& source) const;
    std::unique_ptr<ExportOutput> OpenOutput(const ExportCursor& cursor, Host& host) const;
    WalkChoice Choice(Host& host) const;
    int RunOnce(const WalkChoice& choice, Host& host) const;
    void RunFrom(ExportCursor& cursor, const WalkChoice& choice, Host& host) const;
    void RunFollowed(const WalkChoice& choice, Host& host) const;

    std::optional<std::string> m_format, m_output, m_address, m_cursorFile, m_session, m_machine;
    std::optional<std::uint32_t> m_from, m_to;
    bool m_follow = false;
};

void Export::CheckOptions() const
{
    const std::string format = m_format.value_or("");
    if (format != "jsonl" && format != "csv" && format != "trace" && format != "syslog")
        throw UsageError("--format", "'" + format + "' is no format: jsonl, csv, trace or syslog");
    if (m_from.value_or(0) > m_to.value_or(0xFFFFFFFF))
        throw UsageError("--from", "lies behind --to");
    if (m_to && (m_follow || m_cursorFile))
        throw UsageError("--to", "says where to end, and there is no end with --follow or --cursor-file");
    if (m_address && (m_output || format != "syslog"))
        throw UsageError("--to-tcp", "sends syslog messages and writes no file");
}

int Export::Run(Host& host)
{
    CheckOptions();
    const WalkChoice choice = Choice(host);
    if (!m_follow && !m_cursorFile && !m_address)
        return RunOnce(choice, host);
    RunFollowed(choice, host);
    return kDone;
}

ExportSource Export::Source(std::uint32_t ordinal, Host& host) const
{
    const std::string machine = m_machine ? *m_machine : host.MachineName();
    const std::string session = m_session.value_or(FolderTitle());
    std::string converted;
    ExportSource source;
    source.machine = Utf8Text(machine, converted);
    source.session = Utf8Text(session, converted);
    source.ordinal = ordinal;
    return source;
}

std::unique_ptr<ExportForm> Export::MakeForm(const ExportSource& source) const
{
    if (*m_format == "jsonl")
        return MakeJsonForm(source);
    if (*m_format == "csv")
        return MakeCsvForm(source);
    if (*m_format == "trace")
        return MakeTraceForm(source);
    return MakeSyslogForm(source, m_address ? Framing::OctetCounting : Framing::Lines);
}

std::unique_ptr<ExportOutput> Export::OpenOutput(const ExportCursor& cursor, Host& host) const
{
    if (m_address)
        return MakeNetworkOutput(*m_address, host);
    if (m_output)
        return MakeFileOutput(*m_output, cursor.length);
    return MakeStreamOutput(host.Output());
}

// Logs are named or not, blocks are those of all.
WalkChoice Export::Choice(Host& host) const
{
    WalkChoice choice;
    choice.logs = AllLogs(host);
    if (NamesLogs())
        choice.chosen = ChosenLogs(host);
    choice.from = m_from.value_or(0);
    choice.to = m_to.value_or(0xFFFFFFFF);
    return choice;
}

int Export::RunOnce(const WalkChoice& choice, Host& host) const
{
    const ExportSource source = Source(1, host);
    const std::unique_ptr<ExportForm> form = MakeForm(source);
    const std::unique_ptr<ExportOutput> output = OpenOutput({}, host);
    SessionWalk walk(choice);
    ExportBuffer buffer;
    form->Begin(buffer);
    while (const WalkedRow* const row = walk.Next())
    {
        form->Row(*row, buffer);
        if (buffer.Size() < kExportPiece)
            continue;
        output->Write(buffer.Bytes());
        buffer.Clear();
    }
    form->End(buffer);
    output->Write(buffer.Bytes());
    output->Commit();
    return EndOf(walk.Unreadable(), host);
}

// Until the end, or ConnectionLost; `cursor` is what has been committed.
void Export::RunFrom(ExportCursor& cursor, const WalkChoice& choice, Host& host) const
{
    const ExportSource source = Source(cursor.ordinal, host);
    const std::unique_ptr<ExportForm> form = MakeForm(source);
    const std::unique_ptr<ExportOutput> output = OpenOutput(cursor, host);
    FollowedExport followed(choice, cursor, *form, source, *output, host);
    do
    {
        if (!followed.Step(host.ListLogs()))
            continue;
        cursor = followed.State();
        if (m_cursorFile)
            WriteExportCursor(*m_cursorFile, cursor);
    } while (followed.HasMore() ? !m_follow || !host.IsEndWanted() : m_follow && host.Wait());
    ExportBuffer end;
    form->End(end);
    if (m_output || !m_cursorFile)
        output->Write(end.Bytes());
}

void Export::RunFollowed(const WalkChoice& choice, Host& host) const
{
    ExportCursor cursor;
    if (m_cursorFile)
        ReadExportCursor(*m_cursorFile, cursor);
    unsigned pause = kFirstPause;
    for (unsigned tries = 1;; ++tries)
    {
        const Cursor before = cursor.position;
        try
        {
            RunFrom(cursor, choice, host);
            return;
        }
        catch (const ConnectionLost& lost)
        {
            if (cursor.position.number != before.number)
            {
                pause = kFirstPause;
                tries = 1;
            }
            if (!m_follow && tries >= kTries)
                throw;
            host.Messages() << "logtool: " << lost.what() << "; trying again" << std::endl;
        }
        for (unsigned i = 0; i < pause; ++i)
            if (!host.Wait())
                return;
        pause = std::min(2 * pause, kLongestPause);
    }
}

} // namespace

std::unique_ptr<Command> MakeExport()
{
    return std::make_unique<Export>();
}

} // namespace logtool
