// What rows count as, and how deep they lie: what an index needs of each of many millions of rows.
#pragma once

#include "QmLogRow.h"

#include <cstdint>

namespace logview
{

// What a row counts as.
enum RowClass : unsigned
{
    kPlainRow, // of a kind of the host's own, too
    kNoticeRow,
    kErrorHeader,
    kErrorRow, // of an error's block, below the header
    kDetailRow,
    kRowClasses
};
RowClass ClassOf(const CQmLogRow& row);

struct RowTally
{
    std::uint32_t counts[kRowClasses] = {};
    std::uint8_t lowest = 0xFF;       // depth of the rows
    std::uint8_t lowestHeader = 0xFF; // depth of the headers, those at depth 0 left out

    void Add(const CQmLogRow& row);

    // Adds rows up to `end` or the first one whose number is not below `number`, which it answers.
    const CQmLogRow* AddBelow(const CQmLogRow* row, const CQmLogRow* end, std::uint64_t number);
};

} // namespace logview
