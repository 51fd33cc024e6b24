// The rows of several logs as one stream in the order of their sequence numbers.
#pragma once

#include "QmLogReader.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace logtool
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
    std::string_view text; // with its line feed; valid until the stream's next Next
};

// Merges what the logs hold at the moment of construction. One row of each log is in memory at a time,
// whatever the logs' sizes. Rows that cannot be read are left out and counted. Files stay open for the life
// of the stream.
class LogStream
{
public:
    enum class Content
    {
        kRows, // texts stay empty, which spares reading them
        kText  // rows without text are left out
    };

    LogStream(const std::vector<std::string>& logs, Content content);

    // Rows of `log` up to the last one that has text.
    unsigned long RowCount(std::size_t log) const { return m_logs[log]->textEnd; }
    // Begins `log` at row `index`. Before the first Next.
    void StartAt(std::size_t log, unsigned long index) { m_logs[log]->next = index; }
    // Leaves out all rows with numbers outside of `from` to `to`. Before the first Next.
    void SetRange(std::uint32_t from, std::uint32_t to);

    // False at the end.
    bool Next(LogEntry& entry);

    // Any row with its text, apart from the stream. False when it cannot be read. Ends the validity of the
    // text given out last for this log.
    bool ReadEntry(std::size_t log, unsigned long index, LogEntry& entry);

    unsigned long Unreadable() const { return m_unreadable; }

private:
    struct Log
    {
        CQmLogReader reader;
        unsigned long next = 0;
        unsigned long end = 0;
        unsigned long textEnd = 0;
        bool loaded = false; // `entry` waits to be given out
        LogEntry entry;
    };

    void Open(Log& log, const std::string& name);
    bool Load(Log& log);
    bool Read(Log& log);

    Content m_content;
    std::uint32_t m_from = 0;
    std::uint32_t m_to = 0xFFFFFFFF;
    unsigned long m_unreadable = 0;
    std::vector<std::unique_ptr<Log>> m_logs; // readers are not to be copied
};

} // namespace logtool
