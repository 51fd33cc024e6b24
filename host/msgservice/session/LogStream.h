// The rows of several logs as one stream in the order of their sequence numbers.
#pragma once

#include "msgservice/session/LogPages.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace msgservice
{

// Names of logs compare as file names do.
bool IsSameName(std::string_view left, std::string_view right);

struct LogEntry
{
    std::size_t log = 0;     // position of the log's name in the list
    unsigned long index = 0; // the row in its log
    bool hasText = true;     // false for a row at the log's end whose text has not come
    bool last = false;       // no later row of the log has text
    CQmLogRow row;
    std::string_view text; // with its line feed; valid as long as the entry
};

// Merges what the logs hold at the moment of construction, in the memory of a page of each log. Rows that
// cannot be read are left out and counted. Files stay open for the life of the stream.
class LogStream
{
public:
    enum class Content
    {
        Rows, // texts stay empty, which spares reading them
        Text, // rows without text are left out
        All   // texts, and the rows without
    };

    LogStream(const std::vector<std::string>& logs, Content content);

    // Rows of `log` up to the last one that has text.
    unsigned long RowCount(std::size_t log) const { return m_logs[log]->pages.TextEnd(); }
    // Begins `log` at row `index`. Before the first Next.
    void StartAt(std::size_t log, unsigned long index) { m_logs[log]->next = index; }
    // Other content of one log. Before the first Next.
    void SetContent(std::size_t log, Content content);
    // Leaves out all rows with numbers outside of `from` to `to`. Before the first Next.
    void SetRange(std::uint32_t from, std::uint32_t to);
    // Only rows with `text` are wanted: others may be left out, and most are without a look at each of them.
    // For Content::Text, before the first Next.
    void SetWanted(std::string_view text)
    {
        m_wanted = text;
        m_filtered = m_filtered || !text.empty();
    }

    // The next row, valid until the next call; null at the end.
    const LogEntry* Next()
    {
        if (m_current)
            Advance(*m_current);
        else
            Begin();
        // A log stays the right one as long as its keys are below those of the others.
        if (m_current && m_current->key > m_nextKey)
            ChooseLog();
        return m_current && m_current->key != kEnded ? &m_current->entry : nullptr;
    }

    // Any row with its text, apart from the stream. False when it cannot be read. Ends the validity of the
    // text given out last for this log.
    bool ReadEntry(std::size_t log, unsigned long index, LogEntry& entry);

    // Rows left out because they cannot be read, and lines that have no rows.
    std::uint64_t Unreadable() const;

private:
    // Orders by number, and among equal ones by the log's position.
    using Key = std::uint64_t;
    static constexpr Key kEnded = ~Key{0};

    static Key KeyOf(const LogEntry& entry) { return Key{entry.row.time} << 32 | entry.log; }

    struct Log
    {
        Log(const std::string& name, std::size_t position) : pages(name) { entry.log = position; }

        LogPages pages;
        unsigned long next = 0;
        unsigned long end = 0;
        Content content = Content::Rows;
        LogEntry entry;
        Key key = kEnded; // of the entry
    };

    // A row is read when the one before it in its log is no longer needed: reading it ends the validity of a
    // text.
    void Advance(Log& log) { log.key = LoadHeld(log) || Load(log) ? KeyOf(log.entry) : kEnded; }

    // Goes on within a page, which is what most rows take. The last row with text is left to Load.
    bool LoadHeld(Log& log)
    {
        if (m_filtered || log.next + 1 >= log.pages.TextEnd())
            return false;
        LogEntry& entry = log.entry;
        if (log.content == Content::Rows ? !log.pages.ReadHeldRow(log.next, entry.row)
                                         : !log.pages.ReadHeld(log.next, entry.row, entry.text))
            return false;
        entry.index = log.next++;
        return true;
    }

    void Begin();
    void ChooseLog();
    bool Load(Log& log);
    bool Read(Log& log);

    std::uint32_t m_from = 0;
    std::uint32_t m_to = 0xFFFFFFFF;
    std::string m_wanted;
    bool m_filtered = false; // by number or text
    std::uint64_t m_unreadable = 0;
    std::vector<std::unique_ptr<Log>> m_logs;
    Log* m_current = nullptr; // the log that the row given out last is of; null before the first row
    Key m_nextKey = 0;        // the lowest of the others
};

} // namespace msgservice
