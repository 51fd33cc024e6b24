// The rows of this process's log readers.
#pragma once

#include "logview/RowSource.h"

namespace logview
{

// The readers that QmLogReaderDefine answers for the five logs. An index without a log has no rows.
class ReaderRows : public RowSource
{
public:
    unsigned long GetRowCount(unsigned file) override;
    unsigned long ReadRows(unsigned file, unsigned long first, unsigned long count, CQmLogRow* rows) override;
    unsigned long GetTextSize(unsigned file) override;
    unsigned long ReadText(unsigned file, unsigned long offset, unsigned long size, char* text) override;
    bool Find(unsigned file, unsigned long time, bool forward, unsigned long& foundTime,
              unsigned long& row) override;
};

} // namespace logview
