#include "ReportSubItemListCtrl.h"

#include "ReportCtrl.h"
#include "report/header/EscapeHook.h"
#include "report/header/ReportHeaderWnd.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

namespace
{

ReportHeaderWnd& HeaderOf(CReportCtrl& report)
{
    return static_cast<ReportHeaderWnd&>(*report.GetHeaderCtrl());
}

} // namespace

struct CReportSubItemListCtrl::Press
{
    Press(int pressedSubItem, CPoint pressPoint) : subitem(pressedSubItem), point(pressPoint) {}

    int subitem;
    CPoint point;
    std::optional<EscapeHook> drag; // while there is one
};

BEGIN_MESSAGE_MAP(CReportSubItemListCtrl, CWnd)
    ON_WM_DESTROY()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_MOUSEMOVE()
    ON_WM_CAPTURECHANGED()
END_MESSAGE_MAP()

CReportSubItemListCtrl::CReportSubItemListCtrl() = default;

CReportSubItemListCtrl::~CReportSubItemListCtrl()
{
    if (m_report)
        m_report->SetReportSubItemListCtrl(nullptr);
    DestroyWindow(); // while what its last messages ask for is still there
}

BOOL CReportSubItemListCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    if (!Create("LISTBOX", nullptr, style, rect, parent, id))
        return FALSE;
    Refresh();
    return TRUE;
}

void CReportSubItemListCtrl::SetReportCtrl(CReportCtrl* report)
{
    EndPress();
    if (m_report && report) // it goes from one control to another
        std::exchange(m_report, nullptr)->SetReportSubItemListCtrl(nullptr);
    m_report = report;
    Refresh();
}

bool CReportSubItemListCtrl::AcceptSubItem(int)
{
    return true;
}

void CReportSubItemListCtrl::Refresh()
{
    EndPress(); // its subitem may have another number now
    if (!m_hWnd)
        return;
    const LRESULT selected = SendMessage(LB_GETCURSEL);
    SendMessage(WM_SETREDRAW, FALSE);
    SendMessage(LB_RESETCONTENT);
    const int subitems = m_report ? m_report->GetSubItemCount() : 0;
    for (int subitem = 0; subitem < subitems; ++subitem)
    {
        if (m_report->IsActiveSubItem(subitem) || !AcceptSubItem(subitem))
            continue;
        _RVSUBITEM definition;
        m_report->GetSubItem(subitem, &definition);
        const LRESULT entry =
            SendMessage(LB_INSERTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(definition.text));
        SendMessage(LB_SETITEMDATA, static_cast<WPARAM>(entry), subitem);
    }
    const LRESULT last = SendMessage(LB_GETCOUNT) - 1;
    SendMessage(LB_SETCURSEL, static_cast<WPARAM>(std::min(selected, last)));
    SendMessage(WM_SETREDRAW, TRUE);
    Invalidate();
}

void CReportSubItemListCtrl::OnDestroy()
{
    EndPress();
    CWnd::OnDestroy();
}

// -1 for none.
int CReportSubItemListCtrl::EntryAt(CPoint point) const
{
    const LRESULT entry = ::SendMessage(m_hWnd, LB_ITEMFROMPOINT, 0, MAKELPARAM(point.x, point.y));
    const LRESULT count = ::SendMessage(m_hWnd, LB_GETCOUNT, 0, 0);
    CRect rect;
    if (HIWORD(entry) || LOWORD(entry) >= count ||
        ::SendMessage(m_hWnd, LB_GETITEMRECT, LOWORD(entry), reinterpret_cast<LPARAM>(&rect)) == LB_ERR)
        return -1;
    return rect.PtInRect(point) ? LOWORD(entry) : -1; // the blank space below counts as the last entry
}

int CReportSubItemListCtrl::SubItemOf(int entry) const
{
    return static_cast<int>(::SendMessage(m_hWnd, LB_GETITEMDATA, static_cast<WPARAM>(entry), 0));
}

void CReportSubItemListCtrl::OnLButtonDown(UINT flags, CPoint point)
{
    const int entry = EntryAt(point);
    if (entry < 0)
        return CWnd::OnLButtonDown(flags, point);
    SetFocus();
    SendMessage(LB_SETCURSEL, static_cast<WPARAM>(entry));
    EndPress();
    m_press = std::make_unique<Press>(SubItemOf(entry), point);
    ::SetCapture(m_hWnd);
}

void CReportSubItemListCtrl::OnLButtonDblClk(UINT flags, CPoint point)
{
    const int entry = EntryAt(point);
    if (entry < 0 || !m_report)
        return CWnd::OnLButtonDblClk(flags, point);
    m_report->ActivateSubItem(SubItemOf(entry), -1);
}

void CReportSubItemListCtrl::OnMouseMove(UINT flags, CPoint point)
{
    if (!m_press || !m_report)
        return CWnd::OnMouseMove(flags, point);
    const bool isFar = std::abs(point.x - m_press->point.x) > ::GetSystemMetrics(SM_CXDRAG) ||
                       std::abs(point.y - m_press->point.y) > ::GetSystemMetrics(SM_CYDRAG);
    if (!m_press->drag && !isFar)
        return;
    if (!m_press->drag)
        m_press->drag.emplace([this] { EndPress(); });
    ::SetCursor(::LoadCursor(nullptr, ColumnUnder(point) < 0 ? IDC_NO : IDC_ARROW));
}

void CReportSubItemListCtrl::OnLButtonUp(UINT flags, CPoint point)
{
    if (!m_press)
        return CWnd::OnLButtonUp(flags, point);
    const int subitem = m_press->subitem;
    const int column = m_press->drag ? ColumnUnder(point) : -1;
    EndPress();
    if (column >= 0)
        m_report->ActivateSubItem(subitem, column);
}

void CReportSubItemListCtrl::OnCaptureChanged(CWnd* wnd)
{
    EndPress();
    CWnd::OnCaptureChanged(wnd);
}

// Where the entry would come in, which the header marks; -1 for nowhere.
int CReportSubItemListCtrl::ColumnUnder(CPoint point)
{
    if (!m_report)
        return -1;
    ReportHeaderWnd& header = HeaderOf(*m_report);
    ClientToScreen(&point);
    if (::WindowFromPoint(point) != m_hWnd) // the list may lie over the header
        return header.ShowDropMark(point);
    header.HideDropMark();
    return -1;
}

// Gives the mouse back and leaves nothing of a drag.
void CReportSubItemListCtrl::EndPress()
{
    const std::unique_ptr<Press> press = std::move(m_press);
    if (!press)
        return;
    if (m_report)
        HeaderOf(*m_report).HideDropMark();
    if (::GetCapture() == m_hWnd)
        ::ReleaseCapture();
}
