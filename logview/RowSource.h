// Where the log view's models get rows from: the five logs of a session, by file index.
#pragma once

#include "QmLogRow.h"

namespace logview
{

constexpr unsigned kFileCount = 5;

// Rows and text of logs that may be growing, damaged or missing. Answers hold for the moment of the call.
// The operations are those of CQmLogReader, whose header tells them in full.
class RowSource
{
public:
    virtual unsigned long RowCount(unsigned file) = 0;

    // Up to `count` records from row `first` on, with one read; answers how many there were.
    virtual unsigned long ReadRows(unsigned file, unsigned long first, unsigned long count,
                                   CQmLogRow* rows) = 0;

    virtual unsigned long TextSize(unsigned file) = 0;

    // Up to `size` bytes of text from `offset` on, with one read; answers how many there were.
    virtual unsigned long ReadText(unsigned file, unsigned long offset, unsigned long size, char* text) = 0;

    // The row for number `time` by binary search; leaves `foundTime` alone in a log of one row.
    virtual bool Find(unsigned file, unsigned long time, bool forward, unsigned long& foundTime,
                      unsigned long& row) = 0;

protected:
    ~RowSource() = default;
};

} // namespace logview
