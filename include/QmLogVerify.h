// Checks the files of a log folder against each other.
#pragma once

#include "QmLogApi.h"

#include <cstddef>

// What was found. Damage means that something was lost or changed behind the library's back, or cannot be
// read. The rest is what a running writer, a killed one or a single failed write leaves, and takes nothing
// away that a writer had answered true for; and a clock that was set back, whose times are kept as they were.
//
// Rows at the end whose text has not come are told from a text that was cut by being those of one write: of
// consecutive numbers, in one block. The next writer takes them away. Within a log that went on, a row whose
// text never came does no harm when the next row has the same offset; any other points into text that came
// later, which would be shown twice and in slices, and is damage. A line whose row could not be written looks
// like one whose row was removed, and counts as damage.
enum class QmLogFindingKind
{
    // Damage.
    FileUnreadable,     // a file cannot be opened or read
    TextWithoutIndex,   // a "LOG" file with text whose "ROW" file is missing or empty
    IndexWithoutText,   // a "ROW" file with rows whose "LOG" file is missing
    TextCut,            // the text ends before rows of more than one write
    IndexCut,           // the index ends within a record, and with it lines lack their rows
    OffsetNotAscending, // a row's offset is not above that of the row before
    OffsetNotAtLine,    // a row's offset is not just after a line feed
    LineWithoutRow,     // the text has lines for which the index has no row
    NumberZero,         // a row has no sequence number
    NumberNotAscending, // a row's sequence number is not above that of the row before
    NumberNotUnique,    // another log has a row of the same sequence number
    NumberAboveCounter, // a row's sequence number was never given out
    BlockMarkInvalid,   // a row's block mark is neither 0 nor 1
    KindInvalid,        // a row's kind is the reserved value
    CountersMissing,    // there are rows, but no "Log.DAT"
    CountersSize,       // there are rows, but "Log.DAT" does not have its 8 bytes
    TimeDamaged,        // a record of "Log.TIM" is not as it was written
    TimeNotAscending,   // its number is below that of the record before
    TimeAboveCounter,   // its number was never given out: the file may be that of an earlier session
    MoreDamage,         // further findings in this log, damage among them, or so many that it was given up
    // Not damage.
    RowBeforeText,    // a row at the end whose text has not come yet
    RowWithoutText,   // a row whose text never came
    RecordUnfinished, // the index ends within a record, but no line lacks its row
    TimeUnfinished,   // "Log.TIM" ends within a record
    NumberWithoutRow, // numbers were given out that no row has
    MoreNotes,        // further findings in this log, no damage among them
    ClockSetBack,     // a time is below that of the record before: told of the first one
};

// True for the kinds that are damage.
QMLOG_API bool QmLogIsDamage(QmLogFindingKind kind);

// The texts are valid while OnFinding runs.
struct QmLogFinding
{
    static constexpr unsigned long kNoRow = 0xFFFFFFFF;

    QmLogFindingKind kind;
    const char* file;   // its name in the folder, "Main.ROW"
    unsigned long row;  // counted from 0; kNoRow when no single row is meant
    const char* reason; // a sentence without a full stop
};

// Whoever is told what verification finds, and how far it is.
class QmLogVerifyListener
{
public:
    virtual ~QmLogVerifyListener() = default;

    // All findings come at the end.
    virtual void OnFinding(const QmLogFinding& finding) = 0;

    // Told now and then how much of the work is done, in percent. False ends the work.
    virtual bool OnProgress(int percent)
    {
        static_cast<void>(percent);
        return true;
    }
};

// Checks `count` logs of `folder`, named in `logs` (base names without extension), "Log.DAT" and
// "Log.TIM", against each other. Reads only, in constant memory, and the files may grow meanwhile. Findings
// come log by log, in ascending row order; of more than 1,000 in one log the rest is counted in one more, and
// a log with more than a hundred thousand is given up. When the listener ends the work, the findings are
// those up to there. Without files there are no findings. A number without a row can be told only when `logs`
// names every log of the folder.
QMLOG_API void QmLogVerify(const char* folder, const char* const* logs, std::size_t count,
                           QmLogVerifyListener& listener);
