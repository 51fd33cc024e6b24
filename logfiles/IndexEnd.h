// The end of an index as a writer finds it: rows without text, and whether the last line is still empty.
#pragma once

#include "QmLogRow.h"
#include "logfiles/FileWindow.h"

#include <cstdint>

namespace logfiles
{

// Record `index` of an index file. False past its end and when it cannot be read.
bool ReadRecord(FileWindow& rows, std::uint64_t index, CQmLogRow& row);

// Whether the rows from `first` to before `end` can be those of one write: of consecutive numbers, and in one
// block. True for a single row, and when there is none.
bool IsOneWrite(FileWindow& rows, std::uint64_t first, std::uint64_t end);

// How many rows at the end of an index have no text and never will, as a writer leaves them that was killed
// after its rows and before its text: rows of one write, all after the end of the text, which has `textSize`
// bytes. 0 when more is missing than one write can explain: that is damage, which stays for verification to
// find. False when the index cannot be read. To be asked before the log's only writer goes on.
bool CountRowsWithoutText(const char* rowPath, std::uint64_t textSize, std::uint64_t& surplus);

// Whether the text, which has `textSize` bytes, ends with a line feed and the line begun by it is one of
// `block`: of its depth and kind.
bool EndsOnFreshLine(const char* logPath, const char* rowPath, std::uint64_t textSize,
                     const CQmLogRow& block);

} // namespace logfiles
