// Commands for tests of what collects and executes them.
#pragma once

#include "qmcommon/QmEntry.h"

#include <functional>
#include <string_view>
#include <vector>

// One command: what it says, and what it does. A null caption hides it.
struct Command
{
    const char* caption;
    unsigned key = 0;
    unsigned modifiers = 0;
    bool enabled = true;
    std::function<void()> action = [] {};
    bool checked = false;
    const char* image = nullptr;
};

class CommandEntry : public CQmEntryShortcut
{
public:
    explicit CommandEntry(const Command& command)
        : CQmEntryShortcut(command.key, command.modifiers), m_command(command)
    {
    }
    const char* GetCaption() override { return m_command.caption; }
    bool IsEnabled() override { return m_command.enabled; }
    bool IsChecked() override { return m_command.checked; }
    const char* GetImage() override { return m_command.image; }
    void Execute() override { m_command.action(); }

private:
    Command m_command;
};

// A command with the caption "-" is a separator.
inline void ScanCommands(const std::vector<Command>& commands, IQmCommand& collector)
{
    for (const Command& command : commands)
    {
        if (command.caption != nullptr && std::string_view(command.caption) == "-")
            collector.AddSeparator();
        else
            collector.Add(std::make_unique<CommandEntry>(command));
    }
}
