// All rows of a session's chosen logs, with the blocks that they belong to.
#pragma once

#include "msgservice/session/LogStream.h"
#include "sessionwalk/WalkedRow.h"

#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace sessionwalk
{

struct WalkChoice
{
    std::vector<std::string> logs;   // all of the session, for depth counts over all of them
    std::vector<std::string> chosen; // those whose rows are wanted; empty for all
    std::uint32_t from = 0;          // numbers
    std::uint32_t to = std::numeric_limits<std::uint32_t>::max();

    bool IsChosen(const std::string& log) const;
};

// In the order of the sequence numbers, as the logs are at the moment of construction, in the memory of a
// page of each log, or of the longest line. Where the walk begins within blocks, these are found first.
class SessionWalk
{
public:
    explicit SessionWalk(const WalkChoice& choice);

    // Null at the end.
    const WalkedRow* Next();

    // Rows left out because they cannot be read, and lines that have no rows.
    std::uint64_t Unreadable() const { return m_stream.Unreadable(); }

private:
    std::vector<std::string> m_logs;
    std::vector<char> m_chosen; // of each log, whether its rows are wanted
    msgservice::LogStream m_stream;
    OpenBlocks m_open;
    CQmLogTimes m_times;
    bool m_hasTimes;
    std::uint32_t m_before = 0; // number of the row before
    std::vector<EndedBlock> m_ended;
    WalkedRow m_row;
};

} // namespace sessionwalk
