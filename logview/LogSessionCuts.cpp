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

// Unfolds again what was unfolded. Stretches may lie deeper within each other than the stack is deep.
void LogSession::Restore()
{
    struct Level
    {
        const CQmLogBranch* old;
        std::int64_t first; // where its first row is displayed
        std::size_t child = 0;
        std::int64_t added = 0; // rows that came among its own
    };

    CQmLogBranch rows;
    rows.SetCount(m_root.GetCount());
    const CQmLogBranch root = std::exchange(m_root, std::move(rows));
    RecordPages pages(m_source, kLookRows);
    std::vector<Level> levels = {{&root, 0}};
    while (!levels.empty())
    {
        Level& level = levels.back();
        const CQmLogBranch& old = *level.old;
        if (level.child == old.GetChildren().size())
        {
            const std::int64_t added = level.added;
            levels.pop_back();
            if (!levels.empty())
                levels.back().added += added;
            continue;
        }
        const CQmLogBranch& child = old.GetChildren()[level.child++];
        const RowId header = {old.GetFirst().file, child.GetHeaderRow()};
        const std::int64_t row = level.first + (std::int64_t{header.row} - old.GetFirst().row) + level.added;
        const std::uint32_t added = UnfoldAgain(pages, row, header, child.GetHeaderNumber());
        level.added += added;
        if (added > 0 && Translate(row + 1) == child.GetFirst())
            levels.push_back({&child, row + 1});
    }
    RememberEnds();
}

// Answers how many rows came: none where another header is displayed at `row` now.
std::uint32_t LogSession::UnfoldAgain(RecordPages& pages, std::int64_t row, RowId header,
                                      std::uint32_t number)
{
    CQmLogRow record;
    if (Translate(row) != header || !pages.Read(header, record) || record.time != number)
        return 0;
    return Unfold(pages, row, static_cast<std::uint64_t>(kMaxRows - RowCount())).added;
}

} // namespace logview
