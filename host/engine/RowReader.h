// A session's rows in the engine's table, read.
#pragma once

#include "engine/Engine.h"
#include "engine/RowQuery.h"

namespace engine
{

struct ShippedRow
{
    std::uint32_t number = 0;
    std::string log;
    std::int64_t time = 0; // as in TableRow
    std::uint32_t depth = 0;
    std::uint32_t kind = 0;
    bool header = false;
    std::uint32_t block = 0;
    std::string text;
};

// All operations ask the engine and throw EngineError. One thread at a time.
class RowReader
{
public:
    // For all but ReadSessions the address has a session's name. Without the machine's the first question
    // finds it.
    RowReader(const EngineUrl& url, std::unique_ptr<HttpClient> client);

    struct Session
    {
        std::string machine;
        std::string session;
        std::uint64_t rows = 0; // one that has arrived twice may count twice
        std::int64_t last = 0;  // the greatest time, as in TableRow
    };

    // The sessions in the table, or those of the machine that the address names.
    std::vector<Session> ReadSessions();

    struct Span
    {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
    };

    // The least and the greatest number from `from` on; none if there is no such row. A few dozen short
    // questions at most, however many rows there are, and one if there is none.
    std::optional<Span> ReadSpan(std::uint64_t from);

    // The rows of a choice by number, or those of them that have these numbers.
    std::vector<ShippedRow> ReadRows(const RowChoice& choice, const std::vector<std::uint32_t>& numbers = {});

    // The same for a page. If its texts are too long for an answer their beginnings come.
    std::vector<ShippedRow> ReadPage(const RowChoice& choice, const std::vector<std::uint32_t>& numbers);

    struct Numbers
    {
        std::vector<std::uint32_t> numbers;
        std::uint64_t found = 0; // before repeated rows were left out
        std::uint64_t hash = 0;  // of the last row
    };
    Numbers ReadNumbers(const RowChoice& choice, std::uint64_t most);

    // The numbers from the header of the block that the row belongs to until the block ends, or all later
    // ones. None if it belongs to no block, or the header is not there.
    std::optional<Span> ReadBlock(const ShippedRow& row);

    // The nearest row of a kind after a number, or before it; the first row at a time or later. Each is a
    // span of one number, or none.
    std::optional<Span> ReadNearest(std::uint32_t number, std::uint32_t kind, bool forward);
    std::optional<Span> ReadTime(std::int64_t time);

private:
    std::optional<std::uint64_t> FindSome(std::uint64_t from);
    std::optional<Span> FindEnds(std::uint64_t from, std::uint64_t to);
    std::uint32_t AskNumber(const std::string& sql);
    void FindMachine();
    std::vector<ShippedRow> Read(const RowChoice& choice, const std::vector<std::uint32_t>& numbers,
                                 std::optional<std::uint32_t> mostText);
    Rows Ask(const std::string& sql, std::size_t columns);

    Engine m_engine;
    ShippedRows m_rows;
};

} // namespace engine
