#include "logfiles/ErrorLog.h"

#include "QmLogWriter.h"
#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

#include <ctime>
#include <new>
#include <string>

namespace logfiles
{
namespace
{

std::string EntryText(const char* message, DWORD error)
{
    const std::time_t now = std::time(nullptr);
    const std::tm* local = std::localtime(&now);
    const char* date = local != nullptr ? std::asctime(local) : nullptr;

    std::string entry = "\n";
    entry += date != nullptr ? date : "\n";
    entry += "\n";
    entry += message;
    if (error != ERROR_SUCCESS)
    {
        entry += "\n";
        entry += ZEMA::FileCalls().ErrorText(error);
    }
    return entry;
}

// The file is opened for each entry, and its text goes out in one write, so that several processes may
// append to it. A failure has nowhere to go and is dropped.
void Append(const std::string& entry)
{
    char path[MAX_PATH] = {};
    if (!QmLogMakeFilePath("QmLog.LOG", path))
        return;
    const HANDLE file = ZEMA_CreateFile(path, GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                        FILE_FLAG_WRITE_THROUGH | FILE_FLAG_RANDOM_ACCESS |
                                            FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_NORMAL,
                                        nullptr);
    if (file == nullptr || file == INVALID_HANDLE_VALUE)
        return;

    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    std::uint64_t position = 0;
    DWORD written = 0;
    if (files.Seek(file, 0, FILE_END, position)) // else it would write over the entries before
        files.Write(file, entry.data(), static_cast<DWORD>(entry.size()), written);
    files.Close(file);
}

} // namespace

bool Report(const char* message)
{
    if (message == nullptr)
        return true;
    const DWORD error = ZEMA::FileCalls().LastError();
    try
    {
        Append(EntryText(message, error));
    }
    catch (const std::bad_alloc&)
    {
        // Without memory for its text the entry is dropped: the operations that report never throw.
    }
    ZEMA::FileCalls().SetLastError(error);
    return true;
}

bool Fail(const char* message)
{
    Report(message);
    return false;
}

bool FailWith(unsigned long error, const char* message)
{
    ZEMA::FileCalls().SetLastError(static_cast<DWORD>(error));
    return Fail(message);
}

} // namespace logfiles
