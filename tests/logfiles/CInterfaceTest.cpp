// The C functions: they do what the classes do, and answer what the classes cannot be asked.

#include "QmLogC.h"
#include "QmLogOutputFile.h"
#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "tests/support/FailingMemory.h"
#include "tests/support/MemorySession.h"
#include "zemacore/File.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <thread>

namespace
{

// What a test finds of it may come from the one before: a process has ten writers, for all tests.
QmLogCWriter* Log()
{
    return QmLogCWriterDefine("C", QMLOG_C_ENDED);
}

struct CloseReader
{
    void operator()(QmLogCReader* reader) const { QmLogCReaderClose(reader); }
};
using Reader = std::unique_ptr<QmLogCReader, CloseReader>;

// "TEXT number depth.kind", with '!' for a header; the code of the failure if it cannot be read.
std::string ReadRow(QmLogCReader* reader, unsigned index)
{
    char text[100];
    std::size_t length = 0;
    QmLogCRow row;
    if (QmLogCReaderRead(reader, index, text, sizeof(text), &length, &row) == 0)
        return std::to_string(QmLogCLastError());
    return std::string(text, length) + ' ' + std::to_string(row.number) + ' ' + std::to_string(row.depth) +
           '.' + std::to_string(row.kind) + (row.isHeader != 0 ? "!" : "");
}

TEST(CInterface, WritesWhatTheClassWrites)
{
    std::string text[2];
    std::string rows[2];
    for (const bool byClass : {false, true})
    {
        MemorySession session;
        QmLogCWriter* const log = QmLogCWriterDefine("C writes", 8);
        CQmLogWriter object = WriterOf("C writes");
        EXPECT_STREQ("C writes", QmLogCWriterName(log));
        if (byClass)
        {
            EXPECT_TRUE(object.Write("") && object.Write("a\nb") && object.WriteLine("line") &&
                        object.BlockBegin(kErrorKind) && object.Write("caption") &&
                        object.BlockBegin(kEnclosingKind) && object.WriteLine("\ndeep\r\n") &&
                        object.BlockEnd() && object.Close() &&
                        object.WriteLine(std::string(900, 'x').c_str()) && object.BlockEnd() &&
                        object.BlockEnd() && object.WriteLine(""));
        }
        else
        {
            EXPECT_TRUE(QmLogCWrite(log, nullptr, 0) && QmLogCWrite(log, "a\nb, cut off", 3) &&
                        QmLogCWriteLine(log, "line", QMLOG_C_ENDED) &&
                        QmLogCBlockBegin(log, QMLOG_C_ERROR, "caption", QMLOG_C_ENDED) &&
                        QmLogCBlockBegin(log, QMLOG_C_ENCLOSING, nullptr, 0) &&
                        QmLogCWriteLine(log, "\ndeep\r\nx", 7) && QmLogCBlockEnd(log) &&
                        QmLogCWriterClose(log) && QmLogCWriteLine(log, std::string(901, 'x').c_str(), 900) &&
                        QmLogCBlockEnd(log) && QmLogCBlockEnd(log) && QmLogCWriteLine(log, nullptr, 0));
        }
        text[byClass] = session.Text("C writes");
        rows[byClass] = session.files.Contents(session.Path("C writes.ROW"));
    }
    EXPECT_EQ(text[true], text[false]);
    EXPECT_EQ(rows[true], rows[false]);
    EXPECT_EQ(7u * sizeof(CQmLogRow), rows[false].size());
}

TEST(CInterface, ReadsRowsByNameAndByPath)
{
    MemorySession session;
    QmLogCWriter* const log = QmLogCWriterDefine("C reads", 7);
    EXPECT_EQ(1, QmLogCWriteLine(log, "a\0b", 3));
    EXPECT_EQ(1, QmLogCBlockBegin(log, QMLOG_C_DETAIL, "head", 4));
    EXPECT_EQ(1, QmLogCWriteLine(QmLogCWriterDefine("Other", 5), "between", 7));
    EXPECT_EQ(1, QmLogCWriteLine(log, "last", 4));
    EXPECT_EQ(1, QmLogCBlockEnd(log));
    session.files.Rename(session.Path("Other.LOG"), "D:\\far\\Other.LOG");
    session.files.Rename(session.Path("Other.ROW"), "D:\\far\\Other.ROW");

    const Reader reader(QmLogCReaderOpen("C reads and more", 7));
    EXPECT_EQ(3u, QmLogCReaderCount(reader.get()));
    EXPECT_EQ(std::string("a\0b\n 1 0.0!", 11), ReadRow(reader.get(), 0));
    EXPECT_EQ("head\n 2 1.3!", ReadRow(reader.get(), 1));
    EXPECT_EQ("last 4 1.3", ReadRow(reader.get(), 2));
    EXPECT_EQ(std::to_string(QMLOG_C_NO_ROW), ReadRow(reader.get(), 3));
    unsigned row = 9;
    EXPECT_EQ(1, QmLogCReaderFind(reader.get(), 3, 1, &row));
    EXPECT_EQ(2u, row);
    EXPECT_EQ(1, QmLogCReaderFind(reader.get(), 3, 0, &row));
    EXPECT_EQ(1u, row);

    const Reader far(QmLogCReaderOpenPath("D:\\far\\Other.row", QMLOG_C_ENDED));
    EXPECT_EQ(1u, QmLogCReaderCount(far.get()));
    EXPECT_EQ("between 3 0.0!", ReadRow(far.get(), 0));

    const Reader none(QmLogCReaderOpen("None", 4));
    EXPECT_EQ(0u, QmLogCReaderCount(none.get()));
    EXPECT_EQ(0, QmLogCReaderFind(none.get(), 1, 1, &row));
    EXPECT_EQ(QMLOG_C_NO_ROW, QmLogCLastError());
}

TEST(CInterface, CopiesALineOnlyWhereItFits)
{
    MemorySession session;
    QmLogCWriteLine(Log(), "12345", 5);
    const Reader reader(QmLogCReaderOpen("C", 1));
    char text[] = "......";
    std::size_t length = 0;
    QmLogCRow row = {};
    EXPECT_EQ(0, QmLogCReaderRead(reader.get(), 0, text, 4, &length, &row));
    EXPECT_EQ(QMLOG_C_TOO_SMALL, QmLogCLastError());
    EXPECT_STREQ("......", text);
    EXPECT_EQ(5u, length);
    EXPECT_EQ(1u, row.number);
    EXPECT_EQ(1, QmLogCReaderRead(reader.get(), 0, text, length, nullptr, nullptr));
    EXPECT_STREQ("12345.", text);
    length = 0;
    EXPECT_EQ(1, QmLogCReaderRead(reader.get(), 0, nullptr, 0, &length, nullptr));
    EXPECT_EQ(5u, length);
}

TEST(CInterface, WritesOutputAndClosesIt)
{
    MemorySession session;
    QmLogCOutput* const output = QmLogCOutputOpen("run", 3);
    ASSERT_NE(nullptr, output);
    EXPECT_EQ(1, QmLogCOutputWrite(output, "%d", 2)); // goes nowhere: there is no folder for it here
    EXPECT_EQ(1, QmLogCOutputWriteLine(output, std::string(5000, '%').c_str(), QMLOG_C_ENDED));
    EXPECT_EQ(1, QmLogCOutputClose(output));
}

TEST(CInterface, RefusesWhatIsNoArgument)
{
    MemorySession session;
    QmLogCWriter* const log = Log();
    const Reader reader(QmLogCReaderOpen("C", 1));
    QmLogCOutput* const output = QmLogCOutputOpen("run", 3);
    char text[8];
    unsigned row = 0;
    const std::size_t tooLong = std::size_t{1} << 32;
    const std::function<bool()> calls[] = {
        [] { return QmLogCWriterDefine(nullptr, 1); },
        [] { return QmLogCWriterDefine(nullptr, QMLOG_C_ENDED); },
        [] { return QmLogCWriterDefine("a\0b", 3); },
        [] { return *QmLogCWriterName(nullptr); },
        [] { return QmLogCWrite(nullptr, "a", 1); },
        [=] { return QmLogCWrite(log, nullptr, 1); },
        [=] { return QmLogCWrite(log, "a", tooLong); },
        [] { return QmLogCWriteLine(nullptr, "a", 1); },
        [=] { return QmLogCWriteLine(log, nullptr, QMLOG_C_ENDED); },
        [] { return QmLogCBlockBegin(nullptr, 0, "a", 1); },
        [=] { return QmLogCBlockBegin(log, 0, nullptr, 1); },
        [] { return QmLogCBlockEnd(nullptr); },
        [] { return QmLogCWriterLostRows(nullptr); },
        [] { return QmLogCWriterClear(nullptr); },
        [] { return QmLogCWriterClose(nullptr); },
        [] { return QmLogCReaderOpen(nullptr, 1); },
        [] { return QmLogCReaderOpenPath("C:\\a\0b", 6); },
        [] { return QmLogCReaderCount(nullptr); },
        [&] { return QmLogCReaderRead(nullptr, 0, text, sizeof(text), nullptr, nullptr); },
        [&] { return QmLogCReaderRead(reader.get(), 0, nullptr, 1, nullptr, nullptr); },
        [&] { return QmLogCReaderFind(nullptr, 1, 1, &row); },
        [&] { return QmLogCReaderFind(reader.get(), 1, 1, nullptr); },
        [] { return QmLogCReaderClose(nullptr); },
        [] { return QmLogCOutputOpen(nullptr, 1); },
        [] { return QmLogCOutputWrite(nullptr, "a", 1); },
        [=] { return QmLogCOutputWrite(output, nullptr, 1); },
        [] { return QmLogCOutputWriteLine(nullptr, "a", 1); },
        [=] { return QmLogCOutputWriteLine(output, nullptr, 1); },
        [] { return QmLogCOutputClose(nullptr); },
    };
    for (std::size_t i = 0; i < std::size(calls); ++i)
    {
        QmLogCReaderOpenPath("", 0); // another failure
        EXPECT_EQ(QMLOG_C_FAILED, QmLogCLastError());
        EXPECT_FALSE(calls[i]()) << i;
        EXPECT_EQ(QMLOG_C_BAD_ARGUMENT, QmLogCLastError()) << i;
        EXPECT_STRNE("", QmLogCLastErrorText()) << i;
    }
    QmLogCOutputClose(output);
    EXPECT_EQ("", session.Text("C"));
}

TEST(CInterface, TellsEachThreadWhyItsCallFailed)
{
    MemorySession session;
    session.files.SetFault({1, ZEMA::Fault::InvalidHandle, true});
    EXPECT_EQ(0, QmLogCWriteLine(Log(), "a", 1));
    EXPECT_EQ(QMLOG_C_FAILED, QmLogCLastError());
    EXPECT_STREQ("CQmLogWriter::Write().CreateFileWrite(Log): Error 5.", QmLogCLastErrorText());
    std::thread([] {
        EXPECT_EQ(QMLOG_C_OK, QmLogCLastError());
        EXPECT_STREQ("", QmLogCLastErrorText());
        QmLogCBlockEnd(nullptr);
    }).join();
    EXPECT_EQ(QMLOG_C_FAILED, QmLogCLastError());

    // Refused twice, it is reported once, and told twice. The name is longer than what is told.
    session.files.ClearFault();
    const std::string path(1000, 'p');
    for (int time = 0; time < 2; ++time)
    {
        QmLogCBlockEnd(nullptr);
        EXPECT_EQ(nullptr, QmLogCReaderOpenPath(path.c_str(), QMLOG_C_ENDED));
        EXPECT_EQ(0, std::string(QmLogCLastErrorText()).find("CQmLogReader::SetFullPath(): the path is"));
    }

    QmLogCWriterCloseAll();
    session.manager.hasAccess = false; // nothing to write into, and nothing that says so
    const Reader reader(QmLogCReaderOpen("Nowhere", 7));
    EXPECT_EQ(0u, QmLogCReaderCount(reader.get()));
}

TEST(CInterface, LetsNoExceptionOut)
{
    MemorySession session;
    const std::string path(200, 'p');
    for (int allocations = 0; allocations < 2; ++allocations)
    {
        const FailingMemory failing(allocations);
        EXPECT_EQ(nullptr, QmLogCReaderOpen(path.c_str(), path.size()));
        EXPECT_EQ(QMLOG_C_NO_MEMORY, QmLogCLastError()) << allocations;
    }
    session.files.SetFault({1, ZEMA::Fault::Kill, true});
    EXPECT_EQ(0, QmLogCWrite(Log(), "a", 1));
    EXPECT_EQ(QMLOG_C_FAILED, QmLogCLastError());
}

TEST(CInterface, ClosesDeletesAndCounts)
{
    MemorySession session;
    QmLogCWriter* const log = Log();
    EXPECT_EQ(1, QmLogCWriteLine(log, "a", 1));
    EXPECT_NE(0u, session.files.OpenHandles());
    EXPECT_EQ(1, QmLogCWriterCloseAll());
    EXPECT_EQ(0u, session.files.OpenHandles());
    const unsigned lost = QmLogCWriterLostRows(log);
    EXPECT_EQ(1, QmLogCWriterClear(log));
    EXPECT_FALSE(session.files.Exists(session.Path("C.LOG")));

    const HANDLE index = ZEMA_CreateFile(session.Path("C.ROW").c_str(), GENERIC_WRITE, 0, nullptr,
                                         OPEN_ALWAYS, 0, nullptr); // so that no writer can open it
    EXPECT_EQ(1, QmLogCWriteLine(log, "a", 1));
    ZEMA::FileCalls().Close(index);
    EXPECT_EQ(QmLogWriterDefine("C").GetLostRowCount(), QmLogCWriterLostRows(log));
    EXPECT_LT(lost, QmLogCWriterLostRows(log));
}

} // namespace
