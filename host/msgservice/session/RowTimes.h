// The times of a session's rows, for whoever follows them.
#pragma once

#include "QmLogTimes.h"

#include <cstdint>
#include <optional>
#include <string>

namespace msgservice
{

// What belongs to a stretch of rows that are read one after the other.
class RowTimes
{
public:
    void Begin();                   // looks for the times of the log folder's session
    void End() { m_times.reset(); } // lets go of the file, so that a new session can delete it

    // Nothing if the row's time is not known. A row that is not exact has the time of the sample before.
    std::optional<QmLogTimeValue> TimeOf(std::uint32_t number);

private:
    static constexpr std::uint32_t kMostSkipped = 4096;

    std::optional<CQmLogTimes> m_times; // empty without times
    std::uint32_t m_skipped = 0;        // rows since the last look at the file
    std::uint32_t m_toSkip = 0;
};

} // namespace msgservice
