// The counters of the log folder: the last sequence number, for commands that only look, and whether one can
// write.
#pragma once

#include <cstdint>
#include <optional>

namespace msgservice
{

// Asked without the lock, so that looking at logs never waits for who holds it, and without making the file,
// so that it changes nothing. 0 without a file; nothing when the file cannot be read at the moment.
std::optional<std::uint32_t> LastNumber();

// The system's error when the counters cannot be opened for writing now, else 0. The file is made. A writer
// would wait for ever where the error is another than a sharing violation, which is another process that
// writes.
unsigned long CountersError();

} // namespace msgservice
