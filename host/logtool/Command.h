// A command of logtool, declared in one place: its name, its options, its help and what it does.
#pragma once

#include "QmLogRow.h"
#include "QmLogTimes.h"
#include "commandline/CommandLine.h"
#include "logtool/Host.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace logtool
{

using commandline::UsageError;

// What a command needs of the log folder.
enum class FolderUse
{
    None,
    Look, // it is there
    Write // it can be written to; made when it is missing
};

// A new command is a file with a subclass and its maker, and the maker's line in CommandList.cpp.
class Command
{
public:
    struct Texts
    {
        const char* name;
        const char* summary; // for the list of commands: "shows ..."
        const char* about;   // lines of at most 80 characters
        const char* example;
    };

    explicit Command(const Texts& texts, FolderUse use = FolderUse::Look);
    virtual ~Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    const char* Name() const { return m_texts.name; }
    const char* Summary() const { return m_texts.summary; }
    std::string Help() const;

    // Does what `words`, those after the command, say and answers the exit code. Throws UsageError. Once for
    // each object: options keep their values.
    int Call(const std::vector<std::string>& words, Host& host);

protected:
    // The options have their values, and `host` is in the log folder.
    virtual int Run(Host& host) = 0;

    // Whether the folder is needed for what the words ask.
    virtual bool UsesFolder() const { return true; }

    // The log folder that the words name.
    virtual std::optional<std::string> NamedFolder() const { return m_folder; }

    commandline::CommandLine& Line() { return m_line; }
    void AddLogOption(); // see ChosenLogs
    // See TextStyle.
    void AddNumbersOption(const char* help = "put sequence number and log name before each row");
    void AddTimesOption(const char* help = "put the local time before each row; + for a little later");
    // Block kinds by name or number.
    void AddKindOption(std::optional<QmLogBlockKind>& kind, const std::string& help);

    // The logs named with "--log"; without, the five of a session and whatever else the folder holds.
    std::vector<std::string> ChosenLogs(Host& host) const;
    static std::vector<std::string> AllLogs(Host& host);
    bool NamesLogs() const { return !m_logs.empty(); }
    bool ShowsNumbers() const { return m_numbers; }
    // The times of the folder's session if the user wants to see them, else null.
    const CQmLogTimes* ShownTimes();
    // Likewise for `option`, which needs them. Throws UsageError if there are none.
    const CQmLogTimes& OpenTimes(const char* option);

private:
    void EnterFolder(Host& host) const;

    Texts m_texts;
    FolderUse m_use;
    std::optional<std::string> m_folder;
    std::vector<std::string> m_logs;
    bool m_numbers = false;
    bool m_showsTimes = false;
    CQmLogTimes m_times;
    commandline::CommandLine m_line;
};

// One of each command, in the order of the help.
std::vector<std::unique_ptr<Command>> MakeCommands();

// The command of that name. Throws UsageError when there is none.
std::unique_ptr<Command> MakeCommand(const std::string& name);

} // namespace logtool
