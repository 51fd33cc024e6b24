// Records of the logs for the length of one operation, read a page at a time.
#pragma once

#include "logview/Branch.h"
#include "logview/RowSource.h"

#include <string_view>
#include <vector>

namespace logview
{

constexpr std::uint32_t kLookRows = 2;    // a row and its successor
constexpr std::uint32_t kWalkRows = 1024; // a page of a walk over many rows
constexpr std::uint32_t kMaxNumber = 0xFFFFFFFF;

// Bytes of a line from `offset` to `end`, where the next line begins; 0 where the end comes first.
std::uint32_t LineLength(std::uint32_t offset, std::uint64_t end);

// The last line of a log ends with its first line feed: what a writer has added since belongs to rows that
// were not there yet.
std::string_view LastLine(std::string_view text);

// Keeps one page of each log. What was read is not read again, so that one operation works on one state of
// growing logs.
class RecordPages
{
public:
    // `pageRows` is what one read brings: kLookRows or kWalkRows.
    RecordPages(RowSource& source, std::uint32_t pageRows) : m_source(source), m_pageRows(pageRows) {}

    // False when the row does not exist.
    bool Read(RowId place, CQmLogRow& record);

    // The length of a line as its index tells it: a last line's is one more than the bytes it has.
    bool ReadLength(RowId place, std::uint32_t& length);

    // The first row of a log with `number` or a greater one, and its number. False when there is none; `row`
    // then is the log's end. Without reading where the kept page tells, else by the source's binary search.
    bool FindFirst(std::uint32_t file, std::uint32_t number, std::uint32_t& row, std::uint32_t& found);

    // Pages read and searches made so far.
    std::uint64_t Reads() const { return m_reads; }

private:
    struct Page
    {
        std::uint32_t first = 0;
        bool atEnd = false; // the log ends with it
        std::vector<CQmLogRow> rows;

        bool IsLoaded() const { return !rows.empty() || (first == 0 && atEnd); }
        std::uint32_t End() const { return first + static_cast<std::uint32_t>(rows.size()); }
    };

    void Load(std::uint32_t file, std::uint32_t first);
    bool FindInPage(const Page& page, std::uint32_t number, std::uint32_t& row) const;

    RowSource& m_source;
    std::uint32_t m_pageRows;
    std::uint64_t m_reads = 0;
    Page m_pages[kFileCount];
};

} // namespace logview
