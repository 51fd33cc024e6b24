#include "BenchFiles.h"

#include "QmLogRow.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <vector>

namespace bench
{
namespace
{

constexpr DWORD kLibraryFlags =
    FILE_FLAG_RANDOM_ACCESS | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_NORMAL;

HANDLE Open(const char* path, BareFile::Role role)
{
    switch (role)
    {
    case BareFile::Role::Counters:
        return ::CreateFileA(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                             FILE_FLAG_WRITE_THROUGH | kLibraryFlags, nullptr);
    case BareFile::Role::Append:
        return ::CreateFileA(path, GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS, kLibraryFlags,
                             nullptr);
    case BareFile::Role::Read:
        return ::CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                             kLibraryFlags, nullptr);
    case BareFile::Role::Scan:
        return ::CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                             FILE_ATTRIBUTE_NORMAL, nullptr);
    }
    return INVALID_HANDLE_VALUE;
}

constexpr DWORD kAll = 0xFFFFFFFF;

} // namespace

void Check(bool condition, const char* what)
{
    if (condition)
        return;
    std::fprintf(stderr, "the benchmark failed: %s (error %lu)\n", what, ::GetLastError());
    std::exit(2);
}

TemporaryFolder::TemporaryFolder()
    : m_path(
          (std::filesystem::temp_directory_path() / ("QmLogBench-" + std::to_string(::GetCurrentProcessId())))
              .string() +
          '\\')
{
    std::filesystem::remove_all(m_path);
    std::filesystem::create_directories(m_path);
    Check(::SetEnvironmentVariableA("QM_LOG_FOLDER", m_path.c_str()) != FALSE, "QM_LOG_FOLDER");
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code error;
    std::filesystem::remove_all(m_path, error);
    if (error)
        std::fprintf(stderr, "%s is left behind: %s\n", m_path.c_str(), error.message().c_str());
}

BareFile::BareFile(const std::string& path, Role role) : m_file(Open(path.c_str(), role))
{
    Check(m_file != INVALID_HANDLE_VALUE, path.c_str());
}

BareFile::~BareFile()
{
    ::CloseHandle(m_file);
}

void BareFile::Lock()
{
    Check(::LockFile(m_file, 0, 0, kAll, kAll) != FALSE, "LockFile");
}

void BareFile::Unlock()
{
    Check(::UnlockFile(m_file, 0, 0, kAll, kAll) != FALSE, "UnlockFile");
}

void BareFile::CounterCycle()
{
    std::uint64_t counters = 0;
    DWORD bytes = 0;
    Lock();
    ReadAt(0, &counters, sizeof(counters));
    ++counters;
    Seek(0, FILE_BEGIN);
    Check(::WriteFile(m_file, &counters, sizeof(counters), &bytes, nullptr) != FALSE, "WriteFile");
    Unlock();
}

void BareFile::Append(const void* data, DWORD size)
{
    DWORD bytes = 0;
    Seek(0, FILE_END);
    Check(::WriteFile(m_file, data, size, &bytes, nullptr) != FALSE, "WriteFile");
}

DWORD BareFile::ReadAt(std::uint32_t offset, void* data, DWORD size)
{
    Seek(offset, FILE_BEGIN);
    return ReadNext(data, size);
}

DWORD BareFile::ReadNext(void* data, DWORD size)
{
    DWORD bytes = 0;
    Check(::ReadFile(m_file, data, size, &bytes, nullptr) != FALSE, "ReadFile");
    return bytes;
}

void BareFile::Seek(std::int64_t distance, DWORD origin)
{
    LARGE_INTEGER move;
    LARGE_INTEGER moved;
    move.QuadPart = distance;
    Check(::SetFilePointerEx(m_file, move, &moved, origin) != FALSE, "SetFilePointerEx");
}

CountingFiles::CountingFiles() : m_next(ZEMA::SetFileCalls(this)) {}

CountingFiles::~CountingFiles()
{
    ZEMA::SetFileCalls(m_next);
}

CallCounts CountingFiles::Take()
{
    const CallCounts counts = m_counts;
    m_counts = {};
    return counts;
}

HANDLE CountingFiles::Create(const char* path, DWORD access, DWORD share, DWORD disposition, DWORD flags)
{
    ++m_counts.others;
    return m_next->Create(path, access, share, disposition, flags);
}

bool CountingFiles::Close(HANDLE file)
{
    ++m_counts.others;
    return m_next->Close(file);
}

bool CountingFiles::Seek(HANDLE file, std::int64_t distance, DWORD origin, std::uint64_t& position)
{
    ++m_counts.seeks;
    return m_next->Seek(file, distance, origin, position);
}

bool CountingFiles::Read(HANDLE file, void* data, DWORD size, DWORD& bytesRead)
{
    ++m_counts.reads;
    return m_next->Read(file, data, size, bytesRead);
}

bool CountingFiles::Write(HANDLE file, const void* data, DWORD size, DWORD& bytesWritten)
{
    ++m_counts.writes;
    return m_next->Write(file, data, size, bytesWritten);
}

bool CountingFiles::SetEnd(HANDLE file)
{
    ++m_counts.others;
    return m_next->SetEnd(file);
}

bool CountingFiles::Lock(HANDLE file, std::uint64_t offset, std::uint64_t length)
{
    ++m_counts.locks;
    return m_next->Lock(file, offset, length);
}

bool CountingFiles::Unlock(HANDLE file, std::uint64_t offset, std::uint64_t length)
{
    ++m_counts.locks;
    return m_next->Unlock(file, offset, length);
}

bool CountingFiles::GetSize(const char* path, std::uint64_t& size)
{
    ++m_counts.others;
    return m_next->GetSize(path, size);
}

bool CountingFiles::GetIdentity(HANDLE file, ZEMA::FileIdentity& identity)
{
    ++m_counts.others;
    return m_next->GetIdentity(file, identity);
}

bool CountingFiles::Delete(const char* path)
{
    ++m_counts.others;
    return m_next->Delete(path);
}

bool CountingFiles::Replace(const char* path, const char* to)
{
    ++m_counts.others;
    return m_next->Replace(path, to);
}

DWORD CountingFiles::LastError()
{
    return m_next->LastError();
}

void CountingFiles::SetLastError(DWORD error)
{
    m_next->SetLastError(error);
}

std::string CountingFiles::ErrorText(DWORD error)
{
    return m_next->ErrorText(error);
}

IdleFiles::IdleFiles(std::uint32_t lineLength)
    : m_lineLength(lineLength), m_replaced(ZEMA::SetFileCalls(this))
{
}

IdleFiles::~IdleFiles()
{
    ZEMA::SetFileCalls(m_replaced);
}

HANDLE IdleFiles::Create(const char*, DWORD, DWORD, DWORD, DWORD)
{
    return this;
}

bool IdleFiles::Close(HANDLE)
{
    return true;
}

// Files end at a whole record, and never at their beginning.
bool IdleFiles::Seek(HANDLE, std::int64_t distance, DWORD origin, std::uint64_t& position)
{
    constexpr std::uint64_t kEnd = 1000 * sizeof(CQmLogRow);
    position = origin == FILE_END ? kEnd : static_cast<std::uint64_t>(distance);
    return true;
}

bool IdleFiles::Read(HANDLE, void* data, DWORD size, DWORD& bytesRead)
{
    bytesRead = size;
    CQmLogRow rows[2];
    rows[1].offset = m_lineLength;
    if (size == sizeof(rows))
        std::memcpy(data, rows, sizeof(rows));
    return true;
}

bool IdleFiles::Write(HANDLE, const void*, DWORD size, DWORD& bytesWritten)
{
    bytesWritten = size;
    return true;
}

bool IdleFiles::SetEnd(HANDLE)
{
    return true;
}

bool IdleFiles::Lock(HANDLE, std::uint64_t, std::uint64_t)
{
    return true;
}

bool IdleFiles::Unlock(HANDLE, std::uint64_t, std::uint64_t)
{
    return true;
}

bool IdleFiles::GetSize(const char*, std::uint64_t& size)
{
    size = 1000000;
    return true;
}

bool IdleFiles::GetIdentity(HANDLE, ZEMA::FileIdentity& identity)
{
    identity = {};
    return true;
}

bool IdleFiles::Delete(const char*)
{
    return true;
}

bool IdleFiles::Replace(const char*, const char*)
{
    return true;
}

DWORD IdleFiles::LastError()
{
    return ERROR_SUCCESS;
}

void IdleFiles::SetLastError(DWORD) {}

std::string IdleFiles::ErrorText(DWORD)
{
    return {};
}

} // namespace bench
