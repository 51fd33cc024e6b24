// The report control's scrolling, and what is painted again when something changes.
#include "report/ReportPainter.h"
#include "report/model/ScrollPosition.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <tuple>
#include <utility>

namespace
{

constexpr __int64 kMaxSteps = 1000; // of a wheel's turn: more would fill the queue of messages
constexpr unsigned kMaxWheel = 100; // lines a notch, to the side

bool IsVertical(int bar)
{
    return bar == SB_VERT;
}

} // namespace

// ---- Positions

int CReportCtrl::ScrollWindow(int bar, int position)
{
    return SetScrollPos32(bar, position, 1);
}

int CReportCtrl::GetScrollPos32(int bar, int trackPosition)
{
    if (!trackPosition || !m_hWnd)
        return IsVertical(bar) ? m_data->view.topRow : m_data->view.left;
    SCROLLINFO info = {}; // the message itself has but 16 bits for it
    return GetScrollInfo(bar, &info, SIF_TRACKPOS) ? info.nTrackPos : 0;
}

int CReportCtrl::SetScrollPos32(int bar, int position, int redraw)
{
    report::ScrollPosition& scroll = m_data->scroll;
    if (IsVertical(bar) && !m_data->rows.IsValid() && position == m_data->view.topRow)
        return 1; // it is cut to the rows when they are made
    const bool hasMoved = IsVertical(bar)
                              ? scroll.SetTop(position, GetRowCount())
                              : scroll.SetLeft(position, Data::Snapshot(*m_data).geometry.RowWidth());
    if (!hasMoved)
        return 1;
    m_data->ForgetTip();
    if (!IsVertical(bar) && m_data->header.m_hWnd)
        m_data->PlaceHeader();
    if (redraw)
        m_data->Redraw();
    return 1;
}

// After rows, columns or room have changed.
void CReportCtrl::Data::FitScrolling()
{
    scroll.MarkTooFar();
    control.ScrollWindow(SB_VERT, view.topRow);
    control.ScrollWindow(SB_HORZ, std::min(view.left, Snapshot(*this).geometry.EndLeft()));
}

void CReportCtrl::Data::ShowRow(int row)
{
    if (row >= 0 && row < control.GetRowCount())
        control.ScrollWindow(SB_VERT, Snapshot(*this).geometry.TopToShow(row));
}

int CReportCtrl::EnsureVisible(int item, int)
{
    const int row = GetRowFromItem(item);
    if (row < 0 || row >= GetRowCount())
        return 0;
    m_data->ShowRow(row);
    return 1;
}

int CReportCtrl::EnsureVisibleColumn(int column)
{
    return ScrollWindow(SB_HORZ, Data::Snapshot(*m_data).geometry.LeftToShow(column));
}

// ---- Scroll bars, wheel

void CReportCtrl::Data::UpdateScrollBars()
{
    Painter painter(*this);
    report::Geometry& geometry = painter.snapshot.geometry;
    const int count = rows.Count();
    int page = bars.Page();
    if (bars.IsPageStale(view.topRow, count, view.report.Height()))
    {
        const report::RowRange whole = geometry.RowsFrom(view.topRow);
        page = whole.last - whole.first + 1;
    }
    bars.Update(control.m_hWnd, SB_VERT, count, page, view.topRow);
    bars.Update(control.m_hWnd, SB_HORZ, geometry.RowWidth(), view.report.Width(), view.left);
}

void CReportCtrl::Data::Scroll(int bar, UINT code)
{
    using Request = report::ScrollRequest;
    const std::pair<UINT, Request> requests[] = {
        {SB_LINEUP, Request::LineBack},  {SB_LINEDOWN, Request::LineForward},
        {SB_PAGEUP, Request::PageBack},  {SB_PAGEDOWN, Request::PageForward},
        {SB_TOP, Request::Begin},        {SB_BOTTOM, Request::End},
        {SB_THUMBTRACK, Request::Thumb}, {SB_THUMBPOSITION, Request::Thumb}};
    const auto* const found = std::find_if(std::begin(requests), std::end(requests),
                                           [code](const auto& each) { return each.first == code; });
    if (found == std::end(requests) || !FinishEdit(EditEnd::Wanted))
        return;
    const int thumb = found->second == Request::Thumb ? control.GetScrollPos32(bar, 1) : 0;
    Snapshot snapshot(*this);
    const auto after = IsVertical(bar) ? report::RowAfter : report::LeftAfter;
    control.ScrollWindow(bar, after(found->second, thumb, view, snapshot.geometry));
}

void CReportCtrl::OnVScroll(UINT code, UINT, CScrollBar*)
{
    m_data->Scroll(SB_VERT, code);
}

void CReportCtrl::OnHScroll(UINT code, UINT, CScrollBar*)
{
    m_data->Scroll(SB_HORZ, code);
}

BOOL CReportCtrl::OnMouseWheel(UINT, short delta, CPoint)
{
    const bool pages = m_data->window.wheelLines == WHEEL_PAGESCROLL;
    const __int64 lines = pages ? 1 : m_data->window.wheelLines;
    const __int64 steps = std::clamp<__int64>(delta * lines / WHEEL_DELTA, -kMaxSteps, kMaxSteps);
    const WPARAM code = pages ? (steps > 0 ? SB_PAGEUP : SB_PAGEDOWN) : (steps > 0 ? SB_LINEUP : SB_LINEDOWN);
    for (__int64 i = std::abs(steps); i > 0; --i)
        PostMessage(WM_VSCROLL, code);
    Default();
    return TRUE;
}

void CReportCtrl::OnMouseHWheel(UINT, short delta, CPoint)
{
    const __int64 steps =
        delta * static_cast<__int64>(std::min(m_data->window.wheelLines, kMaxWheel)) / WHEEL_DELTA;
    for (__int64 i = std::abs(steps); i > 0; --i)
        m_data->Scroll(SB_HORZ, steps > 0 ? SB_LINERIGHT : SB_LINELEFT);
}

// ---- Painting again

void CReportCtrl::SetRedraw(int redraw)
{
    m_data->window.isRedrawOn = redraw != 0;
    m_data->Redraw();
}

void CReportCtrl::Data::Redraw()
{
    painting.shapes.Forget();
    if (edit.editor)
        PostEditMessage(); // its cell may have moved
    tip.isStale = true;
    if (control.m_hWnd && window.isRedrawOn && painting.dirty.AddAll() == report::DirtyRows::Request::All)
        control.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_NOCHILDREN); // the header paints itself
}

void CReportCtrl::RedrawRows(int first, int last, int update)
{
    m_data->painting.shapes.Forget();
    m_data->tip.isStale = true;
    if (last == RVI_NONE)
        last = first;
    if (!m_hWnd || !m_data->window.isRedrawOn)
        return;
    if (first <= report::kFixedRow || !m_data->rows.IsValid() || m_data->scroll.IsTooFar())
        m_data->Redraw();
    else
        m_data->InvalidateRows({first, last});
    if (update)
        UpdateWindow();
}

void CReportCtrl::Data::InvalidateRows(report::RowRange range)
{
    const report::DirtyRows::Request request = painting.dirty.Add(range, view);
    if (request == report::DirtyRows::Request::All)
        control.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_NOCHILDREN);
    if (request != report::DirtyRows::Request::Rows)
        return;
    CRect changed;
    Snapshot snapshot(*this);
    for (report::ShownRow row; snapshot.geometry.Next(row, view.report.bottom) && row.row <= range.last;)
        if (row.row >= range.first)
            changed.UnionRect(changed, ToRect(row.rect));
    if (!changed.IsRectEmpty())
        control.InvalidateRect(changed, FALSE);
}

void CReportCtrl::RedrawItems(int first, int last)
{
    // Items stand in any order: those of a range may be anywhere.
    if (m_data->rows.IsValid() && (last == RVI_NONE || first == last))
    {
        const int row = GetRowFromItem(first);
        if (row != RVI_NONE)
            RedrawRows(row, RVI_NONE, 0);
    }
    else
        m_data->Redraw();
}
