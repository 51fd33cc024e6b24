// Files in memory with the system's rules and scripted faults: the file calls that tests install.
#pragma once

#include "zemacore/FileCalls.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace ZEMA
{

enum class Fault
{
    Fail,          // the call does nothing but fail with the fault's error; Create: INVALID_HANDLE_VALUE
    ShortWrite,    // a Write answers true with half of the bytes written; other calls are not touched
    NullHandle,    // a Create fails with the fault's error and answers null; other calls are not touched
    InvalidHandle, // likewise, with INVALID_HANDLE_VALUE
    Kill // the process ends within the call: ProcessKilled, a Write having written half of its bytes
};

struct ScriptedFault
{
    unsigned long call = 0; // number of the first call it strikes, counted from 1
    Fault fault = Fault::Fail;
    bool forever = false; // every later call as well
    DWORD error = ERROR_ACCESS_DENIED;
};

// Thrown by the call that Fault::Kill strikes. CloseAllHandles does the rest of a process's end.
class ProcessKilled : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Thrown where a caller would wait for ever: by the kPatience-th failing Create of one path, or the
// kPatience-th failing Lock, with no Create or Lock succeeding meanwhile.
class EndlessWait : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Knows share modes (error 32, for deleting an open file too), locks of whole files (error 33, for locks and
// for reads and writes of others, as the system is documented; 158 for a lock not held), OPEN_ALWAYS and
// OPEN_EXISTING (errors 183 and 2), seeks before the beginning (131), handles that are not open (6), access
// rights (5), CREATE_NEW (80) and a disk of limited size (a short write first, then error 112). No folders:
// every path can be made. A successful call leaves the last error alone, but for OPEN_ALWAYS: 183 for a file
// that was there, 0 for a new one. Paths compare without case, '/' as '\'. Sparse: bytes never written take
// no memory, so files of 4 GiB and more cost nothing. One thread.
class MemoryFiles : public IFileCalls
{
public:
    // More than any call is tried again. A try costs a yield, which is a wait where others compute.
    static constexpr int kPatience = 250;

    HANDLE Create(const char* path, DWORD access, DWORD share, DWORD disposition, DWORD flags) override;
    bool Close(HANDLE file) override;
    bool Seek(HANDLE file, std::int64_t distance, DWORD origin, std::uint64_t& position) override;
    bool Read(HANDLE file, void* data, DWORD size, DWORD& bytesRead) override;
    bool Write(HANDLE file, const void* data, DWORD size, DWORD& bytesWritten) override;
    bool SetEnd(HANDLE file) override;
    bool Lock(HANDLE file, std::uint64_t offset,
              std::uint64_t length) override; // any range is all of the file
    bool Unlock(HANDLE file, std::uint64_t offset, std::uint64_t length) override;
    bool GetSize(const char* path, std::uint64_t& size) override;
    bool Delete(const char* path) override;
    bool Replace(const char* path, const char* to) override;
    bool GetIdentity(HANDLE file, FileIdentity& identity) override;
    DWORD LastError() override { return m_lastError; }
    void SetLastError(DWORD error) override { m_lastError = error; }
    std::string ErrorText(DWORD error) override; // "Error <n>.\r\n"; empty for 0
    std::int64_t UtcTime() override { return now; }

    // What a test sees and sets behind the calls; none of it counts as a call.
    std::int64_t now = 0; // what the clock shows
    bool Exists(const std::string& path) const { return m_files.contains(Key(path)); }
    std::string Contents(const std::string& path) const; // empty when missing
    void SetContents(const std::string& path, const std::string& bytes);
    void SetSize(const std::string& path, std::uint64_t size); // cuts, extends with zeros, or creates
    std::vector<std::string> Paths() const;                    // as first given, ascending without case
    void Rename(const std::string& path,
                const std::string& to); // also an open file; there must be none at `to`
    std::size_t OpenHandles() const { return m_handles.size(); }
    void CloseAllHandles(); // what the end of a process does, locks included

    // Bytes that files may still grow by, gaps included; unlimited at first. What Write and SetEnd add counts
    // against it, and what SetEnd and Delete free is given back.
    void SetFreeSpace(std::uint64_t bytes) { m_freeSpace = bytes; }

    void SetFault(const ScriptedFault& fault) { m_fault = fault; } // replaces the one before
    void ClearFault() { m_fault = {}; }

    // Calls so far: every operation of IFileCalls but LastError, SetLastError and ErrorText. Their names in
    // order: "Lock", "Close", ... For Create, GetSize and Delete a blank and the path follow.
    unsigned long CallCount() const { return static_cast<unsigned long>(m_calls.size()); }
    const std::vector<std::string>& Calls() const { return m_calls; }
    void ForgetCalls() { m_calls.clear(); } // numbering starts again at 1

    // Told the name of each call before it is made, but not of those that it makes itself: what others do
    // meanwhile.
    std::function<void(const std::string& call)> onCall;

private:
    static constexpr std::size_t kChunkSize = 64 * 1024;
    static constexpr std::uint64_t kUnlimited = std::numeric_limits<std::uint64_t>::max();

    struct File
    {
        std::string path; // as first given
        std::uint64_t identity = 0;
        std::uint64_t size = 0;
        std::map<std::uint64_t, std::string> chunks; // by number; a missing one holds zeros
        HANDLE locker = nullptr;
    };

    struct OpenFile
    {
        File* file; // stays in place: an open file cannot be deleted
        DWORD access;
        DWORD share;
        std::uint64_t position;
    };

    static std::string Key(const std::string& path);
    static void CopyOut(const File& file, std::uint64_t offset, char* data, std::size_t size);
    static void CopyIn(File& file, std::uint64_t offset, const char* data, std::size_t size);
    static void Resize(File& file, std::uint64_t size);

    bool Fail(DWORD error)
    {
        m_lastError = error;
        return false;
    }
    bool CountCall(const char* name, const char* path = nullptr); // false when the call is to fail
    bool IsStruck(Fault fault) const;                             // whether a fault strikes the present call
    OpenFile* Find(HANDLE handle, DWORD access);                  // for any of these rights
    File* FindFile(const char* path);
    File& MakeFile(const std::string& path);
    bool HasHandle(const File& file, DWORD access, DWORD share) const; // one that does not share so
    bool IsLocked(HANDLE handle, const File& file);
    bool Grow(File& file, std::uint64_t size);
    void GiveBack(std::uint64_t bytes) { m_freeSpace += m_freeSpace != kUnlimited ? bytes : 0; }
    HANDLE Open(const char* path, DWORD access, DWORD share, DWORD disposition);
    void CountFailure(const std::string& call);

    std::map<std::string, File> m_files; // by the path as it compares
    std::uint64_t m_lastIdentity = 0;
    std::map<HANDLE, OpenFile> m_handles;
    std::uintptr_t m_lastHandle = 0; // never used again, so that a stale handle is noticed
    DWORD m_lastError = ERROR_SUCCESS;
    std::uint64_t m_freeSpace = kUnlimited;
    ScriptedFault m_fault; // strikes no call while its number is 0
    std::vector<std::string> m_calls;
    std::map<std::string, int> m_failures; // in a row, by "Lock" or the path of a Create
};

} // namespace ZEMA
