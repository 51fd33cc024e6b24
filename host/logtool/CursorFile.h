// A cursor in a file, so that the next call goes on where this one has ended.
#pragma once

#include "msgservice/session/Follower.h"

#include <string>
#include <string_view>

namespace logtool
{

using msgservice::Cursor;
using msgservice::FollowedRows;
using msgservice::Follower;

// The file's first line is the number, which may stand alone. Each further line is a log that lags: its
// row's number, the bytes shown of it, and the log's name.

// False when the file does not exist. Throws UsageError when it cannot be read or is no such file.
bool ReadCursor(const std::string& path, Cursor& cursor);

// The same in two steps, for files that have more in them.
bool ReadCursorText(const std::string& path, std::string& text);
bool ParseCursor(std::string_view text, Cursor& cursor); // false when it is none

// Replaces the file in one step: whoever reads it finds the old cursor or the new one. Throws UsageError.
void WriteCursor(const std::string& path, const Cursor& cursor);
std::string CursorText(const Cursor& cursor);
void WriteCursorText(const std::string& path, const std::string& text);

} // namespace logtool
