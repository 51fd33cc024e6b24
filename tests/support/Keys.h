// Keys as a program's message loop deals with them, and what they leave in the clipboard.
#pragma once

#include "afxwin.h"
#include "zemacore/WideText.h"

#include <cwchar>
#include <string>

// A key that counts as held for this thread: VK_SHIFT, VK_CONTROL or VK_MENU; 0 for none.
class HeldKey
{
public:
    explicit HeldKey(int key) : m_key(key) { SetState(0x80); }
    ~HeldKey() { SetState(0); }
    HeldKey(const HeldKey&) = delete;
    HeldKey& operator=(const HeldKey&) = delete;

private:
    void SetState(BYTE state) const
    {
        BYTE keys[256] = {};
        keys[m_key] = m_key != 0 ? state : BYTE{0};
        ::SetKeyboardState(keys);
    }

    int m_key;
};

inline MSG KeyMessage(HWND window, WPARAM key, int modifier = 0)
{
    return {window, static_cast<UINT>(modifier == VK_MENU ? WM_SYSKEYDOWN : WM_KEYDOWN), key, 1, 0, {}};
}

// Deals with what was posted.
inline void PumpMessages()
{
    MSG next = {};
    while (::PeekMessage(&next, nullptr, 0, 0, PM_REMOVE))
        if (!CWnd::WalkPreTranslateTree(nullptr, &next))
            ::DispatchMessage(&next);
}

// The clipboard's text in the code page or, with CF_UNICODETEXT, in UTF-8; "(none)" if there is none.
inline std::string ClipboardText(HWND owner, UINT format = CF_TEXT)
{
    std::string text = "(none)";
    if (!::OpenClipboard(owner))
        return "(closed)";
    if (const HANDLE data = ::GetClipboardData(format))
    {
        const void* const bytes = ::GlobalLock(data);
        if (format == CF_UNICODETEXT)
            ZEMA::FromWide(static_cast<const wchar_t*>(bytes),
                           std::wcslen(static_cast<const wchar_t*>(bytes)), text);
        else
            text = static_cast<const char*>(bytes);
        ::GlobalUnlock(data);
    }
    ::CloseClipboard();
    return text;
}
