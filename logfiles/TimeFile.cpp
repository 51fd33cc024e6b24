#include "logfiles/TimeFile.h"

#include "QmLogFolder.h"
#include "logfiles/Append.h"
#include "logfiles/ErrorLog.h"
#include "logfiles/TimeRecord.h"
#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <mutex>

namespace logfiles
{
namespace
{

constexpr std::uint64_t kInterval = 10 * kQmLogMillisecond;
constexpr std::uint64_t kIntervalAfterFailure = 1000 * kQmLogMillisecond;

bool IsWantedByEnvironment()
{
    const char* const value = std::getenv("QM_LOG_TIMES");
    return value && std::strcmp(value, "1") == 0;
}

std::atomic<bool>& Switch()
{
    static std::atomic<bool> isOn = IsWantedByEnvironment();
    return isOn;
}

// The file as this process has left it. It is the only writer while it has the counters open.
class TimeFile
{
public:
    void Note(TimeRecord::Event event, std::uint32_t number, std::uint8_t depth);

    void SetDue() { m_isDue = true; }

    void Close();
    void ForgetFailure() { m_hasFailed = false; }

private:
    bool IsTime(QmLogTimeValue now) const;
    bool Open();
    bool FindEnd();
    bool CutEarlierSession(const TimeRecord& record);
    bool Append(TimeRecord& record);

    HANDLE m_file = nullptr;
    std::uint64_t m_end = 0;
    TimeRecord m_last;
    QmLogTimeValue m_tried = 0; // when a record was written, or could not be
    bool m_isDue = true;
    bool m_hasFailed = false;
};

void TimeFile::Close()
{
    if (m_file)
        ZEMA::FileCalls().Close(m_file);
    m_file = nullptr;
    m_isDue = true; // others may take numbers before this process goes on
}

// A clock that was set back is as good a reason as the interval: the difference is a large one then.
bool TimeFile::IsTime(QmLogTimeValue now) const
{
    const auto passed = static_cast<std::uint64_t>(now) - static_cast<std::uint64_t>(m_tried);
    return m_hasFailed ? passed >= kIntervalAfterFailure : m_isDue || passed >= kInterval;
}

void TimeFile::Note(TimeRecord::Event event, std::uint32_t number, std::uint8_t depth)
{
    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    const QmLogTimeValue now = files.UtcTime();
    m_isDue = m_isDue || event == TimeRecord::Event::BlockEnd;
    if (!IsTime(now))
        return;
    m_isDue = false;
    m_tried = now;

    const DWORD error = files.LastError();
    TimeRecord record;
    record.number = number;
    record.SetTime(now);
    record.event = event;
    record.depth = depth;
    const bool isNoted = Open() && CutEarlierSession(record) && Append(record);
    m_hasFailed = !isNoted;
    if (!isNoted)
        Close(); // whoever opens it again finds its end
    files.SetLastError(error);
}

bool TimeFile::Open()
{
    if (m_file)
        return true;
    const auto fail = [this](const char* message) { return m_hasFailed ? false : Fail(message); };
    char path[MAX_PATH] = {};
    if (!QmLogMakeFilePath(kTimeFileName, path))
        return false;
    // Shared for writing: the counters keep writers apart, and a process that is ended from outside may let
    // go of this file a moment later than of them.
    const HANDLE file =
        ZEMA_CreateFile(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                        OPEN_ALWAYS, FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_NORMAL, nullptr);
    if (!file || file == INVALID_HANDLE_VALUE)
        return fail("QmLogTimes.CreateFile");
    m_file = file;
    return FindEnd() || fail("QmLogTimes.ReadFile");
}

// The last record that is whole and right, and the end of the last whole one: part of a record is written
// over.
bool TimeFile::FindEnd()
{
    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    TimeRecord records[64];
    std::uint64_t size = 0;
    m_last = {};
    if (!files.Seek(m_file, 0, FILE_END, size))
        return false;
    m_end = size - size % sizeof(TimeRecord);
    const std::uint64_t start = m_end - std::min<std::uint64_t>(m_end, sizeof(records));
    DWORD bytes = 0;
    if (!files.Seek(m_file, static_cast<std::int64_t>(start), FILE_BEGIN, size) ||
        !files.Read(m_file, records, static_cast<DWORD>(m_end - start), bytes))
        return false;
    for (std::size_t count = bytes / sizeof(TimeRecord); count > 0; --count)
    {
        m_last = records[count - 1];
        if (m_last.IsValid())
            break;
        m_last = {};
    }
    return files.Seek(m_file, static_cast<std::int64_t>(m_end), FILE_BEGIN, size);
}

// Numbers begin again with a session, and so does the file.
bool TimeFile::CutEarlierSession(const TimeRecord& record)
{
    const bool isTaken = record.event == TimeRecord::Event::Taken;
    const bool isLater = isTaken ? record.number > m_last.number : record.number >= m_last.number;
    if (m_end == 0 || (isLater && !(isTaken && record.number == 1)))
        return true;
    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    std::uint64_t position = 0;
    m_last = {};
    m_end = 0;
    return (files.Seek(m_file, 0, FILE_BEGIN, position) && files.SetEnd(m_file)) ||
           (!m_hasFailed && Fail("QmLogTimes.SetEndOfFile"));
}

bool TimeFile::Append(TimeRecord& record)
{
    record.steps = m_last.steps;
    if (record.Time() < m_last.Time() && record.steps < std::numeric_limits<std::uint16_t>::max())
        ++record.steps;
    record.check = record.Check();
    if (!AppendOrNothing(m_file, m_end, &record, sizeof(record)))
        return !m_hasFailed && Fail("QmLogTimes.WriteFile");
    m_end += sizeof(record);
    m_last = record;
    return true;
}

// Closing may come from a thread that does not hold the lock of the counters.
std::mutex mutex;
TimeFile timeFile;

} // namespace

bool AreTimesOn()
{
    return Switch().load(std::memory_order_relaxed);
}

void NoteNumber(std::uint32_t number, std::uint8_t depth)
{
    if (!AreTimesOn())
        return;
    const std::lock_guard<std::mutex> lock(mutex);
    timeFile.Note(TimeRecord::Event::Taken, number, depth);
}

void NoteBlockBegin()
{
    if (!AreTimesOn())
        return;
    const std::lock_guard<std::mutex> lock(mutex);
    timeFile.SetDue();
}

void NoteBlockEnd(std::uint32_t number, std::uint8_t depth)
{
    if (!AreTimesOn())
        return;
    const std::lock_guard<std::mutex> lock(mutex);
    timeFile.Note(TimeRecord::Event::BlockEnd, number, depth);
}

void CloseTimes()
{
    const std::lock_guard<std::mutex> lock(mutex);
    timeFile.Close();
    timeFile.ForgetFailure();
}

} // namespace logfiles

void QmLogSetTimes(bool on)
{
    logfiles::Switch().store(on);
}
