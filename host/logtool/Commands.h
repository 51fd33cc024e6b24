// The commands of logtool, one function each, and what several of them share.
#pragma once

#include "logtool/Arguments.h"
#include "logtool/Host.h"
#include "logtool/LogStream.h"
#include "logtool/TextOutput.h"

#include <string>
#include <vector>

namespace logtool
{

// What the program answers to its caller.
constexpr int kDone = 0;
constexpr int kFoundFaults = 1; // something is wrong in the logs
constexpr int kMisuse = 2;      // asked wrongly, or the output cannot be written

// Does what `words`, the words behind the program's name, ask for and answers the exit code. Every failure
// ends here as one line among the messages.
int Run(const std::vector<std::string>& words, Host& host);

int Help(const Arguments& arguments, Host& host);
int Write(const Arguments& arguments, Host& host);
int Cat(const Arguments& arguments, Host& host);
int Tail(const Arguments& arguments, Host& host);
int Tree(const Arguments& arguments, Host& host);
int Errors(const Arguments& arguments, Host& host);
int Verify(const Arguments& arguments, Host& host);

// The logs named with "--log"; without, the five of a session and whatever else the folder holds.
std::vector<std::string> ChosenLogs(const Arguments& arguments, Host& host);

// "3 logs, 12 rows": those of `logs` that the folder holds, and the rows of their indexes.
std::string Totals(const std::vector<std::string>& logs, Host& host);

// The log folder with its backslash; empty when there is none.
std::string LogFolder();

TextStyle StyleOf(const Arguments& arguments, Host& host);

// Tells how many rows could not be read and answers the exit code.
int EndOf(const LogStream& stream, Host& host);

// "1 row", "2 rows".
std::string Counted(std::uint64_t count, const std::string& what);

} // namespace logtool
