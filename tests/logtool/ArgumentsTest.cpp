#include "LogtoolTest.h"

using Words = std::vector<std::string>;

TEST_F(LogtoolTest, MisuseIsOneLineAndExitCode2)
{
    const std::pair<Words, const char*> cases[] = {
        {{}, "command: missing, see logtool help"},
        {{"--folder"}, "command: missing, see logtool help"},
        {{"show"}, "show: no such command, see logtool help"},
        {{"help", "show"}, "show: no such command, see logtool help"},
        {{"write"}, "write: name the log"},
        {{"write", ""}, "'': cannot be the name of a log"},
        {{"write", "qmlog"}, "qmlog: holds the messages about failures and is no log"},
        {{"write", "Main", "none.txt"}, "none.txt: cannot be opened"},
        {{"write", "Main", "--block", "a\nb"}, "--block: a caption is one line"},
        {{"write", "Main", "--kind", "red"},
         "--kind: 'red' is no kind: plain, notice, error, detail or a number below 4294967295"},
        {{"write", "Main", "--kind", "4294967295"},
         "--kind: '4294967295' is no kind: plain, notice, error, detail or a number below 4294967295"},
        {{"cat", "Main"}, "Main: not expected by cat"},
        {{"cat", "--from"}, "--from: needs a value"},
        {{"cat", "--from", ""}, "--from: '' is no number from 0 to 4294967295"},
        {{"cat", "--from", "-1"}, "--from: '-1' is no number from 0 to 4294967295"},
        {{"cat", "--from", "1x"}, "--from: '1x' is no number from 0 to 4294967295"},
        {{"cat", "--to", "4294967296"}, "--to: '4294967296' is no number from 0 to 4294967295"},
        {{"cat", "--from", "3", "--to", "2"}, "--from: lies behind --to"},
        {{"cat", "-f"}, "-f: no option of cat, see logtool help cat"},
        {{"cat", "--numbers", "--numbers"}, "--numbers: given twice"},
        {{"cat", "--log", "Nobody"}, "Nobody: no such log in C:\\Logs\\"},
        {{"cat", "--folder", ""}, "--folder: names no folder"},
        {{"cat", "--folder", "missing"}, "missing: no such folder"},
        {{"verify", "missing"}, "missing: no such folder"},
        {{"verify", "a", "--folder", "b"}, "a: the folder is given already with --folder"},
        {{"tail", "-n", "ten"}, "-n: 'ten' is no number from 0 to 4294967295"},
        {{"tail", "-n", "1", "--after", "1"},
         "--after: says where to begin, as -n and --cursor-file do: give one of them"},
        {{"tree", "--depth", "%s"}, "--depth: '%s' is no number from 0 to 4294967295"},
    };
    for (const auto& [words, message] : cases)
    {
        host.folder.clear();
        host.inputs["-"] = {"text"};
        EXPECT_EQ("", Run(words)) << message;
        EXPECT_EQ(logtool::kMisuse, exitCode) << message;
        EXPECT_EQ(std::string("logtool: ") + message + "\n", host.messages.str());
    }
    EXPECT_FALSE(session.files.Exists("C:\\Logs\\Main.LOG")) << "nothing is written before all is checked";
}

TEST_F(LogtoolTest, TheFolderMayStandBeforeAndBehindTheCommand)
{
    Run({"--folder", "x", "tree"});
    EXPECT_EQ("x", host.folder);
    Run({"tree", "--folder", "y"});
    EXPECT_EQ("y", host.folder);
    Run({"verify", "z"});
    EXPECT_EQ("z", host.folder);
}

TEST_F(LogtoolTest, EveryCommandHasItsHelp)
{
    const std::string all = Run({"help"});
    for (const char* command : {"write", "cat", "tail", "tree", "errors", "verify"})
    {
        EXPECT_NE(std::string::npos, all.find(std::string("\n  ") + command + ' '));
        EXPECT_NE(std::string::npos, Run({"help", command}).find("\nExample: logtool "));
        EXPECT_EQ(logtool::kDone, exitCode);
    }
}

TEST_F(LogtoolTest, AnOutputThatFailsIsMisuseAndNoCrash)
{
    Write("Main", "text\n");
    for (const Words& words : {Words{"cat"}, Words{"tail"}, Words{"tree"}, Words{"errors"}, Words{"help"}})
    {
        MemoryHost closed(session);
        closed.output.setstate(std::ios::badbit);
        EXPECT_EQ(logtool::kMisuse, logtool::Run(words, closed)) << words.front();
        EXPECT_EQ("logtool: output: cannot be written\n", closed.messages.str());
    }
}
