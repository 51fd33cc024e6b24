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
        {"A+a 'B:x\ny'", "a  [A, 3 rows]\n"},                                   // B has no block of its own
        {"A+a A- A:x B:y", "a  [A, 1 row]\n"},                                  // no block is open any more
        {"A+a B+b A- A:x 'B:\ny'", "a  [A, 4 rows]\n  b  [B, 3 rows]\n"},       // outlives its parent
        {"B+a A+b 'B:\nx' C:y", "a  [B, 4 rows]\n  b  [A, 2 rows]\n"},          // C: the one opened last
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

TEST_F(LogtoolTest, VerifyTellsDamageAndAVerdict)
{
    Play(kBlocks);
    EXPECT_TRUE(Run("verify").ends_with("3 logs, 14 rows: no damage\n")) << host.output.str();
    const std::string text = session.Text("Main");
    session.files.SetContents(session.Path("Main.LOG"), "X" + text.substr(0, 5) + "X" + text.substr(7));
    const std::string found = Run("verify");
    EXPECT_TRUE(found.starts_with("damage: Main.ROW: row 1: ")) << found;
    EXPECT_TRUE(found.ends_with("\n3 logs, 14 rows: 1 damaged place\nexit 1")) << found;
}
