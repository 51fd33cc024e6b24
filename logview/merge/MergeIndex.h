// Where the rows of all logs lie in the order of their numbers, known at about every thousandth row.
#pragma once

#include "logview/DisplayedRows.h"
#include "logview/RowSource.h"
#include "logview/merge/RowTally.h"

#include <cstdint>
#include <vector>

namespace logview
{

// The key by which a row is put into the order: its number, or the next row's of its log where that is
// smaller. So one damaged number does not hold up the rest of its log.
inline std::uint32_t OrderKey(const CQmLogRow& row, const CQmLogRow* next)
{
    return next && next->time < row.time ? next->time : row.time;
}

// A place between two rows of the order: how many rows of each log, and of which classes, come before it, and
// what the rows between it and the next point have.
struct MergePoint
{
    std::uint32_t number = 0; // no row behind the point has a smaller key
    std::uint32_t counts[kFileCount][kRowClasses] = {};
    std::uint8_t lowest[kFileCount] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF}; // depth of the log's rows
    std::uint8_t lowestHeader = 0xFF; // depth of a header of any log, those at depth 0 left out

    std::uint32_t RowsOf(unsigned file) const;
    std::uint64_t Rows() const;
};
static_assert(sizeof(MergePoint) <= 112);

// Made once by reading the records of all logs, step by step, and extended as logs grow: 112 bytes for 896
// rows or more. Rows of one log come in their own order, whatever their numbers are, and every row once.
class MergeIndex
{
public:
    static constexpr std::uint32_t kStretchNumbers = 1024;

    // A stretch from point to point spans so many numbers, or more where they are few: tests have short ones.
    explicit MergeIndex(RowSource& source, std::uint32_t stretchNumbers = kStretchNumbers);

    // Takes the logs' ends. False if rows that were read are gone or others: then all begins again. What
    // comes late, with a number smaller than some that were read, is put where it belongs if that is near.
    bool Refresh();

    // Reads on for `rows` rows or somewhat more; false when there is nothing left to read.
    bool Extend(std::uint64_t rows);

    // Whether all rows that the logs had at the last Refresh are read.
    bool IsComplete() const;

    // A log's rows at the last Refresh.
    std::uint32_t RowsOf(unsigned file) const { return m_logs[file].count; }

    // The points, the first before all rows, and the place behind the last row that was read; the stretch
    // that ends there begins at the last point.
    const std::vector<MergePoint>& Points() const { return m_points; }
    const MergePoint& End() const { return m_end; }

private:
    struct Log
    {
        std::uint32_t count = 0;
        std::uint32_t next = 0; // the row to read on with
        CQmLogRow last;         // read so far
        std::uint32_t bufferFirst = 0;
        std::vector<CQmLogRow> buffer;
    };

    void Restart();
    void TakeLateRows();
    void GoBackTo(std::size_t point);
    bool Fill(unsigned file);
    bool TakeRows(unsigned file);
    std::uint32_t SmallestKey();
    void EndStretch();

    RowSource& m_source;
    std::uint32_t m_stretchNumbers;
    Log m_logs[kFileCount];
    std::vector<MergePoint> m_points;
    MergePoint m_end;
    std::uint32_t m_stretchRows = 0;
    std::uint64_t m_stretchEnd = 0; // rows with smaller keys belong to the stretch
};

} // namespace logview
