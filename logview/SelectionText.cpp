#include "logview/SelectionText.h"

#include <algorithm>

namespace logview
{

namespace
{

struct LinePart
{
    std::size_t begin = 0;
    std::size_t end = 0;
};

// Bytes of the line of a row that are selected.
LinePart SelectedPart(const Selection& selection, int row, std::size_t size)
{
    const auto within = [size](int column) {
        return std::min(size, static_cast<std::size_t>(std::max(column, 0)));
    };
    LinePart part;
    part.end = row == selection.endRow ? within(selection.endColumn) : size;
    part.begin = row == selection.beginRow ? std::min(within(selection.beginColumn), part.end) : 0;
    return part;
}

} // namespace

std::string SelectedBytes(RowSource& source, const DisplayedRows& rows, const Selection& selection)
{
    std::string text;
    SelectedRows selected(source, rows, selection.beginRow, selection.endRow);
    while (selected.Next())
    {
        const LinePart part = SelectedPart(selection, selected.Row(), selected.Line().size());
        if (text.size() + part.end - part.begin > kMaxSelectionBytes)
            break;
        text += selected.Line().substr(part.begin, part.end - part.begin);
    }
    return text;
}

SelectionCopy::SelectionCopy(RowSource& source, const DisplayedRows& rows, const Selection& selection,
                             std::size_t maxBytes)
    : m_rows(source, rows, selection.beginRow, selection.endRow), m_selection(selection), m_maxBytes(maxBytes)
{
}

bool SelectionCopy::Step()
{
    if (m_isTooLong || !m_rows.Next())
        return false;
    const std::string_view line = m_rows.Line();
    const auto [begin, end] = SelectedPart(m_selection, m_rows.Row(), line.size());
    m_isTooLong = m_bytes.Size() + end - begin > m_maxBytes;
    if (m_isTooLong)
        return false;
    m_bytes.Append(line.substr(begin, end - begin));
    ZEMA::ToWide(line.data(), line.size(), m_wide);
    std::basic_string_view<ZEMA::WideChar> characters = m_wide;
    if (begin > 0 || end < line.size())
    {
        m_cells.Take(line.data(), line.size());
        const auto unit = [this](std::size_t column) {
            return static_cast<std::size_t>(m_cells.UnitOf(static_cast<int>(column)));
        };
        characters = characters.substr(unit(begin), unit(end) - unit(begin));
    }
    m_characters.Append(characters);
    return true;
}

} // namespace logview
