// Icons by the names of their files.
#pragma once

#include "zemacore/ZemaApi.h"

#include <windows.h>

// Loads an icon of `size` by `size` pixels by a name such as "DisplayNext.ico". The name is that of an icon
// resource: one of the program (AfxGetResourceHandle), else one of this library, which has
// "DisplayNext.ico", "DisplayPrevious.ico" and "ReportFieldChooser.ico". Capitals do not matter. The caller
// destroys the icon. Null if there is none of this name.
QMPLATFORM_API HICON QmLoadIcon(const char* name, int size);
