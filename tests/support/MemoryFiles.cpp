#include "MemoryFiles.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace ZEMA
{
namespace
{

constexpr std::uint64_t kMaxPosition = std::numeric_limits<std::int64_t>::max();
constexpr DWORD kAnyAccess = 0;

// The share mode that another handle with `access` asks for.
DWORD ShareFor(DWORD access)
{
    return ((access & GENERIC_READ) != 0 ? DWORD{FILE_SHARE_READ} : 0) |
           ((access & GENERIC_WRITE) != 0 ? DWORD{FILE_SHARE_WRITE} : 0);
}

} // namespace

// ---- The calls of the table

HANDLE MemoryFiles::Create(const char* path, DWORD access, DWORD share, DWORD disposition, DWORD)
{
    HANDLE file = INVALID_HANDLE_VALUE;
    if (CountCall("Create", path))
    {
        if (IsStruck(Fault::NullHandle))
            file = nullptr;
        else if (!IsStruck(Fault::InvalidHandle))
            file = Open(path, access, share, disposition);
        if (IsStruck(Fault::NullHandle) || IsStruck(Fault::InvalidHandle))
            Fail(m_fault.error);
    }
    if (file == nullptr || file == INVALID_HANDLE_VALUE)
        CountFailure("Create " + Key(path != nullptr ? path : ""));
    else
        m_failures.clear();
    return file;
}

bool MemoryFiles::Close(HANDLE file)
{
    if (!CountCall("Close"))
        return false;
    // The system takes this value for the pseudo handle of the process, which closes without effect.
    if (file == INVALID_HANDLE_VALUE)
        return true;
    const OpenFile* const open = Find(file, kAnyAccess);
    if (open == nullptr)
        return false;
    if (open->file->locker == file)
        open->file->locker = nullptr;
    m_handles.erase(file);
    return true;
}

bool MemoryFiles::Seek(HANDLE file, std::int64_t distance, DWORD origin, std::uint64_t& position)
{
    OpenFile* const open = CountCall("Seek") ? Find(file, kAnyAccess) : nullptr;
    if (open == nullptr)
        return false;
    const std::uint64_t starts[] = {0, open->position, open->file->size};
    const std::uint64_t start = starts[origin];
    // Unsigned arithmetic, because the most negative distance has no positive counterpart.
    const std::uint64_t target = start + static_cast<std::uint64_t>(distance);
    if (distance < 0 && target > start)
        return Fail(ERROR_NEGATIVE_SEEK);
    open->position = position = target;
    return true;
}

bool MemoryFiles::Read(HANDLE file, void* data, DWORD size, DWORD& bytesRead)
{
    bytesRead = 0;
    if (!CountCall("Read"))
    {
        std::memset(data, 0x5A, size); // what a failed call leaves there is nobody's business
        return false;
    }
    OpenFile* const open = Find(file, GENERIC_READ);
    if (open == nullptr || IsLocked(file, *open->file))
        return false;
    if (open->position >= open->file->size)
        return true;
    bytesRead = static_cast<DWORD>(std::min<std::uint64_t>(size, open->file->size - open->position));
    CopyOut(*open->file, open->position, static_cast<char*>(data), bytesRead);
    open->position += bytesRead;
    return true;
}

bool MemoryFiles::Write(HANDLE file, const void* data, DWORD size, DWORD& bytesWritten)
{
    bytesWritten = 0;
    OpenFile* const open = CountCall("Write") ? Find(file, GENERIC_WRITE) : nullptr;
    if (open == nullptr || IsLocked(file, *open->file))
        return false;
    const bool killed = IsStruck(Fault::Kill);
    std::uint64_t fitting = killed || IsStruck(Fault::ShortWrite) ? size / 2 : size;
    if (fitting == 0)
        return killed ? throw ProcessKilled("killed before a write") : true;
    // Overwriting takes no space; only what lies after the present end does.
    const std::uint64_t last = open->file->size + std::min(m_freeSpace, kMaxPosition);
    fitting = std::min(fitting, last > open->position ? last - open->position : 0);
    if (fitting == 0)
        return Fail(ERROR_DISK_FULL);

    Grow(*open->file, open->position + fitting);
    bytesWritten = static_cast<DWORD>(fitting);
    CopyIn(*open->file, open->position, static_cast<const char*>(data), bytesWritten);
    open->position += bytesWritten;
    return killed ? throw ProcessKilled("killed within a write") : true;
}

bool MemoryFiles::SetEnd(HANDLE file)
{
    OpenFile* const open = CountCall("SetEnd") ? Find(file, GENERIC_WRITE) : nullptr;
    if (open == nullptr)
        return false;
    if (open->position > open->file->size)
        return Grow(*open->file, open->position);
    GiveBack(open->file->size - open->position);
    Resize(*open->file, open->position);
    return true;
}

bool MemoryFiles::Lock(HANDLE file, std::uint64_t, std::uint64_t)
{
    OpenFile* const open = CountCall("Lock") ? Find(file, GENERIC_READ | GENERIC_WRITE) : nullptr;
    const bool isFree = open != nullptr && (open->file->locker == nullptr || Fail(ERROR_LOCK_VIOLATION));
    if (!isFree)
    {
        CountFailure("Lock");
        return false;
    }
    m_failures.clear();
    open->file->locker = file;
    return true;
}

bool MemoryFiles::Unlock(HANDLE file, std::uint64_t, std::uint64_t)
{
    OpenFile* const open = CountCall("Unlock") ? Find(file, kAnyAccess) : nullptr;
    if (open == nullptr)
        return false;
    if (open->file->locker != file)
        return Fail(ERROR_NOT_LOCKED);
    open->file->locker = nullptr;
    return true;
}

bool MemoryFiles::GetSize(const char* path, std::uint64_t& size)
{
    const File* const file = CountCall("GetSize", path) ? FindFile(path) : nullptr;
    if (file != nullptr)
        size = file->size;
    return file != nullptr;
}

bool MemoryFiles::GetIdentity(HANDLE file, FileIdentity& identity)
{
    const OpenFile* const open = CountCall("GetIdentity") ? Find(file, kAnyAccess) : nullptr;
    if (open != nullptr)
        identity = {1, open->file->identity};
    return open != nullptr;
}

bool MemoryFiles::Replace(const char* path, const char* to)
{
    if (!CountCall("Replace", to) || !FindFile(path))
        return false;
    for (const char* each : {path, to})
        if (const auto found = m_files.find(Key(each));
            found != m_files.end() && HasHandle(found->second, GENERIC_READ | GENERIC_WRITE, 0))
            return Fail(ERROR_SHARING_VIOLATION);
    if (const auto replaced = m_files.find(Key(to)); replaced != m_files.end())
    {
        GiveBack(replaced->second.size);
        m_files.erase(replaced);
    }
    Rename(path, to);
    return true;
}

void MemoryFiles::Rename(const std::string& path, const std::string& to)
{
    auto node = m_files.extract(Key(path));
    node.key() = Key(to);
    node.mapped().path = to;
    m_files.insert(std::move(node));
}

bool MemoryFiles::Delete(const char* path)
{
    const File* const file = CountCall("Delete", path) ? FindFile(path) : nullptr;
    if (file == nullptr)
        return false;
    if (HasHandle(*file, GENERIC_READ | GENERIC_WRITE, 0))
        return Fail(ERROR_SHARING_VIOLATION);
    GiveBack(file->size);
    m_files.erase(Key(path));
    return true;
}

std::string MemoryFiles::ErrorText(DWORD error)
{
    return error == ERROR_SUCCESS ? std::string() : "Error " + std::to_string(error) + ".\r\n";
}

// ---- What a test sees and sets

std::string MemoryFiles::Contents(const std::string& path) const
{
    const auto found = m_files.find(Key(path));
    if (found == m_files.end())
        return {};
    std::string contents(static_cast<std::size_t>(found->second.size), '\0');
    CopyOut(found->second, 0, contents.data(), contents.size());
    return contents;
}

void MemoryFiles::SetContents(const std::string& path, const std::string& bytes)
{
    File& file = MakeFile(path);
    Resize(file, 0);
    Resize(file, bytes.size());
    CopyIn(file, 0, bytes.data(), bytes.size());
}

void MemoryFiles::SetSize(const std::string& path, std::uint64_t size)
{
    Resize(MakeFile(path), size);
}

std::vector<std::string> MemoryFiles::Paths() const
{
    std::vector<std::string> paths;
    for (const auto& [key, file] : m_files)
        paths.push_back(file.path);
    return paths;
}

void MemoryFiles::CloseAllHandles()
{
    m_handles.clear();
    for (auto& [key, file] : m_files)
        file.locker = nullptr;
}

// ---- Bytes

std::string MemoryFiles::Key(const std::string& path)
{
    std::string key = path;
    for (char& character : key)
    {
        if (character == '/')
            character = '\\';
        else if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    }
    return key;
}

void MemoryFiles::CopyOut(const File& file, std::uint64_t offset, char* data, std::size_t size)
{
    for (std::size_t part = 0; size > 0; offset += part, data += part, size -= part)
    {
        const std::size_t start = static_cast<std::size_t>(offset % kChunkSize);
        part = std::min(size, kChunkSize - start);
        const auto chunk = file.chunks.find(offset / kChunkSize);
        if (chunk == file.chunks.end())
            std::fill_n(data, part, '\0');
        else
            std::copy_n(chunk->second.data() + start, part, data);
    }
}

void MemoryFiles::CopyIn(File& file, std::uint64_t offset, const char* data, std::size_t size)
{
    for (std::size_t part = 0; size > 0; offset += part, data += part, size -= part)
    {
        const std::size_t start = static_cast<std::size_t>(offset % kChunkSize);
        part = std::min(size, kChunkSize - start);
        std::string& chunk = file.chunks[offset / kChunkSize];
        chunk.resize(kChunkSize);
        std::copy_n(data, part, chunk.data() + start);
    }
}

// Cut bytes are wiped, because they read as zeros when the file grows over them again.
void MemoryFiles::Resize(File& file, std::uint64_t size)
{
    if (size < file.size)
    {
        const auto last = file.chunks.find(size / kChunkSize);
        if (last != file.chunks.end())
            last->second.resize(static_cast<std::size_t>(size % kChunkSize));
        if (last != file.chunks.end())
            last->second.resize(kChunkSize);
        file.chunks.erase(file.chunks.lower_bound((size + kChunkSize - 1) / kChunkSize), file.chunks.end());
    }
    file.size = size;
}

bool MemoryFiles::Grow(File& file, std::uint64_t size)
{
    if (size <= file.size)
        return true;
    if (size - file.size > m_freeSpace)
        return Fail(ERROR_DISK_FULL);
    m_freeSpace -= m_freeSpace != kUnlimited ? size - file.size : 0;
    Resize(file, size);
    return true;
}

// ---- Handles, sharing, locks and faults

bool MemoryFiles::CountCall(const char* name, const char* path)
{
    const std::string call = path != nullptr ? name + std::string(" ") + path : name;
    if (const auto told = std::exchange(onCall, nullptr))
    {
        told(call);
        onCall = told;
    }
    m_calls.push_back(call);
    if (IsStruck(Fault::Kill) && call != "Write")
        throw ProcessKilled("killed within " + call);
    return !IsStruck(Fault::Fail) || Fail(m_fault.error);
}

bool MemoryFiles::IsStruck(Fault fault) const
{
    if (m_fault.fault != fault || m_fault.call == 0)
        return false;
    return m_fault.call == m_calls.size() || (m_fault.forever && m_fault.call < m_calls.size());
}

MemoryFiles::OpenFile* MemoryFiles::Find(HANDLE handle, DWORD access)
{
    const auto found = m_handles.find(handle);
    const bool isOpen = found != m_handles.end();
    if (isOpen && (access == kAnyAccess || (found->second.access & access) != 0))
        return &found->second;
    Fail(isOpen ? ERROR_ACCESS_DENIED : ERROR_INVALID_HANDLE);
    return nullptr;
}

MemoryFiles::File* MemoryFiles::FindFile(const char* path)
{
    const bool isPath = path != nullptr && *path != '\0';
    const auto found = isPath ? m_files.find(Key(path)) : m_files.end();
    if (found != m_files.end())
        return &found->second;
    Fail(isPath ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND);
    return nullptr;
}

MemoryFiles::File& MemoryFiles::MakeFile(const std::string& path)
{
    const auto [place, isNew] = m_files.try_emplace(Key(path));
    if (isNew)
    {
        place->second.path = path;
        place->second.identity = ++m_lastIdentity;
    }
    return place->second;
}

bool MemoryFiles::HasHandle(const File& file, DWORD access, DWORD share) const
{
    return std::any_of(m_handles.begin(), m_handles.end(), [&](const auto& entry) {
        const OpenFile& other = entry.second;
        return other.file == &file &&
               ((ShareFor(access) & ~other.share) != 0 || (ShareFor(other.access) & ~share) != 0);
    });
}

bool MemoryFiles::IsLocked(HANDLE handle, const File& file)
{
    if (file.locker == nullptr || file.locker == handle)
        return false;
    Fail(ERROR_LOCK_VIOLATION);
    return true;
}

HANDLE MemoryFiles::Open(const char* path, DWORD access, DWORD share, DWORD disposition)
{
    const DWORD errorBefore = m_lastError;
    File* file = FindFile(path);
    const bool isNew = file == nullptr;
    if (!isNew && disposition == CREATE_NEW)
    {
        Fail(ERROR_FILE_EXISTS);
        return INVALID_HANDLE_VALUE;
    }
    if (isNew)
    {
        if ((disposition != OPEN_ALWAYS && disposition != CREATE_NEW) || m_lastError == ERROR_PATH_NOT_FOUND)
            return INVALID_HANDLE_VALUE;
        file = &MakeFile(path);
    }
    if (HasHandle(*file, access, share))
    {
        Fail(ERROR_SHARING_VIOLATION);
        return INVALID_HANDLE_VALUE;
    }
    m_lastError = errorBefore;
    if (disposition == OPEN_ALWAYS)
        m_lastError = isNew ? ERROR_SUCCESS : ERROR_ALREADY_EXISTS;

    m_lastHandle += 4; // as the system's are: never 0, a multiple of 4
    const HANDLE handle = reinterpret_cast<HANDLE>(m_lastHandle);
    m_handles.insert({handle, {file, access, share, 0}});
    return handle;
}

void MemoryFiles::CountFailure(const std::string& call)
{
    if (++m_failures[call] < kPatience)
        return;
    m_failures.clear();
    throw EndlessWait(call + " fails for ever with error " + std::to_string(m_lastError));
}

} // namespace ZEMA
