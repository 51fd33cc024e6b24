// The rows that a log text window shows, whichever they are.
#pragma once

#include "logview/RowSource.h"

#include <cstdint>
#include <limits>
#include <string>

namespace logview
{

// A row of a log.
struct RowId
{
    std::uint32_t file = 0;
    std::uint32_t row = 0;
    bool operator==(const RowId&) const = default;
};

constexpr RowId kNowhere = {0, 0xFFFFFFFE}; // where no log has a row

// A row as its log has it.
struct PlacedRow
{
    RowId place;
    CQmLogRow record;
    int depth = 0; // levels of stretches that it lies in
};

// A row and its neighbours: the one displayed next, and the next one of its log. Null for one that is not
// there or cannot be read.
struct RowSurroundings
{
    const PlacedRow& row;
    const PlacedRow* next;
    const CQmLogRow* nextOfLog;
};

// Displayed rows that an operation added (below 0: removed) from displayed row `row` on.
struct RowChange
{
    int row = 0;
    int delta = 0;
    int leftFolded = 0; // by ExpandAll: rows that it did not unfold, or not look at, because it met a bound
};

// Rows are counted from 0 in the order in which they are shown. Nothing is kept of what the logs have:
// operations answer false where it cannot be read.
class DisplayedRows
{
public:
    static constexpr int kMaxRows = std::numeric_limits<int>::max();
    static constexpr int kNoRow = -1;

    // At most kMaxRows.
    virtual int RowCount() const = 0;

    // The log and row that lie at `row`, which exist only if `row` does, and how many stretches they lie in.
    virtual RowId Translate(std::int64_t row, int& depth) const = 0;
    RowId Translate(std::int64_t row) const
    {
        int depth = 0;
        return Translate(row, depth);
    }

    // Whether something folds at a row, and whether it is unfolded.
    virtual bool IsFoldable(const RowSurroundings& row, bool& expanded) const = 0;
    bool ReadExpanded(int row, bool& expanded) const;

    // How many rows a folded row, displayed at `row`, hides; 0 where that is not known.
    virtual std::uint32_t CountFolded(int row, const PlacedRow& folded) const = 0;

    bool ReadStyle(int row, CQmLogRow& record) const;

    // Bytes of the line as its index tells it, 0 on failure.
    int ColumnCount(int row) const;

    // The line as the log has it, line feed included.
    bool ReadLine(int row, std::string& text) const;

protected:
    explicit DisplayedRows(RowSource& source) : m_source(source) {}
    ~DisplayedRows() = default;

    bool IsShown(std::int64_t row) const { return row >= 0 && row < RowCount(); }
    RowSource& Source() const { return m_source; }

private:
    RowSource& m_source;
};

} // namespace logview
