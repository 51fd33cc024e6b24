// A row of a log as a message.
#pragma once

#include "QmLogRow.h"
#include "QmLogTimes.h"
#include "msgservice/Message.h"

#include <optional>
#include <string>
#include <string_view>

namespace msgservice
{

// What a block's kind is as a level, and its name: detail is 1, plain 2, notice 3 and error 4; a host's own
// kinds are 2 and named by their number.
std::uint32_t LevelOfKind(QmLogBlockKind kind);
std::string NameOfKind(QmLogBlockKind kind);

// Topic is the log; timestamp and time are the row's local time and its time if its writer had a clock, else
// its sequence number; the level is that of its block's kind, and the indentation is its depth.
class RowMessage
{
public:
    struct Row
    {
        std::string_view log;
        std::uint32_t number = 0;
        std::optional<QmLogTimeValue> time;
        QmLogBlockKind kind = kPlainKind;
        std::uint32_t depth = 0;
        std::string_view text;
    };

    // The fields stay until the next call, and as long as the row's log.
    MessageFields& Make(const Row& row);

private:
    MessageFields m_fields;
    std::string m_timestamp, m_level, m_text;
};

} // namespace msgservice
