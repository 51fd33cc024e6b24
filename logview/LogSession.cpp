#include "logview/LogSession.h"

#include <algorithm>

namespace logview
{

namespace
{

// `count` rows that came (below 0: went) under the header at `row`.
RowChange Added(int row, std::int64_t count)
{
    if (count == 0)
        return {};
    return {row + 1, static_cast<int>(std::max<std::int64_t>(count, -LogSession::kMaxRows)), 0};
}

} // namespace

bool IsFoldable(const PlacedRow& row, const PlacedRow& next, bool& expanded)
{
    const bool consecutive = next.record.time == static_cast<std::uint32_t>(row.record.time + 1);
    const bool sameLog = row.place.file == next.place.file;
    if (consecutive && (sameLog || next.record.indent < row.record.indent))
        return false;
    expanded = consecutive;
    return true;
}

int LogSession::RowCount() const
{
    return static_cast<int>(std::min<std::uint64_t>(m_root.GetSize(), kMaxRows));
}

std::uint32_t LogSession::CountRows(std::uint32_t file) const
{
    return static_cast<std::uint32_t>(std::min<unsigned long>(m_source.RowCount(file), kMaxRows));
}

void LogSession::Refresh(int file)
{
    m_countedFile = file;
    m_root.SetCount(CountRows(static_cast<std::uint32_t>(file)));
    if (IsCut())
        Restore();
}

bool LogSession::HasNewCount(int file) const
{
    return file != m_countedFile || CountRows(static_cast<std::uint32_t>(file)) != m_root.GetCount();
}

RowId LogSession::Translate(std::int64_t row, int& depth) const
{
    return m_root.Translate(static_cast<std::uint64_t>(row), depth); // one below 0 comes after all others
}

bool LogSession::IsFoldable(const RowSurroundings& row, bool& expanded) const
{
    return row.next && logview::IsFoldable(row.row, *row.next, expanded);
}

std::uint32_t LogSession::CountFolded(int row, const PlacedRow& folded) const
{
    RecordPages pages(m_source, 1);
    CQmLogRow next;
    const bool isKnown = pages.Read(Translate(std::int64_t{row} + 1), next) && next.time > folded.record.time;
    return isKnown ? next.time - folded.record.time - 1 : 0;
}

bool LogSession::Expand(int row, RowChange& change)
{
    RecordPages pages(m_source, kLookRows);
    const Unfolded unfolded = Unfold(pages, row, static_cast<std::uint64_t>(kMaxRows - RowCount()));
    change = Added(row, unfolded.added);
    RememberEnds();
    return unfolded.isDone;
}

bool LogSession::ExpandAll(int row, RowChange& change)
{
    std::uint64_t rows = 0;
    for (unsigned file = 0; file < kFileCount; ++file)
        rows += m_source.RowCount(file);
    const std::uint64_t maxRows = 16 * rows + 1024;
    const std::uint64_t room = std::min(maxRows, static_cast<std::uint64_t>(kMaxRows - RowCount()));
    const std::uint64_t maxReads = rows / 4 + 1024;
    const std::uint64_t maxLevels = 64 * maxRows;

    RecordPages pages(m_source, kWalkRows);
    const Unfolded header = Unfold(pages, row, room);
    std::int64_t total = header.added;
    std::int64_t left = header.isBounded ? 1 : 0;
    std::uint64_t levels = 0;
    std::int64_t at = std::int64_t{row} + 1;
    for (; at <= row + total && pages.Reads() <= maxReads && levels <= maxLevels; ++at)
    {
        const Unfolded unfolded = Unfold(pages, at, room - static_cast<std::uint64_t>(total));
        total += unfolded.added;
        left += unfolded.isBounded ? 1 : 0;
        levels += static_cast<std::uint64_t>(unfolded.depth);
    }
    change = Added(row, total);
    change.leftFolded = static_cast<int>(left + (row + total + 1 - at));
    RememberEnds();
    return header.isDone;
}

bool LogSession::Collapse(int row, RowChange& change)
{
    change = {};
    if (!IsShown(row))
        return false;
    const std::uint64_t removed = m_root.Remove(static_cast<std::uint64_t>(row));
    change = Added(row, -static_cast<std::int64_t>(removed));
    return removed > 0;
}

bool LogSession::ReadFold(RecordPages& pages, std::int64_t row, PlacedRow& header, bool& expanded) const
{
    if (!IsShown(row))
        return false;
    header.place = Translate(row, header.depth);
    PlacedRow next;
    next.place = Translate(row + 1);
    return pages.Read(header.place, header.record) && pages.Read(next.place, next.record) &&
           logview::IsFoldable(header, next, expanded);
}

// Unfolds `row` unless more than `room` rows would be added.
LogSession::Unfolded LogSession::Unfold(RecordPages& pages, std::int64_t row, std::uint64_t room)
{
    bool expanded = false;
    PlacedRow header;
    const bool isFoldable = ReadFold(pages, row, header, expanded);
    const RowId place = header.place;
    const CQmLogRow& record = header.record;
    Unfolded unfolded;
    unfolded.depth = header.depth;
    unfolded.isDone = isFoldable && expanded;
    if (!isFoldable || expanded || record.time == kMaxNumber)
        return unfolded;
    const std::uint32_t first = record.time + 1;
    CQmLogRow successor;
    const bool goesOn = pages.Read({place.file, place.row + 1}, successor);
    std::uint32_t last = goesOn ? successor.time - 1 : 0;
    if (last < first)
        last = kMaxNumber;

    RowId found;
    std::uint32_t number = 0;
    if (!FindFirst(pages, first, found, number) || number > last)
        return unfolded;
    std::uint32_t end = 0;
    std::uint32_t behind = 0;
    if (last == kMaxNumber)
        end = static_cast<std::uint32_t>(std::min<unsigned long>(m_source.RowCount(found.file), kMaxRows));
    else
        pages.FindFirst(found.file, last + 1, end, behind);

    // In a damaged log the search may lead before the header itself, or to an end before the beginning.
    if (end <= found.row || (found.file == place.file && found.row <= place.row))
        return unfolded;
    const std::uint32_t count = end - found.row;
    unfolded.isBounded = count > room || header.depth >= CQmLogBranch::kMaxDepth;
    unfolded.isDone = !unfolded.isBounded;
    if (unfolded.isDone &&
        m_root.Insert(static_cast<std::uint64_t>(row), CQmLogBranch(found, count, record.time)))
        unfolded.added = count;
    return unfolded;
}

} // namespace logview
