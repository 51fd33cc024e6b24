#include "logview/Excerpt.h"

#include "logview/LogNames.h"

#include <algorithm>

namespace logview
{

namespace
{

constexpr std::size_t kNameWidth = 7; // of the longest one
constexpr std::size_t kIndent = 2;    // blanks a level

std::string Padded(std::string text, std::size_t width)
{
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

} // namespace

RowId RowList::Translate(std::int64_t row, int& depth) const
{
    depth = 0;
    return IsShown(row) ? m_rows[static_cast<std::size_t>(row)] : kNowhere;
}

Excerpt::Excerpt(RowSource& source, const DisplayedRows& rows, std::vector<RowId> headers, int first,
                 int last, std::size_t maxCharacters)
    : m_displayed(rows), m_list(source, std::move(headers)), m_headers(source, m_list, 0, m_list.RowCount()),
      m_rows(source, rows, first, last), m_maxCharacters(maxCharacters), m_file(rows.Translate(first).file)
{
    for (const int row : {first, std::min(last, rows.RowCount() - 1)})
    {
        CQmLogRow record;
        if (rows.ReadStyle(row, record))
            m_numberWidth = std::max(m_numberWidth, std::to_string(record.time).size() + 1);
    }
}

bool Excerpt::Step()
{
    if (m_isTooLong)
        return false;
    if (m_headers.Next())
    {
        if (m_headers.Record())
            AddRow(*m_headers.Record(), m_headers.Line());
        return !m_isTooLong;
    }
    if (!m_rows.Next())
        return false;
    const CachedRow* const row = m_rows.Record();
    if (!row)
        return true;
    AddRow(*row, m_rows.Line());
    if (row->foldable && !row->expanded && !m_isTooLong)
        AddFolded(*row, m_displayed.CountFolded(m_rows.Row(), *row));
    return !m_isTooLong;
}

void Excerpt::AddRow(const PlacedRow& row, std::string_view line)
{
    const char* const log = GetLogName(static_cast<int>(row.place.file));
    m_head = row.place.file == m_file ? "  " : "* ";
    m_head += Padded(log ? log : "", kNameWidth) + ' ';
    m_head += Padded('#' + std::to_string(row.record.time), m_numberWidth) + "  ";
    AddLine(row.record.indent, line);
}

void Excerpt::AddFolded(const PlacedRow& row, std::uint32_t count)
{
    m_head.assign(m_head.size(), ' ');
    const std::string rows = count == 0 ? "rows" : count == 1 ? "1 row" : std::to_string(count) + " rows";
    AddLine(row.record.indent + std::size_t{1}, "\u2026 " + rows + " folded");
}

// `m_head`, and a text.
void Excerpt::AddLine(std::size_t indent, std::string_view text)
{
    m_line.assign(m_head.begin(), m_head.end());
    m_line.append(indent * kIndent, ' ');
    ZEMA::ToWide(text.data(), text.size(), m_wide);
    std::replace_if(
        m_wide.begin(), m_wide.end(), [](auto unit) { return unit < ' '; }, ZEMA::WideChar{' '});
    m_line += m_wide;
    m_line.resize(m_line.find_last_not_of(ZEMA::WideChar{' '}) + 1);
    m_line.append({'\r', '\n'});
    m_isTooLong = m_characters.Size() + m_line.size() > m_maxCharacters;
    if (!m_isTooLong)
        m_characters.Append(m_line);
}

} // namespace logview
