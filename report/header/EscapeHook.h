// Esc while the mouse drags something.
#pragma once

#include <functional>
#include <windows.h>

// Takes every press of Esc that a window of this thread would get, for as long as it lives: the key goes to
// whatever has the focus, which need not be what is being dragged, and would close a dialog. One at a time in
// a thread.
class EscapeHook
{
public:
    // `escaped` may end this object.
    explicit EscapeHook(std::function<void()> escaped);
    ~EscapeHook();
    EscapeHook(const EscapeHook&) = delete;
    EscapeHook& operator=(const EscapeHook&) = delete;

private:
    static LRESULT CALLBACK OnKey(int code, WPARAM key, LPARAM flags);

    std::function<void()> m_escaped;
    HHOOK m_hook;
};
