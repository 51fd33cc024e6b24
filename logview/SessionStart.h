// What a log text window writes: the beginning of a session, and a sample session. Window-free.
#pragma once

namespace logview
{

// Deletes the five logs and the counters of the log folder and writes the header of a new session into
// "Main". Closes this process's writers, readers and counters, before and after: an open file is not deleted,
// and while a process keeps the counters, others wait.
//
// False, with every file as it was, when there is no folder, the counters cannot be written, or another
// process has one of the files open.
bool StartSession();

// Writes a session to try a viewer on into "Main", "Source" and "SQL"; one of its blocks is an error. False,
// with nothing written, when the counters cannot be written or another process is writing.
bool WriteSampleSession();

} // namespace logview
