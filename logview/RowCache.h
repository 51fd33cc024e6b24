// The rows of one paint, read together.
#pragma once

#include "logview/DisplayedRows.h"

#include <string>
#include <string_view>
#include <vector>

namespace logview
{

// A displayed row, ready to be drawn.
struct CachedRow : PlacedRow
{
    CQmLogRow nextOfLog;      // unless it is the last one
    std::uint32_t length = 0; // bytes of the line as its index tells it
    std::string_view text;    // the line with its line feed, or what its first
                              // RowCache::kLineBytes bytes have of whole characters
    bool last = false;        // of its log
    bool readable = false;    // else there is nothing to draw, and the row is empty
    bool foldable = false;
    bool expanded = false;
    bool marked = false; // foldable, and not too deep within other stretches to be unfolded
    int depth = 0;       // stretches that it lies in
};

// Rows of one log that lie close to each other are read with one read of records, and their text with one
// read unless they are far apart in it. A line costs at most kLineBytes, however long it is.
class RowCache
{
public:
    static constexpr std::uint32_t kLineBytes = 4096;

    explicit RowCache(RowSource& source) : m_source(source) {}

    // Reads `count` displayed rows from `first` on; what was read before goes.
    void Prepare(const DisplayedRows& rows, int first, int count);

    // Forgets the rows: logs grow, and what was read holds for one paint.
    void Clear();

    // Null for a row that was not prepared.
    const CachedRow* Get(int row) const;

private:
    struct Slice
    {
        std::size_t begin = 0; // in m_text
        std::size_t size = 0;
    };
    using Order = std::vector<std::uint32_t>; // indexes of m_rows

    void ReadRecords(Order::const_iterator begin, Order::const_iterator end);
    void ReadTexts(Order::const_iterator begin, Order::const_iterator end);
    std::size_t AppendText(std::uint32_t file, std::uint32_t offset, std::uint32_t size);
    bool IsDrawn(std::uint32_t index) const { return index + 1 < m_rows.size(); }

    RowSource& m_source;
    int m_first = 0;
    std::vector<CachedRow> m_rows; // and the one after them, for the fold mark of the last
    std::vector<Slice> m_slices;
    std::vector<CQmLogRow> m_records;
    std::string m_text;
};

} // namespace logview
