// Dialogs from the library's own resources.
#pragma once

#include "afxwin.h"

namespace logreport
{

// The module that this code is in: the library, or a program that it is part of.
HINSTANCE OwnModule();

// The template of a dialog in it; null if there is none.
LPCDLGTEMPLATE FindOwnDialog(UINT id);

} // namespace logreport
