#include "logtool/EngineSource.h"

#include "engine/LogTable.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace logtool
{

namespace
{

using engine::EngineError;
using engine::NumberIn;
using engine::TextCondition;

constexpr std::size_t kFewRows = 5'000; // of an answer: the next one may be for more numbers
constexpr std::size_t kManyRows = 20'000;
constexpr std::uint64_t kLongestStretch = 10'000'000; // which the engine reads in a second

constexpr QmLogBlockKind kKinds[] = {kPlainKind, kNoticeKind, kErrorKind, kDetailKind};

bool IsAscii(const std::string& text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// A message has blanks for NULs and no line ends behind its text, so a value with such bytes is left to the
// filter. What must not be there is not in the message if it is not in the row, but for a blank in a NUL's
// place, and the filter looks again.
bool CanAsk(const msgservice::Filter& filter)
{
    const bool isField = filter.field == kLogMsgTopic || filter.field == kLogMsgBody;
    const bool isOperation = filter.operation == kLogMsgContain || filter.operation == kLogMsgNotContain;
    const bool isPlain = std::all_of(filter.value.begin(), filter.value.end(), [&](char c) {
        return static_cast<unsigned char>(c) > (filter.operation == kLogMsgContain ? 0x20 : 0x1F);
    });
    return isField && isOperation && isPlain && !filter.value.empty() &&
           (filter.matchCase || IsAscii(filter.value));
}

} // namespace

engine::RowConditions ConditionsFor(const msgservice::ViewDescription& description)
{
    engine::RowConditions conditions;
    for (const msgservice::Filter& filter : description.filters)
        if (CanAsk(filter))
            conditions.texts.push_back(
                {filter.field == kLogMsgTopic ? TextCondition::Column::Log : TextCondition::Column::Text,
                 filter.value, filter.matchCase, filter.operation == kLogMsgContain});
    // All other kinds are plain ones.
    conditions.kindsAreWanted = msgservice::LevelOfKind(kPlainKind) < description.leastLevel;
    for (const QmLogBlockKind kind : kKinds)
        if ((msgservice::LevelOfKind(kind) >= description.leastLevel) == conditions.kindsAreWanted)
            conditions.kinds.push_back(kind);
    return conditions;
}

EngineSource::EngineSource(const engine::EngineUrl& url, std::unique_ptr<engine::HttpClient> client,
                           Until until, const msgservice::ViewDescription& description)
    : m_address(url.Shown()), m_until(until),
      m_engine(url, std::move(client)), m_rows{url.table.empty() ? engine::kUsualTable : url.table,
                                               url.machine, url.session},
      m_conditions(ConditionsFor(description))
{
}

msgservice::MessageSource::State EngineSource::Read(msgservice::MessageSink& sink)
{
    try
    {
        if (m_rows.machine.empty())
            FindMachine();
        const bool hasMore = FindMore();
        if (hasMore)
            ReadStretch(sink);
        if (std::exchange(m_isLost, false))
            m_notices += m_address + ": the server answers again\n";
        return hasMore ? State::More : AtEnd();
    }
    catch (const EngineError& error)
    {
        return Lose(error);
    }
}

// A look at the whole table's key, so it is better named in the address.
void EngineSource::FindMachine()
{
    std::vector<std::string> machines;
    for (const auto& row : m_engine.Select(MachinesSql(m_rows)))
        machines.insert(machines.end(), row.begin(), row.end());
    if (machines.empty())
        throw EngineError(EngineError::Remedy::None, "there is no session " + m_rows.session);
    if (machines.size() > 1)
        throw EngineError(EngineError::Remedy::None,
                          "more than one machine has a session " + m_rows.session + ", " + machines[0] +
                              " and " + machines[1] +
                              " among them: say which, with machine=NAME in the address");
    m_rows.machine = machines.front();
}

bool EngineSource::FindMore()
{
    if (m_last)
        return true;
    const engine::Rows found = m_engine.Select(LastNumberSql(m_rows, m_next));
    if (found.size() != 1 || found[0].size() != 2)
        throw EngineError(EngineError::Remedy::None, "the engine answers no last number");
    if (NumberIn<std::uint64_t>(found[0][1]) == 0)
        return false;
    m_last = NumberIn<std::uint64_t>(found[0][0]);
    return true;
}

// As many numbers as bring a fair answer, whatever the conditions leave of them.
void EngineSource::ReadStretch(msgservice::MessageSink& sink)
{
    const std::uint64_t to = std::min(*m_last, m_next + m_stretch - 1);
    engine::Rows rows;
    try
    {
        rows = m_engine.Select(RowsSql(m_rows, m_next, to, m_conditions));
    }
    catch (const EngineError& error)
    {
        if (error.Help() != EngineError::Remedy::AskLess)
            throw;
        return AskLess(error);
    }
    for (const auto& row : rows)
        AddRow(row, sink);
    if (rows.size() < kFewRows)
        m_stretch = std::min(m_stretch * 2, kLongestStretch);
    else if (rows.size() > kManyRows)
        m_stretch = std::max<std::uint64_t>(m_stretch / 2, 1);
    m_next = to + 1;
    if (m_next > *m_last)
        m_last.reset();
}

void EngineSource::AskLess(const EngineError& error)
{
    if (m_stretch > 1)
    {
        m_stretch = std::max<std::uint64_t>(m_stretch / 4, 1);
        return;
    }
    m_notices += m_address + ": number " + std::to_string(m_next) + " is left out: " + error.what() + "\n";
    ++m_next;
    if (m_next > *m_last)
        m_last.reset();
}

void EngineSource::AddRow(const std::vector<std::string>& row, msgservice::MessageSink& sink)
{
    if (row.size() != 6)
        throw EngineError(EngineError::Remedy::None,
                          "the engine answers other columns than it was asked for");
    msgservice::RowMessage::Row message;
    message.number = NumberIn<std::uint32_t>(row[0]);
    message.log = row[1];
    if (const auto time = NumberIn<std::int64_t>(row[2]); time != 0)
        message.time = time + engine::kStartOf1970;
    message.depth = NumberIn<std::uint32_t>(row[3]);
    message.kind = static_cast<QmLogBlockKind>(NumberIn<std::uint32_t>(row[4]));
    message.text = row[5];
    sink.Add(m_message.Make(message));
}

// Told once, however often the server is asked in vain.
msgservice::MessageSource::State EngineSource::Lose(const EngineError& error)
{
    if (error.Help() == EngineError::Remedy::Cancelled)
        return State::Ended;
    const bool comesBack = m_until == Until::Forever && error.Help() == EngineError::Remedy::TryAgain;
    if (!std::exchange(m_isLost, true) || !comesBack)
        m_notices += m_address + ": " + error.what() + (comesBack ? ", trying again" : "") + "\n";
    return comesBack ? State::Waiting : State::Ended;
}

std::string EngineSource::TakeNotices()
{
    return std::exchange(m_notices, {});
}

std::string EngineSource::Explanation()
{
    return "The rows of a session in a columnar engine: the topic is the log, the time stamp is the local "
           "time "
           "if the writer had a clock and else the sequence number, and the level comes from the block's "
           "kind.\n";
}

} // namespace logtool
