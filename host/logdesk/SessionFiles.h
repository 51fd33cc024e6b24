// Keeping the session that lies in a log folder before a new one deletes it.
#pragma once

#include <string>

namespace logdesk
{

// Copies the session's files from `folder`, which ends with a backslash, into a folder of its own below it
// and deletes kept sessions beyond the newest `keep`. Without a session there is nothing to do, nor while
// another process is writing it: then no new one starts. Throws std::runtime_error, telling what could not be
// copied; nothing was deleted then.
void KeepSession(const std::string& folder, int keep);

} // namespace logdesk
