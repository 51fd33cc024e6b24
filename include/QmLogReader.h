// Random access to the lines of one log, finished or still growing.
#pragma once

#include "QmLogApi.h"
#include "QmLogRow.h"

// Reads the text file "<name>.LOG" through its row index "<name>.ROW".
//
// Another process may be appending meanwhile: counts and lengths hold for the moment of the call, and a
// row may already stand while its line is not complete. Files are opened on first use and stay open; one
// that is missing is tried again at each call. Operations answer false on failure and never throw; a
// failing system call is also reported to "QmLog.LOG". One thread at a time.
//
// A copy shares handles and text of its source: copies are for passing, and must not be destroyed beside it.
class QMLOG_API CQmLogReader
{
public:
    CQmLogReader() = default;
    CQmLogReader(const CQmLogReader&) = default;
    CQmLogReader& operator=(const CQmLogReader&) = default;
    virtual ~CQmLogReader();

    // Names the log, as CQmLogWriter::SetFilePath does. Open files stay open. Without a name or a log folder
    // the reader has no rows.
    void SetFilePath(const char* name);

    // Names a log by the path of its text file, whatever the log folder is; its index lies beside it. An
    // extension is dropped. Without a path, or with one of MAX_PATH characters, the reader has no rows.
    void SetFullPath(const char* path);

    // The name or path as given; empty when there is none.
    const char* GetFilePath() const;

    // Whole rows in the index; 0 while the file is missing. Opens nothing.
    unsigned long GetRowCount();

    // Bytes of text; 0 while the file is missing. Opens nothing.
    unsigned long GetLogFileSize();

    // Reads line `index`, counted from 0. False, without a report, when the row does not exist yet. The last
    // line ends with its first line feed, whatever a writer appends meanwhile.
    // `text`    NUL-terminated, with its line feed; owned by the reader, valid until its next Read
    // `length`  bytes in `text`, the NUL not counted
    bool Read(unsigned long index, const char*& text, unsigned long& length, CQmLogRow& row);

    // The length of line `index` as the index tells it, its line feed counted. For the last line this is
    // one more than the bytes that lie after its offset.
    bool ReadLength(unsigned long index, unsigned long& length);

    // The record of line `index`: its depth, kind, block mark and sequence number.
    bool ReadStyle(unsigned long index, CQmLogRow& row);

    // Reads up to `count` records from line `index` on, with one read. Answers how many there were.
    unsigned long ReadRows(unsigned long index, unsigned long count, CQmLogRow* rows);

    // Reads up to `size` bytes of the text from `offset` on, with one read, into `text`, which gets no NUL.
    // Answers how many there were.
    unsigned long ReadText(unsigned long offset, unsigned long size, char* text);

    // Closes both files; the next call opens them again. For a host that deletes them: an open file stays.
    void Close();

    // The row for sequence number `time`, by binary search: forward, the first row not before it, else the
    // last row not after it; in either case the nearest row there is when there is none on that side.
    // `foundTime` receives that row's number, but is left alone when the log has only one row: callers
    // rely on it. False when the log has no rows.
    bool Find(unsigned long time, bool forward, unsigned long& foundTime, unsigned long& index);

protected:
    // Record and length of line `index`.
    bool ReadRow(unsigned long index, unsigned long& length, CQmLogRow& row);

    // Opens a file for reading while others write it; null for an empty path, the system's invalid handle
    // when it refuses.
    void* CreateFileRead(const char* path);

private:
    static constexpr int kPathSize = 260;

    bool ReadRowAndEnd(unsigned long index, unsigned long& length, CQmLogRow& row, bool& last);
    bool OpenLogFile(const char* failure);
    bool OpenRowFile(const char* failure);
    bool GrowText(unsigned long& length, unsigned long offset);

    char m_name[kPathSize] = {};
    char m_logPath[kPathSize] = {};
    char m_rowPath[kPathSize] = {};
    void* m_logHandle = nullptr;
    void* m_rowHandle = nullptr;
    char* m_text = nullptr;           // of the last Read
    unsigned long m_textCapacity = 0; // bytes of m_text, room for the NUL included
};

// The reader of this process for `name`, made on first use and kept to the end of the process. Names
// compare byte for byte. Room for 10 names: an eleventh, a null name and one that does not fit get a
// reader without a name, which has no rows.
QMLOG_API CQmLogReader& QmLogReaderDefine(const char* name);
