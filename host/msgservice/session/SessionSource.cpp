#include "msgservice/session/SessionSource.h"

#include "msgservice/session/ClockText.h"
#include "msgservice/session/RowTimes.h"

#include <algorithm>
#include <utility>

namespace msgservice
{

namespace
{

constexpr std::size_t kRowsAtOnce = 50'000;

struct KindLevel
{
    QmLogBlockKind kind;
    std::uint32_t level;
    const char* name;
};
constexpr KindLevel kKinds[] = {{kDetailKind, kDebugLevel, "Detail"},
                                {kPlainKind, kInfoLevel, "Plain"},
                                {kNoticeKind, kWarningLevel, "Notice"},
                                {kErrorKind, kErrorLevel, "Error"}};

const KindLevel* FindKind(QmLogBlockKind kind)
{
    const auto* const found = std::find_if(std::begin(kKinds), std::end(kKinds),
                                           [&](const KindLevel& entry) { return entry.kind == kind; });
    return found != std::end(kKinds) ? found : nullptr;
}

} // namespace

std::uint32_t LevelOfKind(QmLogBlockKind kind)
{
    const KindLevel* const found = FindKind(kind);
    return found ? found->level : kInfoLevel;
}

std::string NameOfKind(QmLogBlockKind kind)
{
    const KindLevel* const found = FindKind(kind);
    return found ? found->name : std::to_string(static_cast<std::uint32_t>(kind));
}

class SessionSource::Rows : public FollowedRows
{
public:
    void Row(const std::string& name, const LogEntry& entry, std::size_t skip) override
    {
        const std::optional<QmLogTimeValue> time = times.TimeOf(entry.row.time);
        const std::string timestamp = time ? LocalTime(*time) : std::to_string(entry.row.time);
        const std::string level = NameOfKind(entry.row.kind);
        m_text = entry.text.substr(skip);
        m_text.erase(m_text.find_last_not_of("\r\n") + 1);
        if (skip > 0 && m_text.empty())
            return; // all that came of the line is its end
        std::replace(m_text.begin(), m_text.end(), '\0', ' ');
        MessageFields fields;
        fields.timestamp = timestamp;
        fields.time = time ? NanosecondsSince1970(*time) : static_cast<Time>(entry.row.time);
        fields.level = LevelOfKind(entry.row.kind);
        fields.levelText = level;
        fields.topic = name;
        fields.body = m_text;
        fields.indent = entry.row.indent;
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
    std::string m_text;
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
