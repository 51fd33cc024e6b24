// How far an export has come, in a file.
#pragma once

#include "logtool/CursorFile.h"

#include <cstdint>
#include <string>
#include <vector>

namespace logtool
{

struct ExportCursor
{
    bool begun = false;        // something was exported
    std::uint64_t length = 0;  // of the output file
    std::uint32_t ordinal = 1; // of the session
    std::string mark;          // what tells the session from another: see SessionMark
    std::string state;         // of the form
    Cursor position;
};

// What the row with `number` looks like, so that a later call can see whether the session is still the same:
// its log, how much of it there was, and a checksum of that. Empty when there is no such row.
std::string SessionMark(const std::vector<std::string>& logs, std::uint32_t number);

// Whether the session has another row with `number` than the one of the mark. A row that is gone is none: a
// writer may have taken it back.
bool IsOtherSession(const std::string& mark, const std::vector<std::string>& logs, std::uint32_t number);

// As ReadCursor and WriteCursor: a cursor with lines before it.
bool ReadExportCursor(const std::string& path, ExportCursor& cursor);
void WriteExportCursor(const std::string& path, const ExportCursor& cursor);

} // namespace logtool
