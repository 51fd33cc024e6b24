#include "logview/merge/PinnedHeaders.h"

namespace logview
{

const std::vector<int>& PinnedHeaders::Around(int row)
{
    if (m_row == row && m_changes == m_merged.Changes())
        return m_headers;
    m_headers.clear();
    m_row = row;
    m_changes = m_merged.Changes();
    for (const RowId& header : m_merged.FindPath(m_merged.Translate(row)))
        if (m_merged.IsDisplayed(header))
            if (const int at = m_merged.FindRow(header); at != row)
                m_headers.push_back(at);
    if (m_headers.size() > kMost)
        m_headers.erase(m_headers.begin(), m_headers.end() - kMost);
    return m_headers;
}

std::vector<int> PinnedHeaders::Covering(int topRow, int rows)
{
    std::vector<int> headers = Around(topRow + rows);
    if (static_cast<int>(headers.size()) < rows)
        headers = Around(topRow + rows - 1);
    if (static_cast<int>(headers.size()) > rows)
        headers.erase(headers.begin(), headers.end() - rows);
    return headers;
}

} // namespace logview
