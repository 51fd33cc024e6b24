// The module that the platform's code is in.
#pragma once

#include "qmcommon/QmModule.h"

inline HINSTANCE PlatformModule()
{
    static const char place = 0;
    return QmModuleOf(&place);
}
