#include "msgservice/session/SessionRows.h"

#include "msgservice/session/LogStream.h"

#include <algorithm>

namespace msgservice
{

namespace
{

constexpr std::uint32_t kNoMessage = 0xFFFFFFFF; // of a row that brought none

} // namespace

void SessionRows::Begin()
{
    const std::lock_guard lock(m_mutex);
    m_begin = m_store->Count();
    m_logs.clear();
    m_hasBegunAgain = true;
}

void SessionRows::Add(const std::string& log, std::uint32_t index, bool goesOn)
{
    const std::lock_guard lock(m_mutex);
    if (!Find(log))
        m_logs.push_back(std::make_unique<Log>(log));
    std::vector<std::uint32_t>& messages = Find(log)->messages;
    if (index >= messages.size())
        messages.resize(index + 1, kNoMessage);
    if (!goesOn || messages[index] == kNoMessage)
        messages[index] = m_store->Count();
}

std::optional<SessionRows::Row> SessionRows::RowOf(std::uint32_t message) const
{
    const std::lock_guard lock(m_mutex);
    if (message < m_begin || message >= m_store->Count())
        return {};
    const MessageFields fields = FieldsOf(*m_store, message);
    const Log* const log = Find(fields.topic);
    const auto index = static_cast<std::uint32_t>(fields.sourceLine) - 1;
    // A row that was written again belongs to a later message.
    if (!fields.countsSourceLine || !log || index >= log->messages.size() || log->messages[index] > message)
        return {};
    return Row{log->name, index};
}

std::optional<std::uint32_t> SessionRows::MessageOf(std::string_view log, std::uint32_t index) const
{
    const std::lock_guard lock(m_mutex);
    const Log* const found = Find(log);
    if (!found || index >= found->messages.size() || found->messages[index] == kNoMessage)
        return {};
    return found->messages[index];
}

SessionRows::Log* SessionRows::Find(std::string_view name) const
{
    const auto found = std::find_if(m_logs.begin(), m_logs.end(),
                                    [&](const auto& log) { return IsSameName(log->name, name); });
    return found != m_logs.end() ? found->get() : nullptr;
}

} // namespace msgservice
