// Tells of growing logs bit by bit.
#pragma once

#include "msgservice/session/LogStream.h"

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace msgservice
{

// How far the logs have been shown, in a form that outlives the process.
//
// One number is not enough: the row of a log's next line takes its number when the line before is ended,
// so its text may come long after rows of other logs with greater numbers. The logs that lag name their
// first row that is not yet shown in full.
struct Cursor
{
    struct Lag
    {
        std::uint32_t number = 0; // of the row
        std::size_t shown = 0;    // bytes of its text
        std::string log;
    };

    std::uint32_t number = 0; // rows up to here are shown, but for those of logs that lag
    std::vector<Lag> lags;
};

// Is told what a follower finds.
class FollowedRows
{
public:
    virtual ~FollowedRows() = default;

    // A row of log `name`. `skip` bytes of its text were told before.
    virtual void Row(const std::string& name, const LogEntry& entry, std::size_t skip) = 0;
    virtual void SessionBegun() = 0; // all that follows is of a new session
    // A row without new text. It was told before, or its text is yet to come: `entry` has what there is of
    // it, though an unfinished line may still grow before it is told.
    virtual void Waits(const LogEntry& entry) { static_cast<void>(entry); }
    virtual void RowsCut() {}               // rows at the end of a log have gone
    virtual void Flush() {}                 // no more for the moment
    virtual bool IsFull() { return false; } // leaves all further rows to the next Poll
};

// Holds no file open between two calls, so that a new session can delete the files.
class Follower
{
public:
    // Begins with the first row of each log.
    Follower(const std::vector<std::string>& logs, FollowedRows& rows);

    // Where to begin instead; one of these before the first Poll.
    void StartAtLast(std::uint32_t rows);     // the last `rows` rows of all logs
    void StartAfter(std::uint32_t number);    // rows with greater numbers, and lines that get text only now
    void StartAtCursor(const Cursor& cursor); // after it, or at the beginning of a session that began since

    // Takes in logs that are not known yet.
    void AddLogs(const std::vector<std::string>& logs);

    // Shows what is new and answers whether the position may have changed. The last line of a log that grows
    // is shown without its end only when nothing came to the log since the call before; the first call shows
    // all. When the counter has become less, or the row shown last another, a new session has begun, which is
    // shown from its beginning. Rows that are gone from the end of a log are not: a writer takes back what it
    // could not write in full, and cuts what a killed one has left. What was shown of them is not shown
    // again. After `most` rows it leaves the rest to the next call.
    bool Poll(std::size_t most = std::numeric_limits<std::size_t>::max());

    // Whether the last call has left rows after `most` to the next one, or an unfinished line.
    bool HasMore() const { return m_more; }
    bool HoldsLine() const { return m_waiting; }

    Cursor Position() const;

    // In the order of the positions in LogEntry.
    std::vector<std::string> Logs() const;

private:
    // Where a log stands. `row` describes row `index` when `known`: then its `text` is out.
    struct ShownLog
    {
        std::string log;
        unsigned long index = 0;
        bool known = false;
        CQmLogRow row;
        std::string text;
        unsigned long rows = 0; // sizes as last seen
        unsigned long size = 0;
        bool quiet = true; // sizes are those of the time before
    };

    bool Look();
    bool HasRestarted();
    void Restart();
    bool Show(std::size_t most);
    bool ShowEntry(ShownLog& place, const LogEntry& entry);
    void MarkShown(ShownLog& place, const LogEntry& entry);
    bool IsChanged(ShownLog& place);
    void StepBack(ShownLog& place, CQmLogReader& reader);

    std::vector<ShownLog> m_places;
    FollowedRows& m_rows;
    std::uint32_t m_number = 0;  // the greatest shown
    std::uint32_t m_counter = 0; // the last number given out when rows were last read
    bool m_first = true;
    bool m_cut = false;     // a log has fewer rows than the time before
    bool m_more = false;    // rows are left to the next call
    bool m_waiting = false; // an unfinished line is held back
};

} // namespace msgservice
