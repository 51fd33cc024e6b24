#include "qmcommon/QmIcon.h"

#include "afxwin.h"

static HINSTANCE PlatformModule()
{
    HMODULE module = nullptr;
    ::GetModuleHandleEx(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                        reinterpret_cast<LPCTSTR>(&PlatformModule), &module);
    return module;
}

HICON QmLoadIcon(const char* name, int size)
{
    if (!name)
        return nullptr;
    HANDLE icon = ::LoadImage(AfxGetResourceHandle(), name, IMAGE_ICON, size, size, LR_DEFAULTCOLOR);
    if (!icon)
        icon = ::LoadImage(PlatformModule(), name, IMAGE_ICON, size, size, LR_DEFAULTCOLOR);
    return static_cast<HICON>(icon);
}
