#include "logfiles/Counters.h"

#include "QmLogFolder.h"
#include "logfiles/ErrorLog.h"
#include "logfiles/TimeFile.h"
#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

#include <atomic>
#include <chrono>
#include <thread>

namespace logfiles
{
namespace
{

// The 8 bytes of "Log.DAT", little-endian.
struct CounterRecord
{
    std::uint32_t time = 0;
    std::uint8_t indent = 0;
    std::uint8_t reserved[3] = {};
};
static_assert(sizeof(CounterRecord) == 8);

// What an operation reports. The texts are fixed, and people search for them: several name another
// operation than the one that failed.
struct Messages
{
    const char* firstSeek;
    const char* read;
    const char* secondSeek;
    const char* write;
};

constexpr Messages kTimeGet = {"GlobalTimeGet().SetFilePointer()", "GlobalTimeGet.ReadFile", nullptr,
                               nullptr};
constexpr Messages kTimeIncrement = {
    "CQmLogReader::ReadRow().SetFilePointer()", "GlobalTimeIncrement.ReadFile",
    "CQmLogReader::ReadRow().SetFilePointer()", "GlobalTimeIncrement.WriteFile"};
constexpr Messages kIndentGet = {"GlobalIndentGet().SetFilePointer()", "GlobalIndentGet.ReadFile", nullptr,
                                 nullptr};
constexpr Messages kIndentIncrement = {
    "CQmLogReader::ReadRow().SetFilePointer()", "GlobalIndentIncrement.ReadFile",
    "GlobalIndentIncrement().SetFilePointer()", "GlobalIndentIncrement.WriteFile"};
constexpr Messages kIndentDecrement = {
    "GlobalIndentDecrement().SetFilePointer()", "GlobalIndentDecrement.ReadFile",
    "GlobalIndentDecrement().SetFilePointer()", "GlobalTimeDecrement.WriteFile"};

// A handle of "Log.DAT" that all threads of the process share. The file lock belongs to the handle and is
// refused to a second taker of the same handle, so it keeps threads apart as well as processes.
struct SharedFile
{
    DWORD access;
    DWORD share;
    std::atomic<HANDLE> handle = nullptr;
};

// Updates share reading only: one process at a time can have the file open for update.
SharedFile queryFile = {GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE};
SharedFile updateFile = {GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ};

constexpr std::uint64_t kWholeFile = 0xFFFFFFFFFFFFFFFF;

HANDLE Open(const SharedFile& shared, const char* path)
{
    const HANDLE file = ZEMA_CreateFile(path, shared.access, shared.share, nullptr, OPEN_ALWAYS,
                                        FILE_FLAG_WRITE_THROUGH | FILE_FLAG_RANDOM_ACCESS |
                                            FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_NORMAL,
                                        nullptr);
    return file != INVALID_HANDLE_VALUE ? file : nullptr;
}

// A lock is held for microseconds, but another process may keep the file open for as long as it runs:
// short waits only yield the processor, long ones sleep.
void WaitBeforeTry(unsigned tries)
{
    constexpr unsigned kShortWait = 2000;
    if (tries < kShortWait)
        std::this_thread::yield();
    else
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

// The open and locked file; null only when there is no path for it.
HANDLE Acquire(SharedFile& shared)
{
    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    char path[MAX_PATH] = {};

    for (unsigned tries = 0;; ++tries)
    {
        // Looked up at every try: another thread may have opened or closed the file meanwhile.
        if (const HANDLE file = shared.handle.load())
        {
            if (files.Lock(file, 0, kWholeFile))
                return file;
        }
        else
        {
            if (*path == '\0' && !QmLogMakeFilePath("Log.DAT", path))
                return nullptr;
            if (const HANDLE opened = Open(shared, path))
            {
                // The answer of this first lock is deliberately not asked for.
                files.Lock(opened, 0, kWholeFile);
                HANDLE expected = nullptr;
                if (shared.handle.compare_exchange_strong(expected, opened))
                    return opened;
                files.Close(opened);
                continue;
            }
        }
        WaitBeforeTry(tries);
    }
}

void Release(HANDLE file)
{
    ZEMA::FileCalls().Unlock(file, 0, kWholeFile);
}

bool SeekToBegin(HANDLE file, const char* message)
{
    std::uint64_t position = 0;
    return ZEMA::FileCalls().Seek(file, 0, FILE_BEGIN, position) || Fail(message);
}

// What the file lacks reads as zeros, and so does everything when the read fails.
bool ReadRecord(HANDLE file, CounterRecord& record, const char* message)
{
    DWORD bytes = 0;
    record = {};
    if (ZEMA::FileCalls().Read(file, &record, sizeof(record), bytes))
        return true;
    record = {};
    return Fail(message);
}

// False, with the thread's last error set, when the record does not go out whole.
bool TryWriteRecord(HANDLE file, const CounterRecord& record)
{
    DWORD bytes = 0;
    if (!ZEMA::FileCalls().Write(file, &record, sizeof(record), bytes))
        return false;
    if (bytes == sizeof(record))
        return true;
    ZEMA::FileCalls().SetLastError(ERROR_DISK_FULL);
    return false;
}

bool WriteRecord(HANDLE file, const CounterRecord& record, const char* message)
{
    return TryWriteRecord(file, record) || Fail(message);
}

CounterRecord Query(const Messages& messages)
{
    CounterRecord record;
    const HANDLE file = Acquire(queryFile);
    if (!file || !SeekToBegin(file, messages.firstSeek))
        return {};
    ReadRecord(file, record, messages.read);
    Release(file);
    return record;
}

// The new depth.
std::uint8_t UpdateIndent(const Messages& messages, int step)
{
    CounterRecord record;
    const HANDLE file = Acquire(updateFile);
    if (!file || !SeekToBegin(file, messages.firstSeek))
        return 0;
    ReadRecord(file, record, messages.read);
    record.indent = static_cast<std::uint8_t>(record.indent + step);
    if (!SeekToBegin(file, messages.secondSeek))
        return 0;
    const bool isWritten = WriteRecord(file, record, messages.write);
    if (step > 0)
        NoteBlockBegin();
    else if (isWritten)
        NoteBlockEnd(record.time, record.indent);
    Release(file);
    return record.indent;
}

} // namespace

std::int32_t GlobalTimeGet()
{
    return static_cast<std::int32_t>(Query(kTimeGet).time);
}

std::uint8_t GlobalIndentGet()
{
    return Query(kIndentGet).indent;
}

std::uint8_t GlobalIndentIncrement()
{
    return UpdateIndent(kIndentIncrement, 1);
}

std::uint8_t GlobalIndentDecrement()
{
    return UpdateIndent(kIndentDecrement, -1);
}

std::uint32_t GlobalTimeTake(std::uint32_t count, std::uint32_t& first)
{
    first = 0;
    CounterRecord record;
    const HANDLE file = Acquire(updateFile);
    if (!file || !SeekToBegin(file, kTimeIncrement.firstSeek))
        return 1;

    std::uint32_t taken = ReadRecord(file, record, kTimeIncrement.read) ? count : 1;
    const std::uint32_t before = record.time;
    record.time = before + taken;
    if (!SeekToBegin(file, kTimeIncrement.secondSeek))
        return 1;
    bool isWritten = TryWriteRecord(file, record);
    if (!isWritten)
    {
        // Several numbers that could not be written are given back, and one is tried by itself.
        if (taken > 1 && !SeekToBegin(file, kTimeIncrement.secondSeek))
            return 1;
        record.time = before + 1;
        isWritten = taken > 1 && TryWriteRecord(file, record);
        if (!isWritten)
            Report(kTimeIncrement.write);
        taken = 1;
    }
    if (isWritten) // else the next one takes the same number
        NoteNumber(before + 1, record.indent);
    Release(file);
    first = before + 1;
    return taken;
}

bool TryOpenCounters()
{
    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    char path[MAX_PATH] = {};
    if (updateFile.handle.load())
        return true;
    const HANDLE opened = QmLogMakeFilePath("Log.DAT", path) ? Open(updateFile, path) : nullptr;
    if (!opened)
        return false;
    HANDLE expected = nullptr;
    const bool isLocked = files.Lock(opened, 0, kWholeFile);
    if (isLocked)
        Release(opened);
    if (isLocked && updateFile.handle.compare_exchange_strong(expected, opened))
        return true;
    files.Close(opened);
    return isLocked; // another thread has opened it meanwhile
}

void CloseCounters()
{
    CloseTimes();
    for (SharedFile* shared : {&queryFile, &updateFile})
    {
        if (const HANDLE file = shared->handle.exchange(nullptr))
            ZEMA::FileCalls().Close(file);
    }
}

} // namespace logfiles

int QmLogGlobalTimeGet()
{
    return logfiles::GlobalTimeGet();
}
