// The rows of a session as they come, with the blocks that they belong to.
#pragma once

#include "msgservice/session/Follower.h"
#include "sessionwalk/SessionWalk.h"

#include <map>
#include <optional>

namespace sessionwalk
{

class WalkedRows
{
public:
    virtual ~WalkedRows() = default;
    virtual void Row(const WalkedRow& row) = 0;
    virtual void SessionBegun() = 0;        // all that follows is of a new session
    virtual bool IsFull() { return false; } // leaves all further rows to the next Poll
};

// Rows of one log come in order. Those of several come by number, except that a line whose text came late
// comes late; it belongs to the blocks of its number all the same. Of a line that grows after it was told the
// rest is told, which `skip` of the row says. Its line end alone is no rest.
//
// Holds no file open between two calls.
class FollowedWalk : private msgservice::FollowedRows
{
public:
    // Begins with the first row that was chosen.
    FollowedWalk(const WalkChoice& choice, WalkedRows& rows);

    // Goes on after the cursor instead, or at the beginning of a session that began since; before the first
    // Poll.
    void StartAtCursor(const msgservice::Cursor& cursor);

    // As Follower has them.
    void AddLogs(const std::vector<std::string>& logs);
    bool Poll(std::size_t most = std::numeric_limits<std::size_t>::max());
    bool HasMore() const { return m_follower.HasMore(); }
    bool HoldsLine() const { return m_follower.HoldsLine(); }
    msgservice::Cursor Position() const { return m_follower.Position(); }

    // Blocks open after the rows looked at so far.
    const OpenBlocks& Open() const { return m_open; }

private:
    void Row(const std::string& name, const msgservice::LogEntry& entry, std::size_t skip) override;
    void Waits(const msgservice::LogEntry& entry) override { Track(entry); }
    void RowsCut() override;
    void SessionBegun() override;
    bool IsFull() override { return m_rows.IsFull(); }

    bool Track(const msgservice::LogEntry& entry);
    OpenBlocks::Block BlockOf(const msgservice::LogEntry& entry);
    OpenBlocks::Block Innermost(const OpenBlocks& open, std::size_t log) const;

    WalkChoice m_choice;
    WalkedRows& m_rows;
    msgservice::Follower m_follower;
    OpenBlocks m_open;
    std::uint32_t m_tracked = 0; // the greatest number that m_open has seen
    // The blocks of rows up to that number whose text has not come in full.
    std::map<std::uint32_t, OpenBlocks::Block> m_waiting;
    std::optional<CQmLogTimes> m_times; // during a Poll, if there are any
    std::vector<EndedBlock> m_ended;
    WalkedRow m_row;
};

} // namespace sessionwalk
