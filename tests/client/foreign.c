/* A C89 program of another compiler, with nothing but QmLogC.h: no header and no library of the system's. It
 * ends with the number of the first thing that went wrong, or 0. */
#include <QmLogC.h>

/* What the linker takes as the beginning of a program; what it answers is the exit code. */
int mainCRTStartup(void);

static int Same(const char* left, const char* right, size_t length)
{
    while (length > 0 && *left == *right)
    {
        ++left;
        ++right;
        --length;
    }
    return length == 0;
}

static int WriteLog(void)
{
    QmLogCWriter* log = QmLogCWriterDefine("Foreign", QMLOG_C_ENDED);
    if (!log || !Same(QmLogCWriterName(log), "Foreign", 8))
        return 1;
    if (!QmLogCWriteLine(log, "Started", QMLOG_C_ENDED) ||
        !QmLogCBlockBegin(log, QMLOG_C_NOTICE, "Load job list", 13) ||
        !QmLogCWriteLine(log, "12 jobs and more", 7) || !QmLogCBlockEnd(log) ||
        !QmLogCWrite(log, "Done", QMLOG_C_ENDED) || QmLogCWriterLostRows(log) != 0)
        return 2;
    return QmLogCWriterClose(log) && QmLogCWriterCloseAll() ? 0 : 3;
}

static int ReadLog(void)
{
    char text[32];
    size_t length = 0;
    unsigned int index = 0;
    QmLogCRow row;
    QmLogCReader* reader = QmLogCReaderOpen("Foreign", 7);
    if (!reader || QmLogCReaderCount(reader) != 4)
        return 4;
    if (!QmLogCReaderFind(reader, 3, 1, &index) || index != 2)
        return 5;
    if (!QmLogCReaderRead(reader, index, text, sizeof(text), &length, &row) || length != 8 ||
        !Same(text, "12 jobs\n", 8) || row.number != 3 || row.depth != 1 || row.kind != QMLOG_C_NOTICE ||
        row.isHeader != 0)
        return 6;
    if (QmLogCReaderRead(reader, 9, text, sizeof(text), &length, &row) ||
        QmLogCLastError() != QMLOG_C_NO_ROW || !*QmLogCLastErrorText())
        return 7;
    return QmLogCReaderClose(reader) ? 0 : 8;
}

static int WriteOutput(void)
{
    QmLogCOutput* output = QmLogCOutputOpen("Foreign", 7);
    return output && QmLogCOutputWriteLine(output, "100%", 4) && QmLogCOutputWrite(output, "!", 1) &&
                   QmLogCOutputClose(output)
               ? 0
               : 9;
}

static int Refusals(void)
{
    return QmLogCWriteLine(NULL, "a", 1) || QmLogCReaderOpenPath(NULL, 1) ||
                   QmLogCLastError() != QMLOG_C_BAD_ARGUMENT || QmLogCWriterClear(NULL)
               ? 10
               : 0;
}

int mainCRTStartup(void)
{
    int code = WriteLog();
    if (code == 0)
        code = ReadLog();
    if (code == 0)
        code = WriteOutput();
    if (code == 0)
        code = Refusals();
    return code;
}
