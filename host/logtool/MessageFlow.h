// Messages on their way from sources to whoever shows them: chosen, and in order.
#pragma once

#include "msgservice/MessageSource.h"
#include "msgservice/view/View.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace logtool
{

// What is not sorted is handed on as it comes, in the memory of what one Read of a source brings.
class MessageFlow
{
public:
    using Taker = std::function<void(const msgservice::MessageStore& store, std::uint32_t index)>;

    MessageFlow(msgservice::ViewDescription description, Taker take);

    // Reads on in the source, and answers what it answered.
    msgservice::MessageSource::State Read(msgservice::MessageSource& source);

    // Hands on what had to wait for the last message.
    void Finish();

    std::uint64_t Count() const { return m_count; } // handed on

private:
    void HandOn(const msgservice::View& view, std::uint32_t from);

    msgservice::ViewDescription m_description;
    Taker m_take;
    std::shared_ptr<msgservice::MessageStore> m_store; // of the piece before, or of all
    std::optional<std::uint32_t> m_last;               // handed on, there
    std::uint64_t m_count = 0;
};

} // namespace logtool
