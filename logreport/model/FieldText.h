// The fields of messages as texts.
#pragma once

#include "LogMsg.h"

#include <string>
#include <string_view>

namespace logreport
{

// The whole text of a field (ILogMsgDataKind): a number in decimals, the empty text for any other number of a
// field. Nothing is copied that the message hands out by address; the memory of the rest is used again.
class FieldText
{
public:
    // Valid until the next call, and as long as the message is.
    std::string_view Of(const ILogMsgData& message, std::int32_t field);

private:
    std::string_view Number(std::int32_t number);

    ZEMA::String m_text;
    std::string m_number;
};

} // namespace logreport
