#include "logview/DisplayedRows.h"

#include "logview/RecordPages.h"

#include <algorithm>

namespace logview
{

namespace
{

constexpr unsigned long kMaxColumns = std::numeric_limits<int>::max();

}

bool DisplayedRows::ReadExpanded(int row, bool& expanded) const
{
    if (!IsShown(row))
        return false;
    RecordPages pages(m_source, kLookRows);
    PlacedRow header;
    header.place = Translate(row);
    if (!pages.Read(header.place, header.record))
        return false;
    CQmLogRow nextOfLog;
    const bool goesOn = pages.Read({header.place.file, header.place.row + 1}, nextOfLog);
    PlacedRow next;
    next.place = Translate(std::int64_t{row} + 1);
    const bool hasNext = pages.Read(next.place, next.record);
    return IsFoldable({header, hasNext ? &next : nullptr, goesOn ? &nextOfLog : nullptr}, expanded);
}

bool DisplayedRows::ReadStyle(int row, CQmLogRow& record) const
{
    RecordPages pages(m_source, 1);
    return pages.Read(Translate(row), record);
}

int DisplayedRows::ColumnCount(int row) const
{
    RecordPages pages(m_source, kLookRows);
    std::uint32_t length = 0;
    if (!pages.ReadLength(Translate(row), length))
        return 0;
    return static_cast<int>(std::min<unsigned long>(length, kMaxColumns));
}

bool DisplayedRows::ReadLine(int row, std::string& text) const
{
    RecordPages pages(m_source, kLookRows);
    const RowId place = Translate(row);
    CQmLogRow record;
    std::uint32_t length = 0;
    if (!pages.Read(place, record) || !pages.ReadLength(place, length))
        return false;

    // A damaged index can tell any length: no more is made room for than the log has.
    const unsigned long size = m_source.TextSize(place.file);
    const unsigned long rest = size > record.offset ? size - record.offset : 0;
    const unsigned long wanted = std::min({static_cast<unsigned long>(length), rest, kMaxColumns});
    text.resize(wanted);
    text.resize(std::min(m_source.ReadText(place.file, record.offset, wanted, text.data()), wanted));
    CQmLogRow next;
    if (!pages.Read({place.file, place.row + 1}, next)) // as was known before the text was read
        text.resize(LastLine(text).size());
    return true;
}

} // namespace logview
