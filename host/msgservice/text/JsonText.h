// Texts as JSON has them.
#pragma once

#include <string>
#include <string_view>

namespace msgservice
{

// Appends the text, in quotes. It has to be valid UTF-8; what is not becomes U+FFFD.
void AppendJsonText(std::string_view text, std::string& json);

} // namespace msgservice
