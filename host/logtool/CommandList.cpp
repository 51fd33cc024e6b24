// All commands: adding one is a line here.
#include "logtool/Command.h"

namespace logtool
{

// Each maker is in its command's own file. The help lists the commands in this order.
#define LOGTOOL_COMMANDS(COMMAND)                                                                            \
    COMMAND(MakeWrite)                                                                                       \
    COMMAND(MakeCat)                                                                                         \
    COMMAND(MakeTail)                                                                                        \
    COMMAND(MakeTree)                                                                                        \
    COMMAND(MakeErrors)                                                                                      \
    COMMAND(MakeDuring)                                                                                      \
    COMMAND(MakeExport)                                                                                      \
    COMMAND(MakeMessages)                                                                                    \
    COMMAND(MakeShip)                                                                                        \
    COMMAND(MakeSessions)                                                                                    \
    COMMAND(MakeVerify)                                                                                      \
    COMMAND(MakeHelp)

#define DECLARE(Maker) std::unique_ptr<Command> Maker();
LOGTOOL_COMMANDS(DECLARE)

std::vector<std::unique_ptr<Command>> MakeCommands()
{
    std::vector<std::unique_ptr<Command>> commands;
#define ADD(Maker) commands.push_back(Maker());
    LOGTOOL_COMMANDS(ADD)
    return commands;
}

std::unique_ptr<Command> MakeCommand(const std::string& name)
{
    for (std::unique_ptr<Command>& command : MakeCommands())
        if (name == command->Name())
            return std::move(command);
    throw UsageError(name.empty() ? "''" : name, "no such command, see logtool help");
}

} // namespace logtool
