#include "mfc/WndCall.h"

#include "mfc/ThreadState.h"

ThreadState& GetThreadState()
{
    thread_local ThreadState* const state = new ThreadState;
    return *state;
}

LRESULT CALLBACK CWndCall::WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    CWnd* const wnd = CWnd::FromHandlePermanent(hwnd);
    if (!wnd)
        return ::DefWindowProc(hwnd, message, wParam, lParam);

    ThreadState& state = GetThreadState();
    if (message == WM_DISPLAYCHANGE)
        state.paintPicture.reset(); // it has the colours of the display as it was
    const MSG outer = std::exchange(state.message, MSG{hwnd, message, wParam, lParam, 0, {}});
    const LRESULT result = Call(*wnd, state.message);
    state.message = outer;

    // A WM_NCDESTROY handler that does not go on to CWnd's leaves the object attached to nothing.
    if (message == WM_NCDESTROY && CWnd::FromHandlePermanent(hwnd) == wnd)
        wnd->Detach();
    return result;
}

static LRESULT Failed(CException* exception, const MSG& message)
{
    if (message.message == WM_PAINT)
        ::ValidateRect(message.hwnd, nullptr); // or it would be asked for again at once
    if (CWinApp* const app = AfxGetApp())
        return app->ProcessWndProcException(exception, &message);
    return message.message == WM_CREATE ? -1 : 0;
}

// `current` changes while the window deals with it.
LRESULT CWndCall::Call(CWnd& wnd, const MSG& current) noexcept
{
    const MSG message = current;
    return GuardHandler(message,
                        [&] { return wnd.WindowProc(message.message, message.wParam, message.lParam); });
}

LRESULT GuardHandler(const MSG& message, const std::function<LRESULT()>& handler) noexcept
{
    try
    {
        return handler();
    }
    catch (CException* exception)
    {
        const LRESULT result = Failed(exception, message);
        exception->Delete();
        return result;
    }
    catch (const std::bad_alloc&)
    {
        CMemoryException exception(FALSE);
        return Failed(&exception, message);
    }
}

BOOL CWndCall::Subclass(CWnd& wnd, HWND hwnd, bool isWide)
{
    if (!wnd.Attach(hwnd))
        return FALSE;
    wnd.PreSubclassWindow();
    const auto procedure = reinterpret_cast<LONG_PTR>(&WindowProc);
    const auto setProcedure = isWide ? ::SetWindowLongPtrW : ::SetWindowLongPtrA;
    wnd.m_pfnSuper = reinterpret_cast<WNDPROC>(setProcedure(hwnd, GWLP_WNDPROC, procedure));
    wnd.m_isWide = isWide;
    return TRUE;
}

CreationHook::CreationHook(CWnd& wnd)
    : m_wnd(wnd), m_hook(::SetWindowsHookEx(WH_CBT, &OnHook, nullptr, ::GetCurrentThreadId())),
      m_outer(std::exchange(GetThreadState().creation, this))
{
}

CreationHook::~CreationHook()
{
    GetThreadState().creation = m_outer;
    ::UnhookWindowsHookEx(m_hook);
}

LRESULT CALLBACK CreationHook::OnHook(int code, WPARAM wParam, LPARAM lParam)
{
    // Windows that the new one creates in its turn have hooks of their own or no object.
    CreationHook* const creation = GetThreadState().creation;
    if (code == HCBT_CREATEWND && creation && !creation->m_seen)
    {
        creation->m_seen = true;
        creation->m_wnd.SubclassWindow(reinterpret_cast<HWND>(wParam));
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}
