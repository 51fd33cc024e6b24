// The colours that windows paint themselves in: the system's, or a dark set for all windows within a frame.
#pragma once

#include "vkgrafic/UiColors.h"

#include <windows.h>

namespace VkGrafic
{

// From now on the frame window and all windows within it are dark, or are in the system's colours again; they
// are told by WM_SYSCOLORCHANGE. Windows of their own, such as dialogs, keep the system's colours.
QMPLATFORM_API void UseDarkColors(HWND frame, bool dark);

// As they are at the moment for a window.
class QMPLATFORM_API WindowColors
{
public:
    explicit WindowColors(HWND hwnd);

    bool IsDark() const { return m_isDark; }
    COLORREF operator[](UiColor color) const;

    // Nobody deletes it.
    HBRUSH Brush(UiColor color) const;

private:
    bool m_isDark;
};

} // namespace VkGrafic
