// The report control's scrolling, and what is painted anew when something changes.
#include "report/ReportCtrlData.h"
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
    int& present = IsVertical(bar) ? m_data->view.topRow : m_data->view.left;
    if (IsVertical(bar) && !m_data->rows.IsValid() && position == present)
        return 1; // it is cut to the rows when they are made
    const int most = IsVertical(bar) ? GetRowCount() : Places(*this).geometry.RowWidth();
    const int wanted = std::clamp(position, 0, most);
    if (present == wanted)
        return 1;
    present = wanted;
    if (!IsVertical(bar) && m_data->header.m_hWnd)
        PlaceHeader();
    if (redraw)
        Redraw();
    return 1;
}

// After rows, columns or room have changed. How far the last row lets the rows go is asked once, by the next
// paint, however many changes come before it.
void CReportCtrl::FitScrolling()
{
    m_data->tooFar = true;
    ScrollWindow(SB_VERT, m_data->view.topRow);
    ScrollWindow(SB_HORZ, std::min(m_data->view.left, Places(*this).geometry.EndLeft()));
}

void CReportCtrl::ShowRow(int row)
{
    if (row >= 0 && row < GetRowCount())
        ScrollWindow(SB_VERT, Places(*this).geometry.TopToShow(row));
}

int CReportCtrl::EnsureVisible(int item, int)
{
    const int row = GetRowFromItem(item);
    if (row < 0 || row >= GetRowCount())
        return 0;
    ShowRow(row);
    return 1;
}

int CReportCtrl::EnsureVisibleColumn(int column)
{
    return ScrollWindow(SB_HORZ, Places(*this).geometry.LeftToShow(column));
}

// ---- Scroll bars, wheel

void CReportCtrl::UpdateScrollBars()
{
    const Painting painting(*this);
    report::Geometry& geometry = painting.places.geometry;
    const report::View& view = m_data->view;
    const SCROLLINFO& shown = m_data->shown[SB_VERT];
    int page = static_cast<int>(shown.nPage);
    if (shown.nPos != view.topRow || shown.nMax != GetRowCount() - 1 ||
        std::exchange(m_data->shownHeight, view.report.Height()) != view.report.Height())
    {
        const report::RowRange whole = geometry.RowsFrom(view.topRow);
        page = whole.last - whole.first + 1;
    }
    UpdateScrollBar(SB_VERT, GetRowCount(), page, view.topRow);
    UpdateScrollBar(SB_HORZ, geometry.RowWidth(), view.report.Width(), view.left);
}

// Drawing a scroll bar costs as much as painting all rows, and among many rows the thumb mostly stays where
// it is: the bar is told, and drawn only when that has moved something.
void CReportCtrl::UpdateScrollBar(int bar, int count, int page, int position)
{
    SCROLLINFO& shown = m_data->shown[bar];
    const int last = std::max(0, count - 1);
    if (shown.nMax == last && shown.nPage == static_cast<UINT>(page) && shown.nPos == position)
        return;
    SCROLLINFO before = shown;
    shown.nMax = last;
    shown.nPage = static_cast<UINT>(page);
    shown.nPos = position;
    SCROLLINFO info = shown;
    before.fMask = info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    const auto look = [this, bar] {
        SCROLLBARINFO drawn = {};
        drawn.cbSize = sizeof(drawn);
        ::GetScrollBarInfo(m_hWnd, bar == SB_VERT ? OBJID_VSCROLL : OBJID_HSCROLL, &drawn);
        return std::tuple(drawn.xyThumbTop, drawn.xyThumbBottom, drawn.rgstate[0]);
    };
    const auto old = look();
    SetScrollInfo(bar, &info, FALSE);
    if (look() == old)
        return;
    SetScrollInfo(bar, &before, FALSE); // without a change nothing would be drawn
    SetScrollInfo(bar, &info);
}

void CReportCtrl::Scroll(int bar, UINT code)
{
    using Request = report::ScrollRequest;
    const std::pair<UINT, Request> requests[] = {
        {SB_LINEUP, Request::LineBack},  {SB_LINEDOWN, Request::LineForward},
        {SB_PAGEUP, Request::PageBack},  {SB_PAGEDOWN, Request::PageForward},
        {SB_TOP, Request::Begin},        {SB_BOTTOM, Request::End},
        {SB_THUMBTRACK, Request::Thumb}, {SB_THUMBPOSITION, Request::Thumb}};
    const auto* const found = std::find_if(std::begin(requests), std::end(requests),
                                           [code](const auto& each) { return each.first == code; });
    if (found == std::end(requests))
        return;
    const int thumb = found->second == Request::Thumb ? GetScrollPos32(bar, 1) : 0;
    Places places(*this);
    const auto after = IsVertical(bar) ? report::RowAfter : report::LeftAfter;
    ScrollWindow(bar, after(found->second, thumb, m_data->view, places.geometry));
}

void CReportCtrl::OnVScroll(UINT code, UINT, CScrollBar*)
{
    Scroll(SB_VERT, code);
}

void CReportCtrl::OnHScroll(UINT code, UINT, CScrollBar*)
{
    Scroll(SB_HORZ, code);
}

BOOL CReportCtrl::OnMouseWheel(UINT, short delta, CPoint)
{
    const bool pages = m_data->wheelLines == WHEEL_PAGESCROLL;
    const __int64 lines = pages ? 1 : m_data->wheelLines;
    const __int64 steps = std::clamp<__int64>(delta * lines / WHEEL_DELTA, -kMaxSteps, kMaxSteps);
    const WPARAM code = pages ? (steps > 0 ? SB_PAGEUP : SB_PAGEDOWN) : (steps > 0 ? SB_LINEUP : SB_LINEDOWN);
    for (__int64 i = std::abs(steps); i > 0; --i)
        PostMessage(WM_VSCROLL, code);
    Default();
    return TRUE;
}

void CReportCtrl::OnMouseHWheel(UINT, short delta, CPoint)
{
    const __int64 steps = delta * static_cast<__int64>(std::min(m_data->wheelLines, kMaxWheel)) / WHEEL_DELTA;
    for (__int64 i = std::abs(steps); i > 0; --i)
        Scroll(SB_HORZ, steps > 0 ? SB_LINERIGHT : SB_LINELEFT);
}

// ---- Painting anew

void CReportCtrl::SetRedraw(int redraw)
{
    m_data->redraw = redraw != 0;
    Redraw();
}

void CReportCtrl::Redraw()
{
    if (m_hWnd && m_data->redraw && m_data->dirty.AddAll() == report::DirtyRows::Request::All)
        RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_NOCHILDREN); // the header paints itself
}

void CReportCtrl::RedrawRows(int first, int last, int update)
{
    if (last == RVI_NONE)
        last = first;
    if (!m_hWnd || !m_data->redraw)
        return;
    if (first <= report::kFixedRow || !m_data->rows.IsValid() || m_data->tooFar)
        Redraw();
    else
        InvalidateRowRange({first, last});
    if (update)
        UpdateWindow();
}

void CReportCtrl::InvalidateRowRange(report::RowRange rows)
{
    const report::DirtyRows::Request request = m_data->dirty.Add(rows, m_data->view);
    if (request == report::DirtyRows::Request::All)
        RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_NOCHILDREN);
    if (request != report::DirtyRows::Request::Rows)
        return;
    CRect changed;
    Places places(*this);
    for (report::ShownRow row; places.geometry.Next(row, m_data->view.report.bottom) && row.row <= rows.last;)
        if (row.row >= rows.first)
            changed.UnionRect(changed, ToRect(row.rect));
    if (!changed.IsRectEmpty())
        InvalidateRect(changed, FALSE);
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
        Redraw();
}
