#include "LogtoolTest.h"

#include "host/logtool/BlockTree.h"

namespace
{

CQmLogRow Row(std::uint8_t indent, bool begin, QmLogBlockKind kind = kPlainKind)
{
    CQmLogRow row;
    row.indent = indent;
    row.blockBegin = begin ? 1 : 0;
    row.kind = kind;
    return row;
}

// Adds rows "log indent[+]", the plus for a block header, and tells each block's rows and parent.
std::string Tree(const std::vector<std::string>& rows)
{
    logtool::BlockTree tree(3);
    unsigned long counts[3] = {};
    for (const std::string& row : rows)
    {
        const auto log = static_cast<std::size_t>(row[0] - 'A');
        tree.Add(log, counts[log]++, Row(static_cast<std::uint8_t>(row[1] - '0'), row.ends_with('+')));
    }
    tree.Finish();
    std::string result;
    for (std::uint32_t i = 0; i < tree.BlockCount(); ++i)
    {
        const logtool::BlockTree::Node& node = tree.At(i);
        result += (result.empty() ? "" : " ") + std::string(1, static_cast<char>('A' + node.log)) +
                  std::to_string(node.begin) + "-" + std::to_string(node.end) + ":" +
                  std::to_string(node.rows);
        if (node.parent != logtool::BlockTree::kNone)
            result += "<" + std::to_string(node.parent);
    }
    return result;
}

} // namespace

TEST(BlockTree, FindsTheBlockOfEachRow)
{
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"A0", "A0+"}, ""},                                       // depth 0 has no headers
        {{"A1+", "A1", "A0"}, "A0-2:2"},                           // ended by a lower row
        {{"A1+", "A1+", "A1"}, "A0-1:1 A1-3:2"},                   // ended by the next header
        {{"A1+", "A2+", "A2", "A1"}, "A0-4:4 A1-3:2<0"},           // nested
        {{"A1+", "A3+", "A2", "A2+"}, "A0-4:4 A1-2:1<0 A3-4:1<0"}, // depths with gaps
        {{"A1+", "B2+", "B2", "A1"}, "A0-2:4 B0-2:2<0"},           // across logs
        {{"A1+", "B0", "B0"}, "A0-1:3"},                           // rows without a block of their log
        {{"A1+", "A0", "B0"}, "A0-1:1"},                           // no block is open any more
        {{"A1+", "B2+", "A0", "B2"}, "A0-1:4 B0-2:3<0"},           // a block that outlives its parent
        {{"B1+", "A2+", "B1", "C0"}, "B0-2:4 A0-1:2<0"},           // C counts to the block opened last
        {{"A1+", "B1+", "C2+"}, "A0-1:1 B0-1:2 C0-1:1<1"},         // equal depth is no parent
        {{"A9", "A5", "A0"}, ""},                                  // depth without headers
    };
    for (const auto& [rows, expected] : cases)
        EXPECT_EQ(expected, Tree(rows)) << testing::PrintToString(rows);
}

TEST(BlockTree, TakesAMillionRows)
{
    logtool::BlockTree tree(1);
    for (unsigned long i = 0; i < 1000000; ++i)
        tree.Add(0, i, Row(static_cast<std::uint8_t>(1 + i % 255), i % 2 == 0, kErrorKind));
    tree.Finish();
    EXPECT_EQ(500000u, tree.ErrorCount());
}

namespace
{

// Main:  start, block "Load" with the error "No file" and a step, and the end.
// Run:   inside "Load" an error of its own, "Job 7".
class BlocksTest : public LogtoolTest
{
protected:
    BlocksTest()
    {
        Write("Main", "start");
        Block("Main", kDetailKind, "  Load\x1b list \n");
        Write("Main", "step");
        Block("Main", kErrorKind, "No file");
        Write("Main", "\nwhere");
        Block("Main", kErrorKind, "inner");
        Block("Run", kErrorKind, "Job 7");
        EndBlock("Run");
        Write("Run", "next job");
        EndBlock("Main");
        EndBlock("Main");
        Block("Main", kNoticeKind, "again");
        EndBlock("Main");
        EndBlock("Main");
        Write("Main", "end\n");
        Block("Service", kPlainKind, "quiet");
        EndBlock("Service");
    }
};

} // namespace

TEST_F(BlocksTest, TreeOutlinesAllLogs)
{
    EXPECT_EQ("3 logs, 12 rows, 6 blocks, 3 errors\n"
              "Load\x1b list  [Main, 8 rows, 3 errors]\n"
              "  No file  [Main, 5 rows, 3 errors]\n"
              "    inner  [Main, 3 rows, 2 errors]\n"
              "      Job 7  [Run, 1 row, 1 error]\n"
              "  again  [Main, 1 row]\n"
              "quiet  [Service, 1 row]\n",
              Run({"tree"}));
    EXPECT_EQ("3 logs, 12 rows, 6 blocks, 3 errors\n"
              "Load\x1b list  [Main, 8 rows, 3 errors]\n"
              "  No file  [Main, 5 rows, 3 errors]\n",
              Run({"tree", "--errors", "--depth", "2"}));
    EXPECT_EQ("1 log, 1 row, 1 block, 0 errors\nquiet  [Service, 1 row]\n",
              Run({"tree", "--log", "service"}));
    EXPECT_EQ(logtool::kDone, exitCode);
}

// The row that ends a block may wait for its text for long.
TEST_F(LogtoolTest, ARowWithoutTextEndsBlocks)
{
    Block("Main", kPlainKind, "ended");
    EndBlock("Main");
    Write("Main", "");
    Write("Run", "later\n");
    EXPECT_EQ("2 logs, 4 rows, 1 block, 0 errors\nended  [Main, 1 row]\n", Run({"tree"}));
}

TEST_F(BlocksTest, TreeKeepsCaptionsShortAndHarmlessOnATerminal)
{
    Block("Source", kPlainKind, std::string(100, 'x'));
    host.terminal = true;
    const std::string tree = Run({"tree"});
    EXPECT_NE(std::string::npos, tree.find("\nLoad\\x1b list  [Main"));
    EXPECT_NE(std::string::npos, tree.find("\n" + std::string(69, 'x') + "...  [Source, 1 row]\n"));
}

TEST_F(BlocksTest, ErrorsComeUnderTheirHeadersAndOnce)
{
    EXPECT_EQ("    Load\x1b list \n"
              "    No file\n"
              "    where\n"
              "      inner\n"
              "        Job 7\n",
              Run({"errors"}));
    EXPECT_EQ(logtool::kFoundFaults, exitCode);
    EXPECT_EQ("no errors\n", Run({"errors", "--log", "Service"}));
    EXPECT_EQ(logtool::kDone, exitCode);
}

TEST_F(BlocksTest, VerifyTellsDamageBeforeNotesAndAVerdict)
{
    EXPECT_EQ("3 logs, 12 rows: no damage\n", Run({"verify"}));
    EXPECT_EQ(logtool::kDone, exitCode);

    const std::string text = session.Text("Main");
    session.files.SetContents("C:\\Logs\\Main.LOG", "X" + text.substr(0, 5) + "X" + text.substr(7));
    const std::string found = Run({"verify"});
    EXPECT_EQ(0u, found.find("damage: Main.ROW: row 1: ")) << found;
    EXPECT_NE(std::string::npos, found.find(": 1 damaged place\n")) << found;
    EXPECT_EQ(logtool::kFoundFaults, exitCode);
}
