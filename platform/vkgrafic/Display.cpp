#include "vkgrafic/Display.h"

#include <map>

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

// One for each resolution that a display has, for as long as the program runs.
HFONT GetGuiFont(HWND hwnd)
{
    static thread_local std::map<int, HFONT> fonts;
    const HFONT stock = static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
    const int dpi = GetResolution(hwnd);
    const int systemDpi = GetResolution(nullptr);
    if (dpi == systemDpi)
        return stock;
    HFONT& font = fonts[dpi];
    if (!font)
    {
        LOGFONT description = {};
        ::GetObject(stock, sizeof(description), &description);
        description.lfHeight = ::MulDiv(description.lfHeight, dpi, systemDpi);
        font = ::CreateFontIndirect(&description);
    }
    return font ? font : stock;
}

bool IsHighContrast()
{
    HIGHCONTRAST contrast = {};
    contrast.cbSize = sizeof(contrast);
    return ::SystemParametersInfo(SPI_GETHIGHCONTRAST, sizeof(contrast), &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

} // namespace VkGrafic
