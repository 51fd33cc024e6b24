#include "msgservice/session/LogPages.h"

#include <algorithm>

namespace msgservice
{

namespace
{

constexpr unsigned long kPageRows = 3276; // close to 64 KiB
constexpr unsigned long kPageText = 64 * 1024;
constexpr unsigned long kFewRows = 16; // around a row that is not read in sequence
constexpr unsigned long kFewText = 512;
constexpr unsigned long kNearRows = kPageRows / 8; // when so many are left out, it is still a sequence
constexpr unsigned long kNearText = kPageText / 8;

} // namespace

// The size of the text first: rows go out before their text, so every line that begins in it has its row.
LogPages::LogPages(const std::string& name)
{
    m_reader.SetFilePath(name.c_str());
    m_textSize = m_reader.GetLogFileSize();
    m_rowCount = m_reader.GetRowCount();
    m_textEnd = m_rowCount;
    // The last rows may have no text yet. They are found from the end and not by bisection: a single damaged
    // offset must not hide the rows after it.
    CQmLogRow row;
    while (m_textEnd > 0 && ReadRow(m_textEnd - 1, row) && row.offset >= m_textSize)
        --m_textEnd;
}

unsigned long LogPages::FindRow(std::uint32_t number)
{
    unsigned long found = 0;
    unsigned long index = 0;
    return m_reader.Find(number, true, found, index) ? index : 0;
}

bool LogPages::ReadApart(unsigned long index, CQmLogRow& row, std::string_view& text)
{
    const bool last = index + 1 >= m_rowCount;
    const bool held = HoldsRow(index) && (last || HoldsRow(index + 1));
    if (!held && !LoadRows(index))
        return false;
    row = Row(index);
    // The next row's offset ends the line. A row that has none yet, or a wrong one, ends it before its begin.
    const bool hasNext = HoldsRow(index + 1); // else it is the last one, or the rows have become fewer
    const unsigned long begin = row.offset;
    const unsigned long next = hasNext ? Row(index + 1).offset : m_textSize;
    const unsigned long end = std::max(begin, std::min(next, m_textSize));
    if (!LoadText(begin, end))
        return false;
    text = hasNext ? Text(begin, end) : FirstLine(Text(begin, end));
    FindStretch(index);
    return true;
}

unsigned long LogPages::Skip(unsigned long index, std::string_view wanted)
{
    CQmLogRow row;
    std::string_view text;
    if (!Read(index, row, text) || index < m_stretchBegin || index >= m_stretchEnd)
        return index;
    const unsigned long begin = Row(index).offset;
    const std::size_t found = Text(begin, Row(m_stretchEnd).offset).find(wanted);
    if (found == std::string_view::npos)
        return m_stretchEnd;
    const CQmLogRow* const rows = m_rows.data();
    const CQmLogRow* const behind =
        std::upper_bound(rows + (index - m_firstRow), rows + (m_stretchEnd - m_firstRow), begin + found,
                         [](std::size_t at, const CQmLogRow& held) { return at < held.offset; });
    return m_firstRow + static_cast<unsigned long>(behind - rows) - 1;
}

// With the row after it, whose offset ends its line. What is asked for in sequence, backwards too, is read by
// the page. So are the headers of small blocks: to read what lies between them costs less than a read for
// each of them.
bool LogPages::LoadRows(unsigned long index)
{
    if (m_failed || index >= m_rowCount)
        return false;
    const bool onward = index - m_firstRow <= m_rowsHeld + kNearRows;
    const bool backward = index + 1 == m_firstRow;
    const unsigned long count = onward || backward ? kPageRows : kFewRows;
    m_firstRow = backward ? index + 2 - std::min(index + 2, count) : index;
    m_rows.resize(std::max<std::size_t>(m_rows.size(), count));
    m_rowsHeld = m_reader.ReadRows(m_firstRow, std::min(count, m_rowCount - m_firstRow), m_rows.data());
    m_stretchEnd = 0;
    m_failed = !HoldsRow(index);
    return !m_failed;
}

bool LogPages::LoadText(unsigned long begin, unsigned long end)
{
    const unsigned long from = begin - m_textStart; // wraps, to more than there is, for one before it
    if (begin == end || (from <= m_textHeld && end - begin <= m_textHeld - from))
        return true;
    if (m_failed)
        return false;
    const bool onward = begin >= m_textStart && from <= m_textHeld + kNearText;
    const unsigned long page = onward ? kPageText : kFewText;
    const unsigned long size = std::min(std::max(end - begin, page), m_textSize - begin);
    if (m_text.size() < size)
    {
        m_text = std::vector<char>(); // first, for two long lines may be more than the memory holds
        m_text.resize(size);
    }
    m_textStart = begin;
    m_textHeld = m_reader.ReadText(begin, size, m_text.data());
    m_stretchEnd = 0;
    m_failed = m_textHeld == 0;
    return !m_failed;
}

// The held bytes of a text, less than `end - begin` when the file has become shorter.
std::string_view LogPages::Text(unsigned long begin, unsigned long end) const
{
    if (begin == end)
        return {};
    const unsigned long from = begin - m_textStart;
    return {m_text.data() + from, std::min(end - begin, m_textHeld - from)};
}

// Bytes after the last row's line have no row. When the row has come meanwhile, they are not missed.
std::string_view LogPages::FirstLine(std::string_view text)
{
    const std::size_t lineFeed = text.find('\n');
    const std::string_view rest = lineFeed == std::string_view::npos ? "" : text.substr(lineFeed + 1);
    CQmLogRow row;
    if (!rest.empty() && m_reader.ReadRows(m_rowCount, 1, &row) == 0)
        m_linesWithoutRow = static_cast<unsigned long>(std::count(rest.begin(), rest.end(), '\n')) +
                            (rest.ends_with('\n') ? 0 : 1);
    return text.substr(0, text.size() - rest.size());
}

// Row `index` and its text are held.
void LogPages::FindStretch(unsigned long index)
{
    const unsigned long textEnd = m_textStart + m_textHeld;
    unsigned long end = index;
    while (HoldsRow(end + 1) && Row(end).offset < Row(end + 1).offset && Row(end + 1).offset <= textEnd)
        ++end;
    m_stretchBegin = index;
    m_stretchEnd = end;
}

} // namespace msgservice
