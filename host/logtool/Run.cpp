#include "logtool/Commands.h"

#include "QmLogWriter.h"
#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

#include <algorithm>
#include <array>
#include <exception>
#include <ios>
#include <ostream>

namespace logtool
{

namespace
{

using Command = int (*)(const Arguments&, Host&);

Command FindCommand(const std::string& name)
{
    static const std::map<std::string, Command> commands = {
        {"help", Help}, {"write", Write},   {"cat", Cat},       {"tail", Tail},
        {"tree", Tree}, {"errors", Errors}, {"verify", Verify},
    };
    return commands.at(name);
}

// Where the counters cannot be opened, a writer would wait for ever. Another process that has them open is
// worth waiting for.
bool CanCount()
{
    char path[MAX_PATH] = {};
    QmLogMakeFilePath("Log.DAT", path);
    const HANDLE file =
        ZEMA_CreateFile(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                        OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == nullptr || file == INVALID_HANDLE_VALUE)
        return ZEMA::FileCalls().LastError() == ERROR_SHARING_VIOLATION;
    ZEMA::FileCalls().Close(file);
    return true;
}

// Every command but "write", which makes it, needs a folder that is there.
void EnterFolder(const Arguments& arguments, Host& host)
{
    std::string folder = arguments.Text("--folder");
    if (arguments.Has("--folder") && folder.empty())
        throw UsageError("--folder", "names no folder");
    if (arguments.Command() == "verify" && !arguments.Operands().empty())
    {
        if (arguments.Has("--folder"))
            throw UsageError(arguments.Operands().front(), "the folder is given already with --folder");
        folder = arguments.Operands().front();
    }
    if (!folder.empty())
        host.UseFolder(folder);
    if (arguments.Command() == "help")
        return;
    const std::string shown = folder.empty() ? "log folder" : folder;
    if (arguments.Command() != "write" && !host.FolderExists())
        throw UsageError(shown, "no such folder");
    if (LogFolder().empty()) // asking for it makes it
        throw UsageError(shown, "cannot be made or has too long a name");
    if (arguments.Command() == "write" && !CanCount())
        throw UsageError(shown, "cannot be written to");
}

std::vector<std::string>::const_iterator FindName(const std::vector<std::string>& logs,
                                                  const std::string& name)
{
    return std::find_if(logs.begin(), logs.end(),
                        [&](const std::string& log) { return IsSameName(log, name); });
}

int RunCommand(const std::vector<std::string>& words, Host& host)
{
    const Arguments arguments(words);
    EnterFolder(arguments, host);
    // A write that fails, to a closed pipe or a full disk, ends the command where it happens.
    host.Output().exceptions(std::ios::badbit | std::ios::failbit);
    const int exitCode = FindCommand(arguments.Command())(arguments, host);
    host.Output().flush();
    return exitCode;
}

} // namespace

int Run(const std::vector<std::string>& words, Host& host)
{
    std::string failure;
    try
    {
        return RunCommand(words, host);
    }
    catch (const std::ios_base::failure&)
    {
        failure = "output: cannot be written";
    }
    catch (const std::bad_alloc&)
    {
        failure = "memory: not enough";
    }
    catch (const std::exception& error)
    {
        failure = error.what();
    }
    host.Output().exceptions(std::ios::goodbit);
    host.Messages() << "logtool: " << failure << std::endl;
    return kMisuse;
}

std::vector<std::string> ChosenLogs(const Arguments& arguments, Host& host)
{
    std::vector<std::string> logs = {"Main", "Run", "Source", "SQL", "Service"};
    for (const std::string& name : host.ListLogs())
        if (FindName(logs, name) == logs.end())
            logs.push_back(name);
    if (!arguments.Has("--log"))
        return logs;

    std::vector<std::string> chosen;
    for (const std::string& name : arguments.Texts("--log"))
    {
        const auto log = FindName(logs, name);
        if (log == logs.end())
            throw UsageError(name, "no such log in " + LogFolder());
        if (std::find(chosen.begin(), chosen.end(), *log) == chosen.end())
            chosen.push_back(*log);
    }
    return chosen;
}

std::string Totals(const std::vector<std::string>& logs, Host& host)
{
    std::size_t count = 0;
    std::uint64_t rows = 0;
    for (const std::string& name : host.ListLogs())
    {
        if (FindName(logs, name) == logs.end())
            continue;
        CQmLogReader reader;
        reader.SetFilePath(name.c_str());
        rows += reader.GetRowCount();
        ++count;
    }
    return Counted(count, "log") + ", " + Counted(rows, "row");
}

std::string LogFolder()
{
    std::array<char, 260> path = {};
    if (!QmLogMakeFilePath("x", path.data()))
        return "";
    std::string folder = path.data();
    folder.resize(folder.find_last_of("\\/") + 1);
    return folder;
}

TextStyle StyleOf(const Arguments& arguments, Host& host)
{
    TextStyle style;
    style.terminal = host.IsOutputTerminal();
    style.colours = style.terminal && host.HasColours();
    style.numbers = arguments.Has("--numbers");
    return style;
}

int EndOf(const LogStream& stream, Host& host)
{
    if (stream.Unreadable() == 0)
        return kDone;
    host.Messages() << "logtool: " << Counted(stream.Unreadable(), "row")
                    << " cannot be read, see logtool verify" << std::endl;
    return kFoundFaults;
}

std::string Counted(std::uint64_t count, const std::string& what)
{
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

} // namespace logtool
