#include "logview/SelectedRows.h"

#include <algorithm>

namespace logview
{

namespace
{

constexpr int kRowsTogether = 256;

}

SelectedRows::SelectedRows(RowSource& source, const DisplayedRows& rows, int first, int last)
    : m_cache(source), m_rows(rows), m_first(std::max(first, 0)),
      m_end(last < rows.RowCount() ? last + 1 : rows.RowCount()), m_next(m_first), m_prepared(m_first)
{
}

bool SelectedRows::Next()
{
    if (m_next >= m_end)
        return false;
    m_row = m_next++;
    if (m_row == m_prepared)
    {
        const int count = std::min(kRowsTogether, m_end - m_row);
        m_cache.Prepare(m_rows, m_row, count);
        m_prepared = m_row + count;
    }
    const CachedRow* const cached = m_cache.Get(m_row);
    m_record = cached && cached->readable ? cached : nullptr;
    m_line = m_record ? m_record->text : std::string_view();
    if (m_record && m_record->length > RowCache::kLineBytes && m_rows.ReadLine(m_row, m_whole))
        m_line = m_whole;
    return true;
}

double SelectedRows::Progress() const
{
    return m_end > m_first ? static_cast<double>(m_next - m_first) / (m_end - m_first) : 1;
}

} // namespace logview
