// What is typed into "Go To".
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace logdesk
{

struct GoToTarget
{
    enum class Kind
    {
        Number,  // the row with a sequence number
        LogRow,  // a row of a log
        ShownRow // a row as it is displayed
    };
    Kind kind = Kind::Number;
    std::uint32_t value = 0; // a number, or a row counted from 1
    std::string log = {};    // of LogRow; of Number, if it is to be the row of one log
    bool operator==(const GoToTarget&) const = default;
};

// The target, or a sentence that tells why there is none.
struct GoToAnswer
{
    std::optional<GoToTarget> target;
    std::string error;
};

// "18342" and "#18342" are numbers, "SQL #18342" the same in one of `logs`, "SQL 120" and "sql:120" its rows,
// and "row 500" is a displayed one. Digits may be in groups, as LogDesk shows them. A line of an excerpt is
// taken, too: what comes after "#18342" and two blanks is passed over.
GoToAnswer ParseGoTo(const std::string& text, const std::vector<std::string>& logs);

} // namespace logdesk
