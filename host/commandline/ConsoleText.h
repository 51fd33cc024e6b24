// Text on a console, whatever code page that has.
#pragma once

#include <string_view>

namespace commandline
{

// False if `console` is none or refuses. A text that ends within a character is written up to there;
// `written` tells how many bytes that are.
bool WriteConsoleText(void* console, std::string_view utf8, std::size_t& written);

} // namespace commandline
