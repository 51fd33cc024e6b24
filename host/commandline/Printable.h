// Text that a terminal shows and does not obey.
#pragma once

#include <string>
#include <string_view>

namespace commandline
{

// `text` in UTF-8, whatever it is in, with every character that a terminal could obey (control characters,
// DEL and U+0080 to U+009F) written as "\x1b"; tabs stay.
std::string Printable(std::string_view text);

} // namespace commandline
