#include "qmcommon/QmWindowText.h"

#include "zemacore/WideText.h"

#include <algorithm>
#include <iterator>

void QmSetWindowText(HWND hwnd, const std::string& text)
{
    ZEMA::WideString wide;
    ZEMA::ToWide(text.data(), text.size(), wide);
    ::SetWindowTextW(hwnd, wide.c_str());
}

std::string QmGetWindowText(HWND hwnd)
{
    ZEMA::WideString wide(static_cast<std::size_t>(std::max(::GetWindowTextLengthW(hwnd), 0)) + 1, L'\0');
    const int length = ::GetWindowTextW(hwnd, wide.data(), static_cast<int>(wide.size()));
    std::string text;
    ZEMA::FromWide(wide.data(), static_cast<std::size_t>(std::max(length, 0)), text);
    return text;
}

HWND QmMakeWideField(HWND field)
{
    wchar_t windowClass[16] = {};
    ::GetClassNameW(field, windowClass, static_cast<int>(std::size(windowClass)));
    RECT place = {};
    ::GetWindowRect(field, &place);
    ::SendMessage(field, CB_GETDROPPEDCONTROLRECT, 0,
                  reinterpret_cast<LPARAM>(&place)); // of a combo box: all of it
    const HWND parent = ::GetParent(field);
    ::MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
    const HWND made =
        ::CreateWindowExW(static_cast<DWORD>(::GetWindowLong(field, GWL_EXSTYLE)), windowClass, L"",
                          static_cast<DWORD>(::GetWindowLong(field, GWL_STYLE)), place.left, place.top,
                          place.right - place.left, place.bottom - place.top, parent,
                          reinterpret_cast<HMENU>(static_cast<INT_PTR>(::GetDlgCtrlID(field))),
                          reinterpret_cast<HINSTANCE>(::GetWindowLongPtr(field, GWLP_HINSTANCE)), nullptr);
    if (!made)
        return nullptr;
    ::SendMessage(made, WM_SETFONT, static_cast<WPARAM>(::SendMessage(field, WM_GETFONT, 0, 0)), FALSE);
    ::SetWindowPos(made, field, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    ::DestroyWindow(field);
    return made;
}
