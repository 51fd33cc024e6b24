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

// Puts a field of UTF-16 in the place of a dialog's own field or combo box, which knows the characters of the
// code page only: with its identifier, styles, place and font, and without its text. Null, with nothing
// changed, if the system has no more windows.
QMPLATFORM_API HWND QmMakeWideField(HWND field);
