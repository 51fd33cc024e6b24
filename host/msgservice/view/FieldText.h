// A message's field as text.
#pragma once

#include "msgservice/store/MessageStore.h"

#include <array>
#include <optional>

namespace msgservice
{

// Which shared text a field (ILogMsgDataKind) is; nothing for the others.
std::optional<SharedText> SharedTextOf(std::int32_t field);

// The number of a field that is one; nothing for texts and the level.
std::optional<std::int32_t> NumberOf(const Record& record, std::int32_t field);

// Fields as users see them: numbers in decimal digits, the level as its text, no field as the empty text.
class FieldText
{
public:
    explicit FieldText(const MessageStore& store) : m_store(store) {}

    // Valid until the next call, or longer if the field is a text.
    std::string_view operator()(const Record& record, std::int32_t field);

private:
    const MessageStore& m_store;
    std::array<char, 12> m_digits = {};
};

} // namespace msgservice
