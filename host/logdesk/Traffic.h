// Messages made up to try how the window lives with many of them.
#pragma once

#include "msgservice/MessageSource.h"

#include <chrono>
#include <memory>

namespace logdesk
{

// Brings what another source brings, and so many messages a second beside it: of all levels, some of several
// lines, some indented.
class TrafficSource : public msgservice::MessageSource
{
public:
    using Clock = std::chrono::steady_clock;

    TrafficSource(std::unique_ptr<msgservice::MessageSource> source, std::uint32_t perSecond,
                  Clock::time_point begin = Clock::now());

    // Never ends.
    State Read(msgservice::MessageSink& sink) override { return ReadAt(Clock::now(), sink); }
    State ReadAt(Clock::time_point now, msgservice::MessageSink& sink);
    std::string TakeNotices() override { return m_source->TakeNotices(); }
    std::string Explanation() override { return m_source->Explanation(); }

private:
    void AddOne(msgservice::MessageSink& sink);

    std::unique_ptr<msgservice::MessageSource> m_source;
    bool m_ended = false; // the source
    std::uint32_t m_perSecond;
    Clock::time_point m_begin;
    std::uint64_t m_count = 0;
};

} // namespace logdesk
