// The folder that all logs share: paths of its files, and the number that was given out last.
#pragma once

#include "QmLogApi.h"

// The full path of a file of the log folder: the folder, the directory of `name` below it, name and
// extension. `path` holds 260 characters and may be `name` itself. False, with `path` untouched,
// when there is no log folder or the result does not fit.
QMLOG_API bool QmLogMakeFilePath(const char* name, char* path);

// Whether failures are told in "QmLog.LOG" of the log folder, as they are by default. A program that only
// looks at the logs of others turns that off, and writes nothing there then. Any thread.
QMLOG_API void QmLogTellErrors(bool tell);

// The last sequence number given out in the log folder; 0 on a fresh folder and when it cannot be read.
// Creates "Log.DAT" when missing and waits for its lock.
QMLOG_API int QmLogGlobalTimeGet();
