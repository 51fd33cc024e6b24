#include "logview/ReaderRows.h"

#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "logview/FileLook.h"
#include "logview/LogNames.h"

#include <string>

namespace logview
{

namespace
{
CQmLogReader& ReaderOf(unsigned file)
{
    return QmLogReaderDefine(GetLogName(static_cast<int>(file)));
}

bool CanOpenFile(unsigned file, const char* extension)
{
    char path[MAX_PATH] = {};
    const std::string name = std::string(GetLogName(static_cast<int>(file))) + extension;
    return QmLogMakeFilePath(name.c_str(), path) &&
           CanOpen(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
}
} // namespace

unsigned long ReaderRows::RowCount(unsigned file)
{
    return ReaderOf(file).GetRowCount();
}

unsigned long ReaderRows::ReadRows(unsigned file, unsigned long first, unsigned long count, CQmLogRow* rows)
{
    return CanReadRows(file) ? ReaderOf(file).ReadRows(first, count, rows) : 0;
}

unsigned long ReaderRows::TextSize(unsigned file)
{
    return ReaderOf(file).GetLogFileSize();
}

unsigned long ReaderRows::ReadText(unsigned file, unsigned long offset, unsigned long size, char* text)
{
    return CanReadText(file) ? ReaderOf(file).ReadText(offset, size, text) : 0;
}

bool ReaderRows::Find(unsigned file, unsigned long time, bool forward, unsigned long& foundTime,
                      unsigned long& row)
{
    return CanReadRows(file) && ReaderOf(file).Find(time, forward, foundTime, row);
}

bool ReaderRows::CanReadRows(unsigned file)
{
    if (file < kFileCount && !m_rowsOpen[file])
        m_rowsOpen[file] = RowCount(file) > 0 && CanOpenFile(file, ".ROW");
    return file < kFileCount && m_rowsOpen[file];
}

bool ReaderRows::CanReadText(unsigned file)
{
    if (file < kFileCount && !m_textOpen[file])
        m_textOpen[file] = TextSize(file) > 0 && CanOpenFile(file, ".LOG");
    return file < kFileCount && m_textOpen[file];
}

} // namespace logview
