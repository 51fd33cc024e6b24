#include "logview/FileLook.h"

#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

namespace logview
{

bool IsMissing(DWORD error)
{
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

bool CanOpen(const char* path, DWORD access, DWORD share, DWORD disposition)
{
    const HANDLE file =
        ZEMA_CreateFile(path, access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (!file || file == INVALID_HANDLE_VALUE)
        return false;
    ZEMA::FileCalls().Close(file);
    return true;
}

std::optional<int> AskTime(const std::string& path)
{
    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    const HANDLE file = ZEMA_CreateFile(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (!file || file == INVALID_HANDLE_VALUE)
        return IsMissing(files.LastError()) ? std::optional<int>(0) : std::nullopt;
    std::int32_t time = 0; // a file that is shorter reads as zeros
    DWORD bytes = 0;
    const bool isRead = files.Read(file, &time, sizeof(time), bytes);
    files.Close(file);
    return isRead ? std::optional<int>(time) : std::nullopt;
}

} // namespace logview
