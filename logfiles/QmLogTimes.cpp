#include "QmLogTimes.h"

#include "QmLogFolder.h"
#include "logfiles/TimeRecords.h"

#include "wintypes.h"

#include <algorithm>
#include <new>
#include <string>
#include <utility>

namespace
{

using logfiles::TimeRecord;
using logfiles::TimeRecords;

QmLogTimeSample SampleOf(const TimeRecord& record)
{
    QmLogTimeSample sample;
    sample.number = record.number;
    sample.time = record.Time();
    sample.isBlockEnd = record.event == TimeRecord::Event::BlockEnd;
    sample.depth = record.depth;
    return sample;
}

} // namespace

struct CQmLogTimes::Data
{
    // The first record that is not damaged tells one file from the next.
    void Open()
    {
        auto opened = std::make_unique<TimeRecords>(path);
        std::uint64_t at = 0;
        const TimeRecord* const record = opened->From(at, opened->Count());
        first = record ? *record : TimeRecord();
        records = std::move(opened);
        hint = 0;
    }

    // The first record with this number or a later one. Close to the last answer, records are looked at from
    // there in steps that double.
    std::uint64_t FindNumber(std::uint32_t number)
    {
        const auto isBelow = [number](const TimeRecord& record) { return record.number < number; };
        const auto isBelowAt = [&](std::uint64_t index) {
            const TimeRecord* const record = records->From(index, records->Count());
            return record && isBelow(*record);
        };
        std::uint64_t low = 0;
        std::uint64_t high = records->Count();
        if (hint < high && isBelowAt(hint))
        {
            low = hint + 1;
            for (std::uint64_t step = 1; step < high - low; step *= 2)
            {
                if (!isBelowAt(low + step))
                {
                    high = low + step;
                    break;
                }
                low += step + 1;
            }
        }
        else if (hint < high)
        {
            high = hint;
            for (std::uint64_t step = 1; step <= high; step *= 2)
            {
                if (isBelowAt(high - step))
                {
                    low = high - step + 1;
                    break;
                }
                high -= step;
            }
        }
        return hint = records->Search(low, high, isBelow);
    }

    // The last sample before `index` that a number was taken at.
    bool FindTakenBefore(std::uint64_t index, QmLogTimeSample& sample)
    {
        while (const TimeRecord* const record = records->Before(index))
        {
            if (record->event != TimeRecord::Event::Taken)
                continue;
            sample = SampleOf(*record);
            return true;
        }
        return false;
    }

    // The first record after `step` steps of the clock.
    std::uint64_t FindStep(std::uint32_t step)
    {
        return records->Search(0, records->Count(),
                               [step](const TimeRecord& record) { return record.steps < step; });
    }

    std::string path;
    std::unique_ptr<TimeRecords> records; // null before a folder is set
    TimeRecord first;
    std::uint64_t hint = 0;
};

CQmLogTimes::CQmLogTimes() = default;
CQmLogTimes::~CQmLogTimes() = default;

bool CQmLogTimes::SetFolder(const char* folder)
{
    m_data.reset();
    char path[MAX_PATH] = {};
    if (!folder && !QmLogMakeFilePath(logfiles::kTimeFileName, path))
        return false;
    try
    {
        auto data = std::make_unique<Data>();
        data->path = folder ? folder : path;
        if (folder)
        {
            if (*folder != '\0' && data->path.back() != '\\' && data->path.back() != '/')
                data->path += '\\';
            data->path += logfiles::kTimeFileName;
        }
        data->Open();
        m_data = std::move(data);
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
    return GetSampleCount() > 0;
}

bool CQmLogTimes::Refresh()
{
    if (!m_data)
        return false;
    const std::uint64_t count = m_data->records->Count();
    const TimeRecord first = m_data->first;
    try
    {
        m_data->Open();
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
    return count != m_data->records->Count() || first.check != m_data->first.check;
}

std::uint64_t CQmLogTimes::GetSampleCount() const
{
    return m_data ? m_data->records->Count() : 0;
}

bool CQmLogTimes::ReadSample(std::uint64_t index, QmLogTimeSample& sample) const
{
    const TimeRecord* const record = m_data ? m_data->records->At(index) : nullptr;
    if (record)
        sample = SampleOf(*record);
    return record != nullptr;
}

bool CQmLogTimes::TimeOf(std::uint32_t number, QmLogTime& time) const
{
    if (!m_data)
        return false;
    TimeRecords& records = *m_data->records;
    std::uint64_t at = m_data->FindNumber(number);
    std::uint64_t before = at;
    QmLogTime answer;
    const TimeRecord* record = records.From(at, records.Count());
    if (record && record->number == number && record->event == TimeRecord::Event::Taken)
    {
        answer.sample = SampleOf(*record);
        answer.isExact = true;
        QmLogTimeSample last;
        if (m_data->FindTakenBefore(at, last))
            answer.pause = std::max<QmLogTimeValue>(0, answer.sample.time - last.time);
        record = records.From(++at, records.Count());
    }
    if (record)
        answer.next = SampleOf(*record);
    answer.hasNext = record;
    if (!answer.isExact)
    {
        record = records.Before(before);
        if (!record)
            return false;
        answer.sample = SampleOf(*record);
    }
    answer.time = answer.sample.time;
    time = answer;
    return true;
}

bool CQmLogTimes::NumberAt(QmLogTimeValue time, std::uint32_t& number) const
{
    if (!m_data)
        return false;
    TimeRecords& records = *m_data->records;
    const auto isBelow = [time](const TimeRecord& record) { return record.Time() < time; };
    // Between two steps of the clock its times ascend.
    std::uint64_t begin = 0;
    for (std::uint32_t step = 0; begin < records.Count(); ++step)
    {
        const std::uint64_t end = m_data->FindStep(step + 1);
        std::uint64_t at = records.Search(begin, end, isBelow);
        while (const TimeRecord* const record = records.From(at, end))
        {
            number = record->number;
            if (record->event == TimeRecord::Event::Taken)
                return true;
            ++at;
        }
        begin = std::max(end, begin + 1);
    }
    return false;
}

std::uint32_t CQmLogTimes::GetStepCount() const
{
    std::uint64_t at = GetSampleCount();
    const TimeRecord* const record = m_data ? m_data->records->Before(at) : nullptr;
    return record ? record->steps : 0;
}

bool CQmLogTimes::ReadStep(std::uint32_t step, QmLogTimeSample& before, QmLogTimeSample& after) const
{
    if (step >= GetStepCount())
        return false;
    TimeRecords& records = *m_data->records;
    std::uint64_t at = m_data->FindStep(step + 1);
    std::uint64_t last = at;
    const TimeRecord* record = records.From(at, records.Count());
    if (!record)
        return false;
    const QmLogTimeSample found = SampleOf(*record);
    record = records.Before(last);
    if (!record)
        return false;
    before = SampleOf(*record);
    after = found;
    return true;
}

bool CQmLogTimes::FindGap(std::uint32_t number, QmLogTimeValue atLeast, bool forward, QmLogTimeGap& gap) const
{
    if (!m_data)
        return false;
    TimeRecords& records = *m_data->records;
    std::uint64_t at = m_data->FindNumber(number);
    QmLogTimeSample last; // the sample of a number that was looked at before
    bool hasLast = forward && m_data->FindTakenBefore(at, last);
    const auto next = [&] { return forward ? records.From(at, records.Count()) : records.Before(at); };
    while (const TimeRecord* const record = next())
    {
        at += forward ? 1 : 0;
        if (record->event != TimeRecord::Event::Taken)
            continue;
        const QmLogTimeSample sample = SampleOf(*record);
        const QmLogTimeGap between = {forward ? last : sample, forward ? sample : last};
        const bool isWanted = forward ? sample.number > number : last.number < number;
        if (hasLast && isWanted && between.after.time - between.before.time >= atLeast)
        {
            gap = between;
            return true;
        }
        last = sample;
        hasLast = true;
    }
    return false;
}

bool CQmLogTimes::FindBlockEnd(std::uint8_t depth, std::uint32_t last, std::uint32_t next,
                               QmLogTimeValue& end) const
{
    if (!m_data)
        return false;
    TimeRecords& records = *m_data->records;
    const auto outside = static_cast<std::uint8_t>(depth - 1);
    std::uint64_t at = m_data->FindNumber(last);
    while (const TimeRecord* const record = records.From(at, records.Count()))
    {
        if (record->number >= next)
            break;
        if (record->event == TimeRecord::Event::BlockEnd && record->depth == outside)
        {
            end = record->Time();
            return true;
        }
        ++at;
    }
    return false;
}
