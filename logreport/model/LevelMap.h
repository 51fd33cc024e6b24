// What the viewer makes of a message's level.
#pragma once

#include <cstdint>

namespace logreport
{

constexpr bool IsWarning(std::uint32_t level)
{
    return level == 3;
}

constexpr bool IsError(std::uint32_t level)
{
    return level == 4 || level == 5;
}

// The position of the level's image among the five; a number that is no level has that of the lowest.
constexpr int LevelImage(std::uint32_t level)
{
    return level >= 1 && level <= 5 ? static_cast<int>(level) - 1 : 0;
}

} // namespace logreport
