#include "logview/merge/MergedRows.h"

#include "logview/RecordPages.h"

#include <algorithm>
#include <limits>

namespace logview
{

namespace
{

constexpr std::uint32_t kAllClasses = (1u << kRowClasses) - 1;
constexpr std::uint64_t kMostMerged = 8192; // rows that are put in order for a look
constexpr std::size_t kMostLoaded = 3;      // stretches that are kept
constexpr std::uint64_t kNoNumber = std::uint64_t{1} << 32;

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
MergedRows::Stretch MergedRows::Locate(std::uint64_t target, const Measure& measure) const
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

} // namespace logview
