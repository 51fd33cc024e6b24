#include "QmLogVerify.h"

#include "logfiles/FileWindow.h"
#include "logfiles/VerifyLog.h"
#include "logfiles/VerifyTimes.h"

#include <cstring>
#include <deque>
#include <optional>
#include <thread>

namespace
{

using logfiles::FileWindow;
using logfiles::Finding;
using logfiles::ReadProgress;
using logfiles::VerifyLog;

// "Log.DAT" of the folder.
struct CounterFile
{
    FileWindow::State state = FileWindow::State::Missing;
    std::uint64_t size = 0;
    std::uint32_t lastNumber = 0;
};

CounterFile ReadCounterFile(const std::string& path)
{
    constexpr int kTries = 100; // a writer locks the file for moments, and reading it fails meanwhile
    CounterFile counters;
    for (int tries = 0; tries < kTries; ++tries)
    {
        FileWindow file(path);
        counters.size = file.Size();
        const char* const bytes = file.At(0);
        counters.state = file.GetState();
        if (counters.state != FileWindow::State::Unreadable)
        {
            if (bytes && counters.size >= sizeof(counters.lastNumber))
                std::memcpy(&counters.lastNumber, bytes, sizeof(counters.lastNumber));
            break;
        }
        std::this_thread::yield();
    }
    return counters;
}

// Walks through the numbers of one log in ascending order; rows whose number is wrong are reported and
// passed over.
class NumberCursor
{
public:
    // `counterPath`  of the file in which `counter` was read
    NumberCursor(VerifyLog& log, std::optional<std::uint32_t> counter, const std::string& counterPath)
        : m_log(log), m_counter(counter), m_counterPath(counterPath)
    {
        Advance();
    }

    bool AtEnd() const { return m_atEnd; }
    std::uint32_t Number() const { return m_row.time; }
    std::uint64_t Row() const { return m_index - 1; }
    VerifyLog& Log() const { return m_log; }

    void Advance()
    {
        const std::uint32_t last = m_row.time;
        CQmLogRow row;
        while (!m_log.IsGivenUp() && m_index < m_log.RowCount() && m_log.ReadRow(m_index, row) &&
               !IsLate(row))
        {
            m_log.CheckValues(m_index, row);
            const bool right = CheckNumber(last, row);
            ++m_index;
            if (right)
            {
                m_row = row;
                return;
            }
        }
        m_atEnd = true;
    }

private:
    // Whether the row has come since the counter was read, in the place of one that was cut: so have those
    // after it.
    bool IsLate(const CQmLogRow& row) const
    {
        return m_counter && row.time > *m_counter && row.time <= ReadCounterFile(m_counterPath).lastNumber;
    }

    bool CheckNumber(std::uint32_t last, const CQmLogRow& row)
    {
        // Only a finding needs words, and almost every row passes without.
        const auto number = [&row] { return "number " + std::to_string(row.time); };
        if (row.time == 0)
            return Report(QmLogFindingKind::NumberZero, "the row has no sequence number");
        if (m_counter && row.time > *m_counter)
            return Report(QmLogFindingKind::NumberAboveCounter,
                          number() + " is above the counter, which stands at " + std::to_string(*m_counter));
        if (row.time <= last)
            return Report(QmLogFindingKind::NumberNotAscending,
                          number() + " is not above the " + std::to_string(last) + " before it");
        // One number too high is told by the next row, which fits in before it.
        CQmLogRow next;
        if (m_index + 1 < m_log.RowCount() && m_log.ReadRow(m_index + 1, next) && next.time > last &&
            next.time <= row.time)
            return Report(QmLogFindingKind::NumberNotAscending,
                          number() + " is not below the " + std::to_string(next.time) + " behind it");
        return true;
    }

    bool Report(QmLogFindingKind kind, const std::string& reason)
    {
        m_log.GetFindings().Add(kind, "ROW", m_index, reason);
        return false;
    }

    VerifyLog& m_log;
    std::optional<std::uint32_t> m_counter;
    std::string m_counterPath;
    std::uint64_t m_index = 0; // the row after the present one
    CQmLogRow m_row;
    bool m_atEnd = false;
};

// Numbers that no row has: how many, and the first few stretches in words.
class MissingNumbers
{
public:
    void Add(std::uint32_t first, std::uint32_t last)
    {
        constexpr int kStretchesNamed = 5;
        m_count += last - first + 1;
        if (m_stretches++ < kStretchesNamed)
        {
            m_text += (m_text.empty() ? "" : ", ") + std::to_string(first);
            if (last > first)
                m_text += " to " + std::to_string(last);
        }
        else
            m_more = true;
    }

    void AppendTo(std::vector<Finding>& all) const
    {
        if (m_count == 0)
            return;
        all.push_back({QmLogFindingKind::NumberWithoutRow, "Log.DAT", QmLogFinding::kNoRow,
                       "no row has the number " + m_text + (m_more ? ", ..." : "") + " (" +
                           std::to_string(m_count) + " in all)"});
    }

private:
    std::uint64_t m_count = 0;
    int m_stretches = 0;
    std::string m_text;
    bool m_more = false;
};

NumberCursor* LowestNumber(std::deque<NumberCursor>& cursors)
{
    NumberCursor* lowest = nullptr;
    for (NumberCursor& cursor : cursors)
    {
        if (!cursor.AtEnd() && (!lowest || cursor.Number() < lowest->Number()))
            lowest = &cursor;
    }
    return lowest;
}

// Goes through all rows in the order of their numbers.
MissingNumbers CheckNumbers(std::deque<VerifyLog>& logs, std::optional<std::uint32_t> counter,
                            const std::string& counterPath)
{
    std::deque<NumberCursor> cursors;
    for (VerifyLog& log : logs)
        cursors.emplace_back(log, counter, counterPath);

    MissingNumbers missing;
    std::uint32_t last = 0;
    const VerifyLog* lastLog = nullptr;
    std::uint64_t lastRow = 0;
    while (NumberCursor* const cursor = LowestNumber(cursors))
    {
        const std::uint32_t number = cursor->Number();
        if (lastLog && number == last)
            cursor->Log().GetFindings().Add(QmLogFindingKind::NumberNotUnique, "ROW", cursor->Row(),
                                            "number " + std::to_string(number) + " stands in " +
                                                lastLog->RowFile() + ", row " + std::to_string(lastRow) +
                                                " too");
        else if (number - last > 1)
            missing.Add(last + 1, number - 1);
        last = number;
        lastLog = &cursor->Log();
        lastRow = cursor->Row();
        cursor->Advance();
    }
    if (counter && *counter > last)
        missing.Add(last + 1, *counter);
    return missing;
}

// What the counters' file itself lacks.
void CheckCounters(const CounterFile& counters, bool anyRows, std::vector<Finding>& all)
{
    const auto add = [&all](QmLogFindingKind kind, const std::string& reason) {
        all.push_back({kind, "Log.DAT", QmLogFinding::kNoRow, reason});
    };
    if (counters.state == FileWindow::State::Unreadable)
        add(QmLogFindingKind::FileUnreadable, "the file cannot be opened or read");
    else if (anyRows && counters.state == FileWindow::State::Missing)
        add(QmLogFindingKind::CountersMissing, "the counters are missing, but there are rows");
    else if (anyRows && counters.size != 8)
        add(QmLogFindingKind::CountersSize,
            "the counters have " + std::to_string(counters.size) + " bytes instead of 8");
}

std::vector<Finding> Verify(std::deque<VerifyLog>& logs, logfiles::VerifyTimes& times,
                            const CounterFile& counters, const std::string& counterPath)
{
    std::optional<std::uint32_t> counter;
    if (counters.state == FileWindow::State::Open && counters.size >= sizeof(counters.lastNumber))
        counter = counters.lastNumber;
    bool anyRows = false;
    for (VerifyLog& log : logs)
    {
        anyRows = anyRows || log.RowCount() > 0;
        log.CheckOffsets();
    }
    const MissingNumbers missing = CheckNumbers(logs, counter, counterPath);

    std::vector<Finding> findings;
    bool complete = true;
    for (VerifyLog& log : logs)
    {
        log.CheckReadable();
        complete = complete && !log.IsGivenUp();
        log.GetFindings().AppendTo(findings);
    }
    CheckCounters(counters, anyRows, findings);
    times.Check(counter, findings);
    if (complete)
        missing.AppendTo(findings);
    return findings;
}

} // namespace

bool QmLogIsDamage(QmLogFindingKind kind)
{
    return kind < QmLogFindingKind::RowBeforeText;
}

void QmLogVerify(const char* folder, const char* const* logs, std::size_t count,
                 QmLogVerifyListener& listener)
{
    std::string prefix = folder;
    if (!prefix.empty() && prefix.back() != '\\' && prefix.back() != '/')
        prefix += '\\';

    ReadProgress reading([&listener](int percent) { return listener.OnProgress(percent); });
    // The counters last: they move on before the rows do.
    std::deque<VerifyLog> open;
    for (std::size_t i = 0; i < count; ++i)
        open.emplace_back(prefix, logs[i], reading);
    logfiles::VerifyTimes times(prefix, reading);
    const std::string counterPath = prefix + "Log.DAT";
    const CounterFile counters = ReadCounterFile(counterPath);
    for (const Finding& finding : Verify(open, times, counters, counterPath))
        listener.OnFinding({finding.kind, finding.file.c_str(), finding.row, finding.reason.c_str()});
}
