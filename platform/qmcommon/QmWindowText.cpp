#include "qmcommon/QmWindowText.h"

#include "zemacore/WideText.h"

#include <algorithm>

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
