/* Copies files into a log, each in a block of its own, and prints the log. C89, and nothing but QmLogC.h.
 *
 * With other compilers: cl main.c /I DIR\include DIR\lib\QmLog.lib */
#include <QmLogC.h>

#include <stdio.h>
#include <stdlib.h>

static int Fail(const char* what)
{
    fprintf(stderr, "c_log: %s: %s\n", what, QmLogCLastErrorText());
    return 1;
}

/* One line of the file after the other; a longer one than there is room for becomes several. */
static int CopyFile(QmLogCWriter* log, const char* path)
{
    char line[4096];
    int done = 1;
    FILE* file = fopen(path, "r");
    if (!QmLogCBlockBegin(log, file ? QMLOG_C_NOTICE : QMLOG_C_ERROR, path, QMLOG_C_ENDED))
        done = 0;
    else
    {
        if (!file)
            done = QmLogCWriteLine(log, "cannot be opened", QMLOG_C_ENDED);
        while (done && file && fgets(line, sizeof(line), file))
            done = QmLogCWriteLine(log, line, QMLOG_C_ENDED);
        QmLogCBlockEnd(log);
    }
    if (file)
        fclose(file);
    return done;
}

/* The buffer grows with the longest line. */
static int PrintLog(QmLogCReader* reader)
{
    char* text = NULL;
    size_t capacity = 0;
    size_t length = 0;
    unsigned int index = 0;
    const unsigned int count = QmLogCReaderCount(reader);
    QmLogCRow row;
    while (index < count)
    {
        if (text && QmLogCReaderRead(reader, index, text, capacity, &length, &row))
        {
            printf("%5u %*s%.*s", row.number, (int)row.depth * 2, "", (int)length, text);
            ++index;
            continue;
        }
        if (text && QmLogCLastError() != QMLOG_C_TOO_SMALL)
            break;
        free(text);
        capacity = length < 1024 ? 1024 : length;
        text = (char*)malloc(capacity);
        if (!text)
            break;
    }
    printf("\n");
    free(text);
    return index == count;
}

int main(int count, char** paths)
{
    int i = 0;
    int code = 0;
    QmLogCReader* reader = NULL;
    QmLogCWriter* log = QmLogCWriterDefine("Main", QMLOG_C_ENDED);
    if (!log || !QmLogCWriteLine(log, "Started", QMLOG_C_ENDED))
        return Fail("the log cannot be written");
    for (i = 1; i < count; ++i)
    {
        if (!CopyFile(log, paths[i]))
            return Fail(paths[i]);
    }
    QmLogCWriterCloseAll(); /* now other processes may write */

    reader = QmLogCReaderOpen("Main", QMLOG_C_ENDED);
    if (!reader)
        return Fail("the log cannot be opened");
    if (!PrintLog(reader))
        code = Fail("the log cannot be read");
    QmLogCReaderClose(reader);
    return code;
}
