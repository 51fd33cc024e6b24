#include "QmLogReader.h"

#include "logfiles/ErrorLog.h"
#include "logfiles/LogPath.h"
#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace
{

// The low 32 bits of the size: a log's offsets reach no further.
unsigned long FileSize(const char* path)
{
    std::uint64_t size = 0;
    if (!ZEMA::FileCalls().GetSize(path, size))
        return 0;
    return static_cast<std::uint32_t>(size);
}

// Where the record of line `index` lies in the index file.
std::int64_t RowOffset(unsigned long index)
{
    return static_cast<std::int64_t>(index) * static_cast<std::int64_t>(sizeof(CQmLogRow));
}

// Bytes from `offset` to `end`; 0 where the end comes first.
unsigned long LineLength(std::uint32_t offset, std::uint64_t end)
{
    if (end < offset)
        return 0;
    return static_cast<unsigned long>(std::min<std::uint64_t>(end - offset, 0xFFFFFFFF));
}

} // namespace

CQmLogReader::~CQmLogReader()
{
    Close();
    std::free(m_text);
}

// The messages name the destructor, the usual place of these calls: their texts are fixed.
void CQmLogReader::Close()
{
    if (m_logHandle && !ZEMA::FileCalls().Close(m_logHandle))
        logfiles::Report("CQmLogReader::~CQmLogReader().CloseHandle(Log)");
    if (m_rowHandle && !ZEMA::FileCalls().Close(m_rowHandle))
        logfiles::Report("CQmLogReader::~CQmLogReader().CloseHandle(Row)");
    m_logHandle = nullptr;
    m_rowHandle = nullptr;
}

void CQmLogReader::SetFilePath(const char* name)
{
    static_assert(kPathSize == MAX_PATH);
    logfiles::MakeLogPaths("CQmLogReader::SetFilePath()", name, m_name, m_logPath, m_rowPath);
}

void CQmLogReader::SetFullPath(const char* path)
{
    logfiles::MakeFullLogPaths("CQmLogReader::SetFullPath()", path, m_name, m_logPath, m_rowPath);
}

const char* CQmLogReader::GetFilePath() const
{
    return m_name;
}

unsigned long CQmLogReader::GetRowCount()
{
    return FileSize(m_rowPath) / sizeof(CQmLogRow);
}

unsigned long CQmLogReader::GetLogFileSize()
{
    return FileSize(m_logPath);
}

bool CQmLogReader::Read(unsigned long index, const char*& text, unsigned long& length, CQmLogRow& row)
{
    bool last = false;
    if (!ReadRowAndEnd(index, length, row, last))
        return false;

    if (!OpenLogFile("CQmLogReader::Read().CreateFileRead(Log)"))
        return false;

    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    std::uint64_t position = 0;
    if (!files.Seek(m_logHandle, row.offset, FILE_BEGIN, position))
        return logfiles::Fail("CQmLogReader::Read().SetFilePointer()");
    DWORD bytes = 0;
    if (!GrowText(length, row.offset) || !files.Read(m_logHandle, m_text, static_cast<DWORD>(length), bytes))
        return logfiles::Fail("CQmLogReader::Read().ReadFile()");

    // A writer may have gone on since the record was read: what lies after the last line is not part of it.
    const void* const lineFeed = last ? std::memchr(m_text, '\n', bytes) : nullptr;
    length = lineFeed ? static_cast<unsigned long>(static_cast<const char*>(lineFeed) - m_text + 1) : bytes;
    m_text[length] = '\0';
    text = m_text;
    return true;
}

bool CQmLogReader::ReadLength(unsigned long index, unsigned long& length)
{
    CQmLogRow row;
    return ReadRow(index, length, row);
}

bool CQmLogReader::ReadStyle(unsigned long index, CQmLogRow& row)
{
    unsigned long length = 0;
    return ReadRow(index, length, row);
}

unsigned long CQmLogReader::ReadRows(unsigned long index, unsigned long count, CQmLogRow* rows)
{
    if (count == 0 || !OpenRowFile("CQmLogReader::ReadRows().CreateFileRead(Row)"))
        return 0;
    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    std::uint64_t position = 0;
    DWORD bytes = 0;
    const std::uint64_t size = std::min<std::uint64_t>(std::uint64_t{count} * sizeof(CQmLogRow), 0xFFFFFFFF);
    if (!files.Seek(m_rowHandle, RowOffset(index), FILE_BEGIN, position))
        logfiles::Report("CQmLogReader::ReadRows().SetFilePointer()");
    else if (!files.Read(m_rowHandle, rows, static_cast<DWORD>(size), bytes))
        logfiles::Report("CQmLogReader::ReadRows().ReadFile()");
    return bytes / sizeof(CQmLogRow);
}

unsigned long CQmLogReader::ReadText(unsigned long offset, unsigned long size, char* text)
{
    if (size == 0 || !OpenLogFile("CQmLogReader::ReadText().CreateFileRead(Log)"))
        return 0;
    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    std::uint64_t position = 0;
    DWORD bytes = 0;
    if (!files.Seek(m_logHandle, static_cast<std::uint32_t>(offset), FILE_BEGIN, position))
        logfiles::Report("CQmLogReader::ReadText().SetFilePointer()");
    else if (!files.Read(m_logHandle, text, static_cast<DWORD>(size), bytes))
        logfiles::Report("CQmLogReader::ReadText().ReadFile()");
    return bytes;
}

bool CQmLogReader::Find(unsigned long time, bool forward, unsigned long& foundTime, unsigned long& index)
{
    const unsigned long count = GetRowCount();
    if (count == 0)
        return false;
    unsigned long low = 0;
    unsigned long high = count - 1;
    if (low == high)
    {
        // Deliberately without a look at the row, and foundTime stays as it was.
        index = low;
        return true;
    }

    // A row that cannot be read counts as number 0: the search goes on and ends.
    const auto timeOf = [this](unsigned long at) {
        CQmLogRow row;
        ReadStyle(at, row);
        return row.time;
    };
    while (low + 1 < high)
    {
        const unsigned long middle = low + (high - low) / 2;
        (time < timeOf(middle) ? high : low) = middle;
    }

    const std::uint32_t lowTime = timeOf(low);
    index = low;
    foundTime = lowTime;
    if (time == lowTime || (forward && time < lowTime))
        return true;
    const std::uint32_t highTime = timeOf(high);
    if (forward || time >= highTime)
    {
        index = high;
        foundTime = highTime;
    }
    return true;
}

bool CQmLogReader::ReadRow(unsigned long index, unsigned long& length, CQmLogRow& row)
{
    bool last = false;
    return ReadRowAndEnd(index, length, row, last);
}

// `last`: there is no next record, so that the line ends with the text.
bool CQmLogReader::ReadRowAndEnd(unsigned long index, unsigned long& length, CQmLogRow& row, bool& last)
{
    if (!OpenRowFile("CQmLogReader::ReadRow().CreateFileRead(Row)"))
        return false;

    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    std::uint64_t position = 0;
    if (!files.Seek(m_rowHandle, RowOffset(index), FILE_BEGIN, position))
        return logfiles::Fail("CQmLogReader::ReadRow().SetFilePointer()");

    // The next row comes along because its offset ends this row's line.
    CQmLogRow rows[2];
    DWORD bytes = 0;
    if (!files.Read(m_rowHandle, rows, sizeof(rows), bytes))
        return logfiles::Fail("CQmLogReader::ReadRow().ReadFile()");
    if (bytes < sizeof(CQmLogRow))
        return false; // the row is not written yet, which is no error

    row = rows[0];
    last = bytes < sizeof(rows);
    length = LineLength(row.offset, last ? std::uint64_t{GetLogFileSize()} + 1 : rows[1].offset);
    return true;
}

// False while the file cannot be opened; the system's refusal is reported as `failure`.
bool CQmLogReader::OpenLogFile(const char* failure)
{
    if (!m_logHandle)
        m_logHandle = CreateFileRead(m_logPath);
    if (m_logHandle != INVALID_HANDLE_VALUE)
        return m_logHandle != nullptr;
    m_logHandle = nullptr;
    return logfiles::Fail(failure);
}

bool CQmLogReader::OpenRowFile(const char* failure)
{
    if (!m_rowHandle)
        m_rowHandle = CreateFileRead(m_rowPath);
    if (m_rowHandle != INVALID_HANDLE_VALUE)
        return m_rowHandle != nullptr;
    m_rowHandle = nullptr;
    return logfiles::Fail(failure);
}

void* CQmLogReader::CreateFileRead(const char* path)
{
    return ZEMA_CreateFile(
        path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
        FILE_FLAG_RANDOM_ACCESS | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_NORMAL, nullptr);
}

// Makes room for `length` bytes and a NUL. A length that would need more memory is first cut to what the file
// holds from `offset` on: the index may be damaged.
bool CQmLogReader::GrowText(unsigned long& length, unsigned long offset)
{
    if (length < m_textCapacity)
        return true;
    const unsigned long size = GetLogFileSize();
    length = std::min(length, size > offset ? size - offset : 0);
    if (length < m_textCapacity)
        return true;

    const std::size_t needed = std::size_t{length} + 1;
    char* const grown = static_cast<char*>(std::realloc(m_text, needed));
    if (!grown)
    {
        ZEMA::FileCalls().SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return false;
    }
    m_text = grown;
    m_textCapacity = static_cast<unsigned long>(std::min<std::size_t>(needed, 0xFFFFFFFF));
    return true;
}
