#include "logdesk/SessionFiles.h"

#include "logdesk/KeptSessions.h"

#include "wintypes.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace logdesk
{

namespace
{

struct Listing
{
    std::vector<std::string> files; // of the session
    std::vector<std::string> folders;
    FILETIME written = {}; // the newest of the files
};

Listing List(const std::string& folder)
{
    Listing listing;
    WIN32_FIND_DATAA entry = {};
    const HANDLE search = ::FindFirstFileA((folder + "*").c_str(), &entry);
    for (bool found = search != INVALID_HANDLE_VALUE; found; found = ::FindNextFileA(search, &entry) != 0)
    {
        if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
            listing.folders.push_back(entry.cFileName);
        else if (IsSessionFile(entry.cFileName))
        {
            listing.files.push_back(entry.cFileName);
            if (::CompareFileTime(&entry.ftLastWriteTime, &listing.written) > 0)
                listing.written = entry.ftLastWriteTime;
        }
    }
    if (search != INVALID_HANDLE_VALUE)
        ::FindClose(search);
    return listing;
}

// Who writes a session has its counters open for update and shares them for reading only.
bool IsBeingWritten(const std::string& folder)
{
    const HANDLE counters =
        ::CreateFileA((folder + "Log.DAT").c_str(), GENERIC_READ | GENERIC_WRITE,
                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (counters == INVALID_HANDLE_VALUE)
        return ::GetLastError() == ERROR_SHARING_VIOLATION;
    ::CloseHandle(counters);
    return false;
}

Moment LocalMoment(const FILETIME& time)
{
    FILETIME local = {};
    SYSTEMTIME system = {};
    ::FileTimeToLocalFileTime(&time, &local);
    ::FileTimeToSystemTime(&local, &system);
    return {system.wYear, system.wMonth, system.wDay, system.wHour, system.wMinute, system.wSecond};
}

// Only what belongs to a session: a folder that somebody has put something else into stays with it.
void DeleteKept(const std::string& folder)
{
    for (const std::string& file : List(folder).files)
        ::DeleteFileA((folder + file).c_str());
    ::RemoveDirectoryA(folder.c_str());
}

} // namespace

void KeepSession(const std::string& folder, int keep)
{
    const Listing listing = List(folder);
    if (listing.files.empty() || IsBeingWritten(folder))
        return;

    const std::string name = KeptFolderName(LocalMoment(listing.written), listing.folders);
    const std::string kept = folder + name + '\\';
    if (!::CreateDirectoryA(kept.c_str(), nullptr))
        throw std::runtime_error(kept + ": cannot be made");
    for (const std::string& file : listing.files)
    {
        if (::CopyFileA((folder + file).c_str(), (kept + file).c_str(), TRUE))
            continue;
        DeleteKept(kept);
        throw std::runtime_error(
            std::string(folder).append(file).append(": cannot be copied to ").append(kept));
    }

    std::vector<std::string> folders = listing.folders;
    folders.push_back(name);
    for (const std::string& old : FoldersToDelete(folders, keep))
        DeleteKept(std::string(folder).append(old) + '\\');
}

// A mutex goes with its process, however that ends. Its name is the folder's without backslashes.
FolderClaim::FolderClaim(const std::string& folder)
{
    std::string name = "LogDesk " + folder;
    ::CharUpperBuffA(name.data(), static_cast<DWORD>(name.size()));
    std::replace(name.begin(), name.end(), '\\', '/');
    m_mutex = ::CreateMutexA(nullptr, FALSE, name.substr(0, MAX_PATH - 1).c_str());
    m_isFirst = ::GetLastError() != ERROR_ALREADY_EXISTS;
}

FolderClaim::~FolderClaim()
{
    if (m_mutex)
        ::CloseHandle(m_mutex);
}

} // namespace logdesk
