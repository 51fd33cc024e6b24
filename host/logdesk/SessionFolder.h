// The folder that LogDesk shows or begins a session in, as it is on the disk.
#pragma once

#include "QmLogTextCtrl.h"
#include "logdesk/Arguments.h"
#include "logdesk/Notices.h"

#include <optional>
#include <string>
#include <vector>

namespace logdesk
{

// What the user wants to see.
struct SessionPlace
{
    std::string folder; // the log folder, with a backslash at its end
    std::string log;    // named by one of its files; empty for the whole session
    std::string file;   // to be shown as messages; empty for the session's
};

// Makes the folder that the arguments mean the log folder of this process. Only one to begin a session in may
// be missing, and the user's own; these are made. Throws UsageError.
SessionPlace FindPlace(const Arguments& arguments);

// What a path that the user names is; `folder` and `log`, or `file`. Throws UsageError if there is none.
SessionPlace PlaceOf(const std::string& path);

// The logs whose files lie in a folder that ends with a backslash; nothing if there is no such folder. Any
// thread.
std::optional<std::vector<std::string>> LogsIn(const std::string& folder);

// Opens no file for longer than the call and changes none.
FolderState ReadFolderState(CQmLogTextCtrl& text, const SessionPlace& place);

} // namespace logdesk
