// Rows and fields of CSV texts, as bytes. No window system.
//
// A row ends with CR LF, LF, CR or the text, and its fields have a separator between them. A field that
// begins with a quote holds everything up to the next quote that is not doubled, separators and line ends
// too. A quote anywhere else is a character like others.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace csv
{

// Returns the comma, the semicolon or the tab: what the first row has most of outside quotes.
char GuessSeparator(std::string_view text);

// Returns the length of the row that `text` begins with, its line end included. Returns npos if a quote is
// not closed.
std::size_t RowLength(std::string_view text, char separator);

// Returns the line end of a row, which is empty if the text has ended there.
std::string_view LineEnd(std::string_view row);

// Returns the fields of a row as they are in it, quotes included. There is always at least one.
std::vector<std::string_view> SplitFields(std::string_view row, char separator);

// Returns the text that a field stands for.
std::string FieldText(std::string_view field);

// Returns a field for a text. It is quoted only if it has to be: for a separator, a quote, a line end, and
// for blanks at its ends, which other programs would cut off.
std::string MakeField(std::string_view text, char separator);

} // namespace csv
