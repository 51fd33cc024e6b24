// The tip over a cell's text: the report control's side.
#include "report/ReportPainter.h"

#include <utility>

namespace
{

constexpr UINT kWatch = 100; // milliseconds between two looks at a tip's surroundings
constexpr UINT kAllButtons = MK_LBUTTON | MK_RBUTTON | MK_MBUTTON | MK_XBUTTON1 | MK_XBUTTON2;

// What is seen of a part of a window, as far as its parents tell; in its client area.
CRect SeenPart(HWND hwnd, CRect part)
{
    for (HWND child = hwnd; ::GetWindowLong(child, GWL_STYLE) & WS_CHILD;)
    {
        const HWND parent = ::GetParent(child);
        CRect room;
        ::GetClientRect(parent, room);
        ::MapWindowPoints(parent, hwnd, reinterpret_cast<POINT*>(&room), 2);
        part.IntersectRect(part, room);
        child = parent;
    }
    return part;
}

} // namespace

void CReportCtrl::AdjustTip(_RVITEM*) {}

void CReportCtrl::Data::ReadHoverTime()
{
    UINT time = report::kUsualHover;
    ::SystemParametersInfo(SPI_GETMOUSEHOVERTIME, 0, &time, 0);
    tip.hover.SetDelay(time);
}

bool CReportCtrl::Data::MayShowTip()
{
    return (style & RVS_TIPS) && window.hasFocus && control.m_hWnd && !drag.isActive && !IsEditing() &&
           !painting.snapshot;
}

void CReportCtrl::Data::MovePointer(UINT buttons, CPoint point)
{
    if (tip.isAsking) // in a loop of the owner's
        tip.isStale = tip.isStale || !tip.area.Contains(point.x, point.y);
    if (!(style & RVS_TIPS) || tip.isAsking)
        return;
    if (buttons & kAllButtons)
        DismissTip();
    else if (MayShowTip())
        FollowPointer(point);
    else
        ForgetTip();
}

void CReportCtrl::Data::FollowPointer(CPoint point)
{
    using Action = report::TipHover::Action;
    const bool isStale = std::exchange(tip.isStale, false);
    if (!isStale && tip.area.Contains(point.x, point.y))
        return;
    _RVHITTESTINFO hit = {};
    hit.pt = point;
    {
        const ZEMA::Flagged asking(tip.isAsking);
        control.HitTest(&hit);
    }
    if (!control.m_hWnd)
        return;
    std::optional<report::TipCell> cell;
    if (hit.flags & RVHT_ONITEMTEXT)
        cell = report::TipCell{hit.row, hit.column};
    tip.area = cell ? ToRect(hit.rect) : report::Rect();
    const bool mayHaveChanged = isStale && tip.hover.IsShown() && cell == tip.hover.Cell();
    const Action action = tip.hover.Move(cell, ::GetTickCount());
    if (action == Action::Show || mayHaveChanged)
        ShowTip();
    else if (action == Action::Hide)
        tip.window.Hide();
    WaitForTip();
}

// A timer that runs is left alone: it looks what is to be done when it comes.
void CReportCtrl::Data::WaitForTip()
{
    if (tip.hasTimer || !control.m_hWnd || !tip.hover.Cell())
        return;
    const std::optional<std::uint32_t> rest = tip.hover.Rest(::GetTickCount());
    if (rest || tip.hover.IsShown())
        tip.hasTimer = control.SetTimer(report::kTipTimer, rest.value_or(kWatch), nullptr) != 0;
}

void CReportCtrl::Data::LookAtTip()
{
    if (tip.isAsking)
        return;
    control.KillTimer(report::kTipTimer);
    tip.hasTimer = false;
    CPoint point;
    ::GetCursorPos(&point);
    if (!MayShowTip() || !control.IsWindowEnabled() || ::WindowFromPoint(point) != control.m_hWnd)
        return ForgetTip();
    control.ScreenToClient(&point);
    FollowPointer(point);
    if (tip.hover.Tick(::GetTickCount()) == report::TipHover::Action::Show)
        ShowTip();
    WaitForTip();
}

void CReportCtrl::Data::ShowTip()
{
    const report::TipCell cell = *tip.hover.Cell();
    const ZEMA::Flagged asking(tip.isAsking);
    std::optional<EditedCell> found = FindEdited(cell.row, cell.column);
    bool shows = false;
    if (found && found->editor && control.m_hWnd)
    {
        found->record.text = found->hasText ? found->text.data() : nullptr;
        control.AdjustTip(&found->record);
        const HWND captured = ::GetCapture();
        const bool isFree = !captured || captured == control.m_hWnd;
        const bool isStill = isFree && !tip.isStale && tip.hover.Cell() == cell;
        shows = isStill && found->record.text && ShowTipOf(cell, found->record, *found->editor);
    }
    if (tip.hover.Cell() == cell)
        tip.hover.HasShown(shows);
    if (!shows)
        tip.window.Hide();
}

bool CReportCtrl::Data::ShowTipOf(const report::TipCell& cell, const _RVITEM& record,
                                  const report::Rect& rect)
{
    report::TipContents contents;
    contents.text = record.text;
    contents.format = items.FormatOf(record.subitem);
    contents.isBold = (record.state & RVIS_BOLD) != 0;
    const Painter painter(*this);
    contents.color = painter.CellTextColor(cell.row, cell.column, record);
    contents.background = painter.CellColor(cell.row, cell.column, record);
    const report::Rect& area = cell.row == report::kFixedRow ? view.fixedRow : view.report;
    return tip.window.Show(control, ToRect(rect), SeenPart(control.m_hWnd, ToRect(area)), contents,
                           look.fonts, view.dpi);
}

void CReportCtrl::Data::DismissTip()
{
    tip.hover.Dismiss();
    tip.window.Hide();
}

void CReportCtrl::Data::ForgetTip()
{
    if (!tip.hover.Cell())
        return;
    tip.area = {};
    tip.hover.Forget();
    tip.window.Hide();
}

LRESULT CReportCtrl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
    case WM_XBUTTONDOWN:
    case WM_XBUTTONDBLCLK:
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL:
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_CONTEXTMENU:
        m_data->DismissTip();
        break;
    case WM_CAPTURECHANGED:
        if (m_data->tip.hover.IsShown() && reinterpret_cast<HWND>(lParam) != m_hWnd)
            m_data->ForgetTip();
        break;
    case WM_KILLFOCUS:
    case WM_ENABLE:
    case WM_SHOWWINDOW:
    case WM_CANCELMODE:
        m_data->ForgetTip();
        break;
    case WM_DESTROY:
        m_data->ForgetTip();
        m_data->tip.window.DestroyWindow();
        m_data->tip.hasTimer = false;
        break;
    default:
        break;
    }
    return CWnd::WindowProc(message, wParam, lParam);
}
