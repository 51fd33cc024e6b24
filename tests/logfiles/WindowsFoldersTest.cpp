// Log folders that refuse files, and paths at the limit of what the system takes.

#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "tests/support/LogFolder.h"
#include "tests/support/Process.h"

namespace
{

using WindowsFoldersTest = LogFolderTest;

// Nobody makes files in the system's process folder, the super-user included.
constexpr const char* kUnwritable = "Z:\\proc\\";

TEST_F(WindowsFoldersTest, WritersAnswerFalseWhereNoFileCanBeMade)
{
    SetLogFolder(kUnwritable);
    CQmLogWriter log;
    log.SetFilePath("Main");
    EXPECT_FALSE(log.Write("text\n"));
    EXPECT_FALSE(log.Write("text\n")); // the refused handle is kept
    EXPECT_TRUE(log.Close());
    EXPECT_FALSE(log.Write(""));
    log.Clear();
    log.Close();

    // A block takes the depth first, which waits for its file: for ever here, and in peace.
    Child child;
    child.Send("block Main");
    EXPECT_FALSE(child.Answer(300));
    EXPECT_TRUE(child.IsRunning());
    child.Kill();
}

// A folder in the place of a file refuses it alone.
TEST_F(WindowsFoldersTest, EachFileThatIsRefusedIsReported)
{
    ASSERT_TRUE(::CreateDirectoryA(Path("Main.LOG").c_str(), nullptr));
    ASSERT_TRUE(::CreateDirectoryA(Path("Run.ROW").c_str(), nullptr));
    CQmLogWriter noText;
    noText.SetFilePath("Main");
    EXPECT_FALSE(noText.Write("a\n"));
    EXPECT_TRUE(Rows("Main").empty());

    CQmLogWriter noRows;
    noRows.SetFilePath("Run");
    EXPECT_TRUE(noRows.Write("a\nb")) << "text goes out without its rows";
    EXPECT_EQ("a\nb", Contents("Run.LOG"));

    const std::string report = Contents("QmLog.LOG");
    EXPECT_NE(std::string::npos, report.find("CQmLogWriter::Write().CreateFileWrite(Log)"));
    EXPECT_NE(std::string::npos, report.find("CQmLogWriter::WriteRow().CreateFileWrite(Row)"));
}

TEST_F(WindowsFoldersTest, AFileInThePlaceOfTheFolderIsLeftAlone)
{
    SetContents("Taken", "mine");
    SetLogFolder(Path("Taken"));
    char path[MAX_PATH] = "as it was";
    EXPECT_FALSE(QmLogMakeFilePath("Log.DAT", path));
    EXPECT_STREQ("as it was", path);
    EXPECT_EQ(0, QmLogGlobalTimeGet());
    EXPECT_EQ("mine", Contents("Taken"));
}

// A folder of `length` characters, its backslash counted.
std::string LongFolder(const std::string& base, std::size_t length)
{
    return base + std::string(length - base.size() - 1, 'x') + "\\";
}

TEST_F(WindowsFoldersTest, PathsAreTakenUpToTheLimitAndRefusedBeyond)
{
    const struct
    {
        std::size_t folder;
        bool logFits;      // "Main.LOG"
        bool countersFit;  // "Log.DAT"
        bool errorLogFits; // "QmLog.LOG"
    } cases[] = {
        {240, true, true, true},    {250, true, true, true},    {251, true, true, false},
        {252, false, true, false},  {253, false, false, false}, {258, false, false, false},
        {259, false, false, false},
    };
    for (const auto& [length, logFits, countersFit, errorLogFits] : cases)
    {
        SCOPED_TRACE("folder of " + std::to_string(length) + " characters");
        SetLogFolder(LongFolder(Path(""), length));
        struct
        {
            char path[MAX_PATH];
            char behind[4];
        } guarded = {"", "end"};
        EXPECT_EQ(countersFit, QmLogMakeFilePath("Log.DAT", guarded.path));
        EXPECT_EQ(errorLogFits, QmLogMakeFilePath("QmLog.LOG", guarded.path));
        EXPECT_STREQ("end", guarded.behind);
        EXPECT_EQ(0, QmLogGlobalTimeGet());

        CQmLogWriter log;
        log.SetFilePath("Main");
        EXPECT_STREQ(logFits ? "Main" : "", log.GetFilePath());
        EXPECT_EQ(logFits, log.Write("a\n"));
        EXPECT_EQ(logFits, log.BlockBegin(kPlainKind));
        CQmLogReader reader;
        reader.SetFilePath("Main");
        EXPECT_EQ(logFits ? 3u : 0u, reader.GetRowCount());
        EXPECT_EQ(logFits ? 3 : 0, QmLogGlobalTimeGet());
        QmLogWriterCloseAll(); // the next folder has its own counters
    }

    // A folder that does not even fit by itself is none.
    SetLogFolder(LongFolder(Path(""), 260));
    char path[MAX_PATH] = "as it was";
    EXPECT_FALSE(QmLogMakeFilePath("a", path));
    EXPECT_STREQ("as it was", path);
    EXPECT_EQ(0, QmLogGlobalTimeGet());
}

} // namespace
