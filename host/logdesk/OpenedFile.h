// What a path that the user names is.
#pragma once

#include <functional>
#include <string>

namespace logdesk
{

// Whether `path` is one of the two files of a session's log: an index, or a log with its index beside it. Any
// other file is read as text or as saved messages. `exists` tells which files there are.
bool BelongsToSession(const std::string& path, const std::function<bool(const std::string&)>& exists);

// The part after the last separator.
std::string FileName(const std::string& path);

// The words as a command line from which a program takes the same words.
std::string CommandLineOf(const std::string& program, const std::string& word);

} // namespace logdesk
