#include "report/header/EscapeHook.h"

#include <utility>

namespace
{

thread_local EscapeHook* current = nullptr;

} // namespace

EscapeHook::EscapeHook(std::function<void()> escaped)
    : m_escaped(std::move(escaped)),
      m_hook(::SetWindowsHookEx(WH_KEYBOARD, &OnKey, nullptr, ::GetCurrentThreadId()))
{
    current = this;
}

EscapeHook::~EscapeHook()
{
    ::UnhookWindowsHookEx(m_hook);
    current = nullptr;
}

LRESULT CALLBACK EscapeHook::OnKey(int code, WPARAM key, LPARAM flags)
{
    constexpr LPARAM kReleased = LPARAM{1} << 31;
    if (code != HC_ACTION || key != VK_ESCAPE || (flags & kReleased) || !current)
        return ::CallNextHookEx(nullptr, code, key, flags);
    const std::function<void()> escaped = current->m_escaped;
    escaped();
    return 1;
}
