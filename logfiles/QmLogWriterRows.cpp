// The rows that a writer appends to its index.

#include "logfiles/QmLogWriterRows.h"

#include "logfiles/Append.h"
#include "logfiles/Counters.h"
#include "logfiles/ErrorLog.h"
#include "logfiles/IndexEnd.h"
#include "zemacore/FileCalls.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <memory>
#include <new>
#include <thread>

namespace
{

// Brings an index to what its text holds, before the log's only writer goes on with it. False when a call
// fails.
bool CutRowsWithoutText(HANDLE rowFile, const char* rowPath, const char* logPath)
{
    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    std::uint64_t rowSize = 0;
    std::uint64_t textSize = 0;
    std::uint64_t surplus = 0;
    if (!files.GetSize(rowPath, rowSize))
        return false;
    if (rowSize == 0)
        return true;
    try
    {
        if (!files.GetSize(logPath, textSize) || !logfiles::CountRowsWithoutText(rowPath, textSize, surplus))
            return false;
    }
    catch (const std::bad_alloc&)
    {
        return false; // operations never throw
    }
    const std::uint64_t size = (rowSize / sizeof(CQmLogRow) - surplus) * sizeof(CQmLogRow);
    return surplus == 0 || (files.Seek(rowFile, static_cast<std::int64_t>(size), FILE_BEGIN, rowSize) &&
                            files.SetEnd(rowFile));
}

} // namespace

bool CQmLogWriter::WriteRow(CQmLogRow& row)
{
    RowsWritten written;
    WriteRows(&row, 1, written);
    if (written.failure)
        logfiles::FailWith(written.error, written.failure);
    return written.lost == 0;
}

// Writes the row of each line that `text` begins when it is written at `position`. A failure is reported
// once, however many rows it strikes.
void CQmLogWriter::WriteTextRows(const char* text, std::size_t length, std::uint32_t position,
                                 RowsWritten& written)
{
    const bool firstLine = position == 0 && *text != '\n';
    const std::size_t count =
        static_cast<std::size_t>(std::count(text, text + length, '\n')) + (firstLine ? 1 : 0);
    if (count == 0)
    {
        // Rows that a killed writer has left are told by lying after the text: they go before it grows.
        RowsWritten none;
        if (length > 0 && position > 0)
            OpenRowFile(none);
        return;
    }

    // All rows go out together; only without memory for them in portions.
    CQmLogRow few[32];
    std::unique_ptr<CQmLogRow[]> many;
    if (count > std::size(few))
        many.reset(new (std::nothrow) CQmLogRow[count]);
    CQmLogRow* const rows = many ? many.get() : few;
    const std::size_t capacity = many ? count : std::size(few);

    CQmLogRow& line = GetBlockHeap();
    std::size_t used = 0;
    const auto flush = [&] {
        WriteRows(rows, used, written);
        line.time = rows[used - 1].time;
        used = 0;
    };
    const auto add = [&](std::uint32_t offset) {
        line.offset = offset;
        rows[used++] = line;
        if (used == capacity)
            flush();
    };

    // The row of a log's first line leaves the block mark on: the line that the first line feed begins
    // is marked as well, and viewers rely on it.
    if (firstLine)
        add(0);
    const auto feedFrom = [end = text + length](const char* from) {
        return static_cast<const char*>(std::memchr(from, '\n', static_cast<std::size_t>(end - from)));
    };
    for (const char* feed = feedFrom(text); feed; feed = feedFrom(feed + 1))
    {
        add(position + static_cast<std::uint32_t>(feed - text) + 1);
        line.blockBegin = 0;
    }
    if (used > 0)
        flush();
    if (written.failure)
        logfiles::FailWith(written.error, written.failure);
}

// Numbers the rows and appends them: together where every call succeeds, else one by one, so that a
// failure costs the rows that it strikes.
void CQmLogWriter::WriteRows(CQmLogRow* rows, std::size_t count, RowsWritten& written)
{
    for (std::size_t done = 0; done < count;)
    {
        if (!OpenRowFile(written))
        {
            ++written.lost;
            ++done;
            continue;
        }
        CQmLogRow* const next = rows + done;
        std::uint32_t time = 0;
        const std::uint32_t taken = logfiles::GlobalTimeTake(static_cast<std::uint32_t>(count - done), time);
        for (std::uint32_t i = 0; i < taken; ++i)
            next[i].time = time + i;

        const char* failure = nullptr;
        if (taken == 1 || !AppendRows(next, taken, written, failure))
        {
            for (std::uint32_t i = 0; i < taken; ++i)
            {
                if (AppendRows(next + i, 1, written, failure))
                    continue;
                written.Note(failure, ZEMA::FileCalls().LastError());
                ++written.lost;
            }
        }
        done += taken;
    }
}

// Appends whole records or nothing. `failure` receives what to report; the thread's last error is set.
bool CQmLogWriter::AppendRows(const CQmLogRow* rows, std::size_t count, RowsWritten& written,
                              const char*& failure)
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
    const std::size_t size = count * sizeof(CQmLogRow);
    if (end + size > logfiles::kMaxFileSize)
    {
        files.SetLastError(ERROR_FILE_TOO_LARGE);
        return false;
    }
    if (!logfiles::AppendOrNothing(m_rowHandle, end, rows, size))
        return false;
    if (!written.any)
        written.begin = end;
    written.any = true;
    return true;
}

// Ends the index where it ended before the rows of a write whose text could not be written.
void CQmLogWriter::TakeBack(const RowsWritten& written)
{
    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    std::uint64_t position = 0;
    if (written.any &&
        files.Seek(m_rowHandle, static_cast<std::int64_t>(written.begin), FILE_BEGIN, position))
        files.SetEnd(m_rowHandle);
}

// As OpenLogFile. A process that is ended from outside may let go of its index a moment after its text, for
// the system closes its files in an order of its own: that moment is waited for.
bool CQmLogWriter::OpenRowFile(RowsWritten& written)
{
    constexpr int kTries = 100;
    constexpr std::chrono::milliseconds kPause(10);
    if (!m_rowHandle)
    {
        m_rowHandle = CreateFileWrite(m_rowPath);
        m_rowError = ZEMA::FileCalls().LastError();
        for (int i = 0;
             i < kTries && m_rowHandle == INVALID_HANDLE_VALUE && m_rowError == ERROR_SHARING_VIOLATION; ++i)
        {
            std::this_thread::sleep_for(kPause);
            m_rowHandle = CreateFileWrite(m_rowPath);
            m_rowError = ZEMA::FileCalls().LastError();
        }
        // A second try, because the text grows over what is not cut now. Without success the index stays as
        // it is.
        const auto cut = [this] { return CutRowsWithoutText(m_rowHandle, m_rowPath, m_logPath); };
        if (m_rowHandle && m_rowHandle != INVALID_HANDLE_VALUE && !cut() && !cut())
            logfiles::Report("CQmLogWriter::WriteRow(): rows without text cannot be cut");
    }
    if (m_rowHandle == INVALID_HANDLE_VALUE)
        written.Note("CQmLogWriter::WriteRow().CreateFileWrite(Row)", m_rowError);
    return m_rowHandle && m_rowHandle != INVALID_HANDLE_VALUE;
}
