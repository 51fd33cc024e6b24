// The resources of a library, wherever those of its program come from.
#pragma once

#include "zemacore/ZemaApi.h"

#include <windows.h>

// The module that a function or a variable is in: the library, or a program that it is part of.
QMPLATFORM_API HINSTANCE QmModuleOf(const void* place);

// The template of a dialog in a module, for InitModalIndirect and CreateIndirect; null if there is none.
QMPLATFORM_API LPCDLGTEMPLATE QmFindDialog(HINSTANCE module, UINT id);
