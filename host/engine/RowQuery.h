// Questions for a session's rows in the engine's table.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace engine
{

// Where a session's rows are.
struct ShippedRows
{
    std::string table; // as in SqlTable
    std::string machine;
    std::string session;
};

// What a row's text or log has to hold, or must not.
struct TextCondition
{
    enum class Column
    {
        Log,
        Text
    };
    Column column = Column::Text;
    std::string value;
    bool matchCase = true; // else the value is ASCII, whose letters are found in either case
    bool wanted = true;
};

// A row has to meet all of them.
struct RowConditions
{
    std::vector<TextCondition> texts;
    std::vector<std::uint32_t> kinds; // the only ones, or the ones that are left out
    bool kindsAreWanted = false;
};

// The machines that have a session of this name: one column, two rows at most.
std::string MachinesSql(const ShippedRows& rows);

// The greatest number from `from` on, and how many rows have one: one row of two numbers.
std::string LastNumberSql(const ShippedRows& rows, std::uint64_t from);

// The rows with numbers from `from` to `to`, by number: number, log, time, depth, kind, text. Of a row that
// has arrived more than once the longest. The engine reads this stretch of its key and nothing else, so it
// needs both bounds; the conditions look at what is left of it.
std::string RowsSql(const ShippedRows& rows, std::uint64_t from, std::uint64_t to,
                    const RowConditions& conditions);

} // namespace engine
