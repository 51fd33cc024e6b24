#include "logdesk/Messages.h"

#include "commandline/ConsoleText.h"
#include "wintypes.h"

namespace logdesk
{

namespace
{

bool Write(HANDLE output, const std::string& text)
{
    std::size_t shown = 0;
    if (commandline::WriteConsoleText(output, text, shown))
        return true;
    DWORD written = 0;
    return output && output != INVALID_HANDLE_VALUE &&
           ::WriteFile(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

bool WriteToConsole(const std::string& text)
{
    if (!::AttachConsole(ATTACH_PARENT_PROCESS))
        return false;
    const HANDLE console =
        ::CreateFileA("CONOUT$", GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    std::size_t written = 0;
    const bool isWritten = // after the prompt, which did not wait for us
        commandline::WriteConsoleText(console, "\n" + text, written);
    if (console != INVALID_HANDLE_VALUE)
        ::CloseHandle(console);
    ::FreeConsole();
    return isWritten;
}

} // namespace

void Tell(const std::string& text, Tone tone)
{
    const bool isFailure = tone == Tone::Failure;
    if (Write(::GetStdHandle(isFailure ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE), text) || WriteToConsole(text))
        return;
    ::MessageBoxA(nullptr, text.c_str(), "LogDesk",
                  MB_OK | (isFailure ? MB_ICONWARNING : MB_ICONINFORMATION));
}

} // namespace logdesk
