#include "msgservice/session/SessionSource.h"

#include "msgservice/session/RowTimes.h"

#include <utility>

namespace msgservice
{

namespace
{

constexpr std::size_t kRowsAtOnce = 50'000;

} // namespace

class SessionSource::Rows : public FollowedRows
{
public:
    void Row(const std::string& name, const LogEntry& entry, std::size_t skip) override
    {
        const auto time = times.TimeOf(entry.row.time);
        MessageFields& fields = m_message.Make({name, entry.row.time, time, entry.row.kind, entry.row.indent,
                                                std::string_view(entry.text).substr(skip)});
        if (skip > 0 && fields.body.empty())
            return; // all that came of the line is its end
        fields.sourceLine = static_cast<std::int32_t>(entry.index + 1);
        fields.countsSourceLine = true;
        if (rowMessages)
            rowMessages->Add(name, static_cast<std::uint32_t>(entry.index), skip > 0);
        sink->Add(fields);
    }

    void SessionBegun() override
    {
        notices += "A new session has begun in the log folder\n";
        if (rowMessages)
            rowMessages->Begin();
    }

    MessageSink* sink = nullptr; // during a Read
    std::shared_ptr<SessionRows> rowMessages;
    RowTimes times;
    std::string notices;

private:
    RowMessage m_message;
};

SessionSource::SessionSource(const std::vector<std::string>& logs, Until until)
    : m_until(until), m_rows(std::make_unique<Rows>()), m_follower(logs, *m_rows)
{
}

SessionSource::~SessionSource() = default;

void SessionSource::SetRows(std::shared_ptr<SessionRows> rows)
{
    m_rows->rowMessages = std::move(rows);
}

MessageSource::State SessionSource::Read(MessageSink& sink)
{
    m_rows->sink = &sink;
    const auto logs = m_findLogs ? m_findLogs() : std::vector<std::string>();
    if (!logs)
        return m_until == Until::Now ? State::Ended : State::Waiting;
    m_follower.AddLogs(*logs);
    m_rows->times.Begin();
    m_follower.Poll(kRowsAtOnce);
    m_rows->times.End();
    if (m_follower.HasMore() || (m_follower.HoldsLine() && m_until == Until::Now))
        return State::More;
    return m_until == Until::Now ? State::Ended : State::Waiting;
}

std::string SessionSource::Explanation()
{
    return "The rows of a session: the topic is the log, the time stamp is the local time if the "
           "writer had a clock and else the sequence number, and the "
           "level comes from "
           "the block's kind.\n";
}

std::string SessionSource::TakeNotices()
{
    return std::exchange(m_rows->notices, {});
}

} // namespace msgservice
