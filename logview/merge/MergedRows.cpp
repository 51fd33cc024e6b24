#include "logview/merge/MergedRows.h"

#include "logview/RecordPages.h"

#include <algorithm>
#include <limits>

namespace logview
{

namespace
{

constexpr RowId kNowhere = {0, 0xFFFFFFFE};
constexpr std::uint32_t kAllClasses = (1u << kRowClasses) - 1;
constexpr std::uint64_t kMostMerged = 8192; // rows that are put in order for a look
constexpr std::size_t kMostLoaded = 3;      // stretches that are kept
constexpr std::uint64_t kNoNumber = std::uint64_t{1} << 32;

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

MergedRows::MergedRows(RowSource& source, std::uint32_t stretchNumbers)
    : DisplayedRows(source), m_index(source, stretchNumbers)
{
}

bool MergedRows::HasShrunk() const
{
    bool hasShrunk = false;
    for (unsigned file = 0; file < kFileCount; ++file)
        hasShrunk = hasShrunk || Source().RowCount(file) < m_index.RowsOf(file);
    return hasShrunk;
}

void MergedRows::Refresh()
{
    if (!m_index.Refresh() && !m_folds.IsEmpty())
        m_folds.Update([this](RowId header, const FoldedRows::Fold& fold) {
            CQmLogRow record;
            return Read(header, record) && record.time == fold.number;
        });
    UpdateFolds();
    FindShown();
}

bool MergedRows::Extend(std::uint64_t rows)
{
    const bool goesOn = m_index.Extend(rows);
    UpdateFolds();
    FindShown();
    return goesOn;
}

// Blocks that have not ended go on.
void MergedRows::UpdateFolds()
{
    if (!m_folds.IsEmpty())
        m_folds.Update([this](RowId header, FoldedRows::Fold& fold) {
            if (!fold.isEnded)
                MakeFold(header, fold.logs != 1u << header.file, fold);
            return true;
        });
}

void MergedRows::Choose(const RowChoice& choice)
{
    m_choice = choice;
    FindShown();
}

void MergedRows::ShowOnly(const std::optional<NumberRange>& range)
{
    m_range = range;
    FindShown();
}

// Counts what is shown, after any change.
void MergedRows::FindShown()
{
    m_loaded.clear();
    ++m_changes;
    const MergePoint end = m_choice.classes == kAllClasses ? LogEnds() : m_index.End();
    m_firstShown = 0;
    m_endShown = ShownBefore(end);
    if (!m_range)
        return;
    m_firstShown = ShownBefore(PointBefore(m_range->first));
    if (m_range->last < 0xFFFFFFFF)
        m_endShown = std::min(m_endShown, ShownBefore(PointBefore(m_range->last + 1)));
}

// ---- Places in the order

// All rows of the logs, of classes unknown.
MergePoint MergedRows::LogEnds() const
{
    MergePoint ends;
    for (unsigned file = 0; file < kFileCount; ++file)
        ends.counts[file][0] = m_index.RowsOf(file);
    return ends;
}

std::uint64_t MergedRows::ShownBefore(const MergePoint& point) const
{
    std::uint64_t shown = 0;
    for (unsigned file = 0; file < kFileCount; ++file)
    {
        if ((m_choice.logs >> file & 1) == 0)
            continue;
        for (unsigned i = 0; i < kRowClasses; ++i)
            shown += (m_choice.classes >> i & 1) != 0 ? point.counts[file][i] : 0;
        shown -= m_folds.HiddenBefore(file, point.counts[file], m_choice.classes);
    }
    return shown;
}

// How many rows of each log come before a number, by their own searches.
MergePoint MergedRows::SearchedPoint(std::uint32_t number, const Stretch& within) const
{
    MergePoint point;
    point.number = number;
    for (unsigned file = 0; file < kFileCount; ++file)
    {
        RecordPages pages(Source(), kLookRows);
        std::uint32_t row = 0;
        std::uint32_t found = 0;
        if (!pages.FindFirst(file, number, row, found))
            row = std::max(row, within.end.RowsOf(file));
        point.counts[file][0] = std::clamp(row, within.begin.RowsOf(file), within.end.RowsOf(file));
    }
    return point;
}

// The stretch where what `measure` answers, which grows with the order, passes `target`.
template <typename Measure>
MergedRows::Stretch MergedRows::Locate(std::uint64_t target, Measure measure) const
{
    const std::vector<MergePoint>& points = m_index.Points();
    const auto next =
        std::upper_bound(points.begin() + 1, points.end(), target,
                         [&](std::uint64_t at, const MergePoint& point) { return at < measure(point); });
    if (next != points.end())
        return {next[-1], *next};
    if (m_index.IsComplete() || measure(m_index.End()) > target)
        return {points.back(), m_index.End()};

    Stretch stretch = {points.back(), LogEnds()};
    std::uint64_t endNumber = 0;
    for (unsigned file = 0; file < kFileCount; ++file)
    {
        CQmLogRow last;
        if (m_index.RowsOf(file) > 0 && Read({file, m_index.RowsOf(file) - 1}, last))
            endNumber = std::max(endNumber, std::uint64_t{last.time} + 1);
    }
    for (unsigned step = 0; stretch.end.Rows() - stretch.begin.Rows() > kMostMerged / 4; ++step)
    {
        // Numbers hardly have gaps, so the target is about here; halving ends the search where they do.
        const std::uint64_t begin = stretch.begin.number;
        const std::uint64_t first = measure(stretch.begin);
        const std::uint64_t rows = std::max<std::uint64_t>(measure(stretch.end), first + 1) - first;
        const double share = static_cast<double>(target - first) / static_cast<double>(rows);
        const double about = share * static_cast<double>(endNumber - begin) + (step % 3 == 0 ? -512 : 512);
        if (endNumber < begin + 2)
            break;
        const std::uint64_t middle =
            step % 3 == 2 ? begin + (endNumber - begin) / 2
                          : begin + static_cast<std::uint64_t>(
                                        std::clamp(about, 1.0, static_cast<double>(endNumber - begin - 1)));
        const MergePoint point = SearchedPoint(static_cast<std::uint32_t>(middle), stretch);
        if (measure(point) <= target)
            stretch.begin = point;
        else
        {
            stretch.end = point;
            endNumber = middle;
        }
    }
    return stretch;
}

// The rows of a stretch in their order; none of one that is too long, which only damage makes.
void MergedRows::Merge(const Stretch& stretch, std::vector<PlacedRow>& rows) const
{
    struct Log
    {
        std::vector<CQmLogRow> records; // and the one behind the stretch
        std::size_t end = 0;
        std::size_t next = 0;
        std::uint64_t key = kNoNumber;

        void FindKey()
        {
            const CQmLogRow* const behind = next + 1 < records.size() ? &records[next + 1] : nullptr;
            key = next < end ? OrderKey(records[next], behind) : kNoNumber;
        }
    };
    rows.clear();
    if (stretch.end.Rows() - stretch.begin.Rows() > kMostMerged)
        return;
    Log logs[kFileCount];
    for (unsigned file = 0; file < kFileCount; ++file)
    {
        Log& log = logs[file];
        const std::uint32_t begin = stretch.begin.RowsOf(file);
        log.end = stretch.end.RowsOf(file) - begin;
        if (log.end == 0)
            continue;
        log.records.resize(log.end + 1);
        const unsigned long wanted = static_cast<unsigned long>(log.records.size());
        log.records.resize(std::min(Source().ReadRows(file, begin, wanted, log.records.data()), wanted));
        log.end = std::min(log.end, log.records.size());
        log.FindKey();
    }
    for (;;)
    {
        unsigned first = 0;
        for (unsigned file = 1; file < kFileCount; ++file)
            if (logs[file].key < logs[first].key)
                first = file;
        Log& log = logs[first];
        if (log.key == kNoNumber)
            return;
        const auto row = static_cast<std::uint32_t>(stretch.begin.RowsOf(first) + log.next);
        rows.push_back({{first, row}, log.records[log.next], 0});
        ++log.next;
        log.FindKey();
    }
}

bool MergedRows::Read(RowId place, CQmLogRow& record) const
{
    return Source().ReadRows(place.file, place.row, 1, &record) == 1;
}

// Counts the rows of a stretch up to the one for which `isReached`.
template <typename IsReached>
MergePoint MergedRows::PointWithin(const Stretch& stretch, IsReached isReached) const
{
    std::vector<PlacedRow> rows;
    Merge(stretch, rows);
    MergePoint point = stretch.begin;
    for (const PlacedRow& row : rows)
    {
        if (isReached(row))
            break;
        ++point.counts[row.place.file][ClassOf(row.record)];
    }
    return point;
}

MergePoint MergedRows::PointBefore(RowId place) const
{
    const auto measure = [&](const MergePoint& point) { return std::uint64_t{point.RowsOf(place.file)}; };
    return PointWithin(Locate(place.row, measure), [&](const PlacedRow& row) { return row.place == place; });
}

MergePoint MergedRows::PointBefore(std::uint32_t number) const
{
    const std::vector<MergePoint>& points = m_index.Points();
    const auto next =
        std::upper_bound(points.begin() + 1, points.end(), number,
                         [](std::uint32_t at, const MergePoint& point) { return at < point.number; });
    if (next == points.end() && !m_index.IsComplete())
        return SearchedPoint(number, {points.back(), LogEnds()});
    return PointWithin({next[-1], next == points.end() ? m_index.End() : *next},
                       [&](const PlacedRow& row) { return row.record.time >= number; });
}

// ---- Displayed rows

int MergedRows::RowCount() const
{
    const std::uint64_t rows = m_endShown > m_firstShown ? m_endShown - m_firstShown : 0;
    return static_cast<int>(std::min<std::uint64_t>(rows, kMaxRows));
}

bool MergedRows::IsChosen(const PlacedRow& row) const
{
    return (m_choice.logs >> row.place.file & 1) != 0 && (m_choice.classes >> ClassOf(row.record) & 1) != 0 &&
           !m_folds.IsHidden(row.place);
}

// The stretch with a row, counted over all that are shown.
const MergedRows::ShownStretch& MergedRows::LoadShown(std::uint64_t row) const
{
    const auto found = std::find_if(m_loaded.begin(), m_loaded.end(), [&](const ShownStretch& each) {
        return row >= each.first && row - each.first < each.rows.size();
    });
    if (found != m_loaded.end())
        return *found;
    if (m_loaded.size() == kMostLoaded)
        m_loaded.erase(m_loaded.begin());
    const Stretch stretch = Locate(row, [this](const MergePoint& point) { return ShownBefore(point); });
    ShownStretch& shown = m_loaded.emplace_back();
    shown.first = ShownBefore(stretch.begin);
    Merge(stretch, shown.rows);
    std::erase_if(shown.rows, [this](const PlacedRow& each) { return !IsChosen(each); });
    return shown;
}

RowId MergedRows::Translate(std::int64_t row, int& depth) const
{
    depth = 0;
    if (!IsShown(row))
        return kNowhere;
    const std::uint64_t at = m_firstShown + static_cast<std::uint64_t>(row);
    const ShownStretch& shown = LoadShown(at);
    return at - shown.first < shown.rows.size() ? shown.rows[at - shown.first].place : kNowhere;
}

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

int MergedRows::FindRow(RowId place) const
{
    const std::uint64_t before = ShownBefore(PointBefore(place));
    const std::int64_t row = static_cast<std::int64_t>(before) - static_cast<std::int64_t>(m_firstShown);
    const std::int64_t found = IsDisplayed(place) ? row : row - 1;
    return static_cast<int>(std::clamp<std::int64_t>(found, kNoRow, RowCount() - 1));
}

bool MergedRows::IsDisplayed(RowId place) const
{
    PlacedRow row = {place, {}, 0};
    if (place.file >= kFileCount || place.row >= m_index.RowsOf(place.file) || !Read(place, row.record) ||
        !IsChosen(row))
        return false;
    const std::uint64_t before = ShownBefore(PointBefore(place));
    return before >= m_firstShown && before < m_endShown;
}

int MergedRows::FindNumber(std::uint32_t number) const
{
    const std::uint64_t before = std::max(ShownBefore(PointBefore(number)), m_firstShown);
    return static_cast<int>(
        std::min<std::uint64_t>(before - m_firstShown, static_cast<std::uint64_t>(RowCount())));
}

// ---- Folding

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
    return FindErrorAt(wanted, logs);
}

// The error with so many of these logs before it.
std::optional<RowId> MergedRows::FindErrorAt(std::uint64_t wanted, std::uint32_t logs) const
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
            return each.place;
    return std::nullopt;
}

std::optional<RowId> MergedRows::FindErrorFrom(std::uint32_t number) const
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
