// Questions for a session's rows in the engine's table.
#pragma once

#include <cstdint>
#include <optional>
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

// What a row's text, log or level has to hold, or must not.
struct TextCondition
{
    enum class Column
    {
        Log,
        Text,
        Level // the name of its kind
    };
    enum class Letters
    {
        AsTheyAre,
        AsciiInEitherCase, // the value is ASCII
        InEitherCase       // as the engine folds them
    };
    Column column = Column::Text;
    std::string value; // an empty one: the column must not be empty, or must be
    Letters letters = Letters::AsTheyAre;
    bool wanted = true;
};

// A row has to meet all of them.
struct RowConditions
{
    std::vector<TextCondition> texts;
    std::vector<std::uint32_t> kinds; // the only ones, or the ones that are left out
    bool kindsAreWanted = false;
};

// What rows are sorted by before their numbers.
struct RowOrder
{
    enum class Column
    {
        Time, // without one the number
        Level,
        Log, // both without regard to case
        Text
    };
    Column column = Column::Time;
    bool ascending = true;
};

// What the kinds are called, and how they are ordered; others are called by their number.
struct KindMeaning
{
    std::uint32_t kind = 0;
    std::uint32_t level = 0;
    std::string name;
};
struct KindMeanings
{
    std::vector<KindMeaning> kinds;
    std::uint32_t otherLevel = 0;
};

// Which rows of a session, and in which order.
struct RowChoice
{
    std::uint64_t from = 0; // both numbers are among them
    std::uint64_t to = 0;
    RowConditions conditions;
    std::vector<RowOrder> order;
    KindMeanings meanings;

    // Leaves out a row that says the same as the one before it: log, kind, depth and text. The first row is
    // compared with what `before` is the hash of.
    bool leavesOutRepeated = false;
    std::uint64_t before = 0;
};

// All sessions, or those of the machine that `rows` names: machine, session, rows, last time. The engine
// reads three columns of the whole table, or of the machine.
std::string SessionsSql(const ShippedRows& rows);

// The machines that have a session of this name: one column, two rows at most.
std::string MachinesSql(const ShippedRows& rows);

// Any number from `from` on: one row of it, or none. The engine looks at its key alone.
std::string SomeSql(const ShippedRows& rows, std::uint64_t from);

// The least and the greatest number from `from` to `to`: one row of two numbers, which are 0 if there is
// none.
std::string SpanSql(const ShippedRows& rows, std::uint64_t from, std::uint64_t to);

// The numbers of the rows, at most `most`: one row of the numbers with blanks between them, how many rows
// there were before repeated ones were left out, and the hash of the last one.
std::string NumbersSql(const ShippedRows& rows, const RowChoice& choice, std::uint64_t most);

// The rows of a choice by number, whatever its order, and of them those that have these numbers, or all if
// none is named: number, log, time, depth, kind, header, block, text. Of a row that has arrived more than
// once the longest. A text longer than `mostText` characters is cut and ends in " ...". The engine reads this
// stretch of its key and nothing else, which is why a choice has both bounds; the conditions look at what is
// left of it.
std::string RowsSql(const ShippedRows& rows, const RowChoice& choice,
                    const std::vector<std::uint32_t>& numbers, std::optional<std::uint32_t> mostText);

// The first number from `from` to `to` at which a block of `log` has ended whose header has `depth`: one row
// with 0 if it has not. Depth counts over all logs.
std::string BlockEndSql(const ShippedRows& rows, std::uint64_t from, std::uint64_t to, const std::string& log,
                        std::uint32_t depth);

// The number from `from` to `to`, the least or the greatest, of a row of a kind: one row with 0 if there is
// none.
std::string NearestSql(const ShippedRows& rows, std::uint64_t from, std::uint64_t to, std::uint32_t kind,
                       bool least);

// The first number of a row with a time of at least this: one row with 0 if there is none.
std::string TimeSql(const ShippedRows& rows, std::int64_t time);

} // namespace engine
