#include "TableFile.h"

#include <algorithm>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

namespace
{

std::string ReasonOf(DWORD error)
{
    char text[512] = {};
    const DWORD length = ::FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                          error, 0, text, sizeof(text), nullptr);
    const std::string reason(text, length);
    const std::size_t end = reason.find_last_not_of(" .\r\n");
    return end == std::string::npos ? "error " + std::to_string(error) : reason.substr(0, end + 1);
}

std::optional<std::string> Contents(const std::string& path)
{
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    if (!file)
        return {};
    std::string bytes(static_cast<std::size_t>(std::max<std::streamoff>(0, file.tellg())), '\0');
    file.seekg(0);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return file.bad() ? std::nullopt : std::optional(std::move(bytes));
}

// A new file beside another one. It is deleted again unless it has taken that one's place.
class NewFile
{
public:
    explicit NewFile(const std::string& path) : m_path(path)
    {
        const std::string folder = path.substr(0, path.find_last_of("\\/:") + 1);
        char name[MAX_PATH] = {};
        if (!::GetTempFileNameA(folder.empty() ? "." : folder.c_str(), "csv", 0, name))
            Fail();
        m_name = name;
    }
    ~NewFile() { ::DeleteFileA(m_name.c_str()); }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void Write(const std::string& bytes)
    {
        const std::unique_ptr<void, decltype(&::CloseHandle)> file(
            ::CreateFileA(m_name.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr),
            &::CloseHandle);
        if (file.get() == INVALID_HANDLE_VALUE)
            Fail();
        constexpr std::size_t kMost = 1 << 24;
        for (std::size_t at = 0; at < bytes.size();)
        {
            DWORD written = 0;
            const auto wanted = static_cast<DWORD>(std::min(bytes.size() - at, kMost));
            if (!::WriteFile(file.get(), bytes.data() + at, wanted, &written, nullptr) || written == 0)
                Fail();
            at += written;
        }
        if (!::FlushFileBuffers(file.get()))
            Fail();
    }

    // ReplaceFile keeps the attributes and rights of the old file, but cannot do it everywhere, and not
    // without an old file.
    void TakePlace()
    {
        if (::ReplaceFileA(m_path.c_str(), m_name.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr,
                           nullptr) ||
            ::MoveFileExA(m_name.c_str(), m_path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
            return;
        const DWORD error = ::GetLastError();
        if (::GetFileAttributesA(m_path.c_str()) != INVALID_FILE_ATTRIBUTES)
            Fail(error);
        Fail(error, "; its new contents are in " + std::exchange(m_name, {})); // there is nothing else now
    }

private:
    [[noreturn]] void Fail(DWORD error = ::GetLastError(), const std::string& more = {}) const
    {
        throw std::runtime_error(m_path + " cannot be saved: " + ReasonOf(error) + more);
    }

    std::string m_path;
    std::string m_name;
};

} // namespace

std::string TableFile::Read()
{
    std::optional<std::string> bytes = Contents(m_path);
    if (!bytes)
        throw std::runtime_error(m_path + ": cannot be read");
    Remember(*bytes);
    return std::move(*bytes);
}

void TableFile::Save(const std::string& bytes)
{
    const DWORD attributes = ::GetFileAttributesA(m_path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0)
        throw std::runtime_error(m_path + " cannot be saved: it is read-only");
    NewFile file(m_path);
    file.Write(bytes);
    file.TakePlace();
    Remember(bytes);
}

bool TableFile::HasChanged()
{
    m_seen = GetStamp();
    const std::optional<std::string> bytes = Contents(m_path);
    return bytes && std::hash<std::string>()(*bytes) != m_hash;
}

bool TableFile::HasChangedSinceLook()
{
    return GetStamp() != m_seen && HasChanged();
}

TableFile::Stamp TableFile::GetStamp() const
{
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    ::GetFileAttributesExA(m_path.c_str(), GetFileExInfoStandard, &data);
    return {data.nFileSizeHigh, data.nFileSizeLow, data.ftLastWriteTime.dwHighDateTime,
            data.ftLastWriteTime.dwLowDateTime};
}

void TableFile::Remember(const std::string& bytes)
{
    m_hash = std::hash<std::string>()(bytes);
    m_seen = GetStamp();
}
