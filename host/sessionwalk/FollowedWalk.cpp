#include "sessionwalk/FollowedWalk.h"

#include "sessionwalk/RowFields.h"

#include <utility>

namespace sessionwalk
{

using msgservice::LogEntry;

FollowedWalk::FollowedWalk(const WalkChoice& choice, WalkedRows& rows)
    : m_choice(choice), m_rows(rows), m_follower(choice.logs, *this), m_open(choice.logs.size())
{
    if (choice.from < 2)
        return;
    m_open = FindOpenBlocks(choice.logs, choice.from - 1);
    m_tracked = choice.from - 1;
    m_follower.StartAfter(choice.from - 1);
}

void FollowedWalk::StartAtCursor(const msgservice::Cursor& cursor)
{
    m_open = FindOpenBlocks(m_choice.logs, cursor.number);
    m_tracked = cursor.number;
    m_follower.StartAtCursor(cursor);
}

void FollowedWalk::AddLogs(const std::vector<std::string>& logs)
{
    m_follower.AddLogs(logs);
    m_choice.logs = m_follower.Logs();
    m_open.SetLogCount(m_choice.logs.size());
}

bool FollowedWalk::Poll(std::size_t most)
{
    if (!m_times.emplace().SetFolder(nullptr))
        m_times.reset();
    const bool changed = m_follower.Poll(most);
    m_times.reset();
    return changed;
}

void FollowedWalk::Row(const std::string& name, const LogEntry& entry, std::size_t skip)
{
    PutRow(entry, name, m_row);
    m_row.skip = skip;
    if (skip > 0 && m_row.text.size() <= skip)
    {
        m_waiting.erase(m_row.number);
        return;
    }
    const OpenBlocks::Block block = BlockOf(entry);
    if (!m_choice.IsChosen(name) || m_row.number < m_choice.from || m_row.number > m_choice.to)
        return;
    PutBlock(&block, m_row);
    m_row.time.reset();
    if (m_times)
        PutTime(*m_times, m_row);
    m_row.ended = &m_ended;
    m_rows.Row(m_row);
    m_ended.clear();
}

// A row is looked at when its text has not come yet, too: it begins and ends blocks for the rows after it.
bool FollowedWalk::Track(const LogEntry& entry)
{
    if (entry.row.time <= m_tracked)
        return false;
    TakeBlocks(entry, std::exchange(m_tracked, entry.row.time), m_times ? &*m_times : nullptr, m_open,
               m_ended);
    if (!entry.text.ends_with('\n'))
        m_waiting[m_tracked] = Innermost(m_open, entry.log);
    return true;
}

OpenBlocks::Block FollowedWalk::BlockOf(const LogEntry& entry)
{
    if (Track(entry))
        return Innermost(m_open, entry.log);
    const auto waiting = m_waiting.find(entry.row.time);
    if (waiting == m_waiting.end())
    {
        // The row itself came after others with greater numbers, and may begin or end their blocks.
        const OpenBlocks::Block block = Innermost(FindOpenBlocks(m_choice.logs, entry.row.time), entry.log);
        m_open = FindOpenBlocks(m_choice.logs, m_tracked);
        if (!entry.text.ends_with('\n'))
            m_waiting[entry.row.time] = block;
        return block;
    }
    const OpenBlocks::Block block = waiting->second;
    if (entry.text.ends_with('\n'))
        m_waiting.erase(waiting);
    return block;
}

OpenBlocks::Block FollowedWalk::Innermost(const OpenBlocks& open, std::size_t log) const
{
    const OpenBlocks::Block* const block = open.Innermost(log);
    return block ? *block : OpenBlocks::Block();
}

// A row that has gone may have begun a block.
void FollowedWalk::RowsCut()
{
    m_waiting.clear();
    m_open = FindOpenBlocks(m_choice.logs, m_tracked);
}

void FollowedWalk::SessionBegun()
{
    m_open = OpenBlocks(m_choice.logs.size());
    m_tracked = 0;
    m_waiting.clear();
    m_ended.clear();
    m_choice.from = 0; // the numbers were meant for the session before
    m_choice.to = std::numeric_limits<std::uint32_t>::max();
    m_rows.SessionBegun();
}

} // namespace sessionwalk
