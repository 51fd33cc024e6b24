#include "logdesk/SessionFolder.h"

#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "logdesk/DeskText.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace logdesk
{

namespace
{

bool IsFolder(const std::string& path)
{
    const DWORD attributes = ::GetFileAttributes(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// The log of a file that the user named.
std::string NamedLog(const std::string& path, const std::string& file)
{
    if (IsSameLog(file, "QmLog.LOG"))
        throw UsageError(path, "holds the library's own messages as plain text: read it with an editor");
    const std::string log = LogOfFile(file);
    if (log.empty())
        throw UsageError(path, "is no file of a log: these end with .LOG and .ROW");
    return log;
}

// A folder, or a file in one; `needsFolder` where a file does not do.
SessionPlace PlaceOf(const std::string& path, bool mayBeMissing, bool needsFolder)
{
    char full[MAX_PATH] = {};
    const DWORD length = ::GetFullPathName(path.c_str(), MAX_PATH, full, nullptr);
    if (length == 0 || length >= MAX_PATH)
        throw UsageError(path, "is no path");
    if (IsFolder(full))
        return {full, "", true};
    if (::GetFileAttributes(full) == INVALID_FILE_ATTRIBUTES)
    {
        if (!mayBeMissing)
            throw UsageError(path, "no such file or folder");
        return {full, "", true};
    }
    if (needsFolder)
        throw UsageError(path, "is a file, and a folder is needed");
    const std::string file = full;
    const std::size_t name = file.rfind('\\') + 1;
    return {file.substr(0, name), NamedLog(path, file.substr(name)), true};
}

// With its backslash; makes the folder when it is missing.
std::string LogFolder()
{
    char path[MAX_PATH] = {};
    if (!QmLogMakeFilePath("x", path))
        throw std::runtime_error("there is no log folder, or it cannot be made");
    return std::string(path).erase(std::strlen(path) - 1);
}

// How the user calls logtool for the folder.
std::string LogtoolCall(const SessionPlace& place)
{
    const std::string folder = FolderName(place.folder);
    const bool needsQuotes = folder.find(' ') != std::string::npos;
    return place.isNamed ? "logtool --folder " + (needsQuotes ? '"' + folder + '"' : folder) : "logtool";
}

// Size 0 for a file that is not there. The folder's listing is behind with the sizes of files in use.
unsigned long FileSize(const std::string& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    return ::GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data) ? data.nFileSizeLow : 0;
}

bool IsForeign(const std::string& log)
{
    for (int file = 0; file < CQmLogTextCtrl::GetFilePathCount(); ++file)
        if (IsSameLog(log, CQmLogTextCtrl::GetFilePath(file)))
            return false;
    // A '?' stands for a character that the system's code page does not have: no log of ours is named so.
    return !log.empty() && !IsSameLog(log, "QmLog") && log.find('?') == std::string::npos;
}

std::vector<std::string> ForeignLogs(const std::string& folder)
{
    std::vector<std::string> logs;
    WIN32_FIND_DATAA file = {};
    const HANDLE search = ::FindFirstFileA((folder + "*.ROW").c_str(), &file);
    for (bool found = search != INVALID_HANDLE_VALUE; found; found = ::FindNextFileA(search, &file) != 0)
    {
        const std::string log = LogOfFile(file.cFileName);
        if (IsForeign(log) && FileSize(folder + file.cFileName) >= sizeof(CQmLogRow))
            logs.push_back(log);
    }
    if (search != INVALID_HANDLE_VALUE)
        ::FindClose(search);
    std::sort(logs.begin(), logs.end());
    return logs;
}

} // namespace

SessionPlace FindPlace(const Arguments& arguments)
{
    SessionPlace place;
    if (!arguments.path.empty())
    {
        place = PlaceOf(arguments.path, arguments.start, arguments.start || arguments.pathIsFolder);
        ::_putenv_s("QM_LOG_FOLDER", place.folder.c_str());
    }
    place.folder = LogFolder();
    return place;
}

FolderState ReadFolderState(CQmLogTextCtrl& text, const SessionPlace& place)
{
    FolderState state;
    state.folder = FolderName(place.folder);
    state.logtool = LogtoolCall(place);
    state.isThere = IsFolder(place.folder);
    state.wanted = place.log;
    if (!state.isThere)
        return state;
    for (int file = 0; file < CQmLogTextCtrl::GetFilePathCount(); ++file)
    {
        LogCounts log;
        log.name = CQmLogTextCtrl::GetFilePath(file);
        log.rows = QmLogReaderDefine(log.name.c_str()).GetRowCount();
        text.GetHiddenRowCounts(file, log.before, log.after);
        state.logs.push_back(log);
    }
    CQmLogRow first;
    if (state.logs.front().rows > 0 && text.ReadStyle(0, first))
        state.mainNumber = first.time;
    state.foreign = ForeignLogs(place.folder);
    return state;
}

} // namespace logdesk
