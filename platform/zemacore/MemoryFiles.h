// Files in memory with the system's rules and scripted faults: the file calls that tests install.
#pragma once

#include "zemacore/FileCalls.h"

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace ZEMA
{

enum class Fault
{
    kFail,         // the call fails with the fault's error; Create answers INVALID_HANDLE_VALUE
    kShortWrite,   // a Write answers true with half of the bytes written; other calls are not touched
    kNullHandle,   // a Create answers null; other calls are not touched
    kInvalidHandle // a Create answers INVALID_HANDLE_VALUE; other calls are not touched
};

struct ScriptedFault
{
    unsigned long call = 0; // number of the first call it strikes, counted from 1
    Fault fault = Fault::kFail;
    bool forever = false; // every later call as well
    DWORD error = ERROR_ACCESS_DENIED;
};

// Thrown where a caller would wait for ever: its Create or Lock has failed kPatience times in a row
// with no other call of the table succeeding meanwhile.
class EndlessWait : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Knows share modes (error 32), whole-file and range locks per handle (error 33, for locks and for reads and
// writes of others, as the system is documented), OPEN_ALWAYS and OPEN_EXISTING (errors 183 and 2), seeks
// before the beginning (131), handles that are not open (6), access rights (5) and a disk of limited size
// (a short write first, then error 112). Paths compare without case, '/' as '\'. Sparse: bytes never written
// take no memory, so files of 4 GiB and more cost nothing. One thread.
class MemoryFiles : public IFileCalls
{
public:
    static constexpr int kPatience = 1000;

    MemoryFiles();
    ~MemoryFiles() override;

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
    DWORD LastError() override;
    void SetLastError(DWORD error) override;
    std::string ErrorText(DWORD error) override; // "Error <n>.\r\n"; empty for 0

    // What a test sees and sets behind the calls; none of it counts as a call.
    bool Exists(const std::string& path) const;
    std::string Contents(const std::string& path) const; // empty when missing
    void SetContents(const std::string& path, const std::string& bytes);
    void SetSize(const std::string& path, std::uint64_t size); // cuts, or extends with zeros
    std::vector<std::string> Paths() const;                    // as first given, ascending without case
    std::size_t OpenHandles() const;
    void CloseAllHandles(); // what the end of a process does, locks included

    // Bytes that files may still grow by; unlimited at first.
    void SetFreeSpace(std::uint64_t bytes);

    void SetFault(const ScriptedFault& fault); // replaces the one before
    void ClearFault();

    // Calls so far: every operation of IFileCalls but LastError, SetLastError and ErrorText.
    unsigned long CallCount() const;
    // Their names in order: "Create", "Lock", ... The path follows for Create, GetSize and Delete.
    const std::vector<std::string>& Calls() const;
    void ForgetCalls(); // numbering starts again at 1

private:
    // (the implementation adds its members here)
};

} // namespace ZEMA
