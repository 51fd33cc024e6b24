// What can be seen of an expression: how it is looked for in many lines at once.
#pragma once

#include <optional>
#include <string>

namespace logview
{

// An expression that matches in a text of several lines at or before each place where `expression` matches in
// one of its lines alone, be a line's end LF or CR and LF. It may match elsewhere, too, but never looks far
// beyond a line. Nothing for expressions in which that cannot be seen: those that look around, refer back or
// keep what they have taken.
std::optional<std::string> BlockForm(const std::string& expression);

// The longest ASCII text that each match of an expression contains, which has a block form; empty if none can
// be seen.
std::string NeededText(const std::string& expression);

} // namespace logview
