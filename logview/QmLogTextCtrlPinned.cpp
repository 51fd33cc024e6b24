// The headers that stay at the top of the log text window while the rows of their blocks scroll.
#include "QmLogTextCtrl.h"
#include "logview/ShownRows.h"
#include "vkgrafic/WindowColors.h"

void CQmLogTextCtrl::SetPinsHeaders(bool pins)
{
    m_pinsHeaders = pins;
    OnRowsChanged();
}

bool CQmLogTextCtrl::GetPinsHeaders() const
{
    return m_pinsHeaders;
}

int CQmLogTextCtrl::GetRowsAbove(int row)
{
    if (!m_pinsHeaders || !m_rows->showsMerged || row < 0 || row >= GetRowCount())
        return CQmTextCtrl::GetRowsAbove(row);
    return static_cast<int>(m_rows->pinned.Around(row).size());
}

void CQmLogTextCtrl::DrawCover(CDC& dc, const CRect& area, int rows)
{
    dc.FillSolidRect(area, GetWindowColor());
    dc.SetBkMode(TRANSPARENT);
    const int height = GetRowHeight();
    const int margin = GetMarginWidth();
    int y = static_cast<int>(area.top);
    for (const int header : m_rows->pinned.Covering(GetTopRow(), rows))
    {
        DrawRow(dc, static_cast<int>(area.left) + margin + GetRowLeft(header), y, header);
        DrawMargin(dc, CRect(area.left, y, area.left + margin, y + height), header);
        y += height;
    }
    dc.FillSolidRect(area.left, area.bottom - 1, area.Width(), 1,
                     VkGrafic::WindowColors(m_hWnd)[VkGrafic::UiColor::Edge]);
}

bool CQmLogTextCtrl::OnCoverClick(int line, CPoint)
{
    const std::vector<int> headers = m_rows->pinned.Covering(GetTopRow(), GetCoveredRows());
    if (line < 0 || line >= static_cast<int>(headers.size()))
        return false;
    SetFocus();
    FocusInContext(headers[static_cast<std::size_t>(line)], 0, 1);
    UpdateFollow();
    return true;
}
