#include "zemacore/AppDataManager.h"

#ifdef _WIN32
#include "WindowsAppData.h"
#endif

#include <algorithm>
#include <atomic>
#include <cstring>
#include <string_view>

namespace
{

// A static of this function, so that the manager is there for the constructors of other files' statics.
std::atomic<IAppDataManager*>& Installed()
{
#ifdef _WIN32
    static std::atomic<IAppDataManager*> installed = &ZEMA::WindowsAppDataManager();
#else
    static std::atomic<IAppDataManager*> installed = nullptr;
#endif
    return installed;
}

// Moves the first `length` characters of `rest` into `part`, which has room for every part of a legal path.
void Take(std::string_view& rest, std::size_t length, char* part)
{
    *std::copy_n(rest.data(), length, part) = '\0';
    rest.remove_prefix(length);
}

// Up to and including the last separator; 0 without one.
std::size_t DirectoryLength(std::string_view path)
{
    const std::size_t separator = path.find_last_of("\\/");
    return separator == std::string_view::npos ? 0 : separator + 1;
}

} // namespace

IAppDataAccess::~IAppDataAccess() = default;
IProfileStore::~IProfileStore() = default;

DWORD IProfileStore::GetText(const char*, const char*, char* text, DWORD size)
{
    if (text && size > 0)
        *text = '\0';
    return 0;
}

bool IProfileStore::SetText(const char*, const char*, const char*)
{
    return false;
}

IAppDataManager::~IAppDataManager() = default;

DWORD IAppDataAccess::GetFallbackFolder(char* folder, DWORD size)
{
    if (folder && size > 0)
        *folder = '\0';
    return 0;
}

bool IAppDataAccess::SplitPath(const char* path, AppDataPath& parts)
{
    std::string_view rest;
    const bool legal = path && std::memchr(path, '\0', MAX_PATH);
    if (legal)
        rest = path;

    Take(rest, rest.size() >= 2 && rest[1] == ':' ? 2 : 0, parts.drive);
    Take(rest, DirectoryLength(rest), parts.directory);
    Take(rest, std::min(rest.rfind('.'), rest.size()), parts.name);
    Take(rest, rest.size(), parts.extension);
    return legal;
}

IAppDataManager* AppDataManager::LoadAppDataManager()
{
    return Installed();
}

void AppDataManager::SetAppDataManager(IAppDataManager* manager)
{
    Installed() = manager;
}
