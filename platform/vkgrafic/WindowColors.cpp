#include "vkgrafic/WindowColors.h"

#include <iterator>

namespace VkGrafic
{

namespace
{

constexpr wchar_t kDarkProperty[] = L"QmDarkColors"; // of a frame window

constexpr int kSystemColors[] = {COLOR_WINDOW,       COLOR_WINDOWTEXT, COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT,
                                 COLOR_BTNFACE,      COLOR_WINDOWTEXT, COLOR_BTNFACE,   COLOR_BTNTEXT,
                                 COLOR_GRAYTEXT,     COLOR_HOTLIGHT,   COLOR_3DLIGHT,   COLOR_BTNSHADOW,
                                 COLOR_BTNHIGHLIGHT, COLOR_3DDKSHADOW, COLOR_MENU,      COLOR_MENUTEXT,
                                 COLOR_INFOBK,       COLOR_INFOTEXT};
static_assert(std::size(kSystemColors) == static_cast<std::size_t>(UiColor::Count));

} // namespace

void UseDarkColors(HWND frame, bool dark)
{
    if (dark == WindowColors(frame).IsDark())
        return;
    if (dark)
        ::SetPropW(frame, kDarkProperty, reinterpret_cast<HANDLE>(1));
    else
        ::RemovePropW(frame, kDarkProperty);
    ::SendMessage(frame, WM_SYSCOLORCHANGE, 0, 0);
    ::RedrawWindow(frame, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

WindowColors::WindowColors(HWND hwnd)
    : m_isDark(hwnd && ::GetPropW(::GetAncestor(hwnd, GA_ROOT), kDarkProperty))
{
}

COLORREF WindowColors::operator[](UiColor color) const
{
    return m_isDark ? DarkColor(color) : ::GetSysColor(kSystemColors[static_cast<std::size_t>(color)]);
}

// The dark ones are there for as long as the program runs.
HBRUSH WindowColors::Brush(UiColor color) const
{
    const auto index = static_cast<std::size_t>(color);
    if (!m_isDark)
        return ::GetSysColorBrush(kSystemColors[index]);
    static thread_local HBRUSH brushes[static_cast<std::size_t>(UiColor::Count)] = {};
    if (!brushes[index])
        brushes[index] = ::CreateSolidBrush(DarkColor(color));
    return brushes[index];
}

} // namespace VkGrafic
