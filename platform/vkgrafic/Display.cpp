#include "vkgrafic/Display.h"

namespace VkGrafic
{

int GetResolution(HWND hwnd)
{
    using GetDpi = UINT(WINAPI*)(HWND);
    static const auto getDpi = reinterpret_cast<GetDpi>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandle("user32.dll"), "GetDpiForWindow")));
    if (const UINT dpi = hwnd && getDpi ? getDpi(hwnd) : 0)
        return static_cast<int>(dpi);
    const HDC screen = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(screen, LOGPIXELSY);
    ::ReleaseDC(nullptr, screen);
    return dpi;
}

bool IsHighContrast()
{
    HIGHCONTRAST contrast = {};
    contrast.cbSize = sizeof(contrast);
    return ::SystemParametersInfo(SPI_GETHIGHCONTRAST, sizeof(contrast), &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

} // namespace VkGrafic
