// Dialogs from the library's own resources.
#pragma once

#include "qmcommon/QmModule.h"

namespace logreport
{

// The module that this code is in: the library, or a program that it is part of.
inline HINSTANCE OwnModule()
{
    static const char place = 0;
    return QmModuleOf(&place);
}

// The template of a dialog in it; null if there is none.
inline LPCDLGTEMPLATE FindOwnDialog(UINT id)
{
    return QmFindDialog(OwnModule(), id);
}

} // namespace logreport
