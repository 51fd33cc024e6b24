// The system's own file calls.
#pragma once

#include "zemacore/FileCalls.h"

namespace ZEMA
{

// The Win32 table, which is in use until another is installed. It lives as long as the process.
IFileCalls& WindowsFileCalls();

} // namespace ZEMA
