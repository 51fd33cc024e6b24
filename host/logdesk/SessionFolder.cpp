#include "logdesk/SessionFolder.h"

#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "logdesk/DeskText.h"
#include "logdesk/OpenedFile.h"
#include "msgservice/SystemPath.h"
#include "zemacore/WideText.h"

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
    const DWORD attributes = ::GetFileAttributesW(msgservice::SystemPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsFile(const std::string& path)
{
    const DWORD attributes = ::GetFileAttributesW(msgservice::SystemPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::string FullPath(const std::string& path)
{
    const std::filesystem::path given = msgservice::SystemPath(path);
    std::wstring full(::GetFullPathNameW(given.c_str(), 0, nullptr, nullptr), L'\0'); // with its NUL
    const DWORD length =
        ::GetFullPathNameW(given.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (length == 0 || length >= full.size())
        throw UsageError(path, "is no path");
    std::string name;
    ZEMA::FromWide(full.data(), length, name);
    return name;
}

// The folder of a session that may be begun there.
SessionPlace FolderOf(const std::string& path, bool mayBeMissing)
{
    const std::string full = FullPath(path);
    if (IsFile(full))
        throw UsageError(path, "is a file, and a folder is needed");
    if (!mayBeMissing && !IsFolder(full))
        throw UsageError(path, "no such file or folder");
    return {full, "", ""};
}

// With its backslash; makes the folder when it is missing.
std::string LogFolder()
{
    char path[MAX_PATH] = {};
    if (!QmLogMakeFilePath("x", path))
        throw std::runtime_error("there is no log folder, or it cannot be made");
    return std::string(path).erase(std::strlen(path) - 1);
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
    return true;
}

// Those that have rows.
std::vector<std::string> ForeignLogs(const std::string& folder)
{
    std::vector<std::string> logs = LogsIn(folder).value_or(std::vector<std::string>());
    std::erase_if(logs, [&](const std::string& log) {
        return !IsForeign(log) || FileSize(folder + log + ".ROW") < sizeof(CQmLogRow);
    });
    return logs;
}

} // namespace

std::optional<std::vector<std::string>> LogsIn(const std::string& folder)
{
    if (!IsFolder(folder))
        return {};
    std::vector<std::string> logs;
    WIN32_FIND_DATAA file = {};
    const HANDLE search = ::FindFirstFileA((folder + "*.ROW").c_str(), &file);
    for (bool found = search != INVALID_HANDLE_VALUE; found; found = ::FindNextFileA(search, &file) != 0)
    {
        const std::string log = LogOfFile(file.cFileName);
        // A '?' stands for a character that the system's code page does not have: no log of ours is named so.
        if (!log.empty() && !IsSameLog(log, "QmLog") && log.find('?') == std::string::npos)
            logs.push_back(log);
    }
    if (search != INVALID_HANDLE_VALUE)
        ::FindClose(search);
    std::sort(logs.begin(), logs.end());
    return logs;
}

SessionPlace PlaceOf(const std::string& path)
{
    const std::string full = FullPath(path);
    if (IsFolder(full))
        return {full, "", ""};
    if (!IsFile(full))
        throw UsageError(path, "no such file or folder");
    if (!BelongsToSession(full, IsFile))
        return {"", "", full};
    const std::string name = FileName(full);
    return {full.substr(0, full.size() - name.size()), LogOfFile(name), ""};
}

SessionPlace FindPlace(const Arguments& arguments)
{
    SessionPlace place;
    if (!arguments.path.empty())
    {
        place = arguments.start || arguments.pathIsFolder ? FolderOf(arguments.path, arguments.start)
                                                          : PlaceOf(arguments.path);
        if (!place.folder.empty())
            ::_putenv_s("QM_LOG_FOLDER", place.folder.c_str());
    }
    place.folder = LogFolder();
    return place;
}

FolderState ReadFolderState(CQmLogTextCtrl& text, const SessionPlace& place)
{
    FolderState state;
    state.folder = FolderName(place.folder);
    state.isThere = IsFolder(place.folder);
    state.wanted = place.log;
    state.showsMain = !text.IsMerged();
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
    state.foreign = ForeignLogs(place.folder);
    return state;
}

} // namespace logdesk
