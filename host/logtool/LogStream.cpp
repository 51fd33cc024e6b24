#include "logtool/LogStream.h"

#include <algorithm>
#include <cctype>

namespace logtool
{

bool IsSameName(std::string_view left, std::string_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
    });
}

LogStream::LogStream(const std::vector<std::string>& logs, Content content) : m_content(content)
{
    for (const std::string& name : logs)
    {
        m_logs.push_back(std::make_unique<Log>());
        m_logs.back()->entry.log = m_logs.size() - 1;
        Open(*m_logs.back(), name);
    }
}

// Rows are written before their text, so the last ones may have none yet. They are found from the end
// and not by bisection: a single damaged offset must not hide the rows behind it.
void LogStream::Open(Log& log, const std::string& name)
{
    log.reader.SetFilePath(name.c_str());
    const unsigned long count = log.reader.GetRowCount();
    const unsigned long size = log.reader.GetLogFileSize();
    log.textEnd = count;
    CQmLogRow row;
    while (log.textEnd > 0 && log.reader.ReadStyle(log.textEnd - 1, row) && row.offset >= size)
        --log.textEnd;
    log.end = m_content == Content::kRows ? count : log.textEnd;
    if (size == 0 && count > 1)
        m_unreadable += count; // the text file is gone: one row may wait for a first text, not many
}

void LogStream::SetRange(std::uint32_t from, std::uint32_t to)
{
    m_from = from;
    m_to = to;
    for (const std::unique_ptr<Log>& log : m_logs)
    {
        // The answer is the last row when none is late enough, and on a damaged index any row; so the
        // rows are looked at again when they are read.
        unsigned long found = 0;
        unsigned long index = 0;
        if (from > 0 && log->end > 0 && log->reader.Find(from, true, found, index))
            log->next = index;
    }
}

bool LogStream::Next(LogEntry& entry)
{
    Log* first = nullptr;
    for (const std::unique_ptr<Log>& log : m_logs)
        if (Load(*log) && (first == nullptr || log->entry.row.time < first->entry.row.time))
            first = log.get();
    if (first == nullptr)
        return false;
    entry = first->entry;
    first->loaded = false;
    return true;
}

// The next row is read only when it is asked for: reading it ends the validity of the text given out.
bool LogStream::Load(Log& log)
{
    while (!log.loaded && log.next < log.end)
    {
        const bool read = Read(log);
        ++log.next;
        if (!read)
            ++m_unreadable;
        else if (log.entry.row.time > m_to)
            log.next = log.end;
        else
            log.loaded = log.entry.row.time >= m_from;
    }
    return log.loaded;
}

// Up to `textEnd` every row has text, so one without cannot be read.
bool LogStream::Read(Log& log)
{
    log.entry.index = log.next;
    log.entry.hasText = log.next < log.textEnd;
    if (m_content == Content::kRows)
        return log.reader.ReadStyle(log.next, log.entry.row);
    return ReadEntry(log.entry.log, log.next, log.entry) && !log.entry.text.empty();
}

bool LogStream::ReadEntry(std::size_t log, unsigned long index, LogEntry& entry)
{
    const char* text = nullptr;
    unsigned long length = 0;
    if (!m_logs[log]->reader.Read(index, text, length, entry.row))
        return false;
    entry.log = log;
    entry.index = index;
    entry.last = index + 1 == m_logs[log]->textEnd;
    entry.text = std::string_view(text, length);
    return true;
}

} // namespace logtool
