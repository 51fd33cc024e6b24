#include "qmcommon/QmHookWnd.h"

#include "afxwin.h"

#include <algorithm>
#include <map>
#include <vector>

// Not the common controls' subclassing, which keeps what it knows in properties of the window: Wine's server
// is asked for them twice a message, six times a paint (docs/performance.md).

namespace
{

// What a window does by itself, and by what was there before its first hook.
struct OwnProcedure
{
    WNDPROC procedure = nullptr;
    bool isWide = false; // whether messages come with texts of 16 bits

    WNDPROC SetProcedure(HWND hwnd, WNDPROC set) const
    {
        const auto setLong = isWide ? ::SetWindowLongPtrW : ::SetWindowLongPtrA;
        return reinterpret_cast<WNDPROC>(setLong(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(set)));
    }

    bool HasProcedure(HWND hwnd, WNDPROC wanted) const
    {
        const auto getLong = isWide ? ::GetWindowLongPtrW : ::GetWindowLongPtrA;
        return getLong(hwnd, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(wanted);
    }

    LRESULT Call(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) const
    {
        const auto call = isWide ? ::CallWindowProcW : ::CallWindowProcA;
        return call(procedure, hwnd, message, wParam, lParam);
    }
};

struct HookedWindow
{
    OwnProcedure own;
    std::vector<CQmHookWnd*> hooks; // the one attached last is the last
};

// Of this thread. They live as long as the process, for hooks may be global objects. Of a handle 32 bits
// count.
using HookedWindows = std::map<long, HookedWindow>;
HookedWindows& GetHookedWindows()
{
    thread_local auto* const windows = new HookedWindows;
    return *windows;
}

} // namespace

CQmHookWnd::CQmHookWnd() = default;

CQmHookWnd::~CQmHookWnd()
{
    Detach();
}

bool CQmHookWnd::Attach(HWND hwnd)
{
    Detach();
    if (::GetWindowThreadProcessId(hwnd, nullptr) != ::GetCurrentThreadId())
        return false;
    HookedWindow& window = GetHookedWindows()[HandleToLong(hwnd)];
    if (!window.own.procedure)
    {
        window.own.isWide = ::IsWindowUnicode(hwnd) != FALSE;
        window.own.procedure = window.own.SetProcedure(hwnd, HookProc);
    }
    window.hooks.push_back(this);
    m_hWnd = hwnd;
    return true;
}

void CQmHookWnd::Detach()
{
    const HWND hwnd = std::exchange(m_hWnd, nullptr);
    HookedWindows& windows = GetHookedWindows();
    const auto found = hwnd ? windows.find(HandleToLong(hwnd)) : windows.end();
    if (found == windows.end())
        return;
    HookedWindow& window = found->second;
    std::erase(window.hooks, this);
    if (!window.hooks.empty())
        return;
    if (window.own.HasProcedure(hwnd, HookProc))
        window.own.SetProcedure(hwnd, window.own.procedure);
    else if (::IsWindow(hwnd))
        return; // others came later: HookProc stays below them and only passes on
    windows.erase(found);
}

LRESULT CQmHookWnd::CallWindow(UINT message, WPARAM wParam, LPARAM lParam)
{
    return PassOn(m_hWnd, this, message, wParam, lParam);
}

// Hooks may attach, detach and be destroyed while they see the message, and so may the window: nothing is
// kept over a call but copies, and the hook that was called is looked for, without touching it, to know the
// next.
LRESULT CQmHookWnd::PassOn(HWND hwnd, const CQmHookWnd* from, UINT message, WPARAM wParam, LPARAM lParam)
{
    HookedWindows& windows = GetHookedWindows();
    auto found = windows.find(HandleToLong(hwnd));
    if (found == windows.end())
        return ::DefWindowProc(hwnd, message, wParam, lParam);
    const OwnProcedure own = found->second.own;
    std::size_t left = found->second.hooks.size();
    while (found != windows.end())
    {
        const std::vector<CQmHookWnd*>& hooks = found->second.hooks;
        const auto place = std::find(hooks.begin(), hooks.end(), from);
        left = std::min(left, static_cast<std::size_t>(place - hooks.begin()));
        if (left == 0)
            break;
        CQmHookWnd* const next = hooks[--left];
        LRESULT result = 0;
        if (next->OnHookMessage(message, wParam, lParam, &result))
            return result;
        from = next;
        found = windows.find(HandleToLong(hwnd));
    }
    return own.Call(hwnd, message, wParam, lParam);
}

LRESULT CALLBACK CQmHookWnd::HookProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    HookedWindows& windows = GetHookedWindows();
    const auto found = windows.find(HandleToLong(hwnd));
    if (message != WM_NCDESTROY || found == windows.end())
        return PassOn(hwnd, nullptr, message, wParam, lParam);
    const HookedWindow window = std::move(found->second);
    windows.erase(found);
    for (CQmHookWnd* const hook : window.hooks)
        hook->m_hWnd = nullptr;
    return window.own.Call(hwnd, message, wParam, lParam);
}

BOOL CQmEndHook::OnHookMessage(UINT message, WPARAM, LPARAM, LRESULT*)
{
    if (message == WM_DESTROY)
        m_ended.DestroyWindow();
    return FALSE;
}
