// When the rows of a session were written: the clock of its writers, and the times that they have noted.
#pragma once

#include "QmLogApi.h"

#include <cstdint>
#include <memory>

// Turns the clock of this process on or off; until it is called, QM_LOG_TIMES=1 in the environment turns it
// on.
//
// Whoever takes numbers while it is on notes number and time in "Log.TIM" in the log folder: at most every
// 10 ms, but at the beginning and the end of every block in any case. A failure costs times and nothing else,
// and is reported to "QmLog.LOG" once until a time can be noted again.
QMLOG_API void QmLogSetTimes(bool on);

// Times are in 100 ns since the beginning of 1601, UTC, as the system has them in files.
using QmLogTimeValue = std::int64_t;
constexpr QmLogTimeValue kQmLogMillisecond = 10000;

// One record of "Log.TIM".
struct QmLogTimeSample
{
    std::uint32_t number = 0; // the last one that had been given out
    QmLogTimeValue time = 0;
    bool isBlockEnd = false; // a block ended then; else `number` was taken then
    std::uint8_t depth = 0;  // of the blocks that were open afterwards, over all logs
};

// The time of a number.
struct QmLogTime
{
    // When it was taken, or where that is not exact, the time of the sample before: the number is later by
    // at most 10 ms if all processes had their clocks on, and not after `next`, unless the clock was set.
    QmLogTimeValue time = 0;
    bool isExact = false;

    // Where it is exact, how long no number had been noted before; 0 for the first one and where the clock
    // was set back.
    QmLogTimeValue pause = 0;

    QmLogTimeSample sample; // its own, or the one before
    bool hasNext = false;
    QmLogTimeSample next; // the one after; where `hasNext` is false nothing came later
};

// A time in which nothing was written, between two samples of numbers.
struct QmLogTimeGap
{
    QmLogTimeSample before;
    QmLogTimeSample after;
};

// Reads the times of a session while its writers go on.
//
// Queries answer as of the last SetFolder or Refresh. They read the file in small pages, of which half a
// megabyte is kept, and so work on files of any size; where a search is not said to be linear, it takes time
// by the logarithm of the samples. Samples that are damaged are passed over. Operations answer false if there
// is no answer, report nothing and never throw. One thread at a time.
//
// The file may be that of an earlier session if someone has deleted the rest of it and then written without a
// clock: QmLogVerify notices samples beyond the counters.
class QMLOG_API CQmLogTimes
{
public:
    CQmLogTimes();
    ~CQmLogTimes();
    CQmLogTimes(const CQmLogTimes&) = delete;
    CQmLogTimes& operator=(const CQmLogTimes&) = delete;

    // The folder whose session is meant; null for the log folder. True if it has times.
    bool SetFolder(const char* folder);

    // Looks at the file again. True if it has changed: it has grown, was cut, or is another one.
    bool Refresh();

    // Records of the file, damaged ones among them.
    std::uint64_t GetSampleCount() const;

    // The sample at `index`, counted from 0; false if it is damaged.
    bool ReadSample(std::uint64_t index, QmLogTimeSample& sample) const;

    // False for numbers before the first sample. Takes no search for numbers close to the last one.
    bool TimeOf(std::uint32_t number, QmLogTime& time) const;

    // The first number that was noted at `time` or later; false if there is none. After the clock was set
    // back times come twice, and the first is meant. A search for each step of the clock.
    bool NumberAt(QmLogTimeValue time, std::uint32_t& number) const;

    // How often the clock was set back; 65,535 for more. Times are what it told, before and after.
    std::uint32_t GetStepCount() const;

    // Step `step`, counted from 0: the sample before it and the earlier one after.
    bool ReadStep(std::uint32_t step, QmLogTimeSample& before, QmLogTimeSample& after) const;

    // The next time of at least `atLeast` in which no number was noted, and which ended with a number above
    // `number`; with `forward` false the last one that ended with a number below it. Linear.
    bool FindGap(std::uint32_t number, QmLogTimeValue atLeast, bool forward, QmLogTimeGap& gap) const;

    // When a block ended whose lines have the depth `depth`: `last` is the number of its last row, and `next`
    // that of the row of the same log behind it, or 0xFFFFFFFF if it has none. Linear between these. False
    // while it is open.
    bool FindBlockEnd(std::uint8_t depth, std::uint32_t last, std::uint32_t next, QmLogTimeValue& end) const;

private:
    struct Data;
    std::unique_ptr<Data> m_data;
};
