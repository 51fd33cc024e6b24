// Files and paths of the core library.
#pragma once

#include "wintypes.h"
#include "zemacore/ZemaApi.h"

// Opens or creates a file; the arguments are CreateFileA's.
// Answers null for a null or empty path, INVALID_HANDLE_VALUE when the system refuses.
// `security` and `templateFile` must be null.
QMPLATFORM_API HANDLE ZEMA_CreateFile(const char* path, DWORD access, DWORD share, const void* security,
                                      DWORD disposition, DWORD flags, HANDLE templateFile);

// False when there is no such file, the path is null or empty, or the file is in use.
QMPLATFORM_API bool ZEMA_DeleteFile(const char* path);

// Composes `path` (a buffer of MAX_PATH characters) from its parts, any of which may be empty or null:
// a colon is put after the drive, a backslash after the directory and a dot before the extension
// where they are missing. False, with an empty path, when the result with its NUL does not fit.
// A part may lie in `path` itself.
QMPLATFORM_API bool ZEMA_makepath(char* path, const char* drive, const char* directory, const char* name,
                                  const char* extension);
