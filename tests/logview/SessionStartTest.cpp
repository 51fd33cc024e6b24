// The beginning of a session: what is deleted, what is written, and when it is refused.

#include "logview/SessionStart.h"

#include "QmLogReader.h"
#include "logview/FileLook.h"
#include "logview/LogNames.h"
#include "logview/ReaderRows.h"
#include "tests/support/MemorySession.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace
{

struct SessionStartTest : testing::Test
{
    // What another process has open.
    HANDLE Open(const char* file, DWORD access, DWORD share)
    {
        return session.files.Create(session.Path(file).c_str(), access, share, OPEN_ALWAYS, 0);
    }

    MemorySession session;
};

TEST_F(SessionStartTest, ReplacesWhatWasThereByTheHeader)
{
    CQmLogWriter& run = QmLogWriterDefine("Run");
    run.Write("old\n"); // stays open, as a host's writer does
    const char* text = nullptr;
    unsigned long length = 0;
    CQmLogRow row;
    ASSERT_TRUE(QmLogReaderDefine("Run").Read(0, text, length, row));

    session.files.SetContents(session.Path("Log.TIM"), "times");

    ASSERT_TRUE(logview::StartSession());
    EXPECT_EQ("", session.Text("Run"));
    EXPECT_FALSE(session.files.Exists(session.Path("Log.TIM")));
    EXPECT_EQ("\nQmLog\n" // a block begins with a fresh line, the first one too
              "Activated on VK.INI by:\n"
              "[QmLog]\n"
              "Active=1\n"
              "Dev Version: 20041014\n"
              "Text FilePath: C:\\Logs\\Main.LOG\n"
              "Log.DAT,Main.LOG and Main.ROW are deleted before each session.\n"
              "QmLog.LOG contains QmLog internal errors.\n"
              "Ensure Disk Free Space availability.\n"
              "S'il n'y a pas d'autres messages, c'est peut-etre que VKFSM n'est pas en version patchee.",
              session.Text("Main"));
    EXPECT_TRUE(session.Rows("Main").starts_with("1@1.0! 7@2.0! 31@3.3! 39@3.3 ")) << session.Rows("Main");

    // Nothing is kept: another process can write, and this one goes on in the new session.
    const HANDLE other = Open("Log.DAT", GENERIC_READ | GENERIC_WRITE, 0);
    EXPECT_NE(INVALID_HANDLE_VALUE, other);
    session.files.Close(other);
    const unsigned long header = session.Time();
    run.Write("new");
    EXPECT_NE(std::string::npos, session.Text("Run").find("new"));
    EXPECT_EQ(header + 1, session.Time());
    EXPECT_TRUE(logview::StartSession()) << "again, as for a second window";
    EXPECT_EQ("", session.Text("Run"));
}

TEST_F(SessionStartTest, TouchesNothingWhileAFileIsInUse)
{
    QmLogWriterDefine("Main").Write("kept");
    QmLogWriterCloseAll();
    const std::string kept = session.Text("Main");
    for (const char* const file : {"Main.LOG", "SQL.ROW", "Log.DAT"})
    {
        const HANDLE reader = Open(file, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
        EXPECT_FALSE(logview::StartSession()) << file;
        session.files.Close(reader);
        EXPECT_EQ(kept, session.Text("Main")) << file;
    }
    EXPECT_TRUE(logview::StartSession());

    session.manager.folder.clear();
    EXPECT_FALSE(logview::StartSession()) << "without a log folder";
    EXPECT_FALSE(logview::WriteSampleSession());
}

// Nothing here may wait, which the files in memory would turn into an exception, or make or change a file.
TEST_F(SessionStartTest, LookingWaitsForNobodyAndChangesNothing)
{
    const std::string counters = session.Path("Log.DAT");
    EXPECT_EQ(0, logview::AskTime(counters));
    EXPECT_EQ(0, logview::AskTime(""));
    QmLogWriterDefine("Run").Write("a\nb");
    EXPECT_EQ(2, logview::AskTime(counters)) << "while a process has it open for update";
    QmLogWriterCloseAll();
    session.files.SetContents(session.Path("SQL.ROW"), std::string(40, '\0')); // without its text
    const std::vector<std::string> paths = session.files.Paths();

    logview::ReaderRows rows;
    for (unsigned file = 0; file < logview::kFileCount + 1; ++file)
    {
        CQmLogRow row;
        char text[10];
        unsigned long time = 0;
        unsigned long at = 0;
        EXPECT_EQ(file == 1 || file == 3, rows.ReadRows(file, 0, 1, &row) == 1) << file;
        EXPECT_EQ(file == 1 || file == 3, rows.Find(file, 1, true, time, at)) << file;
        EXPECT_EQ(file == 1 ? 3u : 0u, rows.ReadText(file, 0, sizeof(text), text)) << file;
    }
    EXPECT_EQ(paths, session.files.Paths()) << "nothing is reported about logs that are not there";
    for (unsigned file = 0; file < logview::kFileCount; ++file)
        QmLogReaderDefine(logview::GetLogName(static_cast<int>(file))).Close(); // while its files are there

    const HANDLE keeper = Open("Log.DAT", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    ASSERT_TRUE(session.files.Lock(keeper, 0, ~0ull));
    EXPECT_EQ(std::nullopt, logview::AskTime(counters));
    EXPECT_FALSE(logview::WriteSampleSession());
    EXPECT_EQ(paths, session.files.Paths());
    session.files.Close(keeper);
    const HANDLE alone = Open("Log.DAT", GENERIC_READ, 0);
    EXPECT_EQ(std::nullopt, logview::AskTime(counters));
    session.files.Close(alone);
    EXPECT_EQ(2, logview::AskTime(counters));
}

// A process that takes the counters between their deletion and the header.
TEST_F(SessionStartTest, DoesNotWaitForAProcessThatComesBetween)
{
    ASSERT_TRUE(logview::StartSession());
    session.files.ForgetCalls();
    ASSERT_TRUE(logview::StartSession()); // as the third time
    const std::vector<std::string>& calls = session.files.Calls();
    const auto deleted = std::find(calls.begin(), calls.end(), "Delete " + session.Path("Log.DAT"));
    ASSERT_NE(calls.end(), deleted);
    const auto number = static_cast<unsigned long>(deleted - calls.begin()) + 2; // of the next call
    session.files.ForgetCalls();
    session.files.SetFault({number, ZEMA::Fault::Fail, true, ERROR_SHARING_VIOLATION});
    EXPECT_FALSE(logview::StartSession());
}

TEST_F(SessionStartTest, TheSampleSessionHasAnErrorAndNoDamage)
{
    ASSERT_TRUE(logview::WriteSampleSession());
    EXPECT_NE(std::string::npos, session.Rows("Main").find(".2!"));
    EXPECT_EQ(1u, session.Text("SQL").find("SQL 1\nselect * from table;\nSQL 2\n"));
    EXPECT_EQ(1u, session.Text("Source").find("Key="));
}

} // namespace
