// A record of "Log.TIM": what its 20 bytes hold.
#pragma once

#include "QmLogTimes.h"

#include <cstdint>

namespace logfiles
{

constexpr char kTimeFileName[] = "Log.TIM";

struct TimeRecord
{
    enum class Event : std::uint8_t
    {
        Taken = 1,
        BlockEnd = 2
    };

    std::uint32_t number = 0;
    std::uint32_t timeLow = 0; // halves, so that the record has no padding
    std::uint32_t timeHigh = 0;
    std::uint16_t steps = 0; // how often the clock was set back before, at most 65,535
    Event event = Event::Taken;
    std::uint8_t depth = 0;
    std::uint32_t check = 0;

    void SetTime(QmLogTimeValue time)
    {
        timeLow = static_cast<std::uint32_t>(time);
        timeHigh = static_cast<std::uint32_t>(static_cast<std::uint64_t>(time) >> 32);
    }

    QmLogTimeValue Time() const
    {
        return static_cast<QmLogTimeValue>(std::uint64_t{timeHigh} << 32 | timeLow);
    }

    // FNV-1a over the four words before it: tells zeros and overwritten records from written ones.
    std::uint32_t Check() const
    {
        const std::uint32_t last =
            steps | static_cast<std::uint32_t>(event) << 16 | std::uint32_t{depth} << 24;
        std::uint32_t hash = 0x811C9DC5;
        for (const std::uint32_t word : {number, timeLow, timeHigh, last})
            hash = (hash ^ word) * 0x01000193;
        return hash;
    }

    bool IsValid() const { return check == Check(); }
};
static_assert(sizeof(TimeRecord) == 20);

} // namespace logfiles
