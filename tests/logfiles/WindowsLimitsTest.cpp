// Files as large as offsets reach, and counters at their ends.

#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "tests/support/LogFolder.h"

#include <windows.h>

namespace
{

class WindowsLimitsTest : public LogFolderTest
{
protected:
    std::uint64_t FreeBytes() const
    {
        ULARGE_INTEGER free = {};
        ::GetDiskFreeSpaceExA(Path("").c_str(), &free, nullptr, nullptr);
        return free.QuadPart;
    }

    // "Main" with a text of `size` bytes, all of it a hole, and the one row that stands for it.
    // False where the file system stores holes.
    bool MakeHugeLog(std::uint64_t size) const
    {
        CQmLogRow row;
        row.time = 1;
        SetContents("Main.ROW", std::string(reinterpret_cast<const char*>(&row), sizeof(row)));
        SetContents("Log.DAT", std::string("\1\0\0\0\0\0\0\0", 8));
        SetContents("Main.LOG", "");
        const std::uint64_t before = FreeBytes();
        LARGE_INTEGER end;
        end.QuadPart = static_cast<LONGLONG>(size);
        const HANDLE file =
            ::CreateFileA(Path("Main.LOG").c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        const bool made = ::SetFilePointerEx(file, end, nullptr, FILE_BEGIN) && ::SetEndOfFile(file);
        ::CloseHandle(file);
        return made && before < FreeBytes() + size / 2;
    }

    // Line `index` as the reader gives it.
    std::string Line(unsigned long index) const
    {
        CQmLogReader reader;
        reader.SetFilePath("Main");
        const char* text = nullptr;
        unsigned long length = 0;
        CQmLogRow row;
        return reader.Read(index, text, length, row) ? std::string(text, length) : "no line";
    }
};

TEST_F(WindowsLimitsTest, LinesAroundTwoGibibytesAreWrittenAndRead)
{
    for (const std::uint32_t size : {0x7FFFFFFCu, 0x80000000u, 0xFFFFFF00u})
    {
        SCOPED_TRACE(size);
        if (!MakeHugeLog(size))
            GTEST_SKIP() << "no file of this size without its storage";
        CQmLogWriter log;
        log.SetFilePath("Main");
        EXPECT_TRUE(log.Write("\nfirst\nlast"));
        const std::vector<CQmLogRow> rows = Rows("Main");
        ASSERT_EQ(3u, rows.size());
        EXPECT_EQ(size + 1, rows[1].offset);
        EXPECT_EQ(size + 7, rows[2].offset);
        EXPECT_EQ("first\n", Line(1));
        EXPECT_EQ("last", Line(2));
        CQmLogReader reader;
        reader.SetFilePath("Main");
        EXPECT_EQ(size + 11, reader.GetLogFileSize());
        unsigned long length = 0;
        EXPECT_TRUE(reader.ReadLength(0, length));
        EXPECT_EQ(size + 1, length);
        QmLogWriterCloseAll();
    }
}

TEST_F(WindowsLimitsTest, AWriteBeyondTheLastOffsetIsRefusedAndChangesNothing)
{
    if (!MakeHugeLog(0xFFFFFFFF - 4))
        GTEST_SKIP() << "no file of this size without its storage";
    CQmLogReader reader;
    reader.SetFilePath("Main");
    CQmLogWriter log;
    log.SetFilePath("Main");
    EXPECT_FALSE(log.Write("\nabcd"));
    EXPECT_EQ(0xFFFFFFFF - 4, reader.GetLogFileSize());
    EXPECT_EQ(1u, reader.GetRowCount());
    EXPECT_EQ(1, QmLogGlobalTimeGet()) << "no number was taken";

    EXPECT_TRUE(log.Write("\nabc"));
    EXPECT_EQ(0xFFFFFFFF, reader.GetLogFileSize());
    EXPECT_EQ("abc", Line(1));
    unsigned long length = 0;
    EXPECT_TRUE(reader.ReadLength(1, length));
    EXPECT_EQ(4u, length);

    EXPECT_FALSE(log.Write("x"));
    EXPECT_TRUE(log.Write("")) << "nothing to write fits always";
    EXPECT_EQ(0xFFFFFFFF, reader.GetLogFileSize());
    EXPECT_EQ(2u, reader.GetRowCount());
    EXPECT_NE(std::string::npos, Contents("QmLog.LOG").find("CQmLogWriter::Write().WriteFile()"));
}

TEST_F(WindowsLimitsTest, CountersPassTheirEnds)
{
    SetContents("Log.DAT", "\xFE\xFF\xFF\xFF\xFF"
                           "abc");
    EXPECT_EQ(-2, QmLogGlobalTimeGet());
    CQmLogWriter log;
    log.SetFilePath("Main");
    log.Write("a\nb\nc");
    log.BlockBegin(kErrorKind);
    const std::vector<CQmLogRow> rows = Rows("Main");
    ASSERT_EQ(4u, rows.size());
    EXPECT_EQ(0xFFFFFFFF, rows[0].time);
    EXPECT_EQ(0u, rows[1].time);
    EXPECT_EQ(1u, rows[2].time);
    EXPECT_EQ(0, rows[3].indent);
    EXPECT_EQ(std::string("\2\0\0\0\0abc", 8), Contents("Log.DAT"));
    log.BlockEnd();
    EXPECT_EQ(std::string("\2\0\0\0\xFF"
                          "abc",
                          8),
              Contents("Log.DAT"));
}

TEST_F(WindowsLimitsTest, ABlockBeyondTheDeepestIsRefused)
{
    CQmLogWriter log;
    log.SetFilePath("Main");
    for (int depth = 1; depth <= CQmLogWriter::kMaxDepth; ++depth)
        ASSERT_TRUE(log.BlockBegin(kDetailKind)) << depth;
    const std::string text = Contents("Main.LOG");
    EXPECT_FALSE(log.BlockBegin(kDetailKind));
    EXPECT_EQ(text, Contents("Main.LOG"));
    EXPECT_EQ(254, Rows("Main").back().indent);
    for (int depth = CQmLogWriter::kMaxDepth; depth >= 1; --depth)
        ASSERT_TRUE(log.BlockEnd()) << depth;
    EXPECT_FALSE(log.BlockEnd());
    EXPECT_TRUE(log.Write("outside"));
    EXPECT_EQ(0, Rows("Main").front().offset - 1);
    EXPECT_EQ("", Findings({"Main"}));
}

} // namespace
