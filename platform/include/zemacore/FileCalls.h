// The table of system file calls: the one place through which the library reaches files.
#pragma once

#include "wintypes.h"
#include "zemacore/ZemaApi.h"

#include <cstdint>
#include <string>

namespace ZEMA
{

// What tells a file from others, whatever it is called.
struct FileIdentity
{
    std::uint64_t volume = 0;
    std::uint64_t file = 0; // on that volume

    bool operator==(const FileIdentity& other) const { return volume == other.volume && file == other.file; }
};

// One operation for each system call, with the system's own arguments, answers and error numbers.
// QmPlatform.dll brings the Win32 version and installs it; tests install files in memory (MemoryFiles).
// A failing operation leaves its error number in LastError, per thread as the system does.
class QMPLATFORM_API IFileCalls
{
public:
    virtual ~IFileCalls();

    // Opens a file as CreateFileA does; INVALID_HANDLE_VALUE on failure.
    virtual HANDLE Create(const char* path, DWORD access, DWORD share, DWORD disposition, DWORD flags) = 0;
    virtual bool Close(HANDLE file) = 0;

    // Moves the file pointer by `distance` bytes from `origin` (FILE_BEGIN, FILE_CURRENT, FILE_END).
    // `position` receives the new offset from the beginning.
    virtual bool Seek(HANDLE file, std::int64_t distance, DWORD origin, std::uint64_t& position) = 0;

    // At or past the end of the file a read succeeds with 0 bytes.
    virtual bool Read(HANDLE file, void* data, DWORD size, DWORD& bytesRead) = 0;

    // A full disk may answer true with fewer bytes.
    virtual bool Write(HANDLE file, const void* data, DWORD size, DWORD& bytesWritten) = 0;

    // Ends the file at the file pointer.
    virtual bool SetEnd(HANDLE file) = 0;

    // Locks `length` bytes from `offset` for this handle alone; fails at once while any handle,
    // this one included, holds part of the range.
    virtual bool Lock(HANDLE file, std::uint64_t offset, std::uint64_t length) = 0;
    virtual bool Unlock(HANDLE file, std::uint64_t offset, std::uint64_t length) = 0;

    // The file's size in bytes, from its attributes; opens nothing.
    virtual bool GetSize(const char* path, std::uint64_t& size) = 0;
    virtual bool Delete(const char* path) = 0;

    // Renames a file, in place of the one that may be at `to`, which must not be open.
    virtual bool Replace(const char* path, const char* to) = 0;

    virtual bool GetIdentity(HANDLE file, FileIdentity& identity) = 0;

    virtual DWORD LastError() = 0;
    virtual void SetLastError(DWORD error) = 0;

    // The system's text for an error number, with its line end; empty for an unknown number.
    virtual std::string ErrorText(DWORD error) = 0;

    // The system's clock: 100 ns since the beginning of 1601, UTC, as files have their times.
    virtual std::int64_t UtcTime();
};

// The installed table. Outside Windows a table must have been set first.
QMPLATFORM_API IFileCalls& FileCalls();

// Installs `calls`, which must outlive its use, and answers the table it replaces. A null pointer
// puts the platform's own table back. Not to be called while files are open.
QMPLATFORM_API IFileCalls* SetFileCalls(IFileCalls* calls);

} // namespace ZEMA
