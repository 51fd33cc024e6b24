// Checks the files of a log folder against each other.
#pragma once

#include "QmLogApi.h"

#include <string>
#include <vector>

// What was found. Damage means that something was lost or changed behind the library's back, or cannot be
// read. The others are what a running writer, a killed one or a single failed write leaves, and
// lose nothing that was answered true.
enum class QmLogFindingKind
{
    // Damage.
    kFileUnreadable,     // a file cannot be opened or read
    kTextWithoutIndex,   // a "LOG" file with text, but no "ROW" file
    kIndexWithoutText,   // a "ROW" file with rows whose "LOG" file is missing
    kIndexCut,           // a record is cut short although the text of its line is there
    kOffsetNotAscending, // a row's offset is not above that of the row before
    kOffsetNotAtLine,    // a row's offset is not just behind a line feed
    kLineWithoutRow,     // the text has lines for which the index has no row
    kNumberNotAscending, // a row's sequence number is not above that of the row before
    kNumberNotUnique,    // two rows have the same sequence number
    kNumberAboveCounter, // a row's sequence number was never given out
    kNumberZero,         // a row has no sequence number
    kBlockMarkInvalid,   // a row's block mark is neither 0 nor 1
    kKindInvalid,        // a row's kind is the reserved value
    kCountersMissing,    // there are rows, but no "Log.DAT"
    kCountersCut,        // "Log.DAT" is shorter than its 8 bytes although rows exist
    kCountersTooLong,    // "Log.DAT" is longer than its 8 bytes
    // Not damage.
    kRowBeforeText,    // rows at the end whose text has not come
    kRowWithoutText,   // rows in the middle whose text never came: a failed write of text
    kRowNotWritten,    // a line without a row, its number missing as well: a failed write of a row
    kRecordUnfinished, // a record cut short at the end of the index, and its line not written
    kNumberWithoutRow, // numbers given out, but no row has them
};

// True for the kinds that are damage.
QMLOG_API bool QmLogIsDamage(QmLogFindingKind kind);

struct QmLogFinding
{
    static constexpr unsigned long kNoRow = 0xFFFFFFFF;

    QmLogFindingKind kind;
    std::string file;   // its name in the folder, "Main.ROW"
    unsigned long row;  // the row, counted from 0; kNoRow when no single row is meant
    std::string reason; // a sentence without a full stop
};

// Checks the logs named in `logs` (base names without extension) of `folder`, and "Log.DAT", against each
// other. Reads only; the files may grow meanwhile. Findings come file by file in ascending row order; after
// 1,000 findings in one file the rest of that file is summed up in one more.
// To tell lost numbers, `logs` must name every log of the folder.
QMLOG_API std::vector<QmLogFinding> QmLogVerify(const std::string& folder,
                                                const std::vector<std::string>& logs);
