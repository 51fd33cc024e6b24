// What the window tells about a folder beyond the rows it shows: why it is empty, and which logs and rows it
// does not show.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace logdesk
{

// One of the logs that the window can show.
struct LogCounts
{
    std::string name;
    unsigned long rows = 0;
    unsigned long before = 0; // of these, rows from before the first row of "Main": nothing leads to them
    unsigned long after = 0;  // and from after its last one
    bool operator==(const LogCounts&) const = default;
};

struct FolderState
{
    std::string folder;
    bool isThere = true;
    std::vector<LogCounts> logs;      // "Main" first
    std::vector<std::string> foreign; // other logs that have rows
    std::string wanted;               // the log that the user named; empty for none
    bool showsMain = true;            // and what unfolds there; else all rows of logs are in sight
    std::uint32_t clockSteps = 0;     // how often the clock was set back
    std::uint32_t firstStep = 0;      // the number at which it first was
    bool operator==(const FolderState&) const = default;
};

// The log that a file belongs to, "Run" for "Run.LOG" and "Run.ROW"; empty for other files, among which are
// the counters and the library's error messages, "QmLog.LOG".
std::string LogOfFile(const std::string& file);

// Whether two log names name the same files.
bool IsSameLog(const std::string& a, const std::string& b);

// One line each, the most important first; none when there is nothing to tell.
std::vector<std::string> Notices(const FolderState& state);

// Rows after Main's last, which unfold there only when Main goes on; 0 while all rows are in sight.
unsigned long RowsAfterMain(const FolderState& state);

// What the status bar adds about them; empty when there are none.
std::string AfterText(const FolderState& state);

} // namespace logdesk
