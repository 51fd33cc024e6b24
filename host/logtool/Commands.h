// The program of logtool, and what several of its commands share.
#pragma once

#include "logtool/Command.h"
#include "logtool/TextOutput.h"

#include <string>
#include <vector>

namespace logtool
{

// What the program answers to its caller.
constexpr int kDone = 0;
constexpr int kFoundFaults = 1; // something is wrong in the logs
constexpr int kNothingFound = 1;
constexpr int kMisuse = 2; // asked wrongly, or the output cannot be written

constexpr char kFolderHelp[] = "the log folder, instead of the one in QM_LOG_FOLDER or the user's own";

// Does what `words`, the words after the program's name, ask for and answers the exit code. Every failure
// ends here as one line among the messages.
int Run(const std::vector<std::string>& words, Host& host);

// What "logtool help" shows: all commands.
std::string Overview();

// "3 logs, 12 rows": those of `logs` that the folder holds, and the rows of their indexes.
std::string Totals(const std::vector<std::string>& logs, Host& host);

// The log folder with its backslash; empty when there is none.
std::string LogFolder();

// The system's text for an error, as a sentence; the last error's without an argument.
std::string SystemReason();
std::string SystemReason(unsigned long error);

TextStyle StyleOf(bool numbers, Host& host, const CQmLogTimes* times = nullptr);

// Tells when none of `logs` has a row, for otherwise a command would show nothing and say nothing.
void TellNoRows(const std::vector<std::string>& logs, Host& host);

// Tells how many rows could not be read and answers the exit code.
int EndOf(std::uint64_t unreadable, Host& host);
inline int EndOf(const LogStream& stream, Host& host)
{
    return EndOf(stream.Unreadable(), host);
}

// "1 row", "2 rows".
std::string Counted(std::uint64_t count, const std::string& what);

} // namespace logtool
