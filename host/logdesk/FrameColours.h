// Dark and light frame windows.
#pragma once

#include "wintypes.h"

namespace logdesk
{

// What the system wants programs to be.
bool IsSystemDark();

// The title, menus and bars of a frame window and of the windows in it. Where the user wants high contrast
// they stay the system's.
void UseFrameColours(HWND frame, bool dark);

} // namespace logdesk
