#include "logreport/model/MsgRange.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace logreport
{

namespace
{

int RowCount(std::uint32_t first, std::uint32_t last)
{
    constexpr std::uint32_t kMax = std::numeric_limits<int>::max();
    return last < first ? 0 : static_cast<int>(std::min(last - first, kMax - 1) + 1);
}

} // namespace

void MsgRange::Announce(std::uint32_t last)
{
    m_last = last;
    m_pending = 1;
    m_isAnnounced = true;
}

void MsgRange::Clear(int rows)
{
    m_clear = m_pending = IdOf(rows);
}

std::optional<int> MsgRange::Tick()
{
    if (m_pending == kNothing)
        return std::nullopt;
    m_offset = std::max(m_clear, std::exchange(m_pending, kNothing));
    return m_isAnnounced ? RowCount(m_offset, m_last) : 0;
}

std::optional<int> MsgRange::RowOf(std::uint32_t id, int rows) const
{
    const std::uint32_t row = id - m_offset; // of an earlier one beyond any row
    return rows > 0 && row < static_cast<std::uint32_t>(rows) ? std::optional(static_cast<int>(row))
                                                              : std::nullopt;
}

} // namespace logreport
