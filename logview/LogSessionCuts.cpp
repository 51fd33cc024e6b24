#include "logview/LogSession.h"

#include <cstring>
#include <utility>

namespace logview
{

void LogSession::RememberEnds()
{
    for (std::uint32_t file = 0; file < kFileCount; ++file)
    {
        LogEnd& end = m_ends[file];
        end.rows = CountRows(file);
        if (end.rows > 0 && m_source.ReadRows(file, end.rows - 1, 1, &end.last) == 0)
            end.rows = 0;
    }
}

bool LogSession::HasShrunk() const
{
    if (CountRows(static_cast<std::uint32_t>(m_countedFile)) < m_root.GetCount())
        return true;
    for (std::uint32_t file = 0; file < kFileCount && !m_root.GetChildren().empty(); ++file)
        if (CountRows(file) < m_ends[file].rows)
            return true;
    return false;
}

// Whether rows that may be unfolded are gone. Others may have come in their place, so counting is not enough;
// those have other numbers.
bool LogSession::IsCut() const
{
    for (std::uint32_t file = 0; file < kFileCount && !m_root.GetChildren().empty(); ++file)
    {
        const LogEnd& end = m_ends[file];
        CQmLogRow last;
        if (end.rows > 0 && (m_source.ReadRows(file, end.rows - 1, 1, &last) == 0 ||
                             std::memcmp(&last, &end.last, sizeof(last)) != 0))
            return true;
    }
    return false;
}

void LogSession::Restore()
{
    CQmLogBranch rows;
    rows.SetCount(m_root.GetCount());
    const CQmLogBranch old = std::exchange(m_root, std::move(rows));
    RecordPages pages(m_source, kLookRows);
    RestoreChildren(pages, old, 0);
    RememberEnds();
}

// Unfolds again what was unfolded in `old`, whose first row is displayed at `first`; answers how many rows
// came.
std::int64_t LogSession::RestoreChildren(RecordPages& pages, const CQmLogBranch& old, std::int64_t first)
{
    std::int64_t total = 0;
    for (const CQmLogBranch& child : old.GetChildren())
    {
        const RowId header = {old.GetFirst().file, child.GetHeaderRow()};
        const std::int64_t row = first + (std::int64_t{header.row} - old.GetFirst().row) + total;
        const std::uint64_t room = static_cast<std::uint64_t>(kMaxRows - RowCount());
        CQmLogRow record;
        std::uint32_t added = 0;
        if (Translate(row) != header || !pages.Read(header, record) ||
            record.time != child.GetHeaderNumber() || !Unfold(pages, row, room, added) || added == 0)
            continue;
        total += added;
        if (Translate(row + 1) == child.GetFirst())
            total += RestoreChildren(pages, child, row + 1);
    }
    return total;
}

} // namespace logview
