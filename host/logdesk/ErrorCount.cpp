#include "logdesk/ErrorCount.h"

namespace logdesk
{

std::optional<std::uint32_t> ErrorCount::Take(const msgservice::MessageStore& store, std::uint32_t end)
{
    std::optional<std::uint32_t> last;
    for (; m_next < end; ++m_next)
    {
        const std::uint32_t level = store.LevelAt(m_next);
        if (level < msgservice::kErrorLevel || level > msgservice::kFatalLevel)
            continue;
        ++m_count;
        last = m_next;
    }
    return last;
}

} // namespace logdesk
