// Looks at files of the log folder that change nothing and wait for nobody. Window-free.
#pragma once

#include "wintypes.h"

#include <cstdint>
#include <optional>
#include <string>

namespace logview
{

constexpr char kCountersFile[] = "Log.DAT";

// Whether the error of a call says that there is no such file.
bool IsMissing(DWORD error);

// Whether a file of the log folder can be opened with this access while others have the rights of `share`.
// With OPEN_EXISTING the folder stays as it is.
bool CanOpen(const char* path, DWORD access, DWORD share, DWORD disposition);

// The shared counter as it is in the file at `path`, which is neither made nor locked: QmLogGlobalTimeGet
// would do both, and wait for ever where it cannot. 0 without the file, as in a fresh folder; nothing while
// it cannot be read, as when another process has it locked.
std::optional<int> AskTime(const std::string& path);

} // namespace logview
