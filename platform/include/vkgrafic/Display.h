// Displays: their resolution and what the user has set for all of them.
#pragma once

#include "zemacore/ZemaApi.h"

#include <windows.h>

namespace VkGrafic
{

// The dots per inch of the window's display; without a window, and where the system knows one resolution
// alone, that of the system.
QMPLATFORM_API int GetResolution(HWND hwnd);

// The dialogs' font (DEFAULT_GUI_FONT) as high as the window's display wants it. The system's or ours: nobody
// deletes it.
QMPLATFORM_API HFONT GetGuiFont(HWND hwnd);

// Whether the user wants high contrast: the system's colours alone then, and none of one's own.
QMPLATFORM_API bool IsHighContrast();

} // namespace VkGrafic
