// What a find bar tells about its search.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace logview
{

enum class FindProgress
{
    None, // nothing is looked for
    Searching,
    Cancelled,
    Done,
    Full // with more matches than are kept
};

struct FindState
{
    FindProgress progress = FindProgress::None;
    unsigned percent = 0;
    std::size_t count = 0;
    std::size_t place = 0; // of the match that the caret is at, counted from 1; 0 for none
    std::uint64_t rowsGivenUp = 0;
    std::string error = {}; // in the expression
    bool isHidden = false;  // nothing shows the row of the match at `place`
};

// As "3 of 17", "searching 40 %, 17 found" or "nothing found"; an error alone.
std::string FindStateText(const FindState& state);

} // namespace logview
