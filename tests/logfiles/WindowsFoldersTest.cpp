// Log folders that refuse files, and paths at the limit of what the system takes.

#include "QmLogWriter.h"
#include "tests/support/LogFolder.h"
#include "tests/support/Process.h"

namespace
{

using WindowsFoldersTest = LogFolderTest;

TEST_F(WindowsFoldersTest, WritersAnswerFalseWhereNoFileCanBeMade)
{
    // Nobody makes files in the system's process folder, the super-user included.
    SetVariable("QM_LOG_FOLDER", "Z:\\proc\\");
    CQmLogWriter log;
    log.SetFilePath("Main");
    EXPECT_FALSE(log.Write("text\n"));
    EXPECT_FALSE(log.Write("text\n")); // the refused handle is kept

    // A block takes the depth first, which waits for its file: for ever here, and in peace.
    Child child;
    child.Send("block Main");
    EXPECT_EQ("", child.Answer(300));
    EXPECT_TRUE(child.IsRunning());
}

TEST_F(WindowsFoldersTest, PathsAreTakenUpToTheLimitAndRefusedBeyond)
{
    struct
    {
        std::size_t folder; // its characters, the backslash counted
        bool logFits;       // "Main.LOG"
        bool countersFit;   // "Log.DAT"
    } const cases[] = {
        {251, true, true},
        {252, false, true},
        {253, false, false},
    };
    for (const auto& [length, logFits, countersFit] : cases)
    {
        SCOPED_TRACE("folder of " + std::to_string(length) + " characters");
        SetVariable("QM_LOG_FOLDER", Path(std::string(length - Path("").size() - 1, 'x') + "\\"));
        char path[MAX_PATH] = {};
        EXPECT_EQ(countersFit, QmLogMakeFilePath("Log.DAT", path));

        CQmLogWriter log;
        log.SetFilePath("Main");
        EXPECT_EQ(logFits, log.Write("a\n"));
        EXPECT_EQ(logFits, log.BlockBegin(kPlainKind));
        EXPECT_EQ(logFits ? 3 : 0, QmLogGlobalTimeGet());
        QmLogWriterCloseAll(); // the next folder has its own counters
    }
}

} // namespace
