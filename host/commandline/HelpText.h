// Help texts in columns, for terminals of 80 characters.
#pragma once

#include <string>
#include <vector>

namespace commandline
{

struct HelpEntry
{
    std::string term;
    std::string meaning; // wrapped at blanks; a line feed begins a new line
};

// Lines of at most 80 characters that begin with two blanks: the terms, and beside them what they mean.
std::string Table(const std::vector<HelpEntry>& entries);

} // namespace commandline
