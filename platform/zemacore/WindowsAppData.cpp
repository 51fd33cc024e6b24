#include "WindowsAppData.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string_view>

namespace ZEMA
{
namespace
{

constexpr std::string_view kSeparators = "\\/";

bool IsFolder(const std::string& path)
{
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

// The folder that `path` lies in, without separator at its end; empty when there is none.
std::string ParentOf(std::string_view path)
{
    path = path.substr(0, path.find_last_not_of(kSeparators) + 1);
    const std::size_t separator = path.find_last_of(kSeparators);
    return std::string(path.substr(0, separator == std::string_view::npos ? 0 : separator));
}

// Makes `path` and the folders above it where they are missing. From the inside outwards, because the
// folders near the root may be ones that this user may not write to or even see.
bool MakeFolder(const std::string& path)
{
    if (path.empty())
        return false;
    if (IsFolder(path) || ::CreateDirectoryA(path.c_str(), nullptr))
        return true;
    if (::GetLastError() == ERROR_PATH_NOT_FOUND && MakeFolder(ParentOf(path)) &&
        ::CreateDirectoryA(path.c_str(), nullptr))
        return true;

    const DWORD error = ::GetLastError();
    const bool isThere = IsFolder(path); // another process may have made it meanwhile
    ::SetLastError(error);
    return isThere;
}

// With a backslash at its end; empty without the user's data folder.
std::string UserFolder()
{
    const std::string folder = EnvironmentValue("LOCALAPPDATA");
    return folder.empty() ? folder : folder + "\\QmLog\\Logs\\";
}

std::string LogFolder()
{
    std::string folder = EnvironmentValue("QM_LOG_FOLDER");
    if (folder.empty())
        return UserFolder();
    if (folder.back() == '/')
        folder.back() = '\\';
    else if (folder.back() != '\\')
        folder += '\\';
    return folder;
}

// Makes `path` and copies it into `folder`; answers its length, 0 when it cannot be made or does not fit.
DWORD GiveFolder(const std::string& path, char* folder, DWORD size)
{
    if (!folder || size == 0)
        return 0;
    *folder = '\0';
    if (path.size() >= size || !MakeFolder(path))
        return 0;
    *std::copy(path.begin(), path.end(), folder) = '\0';
    return static_cast<DWORD>(path.size());
}

// Absolute, because the system looks for an INI file without a folder among its own files.
std::string FullPath(const std::string& path)
{
    std::string full(path.size() + MAX_PATH, '\0');
    for (;;)
    {
        const DWORD length =
            ::GetFullPathNameA(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
        const bool fits = length < full.size();
        full.resize(length);
        if (fits)
            return full;
    }
}

std::string ProfilePath()
{
    const std::string path = EnvironmentValue("QM_PROFILE");
    if (!path.empty())
        return FullPath(path);

    const std::string folder = EnvironmentValue("APPDATA");
    return folder.empty() ? folder : folder + "\\QmLog\\Profile.ini";
}

// A null section or key would make the system list the file's names when reading and remove a whole
// section when writing.
bool IsNamed(const char* section, const char* key)
{
    return section && *section && key && *key;
}

bool WriteProfileText(const char* section, const char* key, const char* text)
{
    const std::string path = ProfilePath();
    if (!IsNamed(section, key) || path.empty() || !MakeFolder(ParentOf(path)))
        return false;

    return ::WritePrivateProfileStringA(section, key, text, path.c_str()) != FALSE;
}

// A whole number, decimal with or without sign or hexadecimal after "0x"; nothing for any other text.
std::optional<std::int64_t> ParseNumber(std::string_view text)
{
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    const bool hasPlus = text.starts_with('+');
    text.remove_prefix(isHex ? 2 : hasPlus ? 1 : 0);
    if ((isHex || hasPlus) && text.starts_with('-'))
        return {}; // the conversion below would take the sign

    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, isHex ? 16 : 10);
    if (error != std::errc() || stop != end)
        return {};
    return number;
}

std::optional<std::int64_t> ReadProfileNumber(const char* section, const char* key, std::int64_t least,
                                              std::int64_t greatest)
{
    const std::optional<std::string> text = ReadProfileText(section, key);
    const std::optional<std::int64_t> number = text ? ParseNumber(*text) : std::nullopt;
    return number && *number >= least && *number <= greatest ? number : std::nullopt;
}

class WindowsAppDataAccess : public IAppDataAccess
{
public:
    DWORD GetLogFolder(char* folder, DWORD size) override { return GiveFolder(LogFolder(), folder, size); }

    // For the case that QM_LOG_FOLDER names a folder that cannot be made.
    DWORD GetFallbackFolder(char* folder, DWORD size) override
    {
        return GiveFolder(UserFolder(), folder, size);
    }
};

class WindowsProfileStore : public IProfileStore
{
public:
    int GetInteger(const char* section, const char* key, int missing) override
    {
        // Flag words may use all 32 bits; beyond the greatest int they give the number with the same bits.
        const auto number = ReadProfileNumber(section, key, std::numeric_limits<std::int32_t>::min(),
                                              std::numeric_limits<std::uint32_t>::max());
        return number ? static_cast<std::int32_t>(*number) : missing;
    }

    bool SetInteger(const char* section, const char* key, int value) override
    {
        return WriteProfileText(section, key, std::to_string(value).c_str());
    }

    COLORREF GetColor(const char* section, const char* key, COLORREF missing) override
    {
        const auto number = ReadProfileNumber(section, key, 0, std::numeric_limits<std::uint32_t>::max());
        return number ? static_cast<COLORREF>(*number) : missing;
    }

    bool SetColor(const char* section, const char* key, COLORREF value) override
    {
        char text[sizeof("0x00BBGGRR")];
        std::snprintf(text, sizeof(text), "0x%08lX", value);
        return WriteProfileText(section, key, text);
    }

    bool RemoveKey(const char* section, const char* key) override
    {
        if (!IsNamed(section, key))
            return false;

        return !ReadProfileText(section, key) || WriteProfileText(section, key, nullptr);
    }

    DWORD GetText(const char* section, const char* key, char* text, DWORD size) override
    {
        const std::string value = ReadProfileText(section, key).value_or("");
        if (text && size > 0)
            text[value.copy(text, size - 1)] = '\0';
        return static_cast<DWORD>(value.size());
    }

    bool SetText(const char* section, const char* key, const char* value) override
    {
        return value && WriteProfileText(section, key, value); // null would remove the key
    }
};

class WindowsManager : public IAppDataManager
{
public:
    IAppDataAccess* GetAccess() override { return &m_access; }

    IProfileStore* GetProfileStore() override { return &m_profile; }

private:
    WindowsAppDataAccess m_access;
    WindowsProfileStore m_profile;
};

} // namespace

IAppDataManager& WindowsAppDataManager()
{
    // Never destroyed: destructors of other modules' statics may still ask it.
    static IAppDataManager& manager = *new WindowsManager;
    return manager;
}

std::string EnvironmentValue(const char* name)
{
    // The narrow call may tell the length of another encoding. The length asked for may be out of date when
    // another thread changes the variable meanwhile.
    const std::wstring wideName(name, name + std::strlen(name));
    std::wstring wide;
    for (bool fits = false; !fits;)
    {
        const DWORD length =
            ::GetEnvironmentVariableW(wideName.c_str(), wide.data(), static_cast<DWORD>(wide.size()));
        fits = length == 0 || length < wide.size();
        wide.resize(length);
    }
    const int units = static_cast<int>(wide.size());
    std::string value(static_cast<std::size_t>(
                          ::WideCharToMultiByte(CP_ACP, 0, wide.data(), units, nullptr, 0, nullptr, nullptr)),
                      '\0');
    ::WideCharToMultiByte(CP_ACP, 0, wide.data(), units, value.data(), static_cast<int>(value.size()),
                          nullptr, nullptr);
    return value;
}

std::optional<std::string> ReadProfileText(const char* section, const char* key)
{
    const std::string path = ProfilePath();
    if (!IsNamed(section, key) || path.empty())
        return {};

    // The system answers the default for an absent key; no value that a person writes is this one.
    const char* const absent = "\x01";
    std::string text(256, '\0');
    for (;;)
    {
        const DWORD size = static_cast<DWORD>(text.size());
        const DWORD length =
            ::GetPrivateProfileStringA(section, key, absent, text.data(), size, path.c_str());
        if (length + 1 < size)
        {
            text.resize(length);
            break;
        }
        text.resize(text.size() * 2); // a text that fills the buffer may have been cut
    }
    if (text == absent)
        return {};
    return text;
}

} // namespace ZEMA
