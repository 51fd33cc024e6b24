// Text that a terminal shows and does not obey.
#pragma once

#include <string>
#include <string_view>

namespace commandline
{

// `text` with every byte that a terminal could obey (control characters, DEL and 0x80 to 0x9F) written as
// "\x1b"; tabs stay.
std::string Printable(std::string_view text);

} // namespace commandline
