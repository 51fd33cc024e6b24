#include "logview/RecordPages.h"

#include <algorithm>

namespace logview
{

std::uint32_t LineLength(std::uint32_t offset, std::uint64_t end)
{
    return end < offset ? 0 : static_cast<std::uint32_t>(std::min<std::uint64_t>(end - offset, 0xFFFFFFFF));
}

std::string_view LastLine(std::string_view text)
{
    const std::size_t lineFeed = text.find('\n');
    return lineFeed == std::string_view::npos ? text : text.substr(0, lineFeed + 1);
}

bool RecordPages::Read(RowId place, CQmLogRow& record)
{
    if (place.file >= kFileCount)
        return false;
    Page& page = m_pages[place.file];
    if (!page.IsLoaded() || place.row < page.first || place.row >= page.End())
    {
        if (page.IsLoaded() && page.atEnd && place.row >= page.first)
            return false;
        // A walk towards the beginning takes the page that ends here.
        const bool backwards = page.IsLoaded() && place.row + 1 == page.first;
        Load(place.file, backwards && place.row >= m_pageRows ? place.row + 1 - m_pageRows
                         : backwards                          ? 0
                                                              : place.row);
        if (place.row < page.first || place.row >= page.End())
            return false;
    }
    record = page.rows[place.row - page.first];
    return true;
}

bool RecordPages::ReadLength(RowId place, std::uint32_t& length)
{
    CQmLogRow record;
    if (!Read(place, record))
        return false;
    CQmLogRow next;
    const bool last = !Read({place.file, place.row + 1}, next);
    length = LineLength(record.offset,
                        last ? std::uint64_t{m_source.TextSize(place.file)} + 1 : std::uint64_t{next.offset});
    return true;
}

bool RecordPages::FindFirst(std::uint32_t file, std::uint32_t number, std::uint32_t& row,
                            std::uint32_t& found)
{
    Page& page = m_pages[file];
    CQmLogRow record;
    if (page.IsLoaded() && !page.atEnd && page.rows.back().time < number)
        Read({file, page.End()}, record); // a walk in order of numbers has come to the end of its page
    if (!FindInPage(page, number, row))
    {
        unsigned long time = 0;
        unsigned long answer = 0;
        row = 0;
        ++m_reads;
        if (!m_source.Find(file, number, true, time, answer))
        {
            page = {0, true, {}};
            return false;
        }
        row = static_cast<std::uint32_t>(answer);
    }

    if (!Read({file, row}, record))
        return false;
    found = record.time;
    if (found < number) // the search answers the last row when all come before
        ++row;
    return found >= number;
}

void RecordPages::Load(std::uint32_t file, std::uint32_t first)
{
    ++m_reads;
    Page& page = m_pages[file];
    page.first = first;
    page.rows.resize(m_pageRows);
    const unsigned long count = m_source.ReadRows(file, first, m_pageRows, page.rows.data());
    page.atEnd = count < m_pageRows;
    page.rows.resize(std::min<std::size_t>(count, m_pageRows));
}

// Whether the answer for `number` lies in the page or at its end, which then is the log's.
bool RecordPages::FindInPage(const Page& page, std::uint32_t number, std::uint32_t& row) const
{
    if (!page.IsLoaded() || (page.first > 0 && page.rows.front().time > number) ||
        (!page.atEnd && page.rows.back().time < number))
        return false;
    const auto at = std::lower_bound(page.rows.begin(), page.rows.end(), number,
                                     [](const CQmLogRow& a, std::uint32_t b) { return a.time < b; });
    row = page.first + static_cast<std::uint32_t>(at - page.rows.begin());
    return true;
}

} // namespace logview
