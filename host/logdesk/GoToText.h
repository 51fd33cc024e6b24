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
        Number,   // the row with a sequence number
        LogRow,   // a row of a log
        ShownRow, // a row as it is displayed
        Time      // the first row at a local time
    };
    Kind kind = Kind::Number;
    std::uint32_t value = 0; // a number, or a row counted from 1
    std::string log = {};    // of LogRow; of Number, if it is to be the row of one log
    std::string time = {};   // of Time, as it was typed
    bool operator==(const GoToTarget&) const = default;
};

// The target, or a sentence that says what is wrong with the text.
struct GoToAnswer
{
    std::optional<GoToTarget> target;
    std::string error;
};

// "18342" and "#18342" are numbers, "SQL #18342" the same in one of `logs`, "SQL 120" and "sql:120" its rows,
// and "row 500" is a displayed one. Digits may be in groups, as LogDesk shows them. A line of an excerpt is
// taken, too: what comes after "#18342" and two blanks is passed over.
// "14:03:10" and "2026-11-23 14:03" are times; whether there are such is not looked at.
GoToAnswer ParseGoTo(const std::string& text, const std::vector<std::string>& logs);

} // namespace logdesk
