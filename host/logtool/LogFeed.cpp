#include "logtool/LogFeed.h"

#include "logtool/Commands.h"

#include "QmLogReader.h"
#include "QmLogWriter.h"

#include <algorithm>
#include <ostream>

namespace logtool
{

namespace
{

constexpr std::uint64_t kProgressStep = 1024 * 1024;

} // namespace

LogFeed::LogFeed(CQmLogWriter& log, const std::function<bool()>& ready, std::ostream* progress)
    : m_log(log), m_ready(ready), m_progress(progress), m_lostBefore(log.GetLostRowCount())
{
}

// The caption goes out at once: it also tells whether the log can be written.
void LogFeed::OpenBlock(QmLogBlockKind kind, const std::optional<std::string>& caption)
{
    if (!IsReady())
        return;
    m_begun = true;
    m_inBlock = m_log.BlockBegin(kind);
    Check(m_log.Write(caption.value_or("").c_str()));
    if (caption)
        m_pending = '\n';
}

void LogFeed::Take(std::string_view data, bool whole)
{
    const std::size_t start = m_pending.size();
    m_pending += data;
    const auto begin = m_pending.begin() + static_cast<std::ptrdiff_t>(start);
    m_nulBytes += static_cast<std::uint64_t>(std::count(begin, m_pending.end(), '\0'));
    std::replace(begin, m_pending.end(), '\0', '?');

    const std::size_t lineFeed = m_pending.rfind('\n');
    std::size_t ready = m_pending.size();
    if (whole && lineFeed != std::string::npos && lineFeed > 0)
        ready = lineFeed;
    else if (lineFeed == ready - 1)
        --ready;
    Put(m_pending.substr(0, ready));
    m_pending.erase(0, ready);
}

void LogFeed::EndInput()
{
    const bool any = m_begun || !m_pending.empty();
    if (m_pending.ends_with('\n'))
        m_pending.pop_back();
    Put(m_pending);
    m_pending = any ? "\n" : "";
}

// The line feed held back is dropped. After a blank line it is not: that one would be taken for the fresh
// line that whoever writes next looks for. The end of a block begins one anyway.
void LogFeed::Finish()
{
    EndInput();
    if (!m_inBlock && m_last == '\n')
        Put(m_pending);
    if (m_inBlock)
        m_log.BlockEnd();
    if (m_progress && m_bytes >= kProgressStep)
        *m_progress << '\n';
}

unsigned long LogFeed::LostRows() const
{
    return m_log.GetLostRowCount() - m_lostBefore;
}

bool LogFeed::IsReady()
{
    if (!m_isReady && !m_failed)
    {
        m_isReady = m_ready();
        m_failed = !m_isReady;
    }
    return m_isReady;
}

void LogFeed::Put(std::string text)
{
    if (text.empty() || m_failed || !IsReady())
        return;
    const std::size_t size = text.size();
    m_last = text.back();
    Check((m_begun || Begin(text)) && (text.empty() || m_log.Write(text.c_str())));
    m_begun = true;
    if (!m_failed)
        ShowProgress(size);
}

// WriteLine knows whether the log needs a line feed before `text`. It drops line ends around what it is
// given, and ours are to stay: those at the end are left in `text`, for Write.
bool LogFeed::Begin(std::string& text)
{
    if (text.front() == '\n' || text.front() == '\r')
        return !EndsWithinLine() || m_log.Write("\n");
    const std::size_t end = text.find_last_not_of("\r\n") + 1;
    const std::string lines = text.substr(0, end);
    text.erase(0, end);
    return m_log.WriteLine(lines.c_str());
}

bool LogFeed::EndsWithinLine() const
{
    CQmLogReader reader;
    reader.SetFilePath(m_log.GetFilePath());
    const unsigned long rows = reader.GetRowCount();
    const char* text = nullptr;
    unsigned long length = 0;
    CQmLogRow row;
    return rows > 0 && reader.Read(rows - 1, text, length, row) && length > 0 && text[length - 1] != '\n';
}

// After a call of the log's writer.
void LogFeed::Check(bool written)
{
    if (written || m_failed)
        return;
    m_failed = true;
    m_failure = SystemReason();
}

void LogFeed::ShowProgress(std::size_t added)
{
    const std::uint64_t before = m_bytes / kProgressStep;
    m_bytes += added;
    if (m_progress && m_bytes / kProgressStep != before)
        *m_progress << "\rlogtool: " + std::to_string(m_bytes / kProgressStep) + " MB" << std::flush;
}

} // namespace logtool
