#include "LogtoolTest.h"

TEST_F(LogtoolTest, MisuseIsOneLineAndExitCode2)
{
    const std::pair<const char*, const char*> cases[] = {
        {"", "command: missing, see logtool help"},
        {"show", "show: no such command, see logtool help"},
        {"help show", "show: no such command, see logtool help"},
        {"write", "write: name the log"},
        {"write ''", "'': names no log"},
        {"write qmlog", "'qmlog': holds the messages about failures and is no log"},
        {"write Main none.txt", "none.txt: cannot be opened: Error 2."},
        {"write Main --block 'a\nb'", "--block: a caption is one line"},
        {"write Main --kind 4294967295", "--kind: '4294967295' is no number from 0 to 4294967294"},
        {"write Main --kind bad", "--kind: 'bad' is no kind: plain, notice, error, detail or a number"},
        {"write Main -- --block", "--block: cannot be opened: Error 2."},
        {"write Main [a,b]", "[a,b]: cannot be opened: Error 2."},
        {"-x cat", "-x: no option of logtool, see logtool help"},
        {"sh\x1bow", "sh\\x1bow: no such command, see logtool help"},
        {"cat Main", "Main: not expected by cat"},
        {"cat --from", "--from: needs a value"},
        {"cat --from 1x", "--from: '1x' is no number from 0 to 4294967295"},
        {"cat --to 4294967296", "--to: '4294967296' is no number from 0 to 4294967295"},
        {"cat --from 3 --to 2", "--from: lies behind --to"},
        {"cat -f", "-f: no option of cat, see logtool help cat"},
        {"cat --numbers=2", "--numbers: takes no value"},
        {"cat -- -A", "-A: not expected by cat"},
        {"cat --to 1 --to=1", "--to: given twice"},
        {"cat --from=0x1", "--from: '0x1' is no number from 0 to 4294967295"},
        {"cat --log Nobody", "Nobody: no such log in C:\\Logs\\"},
        {"cat --folder ''", "--folder: names no folder"},
        {"--folder= cat", "--folder: names no folder"},
        {"--folder a cat --folder b", "--folder: given twice"},
        {"cat --folder missing", "missing: cannot be opened: Error 3."},
        {"--folder missing cat", "missing: cannot be opened: Error 3."},
        {"cat --folder=missing", "missing: cannot be opened: Error 3."},
        {"verify missing", "missing: cannot be opened: Error 3."},
        {"verify a --folder b", "a: the folder is given already with --folder"},
        {"tail -n 1 --after 1", "--after: says where to begin, as -n and --cursor-file do: give one of them"},
    };
    for (const auto& [command, message] : cases)
    {
        host.inputs["-"] = {"text"};
        host.folder.clear();
        EXPECT_EQ(std::string("logtool: ") + message + "\nexit 2", Run(command));
    }
    EXPECT_FALSE(session.files.Exists("C:\\Logs\\Main.LOG")) << "nothing is written before all is checked";

    session.manager.folder.clear();
    EXPECT_EQ("logtool: q:\\none: cannot be made, or its name is too long\nexit 2",
              Run("write Main --folder q:\\none"));
}

TEST_F(LogtoolTest, EveryCommandHasHelpAndTellsWhenTheOutputFails)
{
    Play("Main:text");
    for (const std::string command : {"cat", "tail", "tree", "errors", "verify"})
    {
        host.outputState = std::ios::goodbit;
        EXPECT_NE(std::string::npos, Run("help " + command).find("\nExample: logtool " + command));
        host.outputState = std::ios::badbit;
        EXPECT_EQ("logtool: output: cannot be written: Error 112.\nexit 2", Run(command)) << command;
        host.outputFault = ""; // whoever reads has gone
        EXPECT_EQ("", Run(command)) << command;
        host.outputFault = "Error 112.";
    }
}

TEST_F(LogtoolTest, NamesThatWouldWriteAnotherFileAreRefused)
{
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"..", "..\\a", "a\\..\\b", "\\a", "/a", "a\\", "a//b", ".\\a"},
         "would lead out of the log folder, or names no file"},
        {{"c:a", "c:\\a", "a:stream", "a*", "a\tb", "\"a"}, "has a character that no file's name can have"},
        {{"a.", "a ", "a. .", "sub.\\a", "Main.LOG."}, "ends with a dot or a blank, which the system drops"},
        {{"con", "NUL", "nul.LOG", "Com1", "LPT9.x.LOG", "aux .LOG", "sub\\PRN", "COM\xC2\xB2", "conin$"},
         "is a device of the system and no file"},
        {{"a.b"}, "is the same log as 'a', because extensions are dropped"},
        {{std::string(250, 'x')}, "is too long for the name of a log in C:\\Logs\\"},
    };
    for (const auto& [names, why] : cases)
    {
        for (const std::string& name : names)
        {
            host.messages.str("");
            EXPECT_EQ(2, logtool::Run({"write", name, "-"}, host));
            EXPECT_TRUE(host.messages.str().ends_with(std::string("': ") + why + "\n"))
                << host.messages.str();
        }
    }
    for (const char* name : {"COM0x", "console", "a.LOG", "nulls", "v1.2.log", "sub\\a"})
    {
        host.inputs["-"] = {"text"};
        EXPECT_EQ("", Run(std::string("write ") + name)) << name;
    }
    EXPECT_EQ("text", session.Text("v1.2"));
}

TEST_F(LogtoolTest, ALogFolderWithoutRowsIsNamed)
{
    EXPECT_EQ("logtool: no rows in C:\\Logs\\\n", Run("cat"));
    EXPECT_EQ("logtool: no rows in C:\\Logs\\\n", Run("tail"));
    EXPECT_EQ("0 logs, 0 rows, 0 blocks, 0 errors\nlogtool: no rows in C:\\Logs\\\n", Run("tree"));
    EXPECT_EQ("no errors\nlogtool: no rows in C:\\Logs\\\n", Run("errors"));
}

TEST_F(LogtoolTest, HelpIsAskedForInManyWaysAndFitsATerminal)
{
    const std::vector<std::vector<std::string>> sameHelp = {
        {"help", "--help", "-h", "/?"},
        {"help cat", "cat --help", "--folder missing cat -h", "cat /?"},
        {"help write", "write Main x --kind=error -h"},
        {"help help", "help -h"},
    };
    for (const std::vector<std::string>& commands : sameHelp)
        for (const std::string& command : commands)
            EXPECT_EQ(Run(commands.front()), Run(command)) << command;

    for (const char* topic : {"", "help", "write", "cat", "tail", "tree", "errors", "verify"})
    {
        std::istringstream lines(Run(std::string("help ") + topic));
        for (std::string line; std::getline(lines, line);)
            EXPECT_LE(line.size(), 80u) << line;
    }
    EXPECT_TRUE(Run("--version").starts_with("logtool ")) << host.output.str();
}
