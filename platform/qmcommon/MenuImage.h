// Which picture an item of a menu has: for who makes the item, and who draws it.
#pragma once

#include <windows.h>

namespace qmcommon
{

// What the data of a menu item is to be, so that ImageOf finds the name again: the address of a copy of it
// that lives as long as the process. 0 for null.
ULONG_PTR ImageData(const char* name);

// The name; null for data that others have put there, whatever it is.
const char* ImageOf(ULONG_PTR data);

} // namespace qmcommon
