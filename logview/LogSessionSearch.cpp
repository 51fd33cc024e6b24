#include "logview/LogSession.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace logview
{

// The row of any log with `number` or the smallest greater one; of logs with the same, the first.
bool LogSession::FindFirst(RecordPages& pages, std::uint32_t number, RowId& found,
                           std::uint32_t& foundNumber) const
{
    bool any = false;
    for (std::uint32_t file = 0; file < kFileCount; ++file)
    {
        std::uint32_t row = 0;
        std::uint32_t time = 0;
        if (!pages.FindFirst(file, number, row, time) || (any && time >= foundNumber))
            continue;
        any = true;
        found = {file, row};
        foundNumber = time;
        if (time == number)
            break;
    }
    return any;
}

bool LogSession::Find(unsigned long time, bool forward, int& file, unsigned long& fileRow) const
{
    const unsigned long untouched =
        static_cast<std::uint32_t>(~time); // neither the number sought, nor trusted
    bool any = false;
    unsigned long best = 0;
    for (unsigned at = 0; at < kFileCount; ++at)
    {
        unsigned long found = untouched;
        unsigned long row = 0;
        if (!m_source.Find(at, time, forward, found, row))
            continue;
        if (found == untouched) // a log of one row leaves its number untold
        {
            CQmLogRow record;
            if (m_source.ReadRows(at, row, 1, &record) == 0)
                continue;
            found = record.time;
        }
        if (found != time && any && found >= best)
            continue;
        any = true;
        best = found;
        file = static_cast<int>(at);
        fileRow = row;
        if (found == time)
            break;
    }
    return any;
}

bool LogSession::FindNeighbour(int current, int row, bool up, bool otherFile, int& file,
                               unsigned long& fileRow) const
{
    RecordPages pages(m_source, otherFile ? kWalkRows : 1);
    RowId place = {static_cast<std::uint32_t>(current), static_cast<std::uint32_t>(row)};
    CQmLogRow record;
    if (row < 0 || !pages.Read(place, record))
        return false;

    const std::uint32_t step = up ? 0xFFFFFFFF : 1; // numbers and rows count round
    std::uint32_t time = record.time + step;
    if (!Find(time, up, file, fileRow)) // looking forward on the way up is deliberate
        return false;
    bool moved = false;
    while (otherFile && file == current)
    {
        // A search that stays, or leads back, makes no progress.
        const std::uint32_t at = static_cast<std::uint32_t>(fileRow);
        if (moved && (up ? at >= place.row : at <= place.row))
            return false;
        moved = true;
        place.row = at;

        // Numbers that the current log has one after the other need no search each.
        while (pages.Read(place, record) && record.time == time)
        {
            time += step;
            place.row += step;
        }
        if (place.row == at)
            time += step;
        else
            place.row -= step;
        if (!Find(time, up, file, fileRow))
            return false;
    }
    return true;
}

int LogSession::Reveal(RowId place)
{
    CQmLogBranch folded;
    folded.SetCount(m_root.GetCount());
    m_root = std::move(folded);
    return UnfoldTo(place);
}

int LogSession::UnfoldTo(RowId place)
{
    RecordPages pages(m_source, kWalkRows);
    CQmLogRow record;
    if (!pages.Read(place, record) || record.time == kMaxNumber)
        return kNoRow;
    const CQmLogBranch* stretch = &m_root;
    std::int64_t first = 0; // where its first row is displayed
    for (;;)
    {
        const RowId begin = stretch->GetFirst();
        std::uint32_t end = 0; // of its rows that come before `place`, or are it
        std::uint32_t next = 0;
        pages.FindFirst(begin.file, record.time + 1, end, next);
        end = std::min(end, begin.row + stretch->GetCount());
        if (end <= begin.row)
            return kNoRow;
        const std::uint32_t last = end - 1;
        const auto child = [&] {
            return std::lower_bound(
                stretch->GetChildren().begin(), stretch->GetChildren().end(), last,
                [](const CQmLogBranch& each, std::uint32_t row) { return each.GetHeaderRow() < row; });
        };
        const std::int64_t row =
            std::accumulate(stretch->GetChildren().begin(), child(), first + (last - begin.row),
                            [](std::int64_t rows, const CQmLogBranch& elder) {
                                return rows + static_cast<std::int64_t>(elder.GetSize());
                            });
        if (RowId{begin.file, last} == place)
        {
            RememberEnds();
            return static_cast<int>(row);
        }
        const auto isUnfolded = [&] {
            return child() != stretch->GetChildren().end() && child()->GetHeaderRow() == last;
        };
        if (!isUnfolded())
            Unfold(pages, row, static_cast<std::uint64_t>(kMaxRows - RowCount()));
        if (!isUnfolded())
            return kNoRow;
        stretch = &*child();
        first = row + 1;
    }
}

HiddenRows LogSession::CountHidden(std::uint32_t file) const
{
    RecordPages pages(m_source, 1);
    const std::uint32_t count = CountRows(file);
    const std::uint32_t mainCount = CountRows(0);
    CQmLogRow first;
    CQmLogRow last;
    if (mainCount == 0 || !pages.Read({0, 0}, first) || !pages.Read({0, mainCount - 1}, last))
        return {count, 0};

    // Most logs need no search: their own first and last rows tell.
    HiddenRows hidden;
    CQmLogRow own;
    std::uint32_t row = 0;
    std::uint32_t number = 0;
    if (count > 0 && pages.Read({file, 0}, own) && own.time < first.time)
    {
        pages.FindFirst(file, first.time, row, number);
        hidden.before = row;
    }
    if (count > 0 && last.time != kMaxNumber && pages.Read({file, count - 1}, own) && own.time > last.time)
    {
        pages.FindFirst(file, last.time + 1, row, number);
        hidden.after = count - std::min(row, count);
    }
    return hidden;
}

int LogSession::FindError(int row, bool forward) const
{
    RecordPages pages(m_source, kWalkRows);
    const std::int64_t step = forward ? 1 : -1;
    CQmLogRow record;
    for (std::int64_t at = row + step; at > 0 && IsShown(at) && pages.Read(Translate(at), record); at += step)
    {
        if (record.blockBegin != 0 && record.kind == kErrorKind)
            return static_cast<int>(at);
    }
    return kNoRow;
}

void LogSession::FindBlock(int current, int row, int& first, int& last) const
{
    RecordPages pages(m_source, kWalkRows);
    const std::uint32_t file = static_cast<std::uint32_t>(current);
    const auto read = [&](int at, CQmLogRow& record) {
        return pages.Read({file, static_cast<std::uint32_t>(at)}, record);
    };

    CQmLogRow header;
    first = row;
    while (read(first, header) && header.blockBegin == 0 && first > 0)
        --first;

    CQmLogRow record;
    last = row;
    while (last < kMaxRows && read(last + 1, record) && record.indent >= header.indent &&
           (record.indent != header.indent || record.blockBegin == 0))
        ++last;
}

} // namespace logview
