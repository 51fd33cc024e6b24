// The answer to an index outside an array.
#pragma once

namespace report
{

// Raises the platform's invalid-argument exception; where there is no such platform, std::invalid_argument.
[[noreturn]] void ThrowInvalidArgument();

} // namespace report
