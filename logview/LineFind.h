// Finds a text in a line, whatever characters the two have.
#pragma once

#include <optional>
#include <string_view>

namespace logview
{

// The column of the first place from `column` on where `line`, put into capitals, has `text` as it is given:
// a text with small letters is never found. Characters are compared, so that a line in the code page and a
// text in UTF-8 match. Columns are bytes of the line.
std::optional<int> FindInLine(std::string_view line, std::string_view text, int column);

} // namespace logview
