// The internal error log "QmLog.LOG": where failing system calls are reported.
#pragma once

namespace logfiles
{

// Appends an entry to "QmLog.LOG" in the log folder: an empty line, the date, an empty line, `message`, and
// the system's text for the thread's last error when there is one. To be called before anything else can
// change that error; it is the same afterwards. Does nothing for a null message. Always true.
bool Report(const char* message);

// Report, as the last step of an operation that answers false.
bool Fail(const char* message);

// Fail for a call that the system did not refuse itself: `error` becomes the thread's last error first.
bool FailWith(unsigned long error, const char* message);

} // namespace logfiles
