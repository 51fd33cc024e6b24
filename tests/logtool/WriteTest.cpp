#include "LogtoolTest.h"

#include "QmLogVerify.h"

TEST_F(LogtoolTest, WritesFilesInOrderAndALivePipeAsItComes)
{
    host.inputs = {{"a.txt", {"a1\r\na2\n"}}, {"b.txt", {"b"}}, {"-", {std::string("in\0\n", 4)}}};
    EXPECT_EQ("logtool: Main: 1 NUL byte written as '?'\n", Run("write Main a.txt - b.txt"));
    EXPECT_EQ("a1\r\na2\nin?\nb", session.Text("Main"));
    EXPECT_EQ(0u, session.files.OpenHandles());

    host.inputs["-"] = {"line\npart", " of a line"};
    std::vector<std::string> seen;
    host.onRead = [&] { seen.push_back(session.Text("Run")); };
    EXPECT_EQ("", Run("write Run"));
    EXPECT_EQ((std::vector<std::string>{"", "line\npart", "line\npart of a line"}), seen);
}

// Lines around the border of 64 KiB, and one that is longer than several chunks.
TEST_F(LogtoolTest, NoByteAndNoRowIsLostBetweenChunks)
{
    std::string text;
    for (int line = 0; text.size() < 200000; ++line)
        text += std::to_string(line) + "\n";
    text += std::string(200000, 'x') + "\n\n" + std::string(65534, 'y') + "\n";
    host.inputs["-"] = {text};
    Run("write Main");
    host.inputs["-"] = {text};
    Run("write Run --block c");
    EXPECT_EQ(text, session.Text("Main"));
    EXPECT_EQ("\nc\n" + text, session.Text("Run"));
    EXPECT_TRUE(QmLogVerify("C:\\Logs\\", {"Main", "Run"}).empty());
    EXPECT_EQ(text, Run("cat --log Main"));
}

TEST_F(LogtoolTest, TextBehindABlockDoesNotCountToIt)
{
    const char* const cases[][4] = {
        {"--block cap --kind error", "a\nb\n", "  cap\n  a\n  b\nafter", "cap  [Main, 3 rows, 1 error]\n"},
        {"--block cap", "a", "  cap\n  a\nafter", "cap  [Main, 2 rows]\n"},
        {"--block cap", "", "  cap\nafter", "cap  [Main, 1 row]\n"},
        {"--block cap", "a\n\n", "  cap\n  a\n  \nafter", "cap  [Main, 3 rows]\n"},
        {"--kind error", "a\nb\n", "  a\n  b\nafter", "a  [Main, 2 rows, 1 error]\n"},
    };
    for (const auto& [options, input, rows, blocks] : cases)
    {
        PlayNew("");
        host.inputs["-"] = {input};
        Run(std::string("write Main ") + options);
        Play("Main:after"); // as another process would
        EXPECT_EQ(rows, Run("cat"));
        EXPECT_TRUE(Run("tree").ends_with(blocks)) << host.output.str();
    }
}

TEST_F(LogtoolTest, AFolderThatCannotBeWrittenIsRefusedAndOneInUseIsNot)
{
    host.inputs["-"] = {"text"};
    session.files.SetFault({1, ZEMA::Fault::kFail, true});
    EXPECT_EQ("logtool: log folder: cannot be written to\nexit 2", Run("write Source --block c"));
    session.files.SetFault(
        {session.files.CallCount() + 1, ZEMA::Fault::kFail, false, ERROR_SHARING_VIOLATION});
    EXPECT_EQ("", Run("write Source --block c"));
    EXPECT_EQ("\nc\ntext\n", session.Text("Source"));
}

// On logs of their own: a writer belongs to the process and keeps owing a line feed.
TEST_F(LogtoolTest, AFailureEndsTheCommandAndClosesTheBlock)
{
    host.inputs["-"] = {"read\n", "fail"};
    EXPECT_EQ("logtool: -: cannot be read\nexit 2", Run("write Run --block c"));
    EXPECT_EQ("\nc\nread\n", session.Text("Run"));

    host.inputs["-"] = {std::string(100, 'x'), "y"};
    session.files.SetFreeSpace(50);
    EXPECT_EQ("logtool: SQL: cannot write, see QmLog.LOG in C:\\Logs\\\nexit 1", Run("write SQL --block c"));
    EXPECT_EQ(std::string::npos, session.Text("SQL").find('y'));
    EXPECT_EQ(0u, session.files.OpenHandles());
}
