// What a window does with its messages, and the operations that are more than one call.
#include "mfc/ThreadState.h"

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
    ON_WM_NCDESTROY()
    ON_WM_SYSCOLORCHANGE()
    ON_WM_SETTINGCHANGE()
END_MESSAGE_MAP()

static bool IsFor(const AFX_MSGMAP_ENTRY& entry, UINT message)
{
    return entry.registered ? *entry.registered == message : entry.message == message;
}

static const AFX_MSGMAP_ENTRY* FindMessage(const AFX_MSGMAP& map, UINT message)
{
    for (const AFX_MSGMAP_ENTRY* entry = map.entries; entry->message != 0; ++entry)
        if (IsFor(*entry, message))
            return entry;
    return map.baseMap ? FindMessage(*map.baseMap(), message) : nullptr;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    if (OnWndMsg(message, wParam, lParam, &result))
        return result;
    return DefWindowProc(message, wParam, lParam);
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    *result = 0;
    if (message == WM_COMMAND)
        return OnCommand(wParam, lParam);
    if (message == WM_NOTIFY)
        return OnNotify(wParam, lParam, result);
    const AFX_MSGMAP_ENTRY* const entry = FindMessage(*GetMessageMap(), message);
    return entry && entry->handler(this, wParam, lParam, result);
}

// Window messages may also come by a procedure that was there before the object.
LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto call = m_isWide ? ::CallWindowProcW : ::CallWindowProcA;
    if (m_pfnSuper)
        return call(m_pfnSuper, m_hWnd, message, wParam, lParam);
    return ::DefWindowProc(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default()
{
    const MSG& message = GetThreadState().message;
    return DefWindowProc(message.message, message.wParam, message.lParam);
}

const MSG* CWnd::GetCurrentMessage()
{
    return &GetThreadState().message;
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const int code = lParam == 0 ? CN_COMMAND : HIWORD(wParam); // menus and shortcuts have no control
    return OnCmdMsg(LOWORD(wParam), code, nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM, LPARAM lParam, LRESULT* result)
{
    NMHDR* const header = reinterpret_cast<NMHDR*>(lParam);
    AFX_NOTIFY notify = {result, header};
    const auto code = static_cast<int>(MAKELONG(header->code, WM_NOTIFY));
    return OnCmdMsg(static_cast<UINT>(header->idFrom), code, &notify, nullptr);
}

// The system tells top-level windows only.
void CWnd::TellDescendants()
{
    const MSG message = *GetCurrentMessage();
    if (!(GetStyle() & WS_CHILD))
        SendMessageToDescendants(message.message, message.wParam, message.lParam);
    Default();
}

void CWnd::OnSysColorChange()
{
    TellDescendants();
}

void CWnd::OnSettingChange(UINT, LPCSTR)
{
    TellDescendants();
}

void CWnd::SendMessageToDescendants(UINT message, WPARAM wParam, LPARAM lParam)
{
    MSG record = {nullptr, message, wParam, lParam, 0, {}};
    const auto send = [](HWND hwnd, LPARAM recordAddress) -> BOOL {
        const MSG& sent = *reinterpret_cast<const MSG*>(recordAddress);
        ::SendMessage(hwnd, sent.message, sent.wParam, sent.lParam);
        return TRUE;
    };
    ::EnumChildWindows(m_hWnd, send, reinterpret_cast<LPARAM>(&record));
}

BOOL CWnd::PreTranslateMessage(MSG*)
{
    return FALSE;
}

BOOL CWnd::WalkPreTranslateTree(HWND stop, MSG* message)
{
    for (HWND hwnd = message->hwnd; hwnd; hwnd = ::GetParent(hwnd))
    {
        CWnd* const wnd = FromHandlePermanent(hwnd);
        if (wnd && wnd->PreTranslateMessage(message))
            return TRUE;
        if (hwnd == stop)
            break;
    }
    return FALSE;
}

BOOL CWnd::ModifyStyle(DWORD remove, DWORD add, UINT flags)
{
    const DWORD before = GetStyle();
    const DWORD after = (before & ~remove) | add;
    if (after == before)
        return FALSE;
    ::SetWindowLong(m_hWnd, GWL_STYLE, static_cast<LONG>(after));
    if (flags != 0)
        SetWindowPos(nullptr, 0, 0, 0, 0, flags | SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    return TRUE;
}

BOOL CWnd::GetScrollInfo(int bar, LPSCROLLINFO info, UINT mask)
{
    info->cbSize = sizeof(*info);
    info->fMask = mask;
    return ::GetScrollInfo(m_hWnd, bar, info);
}

BOOL CWnd::SetScrollInfo(int bar, LPSCROLLINFO info, BOOL redraw)
{
    info->cbSize = sizeof(*info);
    ::SetScrollInfo(m_hWnd, bar, info, redraw); // answers the position, which may well be 0
    return TRUE;
}

// Two points, and not each by itself: the corners change sides in a mirrored window.
void CWnd::ClientToScreen(LPRECT rect) const
{
    ::MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<POINT*>(rect), 2);
}

void CWnd::ScreenToClient(LPRECT rect) const
{
    ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(rect), 2);
}

void CWnd::GetWindowText(CString& text) const
{
    const int length = ::GetWindowTextLength(m_hWnd);
    ::GetWindowText(m_hWnd, text.GetBuffer(length), length + 1);
    text.ReleaseBuffer();
}
