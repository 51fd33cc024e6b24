#include "logdesk/FrameColours.h"

#include "vkgrafic/Display.h"
#include "vkgrafic/WindowColors.h"

namespace logdesk
{

namespace
{

// Asked for by name: older systems do not have it.
void UseDarkTitle(HWND hwnd, bool dark)
{
    constexpr DWORD kUseImmersiveDarkMode = 20;
    using SetAttribute = HRESULT(WINAPI*)(HWND, DWORD, LPCVOID, DWORD);
    static const HMODULE library = ::LoadLibraryExW(L"dwmapi.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    static const auto setAttribute = reinterpret_cast<SetAttribute>(
        reinterpret_cast<void*>(library ? ::GetProcAddress(library, "DwmSetWindowAttribute") : nullptr));
    const BOOL isDark = dark;
    if (setAttribute)
        setAttribute(hwnd, kUseImmersiveDarkMode, &isDark, sizeof(isDark));
}

} // namespace

// Older systems know light ones only.
bool IsSystemDark()
{
    DWORD isLight = 1;
    DWORD size = sizeof(isLight);
    ::RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                   L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &isLight, &size);
    return isLight == 0;
}

void UseFrameColours(HWND frame, bool dark)
{
    const bool isOwn = dark && !VkGrafic::IsHighContrast();
    VkGrafic::UseDarkColors(frame, isOwn);
    UseDarkTitle(frame, isOwn);
}

} // namespace logdesk
