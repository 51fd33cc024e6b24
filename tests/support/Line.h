// Values as a line of text that tests compare.
#pragma once

#include <sstream>
#include <string>

// Values with a blank between them.
template <typename... Values> std::string Line(const Values&... values)
{
    std::ostringstream line;
    int count = 0;
    ((line << (count++ ? " " : "") << values), ...);
    return line.str();
}
