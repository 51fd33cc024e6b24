#include "sessionwalk/SessionWalk.h"

#include "sessionwalk/RowFields.h"

#include <algorithm>

namespace sessionwalk
{

using msgservice::LogEntry;
using msgservice::LogStream;

bool WalkChoice::IsChosen(const std::string& log) const
{
    return chosen.empty() || std::any_of(chosen.begin(), chosen.end(), [&](const std::string& name) {
               return msgservice::IsSameName(name, log);
           });
}

SessionWalk::SessionWalk(const WalkChoice& choice)
    : m_logs(choice.logs), m_stream(m_logs, LogStream::Content::All),
      m_open(choice.from > 0 ? FindOpenBlocks(m_logs, choice.from - 1) : OpenBlocks(m_logs.size())),
      m_hasTimes(m_times.SetFolder(nullptr))
{
    for (std::size_t log = 0; log < m_logs.size(); ++log)
    {
        m_chosen.push_back(choice.IsChosen(m_logs[log]));
        if (!m_chosen[log])
            m_stream.SetContent(log, LogStream::Content::Rows);
    }
    m_stream.SetRange(choice.from, choice.to);
}

const WalkedRow* SessionWalk::Next()
{
    m_ended.clear();
    while (const LogEntry* const entry = m_stream.Next())
    {
        TakeBlocks(*entry, m_before, m_hasTimes ? &m_times : nullptr, m_open, m_ended);
        m_before = entry->row.time;
        if (!m_chosen[entry->log] || !entry->hasText)
            continue;
        PutRow(*entry, m_logs[entry->log], m_row);
        PutBlock(m_open.Innermost(entry->log), m_row);
        if (m_hasTimes)
            PutTime(m_times, m_row);
        m_row.ended = &m_ended;
        return &m_row;
    }
    return nullptr;
}

} // namespace sessionwalk
