// Between the system's windows and their objects.
#pragma once

#include "afxwin.h"

#include <functional>

// Null for no window.
inline HWND HandleOf(const CWnd* wnd)
{
    return wnd ? wnd->m_hWnd : nullptr;
}

// What `handler` answers; where a framework exception or the lack of memory leaves it, the answer of the
// failed message, and the user is told. An exception must not pass through the system's frames.
LRESULT GuardHandler(const MSG& message, const std::function<LRESULT()>& handler) noexcept;

// The framework's side of a window: what its messages go through, and how it gets its object.
class CWndCall
{
public:
    // The window procedure of every window whose messages an object deals with.
    static LRESULT CALLBACK WindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);

    // Attaches the window and makes the object deal with its messages from now on.
    static BOOL Subclass(CWnd& wnd, HWND hwnd, bool isWide = false);

private:
    static LRESULT Call(CWnd& wnd, const MSG& current) noexcept;
};

// While it lives, the next window that this thread creates becomes that of `wnd`, before its first message.
class CreationHook
{
public:
    explicit CreationHook(CWnd& wnd);
    ~CreationHook();
    CreationHook(const CreationHook&) = delete;
    CreationHook& operator=(const CreationHook&) = delete;

    // False when the creation failed before there was a window.
    bool HasSeenWindow() const { return m_seen; }

private:
    static LRESULT CALLBACK OnHook(int code, WPARAM wParam, LPARAM lParam);

    CWnd& m_wnd;
    HHOOK m_hook;
    CreationHook* m_outer;
    bool m_seen = false;
};
