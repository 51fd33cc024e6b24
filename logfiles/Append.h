// Appending to a file, whole or not at all.
#pragma once

#include "wintypes.h"

#include <cstddef>
#include <cstdint>

namespace logfiles
{

// Writes all of `data` at `position`, the end of the file and where its pointer stands, or leaves the file as
// it was. False with the thread's last error set.
bool AppendOrNothing(HANDLE file, std::uint64_t position, const void* data, std::size_t size);

} // namespace logfiles
