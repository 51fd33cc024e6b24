#include "logreport/OwnDialog.h"

namespace logreport
{

HINSTANCE OwnModule()
{
    HMODULE module = nullptr;
    ::GetModuleHandleEx(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                        reinterpret_cast<LPCTSTR>(&OwnModule), &module);
    return module;
}

LPCDLGTEMPLATE FindOwnDialog(UINT id)
{
    const HINSTANCE module = OwnModule();
    const HRSRC resource = ::FindResource(module, MAKEINTRESOURCE(id), RT_DIALOG);
    const HGLOBAL data = resource ? ::LoadResource(module, resource) : nullptr;
    return data ? static_cast<LPCDLGTEMPLATE>(::LockResource(data)) : nullptr;
}

} // namespace logreport
