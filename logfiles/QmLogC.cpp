// The C functions: arguments, handles and failures in the terms of the classes, which decide everything else.
#include "QmLogC.h"

#include "QmLogOutputFile.h"
#include "QmLogReader.h"
#include "QmLogTimes.h"
#include "QmLogWriter.h"
#include "logfiles/ErrorLog.h"
#include "logfiles/LineBuffer.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <string>

namespace
{

static_assert(sizeof(unsigned) == 4 && sizeof(QmLogCRow) == 16, "callers count on these sizes");

// Plain data: nothing of it has to be destroyed when a thread ends or the library is unloaded.
struct LastError
{
    int code;
    char text[logfiles::kReportSize];
};
thread_local LastError lastError;

int TellError(int code, const char* text)
{
    lastError.code = code;
    std::snprintf(lastError.text, sizeof(lastError.text), "%s", text);
    return 0;
}

int RefuseArgument(const char* text)
{
    return TellError(QMLOG_C_BAD_ARGUMENT, text);
}

int RefuseHandle()
{
    return RefuseArgument("the handle is null");
}

// After an operation that has answered false. Not every one of them reports why.
int TellReport(int codeWithout, const char* textWithout)
{
    const char* const report = logfiles::LastReport();
    return *report != '\0' ? TellError(QMLOG_C_FAILED, report) : TellError(codeWithout, textWithout);
}

int Answer(bool done)
{
    return done ? 1 : TellReport(QMLOG_C_FAILED, "refused: there may be no log folder, or not enough memory");
}

// Answers what `operation` does, or 0 where it throws.
template <typename Operation> auto Guarded(Operation operation) noexcept -> decltype(operation())
{
    try
    {
        logfiles::ForgetLastReport();
        return operation();
    }
    catch (const std::bad_alloc&)
    {
        TellError(QMLOG_C_NO_MEMORY, "there is not enough memory");
    }
    catch (...)
    {
        TellError(QMLOG_C_FAILED, "an unexpected failure");
    }
    return {};
}

// Finds the length of a text that ends with its NUL; an absent text is an empty one.
bool TakeText(const char*& text, std::size_t& length)
{
    if (!text)
    {
        text = "";
        return length == 0 || RefuseArgument("the text is null") != 0;
    }
    if (length == QMLOG_C_ENDED)
        length = std::strlen(text);
    return length <= UINT32_MAX || RefuseArgument("the text has 4 GiB or more") != 0;
}

bool TakeName(const char* text, std::size_t length, std::string& name)
{
    if (!TakeText(text, length))
        return false;
    name.assign(text, length);
    return name.find('\0') == std::string::npos || RefuseArgument("there is a NUL in the name") != 0;
}

// Handles are the addresses of the objects.
CQmLogWriter* WriterOf(QmLogCWriter* handle)
{
    return reinterpret_cast<CQmLogWriter*>(handle);
}

const CQmLogWriter* WriterOf(const QmLogCWriter* handle)
{
    return reinterpret_cast<const CQmLogWriter*>(handle);
}

CQmLogReader* ReaderOf(QmLogCReader* handle)
{
    return reinterpret_cast<CQmLogReader*>(handle);
}

QmLogOutputFile* OutputOf(QmLogCOutput* handle)
{
    return reinterpret_cast<QmLogOutputFile*>(handle);
}

// Answers what `operation` answers for the writer and the text.
template <typename Operation>
int WithText(QmLogCWriter* writer, const char* text, std::size_t length, Operation operation)
{
    return Guarded([&] {
        if (!writer)
            return RefuseHandle();
        return TakeText(text, length) ? Answer(operation(*WriterOf(writer), text, length)) : 0;
    });
}

QmLogCReader* OpenReader(const char* name, std::size_t length, void (CQmLogReader::*setName)(const char*))
{
    return Guarded([&]() -> QmLogCReader* {
        std::string text;
        if (!TakeName(name, length, text))
            return nullptr;
        auto reader = std::make_unique<CQmLogReader>();
        ((*reader).*setName)(text.c_str());
        if (Answer(*reader->GetFilePath() != '\0') == 0)
            return nullptr;
        return reinterpret_cast<QmLogCReader*>(reader.release());
    });
}

} // namespace

int QmLogCLastError(void)
{
    return lastError.code;
}

const char* QmLogCLastErrorText(void)
{
    return lastError.text;
}

void QmLogCSetTimes(int on)
{
    QmLogSetTimes(on != 0);
}

QmLogCWriter* QmLogCWriterDefine(const char* name, size_t length)
{
    return Guarded([&]() -> QmLogCWriter* {
        std::string text;
        if (!TakeName(name, length, text))
            return nullptr;
        CQmLogWriter& writer = QmLogWriterDefine(text.c_str());
        return Answer(*writer.GetFilePath() != '\0') != 0 ? reinterpret_cast<QmLogCWriter*>(&writer)
                                                          : nullptr;
    });
}

const char* QmLogCWriterName(const QmLogCWriter* writer)
{
    if (writer)
        return WriterOf(writer)->GetFilePath();
    RefuseHandle();
    return "";
}

int QmLogCWrite(QmLogCWriter* writer, const char* text, size_t length)
{
    return WithText(writer, text, length, [](CQmLogWriter& log, const char* bytes, std::size_t count) {
        return log.Write(bytes, count);
    });
}

int QmLogCWriteLine(QmLogCWriter* writer, const char* text, size_t length)
{
    return WithText(writer, text, length, [](CQmLogWriter& log, const char* bytes, std::size_t count) {
        return log.WriteLine(bytes, count);
    });
}

int QmLogCBlockBegin(QmLogCWriter* writer, unsigned int kind, const char* header, size_t length)
{
    const auto begin = [kind](CQmLogWriter& log, const char* bytes, std::size_t count) {
        if (!log.BlockBegin(static_cast<QmLogBlockKind>(kind)))
            return false;
        if (count > 0)
            log.Write(bytes, count);
        return true;
    };
    return WithText(writer, header, length, begin);
}

int QmLogCBlockEnd(QmLogCWriter* writer)
{
    return Guarded([=] { return writer ? Answer(WriterOf(writer)->BlockEnd()) : RefuseHandle(); });
}

unsigned int QmLogCWriterLostRows(const QmLogCWriter* writer)
{
    if (writer)
        return static_cast<unsigned>(WriterOf(writer)->GetLostRowCount());
    RefuseHandle();
    return 0;
}

int QmLogCWriterClear(QmLogCWriter* writer)
{
    return Guarded([=] {
        if (!writer)
            return RefuseHandle();
        WriterOf(writer)->Clear();
        return 1;
    });
}

int QmLogCWriterClose(QmLogCWriter* writer)
{
    return Guarded([=] { return writer ? Answer(WriterOf(writer)->Close()) : RefuseHandle(); });
}

int QmLogCWriterCloseAll(void)
{
    return Guarded([] { return Answer(QmLogWriterCloseAll()); });
}

QmLogCReader* QmLogCReaderOpen(const char* name, size_t length)
{
    return OpenReader(name, length, &CQmLogReader::SetFilePath);
}

QmLogCReader* QmLogCReaderOpenPath(const char* path, size_t length)
{
    return OpenReader(path, length, &CQmLogReader::SetFullPath);
}

unsigned int QmLogCReaderCount(QmLogCReader* reader)
{
    return Guarded([=] {
        return static_cast<unsigned>(reader ? ReaderOf(reader)->GetRowCount()
                                            : static_cast<unsigned long>(RefuseHandle()));
    });
}

int QmLogCReaderRead(QmLogCReader* reader, unsigned int index, char* text, size_t capacity, size_t* length,
                     QmLogCRow* row)
{
    return Guarded([=] {
        if (!reader)
            return RefuseHandle();
        if (!text && capacity > 0)
            return RefuseArgument("the buffer is null");
        const char* line = nullptr;
        unsigned long bytes = 0;
        CQmLogRow record;
        if (!ReaderOf(reader)->Read(index, line, bytes, record))
            return TellReport(QMLOG_C_NO_ROW, "there is no such row");
        if (length)
            *length = bytes;
        if (row)
            *row = {record.time, record.indent, record.kind, record.blockBegin != 0 ? 1u : 0u};
        if (!text)
            return 1;
        if (bytes > capacity)
            return TellError(QMLOG_C_TOO_SMALL, "the line does not fit into the buffer");
        std::memcpy(text, line, bytes);
        return 1;
    });
}

int QmLogCReaderFind(QmLogCReader* reader, unsigned int number, int forward, unsigned int* index)
{
    return Guarded([=] {
        if (!reader)
            return RefuseHandle();
        if (!index)
            return RefuseArgument("the index is null");
        unsigned long foundNumber = 0;
        unsigned long found = 0;
        if (!ReaderOf(reader)->Find(number, forward != 0, foundNumber, found))
            return TellReport(QMLOG_C_NO_ROW, "the log has no rows");
        *index = static_cast<unsigned>(found);
        return 1;
    });
}

int QmLogCReaderClose(QmLogCReader* reader)
{
    return Guarded([=] {
        if (!reader)
            return RefuseHandle();
        delete ReaderOf(reader);
        return 1;
    });
}

QmLogCOutput* QmLogCOutputOpen(const char* name, size_t length)
{
    return Guarded([&]() -> QmLogCOutput* {
        std::string text;
        if (!TakeName(name, length, text))
            return nullptr;
        return reinterpret_cast<QmLogCOutput*>(new QmLogOutputFile(text.c_str()));
    });
}

int QmLogCOutputWrite(QmLogCOutput* output, const char* text, size_t length)
{
    return Guarded([&] {
        if (!output)
            return RefuseHandle();
        if (!TakeText(text, length))
            return 0;
        OutputOf(output)->WriteDirect(text, length);
        return 1;
    });
}

int QmLogCOutputWriteLine(QmLogCOutput* output, const char* text, size_t length)
{
    return Guarded([&] {
        if (!output)
            return RefuseHandle();
        if (!TakeText(text, length))
            return 0;
        logfiles::LineBuffer line;
        if (!line.Assign(text, length))
            throw std::bad_alloc();
        *(line.Text() - 1) = '\n';
        OutputOf(output)->WriteDirect(line.Text() - 1, 1 + line.Length());
        return 1;
    });
}

int QmLogCOutputClose(QmLogCOutput* output)
{
    return Guarded([=] {
        if (!output)
            return RefuseHandle();
        delete OutputOf(output);
        return 1;
    });
}
