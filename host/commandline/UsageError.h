// What a user of a command line is told when it makes no sense.
#pragma once

#include <stdexcept>
#include <string>

namespace commandline
{

// The user asked for something that does not exist or does not fit: one line "what: why".
class UsageError : public std::runtime_error
{
public:
    UsageError(const std::string& what, const std::string& why) : std::runtime_error(what + ": " + why) {}
};

} // namespace commandline
