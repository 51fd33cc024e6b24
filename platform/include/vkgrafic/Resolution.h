// The resolution of displays.
#pragma once

#include "zemacore/ZemaApi.h"

#include <windows.h>

namespace VkGrafic
{

// The dots per inch of the window's display; without a window, and where the system knows one resolution
// alone, that of the system.
QMPLATFORM_API int GetResolution(HWND hwnd);

} // namespace VkGrafic
