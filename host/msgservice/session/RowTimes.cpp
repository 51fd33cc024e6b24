#include "msgservice/session/RowTimes.h"

#include <algorithm>

namespace msgservice
{

void RowTimes::Begin()
{
    m_skipped = m_toSkip = 0;
    m_times.emplace();
    if (!m_times->SetFolder(nullptr))
        m_times.reset();
}

std::optional<QmLogTimeValue> RowTimes::TimeOf(std::uint32_t number)
{
    QmLogTime time;
    if (!m_times)
        return std::nullopt;
    bool isKnown = m_times->TimeOf(number, time);
    // The row may have come after the look at the file, and its sample with it. Where the clock is off by now
    // there is none, and looks become rare.
    if ((!isKnown || (!time.isExact && !time.hasNext)) && ++m_skipped > m_toSkip)
    {
        m_toSkip = m_times->Refresh() ? 0 : std::min(2 * m_toSkip + 1, kMostSkipped);
        m_skipped = 0;
        isKnown = m_times->TimeOf(number, time);
    }
    return isKnown ? std::optional(time.time) : std::nullopt;
}

} // namespace msgservice
