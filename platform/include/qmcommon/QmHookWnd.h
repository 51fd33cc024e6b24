// Sees the messages of a window before the window does.
#pragma once

#include "zemacore/ZemaApi.h"

#include <windows.h>

class CWnd;

// Attached to a window of the same thread until it detaches, is destroyed, or the window is. A window may
// have several hooks; the one attached last sees a message first, and they may go in any order.
class QMPLATFORM_API CQmHookWnd
{
public:
    CQmHookWnd();
    virtual ~CQmHookWnd();
    CQmHookWnd(const CQmHookWnd&) = delete;
    CQmHookWnd& operator=(const CQmHookWnd&) = delete;

    // False when there is no such window; a former window is detached. A CWnd converts to its handle.
    bool Attach(HWND hwnd);
    void Detach();

    // Null while not attached.
    HWND GetHookedWindow() const { return m_hWnd; }

protected:
    // TRUE consumes the message and answers `*result`, which is 0 at first. May destroy this object.
    virtual BOOL OnHookMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) = 0;

    // What the window, and the hooks attached before, do with a message: for a hook that acts afterwards.
    LRESULT CallWindow(UINT message, WPARAM wParam, LPARAM lParam);

private:
    static LRESULT CALLBACK HookProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT PassOn(HWND hwnd, const CQmHookWnd* from, UINT message, WPARAM wParam, LPARAM lParam);

    HWND m_hWnd = nullptr;
};

// Ends a window, such as a dialog, with the one that it is attached to.
class QMPLATFORM_API CQmEndHook : public CQmHookWnd
{
public:
    // Not owned; it outlives the hook.
    explicit CQmEndHook(CWnd& ended) : m_ended(ended) {}

protected:
    BOOL OnHookMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

private:
    CWnd& m_ended;
};
