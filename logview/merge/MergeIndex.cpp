#include "logview/merge/MergeIndex.h"

#include "logview/DisplayedRows.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace logview
{

namespace
{

constexpr std::uint32_t kMostRows = 4000;   // only damaged logs have so many in so few numbers
constexpr std::uint32_t kBufferRows = 3276; // 64 KiB
constexpr std::size_t kLatePoints = 64;     // how far back a late row is put

} // namespace

std::uint32_t MergePoint::RowsOf(unsigned file) const
{
    return std::accumulate(std::begin(counts[file]), std::end(counts[file]), 0u);
}

std::uint64_t MergePoint::Rows() const
{
    std::uint64_t rows = 0;
    for (unsigned file = 0; file < kFileCount; ++file)
        rows += RowsOf(file);
    return rows;
}

MergeIndex::MergeIndex(RowSource& source, std::uint32_t stretchNumbers)
    : m_source(source), m_stretchNumbers(stretchNumbers)
{
    Restart();
}

void MergeIndex::Restart()
{
    for (Log& log : m_logs)
        log = {log.count, 0, {}, 0, {}};
    m_points.assign(1, MergePoint());
    m_end = MergePoint();
    m_stretchRows = 0;
    m_stretchEnd = 0;
}

bool MergeIndex::Refresh()
{
    const bool wasComplete = IsComplete();
    bool isCut = false;
    for (unsigned file = 0; file < kFileCount; ++file)
    {
        Log& log = m_logs[file];
        log.count = static_cast<std::uint32_t>(
            std::min<unsigned long>(m_source.RowCount(file), DisplayedRows::kMaxRows));
        log.buffer.clear();
        CQmLogRow last;
        isCut = isCut || (log.next > 0 && (m_source.ReadRows(file, log.next - 1, 1, &last) == 0 ||
                                           std::memcmp(&last, &log.last, sizeof(last)) != 0));
    }
    if (isCut)
        Restart();
    else if (wasComplete)
        TakeLateRows();
    return !isCut;
}

bool MergeIndex::IsComplete() const
{
    return std::all_of(std::begin(m_logs), std::end(m_logs),
                       [](const Log& log) { return log.next >= log.count; });
}

// A process takes its numbers before it writes its rows, so that others' greater numbers may be read first.
void MergeIndex::TakeLateRows()
{
    const std::uint32_t number = SmallestKey();
    std::size_t point = m_points.size() - 1;
    while (point > 0 && m_points[point].number > number && m_points.size() - point < kLatePoints)
        --point;
    if (m_points[point].number <= number && point + 1 < m_points.size())
        GoBackTo(point);
}

void MergeIndex::GoBackTo(std::size_t point)
{
    m_points.resize(point + 1);
    m_points.back().lowestHeader = 0xFF;
    std::fill(std::begin(m_points.back().lowest), std::end(m_points.back().lowest), std::uint8_t{0xFF});
    m_end = m_points.back();
    m_stretchRows = 0;
    m_stretchEnd = m_end.number;
    for (unsigned file = 0; file < kFileCount; ++file)
    {
        Log& log = m_logs[file];
        log.next = m_end.RowsOf(file);
        log.buffer.clear();
        if (log.next > 0)
            m_source.ReadRows(file, log.next - 1, 1, &log.last);
    }
}

// Has the row to read on with in the buffer, and the one after it where there is one. False at the end.
bool MergeIndex::Fill(unsigned file)
{
    Log& log = m_logs[file];
    if (log.next >= log.count)
        return false;
    const std::uint32_t end = log.bufferFirst + static_cast<std::uint32_t>(log.buffer.size());
    if (!log.buffer.empty() && (log.next + 1 < end || (log.next < end && end == log.count)))
        return true;
    log.bufferFirst = log.next;
    log.buffer.resize(std::min(kBufferRows, log.count - log.next));
    const unsigned long wanted = static_cast<unsigned long>(log.buffer.size());
    const unsigned long count = m_source.ReadRows(file, log.next, wanted, log.buffer.data());
    log.buffer.resize(std::min(count, wanted));
    if (count < wanted)
        log.count = log.next + static_cast<std::uint32_t>(log.buffer.size()); // it was cut just now
    return !log.buffer.empty();
}

std::uint32_t MergeIndex::SmallestKey()
{
    std::uint32_t smallest = 0xFFFFFFFF;
    for (unsigned file = 0; file < kFileCount; ++file)
    {
        if (!Fill(file))
            continue;
        const Log& log = m_logs[file];
        const std::size_t at = log.next - log.bufferFirst;
        const CQmLogRow* const next = at + 1 < log.buffer.size() ? &log.buffer[at + 1] : nullptr;
        smallest = std::min(smallest, OrderKey(log.buffer[at], next));
    }
    return smallest;
}

// The rows of a log that belong to the stretch. False when the stretch is full before their end.
bool MergeIndex::TakeRows(unsigned file)
{
    Log& log = m_logs[file];
    MergePoint& stretch = m_points.back();
    while (Fill(file))
    {
        const CQmLogRow* const begin = &log.buffer[log.next - log.bufferFirst];
        const CQmLogRow* const end = log.buffer.data() + log.buffer.size();
        const bool atEnd = log.bufferFirst + log.buffer.size() == log.count;
        const CQmLogRow* const last = begin + std::min<std::ptrdiff_t>(atEnd ? end - begin : end - begin - 1,
                                                                       kMostRows - m_stretchRows);
        RowTally tally;
        const CQmLogRow* at = tally.AddBelow(begin, last, m_stretchEnd);
        while (at != last && at + 1 != end && at[1].time < m_stretchEnd) // one damaged number
        {
            tally.Add(*at);
            at = tally.AddBelow(at + 1, last, m_stretchEnd);
        }
        if (at == begin)
            return m_stretchRows < kMostRows;
        for (unsigned i = 0; i < kRowClasses; ++i)
            m_end.counts[file][i] += tally.counts[i];
        stretch.lowest[file] = std::min(stretch.lowest[file], tally.lowest);
        stretch.lowestHeader = std::min(stretch.lowestHeader, tally.lowestHeader);
        log.last = at[-1];
        log.next += static_cast<std::uint32_t>(at - begin);
        m_stretchRows += static_cast<std::uint32_t>(at - begin);
        if (at != last)
            return true;
    }
    return true;
}

bool MergeIndex::Extend(std::uint64_t rows)
{
    const std::uint64_t until = m_end.Rows() + rows;
    while (!IsComplete())
    {
        bool isWhole = true;
        for (unsigned file = 0; file < kFileCount && isWhole; ++file)
            isWhole = TakeRows(file);
        if (IsComplete())
            break; // the stretch goes on when the logs do
        EndStretch();
        if (m_end.Rows() >= until)
            return true;
    }
    for (Log& log : m_logs)
        log.buffer = {};
    return false;
}

// Begins another stretch, or, with few rows yet, goes on with this one for greater numbers.
void MergeIndex::EndStretch()
{
    const bool isFull = m_stretchRows >= kMostRows;
    const std::uint32_t key = SmallestKey();
    const std::uint32_t begin =
        isFull ? std::max(m_points.back().number, key) : static_cast<std::uint32_t>(m_stretchEnd);
    if (m_stretchRows >= m_stretchNumbers / 8 * 7)
    {
        m_end.number = begin;
        m_points.push_back(m_end);
        m_stretchRows = 0;
    }
    if (!isFull || m_stretchEnd <= key)
        m_stretchEnd = std::max<std::uint64_t>(m_stretchEnd, key) + m_stretchNumbers;
}

} // namespace logview
