// Window classes.
#include "afxwin.h"

#include <cstdio>
#include <mutex>
#include <set>
#include <string>

BOOL AfxRegisterClass(WNDCLASS* windowClass)
{
    return ::RegisterClass(windowClass) || ::GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

LPCSTR AfxRegisterWndClass(UINT classStyle, HCURSOR cursor, HBRUSH background, HICON icon)
{
    char name[96];
    std::snprintf(name, sizeof(name), "Afx:%x:%p:%p:%p", classStyle, static_cast<void*>(cursor),
                  static_cast<void*>(background), static_cast<void*>(icon));

    WNDCLASS windowClass = {};
    windowClass.style = classStyle;
    windowClass.lpfnWndProc = ::DefWindowProc;
    windowClass.hInstance = AfxGetInstanceHandle();
    windowClass.hIcon = icon;
    windowClass.hCursor = cursor;
    windowClass.hbrBackground = background;
    windowClass.lpszClassName = name;
    if (!AfxRegisterClass(&windowClass))
        AfxThrowResourceException();

    static std::mutex lock;
    static std::set<std::string> names;
    const std::lock_guard guard(lock);
    return names.insert(name).first->c_str();
}
