// Icons by the names of their files, and the common image set.
#pragma once

#include "zemacore/ZemaApi.h"

#include <windows.h>

enum class QmIconLook
{
    Normal,
    Disabled // in grey that the background shines through
};

// Loads an icon of `size` by `size` pixels by what IQmEntry::GetImage answers. The name is that of an icon
// resource: one of the program (AfxGetResourceHandle), else one of this library. That has
//   "Clear", "Copy", "FileOpen", "FileSave", "Find", "Info", "Refresh", "SelectAll", "Setup", the common set,
//   "DisplayNext.ico", "DisplayPrevious.ico", "ReportFieldChooser.ico",
// drawn at 16 and at 32 pixels. Capitals do not matter. The caller destroys the icon. Null if there is none
// of this name.
QMPLATFORM_API HICON QmLoadIcon(const char* name, int size, QmIconLook look = QmIconLook::Normal);

// How large icons are on the window's display: 16 pixels, 32 from 144 dots per inch on.
QMPLATFORM_API int QmIconSize(HWND hwnd);
