#include "msgservice/session/Counter.h"

#include "QmLogWriter.h"
#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

namespace msgservice
{

std::optional<std::uint32_t> LastNumber()
{
    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    char path[MAX_PATH] = {};
    std::uint64_t size = 0;
    if (!QmLogMakeFilePath("Log.DAT", path) || !files.GetSize(path, size))
        return 0;
    const HANDLE file = ZEMA_CreateFile(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (!file || file == INVALID_HANDLE_VALUE)
        return std::nullopt;
    std::uint32_t number = 0;
    DWORD bytes = 0;
    const bool read = files.Read(file, &number, sizeof(number), bytes);
    files.Close(file);
    return read ? std::optional(number) : std::nullopt;
}

unsigned long CountersError()
{
    char path[MAX_PATH] = {};
    if (!QmLogMakeFilePath("Log.DAT", path))
        return ERROR_PATH_NOT_FOUND;
    const HANDLE file = ZEMA_CreateFile(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                        OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (!file || file == INVALID_HANDLE_VALUE)
        return ZEMA::FileCalls().LastError();
    ZEMA::FileCalls().Close(file);
    return ERROR_SUCCESS;
}

} // namespace msgservice
