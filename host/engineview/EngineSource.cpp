#include "engineview/EngineSource.h"

#include "engineview/EngineMessage.h"
#include "engineview/RowChoices.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace engineview
{

namespace
{

using engine::EngineError;

constexpr std::size_t kFewRows = 5'000; // of an answer: the next one may be for more numbers
constexpr std::size_t kManyRows = 20'000;
constexpr std::uint64_t kLongestStretch = 10'000'000; // which the engine reads in a second

} // namespace

EngineSource::EngineSource(const engine::EngineUrl& url, std::unique_ptr<engine::HttpClient> client,
                           Until until, const msgservice::ViewDescription& description)
    : m_address(url.Shown()), m_until(until), m_reader(url, std::move(client))
{
    m_choice.conditions = ConditionsFor(description);
}

msgservice::MessageSource::State EngineSource::Read(msgservice::MessageSink& sink)
{
    try
    {
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

bool EngineSource::FindMore()
{
    if (!m_last)
        if (const auto span = m_reader.ReadSpan(m_next))
            m_last = span->last;
    return m_last.has_value();
}

// As many numbers as bring a fair answer, whatever the conditions leave of them.
void EngineSource::ReadStretch(msgservice::MessageSink& sink)
{
    m_choice.from = m_next;
    m_choice.to = std::min(*m_last, m_next + m_stretch - 1);
    std::vector<engine::ShippedRow> rows;
    try
    {
        rows = m_reader.ReadRows(m_choice);
    }
    catch (const EngineError& error)
    {
        if (error.Help() != EngineError::Remedy::AskLess)
            throw;
        return AskLess(error);
    }
    for (const engine::ShippedRow& row : rows)
        sink.Add(m_message.Make(MessageRow(row)));
    if (rows.size() < kFewRows)
        m_stretch = std::min(m_stretch * 2, kLongestStretch);
    else if (rows.size() > kManyRows)
        m_stretch = std::max<std::uint64_t>(m_stretch / 2, 1);
    m_next = m_choice.to + 1;
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

} // namespace engineview
