// Which messages pass the filters of a view.
#pragma once

#include "msgservice/view/Description.h"
#include "msgservice/view/FieldText.h"

#include <memory>
#include <vector>

namespace msgservice
{

// The least level and the filters of a description. One thread at a time.
class MessageFilter
{
public:
    // The store must outlive it.
    MessageFilter(const MessageStore& store, const ViewDescription& description);
    ~MessageFilter();
    MessageFilter(const MessageFilter&) = delete;
    MessageFilter& operator=(const MessageFilter&) = delete;

    bool PassesAll() const; // whatever the message
    bool Passes(std::uint32_t message);

private:
    class Condition;

    const MessageStore& m_store;
    std::uint32_t m_leastLevel;
    std::vector<std::unique_ptr<Condition>> m_conditions;
    FieldText m_text;
};

} // namespace msgservice
