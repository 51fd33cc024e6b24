// Writing logs: text, nested blocks, and the writers of a process by name.
#pragma once

#include "QmLogApi.h"
#include "QmLogFolder.h"
#include "QmLogRow.h"

// Appends text to one log: the characters to "<name>.LOG", and one CQmLogRow a line to "<name>.ROW".
//
// Files are opened on the first write and stay open until Close. While a writer has them open, others
// may read them but not write. Operations answer false on failure and never throw; each failing system
// call, and each refusal, is reported to "QmLog.LOG" in the log folder. One thread at a time.
//
// WriteLine is for programs that log lines, Write for text that brings its line feeds. Both go together.
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
    // False when the text was not written; both files are then as they were before the call. A write that
    // would take the file beyond 4 GiB - 1 is refused. Rows that cannot be written are reported, once a call,
    // and counted by GetLostRowCount, but do not stop the text.
    bool Write(const char* text);

    // Likewise `length` bytes, which may be of any value.
    bool Write(const char* text, std::size_t length);

    // Appends `text` as a line of its own: a line feed goes first when text precedes it, whichever process
    // or run wrote that. The line takes its number now, and the last line stays open until the next one
    // comes, so that no blank row arises. Line ends at either end of `text` are dropped; null, or a text of
    // nothing else, writes nothing. True and false as Write; false also without memory for the text.
    bool WriteLine(const char* text);
    bool WriteLine(const char* text, std::size_t length);

    // Write and WriteLine with text formatted as printf does, of any length. False also when the text cannot
    // be formatted or there is no memory for it.
    bool WriteFormat(const char* format, ...) QMLOG_PRINTF(2, 3);
    bool WriteLineFormat(const char* format, ...) QMLOG_PRINTF(2, 3);

    // Lines written by this object whose rows could not be: readers do not find them.
    unsigned long GetLostRowCount() const { return m_lostRows; }

    // Begins a block with a fresh line, its header: what is written next is its caption.
    // False, and nothing is done, when kMaxDepth blocks are open. A failing write is reported and does not
    // keep the block from being opened: its header's line begins with the next text that can be written.
    bool BlockBegin(QmLogBlockKind kind);

    // Ends the innermost block: later text begins a fresh line and belongs to the enclosing block. Always
    // true; nothing is done when no block is open.
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
    static constexpr std::uint64_t kUnknownEnd = 0xFFFFFFFFFFFFFFFF;

    struct RowsWritten;

    bool OpenLogFile();
    bool OpenRowFile(RowsWritten& written);
    bool FindEnd(std::uint64_t& position);
    bool IsOnFreshLine(std::uint64_t position);
    bool WriteText(const char* text, std::size_t length);
    bool WriteLineText(char* text, std::size_t length);
    bool WriteAt(std::uint64_t position, const char* text, std::size_t length);
    void WriteTextRows(const char* text, std::size_t length, std::uint32_t position, RowsWritten& written);
    void WriteRows(CQmLogRow* rows, std::size_t count, RowsWritten& written);
    bool AppendRows(const CQmLogRow* rows, std::size_t count, RowsWritten& written, const char*& failure);
    void TakeBack(const RowsWritten& written);
    void CloseFiles(const char* logMessage, const char* rowMessage);

    char m_name[kPathSize] = {};
    char m_logPath[kPathSize] = {};
    char m_rowPath[kPathSize] = {};
    void* m_logHandle = nullptr;
    void* m_rowHandle = nullptr;
    unsigned long m_logError = 0; // of the opening, while the handle is the invalid one
    unsigned long m_rowError = 0;
    CQmLogRow m_blocks[kMaxDepth + 1]; // entry 0 is the outermost level
    int m_depth = 0;
    bool m_lineFeedPending = false; // a block ended within a line: the next text begins a fresh one
    char m_lastCharacter = 0;
    std::uint64_t m_end =
        kUnknownEnd;            // of the text, as this writer left it; others may write while it is closed
    bool m_onFreshLine = false; // there: after a line feed that belongs to the present block
    unsigned long m_lostRows = 0;
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
        if (m_open && caption && *caption != '\0')
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
