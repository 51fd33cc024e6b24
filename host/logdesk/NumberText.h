// Numbers as the user's system writes them.
#pragma once

#include <cstdint>
#include <string>

namespace logdesk
{

// How digits are put into groups: the text between groups, and the sizes of groups from the last one on, as
// the system's settings have them: "3;0" for thousands, "3;2;0" where the groups after the first have two. A
// 0 repeats the size before it; without it the rest is one group.
struct DigitGrouping
{
    std::string separator = ",";
    std::string sizes = "3;0";
};

std::string GroupedText(std::uint64_t number, const DigitGrouping& grouping);

// What all texts of the program use from now on.
void SetDigitGrouping(const DigitGrouping& grouping);

std::string NumberText(std::uint64_t number);

// "1 row", "1,204 rows".
std::string CountText(std::uint64_t count, const char* what);

} // namespace logdesk
