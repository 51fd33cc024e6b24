#include "logtool/Commands.h"
#include "logtool/ProgramLine.h"

#include "QmLogWriter.h"
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

int RunCommand(const std::vector<std::string>& words, Host& host)
{
    // A write that fails, to a closed pipe or a full disk, ends the command where it happens.
    host.Output().exceptions(std::ios::badbit | std::ios::failbit);
    ProgramLine program;
    int exitCode = kDone;
    if (!program.line.Parse(words))
        host.Output() << Overview();
    else if (program.version)
        host.Output() << "logtool " LOGTOOL_VERSION "\n";
    else if (program.command.empty())
        throw UsageError("command", "missing, see logtool help");
    else
    {
        std::vector<std::string> rest(program.command.begin() + 1, program.command.end());
        if (program.folder) // the command looks whether it is given twice
            rest.insert(rest.begin(), {"--folder", *program.folder});
        exitCode = MakeCommand(program.command.front())->Call(rest, host);
    }
    host.Output().flush();
    return exitCode;
}

} // namespace

ProgramLine::ProgramLine() : line("logtool", "logtool help")
{
    line.AddText("--folder", "DIR", folder, kFolderHelp);
    line.AddFlag("--version", version, "show the version");
    line.AddCommand("COMMAND ...", command);
}

int Run(const std::vector<std::string>& words, Host& host)
{
    std::string failure;
    try
    {
        return RunCommand(words, host);
    }
    catch (const std::ios_base::failure&)
    {
        failure = host.OutputFault();
        if (failure.empty())
            return kDone; // whoever reads has seen enough
        failure = "output: cannot be written: " + failure;
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
    // What the user typed comes back in it, and may be anything.
    host.Messages() << "logtool: " << Printable(failure) << std::endl;
    return kMisuse;
}

std::string Totals(const std::vector<std::string>& logs, Host& host)
{
    std::size_t count = 0;
    std::uint64_t rows = 0;
    for (const std::string& name : host.ListLogs())
    {
        if (std::none_of(logs.begin(), logs.end(),
                         [&](const auto& log) { return msgservice::IsSameName(log, name); }))
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

TextStyle StyleOf(bool numbers, Host& host, const CQmLogTimes* times)
{
    TextStyle style;
    style.terminal = host.IsOutputTerminal();
    style.colours = style.terminal && host.HasColours();
    style.numbers = numbers;
    style.times = times;
    return style;
}

void TellNoRows(const std::vector<std::string>& logs, Host& host)
{
    for (const std::string& name : logs)
    {
        CQmLogReader reader;
        reader.SetFilePath(name.c_str());
        if (reader.GetRowCount() > 0)
            return;
    }
    host.Messages() << "logtool: no rows in " << LogFolder() << std::endl;
}

int EndOf(std::uint64_t unreadable, Host& host)
{
    if (unreadable == 0)
        return kDone;
    host.Messages() << "logtool: " << LogFolder() << ": " << Counted(unreadable, "row")
                    << " cannot be read, see logtool verify" << std::endl;
    return kFoundFaults;
}

std::string SystemReason()
{
    return SystemReason(ZEMA::FileCalls().LastError());
}

std::string SystemReason(unsigned long error)
{
    std::string text = ZEMA::FileCalls().ErrorText(static_cast<DWORD>(error));
    text.erase(text.find_last_not_of(" \r\n") + 1);
    return text.empty() ? "error " + std::to_string(error) + '.' : text;
}

std::string Counted(std::uint64_t count, const std::string& what)
{
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

} // namespace logtool
