// The five logs of a session.
#pragma once

#include <cstdint>

namespace logview
{

// The log's name; null for an index without a log.
const char* GetLogName(int file);

// The colour of its tab, 0x00BBGGRR; black for an index without a log.
std::uint32_t GetLogColor(int file);

} // namespace logview
