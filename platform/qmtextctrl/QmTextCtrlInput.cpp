// The text window's keys, mouse, wheels and scroll bars.
#include "QmTextCtrlApply.h"

#include <algorithm>
#include <optional>

using textview::Caret;
using textview::Motion;

namespace
{
constexpr UINT_PTR kDragTimer = 1;
constexpr UINT kDragInterval = 50; // milliseconds

struct Key
{
    UINT key;
    bool control;
    Motion motion;
};

constexpr Key kKeys[] = {
    {VK_LEFT, false, Motion::Left},     {VK_LEFT, true, Motion::ScrollLeft},
    {VK_RIGHT, false, Motion::Right},   {VK_RIGHT, true, Motion::ScrollRight},
    {VK_UP, false, Motion::Up},         {VK_UP, true, Motion::ScrollUp},
    {VK_DOWN, false, Motion::Down},     {VK_DOWN, true, Motion::ScrollDown},
    {VK_PRIOR, false, Motion::PageUp},  {VK_PRIOR, true, Motion::WindowTop},
    {VK_NEXT, false, Motion::PageDown}, {VK_NEXT, true, Motion::WindowBottom},
    {VK_HOME, false, Motion::RowBegin}, {VK_HOME, true, Motion::Begin},
    {VK_END, false, Motion::RowEnd},    {VK_END, true, Motion::End},
};

std::optional<Motion> MotionOfKey(UINT key, bool control)
{
    for (const Key& entry : kKeys)
        if (entry.key == key && entry.control == control)
            return entry.motion;
    return std::nullopt;
}

std::optional<int> ZoomOfKey(UINT key)
{
    switch (key)
    {
    case VK_ADD:
    case VK_OEM_PLUS:
        return 1;
    case VK_SUBTRACT:
    case VK_OEM_MINUS:
        return -1;
    case VK_NUMPAD0:
    case '0':
        return 0;
    default:
        return std::nullopt;
    }
}

bool IsDown(int key)
{
    return ::GetKeyState(key) < 0;
}

Caret CaretOf(UINT mouseFlags)
{
    return (mouseFlags & MK_SHIFT) != 0 ? Caret::Extend : Caret::Move;
}

unsigned WheelSetting(UINT action)
{
    UINT steps = 3;
    ::SystemParametersInfo(action, 0, &steps, 0);
    return steps;
}

// The position that a scroll bar's message asks for; none for a code that asks for nothing.
std::optional<int> ScrolledPosition(HWND hwnd, int bar, UINT code, const textview::ScrollRange& range,
                                    int line, int page)
{
    const auto moved = [&range](int by) {
        const std::int64_t position = static_cast<std::int64_t>(range.position) + by;
        return static_cast<int>(std::clamp<std::int64_t>(position, 0, range.last));
    };
    switch (code) // the codes for across have the same numbers
    {
    case SB_LINEUP:
        return moved(-line);
    case SB_LINEDOWN:
        return moved(line);
    case SB_PAGEUP:
        return moved(-page);
    case SB_PAGEDOWN:
        return moved(page);
    case SB_TOP:
        return 0;
    case SB_BOTTOM:
        return range.last;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: {
        SCROLLINFO info = {}; // the message itself carries 16 bits of the position
        info.cbSize = sizeof(info);
        info.fMask = SIF_TRACKPOS;
        if (::GetScrollInfo(hwnd, bar, &info))
            return info.nTrackPos;
        return std::nullopt;
    }
    default:
        return std::nullopt;
    }
}
} // namespace

UINT CQmTextCtrl::OnGetDlgCode()
{
    return DLGC_WANTARROWS | DLGC_WANTCHARS;
}

void CQmTextCtrl::OnKeyDown(UINT key, UINT repeat, UINT flags)
{
    HideTip();
    if (const std::optional<int> zoom = ZoomOfKey(key); zoom && IsDown(VK_CONTROL) && Zoom(*zoom))
        return;
    const std::optional<Motion> motion = MotionOfKey(key, IsDown(VK_CONTROL));
    if (!motion)
        return CWnd::OnKeyDown(key, repeat, flags);
    const Caret mode = IsDown(VK_SHIFT) ? Caret::Extend : Caret::Move;
    ApplyUser([&] { m_view.Move(*motion, mode); });
}

void CQmTextCtrl::OnLButtonDown(UINT flags, CPoint point)
{
    HideTip();
    const HWND window = m_hWnd;
    ::SetFocus(window);
    if (!::IsWindow(window)) // who lost the focus may have closed it
        return;
    if (const int line = GetCoveredLine(point); line >= 0 && OnCoverClick(line, point))
        return;
    ::SetCapture(window);
    ::SetTimer(window, kDragTimer, kDragInterval, nullptr);
    m_dragging = true;
    m_dragPoint = point;
    Apply([&] { m_view.Click(point.x, point.y, CaretOf(flags)); });
}

void CQmTextCtrl::OnLButtonDblClk(UINT flags, CPoint point)
{
    OnLButtonDown(flags, point);
}

void CQmTextCtrl::OnMouseMove(UINT, CPoint point)
{
    if (!m_dragging)
        return WatchTip(point);
    m_dragPoint = point;
    Apply([&] { m_view.DragTo(point.x, point.y); });
}

void CQmTextCtrl::OnTimer(UINT_PTR timer)
{
    if (timer == kTipTimer)
        return OnTipTimer();
    if (timer != kDragTimer)
        return CWnd::OnTimer(timer);
    if (m_dragging)
        ApplyUser([&] { m_view.Autoscroll(m_dragPoint.x, m_dragPoint.y); });
}

void CQmTextCtrl::OnLButtonUp(UINT, CPoint)
{
    if (m_dragging)
        ::ReleaseCapture(); // which ends the drag
}

void CQmTextCtrl::OnCaptureChanged(CWnd*)
{
    EndDrag();
}

void CQmTextCtrl::EndDrag()
{
    if (!m_dragging)
        return;
    m_dragging = false;
    KillTimer(kDragTimer);
}

void CQmTextCtrl::OnRButtonDown(UINT, CPoint point)
{
    HideTip();
    const HWND window = m_hWnd;
    ::SetFocus(window);
    if (!::IsWindow(window) || !m_prepared)
        return;
    textview::Cell cell;
    m_view.HitTest(point.x, point.y, cell);
    if (!m_view.IsSelected(cell))
        Apply([&] { m_view.Click(point.x, point.y, Caret::Move); });
}

void CQmTextCtrl::OnContextMenu(CWnd* wnd, CPoint point)
{
    CPoint inside = point;
    ScreenToClient(&inside);
    const bool byKey = point == CPoint(-1, -1);
    if (wnd != this || !m_prepared || (!byKey && !GetRowArea().PtInRect(inside)))
        return CWnd::OnContextMenu(wnd, point); // the find bar's or a scroll bar's
    if (byKey)
    {
        Apply([&] { m_view.EnsureVisible(m_view.CurrentState().caret, 1, 1); });
        const textview::Cell caret = m_view.CurrentState().caret;
        point = CPoint(m_view.XOf(caret), m_view.YOf(caret.row) + m_view.CurrentMetrics().rowHeight);
        ClientToScreen(&point);
    }
    OnTextMenu(point); // may destroy this object
}

// Tells the host, which may set another font meanwhile; false when it does not want to know.
bool CQmTextCtrl::Zoom(int steps)
{
    if (!m_zoom)
        return false;
    m_zoom(steps);
    return true;
}

BOOL CQmTextCtrl::OnMouseWheel(UINT flags, short delta, CPoint)
{
    if ((flags & MK_CONTROL) != 0 && m_zoom)
    {
        if (const int steps = m_zoomWheel.Add(delta, 1); steps != 0)
            Zoom(steps);
        return TRUE;
    }
    const unsigned lines = WheelSetting(SPI_GETWHEELSCROLLLINES);
    ApplyUser([&] { m_view.Wheel(delta, lines); });
    return TRUE;
}

void CQmTextCtrl::OnMouseHWheel(UINT, short delta, CPoint)
{
    const unsigned columns = WheelSetting(SPI_GETWHEELSCROLLCHARS);
    ApplyUser([&] { m_view.WheelAcross(delta, columns); });
}

void CQmTextCtrl::OnVScroll(UINT code, UINT, CScrollBar*)
{
    const auto position = ScrolledPosition(m_hWnd, SB_VERT, code, m_view.RowScroll(), 1, m_view.PageStep());
    if (position)
        ApplyUser([&] { m_view.ScrollToRow(*position); });
}

void CQmTextCtrl::OnHScroll(UINT code, UINT, CScrollBar*)
{
    const textview::ScrollRange range = m_view.PixelScroll();
    const auto position = ScrolledPosition(m_hWnd, SB_HORZ, code, range, m_columnWidth, range.page);
    if (position)
        ApplyUser([&] { m_view.ScrollToPixel(*position); });
}
