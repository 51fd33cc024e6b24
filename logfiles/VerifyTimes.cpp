#include "logfiles/VerifyTimes.h"

#include "logfiles/TimeRecord.h"

#include <cstring>

namespace logfiles
{
namespace
{

// Records of one kind: how many, and the first.
struct Tally
{
    void Add(std::uint64_t index)
    {
        if (count++ == 0)
            first = index;
    }

    void AppendTo(std::vector<Finding>& all, QmLogFindingKind kind, const std::string& what) const
    {
        if (count > 0)
            all.push_back({kind, kTimeFileName, static_cast<unsigned long>(first),
                           what + (count > 1 ? " (" + std::to_string(count) + " in all)" : std::string())});
    }

    std::uint64_t count = 0;
    std::uint64_t first = 0;
};

} // namespace

VerifyTimes::VerifyTimes(const std::string& folder, ReadProgress& progress)
    : m_file(folder + kTimeFileName, &progress)
{
    progress.Expect(m_file.Size());
}

void VerifyTimes::Check(std::optional<std::uint32_t> counter, std::vector<Finding>& all)
{
    Tally damaged;
    Tally descending;
    Tally aboveCounter;
    Tally setBack;
    std::uint32_t firstSetBack = 0; // a number
    TimeRecord last;
    const std::uint64_t size = m_file.Size();
    for (std::uint64_t at = 0; at + sizeof(TimeRecord) <= size; at += sizeof(TimeRecord))
    {
        const char* const bytes = m_file.At(at);
        if (!bytes || m_file.BytesFrom(at) < sizeof(TimeRecord))
            break;
        TimeRecord record;
        std::memcpy(static_cast<void*>(&record), bytes, sizeof(record));
        const std::uint64_t index = at / sizeof(TimeRecord);
        if (!record.IsValid())
            damaged.Add(index);
        else if (record.number < last.number)
            descending.Add(index);
        else if (counter && record.number > *counter)
            aboveCounter.Add(index);
        else
        {
            if (record.Time() < last.Time())
            {
                firstSetBack = setBack.count == 0 ? record.number : firstSetBack;
                setBack.Add(index);
            }
            last = record;
        }
    }
    if (m_file.GetState() == FileWindow::State::Unreadable)
        all.push_back({QmLogFindingKind::FileUnreadable, kTimeFileName, QmLogFinding::kNoRow,
                       "the file cannot be opened or read"});
    damaged.AppendTo(all, QmLogFindingKind::TimeDamaged, "the time is damaged");
    descending.AppendTo(all, QmLogFindingKind::TimeNotAscending,
                        "the time has a number that is below the one before");
    aboveCounter.AppendTo(all, QmLogFindingKind::TimeAboveCounter,
                          "the time is that of a number above the counter");
    if (size % sizeof(TimeRecord) != 0)
        all.push_back({QmLogFindingKind::TimeUnfinished, kTimeFileName, QmLogFinding::kNoRow,
                       "the file ends within a time"});
    setBack.AppendTo(all, QmLogFindingKind::ClockSetBack,
                     "the clock was set back at number " + std::to_string(firstSetBack));
}

} // namespace logfiles
