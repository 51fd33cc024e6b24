#include "logtool/Commands.h"

#include <deque>
#include <optional>

namespace logtool
{

namespace
{

// Which rows are looked for.
class Match
{
public:
    explicit Match(const Arguments& arguments) : m_kind(arguments.Kind()), m_text(arguments.Text("--grep")) {}

    bool operator()(const LogEntry& entry) const
    {
        return (!m_kind || entry.row.kind == *m_kind) && entry.text.find(m_text) != std::string_view::npos;
    }

private:
    std::optional<QmLogBlockKind> m_kind;
    std::string m_text; // empty when every text will do
};

// Shows matches with the rows around them.
class ContextOutput
{
public:
    ContextOutput(const Arguments& arguments, TextOutput& output, const std::vector<std::string>& logs)
        : m_output(output), m_logs(logs), m_before(arguments.Number("-B", 0)),
          m_after(arguments.Number("-A", 0))
    {
    }

    void Add(const LogEntry& entry, bool matches);

private:
    struct Kept
    {
        LogEntry entry;
        std::string text;
    };

    void Show(const LogEntry& entry) { m_output.Row(m_logs[entry.log], entry); }

    TextOutput& m_output;
    const std::vector<std::string>& m_logs;
    std::uint32_t m_before;
    std::uint32_t m_after;
    std::uint32_t m_afterLeft = 0; // rows still to be shown behind the last match
    std::deque<Kept> m_kept;       // rows not shown that the next match may need
    bool m_gap = false;            // rows were dropped since the last one shown
    bool m_shown = false;
};

void ContextOutput::Add(const LogEntry& entry, bool matches)
{
    if (!matches && m_afterLeft == 0)
    {
        m_kept.push_back({entry, std::string(entry.text)});
        if (m_kept.size() > m_before)
        {
            m_kept.pop_front();
            m_gap = true;
        }
        return;
    }
    if (m_gap && m_shown && (m_before > 0 || m_after > 0))
        m_output.Line("--");
    for (Kept& kept : m_kept)
    {
        kept.entry.text = kept.text;
        Show(kept.entry);
    }
    m_kept.clear();
    m_gap = false;
    m_shown = true;
    Show(entry);
    m_afterLeft = matches ? m_after : m_afterLeft - 1;
}

} // namespace

int Cat(const Arguments& arguments, Host& host)
{
    const std::vector<std::string> logs = ChosenLogs(arguments, host);
    const std::uint32_t from = arguments.Number("--from", 0);
    const std::uint32_t to = arguments.Number("--to", 0xFFFFFFFF);
    const Match match(arguments);
    if (from > to)
        throw UsageError("--from", "lies behind --to");

    TextOutput text(host.Output(), StyleOf(arguments, host), logs);
    ContextOutput output(arguments, text, logs);
    LogStream stream(logs, LogStream::Content::kText);
    stream.SetRange(from, to);
    LogEntry entry;
    while (stream.Next(entry))
        output.Add(entry, match(entry));
    return EndOf(stream, host);
}

} // namespace logtool
