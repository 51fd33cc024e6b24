/* The log files for C and for whatever calls C: plain functions over handles, for any compiler for 64-bit
 * Windows. Link "QmLog.lib" (or "libQmLog.dll.a" with MinGW); no other header is needed. C++ has a wrapper in
 * QmLog.hpp.
 *
 * The functions do what the operations of the classes do: CQmLogWriter, CQmLogReader and QmLogOutputFile.
 *
 * Failure. Functions that answer an int answer 1 if the work is done and 0 if it is not; those that answer a
 * handle answer a null pointer then. QmLogCLastError and QmLogCLastErrorText tell why. No exception leaves a
 * function, and a null handle is refused. A handle that was closed, or is none, is not recognised: it must
 * not be used.
 *
 * Texts. A text is an address and a number of bytes, or QMLOG_C_ENDED instead of the number for a text that
 * ends with its NUL. A null address is refused unless the number is 0. Bytes are stored as they are, NUL
 * bytes too.
 *
 * Threads. A handle is used by one thread at a time. QmLogCWriterDefine and QmLogCWriterCloseAll are called
 * by one thread at a time in the process, and the latter while no other thread uses a writer. All else may be
 * called by several threads at once. The last error is each thread's own.
 */
#ifndef QMLOG_C_H
#define QMLOG_C_H

#include <stddef.h>

#if !defined(_WIN32)
#define QMLOG_C_API
#define QMLOG_C_CALL
#elif defined(QMLOG_BUILD)
#define QMLOG_C_API __declspec(dllexport)
#define QMLOG_C_CALL __cdecl
#else
#define QMLOG_C_API __declspec(dllimport)
#define QMLOG_C_CALL __cdecl
#endif

#ifdef __cplusplus
extern "C"
{
#endif

/* The length of a text that ends with its NUL. */
#define QMLOG_C_ENDED ((size_t)-1)

/* Kinds of blocks, by which a viewer colours lines. Any other number is a program's own. */
#define QMLOG_C_PLAIN 0u
#define QMLOG_C_NOTICE 1u
#define QMLOG_C_ERROR 2u
#define QMLOG_C_DETAIL 3u
#define QMLOG_C_ENCLOSING 0xFFFFFFFFu /* the kind of the block around it */

/* Codes of QmLogCLastError. */
#define QMLOG_C_OK 0           /* nothing has failed yet in this thread */
#define QMLOG_C_BAD_ARGUMENT 1 /* a null pointer, a NUL within a name, a text of 4 GiB or more */
#define QMLOG_C_NO_MEMORY 2
#define QMLOG_C_FAILED 3    /* refused by the system or the library; mostly "QmLog.LOG" tells it too */
#define QMLOG_C_NO_ROW 4    /* the log does not have that row, or none at all */
#define QMLOG_C_TOO_SMALL 5 /* the text does not fit into the buffer */

typedef struct QmLogCWriter QmLogCWriter;
typedef struct QmLogCReader QmLogCReader;
typedef struct QmLogCOutput QmLogCOutput;

/* What the index tells of a line. */
typedef struct QmLogCRow
{
    unsigned int number;   /* increasing over all logs of a folder */
    unsigned int depth;    /* blocks around the line */
    unsigned int kind;     /* of the block that the line belongs to */
    unsigned int isHeader; /* 1: the line begins a block; 0: it does not */
} QmLogCRow;

/* The code and the text of what failed last in this thread; success leaves them as they are. The text
 * ends with a NUL, is never null, and is valid until a function fails in this thread. */
QMLOG_C_API int QMLOG_C_CALL QmLogCLastError(void);
QMLOG_C_API const char* QMLOG_C_CALL QmLogCLastErrorText(void);

/* Turns the clock of this process on (1) or off (0); until then QM_LOG_TIMES=1 in the environment turns it
 * on. While it is on, the times of lines are noted in "Log.TIM" in the log folder. */
QMLOG_C_API void QMLOG_C_CALL QmLogCSetTimes(int on);

/* The writer of this process for a name, made on first use and kept to the end of the process, which is
 * also what C++ gets for that name. There is room for 10 names. Nothing is opened yet. */
QMLOG_C_API QmLogCWriter* QMLOG_C_CALL QmLogCWriterDefine(const char* name, size_t length);

/* The name as given, owned by the writer. Empty for a null handle. */
QMLOG_C_API const char* QMLOG_C_CALL QmLogCWriterName(const QmLogCWriter* writer);

/* Appends a text: each line feed in it begins a new line. */
QMLOG_C_API int QMLOG_C_CALL QmLogCWrite(QmLogCWriter* writer, const char* text, size_t length);

/* Appends a text as a line of its own. Line ends at either end of it are dropped, and an empty text
 * writes nothing. */
QMLOG_C_API int QMLOG_C_CALL QmLogCWriteLine(QmLogCWriter* writer, const char* text, size_t length);

/* Begins a block within the present one and writes its header, which may be empty. Not done if 254 blocks
 * are open. A header that cannot be written does not keep the block from being opened. */
QMLOG_C_API int QMLOG_C_CALL QmLogCBlockBegin(QmLogCWriter* writer, unsigned int kind, const char* header,
                                              size_t length);

/* Ends the innermost block; does nothing if none is open. */
QMLOG_C_API int QMLOG_C_CALL QmLogCBlockEnd(QmLogCWriter* writer);

/* Lines of this writer whose rows could not be written: readers do not find them. */
QMLOG_C_API unsigned int QMLOG_C_CALL QmLogCWriterLostRows(const QmLogCWriter* writer);

/* Deletes the files of the log. They have to be closed. */
QMLOG_C_API int QMLOG_C_CALL QmLogCWriterClear(QmLogCWriter* writer);

/* Closes the files of one writer, which opens them again on its next write. */
QMLOG_C_API int QMLOG_C_CALL QmLogCWriterClose(QmLogCWriter* writer);

/* Closes the files of all writers and the counters. Other processes may write then; the writers stay and
 * open the files again on their next write. */
QMLOG_C_API int QMLOG_C_CALL QmLogCWriterCloseAll(void);

/* A reader for a log of the log folder by its name, or for any log by the path of its text file, whose
 * index lies beside it. A log that does not exist yet has no rows. To be closed by QmLogCReaderClose. */
QMLOG_C_API QmLogCReader* QMLOG_C_CALL QmLogCReaderOpen(const char* name, size_t length);
QMLOG_C_API QmLogCReader* QMLOG_C_CALL QmLogCReaderOpenPath(const char* path, size_t length);

/* Rows in the index, at this moment; 0 also for a null handle. */
QMLOG_C_API unsigned int QMLOG_C_CALL QmLogCReaderCount(QmLogCReader* reader);

/* Reads the line of row `index`, counted from 0: its line feed comes along, and no NUL is added.
 *   text      receives the line if it fits into `capacity` bytes; null if it is not wanted
 *   length    receives its bytes, also if it does not fit; may be null
 *   row       receives what the index tells of it, also if it does not fit; may be null */
QMLOG_C_API int QMLOG_C_CALL QmLogCReaderRead(QmLogCReader* reader, unsigned int index, char* text,
                                              size_t capacity, size_t* length, QmLogCRow* row);

/* The row with a sequence number, or if there is none the next one (`forward` is not 0) or the one
 * before; on the far side of all rows, the nearest. */
QMLOG_C_API int QMLOG_C_CALL QmLogCReaderFind(QmLogCReader* reader, unsigned int number, int forward,
                                              unsigned int* index);

/* Closes the files and frees the handle. */
QMLOG_C_API int QMLOG_C_CALL QmLogCReaderClose(QmLogCReader* reader);

/* A run's plain output, "<name>.TXT" in the folder of the variable QM_RUN_OUTPUT_PATH. The file is opened
 * on the first write; if that or a write fails nobody is told. To be closed by QmLogCOutputClose. */
QMLOG_C_API QmLogCOutput* QMLOG_C_CALL QmLogCOutputOpen(const char* name, size_t length);

/* Appends bytes as they are, or after a line feed. */
QMLOG_C_API int QMLOG_C_CALL QmLogCOutputWrite(QmLogCOutput* output, const char* text, size_t length);
QMLOG_C_API int QMLOG_C_CALL QmLogCOutputWriteLine(QmLogCOutput* output, const char* text, size_t length);

/* Closes the file and frees the handle. */
QMLOG_C_API int QMLOG_C_CALL QmLogCOutputClose(QmLogCOutput* output);

#ifdef __cplusplus
}
#endif

#endif
