// A file as large as offsets reach.

#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "tests/support/LogFolder.h"

#include <filesystem>

namespace
{

using WindowsLimitsTest = LogFolderTest;

TEST_F(WindowsLimitsTest, AWriteBeyondTheLastOffsetIsRefusedAndChangesNothing)
{
    // A text that is a hole, five bytes below the limit, and the one row that stands for it.
    constexpr std::uint64_t kSize = 0xFFFFFFFF - 4;
    CQmLogRow row;
    row.time = 1;
    SetContents("Main.ROW", std::string(reinterpret_cast<const char*>(&row), sizeof(row)));
    SetContents("Log.DAT", std::string("\1\0\0\0\0\0\0\0", 8));
    SetContents("Main.LOG", "");
    const std::uint64_t freeBefore = std::filesystem::space(Path("")).available;
    std::error_code error;
    std::filesystem::resize_file(Path("Main.LOG"), kSize, error);
    if (error || std::filesystem::space(Path("")).available + kSize / 2 < freeBefore)
        GTEST_SKIP() << "no file of this size without its storage";

    CQmLogReader reader;
    reader.SetFilePath("Main");
    CQmLogWriter log;
    log.SetFilePath("Main");
    EXPECT_FALSE(log.Write("\nabcd"));
    EXPECT_EQ(kSize, reader.GetLogFileSize());
    EXPECT_EQ(1u, reader.GetRowCount());
    EXPECT_EQ(1, QmLogGlobalTimeGet()) << "a number was taken";
    EXPECT_NE(std::string::npos, Contents("QmLog.LOG").find("CQmLogWriter::Write().WriteFile()"));

    EXPECT_TRUE(log.Write("\nabc"));
    EXPECT_FALSE(log.Write("x"));
    EXPECT_TRUE(log.Write("")) << "nothing to write fits always";
    EXPECT_EQ(0xFFFFFFFF, reader.GetLogFileSize());
    const char* text = nullptr;
    unsigned long length = 0;
    ASSERT_TRUE(reader.Read(1, text, length, row));
    EXPECT_STREQ("abc", text);
}

} // namespace
