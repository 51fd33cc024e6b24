#include "logfiles/LogPath.h"

#include "QmLogFolder.h"
#include "logfiles/ErrorLog.h"
#include "zemacore/AppDataManager.h"
#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

#include <cstring>

namespace logfiles
{
namespace
{

enum class PathResult
{
    Done,
    NoFolder,
    TooLong
};

IAppDataAccess* Access()
{
    IAppDataManager* manager = AppDataManager::LoadAppDataManager();
    return manager ? manager->GetAccess() : nullptr;
}

// `to` has room: the lengths were looked at.
void CopyText(char* to, const char* from)
{
    std::memcpy(to, from, std::strlen(from) + 1);
}

PathResult MakeFilePath(const char* name, char* path)
{
    IAppDataAccess* access = Access();
    if (!access)
        return PathResult::NoFolder;

    char folder[MAX_PATH] = {};
    const DWORD folderLength = access->GetLogFolder(folder, MAX_PATH);
    if (folderLength == 0)
        return PathResult::NoFolder;

    AppDataPath parts = {};
    if (!access->SplitPath(name, parts) || folderLength + std::strlen(parts.directory) >= MAX_PATH)
        return PathResult::TooLong;
    CopyText(folder + folderLength, parts.directory);

    // Composed aside: a result that does not fit leaves `path`, which may be `name`, as it was.
    char composed[MAX_PATH];
    if (!ZEMA_makepath(composed, parts.drive, folder, parts.name, parts.extension))
        return PathResult::TooLong;
    CopyText(path, composed);
    return PathResult::Done;
}

PathResult MakeLogPath(const AppDataPath& parts, const char* extension, char* path)
{
    if (!ZEMA_makepath(path, parts.drive, parts.directory, parts.name, extension))
        return PathResult::TooLong;
    const PathResult result = MakeFilePath(path, path);
    if (result != PathResult::Done)
        *path = '\0';
    return result;
}

} // namespace

void MakeLogPaths(const char* operation, const char* name, char* nameCopy, char* logPath, char* rowPath)
{
    *nameCopy = *logPath = *rowPath = '\0';
    if (!name)
        name = "";
    PathResult result = PathResult::TooLong;
    if (*name != '\0' && std::strlen(name) < MAX_PATH)
    {
        AppDataPath parts = {};
        if (IAppDataAccess* access = Access())
            access->SplitPath(name, parts);
        ZEMA::FileCalls().SetLastError(ERROR_SUCCESS); // so that the error is that of making the folder
        result = MakeLogPath(parts, "LOG", logPath);
        if (result == PathResult::Done)
            MakeLogPath(parts, "ROW", rowPath); // as long as the other
    }
    if (result == PathResult::NoFolder)
        Refuse(ZEMA::FileCalls().LastError(), operation, "there is no log folder, or it cannot be made",
               name);
    if (result == PathResult::TooLong)
        Refuse(ERROR_SUCCESS, operation, "the name is empty, or too long with the log folder", name);
    else
        CopyText(nameCopy, name);
}

void MakeFullLogPaths(const char* operation, const char* path, char* pathCopy, char* logPath, char* rowPath)
{
    *pathCopy = *logPath = *rowPath = '\0';
    if (!path)
        path = "";
    AppDataPath parts = {};
    IAppDataAccess* const access = Access();
    if (access && access->SplitPath(path, parts) && *parts.name != '\0' &&
        ZEMA_makepath(logPath, parts.drive, parts.directory, parts.name, "LOG"))
    {
        ZEMA_makepath(rowPath, parts.drive, parts.directory, parts.name, "ROW"); // as long as the other
        CopyText(pathCopy, path);
        return;
    }
    *logPath = '\0';
    Refuse(ERROR_SUCCESS, operation, "the path is that of no file, or too long", path);
}

} // namespace logfiles

bool QmLogMakeFilePath(const char* name, char* path)
{
    return logfiles::MakeFilePath(name, path) == logfiles::PathResult::Done;
}
