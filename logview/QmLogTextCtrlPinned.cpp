// The headers that stay at the top of the log text window while the rows of their blocks scroll.
#include "QmLogTextCtrl.h"
#include "logview/ShownRows.h"

namespace
{

constexpr std::size_t kMostPinned = 5;

}

void CQmLogTextCtrl::SetPinsHeaders(bool pins)
{
    m_pinsHeaders = pins;
    OnRowsChanged();
}

bool CQmLogTextCtrl::GetPinsHeaders() const
{
    return m_pinsHeaders;
}

// The displayed headers of the blocks that a row lies in, but for itself.
const std::vector<int>& CQmLogTextCtrl::FindHeaders(int row)
{
    const logview::MergedRows& merged = m_rows->merged;
    std::vector<int>& headers = m_rows->pinned.headers;
    if (m_rows->pinned.row == row && m_rows->pinned.changes == merged.Changes())
        return headers;
    headers.clear();
    m_rows->pinned.row = row;
    m_rows->pinned.changes = merged.Changes();
    for (const logview::RowId& header : merged.FindPath(merged.Translate(row)))
        if (merged.IsDisplayed(header))
            if (const int at = merged.FindRow(header); at != row)
                headers.push_back(at);
    if (headers.size() > kMostPinned)
        headers.erase(headers.begin(), headers.end() - kMostPinned);
    return headers;
}

// The headers that cover `rows` rows: those of the first row below, or of the last one covered, where that
// has ended a block and the one below wants fewer.
std::vector<int> CQmLogTextCtrl::FindPinned(int rows)
{
    std::vector<int> headers = FindHeaders(GetTopRow() + rows);
    if (static_cast<int>(headers.size()) < rows)
        headers = FindHeaders(GetTopRow() + rows - 1);
    if (static_cast<int>(headers.size()) > rows)
        headers.erase(headers.begin(), headers.end() - rows);
    return headers;
}

int CQmLogTextCtrl::GetRowsAbove(int row)
{
    if (!m_pinsHeaders || !m_rows->showsMerged || row < 0 || row >= GetRowCount())
        return CQmTextCtrl::GetRowsAbove(row);
    return static_cast<int>(FindHeaders(row).size());
}

void CQmLogTextCtrl::DrawCover(CDC& dc, const CRect& area, int rows)
{
    dc.FillSolidRect(area, GetWindowColor());
    dc.SetBkMode(TRANSPARENT);
    const int height = GetRowHeight();
    const int margin = GetMarginWidth();
    int y = static_cast<int>(area.top);
    for (const int header : FindPinned(rows))
    {
        DrawRow(dc, static_cast<int>(area.left) + margin + GetRowLeft(header), y, header);
        DrawMargin(dc, CRect(area.left, y, area.left + margin, y + height), header);
        y += height;
    }
    dc.FillSolidRect(area.left, area.bottom - 1, area.Width(), 1, ::GetSysColor(COLOR_3DSHADOW));
}

bool CQmLogTextCtrl::OnCoverClick(int line, CPoint)
{
    const std::vector<int> headers = FindPinned(GetCoveredRows());
    if (line < 0 || line >= static_cast<int>(headers.size()))
        return false;
    SetFocus();
    FocusInContext(headers[static_cast<std::size_t>(line)], 0, 1);
    UpdateFollow();
    return true;
}
