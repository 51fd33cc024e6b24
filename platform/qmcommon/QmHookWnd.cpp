#include "qmcommon/QmHookWnd.h"

#include "afxwin.h"

#include <commctrl.h>

CQmHookWnd::CQmHookWnd() = default;

CQmHookWnd::~CQmHookWnd()
{
    Detach();
}

bool CQmHookWnd::Attach(HWND hwnd)
{
    Detach();
    if (!::SetWindowSubclass(hwnd, HookProc, reinterpret_cast<UINT_PTR>(this), 0))
        return false;
    m_hWnd = hwnd;
    return true;
}

void CQmHookWnd::Detach()
{
    if (m_hWnd)
        ::RemoveWindowSubclass(m_hWnd, HookProc, reinterpret_cast<UINT_PTR>(this));
    m_hWnd = nullptr;
}

LRESULT CQmHookWnd::CallWindow(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::DefSubclassProc(m_hWnd, message, wParam, lParam);
}

LRESULT CALLBACK CQmHookWnd::HookProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                      DWORD_PTR)
{
    CQmHookWnd* const hook = reinterpret_cast<CQmHookWnd*>(id);
    LRESULT result = 0;
    if (message == WM_NCDESTROY)
        hook->Detach();
    else if (hook->OnHookMessage(message, wParam, lParam, &result))
        return result;
    return ::DefSubclassProc(hwnd, message, wParam, lParam);
}

BOOL CQmEndHook::OnHookMessage(UINT message, WPARAM, LPARAM, LRESULT*)
{
    if (message == WM_DESTROY)
        m_ended.DestroyWindow();
    return FALSE;
}
