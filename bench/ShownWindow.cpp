#include "ShownWindow.h"

namespace bench
{

namespace
{

void ShowAlone(HWND shown)
{
    for (HWND hwnd = ::GetWindow(shown, GW_HWNDFIRST); hwnd; hwnd = ::GetWindow(hwnd, GW_HWNDNEXT))
        ::ShowWindow(hwnd, hwnd == shown ? SW_SHOW : SW_HIDE);
    ::SetFocus(shown);
}

} // namespace

void Repaint(HWND hwnd)
{
    ::RedrawWindow(hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE | RDW_NOCHILDREN);
}

void Press(HWND hwnd, WPARAM key)
{
    ::SendMessage(hwnd, WM_KEYDOWN, key, 0);
    ::UpdateWindow(hwnd);
}

Variant WhenShown(HWND hwnd, unsigned times, const std::function<void()>& action,
                  const std::function<void()>& prepare)
{
    return {times,
            [=] {
                for (unsigned i = 0; i < times; ++i)
                    action();
            },
            [=] {
                ShowAlone(hwnd);
                if (prepare)
                    prepare();
                ::UpdateWindow(hwnd);
            }};
}

} // namespace bench
