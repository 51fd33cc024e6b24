// Prints what another program's window shows: its title, its notices, the panes of its status bar, the texts
// of a dialog, and where its windows lie on the screen. For the test that drives LogDesk from outside.
#include "wintypes.h"

#include <commctrl.h>

#include <cstdio>
#include <string>

namespace
{

constexpr int kNoticesId = 102;

// A pane's text, which the bar writes into memory of its own process.
std::string PaneText(HWND bar, WPARAM pane)
{
    char text[256] = {};
    DWORD processId = 0;
    ::GetWindowThreadProcessId(bar, &processId);
    const HANDLE process =
        ::OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, processId);
    void* const memory = ::VirtualAllocEx(process, nullptr, sizeof(text), MEM_COMMIT, PAGE_READWRITE);
    if (memory != nullptr && LOWORD(::SendMessageA(bar, SB_GETTEXTLENGTHA, pane, 0)) < sizeof(text))
    {
        ::SendMessageA(bar, SB_GETTEXTA, pane, reinterpret_cast<LPARAM>(memory));
        ::ReadProcessMemory(process, memory, text, sizeof(text) - 1, nullptr);
    }
    ::VirtualFreeEx(process, memory, 0, MEM_RELEASE);
    ::CloseHandle(process);
    return text;
}

// The system hands the text over as UTF-16, whatever was asked for.
std::string ItemText(HWND list, WPARAM item)
{
    wchar_t wide[500] = {};
    char text[1500] = {};
    if (::SendMessageW(list, LB_GETTEXTLEN, item, 0) < 500)
        ::SendMessageW(list, LB_GETTEXT, item, reinterpret_cast<LPARAM>(wide));
    ::WideCharToMultiByte(CP_UTF8, 0, wide, -1, text, sizeof(text), nullptr, nullptr);
    return text;
}

// By a pixel of the status bar on the screen.
bool IsBarDark(HWND window)
{
    POINT place = {1, 3};
    ::ClientToScreen(::FindWindowExA(window, nullptr, STATUSCLASSNAMEA, nullptr), &place);
    const HDC dc = ::GetDC(nullptr);
    const COLORREF color = ::GetPixel(dc, place.x, place.y);
    ::ReleaseDC(nullptr, dc);
    return color != CLR_INVALID && GetRValue(color) < 128;
}

BOOL CALLBACK PrintChild(HWND child, LPARAM)
{
    char className[256] = {};
    ::GetClassNameA(child, className, sizeof(className));
    RECT rect = {};
    ::GetClientRect(child, &rect);
    ::MapWindowPoints(child, nullptr, reinterpret_cast<POINT*>(&rect), 2);
    std::printf("%s %ld %ld %ld %ld %s\n", className, rect.left, rect.top, rect.right, rect.bottom,
                ::IsWindowVisible(child) ? "visible" : "hidden");
    if (std::string(className) == STATUSCLASSNAMEA)
        for (WPARAM pane = 0; pane < static_cast<WPARAM>(::SendMessageA(child, SB_GETPARTS, 0, 0)); ++pane)
            std::printf("pane: %s\n", PaneText(child, pane).c_str());
    const std::string kind = className;
    if (kind == "Static" || kind == "Edit")
    {
        char text[500] = {};
        ::SendMessageA(child, WM_GETTEXT, sizeof(text), reinterpret_cast<LPARAM>(text));
        std::printf("text: %s\n", text);
    }
    const WPARAM items =
        kind == "ListBox" ? static_cast<WPARAM>(::SendMessageW(child, LB_GETCOUNT, 0, 0)) : 0;
    for (WPARAM item = 0; item < items; ++item)
        std::printf("item: %s\n", ItemText(child, item).c_str());
    if (::GetDlgCtrlID(child) == kNoticesId && ::IsWindowVisible(child))
    {
        char text[2000] = {};
        ::SendMessageA(child, WM_GETTEXT, sizeof(text), reinterpret_cast<LPARAM>(text));
        std::printf("notice: %s\n", text);
    }
    return TRUE;
}

} // namespace

// desk_probe CLASS [settings]: instead of printing it tells the window that the system's colours have been
// chosen anew. Ends with 1 when there is no window of the class named.
int main(int count, char** words)
{
    const HWND window = count >= 2 ? ::FindWindowA(words[1], nullptr) : nullptr;
    if (window == nullptr)
        return 1;
    if (count > 2 && std::string(words[2]) == "settings")
    {
        ::SendMessageA(window, WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>("ImmersiveColorSet"));
        return 0;
    }
    char title[512] = {};
    ::GetWindowTextA(window, title, sizeof(title));
    std::printf("title: %s\n", title);
    std::printf("bar: %s\n", IsBarDark(window) ? "dark" : "light");
    ::EnumChildWindows(window, PrintChild, 0);
    return 0;
}
