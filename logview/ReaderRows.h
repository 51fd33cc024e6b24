// The rows of this process's log readers.
#pragma once

#include "logview/RowSource.h"

namespace logview
{

// The readers that QmLogReaderDefine answers for the five logs. An index without a log has no rows. A reader
// reports in the log folder when it cannot open a file; here one is asked only for a file that can be opened,
// so that looking at logs leaves the folder as it is.
class ReaderRows : public RowSource
{
public:
    unsigned long RowCount(unsigned file) override;
    unsigned long ReadRows(unsigned file, unsigned long first, unsigned long count, CQmLogRow* rows) override;
    unsigned long TextSize(unsigned file) override;
    unsigned long ReadText(unsigned file, unsigned long offset, unsigned long size, char* text) override;
    bool Find(unsigned file, unsigned long time, bool forward, unsigned long& foundTime,
              unsigned long& row) override;

private:
    bool CanReadRows(unsigned file);
    bool CanReadText(unsigned file);

    bool m_rowsOpen[kFileCount] = {}; // by the reader, which keeps it so
    bool m_textOpen[kFileCount] = {};
};

} // namespace logview
