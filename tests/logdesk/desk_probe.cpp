// Prints what another program's window shows: its title, its notices, the panes of its status bar, and where
// its text window lies on the screen. For the test that drives LogDesk from outside.
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
    if (::GetDlgCtrlID(child) == kNoticesId && ::IsWindowVisible(child))
    {
        char text[2000] = {};
        ::SendMessageA(child, WM_GETTEXT, sizeof(text), reinterpret_cast<LPARAM>(text));
        std::printf("notice: %s\n", text);
    }
    return TRUE;
}

} // namespace

// Ends with 1 when there is no window of the class named.
int main(int count, char** words)
{
    const HWND window = count == 2 ? ::FindWindowA(words[1], nullptr) : nullptr;
    if (window == nullptr)
        return 1;
    char title[512] = {};
    ::GetWindowTextA(window, title, sizeof(title));
    std::printf("title: %s\n", title);
    ::EnumChildWindows(window, PrintChild, 0);
    return 0;
}
