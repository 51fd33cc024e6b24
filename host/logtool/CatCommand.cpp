#include "logtool/Commands.h"
#include "logtool/TextMatch.h"
#include "msgservice/session/ClockText.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <optional>
#include <ostream>
#include <utility>

namespace logtool
{

namespace
{

// Which rows are looked for.
class Match
{
public:
    std::optional<QmLogBlockKind> kind;
    std::unique_ptr<TextMatch> text; // null when every text will do
    bool withoutText = false;        // rows that do not have the text instead

    bool IsEveryRow() const { return !kind && !text; }
    bool operator()(const LogEntry& entry) const
    {
        return (!kind || entry.row.kind == *kind) && (!text || (*text)(entry.text) != withoutText);
    }
};

// Shows matches with the rows around them.
class ContextOutput
{
public:
    ContextOutput(TextOutput& output, const std::vector<std::string>& logs, std::uint32_t before,
                  std::uint32_t after)
        : m_output(output), m_logs(logs), m_before(before), m_after(after)
    {
    }

    void Add(const LogEntry& entry, bool matches);

private:
    struct Kept
    {
        LogEntry entry;
        std::string text;
    };

    void Keep(const LogEntry& entry);
    void ShowKept();
    void Show(const LogEntry& entry) { m_output.Row(m_logs[entry.log], entry); }

    TextOutput& m_output;
    const std::vector<std::string>& m_logs;
    std::uint32_t m_before;
    std::uint32_t m_after;
    std::uint32_t m_afterLeft = 0; // rows still to be shown after the last match
    std::deque<Kept> m_kept;       // rows not shown that the next match may need
    bool m_gap = false;            // rows were dropped since the last one shown
    bool m_shown = false;
};

void ContextOutput::Add(const LogEntry& entry, bool matches)
{
    if (!matches && m_afterLeft == 0)
    {
        Keep(entry);
        return;
    }
    if (m_gap && m_shown && (m_before > 0 || m_after > 0))
        m_output.Line("--");
    if (!m_kept.empty())
        ShowKept();
    m_gap = false;
    m_shown = true;
    Show(entry);
    m_afterLeft = matches ? m_after : m_afterLeft - 1;
}

void ContextOutput::ShowKept()
{
    for (Kept& kept : m_kept)
    {
        kept.entry.text = kept.text;
        Show(kept.entry);
    }
    m_kept.clear();
}

// The memory of the row that drops out is that of the one that comes in.
void ContextOutput::Keep(const LogEntry& entry)
{
    m_gap = m_gap || m_kept.size() == m_before;
    if (m_before == 0)
        return;
    Kept kept;
    if (m_kept.size() == m_before)
    {
        kept = std::move(m_kept.front());
        m_kept.pop_front();
    }
    kept.entry = entry;
    kept.text = entry.text;
    m_kept.push_back(std::move(kept));
}

class Cat : public Command
{
public:
    Cat()
        : Command({"cat", "shows the rows of all logs in the order they were written",
                   "Shows the rows of all logs as one stream by sequence number, indented by depth.\n"
                   "On a terminal errors are red, notices yellow and details grey; into a pipe or a\n"
                   "file the bytes go as they are.\n",
                   "logtool cat --log Main --log Run --grep timeout -B 3 --numbers"})
    {
        AddLogOption();
        Line().AddNumber("--from", "N", m_from, "begin with sequence number N");
        Line().AddNumber("--to", "N", m_to, "end with sequence number N");
        Line().AddText("--from-time", "TIME", m_fromTime,
                       "begin at a local time: 14:03, 14:03:10.5 or \"2026-11-23 14:03\"");
        Line().AddText("--to-time", "TIME", m_toTime, "end before a local time");
        AddKindOption(m_kind, "only rows of this kind: plain, notice, error, detail or a number");
        Line().AddText("--grep", "TEXT", m_grep,
                       "only rows that contain TEXT; exits with 1 when there is none");
        Line().AddFlag("-i,--ignore-case", m_ignoreCase, "small and capital letters are the same to --grep");
        Line().AddFlag("-E,--regexp", m_expression, "TEXT is a regular expression, as PCRE2 has them");
        Line().AddFlag("-v,--invert-match", m_inverted, "only rows in which --grep finds nothing");
        Line().AddFlag("-c,--count", m_count, "only the number of rows, not the rows themselves");
        Line().AddNumber("-A", "N", m_after, "also N rows after each row found");
        Line().AddNumber("-B", "N", m_before, "also N rows before each row found");
        AddNumbersOption();
        AddTimesOption();
    }

private:
    int Run(Host& host) override;
    Match WantedRows() const;
    std::pair<std::uint32_t, std::uint32_t> WantedNumbers();
    std::optional<std::uint32_t> FirstNumberAt(const char* option, const std::optional<std::string>& time);
    static int End(const std::vector<std::string>& logs, const LogStream& stream, const Match& match,
                   std::uint64_t found, Host& host);

    std::optional<std::uint32_t> m_from, m_to, m_after, m_before;
    std::optional<QmLogBlockKind> m_kind;
    std::optional<std::string> m_grep, m_fromTime, m_toTime;
    bool m_ignoreCase = false, m_expression = false, m_inverted = false, m_count = false;
};

int Cat::Run(Host& host)
{
    const std::vector<std::string> logs = ChosenLogs(host);
    const auto [from, to] = WantedNumbers();
    const Match match = WantedRows();
    TextOutput text(host.Output(), StyleOf(ShowsNumbers(), host, ShownTimes()), logs);
    ContextOutput output(text, logs, m_before.value_or(0), m_after.value_or(0));
    LogStream stream(logs, LogStream::Content::Text);
    stream.SetRange(from, to);
    if (match.text && !match.withoutText && !m_after && !m_before)
        stream.SetWanted(match.text->NeededText());
    std::uint64_t found = 0;
    // The usual case by itself: what is done for a row there decides how long a gigabyte takes.
    const bool everyRow = match.IsEveryRow() && !m_count;
    while (const LogEntry* const entry = stream.Next())
    {
        const bool matches = everyRow || match(*entry);
        found += matches ? 1 : 0;
        if (everyRow)
            text.Row(logs[entry->log], *entry);
        else if (!m_count)
            output.Add(*entry, matches);
    }
    text.EndLine();
    text.Flush();
    if (m_count)
        host.Output() << found << '\n';
    return End(logs, stream, match, found, host);
}

std::pair<std::uint32_t, std::uint32_t> Cat::WantedNumbers()
{
    std::uint32_t from = m_from.value_or(0);
    std::uint32_t to = m_to.value_or(0xFFFFFFFF);
    if (from > to)
        throw UsageError("--from", "lies behind --to");
    if (m_fromTime)
        from = std::max(from, FirstNumberAt("--from-time", m_fromTime).value_or(0xFFFFFFFF));
    if (m_toTime)
        to = std::min(to, FirstNumberAt("--to-time", m_toTime).value_or(0) - 1);
    return {from, to};
}

// Nothing if no row is so late. A time without a date is one of the session's first day.
std::optional<std::uint32_t> Cat::FirstNumberAt(const char* option, const std::optional<std::string>& time)
{
    const CQmLogTimes& times = OpenTimes(option);
    QmLogTimeSample first;
    times.ReadSample(0, first);
    const std::optional<QmLogTimeValue> wanted = msgservice::ReadLocalTime(*time, first.time);
    if (!wanted)
        throw UsageError(option, "'" + *time + "' is no time: 14:03, 14:03:10.5 or \"2026-11-23 14:03\"");
    std::uint32_t number = 0;
    return times.NumberAt(*wanted, number) ? std::optional(number) : std::nullopt;
}

Match Cat::WantedRows() const
{
    if (!m_grep && (m_ignoreCase || m_expression || m_inverted))
        throw UsageError(m_ignoreCase   ? "-i"
                         : m_expression ? "-E"
                                        : "-v",
                         "says how to --grep, which is missing");
    Match match;
    match.kind = m_kind;
    match.withoutText = m_inverted;
    if (m_grep)
        match.text = std::make_unique<TextMatch>(
            *m_grep, m_expression ? TextMatch::Syntax::Expression : TextMatch::Syntax::Text,
            m_ignoreCase ? TextMatch::Case::Ignored : TextMatch::Case::Kept);
    return match;
}

// Rows on which matching gave up are told like a misuse: another expression does better.
int Cat::End(const std::vector<std::string>& logs, const LogStream& stream, const Match& match,
             std::uint64_t found, Host& host)
{
    if (found == 0)
        TellNoRows(logs, host);
    const int exitCode = EndOf(stream, host);
    if (match.text && match.text->RowsGivenUp() > 0)
    {
        host.Output().flush();
        throw UsageError("--grep", "gave up on " + Counted(match.text->RowsGivenUp(), "row") +
                                       ", which the expression takes too long for");
    }
    return match.text && found == 0 ? kNothingFound : exitCode;
}

} // namespace

std::unique_ptr<Command> MakeCat()
{
    return std::make_unique<Cat>();
}

} // namespace logtool
