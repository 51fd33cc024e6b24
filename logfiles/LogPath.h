// Names and paths of a log's two files.
#pragma once

#include "wintypes.h"

namespace logfiles
{

// Copies `name` and composes the full paths of its "LOG" and "ROW" files, in buffers of MAX_PATH characters.
// A null or empty name, or one that does not fit, is refused: all three texts are empty. Without a log folder
// only the paths are: the log cannot be opened. Either is reported as `operation`.
void MakeLogPaths(const char* operation, const char* name, char* nameCopy, char* logPath, char* rowPath);

// Likewise for a log by the path of its text file, wherever that is.
void MakeFullLogPaths(const char* operation, const char* path, char* pathCopy, char* logPath, char* rowPath);

} // namespace logfiles
