#include "msgservice/session/LogStream.h"

#include <algorithm>
#include <cctype>

namespace msgservice
{

bool IsSameName(std::string_view left, std::string_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
    });
}

LogStream::LogStream(const std::vector<std::string>& logs, Content content)
{
    for (const std::string& name : logs)
    {
        m_logs.push_back(std::make_unique<Log>(name, m_logs.size()));
        Log& log = *m_logs.back();
        SetContent(log.entry.log, content);
        if (log.pages.TextSize() == 0 && log.pages.RowCount() > 1)
            m_unreadable +=
                log.pages.RowCount(); // the text is gone: one row may wait for its first, not many
    }
}

void LogStream::SetContent(std::size_t log, Content content)
{
    m_logs[log]->content = content;
    const LogPages& pages = m_logs[log]->pages;
    m_logs[log]->end = content == Content::Text ? pages.TextEnd() : pages.RowCount();
}

void LogStream::SetRange(std::uint32_t from, std::uint32_t to)
{
    m_from = from;
    m_to = to;
    m_filtered = m_filtered || from > 0 || to < 0xFFFFFFFF;
    // On a damaged index the answer may be any row; so the rows are looked at again when they are read.
    for (const std::unique_ptr<Log>& log : m_logs)
        if (from > 0 && log->end > 0)
            log->next = log->pages.FindRow(from);
}

void LogStream::Begin()
{
    for (const std::unique_ptr<Log>& log : m_logs)
        Advance(*log);
    ChooseLog();
}

// Without logs there is none to choose.
void LogStream::ChooseLog()
{
    Key lowest = kEnded;
    m_nextKey = kEnded;
    for (const std::unique_ptr<Log>& log : m_logs)
    {
        m_nextKey = std::min(m_nextKey, std::max(lowest, log->key));
        m_current = log->key < lowest || !m_current ? log.get() : m_current;
        lowest = std::min(lowest, log->key);
    }
}

// Reads the next row of `log` that is to be given out. False when there is none.
bool LogStream::Load(Log& log)
{
    while (log.next < log.end)
    {
        if (!m_wanted.empty() && (log.next = log.pages.Skip(log.next, m_wanted)) >= log.end)
            break;
        const bool read = Read(log);
        ++log.next;
        if (!read)
            ++m_unreadable;
        else if (log.entry.row.time > m_to)
            log.next = log.end;
        else if (log.entry.row.time >= m_from)
            return true;
    }
    return false;
}

// Up to its end every row has text, so one without cannot be read.
bool LogStream::Read(Log& log)
{
    log.entry.hasText = log.next < log.pages.TextEnd();
    if (log.content != Content::Rows && log.entry.hasText)
        return ReadEntry(log.entry.log, log.next, log.entry) && !log.entry.text.empty();
    log.entry.index = log.next;
    log.entry.last = false;
    log.entry.text = {};
    return log.pages.ReadRow(log.next, log.entry.row);
}

bool LogStream::ReadEntry(std::size_t log, unsigned long index, LogEntry& entry)
{
    LogPages& pages = m_logs[log]->pages;
    if (!pages.Read(index, entry.row, entry.text))
        return false;
    entry.log = log;
    entry.index = index;
    entry.last = index + 1 == pages.TextEnd();
    return true;
}

std::uint64_t LogStream::Unreadable() const
{
    std::uint64_t count = m_unreadable;
    for (const std::unique_ptr<Log>& log : m_logs)
        count += log->pages.LinesWithoutRow();
    return count;
}

} // namespace msgservice
