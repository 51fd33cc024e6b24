// The text window's painting: rows, selection, scrolled contents, scroll bars and caret.
#include "QmTextCtrlApply.h"

#include "afxcontrolbarutil.h"
#include "vkgrafic/DrawingGuards.h"
#include "vkgrafic/PaintBands.h"

#include <algorithm>
#include <limits>

namespace
{
// Clips a device context to the selection, where colours are the selection's.
class SelectionDrawing
{
public:
    SelectionDrawing(CDC& dc, const CRect& clip, bool& drawing) : m_saved(dc), m_drawing(drawing)
    {
        dc.IntersectClipRect(clip);
        m_drawing = true;
    }
    ~SelectionDrawing() { m_drawing = false; }
    SelectionDrawing(const SelectionDrawing&) = delete;
    SelectionDrawing& operator=(const SelectionDrawing&) = delete;

private:
    VkGrafic::SavedState m_saved;
    bool& m_drawing;
};

// Known while rows are painted.
class PaintedTop
{
public:
    PaintedTop(int& member, int top) : m_member(member) { member = top; }
    ~PaintedTop() { m_member = std::numeric_limits<int>::min(); }
    PaintedTop(const PaintedTop&) = delete;
    PaintedTop& operator=(const PaintedTop&) = delete;

private:
    int& m_member;
};
} // namespace

BOOL CQmTextCtrl::OnEraseBkgnd(CDC*)
{
    return TRUE; // OnPaint covers all of the window
}

void CQmTextCtrl::OnPaint()
{
    CPaintDC dc(this);
    CRect area = GetRowArea();
    if (m_stripWidth > 0) // where the strip is not seen
        dc.FillSolidRect(CRect(area.right, 0, m_client.cx, area.bottom), m_colors.window);
    if (!m_prepared || !area.IntersectRect(&dc.m_ps.rcPaint, GetRowArea()))
        return;

    // Asked for here, for no message tells whether the focus goes from the find bar to a window outside.
    const HWND focus = m_focused ? m_hWnd : ::GetFocus();
    LoadSelectionColors(focus && (focus == m_hWnd || ::IsChild(m_hWnd, focus)));
    m_coveredRows = m_view.CoveredRows();
    if (const textview::Range rows = RowsToDraw(area); rows.begin < rows.end)
        PrepareRows(rows.begin, rows.end - rows.begin);
    CRect band = area;
    const auto endBand = [&] {
        band.bottom =
            VkGrafic::EndOfBand(band.top, area.bottom, area.Width(), 0, m_view.CurrentMetrics().rowHeight);
    };
    endBand();
    CMemDC memory(dc, band);
    DrawRows(memory.GetDC(), band);
    while (band.bottom < area.bottom)
    {
        band.top = band.bottom;
        endBand();
        memory.MoveTo(band);
        DrawRows(memory.GetDC(), band);
    }
    UpdateScrollBars(); // rows farther to the right than any before may have come into view
}

void CQmTextCtrl::LoadSelectionColors(bool isActive)
{
    if (HasOwnColors())
    {
        m_colors.selection = isActive ? m_ownColors->selection : m_ownColors->inactiveSelection;
        m_colors.selectionText = isActive ? m_ownColors->selectionText : m_ownColors->inactiveSelectionText;
        return;
    }
    m_colors.selection = ::GetSysColor(isActive ? COLOR_HIGHLIGHT : COLOR_BTNFACE);
    m_colors.selectionText = ::GetSysColor(isActive ? COLOR_HIGHLIGHTTEXT : COLOR_BTNTEXT);
}

void CQmTextCtrl::DrawRows(CDC& dc, const CRect& area)
{
    const VkGrafic::Selected font(dc, m_font);
    dc.FillSolidRect(area, m_colors.window);
    dc.SetBkMode(TRANSPARENT);

    const textview::Range rows = RowsToDraw(area);
    CRect text;
    if (text.IntersectRect(area, GetTextArea()))
    {
        const VkGrafic::SavedState unclipped(dc);
        const PaintedTop top(m_paintedTop, area.top);
        if (text != area)
            dc.IntersectClipRect(text); // scrolled text would lie in the margin
        for (int row = rows.begin; row < rows.end; ++row)
        {
            DrawRow(dc, m_view.XOf({row, 0}), m_view.YOf(row), row);
            DrawSelection(dc, text, row);
        }
    }
    DrawMargins(dc, area, rows);
    CRect cover = GetRowArea();
    cover.bottom = std::min(cover.bottom, static_cast<LONG>(m_view.YOf(GetTopRow() + m_coveredRows)));
    if (m_coveredRows > 0 && CRect().IntersectRect(cover, area))
        DrawCover(dc, cover, m_coveredRows);
}

void CQmTextCtrl::DrawMargins(CDC& dc, const CRect& area, textview::Range rows)
{
    const int margin = m_view.CurrentMetrics().margin;
    if (area.left >= margin)
        return;
    for (int row = rows.begin; row < rows.end; ++row)
    {
        const int y = m_view.YOf(row);
        if (y + m_view.CurrentMetrics().rowHeight <= area.top)
            continue; // the row above, whose marks in the text reach further down
        DrawMargin(dc, CRect(0, y, margin, y + m_view.CurrentMetrics().rowHeight), row);
        dc.SetBkMode(TRANSPARENT);
    }
}

// The row above reaches into the first one with its marks.
textview::Range CQmTextCtrl::RowsToDraw(const CRect& area)
{
    const textview::Range visible = m_view.VisibleRows();
    const int height = m_view.CurrentMetrics().rowHeight;
    const int first = visible.begin + static_cast<int>(area.top) / height;
    const int last = visible.begin + static_cast<int>(area.bottom - 1) / height;
    return {first > 0 ? first - 1 : first, std::min(visible.end, last + 1)};
}

void CQmTextCtrl::DrawSelection(CDC& dc, const CRect& area, int row)
{
    const textview::Range columns = m_view.SelectedColumns(row);
    if (columns.begin == columns.end)
        return;
    const int y = m_view.YOf(row);
    const CRect cells(m_view.XOf({row, columns.begin}), y, m_view.XOf({row, columns.end}),
                      y + m_view.CurrentMetrics().rowHeight);
    CRect clip;
    if (!clip.IntersectRect(cells, area))
        return;
    const SelectionDrawing drawing(dc, clip, m_drawingSelection);
    dc.FillSolidRect(clip, m_colors.selection);
    dc.SetBkMode(TRANSPARENT);
    DrawRow(dc, m_view.XOf({row, 0}), y, row);
}

bool CQmTextCtrl::IsAbovePainted(int y) const
{
    return y + m_view.CurrentMetrics().rowHeight <= m_paintedTop;
}

COLORREF CQmTextCtrl::GetDrawColor(COLORREF wanted) const
{
    if (m_drawingSelection)
        return m_colors.selectionText;
    if (m_colors.highContrast || !textview::IsReadable(wanted, m_colors.window))
        return m_colors.windowText;
    return wanted;
}

void CQmTextCtrl::InvalidateText()
{
    if (m_prepared)
        InvalidateRect(GetRowArea(), FALSE);
}

void CQmTextCtrl::InvalidateRows(textview::Range rows)
{
    if (rows.begin == rows.end)
        return;
    CRect area = GetRowArea();
    const int marks = m_view.CurrentMetrics().rowHeight / 2; // in the row below
    const int bottom = std::min(m_view.YOf(rows.end), static_cast<int>(area.bottom)) + marks;
    const CRect changed(area.left, m_view.YOf(rows.begin), area.right, bottom);
    if (area.IntersectRect(area, changed))
        InvalidateRect(area, FALSE);
}

void CQmTextCtrl::ShowChange(const textview::State& before)
{
    const textview::State& after = m_view.CurrentState();
    CRect area = GetRowArea();
    const std::int64_t rows = static_cast<std::int64_t>(before.top) - after.top;
    const std::int64_t down = rows * m_view.CurrentMetrics().rowHeight;
    const std::int64_t right = static_cast<std::int64_t>(before.offset) - after.offset;
    const int covered = std::max(m_coveredRows, m_view.CoveredRows());
    if (right != 0)
        area = GetTextArea();
    if (down != 0 || right != 0)
    {
        HideTip();
        if (covered > 0) // what covers rows does not move
        {
            CRect cover = GetRowArea();
            area.top = std::min(static_cast<LONG>(covered * m_view.CurrentMetrics().rowHeight), area.bottom);
            cover.bottom = area.top;
            InvalidateRect(cover, FALSE);
        }
        const bool partly = std::max(down, -down) < area.Height() && std::max(right, -right) < area.Width();
        if (partly && (down == 0 || right == 0)) // what stays in view is moved
            ::ScrollWindowEx(m_hWnd, static_cast<int>(right), static_cast<int>(down), area, area, nullptr,
                             nullptr, SW_INVALIDATE);
        else
            InvalidateText();
    }
    InvalidateRows(textview::ChangedRows(before, after));
    UpdateScrollBars();
    UpdateCaret();
}

void CQmTextCtrl::UpdateScrollBars()
{
    UpdateScrollBar(SB_VERT, m_view.RowScroll(), m_rowScroll);
    UpdateScrollBar(SB_HORZ, m_view.PixelScroll(), m_pixelScroll);
}

void CQmTextCtrl::UpdateScrollBar(int bar, const textview::ScrollRange& range, textview::ScrollRange& shown)
{
    if (range == shown)
        return; // telling it again costs as much as a repaint
    shown = range;
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    info.nMax = range.last;
    info.nPage = static_cast<UINT>(range.page);
    info.nPos = range.position;
    ::SetScrollInfo(m_hWnd, bar, &info, TRUE);
}

void CQmTextCtrl::UpdateCaret()
{
    if (!m_focused || !m_prepared)
        return;
    const textview::Cell caret = m_view.CurrentState().caret;
    const int y = m_view.YOf(caret.row);
    const int x = m_view.XOf(caret);
    const CRect area = GetTextArea();
    const int line = caret.row - GetTopRow();
    const bool isCovered = line >= 0 && line < m_view.CoveredRows();
    const bool inView = y >= 0 && y < area.bottom && !isCovered && x >= area.left;
    SetCaretPos(CPoint(x, inView ? y : -m_view.CurrentMetrics().rowHeight));
}

void CQmTextCtrl::OnSetFocus(CWnd*)
{
    if (!m_prepared)
        return;
    m_focused = true;
    DWORD width = 1;
    ::SystemParametersInfo(SPI_GETCARETWIDTH, 0, &width, 0);
    CreateSolidCaret(static_cast<int>(width), m_view.CurrentMetrics().rowHeight);
    UpdateCaret();
    ShowCaret();
    InvalidateRows({GetSelectionBeginRow(), GetSelectionEndRow() + 1});
}

void CQmTextCtrl::OnKillFocus(CWnd*)
{
    if (!m_prepared)
        return;
    m_focused = false;
    ::DestroyCaret();
    InvalidateRows({GetSelectionBeginRow(), GetSelectionEndRow() + 1});
}
