// The last sequence number of the log folder, for commands that only look.
#pragma once

#include <cstdint>
#include <optional>

namespace logtool
{

// Asked without the lock, so that looking at logs never waits for who holds it, and without making the file,
// so that it changes nothing. 0 without a file; nothing when the file cannot be read at the moment.
std::optional<std::uint32_t> LastNumber();

} // namespace logtool
