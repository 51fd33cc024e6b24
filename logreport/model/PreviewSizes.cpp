#include "logreport/model/PreviewSizes.h"

namespace logreport
{

std::optional<PreviewSize> PreviewSizes::Find(std::uint32_t id) const
{
    if (m_entries.empty())
        return std::nullopt;
    const Entry& entry = m_entries[id % kEntries];
    return entry.isKept && entry.id == id ? std::optional(entry.size) : std::nullopt;
}

void PreviewSizes::Keep(std::uint32_t id, PreviewSize size)
{
    m_entries.resize(kEntries);
    m_entries[id % kEntries] = {id, size, true};
}

} // namespace logreport
