// Words for levels.
#pragma once

#include <cstdint>
#include <string_view>

namespace msgservice
{

// Finds the level that `word` means: in any case, in full or as the usual abbreviations, with digits after it
// ("debug2"), or one letter. False if it means none; `level` is not touched then.
bool FindLevel(std::string_view word, std::uint32_t& level);

// The level of a severity as syslog counts them, 0 (emergency) to 7 (debug).
std::uint32_t LevelOfSeverity(unsigned severity);

// The level of a number in a line of JSON: 0 to 7 is a severity of syslog, and from 10 on tens count from
// trace (10) to fatal (60).
std::uint32_t LevelOfNumber(double number);

// The level of an answer to a request: 5xx is an error, 4xx a warning.
std::uint32_t LevelOfStatus(unsigned status);

} // namespace msgservice
