#include "commandline/HelpText.h"
#include "logtool/Commands.h"
#include "logtool/ProgramLine.h"

#include <ostream>

namespace logtool
{

namespace
{

class Help : public Command
{
public:
    Help()
        : Command(
              {"help", "explains a command", "Lists the commands, or explains one.\n", "logtool help cat"},
              FolderUse::None)
    {
        Line().AddOperand("[COMMAND]", m_command);
    }

private:
    int Run(Host& host) override
    {
        host.Output() << (m_command ? MakeCommand(*m_command)->Help() : Overview());
        return kDone;
    }

    std::optional<std::string> m_command;
};

} // namespace

std::unique_ptr<Command> MakeHelp()
{
    return std::make_unique<Help>();
}

std::string Overview()
{
    std::vector<commandline::HelpEntry> commands;
    for (const std::unique_ptr<Command>& command : MakeCommands())
        commands.push_back({command->Name(), command->Summary()});
    return ProgramLine().line.Help("logtool [--folder DIR]", commandline::Table(commands)) +
           "\nlogtool help COMMAND explains a command.\n"
           "Exit code: 0 done, 1 something is wrong in the logs, 2 asked wrongly or no\n"
           "output possible.\n";
}

} // namespace logtool
