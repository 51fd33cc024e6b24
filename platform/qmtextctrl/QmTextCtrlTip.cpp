// The text window's tip: when it comes, and when it goes.
#include "QmTextCtrlApply.h"
#include "QmTextTip.h"

#include <algorithm>

namespace
{
constexpr UINT kTipInterval = 100;           // milliseconds, while it shows
constexpr std::size_t kLookedAt = 16 * 1024; // bytes: a longer line does not fit in any case
} // namespace

void CQmTextCtrl::SetLineTips(bool on)
{
    HideTip();
    m_tip = on ? std::make_unique<CQmTextTip>() : nullptr;
}

bool CQmTextCtrl::GetTipText(int, std::string&)
{
    return false;
}

// -1 where there is no text.
int CQmTextCtrl::GetTipRow(CPoint point)
{
    int row = 0;
    int column = 0;
    const bool isText = GetTextArea().PtInRect(point) && GetCoveredLine(point) < 0;
    return isText && HitTest(point, row, column) ? row : -1;
}

// The pointer is at `point`: over another row the wait begins again.
void CQmTextCtrl::WatchTip(CPoint point)
{
    if (!m_tip)
        return;
    const int row = GetTipRow(point);
    if (row == m_tipRow)
        return;
    HideTip();
    m_tipRow = row;
    UINT wait = 400;
    ::SystemParametersInfo(SPI_GETMOUSEHOVERTIME, 0, &wait, 0);
    if (row >= 0)
        ::SetTimer(m_hWnd, kTipTimer, wait, nullptr);
}

// While the tip shows it is looked for the pointer ten times a second: no message tells that another window
// came between.
void CQmTextCtrl::OnTipTimer()
{
    CPoint pointer;
    ::GetCursorPos(&pointer);
    CPoint point = pointer;
    ScreenToClient(&point);
    if (!m_tip || m_dragging || ::WindowFromPoint(pointer) != m_hWnd || GetTipRow(point) != m_tipRow)
        return HideTip();
    if (m_tip->IsShown())
        return;
    KillTimer(kTipTimer);
    if (ShowTip(m_tipRow))
        ::SetTimer(m_hWnd, kTipTimer, kTipInterval, nullptr);
}

bool CQmTextCtrl::ShowTip(int row)
{
    std::string text;
    if (!GetTipText(row, text) || text.empty())
        return false;
    VkGrafic::TextCells cells;
    const std::size_t looked = std::min(text.size(), kLookedAt);
    cells.Take(text.data(), looked);
    const CRect area = GetTextArea();
    const int begin = m_view.XOf({row, 0});
    const int width = cells.CellOf(static_cast<int>(looked)) * m_columnWidth;
    if (begin >= area.left && begin + width <= area.right)
        return false; // it is all there

    CPoint corner(std::max<LONG>(begin, area.left), m_view.YOf(row));
    ClientToScreen(&corner);
    const CRect place(corner.x, corner.y, corner.x, corner.y + m_view.CurrentMetrics().rowHeight);
    CQmTextTip::Look look;
    look.font = m_font;
    look.graphicFont = m_graphicFont;
    look.cellWidth = m_columnWidth;
    look.lineHeight = m_fontHeight;
    look.background = HasOwnColors() ? m_colors.window : ::GetSysColor(COLOR_INFOBK);
    look.text = HasOwnColors() ? m_colors.windowText : ::GetSysColor(COLOR_INFOTEXT);
    return m_tip->Show(*this, text, place, look);
}

void CQmTextCtrl::HideTip()
{
    if (!m_tip || m_tipRow < 0)
        return;
    m_tipRow = -1;
    KillTimer(kTipTimer);
    m_tip->Hide();
}
