#include "qmcommon/QmWndUpdaterUse.h"

namespace
{

// The number of guards is a property of the window, so it dies with it.
constexpr char kCount[] = "QmWndUpdaterCount";

int GetCount(HWND hwnd)
{
    return static_cast<int>(reinterpret_cast<INT_PTR>(::GetProp(hwnd, kCount)));
}

void SetCount(HWND hwnd, int count)
{
    if (count == 0)
        ::RemoveProp(hwnd, kCount);
    else
        ::SetProp(hwnd, kCount, reinterpret_cast<HANDLE>(static_cast<INT_PTR>(count)));
}

} // namespace

CQmWndUpdaterUse::CQmWndUpdaterUse(CWnd* wnd) : m_hWnd(wnd ? wnd->GetSafeHwnd() : nullptr), m_suspended(false)
{
    if (!m_hWnd)
        return;
    const int count = GetCount(m_hWnd);
    SetCount(m_hWnd, count + 1);
    // Resuming makes a window visible, so a hidden one is not suspended: it does not redraw anyway.
    m_suspended = count == 0 && (::GetWindowLong(m_hWnd, GWL_STYLE) & WS_VISIBLE) != 0;
    if (m_suspended)
        ::SendMessage(m_hWnd, WM_SETREDRAW, FALSE, 0);
}

CQmWndUpdaterUse::~CQmWndUpdaterUse()
{
    const int count = m_hWnd ? GetCount(m_hWnd) : 0;
    if (count == 0)
        return; // the window is gone
    SetCount(m_hWnd, count - 1);
    if (!m_suspended)
        return;
    ::SendMessage(m_hWnd, WM_SETREDRAW, TRUE, 0);
    ::RedrawWindow(m_hWnd, nullptr, nullptr,
                   RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
}
