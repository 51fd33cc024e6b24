#include "logtool/Commands.h"
#include "logtool/CursorFile.h"

#include <ostream>

namespace logtool
{

namespace
{

constexpr std::uint32_t kDefaultRows = 10;

class TailRows : public FollowedRows
{
public:
    TailRows(TextOutput& output, std::ostream& messages) : m_output(output), m_messages(messages) {}

    void Row(const std::string& name, const LogEntry& entry, std::size_t skip) override
    {
        m_output.Row(name, entry, skip);
    }
    void SessionBegun() override
    {
        m_messages << "logtool: a new session has begun in " << LogFolder() << std::endl;
    }
    void Flush() override { m_output.Flush(); }

private:
    TextOutput& m_output;
    std::ostream& m_messages;
};

class Tail : public Command
{
public:
    Tail()
        : Command({"tail", "shows the last rows, and new ones as they come",
                   "Shows the last 10 rows of all logs by sequence number.\n",
                   "logtool tail -f --cursor-file shown.txt"})
    {
        Line().AddNumber("-n", "N", m_rows, "the last N rows");
        Line().AddNumber("--after", "N", m_after, "all rows with greater sequence numbers instead");
        Line().AddFlag("-f", m_follow, "go on with new rows as they come, until Ctrl+C");
        Line().AddText("--cursor-file", "FILE", m_cursorFile,
                       "go on behind the rows that the last call with this file has shown");
        AddLogOption();
        AddNumbersOption();
    }

private:
    int Run(Host& host) override;
    void Start(Follower& follower) const;
    void ShowNews(Follower& follower, std::ostream& output) const;

    std::optional<std::uint32_t> m_rows, m_after;
    bool m_follow = false;
    std::optional<std::string> m_cursorFile;
};

int Tail::Run(Host& host)
{
    if (m_after && (m_rows || m_cursorFile))
        throw UsageError("--after", "says where to begin, as -n and --cursor-file do: give one of them");

    const std::vector<std::string> logs = ChosenLogs(host);
    TextOutput text(host.Output(), StyleOf(ShowsNumbers(), host), logs);
    TailRows rows(text, host.Messages());
    Follower follower(logs, rows);
    Start(follower);
    ShowNews(follower, host.Output());
    TellNoRows(logs, host);
    while (m_follow && host.Wait())
    {
        if (!NamesLogs())
            follower.AddLogs(host.ListLogs());
        ShowNews(follower, host.Output());
    }
    text.EndLine();
    text.Flush();
    return kDone;
}

void Tail::Start(Follower& follower) const
{
    Cursor cursor;
    if (m_cursorFile && ReadCursor(*m_cursorFile, cursor))
        follower.StartAtCursor(cursor);
    else if (m_after)
        follower.StartAfter(*m_after);
    else
        follower.StartAtLast(m_rows.value_or(kDefaultRows));
}

// The cursor moves on only when what it stands for has reached the reader.
void Tail::ShowNews(Follower& follower, std::ostream& output) const
{
    if (!follower.Poll())
        return;
    output.flush();
    if (m_cursorFile)
        WriteCursor(*m_cursorFile, follower.Position());
}

} // namespace

std::unique_ptr<Command> MakeTail()
{
    return std::make_unique<Tail>();
}

} // namespace logtool
