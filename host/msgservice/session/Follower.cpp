#include "msgservice/session/Follower.h"

#include "msgservice/session/Counter.h"

#include <algorithm>

namespace msgservice
{

namespace
{

bool IsSameRow(const CQmLogRow& left, const CQmLogRow& right)
{
    return left.offset == right.offset && left.time == right.time && left.kind == right.kind &&
           left.indent == right.indent && left.blockBegin == right.blockBegin;
}

bool FindRow(const std::string& log, std::uint32_t number, unsigned long& index)
{
    CQmLogReader reader;
    reader.SetFilePath(log.c_str());
    unsigned long found = 0;
    CQmLogRow row;
    return reader.GetRowCount() > 0 && reader.Find(number, false, found, index) &&
           reader.ReadStyle(index, row) && row.time == number;
}

} // namespace

Follower::Follower(const std::vector<std::string>& logs, FollowedRows& rows)
    : m_rows(rows), m_counter(LastNumber().value_or(0))
{
    AddLogs(logs);
}

void Follower::AddLogs(const std::vector<std::string>& logs)
{
    for (const std::string& log : logs)
    {
        const bool known = std::any_of(m_places.begin(), m_places.end(),
                                       [&](const ShownLog& place) { return IsSameName(place.log, log); });
        if (!known)
        {
            m_places.emplace_back();
            m_places.back().log = log;
        }
    }
}

void Follower::StartAtLast(std::uint32_t rows)
{
    LogStream stream(Logs(), LogStream::Content::Text);
    unsigned long candidates = 0;
    for (std::size_t log = 0; log < m_places.size(); ++log)
    {
        // One row more than is shown marks where the log stands.
        const unsigned long count = stream.RowCount(log);
        const unsigned long kept = std::min<unsigned long>(count, std::max<std::uint32_t>(rows, 1));
        stream.StartAt(log, count - kept);
        m_places[log].index = count - kept;
        candidates += kept;
    }
    for (; candidates > rows; --candidates)
    {
        const LogEntry* const entry = stream.Next();
        if (!entry)
            break;
        MarkShown(m_places[entry->log], *entry);
    }
}

void Follower::StartAfter(std::uint32_t number)
{
    LogStream stream(Logs(), LogStream::Content::Text);
    for (std::size_t log = 0; log < m_places.size(); ++log)
    {
        ShownLog& place = m_places[log];
        CQmLogReader reader;
        reader.SetFilePath(place.log.c_str());
        unsigned long found = 0;
        CQmLogRow row;
        LogEntry last;
        if (stream.RowCount(log) == 0 || !reader.Find(number, true, found, place.index))
            continue;
        // Find answers a row before the number if there is none after it.
        if (reader.ReadStyle(place.index, row) && row.time == number)
            ++place.index;
        else if (row.time < number)
            place.index = stream.RowCount(log);
        if (place.index >= stream.RowCount(log) && stream.ReadEntry(log, stream.RowCount(log) - 1, last))
            MarkShown(place, last);
    }
    m_number = number;
}

void Follower::StartAtCursor(const Cursor& cursor)
{
    if (cursor.number > m_counter)
    {
        Restart();
        return;
    }
    StartAfter(cursor.number);
    LogStream stream(Logs(), LogStream::Content::Text);
    for (const Cursor::Lag& lag : cursor.lags)
    {
        for (std::size_t log = 0; log < m_places.size(); ++log)
        {
            LogEntry entry;
            if (m_places[log].log != lag.log || !FindRow(lag.log, lag.number, entry.index) ||
                !stream.ReadEntry(log, entry.index, entry))
                continue;
            entry.text = entry.text.substr(0, lag.shown);
            MarkShown(m_places[log], entry);
        }
    }
    m_number = cursor.number;
}

bool Follower::Poll(std::size_t most)
{
    const bool changed = Look() || m_first;
    if (!changed && !m_waiting && !m_more)
        return false;
    const bool restarted = changed && HasRestarted();
    if (restarted)
        Restart();
    else if (m_cut)
        m_rows.RowsCut();
    const bool shown = Show(most);
    const bool first = m_first;
    m_first = false;
    return shown || restarted || first;
}

// Asks for sizes only, which opens nothing: as long as nothing happens no writer waits for us, and no
// file is kept from being deleted.
bool Follower::Look()
{
    bool changed = false;
    m_cut = false;
    for (ShownLog& place : m_places)
    {
        CQmLogReader reader;
        reader.SetFilePath(place.log.c_str());
        const unsigned long rows = reader.GetRowCount();
        const unsigned long size = reader.GetLogFileSize();
        place.quiet = m_first || (rows == place.rows && size == place.size);
        m_cut = m_cut || rows < place.rows;
        place.rows = rows;
        place.size = size;
        changed = changed || !place.quiet;
    }
    return changed;
}

bool Follower::HasRestarted()
{
    const std::uint32_t before = m_counter;
    m_counter = LastNumber().value_or(before);
    if (m_counter < before)
        return true;
    return std::any_of(m_places.begin(), m_places.end(), [&](ShownLog& place) { return IsChanged(place); });
}

// A new session may have grown beyond the old one since the last look, so the row shown last is compared.
bool Follower::IsChanged(ShownLog& place)
{
    if (!place.known)
        return false;
    CQmLogReader reader;
    reader.SetFilePath(place.log.c_str());
    if (reader.GetRowCount() <= place.index)
    {
        StepBack(place, reader);
        return false;
    }
    const char* bytes = nullptr;
    unsigned long length = 0;
    CQmLogRow row;
    if (!reader.Read(place.index, bytes, length, row) || !IsSameRow(row, place.row))
        return true;
    const std::string_view text(bytes, length);
    if (text.size() >= place.text.size())
        return !text.starts_with(place.text);
    if (!place.text.starts_with(text))
        return true;
    place.text = text; // the end was taken back
    return false;
}

// The row shown last is gone. Those before it have been shown as well; the last one may go on.
void Follower::StepBack(ShownLog& place, CQmLogReader& reader)
{
    place.known = false;
    place.text.clear();
    place.index = reader.GetRowCount();
    const char* bytes = nullptr;
    unsigned long length = 0;
    if (place.index == 0 || !reader.Read(place.index - 1, bytes, length, place.row))
        return;
    --place.index;
    place.known = true;
    place.text.assign(bytes, length);
}

void Follower::Restart()
{
    m_rows.SessionBegun();
    m_number = 0;
    for (ShownLog& place : m_places)
    {
        place.index = 0;
        place.known = false;
        place.text.clear();
    }
}

bool Follower::Show(std::size_t most)
{
    LogStream stream(Logs(), LogStream::Content::All);
    for (std::size_t log = 0; log < m_places.size(); ++log)
        stream.StartAt(log, m_places[log].index);
    std::size_t shown = 0;
    m_waiting = false;
    const auto isFull = [&] { return shown >= most || m_rows.IsFull(); };
    for (const LogEntry* entry = stream.Next(); entry && !isFull(); entry = stream.Next())
        shown += ShowEntry(m_places[entry->log], *entry) ? 1 : 0;
    m_more = isFull();
    m_rows.Flush();
    return shown > 0;
}

bool Follower::ShowEntry(ShownLog& place, const LogEntry& entry)
{
    const bool begun = place.known && place.index == entry.index;
    const std::size_t skip = begun ? place.text.size() : 0;
    if (entry.text.size() <= skip)
    {
        m_rows.Waits(entry);
        return false;
    }
    const bool unfinished = entry.last && !entry.text.ends_with('\n');
    if (unfinished && !place.quiet)
    {
        m_waiting = true;
        m_rows.Waits(entry);
        return false;
    }
    m_rows.Row(place.log, entry, skip);
    MarkShown(place, entry);
    return true;
}

void Follower::MarkShown(ShownLog& place, const LogEntry& entry)
{
    place.known = true;
    place.index = entry.index;
    place.row = entry.row;
    place.text = entry.text;
    m_number = std::max(m_number, entry.row.time);
}

Cursor Follower::Position() const
{
    Cursor cursor;
    cursor.number = m_number;
    for (const ShownLog& place : m_places)
    {
        CQmLogReader reader;
        reader.SetFilePath(place.log.c_str());
        const bool ended = place.known && place.text.ends_with('\n');
        const unsigned long index = ended ? place.index + 1 : place.index;
        CQmLogRow row;
        if (index >= reader.GetRowCount() || !reader.ReadStyle(index, row))
            continue;
        if (row.time <= m_number)
            cursor.lags.push_back({row.time, place.known && !ended ? place.text.size() : 0, place.log});
    }
    return cursor;
}

std::vector<std::string> Follower::Logs() const
{
    std::vector<std::string> logs;
    for (const ShownLog& place : m_places)
        logs.push_back(place.log);
    return logs;
}

} // namespace msgservice
