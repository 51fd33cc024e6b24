#include "QmLogWriter.h"

#include "logfiles/Counters.h"
#include "logfiles/ErrorLog.h"
#include "logfiles/LogPath.h"
#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

namespace
{

// Offsets are 32 bits wide, so neither file grows beyond what they reach.
constexpr std::uint64_t kMaxFileSize = 0xFFFFFFFF;

} // namespace

CQmLogWriter::~CQmLogWriter()
{
    CloseFiles("CQmLogWriter::~CQmLogWriter().CloseHandle(Log)",
               "CQmLogWriter::~CQmLogWriter().CloseHandle(Row)");
}

void CQmLogWriter::SetFilePath(const char* name)
{
    static_assert(kPathSize == MAX_PATH);
    logfiles::MakeLogPaths(name, m_name, m_logPath, m_rowPath);
}

const char* CQmLogWriter::GetFilePath() const
{
    return m_name;
}

bool CQmLogWriter::Write(const char* text)
{
    if (text == nullptr)
        text = "";
    if (*text == '\n')
        m_lineFeedPending = false;
    else if (m_lineFeedPending)
        Write("\n");

    if (!OpenLogFile())
        return false;
    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    std::uint64_t position = 0;
    if (!files.Seek(m_logHandle, 0, FILE_END, position))
        return logfiles::Fail("CQmLogWriter::Write().SetFilePointer()");
    const std::size_t length = std::strlen(text);
    if (position + length > kMaxFileSize)
        return logfiles::FailWith(ERROR_FILE_TOO_LARGE, "CQmLogWriter::Write().WriteFile()");

    // Rows go out before the text they index, so a reader may meet a row whose line is not there yet.
    WriteTextRows(text, length, static_cast<std::uint32_t>(position));
    if (length == 0)
        return true;

    m_lastCharacter = text[length - 1];
    DWORD written = 0;
    if (!files.Write(m_logHandle, text, static_cast<DWORD>(length), written))
        return logfiles::Fail("CQmLogWriter::Write().WriteFile()");
    if (written != length)
        return logfiles::FailWith(ERROR_DISK_FULL, "CQmLogWriter::Write().WriteFile()");
    return true;
}

bool CQmLogWriter::WriteFormat(const char* format, ...)
{
    char shortText[512];
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(shortText, sizeof(shortText), format, arguments);
    va_end(arguments);
    if (length < 0)
        return false;
    if (static_cast<std::size_t>(length) < sizeof(shortText))
        return Write(shortText);

    const std::size_t size = static_cast<std::size_t>(length) + 1;
    const std::unique_ptr<char[]> longText(new (std::nothrow) char[size]);
    if (longText == nullptr)
        return false;
    va_start(arguments, format);
    std::vsnprintf(longText.get(), size, format, arguments);
    va_end(arguments);
    return Write(longText.get());
}

bool CQmLogWriter::BlockBegin(QmLogBlockKind kind)
{
    if (*m_logPath == '\0' || m_depth == kMaxDepth)
        return false;
    if (kind == kEnclosingKind)
        kind = GetBlockHeap().kind;
    ++m_depth;
    CQmLogRow& block = GetBlockHeap();
    block = CQmLogRow();
    block.indent = logfiles::GlobalIndentIncrement();
    block.kind = kind;
    Write("\n");
    return true;
}

bool CQmLogWriter::BlockEnd()
{
    if (m_depth == 0)
        return false;
    logfiles::GlobalIndentDecrement();
    --m_depth;
    if (m_lastCharacter != '\n')
        m_lineFeedPending = true;
    return true;
}

void CQmLogWriter::Clear()
{
    ZEMA_DeleteFile(m_logPath);
    ZEMA_DeleteFile(m_rowPath);
}

bool CQmLogWriter::Close()
{
    CloseFiles("CQmLogWriter::Close().CloseHandle(Log)", "CQmLogWriter::Close().CloseHandle(Row)");
    return true;
}

CQmLogRow& CQmLogWriter::GetBlockHeap()
{
    return m_blocks[m_depth];
}

bool CQmLogWriter::WriteRow(CQmLogRow& row)
{
    return WriteRows(&row, 1);
}

void* CQmLogWriter::CreateFileWrite(const char* path)
{
    return ZEMA_CreateFile(
        path, GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
        FILE_FLAG_RANDOM_ACCESS | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_NORMAL, nullptr);
}

// An invalid handle is kept until Close, and each later call reports it anew.
bool CQmLogWriter::OpenLogFile()
{
    if (m_logHandle == nullptr)
        m_logHandle = CreateFileWrite(m_logPath);
    if (m_logHandle == INVALID_HANDLE_VALUE)
        return logfiles::Fail("CQmLogWriter::Write().CreateFileWrite(Log)");
    return m_logHandle != nullptr;
}

bool CQmLogWriter::OpenRowFile()
{
    if (m_rowHandle == nullptr)
        m_rowHandle = CreateFileWrite(m_rowPath);
    if (m_rowHandle == INVALID_HANDLE_VALUE)
        return logfiles::Fail("CQmLogWriter::WriteRow().CreateFileWrite(Row)");
    return m_rowHandle != nullptr;
}

// Writes the row of each line that `text` begins when it is written at `position`.
void CQmLogWriter::WriteTextRows(const char* text, std::size_t length, std::uint32_t position)
{
    const bool firstLine = position == 0 && *text != '\n';
    const std::size_t count =
        static_cast<std::size_t>(std::count(text, text + length, '\n')) + (firstLine ? 1 : 0);
    if (count == 0)
        return;

    // All rows go out together; only without memory for them in portions.
    CQmLogRow few[32];
    std::unique_ptr<CQmLogRow[]> many;
    if (count > std::size(few))
        many.reset(new (std::nothrow) CQmLogRow[count]);
    CQmLogRow* const rows = many != nullptr ? many.get() : few;
    const std::size_t capacity = many != nullptr ? count : std::size(few);

    CQmLogRow& line = GetBlockHeap();
    std::size_t used = 0;
    const auto add = [&](std::uint32_t offset) {
        line.offset = offset;
        rows[used++] = line;
        if (used == capacity)
        {
            WriteRows(rows, used);
            line.time = rows[used - 1].time;
            used = 0;
        }
    };

    // The row of a log's first line leaves the block mark on: the line that the first line feed begins
    // is marked as well, and viewers rely on it.
    if (firstLine)
        add(0);
    for (const char* feed = text; (feed = std::strchr(feed, '\n')) != nullptr; ++feed)
    {
        add(position + static_cast<std::uint32_t>(feed - text) + 1);
        line.blockBegin = 0;
    }
    if (used > 0)
    {
        WriteRows(rows, used);
        line.time = rows[used - 1].time;
    }
}

// Numbers the rows and appends them: together where every call succeeds, else one by one, so that a
// failure is reported for, and costs, the rows that it strikes.
bool CQmLogWriter::WriteRows(CQmLogRow* rows, std::size_t count)
{
    bool allWritten = true;
    for (std::size_t done = 0; done < count;)
    {
        if (!OpenRowFile())
        {
            allWritten = false;
            ++done;
            continue;
        }
        CQmLogRow* const next = rows + done;
        std::uint32_t time = 0;
        const std::uint32_t taken = logfiles::GlobalTimeTake(static_cast<std::uint32_t>(count - done), time);
        for (std::uint32_t i = 0; i < taken; ++i)
            next[i].time = time + i;

        const char* failure = nullptr;
        if (taken > 1 && !AppendRows(next, taken, failure))
        {
            for (std::uint32_t i = 0; i < taken; ++i)
                allWritten = (AppendRows(next + i, 1, failure) || logfiles::Fail(failure)) && allWritten;
        }
        else if (taken == 1 && !AppendRows(next, 1, failure))
            allWritten = logfiles::Fail(failure);
        done += taken;
    }
    return allWritten;
}

// Appends whole records or nothing. `failure` receives what to report; the thread's last error is set.
bool CQmLogWriter::AppendRows(const CQmLogRow* rows, std::size_t count, const char*& failure)
{
    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    std::uint64_t end = 0;
    failure = "CQmLogWriter::WriteRow().SetFilePointer()";
    if (!files.Seek(m_rowHandle, 0, FILE_END, end))
        return false;
    // A writer that was killed may have left part of a record, which is no row: it is written over.
    if (const std::uint64_t surplus = end % sizeof(CQmLogRow); surplus != 0)
    {
        if (!files.Seek(m_rowHandle, static_cast<std::int64_t>(end - surplus), FILE_BEGIN, end))
            return false;
    }

    failure = "CQmLogWriter::WriteRow().WriteFile()";
    const std::uint64_t size = count * sizeof(CQmLogRow);
    if (end + size > kMaxFileSize)
    {
        files.SetLastError(ERROR_FILE_TOO_LARGE);
        return false;
    }
    DWORD written = 0;
    const bool accepted = files.Write(m_rowHandle, rows, static_cast<DWORD>(size), written);
    if (accepted && written == size)
        return true;

    const DWORD error = accepted ? ERROR_DISK_FULL : files.LastError();
    if (written > 0 && files.Seek(m_rowHandle, static_cast<std::int64_t>(end), FILE_BEGIN, end))
        files.SetEnd(m_rowHandle);
    files.SetLastError(error);
    return false;
}

void CQmLogWriter::CloseFiles(const char* logMessage, const char* rowMessage)
{
    if (m_logHandle != nullptr && !ZEMA::FileCalls().Close(m_logHandle))
        logfiles::Report(logMessage);
    m_logHandle = nullptr;
    if (m_rowHandle != nullptr && !ZEMA::FileCalls().Close(m_rowHandle))
        logfiles::Report(rowMessage);
    m_rowHandle = nullptr;
}
