// Which files make up a session, under which names earlier sessions are kept, and which of them go.
#pragma once

#include <string>
#include <vector>

namespace logdesk
{

// A moment of local time.
struct Moment
{
    int year, month, day, hour, minute, second;
};

// Whether a file of the log folder belongs to the session: the two files of any log, and the counters. The
// messages about failures, "QmLog.LOG", outlive sessions.
bool IsSessionFile(const std::string& name);

// The folder for a session that was last written at `moment`: "Session 2026-03-31 09-05-00", with " (2)" and
// so on after it when `folders`, the names in the log folder, already have it.
std::string KeptFolderName(const Moment& moment, const std::vector<std::string>& folders);

// Which of `folders` to delete so that the newest `keep` are left, oldest first. Folders that KeptFolderName
// did not name are never among them.
std::vector<std::string> FoldersToDelete(std::vector<std::string> folders, int keep);

} // namespace logdesk
