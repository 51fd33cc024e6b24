#include "logfiles/ErrorLog.h"

#include "QmLogFolder.h"
#include "logfiles/Append.h"
#include "zemacore/AppDataManager.h"
#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

#include <atomic>
#include <ctime>
#include <mutex>
#include <new>
#include <string>

namespace logfiles
{
namespace
{

// Plain characters: nothing has to be destroyed when a thread ends or the library is unloaded.
thread_local char lastReport[kReportSize];

std::atomic<bool> isTold = true; // in the file

void Remember(const std::string& message, const std::string& reason)
{
    std::string text = reason.empty() ? message : message + ": " + reason;
    text.erase(text.find_last_not_of("\r\n ") + 1);
    lastReport[text.copy(lastReport, kReportSize - 1)] = '\0';
}

std::string EntryText(const char* message, const std::string& reason)
{
    const std::time_t now = std::time(nullptr);
    const std::tm* local = std::localtime(&now);
    const char* date = local ? std::asctime(local) : nullptr;

    std::string entry = "\n";
    entry += date ? date : "\n";
    entry += "\n";
    entry += message;
    if (!reason.empty())
        entry += "\n" + reason;
    return entry;
}

// False where there is no folder to put the file into.
bool MakePath(char* path)
{
    if (QmLogMakeFilePath("QmLog.LOG", path))
        return true;
    IAppDataManager* const manager = AppDataManager::LoadAppDataManager();
    IAppDataAccess* const access = manager ? manager->GetAccess() : nullptr;
    char folder[MAX_PATH] = {};
    return access && access->GetFallbackFolder(folder, MAX_PATH) != 0 &&
           ZEMA_makepath(path, "", folder, "QmLog", "LOG");
}

// The file is opened for each entry, and its text goes out in one write, so that several processes may
// append to it. A failure has nowhere to go and is dropped.
void Append(const std::string& entry)
{
    char path[MAX_PATH] = {};
    if (!MakePath(path))
        return;
    const HANDLE file = ZEMA_CreateFile(path, GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                        FILE_FLAG_WRITE_THROUGH | FILE_FLAG_RANDOM_ACCESS |
                                            FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_NORMAL,
                                        nullptr);
    if (!file || file == INVALID_HANDLE_VALUE)
        return;

    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    std::uint64_t position = 0;
    if (files.Seek(file, 0, FILE_END, position)) // else it would write over the entries before
        AppendOrNothing(file, position, entry.data(), entry.size());
    files.Close(file);
}

} // namespace

bool Report(const char* message)
{
    if (!message)
        return true;
    const DWORD error = ZEMA::FileCalls().LastError();
    try
    {
        const std::string reason = error != ERROR_SUCCESS ? ZEMA::FileCalls().ErrorText(error) : "";
        Remember(message, reason);
        if (isTold)
            Append(EntryText(message, reason));
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

bool Refuse(unsigned long error, const char* operation, const char* reason, const char* name)
{
    static std::mutex mutex;
    static std::string last;
    try
    {
        const std::string text =
            std::string(operation) + ": " + reason + ": " + std::string(name).substr(0, MAX_PATH);
        const std::scoped_lock lock(mutex);
        if (text != last)
            FailWith(error, text.c_str());
        else
            Remember(text, "");
        last = text;
    }
    catch (const std::bad_alloc&)
    {
        // As in Report.
    }
    return false;
}

const char* LastReport()
{
    return lastReport;
}

void ForgetLastReport()
{
    lastReport[0] = '\0';
}

} // namespace logfiles

void QmLogTellErrors(bool tell)
{
    logfiles::isTold = tell;
}
