#include "QmLogWriter.h"

#include "logfiles/Append.h"
#include "logfiles/Counters.h"
#include "logfiles/ErrorLog.h"
#include "logfiles/IndexEnd.h"
#include "logfiles/LineBuffer.h"
#include "logfiles/LogPath.h"
#include "logfiles/QmLogWriterRows.h"
#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

#include <cstdarg>
#include <cstring>
#include <new>

// The DLL has its constants too, for callers that take one by reference: importing turns inline off.
constexpr int CQmLogWriter::kMaxDepth;

CQmLogWriter::~CQmLogWriter()
{
    CloseFiles("CQmLogWriter::~CQmLogWriter().CloseHandle(Log)",
               "CQmLogWriter::~CQmLogWriter().CloseHandle(Row)");
}

void CQmLogWriter::SetFilePath(const char* name)
{
    static_assert(kPathSize == MAX_PATH);
    logfiles::MakeLogPaths("CQmLogWriter::SetFilePath()", name, m_name, m_logPath, m_rowPath);
}

const char* CQmLogWriter::GetFilePath() const
{
    return m_name;
}

bool CQmLogWriter::Write(const char* text)
{
    return Write(text, text ? std::strlen(text) : 0);
}

bool CQmLogWriter::Write(const char* text, std::size_t length)
{
    return WriteText(length > 0 ? text : "", length);
}

bool CQmLogWriter::WriteLine(const char* text)
{
    return !text || WriteLine(text, std::strlen(text));
}

bool CQmLogWriter::WriteLine(const char* text, std::size_t length)
{
    logfiles::LineBuffer line;
    return length == 0 || (line.Assign(text, length) && WriteLineText(line.Text(), line.Length()));
}

bool CQmLogWriter::WriteFormat(const char* format, ...)
{
    logfiles::LineBuffer line;
    std::va_list arguments;
    va_start(arguments, format);
    const bool formatted = line.Format(format, arguments);
    va_end(arguments);
    return formatted && WriteText(line.Text(), line.Length());
}

bool CQmLogWriter::WriteLineFormat(const char* format, ...)
{
    logfiles::LineBuffer line;
    std::va_list arguments;
    va_start(arguments, format);
    const bool formatted = line.Format(format, arguments);
    va_end(arguments);
    return formatted && WriteLineText(line.Text(), line.Length());
}

bool CQmLogWriter::BlockBegin(QmLogBlockKind kind)
{
    if (*m_logPath == '\0')
        return false;
    if (m_depth == kMaxDepth)
        return logfiles::Refuse(ERROR_SUCCESS, "CQmLogWriter::BlockBegin()", "no room for a 255th open block",
                                m_name);
    if (kind == kEnclosingKind)
        kind = GetBlockHeap().kind;
    ++m_depth;
    CQmLogRow& block = GetBlockHeap();
    block = CQmLogRow();
    block.indent = logfiles::GlobalIndentIncrement();
    block.kind = kind;
    if (!Write("\n"))
        m_lineFeedPending = true;
    return true;
}

bool CQmLogWriter::BlockEnd()
{
    if (m_depth == 0)
        return true;
    logfiles::GlobalIndentDecrement();
    --m_depth;
    m_onFreshLine = false;
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

void* CQmLogWriter::CreateFileWrite(const char* path)
{
    return ZEMA_CreateFile(
        path, GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
        FILE_FLAG_RANDOM_ACCESS | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_NORMAL, nullptr);
}

// An invalid handle is kept until Close, and each later call reports it again with what the opening was
// refused for.
bool CQmLogWriter::OpenLogFile()
{
    if (!m_logHandle)
    {
        m_logHandle = CreateFileWrite(m_logPath);
        m_logError = ZEMA::FileCalls().LastError();
    }
    if (m_logHandle == INVALID_HANDLE_VALUE)
        return logfiles::FailWith(m_logError, "CQmLogWriter::Write().CreateFileWrite(Log)");
    return m_logHandle != nullptr;
}

// Opens the log. `position` receives the bytes of its text.
bool CQmLogWriter::FindEnd(std::uint64_t& position)
{
    return OpenLogFile() && (ZEMA::FileCalls().Seek(m_logHandle, 0, FILE_END, position) ||
                             logfiles::Fail("CQmLogWriter::Write().SetFilePointer()"));
}

// Where the log was left by another writer, or by this one before it closed, its files are looked at.
bool CQmLogWriter::IsOnFreshLine(std::uint64_t position)
{
    if (position == 0)
        return true; // the first line needs no line feed
    if (position == m_end)
        return m_onFreshLine;
    try
    {
        return logfiles::EndsOnFreshLine(m_logPath, m_rowPath, position, GetBlockHeap());
    }
    catch (const std::bad_alloc&)
    {
        return false; // operations never throw: a line feed more does no harm
    }
}

// Where `length` is 0, `text` is an empty one all the same: its first character is looked at.
bool CQmLogWriter::WriteText(const char* text, std::size_t length)
{
    // A line feed that is due goes first. When nothing can be written it is still due afterwards.
    bool due = m_lineFeedPending;
    m_lineFeedPending = false;
    if (due && *text != '\n')
        due = !WriteText("\n", 1);
    std::uint64_t position = 0;
    if (FindEnd(position) && WriteAt(position, text, length))
        return true;
    m_lineFeedPending = due;
    return false;
}

// `text` may be changed; before it there is room for a line feed.
bool CQmLogWriter::WriteLineText(char* text, std::size_t length)
{
    const auto isLineEnd = [](char character) { return character == '\n' || character == '\r'; };
    while (length > 0 && isLineEnd(text[length - 1]))
        --length;
    while (length > 0 && isLineEnd(*text))
    {
        ++text;
        --length;
    }
    std::uint64_t position = 0;
    if (length == 0)
        return true;
    if (!FindEnd(position))
        return false;
    if (!IsOnFreshLine(position))
    {
        *--text = '\n';
        ++length;
    }
    if (!WriteAt(position, text, length))
        return false;
    m_lineFeedPending = false;
    return true;
}

// Appends `text` at `position`, the end of the log, or leaves everything as it was.
bool CQmLogWriter::WriteAt(std::uint64_t position, const char* text, std::size_t length)
{
    if (position + length > logfiles::kMaxFileSize)
        return logfiles::FailWith(ERROR_FILE_TOO_LARGE, "CQmLogWriter::Write().WriteFile()");

    // Rows go out before the text they index, so a reader may meet a row whose line is not there yet.
    const CQmLogRow line = GetBlockHeap();
    RowsWritten written;
    WriteTextRows(text, length, static_cast<std::uint32_t>(position), written);
    if (length > 0 && !logfiles::AppendOrNothing(m_logHandle, position, text, length))
    {
        const DWORD error = ZEMA::FileCalls().LastError();
        TakeBack(written);
        GetBlockHeap() = line;
        return logfiles::FailWith(error, "CQmLogWriter::Write().WriteFile()");
    }
    m_lostRows += written.lost;
    if (length > 0)
    {
        m_lastCharacter = text[length - 1];
        m_onFreshLine = m_lastCharacter == '\n';
        m_end = position + length;
    }
    return true;
}

// The index goes first: whoever opens the text next finds the index free as well. The messages keep their
// order.
void CQmLogWriter::CloseFiles(const char* logMessage, const char* rowMessage)
{
    if (!m_rowHandle && !m_logHandle)
        return;
    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    const bool rowClosed = !m_rowHandle || files.Close(m_rowHandle);
    const DWORD rowError = files.LastError();
    if (m_logHandle && !files.Close(m_logHandle))
        logfiles::Report(logMessage);
    if (!rowClosed)
        logfiles::FailWith(rowError, rowMessage);
    m_rowHandle = nullptr;
    m_logHandle = nullptr;
    m_end = kUnknownEnd;
}
