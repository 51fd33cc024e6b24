#include "LogtoolTest.h"

#include "QmLogVerify.h"

TEST_F(LogtoolTest, WritesFilesAndStandardInputInOrder)
{
    host.inputs = {{"a.txt", {"a1\r\na2\n"}}, {"b.txt", {"b"}}, {"-", {"in\n"}}};
    Run({"write", "Main", "a.txt", "-", "b.txt"});
    EXPECT_EQ("a1\r\na2\nin\nb", session.Text("Main"));
    Run({"write", "Main"});
    EXPECT_EQ("a1\r\na2\nin\nbin\n", session.Text("Main"));
    EXPECT_EQ(0, exitCode);
    EXPECT_EQ("", host.messages.str());
    EXPECT_EQ(0u, session.files.OpenHandles());
}

TEST_F(LogtoolTest, NulBytesAreReplacedAndCounted)
{
    host.inputs["-"] = {std::string("a\0b\0", 4), std::string("\0\n", 2)};
    Run({"write", "Main"});
    EXPECT_EQ("a?b??\n", session.Text("Main"));
    EXPECT_EQ("logtool: Main: 3 NUL bytes written as '?'\n", host.messages.str());
    EXPECT_EQ(0, exitCode);
}

// Lines around the border of 64 KiB, and one that is longer than several chunks.
TEST_F(LogtoolTest, NoByteAndNoRowIsLostBetweenChunks)
{
    std::string text;
    for (int line = 0; text.size() < 200000; ++line)
        text += std::to_string(line) + "\n";
    text += std::string(200000, 'x') + "\n\n" + std::string(65534, 'y') + "\n";
    host.inputs["-"] = {text};
    for (const char* option : {"--numbers", "--block"})
    {
        DeleteAll();
        std::vector<std::string> words = {"write", "Main"};
        if (option == std::string("--block"))
            words.insert(words.end(), {"--block", "c"});
        Run(words);
        EXPECT_EQ((words.size() > 2 ? "\nc\n" : "") + text, session.Text("Main"));
        EXPECT_TRUE(QmLogVerify("C:\\Logs\\", {"Main"}).empty());
        EXPECT_EQ(text, words.size() > 2 ? text : Run({"cat"}));
    }
}

TEST_F(LogtoolTest, WhatALivePipeGivesGoesOutAtOnce)
{
    class Pipe : public logtool::Input
    {
    public:
        explicit Pipe(std::function<std::string()> next) : m_next(std::move(next)) {}
        Result Read(char* data, std::size_t size, std::size_t& length) override
        {
            length = m_next().copy(data, size);
            m_next = [] { return std::string(); };
            return length == 0 ? Result::kEnd : Result::kData;
        }

    private:
        std::function<std::string()> m_next;
    };
    class PipeHost : public MemoryHost
    {
    public:
        using MemoryHost::MemoryHost;
        std::unique_ptr<logtool::Input> OpenInput(const std::string& path) override
        {
            if (path == "first")
                return std::make_unique<Pipe>([] { return "part of a line"; });
            return std::make_unique<Pipe>([this] {
                seen = Text();
                return "";
            });
        }
        std::function<std::string()> Text;
        std::string seen;
    };
    PipeHost pipes(session);
    pipes.Text = [this] { return session.Text("Main"); };
    EXPECT_EQ(0, logtool::Run({"write", "Main", "first", "then"}, pipes));
    EXPECT_EQ("part of a line", pipes.seen);
}

TEST_F(LogtoolTest, TextBehindABlockDoesNotCountToIt)
{
    struct Case
    {
        std::vector<std::string> options;
        std::string input;
        std::string text;
        std::string rows;
    };
    const std::string behind = " indent 0 kind 0";
    const Case cases[] = {
        {{"--block", "cap", "--kind", "error"},
         "a\nb\n",
         "\ncap\na\nb\nafter",
         "1 indent 1 kind 2 begin\n5 indent 1 kind 2\n7 indent 1 kind 2\n9" + behind},
        {{"--block", "cap"},
         "a",
         "\ncap\na\nafter",
         "1 indent 1 kind 0 begin\n5 indent 1 kind 0\n7" + behind},
        {{"--block", "cap"}, "", "\ncap\nafter", "1 indent 1 kind 0 begin\n5" + behind},
        {{"--block", "cap"},
         "a\n\n",
         "\ncap\na\n\nafter",
         "1 indent 1 kind 0 begin\n5 indent 1 kind 0\n7 indent 1 kind 0\n8" + behind},
        {{"--kind", "7"},
         "a\nb\n",
         "\na\nb\nafter",
         "1 indent 1 kind 7 begin\n3 indent 1 kind 7\n5" + behind},
    };
    for (const Case& one : cases)
    {
        DeleteAll();
        host.inputs["-"] = {one.input};
        std::vector<std::string> words = {"write", "Main"};
        words.insert(words.end(), one.options.begin(), one.options.end());
        Run(words);
        Write("Main", "after"); // as another process would
        EXPECT_EQ(one.text, session.Text("Main"));
        EXPECT_TRUE(session.Rows("Main").starts_with(one.rows)) << session.Rows("Main");
    }
}

TEST_F(LogtoolTest, AFailedWriteEndsTheCommandAndClosesTheBlock)
{
    host.inputs["-"] = {std::string(100, 'x'), "y"};
    session.files.SetFreeSpace(50);
    Run({"write", "Main", "--block", "c"});
    EXPECT_EQ(logtool::kFoundFaults, exitCode);
    EXPECT_EQ("logtool: Main: cannot write, see QmLog.LOG in C:\\Logs\\\n", host.messages.str());
    EXPECT_EQ(std::string::npos, session.Text("Main").find('y'));
    EXPECT_EQ(0u, session.files.OpenHandles());
}

TEST_F(LogtoolTest, AnInputThatFailsIsMisuseButWhatWasReadIsLogged)
{
    host.inputs["-"] = {"read\n", "fail"};
    Run({"write", "Run"});
    EXPECT_EQ(logtool::kMisuse, exitCode);
    EXPECT_EQ("logtool: -: cannot be read\n", host.messages.str());
    EXPECT_EQ("read\n", session.Text("Run"));
}
