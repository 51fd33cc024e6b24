// Writing logs: text, nested blocks, and the writers of a process by name.
#pragma once

#include "QmLogApi.h"
#include "QmLogRow.h"

// Appends text to one log: the characters to "<name>.LOG", and one CQmLogRow a line to "<name>.ROW".
//
// Files are opened on the first write and stay open until Close. While a writer has them open, others
// may read them but not write. Operations answer false on failure and never throw; each failing system
// call is reported to "QmLog.LOG" in the log folder. One thread at a time.
//
// Every row takes the next sequence number from "Log.DAT", which all processes of the folder share.
// One process at a time can hold that file open for update: a first row, BlockBegin and BlockEnd wait,
// without a time limit, until the process that holds it has closed all its writers or has ended; in a
// folder that may not be written to, BlockBegin waits for ever. When a seek in "Log.DAT" fails, the file
// stays locked as documented in docs/file-format.md: every later row of any process, the failing one
// included, waits until the failing process has closed or ended.
//
// A copy shares the handles of its source, and both close them: copies are for passing, not for keeping.
class QMLOG_API CQmLogWriter
{
public:
    // Blocks that may be open at once.
    static constexpr int kMaxDepth = 254;

    CQmLogWriter() = default;
    CQmLogWriter(const CQmLogWriter&) = default;
    CQmLogWriter& operator=(const CQmLogWriter&) = default;
    virtual ~CQmLogWriter();

    // Names the log. An extension is dropped; a relative directory is kept below the log folder.
    // Open files stay open. A null name, or one that does not fit MAX_PATH characters with the log
    // folder, leaves the writer without a name. Without a name, or where there is no log folder, it
    // answers false to everything and touches nothing.
    void SetFilePath(const char* name);

    // The name as given; empty when there is none.
    const char* GetFilePath() const;

    // Appends `text`, NUL-terminated; null counts as empty. The bytes are stored as they are, and each
    // line feed begins a new line. An empty text opens the log and gives it its first row.
    // False when the text was not written; part of it may then stand in the file. A write that would
    // take the file beyond 4 GiB - 1 is refused. Rows that fail are reported but do not stop the text.
    bool Write(const char* text);

    // Appends text formatted as printf does, of any length. False as Write, and when the text cannot be
    // formatted or there is no memory for it.
    bool WriteFormat(const char* format, ...) QMLOG_PRINTF(2, 3);

    // Begins a block with a fresh line, its header: what is written next is its caption.
    // False, and nothing is done, when kMaxDepth blocks are open. A failing write is reported and
    // does not keep the block from being opened.
    bool BlockBegin(QmLogBlockKind kind);

    // Ends the innermost block: later text begins a fresh line and belongs to the enclosing block.
    // False, and nothing is done, when no block is open.
    bool BlockEnd();

    // Deletes both files. The writer's own handles stay as they are, and so do its open blocks: close
    // the writer first, for an open file is not deleted.
    void Clear();

    // Closes both files; the next write opens them again. Always true.
    bool Close();

protected:
    // The values of the line being written: its depth, kind and block mark.
    CQmLogRow& GetBlockHeap();

    // Gives `row` the next sequence number and appends it to the index.
    bool WriteRow(CQmLogRow& row);

    // Opens a file for appending, for this writer alone; null for an empty path, the system's invalid
    // handle when it refuses.
    void* CreateFileWrite(const char* path);

private:
    static constexpr int kPathSize = 260;

    bool OpenLogFile();
    bool OpenRowFile();
    void WriteTextRows(const char* text, std::size_t length, std::uint32_t position);
    bool WriteRows(CQmLogRow* rows, std::size_t count);
    bool AppendRows(const CQmLogRow* rows, std::size_t count, const char*& failure);
    void CloseFiles(const char* logMessage, const char* rowMessage);

    char m_name[kPathSize] = {};
    char m_logPath[kPathSize] = {};
    char m_rowPath[kPathSize] = {};
    void* m_logHandle = nullptr;
    void* m_rowHandle = nullptr;
    CQmLogRow m_blocks[kMaxDepth + 1]; // entry 0 is the outermost level
    int m_depth = 0;
    bool m_lineFeedPending = false; // a block ended within a line: the next text begins a fresh one
    char m_lastCharacter = 0;
};

// A block for the length of a scope: opened here, closed on every way out of it.
//
//     QmLogBlock block(log, kDetailKind, "Load job list");
class QmLogBlock
{
public:
    // `caption` is the text of the header line; null or empty for none.
    QmLogBlock(CQmLogWriter& log, QmLogBlockKind kind, const char* caption)
        : m_log(log), m_open(log.BlockBegin(kind))
    {
        if (m_open && caption != nullptr && *caption != '\0')
            m_log.Write(caption);
    }

    ~QmLogBlock()
    {
        if (m_open)
            m_log.BlockEnd();
    }

    QmLogBlock(const QmLogBlock&) = delete;
    QmLogBlock& operator=(const QmLogBlock&) = delete;

private:
    CQmLogWriter& m_log;
    bool m_open; // false when the block was refused: then there is none to close
};

// The writer of this process for `name`, made on first use and kept to the end of the process. Names
// compare byte for byte. Room for 10 names: an eleventh, a null name and one that does not fit get a
// writer without a name, which answers false.
QMLOG_API CQmLogWriter& QmLogWriterDefine(const char* name);

// Closes the files of every defined writer and both handles of "Log.DAT". Writers stay defined and open
// their files again on their next write; other processes may write meanwhile. Always true.
QMLOG_API bool QmLogWriterCloseAll();

// The full path of a file of the log folder: the folder, the directory of `name` below it, name and
// extension. `path` holds 260 characters and may be `name` itself. False, with `path` untouched,
// when there is no log folder or the result does not fit.
QMLOG_API bool QmLogMakeFilePath(const char* name, char* path);

// The last sequence number given out in the log folder; 0 on a fresh folder and when it cannot be read.
// Creates "Log.DAT" when missing and waits for its lock.
QMLOG_API int QmLogGlobalTimeGet();
