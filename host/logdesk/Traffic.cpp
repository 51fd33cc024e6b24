#include "logdesk/Traffic.h"

#include <algorithm>
#include <array>

namespace logdesk
{

namespace
{

constexpr std::uint64_t kMostAtOnce = 100'000;
constexpr std::array<const char*, 6> kLevelTexts = {"Trace", "Debug", "Info", "Warning", "Error", "Fatal"};
constexpr std::array<const char*, 4> kTopics = {"Network", "Database", "Scheduler", "User interface"};

// Most messages are information, few are errors.
std::uint32_t LevelOf(std::uint64_t number)
{
    if (number % 97 == 96)
        return msgservice::kFatalLevel;
    if (number % 23 == 22)
        return msgservice::kErrorLevel;
    if (number % 11 == 10)
        return msgservice::kWarningLevel;
    return number % 5 == 4 ? msgservice::kDebugLevel : msgservice::kInfoLevel;
}

} // namespace

TrafficSource::TrafficSource(std::unique_ptr<msgservice::MessageSource> source, std::uint32_t perSecond,
                             Clock::time_point begin)
    : m_source(std::move(source)), m_perSecond(perSecond), m_begin(begin)
{
}

msgservice::MessageSource::State TrafficSource::ReadAt(Clock::time_point now, msgservice::MessageSink& sink)
{
    const State state = m_ended ? State::Ended : m_source->Read(sink);
    m_ended = state == State::Ended;
    const std::chrono::duration<double> elapsed = now - m_begin;
    const auto due = static_cast<std::uint64_t>(elapsed.count() * m_perSecond);
    const std::uint64_t end = std::min(due, m_count + kMostAtOnce);
    while (m_count < end)
        AddOne(sink);
    return state == State::More || end < due ? State::More : State::Waiting;
}

void TrafficSource::AddOne(msgservice::MessageSink& sink)
{
    const std::uint64_t number = m_count++;
    const std::string timestamp = std::to_string(number);
    std::string body = "Made-up message " + timestamp;
    for (std::uint64_t line = number % 13 == 12 ? number % 4 : 0; line > 0; --line)
        body += "\r\n\tand what belongs to it";
    msgservice::MessageFields fields;
    fields.timestamp = timestamp;
    fields.time = static_cast<msgservice::Time>(number);
    fields.level = LevelOf(number);
    fields.levelText = kLevelTexts[fields.level];
    fields.topic = kTopics[number / 3 % kTopics.size()];
    fields.body = body;
    fields.indent = static_cast<std::uint32_t>(number / 7 % 4);
    sink.Add(fields);
}

} // namespace logdesk
