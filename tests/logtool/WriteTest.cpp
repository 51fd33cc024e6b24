#include "LogtoolTest.h"

#include "tests/support/Verify.h"

TEST_F(LogtoolTest, WritesFilesInOrderAndALivePipeAsItComes)
{
    host.inputs = {
        {"a.txt", {"a1\r\na2\n"}}, {"b.txt", {"b"}}, {"c", {"\nc"}}, {"-", {std::string("in\0\n", 4)}}};
    EXPECT_EQ("logtool: Main: 1 NUL byte written as '?'\n", Run("write Main a.txt - b.txt c"));
    EXPECT_EQ("a1\r\na2\nin?\nb\n\nc", session.Text("Main"));
    EXPECT_EQ(0u, session.files.OpenHandles());

    host.inputs["-"] = {"line\n", "part", " of a line\n", "\n"};
    std::vector<std::string> seen;
    host.onRead = [&] { seen.push_back(session.Text("Run")); };
    EXPECT_EQ("", Run("write Run"));
    EXPECT_EQ((std::vector<std::string>{"", "line", "line\npart", "line\npart of a line",
                                        "line\npart of a line\n"}),
              seen);
}

// Lines around the border of 64 KiB, and one that is longer than several chunks.
TEST_F(LogtoolTest, NoByteAndNoRowIsLostBetweenChunks)
{
    std::string text;
    for (int line = 0; text.size() < 200000; ++line)
        text += std::to_string(line) + "\n";
    text += std::string(200000, 'x') + "\n\n" + std::string(65534, 'y');
    host.inputs["-"] = {text + "\n"};
    Run("write Main");
    host.inputs["-"] = {text + "\n"};
    Run("write Run --block c");
    EXPECT_EQ(text, session.Text("Main"));
    EXPECT_EQ("\nc\n" + text, session.Text("Run"));
    EXPECT_TRUE(FindingsOf("C:\\Logs\\", {"Main", "Run"}).empty());
    EXPECT_EQ(text + "\n", Run("cat --log Main"));
}

// Each input is a call of its own; then comes a line of another process.
TEST_F(LogtoolTest, EveryLineGetsARowAndNoRowIsBlankThatIsNone)
{
    struct Case
    {
        const char* options;
        std::vector<std::string> inputs;
        const char* rows;
        const char* blocks;
    };
    const Case cases[] = {
        {"", {"a\nb\n", "c\n"}, "a\nb\nc\nafter\n", ""},
        {"", {"a\nb", "c"}, "a\nb\nc\nafter\n", ""},
        {"", {"a\n\n", "b"}, "a\n\nb\nafter\n", ""}, // a blank line of the input stays
        {"", {"a", "\n\nb"}, "a\n\n\nb\nafter\n", ""},
        {"", {"a", "\r\nb\r\n"}, "a\n\r\nb\r\nafter\n", ""},
        {"", {"", "a", "", "b"}, "a\nb\nafter\n", ""},
        {"--block cap --kind error",
         {"a\nb\n"},
         "  cap\n  a\n  b\nafter\n",
         "cap  [Main, 3 rows, 1 error]\n"},
        {"--block cap",
         {"a", "a"},
         "  cap\n  a\n  cap\n  a\nafter\n",
         "cap  [Main, 2 rows]\ncap  [Main, 2 rows]\n"},
        {"--block cap", {""}, "  cap\nafter\n", "cap  [Main, 1 row]\n"},
        {"--block ''", {"a"}, "  \n  a\nafter\n", "  [Main, 2 rows]\n"},
        {"--block cap", {"a\n\n"}, "  cap\n  a\n  \nafter\n", "cap  [Main, 3 rows]\n"},
        {"--kind error", {"a\nb\n"}, "  a\n  b\nafter\n", "a  [Main, 2 rows, 1 error]\n"},
    };
    for (const auto& [options, inputs, rows, blocks] : cases)
    {
        PlayNew("");
        for (const std::string& input : inputs)
        {
            host.inputs["-"] = {input};
            EXPECT_EQ("", Run(std::string("write Main ") + options));
        }
        Play("Main=after");
        EXPECT_EQ(rows, Run("cat"));
        EXPECT_TRUE(Run("tree").ends_with(blocks)) << host.output.str();
        EXPECT_TRUE(FindingsOf("C:\\Logs\\", {"Main"}).empty());
    }
}

TEST_F(LogtoolTest, AFolderThatCannotBeWrittenIsRefusedAndOneInUseIsWaitedFor)
{
    host.inputs["-"] = {"text"};
    session.files.SetFault({1, ZEMA::Fault::Fail, true});
    EXPECT_EQ("logtool: C:\\Logs\\: cannot be written to: Error 5.\nexit 2", Run("write Source --block c"));
    session.files.ClearFault();

    HANDLE other = nullptr; // another process that writes
    const auto writeBeside = [&](int looks) {
        other = session.files.Create(session.Path("Log.DAT").c_str(), GENERIC_READ | GENERIC_WRITE,
                                     FILE_SHARE_READ, OPEN_ALWAYS, 0);
        host.wait = [&, looks]() mutable { return --looks > 0 || (session.files.Close(other), looks == 0); };
        return Run("write Source --block c");
    };
    EXPECT_EQ("", writeBeside(5));
    EXPECT_EQ("\nc\ntext", session.Text("Source"));
    EXPECT_EQ("logtool: waiting for a process that writes in C:\\Logs\\ and has Log.DAT open; Ctrl+C ends "
              "the wait\n",
              writeBeside(6));
    other = session.files.Create(session.Path("Log.DAT").c_str(), GENERIC_READ | GENERIC_WRITE,
                                 FILE_SHARE_READ, OPEN_ALWAYS, 0);
    host.wait = [] { return false; };
    host.inputs["-"] = {"text"};
    EXPECT_EQ("logtool: Run: nothing written: the wait was ended\nexit 1", Run("write Run"));
    session.files.Close(other);
}

TEST_F(LogtoolTest, AFailureEndsTheCommandAndClosesTheBlock)
{
    host.inputs["-"] = {"read\n", "fail"};
    EXPECT_EQ("logtool: -: cannot be read: Error 23.\nexit 2", Run("write Run --block c"));
    EXPECT_EQ("\nc\nread", session.Text("Run"));

    host.inputs["-"] = {std::string(100, '\0'), "y"};
    session.files.SetFreeSpace(50);
    EXPECT_EQ("logtool: SQL: cannot be written: Error 112. See QmLog.LOG in C:\\Logs\\\nexit 1",
              Run("write SQL --block c"));
    EXPECT_EQ(std::string::npos, session.Text("SQL").find('y'));
    EXPECT_EQ(0u, session.files.OpenHandles());

    host.inputs["-"] = {"a\nb\nc\n"};
    session.files.SetFreeSpace(10000);
    session.files.SetContents(session.Path("Service.ROW"), "");
    const HANDLE index = session.files.Create(session.Path("Service.ROW").c_str(), GENERIC_READ,
                                              FILE_SHARE_READ, OPEN_ALWAYS, 0);
    EXPECT_EQ("logtool: Service: 3 lines written without an index row, so readers do not find them. See "
              "QmLog.LOG in "
              "C:\\Logs\\\nexit 1",
              Run("write Service"));
    session.files.Close(index);
}
