#include "qmcommon/QmModule.h"

HINSTANCE QmModuleOf(const void* place)
{
    HMODULE module = nullptr;
    ::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                             GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         static_cast<LPCSTR>(place), &module);
    return module;
}

LPCDLGTEMPLATE QmFindDialog(HINSTANCE module, UINT id)
{
    const HRSRC resource = ::FindResource(module, MAKEINTRESOURCE(id), RT_DIALOG);
    const HGLOBAL data = resource ? ::LoadResource(module, resource) : nullptr;
    return data ? static_cast<LPCDLGTEMPLATE>(::LockResource(data)) : nullptr;
}
