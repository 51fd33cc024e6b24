// Which names a log may have that the tool writes.
#pragma once

#include <string>

namespace logtool
{

// The library takes a name for a path, drops what follows its last dot, and leaves the rest to the system.
// Throws UsageError for a name that would write another file than the one it says.
void CheckLogName(const std::string& name);

} // namespace logtool
