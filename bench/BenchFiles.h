// Files for the benchmarks: the bare system calls, and tables of file calls that count or do nothing.
#pragma once

#include "zemacore/FileCalls.h"

#include <cstdint>
#include <string>

namespace bench
{

// Ends the process with 2 unless `condition`: what is timed has to work.
void Check(bool condition, const char* what);

// A fresh folder below the system's temporary folder, the log folder of this process meanwhile.
// All logs must be closed before it goes; it is removed with its files.
class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // With a backslash at its end.
    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
};

// A file handled by nothing but Win32 calls; a failing one ends the process.
class BareFile
{
public:
    enum class Role
    {
        Counters, // opened as the library opens "Log.DAT" for updates
        Append,   // as a log's files for writing
        Read,     // as a log's files for reading
        Scan      // for reading from end to end
    };

    BareFile(const std::string& path, Role role);
    ~BareFile();
    BareFile(const BareFile&) = delete;
    BareFile& operator=(const BareFile&) = delete;

    void Lock();
    void Unlock();

    // Lock, seek, read 8 bytes, seek, write them, unlock: what a new sequence number takes.
    void CounterCycle();

    // Seek to the end and write.
    void Append(const void* data, DWORD size);

    // Seek to `offset` and read; answers the bytes read.
    DWORD ReadAt(std::uint32_t offset, void* data, DWORD size);

    // Read after the last read.
    DWORD ReadNext(void* data, DWORD size);

private:
    void Seek(std::int64_t distance, DWORD origin);

    HANDLE m_file;
};

// Calls made through a table.
struct CallCounts
{
    unsigned long locks = 0; // Lock and Unlock: each is a request to be served, far dearer than the others
    unsigned long seeks = 0;
    unsigned long reads = 0;
    unsigned long writes = 0;
    unsigned long others = 0; // by path: open, size, delete; and close

    unsigned long All() const { return locks + seeks + reads + writes + others; }
};

// Counts the calls made while it exists and hands them on to the table that was installed. To be made
// while the library has no file open, and to go likewise.
class CountingFiles : public ZEMA::IFileCalls
{
public:
    CountingFiles();
    ~CountingFiles() override;

    // The calls since the last Take.
    CallCounts Take();

    HANDLE Create(const char* path, DWORD access, DWORD share, DWORD disposition, DWORD flags) override;
    bool Close(HANDLE file) override;
    bool Seek(HANDLE file, std::int64_t distance, DWORD origin, std::uint64_t& position) override;
    bool Read(HANDLE file, void* data, DWORD size, DWORD& bytesRead) override;
    bool Write(HANDLE file, const void* data, DWORD size, DWORD& bytesWritten) override;
    bool SetEnd(HANDLE file) override;
    bool Lock(HANDLE file, std::uint64_t offset, std::uint64_t length) override;
    bool Unlock(HANDLE file, std::uint64_t offset, std::uint64_t length) override;
    bool GetSize(const char* path, std::uint64_t& size) override;
    bool Delete(const char* path) override;
    bool Replace(const char* path, const char* to) override;
    bool GetIdentity(HANDLE file, ZEMA::FileIdentity& identity) override;
    DWORD LastError() override;
    void SetLastError(DWORD error) override;
    std::string ErrorText(DWORD error) override;

private:
    ZEMA::IFileCalls* m_next;
    CallCounts m_counts;
};

// Answers success to everything at once while it exists: what is left is the library's own time.
// Files appear to be a log of `lineLength` bytes a line, long enough for every use.
class IdleFiles : public ZEMA::IFileCalls
{
public:
    explicit IdleFiles(std::uint32_t lineLength);
    ~IdleFiles() override;

    HANDLE Create(const char* path, DWORD access, DWORD share, DWORD disposition, DWORD flags) override;
    bool Close(HANDLE file) override;
    bool Seek(HANDLE file, std::int64_t distance, DWORD origin, std::uint64_t& position) override;
    bool Read(HANDLE file, void* data, DWORD size, DWORD& bytesRead) override;
    bool Write(HANDLE file, const void* data, DWORD size, DWORD& bytesWritten) override;
    bool SetEnd(HANDLE file) override;
    bool Lock(HANDLE file, std::uint64_t offset, std::uint64_t length) override;
    bool Unlock(HANDLE file, std::uint64_t offset, std::uint64_t length) override;
    bool GetSize(const char* path, std::uint64_t& size) override;
    bool Delete(const char* path) override;
    bool Replace(const char* path, const char* to) override;
    bool GetIdentity(HANDLE file, ZEMA::FileIdentity& identity) override;
    DWORD LastError() override;
    void SetLastError(DWORD error) override;
    std::string ErrorText(DWORD error) override;

private:
    std::uint32_t m_lineLength;
    ZEMA::IFileCalls* m_replaced;
};

} // namespace bench
