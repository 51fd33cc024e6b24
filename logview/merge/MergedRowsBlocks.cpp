// Blocks of the merged rows: folding them, where they end, which are open at a row, and errors.
#include "logview/merge/MergedRows.h"

#include <algorithm>

namespace logview
{

namespace
{

std::uint64_t ErrorsBefore(const MergePoint& point, std::uint32_t logs)
{
    std::uint64_t errors = 0;
    for (unsigned file = 0; file < kFileCount; ++file)
        errors += (logs >> file & 1) != 0 ? point.counts[file][kErrorHeader] : 0;
    return errors;
}

// Whether `row` ends the block of a header of log `file` at `depth`.
bool EndsBlock(const PlacedRow& row, std::uint32_t file, unsigned depth)
{
    return (row.place.file == file && row.record.indent < depth) ||
           (row.record.blockBegin != 0 && row.record.indent > 0 && row.record.indent <= depth);
}

} // namespace

// ---- Folding

bool MergedRows::IsFoldable(const RowSurroundings& row, bool& expanded) const
{
    const auto& [place, record, depth] = row.row;
    if (record.blockBegin == 0 || record.indent == 0)
        return false;
    expanded = !m_folds.Get(place);
    if (!expanded)
        return true;
    if (m_foldsAllLogs)
        return row.next && !EndsBlock(*row.next, place.file, record.indent);
    return row.nextOfLog && !EndsBlock({place, *row.nextOfLog, 0}, place.file, record.indent);
}

std::uint32_t MergedRows::CountFolded(int, const PlacedRow& folded) const
{
    const FoldedRows::Fold* const fold = m_folds.Get(folded.place);
    std::uint32_t rows = 0;
    for (unsigned file = 0; fold && file < kFileCount; ++file)
        for (unsigned i = 0; i < kRowClasses; ++i)
            if (((fold->logs & m_choice.logs) >> file & 1) != 0 && (m_choice.classes >> i & 1) != 0)
                rows += fold->end.counts[file][i] - fold->begin.counts[file][i];
    return rows;
}

bool MergedRows::Fold(int row, RowChange& change)
{
    change = {};
    const int before = RowCount();
    const RowId header = Translate(row);
    FoldedRows::Fold fold;
    bool expanded = false;
    if (!ReadExpanded(row, expanded) || !expanded || !MakeFold(header, m_foldsAllLogs, fold))
        return false;
    m_folds.Set(header, fold);
    FindShown();
    change = {row + 1, RowCount() - before, 0};
    return true;
}

bool MergedRows::Unfold(int row, RowChange& change)
{
    change = {};
    const int before = RowCount();
    if (!IsShown(row) || !m_folds.Remove(Translate(row)))
        return false;
    FindShown();
    change = {row + 1, RowCount() - before, 0};
    return true;
}

// What a block hides. False where the index does not reach its header.
bool MergedRows::MakeFold(RowId header, bool allLogs, FoldedRows::Fold& fold) const
{
    PlacedRow row = {header, {}, 0};
    BlockEnd end;
    if (!Read(header, row.record) || !FindBlockEnd(row, end))
        return false;
    fold.number = row.record.time;
    fold.isEnded = end.isEnded;
    fold.logs = allLogs ? (1u << kFileCount) - 1 : 1u << header.file;
    fold.begin = PointBefore(header);
    ++fold.begin.counts[header.file][ClassOf(row.record)];
    fold.end = end.point;
    return true;
}

// The point before the row that ends a block, or behind all rows that the index has.
bool MergedRows::FindBlockEnd(const PlacedRow& header, BlockEnd& end) const
{
    const std::vector<MergePoint>& points = m_index.Points();
    const std::uint32_t file = header.place.file;
    const unsigned depth = header.record.indent;
    if (header.place.row >= m_index.End().RowsOf(file))
        return false;
    const auto next = std::upper_bound(
        points.begin() + 1, points.end(), header.place.row,
        [&](std::uint32_t row, const MergePoint& point) { return row < point.RowsOf(file); });
    bool isBehind = false;
    std::vector<PlacedRow> rows;
    for (auto at = next - 1; at != points.end(); ++at)
    {
        if (isBehind && at->lowest[file] >= depth && at->lowestHeader > depth)
            continue;
        Merge({*at, &*at == &points.back() ? m_index.End() : at[1]}, rows);
        end.point = *at;
        for (const PlacedRow& row : rows)
        {
            if (isBehind && EndsBlock(row, file, depth))
            {
                end.isEnded = true;
                end.number = row.record.time;
                return true;
            }
            isBehind = isBehind || row.place == header.place;
            ++end.point.counts[row.place.file][ClassOf(row.record)];
        }
    }
    end.point = m_index.End();
    return true;
}

int MergedRows::Reveal(RowId place)
{
    PlacedRow row = {place, {}, 0};
    if (place.file >= kFileCount || place.row >= m_index.RowsOf(place.file) || !Read(place, row.record))
        return kNoRow;
    m_choice.logs |= 1u << place.file;
    m_choice.classes |= 1u << ClassOf(row.record);
    m_folds.Show(place);
    FindShown();
    if (!IsDisplayed(place))
        ShowOnly(std::nullopt);
    return IsDisplayed(place) ? FindRow(place) : kNoRow;
}

NumberRange MergedRows::FindBlock(RowId header) const
{
    PlacedRow row = {header, {}, 0};
    BlockEnd end;
    if (!Read(header, row.record))
        return {};
    if (!FindBlockEnd(row, end) || !end.isEnded)
        return {row.record.time, 0xFFFFFFFF};
    return {row.record.time, end.number - 1};
}

std::vector<RowId> MergedRows::FindPath(RowId place) const
{
    std::vector<RowId> path;
    const std::vector<MergePoint>& points = m_index.Points();
    if (place.file >= kFileCount || place.row >= m_index.End().RowsOf(place.file))
        return path;

    // Headers that are open at the row, the innermost first: none ends another, so depths fall.
    unsigned lowest[kFileCount] = {256, 256, 256, 256, 256}; // depth of the rows between a header and the row
    unsigned lowestHeader = 256;
    bool isReached = false;
    const auto next = std::upper_bound(
        points.begin() + 1, points.end(), place.row,
        [&](std::uint32_t row, const MergePoint& point) { return row < point.RowsOf(place.file); });
    std::vector<PlacedRow> rows;
    for (auto at = next; at != points.begin() && lowestHeader > 1;)
    {
        --at;
        if (isReached && at->lowestHeader >= lowestHeader)
        {
            for (unsigned file = 0; file < kFileCount; ++file)
                lowest[file] = std::min<unsigned>(lowest[file], at->lowest[file]);
            continue;
        }
        Merge({*at, &*at == &points.back() ? m_index.End() : at[1]}, rows);
        for (auto row = rows.rbegin(); row != rows.rend(); ++row)
        {
            isReached = isReached || row->place == place;
            const unsigned depth = row->record.indent;
            unsigned& own = lowest[row->place.file];
            if (!isReached)
                continue;
            if (row->record.blockBegin != 0 && depth > 0)
            {
                if (depth <= own && depth < lowestHeader)
                    path.push_back(row->place);
                lowestHeader = std::min(lowestHeader, depth);
            }
            own = std::min(own, depth);
        }
    }

    // A row belongs to the innermost block of its own log, if that has one.
    const auto own =
        std::find_if(path.begin(), path.end(), [&](RowId header) { return header.file == place.file; });
    if (own != path.end())
        path.erase(path.begin(), own);
    std::reverse(path.begin(), path.end());
    return path;
}

// ---- Errors

std::optional<RowId> MergedRows::FindError(RowId place, bool forward, std::uint32_t logs) const
{
    PlacedRow row = {place, {}, 0};
    const bool isIndexed = place.file < kFileCount && place.row < m_index.End().RowsOf(place.file);
    std::uint64_t wanted = ErrorsBefore(isIndexed ? PointBefore(place) : m_index.End(), logs);
    if (!forward && wanted == 0)
        return std::nullopt;
    if (!forward)
        --wanted;
    else if (isIndexed && Read(place, row.record) && (logs >> place.file & 1) != 0 &&
             ClassOf(row.record) == kErrorHeader)
        ++wanted;
    const std::optional<PlacedRow> error = FindErrorAt(wanted, logs);
    return error ? std::optional(error->place) : std::nullopt;
}

// The error with so many of these logs before it.
std::optional<PlacedRow> MergedRows::FindErrorAt(std::uint64_t wanted, std::uint32_t logs) const
{
    if (wanted >= ErrorsBefore(m_index.End(), logs))
        return std::nullopt;

    const auto measure = [&](const MergePoint& point) { return ErrorsBefore(point, logs); };
    const Stretch stretch = Locate(wanted, measure);
    std::vector<PlacedRow> rows;
    Merge(stretch, rows);
    std::uint64_t errors = measure(stretch.begin);
    for (const PlacedRow& each : rows)
        if ((logs >> each.place.file & 1) != 0 && ClassOf(each.record) == kErrorHeader && errors++ == wanted)
            return each;
    return std::nullopt;
}

std::optional<PlacedRow> MergedRows::FindErrorFrom(std::uint32_t number) const
{
    constexpr std::uint32_t kAllLogs = (1u << kFileCount) - 1;
    return FindErrorAt(ErrorsBefore(PointBefore(number), kAllLogs), kAllLogs);
}

std::uint32_t MergedRows::CountFoldedErrors(RowId header) const
{
    std::uint32_t errors = 0;
    if (const FoldedRows::Fold* const fold = m_folds.Get(header))
        for (unsigned file = 0; file < kFileCount; ++file)
            if ((fold->logs >> file & 1) != 0)
                errors += fold->end.counts[file][kErrorHeader] - fold->begin.counts[file][kErrorHeader];
    return errors;
}

std::uint32_t MergedRows::CountErrors(const NumberRange& range) const
{
    constexpr std::uint32_t kAllLogs = (1u << kFileCount) - 1;
    const std::vector<MergePoint>& points = m_index.Points();
    const auto behind = [&](std::uint32_t number) {
        return std::upper_bound(points.begin() + 1, points.end(), number,
                                [](std::uint32_t at, const MergePoint& point) { return at < point.number; });
    };
    const auto next = behind(range.last);
    const MergePoint& end = next == points.end() ? m_index.End() : *next;
    if (ErrorsBefore(behind(range.first)[-1], kAllLogs) == ErrorsBefore(end, kAllLogs) ||
        (next == points.end() && !m_index.IsComplete()))
        return 0;
    const std::uint64_t last = range.last == 0xFFFFFFFF ? ErrorsBefore(end, kAllLogs)
                                                        : ErrorsBefore(PointBefore(range.last + 1), kAllLogs);
    return static_cast<std::uint32_t>(last - ErrorsBefore(PointBefore(range.first), kAllLogs));
}

NumberRange MergedRows::Numbers() const
{
    NumberRange numbers = {0xFFFFFFFF, 0};
    for (std::uint32_t file = 0; file < kFileCount; ++file)
    {
        CQmLogRow row;
        const std::uint32_t count = m_index.RowsOf(file);
        if (count > 0 && Read({file, 0}, row))
            numbers.first = std::min(numbers.first, row.time);
        if (count > 0 && Read({file, count - 1}, row))
            numbers.last = std::max(numbers.last, row.time);
    }
    return numbers.first <= numbers.last ? numbers : NumberRange{0, 0};
}

std::vector<std::uint8_t> MergedRows::FindErrorParts(const NumberRange& range, std::size_t parts) const
{
    std::vector<std::uint8_t> logs(parts);
    const std::uint64_t numbers = std::uint64_t{range.last} - range.first + 1;
    const auto mark = [&](std::uint32_t number, std::uint32_t file) {
        if (number >= range.first && number <= range.last && parts > 0)
            logs[(std::uint64_t{number} - range.first) * parts / numbers] |=
                static_cast<std::uint8_t>(1u << file);
    };
    const std::vector<MergePoint>& points = m_index.Points();
    const bool isExact = points.size() < 2 * parts;
    std::vector<PlacedRow> rows;
    for (std::size_t i = 0; i < points.size(); ++i)
    {
        const MergePoint& end = i + 1 < points.size() ? points[i + 1] : m_index.End();
        bool hasErrors = false;
        for (std::uint32_t file = 0; file < kFileCount; ++file)
        {
            const bool has = end.counts[file][kErrorHeader] > points[i].counts[file][kErrorHeader];
            hasErrors = hasErrors || has;
            if (has && !isExact)
                mark(points[i].number, file);
        }
        if (!hasErrors || !isExact)
            continue;
        Merge({points[i], end}, rows);
        for (const PlacedRow& row : rows)
            if (ClassOf(row.record) == kErrorHeader)
                mark(row.record.time, row.place.file);
    }
    return logs;
}

} // namespace logview
