// Displays: their resolution and what the user has set for all of them.
#pragma once

#include "zemacore/ZemaApi.h"

#include <windows.h>

namespace VkGrafic
{

// The dots per inch of the window's display; without a window, and where the system knows one resolution
// alone, that of the system.
QMPLATFORM_API int GetResolution(HWND hwnd);

// Whether the user wants high contrast: the system's colours alone then, and none of one's own.
QMPLATFORM_API bool IsHighContrast();

} // namespace VkGrafic
