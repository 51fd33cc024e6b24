#include "MemoryFiles.h"

#include <algorithm>
#include <cstring>

namespace ZEMA
{
namespace
{

constexpr DWORD kInvalidLockRange = 307; // not every system header names it
constexpr std::uint64_t kMaxPosition = std::numeric_limits<std::int64_t>::max();

// Whether two ranges of bytes have one in common. Neither may reach beyond the greatest offset.
bool Overlap(std::uint64_t offset1, std::uint64_t length1, std::uint64_t offset2, std::uint64_t length2)
{
    if (length1 == 0 || length2 == 0)
        return false;
    return offset1 <= offset2 ? offset2 - offset1 < length1 : offset1 - offset2 < length2;
}

// The share mode that another handle with `access` asks for.
DWORD ShareFor(DWORD access)
{
    DWORD share = 0;
    if (access & GENERIC_READ)
        share |= FILE_SHARE_READ;
    if (access & GENERIC_WRITE)
        share |= FILE_SHARE_WRITE;
    return share;
}

} // namespace

MemoryFiles::MemoryFiles() = default;
MemoryFiles::~MemoryFiles() = default;

// The calls of the table.

HANDLE MemoryFiles::Create(const char* path, DWORD access, DWORD share, DWORD disposition, DWORD)
{
    HANDLE file = INVALID_HANDLE_VALUE;
    if (CountCall("Create", path))
    {
        if (IsStruck(Fault::kNullHandle) || IsStruck(Fault::kInvalidHandle))
        {
            Fail(m_fault.error);
            file = IsStruck(Fault::kNullHandle) ? nullptr : INVALID_HANDLE_VALUE;
        }
        else
            file = Open(path, access, share, disposition);
    }
    if (!file || file == INVALID_HANDLE_VALUE)
        CountFailure("Create " + Key(path ? path : ""));
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
    OpenFile* const open = Find(file);
    if (!open)
        return false;

    std::erase_if(open->file->locks, [file](const Range& lock) { return lock.owner == file; });
    m_handles.erase(file);
    return true;
}

bool MemoryFiles::Seek(HANDLE file, std::int64_t distance, DWORD origin, std::uint64_t& position)
{
    if (!CountCall("Seek"))
        return false;
    OpenFile* const open = Find(file);
    if (!open)
        return false;
    if (origin > FILE_END)
        return Fail(ERROR_INVALID_PARAMETER);

    const std::uint64_t starts[] = {0, open->position, open->file->size};
    const std::uint64_t start = starts[origin];
    // Unsigned arithmetic, because the most negative distance has no positive counterpart.
    const std::uint64_t target = start + static_cast<std::uint64_t>(distance);
    if (distance < 0 && target > start)
        return Fail(ERROR_NEGATIVE_SEEK);
    if (target > kMaxPosition)
        return Fail(ERROR_INVALID_PARAMETER);

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
    OpenFile* const open = FindFor(file, GENERIC_READ);
    if (!open)
        return false;
    if (IsLockedByOthers(file, *open, size))
        return Fail(ERROR_LOCK_VIOLATION);
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
    if (!CountCall("Write"))
        return false;
    OpenFile* const open = FindFor(file, GENERIC_WRITE);
    if (!open)
        return false;
    if (IsLockedByOthers(file, *open, size))
        return Fail(ERROR_LOCK_VIOLATION);
    if (open->position + size > kMaxPosition)
        return Fail(ERROR_FILE_TOO_LARGE);

    const bool killed = IsStruck(Fault::kKill);
    std::uint64_t fitting = killed || IsStruck(Fault::kShortWrite) ? size / 2 : size;
    if (fitting == 0)
        return killed ? throw ProcessKilled("killed before a write") : true;
    // Overwriting takes no space; only what lies behind the present end does.
    if (m_freeSpace != kUnlimited)
    {
        const std::uint64_t last = open->file->size + std::min(m_freeSpace, kMaxPosition);
        fitting = std::min(fitting, last > open->position ? last - open->position : 0);
    }
    if (fitting == 0)
        return Fail(ERROR_DISK_FULL);

    Grow(*open->file, open->position + fitting);
    bytesWritten = static_cast<DWORD>(fitting);
    CopyIn(*open->file, open->position, static_cast<const char*>(data), bytesWritten);
    open->position += bytesWritten;
    if (killed)
        throw ProcessKilled("killed within a write");
    return true;
}

bool MemoryFiles::SetEnd(HANDLE file)
{
    if (!CountCall("SetEnd"))
        return false;
    OpenFile* const open = FindFor(file, GENERIC_WRITE);
    if (!open)
        return false;
    if (open->position > open->file->size)
        return Grow(*open->file, open->position);

    GiveBack(open->file->size - open->position);
    Resize(*open->file, open->position);
    return true;
}

bool MemoryFiles::Lock(HANDLE file, std::uint64_t offset, std::uint64_t length)
{
    const bool locked = CountCall("Lock") && LockRange(file, {file, offset, length});
    if (locked)
        m_failures.clear();
    else
        CountFailure("Lock");
    return locked;
}

bool MemoryFiles::Unlock(HANDLE file, std::uint64_t offset, std::uint64_t length)
{
    if (!CountCall("Unlock"))
        return false;
    OpenFile* const open = Find(file);
    if (!open)
        return false;

    std::vector<Range>& locks = open->file->locks;
    const auto held = std::find_if(locks.begin(), locks.end(), [=](const Range& lock) {
        return lock.owner == file && lock.offset == offset && lock.length == length;
    });
    if (held == locks.end())
        return Fail(ERROR_NOT_LOCKED);

    locks.erase(held);
    return true;
}

bool MemoryFiles::GetSize(const char* path, std::uint64_t& size)
{
    if (!CountCall("GetSize", path))
        return false;
    const File* const file = FindFile(path);
    if (!file)
        return false;

    size = file->size;
    return true;
}

bool MemoryFiles::Delete(const char* path)
{
    if (!CountCall("Delete", path))
        return false;
    const File* const file = FindFile(path);
    if (!file)
        return false;
    if (IsOpen(*file))
        return Fail(ERROR_SHARING_VIOLATION);

    GiveBack(file->size);
    m_files.erase(Key(path));
    return true;
}

DWORD MemoryFiles::LastError()
{
    return m_lastError;
}

void MemoryFiles::SetLastError(DWORD error)
{
    m_lastError = error;
}

std::string MemoryFiles::ErrorText(DWORD error)
{
    return error == ERROR_SUCCESS ? std::string() : "Error " + std::to_string(error) + ".\r\n";
}

// What a test sees and sets.

bool MemoryFiles::Exists(const std::string& path) const
{
    return m_files.count(Key(path)) != 0;
}

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

std::size_t MemoryFiles::OpenHandles() const
{
    return m_handles.size();
}

void MemoryFiles::CloseAllHandles()
{
    m_handles.clear();
    for (auto& [key, file] : m_files)
        file.locks.clear();
}

void MemoryFiles::SetFreeSpace(std::uint64_t bytes)
{
    m_freeSpace = bytes;
}

void MemoryFiles::SetFault(const ScriptedFault& fault)
{
    m_fault = fault;
}

void MemoryFiles::ClearFault()
{
    m_fault = {};
}

unsigned long MemoryFiles::CallCount() const
{
    return static_cast<unsigned long>(m_calls.size());
}

const std::vector<std::string>& MemoryFiles::Calls() const
{
    return m_calls;
}

void MemoryFiles::ForgetCalls()
{
    m_calls.clear();
}

// Bytes.

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
    while (size > 0)
    {
        const std::size_t start = static_cast<std::size_t>(offset % kChunkSize);
        const std::size_t part = std::min(size, kChunkSize - start);
        const auto chunk = file.chunks.find(offset / kChunkSize);
        if (chunk == file.chunks.end())
            std::fill_n(data, part, '\0');
        else
            std::copy_n(chunk->second->data() + start, part, data);
        offset += part;
        data += part;
        size -= part;
    }
}

void MemoryFiles::CopyIn(File& file, std::uint64_t offset, const char* data, std::size_t size)
{
    while (size > 0)
    {
        const std::size_t start = static_cast<std::size_t>(offset % kChunkSize);
        const std::size_t part = std::min(size, kChunkSize - start);
        std::unique_ptr<Chunk>& chunk = file.chunks[offset / kChunkSize];
        if (!chunk)
            chunk = std::make_unique<Chunk>(); // zeros
        std::copy_n(data, part, chunk->data() + start);
        offset += part;
        data += part;
        size -= part;
    }
}

// Cut bytes are wiped, because they read as zeros when the file grows over them again.
void MemoryFiles::Resize(File& file, std::uint64_t size)
{
    if (size < file.size)
    {
        const auto last = file.chunks.find(size / kChunkSize);
        if (last != file.chunks.end())
            std::fill(last->second->begin() + static_cast<std::ptrdiff_t>(size % kChunkSize),
                      last->second->end(), '\0');
        file.chunks.erase(file.chunks.lower_bound((size + kChunkSize - 1) / kChunkSize), file.chunks.end());
    }
    file.size = size;
}

bool MemoryFiles::Grow(File& file, std::uint64_t size)
{
    if (size <= file.size)
        return true;
    if (m_freeSpace != kUnlimited)
    {
        if (size - file.size > m_freeSpace)
            return Fail(ERROR_DISK_FULL);
        m_freeSpace -= size - file.size;
    }
    Resize(file, size);
    return true;
}

void MemoryFiles::GiveBack(std::uint64_t bytes)
{
    if (m_freeSpace != kUnlimited)
        m_freeSpace += bytes;
}

// Handles, sharing, locks and faults.

bool MemoryFiles::Fail(DWORD error)
{
    m_lastError = error;
    return false;
}

bool MemoryFiles::CountCall(const char* name, const char* path)
{
    std::string& call = m_calls.emplace_back(name);
    if (path)
        call.append(" ").append(path);
    if (IsStruck(Fault::kKill) && call != "Write")
        throw ProcessKilled("killed within " + call);
    return !IsStruck(Fault::kFail) || Fail(m_fault.error);
}

bool MemoryFiles::IsStruck(Fault fault) const
{
    if (m_fault.fault != fault || m_fault.call == 0)
        return false;
    return m_fault.call == m_calls.size() || (m_fault.forever && m_fault.call < m_calls.size());
}

MemoryFiles::OpenFile* MemoryFiles::Find(HANDLE handle)
{
    const auto found = m_handles.find(handle);
    if (found != m_handles.end())
        return &found->second;

    Fail(ERROR_INVALID_HANDLE);
    return nullptr;
}

MemoryFiles::OpenFile* MemoryFiles::FindFor(HANDLE handle, DWORD access)
{
    OpenFile* const open = Find(handle);
    if (!open || (open->access & access))
        return open;

    Fail(ERROR_ACCESS_DENIED);
    return nullptr;
}

MemoryFiles::File* MemoryFiles::FindFile(const char* path)
{
    if (!path || !*path)
    {
        Fail(ERROR_PATH_NOT_FOUND);
        return nullptr;
    }
    const auto found = m_files.find(Key(path));
    if (found != m_files.end())
        return &found->second;

    Fail(ERROR_FILE_NOT_FOUND);
    return nullptr;
}

MemoryFiles::File& MemoryFiles::MakeFile(const std::string& path)
{
    const auto [place, isNew] = m_files.try_emplace(Key(path));
    if (isNew)
        place->second.path = path;
    return place->second;
}

bool MemoryFiles::IsOpen(const File& file) const
{
    return std::any_of(m_handles.begin(), m_handles.end(),
                       [&file](const auto& entry) { return entry.second.file == &file; });
}

bool MemoryFiles::IsShared(const File& file, DWORD access, DWORD share) const
{
    return std::all_of(m_handles.begin(), m_handles.end(), [&](const auto& entry) {
        const OpenFile& other = entry.second;
        return other.file != &file ||
               ((ShareFor(access) & ~other.share) == 0 && (ShareFor(other.access) & ~share) == 0);
    });
}

bool MemoryFiles::IsLockedByOthers(HANDLE handle, const OpenFile& open, DWORD size) const
{
    const std::vector<Range>& locks = open.file->locks;
    return std::any_of(locks.begin(), locks.end(), [&](const Range& lock) {
        return lock.owner != handle && Overlap(lock.offset, lock.length, open.position, size);
    });
}

HANDLE MemoryFiles::Open(const char* path, DWORD access, DWORD share, DWORD disposition)
{
    if (disposition != OPEN_EXISTING && disposition != OPEN_ALWAYS)
    {
        Fail(ERROR_INVALID_PARAMETER);
        return INVALID_HANDLE_VALUE;
    }
    const DWORD errorBefore = m_lastError;
    File* file = FindFile(path);
    const bool isNew = !file;
    if (isNew)
    {
        if (disposition == OPEN_EXISTING || m_lastError == ERROR_PATH_NOT_FOUND)
            return INVALID_HANDLE_VALUE;
        file = &MakeFile(path);
    }
    if (!IsShared(*file, access, share))
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

bool MemoryFiles::LockRange(HANDLE handle, const Range& range)
{
    OpenFile* const open = FindFor(handle, GENERIC_READ | GENERIC_WRITE);
    if (!open)
        return false;
    if (range.length > 0 && range.offset + (range.length - 1) < range.offset)
        return Fail(kInvalidLockRange);

    std::vector<Range>& locks = open->file->locks;
    const bool taken = std::any_of(locks.begin(), locks.end(), [&range](const Range& lock) {
        return Overlap(lock.offset, lock.length, range.offset, range.length);
    });
    if (taken)
        return Fail(ERROR_LOCK_VIOLATION);

    locks.push_back(range);
    return true;
}

void MemoryFiles::CountFailure(const std::string& call)
{
    if (++m_failures[call] < kPatience)
        return;

    m_failures.clear();
    throw EndlessWait(call + " fails for ever with error " + std::to_string(m_lastError));
}

} // namespace ZEMA
