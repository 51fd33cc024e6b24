#include "LogtoolTest.h"

// Depth counts over all logs: a block that A begins within one of B is deeper than it.
TEST_F(LogtoolTest, TreeFindsTheBlockOfEachRow)
{
    const std::pair<const char*, const char*> cases[] = {
        {"A:x", ""},
        {"A+a 'A:\nx' A- A:y", "a  [A, 2 rows]\n"},                       // ended by a lower row
        {"A+a A- A+b 'A:\nx'", "a  [A, 1 row]\nb  [A, 2 rows]\n"},        // ended by the next header
        {"A+a A+b 'A:\nx' A- A:y", "a  [A, 4 rows]\n  b  [A, 2 rows]\n"}, // nested
        {"A+a B+b A+c B- A- A+d", "a  [A, 4 rows]\n  b  [B, 2 rows]\n    c  [A, 1 row]\n  d  [A, 1 row]\n"},
        {"A+a 'B:x\ny'", "a  [A, 3 rows]\n"},                             // B has no block of its own
        {"A+a A- A:x B:y", "a  [A, 1 row]\n"},                            // no block is open any more
        {"A+a B+b A- A:x 'B:\ny'", "a  [A, 4 rows]\n  b  [B, 3 rows]\n"}, // outlives its parent
        {"B+a A+b 'B:\nx' C:y", "a  [B, 4 rows]\n  b  [A, 2 rows]\n"},    // C: the one opened last
        {"A+a A- B+b B- B:y C:z", "a  [A, 1 row]\nb  [B, 1 row]\n"},      // ended by a header of its depth
        {"A+a A- B+b C+c", "a  [A, 1 row]\nb  [B, 2 rows]\n  c  [C, 1 row]\n"}, // equal depth is no parent
    };
    for (const auto& [script, blocks] : cases)
    {
        PlayNew(script);
        const std::string tree = Run("tree");
        EXPECT_EQ(blocks, tree.substr(tree.find('\n') + 1)) << script;
    }
}

// The error "inner" lies in the error "No file", that of Run in both. Service's last row has no text yet.
const char kBlocks[] = "Main:start 'Main?  Load\x1b list \n' Main:step 'Main!No file' 'Main:\nwhere' "
                       "Main!inner 'Run!Job 7' Run- 'Run:next job' Main- Main- Main+again Main- Main- "
                       "'Main:end\n' 'Service+a\x1b caption that is too long to be shown on one line of a "
                       "terminal with its log' Service- Service: 'Run:\nlater'";

TEST_F(LogtoolTest, TreeOutlinesTheLogsThereAre)
{
    Play(kBlocks);
    EXPECT_EQ("3 logs, 14 rows, 6 blocks, 3 errors\n"
              "Load\x1b list  [Main, 8 rows, 3 errors]\n"
              "  No file  [Main, 5 rows, 3 errors]\n"
              "    inner  [Main, 3 rows, 2 errors]\n",
              Run("tree --errors --depth 3"));
    host.terminal = true;
    EXPECT_EQ(
        "2 logs, 5 rows, 2 blocks, 1 error\n"
        "Job 7  [Run, 1 row, 1 error]\n"
        "a\\x1b caption that is too long to be shown on one line of a terminal wit...  [Service, 1 row]\n",
        Run("tree --log run --log service --log SQL"));
}

TEST_F(LogtoolTest, ErrorsComeUnderTheirHeadersAndOnce)
{
    Play(kBlocks);
    EXPECT_EQ("    Load\x1b list \n"
              "    No file\n"
              "    where\n"
              "      inner\n"
              "        Job 7\n"
              "exit 1",
              Run("errors"));
    EXPECT_EQ("no errors\n", Run("errors --log Service"));
}

TEST_F(LogtoolTest, DuringShowsABlockWithAllLogs)
{
    Play("'Main:before\n' Main+Load 'SQL:open\n' 'Main:\nstep' 'Run!No file' 'Run:\nwhere' SQL:select Main- "
         "'Main:after\n' 'SQL:\nclose' Run- Run:next");
    const std::pair<const char*, const char*> cases[] = {
        {"tree --numbers", "3 logs, 12 rows, 2 blocks, 1 error\n    3  Load  [Main, 8 rows, 1 error]\n"
                           "    7    No file  [Run, 4 rows, 1 error]\n"},
        {"errors --numbers --log Run", "    7  Run      No file\n    8  Run      where\nexit 1"},
        {"during 3", "  Load\nopen\nselect\n  step\n    No file\n    where\n"},
        {"during 6", "  Load\nopen\nselect\n  step\n    No file\n    where\n"},
        {"during 5", "  Load\nopen\nselect\n  step\n    No file\n    where\n"}, // SQL has no block itself
        {"during 8 --log SQL --log Main --numbers", "    9  Main  after\n   11  SQL   close\n"},
        {"during 2", "logtool: C:\\Logs\\: 2: this row of Main lies in no block\nexit 1"},
        {"during 13", "logtool: C:\\Logs\\: 13: no row has this number; the one before is 12 in Run\nexit 1"},
        {"during 0", "logtool: C:\\Logs\\: 0: no row has this number; the one behind is 1 in Main\nexit 1"},
        {"during", "logtool: during: name the number of a row\nexit 2"},
        {"during x", "logtool: during: 'x' is no number from 0 to 4294967295\nexit 2"},
    };
    for (const auto& [command, expected] : cases)
        EXPECT_EQ(expected, Run(command)) << command;
}

TEST_F(LogtoolTest, VerifyTellsDamageAndAVerdict)
{
    Play(kBlocks);
    EXPECT_TRUE(Run("verify").ends_with("3 logs, 14 rows: no damage\n")) << host.output.str();
    session.files.SetSize(session.Path("Big.LOG"), 20 << 20);
    session.files.SetSize(session.Path("Big.ROW"), 20);
    host.logs.insert("Big");
    host.endWanted = true;
    EXPECT_EQ("4 logs, 15 rows: no damage so far, ended at 20 %\nexit 2", Run("verify"));
    host.logs.erase("Big");
    host.endWanted = false;
    const std::string text = session.Text("Main");
    session.files.SetContents(session.Path("Main.LOG"), "X" + text.substr(0, 5) + "X" + text.substr(7));
    const std::string found = Run("verify");
    EXPECT_TRUE(found.starts_with("damage: Main.ROW: row 1: ")) << found;
    EXPECT_TRUE(found.ends_with("\n3 logs, 14 rows: 1 damaged place\nexit 1")) << found;
}
