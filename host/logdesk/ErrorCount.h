// How many errors came to a store of messages.
#pragma once

#include "msgservice/store/MessageStore.h"

#include <optional>

namespace logdesk
{

// Looks at the levels of what is new, which lie side by side.
class ErrorCount
{
public:
    // Counts messages before `end` that it has not looked at; the index of the last error among them. It is
    // the same store until Restart.
    std::optional<std::uint32_t> Take(const msgservice::MessageStore& store, std::uint32_t end);

    // Counts from 0 again what comes from now on, or the store from its beginning.
    void Clear() { m_count = 0; }
    void Restart() { *this = ErrorCount(); }

    std::uint32_t Count() const { return m_count; }

private:
    std::uint32_t m_next = 0; // the message to look at
    std::uint32_t m_count = 0;
};

} // namespace logdesk
