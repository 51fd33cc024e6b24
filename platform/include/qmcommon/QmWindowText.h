// The texts of windows in any language.
#pragma once

#include "zemacore/ZemaApi.h"

#include <string>
#include <windows.h>

// Sets a window's text, which is UTF-8 where it is valid UTF-8, else in the system's code page. In a window
// of UTF-16 all its characters are there.
QMPLATFORM_API void QmSetWindowText(HWND hwnd, const std::string& text);

// As UTF-8.
QMPLATFORM_API std::string QmGetWindowText(HWND hwnd);
