// What matches are marked with. Colours are 0x00BBGGRR.
#pragma once

#include <cstdint>

namespace logview
{

// The background of a match in a window of that colour.
std::uint32_t MatchBackground(std::uint32_t window);

// The colour of a match's text: `wanted` if its contrast with the background is at least 4.5, else black or
// white.
std::uint32_t MatchText(std::uint32_t wanted, std::uint32_t background);

} // namespace logview
