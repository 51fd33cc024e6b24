// What "logtool write" writes: bytes as they come, line by line.
#pragma once

#include "QmLogRow.h"

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

class CQmLogWriter;

namespace logtool
{

// The first line begins afresh when text precedes it in the log. A line feed makes the row of the line that
// follows, so each is held back until that line comes: the last one is not written, and whoever writes next
// brings it. Nothing is written after a write that failed: it would read as if there were no gap.
class LogFeed
{
public:
    // `ready` is asked before the first write; a false answer is a failure. Shows progress on `progress`
    // unless it is null.
    LogFeed(CQmLogWriter& log, const std::function<bool()>& ready, std::ostream* progress);

    // Puts all that follows into a block, whose header is its first line unless there is a caption.
    void OpenBlock(QmLogBlockKind kind, const std::optional<std::string>& caption);

    // NUL bytes become '?'. A whole piece may end within a line whose rest comes next; of any other all is
    // written, because a live input may have no more for a while.
    void Take(std::string_view data, bool whole);

    // What comes next begins a line.
    void EndInput();

    // Once, after all inputs; ends the block.
    void Finish();

    bool HasFailed() const { return m_failed; }
    const std::string& Failure() const { return m_failure; } // the system's reason
    std::uint64_t NulBytes() const { return m_nulBytes; }
    unsigned long LostRows() const; // lines written without rows

private:
    bool IsReady();
    bool Begin(std::string& text);
    bool EndsWithinLine() const;
    void Put(std::string text);
    void Check(bool written);
    void ShowProgress(std::size_t added);

    CQmLogWriter& m_log;
    std::function<bool()> m_ready;
    std::ostream* m_progress;
    std::string m_pending; // not written yet; at most its first character is a line feed held back
    bool m_isReady = false;
    bool m_begun = false; // something of ours is in the log
    bool m_inBlock = false;
    char m_last = '\n'; // character written
    bool m_failed = false;
    std::string m_failure;
    std::uint64_t m_bytes = 0;
    std::uint64_t m_nulBytes = 0;
    unsigned long m_lostBefore;
};

} // namespace logtool
