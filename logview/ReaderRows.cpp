#include "logview/ReaderRows.h"

#include "QmLogReader.h"
#include "logview/LogNames.h"

namespace logview
{

namespace
{
CQmLogReader& ReaderOf(unsigned file)
{
    return QmLogReaderDefine(GetLogName(static_cast<int>(file)));
}
} // namespace

unsigned long ReaderRows::GetRowCount(unsigned file)
{
    return ReaderOf(file).GetRowCount();
}

unsigned long ReaderRows::ReadRows(unsigned file, unsigned long first, unsigned long count, CQmLogRow* rows)
{
    return ReaderOf(file).ReadRows(first, count, rows);
}

unsigned long ReaderRows::GetTextSize(unsigned file)
{
    return ReaderOf(file).GetLogFileSize();
}

unsigned long ReaderRows::ReadText(unsigned file, unsigned long offset, unsigned long size, char* text)
{
    return ReaderOf(file).ReadText(offset, size, text);
}

bool ReaderRows::Find(unsigned file, unsigned long time, bool forward, unsigned long& foundTime,
                      unsigned long& row)
{
    return ReaderOf(file).Find(time, forward, foundTime, row);
}

} // namespace logview
