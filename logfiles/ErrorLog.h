// The internal error log "QmLog.LOG": where failing system calls are reported.
#pragma once

#include <cstddef>

namespace logfiles
{

// Appends an entry to "QmLog.LOG" in the log folder, or where that cannot be made in the manager's fallback:
// an empty line, the date, an empty line, `message`, and the system's text for the thread's last error when
// there is one. To be called before anything else can change that error; it is the same afterwards. Does
// nothing for a null message. Always true.
bool Report(const char* message);

// Report, as the last step of an operation that answers false.
bool Fail(const char* message);

// Fail for a call that the system did not refuse itself: `error` becomes the thread's last error first.
bool FailWith(unsigned long error, const char* message);

// FailWith for what the library refuses of itself: "operation: reason: name"; of `name` what a path can hold.
// The refusal that was reported last is not reported again, however often it comes: endless loops ask for it.
bool Refuse(unsigned long error, const char* operation, const char* reason, const char* name);

// Bytes that are kept of the last report, its NUL included.
constexpr std::size_t kReportSize = 512;

// What this thread reported last, in one line with the system's text, or refused last; empty if nothing was
// since it was forgotten.
const char* LastReport();
void ForgetLastReport();

} // namespace logfiles
