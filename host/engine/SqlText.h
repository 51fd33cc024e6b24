// Values and names in the engine's SQL: whatever their bytes are, they stay values and names.
#pragma once

#include <string>
#include <string_view>

namespace engine
{

// A text as a literal in quotes. Its bytes come back as they are, NUL and what is no UTF-8 among them.
std::string SqlValue(std::string_view text);

// A name of a column or the like, in back quotes.
std::string SqlName(std::string_view name);

// "table" or "database.table": what is before the first full stop is the database's name.
std::string SqlTable(std::string_view name);

} // namespace engine
